#include "frame/program.h"
#include "server/server_commands.h"

namespace ks {

// Failures of these commands are left to the viewer, browser or mail program: none has a message.

void mnuHelpContents_Click(Program& program) {
    program.GetProgramPath(); // SplitResult: the program's directory
    if (program.pathStyle == PathStyle::Windows) {
        program.state.ProgramFile = program.state.SplitResult + "ks.hlp";
        program.platform.startProcess("winhlp32.exe " + program.state.ProgramFile);
    } else {
        program.state.ProgramFile = program.state.SplitResult + "ks.html";
        program.platform.openLink(program.state.ProgramFile);
    }
}

void ksd_Click(Program& program) { program.platform.openLink(std::string(kDocsPage)); }
void mnuViewWebBrowser_Click(Program& program) { program.platform.openLink(std::string(kWebSite)); }
void bug_Click(Program& program) { program.platform.openLink(std::string(kBugMail)); }

} // namespace ks
