#include "frame/program.h"

#include "frame/catalogue.h"

namespace ks {

namespace {
// The program path buffer holds this many characters.
constexpr std::size_t kProgramPathBuffer = 206;
} // namespace

Program::Program(Platform& platformRef, PathStyle style) : platform(platformRef), pathStyle(style) {
    buildMainForm(frmMain);
    buildFlagsForm(Form1);
    buildWeaponsForm(Form2);
}

void Program::GetProgramPath() {
    std::string path = platform.programPath();
    if (path.size() > kProgramPathBuffer) path.resize(kProgramPathBuffer);
    state.SplitPath = std::move(path);
    SplitDirectory();
}

void Program::CountSoundDevices() { state.SoundDevices = platform.soundDeviceCount(); }

void Program::SplitDirectory() {
    const std::string& path = state.SplitPath;
    state.SplitResult = path.substr(0, lastSeparator(path, sep(), path.size()));
}

void Program::SplitFileName() {
    const std::string& path = state.SplitPath;
    state.SplitResult = path.substr(lastSeparator(path, sep(), path.size()));
}

void Program::PlayCue(std::string_view fileName) {
    GetProgramPath();
    CountSoundDevices();
    if (state.SoundDevices > 0) {
        state.ProgramFile = state.SplitResult + std::string(fileName);
        platform.playSoundAsync(state.ProgramFile);
    }
}

} // namespace ks
