//%/////////////////////////////////////////////////////////////////////////////
// Exception.h: the base Exception, the framework's specific exceptions and
// CIMException, which carries a CIM status code.
//
// Exception does not derive from std::exception. Only CIMException and its
// subclasses carry a status code; everything else derives directly from
// Exception and reports its text through getMessage().
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Exception_h
#define Pegasus_Exception_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/ContentLanguageList.h>
#include <Pegasus/Common/Array.h>

PEGASUS_NAMESPACE_BEGIN

class ExceptionRep;
class CIMInstance;
class CIMConstInstance;

class PEGASUS_COMMON_LINKAGE Exception {
public:
    // An exception whose getMessage() is message.
    Exception(const String& message);

    Exception(const Exception& exception);

    virtual ~Exception();

    Exception& operator=(const Exception& exception);

    // The message text.
    virtual const String& getMessage() const;

protected:
    // An exception with an empty message.
    Exception();

    ExceptionRep* _rep;
};

// "index out of bounds"
class PEGASUS_COMMON_LINKAGE IndexOutOfBoundsException : public Exception {
public:
    IndexOutOfBoundsException();
};

// "already exists: <message>"
class PEGASUS_COMMON_LINKAGE AlreadyExistsException : public Exception {
public:
    AlreadyExistsException(const String& message);
};

// "The CIM name is not valid: <name>"
class PEGASUS_COMMON_LINKAGE InvalidNameException : public Exception {
public:
    InvalidNameException(const String& name);
};

// "invalid CIM namespace name: <name>"
class PEGASUS_COMMON_LINKAGE InvalidNamespaceNameException : public Exception {
public:
    InvalidNamespaceNameException(const String& name);
};

// "uninitialized object": a handle without an object was used.
class PEGASUS_COMMON_LINKAGE UninitializedObjectException : public Exception {
public:
    UninitializedObjectException();
};

// "type mismatch", or "type mismatch: <message>".
class PEGASUS_COMMON_LINKAGE TypeMismatchException : public Exception {
public:
    TypeMismatchException();
    TypeMismatchException(const String& message);
};

// "dynamic cast failed"
class PEGASUS_COMMON_LINKAGE DynamicCastFailedException : public Exception {
public:
    DynamicCastFailedException();
};

// "invalid datetime format"
class PEGASUS_COMMON_LINKAGE InvalidDateTimeFormatException : public Exception {
public:
    InvalidDateTimeFormatException();
};

// "datetime is out of range: <message>"
class PEGASUS_COMMON_LINKAGE DateTimeOutOfRangeException : public Exception {
public:
    DateTimeOutOfRangeException(const String& message);
};

// "malformed object name: <objectName>"
class PEGASUS_COMMON_LINKAGE MalformedObjectNameException : public Exception {
public:
    MalformedObjectNameException(const String& objectName);
};

// "bind failed: <message>"
class PEGASUS_COMMON_LINKAGE BindFailedException : public Exception {
public:
    BindFailedException(const String& message);
};

// "invalid locator: <locator>"
class PEGASUS_COMMON_LINKAGE InvalidLocatorException : public Exception {
public:
    InvalidLocatorException(const String& locator);
};

// "cannot create socket"
class PEGASUS_COMMON_LINKAGE CannotCreateSocketException : public Exception {
public:
    CannotCreateSocketException();
};

// The message as given, e.g. "Cannot connect to 127.0.0.1:1. Connection failed."
class PEGASUS_COMMON_LINKAGE CannotConnectException : public Exception {
public:
    CannotConnectException(const String& message);
};

// "already connected"
class PEGASUS_COMMON_LINKAGE AlreadyConnectedException : public Exception {
public:
    AlreadyConnectedException();
};

// "not connected"
class PEGASUS_COMMON_LINKAGE NotConnectedException : public Exception {
public:
    NotConnectedException();
};

// "connection timed out"
class PEGASUS_COMMON_LINKAGE ConnectionTimeoutException : public Exception {
public:
    ConnectionTimeoutException();
};

// "invalid enumeration context"
class PEGASUS_COMMON_LINKAGE InvalidEnumerationContextException : public Exception {
public:
    InvalidEnumerationContextException();
};

// The message as given.
class PEGASUS_COMMON_LINKAGE SSLException : public Exception {
public:
    SSLException(const String& message);
};

// An error with a CIM status code. getMessage() is the message exactly as
// given (no status-name prefix). Optional CIM_Error instances travel with it.
class PEGASUS_COMMON_LINKAGE CIMException : public Exception {
public:
    // Implicit from a status code.
    CIMException(CIMStatusCode code = CIM_ERR_SUCCESS, const String& message = String::EMPTY);

    // With one CIM_Error instance.
    CIMException(CIMStatusCode code, const String& message, const CIMInstance& instance);

    // With several CIM_Error instances.
    CIMException(CIMStatusCode code, const String& message, const Array<CIMInstance>& instances);

    CIMException(const CIMException& cimException);

    CIMException& operator=(const CIMException& cimException);

    virtual ~CIMException();

    // The status code (any value, including vendor codes cast to CIMStatusCode).
    CIMStatusCode getCode() const;

    // Number of attached CIM_Error instances.
    Uint32 getErrorCount() const;

    // The attached instance at index; throws IndexOutOfBoundsException.
    CIMConstInstance getError(Uint32 index) const;

    // Attaches a CIM_Error instance.
    void addError(const CIMInstance& instance);
};

PEGASUS_NAMESPACE_END

#endif
