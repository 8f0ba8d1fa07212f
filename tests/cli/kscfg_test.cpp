#include "cli/kscfg_run.h"
#include "support/child_process.h"
#include "support/launcher_test.h"

#include <filesystem>
#include <map>
#include <regex>
#include <set>

#ifndef _WIN32
#include <sys/stat.h>
#endif

using namespace ks;
namespace fs = std::filesystem;

namespace {

using test::kscfg;
using test::Outcome;
using test::quoted;

const std::string kData = KS_TEST_DATA;

// The usage line of each command, as bad use and the command's help show it.
const std::map<std::string, std::string> kUsages = {
    {"new", "usage: kscfg new FILE [--wait SECONDS]"},
    {"convert", "usage: kscfg convert IN... -o OUT [--quiet] [--wait SECONDS]"},
    {"command", "usage: kscfg command CFG [--style windows|linux]"},
    {"launch", "usage: kscfg launch CFG [--foreground] [--watch] [--stop-timeout SECONDS] [--start-limit "
               "STARTS/SECONDS] [--log FILE]"},
    {"status", "usage: kscfg status CFG [--json] [--host HOST]"},
    {"rcon", "usage: kscfg rcon CFG COMMAND... [--host HOST]"},
    {"stop", "usage: kscfg stop CFG [--timeout SECONDS]"},
    {"get", "usage: kscfg get CFG [KEY...] [--json] [--quiet]"},
    {"set", "usage: kscfg set CFG KEY=VALUE... [--dry-run] [--launcher-layout] [--quiet] [--wait SECONDS]"},
    {"check", "usage: kscfg check CFG [--json]"},
    {"diff", "usage: kscfg diff A B [--quiet]"},
    {"keys", "usage: kscfg keys [--settable]"},
    {"--version", "usage: kscfg --version"},
    {"--help", "usage: kscfg --help [COMMAND]"},
    {"", "usage: kscfg COMMAND [ARGUMENT...]   (kscfg --help lists the commands)"},
};

} // namespace

// Reading each file in turn with its warnings is the golden typical-then-flags.
TEST(Kscfg, ConvertBringsTheLaunchersFileBackWhateverItsLineEnds) {
    test::TempDir dir;
    const std::string original = test::readBytes(kData + "/default.cfg"), in = dir.file("in.cfg"),
                      out = dir.file("out.cfg");
    for (const std::string end : {"\r\n", "\n", "\r"}) {
        test::writeBytes(in, std::regex_replace(original, std::regex("\r\n"), end));
        const Outcome outcome = kscfg("convert --quiet " + quoted(in) + " -o " + quoted(out));
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(test::readBytes(out), original) << (end == "\n" ? "LF" : end == "\r" ? "CR" : "CRLF");
    }
}

// Each wrong command line, by the command whose usage follows the reason.
TEST(Kscfg, BadUseEndsWithStatus2TheReasonAndTheUsageAndEachCommandHasItsHelp) {
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {"", "", "no command given"},
        {"frobnicate", "", "unknown command 'frobnicate'"},
        {"--version extra", "--version", "--version takes nothing after it, not extra"},
        {"--help frobnicate", "--help", "--help: there is no command frobnicate"},
        {"new", "new", "new needs FILE"},
        {"new ''", "new", "new: a file name cannot be empty"},
        {"new a.cfg --quiet", "new", "new has no option --quiet"},
        {"convert a.cfg", "convert", "convert needs -o OUT"},
        {"convert a.cfg -o", "convert", "convert: -o needs OUT"},
        {"convert a.cfg -o b.cfg -o c.cfg", "convert", "convert: -o is given twice"},
        {"convert a.cfg -o b.cfg --wait soon", "convert",
         "convert: --wait takes a number of seconds up to a day, not soon"},
        {"command a.cfg b.cfg", "command", "command takes CFG, not also b.cfg"},
        {"command a.cfg --style mac", "command", "command: --style takes windows|linux, not mac"},
        {"launch a.cfg --foreground --watch", "launch", "launch takes --foreground or --watch, not both"},
        {"launch a.cfg --style linux", "launch", "launch has no option --style"},
        {"launch a.cfg --log x.log", "launch", "launch: --log goes with --watch"},
        {"launch a.cfg --watch --start-limit 5", "launch",
         "launch: --start-limit takes STARTS/SECONDS, from 1 to 1000 starts within 1 s to a day, not 5"},
        {"status a.cfg --host", "status", "status: --host needs HOST"},
        {"rcon a.cfg", "rcon", "rcon needs CFG COMMAND..."},
        {"stop a.cfg --timeout soon", "stop", "stop: --timeout takes a number of seconds up to a day, not soon"},
        {"get a.cfg --json=yes", "get", "get: --json takes no value"},
        {"set a.cfg", "set", "set needs CFG KEY=VALUE..."},
        {"set a.cfg fraglimit", "set", "set takes KEY=VALUE, not fraglimit"},
        {"set a.cfg fraglimit=1 --force", "set", "set has no option --force"},
        {"check a.cfg -x", "check", "check has no option -x"},
        {"diff a.cfg", "diff", "diff needs A B"},
        {"keys a.cfg", "keys", "keys takes nothing after it, not a.cfg"},
    };
    for (const auto& [arguments, command, reason] : rows) {
        const Outcome outcome = kscfg(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.output, "kscfg: " + reason + "\n" + kUsages.at(command) + "\n") << arguments;
    }
    // Help, whole or for one command, wherever --help stands.
    const Outcome help = kscfg("--help");
    EXPECT_EQ(help.status, 0);
    for (const auto& [command, usage] : kUsages) {
        if (command.empty()) continue;
        EXPECT_NE(help.output.find("\n  " + usage.substr(7) + "\n"), std::string::npos) << command;
        for (const std::string& asked : {command + " a.cfg --help", "--help " + command}) {
            const Outcome one = kscfg(asked);
            EXPECT_EQ(one.status, 0) << asked;
            EXPECT_TRUE(one.output.starts_with(usage + "\n\n")) << one.output;
        }
    }
