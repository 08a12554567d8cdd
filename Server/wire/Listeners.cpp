#include "Listeners.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace zarwire {

namespace {

std::string sysError(const std::string& what)
{
    return what + ": " + std::strerror(errno);
}

}  // namespace

int listenTcp(const std::string& address, int port, int& boundPort)
{
    addrinfo hints;
    std::memset(&hints, 0, sizeof hints);
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
    addrinfo* res = nullptr;
    std::string where = address + ":" + std::to_string(port);
    int rc = getaddrinfo(address.empty() ? nullptr : address.c_str(), std::to_string(port).c_str(),
                         &hints, &res);
    if (rc != 0)
        throw std::runtime_error("cannot listen on " + where + ": " + gai_strerror(rc));
    int fd =
        ::socket(res->ai_family, res->ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, res->ai_protocol);
    if (fd < 0) {
        freeaddrinfo(res);
        throw std::runtime_error(sysError("cannot listen on " + where));
    }
    int one = 1;
    setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    if (::bind(fd, res->ai_addr, res->ai_addrlen) != 0 || ::listen(fd, 512) != 0) {
        std::string msg = sysError("cannot listen on " + where);
        freeaddrinfo(res);
        ::close(fd);
        throw std::runtime_error(msg);
    }
    freeaddrinfo(res);
    sockaddr_storage ss;
    socklen_t len = sizeof ss;
    getsockname(fd, reinterpret_cast<sockaddr*>(&ss), &len);
    boundPort = ss.ss_family == AF_INET6 ? ntohs(reinterpret_cast<sockaddr_in6&>(ss).sin6_port)
                                         : ntohs(reinterpret_cast<sockaddr_in&>(ss).sin_port);
    return fd;
}

int listenUnix(const std::string& path)
{
    sockaddr_un addr;
    std::memset(&addr, 0, sizeof addr);
    addr.sun_family = AF_UNIX;
    if (path.size() >= sizeof addr.sun_path)
        throw std::runtime_error("local socket path too long: " + path);
    std::memcpy(addr.sun_path, path.c_str(), path.size() + 1);

    // The folder is created private when missing.
    size_t slash = path.rfind('/');
    if (slash != std::string::npos && slash > 0)
        ::mkdir(path.substr(0, slash).c_str(), 0700);

    struct stat st;
    if (::lstat(path.c_str(), &st) == 0) {
        if (!S_ISSOCK(st.st_mode))
            throw std::runtime_error("local socket path exists and is not a socket: " + path);
        // A live server answers on it; a stale file from a crash does not.
        int probe = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        bool live =
            probe >= 0 && ::connect(probe, reinterpret_cast<sockaddr*>(&addr), sizeof addr) == 0;
        if (probe >= 0)
            ::close(probe);
        if (live)
            throw std::runtime_error("local socket " + path + " is in use by another server");
        ::unlink(path.c_str());
    }
    int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (fd < 0)
        throw std::runtime_error(sysError("cannot create local socket " + path));
    mode_t old = ::umask(0177);
    int rc = ::bind(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr);
    ::umask(old);
    if (rc != 0 || ::chmod(path.c_str(), 0600) != 0 || ::listen(fd, 128) != 0) {
        std::string msg = sysError("cannot listen on local socket " + path);
        ::close(fd);
        throw std::runtime_error(msg);
    }
    return fd;
}

}  // namespace zarwire
