#include "server/companion.h"

#include "frame/program.h"
#include "server/paths.h"

namespace ks {

namespace {
void fileError(Program& program, std::string text) {
    program.platform().messageBox({std::move(text), "File Error", MessageButtons::Ok, MessageIcon::None, 0});
}

void editorProblem(Program& program, std::string text) {
    program.platform().messageBox({std::move(text), "Text Editor", MessageButtons::Ok, MessageIcon::Exclamation, 0});
}
} // namespace

ProgramStart textEditorStart(PathStyle style, const std::string& target) {
    return programStart(style == PathStyle::Windows ? "notepad.exe" : "xdg-open", {target});
}

void openCompanionFile(Program& program, std::string_view fileName) {
    const std::string& configFile = program.field(id::FFile).text();
    if (isUnset(configFile)) {
        program.mainTabs().setCurrent(0);
        fileError(program, "You have not loaded a Configuration file");
        return;
    }
    const std::string target = companionPath(program.pathStyle(), configFile, fileName);
    if (!program.platform().isVisiblePlainFile(target)) {
        fileError(program, "That file DOES NOT exist");
        return;
    }

    // A failed change is told, and the editor opens the file all the same: it was found where it is.
    const std::string& qdir = program.field(id::QDIR).text();
    const OperationResult changed = program.platform().changeDirectory(qdir);
    if (!changed.ok)
        editorProblem(program, "Cannot change to the Quake II directory \"" + qdir + "\": " + changed.error +
                                   ". The file is opened all the same.");
    const ProgramStart editor = textEditorStart(program.pathStyle(), target);
    const OperationResult started = program.platform().startProcess(editor);
    if (!started.ok)
        editorProblem(program, "Cannot open \"" + target + "\" in the text editor (" + editor.commandLine +
                                   "): " + started.error + ".");
}

} // namespace ks
