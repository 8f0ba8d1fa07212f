#include "frame/menu.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "server/launcher.h"
#include "server/server_commands.h"

#include <gtest/gtest.h>

using namespace ks;
using test::Launcher;

TEST(CompanionFiles, WithoutAConfigurationFileTheOperatorIsToldAndSentToTheFirstTab) {
    Launcher l(PathStyle::Windows);
    l.program.frmMain.tabs().setCurrent(3);
    RunMenuCommand(l.program, "MOTD");
    ASSERT_EQ(l.platform.messages.size(), 1u);
    EXPECT_EQ(l.platform.messages[0].text, "You have not loaded a Configuration file");
    EXPECT_EQ(l.platform.messages[0].title, "File Error");
    EXPECT_EQ(l.platform.messages[0].icon, MessageIcon::None);
    EXPECT_EQ(l.program.frmMain.tabs().current(), 0);
    EXPECT_TRUE(l.platform.directoryChanges.empty());
    EXPECT_TRUE(l.platform.processes.empty());
}

TEST(CompanionFiles, AMissingOrHiddenFileIsRefusedAndTheTabStays) {
    Launcher l(PathStyle::Windows);
    l.field("FFile").setText("C:\\QUAKE2\\KESTRAND\\server.cfg");
    l.platform.hiddenFiles = {"C:\\QUAKE2\\KESTRAND\\cfg\\maps_dm.txt"};
    l.program.frmMain.tabs().setCurrent(3);
    l.program.state.FileExists = -1;
    for (const char* entry : {"maps_dm", "user_o"}) {
        l.platform.messages.clear();
        RunMenuCommand(l.program, entry);
        ASSERT_EQ(l.platform.messages.size(), 1u) << entry;
        EXPECT_EQ(l.platform.messages[0].text, "That file DOES NOT exist");
        EXPECT_EQ(l.platform.messages[0].title, "File Error");
        EXPECT_EQ(l.program.state.FileExists, 0);
    }
    EXPECT_EQ(l.program.frmMain.tabs().current(), 3);
    EXPECT_TRUE(l.platform.directoryChanges.empty());
    EXPECT_TRUE(l.platform.processes.empty());
}

TEST(CompanionFiles, AnExistingFileOpensInTheEditorFromQdir) {
    Launcher l(PathStyle::Windows);
    l.field("FFile").setText("C:\\QUAKE2\\KESTRAND\\server.cfg");
    l.field("QDIR").setText("C:\\QUAKE2");
    l.platform.plainFiles = {"C:\\QUAKE2\\KESTRAND\\cfg\\motd.txt"};
    RunMenuCommand(l.program, "MOTD");
    EXPECT_EQ(l.program.state.FileExists, -1);
    EXPECT_EQ(l.platform.directoryChanges, (std::vector<std::string>{"C:\\QUAKE2"}));
    EXPECT_EQ(l.platform.processes, (std::vector<std::string>{"notepad.exe C:\\QUAKE2\\KESTRAND\\cfg\\motd.txt"}));
    EXPECT_TRUE(l.platform.messages.empty());

    Launcher x(PathStyle::Linux);
    x.field("FFile").setText("/srv/q 2/kestrand/server.cfg");
    x.field("QDIR").setText("/srv/q 2");
    x.platform.plainFiles = {"/srv/q 2/kestrand/cfg/textfilter.cfg"};
    RunMenuCommand(x.program, "textfilter");
    EXPECT_EQ(x.platform.processes, (std::vector<std::string>{"xdg-open /srv/q 2/kestrand/cfg/textfilter.cfg"}));
}

TEST(CompanionFiles, AFailingDirectoryChangeOrEditorIsToldAndTheLauncherGoesOn) {
    Launcher l(PathStyle::Linux);
    l.field("FFile").setText("server.cfg");
    l.platform.plainFiles = {"cfg/help.txt"};
    l.platform.failChangeDirectory = true;
    RunMenuCommand(l.program, "help");
    // QDIR is still "NONE": the change fails, is told, and the editor opens the file all the same.
    ASSERT_EQ(l.platform.messages.size(), 1u);
    EXPECT_NE(l.platform.messages[0].text.find("\"NONE\""), std::string::npos);
    EXPECT_EQ(l.platform.processes, (std::vector<std::string>{"xdg-open cfg/help.txt"}));

    l.platform.failChangeDirectory = false;
    l.platform.failStartProcess = true;
    RunMenuCommand(l.program, "help");
    ASSERT_EQ(l.platform.messages.size(), 2u);
    EXPECT_NE(l.platform.messages[1].text.find("cfg/help.txt"), std::string::npos);
    EXPECT_NE(l.platform.messages[1].text.find("No such file or directory"), std::string::npos);
}

TEST(HelpAndLinks, HandTheirTargetsOnAndSayNothingWhenTheyFail) {
    Launcher w(PathStyle::Windows);
    w.platform.program = "C:\\KSLAUNCH\\kslaunch.exe";
    w.platform.failStartProcess = true;
    RunMenuCommand(w.program, "mnuHelpContents");
    EXPECT_EQ(w.platform.processes, (std::vector<std::string>{"winhlp32.exe C:\\KSLAUNCH\\ks.hlp"}));

    Launcher l(PathStyle::Linux);
    l.platform.failOpenLink = true;
    for (const char* entry : {"mnuHelpContents", "ksd", "mnuViewWebBrowser", "bug"})
        RunMenuCommand(l.program, entry);
    EXPECT_EQ(l.platform.links,
              (std::vector<std::string>{"/opt/kslaunch/ks.html", "http://kestrand.example.org/kestrand/ksdocs.htm",
                                        "http://kestrand.example.org/kestrand", "mailto:bugs@kestrand.example.org"}));
    EXPECT_TRUE(w.platform.messages.empty());
    EXPECT_TRUE(l.platform.messages.empty());
}
