#pragma once

#include "config/layer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ks {

class Program;

// What a line of a configuration file does that its author surely did not mean.
enum class FindingKind {
    UnknownKey,    // the line names no setting: the reader passes over it, and the launcher's next save drops it
    NotRead,       // the line names a setting in a shape the reader passes over, or a total that differs
    CommentRead,   // a comment that the reader takes as a setting
    Cut,           // the value reaches its field cut at a blank, a comma or a slash, or otherwise changed
    QuoteTail,     // a value in double quotes loses its tail at a comma, or takes the rest of the line along
    Refused,       // the field's rule refuses the value
    FlagOnlyOn,    // a flag line of 0 or below for a box that is on: reading only ever turns a box on
    FlagNotNumber, // a flag line whose value is no number, which turns its box on
    ReloadLost,    // a setting read under another key than it is written with: a reload does not bring it back
    NoMarker,      // no marker line: the launcher warns on opening and its next save rewrites the whole file
    NotNumber,     // a value that is no number where the server reads a number
    OpenQuote,     // a value that opens a double quote and never closes it
    Duplicate,     // a setting given again on a later line, which wins
    ReloadChanged, // a save and a reload give the setting another value
    Password,      // the server's password for remote commands is the launcher's own or empty
    WorldReadable, // every user may read the file, and it holds a password
    // The server, which runs the file from its game directory, does not find it there; the caller tells it.
    OutsideGameDirectory,
};

struct Finding {
    std::size_t line; // counted from 1 as the reader counts lines; 0 for the file as a whole
    FindingKind kind;
    std::string key; // the setting or the word the line names; empty for the file as a whole
    std::string message;
};

// A value without the double quotes around it, as the server takes it.
std::string_view unquoted(std::string_view value);

// The kind as one word for tools: "unknown-key", "not-read", "comment-read", "cut", "quote-tail", "refused",
// "flag-only-on", "flag-not-number", "reload-lost", "no-marker", "not-number", "open-quote", "duplicate",
// "reload-changed", "password", "world-readable", "outside-game-dir".
std::string_view findingKindName(FindingKind kind);

// Reads the bytes of a configuration file into `program` as the Open command reads a file, record by record,
// and tells for each line that the reader passes over, or reads otherwise than its author surely meant, what
// happens and why. Lines end at CR LF, LF or CR; a comma starts a new record on the same line, and the words
// behind a "//" are a comment. A comment, an empty line and a line that reaches its field as written are no
// finding, nor is a line whose value equals what the read leaves anyway (a total that its flags give, or one of
// the settings read under another key holding the value a reload keeps), nor an unknown key in the block of
// kept lines. Besides, it tells of values that the server reads otherwise than they stand (no number where a
// number belongs, an open double quote), of a setting given twice, of a password that protects nothing, and of
// what a save and a reload would change: it writes what `program` holds as a save would and reads that into
// `reloaded`. Both stand as the launcher starts, with their handlers connected; the messages of the rules reach
// their platforms. `worldReadable` tells that every user may read the file, which matters when it holds a
// password. The findings come in the order of the lines.
std::vector<Finding> checkConfig(Program& program, Program& reloaded, std::string_view bytes,
                                 bool worldReadable = false);

} // namespace ks
