#include "server/paths.h"

#include <gtest/gtest.h>

using namespace ks;

namespace {

struct SplitRow {
    PathStyle style;
    const char* selected;
    const char* qdir;
    const char* gameDir;
};

constexpr SplitRow kSplitRows[] = {
    {PathStyle::Windows, "C:\\QUAKE2\\KESTRAND", "C:\\QUAKE2", "KESTRAND"},
    {PathStyle::Windows, "D:\\GAMES\\QUAKE2\\KESTRAND", "D:\\GAMES\\QUAKE2", "KESTRAND"},
    {PathStyle::Windows, "C:\\QUAKE2", "C:", "QUAKE2"},
    {PathStyle::Windows, "C:\\", "C:\\", "C:\\"},
    {PathStyle::Windows, "C:", "C:", "C:"},
    {PathStyle::Windows, "C:\\QUAKE2\\", "C:", "QUAKE2\\"},
    {PathStyle::Linux, "/usr/local/games/quake2/kestrand", "/usr/local/games/quake2", "kestrand"},
    {PathStyle::Linux, "/home/op/.yq2/kestrand", "/home/op/.yq2", "kestrand"},
    {PathStyle::Linux, "/quake2", "/", "quake2"},
    {PathStyle::Linux, "/", "/", "/"},
    // A backslash is an ordinary character in a Linux name, a slash in a Windows one.
    {PathStyle::Linux, "/games/q2\\kestrand", "/games", "q2\\kestrand"},
    {PathStyle::Windows, "C:\\games/q2", "C:", "games/q2"},
};

} // namespace

TEST(GameDirectorySplit, SplitsAtTheLastSeparatorBeforeTheLastCharacter) {
    for (const SplitRow& row : kSplitRows) {
        EXPECT_EQ(SplitGameDirectory(row.style, row.selected), (GameDirectorySplit{row.qdir, row.gameDir}))
            << row.selected;
    }
}

TEST(ServerCommandLine, WorkedExampleByteForByte) {
    EXPECT_EQ(ServerCommandLine(PathStyle::Windows,
                                {"C:\\QUAKE2", "KESTRAND", "1", "27910", "C:\\QUAKE2\\KESTRAND\\server.cfg"}),
              "C:\\QUAKE2\\quake2.exe +set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg");
    EXPECT_EQ(ServerCommandLine(PathStyle::Linux,
                                {"/opt/quake2", "kestrand", "1", "27910", "/opt/quake2/kestrand/server.cfg"}),
              "/opt/quake2/quake2 +set game kestrand +set dedicated 1 +set port 27910 +exec server.cfg");
}

TEST(ServerCommandLine, LowerCasesOnlyTheGameAndTheFileName) {
    EXPECT_EQ(ServerCommandLine(PathStyle::Windows, {"D:\\Games\\Quake2", "KesTRAND", "Ded", "PoRT",
                                                     "D:\\Games\\Quake2\\KESTRAND\\Server.CFG"}),
              "D:\\Games\\Quake2\\quake2.exe +set game kestrand +set dedicated Ded +set port PoRT +exec server.cfg");
    // Bytes above ASCII pass unchanged.
    EXPECT_EQ(LowerCase("\xC9T\xE9"), "\xC9t\xE9");
}

TEST(ServerCommandLine, EdgesOfTheDirectoryAndFileName) {
    // A drive root keeps its backslash, so two stand before the program.
    EXPECT_EQ(ServerCommandLine(PathStyle::Windows, {"C:\\", "C:\\", "1", "27910", "C:\\server.cfg"}),
              "C:\\\\quake2.exe +set game c:\\ +set dedicated 1 +set port 27910 +exec server.cfg");
    EXPECT_EQ(ServerCommandLine(PathStyle::Linux, {"/", "/", "1", "27910", "/server.cfg"}),
              "//quake2 +set game / +set dedicated 1 +set port 27910 +exec server.cfg");
    // Without a separator the whole text is the file name; a blank in QDIR stays unquoted.
    EXPECT_EQ(ServerCommandLine(PathStyle::Windows, {"C:\\Program Files\\Quake2", "kestrand", "1", "27910", "MY.CFG"}),
              "C:\\Program Files\\Quake2\\quake2.exe +set game kestrand +set dedicated 1 +set port 27910 +exec my.cfg");
    EXPECT_EQ(ConfigFileName(PathStyle::Linux, "C:\\QUAKE2\\server.cfg"), "C:\\QUAKE2\\server.cfg");
    EXPECT_EQ(ConfigFileName(PathStyle::Windows, "C:\\QUAKE2\\server.cfg"), "server.cfg");
    // Unset values go to the line as they are.
    EXPECT_EQ(ServerCommandLine(PathStyle::Windows, {"NONE", "NONE", "1", "27910", "a\\b.cfg"}),
              "NONE\\quake2.exe +set game none +set dedicated 1 +set port 27910 +exec b.cfg");
}

TEST(CompanionTarget, LiesInTheCfgFolderBesideTheConfigurationFile) {
    EXPECT_EQ(CompanionTarget(PathStyle::Windows, "C:\\QUAKE2\\KESTRAND\\server.cfg", "motd.txt"),
              "C:\\QUAKE2\\KESTRAND\\cfg\\motd.txt");
    EXPECT_EQ(CompanionTarget(PathStyle::Windows, "server.cfg", "motd.txt"), "cfg\\motd.txt");
    EXPECT_EQ(CompanionTarget(PathStyle::Linux, "/srv/q2/kestrand/server.cfg", "motd.txt"),
              "/srv/q2/kestrand/cfg/motd.txt");
}
