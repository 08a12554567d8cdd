// Stream: the byte stream of one accepted connection (plain TCP, Unix socket
// or TLS) in non-blocking mode, and the server's TLS context. Every call
// returns at once; when a call cannot go on, the result says which readiness
// of the socket it waits for (a TLS read may need the socket writable and a
// TLS write readable). Only the server's event thread uses a Stream.
#ifndef ZAR_SERVER_WIRE_STREAM_H
#define ZAR_SERVER_WIRE_STREAM_H

#include <cstddef>
#include <memory>
#include <string>

typedef struct ssl_ctx_st SSL_CTX;
typedef struct ssl_st SSL;

namespace zarwire {

// Outcome of one non-blocking call: n > 0 bytes moved; Closed: orderly end
// of the peer's stream; WantRead / WantWrite: try again when the socket is
// readable / writable; Failed: the connection is broken.
struct IoResult {
    enum Kind { Done, Closed, WantRead, WantWrite, Failed } kind = Done;
    size_t n = 0;
};

class Stream {
public:
    virtual ~Stream();
    // Completes the TLS handshake (plain streams are ready at once).
    virtual IoResult handshake() = 0;
    virtual IoResult read(char* buf, size_t n) = 0;
    virtual IoResult write(const char* data, size_t n) = 0;
    // Bytes already decrypted and waiting to be read (TLS), so that the
    // caller does not wait for socket readiness that will not come.
    virtual bool buffered() const { return false; }
    virtual int fd() const = 0;
    // Makes closing the stream reset the connection (TCP RST, no TLS
    // close_notify): the peer sees a failure, not an orderly end.
    virtual void resetOnClose();
};

// A stream over a connected socket; sets it non-blocking, owns and closes it.
std::unique_ptr<Stream> makePlainStream(int fd);

// The server's TLS configuration (certificate chain and key, TLS 1.2+).
class TlsContext {
public:
    // Loads the PEM files; throws std::runtime_error with OpenSSL's reason.
    TlsContext(const std::string& certFile, const std::string& keyFile);
    ~TlsContext();
    TlsContext(const TlsContext&) = delete;
    TlsContext& operator=(const TlsContext&) = delete;

    // A server-side TLS stream over fd (owned), its handshake still to run.
    // Null (fd closed) when OpenSSL cannot allocate one; reason says why.
    std::unique_ptr<Stream> wrap(int fd, std::string& reason);

private:
    SSL_CTX* _ctx;
};

}  // namespace zarwire

#endif
