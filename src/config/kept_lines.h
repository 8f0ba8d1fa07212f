#pragma once

#include "config/layer.h"

#include "frame/path_style.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ks {

// A file that an operator wrote by hand holds lines the launcher has no setting for: a map list, an exec of
// another script, a cvar of another mod. The launcher's Save drops them; a writer that keeps them puts them, as
// they were and in their order, into one block behind the launcher's layout, under this heading. Neither the
// heading nor a kept line gives the launcher's reader anything to take.
inline constexpr std::string_view kKeptHeading =
    "// Kept by kscfg: lines the launcher has no setting for (its Save drops them)";

// What a line of a file is to such a writer.
enum class LineUse {
    Empty,   // nothing but blanks and tabs
    Setting, // the launcher's reader takes something from it, or it names a setting of the launcher
    Comment, // any other comment: the server runs nothing of it
    Foreign, // it sets or runs something the launcher has no setting for
};

// The use of one line. A line is Foreign only when none of its commands (parted by ";" outside double quotes,
// up to a "//" that begins a word) names a key of the launcher, whether by "set KEY" or as its first word, and
// no record of it reaches a field.
LineUse lineUse(std::string_view line, PathStyle style);

struct KeptLine {
    std::size_t number; // counted from 1 as the reader counts lines
    std::string_view text;
};

// The Foreign lines of a file, in their order.
std::vector<KeptLine> linesToKeep(std::string_view bytes, PathStyle style);

// The block that follows the launcher's layout: an empty line, the heading and the kept lines, each ending with
// CR LF. Empty when no line is kept.
std::string keptBlock(std::span<const KeptLine> lines);

} // namespace ks
