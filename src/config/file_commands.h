#pragma once

#include "config/layer.h"

namespace ks {

class Program;

// The commands of the File menu that open and save configuration files, and its Exit.

// Asks for a file and opens it.
void chooseAndOpenConfig(Program& program);
// Writes the file named by FFile, after asking when it exists; without a file name it points to the yellow
// fields. A write that fails names the file and the reason.
void saveConfig(Program& program);
// Asks for a new name, takes it and writes the file there, after asking when it exists. A failed write goes
// unreported; the new name stays.
void saveConfigAs(Program& program);
// Leaves the launcher: at once once something was saved in this run, else after asking whether to save
// first (Yes stays to save).
void exitLauncher(Program& program);

} // namespace ks
