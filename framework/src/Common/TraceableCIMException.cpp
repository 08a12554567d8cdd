// TraceableCIMException and the internal exceptions of InternalException.h.

#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>

#include <cstdio>

#include "ExceptionRep.h"

PEGASUS_NAMESPACE_BEGIN

NullPointer::NullPointer() : Exception("null pointer") {}

NoSuchProperty::NoSuchProperty(const String& key) : Exception(String("no such property: ", key)) {}

TraceableCIMException::TraceableCIMException(CIMStatusCode code, const String& message,
                                             const String& file, Uint32 line)
    : CIMException(code, message)
{
    _rep->file = file;
    _rep->line = line;
    _rep->cimMessage = cimStatusCodeToString(code, ContentLanguageList());
}

TraceableCIMException::TraceableCIMException(CIMStatusCode code, const MessageLoaderParms& parms,
                                             const String& file, Uint32 line)
    : CIMException(code, parms.toString())
{
    _rep->file = file;
    _rep->line = line;
    _rep->contentLanguages = parms.contentlanguages;
    _rep->cimMessage = cimStatusCodeToString(code, ContentLanguageList());
}

TraceableCIMException::TraceableCIMException(const ContentLanguageList& langs, CIMStatusCode code,
                                             const String& message, const String& file, Uint32 line)
    : CIMException(code, message)
{
    _rep->file = file;
    _rep->line = line;
    _rep->contentLanguages = langs;
    _rep->cimMessage = cimStatusCodeToString(code, ContentLanguageList());
}

TraceableCIMException::TraceableCIMException(const CIMException& cimException)
    : CIMException(cimException)
{
    if (_rep->cimMessage.size() == 0)
        _rep->cimMessage = cimStatusCodeToString(_rep->code, ContentLanguageList());
}

String TraceableCIMException::getDescription() const
{
    String d(cimStatusCodeToString(_rep->code, ContentLanguageList()));
    if (_rep->message.size() != 0) {
        d.append(": ");
        d.append(_rep->message);
    }
    return d;
}

String TraceableCIMException::getTraceDescription() const
{
    String d(_rep->file);
    char buf[32];
    std::snprintf(buf, sizeof(buf), "(%u): ", _rep->line);
    d.append(buf);
    d.append(getDescription());
    return d;
}

String TraceableCIMException::getCIMMessage() const
{
    return _rep->cimMessage;
}

void TraceableCIMException::setCIMMessage(const String& cimMessage)
{
    _rep->cimMessage = cimMessage;
}

String TraceableCIMException::getFile() const
{
    return _rep->file;
}

Uint32 TraceableCIMException::getLine() const
{
    return _rep->line;
}

const ContentLanguageList& TraceableCIMException::getContentLanguages() const
{
    return _rep->contentLanguages;
}

PEGASUS_NAMESPACE_END
