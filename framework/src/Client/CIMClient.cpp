// CIMClient: forwards each operation to the client's open connection.
#include <Pegasus/Client/CIMClient.h>

#include "Client/CIMClientInterface.h"

PEGASUS_NAMESPACE_BEGIN

CIMClient::CIMClient() : _rep(CIMClientInterface::create()) {}

CIMClient::~CIMClient()
{
    delete _rep;
}

Uint32 CIMClient::getTimeout() const
{
    return _rep->getTimeout();
}

void CIMClient::setTimeout(Uint32 timeoutMilliseconds)
{
    _rep->setTimeout(timeoutMilliseconds);
}

void CIMClient::connect(const String& host, const Uint32 portNumber, const String& userName,
                        const String& password)
{
    _rep->connect(host, portNumber, 0, userName, password);
}

void CIMClient::connect(const String& host, const Uint32 portNumber, const SSLContext& sslContext,
                        const String& userName, const String& password)
{
    _rep->connect(host, portNumber, &sslContext, userName, password);
}

void CIMClient::connectLocal()
{
    _rep->connectLocal();
}

void CIMClient::disconnect()
{
    _rep->disconnect();
}

CIMClass CIMClient::getClass(const CIMNamespaceName& nameSpace, const CIMName& className,
                             Boolean localOnly, Boolean includeQualifiers,
                             Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    return _rep->connection().getClass(nameSpace, className, localOnly, includeQualifiers,
                                       includeClassOrigin, propertyList);
}

Array<CIMClass> CIMClient::enumerateClasses(const CIMNamespaceName& nameSpace,
                                            const CIMName& className, Boolean deepInheritance,
                                            Boolean localOnly, Boolean includeQualifiers,
                                            Boolean includeClassOrigin)
{
    return _rep->connection().enumerateClasses(nameSpace, className, deepInheritance, localOnly,
                                               includeQualifiers, includeClassOrigin);
}

Array<CIMName> CIMClient::enumerateClassNames(const CIMNamespaceName& nameSpace,
                                              const CIMName& className, Boolean deepInheritance)
{
    return _rep->connection().enumerateClassNames(nameSpace, className, deepInheritance);
}

CIMInstance CIMClient::getInstance(const CIMNamespaceName& nameSpace,
                                   const CIMObjectPath& instanceName, Boolean localOnly,
                                   Boolean includeQualifiers, Boolean includeClassOrigin,
                                   const CIMPropertyList& propertyList)
{
    return _rep->connection().getInstance(nameSpace, instanceName, localOnly, includeQualifiers,
                                          includeClassOrigin, propertyList);
}

void CIMClient::deleteInstance(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName)
{
    _rep->connection().deleteInstance(nameSpace, instanceName);
}

CIMObjectPath CIMClient::createInstance(const CIMNamespaceName& nameSpace,
                                        const CIMInstance& newInstance)
{
    return _rep->connection().createInstance(nameSpace, newInstance);
}

void CIMClient::modifyInstance(const CIMNamespaceName& nameSpace,
                               const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                               const CIMPropertyList& propertyList)
{
    _rep->connection().modifyInstance(nameSpace, modifiedInstance, includeQualifiers, propertyList);
}

Array<CIMInstance> CIMClient::enumerateInstances(const CIMNamespaceName& nameSpace,
                                                 const CIMName& className, Boolean deepInheritance,
                                                 Boolean localOnly, Boolean includeQualifiers,
                                                 Boolean includeClassOrigin,
                                                 const CIMPropertyList& propertyList)
{
    return _rep->connection().enumerateInstances(nameSpace, className, deepInheritance, localOnly,
                                                 includeQualifiers, includeClassOrigin,
                                                 propertyList);
}

Array<CIMObjectPath> CIMClient::enumerateInstanceNames(const CIMNamespaceName& nameSpace,
                                                       const CIMName& className)
{
    return _rep->connection().enumerateInstanceNames(nameSpace, className);
}

Array<CIMObject> CIMClient::associators(const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& assocClass,
                                        const CIMName& resultClass, const String& role,
                                        const String& resultRole, Boolean includeQualifiers,
                                        Boolean includeClassOrigin,
                                        const CIMPropertyList& propertyList)
{
    return _rep->connection().associators(nameSpace, objectName, assocClass, resultClass, role,
                                          resultRole, includeQualifiers, includeClassOrigin,
                                          propertyList);
}

Array<CIMObjectPath> CIMClient::associatorNames(const CIMNamespaceName& nameSpace,
                                                const CIMObjectPath& objectName,
                                                const CIMName& assocClass,
                                                const CIMName& resultClass, const String& role,
                                                const String& resultRole)
{
    return _rep->connection().associatorNames(nameSpace, objectName, assocClass, resultClass, role,
                                              resultRole);
}

Array<CIMObject> CIMClient::references(const CIMNamespaceName& nameSpace,
                                       const CIMObjectPath& objectName, const CIMName& resultClass,
                                       const String& role, Boolean includeQualifiers,
                                       Boolean includeClassOrigin,
                                       const CIMPropertyList& propertyList)
{
    return _rep->connection().references(nameSpace, objectName, resultClass, role,
                                         includeQualifiers, includeClassOrigin, propertyList);
}

