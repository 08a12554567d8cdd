//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonClientAddress.cpp: the client's IP address of a request.
//
// The one place that reads beyond the OpenPegasus provider interface: this
// framework's server records the client's address in a container of the
// operation context. Against OpenPegasus, which passes no address to
// providers, the address is an empty text.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#ifdef ZAR_FRAMEWORK_CLIENT_ADDRESS
#include <Pegasus/Common/ClientAddressContainer.h>
#endif

PEGASUS_NAMESPACE_BEGIN

String ZAR_Common::getClientIPAddress(const OperationContext& context)
{
#ifdef ZAR_FRAMEWORK_CLIENT_ADDRESS
    if (!context.contains(ClientAddressContainer::NAME))
        return String();
    ClientAddressContainer container(context.get(ClientAddressContainer::NAME));
    return container.getAddress();
#else
    (void)context;
    return String();
#endif
}

PEGASUS_NAMESPACE_END
