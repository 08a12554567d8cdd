//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ConfigServicesForSCSIControllerProvider.h: the association
// ZAR_ConfigServicesForSCSIController (a CIM_ConcreteDependency) in
// root/zar, tying the array's configuration service (Antecedent) to each
// of its Fibre Channel views, ZAR_SCSIController (Dependent).
//
// The associations are built on request from the views the server lists;
// the service's path is found at initialisation.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ConfigServicesForSCSIControllerProvider_h
#define ZAR_ConfigServicesForSCSIControllerProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMAssociationProvider.h>

#include <ZAR_InstanceListProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_ConfigServicesForSCSIControllerProvider : public ZAR_AssociationOperations,
                                                    public ZAR_InstanceListProviderBase {
public:
    // Members empty; nothing is asked of the array before initialize.
    ZAR_ConfigServicesForSCSIControllerProvider();

    virtual ~ZAR_ConfigServicesForSCSIControllerProvider();

    // Opens the array library and finds the service's path and the
    // array's host name.
    virtual void initialize(CIMOMHandle& cimom);

protected:
    // From the service: every view; from a view: the service (the far
    // ends' instances, or their paths for associatorNames); references:
    // the associations of either end (instances or paths), Antecedent the
    // service and Dependent the view. Parameters that cannot name this
    // association, and an object that does not exist, give an empty
    // result.
    virtual void _answerAssociation(const AssociationRequest& request, AssociationAnswer& answer);

    // The association instance a path names (hosts ignored; a path
    // without namespace names root/zar), if its view exists.
    virtual Boolean _findInstance(const ReadRequest& request, CIMInstance& found);
    // One association per FC view of the array, asked of the server.
    virtual Array<CIMInstance> _listInstances(const ReadRequest& request);
    virtual Array<CIMObjectPath> _listInstanceNames(const OperationContext& context);

private:
    // The far ends of objectName: every view from the service, the service
    // from a view, nothing from another class.
    Array<CIMObjectPath> _getRelatedInstanceNames(const CIMObjectPath& objectName,
                                                  const OperationContext& context);
    Array<CIMInstance> _getRelatedInstances(const CIMObjectPath& objectName,
                                            const OperationContext& context,
                                            Boolean includeQualifiers, Boolean includeClassOrigin,
                                            const CIMPropertyList& propertyList);

    // The association paths (instances) of objectName: one per view from
    // the service, one from a view; from an association path, that one
    // association when its view exists.
    Array<CIMObjectPath> _buildAssociationInstanceNames(const CIMObjectPath& objectName,
                                                        const OperationContext& context);
    Array<CIMInstance> _buildAssociationInstances(const CIMObjectPath& objectName,
                                                  const OperationContext& context,
                                                  Boolean includeQualifiers,
                                                  Boolean includeClassOrigin,
                                                  const CIMPropertyList& propertyList);

    // True when role, resultRole or resultClass cannot name this
    // association from objectName for the operation ("associators",
    // "associatorNames", "references" or "referenceNames").
    Boolean _invalidParms(const CIMObjectPath& objectName, String role, String resultRole,
                          const CIMName& resultClass, String operation);

    // True, after completing handler, when the operation has nothing to
    // answer: parameters that cannot name this association (invalid), or
    // an object that does not exist.
    Boolean _nothingToAnswer(const OperationContext& context, const CIMObjectPath& objectName,
                             Boolean invalid, const char* operation, const CIMName& resultClass,
                             ResponseHandler& handler);

    // True when the object exists, asked through the server.
    Boolean _exists(const OperationContext& context, const CIMObjectPath& objectName);

    String _systemAddr;
    CIMObjectPath _ccsPath;
};

PEGASUS_NAMESPACE_END

#endif