Array<CIMObjectPath> CIMClient::referenceNames(const CIMNamespaceName& nameSpace,
                                               const CIMObjectPath& objectName,
                                               const CIMName& resultClass, const String& role)
{
    return _rep->connection().referenceNames(nameSpace, objectName, resultClass, role);
}

CIMValue CIMClient::getProperty(const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& instanceName, const CIMName& propertyName)
{
    return _rep->connection().getProperty(nameSpace, instanceName, propertyName);
}

void CIMClient::setProperty(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                            const CIMName& propertyName, const CIMValue& newValue)
{
    _rep->connection().setProperty(nameSpace, instanceName, propertyName, newValue);
}

CIMValue CIMClient::invokeMethod(const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName, const CIMName& methodName,
                                 const Array<CIMParamValue>& inParameters,
                                 Array<CIMParamValue>& outParameters)
{
    return _rep->connection().invokeMethod(nameSpace, instanceName, methodName, inParameters,
                                           outParameters);
}

// ---- pull operations ----------------------------------------------------

namespace {

typedef CIMClientConnection::OpenRequest OpenRequest;
typedef CIMClientConnection::PullResult PullResult;

// Runs an open and keeps what the context must remember.
PullResult opened(CIMClientConnection& c, const OpenRequest& r, String& context,
                  CIMNamespaceName& nameSpace, Boolean& endOfSequence)
{
    PullResult res = c.openEnumeration(r);
    nameSpace = r.nameSpace;
    context = res.endOfSequence ? String() : res.context;
    endOfSequence = res.endOfSequence;
    return res;
}

// Runs a pull of an open enumeration and moves the context on.
PullResult pulled(CIMClientConnection& c, CIMClientConnection::PullKind kind, String& context,
                  const CIMNamespaceName& nameSpace, Boolean& endOfSequence, Uint32 maxObjectCount)
{
    if (context.size() == 0)
        throw InvalidEnumerationContextException();
    PullResult res = c.pull(kind, nameSpace, context, maxObjectCount);
    context = res.endOfSequence ? String() : res.context;
    endOfSequence = res.endOfSequence;
    return res;
}

OpenRequest request(OpenRequest::Kind kind, const CIMNamespaceName& nameSpace,
                    const String& filterQueryLanguage, const String& filterQuery,
                    const Uint32Arg& operationTimeout, Boolean continueOnError,
                    Uint32 maxObjectCount)
{
    OpenRequest r;
    r.kind = kind;
    r.nameSpace = nameSpace;
    r.filterQueryLanguage = filterQueryLanguage;
    r.filterQuery = filterQuery;
    r.operationTimeout = operationTimeout;
    r.continueOnError = continueOnError;
    r.maxObjectCount = maxObjectCount;
    return r;
}

}  // namespace

Array<CIMInstance> CIMClient::openEnumerateInstances(
    CIMEnumerationContext& ec, Boolean& endOfSequence, const CIMNamespaceName& nameSpace,
    const CIMName& className, Boolean deepInheritance, Boolean includeClassOrigin,
    const CIMPropertyList& propertyList, const String& filterQueryLanguage,
    const String& filterQuery, const Uint32Arg& operationTimeout, Boolean continueOnError,
    Uint32 maxObjectCount)
{
    OpenRequest r = request(OpenRequest::INSTANCES, nameSpace, filterQueryLanguage, filterQuery,
                            operationTimeout, continueOnError, maxObjectCount);
    r.className = className;
    r.deepInheritance = deepInheritance;
    r.includeClassOrigin = includeClassOrigin;
    r.propertyList = propertyList;
    return opened(_rep->connection(), r, ec.getContextString(), ec.getNameSpace(), endOfSequence)
        .instances;
}

Array<CIMObjectPath> CIMClient::openEnumerateInstancePaths(
    CIMEnumerationContext& ec, Boolean& endOfSequence, const CIMNamespaceName& nameSpace,
    const CIMName& className, const String& filterQueryLanguage, const String& filterQuery,
    const Uint32Arg& operationTimeout, Boolean continueOnError, Uint32 maxObjectCount)
{
    OpenRequest r = request(OpenRequest::INSTANCE_PATHS, nameSpace, filterQueryLanguage,
                            filterQuery, operationTimeout, continueOnError, maxObjectCount);
    r.className = className;
    return opened(_rep->connection(), r, ec.getContextString(), ec.getNameSpace(), endOfSequence)
        .paths;
}

Array<CIMInstance> CIMClient::openReferenceInstances(
    CIMEnumerationContext& ec, Boolean& endOfSequence, const CIMNamespaceName& nameSpace,
    const CIMObjectPath& objectName, const CIMName& resultClass, const String& role,
    const Boolean includeClassOrigin, const CIMPropertyList& propertyList,
    const String& filterQueryLanguage, const String& filterQuery, const Uint32Arg& operationTimeout,
    Boolean continueOnError, Uint32 maxObjectCount)
{
    OpenRequest r = request(OpenRequest::REFERENCES, nameSpace, filterQueryLanguage, filterQuery,
                            operationTimeout, continueOnError, maxObjectCount);
    r.objectName = objectName;
    r.resultClass = resultClass;
    r.role = role;
    r.includeClassOrigin = includeClassOrigin;
    r.propertyList = propertyList;
    return opened(_rep->connection(), r, ec.getContextString(), ec.getNameSpace(), endOfSequence)
        .instances;
}

