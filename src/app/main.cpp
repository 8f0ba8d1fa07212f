#include "forms/launcher_start.h"
#include "forms/qt_platform.h"
#include "forms/startup_trace.h"
#include "frame/program.h"
#include "session/startup.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace {

// Qt ends the process when it finds no display; say why in words instead.
bool displayAvailable() {
#if defined(_WIN32) || defined(__APPLE__)
    return true;
#else
    const auto set = [](const char* name) {
        const char* value = std::getenv(name);
        return value && *value;
    };
    return set("DISPLAY") || set("WAYLAND_DISPLAY") || set("QT_QPA_PLATFORM");
#endif
}

// The few options, which need no display: they print and end.
int printHelp(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ks::QtPlatform platform;
    const ks::Program program(platform);
    std::printf("Usage: kslaunch [FILE]\n"
                "       kslaunch --help | --version\n\n"
                "The Kestrand Launcher: edits the settings of a Quake II server running the Kestrand mod,\n"
                "writes and reads its .cfg console script and starts the server.\n\n"
                "  FILE       a configuration to open once the splash has gone, as File, Open opens it:\n"
                "             the same warnings, and the same message when it cannot be read\n"
                "  --help     show this help and where the launcher finds its files\n"
                "  --version  show the version\n"
                "  --         ends the options, for a FILE whose name begins with a dash\n\n"
                "Help page:   %s\n"
                "Start sound: %s\n\n"
                "kscfg does the same from the shell (kscfg --help).\n",
                program.companionFile("ks.html").c_str(), program.companionFile(std::string(ks::kStartSound)).c_str());
    return std::fflush(stdout) == 0 && !std::ferror(stdout) ? 0 : 1;
}

int printVersion() {
    std::printf("kslaunch %s\n", std::string(ks::kProgramVersionText).c_str());
    return std::fflush(stdout) == 0 && !std::ferror(stdout) ? 0 : 1;
}

// What the command line asks for: a file to open, or one of the options that print and end.
struct Request {
    enum class Kind { Start, Help, Version, BadUse } kind = Kind::Start;
    std::string file;
};

Request readCommandLine(int argc, char** argv) {
    Request request;
    bool options = true;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (options && word == "--") {
            options = false;
        } else if (options && (word == "--help" || word == "-h" || word == "--version")) {
            if (argc != 2) {
                std::fprintf(stderr, "kslaunch: %s takes nothing else (try kslaunch --help)\n", argv[i]);
                return {Request::Kind::BadUse, {}};
            }
            return {word == "--version" ? Request::Kind::Version : Request::Kind::Help, {}};
        } else if (options && word.size() > 1 && word[0] == '-') {
            std::fprintf(stderr, "kslaunch: unknown option '%s' (try kslaunch --help)\n", argv[i]);
            return {Request::Kind::BadUse, {}};
        } else if (word.empty() || !request.file.empty()) {
            std::fprintf(stderr, "kslaunch: opens one FILE, with a name (try kslaunch --help)\n");
            return {Request::Kind::BadUse, {}};
        } else {
            request.file = word;
        }
    }
    // The file keeps its place when a later Run changes the working directory.
    if (!request.file.empty()) {
        std::error_code error;
        const std::filesystem::path whole = std::filesystem::absolute(request.file, error);
        if (!error) request.file = whole.string();
    }
    return request;
}

} // namespace

int main(int argc, char** argv) {
    const Request request = readCommandLine(argc, argv);
    switch (request.kind) {
    case Request::Kind::Help:
        return printHelp(argc, argv);
    case Request::Kind::Version:
        return printVersion();
    case Request::Kind::BadUse:
        return 2;
    case Request::Kind::Start:
        break;
    }
    if (!displayAvailable()) {
        std::fputs("kslaunch needs a graphical display and none was found (DISPLAY is not set); "
                   "use kscfg to write, convert or launch configurations from the shell.\n",
                   stderr);
        return 1;
    }
    QApplication app(argc, argv);
    ks::traceStartup();
    // The launcher ends by its exit animation, not by its last window closing.
    QApplication::setQuitOnLastWindowClosed(false);
    ks::QtPlatform platform;
    ks::Program program(platform);
    ks::connectHandlers(program);
    ks::LauncherStart start(program, &platform, request.file);
    return app.exec();
}
