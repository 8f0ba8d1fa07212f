#pragma once

#include "server/layer.h"

#include "frame/platform.h"

#include <string>
#include <string_view>
#include <vector>

namespace ks {

// Starting other programs: the server, the editor for companion files, the desktop's handler for links.
//
// The program is one path and is never split, so "/home/John Smith/.yq2/quake2" is one program; its arguments
// arrive exactly as given. A name without a slash is looked up in the absolute directories of PATH; a path
// with a slash that is not absolute is taken from the caller's current directory. The program is executed
// itself: a file that is neither a binary nor a script with "#!" fails with "Exec format error" and is never
// handed to a shell. On Windows (process_windows.cpp) the program starts by CreateProcessW with a command line
// quoted by the Windows rules, and spawnChild is not supported.

// Where the started program's streams go and how far it is cut loose from the caller.
struct StartOptions {
    // Standard output and error are appended to this file, created with mode 0644 when missing; when empty
    // they go to /dev/null. The file must be a regular file.
    std::string logFile;
    // The program runs in a session of its own, away from the caller's terminal and its signals.
    bool newSession = true;
    // When not -1, standard output and error go to this descriptor of the caller's instead (its standard error,
    // the writing end of a pipe), and logFile is not used.
    int outputDescriptor = -1;
};

struct StartResult {
    long pid = -1;       // the started program's process id; -1 when it did not start
    int errorNumber = 0; // the errno of a failure
    std::string error;   // the failure in words: "No such file or directory", "Exec format error", ...
    bool ok() const { return pid > 0; }
    ProcessStart outcome() const { return {ok() ? OperationResult::success() : OperationResult::failure(error), pid}; }
};

// A program and its arguments, cut from one command line.
struct CommandParts {
    std::string program;
    std::vector<std::string> arguments;
};

// Cuts the launcher's one-line command. When the line begins with `program` followed by a blank or the end,
// that text is the program, blanks and all; else the line's first word is. The rest is split at blanks, runs
// of blanks counting as one. ("/q/Quake II/quake2 +set game ks", "/q/Quake II/quake2") gives the program
// "/q/Quake II/quake2" and the arguments "+set", "game", "ks".
CommandParts splitCommandLine(std::string_view commandLine, std::string_view program);

// Starts `program` with `arguments` in `workingDirectory` (empty: the caller's) and returns once it runs or
// has failed to start. The program reads standard input from /dev/null, holds no other descriptor of the
// caller's and is nobody's child: the caller does not wait for it and no zombie is left.
StartResult startDetached(const std::string& program, const std::vector<std::string>& arguments,
                          const std::string& workingDirectory, const StartOptions& options = {});

// Starts the program as startDetached does, but as the caller's child: the caller waits for it with waitpid.
StartResult spawnChild(const std::string& program, const std::vector<std::string>& arguments,
                       const std::string& workingDirectory, const StartOptions& options = {});

// Replaces the calling process with the program, which keeps the caller's standard streams and terminal.
// Returns only when it fails, with the caller in its old working directory.
OperationResult execForeground(const std::string& program, const std::vector<std::string>& arguments,
                               const std::string& workingDirectory);

} // namespace ks
