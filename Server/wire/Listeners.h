// Listeners: the sockets the server accepts connections on, created
// non-blocking: TCP on an address and port, and the local Unix socket
// (private to the server's user, a stale file from a crash replaced).
#ifndef ZAR_SERVER_WIRE_LISTENERS_H
#define ZAR_SERVER_WIRE_LISTENERS_H

#include <string>

namespace zarwire {

// Listens on address:port (port 0: any free one, returned in boundPort).
// Throws std::runtime_error naming the address and the system's reason.
int listenTcp(const std::string& address, int port, int& boundPort);

// Listens on the Unix socket path, mode 0600, its folder created private
// when missing. Throws std::runtime_error when the path is not a socket or
// another server answers on it.
int listenUnix(const std::string& path);

}  // namespace zarwire

#endif
