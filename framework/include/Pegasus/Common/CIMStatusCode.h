//%/////////////////////////////////////////////////////////////////////////////
// CIMStatusCode: the DMTF status codes of CIM operations, and their names.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMStatusCode_h
#define Pegasus_CIMStatusCode_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/ContentLanguageList.h>

PEGASUS_NAMESPACE_BEGIN

// The underlying type is fixed so that vendor codes (e.g. 4096 and above,
// passed as (CIMStatusCode)4100) are valid values of the type.
enum CIMStatusCode : int {
    CIM_ERR_SUCCESS = 0,
    CIM_ERR_FAILED = 1,
    CIM_ERR_ACCESS_DENIED = 2,
    CIM_ERR_INVALID_NAMESPACE = 3,
    CIM_ERR_INVALID_PARAMETER = 4,
    CIM_ERR_INVALID_CLASS = 5,
    CIM_ERR_NOT_FOUND = 6,
    CIM_ERR_NOT_SUPPORTED = 7,
    CIM_ERR_CLASS_HAS_CHILDREN = 8,
    CIM_ERR_CLASS_HAS_INSTANCES = 9,
    CIM_ERR_INVALID_SUPERCLASS = 10,
    CIM_ERR_ALREADY_EXISTS = 11,
    CIM_ERR_NO_SUCH_PROPERTY = 12,
    CIM_ERR_TYPE_MISMATCH = 13,
    CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED = 14,
    CIM_ERR_INVALID_QUERY = 15,
    CIM_ERR_METHOD_NOT_AVAILABLE = 16,
    CIM_ERR_METHOD_NOT_FOUND = 17,
    CIM_ERR_NAMESPACE_NOT_EMPTY = 20,
    CIM_ERR_INVALID_ENUMERATION_CONTEXT = 21,
    CIM_ERR_INVALID_OPERATION_TIMEOUT = 22,
    CIM_ERR_PULL_HAS_BEEN_ABANDONED = 23,
    CIM_ERR_PULL_CANNOT_BE_ABANDONED = 24,
    CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED = 25,
    CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED = 26,
    CIM_ERR_SERVER_LIMITS_EXCEEDED = 27,
    CIM_ERR_SERVER_IS_SHUTTING_DOWN = 28
};

// The enumerator's name ("CIM_ERR_FAILED"); "empty" for 18 and 19 and
// "Unrecognized CIM status code" for codes above 28.
PEGASUS_COMMON_LINKAGE const char* cimStatusCodeToString(CIMStatusCode code);

// The enumerator's name, or Unrecognized CIM status code "<n>" for a code
// outside the enumeration (the form a CIM-XML error DESCRIPTION uses).
PEGASUS_COMMON_LINKAGE String cimStatusCodeToString(CIMStatusCode code,
                                                    const ContentLanguageList& contentLanguages);

// As the two-argument form, storing the text in message; returns the
// languages of the text.
PEGASUS_COMMON_LINKAGE ContentLanguageList cimStatusCodeToString_Thread(String& message,
                                                                        CIMStatusCode code);

PEGASUS_NAMESPACE_END

#endif
