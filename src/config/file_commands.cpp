#include "config/file_commands.h"

#include "config/writer.h"
#include "frame/program.h"
#include "frame/startup.h"

namespace ks {

// Placeholders until the reader and the file commands are complete.
void mnuFileOpen_Click(Program&) {}
void mnuFileSave_Click(Program& program) { WriteConfig(program); }
void mnuFileSaveAs_Click(Program&) {}
void mnuFileExit_Click(Program& program) { Exit_Animation(program); }

void Does_File_Exist(Program& program) {
    program.state.FileExists = program.platform.isPlainFile(program.state.FileToCheck) ? -1 : 0;
}

} // namespace ks
