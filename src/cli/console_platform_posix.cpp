// The console platform on POSIX systems: one root, the file system's own tests, xdg-open for links.

#include "cli/console_platform.h"

#include "frame/file_tests.h"
#include "server/process.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace ks {

std::string ConsolePlatform::programPath() {
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    return ec ? std::string() : self.string();
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

OperationResult ConsolePlatform::openLink(const std::string& target) {
    return startDetached("xdg-open", {target}, "").outcome();
}

std::vector<std::string> ConsolePlatform::drives() { return {"/"}; }

bool ConsolePlatform::driveReady(const std::string& drive) { return file_tests::isDirectory(drive); }

std::string ConsolePlatform::driveCurrentDirectory(const std::string& drive) {
    const std::string cwd = currentDirectory();
    return cwd.rfind(drive, 0) == 0 ? cwd : drive;
}

std::string ConsolePlatform::homeDirectory() {
    const char* home = std::getenv("HOME");
    return home ? home : "";
}

} // namespace ks
