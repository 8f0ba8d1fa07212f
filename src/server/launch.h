#pragma once

#include "server/layer.h"

#include "frame/platform.h"

#include <string>

namespace ks {

class Program;

// How far a start of the server came.
enum class LaunchStep {
    NoConfigFile,    // FFile is empty or "NONE": nothing was done
    DirectoryChange, // the change to QDIR failed: nothing was started
    Start,           // the platform could not start the program
    Started,
};

struct LaunchResult {
    LaunchStep step = LaunchStep::NoConfigFile;
    std::string commandLine; // empty when no configuration file is in hand
    std::string directory;   // QDIR, where the server runs
    std::string program;     // the game program the command line starts
    std::string logFile;     // where the server's output goes: beside the configuration file, its name and ".log"
    std::string configFile;  // the configuration file, made absolute
    std::string error;       // the platform's reason for a failure
    long pid = 0;            // the started server's process id, where the platform tells it
};

// The command line that starts the server for the fields as they stand.
std::string serverCommandLine(const Program& program);

// The configuration file's path, made absolute from the current directory when it is relative.
std::string absoluteConfigFile(const Program& program);

// The file that takes the server's output: the absolute configuration file's path followed by ".log", so that it
// lies beside the configuration file.
std::string serverLogFile(const Program& program);

// What starts the server for the fields as they stand: the program in QDIR as one path, the pieces of the
// command line behind it as its arguments, and its log file.
ProgramStart serverStart(const Program& program);

// Changes to QDIR and starts the server from the command line without waiting, its output appended to the log
// file. Shows nothing.
LaunchResult startServer(Program& program);

// One line for the operator about a failed start, naming the directory or program and the reason.
std::string describeLaunchFailure(const LaunchResult& result);

// Run this Server: saves, then starts the server with the configuration in hand and records it for its port
// (server_record.h), so that kscfg status and stop find it. A failing change to QDIR or a failing start is told
// in a message box; the launcher goes on.
void saveAndStartServer(Program& program);

} // namespace ks
