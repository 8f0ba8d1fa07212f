#include "server/process_control.h"

#ifndef _WIN32
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#endif

namespace ks {

#ifdef _WIN32

bool processRuns(long) { return false; }
std::optional<long long> processStartTicks(long) { return std::nullopt; }
long processGroupOf(long) { return 0; }
bool processGroupRuns(long) { return false; }
long ownProcessId() { return 0; }
bool leadsOwnProcessGroup() { return false; }
std::optional<std::string> signalProcesses(long, long, EndSignal) {
    return "ending processes is not supported on this system";
}
DirectoryLock::DirectoryLock(const std::string&, std::chrono::milliseconds) {}
DirectoryLock::~DirectoryLock() = default;
// Windows keeps no records of running servers: a launch there is not held back by one, and says nothing of it.
RuntimePlace ownRuntimeDirectory(bool) { return {}; }

#else

namespace {

// What /proc/PID/stat tells of a process: its state letter, its group and its start.
struct ProcStat {
    char state = '?';
    long group = 0;
    long long startTicks = -1;
};

bool procAvailable() {
    static const bool available = access("/proc/self/stat", R_OK) == 0;
    return available;
}

std::optional<ProcStat> readProcStat(const std::string& pid) {
    std::ifstream in("/proc/" + pid + "/stat");
    std::string line;
    if (!std::getline(in, line)) return std::nullopt;
    // The name between the parentheses may hold anything; the fields behind the last ')' are plain.
    const std::size_t close = line.rfind(')');
    if (close == std::string::npos) return std::nullopt;
    std::istringstream fields(line.substr(close + 1));
    ProcStat stat;
    std::string skip;
    fields >> stat.state >> skip >> stat.group;
    for (int field = 6; field < 22 && fields; ++field)
        fields >> skip;
    fields >> stat.startTicks;
    if (!fields) return std::nullopt;
    return stat;
}

bool living(const ProcStat& stat) { return stat.state != 'Z' && stat.state != 'X'; }

bool killAnswers(long target) { return kill(static_cast<pid_t>(target), 0) == 0 || errno == EPERM; }

bool privateDirectory(const std::string& path, mode_t mode, bool make, std::string& error) {
    if (!make) return true;
    if (mkdir(path.c_str(), mode) != 0 && errno != EEXIST) {
        error = "cannot make " + path + ": " + std::strerror(errno);
        return false;
    }
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != geteuid()) {
        error = path + " is not a directory of this user";
        return false;
    }
    return true;
}

} // namespace

bool processRuns(long pid) {
    if (pid <= 0) return false;
    if (!procAvailable()) return killAnswers(pid);
    const std::optional<ProcStat> stat = readProcStat(std::to_string(pid));
    return stat && living(*stat);
}

std::optional<long long> processStartTicks(long pid) {
    if (pid <= 0 || !procAvailable()) return std::nullopt;
    const std::optional<ProcStat> stat = readProcStat(std::to_string(pid));
    return stat ? std::optional(stat->startTicks) : std::nullopt;
}

long processGroupOf(long pid) {
    const pid_t group = getpgid(static_cast<pid_t>(pid));
    return group < 0 ? 0 : group;
}

bool processGroupRuns(long group) {
    if (group <= 0) return false;
    if (!procAvailable()) return killAnswers(-group);
    DIR* proc = opendir("/proc");
    if (!proc) return killAnswers(-group);
    bool found = false;
    while (const dirent* entry = readdir(proc)) {
        if (entry->d_name[0] < '1' || entry->d_name[0] > '9') continue;
        const std::optional<ProcStat> stat = readProcStat(entry->d_name);
        if (stat && stat->group == group && living(*stat)) {
            found = true;
            break;
        }
    }
    closedir(proc);
    return found;
}

long ownProcessId() { return getpid(); }

bool leadsOwnProcessGroup() { return getpgrp() == getpid(); }

std::optional<std::string> signalProcesses(long pid, long group, EndSignal signal) {
    const int number = signal == EndSignal::Kill ? SIGKILL : SIGTERM;
    const bool wholeGroup = group > 0 && group != getpgrp();
    if (!wholeGroup && pid <= 0) return std::nullopt;
    if (kill(static_cast<pid_t>(wholeGroup ? -group : pid), number) == 0 || errno == ESRCH) return std::nullopt;
    return std::string(std::strerror(errno));
}

DirectoryLock::DirectoryLock(const std::string& directory, std::chrono::milliseconds wait) {
    fd_ = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd_ < 0) return;
    const auto deadline = std::chrono::steady_clock::now() + wait;
    while (!(locked_ = flock(fd_, LOCK_EX | LOCK_NB) == 0) && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

DirectoryLock::~DirectoryLock() {
    if (fd_ >= 0) close(fd_); // closing lets go of the lock
}

RuntimePlace ownRuntimeDirectory(bool make) {
    RuntimePlace place;
    const char* unit = std::getenv("RUNTIME_DIRECTORY");
    const char* user = std::getenv("XDG_RUNTIME_DIR");
    if (unit && *unit == '/') {
        const std::string list = unit; // several directories are parted by colons; the first is ours
        place.directory = list.substr(0, list.find(':'));
        return place;
    }
    if (user && *user == '/') {
        place.directory = std::string(user) + "/kslaunch";
        if (!privateDirectory(place.directory, 0700, make, place.error)) place.directory.clear();
        return place;
    }
    place.directory =
        geteuid() == 0 ? std::string(kUnitRuntimeDirectory) : "/tmp/kslaunch-" + std::to_string(geteuid());
    if (!privateDirectory(place.directory, geteuid() == 0 ? 0755 : 0700, make, place.error)) place.directory.clear();
    return place;
}

#endif

} // namespace ks
