#include "cli/kscfg_run.h"
#include "frame/path_style.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <tuple>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

using namespace ks;
using test::kscfg;
using test::Outcome;
using test::quoted;

namespace {

// A Quake II directory as this system writes one; on Windows a single slash ends a value.
const std::string kQdir = nativePathStyle() == PathStyle::Windows ? "C:\\Q2" : "/srv/q2";

// A directory holding server.cfg as `kscfg new` writes it; kscfg runs from there, so messages name the file
// as "server.cfg".
struct ServerDir : test::TempDir {
    ServerDir() { EXPECT_EQ(run("new server.cfg").status, 0); }
    Outcome run(const std::string& arguments) const { return kscfg(arguments, path().string()); }
    std::string bytes() const { return test::readBytes(file("server.cfg")); }
};

} // namespace

TEST(KscfgSet, AValueOfEveryKindComesBackThroughGet) {
    ServerDir dir;
    EXPECT_EQ(dir.run("get server.cfg dmflags").output, "80\n");
    const Outcome set = dir.run("set server.cfg 'hostname=My Server  ' map=q2dm8 deathmatch=0 IP=192.168.1.20 "
                                "df_force_respawn=1 sshotgun_wait=5 'qdir=" +
                                kQdir + "' game_dir=kestrand team1model=male");
    EXPECT_EQ(set.status, 0);
    EXPECT_EQ(set.output, "");
    const Outcome get =
        dir.run("get server.cfg hostname map deathmatch IP df_force_respawn dmflags sshotgun_wait qdir game_dir "
                "team1model");
    EXPECT_EQ(get.status, 0);
    EXPECT_EQ(get.output, "hostname \"My Server\"\n"
                          "map q2dm8\n"
                          "deathmatch 0\n"
                          "IP 192.168.1.20\n"
                          "df_force_respawn 1024\n"
                          "dmflags 1104\n"
                          "sshotgun_wait 5\n"
                          "qdir " +
                              kQdir +
                              "\n"
                              "game_dir kestrand\n"
                              "team1model \"male\"\n");
    EXPECT_NE(dir.bytes().find("\r\nset dmflags 1104\r\n"), std::string::npos);

    // A flag goes off again, and an empty IP turns "Use Default" back on, which takes its line out.
    ASSERT_EQ(dir.run("set server.cfg df_force_respawn=0 IP=").status, 0);
    EXPECT_EQ(dir.run("get server.cfg dmflags IP").output, "dmflags 80\nIP \n");
    EXPECT_EQ(dir.bytes().find("// set IP"), std::string::npos);
}

// A refused value ends with status 3, an unknown key or a total with status 2; either way the file stays as it was.
TEST(KscfgSet, ARefusedValueOrAnUnknownKeyOrATotalLeavesTheFileAsItWasAndEndsWithItsStatus) {
    ServerDir dir;
    const std::string before = dir.bytes();
    const std::tuple<std::string, int, std::string> cases[] = {
        {"set server.cfg fraglimit=40 deathmatch=5", 3, "kscfg: DeathMatch, Off or On: Must be 0 or 1\n"},
        {"set server.cfg IP=10.0.0.256", 3, "kscfg: IP Validator: 10.0.0.256 is Invalid\n"},
        {"set server.cfg df_no_health=yes", 3, "kscfg: df_no_health: takes 1 (on) or 0 (off)\n"},
        // Values the server or the next reading would take otherwise.
        {"set server.cfg port=abc maxclients=-5", 3, "kscfg: port: must be a number\n"},
        {"set server.cfg timelimit=-1", 3, "kscfg: timelimit: must be a number\n"},
        {"set server.cfg 'hostname=Bob\"s'", 3, "kscfg: hostname: a double quote in the value is never closed\n"},
        {"set server.cfg 'map=q2dm1 // x'", 3,
         "kscfg: map: the file cannot hold `q2dm1 // x`: read back, it gives `q2dm1`\n"},
        {"set server.cfg 'qdir=" + kQdir + "  '", 3,
         "kscfg: qdir: the file cannot hold `" + kQdir + "  `: read back, it gives `" + kQdir + "`\n"},
        {"set server.cfg fraglimt=30", 2, "kscfg: unknown key fraglimt; did you mean fraglimit?\n"},
        {"get server.cfg force_respawn", 2, "kscfg: unknown key force_respawn; did you mean df_force_respawn?\n"},
        {"set server.cfg xyz=1", 2, "kscfg: unknown key xyz (kscfg keys lists the keys)\n"},
        {"set server.cfg dmflags=1104", 2,
         "kscfg: dmflags adds up its flags (df_no_health ... df_ctf_no_tech) and follows them: set a flag to 1 or 0 "
         "instead, as in df_no_health=1\n"},
    };
    for (const auto& [arguments, status, message] : cases) {
        const Outcome outcome = dir.run(arguments);
        EXPECT_EQ(outcome.status, status) << arguments;
        EXPECT_EQ(outcome.output, message);
        EXPECT_EQ(dir.bytes(), before) << arguments;
    }
}

