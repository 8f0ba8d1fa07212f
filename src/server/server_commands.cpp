#include "server/server_commands.h"

#include "frame/program.h"

#include <string>

namespace ks {

// Placeholders until the server operations are complete.
void runquake2_Click(Program&) {}
void SFiler(Program&) {}
void ViewCompanionFile(Program& program, std::string_view fileName) {
    program.state.CompanionFile = std::string(fileName);
    SFiler(program);
}
void mnuHelpContents_Click(Program&) {}
void ksd_Click(Program&) {}
void bug_Click(Program&) {}
void mnuViewWebBrowser_Click(Program&) {}

} // namespace ks
