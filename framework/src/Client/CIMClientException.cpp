// The exceptions of a CIMClient for responses that are not valid CIM-XML.
#include <Pegasus/Client/CIMClientException.h>

PEGASUS_NAMESPACE_BEGIN

class CIMClientHTTPErrorExceptionRep {
public:
    Uint32 code;
    String cimError;
    String cimErrorDetail;
};

namespace {

String HttpErrorMessage(Uint32 code, const String& reasonPhrase, const String& cimError,
                        const String& cimErrorDetail)
{
    String message("HTTP Error (");
    message.appendPrintf("%u", code);
    if (reasonPhrase.size())
        message.append(Char16(' ')).append(reasonPhrase);
    message.append(").");
    if (cimError.size())
        message.append(" CIMError: ").append(cimError).append(".");
    if (cimErrorDetail.size())
        message.append(" Detail: ").append(cimErrorDetail).append(".");
    return message;
}

}  // namespace

CIMClientMalformedHTTPException::CIMClientMalformedHTTPException(const String& message)
    : Exception(message)
{
}

CIMClientHTTPErrorException::CIMClientHTTPErrorException(Uint32 httpStatusCode,
                                                         const String& reasonPhrase,
                                                         const String& cimError,
                                                         const String& cimErrorDetail)
    : Exception(HttpErrorMessage(httpStatusCode, reasonPhrase, cimError, cimErrorDetail)),
      _httpRep(new CIMClientHTTPErrorExceptionRep)
{
    _httpRep->code = httpStatusCode;
    _httpRep->cimError = cimError;
    _httpRep->cimErrorDetail = cimErrorDetail;
}

CIMClientHTTPErrorException::CIMClientHTTPErrorException(const CIMClientHTTPErrorException& e)
    : Exception(e), _httpRep(new CIMClientHTTPErrorExceptionRep(*e._httpRep))
{
}

CIMClientHTTPErrorException& CIMClientHTTPErrorException::operator=(
    const CIMClientHTTPErrorException& e)
{
    if (this != &e) {
        Exception::operator=(e);
        *_httpRep = *e._httpRep;
    }
    return *this;
}

CIMClientHTTPErrorException::~CIMClientHTTPErrorException()
{
    delete _httpRep;
}

Uint32 CIMClientHTTPErrorException::getCode() const
{
    return _httpRep->code;
}

String CIMClientHTTPErrorException::getCIMError() const
{
    return _httpRep->cimError;
}

String CIMClientHTTPErrorException::getCIMErrorDetail() const
{
    return _httpRep->cimErrorDetail;
}

CIMClientXmlException::CIMClientXmlException(const String& message) : Exception(message) {}

CIMClientResponseException::CIMClientResponseException(const String& message) : Exception(message)
{
}

PEGASUS_NAMESPACE_END
