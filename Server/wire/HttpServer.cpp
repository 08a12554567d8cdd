#include "HttpServer.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace zarwire {

namespace {

using Clock = std::chrono::steady_clock;

long msSince(Clock::time_point t)
{
    return static_cast<long>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - t).count());
}

std::string sysError(const std::string& what)
{
    return what + ": " + std::strerror(errno);
}

std::string peerAddress(const sockaddr_storage& ss)
{
    char buf[INET6_ADDRSTRLEN] = "";
    if (ss.ss_family == AF_INET) {
        inet_ntop(AF_INET, &reinterpret_cast<const sockaddr_in&>(ss).sin_addr, buf, sizeof buf);
    } else if (ss.ss_family == AF_INET6) {
        const sockaddr_in6& s6 = reinterpret_cast<const sockaddr_in6&>(ss);
        if (IN6_IS_ADDR_V4MAPPED(&s6.sin6_addr))
            inet_ntop(AF_INET, &s6.sin6_addr.s6_addr[12], buf, sizeof buf);
        else
            inet_ntop(AF_INET6, &s6.sin6_addr, buf, sizeof buf);
    }
    return buf;
}

const char* reasonPhrase(int status)
{
    switch (status) {
    case 100: return "Continue";
    case 200: return "OK";
    case 400: return "Bad Request";
    case 401: return "Unauthorized";
    case 403: return "Forbidden";
    case 408: return "Request Timeout";
    case 411: return "Length Required";
    case 413: return "Request Entity Too Large";
    case 431: return "Request Header Fields Too Large";
    case 500: return "Internal Server Error";
    case 501: return "Not Implemented";
    case 503: return "Service Unavailable";
    case 505: return "HTTP Version Not Supported";
    }
    return "Error";
}

}  // namespace

RequestHandler::~RequestHandler() = default;
void RequestHandler::rejected(const PeerInfo&, int, const std::string&) {}

// ---------------------------------------------------------------------------
// HttpExchange

HttpExchange::HttpExchange(Stream& stream, const HttpRequest& request, const PeerInfo& peer,
                           const HttpLimits& limits, bool keepAlive)
    : _stream(stream), _request(request), _peer(peer), _limits(limits), _keepAlive(keepAlive)
{
}

std::string HttpExchange::head(int status, const std::string& reason,
                               const std::vector<std::pair<std::string, std::string> >& headers)
{
    _status = status;
    std::string h = "HTTP/1.1 " + std::to_string(status) + " " +
                    (reason.empty() ? std::string(reasonPhrase(status)) : reason) + "\r\n";
    for (const auto& kv : headers)
        h += kv.first + ": " + kv.second + "\r\n";
    if (!_keepAlive)
        h += "Connection: close\r\n";
    return h;
}

bool HttpExchange::send(int status, const std::string& reason,
                        const std::vector<std::pair<std::string, std::string> >& headers,
                        const std::string& body, bool addLength)
{
    std::string h = head(status, reason, headers);
    if (addLength)
        h += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    h += "\r\n";
    _responded = true;
    // One write for small responses, so that they go out in one segment.
    if (body.size() < 65536) {
        h += body;
        _failed = !_stream.writeAll(h.data(), h.size(), _limits.writeTimeoutMs);
    } else {
        _failed = !_stream.writeAll(h.data(), h.size(), _limits.writeTimeoutMs) ||
                  !_stream.writeAll(body.data(), body.size(), _limits.writeTimeoutMs);
    }
    if (_failed)
        _keepAlive = false;
    return !_failed;
}

bool HttpExchange::beginChunked(int status, const std::string& reason,
                                const std::vector<std::pair<std::string, std::string> >& headers)
{
    std::string h = head(status, reason, headers);
    h += "Transfer-Encoding: chunked\r\n\r\n";
    _responded = true;
    _failed = !_stream.writeAll(h.data(), h.size(), _limits.writeTimeoutMs);
    if (_failed)
        _keepAlive = false;
    return !_failed;
}

bool HttpExchange::sendChunk(const char* data, size_t n)
{
    if (_failed)
        return false;
    if (n == 0)
        return true;
    char size[32];
    int len = snprintf(size, sizeof size, "%zx\r\n", n);
    std::string chunk;
    chunk.reserve(n + 40);
    chunk.append(size, static_cast<size_t>(len));
    chunk.append(data, n);
    chunk += "\r\n";
    _failed = !_stream.writeAll(chunk.data(), chunk.size(), _limits.writeTimeoutMs);
    if (_failed)
        _keepAlive = false;
    return !_failed;
}

