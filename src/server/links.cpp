#include "server/links.h"

#include "frame/program.h"

#include <string>

namespace ks {

void openHelp(Program& program) {
    const std::string directory = program.programDirectory();
    if (program.pathStyle() == PathStyle::Windows)
        program.platform().startProcess(programStart("winhlp32.exe", {directory + "ks.hlp"}));
    else
        program.platform().openLink(directory + "ks.html");
}

void openDocsPage(Program& program) { program.platform().openLink(std::string(kDocsPage)); }
void openWebSite(Program& program) { program.platform().openLink(std::string(kWebSite)); }
void writeBugReport(Program& program) { program.platform().openLink(std::string(kBugMail)); }

} // namespace ks
