#include "cli/settings_commands.h"

#include "cli/fresh_program.h"
#include "cli/text_output.h"
#include "config/reader.h"
#include "config/setting_keys.h"

#include <algorithm>
#include <optional>
#include <ostream>
#include <string_view>
#include <vector>

namespace ks::cli {

namespace {

// The exit status of bad use.
constexpr int kUsage = 2;

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

int runKeys(Args args, std::ostream& out, std::ostream& err) {
    const std::optional<Words> words = splitWords("keys", args, {"--settable"}, err);
    if (!words) return kUsage;
    if (!words->plain.empty()) return usage("keys takes no file", err);
    for (const SettingKey& setting : settingKeys())
        if (!words->has("--settable") || setting.kind != SettingKind::Total) out << setting.key << '\n';
    return 0;
}

} // namespace ks::cli
