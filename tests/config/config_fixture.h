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

// A launcher as it stands after start-up, with a scripted platform and a directory for its files.
struct Launcher {
    FakePlatform platform;
    Program program;
    TempDir dir;

    explicit Launcher(PathStyle style = PathStyle::Linux) : program(platform, style) {
        ConnectHandlers(program);
        LoadMainForm(program);
        // Forget the start-up search and its message: the tests look at what came after.
        platform.calls.clear();
        platform.messages.clear();
    }
    Field& main(const char* name) { return program.frmMain.field(name); }

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
            for (const auto& check : form->checkBoxes())
                all[form->name() + "." + check->name()] = std::to_string(check->state());
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
    std::vector<std::string> messageTexts() const {
        std::vector<std::string> texts;
        for (const auto& m : platform.messages)
            texts.push_back(m.text);
        return texts;
    }
};

struct ConfigTest : ::testing::Test, Launcher {};

inline constexpr const char* kForeignWarning = "This Configuration file was not created\r"
                                               "with the Kestrand Launcher.  The Program\r"
                                               "will convert this file to the Kestrand Launcher\r"
                                               "file format.  You must got to Weapons / DM Flags\r"
                                               "button and set your item preferences on each tab";
inline constexpr const char* kMarker = "//Kestrand Launcher AUTO CONFIG SECTION - DO NOT Modify";

} // namespace ks::test