bool HttpExchange::endChunked(const std::vector<std::pair<std::string, std::string> >& trailers)
{
    if (_failed)
        return false;
    std::string t = "0\r\n";
    for (const auto& kv : trailers)
        t += kv.first + ": " + kv.second + "\r\n";
    t += "\r\n";
    _failed = !_stream.writeAll(t.data(), t.size(), _limits.writeTimeoutMs);
    if (_failed)
        _keepAlive = false;
    return !_failed;
}

// ---------------------------------------------------------------------------
// HttpServer

HttpServer::HttpServer(const ServerConfig& config, RequestHandler& handler)
    : _config(config), _handler(handler)
{
}

HttpServer::~HttpServer()
{
    stop();
}

int HttpServer::listenTcp(int port, int& boundPort)
{
    addrinfo hints;
    std::memset(&hints, 0, sizeof hints);
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_PASSIVE | AI_NUMERICSERV;
    addrinfo* res = nullptr;
    std::string where = _config.listenAddress + ":" + std::to_string(port);
    int rc = getaddrinfo(_config.listenAddress.empty() ? nullptr : _config.listenAddress.c_str(),
                         std::to_string(port).c_str(), &hints, &res);
    if (rc != 0)
        throw std::runtime_error("cannot listen on " + where + ": " + gai_strerror(rc));
    int fd = ::socket(res->ai_family, res->ai_socktype | SOCK_CLOEXEC, res->ai_protocol);
    if (fd < 0) {
        freeaddrinfo(res);
        throw std::runtime_error(sysError("cannot listen on " + where));
    }
    int one = 1;
    setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    if (::bind(fd, res->ai_addr, res->ai_addrlen) != 0 || ::listen(fd, 128) != 0) {
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

int HttpServer::listenUnix(const std::string& path)
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
        bool live = probe >= 0 &&
                    ::connect(probe, reinterpret_cast<sockaddr*>(&addr), sizeof addr) == 0;
        if (probe >= 0) ::close(probe);
        if (live)
            throw std::runtime_error("local socket " + path + " is in use by another server");
        ::unlink(path.c_str());
    }
    int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        throw std::runtime_error(sysError("cannot create local socket " + path));
    mode_t old = ::umask(0177);
    int rc = ::bind(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr);
    ::umask(old);
    if (rc != 0 || ::chmod(path.c_str(), 0600) != 0 || ::listen(fd, 64) != 0) {
        std::string msg = sysError("cannot listen on local socket " + path);
        ::close(fd);
        throw std::runtime_error(msg);
    }
    return fd;
}

void HttpServer::start()
{
    if (_started)
        return;
    if (_config.httpsPort >= 0) {
        if (_config.tlsCert.empty() || _config.tlsKey.empty())
            throw std::runtime_error("HTTPS needs both a certificate and a key file");
        _tls.reset(new TlsContext(_config.tlsCert, _config.tlsKey));
    }
    try {
        if (_config.httpPort >= 0)
            _httpFd = listenTcp(_config.httpPort, _httpPort);
        if (_config.httpsPort >= 0)
            _httpsFd = listenTcp(_config.httpsPort, _httpsPort);
        if (!_config.socketPath.empty())
            _unixFd = listenUnix(_config.socketPath);
        if (::pipe2(_wakePipe, O_CLOEXEC) != 0)
            throw std::runtime_error(sysError("cannot create pipe"));
    } catch (...) {
        for (int fd : {_httpFd, _httpsFd, _unixFd})
            if (fd >= 0) ::close(fd);
        _httpFd = _httpsFd = _unixFd = -1;
        throw;
    }
    _started = true;
    size_t n = _config.workers ? _config.workers : 1;
    for (size_t i = 0; i < n; i++)
        _workers.emplace_back(&HttpServer::workerLoop, this);
    _acceptThread = std::thread(&HttpServer::acceptLoop, this);
}

