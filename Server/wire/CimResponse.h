// CimResponse: the body of one CIM-XML response on its way to the client.
// Code appends XML to buffer(); in chunked mode full buffers go out as
// chunks while the operation still runs, so a large enumeration is never
// held whole; otherwise the body is sent at finish() with the zero-padded
// content-length header that CIM clients expect.
#ifndef ZAR_SERVER_WIRE_CIMRESPONSE_H
#define ZAR_SERVER_WIRE_CIMRESPONSE_H

#include <string>

#include <Pegasus/Common/CIMXmlCodec.h>

#include "HttpServer.h"

namespace zarwire {

class CimResponse {
public:
    // mpostNs is the extension-header prefix number of an M-POST request
    // ("" for POST); chunked when the client accepts trailers.
    CimResponse(HttpExchange& exchange, bool chunked, const std::string& mpostNs);

    std::string& buffer() { return _buf; }

    // Sends full buffers in chunked mode. Returns false once the client is
    // gone.
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

    // Ends a started chunked response with an error carried in the trailer
    // (CIMStatusCode, CIMStatusCodeDescription).
    bool abort(unsigned code, const std::string& description);

private:
    std::vector<std::pair<std::string, std::string> > headers(size_t length) const;
    HttpExchange& _ex;
    bool _chunked;
    std::string _ns;
    std::string _buf;
    bool _started = false;
};

}  // namespace zarwire

#endif
