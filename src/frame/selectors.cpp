#include "frame/selectors.h"

#include "frame/program.h"

#include <cctype>

namespace ks {

bool selectDrive(Program& program, const std::string& drive, Follow follow) {
    std::string name = drive;
    // A drive letter alone names its drive, as "d" does "d:".
    if (program.pathStyle() == PathStyle::Windows && name.size() == 1 &&
        std::isalpha(static_cast<unsigned char>(name[0])))
        name += ':';
    if (name.empty() || !program.platform().driveReady(name)) return false;
    if (program.driveSelector().show(name))
        selectDirectory(program, program.platform().driveCurrentDirectory(name), follow);
    return true;
}

bool selectDirectory(Program& program, const std::string& path, Follow follow) {
    if (path.empty() || !program.platform().isDirectory(path)) return false;
    Selector& directory = program.directorySelector();
    if (follow == Follow::Directories)
        directory.choose(path);
    else
        directory.show(path);
    return true;
}

} // namespace ks
