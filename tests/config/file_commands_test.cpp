#include "config/writer.h"
#include "support/launcher.h"

#include <filesystem>
#include <tuple>

using namespace ks;
using ConfigTest = test::LauncherTest;
namespace fs = std::filesystem;

namespace {
// How a box looks, besides its text: title, buttons, icon and default button.
auto looks(const MessageBoxRequest& m) {
    return std::tuple{m.title, m.buttons, m.icon, m.defaultButton};
}
auto critical(const char* title, MessageButtons buttons, int defaultButton) {
    return std::tuple{std::string(title), buttons, MessageIcon::Critical, defaultButton};
}
const std::string kReplace = "Configuration File Exists Warning|Replace File ?";
} // namespace

TEST_F(ConfigTest, SaveWithoutAFileShowsTheFirstTabThenRefusesAndWritesNothing) {
    for (const char* name : {"NONE", ""}) {
        main("FFile").setText(name);
        platform.calls.clear();
        platform.messages.clear();
        program.frmMain.tabs().setCurrent(3);
        mnuFileSave_Click(program);
        EXPECT_EQ(program.frmMain.tabs().current(), 0);
        // The cue of the tab change comes before the message.
        ASSERT_GE(platform.calls.size(), 2u);
        EXPECT_TRUE(platform.calls.end()[-2].ends_with("tab.wav"));
        EXPECT_EQ(shown(), std::vector<std::string>{test::kFileWarning + "One of the critical settings has not been "
                                                                         "set,\rsee the yellow highlighted fields"});
        EXPECT_EQ(looks(platform.messages[0]), critical("Kestrand Launcher File Warning", MessageButtons::Ok, 0));
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
    EXPECT_EQ(program.state.ConfigSaved, 0);
}

TEST_F(ConfigTest, SaveAsANewNameWritesWithoutAQuestionAndExitThenLeavesAtOnce) {
    mnuFileSaveAs_Click(program); // cancelled
    EXPECT_EQ(main("FFile").text(), "NONE");
    const std::string path = dir.file("new.cfg");
    platform.dialogAnswers.push_back(path);
    mnuFileSaveAs_Click(program);
    const FileDialogRequest& d = platform.dialogs.at(1);
    EXPECT_EQ(d.kind, FileDialogKind::Save);
    EXPECT_EQ(d.title + "|" + d.initialDirectory + "|" + d.fileName + "|" + d.filter,
              "Open|NONE|NONE|All Files (*.CFG)|*.CFG");
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
    EXPECT_EQ(looks(platform.messages.at(0)), critical("Configuration File Exists Warning", MessageButtons::YesNo, 0));
    EXPECT_EQ(test::readBytes(path), "keep me\r\n");
    EXPECT_EQ(main("FFile").text(), path);

    platform.messageAnswers = {MessageAnswer::Yes};
    mnuFileSave_Click(program);
    EXPECT_EQ(shown(), (std::vector<std::string>{kReplace, kReplace}));
    EXPECT_EQ(test::readBytes(path), RenderConfig(program));
}

TEST_F(ConfigTest, AfterAnOpenExitAsksEachTimeAndOnlyNoLeaves) {
    open(file(std::string(test::kMarker) + "\r\n"));
    platform.messageAnswers = {MessageAnswer::Yes, MessageAnswer::Yes, MessageAnswer::No};
    for (int quitCalls : {0, 0, 1}) {
        mnuFileExit_Click(program);
        EXPECT_EQ(platform.quitCalls, quitCalls);
    }
    EXPECT_EQ(shown(), std::vector<std::string>(3, "Exit without Save Warning ?|You have not saved your work yet, "
                                                   "would you like to save ?"));
    EXPECT_EQ(looks(platform.messages[0]), critical("Exit without Save Warning ?", MessageButtons::YesNo, 1));
}
