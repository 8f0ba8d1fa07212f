#pragma once

#include "cli/layer.h"

#include "cli/arguments.h"
#include "cli/console_platform.h"
#include "config/config_check.h"
#include "config/config_lock.h"
#include "config/reader.h"
#include "config/record_reader.h"
#include "frame/program.h"
#include "session/startup.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace ks::cli {

// The path of a file name as the program holds it (UTF-8 on Windows, the file system's bytes elsewhere), for
// std::filesystem, which reads narrow text on Windows in another code page; and a path's text in the same form.
std::filesystem::path filePath(const std::string& name);
std::string pathText(const std::filesystem::path& path);

// A program as the launcher has it at start, without the search for the mod's directory: every field at its
// default, "Use Default" on and the IP empty. Its messages go to `err`, unless it is quiet.
struct FreshProgram {
    explicit FreshProgram(std::ostream& err, bool quiet = false, PathStyle style = nativePathStyle())
        : platform(err), program(platform, style) {
        connectHandlers(program);
        program.check(id::ipCheck).setState(1);
        platform.setQuiet(quiet);
    }
    ConsolePlatform platform;
    Program program;
};

// Says that a file cannot be read, in the one voice of every command: "kscfg: cannot read FILE: REASON".
inline void sayCannotRead(const std::string& file, const std::string& reason, std::ostream& err) {
    err << "kscfg: cannot read " << file << ": " << reason << '\n';
}

// The bytes of a file, or nothing after saying why it cannot be read.
inline std::optional<std::string> readOrSay(const std::string& file, std::ostream& err) {
    FileBytes read = readRegularFile(file);
    if (!read.ok) {
        sayCannotRead(file, read.reason, err);
        return std::nullopt;
    }
    return std::move(read.bytes);
}

// Opens FILE with the given bytes as the launcher's Open does: FFile takes its name, the launcher's messages go
// to the error stream as warnings, and a reading that stops part-way, which the launcher passes over, is told
// as a warning.
inline void openBytes(FreshProgram& fresh, const std::string& file, std::string_view bytes, std::ostream& err) {
    const ReadResult result = openConfigText(fresh.program, file, bytes);
    if (!result.reason.empty() && !fresh.platform.quiet())
        err << "warning: " << file << ": the reading stopped early: " << result.reason << '\n';
}

// Reads FILE and opens it as the launcher's Open does; false after saying why it cannot be read.
inline bool openOrSay(FreshProgram& fresh, const std::string& file, std::ostream& err) {
    const std::optional<std::string> bytes = readOrSay(file, err);
    if (bytes) openBytes(fresh, file, *bytes, err);
    return bytes.has_value();
}

// The findings of check for the bytes of a file, read into a launcher as it starts.
std::vector<Finding> findingsIn(std::string_view bytes, std::ostream& err);

// The kinds of finding about a value that the server takes otherwise than it stands: no number, an open quote,
// a password that protects nothing.
bool servedOtherwise(FindingKind kind);

// Writes FILE as writeOrSay does and then, unless quiet, warns of each value in it that the server takes otherwise
// than it stands, the launcher's own password among them.
int writeAndTell(const std::string& file, std::string_view bytes, bool quiet, std::ostream& err);

// Tells a finding on the error stream: "warning: FILE:LINE: MESSAGE".
void warn(const std::string& file, const Finding& finding, std::ostream& err);

// The longest a writer waits for another kscfg that changes the same file, unless --wait says otherwise.
inline constexpr std::chrono::seconds kLockWait{10};

// The value of an option that takes SECONDS (a plain number up to a day), or the fallback when it is not given;
// nothing after telling that its value is no such number.
std::optional<std::chrono::milliseconds> secondsValue(const Invocation& call, std::string_view option,
                                                      std::chrono::milliseconds fallback, std::ostream& err);

// The wait of --wait SECONDS, or kLockWait; nothing after telling that its value is no number.
std::optional<std::chrono::milliseconds> lockWait(const Invocation& call, std::ostream& err);

// Says that another kscfg kept changing FILE for the whole wait, and gives kBusy.
int sayBusy(const std::string& file, std::chrono::milliseconds wait, std::ostream& err);

// Writes FILE whole and atomically, as the launcher's Save does; gives kDone or, after saying why, kFailed.
int writeOrSay(const std::string& file, std::string_view bytes, std::ostream& err);

} // namespace ks::cli
