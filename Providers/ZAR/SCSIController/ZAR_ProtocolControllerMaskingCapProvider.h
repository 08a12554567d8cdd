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
#include <Pegasus/Provider/CIMInstanceProvider.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_ProtocolControllerMaskingCapabilitiesProvider : public CIMInstanceProvider {
public:
    // Members empty; nothing is asked of the array before initialize.
    ZAR_ProtocolControllerMaskingCapabilitiesProvider();

    // Always throws CIMNotSupportedException.
    ZAR_ProtocolControllerMaskingCapabilitiesProvider(const CIMObjectPath& path);

    virtual ~ZAR_ProtocolControllerMaskingCapabilitiesProvider();

    // Opens the array library, caches the system's host name and builds
    // the instance's path from the storage system's Name.
    virtual void initialize(CIMOMHandle& cimom);

    // Deletes the provider object.
    virtual void terminate();

    // The instance, for a path of this class or of
    // CIM_ProtocolControllerMaskingCapabilities with its one key.
    virtual void getInstance(const OperationContext& context,
                             const CIMObjectPath& instanceReference,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList, InstanceResponseHandler& handler);

    virtual void enumerateInstances(const OperationContext& context,
                                    const CIMObjectPath& classReference,
                                    const Boolean includeQualifiers,
                                    const Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList,
                                    InstanceResponseHandler& handler);

    virtual void enumerateInstanceNames(const OperationContext& context,
                                        const CIMObjectPath& classReference,
                                        ObjectPathResponseHandler& handler);

    // Refused: CIMNotSupportedException.
    virtual void modifyInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject, const Boolean includeQualifiers,
                                const CIMPropertyList& propertyList, ResponseHandler& handler);

    // Refused: CIMNotSupportedException.
    virtual void createInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject,
                                ObjectPathResponseHandler& handler);

    // Refused: CIMNotSupportedException.
    virtual void deleteInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference, ResponseHandler& handler);

private:
    // Fills _systemName, _instanceID and _instanceName.
    void _buildInstanceName();

    // The instance, built afresh from the stored class.
    CIMInstance _buildInstance(bool includeQualifiers, bool includeClassOrigin,
                               const CIMPropertyList& propertyList);

    // Throws CIMNotSupportedException unless the class is this one or its
    // CIM superclass.
    void _checkClassName(const CIMName& className);

    CIMOMHandle _cimom;
    String _systemName;
    String _instanceID;
    CIMObjectPath _instanceName;
    String _systemAddress;
};

PEGASUS_NAMESPACE_END

#endif
