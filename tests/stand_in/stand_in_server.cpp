// A stand-in for the game server, started by kscfg as QDIR/quake2 +set game GAME +set dedicated 1 +set port PORT
// +exec NAME. It reads hostname, maxclients, rcon_password and the map from GAME/NAME and answers the game's
// ping, status query and remote console on 127.0.0.1:PORT, with two players on the map. KS_STAND_IN chooses a
// fault: "crash" ends at once with status 4; "fork" leaves a child in its process group (its pid appended to
// left-behind.pid) and ends with status 4; "ignore-term" answers but ignores SIGTERM. It ends by itself after
// two minutes, so that no test leaves it behind.
#include <arpa/inet.h>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace {

const std::string kHeader = "\xff\xff\xff\xff";

std::map<std::string, std::string> readConfig(const std::string& path) {
    std::map<std::string, std::string> settings;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) {
        while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
            line.pop_back();
        if (line.rfind("set ", 0) == 0) line.erase(0, 4);
        const std::size_t blank = line.find(' ');
        if (blank == std::string::npos) continue;
        std::string value = line.substr(blank + 1);
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
        settings[line.substr(0, blank)] = value;
    }
    return settings;
}

} // namespace

int main(int argc, char** argv) {
    alarm(120);
    std::string game, name;
    int port = 27910;
    for (int i = 1; i + 1 < argc; ++i) {
        const std::string word = argv[i];
        if (word == "+set" && i + 2 < argc && std::string(argv[i + 1]) == "port") port = std::atoi(argv[i + 2]);
        if (word == "+set" && i + 2 < argc && std::string(argv[i + 1]) == "game") game = argv[i + 2];
        if (word == "+exec") name = argv[i + 1];
    }
    const char* fault = std::getenv("KS_STAND_IN");
    const std::string mode = fault ? fault : "";
    std::printf("stand-in for port %d (%s)\n", port, mode.empty() ? "answering" : mode.c_str());
    std::fflush(stdout);
    if (mode == "crash") return 4;
    if (mode == "fork") {
        const pid_t child = fork();
        if (child == 0)
            for (;;)
                pause();
        std::ofstream("left-behind.pid", std::ios::app) << child << '\n';
        return 4;
    }
    if (mode == "ignore-term") signal(SIGTERM, SIG_IGN);

    std::map<std::string, std::string> settings = readConfig(game + "/" + name);
    const int fd = socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
        std::perror("bind");
        return 3;
    }
    const std::string players = "12 40 \"Gorgon\"\n3 55 \"Bob Smith\"\n";
    for (;;) {
        char buffer[2048];
        sockaddr_in from{};
        socklen_t length = sizeof from;
        const ssize_t count = recvfrom(fd, buffer, sizeof buffer, 0, reinterpret_cast<sockaddr*>(&from), &length);
        if (count <= 4) continue;
        const std::string request(buffer + 4, static_cast<std::size_t>(count - 4));
        std::vector<std::string> answers;
        if (request == "ping") {
            answers.push_back(kHeader + "ack");
        } else if (request == "status\n") {
            answers.push_back(kHeader + "print\n\\hostname\\" + settings["hostname"] + "\\mapname\\" + settings["map"] +
                              "\\maxclients\\" + settings["maxclients"] + "\n" + players);
        } else if (request.rfind("rcon ", 0) == 0) {
            const std::size_t blank = request.find(' ', 5);
            const std::string password = request.substr(5, blank - 5);
            const std::string command = blank == std::string::npos ? "" : request.substr(blank + 1);
            if (password != settings["rcon_password"]) {
                answers.push_back(kHeader + "print\nBad rcon_password.\n");
            } else if (command == "status\n") {
                // The console's answer comes in two datagrams.
                answers.push_back(kHeader + "print\nmap              : " + settings["map"] +
                                  "\nnum score ping name\n--- ----- ---- ---------\n");
                answers.push_back(kHeader + "print\n  0    12   40 Gorgon\n  1     3   55 Bob Smith\n");
            } else {
                answers.push_back(kHeader + "print\nstand-in ran: " + command);
            }
        }
        for (const std::string& answer : answers)
            sendto(fd, answer.data(), answer.size(), 0, reinterpret_cast<sockaddr*>(&from), length);
    }
}
