#pragma once

#include "frame/program.h"

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

// One line of the file: its kind and, for a field line, the form and name of the field; for a section
// line, its text.
struct LayoutLine {
    LineKind kind;
    FormId form;
    std::string_view text;
};

// Stands behind the value of every marked line.
inline constexpr std::string_view kAddedMark = " // Added by KS Launcher - Do NOT modify this section";
inline constexpr std::string_view kLineEnd = "\r\n";

// Every line of a written file, first to last. The line of the IP field is left out when IP is empty.
std::span<const LayoutLine> configLayout();

} // namespace ks
