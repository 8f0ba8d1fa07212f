#pragma once

#include "frame/field.h"
#include "frame/path_style.h"
#include "frame/platform.h"
#include "frame/shared_state.h"

#include <string_view>

namespace ks {

// The three forms that hold settings.
enum class FormId { Main, Flags, Weapons };

// One run of the launcher: the platform, the shared state and the three forms with every setting.
// The dialog forms exist with their defaults from the start, shown or not.
class Program {
public:
    explicit Program(Platform& platform, PathStyle style = nativePathStyle());
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Platform& platform;
    PathStyle pathStyle;
    SharedState state;
    Form frmMain{"frmMain"};
    Form Form1{"Form1"};
    Form Form2{"Form2"};
    // The drive and directory selectors of the main window: the selected drive, and the selected path.
    Field Drive2{"frmMain", "Drive2", "", "", "", "The drive where Quake2 is to run this config"};
    Field Dir2{"frmMain", "Dir2", "", "", "", "The MOD or game directory to run"};

    // SplitResult becomes the program directory with its trailing separator.
    void GetProgramPath();
    void CountSoundDevices();
    // SplitResult becomes SplitPath up to and including its last separator.
    void SplitDirectory();
    // SplitResult becomes SplitPath behind its last separator.
    void SplitFileName();
    // Plays a sound file that lies beside the program, when there is a sound device.
    void PlayCue(std::string_view fileName);

    Form& form(FormId id) { return id == FormId::Flags ? Form1 : id == FormId::Weapons ? Form2 : frmMain; }
    const Form& form(FormId id) const { return id == FormId::Flags ? Form1 : id == FormId::Weapons ? Form2 : frmMain; }

    char sep() const { return separator(pathStyle); }
};

} // namespace ks
