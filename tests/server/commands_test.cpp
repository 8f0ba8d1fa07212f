#include "server/launch.h"
#include "session/menu.h"
#include "support/launcher_test.h"

#ifndef _WIN32
#include <unistd.h>
#endif

using namespace ks;
using test::Launcher;

#ifndef _WIN32 // Linux paths over real files, and the record of a running server
TEST(Run, SavesThenChangesToQdirAndStartsTheServerEachTimeEvenAfterANoToReplace) {
    Launcher l(PathStyle::Linux, false);
    const std::string file = l.dir.file("Server.CFG");
    l.main("FFile").setText(file);
    l.main("QDIR").setText("/srv/Quake 2");
    l.main("FGD").setText("Kestrand");
    l.main("FPORT").setText("27911");
    l.platform.startedPid = getpid(); // a process that runs
    setenv("XDG_RUNTIME_DIR", l.dir.path().c_str(), 1);
    unsetenv("RUNTIME_DIRECTORY");

    saveAndStartServer(l.program);
    // The port's record names the server, so that kscfg status and stop find it.
    const std::string record = test::readBytes(l.dir.file("kslaunch/27911.state"));
    EXPECT_TRUE(record.starts_with("pid " + std::to_string(getpid()) + "\n")) << record;
    EXPECT_TRUE(record.ends_with("\nconfig " + file + "\n")) << record;
    EXPECT_FALSE(test::readBytes(file).empty()); // the save came first
    const std::string line = "/srv/Quake 2/quake2 +set game Kestrand +set dedicated 1 +set port 27911 +exec Server.CFG";
    EXPECT_EQ(l.effects(), (std::vector<std::string>{"changeDirectory /srv/Quake 2", "startProcess " + line}));
    // The program is one path, blank and all; its output goes beside the configuration file.
    const ProgramStart& started = l.platform.starts.at(0);
    EXPECT_EQ(started.program, "/srv/Quake 2/quake2");
    EXPECT_EQ(started.arguments, (std::vector<std::string>{"+set", "game", "Kestrand", "+set", "dedicated", "1", "+set",
                                                           "port", "27911", "+exec", "Server.CFG"}));
    EXPECT_EQ(started.logFile, file + ".log");
    // The operator keeps a file of his own; the server starts with it all the same.
    l.file("exec mine.cfg\r\n", "Server.CFG");
    l.platform.messageAnswers = {MessageAnswer::No};
    saveAndStartServer(l.program);
    EXPECT_EQ(test::readBytes(file), "exec mine.cfg\r\n");
    EXPECT_EQ(l.platform.processes, (std::vector<std::string>{line, line}));
    EXPECT_EQ(l.shown(), std::vector<std::string>{"Configuration File Exists Warning|Replace File ?"});
}
#endif

TEST(ServerCommands, AFailingDirectoryChangeOrStartIsToldAndTheLauncherGoesOn) {
    if (nativePathStyle() == PathStyle::Windows) GTEST_SKIP() << "Linux paths over the files of a system with drives";
    Launcher l(PathStyle::Linux, false);
    l.main("FFile").setText(l.dir.file("server.cfg"));
    const std::string help = l.dir.file("cfg/help.txt");
    l.platform.plainFiles = {help};
    for (const bool directoryFails : {true, false}) {
        l.platform.failChangeDirectory = directoryFails;
        l.platform.failStartProcess = !directoryFails;
        saveAndStartServer(l.program);
        runMenuCommand(l.program, "help");
    }
    // Without its directory the server does not start; the editor opens the file all the same.
    const std::string line = "NONE/quake2 +set game NONE +set dedicated 1 +set port 27910 +exec server.cfg";
    EXPECT_EQ(l.platform.processes, (std::vector<std::string>{"xdg-open " + help, line, "xdg-open " + help}));
    // The companion file is one argument of the editor, whatever blanks its path holds.
    EXPECT_EQ(l.platform.starts.at(0).arguments, std::vector<std::string>{help});
    const std::vector<std::string> told = l.shown();
    ASSERT_EQ(told.size(), 4u);
    EXPECT_TRUE(told[0].starts_with("Server Not Started|")) << told[0];
    for (const auto& [index, part] : {std::pair{0, "\"NONE\""},
                                      {1, "\"NONE\""},
                                      {2, "\"NONE/quake2\""},
                                      {2, "No such file or directory"},
                                      {3, help.c_str()}})
        EXPECT_NE(told[index].find(part), std::string::npos) << told[index] << " lacks " << part;
}

