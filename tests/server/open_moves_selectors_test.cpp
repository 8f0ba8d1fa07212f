#include "config/reader.h"
#include "server/launcher.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

using namespace ks;

namespace {

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

TEST(OpenMovesSelectors, AnExistingDirectoryTakesBothSelectorsThere) {
    Opened w(PathStyle::Windows);
    w.platform.driveList = {"C:", "D:"};
    w.platform.driveCurrent["D:"] = "D:\\";
    w.platform.directories = {"D:\\", "D:\\GAMES\\Q2\\Kestrand"};
    w.open(directoryLines("D:\\GAMES\\Q2", "Kestrand"));
    EXPECT_EQ(w.program.Drive2.text(), "D:");
    EXPECT_EQ(w.program.Dir2.text(), "D:\\GAMES\\Q2\\Kestrand");
    EXPECT_EQ(w.qdir(), "D:\\GAMES\\Q2");
    EXPECT_EQ(w.gameDir(), "Kestrand");
    EXPECT_EQ(w.program.frmMain.field("QDIR").backColour(), kWhite);

    Opened l(PathStyle::Linux);
    l.platform.driveCurrent["/"] = "/home/op";
    l.platform.directories = {"/", "/home/op", "/srv/quake 2/kestrand", "/srv/q2/kestrand"};
    l.open(directoryLines("/srv/q2", "kestrand"));
    EXPECT_EQ(l.program.Drive2.text(), "/");
    EXPECT_EQ(l.program.Dir2.text(), "/srv/q2/kestrand");
    EXPECT_EQ(l.qdir(), "/srv/q2");
    EXPECT_EQ(l.gameDir(), "kestrand");
}

TEST(OpenMovesSelectors, ValuesNamingNoDirectoryStayInTheFieldsAndTheSelectorStaysOnTheDrive) {
    Opened l(PathStyle::Linux);
    l.platform.driveCurrent["/"] = "/home/op";
    l.platform.directories = {"/", "/home/op"};
    l.open(directoryLines("/nowhere/q2", "kestrand"));
    EXPECT_EQ(l.program.Dir2.text(), "/home/op");
    EXPECT_EQ(l.qdir(), "/nowhere/q2");
    EXPECT_EQ(l.gameDir(), "kestrand");

    // "NONE" is read as it stands and keeps the yellow.
    Opened n(PathStyle::Windows);
    n.open(directoryLines("NONE", "NONE"));
    EXPECT_EQ(n.qdir(), "NONE");
    EXPECT_EQ(n.gameDir(), "NONE");
    EXPECT_EQ(n.program.frmMain.field("QDIR").backColour(), kPaleYellow);
    EXPECT_EQ(n.program.frmMain.field("FGD").backColour(), kPaleYellow);
}

TEST(OpenMovesSelectors, ALinuxPathKeepsItsSlashesWhileACommentStillEndsTheLine) {
    const std::string rec = "// set qdir /srv/q2 // Added by KS Launcher - Do NOT modify this section ";
    EXPECT_EQ(CutRecord(rec, PathStyle::Linux).words[3], "/srv/q2");
    EXPECT_EQ(CutRecord(rec, PathStyle::Windows).words[3], "");
    // A "//" behind a value ends the line in both styles; so does a lone slash, in the Windows style only.
    const std::string commented = "set maxclients 8 //max 16 ";
    for (PathStyle style : {PathStyle::Linux, PathStyle::Windows})
        EXPECT_EQ(CutRecord(commented, style).words[2], "8");
    EXPECT_EQ(CutRecord("set sv_logdir log/k ", PathStyle::Linux).words[2], "log/k");
    EXPECT_EQ(CutRecord("set sv_logdir log/k ", PathStyle::Windows).words[2], "");
}
