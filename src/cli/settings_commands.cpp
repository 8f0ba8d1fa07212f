#include "cli/settings_commands.h"

#include "cli/config_files.h"
#include "cli/launch_command.h"
#include "cli/text_output.h"
#include "config/config_check.h"
#include "config/kept_lines.h"
#include "config/setting_keys.h"
#include "config/writer.h"
#include "session/settings_by_key.h"

#include <algorithm>
#include <ostream>
#include <set>
#include <string_view>
#include <vector>

namespace ks::cli {

namespace {

// The setting of a key, or null after one line that names the nearest keys.
const SettingKey* settingNamed(std::string_view key, std::ostream& err) {
    if (const SettingKey* setting = findSettingKey(key)) return setting;
    const std::vector<std::string_view> near = nearestSettingKeys(key, 3, std::max<std::size_t>(2, key.size() / 3));
    err << "kscfg: unknown key " << key;
    for (std::size_t i = 0; i < near.size(); ++i)
        err << (i == 0 ? "; did you mean " : i + 1 == near.size() ? " or " : ", ") << near[i];
    err << (near.empty() ? " (kscfg keys lists the keys)\n" : "?\n");
    return nullptr;
}

struct Assignment {
    const SettingKey* setting;
    std::string value;
};

bool assigns(const std::vector<Assignment>& assignments, std::string_view key) {
    return std::any_of(assignments.begin(), assignments.end(),
                       [key](const Assignment& a) { return a.setting->key == key; });
}

// The kinds of finding that tell what a set loses of the old file when it reads it and writes it again.
bool losesOnRewrite(FindingKind kind) {
    return !servedOtherwise(kind) && kind != FindingKind::WorldReadable && kind != FindingKind::OutsideGameDirectory;
}

// Line numbers as a list: "4, 9, 10 and 12-14".
std::string lineList(const std::vector<std::size_t>& numbers) {
    std::vector<std::string> runs;
    for (std::size_t i = 0; i < numbers.size();) {
        std::size_t j = i;
        while (j + 1 < numbers.size() && numbers[j + 1] == numbers[j] + 1)
            ++j;
        if (j < i + 2) j = i; // two in a row are two numbers, three or more a run
        runs.push_back(std::to_string(numbers[i]) + (j > i ? "-" + std::to_string(numbers[j]) : ""));
        i = j + 1;
    }
    std::string list;
    for (std::size_t i = 0; i < runs.size(); ++i)
        list += (i == 0 ? "" : i + 1 == runs.size() ? " and " : ", ") + runs[i];
    return list;
}

// Tells what a set loses of the old file: what check finds on its lines (but for the keys that are set), then
// each other line that the new file has not, and the block of the lines it keeps.
void tellLosses(const std::string& file, std::string_view before, std::string_view after,
                const std::vector<Assignment>& assignments, const std::vector<KeptLine>& kept, PathStyle style,
                std::ostream& err) {
    std::vector<Finding> losses;
    for (const Finding& finding : findingsIn(before, err)) {
        const bool keptLine =
            std::any_of(kept.begin(), kept.end(), [&](const KeptLine& line) { return line.number == finding.line; });
        if (losesOnRewrite(finding.kind) && !assigns(assignments, finding.key) && !keptLine) losses.push_back(finding);
    }
    const std::vector<std::string_view> newLines = fileLines(after), oldLines = fileLines(before);
    const std::set<std::string_view> written(newLines.begin(), newLines.end());
    for (std::size_t i = 0; i < oldLines.size(); ++i) {
        const LineUse use = lineUse(oldLines[i], style);
        const bool told = std::any_of(losses.begin(), losses.end(), [&](const Finding& f) { return f.line == i + 1; });
        if (use == LineUse::Empty || use == LineUse::Setting || told || written.contains(oldLines[i]) ||
            oldLines[i] == kKeptHeading)
            continue;
        losses.push_back({i + 1, FindingKind::UnknownKey, "",
                          use == LineUse::Comment
                              ? "this comment is dropped: set keeps only the lines that set or run something"
                              : "this line is dropped, as --launcher-layout asks"});
    }
    std::stable_sort(losses.begin(), losses.end(), [](const Finding& a, const Finding& b) { return a.line < b.line; });
    for (const Finding& loss : losses)
        warn(file, loss, err);
    std::vector<std::size_t> keptNumbers;
    for (const KeptLine& line : kept)
        keptNumbers.push_back(line.number);
    if (!keptNumbers.empty())
        err << "note: " << file << ": " << (keptNumbers.size() == 1 ? "line " : "lines ") << lineList(keptNumbers)
            << " set or run something the launcher has no setting for; "
            << (keptNumbers.size() == 1 ? "it is" : "they are") << " kept in a block at the end of the file\n";
}

// The first setting given that the file cannot hold: written and read back, it comes back otherwise. The five
// settings read under other keys and the flags that are on from the start are left to the warnings behind.
bool heldByTheFile(const Program& program, const std::vector<Assignment>& assignments, std::ostream& err) {
    FreshProgram reloaded(err, true);
    readConfigText(reloaded.program, renderConfig(program));
    for (const Assignment& assignment : assignments) {
        const SettingKey& setting = *assignment.setting;
        const std::string& given = program.field(setting.field).text();
        const std::string& back = reloaded.program.field(setting.field).text();
        const bool readOtherwise =
            std::any_of(std::begin(kKeysReadOtherwise), std::end(kKeysReadOtherwise),
                        [&](const KeyReadOtherwise& other) { return other.field == setting.field; });
        if (given == back || setting.kind == SettingKind::Flag || readOtherwise) continue;
        err << "kscfg: " << setting.key << ": the file cannot hold `" << given << "`: read back, it gives `" << back
            << "`\n";
        return false;
    }
    return true;
}

} // namespace

int runGet(const Invocation& call, std::ostream& out, std::ostream& err) {
    std::vector<const SettingKey*> asked;
    for (std::size_t i = 1; i < call.operands.size(); ++i) {
        const SettingKey* setting = settingNamed(call.operands[i], err);
        if (!setting) return kBadUse;
        asked.push_back(setting);
    }
    FreshProgram fresh(err, call.has("--quiet"));
    if (!openOrSay(fresh, call.operands[0], err)) return kFailed;
    const bool all = asked.empty();
    if (all)
        for (const SettingKey& setting : settingKeys())
            asked.push_back(&setting);

    const auto valueOf = [&](const SettingKey* setting) -> const std::string& {
        return fresh.program.field(setting->field).text();
    };
    if (call.has("--json")) {
        // A key asked twice stands once in the object.
        std::vector<const SettingKey*> keys;
        for (const SettingKey* setting : asked)
            if (std::find(keys.begin(), keys.end(), setting) == keys.end()) keys.push_back(setting);
        out << "{\n";
        for (std::size_t i = 0; i < keys.size(); ++i)
            out << "  " << jsonString(keys[i]->key) << ": " << jsonString(valueOf(keys[i]))
                << (i + 1 < keys.size() ? ",\n" : "\n");
        out << "}\n";
    } else if (!all && asked.size() == 1) {
        out << valueOf(asked[0]) << '\n';
    } else {
        for (const SettingKey* setting : asked)
            out << setting->key << ' ' << valueOf(setting) << '\n';
    }
    return kDone;
}

int runSet(const Invocation& call, std::ostream& out, std::ostream& err) {
    std::vector<Assignment> assignments;
    for (std::size_t i = 1; i < call.operands.size(); ++i) {
        const std::string& word = call.operands[i];
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos || equals == 0)
            return badUse(*call.command, "set takes KEY=VALUE, not " + word, err);
        const SettingKey* setting = settingNamed(std::string_view(word).substr(0, equals), err);
        if (!setting) return kBadUse;
        assignments.push_back({setting, word.substr(equals + 1)});
    }
    const std::optional<std::chrono::milliseconds> wait = lockWait(call, err);
    if (!wait) return kBadUse;

