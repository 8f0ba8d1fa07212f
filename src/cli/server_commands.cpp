#include "cli/server_commands.h"

#include "cli/config_files.h"
#include "cli/text_output.h"
#include "config/config_check.h"
#include "config/setting_keys.h"
#include "rules/numbers.h"
#include "server/game_protocol.h"
#include "server/process_control.h"
#include "server/server_record.h"
#include "server/udp_exchange.h"

#include <cstdio>
#include <ctime>
#include <ostream>
#include <thread>

namespace ks::cli {

namespace {

using namespace std::chrono_literals;

constexpr const char* kLoopback = "127.0.0.1";
// The longest the server is given for its first answer; a remote console's output may follow in more datagrams,
// each within the second wait of the one before.
constexpr std::chrono::milliseconds kAnswerWait = 1s;
constexpr std::chrono::milliseconds kMoreAnswerWait = 250ms;
// How long stop waits after SIGKILL, which no process can refuse, for the processes to go.
constexpr std::chrono::milliseconds kKillWait = 5s;
constexpr std::chrono::milliseconds kStopTimeout = 10s;

// CFG read as Open reads it, quietly, and the UDP port it gives; nothing after saying what is wrong.
std::optional<int> openForPort(FreshProgram& fresh, const std::string& file, std::ostream& err) {
    if (!openOrSay(fresh, file, err)) return std::nullopt;
    const std::string& text = fresh.program.field(id::FPORT).text();
    const std::optional<int> port = udpPort(text);
    if (!port) err << "kscfg: " << file << ": the port `" << text << "` is no UDP port from 1 to 65535\n";
    return port;
}

int sayNoAnswer(int port, std::ostream& err) {
    err << "kscfg: no answer on UDP " << port << '\n';
    return kNoAnswer;
}

// A span of seconds in words: "45 s", "5 min 3 s", "2 h 5 min", "3 d 4 h".
std::string describeSpan(long long seconds) {
    const auto part = [](long long number, const char* unit) { return std::to_string(number) + " " + unit; };
    if (seconds < 60) return part(seconds, "s");
    if (seconds < 3600) return part(seconds / 60, "min") + " " + part(seconds % 60, "s");
    if (seconds < 86400) return part(seconds / 3600, "h") + " " + part(seconds % 3600 / 60, "min");
    return part(seconds / 86400, "d") + " " + part(seconds % 86400 / 3600, "h");
}

long long secondsSince(long long started) {
    const long long now = static_cast<long long>(std::time(nullptr));
    return now > started ? now - started : 0;
}

// A number as JSON gives it, or null for a text that is none.
std::string jsonNumber(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos && text.size() < 10 ? text
                                                                                                          : "null";
}

void printStatusJson(int port, const std::string& host, const std::optional<FoundRecord>& running,
                     const std::optional<ServerStatus>& answer, std::ostream& out) {
    out << "{\n  \"port\": " << port << ",\n  \"running\": " << (running ? "true" : "false") << ",\n";
    if (running) {
        const ServerRecord& record = running->record;
        out << "  \"pid\": " << record.pid << ",\n  \"uptime\": " << secondsSince(record.started)
            << ",\n  \"watch\": " << (record.watch > 0 ? std::to_string(record.watch) : "null")
            << ",\n  \"config\": " << jsonString(record.config) << ",\n";
    }
    out << "  \"host\": " << jsonString(host) << ",\n  \"answer\": ";
    if (!answer) {
        out << "null\n}\n";
        return;
    }
    out << "{\n    \"hostname\": " << jsonString(answer->value("hostname"))
        << ",\n    \"map\": " << jsonString(answer->value("mapname"))
        << ",\n    \"maxclients\": " << jsonNumber(answer->value("maxclients")) << ",\n    \"info\": {";
    for (std::size_t i = 0; i < answer->info.size(); ++i)
        out << (i ? ", " : "") << jsonString(answer->info[i].first) << ": " << jsonString(answer->info[i].second);
    out << "},\n    \"players\": [";
    for (std::size_t i = 0; i < answer->players.size(); ++i) {
        const PlayerLine& player = answer->players[i];
        out << (i ? ",\n      " : "\n      ") << "{\"score\": " << player.score << ", \"ping\": " << player.ping
            << ", \"name\": " << jsonString(player.name) << "}";
    }
    out << (answer->players.empty() ? "]" : "\n    ]") << "\n  }\n}\n";
}

void printStatusText(int port, const std::string& host, const std::optional<FoundRecord>& running,
                     const std::optional<ServerStatus>& answer, std::ostream& out) {
    if (!running) {
#ifndef _WIN32 // Windows keeps no records of running servers, so there the answer alone tells
        out << "server    does not run on this machine (no record of one for port " << port << ")\n";
#endif
    } else {
        const ServerRecord& record = running->record;
        if (record.watch > 0 && !processRuns(record.pid))
            out << "server    kept by kscfg launch --watch, pid " << record.watch << ", which starts it again\n";
        else
            out << "server    runs on this machine, pid " << record.pid << ", up "
                << describeSpan(secondsSince(record.started))
                << (record.watch > 0 ? ", kept by kscfg launch --watch, pid " + std::to_string(record.watch) : "")
                << '\n';
        out << "config    " << record.config << '\n';
    }
    out << "address   " << host << ", UDP " << port << '\n';
    if (!answer) return;
    out << "hostname  " << answer->value("hostname") << "\nmap       " << answer->value("mapname") << "\nplayers   "
        << answer->players.size() << " of " << answer->value("maxclients") << '\n';
    if (answer->players.empty()) return;
    out << "  score  ping  name\n";
    for (const PlayerLine& player : answer->players) {
        char numbers[32];
        std::snprintf(numbers, sizeof numbers, "  %5ld  %4ld  ", player.score, player.ping);
        out << numbers << player.name << '\n';
    }
}

} // namespace

int runStatus(const Invocation& call, std::ostream& out, std::ostream& err) {
    FreshProgram fresh(err, true);
    const std::optional<int> port = openForPort(fresh, call.operands[0], err);
    if (!port) return kFailed;
    const std::string host = call.value("--host").value_or(kLoopback);
    const std::optional<FoundRecord> running = findRunningServer(*port);
    const DatagramAnswers answers = exchangeDatagrams(host, *port, statusRequest(), kAnswerWait, 0ms);
    if (!answers.error.empty()) {
        err << "kscfg: " << answers.error << '\n';
        return kFailed;
    }
    std::optional<ServerStatus> answer;
    for (const std::string& datagram : answers.datagrams)
        if (!answer) answer = parseStatusAnswer(datagram);
    if (call.has("--json"))
        printStatusJson(*port, host, running, answer, out);
    else
        printStatusText(*port, host, running, answer, out);
    return answer ? kDone : sayNoAnswer(*port, err);
}

int runRcon(const Invocation& call, std::ostream& out, std::ostream& err) {
    const std::string& file = call.operands[0];
    FreshProgram fresh(err, true);
    const std::optional<int> port = openForPort(fresh, file, err);
    if (!port) return kFailed;
    std::string command;
    for (std::size_t i = 1; i < call.operands.size(); ++i)
        command += (i > 1 ? " " : "") + call.operands[i];
    if (command.find_first_of("\r\n") != std::string::npos)
        return badUse(*call.command, "rcon: a command cannot hold a line break", err);

    // A password that protects nothing is never sent: the server takes no command with it, or anyone may.
    const FieldId passwordField = mainField("FRCON2");
    const std::string password(unquoted(fresh.program.field(passwordField).text()));
    const std::string_view preset = fieldRowOf(passwordField)->defaultText;
    if (password.empty() || password == preset) {
        err << "kscfg: " << file << ": rcon_password is "
            << (password.empty() ? "empty, so the server takes no remote commands"
                                 : "still the launcher's own `" + std::string(preset) +
                                       "`, which anyone who has the launcher knows: change it and restart the server")
            << "; nothing was sent\n";
        return kFailed;
    }

    const DatagramAnswers answers =
        exchangeDatagrams(call.value("--host").value_or(kLoopback), *port, remoteCommandRequest(password, command),
                          kAnswerWait, kMoreAnswerWait);
    if (!answers.error.empty()) {
        err << "kscfg: " << answers.error << '\n';
        return kFailed;
    }
    std::optional<std::string> text;
    for (const std::string& datagram : answers.datagrams)
        if (const std::optional<std::string> printed = printedText(datagram)) text = text.value_or("") + *printed;
    if (!text) return sayNoAnswer(*port, err);
    if (*text == kBadPasswordAnswer) {
        err << "kscfg: the server refused the rcon_password of " << file << ": " << kBadPasswordAnswer;
        return kBadPassword;
    }
    out << *text;
    return kDone;
}

int runStop(const Invocation& call, std::ostream& out, std::ostream& err) {
    const std::optional<std::chrono::milliseconds> timeout = secondsValue(call, "--timeout", kStopTimeout, err);
    if (!timeout) return kBadUse;
    FreshProgram fresh(err, true);
    const std::optional<int> port = openForPort(fresh, call.operands[0], err);
    if (!port) return kFailed;
#ifdef _WIN32
    // Without records kscfg cannot tell which process serves the port.
    err << "kscfg: stop is not supported on this system: kscfg keeps no record of the servers it starts on Windows; "
           "end the server for port "
        << *port << " with the Task Manager\n";
    (void)out;
    (void)timeout;
    return kFailed;
#else
    const std::optional<FoundRecord> found = findRunningServer(*port);
    if (!found) {
        out << "no server for port " << *port << " runs on this machine\n";
        return kDone;
    }
    const ServerRecord& record = found->record;
    const std::string named = "the server for port " + std::to_string(*port) + ", pid " + std::to_string(record.pid);
    // A watch hands the request on to its server's group and would start a server again that ended otherwise.
    const std::optional<std::string> refused = record.watch > 0
                                                   ? signalProcesses(record.watch, 0, EndSignal::Terminate)
                                                   : signalProcesses(record.pid, record.group, EndSignal::Terminate);
    if (refused) {
        err << "kscfg: cannot end " << named << ": " << *refused << '\n';
        return kFailed;
    }
    const auto awaitEnd = [&](std::chrono::milliseconds wait) {
        const auto deadline = std::chrono::steady_clock::now() + wait;
        while (serverRuns(record) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(20ms);
        return !serverRuns(record);
    };
    bool killed = false;
    if (!awaitEnd(*timeout)) {
        // The watch may have started another server meanwhile: its record names it.
        const ServerRecord latest = findRunningServer(*port).value_or(*found).record;
        for (const ServerRecord* each : {&record, &latest}) {
            signalProcesses(each->pid, each->group, EndSignal::Kill);
            if (each->watch > 0) signalProcesses(each->watch, 0, EndSignal::Kill);
        }
        killed = true;
        if (!awaitEnd(kKillWait)) {
            err << "kscfg: " << named << " still runs after SIGKILL\n";
            return kFailed;
        }
    }
    removeServerRecord(found->file, record);
    out << named
        << (killed ? ", did not end within " + plainDecimal(static_cast<double>(timeout->count()) / 1000) +
                         " s of SIGTERM and was killed"
                   : ", has ended")
        << '\n';
    return kDone;
#endif
}

} // namespace ks::cli
