#include "cli/commands.h"

#include "cli/fresh_program.h"
#include "cli/launch_command.h"
#include "cli/settings_commands.h"
#include "config/atomic_file.h"
#include "config/reader.h"
#include "config/writer.h"
#include "server/launch.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <vector>

namespace ks::cli {

namespace {

struct Command {
    std::string_view name;
    std::string_view usage;
    std::string_view summary;
    int (*run)(Args args, std::ostream& out, std::ostream& err);
};

// Writes the file itself rather than through FFile: in kscfg a name is a name, and "NONE" a file like others.
int writeTo(const Program& program, const std::string& path, std::ostream& err) {
    const OperationResult result = replaceFileAtomically(path, renderConfig(program));
    if (!result.ok) {
        err << "kscfg: cannot write " << path << ": " << result.error << '\n';
        return 1;
    }
    return 0;
}

int runNew(Args args, std::ostream&, std::ostream& err) {
    if (args.size() != 1 || args[0].empty()) {
        err << "kscfg: new needs exactly one FILE, with a name (try kscfg --help)\n";
        return 2;
    }
    FreshProgram fresh(err);
    return writeTo(fresh.program, args[0], err);
}

int runConvert(Args args, std::ostream&, std::ostream& err) {
    std::vector<std::string> inputs;
    std::string output;
    bool haveOutput = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "-o") {
            if (haveOutput || i + 1 == args.size()) {
                err << "kscfg: convert needs exactly one -o OUT (try kscfg --help)\n";
                return 2;
            }
            output = args[++i];
            haveOutput = true;
        } else {
            inputs.push_back(args[i]);
        }
    }
    if (inputs.empty() || !haveOutput || output.empty()) {
        err << "kscfg: convert needs at least one IN and -o OUT, with a name (try kscfg --help)\n";
        return 2;
    }
    // Each file is read over what the ones before it left, as repeated Opens in the launcher would.
    FreshProgram fresh(err);
    for (const std::string& input : inputs)
        if (!openOrSay(fresh, input, err)) return 1;
    return writeTo(fresh.program, output, err);
}

// The configuration file and the path style of "command"; false after telling what is wrong.
bool commandArguments(Args args, std::string& file, PathStyle& style, std::ostream& err) {
    bool haveFile = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--style" && i + 1 < args.size() && (args[i + 1] == "windows" || args[i + 1] == "linux")) {
            style = args[++i] == "windows" ? PathStyle::Windows : PathStyle::Linux;
        } else if (!haveFile && !args[i].empty() && !args[i].starts_with("--")) {
            file = args[i];
            haveFile = true;
        } else {
            haveFile = false;
            break;
        }
    }
    if (!haveFile)
        err << "kscfg: command needs exactly one CFG and at most one --style windows|linux (try kscfg --help)\n";
    return haveFile;
}

int runCommandLine(Args args, std::ostream& out, std::ostream& err) {
    std::string file;
    PathStyle style = nativePathStyle();
    if (!commandArguments(args, file, style, err)) return 2;
    FreshProgram fresh(err, style);
    if (!openOrSay(fresh, file, err)) return 1;
    out << serverCommandLine(fresh.program) << '\n';
    return 0;
}

int runVersion(Args, std::ostream& out, std::ostream&) {
    out << "kscfg " << kProgramVersionText << '\n';
    return 0;
}

int runHelp(Args, std::ostream& out, std::ostream&);

constexpr std::string_view kHelpIndent = "      ";
constexpr std::size_t kHelpWidth = 100;

constexpr Command kCommands[] = {
    {"new", "new FILE", "write the configuration of a freshly started launcher to FILE", runNew},
    {"convert", "convert IN... -o OUT",
     "read each IN in turn over the defaults, as the launcher's Open does, and write OUT in the launcher's layout",
     runConvert},
    {"command", "command CFG [--style windows|linux]",
     "print the command line with which Run would start the server for CFG, read as Open reads it", runCommandLine},
    {"launch", "launch CFG [--foreground | --watch]",
     "read CFG as Open does, start the server from its Quake II directory and print the command line; the server's "
     "output goes to CFG.log; --foreground: kscfg becomes the server; --watch: kscfg stays, starts it again after a "
     "failure and hands signals on",
     runLaunch},
    {"get", "get CFG [KEY...] [--json] [--quiet]",
     "read CFG as Open does and print each KEY's value (KEY VALUE a line, the bare value for one KEY), all "
     "settings in file order without KEY; --json gives one object",
     runGet},
    {"set", "set CFG KEY=VALUE... [--dry-run] [--quiet]",
     "read CFG as Open does, give each KEY its VALUE as typing it into its field and leaving the field would, "
     "and write CFG back in the launcher's layout; a flag takes 1 or 0; --dry-run prints the changes instead",
     runSet},
    {"check", "check CFG [--json]",
     "tell for each line of CFG that the launcher's reader passes over or reads otherwise than it is written what "
     "happens and why, as CFG:LINE: TEXT; --json gives an array of {line, kind, message}",
     runCheck},
    {"diff", "diff A B [--quiet]",
     "print the settings that differ after reading A and B as Open does, as KEY A-VALUE B-VALUE", runDiff},
    {"keys", "keys [--settable]", "list the keys of all settings (--settable: without the flag totals)", runKeys},
    {"--version", "--version", "print the version", runVersion},
    {"--help", "--help", "show this help", runHelp},
};

int runHelp(Args, std::ostream& out, std::ostream&) {
    out << "kscfg - the Kestrand Launcher's companion for the shell\n\n"
           "Usage:\n";
    for (const Command& command : kCommands) {
        out << "  kscfg " << command.usage << '\n';
        // The summary in lines of at most kHelpWidth characters.
        std::string_view rest = command.summary;
        while (!rest.empty()) {
            std::size_t end = rest.size();
            if (kHelpIndent.size() + end > kHelpWidth)
                end = std::min(rest.rfind(' ', kHelpWidth - kHelpIndent.size()), rest.size());
            out << kHelpIndent << rest.substr(0, end) << '\n';
            rest = end == rest.size() ? std::string_view() : rest.substr(end + 1);
        }
    }
    out << "\nFILE names a Quake II console script (.cfg) in the launcher's layout: CR LF line ends,\n"
           "237 lines, or 238 with a server IP. KEY is a key as the file names it (kscfg keys lists them).\n"
           "--quiet leaves out the warnings the launcher would show while reading.\n\n"
           "Exit status: 0 done; 1 failed, or check found something, or diff found differences;\n"
           "2 bad use or an unknown key (check and diff: also a file that cannot be read);\n"
           "3 set: a rule refused a value, and nothing was written.\n";
    return 0;
}

} // namespace

int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        err << "kscfg: no command given (try kscfg --help)\n";
        return 2;
    }
    for (const Command& command : kCommands) {
        if (args[0] == command.name || (command.name == "--help" && (args[0] == "-h" || args[0] == "help")))
            return command.run(Args(args).subspan(1), out, err);
    }
    err << "kscfg: unknown command '" << args[0] << "' (try kscfg --help)\n";
    return 2;
}

} // namespace ks::cli
