#include "cli/settings_commands.h"

#include "cli/fresh_program.h"
#include "cli/text_output.h"
#include "config/atomic_file.h"
#include "config/config_check.h"
#include "config/reader.h"
#include "config/setting_keys.h"
#include "config/writer.h"
#include "session/settings_by_key.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <ostream>
#include <string_view>
#include <vector>

namespace ks::cli {

namespace {

// Exit statuses beside 0 and 1.
constexpr int kUsage = 2;
constexpr int kRefused = 3;

// The words of a command: the options it allows and, in order, the rest. "--" ends the options.
struct Words {
    std::vector<std::string> plain;
    std::vector<std::string> options;
    bool has(std::string_view option) const {
        return std::find(options.begin(), options.end(), option) != options.end();
    }
};

std::optional<Words> splitWords(std::string_view command, Args args, std::initializer_list<std::string_view> allowed,
                                std::ostream& err) {
    Words words;
    bool optionsEnded = false;
    for (const std::string& arg : args) {
        if (optionsEnded || !arg.starts_with("--")) {
            words.plain.push_back(arg);
        } else if (arg == "--") {
            optionsEnded = true;
        } else if (std::find(allowed.begin(), allowed.end(), arg) != allowed.end()) {
            words.options.push_back(arg);
        } else {
            err << "kscfg: " << command << " has no option " << arg << " (try kscfg --help)\n";
            return std::nullopt;
        }
    }
    return words;
}

int usage(std::string_view what, std::ostream& err) {
    err << "kscfg: " << what << " (try kscfg --help)\n";
    return kUsage;
}

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

// Opens CFG as the launcher's Open does; a file that cannot be read says so even when the messages are quiet.
bool openQuietly(FreshProgram& fresh, const std::string& file, bool quiet, std::ostream& err) {
    if (openConfigFile(fresh.program, file)) return true;
    if (quiet) err << "kscfg: cannot read " << file << '\n';
    return false;
}

// The bytes of a plain file, or nothing after one line that says why.
std::optional<std::string> readPlainFile(const std::string& path, std::ostream& err) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        err << "kscfg: cannot read " << path << ": " << (ec ? ec.message() : "not a plain file") << '\n';
        return std::nullopt;
    }
    std::ifstream in(path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (!in.good() && !in.eof()) {
        err << "kscfg: cannot read " << path << ": " << std::strerror(errno) << '\n';
        return std::nullopt;
    }
    return bytes;
}

std::vector<Finding> findingsIn(std::string_view bytes, std::ostream& err) {
    FreshProgram fresh(err, nativePathStyle(), true);
    return checkConfig(fresh.program, bytes);
}

void warn(const std::string& file, const Finding& finding, std::ostream& err) {
    err << "warning: " << file << ':' << finding.line << ": " << finding.message << '\n';
}

struct Assignment {
    const SettingKey* setting;
    std::string value;
};

bool assigns(const std::vector<Assignment>& assignments, std::string_view key) {
    return std::any_of(assignments.begin(), assignments.end(),
                       [key](const Assignment& a) { return a.setting->key == key; });
}

} // namespace

int runGet(Args args, std::ostream& out, std::ostream& err) {
    const std::optional<Words> words = splitWords("get", args, {"--json", "--quiet"}, err);
    if (!words) return kUsage;
    if (words->plain.empty()) return usage("get needs a CFG and any number of KEYs", err);
    std::vector<const SettingKey*> asked;
    for (std::size_t i = 1; i < words->plain.size(); ++i) {
        const SettingKey* setting = settingNamed(words->plain[i], err);
        if (!setting) return kUsage;
        asked.push_back(setting);
    }
    const bool quiet = words->has("--quiet");
    FreshProgram fresh(err, nativePathStyle(), quiet);
    if (!openQuietly(fresh, words->plain[0], quiet, err)) return 1;
    const bool all = asked.empty();
    if (all)
        for (const SettingKey& setting : settingKeys())
            asked.push_back(&setting);

    const auto valueOf = [&](const SettingKey* setting) -> const std::string& {
        return fresh.program.field(setting->field).text();
    };
    if (words->has("--json")) {
        out << "{\n";
        for (std::size_t i = 0; i < asked.size(); ++i)
            out << "  " << jsonString(asked[i]->key) << ": " << jsonString(valueOf(asked[i]))
                << (i + 1 < asked.size() ? ",\n" : "\n");
        out << "}\n";
    } else if (!all && asked.size() == 1) {
        out << valueOf(asked[0]) << '\n';
    } else {
        for (const SettingKey* setting : asked)
            out << setting->key << ' ' << valueOf(setting) << '\n';
    }
    return 0;
}

