#include "Client/HttpClientConnection.h"

#include <cerrno>
#include <chrono>
#include <cstring>

#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <openssl/err.h>
#include <openssl/ssl.h>
#include <sys/stat.h>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Client/CIMClientException.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

using Clock = std::chrono::steady_clock;

int msLeft(Clock::time_point deadline)
{
    auto ms =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return ms < 0 ? 0 : int(ms);
}

bool eqNoCase(const std::string& a, const char* b)
{
    return strcasecmp(a.c_str(), b) == 0;
}

std::string trimmed(const std::string& s)
{
    size_t b = s.find_first_not_of(" \t\r");
    if (b == std::string::npos)
        return std::string();
    size_t e = s.find_last_not_of(" \t\r");
    return s.substr(b, e - b + 1);
}

// Waits for fd; 1 ready, 0 timed out, -1 error.
int waitFd(int fd, short ev, int timeoutMs)
{
    pollfd p{fd, ev, 0};
    for (;;) {
        int r = ::poll(&p, 1, timeoutMs);
        if (r < 0 && errno == EINTR)
            continue;
        if (r <= 0)
            return r;
        return 1;
    }
}

struct Timeout {};
struct Closed {};

}  // namespace

const std::string* HttpClientResponse::header(const char* name, bool inTrailers) const
{
    const auto& list = inTrailers ? trailers : headers;
    for (const auto& h : list)
        if (eqNoCase(h.first, name))
            return &h.second;
    return 0;
}

HttpClientConnection::HttpClientConnection(const std::string& host, unsigned port)
    : _host(host), _port(port), _endpoint(host + ":" + std::to_string(port))
{
}

HttpClientConnection::HttpClientConnection(const std::string& socketPath)
    : _host("localhost"), _path(socketPath), _endpoint(socketPath)
{
}

HttpClientConnection::~HttpClientConnection()
{
    close();
    if (_sslCtx)
        SSL_CTX_free(static_cast<SSL_CTX*>(_sslCtx));
}

void HttpClientConnection::useTls(const std::string& trustStore, const std::string& certFile,
                                  const std::string& keyFile)
{
    _tls = true;
    _trustStore = trustStore;
    _certFile = certFile;
    _keyFile = keyFile;
}