Array<CIMObjectPath> CIMClient::openReferenceInstancePaths(
    CIMEnumerationContext& ec, Boolean& endOfSequence, const CIMNamespaceName& nameSpace,
    const CIMObjectPath& objectName, const CIMName& resultClass, const String& role,
    const String& filterQueryLanguage, const String& filterQuery, const Uint32Arg& operationTimeout,
    Boolean continueOnError, Uint32 maxObjectCount)
{
    OpenRequest r = request(OpenRequest::REFERENCE_PATHS, nameSpace, filterQueryLanguage,
                            filterQuery, operationTimeout, continueOnError, maxObjectCount);
    r.objectName = objectName;
    r.resultClass = resultClass;
    r.role = role;
    return opened(_rep->connection(), r, ec.getContextString(), ec.getNameSpace(), endOfSequence)
        .paths;
}

Array<CIMInstance> CIMClient::openAssociatorInstances(
    CIMEnumerationContext& ec, Boolean& endOfSequence, const CIMNamespaceName& nameSpace,
    const CIMObjectPath& objectName, const CIMName& assocClass, const CIMName& resultClass,
    const String& role, const String& resultRole, Boolean includeClassOrigin,
    const CIMPropertyList& propertyList, const String& filterQueryLanguage,
    const String& filterQuery, const Uint32Arg& operationTimeout, Boolean continueOnError,
    Uint32 maxObjectCount)
{
    OpenRequest r = request(OpenRequest::ASSOCIATORS, nameSpace, filterQueryLanguage, filterQuery,
                            operationTimeout, continueOnError, maxObjectCount);
    r.objectName = objectName;
    r.assocClass = assocClass;
    r.resultClass = resultClass;
    r.role = role;
    r.resultRole = resultRole;
    r.includeClassOrigin = includeClassOrigin;
    r.propertyList = propertyList;
    return opened(_rep->connection(), r, ec.getContextString(), ec.getNameSpace(), endOfSequence)
        .instances;
}

Array<CIMObjectPath> CIMClient::openAssociatorInstancePaths(
    CIMEnumerationContext& ec, Boolean& endOfSequence, const CIMNamespaceName& nameSpace,
    const CIMObjectPath& objectName, const CIMName& assocClass, const CIMName& resultClass,
    const String& role, const String& resultRole, const String& filterQueryLanguage,
    const String& filterQuery, const Uint32Arg& operationTimeout, Boolean continueOnError,
    Uint32 maxObjectCount)
{
    OpenRequest r = request(OpenRequest::ASSOCIATOR_PATHS, nameSpace, filterQueryLanguage,
                            filterQuery, operationTimeout, continueOnError, maxObjectCount);
    r.objectName = objectName;
    r.assocClass = assocClass;
    r.resultClass = resultClass;
    r.role = role;
    r.resultRole = resultRole;
    return opened(_rep->connection(), r, ec.getContextString(), ec.getNameSpace(), endOfSequence)
        .paths;
}

Array<CIMInstance> CIMClient::pullInstancesWithPath(CIMEnumerationContext& ec,
                                                    Boolean& endOfSequence, Uint32 maxObjectCount)
{
    return pulled(_rep->connection(), CIMClientConnection::PULL_INSTANCES_WITH_PATH,
                  ec.getContextString(), ec.getNameSpace(), endOfSequence, maxObjectCount)
        .instances;
}

Array<CIMObjectPath> CIMClient::pullInstancePaths(CIMEnumerationContext& ec, Boolean& endOfSequence,
                                                  Uint32 maxObjectCount)
{
    return pulled(_rep->connection(), CIMClientConnection::PULL_INSTANCE_PATHS,
                  ec.getContextString(), ec.getNameSpace(), endOfSequence, maxObjectCount)
        .paths;
}

Array<CIMInstance> CIMClient::pullInstances(CIMEnumerationContext& ec, Boolean& endOfSequence,
                                            Uint32 maxObjectCount)
{
    return pulled(_rep->connection(), CIMClientConnection::PULL_INSTANCES, ec.getContextString(),
                  ec.getNameSpace(), endOfSequence, maxObjectCount)
        .instances;
}

void CIMClient::closeEnumeration(CIMEnumerationContext& ec)
{
    if (ec.getContextString().size() == 0)
        throw InvalidEnumerationContextException();
    String context = ec.getContextString();
    ec.clearEnumeration();
    _rep->connection().closeEnumeration(ec.getNameSpace(), context);
}

Uint64Arg CIMClient::enumerationCount(CIMEnumerationContext& ec)
{
    if (ec.getContextString().size() == 0)
        throw InvalidEnumerationContextException();
    return _rep->connection().enumerationCount(ec.getNameSpace(), ec.getContextString());
}

PEGASUS_NAMESPACE_END
