#pragma once

#include "server/layer.h"

#include <chrono>
#include <optional>
#include <string>

namespace ks {

// Knowing and ending processes, and the little else that the records of running servers need from the system.
// POSIX (with /proc where Linux has it); elsewhere no process is known, none can be signalled and no lock is
// taken.

// A process of that id runs; a process that has ended and waits for its parent to collect it does not count.
bool processRuns(long pid);

// When the process started, in the clock ticks since boot that /proc gives; nothing where that is unknown. A pid
// that the system has given to a new process since shows another start.
std::optional<long long> processStartTicks(long pid);

// The process group of a process; 0 when it has ended.
long processGroupOf(long pid);

// Some process of the group runs (again not counting one that has ended and waits to be collected).
bool processGroupRuns(long group);

// This process's id, and whether it leads its own process group.
long ownProcessId();
bool leadsOwnProcessGroup();

// The signals the records use.
enum class EndSignal { Terminate, Kill };

// Sends the signal to the whole group when `group` is given and is not this process's own, else to `pid` alone.
// An error text when the system refuses ("Operation not permitted"); a process that is gone is no error.
std::optional<std::string> signalProcesses(long pid, long group, EndSignal signal);

// Takes an exclusive lock of a directory (flock) and holds it for its lifetime; waits up to `wait` for another
// holder. locked() is false when the wait ran out or the directory cannot be opened.
class DirectoryLock {
public:
    DirectoryLock(const std::string& directory, std::chrono::milliseconds wait);
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;
    ~DirectoryLock();
    bool locked() const { return locked_; }

private:
    int fd_ = -1;
    bool locked_ = false;
};

// The directory for this user's records of running servers, made when `make` asks and it is missing (mode 0700
// for a private one); an error text when it cannot be made or is not safely this user's. Under a systemd unit with
// RuntimeDirectory= it is $RUNTIME_DIRECTORY, else $XDG_RUNTIME_DIR/kslaunch, else /run/kslaunch for root, else
// /tmp/kslaunch-UID. On Windows, which keeps no records, an empty directory and no error.
struct RuntimePlace {
    std::string directory;
    std::string error;
};
RuntimePlace ownRuntimeDirectory(bool make);

// Where a systemd unit with RuntimeDirectory=kslaunch keeps its records.
inline constexpr const char* kUnitRuntimeDirectory = "/run/kslaunch";

} // namespace ks
