#include "server/links.h"

#include "frame/program.h"

#include <string>

namespace ks {

void openHelp(Program& program) {
    if (program.pathStyle() == PathStyle::Windows)
        program.platform().startProcess(programStart("winhlp32.exe", {program.companionFile("ks.hlp")}));
    else
        program.platform().openLink(program.companionFile("ks.html"));
}

void openDocsPage(Program& program) { program.platform().openLink(std::string(kDocsPage)); }
void openWebSite(Program& program) { program.platform().openLink(std::string(kWebSite)); }
void writeBugReport(Program& program) { program.platform().openLink(std::string(kBugMail)); }

} // namespace ks
