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

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Client/CIMClientException.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

using Clock = std::chrono::steady_clock;

int msLeft(Clock::time_point deadline)
{
    auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
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
}

void HttpClientConnection::close()
{
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
}

bool HttpClientConnection::exchange(const std::string& request, HttpClientResponse& resp,
                                    int timeoutMs, bool& nothingReceived)
{
    auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    nothingReceived = true;
    // Send.
    size_t off = 0;
    while (off < request.size()) {
        ssize_t w = ::send(_fd, request.data() + off, request.size() - off, MSG_NOSIGNAL);
        if (w > 0) {
            off += size_t(w);
            continue;
        }
        if (w < 0 && errno == EINTR)
            continue;
        if (w < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            int r = waitFd(_fd, POLLOUT, msLeft(deadline));
            if (r == 0) throw Timeout();
            if (r < 0) throw Closed();
            continue;
        }
        throw Closed();
    }
    // Receive helpers.
    char buf[65536];
    auto more = [&]() {
        for (;;) {
            ssize_t n = ::recv(_fd, buf, sizeof buf, 0);
            if (n > 0) {
                _in.append(buf, size_t(n));
                nothingReceived = false;
                return;
            }
            if (n == 0)
                throw Closed();
            if (errno == EINTR)
                continue;
            if (errno != EAGAIN && errno != EWOULDBLOCK)
                throw Closed();
            int r = waitFd(_fd, POLLIN, msLeft(deadline));
            if (r == 0) throw Timeout();
            if (r < 0) throw Closed();
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
        if (!out.empty() && out.back() == '\r') out.pop_back();
        _in.erase(0, nl + 1);
    };
    auto fields = [&](std::vector<std::pair<std::string, std::string> >& into) {
        std::string l;
        for (;;) {
            line(l);
            if (l.empty())
                return;
            size_t c = l.find(':');
            if (c == std::string::npos)
                throw CIMClientMalformedHTTPException(String("malformed header line: ") + l.c_str());
            into.emplace_back(l.substr(0, c), trimmed(l.substr(c + 1)));
        }
    };

    for (;;) {
        std::string status;
        line(status);
        if (status.compare(0, 5, "HTTP/") != 0 || status.size() < 12)
            throw CIMClientMalformedHTTPException(String("malformed status line: ") + status.c_str());
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
            for (;;) more();
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
