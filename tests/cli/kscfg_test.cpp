#include "cli/kscfg_run.h"
#include "support/launcher_test.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <regex>
#include <sys/stat.h>

using namespace ks;
namespace fs = std::filesystem;

namespace {

using test::kscfg;
using test::Outcome;
using test::quoted;

const std::string kData = KS_TEST_DATA;

} // namespace

// Reading each file in turn with its warnings is the golden typical-then-flags.
TEST(Kscfg, ConvertBringsTheLaunchersFileBackWhateverItsLineEnds) {
    test::TempDir dir;
    const std::string original = test::readBytes(kData + "/default.cfg"), in = dir.file("in.cfg"),
                      out = dir.file("out.cfg");
    for (const std::string end : {"\r\n", "\n", "\r"}) {
        test::writeBytes(in, std::regex_replace(original, std::regex("\r\n"), end));
        const Outcome outcome = kscfg("convert " + quoted(in) + " -o " + quoted(out));
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(test::readBytes(out), original) << (end == "\n" ? "LF" : end == "\r" ? "CR" : "CRLF");
    }
}

TEST(Kscfg, BadUseOrAnUnreadableFileGivesOneLineAndAFailingStatus) {
    test::TempDir dir;
    const std::string missing = quoted(dir.file("missing.cfg"));
    for (const std::string& arguments : std::vector<std::string>{
             "", "frobnicate", "new", "new ''", "new " + quoted(dir.file("no/such.cfg")), "convert a.cfg -o",
             "convert a.cfg -o ''", "command", "command a.cfg b.cfg", "command a.cfg --style mac", "launch",
             "launch a.cfg --style linux", "command " + missing, "launch " + missing}) {
        const Outcome outcome = kscfg(arguments);
        EXPECT_NE(outcome.status, 0) << arguments;
        EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1) << outcome.output;
    }
}

