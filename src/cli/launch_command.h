#pragma once

#include "cli/layer.h"

#include "cli/arguments.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace ks {
class Program;
}

namespace ks::cli {

// kscfg launch CFG [--foreground | --watch [--stop-timeout SECONDS] [--start-limit STARTS/SECONDS] [--log FILE]]
//
// Reads CFG as the launcher's Open does and starts the server from its Quake II directory, printing the command
// line; one server for each port: while the record of CFG's port names a server that runs, or another process
// holds the UDP port, it refuses. The new server is recorded for its port (server_record.h). By default the
// server is cut loose: its input is empty, its output is appended to the log file beside CFG (printed as "log:
// PATH"), it runs in a session of its own, and kscfg ends at once. With --foreground kscfg becomes the server,
// which keeps kscfg's streams and gets the signals of a service manager. With --watch kscfg stays in front and
// keeps the server running as supervisor.h tells; its lines, and the server's output, go to standard error, or
// with --log to a file rotated at 10 MiB.
// A configuration file outside the server's game directory, or another file of its name there, is told on the
// error stream: the server runs +exec NAME from the game directory and would start without these settings.
int runLaunch(const Invocation& call, std::ostream& out, std::ostream& err);

// What keeps the server from running the configuration file in hand: the server runs "+exec NAME" from its game
// directory, and the file there by that name is not this one. Nothing when it is, and nothing when the Quake II
// directory is not on this machine (a template checked far from its server).
std::optional<std::string> misplacedConfig(const Program& program);

} // namespace ks::cli
