// HttpServer: the listening side of the CIM server. One event thread owns
// every socket (HTTP, HTTPS, the local Unix socket) in non-blocking mode:
// it accepts, runs TLS handshakes, reads request heads and bodies under
// deadlines with a minimum rate, has each request admitted (authenticated)
// before reading its body, and writes answers as clients read them. Only
// complete, admitted requests reach the bounded pool of workers, so slow,
// idle or non-reading clients hold no worker. Connections and requests in
// flight are limited per client address; failed logins are answered after
// a growing delay, without holding a worker.
#ifndef ZAR_SERVER_WIRE_HTTPSERVER_H
#define ZAR_SERVER_WIRE_HTTPSERVER_H

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <thread>

#include "HttpExchange.h"
#include "HttpMessage.h"
#include "LoginThrottle.h"
#include "Stream.h"

namespace zarwire {

// What the application decides about a request from its head alone.
struct Admission {
    enum Kind {
        Accept,  // read the body and handle the request as user
        Reject,  // answer status with headers, do not read the body
        Check    // run check() on a worker (a slow password check)
    } kind = Accept;
    std::string user;
    // Check: the credential; a connection that passed check() with the same
    // credential is admitted again without another check.
    std::string credential;
    int status = 0;
    HeaderList headers;
    std::string detail;  // for the server's own log of a refusal
    // Reject after a wrong password: the answer is delayed by the throttle
    // (user names the login that failed).
    bool failedLogin = false;
};

class RequestHandler {
public:
    virtual ~RequestHandler();
    // On the event thread, as soon as the head is read: must be quick. The
    // default admits everyone.
    virtual Admission screen(const HttpRequest& head, const PeerInfo& peer);
    // On a worker, when screen() asked for it; may be slow. Accept or Reject.
    virtual Admission check(const HttpRequest& head, const PeerInfo& peer);
    // Answers one request on a worker; must not throw.
    virtual void handle(HttpExchange& exchange) = 0;
    // Called when a request could not even be read (bad framing, limits,
    // too many connections); the server has answered with status (or
    // closed). For the access log.
    virtual void rejected(const PeerInfo& peer, int status, const std::string& reason);
};

struct ServerConfig {
    std::string listenAddress = "127.0.0.1";
    int httpPort = 5988;                     // -1: no HTTP listener; 0: any free port
    int httpsPort = -1;                      // -1: no HTTPS listener
    std::string tlsCert, tlsKey;             // PEM files for HTTPS
    std::string socketPath;                  // empty: no local socket
    size_t workers = 16;                     // requests handled at once
    size_t maxQueued = 256;                  // admitted requests waiting for a worker
    size_t maxConnections = 4096;            // open at once (also bounded by the fd limit)
    size_t maxConnectionsPerAddress = 256;   // from one client address
    size_t maxRequestsPerAddress = 0;        // in flight from one address; 0: workers / 2
    size_t outputBufferBytes = 256 * 1024;   // answer bytes waiting per connection
    int socketSendBufferBytes = 256 * 1024;  // kernel send buffer per TCP connection (0: system's)
    size_t minBytesPerSecond = 1024;         // slowest body upload or answer download
    int drainTimeoutMs = 10000;              // stop(): time left to requests in flight
    HttpLimits limits;
    LoginThrottle::Settings throttle;
};

class HttpServer {
public:
    HttpServer(const ServerConfig& config, RequestHandler& handler);
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    // Binds every configured listener and starts the threads. Throws
    // std::runtime_error naming the address and the system's reason (for
    // example a port in use, or unreadable TLS files).
    void start();

    // Closes the listeners at once, closes connections with no request in
    // flight, lets requests in flight finish for up to drainTimeoutMs
    // (then cuts them: a cut answer never looks complete), joins the
    // threads. Idempotent.
    void stop();

    // The bound ports (useful when 0 was asked); -1 when not listening.
    int httpPort() const { return _httpPort; }
    int httpsPort() const { return _httpsPort; }
    const std::string& socketPath() const { return _config.socketPath; }

    // Requests being handled right now.
    int activeRequests() const;

private:
    class Loop;
    ServerConfig _config;
    RequestHandler& _handler;
    std::unique_ptr<TlsContext> _tlsContext;
    std::unique_ptr<Loop> _loop;
    int _httpPort = -1, _httpsPort = -1;
};

}  // namespace zarwire

#endif
