#include "cli/console_platform.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace ks {

ConsolePlatform::ConsolePlatform(std::ostream& messages) : messages_(messages) {}

std::string ConsolePlatform::programPath() {
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    return ec ? std::string() : self.string();
}

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

bool ConsolePlatform::isPlainFile(const std::string& path) {
    std::error_code ec;
    return fs::is_regular_file(path, ec);
}

bool ConsolePlatform::isVisiblePlainFile(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    return isPlainFile(path) && !(name.size() > 1 && name[0] == '.');
}

bool ConsolePlatform::isDirectory(const std::string& path) {
    std::error_code ec;
    return fs::is_directory(path, ec);
}

bool ConsolePlatform::hasPlainFile(const std::string& directory) {
    std::error_code ec;
    for (fs::directory_iterator it(directory, ec), end; !ec && it != end; it.increment(ec))
        if (it->is_regular_file(ec)) return true;
    return false;
}

OperationResult ConsolePlatform::changeDirectory(const std::string& path) {
    std::error_code ec;
    fs::current_path(path, ec);
    return ec ? OperationResult::failure(ec.message()) : OperationResult::success();
}

std::string ConsolePlatform::currentDirectory() {
    std::error_code ec;
    return fs::current_path(ec).string();
}

OperationResult ConsolePlatform::startProcess(const std::string& commandLine) {
#ifdef _WIN32
    (void)commandLine;
    return OperationResult::failure("starting programs is not supported here");
#else
    // Split at blanks, as the command line is passed unquoted.
    std::vector<std::string> words;
    std::string word;
    for (char c : commandLine + ' ') {
        if (c == ' ') {
            if (!word.empty()) words.push_back(std::move(word));
            word.clear();
        } else {
            word += c;
        }
    }
    if (words.empty()) return OperationResult::failure("the command line is empty");
    std::vector<char*> argv;
    for (std::string& w : words)
        argv.push_back(w.data());
    argv.push_back(nullptr);

    // A pipe that closes on a successful exec tells whether the program started.
    int report[2];
    if (pipe2(report, O_CLOEXEC) != 0) return OperationResult::failure(std::strerror(errno));
    const pid_t child = fork();
    if (child < 0) {
        close(report[0]);
        close(report[1]);
        return OperationResult::failure(std::strerror(errno));
    }
    if (child == 0) {
        setsid();
        const pid_t grandchild = fork();
        if (grandchild == 0) {
            execvp(argv[0], argv.data());
            const int error = errno;
            [[maybe_unused]] auto n = write(report[1], &error, sizeof error);
            _exit(127);
        }
        _exit(grandchild < 0 ? 1 : 0);
    }
    close(report[1]);
    int error = 0;
    const auto n = read(report[0], &error, sizeof error);
    close(report[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (n == static_cast<ssize_t>(sizeof error)) return OperationResult::failure(std::strerror(error));
    return OperationResult::success();
#endif
}

OperationResult ConsolePlatform::openLink(const std::string& target) { return startProcess("xdg-open " + target); }

std::vector<std::string> ConsolePlatform::drives() { return {"/"}; }

bool ConsolePlatform::driveReady(const std::string& drive) { return isDirectory(drive); }

std::string ConsolePlatform::driveCurrentDirectory(const std::string& drive) {
    const std::string cwd = currentDirectory();
    return cwd.rfind(drive, 0) == 0 ? cwd : drive;
}

std::string ConsolePlatform::homeDirectory() {
    const char* home = std::getenv("HOME");
    return home ? home : "";
}

void ConsolePlatform::endProgram() { std::exit(0); }

} // namespace ks
