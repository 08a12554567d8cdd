//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIProtocolEndpointProvider.h: the protocol endpoints of the
// array's iSCSI target ports, class ZAR_iSCSIProtocolEndpoint in root/zar.
//
// One endpoint per iSCSI target port, keyed as the FC endpoints; its Name
// is the port's target name "<iSCSI name>,t,0x<portal group tag>", the tag
// being the port's position in four hexadecimal digits. Instances also
// carry ElementName ("iSCSI port N:S:P"), PortPosition, ConnectionType 7
// (iSCSI), Role 3 (target), OperationalStatus and HealthState. Changes are
// refused.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_iSCSIProtocolEndpointProvider_h
#define ZAR_iSCSIProtocolEndpointProvider_h

#include "ZAR_ProtocolEndpointBase.h"

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_iSCSIProtocolEndpointProvider : public ZAR_ProtocolEndpointBase {
public:
    ZAR_iSCSIProtocolEndpointProvider();

    // The iSCSI name part of a target name "<iSCSI name>,t,<portal group
    // tag>" (the text before the first ",t,", case ignored), or targetName
    // itself when it has no such suffix.
    static String extractISCSIName(const String& targetName);
};

PEGASUS_NAMESPACE_END

#endif
