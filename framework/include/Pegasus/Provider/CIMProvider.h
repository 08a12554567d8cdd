//%/////////////////////////////////////////////////////////////////////////////
// CIMProvider: the base of every provider interface.
//
// The server creates a provider through the module's
//   extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String&)
// calls initialize() once before the first request and terminate() when it
// unloads the provider. The server never deletes a provider: by convention
// terminate() ends with "delete this;".
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMProvider_h
#define Pegasus_CIMProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <Pegasus/Provider/ProviderException.h>
#include <Pegasus/Common/ResponseHandler.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_PROVIDER_LINKAGE CIMProvider {
public:
    CIMProvider();
    virtual ~CIMProvider();
    // Called once after creation; cimom reaches the server for the
    // provider's own requests (keep a copy). Throwing fails the load.
    virtual void initialize(CIMOMHandle& cimom) = 0;
    // Called once when the provider is unloaded.
    virtual void terminate() = 0;
};

PEGASUS_NAMESPACE_END

#endif
