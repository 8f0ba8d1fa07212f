#pragma once

#include "frame/layer.h"

#include <string>
#include <string_view>

namespace ks {

// Windows paths use backslashes and drive letters; Linux paths use slashes and one root.
enum class PathStyle { Windows, Linux };

constexpr char separator(PathStyle style) { return style == PathStyle::Windows ? '\\' : '/'; }

constexpr PathStyle nativePathStyle() {
#ifdef _WIN32
    return PathStyle::Windows;
#else
    return PathStyle::Linux;
#endif
}

// Position (counted from 1) of the last separator among the first `limit` characters, 0 if none.
constexpr std::size_t lastSeparator(std::string_view text, char sep, std::size_t limit) {
    for (std::size_t i = limit < text.size() ? limit : text.size(); i >= 1; --i)
        if (text[i - 1] == sep) return i;
    return 0;
}

// The path up to and including its last separator; empty when it has none.
inline std::string directoryPart(PathStyle style, std::string_view path) {
    return std::string(path.substr(0, lastSeparator(path, separator(style), path.size())));
}

// The path behind its last separator; the whole path when it has none.
inline std::string fileNamePart(PathStyle style, std::string_view path) {
    return std::string(path.substr(lastSeparator(path, separator(style), path.size())));
}

} // namespace ks
