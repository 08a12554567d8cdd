// CimRequest: one CIM-XML request, checked and decoded once. The CIM
// headers are checked against the body (CIMOperation, CIMMethod, CIMObject,
// Content-Type), the body is parsed under limits, and what the operation
// needs is kept: the message id, the call element, its namespace and, for a
// method call, its target path with that namespace.
#ifndef ZAR_SERVER_WIRE_CIMREQUEST_H
#define ZAR_SERVER_WIRE_CIMREQUEST_H

#include <memory>
#include <string>

#include <Pegasus/Common/CIMObjectPath.h>
#include <zarframework/CIMXmlCodec.h>

#include "HttpMessage.h"

namespace zarwire {

// How the answer may travel, decided by the request's HTTP version and TE.
enum class Framing {
    Trailers,  // HTTP/1.1 with TE: trailers: chunked, errors after the start in the trailer
    Chunked,   // other HTTP/1.1 clients: chunked once the answer is large, no trailer
    Close,     // HTTP/1.0: the end of a large answer is the end of the connection
};

struct CimCall {
    std::string mpostNs;  // extension-header prefix of M-POST, "" for POST
    Framing framing = Framing::Close;
    std::string messageId;
    std::string method;  // as the client spelled it
    bool intrinsic = false;
    const Pegasus::CIMXml::XmlElement* element = nullptr;  // IMETHODCALL or METHODCALL
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::CIMObjectPath target;  // METHODCALL only: class or instance, with nameSpace
    std::string classForLog = "-";

    std::shared_ptr<const Pegasus::CIMXml::XmlElement> document;  // owns element
};

// A well-formed request that names what cannot exist (a namespace "..", a
// key name with a space): answered as a CIM error of the operation, not as
// a broken request. Thrown once the message id and method are known.
struct CallError {
    Pegasus::Uint32 code;
    Pegasus::String message;
};

// Decodes req. Throws ProtocolError (answered with an HTTP status) or
// CallError; call.method and call.messageId are set as soon as they are
// known, so that the caller can log and answer a CallError.
void decodeCimRequest(const HttpRequest& req, const Pegasus::CIMXml::XmlLimits& limits,
                      CimCall& call);

// A failure to decode part of the call: BAD_VALUE (well-formed, naming what
// cannot exist) becomes a CallError, anything else a ProtocolError 400.
[[noreturn]] void throwDecodeFailure(const Pegasus::CIMXmlFormatException& e);

// UTF-8 std::string and Pegasus String.
std::string u8(const Pegasus::String& s);
Pegasus::String str(const std::string& s);

}  // namespace zarwire

#endif
