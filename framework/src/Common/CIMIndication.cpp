// CIMIndication: placeholder that carries nothing.
#include <Pegasus/Common/CIMIndication.h>

PEGASUS_NAMESPACE_BEGIN

CIMIndication::CIMIndication() : _rep(0) {}

CIMIndication::CIMIndication(const CIMIndication&) : _rep(0) {}

CIMIndication& CIMIndication::operator=(const CIMIndication&)
{
    return *this;
}

CIMIndication::~CIMIndication() {}

PEGASUS_NAMESPACE_END
