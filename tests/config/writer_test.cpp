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

} // namespace

// A launcher after its start, whose search found nothing, writes what `kscfg new` writes. An address adds its line
// to that; values go out as they stand: unquoted, empty, with a trailing blank.
TEST_F(ConfigTest, AStartedLauncherWritesTheGoldenDefaultFileAndAnAddressAddsItsLine) {
    const std::string golden = test::readBytes(std::string(KS_TEST_DATA) + "/default.cfg");
    EXPECT_EQ(renderConfig(program), golden);
    program.check(id::ipCheck).setState(0);
    main("IP").setText("10.0.0.5");
    main("FHOSTN").setText("My Server");
    main("FPORT").setText("");
    main("QDIR").setText("");
    main("FSM").setText("q2dm1 ");
    const auto lines = linesOf(renderConfig(program));
    ASSERT_EQ(lines.size(), linesOf(golden).size() + 1);
    EXPECT_EQ(lines[1], "// set IP 10.0.0.5 // Added by KS Launcher - Do NOT modify this section");
    EXPECT_EQ(lines[3], "// set qdir  // Added by KS Launcher - Do NOT modify this section");
    EXPECT_EQ(lines[6] + "|" + lines[7] + "|" + lines.back(), "hostname My Server|set port |map q2dm1 ");
}

// Without a file the writer writes nothing. A write that fails leaves the old file whole: Save names the file and
// says why, Save As takes the new name and says nothing; neither counts as saved.
TEST_F(ConfigTest, FailedWritesLeaveTheOldFileWholeAndOnlySaveSaysWhy) {
    for (const char* target : {"NONE", ""}) {
        main("FFile").setText(target);
        EXPECT_TRUE(writeConfig(program).ok);
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
    const std::string locked = file("keep me\r\n", "locked.cfg");
    fs::permissions(locked, fs::perms::owner_read | fs::perms::group_read, fs::perm_options::replace);
    platform.plainFiles.clear();
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
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
}
