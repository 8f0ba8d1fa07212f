// Fills a template of kscfg's manual page or of the help page with what the programs themselves hold: the usage
// lines, options and exit statuses from kscfg's tables, the version, and the counts of the lines of a written file
// and of the keys. Everything else in the template is copied as it stands.
//
// Usage: ks_make_reference man|html TEMPLATE OUTPUT
//
// In the template, @NAME@ stands for
//   PROJECT_VERSION                   the version the programs print
//   LINES_WITHOUT_IP, LINES_WITH_IP   the lines of a written file, without and with a server IP
//   SETTING_KEYS                      the keys that kscfg keys lists
//   KSCFG_SYNOPSIS                    every usage line (man: a synopsis; html: with what each command does)
//   KSCFG_USAGE_SET, ...              one command's usage line as kscfg prints it, "usage: kscfg set ..."
//   KSCFG_OPTIONS                     each command's options (man)
//   KSCFG_EXIT_STATUS                 the exit statuses (man: a tagged list; html: a table)
// and a block stands on a line of its own. Any other @NAME@ fails the build.

#include "cli/arguments.h"
#include "cli/commands.h"
#include "config/layout.h"
#include "config/setting_keys.h"
#include "frame/program.h"

#include <cctype>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace {

using ks::cli::CommandSpec;
using ks::cli::OptionSpec;

// A usage line without its "usage: ".
std::string usageWithoutPrefix(const CommandSpec& command) {
    constexpr std::string_view kPrefix = "usage: ";
    return ks::cli::usageLine(command).substr(kPrefix.size());
}

// A text of the reference as a sentence: its first letter in capitals, a full stop at its end.
std::string sentence(std::string_view text) {
    std::string result(text);
    if (!result.empty() && std::islower(static_cast<unsigned char>(result[0])))
        result[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(result[0])));
    if (!result.ends_with('.')) result += '.';
    return result;
}

// Lines joined by line ends, without one after the last: a block stands in for a placeholder on a line of its own.
void addLine(std::string& block, const std::string& line) {
    if (!block.empty()) block += '\n';
    block += line;
}

// --- The manual page ------------------------------------------------------------------------------------------

// A text for a roff text line: backslashes and minus signs escaped, `words as typed` in bold.
std::string roff(std::string_view text) {
    std::string out;
    bool typed = false;
    for (const char c : text) {
        if (c == '`') {
            out += typed ? "\\fR" : "\\fB";
            typed = !typed;
        } else if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else {
            out += c;
        }
    }
    if (out.starts_with('.') || out.starts_with('\'')) out.insert(0, "\\&");
    return out;
}

// Operands or an option's value as a synopsis sets them: a placeholder (upper case) in italics, a word typed as it
// stands (lower case) and the '=' and '/' between words in bold, brackets, dots and bars plain.
std::string roffOperands(std::string_view words) {
    const auto isWordChar = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
    std::string out;
    for (std::size_t at = 0; at < words.size();) {
        if (isWordChar(words[at])) {
            std::size_t end = at;
            bool placeholder = true;
            for (; end < words.size() && isWordChar(words[end]); ++end)
                placeholder = placeholder && !std::islower(static_cast<unsigned char>(words[end]));
            out += (placeholder ? "\\fI" : "\\fB") + roff(words.substr(at, end - at)) + "\\fR";
            at = end;
        } else {
            const std::string mark = roff(words.substr(at, 1));
            out += words[at] == '=' || words[at] == '/' ? "\\fB" + mark + "\\fR" : mark;
            ++at;
        }
    }
    return out;
}

// An option with its value, held together on one line.
std::string roffOption(const OptionSpec& option) {
    std::string word = "\\fB" + roff(option.name) + "\\fR";
    if (!option.value.empty()) word += "\\ " + roffOperands(option.value);
    return word;
}

std::string manSynopsis() {
    std::string out;
    for (const CommandSpec& command : ks::cli::commandTable()) {
        std::string usage = "\\fB" + roff(command.name) + "\\fR";
        if (!command.operands.empty()) usage += " " + roffOperands(command.operands);
        for (const OptionSpec& option : command.options)
            usage += option.required ? " " + roffOption(option) : " [" + roffOption(option) + "]";
        addLine(out, ".SY kscfg\n" + usage);
    }
    // One end for all, so that the lines stand without space between them.
    addLine(out, ".YS");
    return out;
}

std::string manOptions() {
    std::string out;
    for (const CommandSpec& command : ks::cli::commandTable()) {
        if (command.options.empty()) continue;
        addLine(out, ".SS \"kscfg " + roff(command.name) + "\"");
        for (const OptionSpec& option : command.options)
            addLine(out, ".TP\n" + roffOption(option) + "\n" + roff(sentence(option.help)));
    }
    return out;
}

