#include "server/launch.h"

#include "config/file_commands.h"
#include "frame/program.h"
#include "server/paths.h"

namespace ks {

std::string serverCommandLine(const Program& program) {
    return serverCommandLine(program.pathStyle(), {program.field(id::QDIR).text(), program.field(id::FGD).text(),
                                                   program.field(id::FDS).text(), program.field(id::FPORT).text(),
                                                   program.field(id::FFile).text()});
}

LaunchResult startServer(Program& program) {
    LaunchResult result;
    if (isUnset(program.field(id::FFile).text())) return result;
    result.directory = program.field(id::QDIR).text();
    result.commandLine = serverCommandLine(program);
    result.program = serverProgram(program.pathStyle(), result.directory);

    const OperationResult changed = program.platform().changeDirectory(result.directory);
    if (!changed.ok) {
        result.step = LaunchStep::DirectoryChange;
        result.error = changed.error;
        return result;
    }
    const OperationResult started = program.platform().startProcess(result.commandLine);
    result.step = started.ok ? LaunchStep::Started : LaunchStep::Start;
    result.error = started.error;
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
        return;
    }
}

} // namespace ks
