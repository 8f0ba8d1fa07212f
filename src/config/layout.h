#pragma once

#include "config/layer.h"

#include "frame/catalogue.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace ks {

// The six kinds of line in a written configuration file.
enum class LineKind {
    Section, // fixed text
    Empty,   // nothing but the line end
    Marked,  // "// set KEY VALUE" followed by the added mark
    Set,     // "set KEY VALUE"
    Bare,    // "KEY VALUE"
    Comment, // "// set KEY VALUE"
};

// One line of the file: its kind and, for a line of a setting, the field whose key and text it carries; for a
// section line, its text.
struct LayoutLine {
    LineKind kind;
    FieldId field{};
    std::string_view text{};
};

// The line that opens the launcher's own section of a file. A record equal to it marks a file as one the
// launcher wrote.
inline constexpr std::string_view kMarkerLine = "//Kestrand Launcher AUTO CONFIG SECTION - DO NOT Modify";
// Stands behind the value of every marked line.
inline constexpr std::string_view kAddedMark = " // Added by KS Launcher - Do NOT modify this section";
inline constexpr std::string_view kLineEnd = "\r\n";

// Every line of a written file, first to last. The line of the IP field is left out when IP is empty.
std::span<const LayoutLine> configLayout();

// How many lines a written file has in the launcher's layout, with the IP line or without it.
std::size_t layoutLineCount(bool withAddress);

} // namespace ks
