#pragma once

#include <string_view>

namespace ks {

class Program;

// Saves and starts the Quake II server with the configuration in hand.
void runquake2_Click(Program& program);

// Opens the companion text file named by CompanionFile from the cfg folder beside the configuration file.
void SFiler(Program& program);
// One View menu entry: sets CompanionFile to its file and calls SFiler.
void ViewCompanionFile(Program& program, std::string_view fileName);

void mnuHelpContents_Click(Program& program);
void ksd_Click(Program& program);
void bug_Click(Program& program);
void mnuViewWebBrowser_Click(Program& program);

} // namespace ks
