#include "cli/kscfg_run.h"
#include "cli/stand_in.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>

using namespace ks;
using test::awaitFile;
using test::kscfg;
using test::Outcome;
using test::processAlive;
using test::QuakeDirectory;

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

} // namespace

TEST(KscfgLaunch, ABadDirectoryOrProgramEndsWithOneClearLine) {
    QuakeDirectory q;
    // The Quake II directory has no quake2 yet; a text file without #! is no program either.
    for (const char* body : {"", "echo no shell runs me\n"}) {
        if (*body) test::writeBytes(q.program(), body), fs::permissions(q.program(), fs::perms::owner_all);
        const Outcome outcome = kscfg("launch " + test::quoted(q.config));
        EXPECT_EQ(outcome.status, 1) << outcome.output;
        EXPECT_EQ(outcome.output, q.line() + "\nkscfg: Cannot start the server program \"" + q.program() +
                                      "\": " + (*body ? "Exec format error" : "No such file or directory") + ".\n");
    }
    EXPECT_FALSE(fs::exists(q.file("decoy.txt")));
}

// The server runs from QDIR with exactly its arguments, its program found whole despite the blank; kscfg does
// not keep the terminal: its caller gets the output at once while the server runs on with its own log.
TEST(KscfgLaunch, StartsTheServerWholeFromQdirAndLeavesItRunningOnItsOwn) {
    QuakeDirectory q;
    q.server(q.program(), "echo 'server says hello'\n" +
                              q.record("printf '%s\\n' \"$@\"; pwd; readlink /proc/self/fd/0") + "exec sleep 30\n");
    const Outcome outcome = kscfg("launch " + test::quoted(q.config), "/", "2>&1 </dev/null");
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_EQ(outcome.output, q.line() + "\nlog: " + q.config + ".log\n");

    const std::string record = awaitFile(q.qdir + "/record.txt");
    const pid_t pid = std::stoi(record);
    EXPECT_TRUE(processAlive(pid)); // kscfg has ended, and the server, which sleeps 30 s, runs on
    EXPECT_EQ(record.substr(record.find('\n') + 1), "+set\ngame\nkestrand\n+set\ndedicated\n1\n+set\nport\n" +
                                                        std::to_string(q.port) + "\n+exec\nserver.cfg\n" + q.qdir +
                                                        "\n/dev/null\n");
    EXPECT_EQ(awaitFile(q.config + ".log"), "server says hello\n");
    // The port's record names the server and its configuration.
    EXPECT_EQ(q.recordedPid(), pid);
    EXPECT_NE(q.serverRecord().find("\nconfig " + q.config + "\n"), std::string::npos) << q.serverRecord();
    // The server runs in a session of its own, away from the caller's terminal.
    EXPECT_NE(getsid(pid), getsid(0));
    EXPECT_NE(getsid(pid), -1);
    EXPECT_FALSE(fs::exists(q.file("decoy.txt")));
    kill(pid, SIGKILL);
}

// In the foreground kscfg becomes the server, in QDIR: the same process, so a service manager's signals reach it.
TEST(KscfgLaunch, InTheForegroundKscfgBecomesTheServer) {
    QuakeDirectory q;
    q.server(q.program(), q.record("tr '\\0' ' ' < /proc/$$/cmdline; echo; pwd") + "exec sleep 30\n");
    const std::string command = "'" + std::string(KSCFG_PATH) + "' launch " + test::quoted(q.config) +
                                " --foreground >" + test::quoted(q.file("out.txt")) + " 2>&1 & echo $!";
    const std::string kscfgPid = test::shell(command).output;
    // No kscfg stands behind the server: the process of kscfg's number runs the server's program now.
    EXPECT_EQ(awaitFile(q.qdir + "/record.txt"), kscfgPid + "/bin/sh " + q.line() + " \n" + q.qdir + "\n");
    EXPECT_EQ(test::readBytes(q.file("out.txt")), q.line() + "\n");
    kill(std::stoi(kscfgPid), SIGTERM);
}

