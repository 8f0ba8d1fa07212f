#include "config/config_check.h"

#include "config/layout.h"
#include "config/reader.h"
#include "config/reader_keys.h"
#include "config/setting_keys.h"
#include "frame/program.h"
#include "rules/numbers.h"
#include "rules/range_rules.h"
#include "rules/text_rules.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace ks {

namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::string_view kBlanks = " \t";

// A word that is no key is given the keys at most this many edits away.
constexpr std::size_t kSuggestFurthest = 2;

std::string_view trimBehind(std::string_view text) {
    const std::size_t last = text.find_last_not_of(kBlanks);
    return last == npos ? std::string_view() : text.substr(0, last + 1);
}

// The words of a line as its author sees them: parted by any run of blanks and tabs.
std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t start = text.find_first_not_of(kBlanks); start != npos;
         start = text.find_first_not_of(kBlanks, start)) {
        const std::size_t end = text.find_first_of(kBlanks, start);
        words.push_back(text.substr(start, end == npos ? npos : end - start));
        start = end;
    }
    return words;
}

// The value a line's author meant, from the text behind its key: the quoted text with its quotes when it
// begins with one, else everything up to a "//" that begins a word, blanks and tabs at both ends removed.
std::string_view meantValue(std::string_view rest) {
    const std::size_t start = rest.find_first_not_of(kBlanks);
    if (start == npos) return {};
    rest = rest.substr(start);
    if (rest.front() == '"') {
        const std::size_t close = rest.find('"', 1);
        return close == npos ? trimBehind(rest) : rest.substr(0, close + 1);
    }
    for (std::size_t at = rest.find("//"); at != npos; at = rest.find("//", at + 1))
        if (at == 0 || rest[at - 1] == ' ' || rest[at - 1] == '\t') return trimBehind(rest.substr(0, at));
    return trimBehind(rest);
}

// Where the word `word` of `text` ends, `word` being a view into `text`.
std::size_t endOf(std::string_view text, std::string_view word) {
    return static_cast<std::size_t>(word.data() - text.data()) + word.size();
}

std::string shown(std::string_view value) {
    return value.empty() ? std::string("the empty text") : "`" + std::string(value) + "`";
}

std::string quotedKey(std::string_view key) { return "`" + std::string(key) + "`"; }

// The field a record reaches and the word the reader gives it.
struct Reach {
    FieldId field;
    const ReadKey* key;       // null for the host name and the start map
    std::string_view keyWord; // a view into the record
    std::string_view value;
};

std::optional<Reach> reachOf(const RecordWords& record) {
    const auto& words = record.words;
    if (record.startMap) return Reach{id::FSM, nullptr, words[0], *record.startMap};
    if (words[0] == kHostnameWord) return Reach{id::FHOSTN, nullptr, words[0], words[1]};
    if (const ReadKey* key = findSecondWordKey(words[1])) return Reach{key->field, key, words[1], words[2]};
    if (words[1] == kSetWord)
        if (const ReadKey* key = findThirdWordKey(words[2])) return Reach{key->field, key, words[2], words[3]};
    return std::nullopt;
}

std::string_view readKeyOf(const SettingKey& setting) {
    for (const KeyReadOtherwise& other : kKeysReadOtherwise)
        if (other.field == setting.field) return other.readKey;
    return {};
}

// The shape of line from which the reader takes a setting.
std::string readShape(const SettingKey& setting) {
    const std::string key(setting.key);
    switch (setting.line) {
    case LineKind::Marked:
    case LineKind::Comment:
        return "a line `// set " + key + " VALUE`";
    case LineKind::Bare:
        return "a line `" + key + " VALUE`";
    default:
        return "a line whose second word it is, such as `set " + key + " VALUE`";
    }
}

