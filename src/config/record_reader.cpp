#include "config/record_reader.h"

#include <cerrno>
#include <new>
#include <stdexcept>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace ks {

namespace {
constexpr std::size_t kBufferSize = 1 << 16;

bool endsLine(char c) { return c == '\r' || c == '\n'; }

std::string reasonOf(int error) { return std::generic_category().message(error); }

#ifndef _WIN32
// Opens a regular file for reading. Non-blocking at first, so that a FIFO without a writer cannot hold the
// open up; the file type is known before a byte is read.
std::FILE* openRegularFile(const std::string& path, std::string& reason) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        reason = reasonOf(errno);
        return nullptr;
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
    std::FILE* file = reason.empty() ? fdopen(fd, "rb") : nullptr;
    if (!file) {
        if (reason.empty()) reason = reasonOf(errno);
        ::close(fd);
    }
    return file;
}
#endif
} // namespace

bool RecordReader::open(const std::string& path) {
    pos_ = len_ = 0;
    failed_ = false;
    reason_.clear();
#ifdef _WIN32
    file_.reset(std::fopen(path.c_str(), "rb"));
    if (!file_) return fail(reasonOf(errno));
#else
    file_.reset(openRegularFile(path, reason_));
    if (!file_) return fail(reason_);
#endif
    buffer_.resize(kBufferSize);
    return true;
}

bool RecordReader::fail(std::string reason) {
    failed_ = true;
    reason_ = std::move(reason);
    return false;
}

bool RecordReader::fill() {
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
    if (!available()) return !failed_;

    if (buffer_[pos_] == '"') {
        ++pos_;
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

} // namespace ks
