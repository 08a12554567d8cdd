// Stream: the byte stream of one accepted connection (plain TCP, Unix socket
// or TLS), with time limits on every read and write, and the server's TLS
// context.
#ifndef ZAR_SERVER_WIRE_STREAM_H
#define ZAR_SERVER_WIRE_STREAM_H

#include <cstddef>
#include <memory>
#include <string>

typedef struct ssl_ctx_st SSL_CTX;
typedef struct ssl_st SSL;

namespace zarwire {

class Stream {
public:
    virtual ~Stream();
    // Waits up to timeoutMs for data. Returns 1 readable, 0 timed out, -1
    // closed or failed.
    virtual int waitReadable(int timeoutMs) = 0;
    // Reads what is available (at least one byte, waiting up to timeoutMs).
    // Returns the count, 0 on orderly close, -1 on error or timeout.
    virtual long read(char* buf, size_t n, int timeoutMs) = 0;
    // Writes everything or fails (false) within timeoutMs.
    virtual bool writeAll(const char* data, size_t n, int timeoutMs) = 0;
    // The socket (for shutdown from another thread).
    virtual int fd() const = 0;
};

// A stream over a connected socket; owns and closes fd.
std::unique_ptr<Stream> makePlainStream(int fd);

// The server's TLS configuration (certificate chain and key, TLS 1.2+).
class TlsContext {
public:
    // Loads the PEM files; throws std::runtime_error with OpenSSL's reason.
    TlsContext(const std::string& certFile, const std::string& keyFile);
    ~TlsContext();
    TlsContext(const TlsContext&) = delete;
    TlsContext& operator=(const TlsContext&) = delete;

    // Runs the server handshake on fd within timeoutMs; the stream owns fd.
    // Returns null (fd closed) when the handshake fails; reason says why.
    std::unique_ptr<Stream> accept(int fd, int timeoutMs, std::string& reason);

private:
    SSL_CTX* _ctx;
};

}  // namespace zarwire

#endif
