#pragma once

#include "server/layer.h"

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace ks {

// A log file rotated by size. Once FILE has reached the limit, the next write first moves FILE.1 ... FILE.N-1 one
// number up (FILE.N, the oldest, goes), FILE becomes FILE.1 and a new FILE is begun. A write is never split, so a
// file may pass the limit by the last write.
class RotatingLog {
public:
    RotatingLog(std::string path, std::uintmax_t limit, int kept);

    // Opens FILE to append to; an error text when it cannot be.
    std::optional<std::string> open();
    void write(std::string_view bytes);

private:
    void rotate();

    std::string path_;
    std::uintmax_t limit_;
    int kept_;
    std::uintmax_t size_ = 0;
    std::ofstream out_;
};

// The log of kscfg launch --watch --log FILE: rotated at 10 MiB, with 5 older files kept.
inline constexpr std::uintmax_t kWatchLogLimit = 10u << 20;
inline constexpr int kWatchLogsKept = 5;

} // namespace ks
