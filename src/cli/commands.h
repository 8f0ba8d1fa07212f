#pragma once

#include "cli/layer.h"

#include <iosfwd>
#include <span>
#include <string>
#include <vector>

namespace ks::cli {

struct CommandSpec;

// Every command of kscfg with its operands and options, in the order of its help.
std::span<const CommandSpec> commandTable();

// Runs the companion tool with its arguments (without the program name) and gives the exit status.
int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace ks::cli
