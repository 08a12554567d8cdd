// Dispatcher: carries out CIM operations by routing them to the providers
// registered for the classes involved, or answering from the repository.
//
// Routing and what providers see:
// - Class operations are answered from the repository.
// - Instance operations go to the instance provider registered for the
//   path's class; enumerations also reach the providers of every subclass,
//   each receiving a class-only path with its own registered class. Object
//   paths given to providers carry the server's host name and the request's
//   namespace. Classes without an instance provider serve the instances
//   declared in MOF (read-only): enumerations list them (often none),
//   getInstance finds them or fails with CIM_ERR_NOT_FOUND, and create,
//   modify and delete fail with CIM_ERR_NOT_SUPPORTED.
// - Association operations go to the association providers registered for
//   association classes that can reference the object's class, after the
//   assocClass/resultClass/role/resultRole checks on the class definitions;
//   each provider receives its registered association class. Results of
//   the wrong class are dropped, and paths without host or namespace are
//   completed with the server's.
// - Extrinsic methods go to the method provider of the path's class, with
//   input parameters typed from the class's method declaration; unknown
//   method names are passed through.
// - The server filters instances by PropertyList, IncludeQualifiers and
//   IncludeClassOrigin, and a shallow enumeration (DeepInheritance false)
//   drops properties that the requested class does not have. LocalOnly is
//   deprecated for instance operations and ignored there, as CIM servers
//   commonly do; it applies to class operations.
// - Whatever a provider throws becomes a CIMException: CIMExceptions keep
//   code and message, other Pegasus exceptions and std::exceptions become
//   CIM_ERR_FAILED with their message, anything else CIM_ERR_FAILED
//   "Unknown error.". When several providers answer one request,
//   CIM_ERR_NOT_SUPPORTED is reported only if every one of them gave it.
//   Objects already passed to the caller's handler before an error must be
//   discarded by the caller.
#ifndef ZAR_SERVER_CORE_DISPATCHER_H
#define ZAR_SERVER_CORE_DISPATCHER_H

#include <atomic>
#include <string>

#include <zarframework/CIMOperationHost.h>

#include "ClassRepository.h"
#include "CoreLog.h"
#include "InstanceFilter.h"
#include "ProviderManager.h"
#include "ProviderRegistry.h"

namespace zarserver {

class Dispatcher : public Pegasus::CIMOperationHost {
public:
    // All references must outlive the dispatcher.
    Dispatcher(const ClassRepository& repository, const ProviderRegistry& registry,
               ProviderManager& providers, const std::string& hostName, CoreLogFunction log);

    // Later operations fail with CIM_ERR_FAILED.
    void stop();

    Pegasus::CIMClass getClass(const Pegasus::OperationContext& context,
                               const Pegasus::CIMNamespaceName& nameSpace,
                               const Pegasus::CIMName& className, Pegasus::Boolean localOnly,
                               Pegasus::Boolean includeQualifiers,
                               Pegasus::Boolean includeClassOrigin,
                               const Pegasus::CIMPropertyList& propertyList) override;

    Pegasus::Array<Pegasus::CIMClass> enumerateClasses(
        const Pegasus::OperationContext& context, const Pegasus::CIMNamespaceName& nameSpace,
        const Pegasus::CIMName& className, Pegasus::Boolean deepInheritance,
        Pegasus::Boolean localOnly, Pegasus::Boolean includeQualifiers,
        Pegasus::Boolean includeClassOrigin) override;

    Pegasus::Array<Pegasus::CIMName> enumerateClassNames(const Pegasus::OperationContext& context,
                                                         const Pegasus::CIMNamespaceName& nameSpace,
                                                         const Pegasus::CIMName& className,
                                                         Pegasus::Boolean deepInheritance) override;

    Pegasus::CIMInstance getInstance(const Pegasus::OperationContext& context,
                                     const Pegasus::CIMNamespaceName& nameSpace,
                                     const Pegasus::CIMObjectPath& instanceName,
                                     Pegasus::Boolean localOnly, Pegasus::Boolean includeQualifiers,
                                     Pegasus::Boolean includeClassOrigin,
                                     const Pegasus::CIMPropertyList& propertyList) override;

    void enumerateInstances(const Pegasus::OperationContext& context,
                            const Pegasus::CIMNamespaceName& nameSpace,
                            const Pegasus::CIMName& className, Pegasus::Boolean deepInheritance,
                            Pegasus::Boolean localOnly, Pegasus::Boolean includeQualifiers,
                            Pegasus::Boolean includeClassOrigin,
                            const Pegasus::CIMPropertyList& propertyList,
                            Pegasus::InstanceResponseHandler& handler) override;

    void enumerateInstanceNames(const Pegasus::OperationContext& context,
                                const Pegasus::CIMNamespaceName& nameSpace,
                                const Pegasus::CIMName& className,
                                Pegasus::ObjectPathResponseHandler& handler) override;

