#include "cli/commands.h"
#include "cli/text_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>

#ifdef _WIN32
#include "frame/windows_paths.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>
#endif

namespace {

// The words of the command line. On Windows they come from the wide command line as UTF-8, the form in which the
// program holds every path.
std::vector<std::string> commandWords(int argc, char** argv) {
#ifdef _WIN32
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    if (words) {
        std::vector<std::string> result;
        for (int i = 1; i < count; ++i)
            result.push_back(ks::utf8Text(words[i]));
        LocalFree(words);
        return result;
    }
#endif
    return std::vector<std::string>(argv + 1, argv + argc);
}

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
#ifdef _WIN32
    // Bytes go out as they are, line ends too, as on other systems: a file written from the output is the same.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    // Messages go out as they are written, before whatever standard output still holds, as on other systems.
    std::setvbuf(stderr, nullptr, _IONBF, 0);
#endif
    // Whatever a file holds reaches the terminal with its control bytes shown.
    ks::cli::ControlEscapingBuffer outBuffer(std::cout.rdbuf()), errBuffer(std::cerr.rdbuf());
    std::ostream out(&outBuffer), err(&errBuffer);
    int status = 1;
    try {
        status = ks::cli::run(commandWords(argc, argv), out, err);
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
