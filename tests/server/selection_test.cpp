#include "frame/program.h"
#include "frame/selectors.h"
#include "frame/startup.h"
#include "server/launcher.h"
#include "server/selection.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace ks;
using test::Launcher;

namespace {

constexpr char kNoDirectoryText[] =
    "You do not have a Kestrand directory,\rinsure you point the right Kestrand directory";

} // namespace

TEST(Selectors, MovingTheDirectoryFillsBothFieldsAndTurnsThemWhite) {
    Launcher l(PathStyle::Windows);
    l.platform.directories = {"C:\\QUAKE2\\KESTRAND", "C:\\QUAKE2", "C:\\"};

    ASSERT_TRUE(SelectDirectory(l.program, "C:\\QUAKE2\\KESTRAND"));
    EXPECT_EQ(l.qdir(), "C:\\QUAKE2");
    EXPECT_EQ(l.gameDir(), "KESTRAND");
    EXPECT_EQ(l.field("QDIR").backColour(), kWhite);
    EXPECT_EQ(l.field("FGD").backColour(), kWhite);

    SelectDirectory(l.program, "C:\\QUAKE2");
    EXPECT_EQ(l.qdir(), "C:");
    EXPECT_EQ(l.gameDir(), "QUAKE2");
    SelectDirectory(l.program, "C:\\");
    EXPECT_EQ(l.qdir(), "C:\\");
    EXPECT_EQ(l.gameDir(), "C:\\");

    // A path that does not exist leaves selector and fields where they were, without a message.
    EXPECT_FALSE(SelectDirectory(l.program, "C:\\NOWHERE"));
    EXPECT_EQ(l.program.Dir2.text(), "C:\\");
    EXPECT_EQ(l.qdir(), "C:\\");
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(Selectors, ChangingTheDriveMovesTheDirectoryToItsCurrentOneAndOverwritesTheFields) {
    Launcher l(PathStyle::Windows);
    l.platform.directories = {"C:\\QUAKE2\\KESTRAND", "D:\\GAMES\\Q2"};
    l.platform.driveCurrent["D:"] = "D:\\GAMES\\Q2";
    l.platform.notReadyDrives = {"A:"};
    SelectDirectory(l.program, "C:\\QUAKE2\\KESTRAND");

    // A bare letter names its drive.
    ASSERT_TRUE(SelectDrive(l.program, "D"));
    EXPECT_EQ(l.program.Drive2.text(), "D:");
    EXPECT_EQ(l.program.Dir2.text(), "D:\\GAMES\\Q2");
    EXPECT_EQ(l.qdir(), "D:\\GAMES");
    EXPECT_EQ(l.gameDir(), "Q2");

    // A drive that is not ready changes nothing and says nothing.
    EXPECT_FALSE(SelectDrive(l.program, "A:"));
    EXPECT_EQ(l.program.Drive2.text(), "D:");
    EXPECT_EQ(l.program.Dir2.text(), "D:\\GAMES\\Q2");
    EXPECT_TRUE(l.platform.messages.empty());

    // A drive whose current directory cannot be shown leaves the directory selector alone.
    ASSERT_TRUE(SelectDrive(l.program, "E:"));
    EXPECT_EQ(l.program.Dir2.text(), "D:\\GAMES\\Q2");
    EXPECT_EQ(l.qdir(), "D:\\GAMES");
}

TEST(Selectors, WhileAQdirLineIsAppliedTheDriveChangeLeavesTheFieldsAlone) {
    Launcher l(PathStyle::Linux);
    l.platform.directories = {"/", "/srv/q2"};
    l.platform.driveCurrent["/"] = "/srv/q2";
    l.program.state.ReadingQDIR = 1;
    SelectDrive(l.program, "/");
    EXPECT_EQ(l.program.Dir2.text(), "/srv/q2");
    EXPECT_EQ(l.qdir(), "NONE");
    EXPECT_EQ(l.gameDir(), "NONE");
    EXPECT_EQ(l.field("QDIR").backColour(), kPaleYellow);
}

TEST(Highlight, OnlyRealValuesTurnWhiteAndNothingTurnsYellowAgain) {
    Launcher l(PathStyle::Windows);
    for (const char* name : {"QDIR", "FGD"}) {
        Field& field = l.field(name);
        field.setText("");
        EXPECT_EQ(field.backColour(), kPaleYellow) << name;
        field.setText("NONE");
        EXPECT_EQ(field.backColour(), kPaleYellow) << name;
        field.setText("x");
        EXPECT_EQ(field.backColour(), kWhite) << name;
        field.setText("NONE");
        EXPECT_EQ(field.backColour(), kWhite) << name;
    }
    // The file field counts the empty text as set.
    Field& file = l.field("FFile");
    file.setText("");
    EXPECT_EQ(file.backColour(), kWhite);
    file.setBackColour(kPaleYellow);
    file.setText("NONE");
    EXPECT_EQ(file.backColour(), kPaleYellow);
}

TEST(StartupSearch, TheFirstPlaceFoundWinsAndEveryPlaceIsTested) {
    Launcher l(PathStyle::Windows);
    l.platform.directoriesWithFiles = {"d:\\quake2\\kestrand\\", "f:\\quake2\\kestrand\\"};
    l.platform.directories = {"d:\\QUAKE2\\KESTRAND", "C:\\"};
    l.platform.driveCurrent["C:"] = "C:\\";
    l.platform.driveCurrent["d:"] = "d:\\QUAKE2\\KESTRAND";
    l.program.state.FileExists = -1;

    LoadMainForm(l.program);
    EXPECT_EQ(l.program.frmMain.check("ipCheck").state(), 1);
    EXPECT_EQ(l.program.Drive2.text(), "d:");
    EXPECT_EQ(l.program.Dir2.text(), "d:\\QUAKE2\\KESTRAND");
    EXPECT_EQ(l.qdir(), "d:\\QUAKE2");
    EXPECT_EQ(l.gameDir(), "KESTRAND");
    EXPECT_EQ(l.program.state.FileExists, 0); // the result of drive c
    EXPECT_TRUE(l.called("hasPlainFile c:\\quake2\\kestrand\\"));
    EXPECT_TRUE(l.called("hasPlainFile e:\\quake2\\kestrand\\"));
    EXPECT_TRUE(l.called("hasPlainFile f:\\quake2\\kestrand\\"));
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(StartupSearch, NothingFoundShowsTheMessageOnceAndLeavesTheSelectorsOnTheRoot) {
    // The directories exist everywhere but hold no plain file.
    Launcher l(PathStyle::Windows);
    l.platform.directories = {"c:\\quake2\\kestrand\\", "d:\\quake2\\kestrand\\", "C:\\QUAKE2\\KESTRAND", "C:\\"};
    l.platform.driveCurrent["C:"] = "C:\\";
    l.program.state.FileExists = -1;

    LoadMainForm(l.program);
    ASSERT_EQ(l.platform.messages.size(), 1u);
    const MessageBoxRequest& box = l.platform.messages[0];
    EXPECT_EQ(box.title, "No Kestrand Directory");
    EXPECT_EQ(box.text, kNoDirectoryText);
    EXPECT_EQ(box.buttons, MessageButtons::Ok);
    EXPECT_EQ(box.icon, MessageIcon::None);
    EXPECT_EQ(l.program.Drive2.text(), "C:");
    EXPECT_EQ(l.program.Dir2.text(), "C:\\");
    EXPECT_EQ(l.qdir(), "C:\\");
    EXPECT_EQ(l.gameDir(), "C:\\");
    EXPECT_EQ(l.program.state.FileExists, 0);
}

TEST(StartupSearch, ASelectorAlreadyOnTheFoundDirectoryRunsNoSplit) {
    Launcher l(PathStyle::Windows);
    l.platform.directoriesWithFiles = {"c:\\quake2\\kestrand\\"};
    l.platform.directories = {"C:\\QUAKE2\\KESTRAND"};
    l.platform.driveCurrent["C:"] = "C:\\QUAKE2\\KESTRAND";
    SelectDrive(l.program, "C:");
    ASSERT_EQ(l.program.Dir2.text(), "C:\\QUAKE2\\KESTRAND");
    l.field("QDIR").setText("E:\\FROMFILE");
    l.field("FGD").setText("other");

    LoadMainForm(l.program);
    EXPECT_EQ(l.program.state.FileExists, -1);
    EXPECT_EQ(l.qdir(), "E:\\FROMFILE");
    EXPECT_EQ(l.gameDir(), "other");
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(StartupSearch, LinuxTestsItsFourPlacesInOrderAndTheHomeOneCanWin) {
    Launcher l(PathStyle::Linux);
    l.platform.home = "/home/op/";
    l.platform.directoriesWithFiles = {"/home/op/.yq2/kestrand/"};
    l.platform.directories = {"/", "/home/op/.yq2/kestrand"};
    l.platform.driveCurrent["/"] = "/";

    LoadMainForm(l.program);
    std::vector<std::string> tests;
    for (const std::string& call : l.platform.calls)
        if (call.starts_with("hasPlainFile ")) tests.push_back(call.substr(13));
    EXPECT_EQ(tests, (std::vector<std::string>{"/usr/local/games/quake2/kestrand/", "/usr/share/games/quake2/kestrand/",
                                               "/opt/quake2/kestrand/", "/home/op/.yq2/kestrand/"}));
    EXPECT_EQ(l.program.Drive2.text(), "/");
    EXPECT_EQ(l.program.Dir2.text(), "/home/op/.yq2/kestrand");
    EXPECT_EQ(l.qdir(), "/home/op/.yq2");
    EXPECT_EQ(l.gameDir(), "kestrand");
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(StartupSearch, LinuxWithoutAnyPlaceEndsOnTheRoot) {
    Launcher l(PathStyle::Linux);
    l.platform.home = "";
    l.platform.directories = {"/", "/work"};
    l.platform.driveCurrent["/"] = "/work";

    LoadMainForm(l.program);
    ASSERT_EQ(l.platform.messages.size(), 1u);
    EXPECT_EQ(l.platform.messages[0].text, kNoDirectoryText);
    EXPECT_EQ(l.program.Drive2.text(), "/");
    EXPECT_EQ(l.program.Dir2.text(), "/");
    EXPECT_EQ(l.qdir(), "/");
    EXPECT_EQ(l.gameDir(), "/");
    EXPECT_EQ(KestrandSearchPlaces(PathStyle::Linux, "").size(), 3u);
}
