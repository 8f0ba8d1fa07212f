#pragma once

#include "frame/layer.h"

#include <cstdint>

namespace ks {

// A background colour as red, green and blue.
struct Colour {
    std::uint8_t red = 255;
    std::uint8_t green = 255;
    std::uint8_t blue = 255;
    friend bool operator==(const Colour&, const Colour&) = default;
};

inline constexpr Colour kWhite{255, 255, 255};
// Marks a field whose value is not set yet, and the flag totals.
inline constexpr Colour kPaleYellow{255, 255, 192};
// A field that cannot be used at the moment (the IP field while "Use Default" is on).
inline constexpr Colour kDisabledGrey{224, 224, 224};

} // namespace ks
