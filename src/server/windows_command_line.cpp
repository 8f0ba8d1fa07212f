#include "server/windows_command_line.h"

namespace ks {

namespace {

void appendQuoted(std::string& line, const std::string& word) {
    if (!word.empty() && word.find_first_of(" \t\"") == std::string::npos) {
        line += word;
        return;
    }
    line += '"';
    std::size_t backslashes = 0;
    for (const char c : word) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        // Backslashes count as such only before a double quote: there each one is doubled and the quote escaped.
        line.append(c == '"' ? 2 * backslashes + 1 : backslashes, '\\');
        backslashes = 0;
        line += c;
    }
    line.append(2 * backslashes, '\\');
    line += '"';
}

} // namespace

std::string windowsCommandLine(const std::string& program, const std::vector<std::string>& arguments) {
    std::string line = program.find_first_of(" \t") == std::string::npos ? program : '"' + program + '"';
    for (const std::string& argument : arguments) {
        line += ' ';
        appendQuoted(line, argument);
    }
    return line;
}

} // namespace ks
