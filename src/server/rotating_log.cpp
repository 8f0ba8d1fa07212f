#include "server/rotating_log.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace ks {

RotatingLog::RotatingLog(std::string path, std::uintmax_t limit, int kept)
    : path_(std::move(path)), limit_(limit), kept_(kept) {}

std::optional<std::string> RotatingLog::open() {
    std::error_code ec;
    if (fs::exists(path_, ec) && !fs::is_regular_file(path_, ec))
        return "the log file " + path_ + " is not a regular file";
    out_.open(path_, std::ios::binary | std::ios::app);
    if (!out_) return "cannot open the log file " + path_ + ": " + std::strerror(errno);
    size_ = fs::file_size(path_, ec);
    if (ec) size_ = 0;
    return std::nullopt;
}

void RotatingLog::write(std::string_view bytes) {
    if (size_ >= limit_) rotate();
    out_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out_.flush();
    size_ += bytes.size();
}

void RotatingLog::rotate() {
    out_.close();
    std::error_code ec;
    const auto numbered = [&](int number) { return path_ + "." + std::to_string(number); };
    fs::remove(numbered(kept_), ec);
    for (int number = kept_ - 1; number >= 1; --number)
        fs::rename(numbered(number), numbered(number + 1), ec);
    if (kept_ > 0)
        fs::rename(path_, numbered(1), ec);
    else
        fs::remove(path_, ec);
    out_.clear();
    out_.open(path_, std::ios::binary | std::ios::trunc);
    size_ = 0;
}

} // namespace ks