namespace {

// What the server runs of a file: its lines but for the empty ones and the comments, sorted.
std::vector<std::string> serverView(const std::string& bytes) {
    std::vector<std::string> lines;
    std::istringstream in(bytes);
    for (std::string line; std::getline(in, line);) {
        line.pop_back(); // the CR
        if (!line.empty() && !line.starts_with("//")) lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace

// An operator's own lines in a file the launcher wrote: a map list among its lines, a comment, an exec and a mod's
// cvar behind the start map.
TEST(KscfgSet, KeepsTheLinesTheLauncherHasNoSettingForAndChangesNothingElseTheServerRuns) {
    ServerDir dir;
    std::string original = dir.bytes();
    original.insert(original.find("set fraglimit"), "set sv_maplist \"q2dm1 q2dm2 q2dm8\"\r\n");
    original += "// ours\r\nexec bans.cfg\r\nset ks_vote_time 30 // minutes\r\n";
    test::writeBytes(dir.file("server.cfg"), original);
    test::writeBytes(dir.file("before.cfg"), original);
    const Outcome set = dir.run("set server.cfg port=27911");
    EXPECT_EQ(set.status, 0);
    EXPECT_EQ(set.output, "warning: server.cfg:239: this comment is dropped: set keeps only the lines that set or "
                          "run something\n"
                          "note: server.cfg: lines 12, 240 and 241 set or run something the launcher has no setting "
                          "for; they are kept in a block at the end of the file\n");
    std::vector<std::string> expected = serverView(original);
    *std::find(expected.begin(), expected.end(), "set port 27910") = "set port 27911";
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(serverView(dir.bytes()), expected);
    // The launcher reads the file as before, and the block stays as it is from one set to the next.
    const std::string block = "map q2dm1\r\n\r\n// Kept by kscfg: lines the launcher has no setting for (its Save "
                              "drops them)\r\nset sv_maplist \"q2dm1 q2dm2 q2dm8\"\r\nexec bans.cfg\r\nset "
                              "ks_vote_time 30 // minutes\r\n";
    for (const char* port : {"27911", "27912"}) {
        ASSERT_EQ(dir.run("set --quiet server.cfg port=" + std::string(port)).status, 0);
        EXPECT_TRUE(dir.bytes().ends_with(block));
        EXPECT_EQ(dir.run("diff before.cfg server.cfg").output, "port 27910 " + std::string(port) + "\n");
    }
    // Without the block, set writes what the launcher's Save writes, as convert does.
    ASSERT_EQ(dir.run("convert server.cfg -o saved.cfg").status, 0);
    EXPECT_EQ(dir.run("set server.cfg --launcher-layout port=27912").output,
              "warning: server.cfg:240: this line is dropped, as --launcher-layout asks\n"
              "warning: server.cfg:241: this line is dropped, as --launcher-layout asks\n"
              "warning: server.cfg:242: this line is dropped, as --launcher-layout asks\n");
    EXPECT_EQ(dir.bytes(), test::readBytes(dir.file("saved.cfg")));
}

// The lock of the writers is flock's; Windows takes no lock. The writers run from bash.
#ifndef _WIN32

// Ten writers at once, each changing its own setting, fifty rounds: every change stays. A writer that waits
// longer than --wait for the file ends with status 4 and writes nothing.
TEST(KscfgSet, WritersAtOnceLoseNoChangeAndOneThatWaitsTooLongEndsWithStatus4) {
    ServerDir dir;
    const std::string keys = "fraglimit timelimit maxclients port capturelimit maxrate matchtime ltime camp_time "
                             "max_health";
    test::writeBytes(dir.file("writers.sh"),
                     "keys=(" + keys +
                         ")\n"
                         "for round in $(seq 50); do\n"
                         "    for w in ${!keys[@]}; do\n"
                         "        (\"$1\" set --quiet server.cfg ${keys[w]}=$((round * 100 + w)) || echo failed $?) &\n"
                         "    done\n"
                         "    wait\n"
                         "    \"$1\" get server.cfg ${keys[@]} | tr '\\n' ' '; echo\n"
                         "done\n");
    const Outcome rounds =
        test::shell("cd " + quoted(dir.path().string()) + " && bash writers.sh '" KSCFG_PATH "' 2>&1");
    std::string expected;
    for (int round = 1; round <= 50; ++round) {
        std::istringstream names(keys);
        int writer = 0;
        for (std::string key; names >> key; ++writer)
            expected += key + " " + std::to_string(round * 100 + writer) + " ";
        expected += "\n";
    }
    EXPECT_EQ(rounds.output, expected);

    const std::string before = dir.bytes();
    const int held = open(dir.file("server.cfg").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    for (const char* writer : {"set server.cfg fraglimit=1", "convert before.cfg -o server.cfg", "new server.cfg"}) {
        test::writeBytes(dir.file("before.cfg"), before);
        const Outcome outcome = dir.run(std::string(writer) + " --wait 0.2");
        EXPECT_EQ(outcome.status, 4) << writer;
        EXPECT_EQ(outcome.output, "kscfg: server.cfg is being changed by another kscfg, which did not finish within "
                                  "0.2 s; nothing was written (--wait waits longer)\n");
    }
    EXPECT_EQ(dir.bytes(), before);
    close(held);
    EXPECT_EQ(dir.run("set server.cfg fraglimit=1 --wait 0").status, 0);
}

#endif

TEST(KscfgSet, DryRunShowsTheChangedLinesWithTheirNumbersAndWritesNothing) {
    ServerDir dir;
    const std::string before = dir.bytes();
    const Outcome outcome = dir.run("set --dry-run server.cfg fraglimit=40 IP=10.0.0.1 map=q2dm2");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "--- server.cfg\n"
                              "+++ server.cfg\n"
                              "@@ -1,0 +2 @@\n"
                              "+// set IP 10.0.0.1 // Added by KS Launcher - Do NOT modify this section\n"
                              "@@ -12 +13 @@\n"
                              "-set fraglimit 25\n"
                              "+set fraglimit 40\n"
                              "@@ -237 +238 @@\n"
                              "-map q2dm1\n"
                              "+map q2dm2\n");
    EXPECT_EQ(dir.bytes(), before);
    EXPECT_EQ(dir.run("set --dry-run server.cfg fraglimit=25").output, "");
}

// The five settings read under other keys than they are written with: a set reads the file as Open does, so
// what the file holds for them is lost, and both the set that writes such a value and the next one say so.
TEST(KscfgSet, SaysWhatAReloadDoesNotBringBack) {
    ServerDir dir;
    const std::string lost = "warning: server.cfg:14: `allow_download` is written under this key but read back as "
                             "`allow_downloads`: a reload does not bring back `0` and keeps `1`\n";
    for (const char* assignment : {"allow_download=0", "fraglimit=40"}) {
        const Outcome outcome = dir.run("set server.cfg " + std::string(assignment));
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, lost) << assignment;
    }
    EXPECT_EQ(dir.run("get server.cfg allow_download").output, "1\n");
    EXPECT_EQ(dir.run("set --quiet server.cfg allow_download=0").output, "");
}

// The reports on crafted.cfg are golden files beside it (`kscfg check [--json] crafted.cfg > crafted.txt`).
TEST(KscfgCheck, NamesEveryKindOfFindingInAHandWrittenFileAndNothingInAFreshOne) {
    const std::string data = std::string(KS_TEST_DATA) + "/check";
    Outcome outcome = kscfg("check crafted.cfg", data);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, test::readBytes(data + "/crafted.txt"));
    outcome = kscfg("check --json crafted.cfg", data);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, test::readBytes(data + "/crafted.json"));
    std::set<std::string> kinds;
    for (std::size_t at = 0; (at = outcome.output.find("\"kind\": \"", at)) != std::string::npos;) {
        at += 9;
        kinds.insert(outcome.output.substr(at, outcome.output.find('"', at) - at));
    }
    EXPECT_EQ(kinds, (std::set<std::string>{"no-marker", "unknown-key", "not-read", "cut", "quote-tail", "refused",
                                            "flag-only-on", "flag-not-number", "reload-lost", "comment-read",
                                            "not-number", "open-quote", "duplicate", "password"}));

