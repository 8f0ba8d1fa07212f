#pragma once

#include "frame/path_style.h"

#include <string>
#include <string_view>

namespace ks {

class Program;

// Saves and starts the Quake II server with the configuration in hand. A failing change to QDIR or a
// failing start is told in a message box; the launcher goes on.
void runquake2_Click(Program& program);

// Opens the companion text file named by CompanionFile from the cfg folder beside the configuration file.
void SFiler(Program& program);
// One View menu entry: sets CompanionFile to its file and calls SFiler.
void ViewCompanionFile(Program& program, std::string_view fileName);
// The command line that opens a file in the plain text editor.
std::string TextEditorCommand(PathStyle style, const std::string& target);

// The mod's pages and the maintainer's address.
inline constexpr std::string_view kDocsPage = "http://kestrand.example.org/kestrand/ksdocs.htm";
inline constexpr std::string_view kWebSite = "http://kestrand.example.org/kestrand";
inline constexpr std::string_view kBugMail = "mailto:bugs@kestrand.example.org";

void mnuHelpContents_Click(Program& program);
void ksd_Click(Program& program);
void bug_Click(Program& program);
void mnuViewWebBrowser_Click(Program& program);

} // namespace ks
