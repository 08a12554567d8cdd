//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIProtocolEndpointProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_iSCSIProtocolEndpointProvider.h"

PEGASUS_NAMESPACE_BEGIN

ZAR_iSCSIProtocolEndpointProvider::ZAR_iSCSIProtocolEndpointProvider()
    : ZAR_ProtocolEndpointBase(String("ZAR_iSCSIProtocolEndpointProvider"),
                               "ZAR_iSCSIProtocolEndpoint", PORT_TYPE_ISCSI)
{
}

ZAR_iSCSIProtocolEndpointProvider::~ZAR_iSCSIProtocolEndpointProvider() {}

String ZAR_iSCSIProtocolEndpointProvider::extractISCSIName(const String& targetName)
{
    // iSCSI names hold no commas, so the first ",t," starts the suffix.
    for (Uint32 i = 0; i + 3 <= targetName.size(); i++) {
        if (targetName[i] == ',' && (targetName[i + 1] == 't' || targetName[i + 1] == 'T') &&
            targetName[i + 2] == ',') {
            return targetName.subString(0, i);
        }
    }
    return targetName;
}

PEGASUS_NAMESPACE_END
