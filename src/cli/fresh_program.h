#pragma once

#include "cli/console_platform.h"
#include "config/reader.h"
#include "config/record_reader.h"
#include "frame/program.h"
#include "session/startup.h"

#include <ostream>
#include <string>

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

// Opens CFG as the launcher's Open does. A file that cannot be read is told in one line with the reason,
// "kscfg: cannot read FILE: REASON", in place of the launcher's message, and gives false; a reading that stops
// part-way, which the launcher passes over, is told as a warning.
inline bool openOrSay(FreshProgram& fresh, const std::string& file, std::ostream& err) {
    RecordReader probe;
    if (!probe.open(file)) {
        err << "kscfg: cannot read " << file << ": " << probe.reason() << '\n';
        return false;
    }
    const ReadResult result = openConfigFile(fresh.program, file);
    if (!result) {
        err << "kscfg: cannot read " << file << ": " << result.reason << '\n';
        return false;
    }
    if (!result.reason.empty()) err << "warning: " << file << ": the reading stopped early: " << result.reason << '\n';
    return true;
}

} // namespace ks::cli
