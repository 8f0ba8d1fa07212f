#include "config/reader.h"
#include "config/writer.h"
#include "support/launcher_test.h"

#include <algorithm>
#include <filesystem>

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

// Each file under tests/data/read shows one way in which the reader takes a line. Opened in a launcher of the Windows
// style, whose paths hold no slashes, so that a slash in a value ends the line's reading, each brings up the first
// tab and fills what tests/data/read/expected.txt says, as "CONTROL=[TEXT]", with the messages said there.
TEST(Reader, EachFileFillsOnlyWhatItsWordsName) {
    const std::filesystem::path data = std::filesystem::path(KS_TEST_DATA) / "read";
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(data))
        if (entry.path().extension() == ".cfg") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::string seen;
    for (const auto& file : files) {
        test::Launcher launcher(PathStyle::Windows);
        auto changed = launcher.openAndSee(launcher.file(test::readBytes(file.string())));
        changed.erase("frmMain.FFile");
        seen += "== " + file.filename().string() + "\n";
        for (const auto& [name, text] : changed)
            seen += name + "=[" + text + "]\n";
        for (const std::string& message : launcher.shown())
            seen += "! " + (message == test::kForeignWarning ? "the warning of a foreign file" : message) + "\n";
        EXPECT_EQ(launcher.program.mainTabs().current(), 0) << file;
    }
    EXPECT_EQ(seen, test::readBytes((data / "expected.txt").string()));

    // A slash far out in a very long line ends the reading of that line alone.
    test::Launcher launcher(PathStyle::Windows);
    const std::string longValue(40000, '7');
    launcher.open(
        launcher.file("set motd_time " + longValue + "\r\n" + std::string(70000, '/') + "\r\nset timelimit 4"));
    EXPECT_EQ(launcher.main("MOTD_T").text(), longValue);
    EXPECT_EQ(launcher.main("FTT1").text(), "4");
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
