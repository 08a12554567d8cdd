// HttpServer: the listening side of the CIM server. Accepts connections on
// HTTP, HTTPS and a local Unix socket, reads HTTP/1.x requests under hard
// limits and hands each one to a RequestHandler on a bounded pool of worker
// threads. Keep-alive connections are served until the client closes them,
// they sit idle too long, or the server stops.
#ifndef ZAR_SERVER_WIRE_HTTPSERVER_H
#define ZAR_SERVER_WIRE_HTTPSERVER_H

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "HttpMessage.h"
#include "Stream.h"

namespace zarwire {

// Who is at the other end of a connection.
struct PeerInfo {
    std::string address;   // client IP address; "local" on the Unix socket
    bool tls = false;
    bool local = false;    // Unix socket, peer uid checked equal to ours
};

// One request and the means to answer it. A handler answers exactly once,
// either with send() or with a chunked stream (beginChunked, sendChunk...,
// endChunked).
class HttpExchange {
public:
    HttpExchange(Stream& stream, const HttpRequest& request, const PeerInfo& peer,
                 const HttpLimits& limits, bool keepAlive);

    const HttpRequest& request() const { return _request; }
    const PeerInfo& peer() const { return _peer; }

    // Whether the connection stays open after the response; a handler may
    // clear it (it is always cleared while the server stops).
    bool keepAlive() const { return _keepAlive; }
    void setKeepAlive(bool keep) { _keepAlive = keep; }

    // Sends a complete response. headers must not contain Connection; the
    // caller supplies its own Content-Length unless addLength is true.
    bool send(int status, const std::string& reason,
              const std::vector<std::pair<std::string, std::string> >& headers,
              const std::string& body, bool addLength = true);

    // Chunked response: the head (Transfer-Encoding: chunked is added), then
    // chunks, then the last chunk with optional trailer fields.
    bool beginChunked(int status, const std::string& reason,
                      const std::vector<std::pair<std::string, std::string> >& headers);
    bool sendChunk(const char* data, size_t n);
    bool endChunked(const std::vector<std::pair<std::string, std::string> >& trailers);

    // True once any byte of the response went out.
    bool responded() const { return _responded; }
    // HTTP status sent (for the access log).
    int status() const { return _status; }
    // Per-connection memory of the last accepted credentials (so that a
    // keep-alive client is not re-checked on every request).
    std::string* authMemo = nullptr;

private:
    std::string head(int status, const std::string& reason,
                     const std::vector<std::pair<std::string, std::string> >& headers);
    Stream& _stream;
    const HttpRequest& _request;
    const PeerInfo& _peer;
    const HttpLimits& _limits;
    bool _keepAlive;
    bool _responded = false;
    bool _failed = false;
    int _status = 0;
};

class RequestHandler {
public:
    virtual ~RequestHandler();
    // Answers one request; must not throw.
    virtual void handle(HttpExchange& exchange) = 0;
    // Called when a request could not even be read (bad framing, limits);
    // the server has already answered with status. For the access log.
    virtual void rejected(const PeerInfo& peer, int status, const std::string& reason);
};

struct ServerConfig {
    std::string listenAddress = "127.0.0.1";
    int httpPort = 5988;          // -1: no HTTP listener; 0: any free port
    int httpsPort = -1;           // -1: no HTTPS listener
    std::string tlsCert, tlsKey;  // PEM files for HTTPS
    std::string socketPath;       // empty: no local socket
    size_t workers = 16;          // connections served at once
    size_t maxPending = 256;      // accepted connections waiting for a worker
    HttpLimits limits;
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

    // Stops accepting, lets requests in progress finish (their connections
    // then close), closes idle and waiting connections, joins the threads.
    // Idempotent.
    void stop();

    // The bound ports (useful when 0 was asked); -1 when not listening.
    int httpPort() const { return _httpPort; }
    int httpsPort() const { return _httpsPort; }
    const std::string& socketPath() const { return _config.socketPath; }

    // Requests being handled right now.
    int activeRequests() const { return _active.load(); }

private:
    struct Pending {
        int fd;
        int kind;  // 0 http, 1 https, 2 local
        std::string address;
    };
    void acceptLoop();
    void workerLoop();
    void serve(Pending p);
    void serveStream(Stream& s, PeerInfo& peer);
    int listenTcp(int port, int& boundPort);
    int listenUnix(const std::string& path);

    ServerConfig _config;
    RequestHandler& _handler;
    std::unique_ptr<TlsContext> _tls;
    int _httpFd = -1, _httpsFd = -1, _unixFd = -1;
    int _httpPort = -1, _httpsPort = -1;
    int _wakePipe[2] = {-1, -1};
    std::atomic<bool> _stopping{false};
    bool _started = false;
    std::atomic<int> _active{0};
    std::mutex _mu;
    std::condition_variable _cv;
    std::deque<Pending> _queue;
    std::thread _acceptThread;
    std::vector<std::thread> _workers;
};

}  // namespace zarwire

#endif