// A line that its author surely meant as the marker line: the marker with blanks or tabs around it, or in
// other case.
bool nearlyMarker(std::string_view line) {
    const std::string_view trimmed = trimBehind(line.substr(std::min(line.find_first_not_of(kBlanks), line.size())));
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return std::equal(trimmed.begin(), trimmed.end(), kMarkerLine.begin(), kMarkerLine.end(),
                      [&](char a, char b) { return lower(a) == lower(b); });
}

class Checker {
public:
    explicit Checker(Program& program) : program_(program) {}

    void checkLine(std::size_t number, std::string_view line) {
        number_ = number;
        if (nearlyMarker(line) && !nearMarker_) nearMarker_ = number;
        bool valueRunsOn = false; // the first record's value goes on behind a comma
        for (const std::string_view record : lineRecords(line)) {
            std::string rec(record);
            rec.push_back(' ');
            const RecordWords words = cutRecord(rec, program_.pathStyle());
            if (words.marker) markerFound_ = true;
            const std::string_view from = line.substr(static_cast<std::size_t>(record.data() - line.data()));
            if (valueRunsOn)
                applyRecord(program_, words);
            else
                valueRunsOn = checkRecord(from, rec, words);
        }
    }

    std::vector<Finding> finish() {
        for (const Deferred& line : deferred_) {
            const std::string& kept = program_.field(line.setting->field).text();
            if (kept == line.meant) continue;
            const std::string key = quotedKey(line.setting->key);
            if (line.setting->kind == SettingKind::Total)
                add(line.number, FindingKind::NotRead, line.setting->key,
                    key + " is not read: the launcher adds it up from the lines of its flags, which give " +
                        shown(kept) + ", not " + shown(line.meant));
            else
                add(line.number, FindingKind::ReloadLost, line.setting->key,
                    key + " is written under this key but read back as " + quotedKey(readKeyOf(*line.setting)) +
                        ": a reload does not bring back " + shown(line.meant) + " and keeps " + shown(kept));
        }
        if (!markerFound_) {
            const std::string marker = quotedKey(kMarkerLine);
            add(nearMarker_.value_or(1), FindingKind::NoMarker, "",
                (nearMarker_
                     ? "this is not the marker line " + marker + ", which stands exactly so with nothing behind it"
                     : "the file has no marker line " + marker) +
                    ": the launcher warns when it opens the file, and its next save rewrites the whole file in its own "
                    "layout, dropping every line it does not read");
        }
        std::stable_sort(findings_.begin(), findings_.end(),
                         [](const Finding& a, const Finding& b) { return a.line < b.line; });
        return std::move(findings_);
    }

private:
    struct Deferred {
        std::size_t number;
        const SettingKey* setting;
        std::string meant;
    };

    void add(std::size_t line, FindingKind kind, std::string_view key, std::string message) {
        findings_.push_back({line, kind, std::string(key), std::move(message)});
    }

    // Checks one record and lets the reader take it. `from` is the line from the record on. Gives whether
    // the record's value runs on behind a comma, so that the records behind it on the line are its tail.
    bool checkRecord(std::string_view from, std::string_view rec, const RecordWords& words) {
        const std::optional<Reach> reach = reachOf(words);
        if (!reach) {
            checkUnread(from.substr(0, rec.size() - 1));
            applyRecord(program_, words);
            return false;
        }
        const std::string_view key = reach->key ? reach->key->key : reach->keyWord;
        const std::vector<std::string_view> authorWords = wordsOf(from);
        const bool launcherComment = authorWords.size() > 1 && authorWords[0] == "//" && authorWords[1] == kSetWord;
        const bool comment = authorWords.front().starts_with("//") && !launcherComment;
        const bool flag = !comment && reach->key && reach->key->action == ReadAction::Flag;
        if (flag) checkFlag(*reach->key, reach->value); // before the read turns the box on
        applyRecord(program_, words);
        const std::string& taken = program_.field(reach->field).text();
        if (comment) {
            add(number_, FindingKind::CommentRead, key,
                "this comment is read as a setting: " + quotedKey(key) + " takes " + shown(taken));
            return false;
        }
        if (flag || refused(*reach, key)) return false;
        // The key word stands at the same place in the line as in the record cut from it.
        return compareTaken(key, meantValue(from.substr(std::min(endOf(rec, reach->keyWord), from.size()))), taken);
    }

