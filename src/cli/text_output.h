#pragma once

#include <string>
#include <string_view>

namespace ks::cli {

// A JSON string of file bytes: quote, backslash and control characters escaped, and every byte above 127
// taken as the Latin-1 character it shows as in the windows, written \u00XX, so the result is plain ASCII.
std::string jsonString(std::string_view bytes);

} // namespace ks::cli
