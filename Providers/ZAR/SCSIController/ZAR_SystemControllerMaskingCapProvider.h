//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SystemControllerMaskingCapProvider.h: the association
// ZAR_SystemControllerMaskingCapabilities (a CIM_ElementCapabilities) in
// root/zar, tying the array's ZAR_StorageSystem (role ManagedElement) to its
// ZAR_ProtocolControllerMaskingCapabilities (role Capabilities).
//
// There is exactly one association instance; its ends and path are found
// at initialisation. The capabilities instance must be enumerable by then.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SystemControllerMaskingCapProvider_h
#define ZAR_SystemControllerMaskingCapProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMAssociationProvider.h>

#include <ZAR_SingleInstanceProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_SystemControllerMaskingCapabilitiesProvider : public ZAR_AssociationOperations,
                                                        public ZAR_SingleInstanceProviderBase {
public:
    // Members empty; nothing is asked of the array before initialize.
    ZAR_SystemControllerMaskingCapabilitiesProvider();

    virtual ~ZAR_SystemControllerMaskingCapabilitiesProvider();

    // Opens the array library and finds the two ends and the association's
    // path.
    virtual void initialize(CIMOMHandle& cimom);

protected:
    // From the system: the capabilities instance; from the capabilities:
    // the system (for associatorNames the far end's path, none from an
    // object of another class); references: the association instance, or
    // its fixed path, for either end. Parameters that cannot name this
    // association give an empty result (see _invalidParms).
    virtual void _answerAssociation(const AssociationRequest& request, AssociationAnswer& answer);

private:
    // The instance operations' builder: the association instance.
    virtual CIMInstance _buildInstance(bool includeQualifiers, bool includeClassOrigin,
                                       const CIMPropertyList& propertyList);

    CIMInstance _buildAssociationInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList);

    // Fills _systemObjectPath, _protContMaskCapPath and _assocInstanceName.
    void _buildAssociationInstanceName();

    // The instance at the far end from objectName, through the server.
    CIMInstance _getRelatedInstance(const CIMObjectPath& objectName,
                                    const OperationContext& context, Boolean includeQualifiers,
                                    Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList);

    // The far end by the class of objectName alone; empty for other
    // classes.
    CIMObjectPath _getRelatedInstanceName(const CIMObjectPath& objectName);

    // True when role, resultRole or resultClass cannot name this
    // association from objectName for the operation ("associators",
    // "associatorNames", "references" or "referenceNames").
    Boolean _invalidParms(const CIMObjectPath& objectName, String role, String resultRole,
                          const CIMName& resultClass, String operation);

    CIMObjectPath _systemObjectPath;
    CIMObjectPath _protContMaskCapPath;
    CIMObjectPath _assocInstanceName;
};

PEGASUS_NAMESPACE_END

#endif
