#pragma once

#include "config/file_commands.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace ks::test {

// A launcher on the scripted platform with every handler connected and a directory for its files. With `load`
// it stands after its start, the start-up search and its message forgotten.
struct Launcher {
    FakePlatform platform;
    Program program;
    TempDir dir;

    explicit Launcher(PathStyle style = PathStyle::Linux, bool load = true) : program(platform, style) {
        ConnectHandlers(program);
        if (!load) return;
        LoadMainForm(program);
        platform.calls.clear();
        platform.messages.clear();
    }
    Field& main(std::string_view name) { return program.frmMain.field(name); }
    Field& flags(std::string_view name) { return program.Form1.field(name); }
    Field& weapons(std::string_view name) { return program.Form2.field(name); }
    CheckBox& check(std::string_view name) { return program.Form1.check(name); }

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
        return program.Drive2.text() + " | " + program.Dir2.text() + " | " + main("QDIR").text() + " | " +
               main("FGD").text();
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
        mnuFileOpen_Click(program);
    }
    // Every text and check box state of the three forms, as "form.name".
    using Snapshot = std::map<std::string, std::string>;
    Snapshot snapshot() const {
        Snapshot all;
        for (const Form* form : {&program.frmMain, &program.Form1, &program.Form2}) {
            for (const auto& field : form->fields())
                all[form->name() + "." + field->name()] = field->text();
            for (const auto& box : form->checkBoxes())
                all[form->name() + "." + box->name()] = std::to_string(box->state());
        }
        return all;
    }
    // Opens the file through File, Open and tells what changed on the three forms.
    Snapshot openAndSee(const std::string& path) {
        const Snapshot before = snapshot();
        open(path);
        Snapshot changed;
        for (const auto& [name, text] : snapshot())
            if (before.at(name) != text) changed[name] = text;
        return changed;
    }
};

struct LauncherTest : ::testing::Test, Launcher {};

inline const std::string kFileWarning = "Kestrand Launcher File Warning|";
inline const std::string kForeignWarning = kFileWarning + "This Configuration file was not created\r"
                                                          "with the Kestrand Launcher.  The Program\r"
                                                          "will convert this file to the Kestrand Launcher\r"
                                                          "file format.  You must got to Weapons / DM Flags\r"
                                                          "button and set your item preferences on each tab";
inline constexpr const char* kMarker = "//Kestrand Launcher AUTO CONFIG SECTION - DO NOT Modify";

} // namespace ks::test
