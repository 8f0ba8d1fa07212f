#include "cli/kscfg_run.h"
#include "cli/stand_in.h"

#include <gtest/gtest.h>

#include <csignal>
#include <set>
#include <poll.h>

using namespace ks;
using test::QuakeDirectory;
using test::Ran;
using test::runHere;

namespace {

// Runs kscfg status until the server answers, for up to twenty seconds.
Ran awaitStatus(const QuakeDirectory& q) {
    const std::vector<std::string> args{"status", q.config};
    Ran ran = runHere(args);
    for (int i = 0; i < 400 && ran.status != 0; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        ran = runHere(args);
    }
    return ran;
}

} // namespace

// One server for each port: status, the remote console and stop talk to it; a second launch is refused while
// it runs, a stale record is replaced without a word, and stop leaves nothing behind.
TEST(KscfgServer, StatusRconAndStopTalkToTheOneServerOfThePort) {
    QuakeDirectory q;
    q.answeringServer();
    const std::string port = std::to_string(q.port);
    ASSERT_EQ(runHere({"launch", q.config}).status, 0);
    const long pid = q.recordedPid();
    ASSERT_GT(pid, 0);

    const Ran status = awaitStatus(q);
    ASSERT_EQ(status.status, 0) << status.err;
    EXPECT_TRUE(std::regex_match(status.out,
                                 std::regex("server    runs on this machine, pid " + std::to_string(pid) +
                                            ", up [0-9]+ s\n"
                                            "config    " +
                                            std::regex_replace(q.config, std::regex(R"([.])"), R"(\.)") +
                                            "\naddress   127\\.0\\.0\\.1, UDP " + port +
                                            "\nhostname  Friday Frags\nmap       q2dm1\nplayers   2 of 8\n"
                                            "  score  ping  name\n     12    40  Gorgon\n      3    55  Bob Smith\n")))
        << status.out;
    const Ran json = runHere({"status", q.config, "--json"});
    EXPECT_NE(json.out.find("\"pid\": " + std::to_string(pid) + ",\n"), std::string::npos) << json.out;
    EXPECT_NE(json.out.find("\"maxclients\": 8,\n    \"info\": {\"hostname\": \"Friday Frags\", \"mapname\": "
                            "\"q2dm1\", \"maxclients\": \"8\"},\n    \"players\": [\n"
                            "      {\"score\": 12, \"ping\": 40, \"name\": \"Gorgon\"},\n"
                            "      {\"score\": 3, \"ping\": 55, \"name\": \"Bob Smith\"}\n    ]\n"),
              std::string::npos)
        << json.out;

    // The console's answer, in two datagrams, comes whole.
    const Ran rcon = runHere({"rcon", q.config, "status"});
    EXPECT_EQ(rcon.status, 0) << rcon.err;
    EXPECT_EQ(rcon.out, "map              : q2dm1\nnum score ping name\n--- ----- ---- ---------\n"
                        "  0    12   40 Gorgon\n  1     3   55 Bob Smith\n");

    const Ran again = runHere({"launch", q.config});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.err, "kscfg: a server for port " + port + " runs already, pid " + std::to_string(pid) +
                             " (started from " + q.config + "; kscfg stop ends it)\n");

    // The server keeps the password it was started with.
    ASSERT_EQ(runHere({"set", q.config, "rcon_password=guess", "--quiet"}).status, 0);
    const Ran refused = runHere({"rcon", q.config, "status"});
    EXPECT_EQ(refused.status, 6);
    EXPECT_EQ(refused.err, "kscfg: the server refused the rcon_password of " + q.config + ": Bad rcon_password.\n");

    const Ran stop = runHere({"stop", q.config});
    EXPECT_EQ(stop.status, 0) << stop.err;
    EXPECT_EQ(stop.out, "the server for port " + port + ", pid " + std::to_string(pid) + ", has ended\n");
    EXPECT_FALSE(test::processAlive(pid));
    const Ran none = runHere({"status", q.config});
    EXPECT_EQ(none.status, 5);
    EXPECT_EQ(none.out, "server    does not run on this machine (no record of one for port " + port +
                            ")\naddress   127.0.0.1, UDP " + port + "\n");
    EXPECT_EQ(none.err, "kscfg: no answer on UDP " + port + "\n");
    EXPECT_EQ(runHere({"stop", q.config}).out, "no server for port " + port + " runs on this machine\n");

    // A server that was killed leaves its record behind; the next launch replaces it without a word.
    ASSERT_EQ(runHere({"launch", q.config}).status, 0);
    const long killed = q.recordedPid();
    kill(static_cast<pid_t>(killed), SIGKILL);
    ASSERT_TRUE(test::awaitGone(killed));
    const Ran fresh = runHere({"launch", q.config});
    EXPECT_EQ(fresh.status, 0);
    EXPECT_EQ(fresh.err, "");
    EXPECT_NE(q.recordedPid(), killed);
    EXPECT_EQ(runHere({"stop", q.config}).status, 0);
}

