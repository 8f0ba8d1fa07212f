#pragma once

#include "cli/layer.h"

#include "cli/arguments.h"

#include <iosfwd>

namespace ks::cli {

// The commands that read and change settings by their keys. Each gives the exit status.
int runGet(const Invocation& call, std::ostream& out, std::ostream& err);
int runSet(const Invocation& call, std::ostream& out, std::ostream& err);
int runCheck(const Invocation& call, std::ostream& out, std::ostream& err);
int runDiff(const Invocation& call, std::ostream& out, std::ostream& err);
int runKeys(const Invocation& call, std::ostream& out, std::ostream& err);

} // namespace ks::cli