void HttpClientConnection::_handshake(int timeoutMs)
{
    auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    String failure = String("Cannot connect to ") + _endpoint.c_str() + ". Connection failed.";
    if (!_sslCtx) {
        SSL_CTX* ctx = SSL_CTX_new(TLS_client_method());
        if (!ctx)
            throw SSLException("cannot create a TLS context");
        SSL_CTX_set_min_proto_version(ctx, TLS1_2_VERSION);
        SSL_CTX_set_mode(ctx, SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER | SSL_MODE_ENABLE_PARTIAL_WRITE);
        _sslCtx = ctx;
        if (!_trustStore.empty()) {
            struct stat st;
            bool dir = ::stat(_trustStore.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
            if (SSL_CTX_load_verify_locations(ctx, dir ? 0 : _trustStore.c_str(),
                                              dir ? _trustStore.c_str() : 0) != 1)
                throw SSLException(String("cannot read the trust store ") + _trustStore.c_str());
            SSL_CTX_set_verify(ctx, SSL_VERIFY_PEER, 0);
        }
        if (!_certFile.empty() &&
            (SSL_CTX_use_certificate_chain_file(ctx, _certFile.c_str()) != 1 ||
             SSL_CTX_use_PrivateKey_file(ctx, _keyFile.c_str(), SSL_FILETYPE_PEM) != 1))
            throw SSLException(String("cannot read the client certificate ") + _certFile.c_str());
    }
    SSL* ssl = SSL_new(static_cast<SSL_CTX*>(_sslCtx));
    _ssl = ssl;
    SSL_set_fd(ssl, _fd);
    SSL_set_tlsext_host_name(ssl, _host.c_str());
    for (;;) {
        int r = SSL_connect(ssl);
        if (r == 1)
            return;
        int err = SSL_get_error(ssl, r);
        short ev = err == SSL_ERROR_WANT_READ ? POLLIN : err == SSL_ERROR_WANT_WRITE ? POLLOUT : 0;
        if (!ev) {
            unsigned long e = ERR_get_error();
            char buf[256] = "";
            if (e)
                ERR_error_string_n(e, buf, sizeof buf);
            ERR_clear_error();
            close();
            throw SSLException(String("TLS handshake with ") + _endpoint.c_str() +
                               " failed: " + buf);
        }
        if (waitFd(_fd, ev, msLeft(deadline)) != 1) {
            close();
            throw CannotConnectException(failure);
        }
    }
}

long HttpClientConnection::_read(char* buf, size_t n, bool& wantWrite)
{
    wantWrite = false;
    if (!_ssl) {
        ssize_t r = ::recv(_fd, buf, n, 0);
        if (r >= 0)
            return long(r);
        return (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) ? -1 : -2;
    }
    int r = SSL_read(static_cast<SSL*>(_ssl), buf, int(n));
    if (r > 0)
        return r;
    int err = SSL_get_error(static_cast<SSL*>(_ssl), r);
    if (err == SSL_ERROR_WANT_READ)
        return -1;
    if (err == SSL_ERROR_WANT_WRITE) {
        wantWrite = true;
        return -1;
    }
    ERR_clear_error();
    return err == SSL_ERROR_ZERO_RETURN || (err == SSL_ERROR_SYSCALL && r == 0) ? 0 : -2;
}

long HttpClientConnection::_write(const char* buf, size_t n, bool& wantWrite)
{
    wantWrite = true;
    if (!_ssl) {
        ssize_t w = ::send(_fd, buf, n, MSG_NOSIGNAL);
        if (w >= 0)
            return long(w);
        return (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) ? -1 : -2;
    }
    int w = SSL_write(static_cast<SSL*>(_ssl), buf, int(n));
    if (w > 0)
        return w;
    int err = SSL_get_error(static_cast<SSL*>(_ssl), w);
    if (err == SSL_ERROR_WANT_WRITE)
        return -1;
    if (err == SSL_ERROR_WANT_READ) {
        wantWrite = false;
        return -1;
    }
    ERR_clear_error();
    return -2;
}

void HttpClientConnection::close()
{
    if (_ssl) {
        SSL_shutdown(static_cast<SSL*>(_ssl));
        SSL_free(static_cast<SSL*>(_ssl));
        _ssl = 0;
    }
    if (_fd >= 0)
        ::close(_fd);
    _fd = -1;
    _in.clear();
}

void HttpClientConnection::open(int timeoutMs)
{
    close();
    String failure = String("Cannot connect to ") + _endpoint.c_str() + ". Connection failed.";
    auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    auto tryConnect = [&](int family, const sockaddr* addr, socklen_t len) -> bool {
        int fd = ::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        if (fd < 0)
            return false;
        int r = ::connect(fd, addr, len);
        if (r != 0 && errno == EINPROGRESS) {
            if (waitFd(fd, POLLOUT, msLeft(deadline)) == 1) {
                int err = 0;
                socklen_t el = sizeof err;
                getsockopt(fd, SOL_SOCKET, SO_ERROR, &err, &el);
                r = err == 0 ? 0 : -1;
            }
        }
        if (r != 0) {
            ::close(fd);
            return false;
        }
        if (family != AF_UNIX) {
            int one = 1;
            setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        }
        _fd = fd;
        return true;
    };
    if (!_path.empty()) {
        sockaddr_un a;
        std::memset(&a, 0, sizeof a);
        a.sun_family = AF_UNIX;
        if (_path.size() >= sizeof a.sun_path)
            throw CannotConnectException(failure);
        std::memcpy(a.sun_path, _path.c_str(), _path.size() + 1);
        if (!tryConnect(AF_UNIX, reinterpret_cast<sockaddr*>(&a), sizeof a))
            throw CannotConnectException(failure);
        return;
    }
    addrinfo hints;
    std::memset(&hints, 0, sizeof hints);
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* res = 0;
    if (getaddrinfo(_host.c_str(), std::to_string(_port).c_str(), &hints, &res) != 0)
        throw CannotConnectException(failure);
    for (addrinfo* ai = res; ai; ai = ai->ai_next)
        if (tryConnect(ai->ai_family, ai->ai_addr, ai->ai_addrlen))
            break;
    freeaddrinfo(res);
    if (_fd < 0)
        throw CannotConnectException(failure);
    if (_tls)
        _handshake(msLeft(deadline));
}

bool HttpClientConnection::exchange(const std::string& request, HttpClientResponse& resp,
                                    int timeoutMs, bool& nothingReceived)
{
    auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    nothingReceived = true;
    // Send.
    size_t off = 0;
    while (off < request.size()) {
        bool wantWrite;
        long w = _write(request.data() + off, request.size() - off, wantWrite);
        if (w > 0) {
            off += size_t(w);
            continue;
        }
        if (w == -1) {
            int r = waitFd(_fd, wantWrite ? POLLOUT : POLLIN, msLeft(deadline));
            if (r == 0)
                throw Timeout();
            if (r < 0)
                throw Closed();
            continue;
        }
        throw Closed();
    }
    // Receive helpers.
    char buf[65536];
    auto more = [&]() {
        for (;;) {
            bool wantWrite;
            long n = _read(buf, sizeof buf, wantWrite);
            if (n > 0) {
                _in.append(buf, size_t(n));
                nothingReceived = false;
                return;
            }
            if (n == 0 || n == -2)
                throw Closed();
            int r = waitFd(_fd, wantWrite ? POLLOUT : POLLIN, msLeft(deadline));
            if (r == 0)
                throw Timeout();
            if (r < 0)
                throw Closed();
        }
    };
    auto line = [&](std::string& out) {
        size_t nl;
        while ((nl = _in.find('\n')) == std::string::npos) {
            if (_in.size() > 65536)
                throw CIMClientMalformedHTTPException("response line too long");
            more();
        }
        out = _in.substr(0, nl);
        if (!out.empty() && out.back() == '\r')
            out.pop_back();
        _in.erase(0, nl + 1);
    };
    auto fields = [&](std::vector<std::pair<std::string, std::string>>& into) {
        std::string l;
        for (;;) {
            line(l);
            if (l.empty())
                return;
            size_t c = l.find(':');
            if (c == std::string::npos)
                throw CIMClientMalformedHTTPException(String("malformed header line: ") +
                                                      l.c_str());
            into.emplace_back(l.substr(0, c), trimmed(l.substr(c + 1)));
        }
    };

    for (;;) {
        std::string status;
        line(status);
        if (status.compare(0, 5, "HTTP/") != 0 || status.size() < 12)
            throw CIMClientMalformedHTTPException(String("malformed status line: ") +
                                                  status.c_str());
        resp = HttpClientResponse();
        resp.status = std::atoi(status.c_str() + 9);
        resp.reason = status.size() > 13 ? status.substr(13) : std::string();
        fields(resp.headers);
        if (resp.status >= 100 && resp.status < 200)
            continue;
        break;
    }
    bool closeAfter = false;
    if (const std::string* c = resp.header("Connection"))
        closeAfter = strcasestr(c->c_str(), "close") != 0;
    const std::string* te = resp.header("Transfer-Encoding");
    const std::string* cl = resp.header("Content-Length");
    if (te && strcasestr(te->c_str(), "chunked")) {
        std::string l;
        for (;;) {
            line(l);
            size_t n = std::strtoul(l.c_str(), 0, 16);
            if (n == 0) {
                fields(resp.trailers);
                break;
            }
            while (_in.size() < n + 2)
                more();
            resp.body.append(_in, 0, n);
            _in.erase(0, n + 2);
        }
    } else if (cl) {
        size_t n = std::strtoull(cl->c_str(), 0, 10);
        while (_in.size() < n)
            more();
        resp.body.assign(_in, 0, n);
        _in.erase(0, n);
    } else {
        try {
            for (;;)
                more();
        } catch (Closed&) {
        }
        resp.body.swap(_in);
        closeAfter = true;
    }
    return !closeAfter;
}

HttpClientResponse HttpClientConnection::roundTrip(const std::string& head, const std::string& body,
                                                   int timeoutMs)
{
    std::string request = head + "\r\n" + body;
    for (int attempt = 0; attempt < 2; attempt++) {
        bool fresh = _fd < 0;
        if (fresh)
            open(timeoutMs);
        HttpClientResponse resp;
        bool nothing = true;
        try {
            bool keep = exchange(request, resp, timeoutMs, nothing);
            if (!keep)
                close();
            return resp;
        } catch (Timeout&) {
            close();
            throw ConnectionTimeoutException();
        } catch (Closed&) {
            close();
            // A kept-alive connection the server had closed: once more.
            if (!fresh && nothing)
                continue;
            throw CannotConnectException(String("Cannot connect to ") + _endpoint.c_str() +
                                         ". Connection failed.");
        } catch (...) {
            close();
            throw;
        }
    }
    throw CannotConnectException(String("Cannot connect to ") + _endpoint.c_str() +
                                 ". Connection failed.");
}

std::string clientUriEncode(const std::string& in)
{
    static const char* hex = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : in) {
        if (isalnum(c) || c == '-' || c == '_' || c == '.' || c == '~' || c == '/')
            out += char(c);
        else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

std::string clientUriDecode(const std::string& in)
{
    std::string out;
    for (size_t i = 0; i < in.size(); i++) {
        if (in[i] == '%' && i + 2 < in.size() && isxdigit((unsigned char)in[i + 1]) &&
            isxdigit((unsigned char)in[i + 2])) {
            out += char(std::strtol(in.substr(i + 1, 2).c_str(), 0, 16));
            i += 2;
        } else {
            out += in[i];
        }
    }
    return out;
}

std::string clientBase64(const std::string& in)
{
    static const char* t = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    unsigned val = 0;
    int bits = -6;
    for (unsigned char c : in) {
        val = (val << 8) + c;
        bits += 8;
        while (bits >= 0) {
            out += t[(val >> bits) & 0x3F];
            bits -= 6;
        }
    }
    if (bits > -6)
        out += t[((val << 8) >> (bits + 8)) & 0x3F];
    while (out.size() % 4)
        out += '=';
    return out;
}

PEGASUS_NAMESPACE_END
