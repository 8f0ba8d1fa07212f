#include "config/reader.h"

#include "config/reader_keys.h"
#include "config/record_reader.h"
#include "frame/catalogue.h"
#include "frame/program.h"
#include "frame/selectors.h"

#include <charconv>
#include <cstdint>
#include <limits>

namespace ks {

namespace {

constexpr std::string_view kGameDirKey = "game_dir";
constexpr std::string_view kHostnameWord = "hostname";
constexpr std::string_view kMapWord = "map";

// From the position at which the scan goes on after a slash in a very long record.
constexpr std::size_t kSlashResume = 10000;

constexpr std::string_view kFileWarningTitle = "Kestrand Launcher File Warning";
constexpr std::string_view kNoSuchFile = "There is no such existing file!";
// Five pieces, each joined to the next by one carriage return.
constexpr std::string_view kForeignFileWarning = "This Configuration file was not created\r"
                                                 "with the Kestrand Launcher.  The Program\r"
                                                 "will convert this file to the Kestrand Launcher\r"
                                                 "file format.  You must got to Weapons / DM Flags\r"
                                                 "button and set your item preferences on each tab";

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

bool isDigitOf(char c, int base) {
    if (base == 8) return c >= '0' && c <= '7';
    if (base == 16) return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
    return c >= '0' && c <= '9';
}

// An &H or &O literal: its value in 16 bits when it fits there, else in 32 bits, both with sign; a literal
// beyond 32 bits is no number.
std::optional<double> literalValue(std::string_view digits, int base) {
    if (digits.empty()) return std::nullopt;
    std::uint64_t value = 0;
    for (char c : digits) {
        if (!isDigitOf(c, base)) return std::nullopt;
        const int digit = c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
        value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
        if (value > 0xFFFFFFFFu) return std::nullopt;
    }
    if (value <= 0xFFFFu) return static_cast<double>(static_cast<std::int16_t>(value));
    return static_cast<double>(static_cast<std::int32_t>(value));
}

// The whole word as one number, or nothing.
std::optional<double> numberOf(std::string_view word) {
    if (word.size() >= 2 && word[0] == '&') {
        if (word[1] == 'H' || word[1] == 'h') return literalValue(word.substr(2), 16);
        if (word[1] == 'O' || word[1] == 'o') return literalValue(word.substr(2), 8);
        return std::nullopt;
    }
    std::size_t i = 0;
    bool negative = false;
    if (i < word.size() && (word[i] == '+' || word[i] == '-')) negative = word[i++] == '-';
    const std::size_t mantissaStart = i;
    std::size_t digits = 0;
    while (i < word.size() && isDigitOf(word[i], 10))
        ++i, ++digits;
    const std::size_t integerDigits = digits;
    if (i < word.size() && word[i] == '.') {
        ++i;
        while (i < word.size() && isDigitOf(word[i], 10))
            ++i, ++digits;
    }
    if (digits == 0) return std::nullopt;
    const std::size_t mantissaEnd = i;
    long long exponent = 0;
    bool exponentNegative = false;
    if (i < word.size() && (word[i] == 'E' || word[i] == 'e' || word[i] == 'D' || word[i] == 'd')) {
        ++i;
        if (i < word.size() && (word[i] == '+' || word[i] == '-')) exponentNegative = word[i++] == '-';
        const std::size_t exponentStart = i;
        while (i < word.size() && isDigitOf(word[i], 10)) {
            if (exponent < 100000000) exponent = exponent * 10 + (word[i] - '0');
            ++i;
        }
        if (i == exponentStart) return std::nullopt;
    }
    if (i != word.size()) return std::nullopt;

    // The mantissa and exponent in the one spelling the conversion takes.
    std::string spelled(word.substr(mantissaStart, mantissaEnd - mantissaStart));
    spelled += 'e';
    if (exponentNegative) spelled += '-';
    spelled += std::to_string(exponent);
    double value = 0;
    const auto [end, error] = std::from_chars(spelled.data(), spelled.data() + spelled.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Too small is 0; too large is no number.
        const std::string_view mantissa = word.substr(mantissaStart, mantissaEnd - mantissaStart);
        const std::size_t firstNonZero = mantissa.find_first_not_of("0.");
        if (firstNonZero == std::string_view::npos) return negative ? -0.0 : 0.0;
        const long long leading = static_cast<long long>(integerDigits) - static_cast<long long>(firstNonZero);
        const long long magnitude = (exponentNegative ? -exponent : exponent) + leading;
        if (magnitude < 0) return negative ? -0.0 : 0.0;
        return std::nullopt;
    }
    if (error != std::errc() || end != spelled.data() + spelled.size()) return std::nullopt;
    return negative ? -value : value;
}

// The drive that a Quake II directory lies on, as the drive selector names it; empty when the path names
// none. On Windows the first character is the drive letter; on Linux a path from the root lies on "/".
std::string driveOf(Program& program, std::string_view path) {
    if (path.empty()) return {};
    if (program.pathStyle == PathStyle::Linux) return path[0] == '/' ? "/" : "";
    const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    for (const std::string& drive : program.platform.drives())
        if (!drive.empty() && upper(drive[0]) == upper(path[0])) return drive;
    return std::string(1, path[0]) + ":\\";
}

void applyThirdWord(Program& program, const ThirdWordKey& row, std::string_view value) {
    switch (row.action) {
    case ThirdWordAction::QuakeDirectory:
        // The drive change must not derive QDIR and FGD anew from the drive's directory.
        program.state.ReadingQDIR = 1;
        SelectDrive(program, driveOf(program, value));
        program.form(row.form).field(row.target).setText(std::string(value));
        program.state.ReadingQDIR = 0;
        break;
    case ThirdWordAction::Text:
        program.form(row.form).field(row.target).setText(std::string(value));
        break;
    case ThirdWordAction::Address:
        program.frmMain.check("ipCheck").setState(0);
        program.form(row.form).field(row.target).setText(std::string(value));
        break;
    case ThirdWordAction::Flag:
        if (FlagValueTurnsOn(value)) program.form(row.form).check(row.target).setState(1);
        break;
    }
}

} // namespace

RecordWords CutRecord(std::string_view rec, PathStyle style) {
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
    if (words[0] == kMapWord)
        result.startMap = words[1];
    else if (cut[2] > 0)
        words[2] = positions(rec, cut[1] + 1, cut[2] - 1);
    if (cut[3] > 0) words[3] = positions(rec, cut[2] + 1, cut[3] - 1);
    for (std::string_view& word : words)
        word = trimBlanksBehind(word);
    return result;
}

void DispatchRecord(Program& program, const RecordWords& record) {
    if (record.startMap) program.frmMain.field("FSM").setText(std::string(*record.startMap));
    const auto& words = record.words;
    if (words[0] == kHostnameWord) program.frmMain.field("FHOSTN").setText(std::string(words[1]));

    if (const SecondWordKey* row = findSecondWordKey(words[1])) {
        Field& field = program.form(row->form).field(row->field);
        field.setText(std::string(words[2]));
        if (row->key == kGameDirKey)
            SelectDirectory(program, program.frmMain.field("QDIR").text() + program.sep() + field.text());
        return;
    }
    if (words[1] != kSetKey) return;
    if (const ThirdWordKey* row = findThirdWordKey(words[2])) applyThirdWord(program, *row, words[3]);
}

bool FlagValueTurnsOn(std::string_view value) {
    const std::optional<double> number = numberOf(value);
    return !number || *number > 0;
}

ReadResult ReadConfig(Program& program, const std::string& path) {
    ReadResult result;
    RecordReader reader;
    if (!reader.open(path)) return result;

    // Up to the first record a failure means the file cannot be read. Behind it a failing read ends the
    // input, and the record it was reading is dropped.
    bool first = true;
    std::string rec;
    for (;;) {
        const bool end = reader.atEnd();
        if (reader.failed()) {
            if (first) return result;
            break;
        }
        if (end) break;
        if (!reader.read(rec)) {
            if (first) return result;
            break;
        }
        first = false;
        rec.push_back(' ');
        const RecordWords words = CutRecord(rec, program.pathStyle);
        if (words.marker) result.markerFound = true;
        DispatchRecord(program, words);
    }
    result.read = true;
    return result;
}

bool OpenConfigFile(Program& program, const std::string& path) {
    Field& file = program.frmMain.field("FFile");
    file.setText(path);
    const ReadResult result = ReadConfig(program, path);
    if (!result.read) {
        program.platform.messageBox(
            {std::string(kNoSuchFile), std::string(kFileWarningTitle), MessageButtons::Ok, MessageIcon::Critical, 0});
        file.setText(std::string(kNone));
        file.setBackColour(kPaleYellow);
        return false;
    }
    program.frmMain.tabs().setCurrent(0);
    if (!result.markerFound)
        program.platform.messageBox({std::string(kForeignFileWarning), std::string(kFileWarningTitle),
                                     MessageButtons::Ok, MessageIcon::Critical, 0});
    return true;
}

} // namespace ks
