#include "frame/menu.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "server/launch.h"
#include "server/launcher.h"
#include "server/server_commands.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

using namespace ks;
using test::Launcher;

TEST(Run, WithoutAConfigurationFileNothingStartsAndTheFirstTabComesUp) {
    for (const char* file : {"NONE", ""}) {
        Launcher l(PathStyle::Windows);
        l.field("QDIR").setText("C:\\QUAKE2");
        l.field("FFile").setText(file);
        l.program.frmMain.tabs().setCurrent(2);
        RunMenuCommand(l.program, "runquake2");
        EXPECT_TRUE(l.effects().empty()) << file;
        EXPECT_EQ(l.program.frmMain.tabs().current(), 0) << file;
    }
}

TEST(Run, SavesThenChangesToQdirAndStartsTheServer) {
    test::TempDir dir;
    Launcher l(PathStyle::Linux);
    const std::string file = dir.file("Server.CFG");
    l.field("FFile").setText(file);
    l.field("QDIR").setText("/srv/Quake 2");
    l.field("FGD").setText("Kestrand");
    l.field("FPORT").setText("27911");
    l.program.frmMain.tabs().setCurrent(2);

    runquake2_Click(l.program);
    EXPECT_FALSE(test::readBytes(file).empty()); // the save came first
    const std::string line = "/srv/Quake 2/quake2 +set game kestrand +set dedicated 1 +set port 27911 +exec server.cfg";
    EXPECT_EQ(l.effects(), (std::vector<std::string>{"changeDirectory /srv/Quake 2", "startProcess " + line}));
    EXPECT_TRUE(l.platform.messages.empty());
    EXPECT_EQ(l.program.frmMain.tabs().current(), 2);

    // Each run saves and starts once more.
    runquake2_Click(l.program);
    EXPECT_EQ(l.platform.processes, (std::vector<std::string>{line, line}));
}

TEST(Run, AFailingDirectoryChangeOrStartIsToldAndTheLauncherGoesOn) {
    test::TempDir dir;
    Launcher l(PathStyle::Windows);
    l.field("FFile").setText(dir.file("server.cfg"));
    l.field("QDIR").setText("NONE");
    l.platform.failChangeDirectory = true;

    runquake2_Click(l.program);
    EXPECT_TRUE(l.platform.processes.empty());
    ASSERT_EQ(l.platform.messages.size(), 1u);
    EXPECT_EQ(l.platform.messages[0].title, "Server Not Started");
    EXPECT_NE(l.platform.messages[0].text.find("\"NONE\""), std::string::npos);
    EXPECT_NE(l.platform.messages[0].text.find("No such file or directory"), std::string::npos);

    l.platform.failChangeDirectory = false;
    l.platform.failStartProcess = true;
    l.field("QDIR").setText("C:\\QUAKE2");
    runquake2_Click(l.program);
    ASSERT_EQ(l.platform.messages.size(), 2u);
    EXPECT_NE(l.platform.messages[1].text.find("\"C:\\QUAKE2\\quake2.exe\""), std::string::npos);
    EXPECT_NE(l.platform.messages[1].text.find("No such file or directory"), std::string::npos);

    l.platform.failStartProcess = false;
    runquake2_Click(l.program);
    EXPECT_EQ(l.platform.processes.size(), 2u);
    EXPECT_EQ(l.platform.messages.size(), 2u);
}

TEST(Run, AfterANoToReplaceTheFileOnDiskStartsUnchanged) {
    test::TempDir dir;
    Launcher l(PathStyle::Linux);
    const std::string file = dir.file("server.cfg");
    test::writeBytes(file, "exec mine.cfg\r\n");
    l.platform.plainFiles = {file};
    l.platform.messageAnswers = {MessageAnswer::No};
    l.field("FFile").setText(file);
    l.field("QDIR").setText("/srv/q2");
    l.field("FGD").setText("kestrand");

    runquake2_Click(l.program);
    ASSERT_EQ(l.platform.messages.size(), 1u);
    EXPECT_EQ(l.platform.messages[0].text, "Replace File ?");
    EXPECT_EQ(test::readBytes(file), "exec mine.cfg\r\n");
    EXPECT_EQ(l.platform.processes,
              (std::vector<std::string>{
                  "/srv/q2/quake2 +set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg"}));
}