    void checkFlag(const ReadKey& key, std::string_view value) {
        const std::string name = quotedKey(key.key);
        if (!flagValueTurnsOn(value)) {
            if (program_.check(key.check).state() == 1)
                add(number_, FindingKind::FlagOnlyOn, key.key,
                    name + " " + shown(value) +
                        " does nothing: a flag line only ever turns its box on, and this box is on already (by "
                        "default or from a line above), so the flag stays on");
        } else if (!wholeNumber(value)) {
            add(number_, FindingKind::FlagNotNumber, key.key,
                value.empty()
                    ? name + " without a value turns its box on"
                    : name + " " + shown(value) + " is no number, and a value that is no number turns the box on");
        }
    }

    // A value that the field's rule or the address test refuses.
    bool refused(const Reach& reach, std::string_view key) {
        if (reach.key && reach.key->action == ReadAction::Address) {
            std::string address(reach.value);
            if (address.empty() || isValidAddress(program_, address)) return false;
            add(number_, FindingKind::Refused, key,
                quotedKey(key) + " " + shown(reach.value) +
                    " fails the address test: the launcher takes it as it stands, but it is no address");
            return true;
        }
        const FieldRow* row = fieldRowOf(reach.field);
        const std::optional<RangeRule> rule = row ? rangeRuleOf(*row) : std::nullopt;
        if (!rule || rangeAccepts(*rule, reach.value)) return false;
        add(number_, FindingKind::Refused, key,
            quotedKey(key) + " " + shown(reach.value) + " is refused (" + std::string(rule->title) + ": " +
                std::string(rule->text) + "): the launcher shows this message while it opens the file and " +
                (reach.field.form == FormId::Main ? "leaves the field empty" : "keeps the value"));
        return true;
    }

    // Compares what the field took with what the line's author meant. Gives whether the value was cut at a
    // comma.
    bool compareTaken(std::string_view key, std::string_view meant, std::string_view taken) {
        if (taken == meant) return false;
        const bool quoted = !meant.empty() && meant.front() == '"';
        const std::string tail = ": " + quotedKey(key) + " takes " + shown(taken) + ", not " + shown(meant);
        if (meant.starts_with(taken)) {
            const char end = meant[taken.size()];
            if (end == ',') {
                const std::string why =
                    quoted ? "a comma ends the record, even between double quotes" : "a comma ends the record";
                add(number_, quoted ? FindingKind::QuoteTail : FindingKind::Cut, key, why + tail);
                return true;
            }
            if (taken.empty() && meant.find('/') != npos)
                add(number_, FindingKind::Cut, key, "the slash ends the reader's scan before the value is cut" + tail);
            else if (end == '/')
                add(number_, FindingKind::Cut, key, "the value ends at the slash" + tail);
            else if (end == ' ')
                add(number_, FindingKind::Cut, key,
                    "the value ends at the first blank (double quotes around it keep it whole)" + tail);
            else
                add(number_, FindingKind::Cut, key, "the value is cut short" + tail);
            return false;
        }
        if (quoted && taken.starts_with(meant))
            add(number_, FindingKind::QuoteTail, key,
                "the double quote makes the rest of the line the value, comments and all" + tail);
        else
            add(number_, FindingKind::Cut, key, "the value reaches its field changed" + tail);
        return false;
    }

