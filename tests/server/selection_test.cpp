#include "config/reader.h"
#include "frame/program.h"
#include "frame/selectors.h"
#include "frame/startup.h"
#include "server/launcher.h"
#include "server/selection.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

using namespace ks;
using test::Launcher;

namespace {

constexpr char kNoDirectoryMessage[] =
    "No Kestrand Directory|You do not have a Kestrand directory,\rinsure you point the right Kestrand directory";

struct Opened : test::Launcher {
    using Launcher::Launcher;
    test::TempDir dir;

    // Opens a file of the given lines.
    void open(const std::string& lines) {
        const std::string path = dir.file("server.cfg");
        test::writeBytes(path, lines);
        ASSERT_TRUE(OpenConfigFile(program, path));
    }
};

// The two lines of a written file that name the directories.
std::string directoryLines(const std::string& qdir, const std::string& gameDir) {
    return "// set qdir " + qdir + " // Added by KS Launcher - Do NOT modify this section\r\nset game_dir " + gameDir +
           "\r\n";
}

} // namespace

TEST(Selectors, MovingTheDirectoryOrDriveFillsBothFieldsAndBadTargetsChangeNothing) {
    Launcher l(PathStyle::Windows);
    l.platform.directories = {"C:\\QUAKE2\\KESTRAND", "C:\\", "D:\\GAMES\\Q2"};
    l.platform.driveCurrent["D:"] = "D:\\GAMES\\Q2";
    l.platform.notReadyDrives = {"A:"};
    l.field("QDIR").setBackColour(kPaleYellow);

    ASSERT_TRUE(SelectDirectory(l.program, "C:\\QUAKE2\\KESTRAND"));
    EXPECT_EQ(l.qdir() + " " + l.gameDir(), "C:\\QUAKE2 KESTRAND");
    EXPECT_EQ(l.field("QDIR").backColour(), kWhite);
    // A path that does not exist leaves selector and fields where they were.
    EXPECT_FALSE(SelectDirectory(l.program, "C:\\NOWHERE"));
    EXPECT_EQ(l.program.Dir2.text() + " " + l.qdir(), "C:\\QUAKE2\\KESTRAND C:\\QUAKE2");

    // A bare letter names its drive; the directory follows to the drive's current one.
    ASSERT_TRUE(SelectDrive(l.program, "D"));
    EXPECT_EQ(l.where(), "D: | D:\\GAMES\\Q2 | D:\\GAMES | Q2");
    // A drive that is not ready changes nothing; one whose current directory cannot be shown leaves Dir2 alone.
    EXPECT_FALSE(SelectDrive(l.program, "A:"));
    EXPECT_EQ(l.where(), "D: | D:\\GAMES\\Q2 | D:\\GAMES | Q2");
    ASSERT_TRUE(SelectDrive(l.program, "E:"));
    EXPECT_EQ(l.program.Dir2.text() + " " + l.qdir(), "D:\\GAMES\\Q2 D:\\GAMES");
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(Highlight, OnlyRealValuesTurnWhiteAndNothingTurnsYellowAgain) {
    Launcher l(PathStyle::Windows);
    for (const char* name : {"QDIR", "FGD"}) {
        Field& field = l.field(name);
        std::vector<Colour> colours;
        for (const char* text : {"", "NONE", "x", "NONE"}) {
            field.setText(text);
            colours.push_back(field.backColour());
        }
        EXPECT_EQ(colours, (std::vector<Colour>{kPaleYellow, kPaleYellow, kWhite, kWhite})) << name;
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
    // Drive c has the directory but no plain file in it: not found.
    l.platform.directoriesWithFiles = {"d:\\quake2\\kestrand\\", "f:\\quake2\\kestrand\\"};
    l.platform.directories = {"c:\\quake2\\kestrand\\", "d:\\QUAKE2\\KESTRAND", "C:\\"};
    l.platform.driveCurrent["d:"] = "d:\\QUAKE2\\KESTRAND";
    l.program.state.FileExists = -1;

    LoadMainForm(l.program);
    EXPECT_EQ(l.program.frmMain.check("ipCheck").state(), 1);
    EXPECT_EQ(l.where(), "d: | d:\\QUAKE2\\KESTRAND | d:\\QUAKE2 | KESTRAND");
    EXPECT_EQ(l.program.state.FileExists, 0); // the result of drive c
    for (const char* drive : {"c", "e", "f"})
        EXPECT_TRUE(l.called(std::string("hasPlainFile ") + drive + ":\\quake2\\kestrand\\")) << drive;
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(StartupSearch, NothingFoundShowsTheMessageOnceAndLeavesTheSelectorsOnTheRoot) {
    for (const PathStyle style : {PathStyle::Windows, PathStyle::Linux}) {
        Launcher l(style);
        l.platform.home = "";
        l.platform.directories = {"d:\\quake2\\kestrand\\", "C:\\QUAKE2\\KESTRAND", "C:\\", "/", "/work"};
        l.platform.driveCurrent["C:"] = "C:\\";
        l.platform.driveCurrent["/"] = "/work";

        LoadMainForm(l.program);
        EXPECT_EQ(l.shown(), std::vector<std::string>{kNoDirectoryMessage});
        EXPECT_EQ(l.platform.messages.at(0).icon, MessageIcon::None);
        EXPECT_EQ(l.where(), style == PathStyle::Windows ? "C: | C:\\ | C:\\ | C:\\" : "/ | / | / | /");
    }
}

TEST(StartupSearch, ASelectorAlreadyOnTheFoundDirectoryRunsNoSplit) {
    Launcher l(PathStyle::Windows);
    l.platform.directoriesWithFiles = {"c:\\quake2\\kestrand\\"};
    l.platform.directories = {"C:\\QUAKE2\\KESTRAND"};
    l.platform.driveCurrent["C:"] = "C:\\QUAKE2\\KESTRAND";
    SelectDrive(l.program, "C:");
    l.field("QDIR").setText("E:\\FROMFILE");

    LoadMainForm(l.program);
    EXPECT_EQ(l.program.state.FileExists, -1);
    EXPECT_EQ(l.where(), "C: | C:\\QUAKE2\\KESTRAND | E:\\FROMFILE | KESTRAND");
}

TEST(StartupSearch, LinuxTestsItsFourPlacesInOrderAndTheHomeOneCanWin) {
    Launcher l(PathStyle::Linux);
    l.platform.home = "/home/op/";
    l.platform.directoriesWithFiles = {"/home/op/.yq2/kestrand/"};
    l.platform.directories = {"/", "/home/op/.yq2/kestrand"};

    LoadMainForm(l.program);
    std::vector<std::string> tests;
    for (const std::string& call : l.platform.calls)
        if (call.starts_with("hasPlainFile ")) tests.push_back(call.substr(13));
    EXPECT_EQ(tests, (std::vector<std::string>{"/usr/local/games/quake2/kestrand/", "/usr/share/games/quake2/kestrand/",
                                               "/opt/quake2/kestrand/", "/home/op/.yq2/kestrand/"}));
    EXPECT_EQ(l.where(), "/ | /home/op/.yq2/kestrand | /home/op/.yq2 | kestrand");
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(OpenMovesSelectors, AnExistingDirectoryTakesBothSelectorsThere) {
    Opened w(PathStyle::Windows);
    w.platform.driveList = {"C:", "D:"};
    w.platform.driveCurrent["D:"] = "D:\\";
    w.platform.directories = {"D:\\", "D:\\GAMES\\Q2\\Kestrand"};
    w.open(directoryLines("D:\\GAMES\\Q2", "Kestrand"));
    EXPECT_EQ(w.where(), "D: | D:\\GAMES\\Q2\\Kestrand | D:\\GAMES\\Q2 | Kestrand");
    EXPECT_EQ(w.field("QDIR").backColour(), kWhite);

    Opened l(PathStyle::Linux);
    l.platform.driveCurrent["/"] = "/home/op";
    l.platform.directories = {"/", "/home/op", "/srv/quake 2/kestrand", "/srv/q2/kestrand"};
    l.open(directoryLines("/srv/q2", "kestrand"));
    EXPECT_EQ(l.where(), "/ | /srv/q2/kestrand | /srv/q2 | kestrand");
}

TEST(OpenMovesSelectors, ValuesNamingNoDirectoryStayInTheFieldsAndTheSelectorStaysOnTheDrive) {
    Opened l(PathStyle::Linux);
    l.platform.driveCurrent["/"] = "/home/op";
    l.platform.directories = {"/", "/home/op"};
    l.open(directoryLines("/nowhere/q2", "kestrand"));
    EXPECT_EQ(l.where(), "/ | /home/op | /nowhere/q2 | kestrand");

    // "NONE" is read as it stands and keeps the yellow.
    Opened n(PathStyle::Windows);
    n.open(directoryLines("NONE", "NONE"));
    EXPECT_EQ(n.qdir() + " " + n.gameDir(), "NONE NONE");
    EXPECT_EQ(n.field("QDIR").backColour(), kPaleYellow);
}

TEST(OpenMovesSelectors, ALinuxPathKeepsItsSlashesWhileACommentStillEndsTheLine) {
    const std::string rec = "// set qdir /srv/q2 // Added by KS Launcher - Do NOT modify this section ";
    EXPECT_EQ(CutRecord(rec, PathStyle::Linux).words[3], "/srv/q2");
    EXPECT_EQ(CutRecord(rec, PathStyle::Windows).words[3], "");
    // A "//" behind a value ends the line in both styles; a lone slash only in the Windows style.
    EXPECT_EQ(CutRecord("set maxclients 8 //max 16 ", PathStyle::Linux).words[2], "8");
    EXPECT_EQ(CutRecord("set sv_logdir log/k ", PathStyle::Linux).words[2], "log/k");
    EXPECT_EQ(CutRecord("set sv_logdir log/k ", PathStyle::Windows).words[2], "");
}
