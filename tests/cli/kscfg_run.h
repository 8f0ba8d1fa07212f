#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

namespace ks::test {

struct Outcome {
    int status;
    std::string output;
};

// Runs a shell command and gives its exit status and its standard output.
inline Outcome shell(const std::string& command) {
    Outcome outcome{-1, {}};
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return outcome;
    std::array<char, 4096> buffer;
    for (std::size_t n; (n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        outcome.output.append(buffer.data(), n);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

// Runs kscfg with the given arguments from the given directory, by default with standard error folded into
// the output.
inline Outcome kscfg(const std::string& arguments, const std::string& from = "/",
                     const std::string& redirection = "2>&1") {
    return shell("cd '" + from + "' && '" + KSCFG_PATH + "' " + arguments + " " + redirection);
}

inline std::string quoted(const std::string& path) { return "'" + path + "'"; }

} // namespace ks::test