#ifndef _WIN32
    const Outcome full = kscfg("--help", "/", "2>&1 >/dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.output, "kscfg: cannot write to standard output: No space left on device\n");
#endif
}

// FIFOs, links and POSIX devices; on Windows, NUL, CON and directories are refused in the Windows tests.
#ifndef _WIN32

// Whatever stands in the place of a file to read, every command names it and says why in one line, and ends with
// 1, or with 2 where 1 means a finding. Nothing is written, a FIFO without a writer does not hold kscfg up and
// /dev/zero does not fill its memory.
TEST(Kscfg, EveryCommandSaysWhichFileItCannotReadAndWhyInOneVoice) {
    test::TempDir dir;
    const std::string good = kData + "/default.cfg", out = dir.file("out.cfg"), fifo = dir.file("fifo"),
                      loop = dir.file("loop"), locked = dir.file("locked.cfg");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    fs::create_symlink("loop", loop);
    std::vector<std::pair<std::string, std::string>> unreadable = {
        {dir.file("missing.cfg"), "No such file or directory"},
        {dir.path().string(), "it is a directory"},
        {fifo, "it is not a regular file"},
        {"/dev/zero", "it is not a regular file"},
        {loop, "Too many levels of symbolic links"}};
    if (!test::runningAsRoot()) {
        test::writeBytes(locked, "");
        fs::permissions(locked, fs::perms::none);
        unreadable.emplace_back(locked, "Permission denied");
    }
    const std::pair<std::string, int> commands[] = {
        {"get FILE", 1},
        {"get FILE hostname --quiet", 1},
        {"set FILE fraglimit=40", 1},
        {"command FILE", 1},
        {"launch FILE", 1},
        {"status FILE", 1},
        {"rcon FILE status", 1},
        {"stop FILE", 1},
        {"convert GOOD FILE -o OUT", 1},
        {"check FILE", 2},
        {"diff GOOD FILE", 2},
        {"diff FILE GOOD --quiet", 2},
    };
    for (const auto& [file, reason] : unreadable) {
        for (const auto& [command, status] : commands) {
            const std::string arguments =
                std::regex_replace(std::regex_replace(std::regex_replace(command, std::regex("FILE"), quoted(file)),
                                                      std::regex("GOOD"), quoted(good)),
                                   std::regex("OUT"), quoted(out));
            const Outcome outcome = kscfg(arguments);
            EXPECT_EQ(outcome.status, status) << arguments;
            EXPECT_EQ(outcome.output, "kscfg: cannot read " + file + ": " + reason + "\n") << arguments;
        }
    }
    // Nor is such a thing written over.
    for (const std::string& file : {fifo, loop}) {
        const Outcome outcome = kscfg("new " + quoted(file));
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output,
                  "kscfg: cannot write " + file + ": " +
                      (file == fifo ? "it is not a regular file" : "Too many levels of symbolic links") + "\n");
    }
    EXPECT_TRUE(fs::is_fifo(fifo) && fs::is_symlink(loop) && !fs::exists(out));
}
#endif

