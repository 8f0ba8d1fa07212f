#include "server/game_protocol.h"

#include <cstdlib>

namespace ks {

namespace {

constexpr std::string_view kHeader = "\xff\xff\xff\xff";
constexpr std::string_view kPrint = "print\n";

// A whole number at the front of `text`, which then begins behind it and the blanks that follow.
std::optional<long> takeNumber(std::string_view& text) {
    std::size_t end = text.starts_with('-') ? 1 : 0;
    const std::size_t digits = end;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9')
        ++end;
    if (end == digits || end > 18) return std::nullopt;
    const long number = std::strtol(std::string(text.substr(0, end)).c_str(), nullptr, 10);
    text.remove_prefix(end);
    if (text.empty() || text.front() != ' ') return std::nullopt;
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    return number;
}

std::optional<PlayerLine> parsePlayerLine(std::string_view line) {
    PlayerLine player;
    const std::optional<long> score = takeNumber(line);
    const std::optional<long> ping = score ? takeNumber(line) : std::nullopt;
    if (!ping) return std::nullopt;
    player.score = *score;
    player.ping = *ping;
    if (line.size() >= 2 && line.front() == '"' && line.back() == '"') line = line.substr(1, line.size() - 2);
    player.name = line;
    return player;
}

} // namespace

std::string statusRequest() { return std::string(kHeader) + "status\n"; }

std::string remoteCommandRequest(std::string_view password, std::string_view command) {
    const bool blank = password.find(' ') != std::string_view::npos;
    return std::string(kHeader) + "rcon " + (blank ? "\"" : "") + std::string(password) + (blank ? "\" " : " ") +
           std::string(command) + "\n";
}

std::string ServerStatus::value(std::string_view key) const {
    for (const auto& [name, given] : info)
        if (name == key) return given;
    return {};
}

std::optional<std::string> printedText(std::string_view datagram) {
    if (!datagram.starts_with(kHeader)) return std::nullopt;
    datagram.remove_prefix(kHeader.size());
    if (!datagram.starts_with(kPrint)) return std::nullopt;
    return std::string(datagram.substr(kPrint.size()));
}

std::optional<ServerStatus> parseStatusAnswer(std::string_view datagram) {
    const std::optional<std::string> text = printedText(datagram);
    if (!text) return std::nullopt;
    ServerStatus status;
    std::string_view rest = *text;
    const std::size_t end = rest.find('\n');
    std::string_view info = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    // \key\value\key\value: a key without a value gets an empty one.
    if (info.starts_with('\\')) info.remove_prefix(1);
    while (!info.empty()) {
        const std::size_t keyEnd = info.find('\\');
        std::string key(info.substr(0, keyEnd));
        info = keyEnd == std::string_view::npos ? std::string_view() : info.substr(keyEnd + 1);
        const std::size_t valueEnd = info.find('\\');
        std::string value(info.substr(0, valueEnd));
        info = valueEnd == std::string_view::npos ? std::string_view() : info.substr(valueEnd + 1);
        status.info.emplace_back(std::move(key), std::move(value));
    }
    while (!rest.empty()) {
        const std::size_t lineEnd = rest.find('\n');
        if (const std::optional<PlayerLine> player = parsePlayerLine(rest.substr(0, lineEnd)))
            status.players.push_back(*player);
        rest = lineEnd == std::string_view::npos ? std::string_view() : rest.substr(lineEnd + 1);
    }
    return status;
}

} // namespace ks
