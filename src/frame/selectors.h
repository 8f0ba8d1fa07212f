#pragma once

#include <string>

namespace ks {

class Program;

// Moves the drive selector. A drive that is missing or not ready leaves it where it was; gives whether
// the selector now shows that drive. On Windows a drive letter alone ("d") names its drive ("d:").
bool SelectDrive(Program& program, const std::string& drive);

// Moves the directory selector. A path that does not exist leaves it where it was; gives whether the
// selector now shows that path.
bool SelectDirectory(Program& program, const std::string& path);

} // namespace ks
