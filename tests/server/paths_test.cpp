#include "server/paths.h"
#include "server/windows_command_line.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace ks;

TEST(GameDirectorySplit, SplitsAtTheLastSeparatorBeforeTheLastCharacter) {
    const std::tuple<PathStyle, const char*, GameDirectorySplit> rows[] = {
        {PathStyle::Windows, "C:\\QUAKE2\\KESTRAND", {"C:\\QUAKE2", "KESTRAND"}},
        {PathStyle::Windows, "C:\\QUAKE2", {"C:", "QUAKE2"}},
        {PathStyle::Windows, "C:\\", {"C:\\", "C:\\"}},
        {PathStyle::Windows, "C:", {"C:", "C:"}},
        {PathStyle::Windows, "C:\\QUAKE2\\", {"C:", "QUAKE2\\"}},
        {PathStyle::Linux, "/usr/local/games/quake2/kestrand", {"/usr/local/games/quake2", "kestrand"}},
        {PathStyle::Linux, "/quake2", {"/", "quake2"}},
        {PathStyle::Linux, "/", {"/", "/"}},
        // A backslash is an ordinary character in a Linux name, a slash in a Windows one.
        {PathStyle::Linux, "/games/q2\\kestrand", {"/games", "q2\\kestrand"}},
        {PathStyle::Windows, "C:\\games/q2", {"C:", "games/q2"}},
    };
    for (const auto& [style, selected, split] : rows)
        EXPECT_EQ(splitGameDirectory(style, selected), split) << selected;
}

TEST(ServerCommandLine, HasItsTenPiecesWithTheGameAndTheFileNameLowerCasedOnlyInTheWindowsStyle) {
    const struct {
        PathStyle style;
        LaunchValues values;
        const char* line;
    } rows[] = {
        {PathStyle::Windows,
         {"C:\\QUAKE2", "KESTRAND", "1", "27910", "C:\\QUAKE2\\KESTRAND\\server.cfg"},
         "C:\\QUAKE2\\quake2.exe +set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg"},
        {PathStyle::Windows,
         {"D:\\Games\\Quake2", "KesTRAND", "Ded", "PoRT", "D:\\Games\\Quake2\\KESTRAND\\Server.CFG"},
         "D:\\Games\\Quake2\\quake2.exe +set game kestrand +set dedicated Ded +set port PoRT +exec server.cfg"},
        // A drive root keeps its separator, so two stand before the program.
        {PathStyle::Windows,
         {"C:\\", "C:\\", "1", "27910", "C:\\server.cfg"},
         "C:\\\\quake2.exe +set game c:\\ +set dedicated 1 +set port 27910 +exec server.cfg"},
        {PathStyle::Linux,
         {"/", "/", "1", "27910", "/server.cfg"},
         "//quake2 +set game / +set dedicated 1 +set port 27910 +exec server.cfg"},
        // Without a separator the whole text is the file name; a blank in QDIR stays unquoted.
        {PathStyle::Windows,
         {"C:\\Program Files\\Quake2", "kestrand", "1", "27910", "MY.CFG"},
         "C:\\Program Files\\Quake2\\quake2.exe +set game kestrand +set dedicated 1 +set port 27910 +exec my.cfg"},
        // A backslash is no separator in the Linux style, and the case stays, as a Linux file system needs it.
        {PathStyle::Linux,
         {"/Q2", "Kestrand", "1", "2", "C:\\Q\\Server.CFG"},
         "/Q2/quake2 +set game Kestrand +set dedicated 1 +set port 2 +exec C:\\Q\\Server.CFG"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(serverCommandLine(row.style, row.values), row.line);
    // Bytes above ASCII pass unchanged.
    EXPECT_EQ(lowerCase("\xC9T\xE9"), "\xC9t\xE9");
}

TEST(CompanionPath, LiesInTheCfgFolderBesideTheConfigurationFileOrTheCurrentOne) {
    EXPECT_EQ(companionPath(PathStyle::Windows, "server.cfg", "motd.txt"), "cfg\\motd.txt");
}

// Each row: the words, and the line that the C runtime of the started program cuts back into exactly those words.
TEST(WindowsCommandLine, QuotesOnlyTheWordsThatNeedItAndEscapesQuotesAndTheBackslashesBeforeThem) {
    const std::tuple<std::string, std::vector<std::string>, std::string> rows[] = {
        {"C:\\QUAKE2\\quake2.exe", {"+set", "game", "kestrand"}, "C:\\QUAKE2\\quake2.exe +set game kestrand"},
        {"C:\\Quake II\\quake2.exe", {"", "two words"}, "\"C:\\Quake II\\quake2.exe\" \"\" \"two words\""},
        {"q", {"say \"hi\""}, "q \"say \\\"hi\\\"\""},
        {"q", {"C:\\ends in\\"}, "q \"C:\\ends in\\\\\""},
        {"q", {"\\\\\"x", "a\\b", "tab\there"}, "q \"\\\\\\\\\\\"x\" a\\b \"tab\there\""},
    };
    for (const auto& [program, words, line] : rows)
        EXPECT_EQ(windowsCommandLine(program, words), line) << line;
}
