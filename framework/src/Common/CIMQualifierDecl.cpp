// CIMQualifierDecl: placeholder that carries nothing.
#include <Pegasus/Common/CIMQualifierDecl.h>

PEGASUS_NAMESPACE_BEGIN

CIMQualifierDecl::CIMQualifierDecl() : _rep(0) {}

CIMQualifierDecl::CIMQualifierDecl(const CIMQualifierDecl&) : _rep(0) {}

CIMQualifierDecl& CIMQualifierDecl::operator=(const CIMQualifierDecl&)
{
    return *this;
}

CIMQualifierDecl::~CIMQualifierDecl() {}

PEGASUS_NAMESPACE_END
