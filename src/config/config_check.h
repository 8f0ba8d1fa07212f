#pragma once

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
};

struct Finding {
    std::size_t line; // counted from 1 as the reader counts lines
    FindingKind kind;
    std::string key; // the setting or the word the line names; empty for the file as a whole
    std::string message;
};

// The lines of a file as the reader counts them, without their ends: CR LF, LF and CR each end a line, and
// the bytes behind the last line end make a line of their own.
std::vector<std::string_view> fileLines(std::string_view bytes);

// The records of one line as the record reader gives them: blanks ahead of a record are skipped, a comma ends
// it, and one that begins with a double quote runs to the next double quote, both quotes removed, behind which
// everything up to the next comma is dropped. Each record is a view into the line.
std::vector<std::string_view> lineRecords(std::string_view line);

// The kind as one word for tools: "unknown-key", "not-read", "comment-read", "cut", "quote-tail", "refused",
// "flag-only-on", "flag-not-number", "reload-lost", "no-marker".
std::string_view findingKindName(FindingKind kind);

// Reads the bytes of a configuration file into `program` as the Open command reads a file, record by record,
// and tells for each line that the reader passes over, or reads otherwise than its author surely meant, what
// happens and why. Lines end at CR LF, LF or CR; a comma starts a new record on the same line. A comment, an
// empty line and a line that reaches its field as written are no finding, nor is a line whose value equals
// what the read leaves anyway (a total that its flags give, or one of the settings read under another key
// holding the value a reload keeps). `program` stands as the launcher starts, with its handlers connected;
// the messages of the rules reach its platform. The findings come in the order of the lines.
std::vector<Finding> checkConfig(Program& program, std::string_view bytes);

} // namespace ks
