#pragma once

#include "server/layer.h"

#include "frame/path_style.h"
#include "frame/platform.h"

#include <string>
#include <string_view>

namespace ks {

class Program;

// Opens a companion file in the plain text editor, from the Quake II directory. Without a configuration file
// in hand, or when the file is missing or hidden, the operator is told and nothing starts.
void openCompanionFile(Program& program, std::string_view fileName);

// The plain text editor with the file as its one argument: Notepad on Windows, the desktop's handler on Linux.
ProgramStart textEditorStart(PathStyle style, const std::string& target);

} // namespace ks
