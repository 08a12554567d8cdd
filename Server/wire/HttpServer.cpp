#include "HttpServer.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <deque>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Listeners.h"
#include "OutputQueue.h"
#include "WorkerPool.h"

namespace zarwire {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

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

// Where a connection stands.
enum class Phase {
    Handshake,  // TLS handshake
    Idle,       // between requests, nothing received
    Head,       // part of a head received
    Parked,     // head read; its address has too many requests in flight
    Checking,   // credentials being checked on a worker
    Delayed,    // a failed login's refusal waiting out its delay
    Body,       // admitted; body being read
    Running,    // on a worker, or its answer being written
    Closing     // last answer being written, then close
};

}  // namespace

// ---------------------------------------------------------------------------

struct Conn {
    uint64_t id = 0;
    PeerInfo peer;
    std::unique_ptr<Stream> io;
    Phase phase = Phase::Idle;
    Clock::time_point since = Clock::now();  // start of the current phase
    Clock::time_point wakeAt;                // Delayed: when to answer
    std::string in;
    size_t bodyStart = 0;       // raw body bytes counted from here in `in`
    size_t lastDecodeSize = 0;  // chunked body: size of `in` at the last attempt
    std::shared_ptr<HttpRequest> req;
    BodyFraming framing;
    std::string user;
    std::string memoCredential, memoUser;
    Admission refusal;  // Delayed: the answer to send
    std::shared_ptr<OutputQueue> out;
    bool slot = false;            // holds one of its address's in-flight places
    bool readWantsWrite = false;  // TLS read waits for writability
    bool writeWantsRead = false;  // TLS write waits for readability
    bool handshakeWantsWrite = false;
    bool closed = false;
    uint32_t events = 0;
};

class HttpServer::Loop {
public:
    Loop(const ServerConfig& config, RequestHandler& handler, TlsContext* tls, int httpFd,
         int httpsFd, int unixFd)
        : _config(config),
          _handler(handler),
          _tls(tls),
          _throttle(config.throttle),
          _pool(config.workers, config.maxQueued)
    {
        _listen[0] = httpFd;
        _listen[1] = httpsFd;
        _listen[2] = unixFd;
        _perAddressRequests = config.maxRequestsPerAddress
                                  ? config.maxRequestsPerAddress
                                  : std::max<size_t>(1, config.workers / 2);
        _maxConnections = config.maxConnections;
        rlimit rl;
        if (getrlimit(RLIMIT_NOFILE, &rl) == 0 && rl.rlim_cur != RLIM_INFINITY && rl.rlim_cur > 64)
            _maxConnections = std::min<size_t>(_maxConnections, rl.rlim_cur - 48);
        _epoll = epoll_create1(EPOLL_CLOEXEC);
        _wake = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        if (_epoll < 0 || _wake < 0)
            throw std::runtime_error(sysError("cannot create the event loop"));
        addFd(_wake, kWakeId, EPOLLIN);
        for (int k = 0; k < 3; k++)
            if (_listen[k] >= 0)
                addFd(_listen[k], kListenId + static_cast<uint64_t>(k), EPOLLIN);
        _thread = std::thread(&Loop::run, this);
    }

    ~Loop()
    {
        stop();
        if (_epoll >= 0)
            ::close(_epoll);
        if (_wake >= 0)
            ::close(_wake);
    }

    void stop()
    {
        _stopRequested = true;
        wake();
        if (_thread.joinable())
            _thread.join();
        // Workers still running see their connections closed and end.
        _pool.stop();
        std::lock_guard<std::mutex> lock(_postMu);
        _posted.clear();
    }

    int busy() const { return _pool.busy(); }

private:
    static const uint64_t kWakeId = 1, kListenId = 2, kFirstConnId = 16;

    struct AddressState {
        size_t connections = 0;
        size_t inFlight = 0;
        std::deque<std::weak_ptr<Conn>> parked;
    };

    // ---- plumbing ---------------------------------------------------------

    void addFd(int fd, uint64_t id, uint32_t events)
    {
        epoll_event ev{};
        ev.events = events;
        ev.data.u64 = id;
        epoll_ctl(_epoll, EPOLL_CTL_ADD, fd, &ev);
    }

