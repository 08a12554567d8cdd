//%/////////////////////////////////////////////////////////////////////////////
// CIMOMHandle: a provider's way back into the CIM server.
//
// Every call is a full CIM operation carried out by the server (it may reach
// other providers, or the calling provider itself); results come back as
// values and failures as CIMException with the original code. The caller's
// IdentityContainer is passed on (an empty user name when the context has
// none), so OperationContext() is a valid argument.
//
// Shared handle: copies use the same connection. A default-constructed
// handle reaches the server of this process; calls fail with
// CIMException(CIM_ERR_FAILED) when there is none.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMOMHandle_h
#define Pegasus_CIMOMHandle_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/ResponseHandler.h>

PEGASUS_NAMESPACE_BEGIN

class CIMOMHandleRep;

class PEGASUS_PROVIDER_LINKAGE CIMOMHandle {
public:
    // A handle to the server of this process.
    CIMOMHandle();
    CIMOMHandle(const CIMOMHandle&);  // shares
    ~CIMOMHandle();
    CIMOMHandle& operator=(const CIMOMHandle& handle);  // shares

    CIMClass getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                      const CIMName& className, Boolean localOnly, Boolean includeQualifiers,
                      Boolean includeClassOrigin, const CIMPropertyList& propertyList);

    Array<CIMClass> enumerateClasses(const OperationContext& context,
                                     const CIMNamespaceName& nameSpace, const CIMName& className,
                                     Boolean deepInheritance, Boolean localOnly,
                                     Boolean includeQualifiers, Boolean includeClassOrigin);

    Array<CIMName> enumerateClassNames(const OperationContext& context,
                                       const CIMNamespaceName& nameSpace, const CIMName& className,
                                       Boolean deepInheritance);

    // Class changes are not supported by this server: CIM_ERR_NOT_SUPPORTED.
    void createClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMClass& newClass);

    void modifyClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMClass& modifiedClass);

    void deleteClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMName& className);

    CIMInstance getInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                            const CIMObjectPath& instanceName, Boolean localOnly,
                            Boolean includeQualifiers, Boolean includeClassOrigin,
                            const CIMPropertyList& propertyList);

    Array<CIMInstance> enumerateInstances(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMName& className, Boolean deepInheritance,
                                          Boolean localOnly, Boolean includeQualifiers,
                                          Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList);

    Array<CIMObjectPath> enumerateInstanceNames(const OperationContext& context,
                                                const CIMNamespaceName& nameSpace,
                                                const CIMName& className);

    CIMObjectPath createInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMInstance& newInstance);

    void modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                        const CIMPropertyList& propertyList);

    void deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMObjectPath& instanceName);

    // Queries are not supported by this server: CIM_ERR_NOT_SUPPORTED.
    Array<CIMObject> execQuery(const OperationContext& context, const CIMNamespaceName& nameSpace,
                               const String& queryLanguage, const String& query);

    Array<CIMObject> associators(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& objectName, const CIMName& assocClass,
                                 const CIMName& resultClass, const String& role,
                                 const String& resultRole, Boolean includeQualifiers,
                                 Boolean includeClassOrigin, const CIMPropertyList& propertyList);

    Array<CIMObjectPath> associatorNames(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName, const CIMName& assocClass,
                                         const CIMName& resultClass, const String& role,
                                         const String& resultRole);

    Array<CIMObject> references(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& objectName, const CIMName& resultClass,
                                const String& role, Boolean includeQualifiers,
                                Boolean includeClassOrigin, const CIMPropertyList& propertyList);

    Array<CIMObjectPath> referenceNames(const OperationContext& context,
                                        const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& resultClass,
                                        const String& role);

    CIMValue getProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                         const CIMObjectPath& instanceName, const CIMName& propertyName);

    void setProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                     const CIMObjectPath& instanceName, const CIMName& propertyName,
                     const CIMValue& newValue);

    // Returns the method's return value; the output parameters replace the
    // contents of outParameters.
    CIMValue invokeMethod(const OperationContext& context, const CIMNamespaceName& nameSpace,
                          const CIMObjectPath& instanceName, const CIMName& methodName,
                          const Array<CIMParamValue>& inParameters,
                          Array<CIMParamValue>& outParameters);

    // Keeps the server from unloading the calling provider while idle, until
    // a matching allowProviderUnload(). Calls nest.
    void disallowProviderUnload();
    void allowProviderUnload();

    // The context of the last response received through this handle (its
    // content languages); an empty ContentLanguageListContainer here.
    OperationContext getResponseContext();

private:
    CIMOMHandleRep* _rep;
    friend class CIMOMHandleAccess;
};

PEGASUS_NAMESPACE_END

#endif
