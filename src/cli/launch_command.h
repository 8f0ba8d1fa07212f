#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace ks::cli {

// kscfg launch CFG [--foreground | --watch]
//
// Reads CFG as the launcher's Open does and starts the server from its Quake II directory, printing the command
// line. By default the server is cut loose: its input is empty, its output is appended to the log file beside
// CFG (printed as "log: PATH"), it runs in a session of its own, and kscfg ends at once. With --foreground kscfg
// becomes the server, which keeps kscfg's streams and gets the signals of a service manager. With --watch kscfg
// stays in front, starts the server, starts it again whenever it ends with a failure after a pause that grows
// from 1 s to 60 s (and falls back to 1 s after 10 minutes of good running), hands SIGINT, SIGTERM and SIGHUP on
// to it and ends when the server ends on request or by itself without a failure.
int runLaunch(std::span<const std::string> args, std::ostream& out, std::ostream& err);

} // namespace ks::cli
