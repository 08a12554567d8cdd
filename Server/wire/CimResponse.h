// CimResponse: the body of one CIM-XML response on its way to the client,
// in bounded memory whatever the client. Code appends XML to buffer() and
// calls flushIfFull() between elements:
//  - a client that sent TE: trailers gets a chunked answer from the start,
//    in 64 KiB chunks, and an error after the first chunk in the trailer;
//  - other clients get a small answer whole, with the zero-padded
//    content-length CIM clients expect; once the answer outgrows 1 MiB it
//    goes out as it is produced: chunked (without trailer) to an HTTP/1.1
//    client, delimited by the end of the connection to an HTTP/1.0 one.
//    An error after that point cuts the connection before the answer is
//    complete (no last chunk, no closing elements), so that the client sees
//    a failure, never an answer that looks whole.
#ifndef ZAR_SERVER_WIRE_CIMRESPONSE_H
#define ZAR_SERVER_WIRE_CIMRESPONSE_H

#include <string>

#include <zarframework/CIMXmlCodec.h>

#include "CimRequest.h"
#include "HttpExchange.h"

namespace zarwire {

class CimResponse {
public:
    // Bytes sent per chunk, and the largest answer kept whole for a client
    // that does not take trailers.
    static const size_t kChunkBytes = 64 * 1024;
    static const size_t kWholeLimit = 1024 * 1024;

    CimResponse(HttpExchange& exchange, Framing framing, const std::string& mpostNs);

    std::string& buffer() { return _buf; }

    // Sends what the buffer holds once it is large enough to go out.
    // Returns false once the client is gone.
    bool flushIfFull();

    // True when part of the body has already been sent.
    bool started() const { return _started; }

    // Forgets the unsent body (to replace it by an error message); only
    // before started().
    void discard() { _buf.clear(); }

    // Sends the rest of the body and ends the response.
    bool finish();

    // Sends a whole response holding one ERROR: the answer of method
    // (an intrinsic one in IMETHODRESPONSE) to the message messageId.
    bool sendError(const std::string& messageId, const std::string& method, bool intrinsic,
                   Pegasus::Uint32 code, const Pegasus::String& message);

    // Ends a started response with an error: in the trailer (CIMStatusCode,
    // CIMStatusCodeDescription) when the client takes one, else by closing
    // the connection before the answer is complete.
    bool abort(unsigned code, const std::string& description);

private:
    bool start();
    HeaderList headers(size_t length) const;
    HttpExchange& _ex;
    Framing _framing;
    std::string _ns;
    std::string _buf;
    bool _started = false;
};

}  // namespace zarwire

#endif