    void wake()
    {
        uint64_t one = 1;
        if (::write(_wake, &one, sizeof one) < 0) {
            // The counter is full: the loop is awake already.
        }
    }

    // Runs fn on the event thread (from any thread).
    void post(std::function<void()> fn)
    {
        {
            std::lock_guard<std::mutex> lock(_postMu);
            _posted.push_back(std::move(fn));
        }
        wake();
    }

    void runPosted()
    {
        uint64_t n;
        while (::read(_wake, &n, sizeof n) > 0) {
        }
        std::vector<std::function<void()>> fns;
        {
            std::lock_guard<std::mutex> lock(_postMu);
            fns.swap(_posted);
        }
        for (auto& f : fns)
            f();
    }

    void run()
    {
        epoll_event evs[128];
        auto lastSweep = Clock::now();
        for (;;) {
            if (_stopRequested && !_stopping)
                beginStop();
            if (_stopping && (_conns.empty() || Clock::now() >= _drainDeadline)) {
                std::vector<std::shared_ptr<Conn>> all;
                for (auto& kv : _conns)
                    all.push_back(kv.second);
                for (auto& c : all)
                    close(c, "server stopped");
                return;
            }
            int n = epoll_wait(_epoll, evs, 128, 100);
            for (int i = 0; i < n; i++) {
                uint64_t id = evs[i].data.u64;
                if (id == kWakeId) {
                    runPosted();
                } else if (id >= kListenId && id < kListenId + 3) {
                    acceptAll(static_cast<int>(id - kListenId));
                } else {
                    auto it = _conns.find(id);
                    if (it != _conns.end()) {
                        std::shared_ptr<Conn> c = it->second;  // outlives its erasure
                        onEvent(c, evs[i].events);
                    }
                }
            }
            auto now = Clock::now();
            if (now - lastSweep >= milliseconds(100)) {
                lastSweep = now;
                sweep(now);
            }
        }
    }

    void setInterest(const std::shared_ptr<Conn>& c)
    {
        if (c->closed)
            return;
        bool reading =
            c->phase == Phase::Idle || c->phase == Phase::Head || c->phase == Phase::Body;
        uint32_t ev = 0;
        if (c->phase == Phase::Handshake)
            ev = c->handshakeWantsWrite ? EPOLLOUT : EPOLLIN;
        else {
            if (reading || c->writeWantsRead)
                ev |= EPOLLIN;
            if ((c->out && c->out->pending() && !c->writeWantsRead) || c->readWantsWrite)
                ev |= EPOLLOUT;
        }
        if (ev == c->events)
            return;
        epoll_event e{};
        e.events = ev;
        e.data.u64 = c->id;
        epoll_ctl(_epoll, EPOLL_CTL_MOD, c->io->fd(), &e);
        c->events = ev;
    }

    // ---- connections ------------------------------------------------------

