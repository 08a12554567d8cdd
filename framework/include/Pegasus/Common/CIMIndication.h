//%/////////////////////////////////////////////////////////////////////////////
// CIMIndication: an indication delivered by an indication provider. This
// framework carries no indications; the class is an opaque placeholder so
// that IndicationResponseHandler declares its overloads as usual.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMIndication_h
#define Pegasus_CIMIndication_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMInstance.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE CIMIndication {
public:
    CIMIndication();
    CIMIndication(const CIMIndication& x);
    CIMIndication& operator=(const CIMIndication& x);
    ~CIMIndication();

private:
    void* _rep;
};

PEGASUS_NAMESPACE_END

#endif
