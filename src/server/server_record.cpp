#include "server/server_record.h"

#include "server/process_control.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace ks {

namespace {

std::string recordFile(const std::string& directory, int port) {
    return directory + "/" + std::to_string(port) + ".state";
}

std::optional<std::string> readSmallFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

std::string renderServerRecord(const ServerRecord& record) {
    std::ostringstream text;
    text << "pid " << record.pid << "\ngroup " << record.group << "\nwatch " << record.watch << "\nstarted "
         << record.started << "\nticks " << record.ticks << "\nconfig " << record.config << '\n';
    return text.str();
}

std::optional<ServerRecord> parseServerRecord(std::string_view text) {
    ServerRecord record;
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        const std::size_t blank = line.find(' ');
        const std::string key = line.substr(0, blank), value = blank == std::string::npos ? "" : line.substr(blank + 1);
        if (key == "config") {
            record.config = value;
            continue;
        }
        long long number = 0;
        if (std::sscanf(value.c_str(), "%lld", &number) != 1) continue;
        if (key == "pid") record.pid = static_cast<long>(number);
        if (key == "group") record.group = static_cast<long>(number);
        if (key == "watch") record.watch = static_cast<long>(number);
        if (key == "started") record.started = number;
        if (key == "ticks") record.ticks = number;
    }
    if (record.pid <= 0 && record.watch <= 0) return std::nullopt;
    return record;
}

bool serverRuns(const ServerRecord& record) {
    const long first = record.watch > 0 ? record.watch : record.pid;
    bool runs = processRuns(first);
    if (runs && record.ticks >= 0) {
        const std::optional<long long> ticks = processStartTicks(first);
        runs = !ticks || *ticks == record.ticks; // a pid given to another process since
    }
    return runs || processGroupRuns(record.group);
}

std::optional<FoundRecord> findRunningServer(int port) {
    std::vector<std::string> directories;
    if (const RuntimePlace own = ownRuntimeDirectory(false); !own.directory.empty())
        directories.push_back(own.directory);
    if (directories.empty() || directories.front() != kUnitRuntimeDirectory)
        directories.push_back(kUnitRuntimeDirectory);
    for (const std::string& directory : directories) {
        const std::string file = recordFile(directory, port);
        const std::optional<std::string> text = readSmallFile(file);
        const std::optional<ServerRecord> record = text ? parseServerRecord(*text) : std::nullopt;
        if (record && serverRuns(*record)) return FoundRecord{*record, file};
    }
    return std::nullopt;
}

RecordHold::RecordHold() {
    const RuntimePlace place = ownRuntimeDirectory(true);
    directory_ = place.directory;
    problem_ = place.error;
    if (directory_.empty()) return;
    lock_ = std::make_unique<DirectoryLock>(directory_, std::chrono::seconds(5));
    if (!lock_->locked()) problem_ = "another kscfg or launcher held " + directory_ + " for 5 s";
}

RecordHold::~RecordHold() = default;

OperationResult RecordHold::write(int port, const ServerRecord& record) const {
    if (!problem_.empty()) return OperationResult::failure(problem_);
    if (directory_.empty()) return OperationResult::success(); // a system that keeps no records
    const std::string file = this->file(port);
    const std::string scratch = directory_ + "/." + std::to_string(port) + ".state." + std::to_string(ownProcessId());
    {
        std::ofstream out(scratch, std::ios::binary | std::ios::trunc);
        out << renderServerRecord(record);
        if (!out.flush()) return OperationResult::failure("cannot write " + scratch);
    }
    std::error_code ec;
    std::filesystem::rename(scratch, file, ec);
    if (ec) {
        std::filesystem::remove(scratch, ec);
        return OperationResult::failure("cannot write " + file + ": " + ec.message());
    }
    return OperationResult::success();
}

std::string RecordHold::file(int port) const { return recordFile(directory_, port); }

void removeServerRecord(const std::string& file, const ServerRecord& record) {
    const std::optional<std::string> text = readSmallFile(file);
    if (!text || *text != renderServerRecord(record)) return;
    std::error_code ec;
    std::filesystem::remove(file, ec);
}

ServerRecord startedServer(long pid, long group, const std::string& config) {
    ServerRecord record;
    record.pid = pid;
    const long self = ownProcessId();
    record.group = group == processGroupOf(self) && pid != self ? 0 : group;
    record.started = static_cast<long long>(std::time(nullptr));
    record.ticks = processStartTicks(pid).value_or(-1);
    record.config = config;
    return record;
}

std::optional<int> udpPort(std::string_view text) {
    if (text.empty() || text.size() > 5 || text.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    const int port = std::stoi(std::string(text));
    if (port < 1 || port > 65535) return std::nullopt;
    return port;
}

} // namespace ks
