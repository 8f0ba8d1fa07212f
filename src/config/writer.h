#pragma once

#include "frame/platform.h"

#include <string>

namespace ks {

class Program;

// The complete configuration file for the fields as they stand: every line ends with CR LF.
std::string RenderConfig(const Program& program);

// Writes the file named by FFile. Nothing happens when FFile is empty or "NONE". ConfigSaved becomes 1
// only after a finished file; a failed write leaves the old file whole.
OperationResult WriteConfig(Program& program);

} // namespace ks
