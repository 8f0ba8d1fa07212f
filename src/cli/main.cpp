#include "cli/commands.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>

namespace {

// Whether everything written to standard output reached it; a full disk or a closed pipe shows only here.
bool outputReached() {
    errno = 0;
    std::cout.flush();
    const bool flushed = std::fflush(stdout) == 0;
    return std::cout.good() && flushed && !std::ferror(stdout);
}

} // namespace

int main(int argc, char** argv) {
    int status = 1;
    try {
        status = ks::cli::run(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
    } catch (const std::bad_alloc&) {
        std::cerr << "kscfg: out of memory\n";
    } catch (const std::exception& error) {
        std::cerr << "kscfg: " << error.what() << '\n';
    }
    if (!outputReached()) {
        const int error = errno;
        std::cerr << "kscfg: cannot write to standard output" << (error ? ": " : "")
                  << (error ? std::strerror(error) : "") << '\n';
        return 1;
    }
    return status;
}
