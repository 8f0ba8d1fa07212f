#pragma once

#include "server/layer.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace ks {

// UDP as the game speaks it: one datagram out, the answers back, over POSIX sockets or Winsock.

struct DatagramAnswers {
    std::vector<std::string> datagrams; // in the order they came; none when nothing came in time
    std::string error;                  // the host cannot be found or no socket could be had; then nothing was sent
};

// Sends `request` to HOST:PORT and collects what comes back from there: waits up to `firstWait` for the first
// answer, then up to `restWait` after each answer for another. A host that refuses the datagram (nothing listens
// on the port) ends the wait at once.
DatagramAnswers exchangeDatagrams(const std::string& host, int port, std::string_view request,
                                  std::chrono::milliseconds firstWait, std::chrono::milliseconds restWait);

// Whether any process of this machine holds the UDP port, on any of its addresses: a socket of ours cannot bind
// it on the wildcard address of IPv4 or of IPv6.
bool udpPortTaken(int port);

} // namespace ks
