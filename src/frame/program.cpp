#include "frame/program.h"

namespace ks {

namespace {
// The platform's answer for the program's path is read into this many characters.
constexpr std::size_t kProgramPathLimit = 206;
} // namespace

Program::Program(Platform& platform, PathStyle style) : platform_(platform), style_(style) {
    buildMainForm(main_);
    buildFlagsForm(flags_);
    buildWeaponsForm(weapons_);
}

std::string Program::programDirectory() const {
    std::string path = platform_.programPath();
    if (path.size() > kProgramPathLimit) path.resize(kProgramPathLimit);
    return directoryPart(style_, path);
}

void Program::playCue(std::string_view fileName) const {
    const std::string directory = programDirectory();
    if (platform_.soundDeviceCount() > 0) platform_.playSoundAsync(directory + std::string(fileName));
}

} // namespace ks
