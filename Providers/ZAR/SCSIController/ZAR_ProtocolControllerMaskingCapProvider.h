//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ProtocolControllerMaskingCapProvider.h: the array's one instance of
// ZAR_ProtocolControllerMaskingCapabilities in root/zar, telling clients
// what masking and mapping the array supports.
//
// Every value is fixed except OneHardwareIDPerView, which follows bit 0x4
// of the internal cache service's policy word on every request. The
// instance's path (key InstanceID = "KESTREL:<system name>") is built once
// at initialisation.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ProtocolControllerMaskingCapProvider_h
#define ZAR_ProtocolControllerMaskingCapProvider_h

#include <Pegasus/Common/Config.h>

#include <ZAR_SingleInstanceProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_ProtocolControllerMaskingCapabilitiesProvider : public ZAR_SingleInstanceProviderBase {
public:
    // Members empty; nothing is asked of the array before initialize.
    ZAR_ProtocolControllerMaskingCapabilitiesProvider();

    // Always throws CIMNotSupportedException.
    ZAR_ProtocolControllerMaskingCapabilitiesProvider(const CIMObjectPath& path);

    virtual ~ZAR_ProtocolControllerMaskingCapabilitiesProvider();

    // Opens the array library, caches the system's host name and builds
    // the instance's path from the storage system's Name.
    virtual void initialize(CIMOMHandle& cimom);

private:
    // Fills _systemName, _instanceID and _instanceName.
    void _buildInstanceName();

    // The instance, built afresh from the stored class.
    virtual CIMInstance _buildInstance(bool includeQualifiers, bool includeClassOrigin,
                                       const CIMPropertyList& propertyList);

    String _systemName;
    String _instanceID;
    CIMObjectPath _instanceName;
    String _systemAddress;
};

PEGASUS_NAMESPACE_END

#endif
