#pragma once

#include "session/layer.h"

namespace ks {

class Program;

// Gives every field, check box, tab control and selector its handlers: the range rules on change, quoting and
// the address test when the focus leaves, "Use Default" and the flag groups on click, the highlight of the
// path fields, the split of a chosen directory and the cue of a tab change. Runs once, right after the forms
// are built.
void connectHandlers(Program& program);

// The load step of the main form: "Use Default" on for the IP field, then the search for the mod's
// directory.
void loadMainForm(Program& program);

} // namespace ks
