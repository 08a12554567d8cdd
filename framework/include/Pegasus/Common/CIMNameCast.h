//%/////////////////////////////////////////////////////////////////////////////
// CIMNameCast.h: reinterpret a String as a CIMName or CIMNamespaceName
// without validation, for text already known to be legal. Internal header.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMNameCast_h
#define Pegasus_CIMNameCast_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/CIMName.h>

PEGASUS_NAMESPACE_BEGIN

// Each name class holds exactly one String, so the cast is layout-compatible.
inline const CIMName& CIMNameCast(const String& str)
{
    return *reinterpret_cast<const CIMName*>(&str);
}

inline const CIMNamespaceName& CIMNamespaceNameCast(const String& str)
{
    return *reinterpret_cast<const CIMNamespaceName*>(&str);
}

// The length of str if it is a legal ASCII-only CIM name, else 0.
PEGASUS_COMMON_LINKAGE Uint32 CIMNameLegalASCII(const char* str);

PEGASUS_NAMESPACE_END

#endif
