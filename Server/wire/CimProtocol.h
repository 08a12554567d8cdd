// CimProtocol: what the CIM-XML front end checks before an operation is
// decoded, shared by admission (on the server's event thread) and request
// handling (on a worker): protocol errors and how they are answered, and
// the method check that yields the M-POST extension-header prefix.
#ifndef ZAR_SERVER_WIRE_CIMPROTOCOL_H
#define ZAR_SERVER_WIRE_CIMPROTOCOL_H

#include <string>

#include "HttpExchange.h"
#include "HttpMessage.h"

namespace zarwire {

// A request that cannot be carried out for a protocol reason: answered with
// an HTTP status, a CIMError header (when cimError is set) and PGErrorDetail.
struct ProtocolError {
    int status;
    std::string cimError;
    std::string detail;
};

// The headers answering e (CIMError, PGErrorDetail, and for 401 the Basic
// challenge of realm).
HeaderList protocolErrorHeaders(const ProtocolError& e, const std::string& realm);

// Checks the method (POST, or M-POST with the CIM mapping's Man header) and
// the Host header; returns the M-POST extension prefix ("" for POST).
// Throws ProtocolError.
std::string checkMethod(const HttpRequest& request);

// Basic credentials from an Authorization value. Throws ProtocolError: 401
// for a missing or malformed value, 400 for NUL bytes in the name or the
// password.
struct BasicCredentials {
    std::string user, password;
};
BasicCredentials parseBasicCredentials(const std::string& authorization);

}  // namespace zarwire

#endif
