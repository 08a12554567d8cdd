//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIControllerProvider.h: the array's FC views (SCSI protocol
// controllers) as instances of ZAR_SCSIController in root/zar. The
// operations are those of every view provider (ZAR_ViewProviderBase); this
// class adds the identity and instance threshold cached at initialize, and
// matches a requested path as given, its class included.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SCSIControllerProvider_h
#define ZAR_SCSIControllerProvider_h

#include <ZAR_ViewProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_SCSIControllerProvider : public ZAR_ViewProviderBase {
public:
    // Members empty; nothing is asked of the array before initialize.
    ZAR_SCSIControllerProvider();

    // Always throws CIMNotSupportedException.
    ZAR_SCSIControllerProvider(const CIMObjectPath& path);

    virtual ~ZAR_SCSIControllerProvider();

    // Opens the array library for the server and caches the system's host
    // name, name and the instance threshold.
    virtual void initialize(CIMOMHandle& cimom);

    // A view instance from an array record (for other modules).
    CIMInstance buildInstance(String systemCreationClassName, CIMClass cls, vlun* record,
                              const String& systemName, const String& host);

    // The path of a ZAR_SCSIController view.
    static CIMObjectPath buildObjectPath(String systemCreationClassName, const String& host,
                                         const String& systemName, const String& deviceID);

protected:
    virtual void _viewIdentity(String& systemName, String& host);

private:
    String _hostAddr;
    String _systemName;
};

PEGASUS_NAMESPACE_END

#endif
