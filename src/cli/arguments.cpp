#include "cli/arguments.h"

#include <algorithm>
#include <ostream>

namespace ks::cli {

namespace {

constexpr std::size_t kHelpWidth = 100;
constexpr std::size_t kOptionColumn = 22;

bool isHelp(std::string_view arg) { return arg == "--help" || arg == "-h"; }

const OptionSpec* optionNamed(const CommandSpec& command, std::string_view name) {
    for (const OptionSpec& option : command.options)
        if (option.name == name) return &option;
    return nullptr;
}

// The words of a value with a choice ("windows|linux"); none for a free value.
std::vector<std::string_view> choicesOf(std::string_view value) {
    std::vector<std::string_view> choices;
    if (value.find('|') == std::string_view::npos) return choices;
    for (std::size_t start = 0;;) {
        const std::size_t bar = value.find('|', start);
        choices.push_back(value.substr(start, bar - start));
        if (bar == std::string_view::npos) return choices;
        start = bar + 1;
    }
}

} // namespace

void printWrapped(std::string_view text, std::size_t indent, std::ostream& out) {
    const std::string margin(indent, ' ');
    while (!text.empty()) {
        std::size_t end = text.size();
        if (indent + end > kHelpWidth) end = std::min(text.rfind(' ', kHelpWidth - indent), text.size());
        out << margin << text.substr(0, end) << '\n';
        text = end == text.size() ? std::string_view() : text.substr(end + 1);
    }
}

std::string plainText(std::string_view text) {
    std::string plain(text);
    std::erase(plain, '`');
    return plain;
}

std::string exitStatusHelp() {
    std::string help = "Exit status:";
    std::string_view separator = " ";
    for (const ExitStatus& status : kExitStatuses) {
        help += std::string(separator) + std::to_string(status.value) + " " + plainText(status.meaning);
        separator = "; ";
    }
    return help + ".";
}

std::optional<std::string> Invocation::value(std::string_view option) const {
    for (const auto& [name, given] : options)
        if (name == option) return given;
    return std::nullopt;
}

std::string usageLine(const CommandSpec& command) {
    std::string line = "usage: kscfg " + std::string(command.name);
    if (!command.operands.empty()) line += " " + std::string(command.operands);
    for (const OptionSpec& option : command.options) {
        std::string word(option.name);
        if (!option.value.empty()) word += " " + std::string(option.value);
        line += option.required ? " " + word : " [" + word + "]";
    }
    return line;
}

void printCommandHelp(const CommandSpec& command, std::ostream& out) {
    out << usageLine(command) << "\n\n";
    printWrapped(plainText(command.summary), 0, out);
    out << "\nOptions:\n";
    const auto row = [&](std::string name, std::string_view help) {
        name.resize(std::max(name.size() + 2, kOptionColumn - 2), ' ');
        out << "  " << name << help << '\n';
    };
    for (const OptionSpec& option : command.options)
        row(std::string(option.name) + (option.value.empty() ? "" : " " + std::string(option.value)),
            plainText(option.help));
    row("--help", "show this help");
    out << '\n';
    printWrapped(exitStatusHelp(), 0, out);
}

int badUse(const CommandSpec& command, std::string_view what, std::ostream& err) {
    err << "kscfg: " << what << '\n' << usageLine(command) << '\n';
    return kBadUse;
}

std::optional<Invocation> parseArguments(const CommandSpec& command, std::span<const std::string> args, bool& help,
                                         std::ostream& err) {
    help = false;
    for (const std::string& arg : args) {
        if (arg == "--") break;
        if (isHelp(arg)) {
            help = true;
            return std::nullopt;
        }
    }
    const std::string name(command.name);
    const auto wrong = [&](const std::string& what) -> std::optional<Invocation> {
        badUse(command, what, err);
        return std::nullopt;
    };

    Invocation call;
    call.command = &command;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (optionsEnded || arg.size() < 2 || arg[0] != '-') {
            call.operands.push_back(arg);
            continue;
        }
        if (arg == "--") {
            optionsEnded = true;
            continue;
        }
        const std::size_t equals = arg.starts_with("--") ? arg.find('=') : std::string::npos;
        const std::string given = arg.substr(0, equals);
        const OptionSpec* option = optionNamed(command, given);
        if (!option) return wrong(name + " has no option " + given);
        if (call.has(option->name)) return wrong(name + ": " + given + " is given twice");
        std::string value;
        if (option->value.empty()) {
            if (equals != std::string::npos) return wrong(name + ": " + given + " takes no value");
        } else if (equals != std::string::npos) {
            value = arg.substr(equals + 1);
        } else if (i + 1 < args.size()) {
            value = args[++i];
        }
        if (!option->value.empty() && value.empty())
            return wrong(name + ": " + given + " needs " + std::string(option->value));
        const std::vector<std::string_view> choices = choicesOf(option->value);
        if (!choices.empty() && std::find(choices.begin(), choices.end(), value) == choices.end())
            return wrong(name + ": " + given + " takes " + std::string(option->value) + ", not " + value);
        call.options.emplace_back(option->name, std::move(value));
    }

    for (const OptionSpec& option : command.options)
        if (option.required && !call.has(option.name))
            return wrong(name + " needs " + std::string(option.name) + " " + std::string(option.value));
    if (call.operands.size() < command.fewest) return wrong(name + " needs " + std::string(command.operands));
    if (call.operands.size() > command.most)
        return wrong(name + (command.most == 0 ? " takes nothing after it, not " + call.operands[0]
                                               : " takes " + std::string(command.operands) + ", not also " +
                                                     call.operands[command.most]));
    for (std::size_t i = 0; i < call.operands.size() && i < command.files; ++i)
        if (call.operands[i].empty()) return wrong(name + ": a file name cannot be empty");
    return call;
}

} // namespace ks::cli