    // A fresh file names only the launcher's own password, and once that is changed, a file every user may read.
    ServerDir dir;
    EXPECT_EQ(dir.run("check server.cfg").output,
              "server.cfg:19: `rcon_password` is still the launcher's own `hushmarker`, which anyone who has the "
              "launcher knows: change it before the server goes public\n");
    ASSERT_EQ(dir.run("set server.cfg rcon_password=s3cret").status, 0);
    EXPECT_EQ(dir.run("check server.cfg").status, 0);
    EXPECT_EQ(dir.run("check --json server.cfg").output, "[]\n");
#ifndef _WIN32 // a Windows file has no mode bits for other users
    std::filesystem::permissions(dir.file("server.cfg"), std::filesystem::perms::others_read,
                                 std::filesystem::perm_options::add);
    outcome = dir.run("check server.cfg");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "server.cfg:19: every user of this machine may read the file, and this line holds the "
                              "server's `rcon_password` (chmod o-r takes that right away)\n");
#endif
}

TEST(KscfgDiff, NamesTheSettingsThatDifferAfterReadingEach) {
    ServerDir dir;
    ASSERT_EQ(dir.run("new other.cfg").status, 0);
    EXPECT_EQ(dir.run("diff server.cfg other.cfg").status, 0);
    EXPECT_EQ(dir.run("diff server.cfg other.cfg").output, "");

    ASSERT_EQ(dir.run("set other.cfg df_no_falling=1").status, 0);
    Outcome outcome = dir.run("diff server.cfg other.cfg");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "df_no_falling 0 8\ndmflags 80 88\n");

    ASSERT_EQ(dir.run("set other.cfg df_no_falling=0 'hostname=My Server' stdlogname=").status, 0);
    outcome = dir.run("diff server.cfg other.cfg");
    EXPECT_EQ(outcome.output, "hostname hostname '\"My Server\"'\nstdlogname \"kestrand/StdLog.log\" \"\"\n");
}