void HttpServer::stop()
{
    if (!_started)
        return;
    _started = false;
    _stopping = true;
    char c = 'x';
    if (::write(_wakePipe[1], &c, 1) < 0) {
        // The accept loop also polls with a timeout; nothing else to do.
    }
    if (_acceptThread.joinable())
        _acceptThread.join();
    {
        std::lock_guard<std::mutex> lock(_mu);
        for (const Pending& p : _queue)
            ::close(p.fd);
        _queue.clear();
    }
    _cv.notify_all();
    for (auto& t : _workers)
        t.join();
    _workers.clear();
    for (int fd : {_httpFd, _httpsFd, _unixFd})
        if (fd >= 0) ::close(fd);
    if (_unixFd >= 0)
        ::unlink(_config.socketPath.c_str());
    _httpFd = _httpsFd = _unixFd = -1;
    ::close(_wakePipe[0]);
    ::close(_wakePipe[1]);
    _wakePipe[0] = _wakePipe[1] = -1;
}

void HttpServer::acceptLoop()
{
    while (!_stopping) {
        pollfd fds[4];
        int kinds[4];
        int n = 0;
        fds[n].fd = _wakePipe[0]; fds[n].events = POLLIN; kinds[n++] = -1;
        if (_httpFd >= 0) { fds[n].fd = _httpFd; fds[n].events = POLLIN; kinds[n++] = 0; }
        if (_httpsFd >= 0) { fds[n].fd = _httpsFd; fds[n].events = POLLIN; kinds[n++] = 1; }
        if (_unixFd >= 0) { fds[n].fd = _unixFd; fds[n].events = POLLIN; kinds[n++] = 2; }
        int r = ::poll(fds, static_cast<nfds_t>(n), 1000);
        if (r <= 0)
            continue;
        for (int i = 0; i < n; i++) {
            if (!(fds[i].revents & POLLIN) || kinds[i] < 0)
                continue;
            sockaddr_storage ss;
            socklen_t len = sizeof ss;
            int fd = ::accept4(fds[i].fd, reinterpret_cast<sockaddr*>(&ss), &len, SOCK_CLOEXEC);
            if (fd < 0)
                continue;
            Pending p{fd, kinds[i], kinds[i] == 2 ? std::string("local") : peerAddress(ss)};
            if (kinds[i] != 2) {
                int one = 1;
                setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
            }
            std::unique_lock<std::mutex> lock(_mu);
            if (_queue.size() >= _config.maxPending) {
                lock.unlock();
                static const char busy[] =
                    "HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\n"
                    "Connection: close\r\n\r\n";
                if (kinds[i] != 1 && ::send(fd, busy, sizeof busy - 1, MSG_NOSIGNAL) < 0) {
                    // The client is gone already.
                }
                ::close(fd);
                _handler.rejected(PeerInfo{p.address, kinds[i] == 1, kinds[i] == 2}, 503,
                                  "too many connections waiting");
                continue;
            }
            _queue.push_back(p);
            lock.unlock();
            _cv.notify_one();
        }
    }
}

void HttpServer::workerLoop()
{
    for (;;) {
        Pending p;
        {
            std::unique_lock<std::mutex> lock(_mu);
            _cv.wait(lock, [this] { return _stopping || !_queue.empty(); });
            if (_queue.empty())
                return;  // stopping
            p = _queue.front();
            _queue.pop_front();
        }
        serve(p);
    }
}

void HttpServer::serve(Pending p)
{
    PeerInfo peer;
    peer.address = p.address;
    peer.tls = p.kind == 1;
    peer.local = p.kind == 2;
    if (peer.local) {
        ucred cred;
        socklen_t len = sizeof cred;
        if (getsockopt(p.fd, SOL_SOCKET, SO_PEERCRED, &cred, &len) != 0 || cred.uid != geteuid()) {
            ::close(p.fd);
            _handler.rejected(peer, 403, "local connection from another user refused");
            return;
        }
    }
    std::unique_ptr<Stream> s;
    if (peer.tls) {
        std::string why;
        s = _tls->accept(p.fd, _config.limits.requestTimeoutMs, why);
        if (!s) {
            _handler.rejected(peer, 400, why);
            return;
        }
    } else {
        s = makePlainStream(p.fd);
    }
    serveStream(*s, peer);
}

