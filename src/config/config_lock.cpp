#include "config/config_lock.h"

#include <cerrno>
#include <system_error>
#include <thread>

#ifndef _WIN32
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace ks {

namespace {
// How often a waiting writer tries the lock again.
constexpr std::chrono::milliseconds kRetry{5};
} // namespace

#ifdef _WIN32

// Windows has no advisory lock that survives a rename over the file; the writers are not ordered there.
ConfigLock::ConfigLock(const std::string& path, std::chrono::milliseconds) : path_(path) {
    const FileBytes probe = readRegularFile(path);
    outcome_ = probe.ok ? Outcome::Held : Outcome::Failed;
    reason_ = probe.reason;
}

ConfigLock::~ConfigLock() = default;

FileBytes ConfigLock::read() const { return readRegularFile(path_); }

#else

ConfigLock::ConfigLock(const std::string& path, std::chrono::milliseconds wait) : path_(path) {
    const auto deadline = std::chrono::steady_clock::now() + wait;
    for (;;) {
        fd_ = openRegularFile(path, reason_);
        if (fd_ < 0) return;
        while (flock(fd_, LOCK_EX | LOCK_NB) != 0) {
            if (errno != EWOULDBLOCK && errno != EINTR) {
                reason_ = std::generic_category().message(errno);
                return;
            }
            if (std::chrono::steady_clock::now() >= deadline) {
                outcome_ = Outcome::Busy;
                return;
            }
            std::this_thread::sleep_for(kRetry);
        }
        // The writer before us may have renamed a new file over the one we waited for: then that is the file.
        struct stat held {
        }, named{};
        if (fstat(fd_, &held) == 0 && stat(path.c_str(), &named) == 0 && held.st_dev == named.st_dev &&
            held.st_ino == named.st_ino) {
            outcome_ = Outcome::Held;
            return;
        }
        ::close(fd_);
        fd_ = -1;
    }
}

ConfigLock::~ConfigLock() {
    if (fd_ >= 0) ::close(fd_);
}

FileBytes ConfigLock::read() const {
    if (lseek(fd_, 0, SEEK_SET) != 0) return {false, {}, std::generic_category().message(errno)};
    return readAllOf(fd_);
}

#endif

} // namespace ks
