// HttpClientConnection: one keep-alive HTTP/1.1 connection from a CIM client
// to a CIM server, over TCP or a Unix stream socket. Internal to pegclient.
#ifndef Pegasus_HttpClientConnection_h
#define Pegasus_HttpClientConnection_h

#include <string>
#include <utility>
#include <vector>

#include <Pegasus/Common/Config.h>

PEGASUS_NAMESPACE_BEGIN

struct HttpClientResponse {
    int status = 0;
    std::string reason;
    std::vector<std::pair<std::string, std::string>> headers;
    std::vector<std::pair<std::string, std::string>> trailers;
    std::string body;

    // First header (or trailer, when inTrailers) with that name, ignoring
    // case; 0 if absent.
    const std::string* header(const char* name, bool inTrailers = false) const;
};

class HttpClientConnection {
public:
    // A TCP connection to host:port (not yet opened).
    HttpClientConnection(const std::string& host, unsigned port);
    // A connection to the Unix socket at path (not yet opened).
    explicit HttpClientConnection(const std::string& socketPath);
    ~HttpClientConnection();

    // Speaks TLS on the next open(). trustStore (a PEM file or a folder)
    // verifies the server when not empty; certFile/keyFile identify the
    // client when not empty.
    void useTls(const std::string& trustStore, const std::string& certFile,
                const std::string& keyFile);

    // Opens the connection within timeoutMs; throws CannotConnectException
    // ("Cannot connect to <host>:<port>. Connection failed.").
    void open(int timeoutMs);
    void close();

    // Sends one request (head lines without the final empty line, and the
    // body) and reads the response, chunked or not. A connection the server
    // closed while idle is reopened once. Throws ConnectionTimeoutException
    // after timeoutMs, CannotConnectException when the server went away,
    // CIMClientMalformedHTTPException for a response that is not HTTP.
    HttpClientResponse roundTrip(const std::string& head, const std::string& body, int timeoutMs);

    // "host:port" or the socket path, for Host headers and messages.
    const std::string& endpoint() const { return _endpoint; }
    const std::string& host() const { return _host; }

private:
    bool exchange(const std::string& request, HttpClientResponse& resp, int timeoutMs,
                  bool& sentNothingReceived);
    // Transfers some bytes: >0 count, 0 closed, -1 would block (wantWrite
    // says which way), -2 failed.
    long _read(char* buf, size_t n, bool& wantWrite);
    long _write(const char* buf, size_t n, bool& wantWrite);
    void _handshake(int timeoutMs);
    std::string _host;
    unsigned _port = 0;
    std::string _path;
    std::string _endpoint;
    int _fd = -1;
    std::string _in;
    bool _tls = false;
    std::string _trustStore, _certFile, _keyFile;
    void* _sslCtx = 0;  // SSL_CTX
    void* _ssl = 0;     // SSL
};

// URI escapes (%XX) of HTTP header values.
std::string clientUriEncode(const std::string& in);
std::string clientUriDecode(const std::string& in);
std::string clientBase64(const std::string& in);

PEGASUS_NAMESPACE_END

#endif
