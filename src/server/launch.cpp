#include "server/launch.h"

#include "config/file_commands.h"
#include "frame/program.h"
#include "server/paths.h"
#include "server/process.h"
#include "server/process_control.h"
#include "server/server_record.h"

namespace ks {

std::string serverCommandLine(const Program& program) {
    return serverCommandLine(program.pathStyle(), {program.field(id::QDIR).text(), program.field(id::FGD).text(),
                                                   program.field(id::FDS).text(), program.field(id::FPORT).text(),
                                                   program.field(id::FFile).text()});
}

std::string absoluteConfigFile(const Program& program) {
    const std::string& configFile = program.field(id::FFile).text();
    const bool absolute = program.pathStyle() == PathStyle::Linux
                              ? configFile.starts_with('/')
                              : configFile.size() > 1 && (configFile[1] == ':' || configFile.starts_with("\\\\"));
    return absolute ? configFile : program.platform().currentDirectory() + program.separator() + configFile;
}

std::string serverLogFile(const Program& program) { return absoluteConfigFile(program) + ".log"; }

ProgramStart serverStart(const Program& program) {
    ProgramStart start;
    start.program = serverProgram(program.pathStyle(), program.field(id::QDIR).text());
    start.commandLine = serverCommandLine(program);
    // The program is the one path in QDIR, blanks and all; the pieces behind it are split at blanks.
    start.arguments = splitCommandLine(start.commandLine, start.program).arguments;
    start.logFile = serverLogFile(program);
    return start;
}

LaunchResult startServer(Program& program) {
    LaunchResult result;
    if (isUnset(program.field(id::FFile).text())) return result;
    const ProgramStart start = serverStart(program);
    result.directory = program.field(id::QDIR).text();
    result.commandLine = start.commandLine;
    result.program = start.program;
    result.logFile = start.logFile;
    result.configFile = absoluteConfigFile(program);

    const OperationResult changed = program.platform().changeDirectory(result.directory);
    if (!changed.ok) {
        result.step = LaunchStep::DirectoryChange;
        result.error = changed.error;
        return result;
    }
    const ProcessStart started = program.platform().startProcess(start);
    result.step = started.ok ? LaunchStep::Started : LaunchStep::Start;
    result.error = started.error;
    result.pid = started.pid;
    return result;
}

std::string describeLaunchFailure(const LaunchResult& result) {
    switch (result.step) {
    case LaunchStep::NoConfigFile:
        return "No configuration file is in hand, so the server was not started.";
    case LaunchStep::DirectoryChange:
        return "Cannot change to the Quake II directory \"" + result.directory + "\": " + result.error +
               ". The server was not started.";
    case LaunchStep::Start:
        return "Cannot start the server program \"" + result.program + "\": " + result.error + ".";
    case LaunchStep::Started:
        break;
    }
    return {};
}

void saveAndStartServer(Program& program) {
    saveConfig(program);
    const LaunchResult result = startServer(program);
    switch (result.step) {
    case LaunchStep::NoConfigFile:
        // The save has already told the operator that there is no file.
        program.mainTabs().setCurrent(0);
        return;
    case LaunchStep::DirectoryChange:
    case LaunchStep::Start:
        program.platform().messageBox(
            {describeLaunchFailure(result), "Server Not Started", MessageButtons::Ok, MessageIcon::Exclamation, 0});
        return;
    case LaunchStep::Started:
        // The launcher starts a second server for a port when asked; the record names the newest.
        if (const std::optional<int> port = udpPort(program.field(id::FPORT).text()); port && result.pid > 0)
            RecordHold().write(*port, startedServer(result.pid, processGroupOf(result.pid), result.configFile));
        return;
    }
}

} // namespace ks
