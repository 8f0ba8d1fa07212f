#include "config/writer.h"
#include "config_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace ks;
using test::ConfigTest;
namespace fs = std::filesystem;

namespace {

struct FileCommandsTest : ConfigTest {
    std::size_t questionsAbout(const std::string& text) const {
        return static_cast<std::size_t>(std::count_if(platform.messages.begin(), platform.messages.end(),
                                                      [&](const MessageBoxRequest& m) { return m.text == text; }));
    }
    void saveAs(const std::string& path) {
        platform.dialogAnswers.push_back(path);
        mnuFileSaveAs_Click(program);
    }
};

constexpr const char* kReplace = "Replace File ?";
constexpr const char* kUnsaved = "You have not saved your work yet, would you like to save ?";

} // namespace

TEST_F(FileCommandsTest, SaveWithoutAFileShowsTheFirstTabThenRefusesAndWritesNothing) {
    for (const char* name : {"NONE", ""}) {
        main("FFile").setText(name);
        program.frmMain.tabs().setCurrent(3);
        platform.calls.clear();
        platform.messages.clear();
        mnuFileSave_Click(program);

        EXPECT_EQ(program.frmMain.tabs().current(), 0);
        ASSERT_EQ(platform.messages.size(), 1u);
        const MessageBoxRequest& m = platform.messages[0];
        EXPECT_EQ(m.text, "One of the critical settings has not been set,\rsee the yellow highlighted fields");
        EXPECT_EQ(m.title, "Kestrand Launcher File Warning");
        EXPECT_EQ(m.buttons, MessageButtons::Ok);
        EXPECT_EQ(m.icon, MessageIcon::Critical);
        // The tab's cue is played before the message comes up.
        const auto& calls = platform.calls;
        const auto cue = std::find_if(calls.begin(), calls.end(), [](const std::string& c) {
            return c.starts_with("playSound ") && c.ends_with("tab.wav");
        });
        EXPECT_TRUE(cue != calls.end() && cue + 1 == calls.end() - 1 && calls.back().starts_with("messageBox "));
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
    EXPECT_EQ(program.state.ConfigSaved, 0);
}

TEST_F(FileCommandsTest, SaveAsANewNameWritesWithoutAQuestionAndExitThenLeavesAtOnce) {
    const std::string path = dir.file("new.cfg");
    saveAs(path);
    ASSERT_EQ(platform.dialogs.size(), 1u);
    const FileDialogRequest& d = platform.dialogs[0];
    EXPECT_EQ(d.kind, FileDialogKind::Save);
    EXPECT_EQ(d.title, "Open");
    EXPECT_EQ(d.initialDirectory, "NONE");
    EXPECT_EQ(d.fileName, "NONE");
    EXPECT_EQ(d.filter, "All Files (*.CFG)|*.CFG");
    EXPECT_TRUE(platform.messages.empty());
    EXPECT_EQ(main("FFile").text(), path);
    EXPECT_EQ(test::readBytes(path), RenderConfig(program));
    EXPECT_EQ(program.state.ConfigSaved, 1);

    mnuFileExit_Click(program);
    EXPECT_TRUE(platform.messages.empty());
    EXPECT_EQ(platform.quitCalls, 1);
}

TEST_F(FileCommandsTest, SaveAsOntoAnExistingFileAskedNoKeepsTheFileButTakesTheName) {
    const std::string path = file("keep me\r\n", "old.cfg");
    main("FFile").setText(dir.file("first.cfg"));
    platform.messageAnswers.push_back(MessageAnswer::No);
    saveAs(path);

    EXPECT_EQ(platform.dialogs.at(0).initialDirectory, dir.file("first.cfg"));
    EXPECT_EQ(platform.dialogs.at(0).fileName, "first.cfg");
    ASSERT_EQ(platform.messages.size(), 1u);
    const MessageBoxRequest& m = platform.messages[0];
    EXPECT_EQ(m.text, kReplace);
    EXPECT_EQ(m.title, "Configuration File Exists Warning");
    EXPECT_EQ(m.buttons, MessageButtons::YesNo);
    EXPECT_EQ(m.icon, MessageIcon::Critical);
    EXPECT_EQ(m.defaultButton, 0);
    EXPECT_EQ(test::readBytes(path), "keep me\r\n");
    EXPECT_EQ(main("FFile").text(), path);
    EXPECT_EQ(program.state.ConfigSaved, 0);

    // Every Save over an existing file asks again.
    platform.messageAnswers = {MessageAnswer::Yes, MessageAnswer::Yes};
    mnuFileSave_Click(program);
    mnuFileSave_Click(program);
    EXPECT_EQ(questionsAbout(kReplace), 3u);
    EXPECT_EQ(test::readBytes(path), RenderConfig(program));
}

TEST_F(FileCommandsTest, CancelledOrFailingSaveAsIsSilent) {
    main("FFile").setText("/earlier.cfg");
    mnuFileSaveAs_Click(program);
    platform.dialogAnswers.push_back(std::string());
    mnuFileSaveAs_Click(program);
    EXPECT_EQ(main("FFile").text(), "/earlier.cfg");

    const std::string unwritable = dir.file("missing/x.cfg");
    saveAs(unwritable);
    EXPECT_EQ(main("FFile").text(), unwritable);
    EXPECT_TRUE(platform.messages.empty());
    EXPECT_EQ(program.state.ConfigSaved, 0);
}

TEST_F(FileCommandsTest, SaveThatCannotWriteNamesTheFileAndTheReasonAndKeepsTheOldFile) {
    const std::string locked = file("keep me\r\n", "locked.cfg");
    fs::permissions(locked, fs::perms::owner_read, fs::perm_options::replace);
    main("FFile").setText(locked);
    mnuFileSave_Click(program);

    ASSERT_EQ(platform.messages.size(), 2u);
    EXPECT_EQ(platform.messages[0].text, kReplace);
    const MessageBoxRequest& m = platform.messages[1];
    EXPECT_NE(m.text.find(locked), std::string::npos) << m.text;
    EXPECT_GT(m.text.size(), locked.size() + 40) << "the reason is missing: " << m.text;
    EXPECT_EQ(m.buttons, MessageButtons::Ok);
    EXPECT_EQ(test::readBytes(locked), "keep me\r\n");
    EXPECT_EQ(program.state.ConfigSaved, 0);
}

TEST_F(FileCommandsTest, OpenThenSaveAsksAndOpenThenExitAsksAboutUnsavedWork) {
    const std::string path = file(std::string(test::kMarker) + "\r\n");
    open(path);
    platform.messages.clear();

    platform.messageAnswers.push_back(MessageAnswer::No);
    mnuFileSave_Click(program);
    EXPECT_EQ(questionsAbout(kReplace), 1u);

    // Yes keeps the program, each time; No leaves.
    platform.messageAnswers = {MessageAnswer::Yes, MessageAnswer::Yes, MessageAnswer::No};
    mnuFileExit_Click(program);
    mnuFileExit_Click(program);
    EXPECT_EQ(platform.quitCalls, 0);
    EXPECT_EQ(questionsAbout(kUnsaved), 2u);
    const MessageBoxRequest& m = platform.messages.back();
    EXPECT_EQ(m.title, "Exit without Save Warning ?");
    EXPECT_EQ(m.buttons, MessageButtons::YesNo);
    EXPECT_EQ(m.icon, MessageIcon::Critical);
    EXPECT_EQ(m.defaultButton, 1);
    mnuFileExit_Click(program);
    EXPECT_EQ(platform.quitCalls, 1);
}

TEST_F(FileCommandsTest, DoesFileExistFindsPlainFilesOnly) {
    const std::string path = file("x");
    platform.directories.insert(dir.path().string());
    for (const auto& [name, expected] : std::vector<std::pair<std::string, int>>{
             {path, -1}, {dir.path().string(), 0}, {dir.file("none.cfg"), 0}, {"", 0}}) {
        program.state.FileToCheck = name;
        program.state.FileExists = 7;
        Does_File_Exist(program);
        EXPECT_EQ(program.state.FileExists, expected) << name;
    }
}
