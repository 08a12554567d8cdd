//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIControllerProvider.h: the array's views (SCSI protocol
// controllers) as instances of ZAR_SCSIController in root/zar.
//
// The provider holds no list of its own: every request walks the array's
// view records in chunks of 200 and delivers each chunk before the next is
// fetched. modifyInstance renames the host behind a view; create and delete
// are refused.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SCSIControllerProvider_h
#define ZAR_SCSIControllerProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <zarapi.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_SCSIControllerProvider : public CIMInstanceProvider {
public:
    // Members empty; nothing is asked of the array before initialize.
    ZAR_SCSIControllerProvider();

    // Always throws CIMNotSupportedException.
    ZAR_SCSIControllerProvider(const CIMObjectPath& path);

    virtual ~ZAR_SCSIControllerProvider();

    // Opens the array library for the server and caches the system's host
    // name, name and the instance threshold.
    virtual void initialize(CIMOMHandle& cimom);

    // Deletes the provider object.
    virtual void terminate();

    // The view whose path matches instanceReference (hosts ignored), or
    // CIMObjectNotFoundException; CIMInvalidParameterException without a
    // DeviceID key.
    virtual void getInstance(const OperationContext& context,
                             const CIMObjectPath& instanceReference,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList, InstanceResponseHandler& handler);

    // Every view, delivered chunk by chunk. Failures become
    // CIMOperationFailedException.
    virtual void enumerateInstances(const OperationContext& context,
                                    const CIMObjectPath& classReference,
                                    const Boolean includeQualifiers,
                                    const Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList,
                                    InstanceResponseHandler& handler);

    // The path of every view.
    virtual void enumerateInstanceNames(const OperationContext& context,
                                        const CIMObjectPath& classReference,
                                        ObjectPathResponseHandler& handler);

    // Renames the host behind the view (ElementName only).
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

    // A view instance from an array record (for other modules).
    CIMInstance buildInstance(String systemCreationClassName, CIMClass cls, vlun* record,
                              const String& systemName, const String& host);

    // The path of a ZAR_SCSIController view.
    CIMObjectPath buildObjectPath(String systemCreationClassName, const String& host,
                                  const String& systemName, const String& deviceID);

private:
    CIMOMHandle _cimom;
    String _hostAddr;
    String _systemName;
    Uint32 _maxInstCount;
};

PEGASUS_NAMESPACE_END

#endif
