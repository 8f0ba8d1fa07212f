#include "config/writer.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sys/wait.h>

using namespace ks;

namespace {

struct Outcome {
    int status;
    std::string output;
};

// Runs kscfg through the shell, standard error folded into the output.
Outcome kscfg(const std::string& arguments) {
    const std::string command = std::string(KSCFG_PATH) + " " + arguments + " 2>&1";
    Outcome outcome{-1, {}};
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return outcome;
    std::array<char, 4096> buffer;
    std::size_t n;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) outcome.output.append(buffer.data(), n);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

} // namespace

TEST(KscfgNew, WritesTheFileOfAFreshLauncher) {
    test::TempDir dir;
    const std::string path = dir.file("fresh.cfg");
    const Outcome outcome = kscfg("new '" + path + "'");
    ASSERT_EQ(outcome.status, 0) << outcome.output;

    test::FakePlatform platform;
    Program program(platform);
    ConnectHandlers(program);
    program.frmMain.check("ipCheck").setState(1);
    EXPECT_EQ(test::readBytes(path), RenderConfig(program));
}

TEST(KscfgNew, BadUseGivesOneLineAndAFailingStatus) {
    test::TempDir dir;
    for (const std::string& arguments : {std::string("new"), std::string("new '") + dir.file("no/such/dir.cfg") + "'",
                                         std::string("frobnicate"), std::string("")}) {
        const Outcome outcome = kscfg(arguments);
        EXPECT_NE(outcome.status, 0) << arguments;
        EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1) << outcome.output;
        EXPECT_TRUE(outcome.output.starts_with("kscfg: ")) << outcome.output;
    }
}

TEST(KscfgHelp, ExplainsEveryCommand) {
    const Outcome outcome = kscfg("--help");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.output.find("kscfg new FILE"), std::string::npos);
}
