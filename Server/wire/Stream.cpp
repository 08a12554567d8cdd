#include "Stream.h"

#include <cerrno>
#include <chrono>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <openssl/err.h>
#include <openssl/ssl.h>

namespace zarwire {

namespace {

using Clock = std::chrono::steady_clock;

int remainingMs(Clock::time_point deadline)
{
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return left < 0 ? 0 : static_cast<int>(left);
}

int pollFd(int fd, short events, int timeoutMs)
{
    struct pollfd p;
    p.fd = fd;
    p.events = events;
    p.revents = 0;
    for (;;) {
        int r = ::poll(&p, 1, timeoutMs);
        if (r < 0 && errno == EINTR)
            continue;
        if (r < 0)
            return -1;
        if (r == 0)
            return 0;
        if (p.revents & (events | POLLHUP | POLLERR))
            return (p.revents & events) ? 1 : -1;
        return -1;
    }
}

void setNonBlocking(int fd)
{
    int fl = fcntl(fd, F_GETFL, 0);
    fcntl(fd, F_SETFL, fl | O_NONBLOCK);
}

class PlainStream : public Stream {
public:
    explicit PlainStream(int fd) : _fd(fd) { setNonBlocking(fd); }
    ~PlainStream() override { ::close(_fd); }

    int waitReadable(int timeoutMs) override { return pollFd(_fd, POLLIN, timeoutMs); }

    long read(char* buf, size_t n, int timeoutMs) override
    {
        auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
        for (;;) {
            ssize_t r = ::recv(_fd, buf, n, 0);
            if (r >= 0)
                return static_cast<long>(r);
            if (errno == EINTR)
                continue;
            if (errno != EAGAIN && errno != EWOULDBLOCK)
                return -1;
            if (pollFd(_fd, POLLIN, remainingMs(deadline)) <= 0)
                return -1;
        }
    }

    bool writeAll(const char* data, size_t n, int timeoutMs) override
    {
        auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
        while (n) {
            ssize_t w = ::send(_fd, data, n, MSG_NOSIGNAL);
            if (w > 0) {
                data += w;
                n -= static_cast<size_t>(w);
                continue;
            }
            if (w < 0 && errno == EINTR)
                continue;
            if (w < 0 && errno != EAGAIN && errno != EWOULDBLOCK)
                return false;
            if (pollFd(_fd, POLLOUT, remainingMs(deadline)) <= 0)
                return false;
        }
        return true;
    }

    int fd() const override { return _fd; }

private:
    int _fd;
};

class TlsStream : public Stream {
public:
    TlsStream(int fd, SSL* ssl) : _fd(fd), _ssl(ssl) {}
    ~TlsStream() override
    {
        SSL_shutdown(_ssl);
        SSL_free(_ssl);
        ::close(_fd);
    }

    int waitReadable(int timeoutMs) override
    {
        if (SSL_pending(_ssl) > 0)
            return 1;
        return pollFd(_fd, POLLIN, timeoutMs);
    }

    long read(char* buf, size_t n, int timeoutMs) override
    {
        auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
        for (;;) {
            int r = SSL_read(_ssl, buf, static_cast<int>(n > 1 << 20 ? 1 << 20 : n));
            if (r > 0)
                return r;
            int err = SSL_get_error(_ssl, r);
            if (err == SSL_ERROR_ZERO_RETURN)
                return 0;
            short ev;
            if (err == SSL_ERROR_WANT_READ) ev = POLLIN;
            else if (err == SSL_ERROR_WANT_WRITE) ev = POLLOUT;
            else {
                ERR_clear_error();
                return err == SSL_ERROR_SYSCALL && r == 0 ? 0 : -1;
            }
            if (pollFd(_fd, ev, remainingMs(deadline)) <= 0)
                return -1;
        }
    }

    bool writeAll(const char* data, size_t n, int timeoutMs) override
    {
        auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
        while (n) {
            int w = SSL_write(_ssl, data, static_cast<int>(n > 1 << 20 ? 1 << 20 : n));
            if (w > 0) {
                data += w;
                n -= static_cast<size_t>(w);
                continue;
            }
            int err = SSL_get_error(_ssl, w);
            short ev;
            if (err == SSL_ERROR_WANT_READ) ev = POLLIN;
            else if (err == SSL_ERROR_WANT_WRITE) ev = POLLOUT;
            else {
                ERR_clear_error();
                return false;
            }
            if (pollFd(_fd, ev, remainingMs(deadline)) <= 0)
                return false;
        }
        return true;
    }

    int fd() const override { return _fd; }

private:
    int _fd;
    SSL* _ssl;
};

std::string sslErrors()
{
    std::string s;
    unsigned long e;
    while ((e = ERR_get_error()) != 0) {
        char buf[256];
        ERR_error_string_n(e, buf, sizeof buf);
        if (!s.empty()) s += "; ";
        s += buf;
    }
    return s.empty() ? "unknown TLS error" : s;
}

}  // namespace

Stream::~Stream() = default;

std::unique_ptr<Stream> makePlainStream(int fd)
{
    return std::unique_ptr<Stream>(new PlainStream(fd));
}

TlsContext::TlsContext(const std::string& certFile, const std::string& keyFile)
{
    _ctx = SSL_CTX_new(TLS_server_method());
    if (!_ctx)
        throw std::runtime_error("cannot create TLS context: " + sslErrors());
    SSL_CTX_set_min_proto_version(_ctx, TLS1_2_VERSION);
    SSL_CTX_set_mode(_ctx, SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER | SSL_MODE_ENABLE_PARTIAL_WRITE);
    if (SSL_CTX_use_certificate_chain_file(_ctx, certFile.c_str()) != 1) {
        std::string why = sslErrors();
        SSL_CTX_free(_ctx);
        throw std::runtime_error("cannot load TLS certificate " + certFile + ": " + why);
    }
    if (SSL_CTX_use_PrivateKey_file(_ctx, keyFile.c_str(), SSL_FILETYPE_PEM) != 1 ||
        SSL_CTX_check_private_key(_ctx) != 1) {
        std::string why = sslErrors();
        SSL_CTX_free(_ctx);
        throw std::runtime_error("cannot load TLS key " + keyFile + ": " + why);
    }
}

TlsContext::~TlsContext()
{
    SSL_CTX_free(_ctx);
}

std::unique_ptr<Stream> TlsContext::accept(int fd, int timeoutMs, std::string& reason)
{
    setNonBlocking(fd);
    SSL* ssl = SSL_new(_ctx);
    if (!ssl) {
        reason = sslErrors();
        ::close(fd);
        return nullptr;
    }
    SSL_set_fd(ssl, fd);
    auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        int r = SSL_accept(ssl);
        if (r == 1)
            return std::unique_ptr<Stream>(new TlsStream(fd, ssl));
        int err = SSL_get_error(ssl, r);
        short ev = 0;
        if (err == SSL_ERROR_WANT_READ) ev = POLLIN;
        else if (err == SSL_ERROR_WANT_WRITE) ev = POLLOUT;
        if (!ev || pollFd(fd, ev, remainingMs(deadline)) <= 0) {
            reason = ev ? "TLS handshake timed out" : "TLS handshake failed: " + sslErrors();
            ERR_clear_error();
            SSL_free(ssl);
            ::close(fd);
            return nullptr;
        }
    }
}

}  // namespace zarwire