    // A record that reaches no field: tells why, when it names a setting or is no comment.
    void checkUnread(std::string_view record) {
        const std::vector<std::string_view> words = wordsOf(record);
        if (words.empty()) return;
        std::size_t keyAt = 0;
        bool commented = false;
        if (words[0].starts_with("//")) {
            if (words[0] != "//" || words.size() < 3 || words[1] != kSetWord) return;
            keyAt = 2;
            commented = true;
        } else if (words[0] == kSetWord) {
            if (words.size() < 2) return;
            keyAt = 1;
        }
        const std::string_view word = words[keyAt];
        const SettingKey* setting = findSettingKey(word);
        if (!setting) {
            if (!commented) unknownKey(word);
            return;
        }
        const bool readFromComment = setting->line == LineKind::Marked || setting->line == LineKind::Comment;
        if (commented && !readFromComment) return; // a setting commented out
        const std::string meant(meantValue(record.substr(endOf(record, word))));
        if (setting->kind == SettingKind::Total || !readKeyOf(*setting).empty()) {
            deferred_.push_back({number_, setting, meant});
            return;
        }
        const bool bareKey = setting->line == LineKind::Bare;
        const bool rightShape = readFromComment ? commented : bareKey ? keyAt == 0 : keyAt == 1;
        std::string why;
        if (!rightShape)
            why = quotedKey(word) + " is read only from " + readShape(*setting) + ": the reader passes over this one";
        else if (record.find('\t') != npos)
            why = "a tab is no word break for the reader, so it does not find " + quotedKey(word) + " in this line";
        else if (record.find("  ") != npos)
            why = "two blanks in a row give the reader an empty word, so it does not find " + quotedKey(word) +
                  " in this line";
        else
            why = "the reader does not find " + quotedKey(word) + " in this line";
        add(number_, FindingKind::NotRead, word, why);
    }

    void unknownKey(std::string_view word) {
        std::string message = quotedKey(word) + " is no setting of the launcher: the reader passes over this line, "
                                                "and the launcher's next save drops it";
        const std::vector<std::string_view> near = nearestSettingKeys(word, 1, kSuggestFurthest);
        if (!near.empty()) message += "; did you mean " + quotedKey(near.front()) + "?";
        add(number_, FindingKind::UnknownKey, word, std::move(message));
    }

    Program& program_;
    std::size_t number_ = 0;
    bool markerFound_ = false;
    std::optional<std::size_t> nearMarker_;
    std::vector<Deferred> deferred_;
    std::vector<Finding> findings_;
};

} // namespace

std::vector<std::string_view> fileLines(std::string_view bytes) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' && bytes[i] != '\n') continue;
        lines.push_back(bytes.substr(start, i - start));
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (start < bytes.size()) lines.push_back(bytes.substr(start));
    return lines;
}

std::vector<std::string_view> lineRecords(std::string_view line) {
    std::vector<std::string_view> records;
    for (std::size_t pos = 0;;) {
        while (pos < line.size() && line[pos] == ' ')
            ++pos;
        std::size_t comma = npos;
        if (pos < line.size() && line[pos] == '"') {
            const std::size_t close = line.find('"', pos + 1);
            records.push_back(line.substr(pos + 1, close == npos ? npos : close - pos - 1));
            if (close != npos) comma = line.find(',', close + 1);
        } else {
            comma = line.find(',', pos);
            records.push_back(line.substr(pos, comma == npos ? npos : comma - pos));
        }
        if (comma == npos) return records;
        pos = comma + 1;
    }
}

std::string_view findingKindName(FindingKind kind) {
    // In the order of the kinds.
    constexpr std::string_view kNames[] = {"unknown-key", "not-read", "comment-read", "cut",
                                           "quote-tail",  "refused",  "flag-only-on", "flag-not-number",
                                           "reload-lost", "no-marker"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::vector<Finding> checkConfig(Program& program, std::string_view bytes) {
    Checker checker(program);
    const std::vector<std::string_view> lines = fileLines(bytes);
    for (std::size_t i = 0; i < lines.size(); ++i)
        checker.checkLine(i + 1, lines[i]);
    return checker.finish();
}

} // namespace ks
