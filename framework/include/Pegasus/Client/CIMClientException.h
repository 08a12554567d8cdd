//%/////////////////////////////////////////////////////////////////////////////
// Exceptions a CIMClient throws when a server's response is not a valid
// CIM-XML answer. CIM errors themselves arrive as CIMException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMClientException_h
#define Pegasus_CIMClientException_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Client/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Exception.h>

PEGASUS_NAMESPACE_BEGIN

// The HTTP response could not be parsed.
class PEGASUS_CLIENT_LINKAGE CIMClientMalformedHTTPException : public Exception {
public:
    CIMClientMalformedHTTPException(const String& message);
};

class CIMClientHTTPErrorExceptionRep;

// The server answered with an HTTP error status (e.g. 401, 400). The message
// reads "HTTP Error (<code> <reason phrase>)." followed, when present, by
// " CIMError: <cimError>." and " Detail: <detail>.".
class PEGASUS_CLIENT_LINKAGE CIMClientHTTPErrorException : public Exception {
public:
    CIMClientHTTPErrorException(Uint32 httpStatusCode, const String& reasonPhrase,
                                const String& cimError, const String& cimErrorDetail);
    CIMClientHTTPErrorException(const CIMClientHTTPErrorException& e);
    CIMClientHTTPErrorException& operator=(const CIMClientHTTPErrorException& e);
    virtual ~CIMClientHTTPErrorException();

    // The HTTP status code.
    Uint32 getCode() const;
    // The CIMError header's value (empty if none).
    String getCIMError() const;
    // The PGErrorDetail header's value, URI-decoded (empty if none).
    String getCIMErrorDetail() const;

private:
    CIMClientHTTPErrorExceptionRep* _httpRep;
};

// The response body is not well-formed or not valid CIM-XML.
class PEGASUS_CLIENT_LINKAGE CIMClientXmlException : public Exception {
public:
    CIMClientXmlException(const String& message);
};

// The response is valid CIM-XML but does not answer the request (e.g. a
// message id or method name that does not match).
class PEGASUS_CLIENT_LINKAGE CIMClientResponseException : public Exception {
public:
    CIMClientResponseException(const String& message);
};

PEGASUS_NAMESPACE_END

#endif
