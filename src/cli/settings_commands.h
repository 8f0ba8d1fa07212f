#pragma once

#include <iosfwd>
#include <span>
#include <string>

namespace ks::cli {

using Args = std::span<const std::string>;

// The commands that read and change settings by their keys. Each takes its arguments without the command's
// name and gives the exit status.
int runGet(Args args, std::ostream& out, std::ostream& err);
int runSet(Args args, std::ostream& out, std::ostream& err);
int runCheck(Args args, std::ostream& out, std::ostream& err);
int runDiff(Args args, std::ostream& out, std::ostream& err);
int runKeys(Args args, std::ostream& out, std::ostream& err);

} // namespace ks::cli
