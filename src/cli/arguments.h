#pragma once

#include "cli/layer.h"

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ks::cli {

// The exit statuses of kscfg.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kBadUse = 2;
inline constexpr int kRefused = 3;
inline constexpr int kBusy = 4;
inline constexpr int kNoAnswer = 5;
inline constexpr int kBadPassword = 6;
inline constexpr int kGaveUp = 7;

// In the texts of the reference (what a command does, what an option does, what an exit status means), commands,
// options and keys as typed stand between back quotes: `--help` prints them plain, the manual page in bold and the
// help page as code.

// An exit status and what it means. The help, the manual page and the help page list them from kExitStatuses.
struct ExitStatus {
    int value;
    std::string_view meaning;
};

inline constexpr ExitStatus kExitStatuses[] = {
    {kDone, "done"},
    {kFailed, "failed (a file that cannot be read or written, a start that fails, a server that runs already or "
              "cannot be stopped, a password that protects nothing), or `check` found something, or `diff` found "
              "differences"},
    {kBadUse, "bad use or an unknown key (`check` and `diff`: also a file that cannot be read)"},
    {kRefused, "`set` refused a value and wrote nothing"},
    {kBusy, "another `kscfg` was changing the file for the whole wait, and nothing was written"},
    {kNoAnswer, "no answer from the server"},
    {kBadPassword, "the server refused the `rcon_password`"},
    {kGaveUp, "the watch gave up after too many failed starts"},
};

// A text of the reference as --help prints it: without the back quotes.
std::string plainText(std::string_view text);

// "Exit status: 0 done; 1 failed ...; 7 ...", the paragraph that ends every help.
std::string exitStatusHelp();

// Prints a text in lines of at most 100 characters, each indented by `indent` blanks.
void printWrapped(std::string_view text, std::size_t indent, std::ostream& out);

// An option of a command: its name as typed and, for one that takes a value, the value's placeholder; a value
// with a choice is written with its words ("windows|linux").
struct OptionSpec {
    std::string_view name;
    std::string_view value; // empty for a switch
    std::string_view help;
    bool required = false;
};

struct Invocation;
using RunCommand = int (*)(const Invocation& call, std::ostream& out, std::ostream& err);

// A command: its name, its operands as its usage shows them, how many it needs and allows, how many of them
// from the first on name files (which may not be empty), its options and what it does.
struct CommandSpec {
    std::string_view name;
    std::string_view operands;
    std::size_t fewest;
    std::size_t most;
    std::size_t files;
    std::span<const OptionSpec> options;
    std::string_view summary;
    RunCommand run;
};

inline constexpr std::size_t kAny = static_cast<std::size_t>(-1);

// A command line taken apart: the operands in order and the options given, each with its value.
struct Invocation {
    const CommandSpec* command = nullptr;
    std::vector<std::string> operands;
    std::vector<std::pair<std::string_view, std::string>> options;

    bool has(std::string_view option) const { return value(option).has_value(); }
    std::optional<std::string> value(std::string_view option) const;
};

// "usage: kscfg NAME OPERANDS [OPTION VALUE]...", a required option without its brackets.
std::string usageLine(const CommandSpec& command);

// The command's usage, what it does and its options, each with what it does.
void printCommandHelp(const CommandSpec& command, std::ostream& out);

// Says what is wrong with a command line, then its usage line, and gives kBadUse.
int badUse(const CommandSpec& command, std::string_view what, std::ostream& err);

// Takes apart the arguments behind the command's name. Options may stand anywhere among the operands, "--"
// ends them, and "-" alone is an operand. A long option takes its value behind "=" or as the next argument,
// "-o" as the next. --help and -h anywhere before "--" ask for the command's help. Gives nothing after telling
// what is wrong (an option the command does not have, one given twice, a missing or unknown value, too few or
// too many operands, an empty file name); `help` is set when the help was asked for.
std::optional<Invocation> parseArguments(const CommandSpec& command, std::span<const std::string> args, bool& help,
                                         std::ostream& err);

} // namespace ks::cli
