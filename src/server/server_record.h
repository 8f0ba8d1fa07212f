#pragma once

#include "server/layer.h"

#include "frame/platform.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ks {

class DirectoryLock;

// The record of a server that kscfg launch or the launcher's Run started: one small file for each UDP port,
// PORT.state in the runtime directory (process_control.h), so that a second server for the port is refused and
// status and stop find the first. The file holds a line "KEY VALUE" for each field below, in this order; a
// record whose processes have all gone is stale and counts as none.
struct ServerRecord {
    long pid = 0;          // the server
    long group = 0;        // its own process group, which is signalled whole; 0 when it has none of its own
    long watch = 0;        // the kscfg --watch that keeps the server; 0 when none does
    long long started = 0; // when the server was started, in seconds since 1970
    long long ticks = -1;  // when the watch, or without one the server, started, in /proc's clock ticks; -1 unknown
    std::string config;    // the configuration file the server was started with
};

std::string renderServerRecord(const ServerRecord& record);

// The record in a file's text; nothing when it names no process.
std::optional<ServerRecord> parseServerRecord(std::string_view text);

// Whether a process of the record still runs: the watch, or the server, both known by their start where the
// system tells it, or any process left in the server's group.
bool serverRuns(const ServerRecord& record);

// A record as it was found, and the file it was found in.
struct FoundRecord {
    ServerRecord record;
    std::string file;
};

// The record of the running server of a port, from this user's runtime directory or the unit's; nothing when
// no server of the port runs.
std::optional<FoundRecord> findRunningServer(int port);

// A hold on this user's records, for starting a server on a port and recording it: while it is held, no other
// kscfg or launcher can find the port free and start its own. It waits up to 5 s for another holder.
class RecordHold {
public:
    RecordHold();
    RecordHold(const RecordHold&) = delete;
    RecordHold& operator=(const RecordHold&) = delete;
    ~RecordHold();

    // What stands in the way of keeping records (the directory cannot be made, another holder did not let go);
    // empty when the hold is taken.
    const std::string& problem() const { return problem_; }
    const std::string& directory() const { return directory_; }

    // The port's record file in this user's runtime directory.
    std::string file(int port) const;
    // Writes the port's record whole (a new file renamed over the old one).
    OperationResult write(int port, const ServerRecord& record) const;

private:
    std::string directory_;
    std::string problem_;
    std::unique_ptr<DirectoryLock> lock_;
};

// Removes a record file when it still holds the given record (another start may have replaced it).
void removeServerRecord(const std::string& file, const ServerRecord& record);

// The record of a server that has just been started as `pid` in `group` from the configuration file; its start
// and the time are taken now. A group that is the recording process's own, which the server merely shares, is
// not recorded, unless the recording process is the server itself.
ServerRecord startedServer(long pid, long group, const std::string& config);

// A port as the configuration gives it: a whole number from 1 to 65535; nothing for any other text.
std::optional<int> udpPort(std::string_view text);

} // namespace ks
