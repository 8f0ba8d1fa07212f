#include "cli/launch_command.h"

#include "cli/config_files.h"
#include "server/launch.h"
#include "server/paths.h"
#include "server/process.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <ostream>

#ifndef _WIN32
#include <sys/wait.h>
#include <time.h>
#endif

namespace ks::cli {

namespace {

enum class Mode { Detached, Foreground, Watch };

constexpr std::chrono::seconds kFirstPause{1};
constexpr std::chrono::seconds kLongestPause{60};
// A server that ran this long counts as good again: the next failure pauses only the first pause.
constexpr std::chrono::minutes kGoodRun{10};

// The server the watch waits for and the signal that asked it to end; the signal handler reads and writes them.
volatile std::sig_atomic_t watchedServer = 0;
volatile std::sig_atomic_t endRequest = 0;

// The local time as 2026-11-23T14:30:05, for the lines of the watch.
[[maybe_unused]] std::string timeStamp() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
    return text;
}

#ifndef _WIN32

void handOn(int signal) {
    endRequest = signal;
    if (watchedServer > 0) kill(static_cast<pid_t>(watchedServer), signal);
}

// What a waited-for server's end says, in words.
std::string describeEnd(int status) {
    if (WIFEXITED(status)) return "the server ended with status " + std::to_string(WEXITSTATUS(status));
    if (WIFSIGNALED(status)) return "the server was ended by signal " + std::to_string(WTERMSIG(status));
    return "the server ended";
}

// Sleeps for the pause, or less when a signal asks the watch to end.
void pauseFor(std::chrono::seconds pause) {
    timespec rest{static_cast<time_t>(pause.count()), 0};
    while (!endRequest && nanosleep(&rest, &rest) != 0) {
    }
}

int watch(const ProgramStart& start, const std::string& directory, std::ostream& err) {
    struct sigaction handler {};
    handler.sa_handler = handOn;
    sigemptyset(&handler.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &handler, nullptr);

    std::chrono::seconds pause = kFirstPause;
    for (;;) {
        const auto started = std::chrono::steady_clock::now();
        const StartResult child = spawnChild(start.program, start.arguments, directory, {start.logFile, true});
        if (!child.ok()) {
            err << timeStamp() << " kscfg: cannot start the server program \"" << start.program << "\": " << child.error
                << '\n';
            return 1;
        }
        watchedServer = static_cast<std::sig_atomic_t>(child.pid);
        err << timeStamp() << " kscfg: started the server, pid " << child.pid << ": " << start.commandLine << std::endl;
        // A signal that came before the server's pid was known is handed on now.
        if (endRequest) kill(static_cast<pid_t>(child.pid), endRequest);

        int status = 0;
        while (waitpid(static_cast<pid_t>(child.pid), &status, 0) < 0 && errno == EINTR) {
        }
        watchedServer = 0;
        const bool failed = !(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        if (endRequest || !failed) {
            err << timeStamp() << " kscfg: " << describeEnd(status)
                << (endRequest ? " on request; the watch ends" : "; the watch ends") << std::endl;
            return 0;
        }
        if (std::chrono::steady_clock::now() - started >= kGoodRun) pause = kFirstPause;
        err << timeStamp() << " kscfg: " << describeEnd(status) << "; starting it again in " << pause.count() << " s"
            << std::endl;
        pauseFor(pause);
        if (endRequest) {
            err << timeStamp() << " kscfg: asked to end; the watch ends" << std::endl;
            return 0;
        }
        pause = std::min(pause * 2, std::chrono::duration_cast<std::chrono::seconds>(kLongestPause));
    }
}

#endif

} // namespace

std::optional<std::string> misplacedConfig(const Program& program) {
    namespace fs = std::filesystem;
    const PathStyle style = program.pathStyle();
    const std::string& qdir = program.field(id::QDIR).text();
    std::error_code ec;
    if (style != nativePathStyle() || !program.platform().isDirectory(qdir)) return std::nullopt;
    const std::string& configFile = program.field(id::FFile).text();
    const std::string name = fileNamePart(style, configFile);
    const fs::path gameDirectory = filePath(qdir) / filePath(program.field(id::FGD).text());
    if (fs::equivalent(gameDirectory / filePath(name), filePath(configFile), ec) && !ec) return std::nullopt;
    return "the server runs +exec " + name + " from its game directory " + pathText(gameDirectory) + ", and " +
           configFile + " is not that file: the server would start without these settings";
}

int runLaunch(const Invocation& call, std::ostream& out, std::ostream& err) {
    if (call.has("--foreground") && call.has("--watch"))
        return badUse(*call.command, "launch takes --foreground or --watch, not both", err);
    const Mode mode = call.has("--foreground") ? Mode::Foreground : call.has("--watch") ? Mode::Watch : Mode::Detached;
    const std::string& file = call.operands[0];

    FreshProgram fresh(err);
    if (!openOrSay(fresh, file, err)) return kFailed;
    if (const std::optional<std::string> problem = misplacedConfig(fresh.program))
        err << "warning: " << *problem << '\n';
    if (mode == Mode::Detached) {
        const LaunchResult result = startServer(fresh.program);
        out << result.commandLine << '\n';
        if (result.step != LaunchStep::Started) {
            out.flush();
            err << "kscfg: " << describeLaunchFailure(result) << '\n';
            return 1;
        }
        out << "log: " << result.logFile << '\n';
        return 0;
    }

    if (isUnset(fresh.program.field(id::FFile).text())) return 1;
    const ProgramStart start = serverStart(fresh.program);
    const std::string directory = fresh.program.field(id::QDIR).text();
    out << start.commandLine << std::endl;
    if (mode == Mode::Foreground) {
        // kscfg becomes the server: same process, same streams, the service manager's signals reach it.
        const OperationResult failed = execForeground(start.program, start.arguments, directory);
        err << "kscfg: cannot start the server program \"" << start.program << "\": " << failed.error << '\n';
        return 1;
    }
#ifdef _WIN32
    err << "kscfg: --watch needs a POSIX system\n";
    return 1;
#else
    return watch(start, directory, err);
#endif
}

} // namespace ks::cli
