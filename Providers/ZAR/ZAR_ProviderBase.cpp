//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ProviderBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ProviderBase.h"

#include <string.h>

#include <Pegasus/Common/PegasusAssert.h>
#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

#include "ZAR_ArrayAccess.h"

PEGASUS_NAMESPACE_BEGIN

ZAR_ProviderBase::ZAR_ProviderBase(const String& className, const char* traceName)
    : _className(className),
      _traceText(traceName ? CString(String(traceName).getCString()) : className.getCString())
{
}

ZAR_ProviderBase::~ZAR_ProviderBase() {}

void ZAR_ProviderBase::initialize(CIMOMHandle& cimom)
{
    log_message(4, "-->%s::initialize(cimom)\n", _traceName());
    _open(cimom);
    log_message(4, "<--%s::initialize(cimom)\n", _traceName());
}

void ZAR_ProviderBase::_open(CIMOMHandle& cimom, int failureLevel)
{
    _cimom = cimom;
    if (api_zarOpenForCimserver(NULL) != 0)
        log_message(failureLevel, "%s::initialize(): api_zarOpenForCimserver failed\n",
                    _traceName());
}

void ZAR_ProviderBase::_checkClassName(const CIMName& className, const char* ownClass,
                                       const char* cimClass) const
{
    if (!ZAR_Common::isClass(className, cimClass) && !ZAR_Common::isClass(className, ownClass))
        throw CIMNotSupportedException(_className + " Invalid class name" + className.getString());
}

void ZAR_ProviderBase::terminate()
{
    delete this;
}

void ZAR_ProviderBase::getInstance(const OperationContext& context,
                                   const CIMObjectPath& instanceReference,
                                   const Boolean includeQualifiers,
                                   const Boolean includeClassOrigin,
                                   const CIMPropertyList& propertyList,
                                   InstanceResponseHandler& handler)
{
    _getInstance({context, instanceReference, includeQualifiers, includeClassOrigin, propertyList},
                 handler);
}

void ZAR_ProviderBase::enumerateInstances(const OperationContext& context,
                                          const CIMObjectPath& classReference,
                                          const Boolean includeQualifiers,
                                          const Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList,
                                          InstanceResponseHandler& handler)
{
    _enumerateInstances(
        {context, classReference, includeQualifiers, includeClassOrigin, propertyList}, handler);
}

void ZAR_ProviderBase::enumerateInstanceNames(const OperationContext& context,
                                              const CIMObjectPath& classReference,
                                              ObjectPathResponseHandler& handler)
{
    const CIMPropertyList all;
    _enumerateInstanceNames({context, classReference, false, false, all}, handler);
}

void ZAR_ProviderBase::modifyInstance(const OperationContext&, const CIMObjectPath&,
                                      const CIMInstance&, const Boolean, const CIMPropertyList&,
                                      ResponseHandler&)
{
    throw CIMNotSupportedException(_className + " does not support modifyInstance.");
}

void ZAR_ProviderBase::createInstance(const OperationContext&, const CIMObjectPath&,
                                      const CIMInstance&, ObjectPathResponseHandler&)
{
    throw CIMNotSupportedException(_className + " does not support createInstance.");
}

void ZAR_ProviderBase::deleteInstance(const OperationContext&, const CIMObjectPath&,
                                      ResponseHandler&)
{
    throw CIMNotSupportedException(_className + " does not support deleteInstance.");
}

void ZAR_ProviderBase::_traced(const OperationContext& context, const char* operation,
                               const std::function<void()>& body)
{
    log_message(4, "-->%s::%s\n", _traceName(), operation);
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);
    body();
    log_message(4, "<--%s::%s\n", _traceName(), operation);
}

void ZAR_ProviderBase::_enumerateFrame(const OperationContext& context,
                                       const CIMObjectPath& classReference, const char* ownClass,
                                       const char* cimClass, const char* entryTrace,
                                       const char* exitTrace, const std::function<void()>& body)
{
    log_message(4, "%s", entryTrace);
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);
    _checkClassName(classReference.getClassName(), ownClass, cimClass);
    log_message(4, "\t className = %s\n",
                (const char*)classReference.getClassName().getString().getCString());
    body();
    log_message(4, "%s", exitTrace);
}

void ZAR_ProviderBase::_checkKeyCount(const CIMObjectPath& path, Uint32 expected,
                                      const char* expectText) const
{
    Uint32 keyCount = path.getKeyBindings().size();
    if (keyCount == expected)
        return;
    log_message(2, "%s::getInstance(): Invalid number of keys (%d)\n", _traceName(), (int)keyCount);
    throw CIMInvalidParameterException(_className + expectText);
}

Boolean ZAR_ProviderBase::_answeredEmpty(Boolean invalid, const char* operation,
                                         const CIMName& resultClass, ResponseHandler& handler) const
{
    if (!invalid)
        return false;
    log_message(2, "%s::%s: invalid params: resultClass = %s \n", _traceName(), operation,
                (const char*)resultClass.getString().getCString());
    handler.complete();
    return true;
}

void ZAR_ProviderBase::_identity(String& systemName, String& host, const char* operation)
{
    api_sysinfo_t info;
    api_status_t status;
    if (ZAR_ArrayAccess::readSystemInfo(&info, &status) != 0)
        _fail(operation, "api_getSystemInfo", status);
    systemName = String(info.name, (Uint32)strnlen(info.name, sizeof(info.name)));
    host = ZAR_ArrayAccess::pathHostName(info);
}

