#include "server/process.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#ifndef _WIN32
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace ks {

CommandParts splitCommandLine(std::string_view commandLine, std::string_view program) {
    CommandParts parts;
    std::string_view rest = commandLine;
    if (!program.empty() && rest.starts_with(program) &&
        (rest.size() == program.size() || rest[program.size()] == ' ')) {
        parts.program = program;
        rest.remove_prefix(program.size());
    }
    for (std::size_t start = rest.find_first_not_of(' '); start != std::string_view::npos;
         start = rest.find_first_not_of(' ')) {
        rest.remove_prefix(start);
        const std::size_t end = rest.find(' ');
        parts.arguments.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end);
    }
    if (parts.program.empty() && !parts.arguments.empty()) {
        parts.program = std::move(parts.arguments.front());
        parts.arguments.erase(parts.arguments.begin());
    }
    return parts;
}

// The Windows implementation of the starts lies in process_windows.cpp.
#ifndef _WIN32

namespace {

#ifdef O_PATH
constexpr int kDirectoryHandle = O_PATH | O_DIRECTORY | O_CLOEXEC; // needs no read permission
#else
constexpr int kDirectoryHandle = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

std::string reasonOf(int error) { return std::generic_category().message(error); }

StartResult failure(int error, const std::string& context = {}) {
    return {-1, error, context.empty() ? reasonOf(error) : context + ": " + reasonOf(error)};
}

// What the new process and its go-between report through the pipe that closes at the exec.
enum class Report : int { Pid, ForkFailed, DirectoryFailed, ExecFailed };
struct Message {
    Report kind;
    long value; // the pid, or the errno of a failure
};

void tell(int pipe, Report kind, long value) {
    const Message message{kind, value};
    if (write(pipe, &message, sizeof message) < 0) return; // the starter has gone; nobody is left to tell
}

// Everything the new process needs, made before the fork: in a program with threads, the child may make
// only async-signal-safe calls between the fork and the exec.
struct Launch {
    std::string path;
    std::string directoryName;
    std::vector<std::string> words;
    std::vector<char*> argv;
    int input = -1;     // becomes standard input; -1 keeps the caller's
    int output = -1;    // becomes standard output and error; -1 keeps the caller's
    int directory = -1; // the working directory; -1 keeps the caller's
    int highestFd = 1023;

