#include "config/writer.h"
#include "support/launcher_test.h"

#include <filesystem>
#include <tuple>

using namespace ks;
using ConfigTest = test::LauncherTest;
namespace fs = std::filesystem;

namespace {
// How a box looks, besides its text: title, buttons, icon and default button.
auto looks(const MessageBoxRequest& m) { return std::tuple{m.title, m.buttons, m.icon, m.defaultButton}; }
auto critical(const char* title, MessageButtons buttons, int defaultButton) {
    return std::tuple{std::string(title), buttons, MessageIcon::Critical, defaultButton};
}
} // namespace

TEST_F(ConfigTest, SaveWithoutAFileShowsTheFirstTabThenRefusesAndWritesNothing) {
    for (const char* name : {"NONE", ""}) {
        main("FFile").setText(name);
        platform.calls.clear();
        platform.messages.clear();
        program.mainTabs().setCurrent(3);
        saveConfig(program);
        EXPECT_EQ(program.mainTabs().current(), 0);
        // The cue of the tab change comes before the message.
        ASSERT_GE(platform.calls.size(), 2u);
        EXPECT_TRUE(platform.calls.end()[-2].ends_with("tab.wav"));
        EXPECT_EQ(shown(), std::vector<std::string>{test::kFileWarning + "One of the critical settings has not been "
                                                                         "set,\rsee the yellow highlighted fields"});
        EXPECT_EQ(looks(platform.messages[0]), critical("Kestrand Launcher File Warning", MessageButtons::Ok, 0));
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
    EXPECT_FALSE(program.configSaved());
}

TEST_F(ConfigTest, SaveAsWritesANewNameAtOnceAndANoToReplaceKeepsTheFileButTakesTheName) {
    if (nativePathStyle() == PathStyle::Windows) GTEST_SKIP() << "Linux paths over the files of a system with drives";
    saveConfigAs(program); // cancelled
    EXPECT_EQ(main("FFile").text(), "NONE");
    const FileDialogRequest& d = platform.dialogs.at(0);
    EXPECT_EQ(d.kind, FileDialogKind::Save);
    EXPECT_EQ(d.title + "|" + d.initialDirectory + "|" + d.fileName + "|" + d.filter,
              "Open|NONE|NONE|All Files (*.CFG)|*.CFG");

    const std::string fresh = dir.file("new.cfg"), old = file("keep me\r\n", "old.cfg");
    platform.dialogAnswers = {fresh, old};
    platform.messageAnswers = {MessageAnswer::No, MessageAnswer::Yes};
    saveConfigAs(program);
    EXPECT_TRUE(platform.messages.empty());
    EXPECT_EQ(test::readBytes(fresh), renderConfig(program));
    saveConfigAs(program);
    EXPECT_EQ(platform.dialogs.at(2).fileName, "new.cfg");
    EXPECT_EQ(test::readBytes(old), "keep me\r\n");
    EXPECT_EQ(main("FFile").text(), old);
    EXPECT_EQ(looks(platform.messages.at(0)), critical("Configuration File Exists Warning", MessageButtons::YesNo, 0));

    saveConfig(program);
    EXPECT_EQ(shown(), std::vector<std::string>(2, "Configuration File Exists Warning|Replace File ?"));
    EXPECT_EQ(test::readBytes(old), renderConfig(program));
    // Saved, Exit leaves at once.
    exitLauncher(program);
    EXPECT_EQ(platform.messages.size(), 2u);
    EXPECT_EQ(platform.endCalls, 1);
}

TEST_F(ConfigTest, AfterAnOpenExitAsksEachTimeAndOnlyNoLeaves) {
    open(file(std::string(test::kMarker) + "\r\n"));
    platform.messageAnswers = {MessageAnswer::Yes, MessageAnswer::Yes, MessageAnswer::No};
    for (int endCalls : {0, 0, 1}) {
        exitLauncher(program);
        EXPECT_EQ(platform.endCalls, endCalls);
    }
    EXPECT_EQ(shown(), std::vector<std::string>(3, "Exit without Save Warning ?|You have not saved your work yet, "
                                                   "would you like to save ?"));
    EXPECT_EQ(looks(platform.messages[0]), critical("Exit without Save Warning ?", MessageButtons::YesNo, 1));
}
