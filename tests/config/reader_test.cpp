#include "config/reader.h"
#include "config/writer.h"
#include "config_fixture.h"
#include "frame/catalogue.h"

#include <gtest/gtest.h>

using namespace ks;
using test::ConfigTest;

namespace {

struct ReaderTest : ConfigTest {
    // The messages shown, as "TITLE: TEXT".
    std::vector<std::string> shown() const {
        std::vector<std::string> all;
        for (const auto& m : platform.messages) all.push_back(m.title + ": " + m.text);
        return all;
    }
    bool foreignWarningShown() const {
        for (const auto& m : platform.messages)
            if (m.text == test::kForeignWarning) return true;
        return false;
    }
};

struct LineCase {
    const char* line;
    std::map<std::string, std::string> changed; // "form.name" -> text, every change the line makes
};

} // namespace

TEST_F(ReaderTest, TheWorkedExampleFillsFieldsAndBoxesAndTheNextSaveWritesTheNewTotal) {
    const std::string path = file("set fraglimit 40\r\n"
                                  "hostname \"Match Server\"\r\n"
                                  "set gravity 800\r\n"
                                  "// set df_no_falling 8\r\n"
                                  "// set df_instant_items 0\r\n");
    const auto before = snapshot();
    open(path);

    EXPECT_EQ(main("FFile").text(), path);
    EXPECT_EQ(program.frmMain.tabs().current(), 0);
    EXPECT_EQ(changes(before, snapshot()), (std::map<std::string, std::string>{
                                               {"frmMain.FFile", path},
                                               {"frmMain.FFGL1", "40"},
                                               {"frmMain.FHOSTN", "\"Match Server\""},
                                               {"Form1.Check50", "1"},
                                               {"Form1.DMFLAG4", "8"},
                                               {"Form1.DMFLAGT", "88"},
                                           }));
    EXPECT_EQ(shown(), std::vector<std::string>{std::string(test::kFileWarningTitle) + ": " + test::kForeignWarning});
    EXPECT_EQ(platform.messages.back().icon, MessageIcon::Critical);
    EXPECT_EQ(platform.messages.back().buttons, MessageButtons::Ok);
    EXPECT_EQ(program.state.ConfigSaved, 0);

    mnuFileSave_Click(program);
    const std::string written = test::readBytes(path);
    EXPECT_NE(written.find("\r\nset dmflags 88\r\n"), std::string::npos);
    EXPECT_EQ(written.find("gravity"), std::string::npos);
}

TEST_F(ReaderTest, EachLineFillsOnlyWhatItsWordsName) {
    const std::vector<LineCase> cases = {
        {"quit", {}},
        {"set hook", {{"frmMain.FH1", ""}}},
        {"set hostname x", {}},
        {"set map q2dm2", {}},
        {"set dedicated 0", {}},
        {"// set fraglimit 30", {}},
        {"// fraglimit 30", {{"frmMain.FFGL1", "30"}}},
        {"anything fraglimit 30", {{"frmMain.FFGL1", "30"}}},
        {"set  fraglimit 30", {}},
        {"     set fraglimit 30", {{"frmMain.FFGL1", "30"}}},
        {"set fraglimit\t30", {}},
        {"set stdlogname kestrand/StdLog.log", {{"frmMain.FLOGN", ""}}},
        {"set stdlogname \"x.log\" // comment", {{"frmMain.FLOGN", "\"x.log\" // comment"}}},
        {"set maxclients 8 // comment", {{"frmMain.FMC", "8"}}},
        {"hostname \"One, Two\"", {{"frmMain.FHOSTN", "\"One"}}},
        {"map \"q2dm1\"", {{"frmMain.FSM", "\"q2dm1\" "}}},
        {"map q2dm3", {{"frmMain.FSM", "q2dm3"}}},
        {"hostname port", {{"frmMain.FHOSTN", "port"}, {"frmMain.FPORT", ""}}},
        {"// set dedicated", {{"frmMain.FDS", ""}}},
        {"// set dedicated 0 // Added by KS Launcher - Do NOT modify this section", {{"frmMain.FDS", "0"}}},
        {"setmaster a.example b.example", {}},
        {"set master a.example b.example", {{"frmMain.FMS3", "a.example"}}},
        {"set allow_download 0", {}},
        {"set allow_downloads 0", {{"frmMain.FAD1", "0"}}},
        {"set bot_chat 0", {}},
        {"set g_damage 99", {{"Form2.FGD", "99"}}},
        {"// set sa_cells 50", {{"Form1.SAC", "50"}}},
        {"set dmflags 1024", {}},
        {"// set item_quad", {{"Form1.Check16", "1"}, {"Form1.WIB8", "64"}, {"Form1.WIBT", "64"}}},
        {"// set br_speed 1", {{"Form1.Check85", "1"}, {"Form1.RND", "256"}, {"Form1.TRB", "256"}}},
        {"// set df_skinteams 0", {}},
        {"// set b_log -1", {}},
        {"// Set df_no_health 1", {}},
        {"// End KS Launcher Section", {}},
        // A slash behind the second position ends the scan, so a path from the root never reaches QDIR.
        {"// set qdir /games/quake2 // Added by KS Launcher - Do NOT modify this section", {{"frmMain.QDIR", ""}}},
    };
    for (const LineCase& c : cases) {
        test::Launcher fresh;
        const std::string path = fresh.file(std::string(c.line) + "\r\n");
        const auto before = fresh.snapshot();
        fresh.open(path);
        auto changed = test::Launcher::changes(before, fresh.snapshot());
        changed.erase("frmMain.FFile");
        EXPECT_EQ(changed, c.changed) << c.line;
    }
}

