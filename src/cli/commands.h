#pragma once

#include "cli/layer.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace ks::cli {

// Runs the companion tool with its arguments (without the program name) and gives the exit status.
int run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace ks::cli
