// Names of CIM status codes.

#include <Pegasus/Common/CIMStatusCode.h>

#include <cstdio>

PEGASUS_NAMESPACE_BEGIN

namespace {

const char* const _names[] = {
    "CIM_ERR_SUCCESS",
    "CIM_ERR_FAILED",
    "CIM_ERR_ACCESS_DENIED",
    "CIM_ERR_INVALID_NAMESPACE",
    "CIM_ERR_INVALID_PARAMETER",
    "CIM_ERR_INVALID_CLASS",
    "CIM_ERR_NOT_FOUND",
    "CIM_ERR_NOT_SUPPORTED",
    "CIM_ERR_CLASS_HAS_CHILDREN",
    "CIM_ERR_CLASS_HAS_INSTANCES",
    "CIM_ERR_INVALID_SUPERCLASS",
    "CIM_ERR_ALREADY_EXISTS",
    "CIM_ERR_NO_SUCH_PROPERTY",
    "CIM_ERR_TYPE_MISMATCH",
    "CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED",
    "CIM_ERR_INVALID_QUERY",
    "CIM_ERR_METHOD_NOT_AVAILABLE",
    "CIM_ERR_METHOD_NOT_FOUND",
    "empty",
    "empty",
    "CIM_ERR_NAMESPACE_NOT_EMPTY",
    "CIM_ERR_INVALID_ENUMERATION_CONTEXT",
    "CIM_ERR_INVALID_OPERATION_TIMEOUT",
    "CIM_ERR_PULL_HAS_BEEN_ABANDONED",
    "CIM_ERR_PULL_CANNOT_BE_ABANDONED",
    "CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED",
    "CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED",
    "CIM_ERR_SERVER_LIMITS_EXCEEDED",
    "CIM_ERR_SERVER_IS_SHUTTING_DOWN",
};

const Uint32 _count = sizeof(_names) / sizeof(_names[0]);

// True for the codes the enumeration names (18 and 19 are gaps).
bool _known(Uint32 code)
{
    return code < _count && code != 18 && code != 19;
}

}  // namespace

const char* cimStatusCodeToString(CIMStatusCode code)
{
    Uint32 c = Uint32(code);
    if (c < _count)
        return _names[c];
    return "Unrecognized CIM status code";
}

String cimStatusCodeToString(CIMStatusCode code, const ContentLanguageList& contentLanguages)
{
    (void)contentLanguages;
    Uint32 c = Uint32(code);
    if (_known(c))
        return String(_names[c]);
    char buf[64];
    std::snprintf(buf, sizeof(buf), "Unrecognized CIM status code \"%u\"", c);
    return String(buf);
}

ContentLanguageList cimStatusCodeToString_Thread(String& message, CIMStatusCode code)
{
    message = cimStatusCodeToString(code, ContentLanguageList());
    return ContentLanguageList();
}

PEGASUS_NAMESPACE_END
