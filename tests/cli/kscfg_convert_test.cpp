#include "support/temp_dir.h"

#include <algorithm>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <sys/wait.h>

namespace {

struct Result {
    int status;
    std::string output;
};

Result kscfg(const std::string& arguments) {
    const std::string command = std::string(KSCFG_PATH) + " " + arguments + " 2>&1";
    Result result{-1, {}};
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return result;
    std::array<char, 4096> buffer;
    std::size_t n;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        result.output.append(buffer.data(), n);
    const int status = pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

std::string quoted(const std::string& path) {
    return "'" + path + "'";
}

std::string withLineEnds(const std::string& crlf, const std::string& end) {
    std::string out;
    for (std::size_t i = 0; i < crlf.size(); ++i) {
        if (crlf.compare(i, 2, "\r\n") == 0) {
            out += end;
            ++i;
        } else {
            out += crlf[i];
        }
    }
    return out;
}

const std::string kForeignWarningLine =
    "warning: Kestrand Launcher File Warning: This Configuration file was not created with the Kestrand "
    "Launcher.  The Program will convert this file to the Kestrand Launcher file format.  You must got to "
    "Weapons / DM Flags button and set your item preferences on each tab\n";

} // namespace

TEST(KscfgConvert, AFileOfTheLauncherComesBackByteForByteWhateverItsLineEnds) {
    ks::test::TempDir dir;
    const std::string fresh = dir.file("fresh.cfg");
    ASSERT_EQ(kscfg("new " + quoted(fresh)).status, 0);
    const std::string original = ks::test::readBytes(fresh);

    const Result same = kscfg("convert " + quoted(fresh) + " -o " + quoted(dir.file("out.cfg")));
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(same.output, "");
    EXPECT_EQ(ks::test::readBytes(dir.file("out.cfg")), original);

    for (const std::string end : {"\n", "\r"}) {
        const std::string in = dir.file("ends.cfg");
        ks::test::writeBytes(in, withLineEnds(original, end));
        ASSERT_EQ(kscfg("convert " + quoted(in) + " -o " + quoted(dir.file("ends.out"))).status, 0);
        EXPECT_EQ(ks::test::readBytes(dir.file("ends.out")), original) << (end == "\n" ? "LF" : "CR");
    }
}

TEST(KscfgConvert, ReadsEachFileInTurnWarnsAsTheLauncherWouldAndStopsAtAnUnreadableOne) {
    ks::test::TempDir dir;
    const std::string first = dir.file("a.cfg"), second = dir.file("b.cfg"), out = dir.file("out.cfg");
    ks::test::writeBytes(first, "set dmflags 1024\nset fraglimit 40\nset deathmatch 5\n");
    ks::test::writeBytes(second, "set fraglimit 50\r\n// set df_no_falling 1\r\n");
    Result result = kscfg("convert " + quoted(first) + " " + quoted(second) + " -o " + quoted(out));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output,
              "warning: DeathMatch, Off or On: Must be 0 or 1\n" + kForeignWarningLine + kForeignWarningLine);
    const std::string converted = ks::test::readBytes(out);
    for (const char* line : {"\r\nset fraglimit 50\r\n", "\r\nset deathmatch \r\n", "\r\nset dmflags 88\r\n"})
        EXPECT_NE(converted.find(line), std::string::npos) << line;

    for (const std::string& bad : {dir.file("missing.cfg"), dir.path().string()}) {
        result = kscfg("convert " + quoted(second) + " " + quoted(bad) + " -o " + quoted(out));
        EXPECT_EQ(result.status, 1) << bad;
        EXPECT_EQ(result.output,
                  kForeignWarningLine + "warning: Kestrand Launcher File Warning: There is no such existing file!\n");
        EXPECT_EQ(ks::test::readBytes(out), converted);
    }
    EXPECT_EQ(kscfg("convert a.cfg -o").status, 2);
}
