//%/////////////////////////////////////////////////////////////////////////////
// CIMAssociationProvider: serves the association operations of its
// association classes.
//
// associationClass / resultClass name the association (the provider's own
// class) and the class of the far end; role and resultRole restrict the
// reference properties of the near and far ends (empty: any).
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMAssociationProvider_h
#define Pegasus_CIMAssociationProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Provider/CIMProvider.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_PROVIDER_LINKAGE CIMAssociationProvider : public virtual CIMProvider {
public:
    CIMAssociationProvider();
    virtual ~CIMAssociationProvider();

    // Delivers the objects associated with objectName.
    virtual void associators(const OperationContext& context, const CIMObjectPath& objectName,
                             const CIMName& associationClass, const CIMName& resultClass,
                             const String& role, const String& resultRole,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList,
                             ObjectResponseHandler& handler) = 0;

    // Delivers the paths of the objects associated with objectName.
    virtual void associatorNames(const OperationContext& context, const CIMObjectPath& objectName,
                                 const CIMName& associationClass, const CIMName& resultClass,
                                 const String& role, const String& resultRole,
                                 ObjectPathResponseHandler& handler) = 0;

    // Delivers the association instances that refer to objectName.
    virtual void references(const OperationContext& context, const CIMObjectPath& objectName,
                            const CIMName& resultClass, const String& role,
                            const Boolean includeQualifiers, const Boolean includeClassOrigin,
                            const CIMPropertyList& propertyList,
                            ObjectResponseHandler& handler) = 0;

    // Delivers the paths of the association instances that refer to
    // objectName.
    virtual void referenceNames(const OperationContext& context, const CIMObjectPath& objectName,
                                const CIMName& resultClass, const String& role,
                                ObjectPathResponseHandler& handler) = 0;
};

PEGASUS_NAMESPACE_END

#endif
