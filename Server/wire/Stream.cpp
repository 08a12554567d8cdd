#include "Stream.h"

#include <cerrno>
#include <stdexcept>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <openssl/err.h>
#include <openssl/ssl.h>

namespace zarwire {

namespace {

void setNonBlocking(int fd)
{
    int fl = fcntl(fd, F_GETFL, 0);
    fcntl(fd, F_SETFL, fl | O_NONBLOCK);
}

IoResult result(IoResult::Kind k, size_t n = 0)
{
    IoResult r;
    r.kind = k;
    r.n = n;
    return r;
}

void lingerZero(int fd)
{
    struct linger l;
    l.l_onoff = 1;
    l.l_linger = 0;
    setsockopt(fd, SOL_SOCKET, SO_LINGER, &l, sizeof l);
}

class PlainStream : public Stream {
public:
    explicit PlainStream(int fd) : _fd(fd) { setNonBlocking(fd); }
    ~PlainStream() override { ::close(_fd); }

    IoResult handshake() override { return result(IoResult::Done); }

    IoResult read(char* buf, size_t n) override
    {
        for (;;) {
            ssize_t r = ::recv(_fd, buf, n, 0);
            if (r > 0)
                return result(IoResult::Done, static_cast<size_t>(r));
            if (r == 0)
                return result(IoResult::Closed);
            if (errno == EINTR)
                continue;
            return result(errno == EAGAIN || errno == EWOULDBLOCK ? IoResult::WantRead
                                                                  : IoResult::Failed);
        }
    }

    IoResult write(const char* data, size_t n) override
    {
        for (;;) {
            ssize_t w = ::send(_fd, data, n, MSG_NOSIGNAL);
            if (w >= 0)
                return result(IoResult::Done, static_cast<size_t>(w));
            if (errno == EINTR)
                continue;
            return result(errno == EAGAIN || errno == EWOULDBLOCK ? IoResult::WantWrite
                                                                  : IoResult::Failed);
        }
    }

    int fd() const override { return _fd; }
    void resetOnClose() override { lingerZero(_fd); }

private:
    int _fd;
};

class TlsStream : public Stream {
public:
    TlsStream(int fd, SSL* ssl) : _fd(fd), _ssl(ssl) {}
    ~TlsStream() override
    {
        if (_established)
            SSL_shutdown(_ssl);  // non-blocking: sends close_notify if it can
        SSL_free(_ssl);
        ::close(_fd);
    }

    IoResult handshake() override
    {
        int r = SSL_accept(_ssl);
        if (r == 1) {
            _established = true;
            return result(IoResult::Done);
        }
        return failure(r);
    }

    IoResult read(char* buf, size_t n) override
    {
        int r = SSL_read(_ssl, buf, static_cast<int>(n > 1 << 20 ? 1 << 20 : n));
        if (r > 0)
            return result(IoResult::Done, static_cast<size_t>(r));
        return failure(r);
    }

    IoResult write(const char* data, size_t n) override
    {
        int w = SSL_write(_ssl, data, static_cast<int>(n > 1 << 20 ? 1 << 20 : n));
        if (w > 0)
            return result(IoResult::Done, static_cast<size_t>(w));
        return failure(w);
    }

    bool buffered() const override { return SSL_pending(_ssl) > 0; }
    int fd() const override { return _fd; }
    void resetOnClose() override
    {
        _established = false;  // no close_notify
        lingerZero(_fd);
    }

private:
    IoResult failure(int r)
    {
        int err = SSL_get_error(_ssl, r);
        if (err == SSL_ERROR_WANT_READ)
            return result(IoResult::WantRead);
        if (err == SSL_ERROR_WANT_WRITE)
            return result(IoResult::WantWrite);
        ERR_clear_error();
        if (err == SSL_ERROR_ZERO_RETURN || (err == SSL_ERROR_SYSCALL && r == 0))
            return result(IoResult::Closed);
        return result(IoResult::Failed);
    }

    int _fd;
    SSL* _ssl;
    bool _established = false;
};

std::string sslErrors()
{
    std::string s;
    unsigned long e;
    while ((e = ERR_get_error()) != 0) {
        char buf[256];
        ERR_error_string_n(e, buf, sizeof buf);
        if (!s.empty())
            s += "; ";
        s += buf;
    }
    return s.empty() ? "unknown TLS error" : s;
}

}  // namespace

Stream::~Stream() = default;

void Stream::resetOnClose() {}

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
    // Writes are retried from a buffer that may have moved or grown.
    SSL_CTX_set_mode(_ctx, SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER | SSL_MODE_ENABLE_PARTIAL_WRITE |
                               SSL_MODE_RELEASE_BUFFERS);
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

std::unique_ptr<Stream> TlsContext::wrap(int fd, std::string& reason)
{
    setNonBlocking(fd);
    SSL* ssl = SSL_new(_ctx);
    if (!ssl) {
        reason = sslErrors();
        ::close(fd);
        return nullptr;
    }
    SSL_set_fd(ssl, fd);
    return std::unique_ptr<Stream>(new TlsStream(fd, ssl));
}

}  // namespace zarwire
