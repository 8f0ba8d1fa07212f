#include "cli/commands.h"
#include "cli/text_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>

namespace {

// Whether everything written to standard output reached it; a full disk or a closed pipe shows only here.
bool outputReached(std::ostream& out) {
    errno = 0;
    out.flush();
    std::cout.flush();
    const bool flushed = std::fflush(stdout) == 0;
    return out.good() && std::cout.good() && flushed && !std::ferror(stdout);
}

} // namespace

int main(int argc, char** argv) {
    // Whatever a file holds reaches the terminal with its control bytes shown.
    ks::cli::ControlEscapingBuffer outBuffer(std::cout.rdbuf()), errBuffer(std::cerr.rdbuf());
    std::ostream out(&outBuffer), err(&errBuffer);
    int status = 1;
    try {
        status = ks::cli::run(std::vector<std::string>(argv + 1, argv + argc), out, err);
    } catch (const std::bad_alloc&) {
        err << "kscfg: out of memory\n";
    } catch (const std::exception& error) {
        err << "kscfg: " << error.what() << '\n';
    }
    if (!outputReached(out)) {
        const int error = errno;
        err << "kscfg: cannot write to standard output" << (error ? ": " : "") << (error ? std::strerror(error) : "")
            << '\n';
        return 1;
    }
    return status;
}
