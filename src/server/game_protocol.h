#pragma once

#include "server/layer.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ks {

// The game's connectionless packets: single UDP datagrams that begin with four bytes FF FF FF FF. A status query
// ("status\n") is answered with "print\n", the server's info as \key\value pairs, a line end and a line for each
// player, SCORE PING "NAME". A remote console command ("rcon PASSWORD COMMAND\n") is answered with "print\n" and
// the console's output, which may come in more than one datagram; a wrong password gets "Bad rcon_password.\n".

std::string statusRequest();

// The request that runs COMMAND on the server's console. A password with a blank goes between double quotes, as
// the server's console reads its arguments.
std::string remoteCommandRequest(std::string_view password, std::string_view command);

// What a wrong password gets instead of the console's output.
inline constexpr std::string_view kBadPasswordAnswer = "Bad rcon_password.\n";

struct PlayerLine {
    long score = 0;
    long ping = 0;
    std::string name;
};

struct ServerStatus {
    std::vector<std::pair<std::string, std::string>> info; // the server's info in its order
    std::vector<PlayerLine> players;
    // The value of an info key; empty when the server does not give it.
    std::string value(std::string_view key) const;
};

// The text behind "print\n" of an answer; nothing when the datagram is no such answer.
std::optional<std::string> printedText(std::string_view datagram);

// The status answer taken apart; nothing when the datagram is no print answer. A player line that is not
// SCORE PING "NAME" is passed over.
std::optional<ServerStatus> parseStatusAnswer(std::string_view datagram);

} // namespace ks
