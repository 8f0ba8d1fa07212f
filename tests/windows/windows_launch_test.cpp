// The launch on Windows: the line of Run, CreateProcessW's quoting and working directory, seen by a stand-in
// quake2.exe that records what it was given.

#include "cli/kscfg_run.h"
#include "frame/windows_paths.h"
#include "server/process.h"
#include "server/udp_exchange.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>
#include <windows.h>
#include <winsock2.h>

using namespace ks;
using test::kscfg;
using test::Outcome;

namespace fs = std::filesystem;

namespace {

// A Quake II directory whose name holds a letter beyond ASCII, with the stand-in as its quake2.exe and a
// configuration in its game directory that names it. A Windows value ends at its first blank, so a configuration
// cannot name a directory with one; the program's path with a blank is started directly.
struct QuakeDirectory : test::TempDir {
    std::string qdir, config, program;

    explicit QuakeDirectory(const std::string& name = "Quake2\xc3\xa9")
        : qdir(file(name)), config(qdir + "\\kestrand\\server.cfg"), program(qdir + "\\quake2.exe") {
        CreateDirectoryW(wideText(qdir).c_str(), nullptr);
        CreateDirectoryW(wideText(qdir + "\\kestrand").c_str(), nullptr);
        EXPECT_TRUE(CopyFileW(wideText(STAND_IN_QUAKE2).c_str(), wideText(program).c_str(), FALSE));
        if (name.find(' ') != std::string::npos) return;
        EXPECT_EQ(kscfg("new --wait 0 " + test::quoted(config), "/", "2>&1 >/dev/null").status, 0);
        EXPECT_EQ(
            kscfg("set --quiet " + test::quoted(config) + " " + test::quoted("qdir=" + qdir) + " game_dir=KESTRAND")
                .status,
            0);
    }
    // What the stand-in recorded, once it has.
    std::string record() const {
        const std::wstring path = wideText(qdir + "\\record.txt");
        for (int i = 0; i < 600 && GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return readBytes(path);
    }
    static std::string readBytes(const std::wstring& path) {
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        std::string bytes(1 << 16, '\0');
        DWORD count = 0;
        ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
        CloseHandle(file);
        bytes.resize(count);
        return bytes;
    }
};

} // namespace

// The worked example of the launcher's Run: on Windows, kscfg prints it as the line it starts.
TEST(WindowsLaunch, CommandPrintsTheLineOfRunForTheWorkedExample) {
    test::TempDir dir;
    CreateDirectoryW(wideText(dir.file("Kestrand")).c_str(), nullptr);
    const std::string config = dir.file("Kestrand") + "\\Server.CFG";
    ASSERT_EQ(kscfg("new --wait 0 " + test::quoted(config), "/", "2>&1 >/dev/null").status, 0);
    ASSERT_EQ(kscfg("set --quiet " + test::quoted(config) + " 'qdir=C:\\QUAKE2' game_dir=KESTRAND").status, 0);
    const Outcome outcome = kscfg("command " + test::quoted(config), "/", "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output,
              "C:\\QUAKE2\\quake2.exe +set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg\n");
}

// kscfg launch starts QDIR\quake2.exe from QDIR with the words of Run, its input NUL and its output appended to the
// log beside the configuration; it prints the line of Run and the log.
TEST(WindowsLaunch, LaunchStartsTheServerFromQdirWithItsWordsQuotedAndItsOutputInTheLog) {
    QuakeDirectory q;
    const std::string arguments = "+set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg";
    const Outcome outcome = kscfg("launch " + test::quoted(q.config));
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_EQ(outcome.output, q.program + " " + arguments + "\nlog: " + q.config + ".log\n");
    EXPECT_EQ(q.record(), "line: " + q.program + " " + arguments +
                              "\nargument: +set\nargument: game\nargument: kestrand\nargument: +set\n"
                              "argument: dedicated\nargument: 1\nargument: +set\nargument: port\nargument: 27910\n"
                              "argument: +exec\nargument: server.cfg\ndirectory: " +
                              q.qdir + "\ninput: device\n");
    const std::wstring log = wideText(q.config + ".log");
    for (int i = 0; i < 600 && QuakeDirectory::readBytes(log).empty(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(QuakeDirectory::readBytes(log), "server says hello\r\n");
}

// A program whose path holds a blank, and words that Windows would otherwise cut or change, reach the program as
// they were given.
TEST(WindowsLaunch, EveryWordReachesTheProgramAsGivenInTheWorkingDirectoryGiven) {
    QuakeDirectory q("Quake II");
    const std::vector<std::string> words = {"",        "two words", "say \"hi\"", "C:\\ends in\\",
                                            "\\\\\"x", "tab\there", "caf\xc3\xa9"};
    const StartResult started = startDetached(q.program, words, q.qdir + "\\kestrand");
    ASSERT_TRUE(started.ok()) << started.error;
    std::string expected;
    for (const std::string& word : words)
        expected += "argument: " + word + "\n";
    const std::string record = q.record();
    EXPECT_TRUE(record.starts_with("line: \"" + q.program + "\" \"\" \"two words\" ")) << record;
    EXPECT_EQ(record.substr(record.find('\n') + 1), expected + "directory: " + q.qdir + "\\kestrand\ninput: device\n");
}

// A Quake II directory that is none, or one without quake2.exe, ends the launch with one line and status 1.
TEST(WindowsLaunch, ABadDirectoryOrAMissingProgramEndsWithOneClearLine) {
    QuakeDirectory q;
    DeleteFileW(wideText(q.program).c_str());
    const Outcome missing = kscfg("launch " + test::quoted(q.config));
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output.substr(missing.output.find('\n') + 1),
              "kscfg: Cannot start the server program \"" + q.program + "\": No such file or directory.\n");
    ASSERT_EQ(kscfg("set --quiet " + test::quoted(q.config) + " " + test::quoted("qdir=" + q.file("none"))).status, 0);
    const Outcome nowhere = kscfg("launch " + test::quoted(q.config));
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(nowhere.output.substr(nowhere.output.find('\n') + 1),
              "kscfg: Cannot change to the Quake II directory \"" + q.file("none") +
                  "\": No such file or directory. The server was not started.\n");
}

// status talks to the server over Winsock: a socket of the test answers the status query on a loopback port, as
// the server does, and a port that a socket holds counts as taken.
TEST(WindowsLaunch, StatusAsksTheServerOverWinsock) {
    WSADATA data{};
    ASSERT_EQ(WSAStartup(MAKEWORD(2, 2), &data), 0);
    const SOCKET server = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int length = sizeof address;
    ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), length), 0);
    getsockname(server, reinterpret_cast<sockaddr*>(&address), &length);
    const int port = ntohs(address.sin_port);
    EXPECT_TRUE(udpPortTaken(port));
    const DWORD wait = 20000; // the answer waits for the query at most this many milliseconds
    setsockopt(server, SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&wait), sizeof wait);
    std::thread answer([server] {
        char request[64];
        sockaddr_in from{};
        int size = sizeof from;
        if (recvfrom(server, request, sizeof request, 0, reinterpret_cast<sockaddr*>(&from), &size) <= 0) return;
        const std::string reply =
            "\xff\xff\xff\xffprint\n\\hostname\\Win Frags\\mapname\\q2dm8\\maxclients\\8\n7 31 \"Ada\"\n";
        sendto(server, reply.data(), static_cast<int>(reply.size()), 0, reinterpret_cast<const sockaddr*>(&from), size);
    });
    QuakeDirectory q;
    ASSERT_EQ(kscfg("set --quiet " + test::quoted(q.config) + " port=" + std::to_string(port)).status, 0);
    const Outcome status = kscfg("status " + test::quoted(q.config));
    answer.join();
    closesocket(server);
    WSACleanup();
    EXPECT_EQ(status.status, 0) << status.output;
    EXPECT_EQ(status.output, "address   127.0.0.1, UDP " + std::to_string(port) +
                                 "\nhostname  Win Frags\nmap       q2dm8\nplayers   1 of 8\n  score  ping  name\n"
                                 "      7    31  Ada\n");
}
