#include "frame/selectors.h"

#include "frame/program.h"

#include <cctype>

namespace ks {

bool SelectDrive(Program& program, const std::string& drive) {
    std::string name = drive;
    // A drive letter alone names its drive, as "d" does "d:".
    if (program.pathStyle == PathStyle::Windows && name.size() == 1 &&
        std::isalpha(static_cast<unsigned char>(name[0])))
        name += ':';
    if (name.empty() || !program.platform.driveReady(name)) return false;
    program.Drive2.setText(std::move(name));
    return true;
}

bool SelectDirectory(Program& program, const std::string& path) {
    if (path.empty() || !program.platform.isDirectory(path)) return false;
    program.Dir2.setText(path);
    return true;
}

} // namespace ks