TEST_F(ReaderTest, AValueARuleRefusesBringsItsMessageDuringTheRead) {
    openBytes("set deathmatch 5\r\nset fraglimit 7\r\n");
    EXPECT_EQ(main("FDM").text(), "");
    EXPECT_EQ(main("FFGL1").text(), "7");
    ASSERT_EQ(platform.messages.size(), 2u);
    EXPECT_EQ(platform.messages[0].text, "Must be 0 or 1");
    EXPECT_EQ(platform.messages[0].title, "DeathMatch, Off or On");
    EXPECT_EQ(platform.messages[1].text, test::kForeignWarning);
}

TEST_F(ReaderTest, TheAddressLineTurnsUseDefaultOffAndFillsTheAddress) {
    openBytes("// set IP 10.1.2.3 // Added by KS Launcher - Do NOT modify this section\r\n");
    EXPECT_EQ(program.frmMain.check("ipCheck").state(), 0);
    EXPECT_TRUE(main("IP").enabled());
    EXPECT_EQ(main("IP").text(), "10.1.2.3");
}

TEST_F(ReaderTest, TheQuakeDirectoryMovesTheDriveUnderGuardAndTheGameDirectoryTheDirectory) {
    test::FakePlatform windows;
    windows.driveList = {"C:\\", "D:\\"};
    windows.notReadyDrives = {"N:\\"};
    windows.directories.insert("d:\\Quake2\\kestrand");
    Program win(windows, PathStyle::Windows);
    ConnectHandlers(win);
    std::vector<int> guardDuringDriveChange;
    win.Drive2.onChange([&] { guardDuringDriveChange.push_back(win.state.ReadingQDIR); });

    const std::string path = dir.file("win.cfg");
    test::writeBytes(path, "// set qdir d:\\Quake2 // Added by KS Launcher - Do NOT modify this section\r\n"
                           "set game_dir kestrand\r\n");
    ASSERT_TRUE(OpenConfigFile(win, path));
    EXPECT_EQ(win.Drive2.text(), "D:\\");
    EXPECT_EQ(guardDuringDriveChange, std::vector<int>{1});
    EXPECT_EQ(win.state.ReadingQDIR, 0);
    EXPECT_EQ(win.frmMain.field("QDIR").text(), "d:\\Quake2");
    EXPECT_EQ(win.Dir2.text(), "d:\\Quake2\\kestrand");

    // A drive that is not ready and a directory that does not exist leave the selectors where they were.
    test::writeBytes(path, "// set qdir NONE // Added by KS Launcher - Do NOT modify this section\r\n"
                           "set game_dir NONE\r\n");
    ASSERT_TRUE(OpenConfigFile(win, path));
    EXPECT_EQ(win.Drive2.text(), "D:\\");
    EXPECT_EQ(win.Dir2.text(), "d:\\Quake2\\kestrand");
    EXPECT_EQ(win.frmMain.field("QDIR").text(), "NONE");
    EXPECT_EQ(win.frmMain.field("FGD").text(), "NONE");
}

