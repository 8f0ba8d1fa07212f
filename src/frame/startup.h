#pragma once

namespace ks {

class Program;

// Gives every field, check box and tab control its handlers. Runs once, right after the forms are built.
void ConnectHandlers(Program& program);

// The load step of the main form: "Use Default" on for the IP field, then the search for the mod's
// directory.
void LoadMainForm(Program& program);

// The one place where the program ends: an immediate stop, nothing saved on the way.
void Exit_Animation(Program& program);

} // namespace ks
