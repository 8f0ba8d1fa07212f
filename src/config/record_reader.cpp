#include "config/record_reader.h"

namespace ks {

namespace {
constexpr std::size_t kBufferSize = 1 << 16;

bool endsLine(char c) { return c == '\r' || c == '\n'; }
} // namespace

bool RecordReader::open(const std::string& path) {
    file_.reset(std::fopen(path.c_str(), "rb"));
    buffer_.resize(kBufferSize);
    pos_ = len_ = 0;
    failed_ = false;
    return file_ != nullptr;
}

bool RecordReader::fill() {
    pos_ = len_ = 0;
    if (!file_ || failed_) return false;
    len_ = std::fread(buffer_.data(), 1, buffer_.size(), file_.get());
    if (len_ == 0 && std::ferror(file_.get())) failed_ = true;
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