    // The file is held from before it is read until the new one has replaced it.
    const std::string& file = call.operands[0];
    const ConfigLock lock(file, *wait);
    if (lock.outcome() == ConfigLock::Outcome::Busy) return sayBusy(file, *wait, err);
    const FileBytes before = lock.outcome() == ConfigLock::Outcome::Held ? lock.read() : FileBytes{};
    if (!before.ok) {
        sayCannotRead(file, before.reason.empty() ? lock.reason() : before.reason, err);
        return kFailed;
    }
    const bool quiet = call.has("--quiet");
    FreshProgram fresh(err, quiet);
    openBytes(fresh, file, before.bytes, err);

    fresh.platform.setQuiet(true);
    for (const Assignment& assignment : assignments) {
        const AssignResult result = assignSetting(fresh.program, *assignment.setting, assignment.value);
        if (result.outcome == AssignOutcome::Refused) {
            err << "kscfg: " << result.title << ": " << result.text << '\n';
            return kRefused;
        }
        if (result.outcome == AssignOutcome::NotSettable) {
            err << "kscfg: " << result.text << '\n';
            return kBadUse;
        }
    }
    if (!heldByTheFile(fresh.program, assignments, err)) return kRefused;

    const PathStyle style = fresh.program.pathStyle();
    const std::vector<KeptLine> kept =
        call.has("--launcher-layout") ? std::vector<KeptLine>{} : linesToKeep(before.bytes, style);
    const std::string after = renderConfig(fresh.program) + keptBlock(kept);
    if (!quiet) tellLosses(file, before.bytes, after, assignments, kept, style, err);
    if (call.has("--dry-run")) {
        out << unifiedDiff(before.bytes, after, file);
    } else if (after != before.bytes) {
        if (const int status = writeOrSay(file, after, err); status != kDone) return status;
    }
    // A value given that will not come back as it was given when the file is read again.
    if (!quiet)
        for (const Finding& finding : findingsIn(after, err))
            if (assigns(assignments, finding.key)) warn(file, finding, err);
    return kDone;
}

