#include "cli/commands.h"

#include "cli/arguments.h"
#include "cli/config_files.h"
#include "cli/launch_command.h"
#include "cli/server_commands.h"
#include "cli/settings_commands.h"
#include "config/layout.h"
#include "config/writer.h"
#include "frame/program.h"
#include "server/launch.h"

#include <ostream>
#include <string_view>
#include <vector>

namespace ks::cli {

namespace {

int runNew(const Invocation& call, std::ostream&, std::ostream& err) {
    const std::string& file = call.operands[0];
    const std::optional<std::chrono::milliseconds> wait = lockWait(call, err);
    if (!wait) return kBadUse;
    const ConfigLock lock(file, *wait);
    if (lock.outcome() == ConfigLock::Outcome::Busy) return sayBusy(file, *wait, err);
    FreshProgram fresh(err);
    return writeAndTell(file, renderConfig(fresh.program), false, err);
}

int runConvert(const Invocation& call, std::ostream&, std::ostream& err) {
    const std::string output = *call.value("-o");
    const std::optional<std::chrono::milliseconds> wait = lockWait(call, err);
    if (!wait) return kBadUse;
    // OUT is held from before the first read to its replacement, like a file that set changes.
    const ConfigLock lock(output, *wait);
    if (lock.outcome() == ConfigLock::Outcome::Busy) return sayBusy(output, *wait, err);
    // Each file is read over what the ones before it left, as repeated Opens in the launcher would.
    FreshProgram fresh(err, call.has("--quiet"));
    for (const std::string& input : call.operands)
        if (!openOrSay(fresh, input, err)) return kFailed;
    return writeAndTell(output, renderConfig(fresh.program), call.has("--quiet"), err);
}

int runCommandLine(const Invocation& call, std::ostream& out, std::ostream& err) {
    const std::optional<std::string> style = call.value("--style");
    FreshProgram fresh(err, false,
                       !style                ? nativePathStyle()
                       : *style == "windows" ? PathStyle::Windows
                                             : PathStyle::Linux);
    if (!openOrSay(fresh, call.operands[0], err)) return kFailed;
    out << serverCommandLine(fresh.program) << '\n';
    if (const std::optional<std::string> problem = misplacedConfig(fresh.program))
        err << "warning: " << *problem << '\n';
    return kDone;
}

int runVersion(const Invocation&, std::ostream& out, std::ostream&) {
    out << "kscfg " << kProgramVersionText << '\n';
    return kDone;
}

int runHelp(const Invocation& call, std::ostream& out, std::ostream& err);

// The options, a table for each command.
constexpr OptionSpec kQuiet{"--quiet", "", "leave out the warnings"};
constexpr OptionSpec kWait{"--wait", "SECONDS",
                           "wait this long for another `kscfg` that changes the same file (10 by default)"};
constexpr OptionSpec kNewOptions[] = {kWait};
constexpr OptionSpec kConvertOptions[] = {{"-o", "OUT", "the file to write", true}, kQuiet, kWait};
constexpr OptionSpec kCommandOptions[] = {
    {"--style", "windows|linux", "the line as the launcher builds it on that system (the running one's by default)"}};
constexpr OptionSpec kLaunchOptions[] = {
    {"--foreground", "", "`kscfg` becomes the server: same process, same streams, the service manager's signals"},
    {"--watch", "",
     "`kscfg` stays, starts the server again after a failure, hands signals on to its process group and ends it "
     "whole; its log goes to standard error"},
    {"--stop-timeout", "SECONDS",
     "with `--watch`: SIGKILL for the server's group this long after a request to end (10 by default)"},
    {"--start-limit", "STARTS/SECONDS",
     "with `--watch`: give up (status 7) when the server failed after so many starts within so many seconds "
     "(5/60 by default)"},
    {"--log", "FILE",
     "with `--watch`: the log and the server's output go to FILE, rotated at 10 MiB, 5 older files kept as FILE.1 to "
     "FILE.5"}};
constexpr OptionSpec kHost{"--host", "HOST", "ask the server at HOST rather than at 127.0.0.1"};
constexpr OptionSpec kStatusOptions[] = {{"--json", "", "print one JSON object"}, kHost};
constexpr OptionSpec kRconOptions[] = {kHost};
constexpr OptionSpec kStopOptions[] = {
    {"--timeout", "SECONDS", "send SIGKILL this long after SIGTERM (10 by default)"}};
constexpr OptionSpec kGetOptions[] = {{"--json", "", "print one JSON object of keys and string values"}, kQuiet};
constexpr OptionSpec kSetOptions[] = {
    {"--dry-run", "", "print the lines that would change as a unified diff and write nothing"},
    {"--launcher-layout", "", "write exactly what the launcher's Save writes, without the block of kept lines"},
    kQuiet,
    kWait};
constexpr OptionSpec kCheckOptions[] = {{"--json", "", "print an array of {line, kind, message}"}};
constexpr OptionSpec kDiffOptions[] = {kQuiet};
constexpr OptionSpec kKeysOptions[] = {{"--settable", "", "leave out the flag totals, which `set` cannot set"}};

constexpr CommandSpec kCommands[] = {
    {"new", "FILE", 1, 1, 1, kNewOptions,
     "write the configuration of a freshly started launcher to FILE; its rcon_password is the launcher's own, to be "
     "changed",
     runNew},
    {"convert", "IN...", 1, kAny, kAny, kConvertOptions,
     "read each IN in turn over the defaults, as the launcher's Open does, write OUT in the launcher's layout and "
     "warn of the values in it that the server takes otherwise than they stand",
     runConvert},
    {"command", "CFG", 1, 1, 1, kCommandOptions,
     "print the command line with which Run would start the server for CFG, read as Open reads it; warn when the "
     "server will not find CFG in its game directory",
     runCommandLine},
    {"launch", "CFG", 1, 1, 1, kLaunchOptions,
     "read CFG as Open does, start the server from its Quake II directory and print the command line; the server "
     "runs cut loose with its output in CFG.log, or in kscfg's place (--foreground), or under kscfg's watch; warn "
     "when the server will not find CFG in its game directory; refuse while a server for CFG's port runs or any "
     "process holds the UDP port",
     runLaunch},
    {"status", "CFG", 1, 1, 1, kStatusOptions,
     "tell whether a server for CFG's port runs on this machine, with its pid and uptime, and what it answers to "
     "the game's status query within 1 s: host name, map, maximum clients, each player with score, ping and name",
     runStatus},
    {"rcon", "CFG COMMAND...", 2, kAny, 1, kRconOptions,
     "send COMMAND to the server's remote console with CFG's rcon_password and print the answer; an empty "
     "password or the launcher's own is refused without sending anything (-- before a COMMAND that begins with "
     "a dash)",
     runRcon},
    {"stop", "CFG", 1, 1, 1, kStopOptions,
     "send SIGTERM to the process group of the server for CFG's port (or to the watch that keeps it), SIGKILL after "
     "the timeout, and end once it is gone",
     runStop},
    {"get", "CFG [KEY...]", 1, kAny, 1, kGetOptions,
     "read CFG as Open does and print each KEY's value (KEY VALUE a line, the bare value for one KEY), all "
     "settings in file order without KEY",
     runGet},
    {"set", "CFG KEY=VALUE...", 2, kAny, 1, kSetOptions,
     "read CFG as Open does, give each KEY its VALUE as typing it into its field and leaving the field would, and "
     "write CFG back in the launcher's layout, followed by the lines that set or run something the launcher has "
     "no setting for; a flag takes 1 or 0, a number setting only a number",
     runSet},
    {"check", "CFG", 1, 1, 1, kCheckOptions,
     "tell for each line of CFG that the launcher's reader passes over or reads otherwise than it is written, and "
     "for each value that the server or a save and a reload would change, what happens and why, as CFG:LINE: TEXT; "
     "also a password that protects nothing and a file the server will not find",
     runCheck},
    {"diff", "A B", 2, 2, 2, kDiffOptions,
     "print the settings that differ after reading A and B as Open does, as KEY A-VALUE B-VALUE", runDiff},
    {"keys", "", 0, 0, 0, kKeysOptions, "list the keys of all settings in the order of a written file", runKeys},
    {"--version", "", 0, 0, 0, {}, "print the version", runVersion},
    {"--help", "[COMMAND]", 0, 1, 0, {}, "list every command, or tell about one", runHelp},
};

const CommandSpec* commandNamed(std::string_view name) {
    if (name == "-h" || name == "help") name = "--help";
    for (const CommandSpec& command : kCommands)
        if (command.name == name) return &command;
    return nullptr;
}

// The usage of kscfg as a whole.
constexpr std::string_view kUsage = "usage: kscfg COMMAND [ARGUMENT...]   (kscfg --help lists the commands)";

int runHelp(const Invocation& call, std::ostream& out, std::ostream& err) {
    if (!call.operands.empty()) {
        const CommandSpec* command = commandNamed(call.operands[0]);
        if (!command) return badUse(*call.command, "--help: there is no command " + call.operands[0], err);
        printCommandHelp(*command, out);
        return kDone;
    }
    out << "kscfg - the Kestrand Launcher's companion for the shell\n\n"
           "Usage:\n";
    for (const CommandSpec& command : kCommands) {
        out << "  " << usageLine(command).substr(7) << '\n';
        printWrapped(plainText(command.summary), 6, out);
    }
    out << "\nCFG and FILE name a Quake II console script (.cfg) in the launcher's layout: CR LF line ends,\n"
        << layoutLineCount(false) << " lines, or " << layoutLineCount(true)
        << " with a server IP, and behind them the lines set keeps. KEY is a key as the\n"
           "file names it (kscfg keys lists them). Options may stand anywhere; -- ends them.\n"
           "kscfg COMMAND --help tells about one command.\n\n";
    printWrapped(exitStatusHelp(), 0, out);
    return kDone;
}

} // namespace

std::span<const CommandSpec> commandTable() { return kCommands; }

int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        err << "kscfg: no command given\n" << kUsage << '\n';
        return kBadUse;
    }
    const CommandSpec* command = commandNamed(args[0]);
    if (!command) {
        err << "kscfg: unknown command '" << args[0] << "'\n" << kUsage << '\n';
        return kBadUse;
    }
    // "kscfg --help --version" asks about --version: the one place where a word with dashes is no option.
    if (command->name == "--help" && args.size() == 2) return command->run({command, {args[1]}, {}}, out, err);
    bool help = false;
    const std::optional<Invocation> call = parseArguments(*command, std::span(args).subspan(1), help, err);
    if (help) {
        printCommandHelp(*command, out);
        return kDone;
    }
    return call ? command->run(*call, out, err) : kBadUse;
}

} // namespace ks::cli
