//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIControllerProvider.h: the array's views seen through iSCSI, as
// instances of ZAR_iSCSIController in root/zar.
//
// The iSCSI counterpart of the SCSI controller provider: the same view
// records, those of the iSCSI protocol, walked in chunks of 200 and
// delivered chunk by chunk. modifyInstance renames the host behind a view;
// create and delete are refused.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_iSCSIControllerProvider_h
#define ZAR_iSCSIControllerProvider_h

#include "ZAR_ArrayProviderBase.h"

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_iSCSIControllerProvider : public ZAR_ArrayProviderBase {
public:
    ZAR_iSCSIControllerProvider();
    virtual ~ZAR_iSCSIControllerProvider();

    // The view whose path matches (hosts ignored, the class of the path put
    // aside); CIMInvalidParameterException without a DeviceID key,
    // CIMObjectNotFoundException when none matches.
    virtual void getInstance(const OperationContext& context,
                             const CIMObjectPath& instanceReference,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList, InstanceResponseHandler& handler);

    // Every iSCSI view, delivered chunk by chunk. Failures become
    // CIMOperationFailedException.
    virtual void enumerateInstances(const OperationContext& context,
                                    const CIMObjectPath& classReference,
                                    const Boolean includeQualifiers,
                                    const Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList,
                                    InstanceResponseHandler& handler);

    // The path of every iSCSI view.
    virtual void enumerateInstanceNames(const OperationContext& context,
                                        const CIMObjectPath& classReference,
                                        ObjectPathResponseHandler& handler);

    // Renames the host behind the view (ElementName only).
    virtual void modifyInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject, const Boolean includeQualifiers,
                                const CIMPropertyList& propertyList, ResponseHandler& handler);

    // The path of a ZAR_iSCSIController view: host `host`, namespace
    // root/zar, keys SystemCreationClassName, SystemName, CreationClassName
    // "ZAR_iSCSIController" and DeviceID.
    static CIMObjectPath buildObjectPath(const String& systemCreationClassName, const String& host,
                                         const String& deviceID, const String& systemName);

private:
    // Walks every iSCSI view, chunk by chunk, handing each chunk to
    // `deliver`; stops early when it returns false.
    template <class Deliver>
    void _walk(const OperationContext& context, Boolean includeQualifiers,
               Boolean includeClassOrigin, const CIMPropertyList& propertyList, Deliver deliver);
};

PEGASUS_NAMESPACE_END

#endif
