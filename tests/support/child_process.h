#pragma once

#include <cerrno>
#include <cstdio>
#include <functional>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace ks::test {

#ifndef _WIN32

constexpr int kUncaughtException = 99;

// Runs `body` in a forked child and returns its exit code, or minus the signal that ended it. An alarm ends
// the child after `seconds`, so that a hang fails the test instead of holding it up; limits the child sets
// stay with it. An exception that leaves `body` gives kUncaughtException.
inline int runInChild(const std::function<int()>& body, unsigned seconds = 10) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        alarm(seconds);
        // An exception must end the child here, not unwind into the copy of the test runner.
        try {
            _exit(body());
        } catch (...) {
            _exit(kUncaughtException);
        }
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

inline bool runningAsRoot() { return geteuid() == 0; }
#else
// Windows has no user whom file permissions do not bind in the way of root.
inline bool runningAsRoot() { return false; }
#endif

} // namespace ks::test
