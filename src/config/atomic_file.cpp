#include "config/atomic_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace ks {

namespace {

std::string reasonOf(int error) { return std::generic_category().message(error); }

// The file a write to `path` lands in: the end of a chain of symbolic links.
fs::path resolveTarget(const fs::path& path) {
    std::error_code ec;
    fs::path target = path;
    for (int hops = 0; hops < 40 && fs::is_symlink(target, ec); ++hops) {
        fs::path next = fs::read_symlink(target, ec);
        if (ec) break;
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    return target;
}

std::string temporaryName(const fs::path& target) {
    std::random_device device;
    std::uniform_int_distribution<unsigned> digits(0, 0xFFFFFF);
    char suffix[16];
    std::snprintf(suffix, sizeof suffix, ".%06x.tmp", digits(device));
    return target.string() + suffix;
}

bool flushToDisk(std::FILE* file) {
    if (std::fflush(file) != 0) return false;
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

} // namespace

OperationResult replaceFileAtomically(const std::string& path, std::string_view bytes) {
    const fs::path target = resolveTarget(fs::path(path));
    std::error_code ec;
    const bool existed = fs::exists(target, ec);
    fs::perms permissions = fs::perms::none;
    if (existed) {
        if (fs::is_directory(target, ec)) return OperationResult::failure("it is a directory");
        permissions = fs::status(target, ec).permissions();
        // A read-only file stays as it is: the rename would otherwise pass over its protection.
        if ((permissions & fs::perms::owner_write) == fs::perms::none)
            return OperationResult::failure("the file is read-only");
#ifndef _WIN32
        if (access(target.c_str(), W_OK) != 0) return OperationResult::failure(reasonOf(errno));
#endif
    }

    const std::string temporary = temporaryName(target);
#ifdef _WIN32
    std::FILE* file = std::fopen(temporary.c_str(), "wbx");
#else
    const int fd = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    std::FILE* file = fd >= 0 ? fdopen(fd, "wb") : nullptr;
    if (fd >= 0 && !file) close(fd);
#endif
    if (!file) return OperationResult::failure(reasonOf(errno));

    bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && flushToDisk(file);
    int error = written ? 0 : errno;
    if (std::fclose(file) != 0 && written) {
        written = false;
        error = errno;
    }
    if (written && existed) {
        fs::permissions(temporary, permissions, fs::perm_options::replace, ec);
    }
    if (written) {
        fs::rename(temporary, target, ec);
        if (ec) {
            written = false;
            error = ec.value();
        }
    }
    if (!written) {
        fs::remove(temporary, ec);
        return OperationResult::failure(reasonOf(error ? error : EIO));
    }
#ifndef _WIN32
    // Make the rename itself durable.
    const int dir = open(target.parent_path().empty() ? "." : target.parent_path().c_str(), O_RDONLY | O_CLOEXEC);
    if (dir >= 0) {
        fsync(dir);
        close(dir);
    }
#endif
    return OperationResult::success();
}

} // namespace ks
