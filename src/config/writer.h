#pragma once

#include "config/layer.h"

#include "frame/platform.h"

#include <string>

namespace ks {

class Program;

// The complete configuration file for the fields as they stand: every line ends with CR LF.
std::string renderConfig(const Program& program);

// Writes the file named by FFile. Nothing happens when FFile is empty or "NONE". The run counts as saved only
// after a finished file; a failed write leaves the old file whole.
OperationResult writeConfig(Program& program);

} // namespace ks
