#include "config/config_check.h"

#include "config/kept_lines.h"
#include "config/layout.h"
#include "config/reader.h"
#include "config/reader_keys.h"
#include "config/record_reader.h"
#include "config/setting_keys.h"
#include "config/writer.h"
#include "frame/program.h"
#include "rules/numbers.h"
#include "rules/range_rules.h"
#include "rules/text_rules.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <unordered_map>
#include <utility>

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

// Where a comment begins in a line as the server reads it: at a "//" that begins a word outside double quotes;
// npos when the line has none.
std::size_t commentStart(std::string_view line) {
    bool quoted = false;
    for (std::size_t at = 0; at + 1 < line.size(); ++at) {
        if (line[at] == '"') quoted = !quoted;
        if (!quoted && line[at] == '/' && line[at + 1] == '/' &&
            (at == 0 || line[at - 1] == ' ' || line[at - 1] == '\t'))
            return at;
    }
    return npos;
}

// Where the word `word` of `text` ends, `word` being a view into `text`.
std::size_t endOf(std::string_view text, std::string_view word) {
    return static_cast<std::size_t>(word.data() - text.data()) + word.size();
}

std::string quotedKey(std::string_view key) {
    std::string quoted(1, '`');
    quoted.append(key).push_back('`');
    return quoted;
}

