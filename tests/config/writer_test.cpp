#include "config/layout.h"
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

char kindOf(const std::string& line) {
    if (line.empty()) return 'E';
    if (line.ends_with(kAddedMark)) return 'M';
    if (line.starts_with("// set ")) return 'C';
    if (line.starts_with("//")) return 'H';
    if (line.starts_with("set ")) return 'S';
    return 'B';
}

std::size_t entries(const fs::path& dir) {
    return std::distance(fs::directory_iterator(dir), fs::directory_iterator());
}

} // namespace

TEST_F(ConfigTest, DefaultFileHas237LinesAndTheDialogDefaultsWithoutTheDialogs) {
    const std::string bytes = renderConfig(program);
    const std::string head =
        "//Kestrand Launcher AUTO CONFIG SECTION - DO NOT Modify\r\n"
        "// set dedicated 1 // Added by KS Launcher - Do NOT modify this section\r\n"
        "// set qdir NONE // Added by KS Launcher - Do NOT modify this section\r\n"
        "// End KS Launcher Section\r\nset deathmatch 1\r\nhostname hostname\r\nset port 27910\r\nset public 1\r\n"
        "setmaster q2master.example.net 192.0.2.10\r\nset maxclients 16\r\nset game_dir NONE\r\n"
        "set fraglimit 25\r\nset timelimit 10\r\nset allow_download 1\r\nset allow_download_maps 1\r\n"
        "set allow_downloads_models 1\r\nset allow_downloads_players 1\r\nset allow_download_sounds 1\r\n"
        "set rcon_password hushmarker\r\nset logfile 1\r\nset stdlogfile 1\r\nset stdlogname "
        "\"kestrand/StdLog.log\"\r\n";
    EXPECT_EQ(bytes.substr(0, head.size()), head);
    EXPECT_TRUE(bytes.ends_with("\r\n// set ab_slugs 0\r\n\r\nset ban_ammo 0\r\n\r\nmap q2dm1\r\n"));
    // The two empty lines in a row stand before the starting ammunition only.
    const auto lines = linesOf(bytes);
    ASSERT_EQ(lines.size(), 237u);
    EXPECT_EQ(lines[203] + lines[204] + lines[205], "//-----------STARTING AMMO------------");
    // Form1's totals, Form2's defaults and the main form's FGD and ABT under keys of their own.
    for (const char* line : {"\r\nset dmflags 80\r\n", "\r\nset sv_botdetection 31\r\n", "\r\nset sshotgun_wait 17\r\n",
                             "\r\nset g_damage 150\r\n", "\r\nset bot_chat 1\r\n"})
        EXPECT_NE(bytes.find(line), std::string::npos) << line;
}

TEST_F(ConfigTest, WithAnAddressTheFileHas238LinesOfTheRightKindsAndValuesGoOutAsTheyStand) {
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
    std::map<char, int> kinds;
    for (const auto& line : lines)
        ++kinds[kindOf(line)];
    EXPECT_EQ(kinds, (std::map<char, int>{{'M', 3}, {'B', 3}, {'C', 91}, {'S', 111}, {'H', 11}, {'E', 19}}));
}

TEST_F(ConfigTest, TheWriterWritesNothingWithoutAFileAndReplacesThroughALinkKeepingPermissions) {
    for (const char* target : {"NONE", ""}) {
        main("FFile").setText(target);
        EXPECT_TRUE(writeConfig(program).ok);
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
    EXPECT_FALSE(program.configSaved());

    const std::string real = dir.file("real.cfg"), link = dir.file("link.cfg");
    test::writeBytes(real, "old\r\n");
    fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::replace);
    fs::create_symlink("real.cfg", link);
    main("FFile").setText(link);
    ASSERT_TRUE(writeConfig(program).ok);
    EXPECT_TRUE(program.configSaved());
    const std::string first = test::readBytes(real);
    EXPECT_EQ(first, renderConfig(program));
    ASSERT_TRUE(writeConfig(program).ok);
    EXPECT_EQ(test::readBytes(real), first);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(real).permissions() & fs::perms::all, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(entries(dir.path()), 2u);
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