// The watch starts the server again after each failure, after 1 s and then 2 s, and ends with it on SIGTERM.
TEST(KscfgLaunch, TheWatchRestartsAFailingServerWithGrowingPausesAndEndsWithItOnRequest) {
    QuakeDirectory q;
    q.server(q.program(), "here=$(dirname \"$0\")\n"
                          "echo start >> \"$here/starts.txt\"\n"
                          "[ $(wc -l < \"$here/starts.txt\") -lt 3 ] && exit 4\n"
                          "echo $$ > \"$here/pid.txt\"\n"
                          "trap 'echo ended > \"$here/ended.txt\"; exit 0' TERM\n"
                          "while :; do sleep 0.1; done\n");
    const std::string errors = q.file("watch.txt");
    const std::string command = "'" + std::string(KSCFG_PATH) + "' launch " + test::quoted(q.config) + " --watch >" +
                                test::quoted(q.file("out.txt")) + " 2>" + test::quoted(errors) + " & echo $!";
    const auto begun = Clock::now();
    const long watchPid = std::stol(test::shell(command).output);
    const long serverPid = std::stol(awaitFile(q.qdir + "/pid.txt"));
    // Two pauses, of 1 s and 2 s, lie between the three starts.
    EXPECT_GE(Clock::now() - begun, std::chrono::seconds(3));
    EXPECT_EQ(test::readBytes(q.qdir + "/starts.txt"), "start\nstart\nstart\n");

    kill(static_cast<pid_t>(watchPid), SIGTERM);
    EXPECT_EQ(awaitFile(q.qdir + "/ended.txt"), "ended\n");
    for (int i = 0; i < 400 && (processAlive(watchPid) || processAlive(serverPid)); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        waitpid(static_cast<pid_t>(watchPid), nullptr, WNOHANG);
    }
    EXPECT_FALSE(processAlive(serverPid));
    // Each start and each end is one line with its time, among what the server itself says.
    std::vector<std::string> lines;
    for (const std::string& line : test::watchLines(errors))
        if (line.starts_with("kscfg: ")) lines.push_back(line);
    ASSERT_EQ(lines.size(), 6u) << test::readBytes(errors);
    EXPECT_TRUE(lines[0].starts_with("kscfg: started the server, pid ")) << lines[0];
    EXPECT_EQ(lines[1], "kscfg: the server ended with status 4; starting it again in 1 s");
    EXPECT_EQ(lines[3], "kscfg: the server ended with status 4; starting it again in 2 s");
    EXPECT_EQ(lines[5], "kscfg: the server ended with status 0 on request; the watch ends");
}

// The server runs +exec NAME from its game directory: command, check and launch tell of a configuration that lies
// elsewhere, and launch starts the server all the same.
TEST(KscfgLaunch, AConfigTheServerWillNotFindIsToldByCommandCheckAndLaunch) {
    QuakeDirectory q;
    q.server(q.program(), "exit 0\n");
    const std::string elsewhere = q.file("server.cfg");
    fs::copy_file(q.config, elsewhere);
    const std::string told = "the server runs +exec server.cfg from its game directory " + q.qdir + "/kestrand, and " +
                             elsewhere + " is not that file: the server would start without these settings\n";
    for (const std::string command : {"command", "launch"}) {
        EXPECT_EQ(kscfg(command + " " + test::quoted(q.config), "/", "2>&1 >/dev/null").output, "") << command;
        test::awaitGone(q.recordedPid()); // one server for the port at a time
        const Outcome outcome = kscfg(command + " " + test::quoted(elsewhere), "/", "2>&1 >/dev/null");
        EXPECT_EQ(outcome.status, 0) << command;
        EXPECT_EQ(outcome.output, "warning: " + told) << command;
    }
    EXPECT_TRUE(kscfg("check " + test::quoted(elsewhere)).output.starts_with(elsewhere + ": " + told));
}
