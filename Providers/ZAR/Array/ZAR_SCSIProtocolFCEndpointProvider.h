//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIProtocolFCEndpointProvider.h: the protocol endpoints of the
// array's Fibre Channel target ports, class ZAR_SCSIProtocolFCEndpoint in
// root/zar.
//
// One endpoint per FC target port, keyed by SystemCreationClassName
// "ZAR_StorageSystem", SystemName, CreationClassName
// "ZAR_SCSIProtocolFCEndpoint" and Name = the port's WWN as 16 upper-case
// hexadecimal digits.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SCSIProtocolFCEndpointProvider_h
#define ZAR_SCSIProtocolFCEndpointProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMObjectPath.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_SCSIProtocolFCEndpointProvider
{
public:
    // The path of the FC protocol endpoint of a port: class className,
    // namespace root/zar, no host, the system keys of systemName and Name =
    // portWWN as 16 upper-case hexadecimal digits (a text that is no WWN is
    // kept as given). portDeviceID is the port's position text "N:S:P";
    // the keys do not depend on it.
    static CIMObjectPath buildObjectPath(const String& className,
        const String& systemName, const String& portDeviceID,
        const String& portWWN);
};

PEGASUS_NAMESPACE_END

#endif