    void acceptAll(int kind)
    {
        for (int round = 0; round < 256; round++) {
            sockaddr_storage ss;
            socklen_t len = sizeof ss;
            int fd = ::accept4(_listen[kind], reinterpret_cast<sockaddr*>(&ss), &len,
                               SOCK_CLOEXEC | SOCK_NONBLOCK);
            if (fd < 0)
                return;
            PeerInfo peer;
            peer.tls = kind == 1;
            peer.local = kind == 2;
            peer.address = peer.local ? std::string("local") : peerAddress(ss);
            if (peer.local) {
                ucred cred;
                socklen_t cl = sizeof cred;
                if (getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &cred, &cl) != 0 ||
                    cred.uid != geteuid()) {
                    ::close(fd);
                    _handler.rejected(peer, 403, "local connection from another user refused");
                    continue;
                }
            } else {
                int one = 1;
                setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
                // A fixed send buffer: a client that stops reading holds a
                // bounded amount of kernel memory, and the worker streaming to
                // it is held back soon instead of computing megabytes ahead.
                int sndbuf = _config.socketSendBufferBytes;
                if (sndbuf > 0)
                    setsockopt(fd, SOL_SOCKET, SO_SNDBUF, &sndbuf, sizeof sndbuf);
            }
            AddressState& a = _addresses[peer.address];
            if (_conns.size() >= _maxConnections ||
                a.connections >= _config.maxConnectionsPerAddress) {
                bool perAddress = _conns.size() < _maxConnections;
                if (!peer.tls) {
                    static const char busy[] =
                        "HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\n"
                        "Connection: close\r\n\r\n";
                    if (::send(fd, busy, sizeof busy - 1, MSG_NOSIGNAL) < 0) {
                        // The client is gone already.
                    }
                }
                ::close(fd);
                if (a.connections == 0 && a.inFlight == 0)
                    _addresses.erase(peer.address);
                _handler.rejected(
                    peer, 503,
                    perAddress ? "too many connections from this address" : "too many connections");
                continue;
            }
            auto c = std::make_shared<Conn>();
            c->id = _nextId++;
            c->peer = peer;
            if (peer.tls) {
                std::string why;
                c->io = _tls->wrap(fd, why);
                if (!c->io) {
                    _handler.rejected(peer, 400, why);
                    continue;
                }
                c->phase = Phase::Handshake;
            } else {
                c->io = makePlainStream(fd);
            }
            a.connections++;
            _conns[c->id] = c;
            c->events = EPOLLIN;
            addFd(fd, c->id, EPOLLIN);
        }
    }

    void close(const std::shared_ptr<Conn>& conn, const char*)
    {
        std::shared_ptr<Conn> c = conn;  // conn may be the map's own copy
        if (c->closed)
            return;
        c->closed = true;
        // An answer still on its way is a failed one: reset the connection
        // so that no client takes what arrived for the whole answer.
        if (c->out && c->io && !(c->out->finished() && c->out->pending() == 0))
            c->io->resetOnClose();
        if (c->out)
            c->out->close();
        epoll_ctl(_epoll, EPOLL_CTL_DEL, c->io->fd(), nullptr);
        c->io.reset();
        _conns.erase(c->id);
        const std::string address = c->peer.address;
        auto it = _addresses.find(address);
        if (it != _addresses.end())
            it->second.connections--;
        releaseSlot(c);
        it = _addresses.find(address);
        if (it != _addresses.end() && it->second.connections == 0 && it->second.inFlight == 0)
            _addresses.erase(it);
    }

    void releaseSlot(const std::shared_ptr<Conn>& c)
    {
        if (!c->slot)
            return;
        c->slot = false;
        auto it = _addresses.find(c->peer.address);
        if (it == _addresses.end())
            return;
        AddressState& a = it->second;
        a.inFlight--;
        while (a.inFlight < _perAddressRequests && !a.parked.empty()) {
            std::shared_ptr<Conn> next = a.parked.front().lock();
            a.parked.pop_front();
            if (!next || next->closed || next->phase != Phase::Parked)
                continue;
            next->slot = true;
            a.inFlight++;
            admit(next);
        }
    }

    void onEvent(const std::shared_ptr<Conn>& c, uint32_t events)
    {
        if (c->phase == Phase::Handshake) {
            IoResult r = c->io->handshake();
            if (r.kind == IoResult::Done) {
                c->phase = Phase::Idle;
                c->since = Clock::now();
                readInput(c);
            } else if (r.kind == IoResult::WantRead || r.kind == IoResult::WantWrite) {
                c->handshakeWantsWrite = r.kind == IoResult::WantWrite;
            } else {
                _handler.rejected(c->peer, 400, "TLS handshake failed");
                close(c, "handshake");
                return;
            }
            setInterest(c);
            return;
        }
        // A peer that hung up while nothing is read from it is gone.
        if ((events & (EPOLLHUP | EPOLLERR)) && !reading(c)) {
            close(c, "peer gone");
            return;
        }
        if ((events & EPOLLOUT) || ((events & EPOLLIN) && c->writeWantsRead))
            flush(c);
        if (c->closed)
            return;
        if ((events & (EPOLLIN | EPOLLHUP | EPOLLERR)) ||
            ((events & EPOLLOUT) && c->readWantsWrite))
            readInput(c);
        if (!c->closed)
            setInterest(c);
    }

    bool reading(const std::shared_ptr<Conn>& c) const
    {
        return c->phase == Phase::Idle || c->phase == Phase::Head || c->phase == Phase::Body;
    }

    void readInput(const std::shared_ptr<Conn>& c)
    {
        char buf[16384];
        size_t got = 0;
        c->readWantsWrite = false;
        while (reading(c) && got < 256 * 1024) {
            IoResult r = c->io->read(buf, sizeof buf);
            if (r.kind == IoResult::Done) {
                if (c->phase == Phase::Idle) {
                    c->phase = Phase::Head;
                    c->since = Clock::now();
                }
                c->in.append(buf, r.n);
                got += r.n;
                if (!advance(c))
                    break;
                continue;
            }
            if (r.kind == IoResult::WantRead)
                break;
            if (r.kind == IoResult::WantWrite) {
                c->readWantsWrite = true;
                break;
            }
            // Closed or failed: a request cut short gets no answer.
            close(c, "peer closed");
            return;
        }
        if (!c->closed)
            setInterest(c);
    }

    // Moves the request on with what `in` holds; false when c was closed.
    bool advance(const std::shared_ptr<Conn>& c)
    {
        if (c->phase == Phase::Head)
            return headReceived(c);
        if (c->phase == Phase::Body)
            return bodyReceived(c);
        return true;
    }

    // Answers from the server itself (refusals), then close unless keep.
    void answer(const std::shared_ptr<Conn>& c, int status, const HeaderList& headers, bool keep)
    {
        if (_stopping)
            keep = false;
        c->out = newOutput(c);
        std::string h = responseHead(status, "", headers, keep) + "Content-Length: 0\r\n\r\n";
        c->out->give(std::move(h));
        c->out->finish(keep);
        c->phase = keep ? Phase::Running : Phase::Closing;
        c->req.reset();
        flush(c);
    }

    void refuse(const std::shared_ptr<Conn>& c, int status, const std::string& why)
    {
        _handler.rejected(c->peer, status, why);
        answer(c, status, {{"PGErrorDetail", uriEncode(why)}}, false);
    }

    std::shared_ptr<OutputQueue> newOutput(const std::shared_ptr<Conn>& c)
    {
        std::weak_ptr<Conn> weak = c;
        return std::make_shared<OutputQueue>(_config.outputBufferBytes, [this, weak] {
            post([this, weak] {
                if (auto c = weak.lock())
                    if (!c->closed) {
                        flush(c);
                        if (!c->closed)
                            setInterest(c);
                    }
            });
        });
    }

    bool headReceived(const std::shared_ptr<Conn>& c)
    {
        const HttpLimits& lim = _config.limits;
        size_t headEnd, bodyStart;
        if (!findHeadEnd(c->in, headEnd, bodyStart)) {
            if (c->in.size() > lim.maxHeadBytes) {
                refuse(c, 431,
                       "request head larger than " + std::to_string(lim.maxHeadBytes) + " bytes");
                return false;
            }
            return true;
        }
        if (headEnd > lim.maxHeadBytes) {
            refuse(c, 431,
                   "request head larger than " + std::to_string(lim.maxHeadBytes) + " bytes");
            return false;
        }
        auto req = std::make_shared<HttpRequest>();
        HeadParseResult hp = parseRequestHead(c->in.substr(0, headEnd), lim, *req);
        if (!hp.ok) {
            refuse(c, hp.status, hp.reason);
            return false;
        }
        c->framing = bodyFraming(*req, lim);
        if (c->framing.kind == BodyFraming::Invalid) {
            refuse(c, c->framing.status, c->framing.reason);
            return false;
        }
        c->in.erase(0, bodyStart);
        c->req = req;
        AddressState& as = _addresses[c->peer.address];
        if (as.inFlight >= _perAddressRequests) {
            c->phase = Phase::Parked;
            as.parked.push_back(c);
            return true;
        }
        c->slot = true;
        as.inFlight++;
        admit(c);
        return !c->closed;
    }

    void admit(const std::shared_ptr<Conn>& c)
    {
        c->since = Clock::now();
        Admission a = _handler.screen(*c->req, c->peer);
        if (a.kind == Admission::Check && !c->memoCredential.empty() &&
            a.credential == c->memoCredential) {
            a.kind = Admission::Accept;
            a.user = c->memoUser;
        }
        if (a.kind == Admission::Check) {
            c->phase = Phase::Checking;
            std::weak_ptr<Conn> weak = c;
            std::shared_ptr<HttpRequest> req = c->req;
            PeerInfo peer = c->peer;
            std::string credential = a.credential;
            bool queued = _pool.submit([this, weak, req, peer, credential] {
                Admission r = _handler.check(*req, peer);
                post([this, weak, r, credential] {
                    auto c = weak.lock();
                    if (!c || c->closed || c->phase != Phase::Checking)
                        return;
                    if (r.kind == Admission::Accept) {
                        c->memoCredential = credential;
                        c->memoUser = r.user;
                    }
                    admitted(c, r);
                });
            });
            if (!queued)
                refuse(c, 503, "server busy");
            return;
        }
        admitted(c, a);
    }

    void admitted(const std::shared_ptr<Conn>& c, const Admission& a)
    {
        if (a.kind == Admission::Reject) {
            if (a.failedLogin) {
                milliseconds d = _throttle.failure(a.user, c->peer.address);
                if (d.count() > 0 && !_stopping) {
                    c->phase = Phase::Delayed;
                    c->wakeAt = Clock::now() + d;
                    c->refusal = a;
                    setInterest(c);
                    return;
                }
            }
            reject(c, a);
            return;
        }
        c->user = a.user;
        startBody(c);
    }

    // Sends an admission refusal. The connection stays open when the body
    // that was announced can be skipped (none, or all of it received).
    void reject(const std::shared_ptr<Conn>& c, const Admission& a)
    {
        bool keep = c->req && c->req->keepAlive();
        if (c->framing.kind == BodyFraming::Length) {
            if (c->in.size() >= c->framing.length)
                c->in.erase(0, c->framing.length);
            else
                keep = false;
        } else if (c->framing.kind == BodyFraming::Chunked) {
            keep = false;
        }
        answer(c, a.status, a.headers, keep);
    }

    void startBody(const std::shared_ptr<Conn>& c)
    {
        c->phase = Phase::Body;
        c->since = Clock::now();
        c->bodyStart = 0;
        c->lastDecodeSize = 0;
        if (c->framing.kind != BodyFraming::None && c->in.empty() && c->req->versionMinor >= 1) {
            const std::string* expect = c->req->header("Expect");
            if (expect && equalsNoCase(trim(*expect), "100-continue")) {
                c->out = newOutput(c);
                c->out->give("HTTP/1.1 100 Continue\r\n\r\n");
                flush(c);
                if (c->closed)
                    return;
            }
        }
        if (bodyReceived(c))
            setInterest(c);
    }

    bool bodyReceived(const std::shared_ptr<Conn>& c)
    {
        const HttpLimits& lim = _config.limits;
        HttpRequest& req = *c->req;
        if (c->framing.kind == BodyFraming::Length) {
            if (c->in.size() < c->framing.length)
                return true;
            req.body.assign(c->in, 0, c->framing.length);
            c->in.erase(0, c->framing.length);
        } else if (c->framing.kind == BodyFraming::Chunked) {
            // Decoding starts over on each attempt: try when the input may
            // end with the last chunk, or has doubled since the last try.
            const std::string& in = c->in;
            bool endLike =
                in.size() >= 2 && in[in.size() - 1] == '\n' &&
                (in[in.size() - 2] == '\n' ||
                 (in.size() >= 3 && in[in.size() - 2] == '\r' && in[in.size() - 3] == '\n'));
            if (!endLike && in.size() < 2 * c->lastDecodeSize + 4096)
                return true;
            c->lastDecodeSize = in.size();
            size_t pos = 0;
            std::string why;
            req.body.clear();
            int r = decodeChunked(c->in, pos, lim.maxBodyBytes, req.body, why);
            if (r < 0) {
                refuse(c, why.find("larger") != std::string::npos ? 413 : 400, why);
                return false;
            }
            if (r == 0) {
                req.body.clear();
                req.body.shrink_to_fit();
                if (c->in.size() > lim.maxBodyBytes + lim.maxBodyBytes / 4 + 65536) {
                    refuse(c, 413, "request body too large");
                    return false;
                }
                return true;
            }
            c->in.erase(0, pos);
        }
        // Large input buffers are given back.
        if (c->in.capacity() > 65536)
            std::string(c->in).swap(c->in);
        dispatch(c);
        return !c->closed;
    }

    void dispatch(const std::shared_ptr<Conn>& c)
    {
        c->phase = Phase::Running;
        c->since = Clock::now();
        bool keep = c->req->keepAlive() && !_stopping;
        auto out = newOutput(c);
        c->out = out;
        std::shared_ptr<HttpRequest> req = std::move(c->req);
        PeerInfo peer = c->peer;
        std::string user = c->user;
        bool queued = _pool.submit([this, out, req, peer, user, keep] {
            HttpExchange ex(*out, *req, peer, user, keep && !_stopping);
            _handler.handle(ex);
            if (!ex.responded())
                ex.send(500, "", {}, std::string());
            out->finish(ex.keepAlive(), !ex.wasCut());
        });
        if (!queued) {
            c->out.reset();
            refuse(c, 503, "server busy");
            return;
        }
        setInterest(c);
    }

    void flush(const std::shared_ptr<Conn>& c)
    {
        if (!c->out || c->closed)
            return;
        c->writeWantsRead = false;
        IoResult r = c->out->drain(*c->io);
        if (r.kind == IoResult::Failed || r.kind == IoResult::Closed) {
            close(c, "write failed");
            return;
        }
        if (r.kind == IoResult::WantRead)
            c->writeWantsRead = true;
        if (c->out->pending() == 0 && c->out->finished() &&
            (c->phase == Phase::Running || c->phase == Phase::Closing))
            responseDone(c);
    }

    void responseDone(const std::shared_ptr<Conn>& c)
    {
        bool keep = c->phase == Phase::Running && c->out->keepAlive() && !_stopping;
        if (!c->out->complete()) {
            c->io->resetOnClose();
            close(c, "answer cut short");
            return;
        }
        c->out.reset();
        releaseSlot(c);
        if (!keep) {
            close(c, "done");
            return;
        }
        c->phase = c->in.empty() ? Phase::Idle : Phase::Head;
        c->since = Clock::now();
        c->user.clear();
        if (c->in.capacity() > 65536)
            std::string(c->in).swap(c->in);
        // A pipelined request, or bytes TLS decrypted already.
        if (!c->in.empty() && !advance(c))
            return;
        if (c->io->buffered())
            readInput(c);
        if (!c->closed)
            setInterest(c);
    }

    // ---- deadlines ------------------------------------------------------

    void sweep(Clock::time_point now)
    {
        const HttpLimits& lim = _config.limits;
        std::vector<std::shared_ptr<Conn>> all;
        all.reserve(_conns.size());
        for (auto& kv : _conns)
            all.push_back(kv.second);
        double rate =
            static_cast<double>(_config.minBytesPerSecond ? _config.minBytesPerSecond : 1);
        for (auto& c : all) {
            if (c->closed)
                continue;
            long ms =
                static_cast<long>(std::chrono::duration_cast<milliseconds>(now - c->since).count());
            switch (c->phase) {
                case Phase::Handshake:
                    if (ms > lim.requestTimeoutMs) {
                        _handler.rejected(c->peer, 408, "TLS handshake not completed in time");
                        close(c, "handshake timeout");
                    }
                    break;
                case Phase::Idle:
                    if (ms > lim.idleTimeoutMs || _stopping)
                        close(c, "idle");
                    break;
                case Phase::Head:
                    if (ms > lim.requestTimeoutMs)
                        refuse(c, 408, "request not received in time");
                    break;
                case Phase::Body: {
                    double allowed =
                        lim.requestTimeoutMs + 1000.0 * static_cast<double>(c->in.size()) / rate;
                    if (ms > allowed)
                        refuse(c, 408, "request body not received in time");
                    break;
                }
                case Phase::Delayed:
                    if (now >= c->wakeAt || _stopping)
                        reject(c, c->refusal);
                    break;
                case Phase::Running:
                case Phase::Closing:
                    if (c->out && c->out->pending()) {
                        long stall = static_cast<long>(
                            std::chrono::duration_cast<milliseconds>(now - c->out->lastProgress())
                                .count());
                        long total = static_cast<long>(
                            std::chrono::duration_cast<milliseconds>(now - c->out->started())
                                .count());
                        double allowed = lim.writeTimeoutMs +
                                         1000.0 * static_cast<double>(c->out->sent()) / rate;
                        if (stall > lim.writeTimeoutMs || total > allowed) {
                            _handler.rejected(c->peer, 408, "client does not read the answer");
                            close(c, "write timeout");
                        }
                    }
                    break;
                case Phase::Parked:
                case Phase::Checking:
                    if (_stopping)
                        close(c, "stopping");
                    break;
            }
        }
    }

    void beginStop()
    {
        _stopping = true;
        _drainDeadline = Clock::now() + milliseconds(_config.drainTimeoutMs);
        // No new connections from now on.
        for (int k = 0; k < 3; k++) {
            if (_listen[k] >= 0) {
                epoll_ctl(_epoll, EPOLL_CTL_DEL, _listen[k], nullptr);
                ::close(_listen[k]);
                _listen[k] = -1;
            }
        }
        if (!_config.socketPath.empty())
            ::unlink(_config.socketPath.c_str());
        // Connections with nothing in flight go now.
        std::vector<std::shared_ptr<Conn>> all;
        for (auto& kv : _conns)
            all.push_back(kv.second);
        for (auto& c : all)
            if (c->phase != Phase::Running && c->phase != Phase::Closing &&
                c->phase != Phase::Delayed)
                close(c, "stopping");
        sweep(Clock::now());
    }

    const ServerConfig& _config;
    RequestHandler& _handler;
    TlsContext* _tls;
    LoginThrottle _throttle;
    WorkerPool _pool;
    int _listen[3];
    int _epoll = -1, _wake = -1;
    size_t _perAddressRequests;
    size_t _maxConnections;
    uint64_t _nextId = kFirstConnId;
    std::unordered_map<uint64_t, std::shared_ptr<Conn>> _conns;
    std::unordered_map<std::string, AddressState> _addresses;
    std::atomic<bool> _stopRequested{false};
    std::atomic<bool> _stopping{false};
    Clock::time_point _drainDeadline;
    std::mutex _postMu;
    std::vector<std::function<void()>> _posted;
    std::thread _thread;
};

