#include "support/local_port.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <stdexcept>

sockaddr_in localAddress(int port)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

int freeLocalPort()
{
    const int end = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = localAddress(0);
    socklen_t size = sizeof address;
    const bool bound = bind(end, reinterpret_cast<sockaddr *>(&address), size) == 0 &&
                       getsockname(end, reinterpret_cast<sockaddr *>(&address), &size) == 0;
    close(end);
    if (!bound)
        throw std::runtime_error("no port is free");
    return ntohs(address.sin_port);
}

bool acceptsAtLocalPort(int port)
{
    const int end = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = localAddress(port);
    const bool connected = connect(end, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    close(end);
    return connected;
}
