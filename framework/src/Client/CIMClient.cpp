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

void CIMClient::connect(const String& host, const Uint32 portNumber,
    const String& userName, const String& password)
{
    _rep->connect(host, portNumber, 0, userName, password);
}

void CIMClient::connect(const String& host, const Uint32 portNumber,
    const SSLContext& sslContext, const String& userName,
    const String& password)
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

CIMClass CIMClient::getClass(const CIMNamespaceName& nameSpace,
    const CIMName& className, Boolean localOnly, Boolean includeQualifiers,
    Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    return _rep->connection().getClass(nameSpace, className, localOnly,
        includeQualifiers, includeClassOrigin, propertyList);
}

Array<CIMClass> CIMClient::enumerateClasses(const CIMNamespaceName& nameSpace,
    const CIMName& className, Boolean deepInheritance, Boolean localOnly,
    Boolean includeQualifiers, Boolean includeClassOrigin)
{
    return _rep->connection().enumerateClasses(nameSpace, className,
        deepInheritance, localOnly, includeQualifiers, includeClassOrigin);
}

Array<CIMName> CIMClient::enumerateClassNames(const CIMNamespaceName& nameSpace,
    const CIMName& className, Boolean deepInheritance)
{
    return _rep->connection().enumerateClassNames(
        nameSpace, className, deepInheritance);
}

CIMInstance CIMClient::getInstance(const CIMNamespaceName& nameSpace,
    const CIMObjectPath& instanceName, Boolean localOnly,
    Boolean includeQualifiers, Boolean includeClassOrigin,
    const CIMPropertyList& propertyList)
{
    return _rep->connection().getInstance(nameSpace, instanceName, localOnly,
        includeQualifiers, includeClassOrigin, propertyList);
}

void CIMClient::deleteInstance(const CIMNamespaceName& nameSpace,
    const CIMObjectPath& instanceName)
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
    _rep->connection().modifyInstance(
        nameSpace, modifiedInstance, includeQualifiers, propertyList);
}

Array<CIMInstance> CIMClient::enumerateInstances(
    const CIMNamespaceName& nameSpace, const CIMName& className,
    Boolean deepInheritance, Boolean localOnly, Boolean includeQualifiers,
    Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    return _rep->connection().enumerateInstances(nameSpace, className,
        deepInheritance, localOnly, includeQualifiers, includeClassOrigin,
        propertyList);
}

Array<CIMObjectPath> CIMClient::enumerateInstanceNames(
    const CIMNamespaceName& nameSpace, const CIMName& className)
{
    return _rep->connection().enumerateInstanceNames(nameSpace, className);
}

Array<CIMObject> CIMClient::associators(const CIMNamespaceName& nameSpace,
    const CIMObjectPath& objectName, const CIMName& assocClass,
    const CIMName& resultClass, const String& role, const String& resultRole,
    Boolean includeQualifiers, Boolean includeClassOrigin,
    const CIMPropertyList& propertyList)
{
    return _rep->connection().associators(nameSpace, objectName, assocClass,
        resultClass, role, resultRole, includeQualifiers, includeClassOrigin,
        propertyList);
}

Array<CIMObjectPath> CIMClient::associatorNames(
    const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
    const CIMName& assocClass, const CIMName& resultClass, const String& role,
    const String& resultRole)
{
    return _rep->connection().associatorNames(
        nameSpace, objectName, assocClass, resultClass, role, resultRole);
}

Array<CIMObject> CIMClient::references(const CIMNamespaceName& nameSpace,
    const CIMObjectPath& objectName, const CIMName& resultClass,
    const String& role, Boolean includeQualifiers, Boolean includeClassOrigin,
    const CIMPropertyList& propertyList)
{
    return _rep->connection().references(nameSpace, objectName, resultClass,
        role, includeQualifiers, includeClassOrigin, propertyList);
}

Array<CIMObjectPath> CIMClient::referenceNames(
    const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
    const CIMName& resultClass, const String& role)
{
    return _rep->connection().referenceNames(
        nameSpace, objectName, resultClass, role);
}

CIMValue CIMClient::getProperty(const CIMNamespaceName& nameSpace,
    const CIMObjectPath& instanceName, const CIMName& propertyName)
{
    return _rep->connection().getProperty(
        nameSpace, instanceName, propertyName);
}

void CIMClient::setProperty(const CIMNamespaceName& nameSpace,
    const CIMObjectPath& instanceName, const CIMName& propertyName,
    const CIMValue& newValue)
{
    _rep->connection().setProperty(
        nameSpace, instanceName, propertyName, newValue);
}

CIMValue CIMClient::invokeMethod(const CIMNamespaceName& nameSpace,
    const CIMObjectPath& instanceName, const CIMName& methodName,
    const Array<CIMParamValue>& inParameters,
    Array<CIMParamValue>& outParameters)
{
    return _rep->connection().invokeMethod(
        nameSpace, instanceName, methodName, inParameters, outParameters);
}

PEGASUS_NAMESPACE_END
