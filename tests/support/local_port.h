// Ports of this machine, for servers that a test starts.
#pragma once

#include <netinet/in.h>

// The address of that port; any, where it is 0.
sockaddr_in localAddress(int port);
// One that nothing listens at. Throws std::runtime_error where there is none.
int freeLocalPort();

// Whether a server accepts connections there.
bool acceptsAtLocalPort(int port);
