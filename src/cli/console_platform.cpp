#include "cli/console_platform.h"

#include "frame/file_tests.h"
#include "server/process.h"

#include <cstdlib>
#include <ostream>

// What the console platform does alike on every system; the system's own part lies in console_platform_posix.cpp
// and console_platform_windows.cpp.

namespace ks {

ConsolePlatform::ConsolePlatform(std::ostream& messages) : messages_(messages) {}

MessageAnswer ConsolePlatform::messageBox(const MessageBoxRequest& request) {
    std::string text = request.text;
    for (char& c : text)
        if (c == '\r') c = ' ';
    if (!quiet_) messages_ << "warning: " << request.title << ": " << text << '\n';
    ++messageCount_;
    switch (request.buttons) {
    case MessageButtons::YesNo:
    case MessageButtons::YesNoCancel:
        return MessageAnswer::Yes;
    default:
        return MessageAnswer::Ok;
    }
}

bool ConsolePlatform::isPlainFile(const std::string& path) { return file_tests::isPlainFile(path); }
bool ConsolePlatform::isVisiblePlainFile(const std::string& path) { return file_tests::isVisiblePlainFile(path); }
bool ConsolePlatform::isDirectory(const std::string& path) { return file_tests::isDirectory(path); }
bool ConsolePlatform::hasPlainFile(const std::string& directory) { return file_tests::hasPlainFile(directory); }
bool ConsolePlatform::readableByOthers(const std::string& path) { return file_tests::readableByOthers(path); }

ProcessStart ConsolePlatform::startProcess(const ProgramStart& start) {
    return startDetached(start.program, start.arguments, "", {start.logFile}).outcome();
}

void ConsolePlatform::endProgram() { std::exit(0); }

} // namespace ks