std::string manExitStatus() {
    std::string out;
    for (const ks::cli::ExitStatus& status : ks::cli::kExitStatuses)
        addLine(out, ".TP\n" + std::to_string(status.value) + "\n" + roff(sentence(status.meaning)));
    return out;
}

// --- The help page --------------------------------------------------------------------------------------------

// A text for HTML: <, > and & escaped, `words as typed` as code.
std::string html(std::string_view text) {
    std::string out;
    bool typed = false;
    for (const char c : text) {
        if (c == '`') {
            out += typed ? "</code>" : "<code>";
            typed = !typed;
        } else if (c == '<') {
            out += "&lt;";
        } else if (c == '>') {
            out += "&gt;";
        } else if (c == '&') {
            out += "&amp;";
        } else {
            out += c;
        }
    }
    return out;
}

// The usage lines as kscfg --help lists them, each with what the command does.
std::string htmlSynopsis() {
    std::ostringstream list;
    for (const CommandSpec& command : ks::cli::commandTable()) {
        list << usageWithoutPrefix(command) << '\n';
        ks::cli::printWrapped(ks::cli::plainText(command.summary), 6, list);
    }
    std::string text = list.str();
    text.pop_back();
    return "<pre><code>" + html(text) + "</code></pre>";
}

std::string htmlExitStatus() {
    std::string out = "<table>\n  <thead><tr><th>Status</th><th>Meaning</th></tr></thead>\n  <tbody>";
    for (const ks::cli::ExitStatus& status : ks::cli::kExitStatuses)
        addLine(out, "    <tr><td>" + std::to_string(status.value) + "</td><td>" + html(status.meaning) + "</td></tr>");
    addLine(out, "  </tbody>\n</table>");
    return out;
}

// --- Filling the template -------------------------------------------------------------------------------------

using Blocks = std::map<std::string, std::function<std::string()>, std::less<>>;

Blocks blocksFor(std::string_view format) {
    Blocks blocks = {
        {"PROJECT_VERSION", [] { return std::string(ks::kProgramVersionText); }},
        {"LINES_WITHOUT_IP", [] { return std::to_string(ks::layoutLineCount(false)); }},
        {"LINES_WITH_IP", [] { return std::to_string(ks::layoutLineCount(true)); }},
        {"SETTING_KEYS", [] { return std::to_string(ks::settingKeys().size()); }},
    };
    for (const CommandSpec& command : ks::cli::commandTable()) {
        if (command.name.starts_with('-')) continue;
        std::string name = "KSCFG_USAGE_";
        for (const char c : command.name)
            name += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        const std::string usage = ks::cli::usageLine(command);
        const std::string text = format == "man" ? roff(usage) : html(usage);
        blocks[name] = [text] { return text; };
    }
    if (format == "man") {
        blocks["KSCFG_SYNOPSIS"] = manSynopsis;
        blocks["KSCFG_OPTIONS"] = manOptions;
        blocks["KSCFG_EXIT_STATUS"] = manExitStatus;
    } else {
        blocks["KSCFG_SYNOPSIS"] = htmlSynopsis;
        blocks["KSCFG_EXIT_STATUS"] = htmlExitStatus;
    }
    return blocks;
}

bool isPlaceholderChar(char c) { return (c >= 'A' && c <= 'Z') || c == '_'; }

// The template with each @NAME@ replaced; nothing, after saying so, when a name is unknown.
std::optional<std::string> fill(const std::string& text, const Blocks& blocks, std::string_view templateName) {
    std::string out;
    std::size_t line = 1;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at + 1;
        while (text[at] == '@' && end < text.size() && isPlaceholderChar(text[end]))
            ++end;
        if (end > at + 1 && end < text.size() && text[end] == '@') {
            const std::string_view name(text.data() + at + 1, end - at - 1);
            const auto block = blocks.find(name);
            if (block == blocks.end()) {
                std::cerr << templateName << ":" << line << ": no such placeholder @" << name << "@\n";
                return std::nullopt;
            }
            out += block->second();
            at = end + 1;
            continue;
        }
        line += text[at] == '\n';
        out += text[at++];
    }
    return out;
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view format = argc == 4 ? argv[1] : "";
    if (format != "man" && format != "html") {
        std::cerr << "usage: ks_make_reference man|html TEMPLATE OUTPUT\n";
        return 2;
    }
    std::ifstream in(argv[2], std::ios::binary);
    if (!in) {
        std::cerr << "ks_make_reference: cannot read " << argv[2] << '\n';
        return 1;
    }
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const std::optional<std::string> filled = fill(text, blocksFor(format), argv[2]);
    if (!filled) return 1;
    std::ofstream out(argv[3], std::ios::binary);
    out << *filled;
    if (!out.flush()) {
        std::cerr << "ks_make_reference: cannot write " << argv[3] << '\n';
        return 1;
    }
    return 0;
}
