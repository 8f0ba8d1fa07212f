#include "config/file_commands.h"

#include "config/reader.h"
#include "config/writer.h"
#include "frame/catalogue.h"
#include "frame/program.h"
#include "frame/startup.h"

namespace ks {

namespace {

constexpr std::string_view kOpenTitle = "Open";
constexpr std::string_view kOpenFilter = "Quake Configuration Files (*.CFG)|*.CFG";
constexpr std::string_view kSaveAsFilter = "All Files (*.CFG)|*.CFG";

MessageBoxRequest criticalSettingsMissing() {
    return {"One of the critical settings has not been set,\rsee the yellow highlighted fields",
            "Kestrand Launcher File Warning", MessageButtons::Ok, MessageIcon::Critical, 0};
}

MessageBoxRequest replaceQuestion() {
    return {"Replace File ?", "Configuration File Exists Warning", MessageButtons::YesNo, MessageIcon::Critical, 0};
}

MessageBoxRequest unsavedWorkQuestion() {
    return {"You have not saved your work yet, would you like to save ?", "Exit without Save Warning ?",
            MessageButtons::YesNo, MessageIcon::Critical, 1};
}

MessageBoxRequest writeFailed(const std::string& path, const std::string& reason) {
    return {"The configuration file " + path + " could not be written:\r" + reason + "\rThe file on disk is unchanged.",
            "Kestrand Launcher File Warning", MessageButtons::Ok, MessageIcon::Critical, 0};
}

// Writes the file named by FFile, after asking when it exists already. Gives the outcome of the write, or
// nothing when the operator kept the old file.
std::optional<OperationResult> writeAskingFirst(Program& program) {
    program.state.FileToCheck = program.frmMain.field("FFile").text();
    Does_File_Exist(program);
    if (program.state.FileExists == -1 && program.platform.messageBox(replaceQuestion()) != MessageAnswer::Yes)
        return std::nullopt;
    return WriteConfig(program);
}

} // namespace

void mnuFileOpen_Click(Program& program) {
    FileDialogRequest request;
    request.kind = FileDialogKind::Open;
    request.title = kOpenTitle;
    request.initialDirectory = program.Dir2.text();
    request.filter = kOpenFilter;
    const std::optional<std::string> name = program.platform.fileDialog(request);
    if (!name || name->empty()) return;
    OpenConfigFile(program, *name);
}

void mnuFileSave_Click(Program& program) {
    const std::string& file = program.frmMain.field("FFile").text();
    if (file.empty() || file == kNone) {
        program.frmMain.tabs().setCurrent(0);
        program.platform.messageBox(criticalSettingsMissing());
        return;
    }
    const std::optional<OperationResult> result = writeAskingFirst(program);
    if (result && !result->ok) program.platform.messageBox(writeFailed(program.state.FileToCheck, result->error));
}

void mnuFileSaveAs_Click(Program& program) {
    Field& file = program.frmMain.field("FFile");
    program.state.SplitPath = file.text();
    program.SplitFileName();

    FileDialogRequest request;
    request.kind = FileDialogKind::Save;
    request.title = kOpenTitle;
    request.initialDirectory = file.text();
    request.fileName = program.state.SplitResult;
    request.filter = kSaveAsFilter;
    const std::optional<std::string> name = program.platform.fileDialog(request);
    if (!name || name->empty()) return;

    // The new name stays, whether the file is then written or not; a failed write goes unreported.
    file.setText(*name);
    writeAskingFirst(program);
}

void mnuFileExit_Click(Program& program) {
    if (program.state.ConfigSaved == 0 &&
        program.platform.messageBox(unsavedWorkQuestion()) == MessageAnswer::Yes)
        return;
    Exit_Animation(program);
}

void Does_File_Exist(Program& program) {
    program.state.FileExists = program.platform.isPlainFile(program.state.FileToCheck) ? -1 : 0;
}

} // namespace ks
