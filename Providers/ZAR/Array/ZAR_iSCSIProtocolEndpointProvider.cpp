//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIProtocolEndpointProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_iSCSIProtocolEndpointProvider.h"

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

ZAR_iSCSIProtocolEndpointProvider::ZAR_iSCSIProtocolEndpointProvider()
    : ZAR_ProtocolEndpointBase(String("ZAR_iSCSIProtocolEndpointProvider"), ZAR_ISCSI_ENDPOINT,
                               PORT_TYPE_ISCSI)
{
}

String ZAR_iSCSIProtocolEndpointProvider::extractISCSIName(const String& targetName)
{
    return ZAR_Common::extractISCSIName(targetName);
}

PEGASUS_NAMESPACE_END
