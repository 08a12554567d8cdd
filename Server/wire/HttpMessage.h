// HttpMessage: an HTTP/1.x request as the server reads it, the parser of its
// head, and the small text codecs HTTP headers need (URI escapes, base64).
#ifndef ZAR_SERVER_WIRE_HTTPMESSAGE_H
#define ZAR_SERVER_WIRE_HTTPMESSAGE_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace zarwire {

// Hard limits on what one request may hold.
struct HttpLimits {
    size_t maxHeadBytes = 16 * 1024;  // request line and headers
    size_t maxHeaders = 64;
    size_t maxBodyBytes = 16 * 1024 * 1024;  // decoded body
    int idleTimeoutMs = 30000;               // waiting for the next request
    int requestTimeoutMs = 30000;            // receiving one head (a body: this plus its
                                             // size at the server's minimum rate)
    int writeTimeoutMs = 30000;              // an answer the client takes nothing of
};

struct HttpRequest {
    std::string method;    // as sent ("POST", "M-POST", ...)
    std::string target;    // request URI
    int versionMinor = 1;  // HTTP/1.<versionMinor>
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;

    // The first header with that name (case-insensitive), or 0.
    const std::string* header(const std::string& name) const;
    // True unless the client asked to close (HTTP/1.1) or did not ask to keep
    // the connection (HTTP/1.0).
    bool keepAlive() const;
};

// Result of parsing a request head; status is an HTTP status (400, 431,
// 505...) when ok is false.
struct HeadParseResult {
    bool ok = true;
    int status = 0;
    std::string reason;
};

// Finds the empty line that ends a request head in data (CRLF CRLF or LF LF,
// whichever comes first). On success headEnd is the head's length and
// bodyStart the offset of the first body byte; false while no head end is there.
bool findHeadEnd(const std::string& data, size_t& headEnd, size_t& bodyStart);

// Parses the request line and headers of head (everything before the empty
// line, line ends CRLF or LF). Refuses malformed request lines, versions
// other than HTTP/1.0 and 1.1, header lines without a colon or with
// continuation lines, names with characters outside the token set, control
// characters in values, and more than limits.maxHeaders headers.
HeadParseResult parseRequestHead(const std::string& head, const HttpLimits& limits,
                                 HttpRequest& request);

// How the body of a parsed request is framed. kind Invalid carries the HTTP
// status to answer (400 conflicting or malformed lengths, 413 too large,
// 501 transfer codings other than chunked).
struct BodyFraming {
    enum Kind { None, Length, Chunked, Invalid } kind = None;
    size_t length = 0;
    int status = 0;
    std::string reason;
};
BodyFraming bodyFraming(const HttpRequest& request, const HttpLimits& limits);

// Decodes a chunked body from data[pos..). Returns 1 when complete (body
// filled, pos after the trailer section), 0 when more bytes are needed, -1
// on a malformed or oversized encoding (reason set).
int decodeChunked(const std::string& data, size_t& pos, size_t maxBody, std::string& body,
                  std::string& reason);

// %XX escapes decoded; false on a malformed escape.
bool uriDecode(const std::string& in, std::string& out);
// Everything outside unreserved characters (and '/') escaped as %XX.
std::string uriEncode(const std::string& in);
// Standard base64; false on invalid input.
bool base64Decode(const std::string& in, std::string& out);
std::string base64Encode(const std::string& in);

// ASCII case-insensitive equality.
bool equalsNoCase(const std::string& a, const std::string& b);
// s without leading and trailing spaces and tabs.
std::string trim(const std::string& s);

}  // namespace zarwire

#endif
