#pragma once

// A TCP listener on the loopback address that never answers: the kernel
// completes every connection, nobody reads from it or writes to it. A
// PostgreSQL client that connects here waits for the server's first word.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

class SilentServer {
public:
    SilentServer() {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* any = reinterpret_cast<sockaddr*>(&address);
        if (FSocket >= 0 && ::bind(FSocket, any, size) == 0 && ::listen(FSocket, 16) == 0 &&
            ::getsockname(FSocket, any, &size) == 0)
            FPort = ntohs(address.sin_port);
    }
    ~SilentServer() {
        if (FSocket >= 0)
            ::close(FSocket);
    }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    // 0 when no port could be had.
    int Port() const { return FPort; }

private:
    const int FSocket = ::socket(AF_INET, SOCK_STREAM, 0);
    int FPort = 0;
};
