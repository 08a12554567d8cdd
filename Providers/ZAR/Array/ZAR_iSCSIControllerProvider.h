//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIControllerProvider.h: the array's views seen through iSCSI, as
// instances of ZAR_iSCSIController in root/zar.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_iSCSIControllerProvider_h
#define ZAR_iSCSIControllerProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMObjectPath.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_iSCSIControllerProvider
{
public:
    // The path of a ZAR_iSCSIController view: host `host`, namespace
    // root/zar, keys SystemCreationClassName, SystemName, CreationClassName
    // "ZAR_iSCSIController" and DeviceID.
    static CIMObjectPath buildObjectPath(const String& systemCreationClassName,
        const String& host, const String& deviceID, const String& systemName);
};

PEGASUS_NAMESPACE_END

#endif
