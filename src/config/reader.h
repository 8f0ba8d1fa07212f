#pragma once

#include "config/layer.h"

#include "config/reader_keys.h"
#include "frame/path_style.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace ks {

class Program;

// One record cut into at most four words. The views point into the text the record was scanned from.
struct RecordWords {
    std::array<std::string_view, 4> words;    // blanks at their ends removed
    std::optional<std::string_view> startMap; // the second word of a "map" record, as cut, blanks and all
    bool marker = false;                      // the record is the marker line
    // Everything behind the third word up to a "//" comment, blanks inside kept and those at its end removed:
    // a Linux Quake II directory whole, "/home/John Smith/.yq2" and not "/home/John".
    std::string_view fourthToComment;
};

// Scans and cuts one record. `rec` is the record with one blank appended.
//
// The scan walks the positions 1 to length + 1 (the last reads as no character). Each of the first four
// blanks marks a word end. A double quote makes the rest of the record one word and ends the scan. A slash
// behind the second position ends it as well, so the "//" of a comment passes but no later slash does; in a
// record of 10,000 characters or more the scan goes on at position 10,000 after such a slash, and a slash
// reached there ends it for good. Words are cut only when two word ends were found. Two blanks in a row give
// an empty word.
// Linux paths are written with slashes, so in the Linux style only a "//" ends the scan; a single slash is
// part of the word, and the value of a qdir line runs to its comment, blanks and all.
RecordWords cutRecord(std::string_view rec, PathStyle style = PathStyle::Windows);

// The field a record reaches, as applyRecord finds it: the start map and the host name by the first word, then
// the key tables by the second word and, behind "set", the third.
struct RecordReach {
    FieldId field;
    const ReadKey* key;       // null for the host name and the start map
    std::string_view keyWord; // a view into the record
    std::string_view value;
};
std::optional<RecordReach> reachOfRecord(const RecordWords& record, PathStyle style);

// Applies the words of one record to the fields: "map" sets the start map, "hostname" the host name, and
// the second and third words are looked up among the keys the reader knows.
void applyRecord(Program& program, const RecordWords& words);

// Whether a flag line's value turns its check box on: a whole number above 0, or a word that is no number
// at all (an empty word, "1x", a number too large for a double).
bool flagValueTurnsOn(std::string_view value);

// Goes through the file at `path` and puts what it recognises into the fields. `read` is false when the file
// could not be read up to its first record; otherwise `markerFound` tells whether the marker line was seen.
// A read that fails later ends the input quietly. `reason` says why reading stopped early ("it is not a
// regular file", "out of memory", the system's words), and is empty when the file was read to its end.
struct ReadResult {
    bool read = false;
    bool markerFound = false;
    std::string reason;
    explicit operator bool() const { return read; }
};
ReadResult readConfig(Program& program, const std::string& path);
// The same for the bytes of a file already read.
ReadResult readConfigText(Program& program, std::string_view bytes);

// The Open command behind its dialog: FFile takes the path, the file is read, the first tab comes up and
// the warning for a file the launcher did not write follows. A file that cannot be read says so, and FFile
// goes back to "NONE" on yellow. Gives what the reading came to; it converts to false in that case.
ReadResult openConfigFile(Program& program, const std::string& path);
// The Open command for `path`, whose bytes were read already.
ReadResult openConfigText(Program& program, const std::string& path, std::string_view bytes);

} // namespace ks
