#include "server/supervisor.h"

#include "server/process.h"
#include "server/process_control.h"

#include <algorithm>
#include <deque>

#ifndef _WIN32
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif
#endif

namespace ks {

#ifdef _WIN32

WatchEnd watchServer(const ProgramStart&, const std::string&, const WatchPolicy&, const WatchHooks& hooks) {
    hooks.say("the watch needs a POSIX system");
    return WatchEnd::StartFailed;
}

#else

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kFirstPause{1};
constexpr std::chrono::seconds kLongestPause{60};
// A server that ran this long counts as good again: the next failure pauses only the first pause.
constexpr std::chrono::minutes kGoodRun{10};
// How often the watch looks at its server while it waits.
constexpr std::chrono::milliseconds kLookInterval{50};
// How long the watch waits for processes to go after SIGKILL, which they cannot refuse.
constexpr std::chrono::seconds kKillWait{5};

// The server's process group and the signal that asked the watch to end; the signal handler reads and writes them.
volatile std::sig_atomic_t watchedGroup = 0;
volatile std::sig_atomic_t endRequest = 0;

void handOn(int signal) {
    endRequest = signal;
    if (watchedGroup > 0) kill(-static_cast<pid_t>(watchedGroup), signal);
}

// What a waited-for server's end says, in words.
std::string describeEnd(int status) {
    if (WIFEXITED(status)) return "the server ended with status " + std::to_string(WEXITSTATUS(status));
    if (WIFSIGNALED(status)) return "the server was ended by signal " + std::to_string(WTERMSIG(status));
    return "the server ended";
}

std::string seconds(std::chrono::milliseconds span) {
    const long long whole = span.count() / 1000, tenths = span.count() % 1000 / 100;
    return std::to_string(whole) + (tenths ? "." + std::to_string(tenths) : "") + " s";
}

// One run of the server: its process, the pipe its output comes through, and what became of it.
class ServerRun {
public:
    ServerRun(const WatchPolicy& policy, const WatchHooks& hooks) : policy_(policy), hooks_(hooks) {}
    ServerRun(const ServerRun&) = delete;
    ServerRun& operator=(const ServerRun&) = delete;
    ~ServerRun() {
        if (pipe_ >= 0) close(pipe_);
    }

    StartResult start(const ProgramStart& start, const std::string& directory) {
        StartOptions options;
        options.outputDescriptor = STDERR_FILENO;
        int ends[2] = {-1, -1};
        if (hooks_.output && pipe2(ends, O_CLOEXEC) == 0) {
            pipe_ = ends[0];
            options.outputDescriptor = ends[1];
        }
        const StartResult child = spawnChild(start.program, start.arguments, directory, options);
        if (ends[1] >= 0) close(ends[1]);
        pid_ = child.ok() ? static_cast<pid_t>(child.pid) : 0;
        watchedGroup = pid_; // spawnChild gives the server a session, and so a group, of its own
        return child;
    }

    // Waits for the server's end, handing on a request to end and killing the group once the grace has passed.
    int awaitEnd() {
        std::optional<Clock::time_point> requested;
        bool killed = false;
        while (!ended_) {
            look();
            if (ended_) break;
            if (endRequest && !requested) requested = Clock::now();
            if (requested && !killed && Clock::now() - *requested >= policy_.stopTimeout) {
                hooks_.say("the server did not end within " + seconds(policy_.stopTimeout) +
                           " of the request; killing its process group");
                kill(-pid_, SIGKILL);
                killed = true;
            }
        }
        return status_;
    }

    // Ends whatever the server left running in its group: SIGTERM, and SIGKILL after the grace.
    void clearGroup() {
        if (processGroupRuns(pid_)) {
            hooks_.say("the server left processes in its group; ending them");
            kill(-pid_, SIGTERM);
            if (!lookUntilGone(policy_.stopTimeout)) {
                hooks_.say("they did not end within " + seconds(policy_.stopTimeout) + "; killing them");
                kill(-pid_, SIGKILL);
                lookUntilGone(kKillWait);
            }
        }
        watchedGroup = 0;
        // The rest of the output; every writer is gone, or the wait for them is over.
        while (pipe_ >= 0 && readOutput(0)) {
        }
    }

private:
    // Passes on output for up to one look interval and collects ended children: the server, or a process it
    // orphaned, which the watch takes in.
    void look() {
        if (pipe_ >= 0)
            readOutput(static_cast<int>(kLookInterval.count()));
        else
            usleep(static_cast<useconds_t>(kLookInterval.count() * 1000));
        int status = 0;
        for (pid_t child; (child = waitpid(-1, &status, WNOHANG)) > 0;)
            if (child == pid_) ended_ = true, status_ = status;
    }