TEST(CompanionFiles, OpenInTheEditorFromQdirAndWithoutAUsableFileNothingStartsAndTheOperatorIsTold) {
    // Run saves first, and the save warns of the missing file.
    const std::string saveWarning =
        test::kFileWarning + "One of the critical settings has not been set,\rsee the yellow highlighted fields";
    const std::string cfg = "C:\\QUAKE2\\KESTRAND\\server.cfg", missing = "File Error|That file DOES NOT exist";
    const std::vector<std::string> motd = {"changeDirectory C:\\QUAKE2",
                                           "startProcess notepad.exe C:\\QUAKE2\\KESTRAND\\cfg\\motd.txt"};
    struct Row {
        std::string file, entry, told;
        int tab; // after the command
        std::vector<std::string> effects;
    };
    for (const Row& row : {Row{"NONE", "runquake2", saveWarning, 0, {}}, Row{"", "runquake2", saveWarning, 0, {}},
                           Row{"NONE", "MOTD", "File Error|You have not loaded a Configuration file", 0, {}},
                           Row{cfg, "maps_dm", missing, 3, {}}, Row{cfg, "MOTD", "", 3, motd}}) {
        Launcher l(PathStyle::Windows, false);
        l.main("QDIR").setText("C:\\QUAKE2");
        l.main("FFile").setText(row.file);
        l.platform.hiddenFiles = {"C:\\QUAKE2\\KESTRAND\\cfg\\maps_dm.txt"};
        l.platform.plainFiles = {"C:\\QUAKE2\\KESTRAND\\cfg\\motd.txt"};
        l.program.mainTabs().setCurrent(3);
        runMenuCommand(l.program, row.entry);
        EXPECT_EQ(l.shown(), row.told.empty() ? std::vector<std::string>() : std::vector{row.told}) << row.entry;
        EXPECT_EQ(l.program.mainTabs().current(), row.tab) << row.entry;
        EXPECT_EQ(l.effects(), row.effects) << row.entry;
    }
}

// Each entry of the View menu opens its own file from the cfg folder beside the configuration file.
TEST(CompanionFiles, EachViewEntryOpensItsOwnFile) {
    const std::pair<const char*, const char*> entries[] = {{"Bot_Detected", "bot_detected.txt"},
                                                           {"textfilter", "textfilter.cfg"},
                                                           {"help", "help.txt"},
                                                           {"ip_banned", "ip_banned.txt"},
                                                           {"maps_ctf", "maps_ctf.txt"},
                                                           {"maps_dm", "maps_dm.txt"},
                                                           {"MOTD", "motd.txt"},
                                                           {"server", "server.txt"},
                                                           {"user_v", "user_v.txt"},
                                                           {"user_m", "user_m.txt"},
                                                           {"user_o", "user_o.txt"}};
    Launcher l(PathStyle::Linux, false);
    l.main("FFile").setText("/srv/q2/kestrand/server.cfg");
    std::vector<std::string> opened;
    for (const auto& [entry, file] : entries) {
        l.platform.plainFiles.insert(std::string("/srv/q2/kestrand/cfg/") + file);
        EXPECT_TRUE(runMenuCommand(l.program, entry)) << entry;
        opened.push_back(std::string("xdg-open /srv/q2/kestrand/cfg/") + file);
    }
    EXPECT_EQ(l.platform.processes, opened);
    EXPECT_TRUE(l.platform.messages.empty());
}

TEST(HelpAndLinks, HandTheirTargetsOnAndSayNothingWhenTheyFail) {
    Launcher w(PathStyle::Windows, false);
    w.platform.program = "C:\\KSLAUNCH\\kslaunch.exe";
    w.platform.failStartProcess = true;
    runMenuCommand(w.program, "mnuHelpContents");
    EXPECT_EQ(w.platform.processes, (std::vector<std::string>{"winhlp32.exe C:\\KSLAUNCH\\ks.hlp"}));

    Launcher l(PathStyle::Linux, false);
    l.platform.failOpenLink = true;
    for (const char* entry : {"mnuHelpContents", "ksd", "mnuViewWebBrowser", "bug"})
        runMenuCommand(l.program, entry);
    EXPECT_EQ(l.platform.links,
              (std::vector<std::string>{"/opt/kslaunch/ks.html", "http://kestrand.example.org/kestrand/ksdocs.htm",
                                        "http://kestrand.example.org/kestrand", "mailto:bugs@kestrand.example.org"}));
    EXPECT_TRUE(w.platform.messages.empty() && l.platform.messages.empty());
}
