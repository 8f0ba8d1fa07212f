#include "config/writer.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <sys/wait.h>
#include <thread>

using namespace ks;
namespace fs = std::filesystem;

namespace {

struct Outcome {
    int status;
    std::string out;
};

// Runs a shell command line, standard error folded into the output.
Outcome shell(const std::string& command) {
    Outcome outcome{-1, {}};
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    if (!pipe) return outcome;
    std::array<char, 4096> buffer;
    std::size_t n;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        outcome.out.append(buffer.data(), n);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

std::string kscfg() {
    return std::string("'") + KSCFG_PATH + "'";
}

// Writes a configuration file in the launcher's layout with the given Quake II and game directory.
void writeConfig(PathStyle style, const std::string& path, const std::string& qdir, const std::string& gameDir) {
    test::FakePlatform platform;
    Program program(platform, style);
    ConnectHandlers(program);
    program.frmMain.check("ipCheck").setState(1);
    program.frmMain.field("QDIR").setText(qdir);
    program.frmMain.field("FGD").setText(gameDir);
    program.frmMain.field("FFile").setText(path);
    ASSERT_TRUE(WriteConfig(program).ok);
}

// Waits for a file that a detached process writes.
bool waitFor(const fs::path& path) {
    for (int i = 0; i < 100 && !fs::exists(path); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return fs::exists(path);
}

} // namespace

TEST(KscfgCommand, PrintsTheCommandLineOfRunInEitherStyle) {
    test::TempDir dir;
    writeConfig(PathStyle::Windows, dir.file("Server.CFG"), "C:\\QUAKE2", "KESTRAND");
    Outcome windows = shell("cd '" + dir.path().string() + "' && " + kscfg() + " command Server.CFG --style windows");
    EXPECT_EQ(windows.status, 0) << windows.out;
    EXPECT_EQ(windows.out, "C:\\QUAKE2\\quake2.exe +set game kestrand +set dedicated 1 +set port 27910 +exec "
                           "server.cfg\n");

    writeConfig(PathStyle::Linux, dir.file("Server.CFG"), "/srv/no/Quake2", "Kestrand");
    Outcome linux = shell(kscfg() + " command --style linux '" + dir.file("Server.CFG") + "'");
    EXPECT_EQ(linux.status, 0) << linux.out;
    EXPECT_EQ(linux.out,
              "/srv/no/Quake2/quake2 +set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg\n");
}

TEST(KscfgCommand, BadUseOrAnUnreadableFileGivesOneLineAndAFailingStatus) {
    test::TempDir dir;
    for (const std::string& arguments :
         {std::string("command"), std::string("command a.cfg b.cfg"), std::string("command a.cfg --style mac"),
          std::string("launch"), std::string("launch a.cfg --style linux"), "command '" + dir.file("missing.cfg") + "'",
          "launch '" + dir.file("missing.cfg") + "'"}) {
        const Outcome outcome = shell(kscfg() + " " + arguments);
        EXPECT_NE(outcome.status, 0) << arguments;
        EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1) << outcome.out;
    }
}

TEST(KscfgLaunch, StartsTheServerFromQdirWithExactlyItsArguments) {
    test::TempDir qdir;
    fs::create_directory(qdir.path() / "kestrand");
    const std::string config = (qdir.path() / "kestrand" / "server.cfg").string();
    writeConfig(PathStyle::Linux, config, qdir.path().string(), "kestrand");
    // The stand-in server writes its arguments, one a line, and its working directory.
    test::writeBytes(qdir.file("quake2"), "#!/bin/sh\n"
                                          "here=$(dirname \"$0\")\n"
                                          "{ printf '%s\\n' \"$@\"; pwd; } > \"$here/record.tmp\"\n"
                                          "mv \"$here/record.tmp\" \"$here/record.txt\"\n");
    fs::permissions(qdir.file("quake2"), fs::perms::owner_all);

    const Outcome outcome = shell("cd / && " + kscfg() + " launch '" + config + "'");
    ASSERT_EQ(outcome.status, 0) << outcome.out;
    EXPECT_EQ(outcome.out,
              qdir.file("quake2") + " +set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg\n");
    ASSERT_TRUE(waitFor(qdir.path() / "record.txt"));
    const std::string record = test::readBytes(qdir.file("record.txt"));
    const std::size_t last = record.rfind('\n', record.size() - 2);
    EXPECT_EQ(record.substr(0, last + 1),
              "+set\ngame\nkestrand\n+set\ndedicated\n1\n+set\nport\n27910\n+exec\nserver.cfg\n");
    EXPECT_TRUE(fs::equivalent(record.substr(last + 1, record.size() - last - 2), qdir.path()));
}

TEST(KscfgLaunch, AFailingStartEndsWithOneClearLine) {
    test::TempDir qdir;
    const std::string config = qdir.file("server.cfg");
    // No game program in QDIR, then a QDIR that does not exist.
    for (const std::string& dir : {qdir.path().string(), qdir.file("gone")}) {
        writeConfig(PathStyle::Linux, config, dir, "kestrand");
        const Outcome outcome = shell(kscfg() + " launch '" + config + "'");
        EXPECT_EQ(outcome.status, 1) << outcome.out;
        const std::size_t lastLine = outcome.out.rfind('\n', outcome.out.size() - 2) + 1;
        EXPECT_TRUE(outcome.out.substr(lastLine).starts_with("kscfg: Cannot ")) << outcome.out;
        EXPECT_NE(outcome.out.find(dir), std::string::npos) << outcome.out;
    }
}