CIMClass ZAR_ProviderBase::_storedClass(const CIMName& className, Boolean includeQualifiers,
                                        Boolean includeClassOrigin,
                                        const CIMPropertyList& propertyList)
{
    return ZAR_Common::getStoredCIMClass(_cimom, OperationContext(),
                                         CIMNamespaceName(ZAR_NAMESPACE), className, false,
                                         includeQualifiers, includeClassOrigin, propertyList);
}

void ZAR_ProviderBase::_fail(const char* operation, const char* call, const api_status_t& status)
{
    log_message(2, "%s::%s: %s failed, status = %d\n", _traceName(), operation, call, status.code);
    throw CIMOperationFailedException(_className + "::" + String(operation) +
                                      " - Operation failed: " + ZAR_ArrayAccess::errorText(status));
}

CIMObjectPath ZAR_ProviderBase::_asClass(const CIMObjectPath& path, const CIMName& className)
{
    CIMNamespaceName ns = path.getNameSpace();
    if (ns.isNull())
        ns = CIMNamespaceName(ZAR_NAMESPACE);
    return CIMObjectPath(path.getHost(), ns, className, path.getKeyBindings());
}

const char* ZAR_AssociationOperations::AssociationRequest::operationName() const
{
    static const char* const names[] = {"associators", "associatorNames", "references",
                                        "referenceNames"};
    return names[operation];
}

Boolean ZAR_AssociationOperations::AssociationRequest::namesOnly() const
{
    return operation == ASSOCIATOR_NAMES || operation == REFERENCE_NAMES;
}

Boolean ZAR_AssociationOperations::AssociationRequest::ofReferences() const
{
    return operation == REFERENCES || operation == REFERENCE_NAMES;
}

ZAR_AssociationOperations::AssociationAnswer::AssociationAnswer(ObjectResponseHandler& objects)
    : _handler(&objects), _objects(&objects), _paths(0)
{
}

ZAR_AssociationOperations::AssociationAnswer::AssociationAnswer(ObjectPathResponseHandler& paths)
    : _handler(&paths), _objects(0), _paths(&paths)
{
}

void ZAR_AssociationOperations::AssociationAnswer::deliver(const CIMInstance& instance)
{
    PEGASUS_ASSERT(_objects != 0);
    _objects->deliver(CIMObject(instance));
}

void ZAR_AssociationOperations::AssociationAnswer::deliverAll(const Array<CIMInstance>& instances)
{
    for (Uint32 i = 0; i < instances.size(); i++)
        deliver(instances[i]);
}

void ZAR_AssociationOperations::AssociationAnswer::deliver(const CIMObjectPath& path)
{
    PEGASUS_ASSERT(_paths != 0);
    _paths->deliver(path);
}

void ZAR_AssociationOperations::AssociationAnswer::deliverAll(const Array<CIMObjectPath>& paths)
{
    for (Uint32 i = 0; i < paths.size(); i++)
        deliver(paths[i]);
}

void ZAR_AssociationOperations::associators(
    const OperationContext& context, const CIMObjectPath& objectName,
    const CIMName& associationClass, const CIMName& resultClass, const String& role,
    const String& resultRole, const Boolean includeQualifiers, const Boolean includeClassOrigin,
    const CIMPropertyList& propertyList, ObjectResponseHandler& handler)
{
    AssociationAnswer answer(handler);
    _answerAssociation({ASSOCIATORS, context, objectName, associationClass, resultClass, role,
                        resultRole, includeQualifiers, includeClassOrigin, propertyList},
                       answer);
}

void ZAR_AssociationOperations::associatorNames(const OperationContext& context,
                                                const CIMObjectPath& objectName,
                                                const CIMName& associationClass,
                                                const CIMName& resultClass, const String& role,
                                                const String& resultRole,
                                                ObjectPathResponseHandler& handler)
{
    const CIMPropertyList all;
    AssociationAnswer answer(handler);
    _answerAssociation({ASSOCIATOR_NAMES, context, objectName, associationClass, resultClass, role,
                        resultRole, false, false, all},
                       answer);
}

void ZAR_AssociationOperations::references(
    const OperationContext& context, const CIMObjectPath& objectName, const CIMName& resultClass,
    const String& role, const Boolean includeQualifiers, const Boolean includeClassOrigin,
    const CIMPropertyList& propertyList, ObjectResponseHandler& handler)
{
    const CIMName none;
    const String noRole;
    AssociationAnswer answer(handler);
    _answerAssociation({REFERENCES, context, objectName, none, resultClass, role, noRole,
                        includeQualifiers, includeClassOrigin, propertyList},
                       answer);
}

void ZAR_AssociationOperations::referenceNames(const OperationContext& context,
                                               const CIMObjectPath& objectName,
                                               const CIMName& resultClass, const String& role,
                                               ObjectPathResponseHandler& handler)
{
    const CIMName none;
    const String noRole;
    const CIMPropertyList all;
    AssociationAnswer answer(handler);
    _answerAssociation(
        {REFERENCE_NAMES, context, objectName, none, resultClass, role, noRole, false, false, all},
        answer);
}

PEGASUS_NAMESPACE_END
