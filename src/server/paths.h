#pragma once

#include "server/layer.h"

#include "frame/path_style.h"

#include <string>
#include <string_view>

namespace ks {

// A directory path split into the Quake II directory above it and the game directory's name.
struct GameDirectorySplit {
    std::string qdir;
    std::string gameDir;
    friend bool operator==(const GameDirectorySplit&, const GameDirectorySplit&) = default;
};

// Splits the selected directory at its last separator; the last character is not looked at, so a root
// keeps its whole path in both parts. On Linux a directory right under "/" gets "/" as its Quake II
// directory, the root drive, where a Windows path keeps the bare drive ("C:").
GameDirectorySplit splitGameDirectory(PathStyle style, std::string_view path);

// Where a companion text file lies: the "cfg" folder beside the configuration file.
std::string companionPath(PathStyle style, std::string_view configFile, std::string_view companionFile);

// The game program inside the Quake II directory: "\quake2.exe" on Windows, "/quake2" on Linux.
std::string serverProgram(PathStyle style, std::string_view qdir);

// The values the launch reads from the main form.
struct LaunchValues {
    std::string_view qdir;
    std::string_view gameDir;
    std::string_view dedicated;
    std::string_view port;
    std::string_view configFile;
};

// The server's command line, unquoted: program, game, dedicated, port and the configuration file's name. In the
// Windows style the game and the file's name are lower-cased; in the Linux style they keep their case.
std::string serverCommandLine(PathStyle style, const LaunchValues& values);

// ASCII letters to lower case; every other byte stays.
std::string lowerCase(std::string_view text);

} // namespace ks