    Pegasus::CIMObjectPath createInstance(const Pegasus::OperationContext& context,
                                          const Pegasus::CIMNamespaceName& nameSpace,
                                          const Pegasus::CIMInstance& newInstance) override;

    void modifyInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMNamespaceName& nameSpace,
                        const Pegasus::CIMInstance& modifiedInstance,
                        Pegasus::Boolean includeQualifiers,
                        const Pegasus::CIMPropertyList& propertyList) override;

    void deleteInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMNamespaceName& nameSpace,
                        const Pegasus::CIMObjectPath& instanceName) override;

    void associators(const Pegasus::OperationContext& context,
                     const Pegasus::CIMNamespaceName& nameSpace,
                     const Pegasus::CIMObjectPath& objectName, const Pegasus::CIMName& assocClass,
                     const Pegasus::CIMName& resultClass, const Pegasus::String& role,
                     const Pegasus::String& resultRole, Pegasus::Boolean includeQualifiers,
                     Pegasus::Boolean includeClassOrigin,
                     const Pegasus::CIMPropertyList& propertyList,
                     Pegasus::ObjectResponseHandler& handler) override;

    void associatorNames(const Pegasus::OperationContext& context,
                         const Pegasus::CIMNamespaceName& nameSpace,
                         const Pegasus::CIMObjectPath& objectName,
                         const Pegasus::CIMName& assocClass, const Pegasus::CIMName& resultClass,
                         const Pegasus::String& role, const Pegasus::String& resultRole,
                         Pegasus::ObjectPathResponseHandler& handler) override;

    void references(const Pegasus::OperationContext& context,
                    const Pegasus::CIMNamespaceName& nameSpace,
                    const Pegasus::CIMObjectPath& objectName, const Pegasus::CIMName& resultClass,
                    const Pegasus::String& role, Pegasus::Boolean includeQualifiers,
                    Pegasus::Boolean includeClassOrigin,
                    const Pegasus::CIMPropertyList& propertyList,
                    Pegasus::ObjectResponseHandler& handler) override;

    void referenceNames(const Pegasus::OperationContext& context,
                        const Pegasus::CIMNamespaceName& nameSpace,
                        const Pegasus::CIMObjectPath& objectName,
                        const Pegasus::CIMName& resultClass, const Pegasus::String& role,
                        Pegasus::ObjectPathResponseHandler& handler) override;

    Pegasus::CIMValue getProperty(const Pegasus::OperationContext& context,
                                  const Pegasus::CIMNamespaceName& nameSpace,
                                  const Pegasus::CIMObjectPath& instanceName,
                                  const Pegasus::CIMName& propertyName) override;

    void setProperty(const Pegasus::OperationContext& context,
                     const Pegasus::CIMNamespaceName& nameSpace,
                     const Pegasus::CIMObjectPath& instanceName,
                     const Pegasus::CIMName& propertyName,
                     const Pegasus::CIMValue& newValue) override;

    Pegasus::CIMValue invokeMethod(const Pegasus::OperationContext& context,
                                   const Pegasus::CIMNamespaceName& nameSpace,
                                   const Pegasus::CIMObjectPath& instanceName,
                                   const Pegasus::CIMName& methodName,
                                   const Pegasus::Array<Pegasus::CIMParamValue>& inParameters,
                                   Pegasus::Array<Pegasus::CIMParamValue>& outParameters) override;

private:
    struct AssocTarget;
    void checkRunning() const;
    Pegasus::OperationContext providerContext(const Pegasus::OperationContext& context) const;
    Pegasus::CIMObjectPath providerPath(const Pegasus::CIMNamespaceName& ns,
                                        const Pegasus::CIMObjectPath& path) const;
    Pegasus::CIMObjectPath classPath(const Pegasus::CIMNamespaceName& ns,
                                     const Pegasus::CIMName& className) const;
    void completePath(Pegasus::CIMObjectPath& path, const Pegasus::CIMNamespaceName& ns) const;
    std::vector<AssocTarget> associationTargets(
        const Pegasus::CIMNamespaceName& ns, const Pegasus::CIMObjectPath& objectName,
        const Pegasus::CIMName& assocClass, const Pegasus::CIMName& resultClass,
        const Pegasus::String& role, const Pegasus::String& resultRole, bool forAssociators) const;
    // o filtered (instances only) and with its path completed by
    // completePath(); the provider's object is not changed.
    Pegasus::CIMObject completeObject(const Pegasus::CIMObject& o, const InstanceFilter& filter,
                                      const Pegasus::CIMNamespaceName& ns) const;
    bool resultMatches(const Pegasus::CIMNamespaceName& ns, const Pegasus::CIMName& cls,
                       const Pegasus::CIMName& wanted) const;

    const ClassRepository& _repository;
    const ProviderRegistry& _registry;
    ProviderManager& _providers;
    Pegasus::String _hostName;
    CoreLogFunction _log;
    std::atomic<bool> _stopped{false};
};

}  // namespace zarserver

#endif
