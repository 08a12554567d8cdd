// HttpExchange: one request as a worker sees it, and the means to answer
// it. The answer's bytes go through the connection's OutputQueue: a worker
// that produces faster than the client reads waits for the client (or for
// the connection to be closed, when the client is too slow).
#ifndef ZAR_SERVER_WIRE_HTTPEXCHANGE_H
#define ZAR_SERVER_WIRE_HTTPEXCHANGE_H

#include <string>
#include <utility>
#include <vector>

#include "HttpMessage.h"
#include "OutputQueue.h"

namespace zarwire {

// Who is at the other end of a connection.
struct PeerInfo {
    std::string address;  // client IP address; "local" on the Unix socket
    bool tls = false;
    bool local = false;  // Unix socket, peer uid checked equal to ours
};

using HeaderList = std::vector<std::pair<std::string, std::string>>;

// The reason phrase of an HTTP status.
const char* reasonPhrase(int status);

// A response head: status line, headers, Connection: close unless keepAlive,
// without the empty line that ends the head.
std::string responseHead(int status, const std::string& reason, const HeaderList& headers,
                         bool keepAlive);

// A handler answers exactly once, either with send() or with a chunked
// stream (beginChunked, sendChunk..., endChunked).
class HttpExchange {
public:
    HttpExchange(OutputQueue& out, const HttpRequest& request, const PeerInfo& peer,
                 const std::string& user, bool keepAlive);

    const HttpRequest& request() const { return _request; }
    const PeerInfo& peer() const { return _peer; }
    // The user the server admitted the request as ("" when none was needed).
    const std::string& user() const { return _user; }

    // Whether the connection stays open after the response; a handler may
    // clear it (it is always cleared while the server stops).
    bool keepAlive() const { return _keepAlive; }
    void setKeepAlive(bool keep) { _keepAlive = keep; }

    // Sends a complete response. headers must not contain Connection; the
    // caller supplies its own Content-Length unless addLength is true. The
    // rvalue form hands the body over without copying or waiting.
    bool send(int status, const std::string& reason, const HeaderList& headers,
              const std::string& body, bool addLength = true);
    bool send(int status, const std::string& reason, const HeaderList& headers, std::string&& body,
              bool addLength = true);

    // Chunked response: the head (Transfer-Encoding: chunked is added), then
    // chunks, then the last chunk with optional trailer fields. A response
    // cut short (client gone, server stopping) never gets its last chunk.
    bool beginChunked(int status, const std::string& reason, const HeaderList& headers);
    bool sendChunk(const char* data, size_t n);
    bool endChunked(const HeaderList& trailers);

    // Response delimited by the end of the connection (for HTTP/1.0
    // clients): the head without a length, then bytes as they come; the
    // connection closes after them.
    bool beginStream(int status, const std::string& reason, const HeaderList& headers);
    bool sendRaw(const char* data, size_t n);

    // Ends a started response as a failure: nothing more is sent and the
    // connection is reset once what was queued has been written, so that
    // the client cannot take the answer for complete.
    bool cut();
    bool wasCut() const { return _cut; }

    // True once any byte of the response was queued.
    bool responded() const { return _responded; }
    // HTTP status sent (for the access log).
    int status() const { return _status; }

private:
    bool put(const std::string& bytes);
    OutputQueue& _out;
    const HttpRequest& _request;
    const PeerInfo& _peer;
    const std::string& _user;
    bool _keepAlive;
    bool _responded = false;
    bool _failed = false;
    bool _cut = false;
    int _status = 0;
};

}  // namespace zarwire

#endif
