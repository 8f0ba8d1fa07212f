#pragma once

#include "cli/layer.h"

#include "cli/arguments.h"

#include <iosfwd>

namespace ks::cli {

// The commands that talk to a running server or end it. Each gives the exit status.

// kscfg status CFG [--json] [--host HOST]: whether the server of CFG's port runs on this machine (its record),
// and what it answers to the game's status query on that port of 127.0.0.1 or HOST within 1 s.
int runStatus(const Invocation& call, std::ostream& out, std::ostream& err);

// kscfg rcon CFG COMMAND... [--host HOST]: the remote console command, with CFG's rcon_password, and the
// server's answer. A password that protects nothing is refused before anything is sent.
int runRcon(const Invocation& call, std::ostream& out, std::ostream& err);

// kscfg stop CFG [--timeout SECONDS]: SIGTERM to the server's process group (or to the watch that keeps it),
// SIGKILL after the timeout.
int runStop(const Invocation& call, std::ostream& out, std::ostream& err);

} // namespace ks::cli
