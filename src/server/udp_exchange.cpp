#include "server/udp_exchange.h"

#include <cstdint>
#include <system_error>

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <cerrno>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace ks {

namespace {

// What differs between Winsock and POSIX sockets, so that the exchange below is written once.
#ifdef _WIN32
using SocketHandle = SOCKET;
constexpr SocketHandle kNoSocket = INVALID_SOCKET;
constexpr int kCloseOnExec = 0; // a started program inherits no socket unless asked
void closeSocket(SocketHandle fd) { closesocket(fd); }
int lastSocketError() { return WSAGetLastError(); }
bool addressInUse(int error) { return error == WSAEADDRINUSE; }
bool interrupted(int) { return false; }
int pollSocket(pollfd& entry, int milliseconds) { return WSAPoll(&entry, 1, milliseconds); }
// Winsock is started for each use and ended with it.
struct SocketLibrary {
    bool ready = false;
    SocketLibrary() {
        WSADATA data{};
        ready = WSAStartup(MAKEWORD(2, 2), &data) == 0;
    }
    SocketLibrary(const SocketLibrary&) = delete;
    SocketLibrary& operator=(const SocketLibrary&) = delete;
    ~SocketLibrary() {
        if (ready) WSACleanup();
    }
};
#else
using SocketHandle = int;
constexpr SocketHandle kNoSocket = -1;
constexpr int kCloseOnExec = SOCK_CLOEXEC;
void closeSocket(SocketHandle fd) { close(fd); }
int lastSocketError() { return errno; }
bool addressInUse(int error) { return error == EADDRINUSE; }
bool interrupted(int error) { return error == EINTR; }
int pollSocket(pollfd& entry, int milliseconds) { return poll(&entry, 1, milliseconds); }
struct SocketLibrary {
    bool ready = true;
};
#endif

// The system's words for a socket's failure.
std::string socketErrorText(int error) { return std::system_category().message(error); }

// A socket that closes with the object.
struct Socket {
    SocketHandle fd = kNoSocket;
    explicit Socket(SocketHandle descriptor) : fd(descriptor) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() {
        if (fd != kNoSocket) closeSocket(fd);
    }
};

// Whether a datagram can be read within the wait; false when the wait ran out or the host refused.
bool awaitDatagram(SocketHandle fd, std::chrono::milliseconds wait) {
    const auto deadline = std::chrono::steady_clock::now() + wait;
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() < 0) return false;
        pollfd entry{};
        entry.fd = fd;
        entry.events = POLLIN;
        const int ready = pollSocket(entry, static_cast<int>(left.count()));
        if (ready > 0) return true;
        if (ready == 0 || !interrupted(lastSocketError())) return false;
    }
}

bool bindTaken(int family, int port) {
    const Socket probe(socket(family, SOCK_DGRAM | kCloseOnExec, 0));
    if (probe.fd == kNoSocket) return false; // no such family on this machine: nobody holds the port there
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
        setsockopt(probe.fd, IPPROTO_IPV6, IPV6_V6ONLY, reinterpret_cast<const char*>(&only), sizeof only);
    }
    return bind(probe.fd, reinterpret_cast<const sockaddr*>(&address), length) != 0 && addressInUse(lastSocketError());
}

} // namespace

DatagramAnswers exchangeDatagrams(const std::string& host, int port, std::string_view request,
                                  std::chrono::milliseconds firstWait, std::chrono::milliseconds restWait) {
    DatagramAnswers answers;
    const SocketLibrary library;
    if (!library.ready) {
        answers.error = "cannot reach " + host + ": " + socketErrorText(lastSocketError());
        return answers;
    }
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
    SocketHandle fd = kNoSocket;
    for (const addrinfo* candidate = found; candidate && fd == kNoSocket; candidate = candidate->ai_next) {
        fd = socket(candidate->ai_family, candidate->ai_socktype | kCloseOnExec, candidate->ai_protocol);
        if (fd != kNoSocket && connect(fd, candidate->ai_addr, static_cast<socklen_t>(candidate->ai_addrlen)) != 0) {
            closeSocket(fd);
            fd = kNoSocket;
        }
    }
    const int error = lastSocketError();
    freeaddrinfo(found);
    const Socket connected(fd);
    if (fd == kNoSocket) {
        answers.error = "cannot reach " + host + ": " + socketErrorText(error);
        return answers;
    }
    if (send(fd, request.data(), static_cast<int>(request.size()), 0) < 0) return answers; // refused: nothing listens
    std::string buffer(65536, '\0');
    for (std::chrono::milliseconds wait = firstWait; awaitDatagram(fd, wait); wait = restWait) {
        const auto count = recv(fd, buffer.data(), static_cast<int>(buffer.size()), 0);
        if (count < 0) break; // refused: nothing listens there
        answers.datagrams.emplace_back(buffer.data(), static_cast<std::size_t>(count));
    }
    return answers;
}

bool udpPortTaken(int port) {
    const SocketLibrary library;
    return library.ready && (bindTaken(AF_INET, port) || bindTaken(AF_INET6, port));
}

} // namespace ks