// `get` without a key gives every setting in the order of a written file, the IP first even while it has no
// line: the golden default file, line by line.
TEST(KscfgGet, WithoutAKeyGivesEverySettingInTheOrderOfTheFile) {
    const std::string golden = test::readBytes(std::string(KS_TEST_DATA) + "/default.cfg");
    std::string expected = "IP \n";
    std::istringstream lines(golden);
    for (std::string line; std::getline(lines, line);) {
        line.pop_back(); // the CR
        if (line.ends_with(" // Added by KS Launcher - Do NOT modify this section")) line.resize(line.rfind(" //"));
        for (const std::string opening : {"// set ", "set "})
            if (line.starts_with(opening)) line.erase(0, opening.size());
        if (!line.empty() && !line.starts_with("//")) expected += line + "\n";
    }
    const Outcome outcome = kscfg("get " + quoted(std::string(KS_TEST_DATA) + "/default.cfg"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, expected);

    const Outcome keys = kscfg("keys"), settable = kscfg("keys --settable");
    EXPECT_EQ(std::count(keys.output.begin(), keys.output.end(), '\n'), 208);
    EXPECT_EQ(std::count(settable.output.begin(), settable.output.end(), '\n'), 200);
    EXPECT_EQ(settable.output.find("\ndmflags\n"), std::string::npos);
    EXPECT_NE(keys.output.find("\ndmflags\n"), std::string::npos);
}

// The byte above ASCII comes from the shell; a Windows command line holds no such byte.
#ifndef _WIN32
TEST(KscfgGet, JsonIsOneObjectWithEveryByteAboveAsciiEscaped) {
    ServerDir dir;
    ASSERT_EQ(dir.run("set server.cfg \"hostname=$(printf 'Caf\\351 \\\\o/')\" fraglimit=40").status, 0);
    // A key asked twice stands once.
    const Outcome outcome = dir.run("get --json server.cfg hostname fraglimit hostname");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "{\n  \"hostname\": \"\\\"Caf\\u00e9 \\\\o/\\\"\",\n  \"fraglimit\": \"40\"\n}\n");
    EXPECT_EQ(dir.run("get server.cfg hostname").output, "\"Caf\xe9 \\o/\"\n");
}

