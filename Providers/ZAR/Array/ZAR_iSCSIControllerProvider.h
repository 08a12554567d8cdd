//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIControllerProvider.h: the array's views seen through iSCSI, as
// instances of ZAR_iSCSIController in root/zar.
//
// The iSCSI counterpart of the SCSI controller provider, with the same
// operations (ZAR_ViewProviderBase); the identity is read from the array
// on each request, and a requested path is compared by its keys alone
// (a path naming a superclass finds the view).
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_iSCSIControllerProvider_h
#define ZAR_iSCSIControllerProvider_h

#include <ZAR_ViewProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_iSCSIControllerProvider : public ZAR_ViewProviderBase {
public:
    ZAR_iSCSIControllerProvider();

    // The path of a ZAR_iSCSIController view: host `host`, namespace
    // root/zar, keys SystemCreationClassName, SystemName, CreationClassName
    // "ZAR_iSCSIController" and DeviceID.
    static CIMObjectPath buildObjectPath(const String& systemCreationClassName, const String& host,
                                         const String& deviceID, const String& systemName);

protected:
    virtual void _viewIdentity(String& systemName, String& host);
    virtual CIMObjectPath _wanted(const CIMObjectPath& instanceReference);
};

PEGASUS_NAMESPACE_END

#endif
