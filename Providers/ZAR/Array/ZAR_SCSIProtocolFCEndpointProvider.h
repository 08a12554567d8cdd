//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIProtocolFCEndpointProvider.h: the protocol endpoints of the
// array's Fibre Channel target ports, class ZAR_SCSIProtocolFCEndpoint in
// root/zar.
//
// One endpoint per FC target port, keyed by SystemCreationClassName
// "ZAR_StorageSystem", SystemName, CreationClassName
// "ZAR_SCSIProtocolFCEndpoint" and Name = the port's WWN as 16 upper-case
// hexadecimal digits. Instances also carry ElementName ("FC port N:S:P"),
// PortPosition ("N:S:P"), ConnectionType 2 (Fibre Channel), Role 3
// (target), OperationalStatus and HealthState of the port. Changes are
// refused.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SCSIProtocolFCEndpointProvider_h
#define ZAR_SCSIProtocolFCEndpointProvider_h

#include "ZAR_ProtocolEndpointBase.h"

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_SCSIProtocolFCEndpointProvider : public ZAR_ProtocolEndpointBase {
public:
    ZAR_SCSIProtocolFCEndpointProvider();

    // The path of the FC protocol endpoint of a port: class className,
    // namespace root/zar, no host, the system keys of systemName and Name =
    // portWWN as 16 upper-case hexadecimal digits (a text that is no WWN is
    // kept as given). portDeviceID is the port's position text "N:S:P";
    // the keys do not depend on it.
    static CIMObjectPath buildObjectPath(const String& className, const String& systemName,
                                         const String& portDeviceID, const String& portWWN);
};

PEGASUS_NAMESPACE_END

#endif
