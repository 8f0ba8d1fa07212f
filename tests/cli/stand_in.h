#pragma once

#include "cli/commands.h"
#include "config/writer.h"
#include "support/launcher.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <netinet/in.h>
#include <regex>
#include <sstream>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace ks::test {

// A UDP port of 127.0.0.1 that nothing held a moment ago.
inline int freeUdpPort() {
    const int fd = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    bind(fd, reinterpret_cast<sockaddr*>(&address), length);
    getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length);
    close(fd);
    return ntohs(address.sin_port);
}

// What kscfg run in this process gave.
struct Ran {
    int status;
    std::string out, err;
};

inline Ran runHere(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    const int status = cli::run(args, out, err);
    return {status, out.str(), err.str()};
}

// A Quake II directory with a blank in its name and a configuration in its game directory that names it, for a
// port of its own. The records of running servers go to a runtime directory of its own, for this test's process
// and the kscfg it starts.
struct QuakeDirectory : TempDir {
    std::string qdir = file("Quake II");
    std::string config = qdir + "/kestrand/server.cfg";
    int port = freeUdpPort();

    explicit QuakeDirectory(const std::string& password = "sesame") {
        std::filesystem::create_directories(qdir + "/kestrand");
        std::filesystem::create_directories(file("runtime"));
        setenv("XDG_RUNTIME_DIR", file("runtime").c_str(), 1);
        unsetenv("RUNTIME_DIRECTORY");
        Launcher writer;
        writer.main("QDIR").setText(qdir);
        writer.main("FGD").setText("kestrand");
        writer.main("FFile").setText(config);
        writer.main("FPORT").setText(std::to_string(port));
        writer.main("FRCON2").setText(password);
        writer.main("FHOSTN").setText("Friday Frags");
        writer.main("FMC").setText("8");
        EXPECT_TRUE(writeConfig(writer.program).ok);
        server(file("Quake"), "echo decoy > \"$(dirname \"$0\")/decoy.txt\"\n");
    }
    // Puts a stand-in server script in place.
    void server(const std::string& path, const std::string& body) const {
        writeBytes(path, "#!/bin/sh\n" + body);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }
    // Script lines that write the server's pid and then the output of `commands` to record.txt beside it, whole.
    std::string record(const std::string& commands) const {
        return "here=$(dirname \"$0\")\n{ echo $$; " + commands +
               "; } > \"$here/record.tmp\"\nmv \"$here/record.tmp\" \"$here/record.txt\"\n";
    }
    // Puts the stand-in server that answers the game's queries in place.
    void answeringServer() const { std::filesystem::copy_file(KS_STAND_IN, program()); }
    std::string program() const { return qdir + "/quake2"; }
    std::string line() const {
        return program() + " +set game kestrand +set dedicated 1 +set port " + std::to_string(port) +
               " +exec server.cfg";
    }
    // The port's record of a running server, and the server's pid in it (0 without one).
    std::string serverRecord() const { return readBytes(file("runtime/kslaunch/" + std::to_string(port) + ".state")); }
    long recordedPid() const { return std::atol(serverRecord().c_str() + (serverRecord().empty() ? 0 : 4)); }
};

// Waits up to twenty seconds for a file to appear and gives its bytes.
inline std::string awaitFile(const std::string& path) {
    for (int i = 0; i < 400 && !std::filesystem::exists(path); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return readBytes(path);
}

// A process runs that has not ended (one that has ended and waits to be collected does not count).
inline bool processAlive(long pid) {
    const std::string stat = readBytes("/proc/" + std::to_string(pid) + "/stat");
    const std::size_t close = stat.rfind(") ");
    return close != std::string::npos && stat[close + 2] != 'Z';
}

// Waits up to twenty seconds for the process to end.
inline bool awaitGone(long pid) {
    for (int i = 0; i < 400 && processAlive(pid); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return !processAlive(pid);
}

// The lines of a file, each without the time stamp that the watch puts in front ("2026-11-23T14:30:05 ").
inline std::vector<std::string> watchLines(const std::string& path) {
    std::vector<std::string> lines;
    std::istringstream in(test::readBytes(path));
    for (std::string line; std::getline(in, line);)
        lines.push_back(std::regex_match(line.substr(0, 20), std::regex(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d )"))
                            ? line.substr(20)
                            : line);
    return lines;
}

} // namespace ks::test
