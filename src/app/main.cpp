#include "forms/launcher_start.h"
#include "forms/qt_platform.h"
#include "forms/start_ahead.h"
#include "forms/startup_trace.h"
#include "frame/program.h"
#include "session/startup.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <cstring>

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
    std::printf("Usage: kslaunch [--help | --version]\n\n"
                "The Kestrand Launcher: edits the settings of a Quake II server running the Kestrand mod,\n"
                "writes and reads its .cfg console script and starts the server. It reads no other option\n"
                "and no file from its command line; File, Open reads a configuration.\n\n"
                "  --help     show this help and where the launcher finds its files\n"
                "  --version  show the version\n\n"
                "Help page:   %s\n"
                "Start sound: %s\n\n"
                "kscfg does the same from the shell (kscfg --help).\n",
                program.companionFile("ks.html").c_str(), program.companionFile("ks4a.wav").c_str());
    return std::fflush(stdout) == 0 && !std::ferror(stdout) ? 0 : 1;
}

int printVersion() {
    std::printf("kslaunch %s\n", std::string(ks::kProgramVersionText).c_str());
    return std::fflush(stdout) == 0 && !std::ferror(stdout) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1) {
        if (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) return printHelp(argc, argv);
        if (std::strcmp(argv[1], "--version") == 0) return printVersion();
        std::fprintf(stderr, "kslaunch: unknown option '%s' (try kslaunch --help)\n", argv[1]);
        return 2;
    }
    if (!displayAvailable()) {
        std::fputs("kslaunch needs a graphical display and none was found (DISPLAY is not set); "
                   "use kscfg to write, convert or launch configurations from the shell.\n",
                   stderr);
        return 1;
    }
    ks::StartAhead ahead;
    QApplication app(argc, argv);
    ks::traceStartup();
    ahead.applicationReady();
    // The launcher ends by its exit animation, not by its last window closing.
    QApplication::setQuitOnLastWindowClosed(false);
    ks::QtPlatform platform;
    ks::Program program(platform);
    ks::connectHandlers(program);
    ks::LauncherStart start(program, &platform, &ahead);
    return app.exec();
}