void HttpServer::serveStream(Stream& s, PeerInfo& peer)
{
    const HttpLimits& lim = _config.limits;
    std::string in;
    std::string authMemo;
    char buf[16384];
    auto reject = [&](int status, const std::string& why) {
        HttpRequest dummy;
        HttpExchange ex(s, dummy, peer, lim, false);
        ex.send(status, "", {{"PGErrorDetail", uriEncode(why)}}, std::string());
        _handler.rejected(peer, status, why);
    };

    while (!_stopping) {
        // Wait for the start of the next request: idle connections give way
        // when others wait for a worker, and close on stop or idle timeout.
        auto idleStart = Clock::now();
        while (in.empty()) {
            if (_stopping)
                return;
            long idle = msSince(idleStart);
            if (idle >= lim.idleTimeoutMs)
                return;
            bool othersWaiting;
            {
                std::lock_guard<std::mutex> lock(_mu);
                othersWaiting = !_queue.empty();
            }
            if (othersWaiting && idle >= 1000)
                return;
            int r = s.waitReadable(200);
            if (r < 0)
                return;
            if (r == 0)
                continue;
            long n = s.read(buf, sizeof buf, lim.requestTimeoutMs);
            if (n <= 0)
                return;
            in.append(buf, static_cast<size_t>(n));
        }

        // The head.
        auto reqStart = Clock::now();
        size_t headEnd, bodyStart;
        for (;;) {
            size_t a = in.find("\r\n\r\n");
            size_t b = in.find("\n\n");
            if (a != std::string::npos && (b == std::string::npos || a < b)) {
                headEnd = a; bodyStart = a + 4; break;
            }
            if (b != std::string::npos) {
                headEnd = b; bodyStart = b + 2; break;
            }
            if (in.size() > lim.maxHeadBytes) {
                reject(431, "request head larger than " + std::to_string(lim.maxHeadBytes) + " bytes");
                return;
            }
            long left = lim.requestTimeoutMs - msSince(reqStart);
            long n = left > 0 ? s.read(buf, sizeof buf, static_cast<int>(left)) : -1;
            if (n <= 0) {
                if (n < 0 && left <= 0)
                    reject(408, "request not received in time");
                return;
            }
            in.append(buf, static_cast<size_t>(n));
        }
        if (headEnd > lim.maxHeadBytes) {
            reject(431, "request head larger than " + std::to_string(lim.maxHeadBytes) + " bytes");
            return;
        }
        HttpRequest req;
        HeadParseResult hp = parseRequestHead(in.substr(0, headEnd), lim, req);
        if (!hp.ok) {
            reject(hp.status, hp.reason);
            return;
        }
        in.erase(0, bodyStart);

        // The body.
        BodyFraming fr = bodyFraming(req, lim);
        if (fr.kind == BodyFraming::Invalid) {
            reject(fr.status, fr.reason);
            return;
        }
        const std::string* expect = req.header("Expect");
        if (expect && equalsNoCase(trim(*expect), "100-continue") && fr.kind != BodyFraming::None &&
            in.empty() && req.versionMinor >= 1) {
            static const char cont[] = "HTTP/1.1 100 Continue\r\n\r\n";
            if (!s.writeAll(cont, sizeof cont - 1, lim.writeTimeoutMs))
                return;
        }
        if (fr.kind == BodyFraming::Length) {
            while (in.size() < fr.length) {
                long left = lim.requestTimeoutMs - msSince(reqStart);
                long n = left > 0 ? s.read(buf, sizeof buf, static_cast<int>(left)) : -1;
                if (n <= 0) {
                    if (n < 0)
                        reject(408, "request body not received in time");
                    return;
                }
                in.append(buf, static_cast<size_t>(n));
            }
            req.body.assign(in, 0, fr.length);
            in.erase(0, fr.length);
        } else if (fr.kind == BodyFraming::Chunked) {
            for (;;) {
                size_t pos = 0;
                std::string why;
                int r = decodeChunked(in, pos, lim.maxBodyBytes, req.body, why);
                if (r < 0) {
                    reject(why.find("larger") != std::string::npos ? 413 : 400, why);
                    return;
                }
                if (r > 0) {
                    in.erase(0, pos);
                    break;
                }
                req.body.clear();
                if (in.size() > lim.maxBodyBytes + lim.maxBodyBytes / 4 + 65536) {
                    reject(413, "request body too large");
                    return;
                }
                long left = lim.requestTimeoutMs - msSince(reqStart);
                long n = left > 0 ? s.read(buf, sizeof buf, static_cast<int>(left)) : -1;
                if (n <= 0) {
                    if (n < 0)
                        reject(408, "request body not received in time");
                    return;
                }
                in.append(buf, static_cast<size_t>(n));
            }
        }

        HttpExchange ex(s, req, peer, lim, req.keepAlive() && !_stopping);
        ex.authMemo = &authMemo;
        _active++;
        _handler.handle(ex);
        _active--;
        if (!ex.responded())
            ex.send(500, "", {}, std::string());
        if (!ex.keepAlive() || _stopping)
            return;
    }
}

}  // namespace zarwire
