#include "cli/launch_command.h"

#include "cli/config_files.h"
#include "server/launch.h"
#include "server/paths.h"
#include "server/process.h"
#include "server/process_control.h"
#include "server/rotating_log.h"
#include "server/server_record.h"
#include "server/supervisor.h"
#include "server/udp_exchange.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <ostream>

namespace ks::cli {

namespace {

enum class Mode { Detached, Foreground, Watch };

// The options that only the watch takes.
constexpr std::string_view kWatchOptions[] = {"--stop-timeout", "--start-limit", "--log"};

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

// The policy of the watch from its options; nothing after telling what is wrong with one.
std::optional<WatchPolicy> watchPolicy(const Invocation& call, std::ostream& err) {
    WatchPolicy policy;
    const std::optional<std::chrono::milliseconds> grace =
        secondsValue(call, "--stop-timeout", policy.stopTimeout, err);
    if (!grace) return std::nullopt;
    policy.stopTimeout = *grace;
    if (const std::optional<std::string> limit = call.value("--start-limit")) {
        unsigned starts = 0, seconds = 0;
        char end = 0;
        if (std::sscanf(limit->c_str(), "%u/%u%c", &starts, &seconds, &end) != 2 || starts < 1 || starts > 1000 ||
            seconds < 1 || seconds > 86400 || limit->find_first_of("+- ") != std::string::npos) {
            badUse(*call.command,
                   "launch: --start-limit takes STARTS/SECONDS, from 1 to 1000 starts within 1 s to a day, not " +
                       *limit,
                   err);
            return std::nullopt;
        }
        policy.startLimit = static_cast<int>(starts);
        policy.startInterval = std::chrono::seconds(seconds);
    }
    return policy;
}

// Keeps the server running under the watch: the record of the port names the watch and the server of the
// moment, the lines go to standard error or, with --log, with the server's output to a rotated file.
int watch(const ProgramStart& start, const std::string& directory, const WatchPolicy& policy, std::optional<int> port,
          std::unique_ptr<RecordHold> hold, const std::string& config, const std::optional<std::string>& logFile,
          std::ostream& err) {
    std::unique_ptr<RotatingLog> log;
    if (logFile) {
        log = std::make_unique<RotatingLog>(*logFile, kWatchLogLimit, kWatchLogsKept);
        if (const std::optional<std::string> problem = log->open()) {
            err << "kscfg: " << *problem << '\n';
            return kFailed;
        }
    }
    ServerRecord record;
    WatchHooks hooks;
    hooks.say = [&](const std::string& line) {
        const std::string stamped = timeStamp() + " kscfg: " + line + "\n";
        if (log)
            log->write(stamped);
        else
            err << stamped << std::flush;
    };
    if (log) hooks.output = [&](std::string_view bytes) { log->write(bytes); };
    hooks.started = [&](long pid) {
        if (!port) return;
        // The first start happens under the hold that found the port free; each later one takes it anew.
        if (!hold) hold = std::make_unique<RecordHold>();
        record = startedServer(pid, pid, config);
        record.watch = ownProcessId();
        record.ticks = processStartTicks(record.watch).value_or(-1);
        hold->write(*port, record);
        hold.reset();
    };
    const WatchEnd end = watchServer(start, directory, policy, hooks);
    if (port) removeServerRecord(RecordHold().file(*port), record);
    switch (end) {
    case WatchEnd::Requested:
    case WatchEnd::Finished:
        return kDone;
    case WatchEnd::StartLimit:
        return kGaveUp;
    case WatchEnd::StartFailed:
        break;
    }
    return kFailed;
}

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
    for (const std::string_view option : kWatchOptions)
        if (mode != Mode::Watch && call.has(option))
            return badUse(*call.command, "launch: " + std::string(option) + " goes with --watch", err);
    const std::optional<WatchPolicy> policy = watchPolicy(call, err);
    if (!policy) return kBadUse;
    const std::string& file = call.operands[0];

    FreshProgram fresh(err);
    if (!openOrSay(fresh, file, err)) return kFailed;
    if (const std::optional<std::string> problem = misplacedConfig(fresh.program))
        err << "warning: " << *problem << '\n';

    // One server for each port: a record of a running one, or any process that holds the port, refuses the start.
    // The hold lasts until the new server is recorded, so that two launches cannot both find the port free.
    const std::optional<int> port = udpPort(fresh.program.field(id::FPORT).text());
    auto hold = std::make_unique<RecordHold>();
    if (port) {
        if (const std::optional<FoundRecord> running = findRunningServer(*port)) {
            err << "kscfg: a server for port " << *port << " runs already, pid "
                << (running->record.pid > 0 ? running->record.pid : running->record.watch) << " (started from "
                << running->record.config << "; kscfg stop ends it)\n";
            return kFailed;
        }
        if (udpPortTaken(*port)) {
            err << "kscfg: another process holds UDP port " << *port << "; the server was not started\n";
            return kFailed;
        }
        if (!hold->problem().empty()) err << "warning: no record of the server is kept: " << hold->problem() << '\n';
    }
    const std::string config = absoluteConfigFile(fresh.program);

    if (mode == Mode::Detached) {
        const LaunchResult result = startServer(fresh.program);
        out << result.commandLine << '\n';
        if (result.step != LaunchStep::Started) {
            out.flush();
            err << "kscfg: " << describeLaunchFailure(result) << '\n';
            return kFailed;
        }
        if (port && result.pid > 0) hold->write(*port, startedServer(result.pid, processGroupOf(result.pid), config));
        out << "log: " << result.logFile << '\n';
        return kDone;
    }

    const ProgramStart start = serverStart(fresh.program);
    const std::string directory = fresh.program.field(id::QDIR).text();
    out << start.commandLine << std::endl;
    if (mode == Mode::Foreground) {
        // kscfg becomes the server: same process, same streams, the service manager's signals reach it. The hold
        // ends with the exec.
        const long self = ownProcessId();
        if (port) hold->write(*port, startedServer(self, leadsOwnProcessGroup() ? self : 0, config));
        const OperationResult failed = execForeground(start.program, start.arguments, directory);
        err << "kscfg: cannot start the server program \"" << start.program << "\": " << failed.error << '\n';
        return kFailed;
    }
    return watch(start, directory, *policy, port, std::move(hold), config, call.value("--log"), err);
}

} // namespace ks::cli
