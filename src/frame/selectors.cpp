#include "frame/selectors.h"

#include "frame/program.h"

namespace ks {

bool SelectDrive(Program& program, const std::string& drive) {
    if (drive.empty() || !program.platform.driveReady(drive)) return false;
    program.Drive2.setText(drive);
    return true;
}

bool SelectDirectory(Program& program, const std::string& path) {
    if (path.empty() || !program.platform.isDirectory(path)) return false;
    program.Dir2.setText(path);
    return true;
}

} // namespace ks
