#include "server/game_protocol.h"

#include <gtest/gtest.h>

using namespace ks;

namespace {

const std::string kHeader = "\xff\xff\xff\xff";

// A status answer as one line of text: the info pairs, then each player as SCORE/PING/NAME.
std::string shown(const std::optional<ServerStatus>& status) {
    if (!status) return "none";
    std::string text;
    for (const auto& [key, value] : status->info)
        text += key + "=" + value + ";";
    for (const PlayerLine& player : status->players)
        text += " " + std::to_string(player.score) + "/" + std::to_string(player.ping) + "/" + player.name;
    return text;
}

} // namespace

TEST(GameProtocol, RequestsAreOneLineBehindTheHeader) {
    EXPECT_EQ(statusRequest(), kHeader + "status\n");
    EXPECT_EQ(remoteCommandRequest("sesame", "kick 3"), kHeader + "rcon sesame kick 3\n");
    EXPECT_EQ(remoteCommandRequest("open sesame", "status"), kHeader + "rcon \"open sesame\" status\n");
}

// What servers answer, and what no server should, is taken apart without a crash.
TEST(GameProtocol, AStatusAnswerGivesTheInfoPairsAndThePlayers) {
    const std::pair<std::string, std::string> rows[] = {
        {"print\n\\hostname\\My Server\\mapname\\q2dm1\\maxclients\\8\n12 40 \"Gorgon\"\n-3 999 \"Bob \\\"B\\\" S\"\n",
         "hostname=My Server;mapname=q2dm1;maxclients=8; 12/40/Gorgon -3/999/Bob \\\"B\\\" S"},
        {"print\n\\hostname\\Empty\n", "hostname=Empty;"},
        {"print\n", ""},
        {"print\n\\a\\\\b\n", "a=;b=;"},                                         // an empty value, a key without one
        {"print\n\\a\\1\nnot a player\n7 x \"y\"\n5 6 bare\n", "a=1; 5/6/bare"}, // player lines that are none
        {"print\n\\a\\1", "a=1;"},                                               // no line end at all
        {"ack", "none"},
    };
    for (const auto& [answer, expected] : rows)
        EXPECT_EQ(shown(parseStatusAnswer(kHeader + answer)), expected) << answer;
    EXPECT_EQ(shown(parseStatusAnswer("print\n\\a\\1\n")), "none"); // no header
    EXPECT_EQ(printedText(kHeader + "print\nBad rcon_password.\n"), std::string(kBadPasswordAnswer));
}
