#include "config/atomic_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <random>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include "frame/windows_paths.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace ks {

namespace {

SaveHooks& hooks() {
    static SaveHooks installed;
    return installed;
}

std::string reasonOf(int error) { return std::generic_category().message(error); }

// A short name of our own pattern, ".ks" + 12 hex digits + ".tmp", whatever the target is called.
std::string temporaryName() {
    std::random_device device;
    const unsigned long long digits = (static_cast<unsigned long long>(device()) << 16) ^ device();
    char name[24];
    std::snprintf(name, sizeof name, ".ks%012llx.tmp", digits & 0xFFFFFFFFFFFFull);
    return name;
}

bool isTemporaryName(std::string_view name) {
    if (name.size() != 19 || !name.starts_with(".ks") || !name.ends_with(".tmp")) return false;
    for (const char c : name.substr(3, 12))
        if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'))) return false;
    return true;
}

// A temporary file left by a killed save goes once it is this old; a save that still runs writes far more often.
constexpr std::time_t kStaleSeconds = 60;

} // namespace

SaveHooks setSaveHooksForTesting(SaveHooks next) {
    std::swap(hooks(), next);
    return next;
}

#ifdef _WIN32

namespace {

// A handle that closes with its owner.
class Handle {
public:
    explicit Handle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    ~Handle() {
        if (valid()) CloseHandle(handle_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

OperationResult windowsFailure(DWORD error) { return OperationResult::failure(reasonOfWindowsError(error)); }

// The directory part of a path, without its last backslash.
std::wstring directoryOf(const std::wstring& path) { return path.substr(0, path.find_last_of(L'\\')); }

// Removes what killed saves left in the directory: our name pattern, a plain file, untouched for a minute.
void removeStaleTemporaries(const std::wstring& directory) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((directory + L"\\.ks*.tmp").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    const auto ticks = [](const FILETIME& time) {
        return (static_cast<unsigned long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    };
    constexpr unsigned long long kTicksPerSecond = 10'000'000;
    do {
        if (isTemporaryName(utf8Text(found.cFileName)) && !(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) &&
            ticks(now) - ticks(found.ftLastWriteTime) > kStaleSeconds * kTicksPerSecond)
            DeleteFileW((directory + L"\\" + found.cFileName).c_str());
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

int writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const unsigned size = static_cast<unsigned>(std::min<std::size_t>(bytes.size(), 1u << 30));
        const long count = hooks().write ? hooks().write(fd, bytes.data(), size) : _write(fd, bytes.data(), size);
        if (count < 0) return errno;
        if (count == 0) return EIO;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

int flushToDisk(int fd) {
    if (hooks().flush) return hooks().flush(fd) == 0 ? 0 : errno;
    return FlushFileBuffers(reinterpret_cast<HANDLE>(_get_osfhandle(fd))) ? 0 : errnoOf(GetLastError());
}

} // namespace

// The same steps as elsewhere, in the calls of Windows: the target is looked at through a handle (a link leads to
// the file it names), a temporary file beside it is written, flushed and moved over it in one step. MoveFileExW
// rather than ReplaceFileW: without a backup name, a ReplaceFileW that fails half-way can leave no file at the
// target's name, where a move leaves either the old file or the new one.
OperationResult replaceFileAtomically(const std::string& path, std::string_view bytes) {
    std::wstring target = systemPath(path);
    if (target.empty()) return OperationResult::failure(reasonOf(ENOENT));
    if (isDevicePath(target)) return OperationResult::failure("it is not a regular file");
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
    {
        const Handle old(CreateFileW(target.c_str(), FILE_READ_ATTRIBUTES,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                     FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        const DWORD openError = old.valid() ? ERROR_SUCCESS : GetLastError();
        if (openError != ERROR_SUCCESS && openError != ERROR_FILE_NOT_FOUND) return windowsFailure(openError);
        if (old.valid()) {
            BY_HANDLE_FILE_INFORMATION information{};
            if (GetFileType(old.get()) != FILE_TYPE_DISK) return OperationResult::failure("it is not a regular file");
            if (!GetFileInformationByHandle(old.get(), &information)) return windowsFailure(GetLastError());
            if (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                return OperationResult::failure("it is a directory");
            if (information.dwFileAttributes & FILE_ATTRIBUTE_READONLY)
                return OperationResult::failure("the file is read-only");
            // The new file keeps the old one's hidden, system and archive marks.
            attributes =
                information.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE);
            if (attributes == 0) attributes = FILE_ATTRIBUTE_NORMAL;
            // A link is kept: the file it leads to is replaced.
            std::wstring final(32768, L'\0');
            const DWORD length = GetFinalPathNameByHandleW(old.get(), final.data(), static_cast<DWORD>(final.size()),
                                                           FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
            if (length > 0 && length < final.size()) target = final.substr(0, length);
        }
    }
    const std::wstring directory = directoryOf(target);
    removeStaleTemporaries(directory);

    std::wstring temporary;
    HANDLE created = INVALID_HANDLE_VALUE;
    for (int attempt = 0; attempt < 16 && created == INVALID_HANDLE_VALUE; ++attempt) {
        temporary = directory + L"\\" + wideText(temporaryName());
        created = CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr);
        if (created == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS) break;
    }
    if (created == INVALID_HANDLE_VALUE) return windowsFailure(GetLastError());
    const int fd = _open_osfhandle(reinterpret_cast<intptr_t>(created), _O_WRONLY | _O_BINARY);
    if (fd < 0) {
        CloseHandle(created);
        DeleteFileW(temporary.c_str());
        return OperationResult::failure(reasonOf(errno));
    }
    int error = writeAll(fd, bytes);
    if (error == 0) error = flushToDisk(fd);
    if (_close(fd) != 0 && error == 0) error = errno;
    if (error == 0 &&
        !MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        error = errnoOf(GetLastError());
    if (error != 0) {
        DeleteFileW(temporary.c_str());
        return OperationResult::failure(reasonOf(error));
    }
    return OperationResult::success();
}

#else

namespace {

constexpr int kMostLinks = 40; // the kernel's own limit for one path

// A descriptor that closes with its owner.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    void reset(int fd) {
        if (fd_ >= 0) ::close(fd_);
        fd_ = fd;
    }
    int get() const { return fd_; }

private:
    int fd_;
};

std::string directoryOf(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

// The rule the kernel keeps for links in sticky world-writable directories such as /tmp: such a link is
// followed only when it belongs to whoever follows it or to the directory's owner, so that another user's
// link cannot steer a save by root onto a file of that user's choosing.
bool mayFollow(const std::string& link, const struct stat& linkStatus) {
    struct stat directory {};
    if (stat(directoryOf(link).c_str(), &directory) != 0) return false;
    if ((directory.st_mode & S_ISVTX) == 0 || (directory.st_mode & S_IWOTH) == 0) return true;
    return linkStatus.st_uid == geteuid() || linkStatus.st_uid == directory.st_uid;
}

// Follows the chain of symbolic links that begins at `path` to the name a save replaces. 0 or an errno.
int followLinks(std::string& path) {
    for (int hops = 0;; ++hops) {
        struct stat status {};
        if (lstat(path.c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
        if (!S_ISLNK(status.st_mode)) return 0;
        if (hops == kMostLinks) return ELOOP;
        if (!mayFollow(path, status)) return EACCES;
        char buffer[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), buffer, sizeof buffer);
        if (length < 0) return errno;
        if (length == static_cast<ssize_t>(sizeof buffer)) return ENAMETOOLONG;
        const std::string next(buffer, static_cast<std::size_t>(length));
        path = next.starts_with('/') ? next : directoryOf(path) + "/" + next;
    }
}

// Removes the temporary files that killed saves left in the directory: our name pattern, a regular file,
// untouched for more than a minute. A save that is still running writes its file far more often.
void removeStaleTemporaries(int directory) {
    const int listingFd = fcntl(directory, F_DUPFD_CLOEXEC, 0);
    DIR* listing = listingFd >= 0 ? fdopendir(listingFd) : nullptr;
    if (!listing) {
        if (listingFd >= 0) ::close(listingFd);
        return;
    }
    rewinddir(listing);
    const std::time_t now = std::time(nullptr);
    while (const dirent* entry = readdir(listing)) {
        struct stat status {};
        if (isTemporaryName(entry->d_name) && fstatat(directory, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISREG(status.st_mode) && now - status.st_mtime > kStaleSeconds)
            unlinkat(directory, entry->d_name, 0);
    }
    closedir(listing);
}

// The file a save writes: unnamed while `name` is empty.
struct Temporary {
    Descriptor fd;
    std::string name;
};

int createTemporary(int directory, mode_t mode, Temporary& temporary) {
#ifdef O_TMPFILE
    // Naming the file later goes through /proc; without it the file is named from the start.
    if (hooks().unnamedTemporary && access("/proc/self/fd", X_OK) == 0) {
        temporary.fd.reset(openat(directory, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
        if (temporary.fd.get() >= 0) return 0;
        // The file system or the kernel has no unnamed files.
        if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL) return errno;
    }
#endif
    for (int attempt = 0; attempt < 16; ++attempt) {
        temporary.name = temporaryName();
        temporary.fd.reset(openat(directory, temporary.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (temporary.fd.get() >= 0) return 0;
        temporary.name.clear();
        if (errno != EEXIST) return errno;
    }
    return EEXIST;
}

// Gives the unnamed file its short name, just before the rename.
int nameTemporary(int directory, Temporary& temporary) {
    char self[48];
    std::snprintf(self, sizeof self, "/proc/self/fd/%d", temporary.fd.get());
    for (int attempt = 0; attempt < 16; ++attempt) {
        const std::string name = temporaryName();
        if (linkat(AT_FDCWD, self, directory, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            temporary.name = name;
            return 0;
        }
        if (errno != EEXIST) return errno;
    }
    return EEXIST;
}

int writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const long count =
            hooks().write ? hooks().write(fd, bytes.data(), bytes.size()) : ::write(fd, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return errno;
        if (count == 0) return EIO;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

// Owner and group where this process may set them, as editors that save by rename do; then the mode, which
// a change of owner may have stripped of its set-id bits.
int takeOwnerAndMode(int fd, const struct stat& old) {
    if (fchown(fd, old.st_uid, old.st_gid) != 0) {
        if (errno != EPERM) return errno;
        if (fchown(fd, static_cast<uid_t>(-1), old.st_gid) != 0 && errno != EPERM) return errno;
    }
    return fchmod(fd, old.st_mode & 07777) == 0 ? 0 : errno;
}

int flushToDisk(int fd) {
    const int result = hooks().flush ? hooks().flush(fd) : fsync(fd);
    return result == 0 ? 0 : errno;
}

// Why what stands at the target may not be replaced, or "" when it may.
std::string refusalOf(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) return "it is a directory";
    if (!S_ISREG(status.st_mode)) return "it is not a regular file";
    if ((status.st_mode & S_IWUSR) == 0) return "the file is read-only";
    return {};
}

} // namespace

OperationResult replaceFileAtomically(const std::string& path, std::string_view bytes) {
    std::string target = path;
    if (const int error = followLinks(target)) return OperationResult::failure(reasonOf(error));
    const std::string name = nameOf(target);
    if (name.empty() || name == "." || name == "..") {
        struct stat status {};
        if (stat(target.c_str(), &status) != 0) return OperationResult::failure(reasonOf(errno));
        return OperationResult::failure(refusalOf(status));
    }

    Descriptor directory(open(directoryOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() < 0) return OperationResult::failure(reasonOf(errno));
    struct stat old {};
    const bool existed = fstatat(directory.get(), name.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0;
    if (!existed && errno != ENOENT) return OperationResult::failure(reasonOf(errno));
    if (existed) {
        if (const std::string refusal = refusalOf(old); !refusal.empty()) return OperationResult::failure(refusal);
        if (faccessat(directory.get(), name.c_str(), W_OK, AT_EACCESS) != 0)
            return OperationResult::failure(reasonOf(errno));
    }
    removeStaleTemporaries(directory.get());

    // Until it takes the old file's mode, the new one is readable by its owner alone. A file that did not exist
    // holds a password from its first save, so others get no right to it at all.
    Temporary temporary;
    int error = createTemporary(directory.get(), existed ? 0600 : 0640, temporary);
    if (error == 0) error = writeAll(temporary.fd.get(), bytes);
    if (error == 0 && existed) error = takeOwnerAndMode(temporary.fd.get(), old);
    if (error == 0) error = flushToDisk(temporary.fd.get());
    if (error == 0 && temporary.name.empty()) error = nameTemporary(directory.get(), temporary);
    if (error == 0 && renameat(directory.get(), temporary.name.c_str(), directory.get(), name.c_str()) != 0)
        error = errno;
    if (error != 0) {
        if (!temporary.name.empty()) unlinkat(directory.get(), temporary.name.c_str(), 0);
        return OperationResult::failure(reasonOf(error));
    }
    // Make the rename itself durable.
    fsync(directory.get());
    return OperationResult::success();
}

#endif

} // namespace ks
