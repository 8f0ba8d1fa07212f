#include "config/writer.h"
#include "config_fixture.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace ks;
using test::ConfigTest;
namespace fs = std::filesystem;

namespace {
const std::string kReplace = "Replace File ?";
const std::string kUnsaved = "You have not saved your work yet, would you like to save ?";

std::string styleOf(const MessageBoxRequest& m) {
    return m.title + "|" + std::to_string(static_cast<int>(m.buttons)) + "|" +
           std::to_string(static_cast<int>(m.icon)) + "|" + std::to_string(m.defaultButton);
}
std::string style(const char* title, MessageButtons buttons, int defaultButton) {
    return styleOf({"", title, buttons, MessageIcon::Critical, defaultButton});
}
} // namespace

TEST_F(ConfigTest, SaveWithoutAFileShowsTheFirstTabThenRefusesAndWritesNothing) {
    for (const char* name : {"NONE", ""}) {
        main("FFile").setText(name);
        platform.calls.clear();
        program.frmMain.tabs().setCurrent(3);
        mnuFileSave_Click(program);
        EXPECT_EQ(program.frmMain.tabs().current(), 0);
        // The cue of the tab change comes before the message.
        ASSERT_GE(platform.calls.size(), 2u);
        EXPECT_TRUE(platform.calls.end()[-2].ends_with("tab.wav"));
        const MessageBoxRequest& m = platform.messages.back();
        EXPECT_EQ(m.text, "One of the critical settings has not been set,\rsee the yellow highlighted fields");
        EXPECT_EQ(styleOf(m), style("Kestrand Launcher File Warning", MessageButtons::Ok, 0));
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
    EXPECT_EQ(program.state.ConfigSaved, 0);
}

TEST_F(ConfigTest, SaveAsANewNameWritesWithoutAQuestionAndExitThenLeavesAtOnce) {
    const std::string path = dir.file("new.cfg");
    platform.dialogAnswers.push_back(path);
    mnuFileSaveAs_Click(program);
    const FileDialogRequest& d = platform.dialogs.at(0);
    EXPECT_EQ(d.kind, FileDialogKind::Save);
    EXPECT_EQ(d.title + "|" + d.initialDirectory + "|" + d.fileName + "|" + d.filter,
              "Open|NONE|NONE|All Files (*.CFG)|*.CFG");
    EXPECT_TRUE(platform.messages.empty());
    EXPECT_EQ(main("FFile").text(), path);
    EXPECT_EQ(test::readBytes(path), RenderConfig(program));

    mnuFileExit_Click(program);
    EXPECT_TRUE(platform.messages.empty());
    EXPECT_EQ(platform.quitCalls, 1);
}

TEST_F(ConfigTest, SaveAsOntoAnExistingFileAnsweredNoKeepsTheFileButTakesTheNameAndSaveAsksAgain) {
    const std::string path = file("keep me\r\n", "old.cfg");
    main("FFile").setText(dir.file("first.cfg"));
    platform.dialogAnswers.push_back(path);
    platform.messageAnswers = {MessageAnswer::No};
    mnuFileSaveAs_Click(program);
    EXPECT_EQ(platform.dialogs.at(0).fileName, "first.cfg");
    EXPECT_EQ(styleOf(platform.messages.at(0)), style("Configuration File Exists Warning", MessageButtons::YesNo, 0));
    EXPECT_EQ(test::readBytes(path), "keep me\r\n");
    EXPECT_EQ(main("FFile").text(), path);

    platform.messageAnswers = {MessageAnswer::Yes};
    mnuFileSave_Click(program);
    EXPECT_EQ(messageTexts(), (std::vector<std::string>{kReplace, kReplace}));
    EXPECT_EQ(test::readBytes(path), RenderConfig(program));
}

TEST_F(ConfigTest, FailedWritesAreSilentUnderSaveAsAndNamedUnderSave) {
    main("FFile").setText("/earlier.cfg");
    mnuFileSaveAs_Click(program); // cancelled
    EXPECT_EQ(main("FFile").text(), "/earlier.cfg");
    const std::string unwritable = dir.file("missing/x.cfg");
    platform.dialogAnswers.push_back(unwritable);
    mnuFileSaveAs_Click(program);
    EXPECT_EQ(main("FFile").text(), unwritable);
    EXPECT_TRUE(platform.messages.empty());

    const std::string locked = file("keep me\r\n", "locked.cfg");
    fs::permissions(locked, fs::perms::owner_read, fs::perm_options::replace);
    main("FFile").setText(locked);
    mnuFileSave_Click(program);
    ASSERT_EQ(platform.messages.size(), 2u);
    const std::string& said = platform.messages[1].text;
    EXPECT_NE(said.find(locked), std::string::npos) << said;
    EXPECT_GT(said.size(), locked.size() + 40) << "no reason given: " << said;
    EXPECT_EQ(test::readBytes(locked), "keep me\r\n");
    EXPECT_EQ(program.state.ConfigSaved, 0);
}

TEST_F(ConfigTest, AfterAnOpenExitAsksEachTimeAndOnlyNoLeaves) {
    open(file(std::string(test::kMarker) + "\r\n"));
    platform.messageAnswers = {MessageAnswer::Yes, MessageAnswer::Yes, MessageAnswer::No};
    mnuFileExit_Click(program);
    mnuFileExit_Click(program);
    EXPECT_EQ(platform.quitCalls, 0);
    mnuFileExit_Click(program);
    EXPECT_EQ(platform.quitCalls, 1);
    EXPECT_EQ(messageTexts(), (std::vector<std::string>{kUnsaved, kUnsaved, kUnsaved}));
    EXPECT_EQ(styleOf(platform.messages.back()), style("Exit without Save Warning ?", MessageButtons::YesNo, 1));
}

TEST_F(ConfigTest, DoesFileExistFindsPlainFilesOnly) {
    platform.directories.insert(dir.path().string());
    const std::string existing = file("x");
    for (const std::string& name : {existing, dir.path().string(), dir.file("none.cfg")}) {
        program.state.FileToCheck = name;
        Does_File_Exist(program);
        EXPECT_EQ(program.state.FileExists, name == existing ? -1 : 0) << name;
    }
}
