#include "server/process.h"
#include "server/rotating_log.h"
#include "support/child_process.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace ks;
namespace fs = std::filesystem;

namespace {

// Tells what it was given and where it stands: its arguments one a line in brackets, then its pid, working
// directory, standard input, session and how many of its descriptors reach the caller's marker file.
constexpr char kProbe[] = R"(#!/bin/sh
printf '[%s]\n' "$@"
echo $$
pwd -P
readlink /proc/$$/fd/0
cut -d' ' -f6 /proc/$$/stat
ls -l /proc/$$/fd | grep -c leaked-marker
echo to-stderr >&2
echo end
)";

void writeProgram(const std::string& path, const std::string& text, fs::perms perms = fs::perms::owner_all) {
    fs::create_directories(fs::path(path).parent_path());
    test::writeBytes(path, text);
    fs::permissions(path, perms | fs::perms::group_read | fs::perms::others_read, fs::perm_options::replace);
}

// The lines of a log once its writer has written "end", or what stands there after ten seconds.
std::vector<std::string> logLines(const std::string& path) {
    std::string text;
    for (int tries = 0; tries < 1000 && !text.ends_with("end\n"); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        text = test::readBytes(path);
    }
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

TEST(Process, AProgramPathWithABlankRunsThatProgramWithItsArgumentsAsGiven) {
    test::TempDir dir;
    const std::string qdir = dir.file("Quake II"), program = qdir + "/quake2", log = dir.file("server.log");
    writeProgram(program, kProbe);
    writeProgram(dir.file("Quake"), "#!/bin/sh\ntouch '" + dir.file("decoy-ran") + "'\n");
    test::writeBytes(log, "earlier\n");
    const int leaked = open(dir.file("leaked-marker").c_str(), O_CREAT | O_RDONLY, 0644);

    const CommandParts parts = splitCommandLine(program + " +set game  kestrand +exec server.cfg", program);
    EXPECT_EQ(parts.program, program);
    EXPECT_EQ(parts.arguments, (std::vector<std::string>{"+set", "game", "kestrand", "+exec", "server.cfg"}));
    // Behind the launcher's arguments, blanks, quotes and shell characters that must arrive untouched.
    std::vector<std::string> arguments = parts.arguments;
    arguments.insert(arguments.end(), {"a  b", "", "*", "$HOME;x"});
    const StartResult started = startDetached(parts.program, arguments, qdir, {.logFile = log});
    ASSERT_TRUE(started.ok()) << started.error;
    std::vector<std::string> lines = logLines(log);
    close(leaked);
    ASSERT_EQ(lines.size(), 17u) << test::readBytes(log);
    EXPECT_NE(lines[13], std::to_string(getsid(0))) << "the program shares the caller's session";
    lines.erase(lines.begin() + 13);
    EXPECT_EQ(lines, (std::vector<std::string>{"earlier", "[+set]", "[game]", "[kestrand]", "[+exec]", "[server.cfg]",
                                               "[a  b]", "[]", "[*]", "[$HOME;x]", std::to_string(started.pid),
                                               fs::canonical(qdir).string(), "/dev/null", "0", "to-stderr", "end"}));
    EXPECT_FALSE(fs::exists(dir.file("decoy-ran")));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left to reap";
}

TEST(Process, WhatCannotBeExecutedIsReportedAndNeverHandedToAShell) {
    test::TempDir dir;
    const std::string ran = dir.file("ran");
    writeProgram(dir.file("no-shebang"), "touch '" + ran + "'\n");
    writeProgram(dir.file("not-executable"), "#!/bin/sh\ntouch '" + ran + "'\n", fs::perms::owner_read);
    const struct {
        std::string program;
        std::string workingDirectory;
        int errorNumber;
        std::string error;
    } cases[] = {
        {dir.file("no-shebang"), "", ENOEXEC, "Exec format error"},
        {dir.file("not-executable"), "", EACCES, "Permission denied"},
        {dir.path().string(), "", EACCES, "Permission denied"},
        {dir.file("missing"), "", ENOENT, "No such file or directory"},
        {"ks-no-such-program", "", ENOENT, "No such file or directory"},
        {"/bin/true", dir.file("gone"), ENOENT,
         "the working directory " + dir.file("gone") + ": No such file or directory"},
    };
    for (const auto& [program, workingDirectory, errorNumber, error] : cases) {
        for (const StartResult& result :
             {startDetached(program, {}, workingDirectory), spawnChild(program, {}, workingDirectory)}) {
            EXPECT_FALSE(result.ok()) << program;
            EXPECT_EQ(result.errorNumber, errorNumber) << program;
            EXPECT_EQ(result.error, error);
        }
    }
    EXPECT_EQ(test::runInChild(
                  [&] { return execForeground(dir.file("no-shebang"), {}, "").error == "Exec format error" ? 0 : 1; }),
              0);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_FALSE(fs::exists(ran));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left to reap";
}

TEST(Process, ABareNameIsLookedUpInTheAbsoluteDirectoriesOfPath) {
    test::TempDir dir;
    writeProgram(dir.file("bin/ks-tool"), kProbe);
    writeProgram(dir.file("relative/ks-tool"), "#!/bin/sh\necho decoy\n");
    const std::string path = std::getenv("PATH");
    setenv("PATH", ("relative:/nonexistent:" + dir.file("bin")).c_str(), 1);
    const std::string here = fs::current_path();
    fs::current_path(dir.path());
    const StartResult result = startDetached("ks-tool", {"x"}, "", {.logFile = dir.file("log")});
    fs::current_path(here);
    setenv("PATH", path.c_str(), 1);
    ASSERT_TRUE(result.ok()) << result.error;
    EXPECT_EQ(logLines(dir.file("log")).at(0), "[x]");
}

// The watch's log: once the file has reached its limit it becomes FILE.1, the older ones move up, the oldest goes.
TEST(RotatingLog, MovesAFullFileAsideAndKeepsTheNewestOlderFiles) {
    test::TempDir dir;
    const std::string path = dir.file("watch.log");
    test::writeBytes(path, "old\n");
    RotatingLog log(path, 8, 2);
    ASSERT_EQ(log.open(), std::nullopt);
    for (const char* line : {"one\n", "two\n", "three\n", "four\n", "five\n", "six\n"})
        log.write(line);
    // "old\none\n" filled the first file; it went as the oldest at the third rotation.
    EXPECT_EQ(test::readBytes(path), "six\n");
    EXPECT_EQ(test::readBytes(path + ".1"), "four\nfive\n");
    EXPECT_EQ(test::readBytes(path + ".2"), "two\nthree\n");
    EXPECT_FALSE(fs::exists(path + ".3"));
    EXPECT_EQ(RotatingLog(dir.path().string(), 8, 2).open(),
              "the log file " + dir.path().string() + " is not a regular file");
}
