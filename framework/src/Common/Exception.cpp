// Exception, the specific exceptions of Exception.h, and CIMException.

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/CIMInstance.h>

#include "ExceptionRep.h"

PEGASUS_NAMESPACE_BEGIN

Exception::Exception(const String& message) : _rep(new ExceptionRep)
{
    _rep->message = message;
}

Exception::Exception(const Exception& exception) : _rep(new ExceptionRep(*exception._rep)) {}

Exception::Exception() : _rep(new ExceptionRep) {}

Exception::~Exception()
{
    delete _rep;
}

Exception& Exception::operator=(const Exception& exception)
{
    if (&exception != this)
        *_rep = *exception._rep;
    return *this;
}

const String& Exception::getMessage() const
{
    return _rep->message;
}

IndexOutOfBoundsException::IndexOutOfBoundsException() : Exception("index out of bounds") {}

AlreadyExistsException::AlreadyExistsException(const String& message)
    : Exception(String("already exists: ", message))
{
}

InvalidNameException::InvalidNameException(const String& name)
    : Exception(String("The CIM name is not valid: ", name))
{
}

InvalidNamespaceNameException::InvalidNamespaceNameException(const String& name)
    : Exception(String("invalid CIM namespace name: ", name))
{
}

UninitializedObjectException::UninitializedObjectException() : Exception("uninitialized object") {}

TypeMismatchException::TypeMismatchException() : Exception("type mismatch") {}

TypeMismatchException::TypeMismatchException(const String& message)
    : Exception(String("type mismatch: ", message))
{
}

DynamicCastFailedException::DynamicCastFailedException() : Exception("dynamic cast failed") {}

InvalidDateTimeFormatException::InvalidDateTimeFormatException()
    : Exception("invalid datetime format")
{
}

DateTimeOutOfRangeException::DateTimeOutOfRangeException(const String& message)
    : Exception(String("datetime is out of range: ", message))
{
}

MalformedObjectNameException::MalformedObjectNameException(const String& objectName)
    : Exception(String("malformed object name: ", objectName))
{
}

BindFailedException::BindFailedException(const String& message)
    : Exception(String("bind failed: ", message))
{
}

InvalidLocatorException::InvalidLocatorException(const String& locator)
    : Exception(String("invalid locator: ", locator))
{
}

CannotCreateSocketException::CannotCreateSocketException() : Exception("cannot create socket") {}

CannotConnectException::CannotConnectException(const String& message) : Exception(message) {}

AlreadyConnectedException::AlreadyConnectedException() : Exception("already connected") {}

NotConnectedException::NotConnectedException() : Exception("not connected") {}

ConnectionTimeoutException::ConnectionTimeoutException() : Exception("connection timed out") {}

InvalidEnumerationContextException::InvalidEnumerationContextException()
    : Exception("invalid enumeration context")
{
}

SSLException::SSLException(const String& message) : Exception(message) {}

//------------------------------------------------------------------------------
// CIMException
//------------------------------------------------------------------------------

CIMException::CIMException(CIMStatusCode code, const String& message) : Exception(message)
{
    _rep->code = code;
}

CIMException::CIMException(CIMStatusCode code, const String& message, const CIMInstance& instance)
    : Exception(message)
{
    _rep->code = code;
    addError(instance);
}

CIMException::CIMException(CIMStatusCode code, const String& message,
                           const Array<CIMInstance>& instances)
    : Exception(message)
{
    _rep->code = code;
    for (Uint32 i = 0; i < instances.size(); i++)
        addError(instances[i]);
}

CIMException::CIMException(const CIMException& cimException) : Exception(cimException) {}

CIMException& CIMException::operator=(const CIMException& cimException)
{
    Exception::operator=(cimException);
    return *this;
}

CIMException::~CIMException() {}

CIMStatusCode CIMException::getCode() const
{
    return _rep->code;
}

Uint32 CIMException::getErrorCount() const
{
    return _rep->errors.size();
}

CIMConstInstance CIMException::getError(Uint32 index) const
{
    return CIMConstInstance(_rep->errors[index]);
}

void CIMException::addError(const CIMInstance& instance)
{
    if (instance.isUninitialized())
        throw UninitializedObjectException();
    _rep->errors.append(instance);
}

// Out of line so that Array.h need not include this header.
void ArrayThrowIndexOutOfBoundsException()
{
    throw IndexOutOfBoundsException();
}

PEGASUS_NAMESPACE_END
