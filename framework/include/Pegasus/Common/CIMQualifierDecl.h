//%/////////////////////////////////////////////////////////////////////////////
// CIMQualifierDecl: a qualifier type declaration as a schema repository holds
// it. Providers never need one; this framework keeps no qualifier
// declarations, so the class is an opaque placeholder that lets code naming
// the type (and CIMClient.h, which includes this header) compile.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMQualifierDecl_h
#define Pegasus_CIMQualifierDecl_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Array.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE CIMQualifierDecl {
public:
    CIMQualifierDecl();
    CIMQualifierDecl(const CIMQualifierDecl& x);
    CIMQualifierDecl& operator=(const CIMQualifierDecl& x);
    ~CIMQualifierDecl();

private:
    void* _rep;
};

PEGASUS_NAMESPACE_END

#endif