// The completion runs in bash, the unit under systemd.

TEST(KscfgCompletion, OffersCommandsOptionsFilesAndTheProgramsOwnKeys) {
    test::TempDir dir;
    test::writeBytes(dir.file("server.cfg"), "");
    // The words typed, the last one being completed, and what is offered for it.
    const std::pair<std::string, std::string> offers[] = {
        {"c", "convert command check"},
        {"--", "--version --help"},
        {"set server.cfg --", "--dry-run --launcher-layout --quiet --wait --help"},
        {"convert server.cfg -", "-o --quiet --wait --help"},
        {"convert server.cfg -o serv", "server.cfg"},
        {"set server.cfg df_force_r", "df_force_respawn="},
        {"set server.cfg dmfla", ""},
        {"get server.cfg dmfla", "dmflags"},
        {"set server.cfg hostname = ''", ""},
        {"get --j", "--json"},
        {"command server.cfg --style ''", "windows linux"},
        {"check serv", "server.cfg"},
        {"launch server.cfg --watch --log serv", "server.cfg"},
        {"launch server.cfg --stop-timeout ''", ""},
        {"rcon server.cfg sta", ""},
        {"stop --timeout 5 serv", "server.cfg"},
        {"get --json server.cfg fragl", "fraglimit"}};
    std::string script = "source '" + std::string(KS_DIST_DIR) + "/kscfg.bash-completion'\n" +
                         "offer() { COMP_WORDS=(\"$@\"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _kscfg; "
                         "echo \"${COMPREPLY[*]}\"; }\n",
                expected;
    for (const auto& [words, offered] : offers) {
        script += "offer '" KSCFG_PATH "' " + words + "\n";
        expected += offered + "\n";
    }
    test::writeBytes(dir.file("offer.sh"), script);
    const Outcome outcome = test::shell("cd '" + dir.path().string() + "' && bash offer.sh 2>&1");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, expected);
}

// Where systemd is installed, the unit, with the path of kscfg that the installation writes into it, passes its
// verification, and its exposure as systemd rates it offline is at most 3.0.
TEST(KscfgUnit, PassesSystemdsVerificationAndIsHardened) {
    if (test::shell("command -v systemd-analyze").status != 0) GTEST_SKIP() << "no systemd-analyze";
    test::TempDir dir;
    std::string unit = test::readBytes(std::string(KS_DIST_DIR) + "/kslaunch-server@.service.in");
    const std::size_t exec = unit.find("\nExecStart=@KSCFG@ ");
    ASSERT_NE(exec, std::string::npos);
    unit.replace(exec + 11, 7, KSCFG_PATH);
    const std::string instance = dir.file("kslaunch-server@srv-q2-kestrand.service");
    test::writeBytes(instance, unit);
    // --man=no: the manual page the unit names is installed with the package, not on the machine that builds it.
    const Outcome verified = test::shell("systemd-analyze verify --man=no " + quoted(instance) + " 2>&1");
    EXPECT_EQ(verified.status, 0) << verified.output;
    const Outcome rated = test::shell("systemd-analyze security --offline=true --no-pager " + quoted(instance) +
                                      " 2>&1 | sed -n 's/.*Overall exposure level for .*: \\([0-9.]*\\) .*/\\1/p'");
    ASSERT_FALSE(rated.output.empty());
    EXPECT_LE(std::stod(rated.output), 3.0) << rated.output;
}

#endif
