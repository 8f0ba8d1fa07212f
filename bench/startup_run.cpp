// Starts one program, times its start from the lines it writes to KS_STARTUP_TRACE (see forms/startup_trace.h)
// and prints one line of figures:
//
//     FIRST_FRAME_MS READY_MS SHOWN_MS PEAK_KB [BETWEEN_MS]
//
// FIRST_FRAME_MS: from the start of the process to the first frame of its first window.
// READY_MS: from the start of the process to the line named by --ready ("frame" by default: the first frame).
// SHOWN_MS: with --press-return NAME --after STEP, Return is pressed (through xdotool) a little over a second
//           after the first frame, and again until the window NAME has its first frame; the figure runs from the
//           line STEP, which the program writes when the key has taken effect, to that frame. "-" otherwise.
// PEAK_KB: the peak resident memory (VmHWM) when the program has been held for --hold milliseconds, and at least
//          a fifth of a second after its last awaited line.
// BETWEEN_MS: with --between FROM TO, the time from the line FROM to the line TO ("-" when either is missing).
//
// Usage: bench_startup_run [--ready STEP] [--press-return NAME --after STEP] [--hold MS] [--between FROM TO]
//                          PROGRAM [ARGUMENT...]
// The program is ended by SIGTERM afterwards. Linux only.

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <thread>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kGiveUp = std::chrono::seconds(20);
constexpr auto kFirstPress = std::chrono::milliseconds(1100); // after the first frame: Continue is up by then
constexpr auto kPressAgain = std::chrono::milliseconds(400);
constexpr auto kSettle = std::chrono::milliseconds(200);

long long nanoseconds(Clock::time_point at) {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(at.time_since_epoch()).count();
}

double milliseconds(long long from, long long to) { return double(to - from) / 1e6; }

[[noreturn]] void fail(const std::string& why) {
    std::fprintf(stderr, "bench_startup_run: %s\n", why.c_str());
    std::exit(2);
}

// The lines of the trace as they come, split at line ends.
class TraceReader {
public:
    explicit TraceReader(int fd) : fd_(fd) {}

    // The next whole line, or nothing when none came before `deadline`.
    std::optional<std::string> next(Clock::time_point deadline) {
        for (;;) {
            if (const auto end = buffer_.find('\n'); end != std::string::npos) {
                std::string line = buffer_.substr(0, end);
                buffer_.erase(0, end + 1);
                return line;
            }
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
            if (left <= 0 || closed_) return std::nullopt;
            pollfd wait{fd_, POLLIN, 0};
            if (::poll(&wait, 1, int(left)) <= 0) continue;
            char chunk[512];
            const ssize_t got = ::read(fd_, chunk, sizeof chunk);
            if (got <= 0)
                closed_ = true;
            else
                buffer_.append(chunk, std::size_t(got));
        }
    }

    bool closed() const { return closed_; }

private:
    int fd_;
    std::string buffer_;
    bool closed_ = false;
};

long peakKilobytes(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("VmHWM:", 0) == 0) return std::strtol(line.c_str() + 6, nullptr, 10);
    return -1;
}

void pressReturn() {
    if (std::system("xdotool key Return >/dev/null 2>&1") != 0) fail("xdotool could not press Return");
}

void stop(pid_t pid) {
    ::kill(pid, SIGTERM);
    for (int i = 0; i < 200; ++i) {
        if (::waitpid(pid, nullptr, WNOHANG) == pid) return;
        ::usleep(10000);
    }
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
}

} // namespace

int main(int argc, char** argv) {
    std::string readyStep = "frame";
    std::string pressFor, pressTakes;
    std::string betweenFrom, betweenTo;
    auto hold = std::chrono::milliseconds(1500);
    int arg = 1;
    for (; arg < argc && argv[arg][0] == '-'; ++arg) {
        const std::string option = argv[arg];
        if (arg + 1 >= argc) fail("option " + option + " needs a value");
        if (option == "--ready")
            readyStep = argv[++arg];
        else if (option == "--press-return")
            pressFor = argv[++arg];
        else if (option == "--after")
            pressTakes = argv[++arg];
        else if (option == "--hold")
            hold = std::chrono::milliseconds(std::atoi(argv[++arg]));
        else if (option == "--between" && arg + 2 < argc) {
            betweenFrom = argv[++arg];
            betweenTo = argv[++arg];
        } else
            fail("unknown option " + option);
    }
    if (arg >= argc || pressFor.empty() != pressTakes.empty())
        fail("usage: bench_startup_run [--ready STEP] [--press-return NAME --after STEP] [--hold MS] "
             "[--between FROM TO] PROGRAM...");

    int trace[2];
    if (::pipe(trace) != 0) fail("no pipe");
    // The program writes to its descriptor 3, the pipe's end.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addclose(&actions, trace[0]);
    posix_spawn_file_actions_adddup2(&actions, trace[1], 3);
    if (trace[1] != 3) posix_spawn_file_actions_addclose(&actions, trace[1]);
    ::setenv("KS_STARTUP_TRACE", "/dev/fd/3", 1);

    const Clock::time_point started = Clock::now();
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[arg], &actions, nullptr, argv + arg, environ) != 0)
        fail(std::string("cannot start ") + argv[arg]);
    ::close(trace[1]);
    const long long start = nanoseconds(started);

    TraceReader reader(trace[0]);
    const Clock::time_point giveUp = started + kGiveUp;
    std::optional<long long> firstFrame, ready, took, shown, from, to;
    Clock::time_point nextPress = Clock::time_point::max(); // none due
    while (!ready || (!pressFor.empty() && !shown)) {
        const Clock::time_point deadline = std::min(nextPress, giveUp);
        const std::optional<std::string> line = reader.next(deadline);
        if (!line) {
            if (reader.closed()) {
                ::waitpid(pid, nullptr, 0);
                fail("the program ended before it reached its steps");
            }
            if (Clock::now() >= giveUp) {
                stop(pid);
                fail("the program did not reach its steps in time");
            }
            if (Clock::now() >= nextPress) {
                pressReturn();
                nextPress = Clock::now() + kPressAgain;
            }
            continue;
        }
        std::istringstream words(*line);
        std::string step, name;
        long long at = 0;
        words >> step;
        if (step == "frame") words >> name;
        if (!(words >> at)) continue;
        if (step == "frame" && !firstFrame) {
            firstFrame = at;
            if (!pressFor.empty()) nextPress = started + std::chrono::nanoseconds(at - start) + kFirstPress;
        }
        if (step == readyStep && !ready) ready = at;
        if (step == betweenFrom && !from) from = at;
        if (step == betweenTo && !to) to = at;
        if (step == pressTakes && !took) took = at;
        if (step == "frame" && name == pressFor && took && !shown) {
            shown = at;
            nextPress = Clock::time_point::max();
        }
    }

    const Clock::time_point lastLine = Clock::now();
    const Clock::time_point measure = std::max(started + hold, lastLine + kSettle);
    std::this_thread::sleep_until(measure);
    const long peak = peakKilobytes(pid);
    stop(pid);

    std::printf("%.2f %.2f ", milliseconds(start, *firstFrame), milliseconds(start, *ready));
    if (shown)
        std::printf("%.2f ", milliseconds(*took, *shown));
    else
        std::printf("- ");
    std::printf("%ld", peak);
    if (!betweenFrom.empty()) {
        if (from && to)
            std::printf(" %.2f", milliseconds(*from, *to));
        else
            std::printf(" -");
    }
    std::printf("\n");
    return 0;
}
