#include "config/record_reader.h"

#include <cerrno>
#include <new>
#include <stdexcept>
#include <system_error>
#include <vector>

#ifdef _WIN32
#include "frame/windows_paths.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace ks {

namespace {
constexpr std::size_t kBufferSize = 1 << 16;

bool endsLine(char c) { return c == '\r' || c == '\n'; }

std::string reasonOf(int error) { return std::generic_category().message(error); }

} // namespace

#ifdef _WIN32
int openRegularFile(const std::string& path, std::string& reason) {
    const std::wstring name = systemPath(path);
    // NUL, CON and their kind: opening one could wait for a keyboard or read without end.
    if (isDevicePath(name)) {
        reason = "it is not a regular file";
        return -1;
    }
    // Backup semantics let a directory open too, so that it can be named as one.
    const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        reason = reasonOfWindowsError(GetLastError());
        return -1;
    }
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileType(file) != FILE_TYPE_DISK)
        reason = "it is not a regular file";
    else if (!GetFileInformationByHandle(file, &information))
        reason = reasonOfWindowsError(GetLastError());
    else if (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        reason = "it is a directory";
    const int fd = reason.empty() ? _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_RDONLY | _O_BINARY) : -1;
    if (fd >= 0) return fd;
    if (reason.empty()) reason = reasonOf(errno);
    CloseHandle(file);
    return -1;
}
#else
int openRegularFile(const std::string& path, std::string& reason) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        reason = reasonOf(errno);
        return -1;
    }
    struct stat status {};
    if (fstat(fd, &status) != 0)
        reason = reasonOf(errno);
    else if (S_ISDIR(status.st_mode))
        reason = "it is a directory";
    else if (!S_ISREG(status.st_mode))
        reason = "it is not a regular file";
    else if (fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK) != 0)
        reason = reasonOf(errno);
    if (reason.empty()) return fd;
    ::close(fd);
    return -1;
}
#endif

FileBytes readAllOf(int fd) {
    FileBytes result;
    try {
        char chunk[kBufferSize];
        for (;;) {
            const auto count = ::read(fd, chunk, sizeof chunk);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) {
                result.reason = reasonOf(errno);
                return result;
            }
            if (count == 0) break;
            result.bytes.append(chunk, static_cast<std::size_t>(count));
        }
    } catch (const std::bad_alloc&) {
        std::string().swap(result.bytes);
        result.reason = "out of memory";
        return result;
    }
    result.ok = true;
    return result;
}

FileBytes readRegularFile(const std::string& path) {
    FileBytes result;
    const int fd = openRegularFile(path, result.reason);
    if (fd < 0) return result;
    result = readAllOf(fd);
    ::close(fd);
    return result;
}

bool RecordReader::open(const std::string& path) {
    pos_ = len_ = offset_ = 0;
    failed_ = false;
    reason_.clear();
    const int fd = openRegularFile(path, reason_);
    if (fd < 0) return fail(reason_);
    file_.reset(fdopen(fd, "rb"));
    if (!file_) {
        const int error = errno;
        ::close(fd);
        return fail(reasonOf(error));
    }
    buffer_.resize(kBufferSize);
    return true;
}

void RecordReader::openBytes(std::string_view bytes) {
    file_.reset();
    failed_ = false;
    reason_.clear();
    buffer_.assign(bytes.begin(), bytes.end());
    pos_ = offset_ = 0;
    len_ = buffer_.size();
}

bool RecordReader::fail(std::string reason) {
    failed_ = true;
    reason_ = std::move(reason);
    return false;
}

bool RecordReader::fill() {
    offset_ += len_;
    pos_ = len_ = 0;
    if (!file_ || failed_) return false;
    errno = 0;
    len_ = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
    if (len_ == 0 && std::ferror(file_.get())) return fail(reasonOf(errno != 0 ? errno : EIO));
    return len_ > 0;
}

bool RecordReader::atEnd() { return !available(); }

void RecordReader::skipLineEnd() {
    // At a CR or an LF: a CR takes an LF behind it along.
    const char first = buffer_[pos_++];
    if (first == '\r' && available() && buffer_[pos_] == '\n') ++pos_;
}

void RecordReader::skipToDelimiter() {
    while (available()) {
        const char c = buffer_[pos_];
        if (c == ',') {
            ++pos_;
            return;
        }
        if (endsLine(c)) {
            skipLineEnd();
            return;
        }
        ++pos_;
    }
}

bool RecordReader::read(std::string& record) {
    try {
        return readRecord(record);
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    // The record was too large to hold: give its memory back and end the reading.
    std::string().swap(record);
    return fail("out of memory");
}

bool RecordReader::readRecord(std::string& record) {
    record.clear();
    while (available() && buffer_[pos_] == ' ')
        ++pos_;
    recordStart_ = offset_ + pos_;
    if (!available()) return !failed_;

    if (buffer_[pos_] == '"') {
        ++pos_;
        recordStart_ = offset_ + pos_;
        while (available()) {
            const std::size_t start = pos_;
            while (pos_ < len_ && buffer_[pos_] != '"' && !endsLine(buffer_[pos_]))
                ++pos_;
            record.append(buffer_.data() + start, pos_ - start);
            if (pos_ == len_) continue;
            if (buffer_[pos_] == '"') {
                ++pos_;
                skipToDelimiter();
            } else {
                skipLineEnd();
            }
            break;
        }
        return !failed_;
    }

    while (available()) {
        const std::size_t start = pos_;
        while (pos_ < len_ && buffer_[pos_] != ',' && !endsLine(buffer_[pos_]))
            ++pos_;
        record.append(buffer_.data() + start, pos_ - start);
        if (pos_ == len_) continue;
        if (buffer_[pos_] == ',')
            ++pos_;
        else
            skipLineEnd();
        break;
    }
    return !failed_;
}

std::vector<std::string_view> fileLines(std::string_view bytes) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' && bytes[i] != '\n') continue;
        lines.push_back(bytes.substr(start, i - start));
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (start < bytes.size()) lines.push_back(bytes.substr(start));
    return lines;
}

std::vector<std::string_view> lineRecords(std::string_view line) {
    // The reader's own cutting, over the line's bytes and a line end: each record is a run of those bytes.
    RecordReader reader;
    reader.openBytes(std::string(line) + '\n');
    std::vector<std::string_view> records;
    std::string record;
    do {
        reader.read(record);
        records.push_back(line.substr(reader.recordStart(), record.size()));
    } while (!reader.atEnd());
    return records;
}

} // namespace ks