int runCheck(const Invocation& call, std::ostream& out, std::ostream& err) {
    const std::string& file = call.operands[0];
    const std::optional<std::string> bytes = readOrSay(file, err);
    if (!bytes) return kBadUse;
    FreshProgram fresh(err, true), reloaded(err, true);
    fresh.program.field(id::FFile).setText(file);
    const bool worldReadable = fresh.platform.readableByOthers(file);
    std::vector<Finding> findings = checkConfig(fresh.program, reloaded.program, *bytes, worldReadable);

    // Where the file lies, which its bytes do not tell.
    if (const std::optional<std::string> problem = misplacedConfig(fresh.program))
        findings.insert(findings.begin(), {0, FindingKind::OutsideGameDirectory, "", *problem});

    if (call.has("--json")) {
        out << "[";
        for (std::size_t i = 0; i < findings.size(); ++i)
            out << (i == 0 ? "\n" : ",\n") << "  {\"line\": " << findings[i].line
                << ", \"kind\": " << jsonString(findingKindName(findings[i].kind))
                << ", \"message\": " << jsonString(findings[i].message) << "}";
        out << (findings.empty() ? "]\n" : "\n]\n");
    } else {
        for (const Finding& finding : findings)
            out << file << (finding.line ? ":" + std::to_string(finding.line) : "") << ": " << finding.message << '\n';
    }
    return findings.empty() ? kDone : kFailed;
}

int runDiff(const Invocation& call, std::ostream& out, std::ostream& err) {
    const bool quiet = call.has("--quiet");
    FreshProgram a(err, quiet), b(err, quiet);
    if (!openOrSay(a, call.operands[0], err) || !openOrSay(b, call.operands[1], err)) return kBadUse;
    bool differ = false;
    for (const SettingKey& setting : settingKeys()) {
        const std::string& first = a.program.field(setting.field).text();
        const std::string& second = b.program.field(setting.field).text();
        if (first == second) continue;
        out << setting.key << ' ' << shellWord(first) << ' ' << shellWord(second) << '\n';
        differ = true;
    }
    return differ ? kFailed : kDone;
}

int runKeys(const Invocation& call, std::ostream& out, std::ostream&) {
    for (const SettingKey& setting : settingKeys())
        if (!call.has("--settable") || setting.kind != SettingKind::Total) out << setting.key << '\n';
    return kDone;
}

} // namespace ks::cli
