#include "config/kept_lines.h"

#include "config/layout.h"
#include "config/reader.h"
#include "config/reader_keys.h"
#include "config/record_reader.h"
#include "config/setting_keys.h"

#include <algorithm>

namespace ks {

namespace {

constexpr std::string_view kBlanks = " \t";
// The console commands that set the variable named by their first argument.
constexpr std::string_view kSetCommands[] = {"set", "seta", "sets", "setu"};

bool isBlank(char c) { return c == ' ' || c == '\t'; }

// The name a command sets or runs: the variable behind a set command, else its first word.
std::string_view nameOf(std::string_view command) {
    std::string_view words[2];
    std::size_t count = 0;
    for (std::size_t at = command.find_first_not_of(kBlanks); at != std::string_view::npos && count < 2;
         at = command.find_first_not_of(kBlanks, at)) {
        std::size_t end = command.find_first_of(kBlanks, at);
        if (command[at] == '"') {
            const std::size_t close = command.find('"', at + 1);
            words[count++] = command.substr(at + 1, close == std::string_view::npos ? close : close - at - 1);
            end = close == std::string_view::npos ? close : close + 1;
        } else {
            words[count++] = command.substr(at, end == std::string_view::npos ? end : end - at);
        }
        if (end == std::string_view::npos) break;
        at = end;
    }
    const bool sets = std::find(std::begin(kSetCommands), std::end(kSetCommands), words[0]) != std::end(kSetCommands);
    return sets ? words[1] : words[0];
}

// The commands of a line as the server parts them: at ";" outside double quotes, up to a "//" that begins a word.
std::vector<std::string_view> commandsOf(std::string_view line) {
    std::vector<std::string_view> commands;
    bool quoted = false;
    std::size_t start = 0, at = 0;
    for (; at < line.size(); ++at) {
        const char c = line[at];
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (c == ';') {
            commands.push_back(line.substr(start, at - start));
            start = at + 1;
        } else if (c == '/' && at + 1 < line.size() && line[at + 1] == '/' && (at == 0 || isBlank(line[at - 1]))) {
            break;
        }
    }
    commands.push_back(line.substr(start, at - start));
    return commands;
}

bool isLauncherKey(std::string_view name) {
    return findSettingKey(name) || findSecondWordKey(name) || findThirdWordKey(name);
}

} // namespace

LineUse lineUse(std::string_view line, PathStyle style) {
    const std::size_t first = line.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return LineUse::Empty;
    for (const std::string_view record : lineRecords(line)) {
        std::string rec(record);
        rec.push_back(' ');
        if (reachOfRecord(cutRecord(rec, style), style)) return LineUse::Setting;
    }
    if (line.substr(first).starts_with("//")) return LineUse::Comment;
    for (const std::string_view command : commandsOf(line))
        if (isLauncherKey(nameOf(command))) return LineUse::Setting;
    return LineUse::Foreign;
}

std::vector<KeptLine> linesToKeep(std::string_view bytes, PathStyle style) {
    std::vector<KeptLine> kept;
    const std::vector<std::string_view> lines = fileLines(bytes);
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lineUse(lines[i], style) == LineUse::Foreign) kept.push_back({i + 1, lines[i]});
    return kept;
}

std::string keptBlock(std::span<const KeptLine> lines) {
    if (lines.empty()) return {};
    std::string block(kLineEnd);
    (block += kKeptHeading) += kLineEnd;
    for (const KeptLine& line : lines)
        (block += line.text) += kLineEnd;
    return block;
}

} // namespace ks
