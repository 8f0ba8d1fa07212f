#pragma once

#include "frame/layer.h"

#include "frame/catalogue.h"
#include "frame/field.h"
#include "frame/path_style.h"
#include "frame/platform.h"
#include "frame/sound_cues.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ks {

// The version the launcher shows on its splash screen and `--version` prints: the project's version in the build.
inline constexpr std::string_view kProgramVersionText = KS_VERSION_TEXT;

// One run of the launcher: the platform it runs on, the three forms with every setting at its default from
// the start (shown or not), the two directory selectors and the little that the run remembers besides.
class Program {
public:
    explicit Program(Platform& platform, PathStyle style = nativePathStyle());
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Platform& platform() const { return platform_; }
    PathStyle pathStyle() const { return style_; }
    char separator() const { return ks::separator(style_); }

    Form& form(FormId id) { return id == FormId::Flags ? flags_ : id == FormId::Weapons ? weapons_ : main_; }
    const Form& form(FormId id) const {
        return id == FormId::Flags ? flags_ : id == FormId::Weapons ? weapons_ : main_;
    }
    Field& field(FieldId id) const { return form(id.form).field(id.index); }
    CheckBox& check(CheckId id) const { return form(id.form).check(id.index); }
    TabControl& mainTabs() const { return main_.tabs(); }
    TabControl& flagTabs() const { return flags_.tabs(); }
    Selector& driveSelector() { return drive_; }
    Selector& directorySelector() { return directory_; }

    // A configuration file has been written in this run.
    bool configSaved() const { return configSaved_; }
    void noteConfigSaved() { configSaved_ = true; }

    // The address that the IP field held when "Use Default" was turned on; it comes back when it is turned off.
    const std::string& savedAddress() const { return savedAddress_; }
    void keepAddress(std::string address) { savedAddress_ = std::move(address); }

    // Shows the message of a rule that refused a value and keeps it, so that whoever gave the value learns of the
    // refusal from the rule itself, without running it again.
    void refuseValue(const MessageBoxRequest& message);
    // The message of the last refusal since the previous call, once.
    std::optional<MessageBoxRequest> takeRefusal() { return std::exchange(refusal_, std::nullopt); }

    // The directory of the running program, with its trailing separator.
    std::string programDirectory() const;
    // Where a file that comes with the launcher lies (a sound cue, the help page): beside the program when it is
    // there, as in the build tree and on Windows; else in "share/kslaunch" of the installation the program lies
    // in ("/usr/bin/kslaunch" finds "/usr/share/kslaunch/ks.html"). When neither holds it, the place beside the
    // program.
    std::string companionFile(std::string_view fileName) const;
    // Plays a sound cue that comes with the launcher, when the machine has a sound device.
    void playCue(std::string_view fileName) const;

private:
    Platform& platform_;
    PathStyle style_;
    Form main_{"frmMain"};
    Form flags_{"Form1"};
    Form weapons_{"Form2"};
    Selector drive_{std::string(kDriveSelectorName), std::string(kDriveSelectorTip)};
    Selector directory_{std::string(kDirectorySelectorName), std::string(kDirectorySelectorTip)};
    bool configSaved_ = false;
    std::string savedAddress_;
    std::optional<MessageBoxRequest> refusal_;
};

} // namespace ks
