//%/////////////////////////////////////////////////////////////////////////////
// InternalException.h: TraceableCIMException (a CIMException that remembers
// the source file and line that raised it) and the internal exceptions the
// framework throws from its object model. Internal header: like OpenPegasus's,
// it names MessageLoaderParms without declaring it, so MessageLoader.h has to
// be included first.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_InternalException_h
#define Pegasus_InternalException_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/PegasusAssert.h>

PEGASUS_NAMESPACE_BEGIN

// "null pointer": a null pointer was passed where text or an object was needed.
class PEGASUS_COMMON_LINKAGE NullPointer : public Exception {
public:
    NullPointer();
};

// "no such property: <key>"
class PEGASUS_COMMON_LINKAGE NoSuchProperty : public Exception {
public:
    NoSuchProperty(const String& key);
};

// A CIMException that also records where it was raised. getMessage() is the
// message alone; getDescription() prefixes the status name.
class PEGASUS_COMMON_LINKAGE TraceableCIMException : public CIMException {
public:
    TraceableCIMException(CIMStatusCode code, const String& message, const String& file,
                          Uint32 line);

    // The message is parms formatted (see MessageLoader.h).
    TraceableCIMException(CIMStatusCode code, const MessageLoaderParms& parms, const String& file,
                          Uint32 line);

    TraceableCIMException(const ContentLanguageList& langs, CIMStatusCode code,
                          const String& message, const String& file, Uint32 line);

    // Wraps any CIMException (file and line as the original had them, if any).
    TraceableCIMException(const CIMException& cimException);

    // "<CIM_ERR_NAME>: <message>", or the name alone for an empty message;
    // for a code outside the enumeration the name is
    // Unrecognized CIM status code "<n>".
    String getDescription() const;

    // "<file>(<line>): " followed by getDescription().
    String getTraceDescription() const;

    // The status name (e.g. "CIM_ERR_ACCESS_DENIED") unless set otherwise.
    String getCIMMessage() const;

    void setCIMMessage(const String& cimMessage);

    String getFile() const;

    Uint32 getLine() const;

    const ContentLanguageList& getContentLanguages() const;
};

#define PEGASUS_CIM_EXCEPTION(CODE, EXTRA_MESSAGE) \
    TraceableCIMException(CODE, EXTRA_MESSAGE, String(__FILE__), __LINE__)

#define PEGASUS_CIM_EXCEPTION_LANG(LANGS, CODE, EXTRA_MESSAGE) \
    TraceableCIMException(LANGS, CODE, EXTRA_MESSAGE, String(__FILE__), __LINE__)

#define PEGASUS_CIM_EXCEPTION_L(CODE, MSG_PARMS) \
    TraceableCIMException(CODE, MSG_PARMS, String(__FILE__), __LINE__)

PEGASUS_NAMESPACE_END

#endif