    Launch() = default;
    Launch(const Launch&) = delete;
    Launch& operator=(const Launch&) = delete;
    ~Launch() {
        for (const int fd : {input, output, directory})
            if (fd >= 0) close(fd);
    }
};

// Moves a new descriptor above the standard streams, so that putting the streams in place in the child cannot
// overwrite it (a caller may have closed its own).
int aboveStreams(int fd) {
    if (fd < 0 || fd > 2) return fd;
    const int moved = fcntl(fd, F_DUPFD_CLOEXEC, 3);
    const int error = errno;
    close(fd);
    errno = error;
    return moved;
}

// The file that a name without a slash stands for, from the absolute directories of PATH. 0 or an errno.
int findInPath(const std::string& name, std::string& path) {
    const char* variable = std::getenv("PATH");
    std::string_view directories = variable ? variable : "/usr/local/bin:/usr/bin:/bin";
    int error = ENOENT;
    for (;;) {
        const std::size_t colon = directories.find(':');
        const std::string_view directory = directories.substr(0, colon);
        // An empty or relative entry would run whatever lies in the current directory.
        if (directory.starts_with('/')) {
            std::string candidate = std::string(directory) + "/" + name;
            struct stat status {};
            if (stat(candidate.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
                if (faccessat(AT_FDCWD, candidate.c_str(), X_OK, AT_EACCESS) == 0) {
                    path = std::move(candidate);
                    return 0;
                }
                error = EACCES;
            }
        }
        if (colon == std::string_view::npos) return error;
        directories.remove_prefix(colon + 1);
    }
}

int locateProgram(const std::string& program, std::string& path) {
    if (program.empty()) return ENOENT;
    if (program.find('/') == std::string::npos) return findInPath(program, path);
    if (program.front() == '/') {
        path = program;
        return 0;
    }
    std::error_code ec;
    path = (std::filesystem::current_path(ec) / program).string();
    return ec ? ec.value() : 0;
}

// The log file, appended to; only a regular file will do. Opened without blocking, so that a FIFO put in its
// place cannot hold the start up.
StartResult openLog(const std::string& path, int& fd) {
    fd = aboveStreams(open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0644));
    if (fd < 0) return failure(errno, "the log file " + path);
    struct stat status {};
    if (fstat(fd, &status) != 0) return failure(errno, "the log file " + path);
    if (!S_ISREG(status.st_mode)) return {-1, EINVAL, "the log file " + path + " is not a regular file"};
    fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    return {};
}

// Fills `launch`; a result with an errno when something is missing.
StartResult prepare(Launch& launch, const std::string& program, const std::vector<std::string>& arguments,
                    const std::string& workingDirectory, const StartOptions* streams) {
    if (const int error = locateProgram(program, launch.path)) return failure(error);
    launch.words.push_back(program);
    launch.words.insert(launch.words.end(), arguments.begin(), arguments.end());
    for (std::string& word : launch.words)
        launch.argv.push_back(word.data());
    launch.argv.push_back(nullptr);

    rlimit files{};
    if (getrlimit(RLIMIT_NOFILE, &files) == 0 && files.rlim_cur != RLIM_INFINITY && files.rlim_cur < (1u << 20))
        launch.highestFd = static_cast<int>(files.rlim_cur) - 1;

    if (!workingDirectory.empty()) {
        launch.directoryName = workingDirectory;
        launch.directory = aboveStreams(open(workingDirectory.c_str(), kDirectoryHandle));
        if (launch.directory < 0) return failure(errno, "the working directory " + workingDirectory);
    }
    if (!streams) return {};
    launch.input = aboveStreams(open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (launch.input < 0) return failure(errno, "/dev/null");
    if (streams->outputDescriptor >= 0) {
        launch.output = fcntl(streams->outputDescriptor, F_DUPFD_CLOEXEC, 3);
        return launch.output < 0 ? failure(errno) : StartResult{};
    }
    if (!streams->logFile.empty()) return openLog(streams->logFile, launch.output);
    launch.output = aboveStreams(open("/dev/null", O_WRONLY | O_CLOEXEC));
    return launch.output < 0 ? failure(errno, "/dev/null") : StartResult{};
}

// Marks every descriptor from `lowest` on to close at the exec. Async-signal-safe.
void closeOnExecFrom(int lowest, int highest) {
#ifdef SYS_close_range
    constexpr unsigned kCloseRangeCloexec = 1u << 2;
    if (syscall(SYS_close_range, static_cast<unsigned>(lowest), ~0u, kCloseRangeCloexec) == 0) return;
#endif
    for (int fd = lowest; fd <= highest; ++fd) {
        const int flags = fcntl(fd, F_GETFD);
        if (flags >= 0 && (flags & FD_CLOEXEC) == 0) fcntl(fd, F_SETFD, flags | FD_CLOEXEC);
    }
}

// In the child: signals as a new program expects them, the streams and the directory in place, then the
// program. Only async-signal-safe calls.
[[noreturn]] void becomeProgram(const Launch& launch, int report) {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    struct sigaction standard {};
    standard.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal)
        sigaction(signal, &standard, nullptr);

    if (launch.directory >= 0 && fchdir(launch.directory) != 0) {
        tell(report, Report::DirectoryFailed, errno);
        _exit(127);
    }
    if (launch.input >= 0) dup2(launch.input, STDIN_FILENO);
    if (launch.output >= 0) {
        dup2(launch.output, STDOUT_FILENO);
        dup2(launch.output, STDERR_FILENO);
    }
    closeOnExecFrom(3, launch.highestFd);
    execv(launch.path.c_str(), launch.argv.data());
    tell(report, Report::ExecFailed, errno);
    _exit(127);
}

// Reads the reports until the pipe closes, that is until the program runs or every process that could
// report has ended.
StartResult collect(int pipe, const Launch& launch) {
    StartResult result;
    Message message{};
    for (;;) {
        const ssize_t count = read(pipe, &message, sizeof message);
        if (count < 0 && errno == EINTR) continue;
        if (count != static_cast<ssize_t>(sizeof message)) break;
        if (message.kind == Report::Pid) {
            result.pid = message.value;
        } else if (result.errorNumber == 0) {
            const int error = static_cast<int>(message.value);
            result = message.kind == Report::DirectoryFailed
                         ? failure(error, "the working directory " + launch.directoryName)
                         : failure(error);
        }
    }
    if (result.errorNumber != 0) result.pid = -1;
    return result;
}

void reap(pid_t child) {
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

StartResult start(const std::string& program, const std::vector<std::string>& arguments,
                  const std::string& workingDirectory, const StartOptions& options, bool detached) {
    Launch launch;
    if (StartResult prepared = prepare(launch, program, arguments, workingDirectory, &options); prepared.errorNumber)
        return prepared;
    int report[2];
    if (pipe2(report, O_CLOEXEC) != 0) return failure(errno);
    const pid_t child = fork();
    if (child == 0) {
        close(report[0]);
        if (options.newSession) setsid();
        if (!detached) becomeProgram(launch, report[1]);
        // The go-between: it starts the program and ends, so that the program is nobody's child.
        const pid_t started = fork();
        if (started == 0) becomeProgram(launch, report[1]);
        if (started < 0)
            tell(report[1], Report::ForkFailed, errno);
        else
            tell(report[1], Report::Pid, started);
        _exit(0);
    }
    const int forkError = errno;
    close(report[1]);
    StartResult result = child < 0 ? failure(forkError) : collect(report[0], launch);
    close(report[0]);
    if (child > 0 && !detached && result.errorNumber == 0)
        result.pid = child;
    else if (child > 0)
        reap(child);
    return result;
}

} // namespace

StartResult startDetached(const std::string& program, const std::vector<std::string>& arguments,
                          const std::string& workingDirectory, const StartOptions& options) {
    return start(program, arguments, workingDirectory, options, true);
}

StartResult spawnChild(const std::string& program, const std::vector<std::string>& arguments,
                       const std::string& workingDirectory, const StartOptions& options) {
    return start(program, arguments, workingDirectory, options, false);
}

OperationResult execForeground(const std::string& program, const std::vector<std::string>& arguments,
                               const std::string& workingDirectory) {
    Launch launch;
    if (StartResult prepared = prepare(launch, program, arguments, workingDirectory, nullptr); prepared.errorNumber)
        return prepared.outcome();
    const int home = open(".", kDirectoryHandle);
    if (launch.directory >= 0 && fchdir(launch.directory) != 0) {
        const int error = errno;
        if (home >= 0) close(home);
        return failure(error, "the working directory " + workingDirectory).outcome();
    }
    std::fflush(nullptr);
    closeOnExecFrom(3, launch.highestFd);
    execv(launch.path.c_str(), launch.argv.data());
    const int error = errno;
    if (home >= 0) {
        [[maybe_unused]] const int back = fchdir(home); // fails only when the old directory has gone meanwhile
        close(home);
    }
    return failure(error).outcome();
}

#endif

} // namespace ks
