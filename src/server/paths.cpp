#include "server/paths.h"

namespace ks {

GameDirectorySplit splitGameDirectory(PathStyle style, std::string_view path) {
    const char sep = separator(style);
    // The last character is never looked at, so a trailing separator does not count.
    const std::size_t p = path.empty() ? 0 : lastSeparator(path, sep, path.size() - 1);
    if (p == 0) return {std::string(path), std::string(path)};
    std::string qdir(path.substr(0, p - 1));
    if (qdir.empty() && style == PathStyle::Linux) qdir = std::string(1, sep);
    return {std::move(qdir), std::string(path.substr(p))};
}

std::string companionPath(PathStyle style, std::string_view configFile, std::string_view companionFile) {
    std::string target = directoryPart(style, configFile);
    target += "cfg";
    target += separator(style);
    target += companionFile;
    return target;
}

std::string serverProgram(PathStyle style, std::string_view qdir) {
    std::string program(qdir);
    program += style == PathStyle::Windows ? "\\quake2.exe" : "/quake2";
    return program;
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::string serverCommandLine(PathStyle style, const LaunchValues& values) {
    // Windows finds a file whatever the case of its name; a Linux file system does not, so there the game
    // directory and the file's name reach the server as they are written.
    const auto asNamed = [style](std::string_view name) {
        return style == PathStyle::Windows ? lowerCase(name) : std::string(name);
    };
    std::string line = serverProgram(style, values.qdir);
    line += " +set game ";
    line += asNamed(values.gameDir);
    line += " +set dedicated ";
    line += values.dedicated;
    line += " +set port ";
    line += values.port;
    line += " +exec ";
    line += asNamed(fileNamePart(style, values.configFile));
    return line;
}

} // namespace ks
