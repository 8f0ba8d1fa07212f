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

std::string Program::companionFile(std::string_view fileName) const {
    const std::string directory = programDirectory();
    const std::string beside = directory + std::string(fileName);
    if (style_ == PathStyle::Windows || directory.empty() || platform_.isPlainFile(beside)) return beside;
    // The installation above the program's own directory: /usr/bin/ gives /usr/.
    const std::string installation = directoryPart(style_, std::string_view(directory).substr(0, directory.size() - 1));
    const std::string shared = installation + "share" + separator() + "kslaunch" + separator() + std::string(fileName);
    return platform_.isPlainFile(shared) ? shared : beside;
}

void Program::refuseValue(const MessageBoxRequest& message) {
    refusal_ = message;
    platform_.messageBox(message);
}

void Program::playCue(std::string_view fileName) const {
    if (platform_.soundDeviceCount() > 0) platform_.playSoundAsync(companionFile(fileName));
}

} // namespace ks
