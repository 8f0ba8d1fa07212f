#include "config/writer.h"
#include "support/launcher_test.h"

#include <filesystem>

using namespace ks;
using ConfigTest = test::LauncherTest;
namespace fs = std::filesystem;

namespace {

// The lines of a file whose every line must end in CR LF.
std::vector<std::string> linesOf(const std::string& bytes) {
    EXPECT_TRUE(bytes.ends_with("\r\n"));
    std::vector<std::string> lines;
    for (std::size_t start = 0, end; (end = bytes.find("\r\n", start)) != std::string::npos; start = end + 2)
        lines.push_back(bytes.substr(start, end - start));
    return lines;
}

std::size_t entries(const fs::path& dir) {
    return std::distance(fs::directory_iterator(dir), fs::directory_iterator());
}

} // namespace

// A launcher after its start, whose search found nothing, writes what `kscfg new` writes.
TEST_F(ConfigTest, AStartedLauncherWritesTheGoldenDefaultFile) {
    EXPECT_EQ(renderConfig(program), test::readBytes(std::string(KS_TEST_DATA) + "/default.cfg"));
}

// An address adds its line; values go out as they stand: unquoted, empty, with a trailing blank.
TEST_F(ConfigTest, AnAddressAddsItsLineAndValuesGoOutAsTheyStand) {
    program.check(id::ipCheck).setState(0);
    main("IP").setText("10.0.0.5");
    main("FHOSTN").setText("My Server");
    main("FPORT").setText("");
    main("QDIR").setText("");
    main("FSM").setText("q2dm1 ");
    const auto lines = linesOf(renderConfig(program));
    ASSERT_EQ(lines.size(), 238u);
    EXPECT_EQ(lines[1], "// set IP 10.0.0.5 // Added by KS Launcher - Do NOT modify this section");
    EXPECT_EQ(lines[3], "// set qdir  // Added by KS Launcher - Do NOT modify this section");
    EXPECT_EQ(lines[6] + "|" + lines[7] + "|" + lines.back(), "hostname My Server|set port |map q2dm1 ");
}

// The writer follows links and keeps the mode as the atomic save does; without a file it writes nothing.
TEST_F(ConfigTest, TheWriterWritesNothingWithoutAFile) {
    for (const char* target : {"NONE", ""}) {
        main("FFile").setText(target);
        EXPECT_TRUE(writeConfig(program).ok);
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
    EXPECT_FALSE(program.configSaved());
}

// Save names the file and says why; Save As takes the new name and says nothing.
TEST_F(ConfigTest, FailedWritesLeaveTheOldFileWholeAndNoTemporaryFileAndOnlySaveSaysWhy) {
    const std::string locked = dir.file("locked.cfg");
    test::writeBytes(locked, "keep me\r\n");
    fs::permissions(locked, fs::perms::owner_read | fs::perms::group_read, fs::perm_options::replace);
    for (const std::string& target : {dir.file("missing/server.cfg"), locked, dir.path().string()}) {
        main("FFile").setText(target);
        saveConfig(program);
        ASSERT_EQ(platform.messages.size(), 1u) << target;
        const std::string said = shown()[0];
        const std::string head = test::kFileWarning + "The configuration file " + target + " could not be written:\r";
        EXPECT_TRUE(said.starts_with(head)) << said;
        EXPECT_EQ(said.find(":\r\r"), std::string::npos) << "no reason given: " << said;
        platform.messages.clear();
        main("FFile").setText("/earlier.cfg");
        platform.dialogAnswers.push_back(target);
        saveConfigAs(program);
        EXPECT_EQ(main("FFile").text(), target);
        EXPECT_TRUE(platform.messages.empty());
    }
    EXPECT_EQ(test::readBytes(locked), "keep me\r\n");
    EXPECT_FALSE(program.configSaved());
    EXPECT_EQ(entries(dir.path()), 1u);
}
