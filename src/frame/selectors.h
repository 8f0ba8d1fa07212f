#pragma once

#include "frame/layer.h"

#include <string>

namespace ks {

class Program;

// What follows when a selector moves: normally the Quake II and game directories are split anew from the
// selected directory; while a configuration file names its Quake II directory, the selectors move alone.
enum class Follow { Directories, SelectorsOnly };

// Moves the drive selector, and the directory selector to that drive's current directory. A drive that is
// missing or not ready leaves both where they were; gives whether the selector now shows that drive. On
// Windows a drive letter alone ("d") names its drive ("d:").
bool selectDrive(Program& program, const std::string& drive, Follow follow = Follow::Directories);

// Moves the directory selector. A path that does not exist leaves it where it was; gives whether the
// selector now shows that path.
bool selectDirectory(Program& program, const std::string& path, Follow follow = Follow::Directories);

} // namespace ks