// ---------------------------------------------------------------------------

RequestHandler::~RequestHandler() = default;

Admission RequestHandler::screen(const HttpRequest&, const PeerInfo&)
{
    return Admission();
}

Admission RequestHandler::check(const HttpRequest&, const PeerInfo&)
{
    return Admission();
}

void RequestHandler::rejected(const PeerInfo&, int, const std::string&) {}

HttpServer::HttpServer(const ServerConfig& config, RequestHandler& handler)
    : _config(config), _handler(handler)
{
}

HttpServer::~HttpServer()
{
    stop();
}

void HttpServer::start()
{
    if (_loop)
        return;
    std::unique_ptr<TlsContext> tls;
    if (_config.httpsPort >= 0) {
        if (_config.tlsCert.empty() || _config.tlsKey.empty())
            throw std::runtime_error("HTTPS needs both a certificate and a key file");
        tls.reset(new TlsContext(_config.tlsCert, _config.tlsKey));
    }
    int httpFd = -1, httpsFd = -1, unixFd = -1;
    try {
        if (_config.httpPort >= 0)
            httpFd = listenTcp(_config.listenAddress, _config.httpPort, _httpPort);
        if (_config.httpsPort >= 0)
            httpsFd = listenTcp(_config.listenAddress, _config.httpsPort, _httpsPort);
        if (!_config.socketPath.empty())
            unixFd = listenUnix(_config.socketPath);
        _tlsContext = std::move(tls);
        _loop.reset(new Loop(_config, _handler, _tlsContext.get(), httpFd, httpsFd, unixFd));
    } catch (...) {
        for (int fd : {httpFd, httpsFd, unixFd})
            if (fd >= 0)
                ::close(fd);
        throw;
    }
}

void HttpServer::stop()
{
    if (!_loop)
        return;
    _loop->stop();
    _loop.reset();
}

int HttpServer::activeRequests() const
{
    return _loop ? _loop->busy() : 0;
}

}  // namespace zarwire
