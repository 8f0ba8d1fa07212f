// The console platform on POSIX systems: one root, the file system's own tests, xdg-open for links.

#include "cli/console_platform.h"

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

bool ConsolePlatform::isPlainFile(const std::string& path) {
    std::error_code ec;
    return fs::is_regular_file(path, ec);
}

bool ConsolePlatform::isVisiblePlainFile(const std::string& path) {
    const std::string name = fs::path(path).filename().string();
    return isPlainFile(path) && !(name.size() > 1 && name[0] == '.');
}

bool ConsolePlatform::readableByOthers(const std::string& path) {
    std::error_code ec;
    const fs::perms permissions = fs::status(path, ec).permissions();
    return !ec && (permissions & fs::perms::others_read) != fs::perms::none;
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

OperationResult ConsolePlatform::openLink(const std::string& target) {
    return startDetached("xdg-open", {target}, "").outcome();
}

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

} // namespace ks