// The launcher's "NONE" means no file; in kscfg a name is a name, and "--" lets one begin with a dash. Options
// may stand anywhere. A new file holds the launcher's own password, and kscfg says so.
TEST(Kscfg, NONEIsAFileNameLikeAnyOtherAndOptionsStandAnywhere) {
    test::TempDir dir;
    const std::string from = dir.path().string();
    const std::string golden = test::readBytes(kData + "/default.cfg");
    const Outcome made = kscfg("new NONE", from);
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.output, "warning: NONE:19: `rcon_password` is still the launcher's own `hushmarker`, which anyone "
                           "who has the launcher knows: change it before the server goes public\n");
    EXPECT_EQ(test::readBytes(dir.file("NONE")), golden);
    EXPECT_EQ(kscfg("convert --quiet NONE -o -dash.cfg", from).status, 0);
    EXPECT_EQ(test::readBytes(dir.file("-dash.cfg")), golden);
    EXPECT_EQ(kscfg("convert -o out.cfg --quiet -- -dash.cfg", from).status, 0);
    EXPECT_EQ(test::readBytes(dir.file("out.cfg")), golden);
    EXPECT_EQ(kscfg("get NONE fraglimit", from).output, "25\n");
}

// On Windows the game directory and the file's name are lower-cased; a Linux file system needs them as written.
TEST(KscfgCommand, PrintsTheCommandLineOfRunInTheStyleAsked) {
    test::TempDir dir;
    test::writeBytes(dir.file("Server.CFG"),
                     std::string(test::kMarker) + "\r\n// set qdir C:\\QUAKE2 // Added\r\nset game_dir KESTRAND\r\n");
    const std::pair<std::string, std::string> styles[] = {
        {"windows", "C:\\QUAKE2\\quake2.exe +set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg\n"},
        {"linux", "C:\\QUAKE2/quake2 +set game KESTRAND +set dedicated 1 +set port 27910 +exec Server.CFG\n"}};
    for (const auto& [style, line] : styles) {
        const Outcome outcome = kscfg("command Server.CFG --style " + style, dir.path().string(), "");
        EXPECT_EQ(outcome.status, 0) << outcome.output;
        EXPECT_EQ(outcome.output, line);
    }
}

// The files under tests/data were made by the launcher as it stood when they were checked in; a changed default,
// flag bit, line of the layout or key of the reader shows here as a difference in bytes.
TEST(KscfgGolden, NewAndConvertGiveTheCheckedInFilesByteForByte) {
    test::TempDir dir;
    const fs::path data = kData;
    const std::string out = dir.file("out.cfg");
    ASSERT_EQ(kscfg("new " + quoted(out)).status, 0);
    EXPECT_EQ(test::readBytes(out), test::readBytes((data / "default.cfg").string()));

    // OUT is named as given in the warnings about the values it holds.
    const auto convert = [&](const std::string& inputs, const std::string& expected) {
        const Outcome outcome = kscfg("convert " + inputs + " -o out.cfg", dir.path().string());
        ASSERT_EQ(outcome.status, 0) << expected;
        EXPECT_EQ(test::readBytes(out), test::readBytes((data / "convert/out" / (expected + ".cfg")).string()))
            << expected;
        // The warnings, one line each on the error stream.
        EXPECT_EQ(outcome.output, test::readBytes((data / "convert/out" / (expected + ".err")).string())) << expected;
    };
    // On Windows a single slash ends a value, as no Windows path holds one: these files, with their Linux paths and
    // sound and model names, read otherwise there.
    const std::set<std::string> slashed = {"all-changed", "foreign-crlf-quotes", "ours-lf"};
    int files = 0;
    for (const auto& entry : fs::directory_iterator(data / "convert/in")) {
        ++files;
        if (nativePathStyle() == PathStyle::Windows && slashed.contains(entry.path().stem().string())) continue;
        convert(quoted(entry.path().string()), entry.path().stem().string());
    }
    EXPECT_EQ(files, 7);
    convert(quoted((data / "convert/in/foreign-typical.cfg").string()) + " " +
                quoted((data / "convert/in/foreign-cr-flags.cfg").string()),
            "typical-then-flags");
}
