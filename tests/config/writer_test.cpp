#include "config/layout.h"
#include "config/writer.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

using namespace ks;
namespace fs = std::filesystem;

namespace {

std::vector<std::string> linesOf(const std::string& bytes) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < bytes.size()) {
        const std::size_t end = bytes.find("\r\n", start);
        if (end == std::string::npos) {
            lines.push_back(bytes.substr(start) + "<no line end>");
            break;
        }
        lines.push_back(bytes.substr(start, end - start));
        start = end + 2;
    }
    return lines;
}

char kindOf(const std::string& line) {
    if (line.empty()) return 'E';
    if (line.size() >= kAddedMark.size() && line.ends_with(kAddedMark)) return 'M';
    if (line.starts_with("// set ")) return 'C';
    if (line.starts_with("//")) return 'H';
    if (line.starts_with("set ")) return 'S';
    return 'B';
}

struct WriterTest : ::testing::Test {
    test::FakePlatform platform;
    Program program{platform, PathStyle::Linux};
    test::TempDir dir;
    WriterTest() {
        ConnectHandlers(program);
        LoadMainForm(program);
    }
    Field& main(const char* name) { return program.frmMain.field(name); }
};

} // namespace

TEST_F(WriterTest, DefaultFileHas237LinesBeginningAndEndingAsTheLayoutShows) {
    const auto lines = linesOf(RenderConfig(program));
    ASSERT_EQ(lines.size(), 237u);
    const std::vector<std::string> head{
        "//Kestrand Launcher AUTO CONFIG SECTION - DO NOT Modify",
        "// set dedicated 1 // Added by KS Launcher - Do NOT modify this section",
        "// set qdir NONE // Added by KS Launcher - Do NOT modify this section",
        "// End KS Launcher Section",
        "set deathmatch 1",
        "hostname hostname",
        "set port 27910",
        "set public 1",
        "setmaster q2master.example.net 192.0.2.10",
        "set maxclients 16",
        "set game_dir NONE",
        "set fraglimit 25",
        "set timelimit 10",
        "set allow_download 1",
        "set allow_download_maps 1",
        "set allow_downloads_models 1",
        "set allow_downloads_players 1",
        "set allow_download_sounds 1",
        "set rcon_password hushmarker",
        "set logfile 1",
        "set stdlogfile 1",
        "set stdlogname \"kestrand/StdLog.log\"",
    };
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 22), head);
    const std::vector<std::string> tail{"// set ab_slugs 0", "", "set ban_ammo 0", "", "map q2dm1"};
    EXPECT_EQ(std::vector<std::string>(lines.end() - 5, lines.end()), tail);
    // The two empty lines in a row stand before the starting ammunition only.
    EXPECT_EQ(lines[203], "");
    EXPECT_EQ(lines[204], "");
    EXPECT_EQ(lines[205], "//-----------STARTING AMMO------------");
}

TEST_F(WriterTest, WithAnAddressTheFileHas238LinesOfTheRightKinds) {
    program.frmMain.check("ipCheck").setState(0);
    main("IP").setText("10.0.0.5");
    const auto lines = linesOf(RenderConfig(program));
    ASSERT_EQ(lines.size(), 238u);
    EXPECT_EQ(lines[1], "// set IP 10.0.0.5 // Added by KS Launcher - Do NOT modify this section");
    std::map<char, int> kinds;
    for (const auto& line : lines) ++kinds[kindOf(line)];
    EXPECT_EQ(kinds, (std::map<char, int>{{'M', 3}, {'B', 3}, {'C', 91}, {'S', 111}, {'H', 11}, {'E', 19}}));
}

TEST_F(WriterTest, ValuesGoOutAsTheyStandAndEmptyFieldsKeepTheirBlank) {
    main("FHOSTN").setText("My Server");
    main("FPORT").setText("");
    main("QDIR").setText("");
    main("FSM").setText("q2dm1 ");
    const auto lines = linesOf(RenderConfig(program));
    EXPECT_EQ(lines[5], "hostname My Server");
    EXPECT_EQ(lines[6], "set port ");
    EXPECT_EQ(lines[2], "// set qdir  // Added by KS Launcher - Do NOT modify this section");
    EXPECT_EQ(lines.back(), "map q2dm1 ");
}

TEST_F(WriterTest, DialogFieldsReachTheFileWithoutTheDialogs) {
    const std::string bytes = RenderConfig(program);
    for (const char* line : {"\r\nset dmflags 80\r\n", "\r\nset sv_botdetection 31\r\n", "\r\nset sshotgun_wait 17\r\n",
                             "\r\nset g_damage 150\r\n", "\r\nset bot_chat 1\r\n", "\r\n// set df_skinteams 64\r\n"})
        EXPECT_NE(bytes.find(line), std::string::npos) << line;
    program.Form1.field("DMFLAG11").setText("1024");
    EXPECT_NE(RenderConfig(program).find("// set df_force_respawn 1024\r\n"), std::string::npos);
}

TEST_F(WriterTest, WriteConfigReplacesTheFileAndSetsConfigSaved) {
    const std::string path = dir.file("server.cfg");
    test::writeBytes(path, "old contents\n");
    main("FFile").setText(path);
    ASSERT_TRUE(WriteConfig(program).ok);
    EXPECT_EQ(program.state.ConfigSaved, 1);
    const std::string first = test::readBytes(path);
    EXPECT_EQ(first, RenderConfig(program));
    ASSERT_TRUE(WriteConfig(program).ok);
    EXPECT_EQ(test::readBytes(path), first);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
}

TEST_F(WriterTest, NoFileInHandWritesNothing) {
    for (const char* target : {"NONE", ""}) {
        main("FFile").setText(target);
        EXPECT_TRUE(WriteConfig(program).ok);
        EXPECT_EQ(program.state.ConfigSaved, 0);
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
}

TEST_F(WriterTest, FailedWritesLeaveTheOldFileWholeAndNoTemporaryFile) {
    main("FFile").setText(dir.file("missing/server.cfg"));
    OperationResult result = WriteConfig(program);
    EXPECT_FALSE(result.ok);
    EXPECT_FALSE(result.error.empty());

    const std::string locked = dir.file("locked.cfg");
    test::writeBytes(locked, "keep me\r\n");
    fs::permissions(locked, fs::perms::owner_read | fs::perms::group_read, fs::perm_options::replace);
    main("FFile").setText(locked);
    result = WriteConfig(program);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(test::readBytes(locked), "keep me\r\n");

    main("FFile").setText(dir.path().string());
    EXPECT_FALSE(WriteConfig(program).ok);

    EXPECT_EQ(program.state.ConfigSaved, 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
}

TEST_F(WriterTest, ASymlinkedTargetKeepsItsLinkAndItsPermissions) {
    const std::string real = dir.file("real.cfg");
    const std::string link = dir.file("link.cfg");
    test::writeBytes(real, "old\r\n");
    fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::replace);
    fs::create_symlink("real.cfg", link);
    main("FFile").setText(link);
    ASSERT_TRUE(WriteConfig(program).ok);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(test::readBytes(real), RenderConfig(program));
    EXPECT_EQ(fs::status(real).permissions() & fs::perms::all, fs::perms::owner_read | fs::perms::owner_write);
}
