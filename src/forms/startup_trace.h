#pragma once

#include "forms/layer.h"

namespace ks {

// A record of the program's start for the start-up benchmark. When the environment variable KS_STARTUP_TRACE
// names a file (such as /dev/fd/3, a pipe the benchmark reads), the program appends one line to it for each
// step it reaches, with the time on the monotonic clock in nanoseconds:
//
//     frame OBJECTNAME NANOSECONDS   a window's first frame has been painted and handed to the screen
//     STEP NANOSECONDS               a step the program names itself, such as "ready"
//
// Without the variable nothing is watched and nothing is written.

// Starts watching for the first frame of every window. Call it once, right after the application object is made.
void traceStartup();

// Writes the step's line when tracing.
void traceStartupStep(const char* step);

} // namespace ks
