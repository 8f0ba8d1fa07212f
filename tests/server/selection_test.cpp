#include "frame/selectors.h"
#include "server/selection.h"
#include "support/launcher_test.h"

using namespace ks;
using test::Launcher;

namespace {

constexpr char kNoDirectoryMessage[] =
    "No Kestrand Directory|You do not have a Kestrand directory,\rinsure you point the right Kestrand directory";

// The places the start-up search tested, in order.
std::vector<std::string> tested(const Launcher& l) {
    std::vector<std::string> out;
    for (const std::string& call : l.platform.calls)
        if (call.starts_with("hasPlainFile ")) out.push_back(call.substr(13));
    return out;
}

} // namespace

TEST(Selectors, MovingTheDirectoryOrDriveFillsBothFieldsAndBadTargetsChangeNothing) {
    Launcher l(PathStyle::Windows, false);
    l.platform.directories = {"C:\\QUAKE2\\KESTRAND", "C:\\", "D:\\GAMES\\Q2"};
    l.platform.driveCurrent["D:"] = "D:\\GAMES\\Q2";
    l.platform.notReadyDrives = {"A:"};
    l.main("QDIR").setBackColour(kPaleYellow);

    ASSERT_TRUE(selectDirectory(l.program, "C:\\QUAKE2\\KESTRAND"));
    EXPECT_EQ(l.main("QDIR").text() + " " + l.main("FGD").text(), "C:\\QUAKE2 KESTRAND");
    EXPECT_EQ(l.main("QDIR").backColour(), kWhite);
    // A path that does not exist leaves selector and fields where they were.
    EXPECT_FALSE(selectDirectory(l.program, "C:\\NOWHERE"));
    EXPECT_EQ(l.program.directorySelector().text() + " " + l.main("QDIR").text(), "C:\\QUAKE2\\KESTRAND C:\\QUAKE2");

    // A bare letter names its drive; the directory follows to the drive's current one.
    ASSERT_TRUE(selectDrive(l.program, "D"));
    EXPECT_EQ(l.where(), "D: | D:\\GAMES\\Q2 | D:\\GAMES | Q2");
    // A drive that is not ready changes nothing; one whose current directory cannot be shown leaves Dir2 alone.
    EXPECT_FALSE(selectDrive(l.program, "A:"));
    EXPECT_EQ(l.where(), "D: | D:\\GAMES\\Q2 | D:\\GAMES | Q2");
    ASSERT_TRUE(selectDrive(l.program, "E:"));
    EXPECT_EQ(l.program.directorySelector().text() + " " + l.main("QDIR").text(), "D:\\GAMES\\Q2 D:\\GAMES");
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(Highlight, OnlyRealValuesTurnWhiteAndNothingTurnsYellowAgain) {
    Launcher l(PathStyle::Windows, false);
    // The file field counts the empty text as set.
    for (const auto& [name, expected] : {std::pair{"QDIR", "YYWW"}, {"FGD", "YYWW"}, {"FFile", "WWWW"}}) {
        Field& field = l.main(name);
        std::string colours;
        for (const char* text : {"", "NONE", "x", "NONE"}) {
            field.setText(text);
            colours += field.backColour() == kWhite ? 'W' : field.backColour() == kPaleYellow ? 'Y' : '?';
        }
        EXPECT_EQ(colours, expected) << name;
    }
}

TEST(StartupSearch, TheFirstPlaceFoundWinsAndEveryPlaceIsTested) {
    Launcher l(PathStyle::Windows, false);
    // Drive c has the directory but no plain file in it: not found.
    l.platform.directoriesWithFiles = {"d:\\quake2\\kestrand\\", "f:\\quake2\\kestrand\\"};
    l.platform.directories = {"c:\\quake2\\kestrand\\", "d:\\QUAKE2\\KESTRAND", "C:\\"};
    l.platform.driveCurrent["d:"] = "d:\\QUAKE2\\KESTRAND";

    loadMainForm(l.program);
    EXPECT_EQ(l.check("ipCheck").state(), 1);
    EXPECT_EQ(l.where(), "d: | d:\\QUAKE2\\KESTRAND | d:\\QUAKE2 | KESTRAND");
    EXPECT_EQ(tested(l), (std::vector<std::string>{"c:\\quake2\\kestrand\\", "d:\\quake2\\kestrand\\",
                                                   "e:\\quake2\\kestrand\\", "f:\\quake2\\kestrand\\"}));
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(StartupSearch, NothingFoundShowsTheMessageOnceAndLeavesTheSelectorsOnTheRoot) {
    for (const PathStyle style : {PathStyle::Windows, PathStyle::Linux}) {
        Launcher l(style, false);
        l.platform.home = "";
        l.platform.directories = {"d:\\quake2\\kestrand\\", "C:\\QUAKE2\\KESTRAND", "C:\\", "/", "/work"};
        l.platform.driveCurrent["C:"] = "C:\\";
        l.platform.driveCurrent["/"] = "/work";

        loadMainForm(l.program);
        EXPECT_EQ(l.shown(), std::vector<std::string>{kNoDirectoryMessage});
        EXPECT_EQ(l.platform.messages.at(0).icon, MessageIcon::None);
        EXPECT_EQ(l.where(), style == PathStyle::Windows ? "C: | C:\\ | C:\\ | C:\\" : "/ | / | / | /");
    }
}

TEST(StartupSearch, ASelectorAlreadyOnTheFoundDirectoryRunsNoSplit) {
    Launcher l(PathStyle::Windows, false);
    l.platform.directoriesWithFiles = {"c:\\quake2\\kestrand\\"};
    l.platform.directories = {"C:\\QUAKE2\\KESTRAND"};
    l.platform.driveCurrent["C:"] = "C:\\QUAKE2\\KESTRAND";
    selectDrive(l.program, "C:");
    l.main("QDIR").setText("E:\\FROMFILE");

    loadMainForm(l.program);
    EXPECT_EQ(l.where(), "C: | C:\\QUAKE2\\KESTRAND | E:\\FROMFILE | KESTRAND");
}

TEST(StartupSearch, LinuxTestsItsFourPlacesInOrderAndTheHomeOneCanWin) {
    Launcher l(PathStyle::Linux, false);
    l.platform.home = "/home/op/";
    l.platform.directoriesWithFiles = {"/home/op/.yq2/kestrand/"};
    l.platform.directories = {"/", "/home/op/.yq2/kestrand"};

    loadMainForm(l.program);
    EXPECT_EQ(tested(l),
              (std::vector<std::string>{"/usr/local/games/quake2/kestrand/", "/usr/share/games/quake2/kestrand/",
                                        "/opt/quake2/kestrand/", "/home/op/.yq2/kestrand/"}));
    EXPECT_EQ(l.where(), "/ | /home/op/.yq2/kestrand | /home/op/.yq2 | kestrand");
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(OpenMovesSelectors, OnlyAnExistingDirectoryTakesBothSelectorsThere) {
    for (const auto& [qdir, where] : {std::pair{"/srv/q2", "/ | /srv/q2/kestrand | /srv/q2 | kestrand"},
                                      {"/nowhere/q2", "/ | /home/op | /nowhere/q2 | kestrand"}}) {
        Launcher l(PathStyle::Linux, false);
        l.platform.driveCurrent["/"] = "/home/op";
        l.platform.directories = {"/", "/home/op", "/srv/quake 2/kestrand", "/srv/q2/kestrand"};
        l.open(l.file("// set qdir " + std::string(qdir) + " // Added\r\nset game_dir kestrand\r\n"));
        EXPECT_EQ(l.where(), where);
        EXPECT_EQ(l.main("QDIR").backColour(), kWhite);
    }
}
