#include "server/launch.h"

#include "config/file_commands.h"
#include "frame/program.h"
#include "server/paths.h"
#include "server/server_commands.h"

namespace ks {

std::string ServerCommandLine(const Program& program) {
    const Form& form = program.frmMain;
    return ServerCommandLine(program.pathStyle,
                             {form.field("QDIR").text(), form.field("FGD").text(), form.field("FDS").text(),
                              form.field("FPORT").text(), form.field("FFile").text()});
}

LaunchResult StartServer(Program& program) {
    LaunchResult result;
    if (IsUnset(program.frmMain.field("FFile").text())) return result;
    result.directory = program.frmMain.field("QDIR").text();
    result.commandLine = ServerCommandLine(program);
    result.program = ServerProgram(program.pathStyle, result.directory);

    const OperationResult changed = program.platform.changeDirectory(result.directory);
    if (!changed.ok) {
        result.step = LaunchStep::DirectoryChange;
        result.error = changed.error;
        return result;
    }
    const OperationResult started = program.platform.startProcess(result.commandLine);
    result.step = started.ok ? LaunchStep::Started : LaunchStep::Start;
    result.error = started.error;
    return result;
}

std::string DescribeLaunchFailure(const LaunchResult& result) {
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

void runquake2_Click(Program& program) {
    mnuFileSave_Click(program);
    const LaunchResult result = StartServer(program);
    switch (result.step) {
    case LaunchStep::NoConfigFile:
        // The save has already told the operator that there is no file.
        program.frmMain.tabs().setCurrent(0);
        return;
    case LaunchStep::DirectoryChange:
    case LaunchStep::Start:
        program.platform.messageBox(
            {DescribeLaunchFailure(result), "Server Not Started", MessageButtons::Ok, MessageIcon::Exclamation, 0});
        return;
    case LaunchStep::Started:
        return;
    }
}

} // namespace ks