// Nothing is started on a port that another process holds, and nothing is sent with a password that protects
// nothing.
TEST(KscfgServer, LaunchRefusesATakenPortAndRconAPasswordThatProtectsNothing) {
    for (const std::string password : {"", "hushmarker"}) {
        QuakeDirectory q(password);
        q.answeringServer();
        const int holder = socket(AF_INET, SOCK_DGRAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<uint16_t>(q.port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ASSERT_EQ(bind(holder, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

        const Ran launch = runHere({"launch", q.config});
        EXPECT_EQ(launch.status, 1);
        EXPECT_EQ(launch.err,
                  "kscfg: another process holds UDP port " + std::to_string(q.port) + "; the server was not started\n");
        EXPECT_EQ(q.serverRecord(), "");

        const Ran rcon = runHere({"rcon", q.config, "quit"});
        EXPECT_EQ(rcon.status, 1);
        EXPECT_EQ(rcon.err,
                  "kscfg: " + q.config + ": rcon_password is " +
                      (password.empty() ? "empty, so the server takes no remote commands"
                                        : "still the launcher's own `hushmarker`, which anyone who has the launcher "
                                          "knows: change it and restart the server") +
                      "; nothing was sent\n");
        pollfd waiting{holder, POLLIN, 0};
        EXPECT_EQ(poll(&waiting, 1, 0), 0); // the holder of the port got nothing
        close(holder);
    }
}

// A server that ignores SIGTERM is killed after the watch's grace; the watch ends with it, and stop, which asked
// the watch, sees both gone.
TEST(KscfgWatch, KillsAServerThatIgnoresTheRequestToEndAfterTheGrace) {
    QuakeDirectory q;
    q.answeringServer();
    const std::string errors = q.file("watch.txt");
    test::shell("KS_STAND_IN=ignore-term '" KSCFG_PATH "' launch " + test::quoted(q.config) +
                " --watch --stop-timeout 1 >/dev/null 2>" + test::quoted(errors) + " & echo $! > " +
                test::quoted(q.file("watch.pid")));
    ASSERT_EQ(awaitStatus(q).status, 0);
    const long watch = std::stol(test::readBytes(q.file("watch.pid"))), server = q.recordedPid();
    EXPECT_NE(q.serverRecord().find("\nwatch " + std::to_string(watch) + "\n"), std::string::npos);

    const Ran stop = runHere({"stop", q.config, "--timeout", "30"});
    EXPECT_EQ(stop.status, 0) << stop.err;
    EXPECT_FALSE(test::processAlive(server));
    EXPECT_TRUE(test::awaitGone(watch));
    const std::vector<std::string> lines = test::watchLines(errors);
    ASSERT_EQ(lines.size(), 4u) << test::readBytes(errors);
    // The server's own first line may come before the watch has told of the start.
    EXPECT_EQ(std::set<std::string>(lines.begin(), lines.begin() + 2),
              (std::set<std::string>{"kscfg: started the server, pid " + std::to_string(server) + ": " + q.line(),
                                     "stand-in for port " + std::to_string(q.port) + " (ignore-term)"}));
    EXPECT_EQ(lines[2], "kscfg: the server did not end within 1 s of the request; killing its process group");
    EXPECT_EQ(lines[3], "kscfg: the server was ended by signal 9 on request; the watch ends");
    EXPECT_EQ(q.serverRecord(), "");
}

// A server that fails at once, leaving a child behind each time, is started until the limit and no further; the
// watch ends every child it left and gives up with a status of its own, its log and the server's output in the
// file it was given.
TEST(KscfgWatch, GivesUpAfterTheStartLimitAndLeavesNoProcessBehind) {
    QuakeDirectory q;
    q.answeringServer();
    const std::string log = q.file("watch.log");
    const test::Outcome watch =
        test::shell("KS_STAND_IN=fork '" KSCFG_PATH "' launch " + test::quoted(q.config) +
                    " --watch --start-limit 2/60 --log " + test::quoted(log) + " 2>&1 >/dev/null");
    EXPECT_EQ(watch.status, 7);
    EXPECT_EQ(watch.output, "");
    std::istringstream children(test::readBytes(q.qdir + "/left-behind.pid"));
    int count = 0;
    for (long child; children >> child; ++count)
        EXPECT_FALSE(test::processAlive(child)) << child;
    EXPECT_EQ(count, 2);
    const std::string started = "kscfg: started the server, pid ";
    const std::vector<std::string> lines = test::watchLines(log);
    ASSERT_EQ(lines.size(), 8u) << test::readBytes(log);
    EXPECT_TRUE(lines[0].starts_with(started)) << lines[0];
    EXPECT_EQ(lines[1], "stand-in for port " + std::to_string(q.port) + " (fork)");
    EXPECT_EQ(lines[2], "kscfg: the server left processes in its group; ending them");
    EXPECT_EQ(lines[3], "kscfg: the server ended with status 4; starting it again in 1 s");
    EXPECT_TRUE(lines[4].starts_with(started)) << lines[4];
    EXPECT_EQ(lines[7], "kscfg: the server ended with status 4; it was started 2 times within 60 s and failed each "
                        "time, so the watch gives up");
}