    bool lookUntilGone(std::chrono::milliseconds wait) {
        const auto deadline = Clock::now() + wait;
        while (processGroupRuns(pid_))
            if (Clock::now() >= deadline)
                return false;
            else
                look();
        return true;
    }

    // Reads what the pipe holds, waiting up to `wait` ms for it; false at its end (or when it failed).
    bool readOutput(int wait) {
        pollfd entry{pipe_, POLLIN, 0};
        const int ready = poll(&entry, 1, wait);
        if (ready <= 0) return ready == 0 && wait > 0;
        char buffer[8192];
        const ssize_t count = read(pipe_, buffer, sizeof buffer);
        if (count > 0) {
            hooks_.output(std::string_view(buffer, static_cast<std::size_t>(count)));
            return true;
        }
        if (count < 0 && errno == EINTR) return true;
        close(pipe_);
        pipe_ = -1;
        return false;
    }

    const WatchPolicy& policy_;
    const WatchHooks& hooks_;
    pid_t pid_ = 0;
    int pipe_ = -1;
    bool ended_ = false;
    int status_ = 0;
};

// Sleeps for the pause, or less when a signal asks the watch to end.
void pauseFor(std::chrono::seconds pause) {
    timespec rest{static_cast<time_t>(pause.count()), 0};
    while (!endRequest && nanosleep(&rest, &rest) != 0) {
    }
}

} // namespace

WatchEnd watchServer(const ProgramStart& start, const std::string& directory, const WatchPolicy& policy,
                     const WatchHooks& hooks) {
    struct sigaction handler {};
    handler.sa_handler = handOn;
    sigemptyset(&handler.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &handler, nullptr);
#ifdef __linux__
    // The processes the server orphans come to the watch, which collects them, rather than to init.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
#endif

    std::deque<Clock::time_point> starts;
    std::chrono::seconds pause = kFirstPause;
    for (;;) {
        ServerRun run(policy, hooks);
        const StartResult child = run.start(start, directory);
        if (!child.ok()) {
            hooks.say("cannot start the server program \"" + start.program + "\": " + child.error);
            return WatchEnd::StartFailed;
        }
        const auto started = Clock::now();
        starts.push_back(started);
        if (hooks.started) hooks.started(child.pid);
        hooks.say("started the server, pid " + std::to_string(child.pid) + ": " + start.commandLine);
        // A signal that came before the server's group was known is handed on now.
        if (endRequest) kill(-static_cast<pid_t>(child.pid), endRequest);

        const int status = run.awaitEnd();
        run.clearGroup();
        const bool failed = !(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        if (endRequest || !failed) {
            hooks.say(describeEnd(status) + (endRequest ? " on request; the watch ends" : "; the watch ends"));
            return endRequest ? WatchEnd::Requested : WatchEnd::Finished;
        }
        while (!starts.empty() && Clock::now() - starts.front() > policy.startInterval)
            starts.pop_front();
        if (static_cast<int>(starts.size()) >= policy.startLimit) {
            hooks.say(describeEnd(status) + "; it was started " + std::to_string(starts.size()) + " times within " +
                      std::to_string(policy.startInterval.count()) + " s and failed each time, so the watch gives up");
            return WatchEnd::StartLimit;
        }
        if (Clock::now() - started >= kGoodRun) pause = kFirstPause;
        hooks.say(describeEnd(status) + "; starting it again in " + std::to_string(pause.count()) + " s");
        pauseFor(pause);
        if (endRequest) {
            hooks.say("asked to end; the watch ends");
            return WatchEnd::Requested;
        }
        pause = std::min(pause * 2, kLongestPause);
    }
}

#endif

} // namespace ks
