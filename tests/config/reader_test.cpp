#include "config/reader.h"
#include "config/writer.h"
#include "support/launcher_test.h"

using namespace ks;
using ConfigTest = test::LauncherTest;
using Changes = test::Launcher::Snapshot;

TEST_F(ConfigTest, TheWorkedExampleFillsFieldsAndBoxesAndTheNextSaveWritesTheNewTotal) {
    const std::string path = file("set fraglimit 40\r\nhostname \"Match Server\"\r\nset gravity 800\r\n"
                                  "// set df_no_falling 8\r\n// set df_instant_items 0\r\n");
    EXPECT_EQ(openAndSee(path), (Changes{{"frmMain.FFile", path},
                                         {"frmMain.FFGL1", "40"},
                                         {"frmMain.FHOSTN", "\"Match Server\""},
                                         {"Form1.Check50", "1"},
                                         {"Form1.DMFLAG4", "8"},
                                         {"Form1.DMFLAGT", "88"}}));
    EXPECT_EQ(shown(), std::vector<std::string>{test::kForeignWarning});

    saveConfig(program);
    EXPECT_NE(test::readBytes(path).find("\r\nset dmflags 88\r\n"), std::string::npos);
}

TEST(Reader, EachFileFillsOnlyWhatItsWordsName) {
    const std::string marker = test::kMarker;
    const std::string longValue(40000, '7');
    struct Case {
        std::string bytes;
        Changes changed;
        std::string ruleMessage = "";
        bool ours = false;
    };
    const std::vector<Case> cases = {
        {"", {}},
        {"set hostname x\r\nset map q2dm2\r\nset dedicated 0\r\n// set fraglimit 30\r\nset  fraglimit 30\r\n"
         "set fraglimit\t30\r\nquit\r\nsetmaster a b\r\nset allow_download 0\r\nset bot_chat 0\r\nset dmflags 1024\r\n"
         "// set df_skinteams 0\r\n// set b_log -1\r\n// Set df_no_health 1\r\n// End KS Launcher Section\r\n",
         {}},
        {"set hook", {{"frmMain.FH1", ""}}},
        {"// fraglimit 30", {{"frmMain.FFGL1", "30"}}},
        {"     anything fraglimit 30", {{"frmMain.FFGL1", "30"}}},
        {"set stdlogname kestrand/StdLog.log", {{"frmMain.FLOGN", ""}}},
        {"set stdlogname \"x.log\" // note\r\nset maxclients 8 // note",
         {{"frmMain.FLOGN", "\"x.log\" // note"}, {"frmMain.FMC", "8"}}},
        {"hostname \"One, Two\"", {{"frmMain.FHOSTN", "\"One"}}},
        {"map \"q2dm1\"", {{"frmMain.FSM", "\"q2dm1\" "}}},
        {"hostname port", {{"frmMain.FHOSTN", "port"}, {"frmMain.FPORT", ""}}},
        {"// set dedicated", {{"frmMain.FDS", ""}}},
        {"// set dedicated 0 // Added by KS Launcher - Do NOT modify this section", {{"frmMain.FDS", "0"}}},
        {"set master a.example b.example", {{"frmMain.FMS3", "a.example"}}},
        {"set allow_downloads 0", {{"frmMain.FAD1", "0"}}},
        {"set g_damage 99", {{"Form2.FGD", "99"}}},
        {"// set sa_cells 50", {{"Form1.SAC", "50"}}},
        {"// set item_quad", {{"Form1.Check16", "1"}, {"Form1.WIB8", "64"}, {"Form1.WIBT", "64"}}},
        {"// set IP 10.1.2.3 // Added", {{"frmMain.ipCheck", "0"}, {"frmMain.IP", "10.1.2.3"}}},
        {"set deathmatch 5\r\nset fraglimit 7",
         {{"frmMain.FDM", ""}, {"frmMain.FFGL1", "7"}},
         "DeathMatch, Off or On|Must be 0 or 1"},
        // A slash behind the second position ends the scan, so the value is never cut.
        {"// set qdir C:/Quake2 // Added", {{"frmMain.QDIR", ""}}},
        {"set motd_time " + longValue + "\r\n" + std::string(70000, '/') + "\r\nset timelimit 4",
         {{"frmMain.MOTD_T", longValue}, {"frmMain.FTT1", "4"}}},
        {"set fraglimit 9\r\n" + marker + "\r\nset timelimit 3",
         {{"frmMain.FFGL1", "9"}, {"frmMain.FTT1", "3"}},
         "",
         true},
        {"//kestrand" + marker.substr(10) + "\r\n" + marker + " \r\n" + marker + " x\r\n\t" + marker, {}},
    };
    // Windows paths hold no slashes, so there a slash in a value ends the line's reading.
    for (const Case& c : cases) {
        test::Launcher launcher(PathStyle::Windows);
        const std::string path = launcher.file(c.bytes);
        auto changed = launcher.openAndSee(path);
        EXPECT_EQ(changed["frmMain.FFile"], path);
        changed.erase("frmMain.FFile");
        EXPECT_EQ(changed, c.changed) << c.bytes.substr(0, 80);
        EXPECT_EQ(launcher.program.mainTabs().current(), 0);
        std::vector<std::string> expected;
        if (!c.ruleMessage.empty()) expected.push_back(c.ruleMessage);
        if (!c.ours) expected.push_back(test::kForeignWarning);
        EXPECT_EQ(launcher.shown(), expected) << c.bytes.substr(0, 80);
    }
}

