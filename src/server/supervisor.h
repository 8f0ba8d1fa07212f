#pragma once

#include "server/layer.h"

#include "frame/platform.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace ks {

// The watch of kscfg launch --watch: it keeps a server running, starts it again after a failure and always ends.
//
// The server runs in a process group of its own, and every signal goes to the whole group: SIGINT, SIGTERM and
// SIGHUP that reach the watch are handed on to it, and when the server has not ended `stopTimeout` after such a
// request, the group gets SIGKILL. When the server itself has ended, whatever it left running in its group gets
// SIGTERM, and SIGKILL after the same grace, before the watch starts it again or ends; where the system allows,
// the watch also takes in (and collects) the processes the server orphans. A server that ends with a failure is
// started again after a pause that doubles from 1 s up to 60 s and falls back to 1 s after 10 minutes of good
// running, unless it has been started `startLimit` times within `startInterval`: then the watch gives up. POSIX
// only; elsewhere the watch ends at once with StartFailed.

struct WatchPolicy {
    std::chrono::milliseconds stopTimeout{std::chrono::seconds(10)};
    int startLimit = 5;
    std::chrono::seconds startInterval{60};
};

// What the watch tells while it runs.
struct WatchHooks {
    std::function<void(const std::string& line)> say; // one line about a start or an end, without a line end
    // The server's standard output and error, when they are to pass through the watch; without it they go
    // straight to the watch's standard error.
    std::function<void(std::string_view bytes)> output;
    std::function<void(long pid)> started; // a server has just been started
};

enum class WatchEnd {
    Requested,  // a signal asked the watch to end, and the server has ended
    Finished,   // the server ended by itself without a failure
    StartLimit, // the server failed too often within the start interval
    StartFailed // the server program could not be started
};

WatchEnd watchServer(const ProgramStart& start, const std::string& directory, const WatchPolicy& policy,
                     const WatchHooks& hooks);

} // namespace ks
