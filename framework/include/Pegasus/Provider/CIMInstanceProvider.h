//%/////////////////////////////////////////////////////////////////////////////
// CIMInstanceProvider: serves the instance operations of its classes.
//
// Each operation reports its results through handler (processing, deliver,
// complete) and its failures by throwing a CIMException (usually one of
// ProviderException.h). Calls may run in parallel on several threads.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMInstanceProvider_h
#define Pegasus_CIMInstanceProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Provider/CIMProvider.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_PROVIDER_LINKAGE CIMInstanceProvider : public virtual CIMProvider {
public:
    CIMInstanceProvider();
    virtual ~CIMInstanceProvider();

    // Delivers the one instance named by instanceReference.
    virtual void getInstance(const OperationContext& context,
                             const CIMObjectPath& instanceReference,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList,
                             InstanceResponseHandler& handler) = 0;

    // Delivers every instance of the class of classReference, each with its
    // path set.
    virtual void enumerateInstances(const OperationContext& context,
                                    const CIMObjectPath& classReference,
                                    const Boolean includeQualifiers,
                                    const Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList,
                                    InstanceResponseHandler& handler) = 0;

    // Delivers the path of every instance of the class of classReference.
    virtual void enumerateInstanceNames(const OperationContext& context,
                                        const CIMObjectPath& classReference,
                                        ObjectPathResponseHandler& handler) = 0;

    // Changes the named instance to instanceObject's values (only the
    // properties in a non-NULL propertyList).
    virtual void modifyInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject, const Boolean includeQualifiers,
                                const CIMPropertyList& propertyList, ResponseHandler& handler) = 0;

    // Creates the instance and delivers its path.
    virtual void createInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject,
                                ObjectPathResponseHandler& handler) = 0;

    // Deletes the named instance.
    virtual void deleteInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                ResponseHandler& handler) = 0;
};

PEGASUS_NAMESPACE_END

#endif
