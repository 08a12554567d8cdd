//%/////////////////////////////////////////////////////////////////////////////
// CIMOperationHost: the side of a CIM server that carries out operations.
//
// This header is an extension of this framework and has no OpenPegasus
// counterpart; provider code never includes it. A host (the CIM server's
// dispatcher, or a test host) implements this interface and registers itself
// with setLocalOperationHost(). Default-constructed CIMOMHandles and
// CIMClient::connectLocal() (in-process) then reach that host.
//
// Operations that may return many objects deliver them one by one to a
// response handler, so that a host can stream them; single results are
// returned. Failures are thrown as CIMException with the original code.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZARFRAMEWORK_CIMOPERATIONHOST_H
#define ZARFRAMEWORK_CIMOPERATIONHOST_H

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE CIMOperationHost {
public:
    virtual ~CIMOperationHost();

    virtual CIMClass getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                              const CIMName& className, Boolean localOnly,
                              Boolean includeQualifiers, Boolean includeClassOrigin,
                              const CIMPropertyList& propertyList) = 0;

    virtual Array<CIMClass> enumerateClasses(const OperationContext& context,
                                             const CIMNamespaceName& nameSpace,
                                             const CIMName& className, Boolean deepInheritance,
                                             Boolean localOnly, Boolean includeQualifiers,
                                             Boolean includeClassOrigin) = 0;

    virtual Array<CIMName> enumerateClassNames(const OperationContext& context,
                                               const CIMNamespaceName& nameSpace,
                                               const CIMName& className,
                                               Boolean deepInheritance) = 0;

    virtual CIMInstance getInstance(const OperationContext& context,
                                    const CIMNamespaceName& nameSpace,
                                    const CIMObjectPath& instanceName, Boolean localOnly,
                                    Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList) = 0;

    // Delivers each instance (with its path set) to handler, then calls
    // handler.complete().
    virtual void enumerateInstances(const OperationContext& context,
                                    const CIMNamespaceName& nameSpace, const CIMName& className,
                                    Boolean deepInheritance, Boolean localOnly,
                                    Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList,
                                    InstanceResponseHandler& handler) = 0;

    virtual void enumerateInstanceNames(const OperationContext& context,
                                        const CIMNamespaceName& nameSpace, const CIMName& className,
                                        ObjectPathResponseHandler& handler) = 0;

    virtual CIMObjectPath createInstance(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMInstance& newInstance) = 0;

    virtual void modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                                const CIMPropertyList& propertyList) = 0;

    virtual void deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& instanceName) = 0;

    virtual void associators(const OperationContext& context, const CIMNamespaceName& nameSpace,
                             const CIMObjectPath& objectName, const CIMName& assocClass,
                             const CIMName& resultClass, const String& role,
                             const String& resultRole, Boolean includeQualifiers,
                             Boolean includeClassOrigin, const CIMPropertyList& propertyList,
                             ObjectResponseHandler& handler) = 0;

    virtual void associatorNames(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& objectName, const CIMName& assocClass,
                                 const CIMName& resultClass, const String& role,
                                 const String& resultRole, ObjectPathResponseHandler& handler) = 0;

    virtual void references(const OperationContext& context, const CIMNamespaceName& nameSpace,
                            const CIMObjectPath& objectName, const CIMName& resultClass,
                            const String& role, Boolean includeQualifiers,
                            Boolean includeClassOrigin, const CIMPropertyList& propertyList,
                            ObjectResponseHandler& handler) = 0;

    virtual void referenceNames(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& objectName, const CIMName& resultClass,
                                const String& role, ObjectPathResponseHandler& handler) = 0;

    virtual CIMValue getProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName,
                                 const CIMName& propertyName) = 0;

    virtual void setProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                             const CIMObjectPath& instanceName, const CIMName& propertyName,
                             const CIMValue& newValue) = 0;

    // Returns the method's return value; output parameters are appended to
    // outParameters in the order the provider delivered them.
    virtual CIMValue invokeMethod(const OperationContext& context,
                                  const CIMNamespaceName& nameSpace,
                                  const CIMObjectPath& instanceName, const CIMName& methodName,
                                  const Array<CIMParamValue>& inParameters,
                                  Array<CIMParamValue>& outParameters) = 0;
};

// Registers the host that default-constructed CIMOMHandles and in-process
// CIMClient::connectLocal() reach; 0 unregisters. The host must outlive every
// handle and client that uses it. Thread-safe.
PEGASUS_COMMON_LINKAGE void setLocalOperationHost(CIMOperationHost* host);

// The registered host, or 0 when none is registered.
PEGASUS_COMMON_LINKAGE CIMOperationHost* getLocalOperationHost();

PEGASUS_NAMESPACE_END

#endif