std::string shown(std::string_view value) { return value.empty() ? std::string("the empty text") : quotedKey(value); }

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
    Checker(Program& program, Program& reloaded, bool worldReadable)
        : program_(program), reloaded_(reloaded), worldReadable_(worldReadable) {}

    void checkLine(std::size_t number, std::string_view line) {
        number_ = number;
        if (nearlyMarker(line) && !nearMarker_) nearMarker_ = number;
        if (line == kKeptHeading) inKeptBlock_ = true;
        const std::size_t comment = commentStart(line);
        bool valueRunsOn = false; // the first record's value goes on behind a comma
        for (const std::string_view record : lineRecords(line)) {
            std::string rec(record);
            rec.push_back(' ');
            const RecordWords words = cutRecord(rec, program_.pathStyle());
            if (words.marker) markerFound_ = true;
            const std::size_t at = static_cast<std::size_t>(record.data() - line.data());
            if (valueRunsOn)
                applyRecord(program_, words);
            else
                valueRunsOn = checkRecord(line.substr(at), rec, words, comment != npos && at > comment);
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
        checkPassword();
        checkReload();
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
    // The line that last gave a field its value, and that value.
    struct Given {
        std::size_t line;
        std::string value;
    };

    void add(std::size_t line, FindingKind kind, std::string_view key, std::string message) {
        findings_.push_back({line, kind, std::string(key), std::move(message)});
    }

    // Checks one record and lets the reader take it. `from` is the line from the record on; `inComment` tells
    // that the record lies behind the start of a comment. Gives whether the record's value runs on behind a
    // comma, so that the records behind it on the line are its tail.
    bool checkRecord(std::string_view from, std::string_view rec, const RecordWords& words, bool inComment) {
        const std::optional<RecordReach> reach = reachOfRecord(words, program_.pathStyle());
        if (!reach) {
            // Words behind "//" are the author's prose, and the block of kept lines is there on purpose.
            if (!inComment) checkUnread(from.substr(0, rec.size() - 1));
            applyRecord(program_, words);
            return false;
        }
        const std::string_view key = reach->key ? reach->key->key : reach->keyWord;
        const std::vector<std::string_view> authorWords = wordsOf(from);
        const bool launcherComment = authorWords.size() > 1 && authorWords[0] == "//" && authorWords[1] == kSetWord;
        const bool comment = inComment || (authorWords.front().starts_with("//") && !launcherComment);
        const bool flag = !comment && reach->key && reach->key->action == ReadAction::Flag;
        if (flag) checkFlag(*reach->key, reach->value); // before the read turns the box on
        applyRecord(program_, words);
        const std::string& taken = program_.field(reach->field).text();
        if (comment) {
            add(number_, FindingKind::CommentRead, key,
                "this comment is read as a setting: " + quotedKey(key) + " takes " + shown(taken));
            return false;
        }
        checkGivenAgain(reach->field, key, taken);
        if (flag || refused(*reach, key)) return false;
        // The key word stands at the same place in the line as in the record cut from it.
        const std::size_t before = findings_.size();
        const bool runsOn =
            compareTaken(key, meantValue(from.substr(std::min(endOf(rec, reach->keyWord), from.size()))), taken);
        if (findings_.size() == before) checkValue(reach->field, key, taken);
        return runsOn;
    }

    // A setting given on an earlier line too: the last line wins.
    void checkGivenAgain(FieldId field, std::string_view key, const std::string& taken) {
        const auto [earlier, first] = given_.try_emplace(settingOfField(field), Given{number_, taken});
        if (first) return;
        const Given before = std::exchange(earlier->second, Given{number_, taken});
        const std::string line = "line " + std::to_string(before.line);
        add(number_, FindingKind::Duplicate, key,
            before.value == taken ? quotedKey(key) + " is given again, " + shown(taken) + " as on " + line
                                  : quotedKey(key) + " is given again: " + shown(taken) + " here wins over " +
                                        shown(before.value) + " of " + line);
    }

    // A value that the server cannot take as it is meant.
    void checkValue(FieldId field, std::string_view key, std::string_view taken) {
        const SettingKey* setting = settingOfField(field);
        if (setting && setting->kind == SettingKind::Number && !isPlainNumber(taken))
            add(number_, FindingKind::NotNumber, key,
                quotedKey(key) + " takes " + shown(taken) +
                    ", which is not a number, though the server reads this setting as one");
        else if (!quotesClosed(taken))
            add(number_, FindingKind::OpenQuote, key,
                quotedKey(key) + " takes " + shown(taken) +
                    ", which opens a double quote and never closes it: the server takes the rest of the line into it");
    }

    // The server's password for remote commands, when the file gives one.
    void checkPassword() {
        const SettingKey* setting = settingOfField(mainField("FRCON2"));
        const auto given = given_.find(setting);
        if (given == given_.end()) return;
        const std::string_view password = unquoted(program_.field(setting->field).text());
        const std::string_view preset = fieldRowOf(setting->field)->defaultText;
        if (password == preset)
            add(given->second.line, FindingKind::Password, setting->key,
                quotedKey(setting->key) + " is still the launcher's own " + shown(preset) +
                    ", which anyone who has the launcher knows: change it before the server goes public");
        else if (password.empty())
            add(given->second.line, FindingKind::Password, setting->key,
                quotedKey(setting->key) + " is empty: the server takes no remote commands");
        if (worldReadable_ && !password.empty())
            add(given->second.line, FindingKind::WorldReadable, setting->key,
                "every user of this machine may read the file, and this line holds the server's " +
                    quotedKey(setting->key) + " (chmod o-r takes that right away)");
    }

    // Writes the fields as a save would and reads the file into a launcher as it starts: each setting that comes
    // back otherwise, that the lines above have not named already.
    void checkReload() {
        readConfigText(reloaded_, renderConfig(program_));
        for (const SettingKey& setting : settingKeys()) {
            const std::string& now = program_.field(setting.field).text();
            const std::string& then = reloaded_.field(setting.field).text();
            if (now == then || setting.kind == SettingKind::Total) continue;
            const auto given = given_.find(&setting);
            const std::size_t line = given == given_.end() ? 0 : given->second.line;
            const bool named = std::any_of(findings_.begin(), findings_.end(), [&](const Finding& finding) {
                return finding.line == line && finding.key == setting.key;
            });
            if (named) continue;
            const std::string key = quotedKey(setting.key);
            if (!readKeyOf(setting).empty())
                add(line, FindingKind::ReloadLost, setting.key,
                    quotedKey(readKeyOf(setting)) + " " + shown(now) + " is read, but a save writes it as " + key +
                        ", which a reload does not read: it comes back as " + shown(then));
            else
                add(line, FindingKind::ReloadChanged, setting.key,
                    "a save and a reload turn " + key + " " + shown(now) + " into " + shown(then));
        }
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
    bool refused(const RecordReach& reach, std::string_view key) {
        if (reach.key && reach.key->action == ReadAction::Address) {
            std::string address(reach.value);
            if (address.empty() || isValidAddress(program_, address)) return false;
            add(number_, FindingKind::Refused, key,
                quotedKey(key) + " " + shown(reach.value) +
                    " fails the address test: the launcher takes it as it stands, but it is no address");
            return true;
        }
        const FieldRow* row = fieldRowOf(reach.field);
        if (!row || !row->range.any() || rangeAccepts(row->range, reach.value)) return false;
        add(number_, FindingKind::Refused, key,
            quotedKey(key) + " " + shown(reach.value) + " is refused (" + std::string(row->range.title) + ": " +
                std::string(row->range.text) + "): the launcher shows this message while it opens the file and " +
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
        if (taken.starts_with(meant) && trimBehind(taken) == meant)
            add(number_, FindingKind::Cut, key,
                "the value keeps the blank behind it, and each save and reload adds one more" + tail);
        else if (quoted && taken.starts_with(meant))
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
            if (!commented && !inKeptBlock_) unknownKey(word);
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
    Program& reloaded_;
    bool worldReadable_;
    std::size_t number_ = 0;
    bool inKeptBlock_ = false;
    std::unordered_map<const SettingKey*, Given> given_;
    bool markerFound_ = false;
    std::optional<std::size_t> nearMarker_;
    std::vector<Deferred> deferred_;
    std::vector<Finding> findings_;
};

} // namespace

std::string_view findingKindName(FindingKind kind) {
    // In the order of the kinds.
    constexpr std::string_view kNames[] = {"unknown-key",     "not-read",       "comment-read", "cut",
                                           "quote-tail",      "refused",        "flag-only-on", "flag-not-number",
                                           "reload-lost",     "no-marker",      "not-number",   "open-quote",
                                           "duplicate",       "reload-changed", "password",     "world-readable",
                                           "outside-game-dir"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::vector<Finding> checkConfig(Program& program, Program& reloaded, std::string_view bytes, bool worldReadable) {
    Checker checker(program, reloaded, worldReadable);
    const std::vector<std::string_view> lines = fileLines(bytes);
    for (std::size_t i = 0; i < lines.size(); ++i)
        checker.checkLine(i + 1, lines[i]);
    return checker.finish();
}

std::string_view unquoted(std::string_view value) {
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') return value.substr(1, value.size() - 2);
    return value;
}

} // namespace ks
