#include <Pegasus/Client/CIMEnumerationContext.h>

PEGASUS_NAMESPACE_BEGIN

class CIMEnumerationContextRep {
public:
    CIMNamespaceName nameSpace;
    String context;  // the server's EnumerationContext; empty when none
};

CIMEnumerationContext::CIMEnumerationContext() : _rep(new CIMEnumerationContextRep) {}

CIMEnumerationContext::~CIMEnumerationContext()
{
    delete _rep;
}

void CIMEnumerationContext::clear()
{
    _rep->nameSpace = CIMNamespaceName();
    _rep->context = String();
}

void CIMEnumerationContext::clearEnumeration()
{
    _rep->context = String();
}

CIMNamespaceName& CIMEnumerationContext::getNameSpace()
{
    return _rep->nameSpace;
}

void CIMEnumerationContext::setNameSpace(const CIMNamespaceName& n)
{
    _rep->nameSpace = n;
}

String& CIMEnumerationContext::getContextString()
{
    return _rep->context;
}

void CIMEnumerationContext::setContextString(const String& s)
{
    _rep->context = s;
}

PEGASUS_NAMESPACE_END
