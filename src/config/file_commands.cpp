#include "config/file_commands.h"

#include "config/file_messages.h"
#include "config/reader.h"
#include "config/writer.h"
#include "frame/program.h"

#include <optional>

namespace ks {

namespace {

constexpr std::string_view kDialogTitle = "Open";
constexpr std::string_view kOpenFilter = "Quake Configuration Files (*.CFG)|*.CFG";
constexpr std::string_view kSaveAsFilter = "All Files (*.CFG)|*.CFG";

// Writes the file named by FFile, after asking when it exists already. Gives the outcome of the write, or
// nothing when the operator kept the old file.
std::optional<OperationResult> writeAskingFirst(Program& program) {
    Platform& platform = program.platform();
    if (platform.isPlainFile(program.field(id::FFile).text()) &&
        platform.messageBox(replaceFileQuestion()) != MessageAnswer::Yes)
        return std::nullopt;
    return writeConfig(program);
}

} // namespace

void chooseAndOpenConfig(Program& program) {
    FileDialogRequest request;
    request.kind = FileDialogKind::Open;
    request.title = kDialogTitle;
    request.initialDirectory = program.directorySelector().text();
    request.filter = kOpenFilter;
    const std::optional<std::string> name = program.platform().fileDialog(request);
    if (!name || name->empty()) return;
    openConfigFile(program, *name);
}

void saveConfig(Program& program) {
    const std::string file = program.field(id::FFile).text();
    if (isUnset(file)) {
        program.mainTabs().setCurrent(0);
        program.platform().messageBox(criticalSettingsMissingMessage());
        return;
    }
    const std::optional<OperationResult> result = writeAskingFirst(program);
    if (result && !result->ok) program.platform().messageBox(writeFailedMessage(file, result->error));
}

void saveConfigAs(Program& program) {
    Field& file = program.field(id::FFile);
    FileDialogRequest request;
    request.kind = FileDialogKind::Save;
    request.title = kDialogTitle;
    request.initialDirectory = file.text();
    request.fileName = fileNamePart(program.pathStyle(), file.text());
    request.filter = kSaveAsFilter;
    const std::optional<std::string> name = program.platform().fileDialog(request);
    if (!name || name->empty()) return;

    // The new name stays, whether the file is then written or not; a failed write goes unreported.
    file.setText(*name);
    writeAskingFirst(program);
}

void exitLauncher(Program& program) {
    if (!program.configSaved() && program.platform().messageBox(unsavedWorkQuestion()) == MessageAnswer::Yes) return;
    program.platform().endProgram();
}

} // namespace ks
