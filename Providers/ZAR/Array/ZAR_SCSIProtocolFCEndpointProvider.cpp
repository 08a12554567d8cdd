//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIProtocolFCEndpointProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SCSIProtocolFCEndpointProvider.h"

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

ZAR_SCSIProtocolFCEndpointProvider::ZAR_SCSIProtocolFCEndpointProvider()
    : ZAR_ProtocolEndpointBase(String("ZAR_SCSIProtocolFCEndpointProvider"), ZAR_FC_ENDPOINT,
                               PORT_TYPE_FC)
{
}

CIMObjectPath ZAR_SCSIProtocolFCEndpointProvider::buildObjectPath(const String& className,
                                                                  const String& systemName,
                                                                  const String& /* portDeviceID */,
                                                                  const String& portWWN)
{
    return ZAR_Common::buildFCEndpointPath(className, systemName, portWWN);
}

PEGASUS_NAMESPACE_END
