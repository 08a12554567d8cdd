//%/////////////////////////////////////////////////////////////////////////////
// CIMMethodProvider: serves the extrinsic methods of its classes.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMMethodProvider_h
#define Pegasus_CIMMethodProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Provider/CIMProvider.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_PROVIDER_LINKAGE CIMMethodProvider : public virtual CIMProvider {
public:
    CIMMethodProvider();
    virtual ~CIMMethodProvider();

    // Runs methodName on objectReference (an instance or a class path) with
    // inParameters; delivers the output parameters with deliverParamValue()
    // and the return value with deliver().
    virtual void invokeMethod(const OperationContext& context, const CIMObjectPath& objectReference,
                              const CIMName& methodName, const Array<CIMParamValue>& inParameters,
                              MethodResultResponseHandler& handler) = 0;
};

PEGASUS_NAMESPACE_END

#endif