int runSet(Args args, std::ostream& out, std::ostream& err) {
    const std::optional<Words> words = splitWords("set", args, {"--dry-run", "--quiet"}, err);
    if (!words) return kUsage;
    if (words->plain.size() < 2) return usage("set needs a CFG and at least one KEY=VALUE", err);
    std::vector<Assignment> assignments;
    for (std::size_t i = 1; i < words->plain.size(); ++i) {
        const std::string& word = words->plain[i];
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos || equals == 0) return usage("set takes KEY=VALUE, not " + word, err);
        const SettingKey* setting = settingNamed(std::string_view(word).substr(0, equals), err);
        if (!setting) return kUsage;
        assignments.push_back({setting, word.substr(equals + 1)});
    }

    const std::string& file = words->plain[0];
    const bool quiet = words->has("--quiet");
    FreshProgram fresh(err, nativePathStyle(), quiet);
    if (!openQuietly(fresh, file, quiet, err)) return 1;
    const std::optional<std::string> before = readPlainFile(file, err);
    if (!before) return 1;
    // Each line that the read passes over or takes otherwise than it is written is lost with the write.
    if (!quiet)
        for (const Finding& finding : findingsIn(*before, err))
            if (!assigns(assignments, finding.key)) warn(file, finding, err);

    fresh.platform.setQuiet(true);
    for (const Assignment& assignment : assignments) {
        const AssignResult result = assignSetting(fresh.program, *assignment.setting, assignment.value);
        if (result.outcome == AssignOutcome::Refused) {
            err << "kscfg: " << result.title << ": " << result.text << '\n';
            return kRefused;
        }
        if (result.outcome == AssignOutcome::NotSettable) {
            err << "kscfg: " << result.text << '\n';
            return kUsage;
        }
    }

    const std::string after = renderConfig(fresh.program);
    if (words->has("--dry-run")) {
        out << unifiedDiff(*before, after, file);
    } else if (after != *before) {
        const OperationResult written = replaceFileAtomically(file, after);
        if (!written.ok) {
            err << "kscfg: cannot write " << file << ": " << written.error << '\n';
            return 1;
        }
    }
    // A value that will not come back as it was given when the file is read again.
    if (!quiet)
        for (const Finding& finding : findingsIn(after, err))
            if (assigns(assignments, finding.key)) warn(file, finding, err);
    return 0;
}

int runCheck(Args args, std::ostream& out, std::ostream& err) {
    const std::optional<Words> words = splitWords("check", args, {"--json"}, err);
    if (!words) return kUsage;
    if (words->plain.size() != 1) return usage("check needs exactly one CFG", err);
    const std::string& file = words->plain[0];
    const std::optional<std::string> bytes = readPlainFile(file, err);
    if (!bytes) return kUsage;
    const std::vector<Finding> findings = findingsIn(*bytes, err);
    if (words->has("--json")) {
        out << "[";
        for (std::size_t i = 0; i < findings.size(); ++i)
            out << (i == 0 ? "\n" : ",\n") << "  {\"line\": " << findings[i].line
                << ", \"kind\": " << jsonString(findingKindName(findings[i].kind))
                << ", \"message\": " << jsonString(findings[i].message) << "}";
        out << (findings.empty() ? "]\n" : "\n]\n");
    } else {
        for (const Finding& finding : findings)
            out << file << ':' << finding.line << ": " << finding.message << '\n';
    }
    return findings.empty() ? 0 : 1;
}

int runDiff(Args args, std::ostream& out, std::ostream& err) {
    const std::optional<Words> words = splitWords("diff", args, {"--quiet"}, err);
    if (!words) return kUsage;
    if (words->plain.size() != 2) return usage("diff needs exactly two CFGs", err);
    const bool quiet = words->has("--quiet");
    FreshProgram a(err, nativePathStyle(), quiet), b(err, nativePathStyle(), quiet);
    if (!openQuietly(a, words->plain[0], quiet, err) || !openQuietly(b, words->plain[1], quiet, err)) return kUsage;
    bool differ = false;
    for (const SettingKey& setting : settingKeys()) {
        const std::string& first = a.program.field(setting.field).text();
        const std::string& second = b.program.field(setting.field).text();
        if (first == second) continue;
        out << setting.key << ' ' << shellWord(first) << ' ' << shellWord(second) << '\n';
        differ = true;
    }
    return differ ? 1 : 0;
}

int runKeys(Args args, std::ostream& out, std::ostream& err) {
    const std::optional<Words> words = splitWords("keys", args, {"--settable"}, err);
    if (!words) return kUsage;
    if (!words->plain.empty()) return usage("keys takes no file", err);
    for (const SettingKey& setting : settingKeys())
        if (!words->has("--settable") || setting.kind != SettingKind::Total) out << setting.key << '\n';
    return 0;
}

} // namespace ks::cli