TEST_F(ReaderTest, TheMarkerAnywhereMarksTheFileAsOurs) {
    openBytes("set fraglimit 9\r\n" + std::string(test::kMarker) + "\r\nset timelimit 3\r\n");
    EXPECT_FALSE(foreignWarningShown());
    EXPECT_EQ(main("FTT1").text(), "3");
    EXPECT_EQ(program.frmMain.tabs().current(), 0);

    for (const std::string& near : {std::string("//kestrand Launcher AUTO CONFIG SECTION - DO NOT Modify"),
                                    std::string(test::kMarker) + " ", std::string(test::kMarker) + " x",
                                    std::string("\t") + test::kMarker}) {
        platform.messages.clear();
        openBytes(near + "\r\n");
        EXPECT_TRUE(foreignWarningShown()) << near;
    }
}

TEST_F(ReaderTest, ForeignFilesBringNoFlagsAndTheNextSaveWritesTheWholeLayout) {
    const std::string path = file("set dmflags 1024\n");
    const auto before = snapshot();
    open(path);
    EXPECT_TRUE(foreignWarningShown());
    auto changed = changes(before, snapshot());
    EXPECT_EQ(changed, (std::map<std::string, std::string>{{"frmMain.FFile", path}}));

    platform.messageAnswers.push_back(MessageAnswer::Yes);
    mnuFileSave_Click(program);
    const std::string written = test::readBytes(path);
    EXPECT_NE(written.find("\r\nset dmflags 80\r\n"), std::string::npos);
    EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 237);
}

TEST_F(ReaderTest, AnEmptyFileKeepsItsNameShowsTheFirstTabAndWarns) {
    const std::string path = file("");
    const auto before = snapshot();
    open(path);
    EXPECT_EQ(changes(before, snapshot()), (std::map<std::string, std::string>{{"frmMain.FFile", path}}));
    EXPECT_EQ(program.frmMain.tabs().current(), 0);
    EXPECT_EQ(shown(), std::vector<std::string>{std::string(test::kFileWarningTitle) + ": " + test::kForeignWarning});
}

TEST_F(ReaderTest, AFileThatCannotBeReadPutsBackNoneOnYellowAndChangesNothingElse) {
    main("FFile").setText("/somewhere/earlier.cfg");
    main("FFile").setBackColour(kWhite);
    for (const std::string& path : {dir.file("missing.cfg"), dir.path().string()}) {
        platform.messages.clear();
        const auto before = snapshot();
        open(path);
        auto changed = changes(before, snapshot());
        EXPECT_EQ(changed, (std::map<std::string, std::string>{{"frmMain.FFile", "NONE"}})) << path;
        EXPECT_EQ(main("FFile").backColour(), kPaleYellow);
        ASSERT_EQ(platform.messages.size(), 1u) << path;
        const MessageBoxRequest& message = platform.messages[0];
        EXPECT_EQ(message.text, "There is no such existing file!");
        EXPECT_EQ(message.title, test::kFileWarningTitle);
        EXPECT_EQ(message.icon, MessageIcon::Critical);
        EXPECT_EQ(message.buttons, MessageButtons::Ok);
        EXPECT_EQ(program.frmMain.tabs().current(), 2);
        main("FFile").setText("/somewhere/earlier.cfg");
    }
}

TEST_F(ReaderTest, CancellingTheDialogChangesNothing) {
    main("FFile").setText("/earlier.cfg");
    program.Dir2.setText("/games/quake2");
    const auto before = snapshot();
    mnuFileOpen_Click(program);
    EXPECT_EQ(before, snapshot());
    EXPECT_TRUE(platform.messages.empty());
    ASSERT_EQ(platform.dialogs.size(), 1u);
    const FileDialogRequest& dialog = platform.dialogs[0];
    EXPECT_EQ(dialog.kind, FileDialogKind::Open);
    EXPECT_EQ(dialog.title, "Open");
    EXPECT_EQ(dialog.initialDirectory, "/games/quake2");
    EXPECT_EQ(dialog.fileName, "");
    EXPECT_EQ(dialog.filter, "Quake Configuration Files (*.CFG)|*.CFG");
    platform.dialogAnswers.push_back(std::string());
    mnuFileOpen_Click(program);
    EXPECT_EQ(before, snapshot());
}

