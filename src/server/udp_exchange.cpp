#include "server/udp_exchange.h"

#ifndef _WIN32
#include <arpa/inet.h>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace ks {

#ifdef _WIN32

DatagramAnswers exchangeDatagrams(const std::string&, int, std::string_view, std::chrono::milliseconds,
                                  std::chrono::milliseconds) {
    return {{}, "talking to the server is not supported on this system"};
}

bool udpPortTaken(int) { return false; }

#else

namespace {

// A socket that closes with the object.
struct Socket {
    int fd = -1;
    explicit Socket(int descriptor) : fd(descriptor) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() {
        if (fd >= 0) close(fd);
    }
};

// Whether a datagram can be read within the wait; false when the wait ran out or the host refused.
bool awaitDatagram(int fd, std::chrono::milliseconds wait) {
    const auto deadline = std::chrono::steady_clock::now() + wait;
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() < 0) return false;
        pollfd entry{fd, POLLIN, 0};
        const int ready = poll(&entry, 1, static_cast<int>(left.count()));
        if (ready > 0) return true;
        if (ready == 0 || errno != EINTR) return false;
    }
}

bool bindTaken(int family, int port) {
    const Socket probe(socket(family, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (probe.fd < 0) return false; // no such family on this machine: nobody holds the port there
    sockaddr_storage address{};
    socklen_t length = 0;
    if (family == AF_INET) {
        auto* v4 = reinterpret_cast<sockaddr_in*>(&address);
        v4->sin_family = AF_INET;
        v4->sin_port = htons(static_cast<std::uint16_t>(port));
        v4->sin_addr.s_addr = htonl(INADDR_ANY);
        length = sizeof *v4;
    } else {
        auto* v6 = reinterpret_cast<sockaddr_in6*>(&address);
        v6->sin6_family = AF_INET6;
        v6->sin6_port = htons(static_cast<std::uint16_t>(port));
        v6->sin6_addr = in6addr_any;
        length = sizeof *v6;
        const int only = 1; // IPv4 has its own test
        setsockopt(probe.fd, IPPROTO_IPV6, IPV6_V6ONLY, &only, sizeof only);
    }
    return bind(probe.fd, reinterpret_cast<const sockaddr*>(&address), length) != 0 && errno == EADDRINUSE;
}

} // namespace

DatagramAnswers exchangeDatagrams(const std::string& host, int port, std::string_view request,
                                  std::chrono::milliseconds firstWait, std::chrono::milliseconds restWait) {
    DatagramAnswers answers;
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    const std::string service = std::to_string(port);
    if (const int error = getaddrinfo(host.c_str(), service.c_str(), &hints, &found); error != 0) {
        answers.error = "cannot find the host " + host + ": " + gai_strerror(error);
        return answers;
    }
    // A connected socket takes datagrams from that address and port alone, and learns of a refusal.
    int fd = -1;
    for (const addrinfo* candidate = found; candidate && fd < 0; candidate = candidate->ai_next) {
        fd = socket(candidate->ai_family, candidate->ai_socktype | SOCK_CLOEXEC, candidate->ai_protocol);
        if (fd >= 0 && connect(fd, candidate->ai_addr, candidate->ai_addrlen) != 0) {
            close(fd);
            fd = -1;
        }
    }
    const int error = errno;
    freeaddrinfo(found);
    const Socket connected(fd);
    if (fd < 0) {
        answers.error = "cannot reach " + host + ": " + std::string(std::strerror(error));
        return answers;
    }
    if (send(fd, request.data(), request.size(), 0) < 0) return answers; // refused at once: nothing listens
    std::string buffer(65536, '\0');
    for (std::chrono::milliseconds wait = firstWait; awaitDatagram(fd, wait); wait = restWait) {
        const ssize_t count = recv(fd, buffer.data(), buffer.size(), 0);
        if (count < 0) break; // refused: nothing listens there
        answers.datagrams.emplace_back(buffer.data(), static_cast<std::size_t>(count));
    }
    return answers;
}

bool udpPortTaken(int port) { return bindTaken(AF_INET, port) || bindTaken(AF_INET6, port); }

#endif

} // namespace ks
