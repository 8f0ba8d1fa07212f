#pragma once

#include "cli/layer.h"

#include <streambuf>
#include <string>
#include <string_view>

namespace ks::cli {

// Passes text on to another stream buffer with its control bytes shown, so that a file's bytes cannot steer the
// terminal: a tab as \t, every other byte below 32 and DEL as \xHH. A line feed passes, as the end of a line of
// output; no value of a setting holds one.
class ControlEscapingBuffer : public std::streambuf {
public:
    explicit ControlEscapingBuffer(std::streambuf* target) : target_(target) {}

protected:
    int overflow(int c) override;
    // A run of text goes on in one piece, so that a line written at once reaches the stream in one write and does
    // not mix with what another process writes to the same stream.
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    std::streambuf* target_;
};

// A JSON string of file bytes: quote, backslash and control characters escaped, and every byte above 127
// taken as the Latin-1 character it shows as in the windows, written \u00XX, so the result is plain ASCII.
std::string jsonString(std::string_view bytes);

// A value as one word for the shell: as it is when that is unambiguous, else between single quotes (the
// empty value, and one with a blank, a tab or a single quote in it).
std::string shellWord(std::string_view value);

// The lines that differ between two files, as a unified diff without context: a "---" and a "+++" line
// naming them, then for each run of changed lines its "@@ -LINE,COUNT +LINE,COUNT @@" and the old lines
// with "-", the new ones with "+". Lines are compared without their line ends. Empty when nothing differs.
std::string unifiedDiff(std::string_view before, std::string_view after, std::string_view name);

} // namespace ks::cli
