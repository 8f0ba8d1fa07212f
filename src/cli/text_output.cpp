#include "cli/text_output.h"

#include "config/record_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace ks::cli {

namespace {

// Above this many cells the changed middle of two files is shown as one run instead of line by line.
constexpr std::size_t kMostCompared = 4'000'000;

using Lines = std::vector<std::string_view>;

enum class Edit : std::uint8_t { Same, Removed, Added };

// The edits that turn `a` into `b`, by their longest common run of lines.
std::vector<Edit> editsBetween(const Lines& a, const Lines& b) {
    std::vector<Edit> edits;
    if (a.size() * b.size() > kMostCompared) {
        edits.assign(a.size(), Edit::Removed);
        edits.insert(edits.end(), b.size(), Edit::Added);
        return edits;
    }
    // common[i][j]: the longest common run of a[i..] and b[j..].
    const std::size_t width = b.size() + 1;
    std::vector<std::uint32_t> common((a.size() + 1) * width, 0);
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            common[i * width + j] = a[i] == b[j] ? common[(i + 1) * width + j + 1] + 1
                                                 : std::max(common[(i + 1) * width + j], common[i * width + j + 1]);
    std::size_t i = 0, j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            edits.push_back(Edit::Same);
            ++i, ++j;
        } else if (j == b.size() || (i < a.size() && common[(i + 1) * width + j] >= common[i * width + j + 1])) {
            edits.push_back(Edit::Removed);
            ++i;
        } else {
            edits.push_back(Edit::Added);
            ++j;
        }
    }
    return edits;
}

// The place of a run in a hunk header: its first line and its length, or the line before it when empty.
std::string range(std::size_t start, std::size_t count) {
    if (count == 1) return std::to_string(start + 1);
    return std::to_string(count == 0 ? start : start + 1) + "," + std::to_string(count);
}

} // namespace

namespace {

// The byte as the terminal may show it: as it is, or escaped.
void appendShown(std::string& shown, unsigned char byte) {
    if (byte == '\n' || (byte >= 0x20 && byte != 0x7f)) {
        shown += static_cast<char>(byte);
        return;
    }
    char escaped[8];
    const int length = byte == '\t' ? std::snprintf(escaped, sizeof escaped, "\\t")
                                    : std::snprintf(escaped, sizeof escaped, "\\x%02x", byte);
    shown.append(escaped, static_cast<std::size_t>(length));
}

} // namespace

int ControlEscapingBuffer::overflow(int c) {
    if (c == traits_type::eof()) return traits_type::not_eof(c);
    const char byte = static_cast<char>(c);
    return xsputn(&byte, 1) == 1 ? c : traits_type::eof();
}

std::streamsize ControlEscapingBuffer::xsputn(const char* text, std::streamsize count) {
    std::string shown;
    shown.reserve(static_cast<std::size_t>(count));
    for (std::streamsize i = 0; i < count; ++i)
        appendShown(shown, static_cast<unsigned char>(text[i]));
    const auto size = static_cast<std::streamsize>(shown.size());
    return target_->sputn(shown.data(), size) == size ? count : 0;
}

int ControlEscapingBuffer::sync() { return target_->pubsync(); }

std::string jsonString(std::string_view bytes) {
    std::string out = "\"";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (byte < 0x20 || byte > 0x7f) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
            out += escaped;
        } else {
            out += c;
        }
    }
    return out + '"';
}

std::string shellWord(std::string_view value) {
    if (!value.empty() && value.find_first_of(" \t'") == std::string_view::npos) return std::string(value);
    std::string out = "'";
    for (const char c : value)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

std::string unifiedDiff(std::string_view before, std::string_view after, std::string_view name) {
    const Lines a = fileLines(before), b = fileLines(after);
    // Only the middle between the lines both files begin and end with is compared line by line.
    std::size_t head = 0;
    while (head < a.size() && head < b.size() && a[head] == b[head])
        ++head;
    std::size_t tail = 0;
    while (tail < a.size() - head && tail < b.size() - head && a[a.size() - 1 - tail] == b[b.size() - 1 - tail])
        ++tail;
    const Lines middleA(a.begin() + head, a.end() - tail), middleB(b.begin() + head, b.end() - tail);
    const std::vector<Edit> edits = editsBetween(middleA, middleB);

    std::string out;
    std::size_t i = head, j = head;
    for (std::size_t e = 0; e < edits.size();) {
        if (edits[e] == Edit::Same) {
            ++i, ++j, ++e;
            continue;
        }
        std::string removed, added;
        const std::size_t firstA = i, firstB = j;
        for (; e < edits.size() && edits[e] != Edit::Same; ++e) {
            if (edits[e] == Edit::Removed)
                (removed += '-').append(a[i++]) += '\n';
            else
                (added += '+').append(b[j++]) += '\n';
        }
        out += "@@ -" + range(firstA, i - firstA) + " +" + range(firstB, j - firstB) + " @@\n" + removed + added;
    }
    if (out.empty()) return out;
    return "--- " + std::string(name) + "\n+++ " + std::string(name) + "\n" + out;
}

} // namespace ks::cli