TEST(Kscfg, HelpListsEveryCommandAndFailsWhenItsOutputCannotBeWritten) {
    const Outcome help = kscfg("--help");
    EXPECT_EQ(help.status, 0);
    for (const char* command : {"new", "convert", "command", "launch", "get", "set", "check", "diff", "keys"})
        EXPECT_NE(help.output.find(std::string("\n  kscfg ") + command + " "), std::string::npos) << command;

    const Outcome full = kscfg("--help", "/", "2>&1 >/dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.output, "kscfg: cannot write to standard output: No space left on device\n");
}

// The launcher's "NONE" means no file; in kscfg a name is a name.
TEST(Kscfg, NONEIsAFileNameLikeAnyOther) {
    test::TempDir dir;
    const std::string golden = test::readBytes(kData + "/default.cfg");
    EXPECT_EQ(kscfg("new NONE", dir.path().string()).status, 0);
    EXPECT_EQ(test::readBytes(dir.file("NONE")), golden);
    fs::remove(dir.file("NONE"));
    EXPECT_EQ(kscfg("convert " + quoted(kData + "/default.cfg") + " -o NONE", dir.path().string()).status, 0);
    EXPECT_EQ(test::readBytes(dir.file("NONE")), golden);
    EXPECT_EQ(kscfg("get NONE fraglimit", dir.path().string()).output, "25\n");

    // An empty name names no file.
    EXPECT_EQ(kscfg("new ''", dir.path().string()).status, 2);
    EXPECT_EQ(kscfg("convert NONE -o ''", dir.path().string()).status, 2);
}

TEST(KscfgCommand, PrintsTheCommandLineOfRunInTheStyleAsked) {
    test::TempDir dir;
    test::writeBytes(dir.file("Server.CFG"),
                     std::string(test::kMarker) + "\r\n// set qdir C:\\QUAKE2 // Added\r\nset game_dir KESTRAND\r\n");
    const Outcome windows = kscfg("command Server.CFG --style windows", dir.path().string());
    EXPECT_EQ(windows.status, 0) << windows.output;
    EXPECT_EQ(windows.output, "C:\\QUAKE2\\quake2.exe +set game kestrand +set dedicated 1 +set port 27910 +exec "
                              "server.cfg\n");
}

// The files under tests/data were made by the launcher as it stood when they were checked in; a changed default,
// flag bit, line of the layout or key of the reader shows here as a difference in bytes.
TEST(KscfgGolden, NewAndConvertGiveTheCheckedInFilesByteForByte) {
    test::TempDir dir;
    const fs::path data = kData;
    const std::string out = dir.file("out.cfg");
    ASSERT_EQ(kscfg("new " + quoted(out)).status, 0);
    EXPECT_EQ(test::readBytes(out), test::readBytes((data / "default.cfg").string()));

    const auto convert = [&](const std::string& inputs, const std::string& expected) {
        const Outcome outcome = kscfg("convert " + inputs + " -o " + quoted(out));
        ASSERT_EQ(outcome.status, 0) << expected;
        EXPECT_EQ(test::readBytes(out), test::readBytes((data / "convert/out" / (expected + ".cfg")).string()))
            << expected;
        // The warnings, one line each on the error stream.
        EXPECT_EQ(outcome.output, test::readBytes((data / "convert/out" / (expected + ".err")).string())) << expected;
    };
    int files = 0;
    for (const auto& entry : fs::directory_iterator(data / "convert/in")) {
        convert(quoted(entry.path().string()), entry.path().stem().string());
        ++files;
    }
    EXPECT_EQ(files, 7);
    convert(quoted((data / "convert/in/foreign-typical.cfg").string()) + " " +
                quoted((data / "convert/in/foreign-cr-flags.cfg").string()),
            "typical-then-flags");
}

// A file that cannot be read ends convert after the files before it, and OUT is not written. What is not a regular
// file is neither written over nor read: a FIFO without a writer does not hold kscfg up, /dev/zero does not fill
// its memory. Each says why in one line.
TEST(Kscfg, WhatCannotBeReadOrIsNotARegularFileEndsTheCommandWithOneLineThatSaysWhy) {
    test::TempDir dir;
    const std::string fifo = dir.file("fifo"), loop = dir.file("loop"), foreign = dir.file("foreign.cfg"),
                      missing = dir.file("missing.cfg"), out = " -o " + quoted(dir.file("out.cfg"));
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    fs::create_symlink("loop", loop);
    test::writeBytes(foreign, "set fraglimit 50\r\n");
    // The launcher's message for a file it cannot read gives way to the line that says why.
    const std::string foreignWarning = test::readBytes(kData + "/convert/out/empty.err");
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"new " + quoted(fifo), "kscfg: cannot write " + fifo + ": it is not a regular file\n"},
        {"new " + quoted(loop), "kscfg: cannot write " + loop + ": Too many levels of symbolic links\n"},
        {"convert " + quoted(fifo) + out, "kscfg: cannot read " + fifo + ": it is not a regular file\n"},
        {"convert /dev/zero" + out, "kscfg: cannot read /dev/zero: it is not a regular file\n"},
        {"convert " + quoted(foreign) + " " + quoted(missing) + out,
         foreignWarning + "kscfg: cannot read " + missing + ": No such file or directory\n"},
        {"convert " + quoted(foreign) + " " + quoted(dir.path().string()) + out,
         foreignWarning + "kscfg: cannot read " + dir.path().string() + ": it is a directory\n"},
    };
    for (const auto& [arguments, said] : rows) {
        const auto begun = std::chrono::steady_clock::now();
        const Outcome outcome = kscfg(arguments);
        EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(5)) << arguments;
        EXPECT_EQ(outcome.status, 1) << arguments;
        EXPECT_EQ(outcome.output, said);
    }
    EXPECT_TRUE(fs::is_fifo(fifo) && fs::is_symlink(loop) && !fs::exists(dir.file("out.cfg")));
}