TEST(Reader, TheCutKeepsLinuxPathsAndEndsItsScanInVeryLongRecords) {
    // In the Linux style a slash ends the scan only as "//" (Windows paths hold no slashes).
    const std::string rec = "// set qdir /srv/q2 // Added by KS Launcher - Do NOT modify this section ";
    EXPECT_EQ(cutRecord(rec, PathStyle::Linux).words[3], "/srv/q2");
    EXPECT_EQ(cutRecord("set maxclients 8 //max 16 ", PathStyle::Linux).words[2], "8");
    EXPECT_EQ(cutRecord("set sv_logdir log/k ", PathStyle::Linux).words[2], "log/k");
    std::string big = "set /" + std::string(9995, 'x') + " value more ";
    EXPECT_EQ(cutRecord(big).words[2], "value"); // the scan went on at position 10,000
    for (std::size_t at : {9999u, 10000u, 40000u}) {
        big = std::string(at - 1, 'a') + "/b c d e ";
        EXPECT_EQ(cutRecord(big).words[0].size(), at <= 9999 ? at + 1 : 0u) << at;
    }
}

TEST(Reader, OnLinuxAQuakeDirectoryWithBlanksComesBackWholeFromASavedFile) {
    test::Launcher writer;
    for (const char* qdir : {"/home/John Smith/.yq2", "/srv/games/Quake II  "}) {
        writer.main("QDIR").setText(qdir);
        writer.main("FFile").setText(writer.dir.file("blanks.cfg"));
        ASSERT_TRUE(writeConfig(writer.program).ok);
        test::Launcher reader;
        reader.open(writer.dir.file("blanks.cfg"));
        // Blanks at the end of the path do not survive the line's own end.
        EXPECT_EQ(reader.main("QDIR").text(), std::string(qdir).substr(0, std::string(qdir).find_last_not_of(' ') + 1));
    }
    test::Launcher handWritten;
    handWritten.open(handWritten.file("// set qdir /opt/Quake II\r\nset fraglimit 5\r\n"));
    EXPECT_EQ(handWritten.main("QDIR").text(), "/opt/Quake II");
    // On Windows the value still ends at its first blank.
    test::Launcher windows(PathStyle::Windows);
    windows.open(windows.file("// set qdir C:\\Quake II\\q2 // Added\r\n"));
    EXPECT_EQ(windows.main("QDIR").text(), "C:\\Quake");
}

TEST(Reader, FlagValuesTurnTheBoxOnUnlessTheyAreNumbersAtOrBelowZero) {
    for (const char* on : {"1",  "0.5", ".5", "+2",    "1E2", "1d2", "&H10", "&h7fff", "&O17",   "&H10000",    "",
                           "1x", "-",   "1E", "\"0\"", "&H",  "&HG", "&O8",  "1e400",  "-1e400", "&H100000000"})
        EXPECT_TRUE(flagValueTurnsOn(on)) << '"' << on << '"';
    for (const char* off :
         {"0", "-1", "-0.5", "0.0", "-0", "0E5", "1e-400", "-2D1", "&HFFFF", "&HFFFFFFFF", "&O177777"})
        EXPECT_FALSE(flagValueTurnsOn(off)) << '"' << off << '"';
}

TEST(Reader, OnWindowsTheQuakeDirectoryMovesTheSelectorsAloneAndTheGameDirectorySplitsAnew) {
    test::Launcher w(PathStyle::Windows, false);
    w.platform.driveList = {"C:\\", "D:\\"};
    w.platform.notReadyDrives = {"N:\\"};
    w.platform.directories.insert("d:\\Quake2\\kestrand");
    int splits = 0;
    w.program.directorySelector().onChoice([&] { ++splits; });
    // A drive that is not ready and a directory that does not exist then leave the selectors where they were.
    for (const char* qdir : {"d:\\Quake2", "N:\\Quake2"}) {
        w.open(w.file("// set qdir " + std::string(qdir) + " // Added\r\nset game_dir kestrand\r\n"));
        EXPECT_EQ(w.where(), "D:\\ | d:\\Quake2\\kestrand | " + std::string(qdir) + " | kestrand");
    }
    // Only the game directory's line splits the selected directory anew; the qdir line moves the selectors alone.
    EXPECT_EQ(splits, 1);
}

TEST_F(ConfigTest, OpenStartsInTheGameDirectoryCancelChangesNothingAndAnUnreadableFilePutsBackNone) {
    program.directorySelector().show("/games/quake2");
    const auto before = snapshot();
    chooseAndOpenConfig(program);
    platform.dialogAnswers.push_back(std::string());
    chooseAndOpenConfig(program);
    EXPECT_EQ(before, snapshot());
    EXPECT_TRUE(platform.messages.empty());
    const FileDialogRequest& d = platform.dialogs.at(0);
    EXPECT_EQ(d.kind, FileDialogKind::Open);
    EXPECT_EQ(d.title + "|" + d.initialDirectory + "|" + d.fileName + "|" + d.filter,
              "Open|/games/quake2||Quake Configuration Files (*.CFG)|*.CFG");

    for (const std::string& path : {dir.file("missing.cfg"), dir.path().string()}) {
        main("FFile").setText("/earlier.cfg");
        main("FFile").setBackColour(kWhite);
        platform.messages.clear();
        EXPECT_EQ(openAndSee(path), (Changes{{"frmMain.FFile", "NONE"}})) << path;
        EXPECT_EQ(main("FFile").backColour(), kPaleYellow);
        EXPECT_EQ(program.mainTabs().current(), 2); // Team Play, where it stood
        EXPECT_EQ(shown(), std::vector<std::string>{test::kFileWarning + "There is no such existing file!"}) << path;
        EXPECT_EQ(platform.messages[0].icon, MessageIcon::Critical);
    }
}
