#include "config/reader.h"

#include "config/file_messages.h"
#include "config/layout.h"
#include "config/reader_keys.h"
#include "config/record_reader.h"
#include "frame/program.h"
#include "frame/selectors.h"
#include "rules/numbers.h"

namespace ks {

namespace {

// From the position at which the scan goes on after a slash in a very long record.
constexpr std::size_t kSlashResume = 10000;

// The characters from position `from` to position `to` (both counted from 1), cut at the end of the text.
std::string_view positions(std::string_view text, std::size_t from, std::size_t to) {
    if (from < 1 || to < from || from > text.size()) return {};
    return text.substr(from - 1, to - from + 1);
}

std::string_view trimBlanksBehind(std::string_view word) {
    while (!word.empty() && word.back() == ' ')
        word.remove_suffix(1);
    return word;
}

// The drive that a Quake II directory lies on, as the drive selector names it; empty when the path names
// none. On Windows the first character is the drive letter; on Linux a path from the root lies on "/".
std::string driveOf(Program& program, std::string_view path) {
    if (path.empty()) return {};
    if (program.pathStyle() == PathStyle::Linux) return path[0] == '/' ? "/" : "";
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    for (const std::string& drive : program.platform().drives())
        if (!drive.empty() && upper(drive[0]) == upper(path[0])) return drive;
    return std::string(1, path[0]) + ":\\";
}

void apply(Program& program, const ReadKey& key, std::string_view value) {
    switch (key.action) {
    case ReadAction::Text:
        program.field(key.field).setText(std::string(value));
        break;
    case ReadAction::GameDirectory: {
        Field& gameDir = program.field(key.field);
        gameDir.setText(std::string(value));
        selectDirectory(program, program.field(id::QDIR).text() + program.separator() + gameDir.text());
        break;
    }
    case ReadAction::QuakeDirectory:
        // The selectors move to the directory's drive, but QDIR and FGD are not split anew from them.
        selectDrive(program, driveOf(program, value), Follow::SelectorsOnly);
        program.field(key.field).setText(std::string(value));
        break;
    case ReadAction::Address:
        program.check(id::ipCheck).setState(0);
        program.field(key.field).setText(std::string(value));
        break;
    case ReadAction::Flag:
        if (flagValueTurnsOn(value)) program.check(key.check).setState(1);
        break;
    }
}

} // namespace

RecordWords cutRecord(std::string_view rec, PathStyle style) {
    RecordWords result;
    result.marker = rec.size() == kMarkerLine.size() + 1 && rec.starts_with(kMarkerLine) && rec.back() == ' ';

    std::array<std::size_t, 4> cut{};
    std::size_t cutCount = 0;
    const std::size_t recEnd = rec.size() + 1;
    for (std::size_t i = 1; i <= recEnd; ++i) {
        if (i > rec.size()) break; // the position behind the last character reads as no character
        const char c = rec[i - 1];
        if (c == ' ' && cutCount < 4) cut[cutCount++] = i;
        if (c == '"') {
            if (cutCount != 0) cut[cutCount - 1] = i - 1;
            if (cutCount != 4) cut[cutCount] = recEnd + 1;
            break;
        }
        if (c == '/' && i > 2 && (style == PathStyle::Windows || (i < rec.size() && rec[i] == '/'))) {
            if (i >= kSlashResume) break;
            i = kSlashResume - 1;
        }
    }

    if (cut[1] == 0) return result;
    auto& words = result.words;
    words[0] = positions(rec, 1, cut[0] - 1);
    words[1] = positions(rec, cut[0] + 1, cut[1] - 1);
    if (words[0] == kStartMapWord)
        result.startMap = words[1];
    else if (cut[2] > 0)
        words[2] = positions(rec, cut[1] + 1, cut[2] - 1);
    if (cut[3] > 0) words[3] = positions(rec, cut[2] + 1, cut[3] - 1);
    for (std::string_view& word : words)
        word = trimBlanksBehind(word);
    if (cut[2] > 0 && cut[2] < rec.size()) {
        const std::string_view behind = rec.substr(cut[2]);
        result.fourthToComment = trimBlanksBehind(behind.substr(0, behind.find("//")));
    }
    return result;
}

std::optional<RecordReach> reachOfRecord(const RecordWords& record, PathStyle style) {
    const auto& words = record.words;
    if (record.startMap) return RecordReach{id::FSM, nullptr, words[0], *record.startMap};
    if (words[0] == kHostnameWord) return RecordReach{id::FHOSTN, nullptr, words[0], words[1]};
    if (const ReadKey* key = findSecondWordKey(words[1])) return RecordReach{key->field, key, words[1], words[2]};
    if (words[1] != kSetWord) return std::nullopt;
    const ReadKey* key = findThirdWordKey(words[2]);
    if (!key) return std::nullopt;
    // On Linux a Quake II directory may hold blanks, and its line carries the whole path back.
    const bool wholePath = key->action == ReadAction::QuakeDirectory && style == PathStyle::Linux;
    return RecordReach{key->field, key, words[2], wholePath ? record.fourthToComment : words[3]};
}

void applyRecord(Program& program, const RecordWords& record) {
    // A "hostname" record sets the host name and goes on to the key tables with its second word.
    if (record.startMap) program.field(id::FSM).setText(std::string(*record.startMap));
    if (record.words[0] == kHostnameWord) program.field(id::FHOSTN).setText(std::string(record.words[1]));
    RecordWords rest = record;
    rest.startMap.reset();
    rest.words[0] = {};
    if (const std::optional<RecordReach> reach = reachOfRecord(rest, program.pathStyle()))
        apply(program, *reach->key, reach->value);
}

bool flagValueTurnsOn(std::string_view value) {
    const std::optional<double> number = wholeNumber(value);
    return !number || *number > 0;
}

namespace {

// Reads the records of an open reader into the fields.
ReadResult readRecords(Program& program, RecordReader& reader) {
    ReadResult result;
    // Up to the first record a failure means the file cannot be read. Behind it a failing read ends the
    // input, and the record it was reading is dropped.
    bool first = true;
    std::string rec;
    try {
        for (;;) {
            const bool end = reader.atEnd();
            if (reader.failed() || (!end && !reader.read(rec))) {
                result.reason = reader.reason();
                if (first) return result;
                break;
            }
            if (end) break;
            first = false;
            rec.push_back(' ');
            const RecordWords words = cutRecord(rec, program.pathStyle());
            if (words.marker) result.markerFound = true;
            applyRecord(program, words);
        }
    } catch (const std::bad_alloc&) {
        // A record too large to handle ends the reading like any other failure.
        result.reason = "out of memory";
        if (first) return result;
    }
    result.read = true;
    return result;
}

// The Open command once the file is chosen: `read` reads it into the fields.
template <typename Read> ReadResult open(Program& program, const std::string& path, Read read) {
    Field& file = program.field(id::FFile);
    file.setText(path);
    const ReadResult result = read();
    if (!result.read) {
        program.platform().messageBox(noSuchFileMessage());
        file.setText(std::string(kUnset));
        file.setBackColour(kPaleYellow);
        return result;
    }
    program.mainTabs().setCurrent(0);
    if (!result.markerFound) program.platform().messageBox(foreignFileMessage());
    return result;
}

} // namespace

ReadResult readConfig(Program& program, const std::string& path) {
    RecordReader reader;
    if (!reader.open(path)) {
        ReadResult result;
        result.reason = reader.reason();
        return result;
    }
    return readRecords(program, reader);
}

ReadResult readConfigText(Program& program, std::string_view bytes) {
    RecordReader reader;
    reader.openBytes(bytes);
    return readRecords(program, reader);
}

ReadResult openConfigFile(Program& program, const std::string& path) {
    return open(program, path, [&] { return readConfig(program, path); });
}

ReadResult openConfigText(Program& program, const std::string& path, std::string_view bytes) {
    return open(program, path, [&] { return readConfigText(program, bytes); });
}

} // namespace ks