// Values every field can hold and write back: a switch flipped, numbers and texts of its own.
void giveEveryFieldAValueOfItsOwn(Program& program) {
    program.frmMain.check("ipCheck").setState(0);
    int n = 1;
    auto valueFor = [&n](const FieldSpec& spec) -> std::string {
        ++n;
        switch (spec.kind) {
        case ValueKind::Switch:
            return spec.defaultText == "1" ? "0" : "1";
        case ValueKind::Number0to8:
            return "7";
        case ValueKind::Number0to9:
            return "3";
        case ValueKind::QuotedText:
            return "\"v" + std::string(spec.name) + "\"";
        case ValueKind::Address:
            return "10.0.0." + std::to_string(n);
        case ValueKind::Path:
            return spec.name == "QDIR" ? "q2" : "mod";
        case ValueKind::Number:
        case ValueKind::FreeText:
            break;
        }
        return std::to_string(1000 + n);
    };
    for (const FieldSpec& spec : mainFields())
        if (spec.name != "FFile") program.frmMain.field(spec.name).setText(valueFor(spec));
    for (const FieldSpec& spec : weaponFields()) program.Form2.field(spec.name).setText(valueFor(spec));
    for (const AmmoField& ammo : startAmmo()) program.Form1.field(ammo.name).setText(std::to_string(++n));
    bool every = false;
    for (const FlagGroup& group : flagGroups())
        for (const FlagMember& member : group.members)
            if (!member.startsOn && (every = !every)) program.Form1.check(member.check).setState(1);
}

TEST_F(ReaderTest, AWrittenFileRestoresEveryFieldButTheFiveWithTheirOwnKeys) {
    const std::string path = dir.file("all.cfg");
    giveEveryFieldAValueOfItsOwn(program);
    main("FFile").setText(path);
    ASSERT_TRUE(WriteConfig(program).ok);
    const auto written = snapshot();

    test::Launcher fresh;
    const auto defaults = fresh.snapshot();
    fresh.open(path);
    EXPECT_TRUE(fresh.platform.messages.empty()) << fresh.platform.messages.front().text;
    const auto read = fresh.snapshot();
    const std::set<std::string> keepTheirs = {"frmMain.FAD1", "frmMain.FAD2", "frmMain.FAD5", "frmMain.FMS3",
                                              "frmMain.ABT"};
    for (const auto& [name, text] : written) {
        if (name == "Drive2" || name == "Dir2") continue;
        if (keepTheirs.count(name)) {
            EXPECT_EQ(read.at(name), defaults.at(name)) << name;
            EXPECT_NE(text, defaults.at(name)) << name;
        } else {
            EXPECT_EQ(read.at(name), text) << name;
        }
    }
}

TEST_F(ReaderTest, OpeningTheSameFileTwiceChangesNothingTheSecondTime) {
    const std::string path = dir.file("twice.cfg");
    giveEveryFieldAValueOfItsOwn(program);
    main("FFile").setText(path);
    ASSERT_TRUE(WriteConfig(program).ok);

    test::Launcher fresh;
    fresh.open(path);
    int handlerRuns = 0;
    for (const Form* form : {&fresh.program.frmMain, &fresh.program.Form1, &fresh.program.Form2}) {
        for (const auto& field : form->fields()) field->onChange([&] { ++handlerRuns; });
        for (const auto& check : form->checkBoxes()) check->onClick([&] { ++handlerRuns; });
    }
    const auto first = fresh.snapshot();
    fresh.open(path);
    EXPECT_EQ(fresh.snapshot(), first);
    EXPECT_EQ(handlerRuns, 0);
}

TEST_F(ReaderTest, ALineEndOfAnyKindReadsTheSame) {
    const std::string lines[] = {"set fraglimit 11", "hostname \"A B\"", "// set df_no_health 1", "map q2dm7"};
    std::map<std::string, std::string> results[3];
    const char* ends[] = {"\r\n", "\n", "\r"};
    for (int i = 0; i < 3; ++i) {
        test::Launcher fresh;
        std::string bytes;
        for (const std::string& line : lines) bytes += line + ends[i];
        fresh.open(fresh.file(bytes));
        results[i] = fresh.snapshot();
        results[i].erase("frmMain.FFile");
    }
    EXPECT_EQ(results[0], results[1]);
    EXPECT_EQ(results[0], results[2]);
    EXPECT_EQ(results[0].at("frmMain.FSM"), "q2dm7");
}

TEST_F(ReaderTest, RecordsBeyondSixteenBitPositionsAreReadLikeAnyOther) {
    const std::string value(40000, '7');
    openBytes("set motd_time " + value + "\r\n" + std::string(70000, '/') + "\r\nset timelimit 4\r\n");
    EXPECT_EQ(main("MOTD_T").text(), value);
    EXPECT_EQ(main("FTT1").text(), "4");
}
