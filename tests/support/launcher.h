#pragma once

#include "config/file_commands.h"
#include "frame/program.h"
#include "session/startup.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ks::test {

// A launcher on the scripted platform with every handler connected and a directory for its files. With `load`
// it stands after its start, the start-up search and its message forgotten. The tests name controls as the
// windows do, by their names on their forms.
struct Launcher {
    FakePlatform platform;
    Program program;
    TempDir dir;

    explicit Launcher(PathStyle style = PathStyle::Linux, bool load = true) : program(platform, style) {
        connectHandlers(program);
        if (!load) return;
        loadMainForm(program);
        platform.calls.clear();
        platform.messages.clear();
    }
    Launcher(const Launcher&) = delete;
    Launcher& operator=(const Launcher&) = delete;

    Field& main(std::string_view name) const { return fieldOn(FormId::Main, name); }
    Field& flags(std::string_view name) const { return fieldOn(FormId::Flags, name); }
    Field& weapons(std::string_view name) const { return fieldOn(FormId::Weapons, name); }
    // A check box of the flags dialog, or "ipCheck" of the main form.
    CheckBox& check(std::string_view name) const {
        const FormId form = name == "ipCheck" ? FormId::Main : FormId::Flags;
        if (CheckBox* box = program.form(form).findCheck(name)) return *box;
        throw std::out_of_range("no check box " + std::string(name));
    }
    Field& fieldOn(FormId form, std::string_view name) const {
        if (Field* field = program.form(form).findField(name)) return *field;
        throw std::out_of_range(program.form(form).name() + " has no field " + std::string(name));
    }

    // The messages shown so far, each as "TITLE|TEXT".
    std::vector<std::string> shown() const {
        std::vector<std::string> out;
        for (const MessageBoxRequest& m : platform.messages)
            out.push_back(m.title + "|" + m.text);
        return out;
    }
    // The calls that reach outside the launcher, in order.
    std::vector<std::string> effects() const {
        std::vector<std::string> out;
        for (const std::string& call : platform.calls)
            if (call.starts_with("changeDirectory ") || call.starts_with("startProcess ")) out.push_back(call);
        return out;
    }
    // Where the selectors and the two directory fields stand: "Drive2 | Dir2 | QDIR | FGD".
    std::string where() {
        return program.driveSelector().text() + " | " + program.directorySelector().text() + " | " +
               main("QDIR").text() + " | " + main("FGD").text();
    }

    // A file in the directory that the platform knows as a plain file.
    std::string file(const std::string& bytes, const std::string& name = "server.cfg") {
        const std::string path = dir.file(name);
        writeBytes(path, bytes);
        platform.plainFiles.insert(path);
        return path;
    }
    // File, Open with the operator choosing the path.
    void open(const std::string& path) {
        platform.dialogAnswers.push_back(path);
        chooseAndOpenConfig(program);
    }
    // Every text and check box state of the three forms, as "form.name".
    using Snapshot = std::map<std::string, std::string>;
    Snapshot snapshot() const {
        Snapshot all;
        for (const FormId id : {FormId::Main, FormId::Flags, FormId::Weapons}) {
            const Form& form = program.form(id);
            for (const auto& field : form.fields())
                all[form.name() + "." + field->name()] = field->text();
            for (const auto& box : form.checkBoxes())
                all[form.name() + "." + box->name()] = std::to_string(box->state());
        }
        return all;
    }
    // What an action changes on the three forms.
    template <class Action> Snapshot changedBy(Action action) {
        const Snapshot before = snapshot();
        action();
        Snapshot changed;
        for (const auto& [name, text] : snapshot())
            if (before.at(name) != text) changed[name] = text;
        return changed;
    }
    // Opens the file through File, Open and tells what changed on the three forms.
    Snapshot openAndSee(const std::string& path) {
        return changedBy([&] { open(path); });
    }
};

inline const std::string kFileWarning = "Kestrand Launcher File Warning|";
inline const std::string kForeignWarning = kFileWarning + "This Configuration file was not created\r"
                                                          "with the Kestrand Launcher.  The Program\r"
                                                          "will convert this file to the Kestrand Launcher\r"
                                                          "file format.  You must got to Weapons / DM Flags\r"
                                                          "button and set your item preferences on each tab";
inline constexpr const char* kMarker = "//Kestrand Launcher AUTO CONFIG SECTION - DO NOT Modify";

} // namespace ks::test
