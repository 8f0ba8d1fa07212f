#pragma once

#include <string>

namespace ks {

class Program;

// The commands of the File menu that open and save configuration files.
void mnuFileOpen_Click(Program& program);
void mnuFileSave_Click(Program& program);
void mnuFileSaveAs_Click(Program& program);
void mnuFileExit_Click(Program& program);

// FileExists becomes -1 when FileToCheck names a plain file, else 0.
void Does_File_Exist(Program& program);

} // namespace ks
