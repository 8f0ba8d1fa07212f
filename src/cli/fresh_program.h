#pragma once

#include "cli/console_platform.h"
#include "frame/program.h"
#include "session/startup.h"

#include <iosfwd>

namespace ks::cli {

// A program as the launcher has it at start, without the search for the mod's directory: every field at its
// default, "Use Default" on and the IP empty. Its messages go to `err`, unless it is quiet.
struct FreshProgram {
    explicit FreshProgram(std::ostream& err, PathStyle style = nativePathStyle(), bool quiet = false)
        : platform(err), program(platform, style) {
        connectHandlers(program);
        program.check(id::ipCheck).setState(1);
        platform.setQuiet(quiet);
    }
    ConsolePlatform platform;
    Program program;
};

} // namespace ks::cli
