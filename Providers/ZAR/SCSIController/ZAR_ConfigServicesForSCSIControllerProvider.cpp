//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ConfigServicesForSCSIControllerProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ConfigServicesForSCSIControllerProvider.h"

#include <cstring>

#include <Pegasus/Provider/ProviderException.h>

#include <string>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_ConfigServicesForSCSIControllerProvider";

namespace {

const char ASSOC_CLASS[] = "ZAR_ConfigServicesForSCSIController";
const char CIM_ASSOC_CLASS[] = "CIM_ConcreteDependency";

Boolean _isRole(const String& role)
{
    return String::equalNoCase(role, "Antecedent") || String::equalNoCase(role, "Dependent");
}

std::string _text(const CIMObjectPath& path)
{
    return std::string((const char*)path.toString().getCString());
}

const ZAR_InstanceListProviderBase::Traces TRACES = {
    "-->ZAR_ConfigServicesForSCSIControllerProvider::getInstance() \n",
    "<-- ZAR_ConfigServicesForSCSIControllerProvider::getInstance()\n\n",
    "--> ZAR_ConfigServicesForSCSIControllerProvider::enumerateInstances() \n",
    "<-- ZAR_ConfigServicesForSCSIControllerProvider::enumerateInstances() \n",
    "--> ZAR_ConfigServicesForSCSIControllerProvider::enumerateInstanceNames() \n",
    "<-- ZAR_ConfigServicesForSCSIControllerProvider::enumerateInstanceNames() \n",
};

}  // namespace

ZAR_ConfigServicesForSCSIControllerProvider::ZAR_ConfigServicesForSCSIControllerProvider()
    : ZAR_InstanceListProviderBase(ClassName, 0, ASSOC_CLASS, CIM_ASSOC_CLASS, 2,
                                   " Expect two keys.", TRACES)
{
}

ZAR_ConfigServicesForSCSIControllerProvider::~ZAR_ConfigServicesForSCSIControllerProvider() {}

void ZAR_ConfigServicesForSCSIControllerProvider::initialize(CIMOMHandle& cimom)
{
    log_message(4, "-->ZAR_ConfigServicesForSCSIControllerProvider::initialize(cimom)\n");
    _open(cimom, 4);
    Array<CIMObjectPath> services = _cimom.enumerateInstanceNames(
        OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), CIMName(ZAR_CONFIG_SERVICE));
    if (services.size() != 0)
        _ccsPath = services[0];
    _systemAddr = ZAR_Common::getSystemHostName(_cimom);
    log_message(4, "<--ZAR_ConfigServicesForSCSIControllerProvider::initialize(cimom)\n");
}

Array<CIMObjectPath> ZAR_ConfigServicesForSCSIControllerProvider::_getRelatedInstanceNames(
    const CIMObjectPath& objectName, const OperationContext& context)
{
    Array<CIMObjectPath> related;
    if (ZAR_Common::isClass(objectName.getClassName(), ZAR_CONFIG_SERVICE)) {
        related = _cimom.enumerateInstanceNames(context, CIMNamespaceName(ZAR_NAMESPACE),
                                                CIMName(ZAR_SCSI_CONTROLLER));
    } else if (ZAR_Common::isClass(objectName.getClassName(), ZAR_SCSI_CONTROLLER))
        related.append(_ccsPath);
    return related;
}

Array<CIMInstance> ZAR_ConfigServicesForSCSIControllerProvider::_getRelatedInstances(
    const CIMObjectPath& objectName, const OperationContext& context, Boolean includeQualifiers,
    Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    const char* farClass = 0;
    if (ZAR_Common::isClass(objectName.getClassName(), ZAR_CONFIG_SERVICE))
        farClass = ZAR_SCSI_CONTROLLER;
    else if (ZAR_Common::isClass(objectName.getClassName(), ZAR_SCSI_CONTROLLER))
        farClass = ZAR_CONFIG_SERVICE;
    if (farClass == 0)
        return Array<CIMInstance>();
    return _cimom.enumerateInstances(context, CIMNamespaceName(ZAR_NAMESPACE), CIMName(farClass),
                                     true, false, includeQualifiers, includeClassOrigin,
                                     propertyList);
}

Array<CIMObjectPath> ZAR_ConfigServicesForSCSIControllerProvider::_buildAssociationInstanceNames(
    const CIMObjectPath& objectName, const OperationContext& context)
{
    log_message(4,
                "-->ZAR_ConfigServicesForSCSIController::"
                "_buildAssociationInstanceNames\n\t objectName = %s \n",
                _text(objectName).c_str());
    Array<CIMObjectPath> paths;
    if (ZAR_Common::isClass(objectName.getClassName(), ZAR_CONFIG_SERVICE)) {
        Array<CIMObjectPath> views = _getRelatedInstanceNames(objectName, context);
        for (Uint32 i = 0; i < views.size(); i++) {
            paths.append(ZAR_Common::buildDepAssocPath(_systemAddr, CIMName(ASSOC_CLASS), _ccsPath,
                                                       views[i]));
        }
    } else if (ZAR_Common::isClass(objectName.getClassName(), ZAR_SCSI_CONTROLLER)) {
        paths.append(
            ZAR_Common::buildDepAssocPath(_systemAddr, CIMName(ASSOC_CLASS), _ccsPath, objectName));
    }
    log_message(4,
                "<--ZAR_ConfigServicesForSCSIController::"
                "_buildAssociationInstanceNames\n");
    return paths;
}

Array<CIMInstance> ZAR_ConfigServicesForSCSIControllerProvider::_buildAssociationInstances(
    const CIMObjectPath& objectName, const OperationContext& context, Boolean includeQualifiers,
    Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    log_message(4,
                "-->ZAR_ConfigServicesForSCSIController::"
                "_buildAssociationInstances\n\t objectName = %s \n",
                _text(objectName).c_str());
    CIMClass cls = ZAR_Common::getStoredCIMClass(_cimom, context, CIMNamespaceName(ZAR_NAMESPACE),
                                                 CIMName(ASSOC_CLASS), false, includeQualifiers,
                                                 includeClassOrigin, propertyList);
    Array<CIMInstance> instances;
    if (ZAR_Common::isClass(objectName.getClassName(), ASSOC_CLASS)) {
        CIMObjectPath antecedent(ZAR_Common::getStringProperty(objectName, "Antecedent"));
        CIMObjectPath dependent(ZAR_Common::getStringProperty(objectName, "Dependent"));
        CIMInstance view;
        try {
            view = _cimom.getInstance(context, CIMNamespaceName(ZAR_NAMESPACE), dependent, false,
                                      false, false, CIMPropertyList());
        } catch (Exception&) {
            // No such view: no association.
        }
        if (!view.isUninitialized()) {
            instances.append(ZAR_Common::buildDepAssocInstance(_systemAddr, CIMName(ASSOC_CLASS),
                                                               antecedent, dependent, cls));
        }
    } else {
        Array<CIMObjectPath> paths = _buildAssociationInstanceNames(objectName, context);
        for (Uint32 i = 0; i < paths.size(); i++) {
            CIMObjectPath antecedent(ZAR_Common::getStringProperty(paths[i], "Antecedent"));
            CIMObjectPath dependent(ZAR_Common::getStringProperty(paths[i], "Dependent"));
            instances.append(ZAR_Common::buildDepAssocInstance(_systemAddr, CIMName(ASSOC_CLASS),
                                                               antecedent, dependent, cls));
        }
    }
    log_message(4,
                "<--ZAR_ConfigServicesForSCSIController::"
                "_buildAssociationInstances\n");
    return instances;
}

Boolean ZAR_ConfigServicesForSCSIControllerProvider::_invalidParms(const CIMObjectPath& objectName,
                                                                   String role, String resultRole,
                                                                   const CIMName& resultClass,
                                                                   String operation)
{
    if (role.size() != 0 && !_isRole(role))
        return true;
    if (resultRole.size() != 0 && !_isRole(resultRole))
        return true;

    if (String::equalNoCase(operation, "references") ||
        String::equalNoCase(operation, "referenceNames")) {
        return !resultClass.isNull() && !ZAR_Common::isClass(resultClass, ASSOC_CLASS) &&
               !ZAR_Common::isClass(resultClass, CIM_ASSOC_CLASS);
    }

    if (!resultClass.isNull() && (String::equalNoCase(operation, "associators") ||
                                  String::equalNoCase(operation, "associatorNames"))) {
        static const char* const accepted[] = {
            ZAR_CONFIG_SERVICE,       CIM_CONFIG_SERVICE,           ZAR_SCSI_CONTROLLER,
            "CIM_ProtocolController", "CIM_SCSIProtocolController", 0};
        static const char* const serviceSide[] = {ZAR_CONFIG_SERVICE, CIM_CONFIG_SERVICE, 0};
        static const char* const viewSide[] = {ZAR_SCSI_CONTROLLER, "CIM_ProtocolController",
                                               "CIM_SCSIProtocolController", 0};
        const CIMName& source = objectName.getClassName();
        if (!ZAR_Common::isOneOf(resultClass, accepted))
            return true;
        if (!source.isNull() && resultClass.equal(source))
            return true;
        if (ZAR_Common::isOneOf(source, serviceSide) &&
            ZAR_Common::isOneOf(resultClass, serviceSide))
            return true;
        if (ZAR_Common::isOneOf(source, viewSide) && ZAR_Common::isOneOf(resultClass, viewSide))
            return true;
    }
    return false;
}

Boolean ZAR_ConfigServicesForSCSIControllerProvider::_nothingToAnswer(
    const OperationContext& context, const CIMObjectPath& objectName, Boolean invalid,
    const char* operation, const CIMName& resultClass, ResponseHandler& handler)
{
    if (_answeredEmpty(invalid, operation, resultClass, handler))
        return true;
    if (_exists(context, objectName))
        return false;
    log_message(4, "<--ZAR_ConfigServicesForSCSIController::%s\n", operation);
    handler.complete();
    return true;
}

Boolean ZAR_ConfigServicesForSCSIControllerProvider::_exists(const OperationContext& context,
                                                             const CIMObjectPath& objectName)
{
    try {
        _cimom.getInstance(context, CIMNamespaceName(ZAR_NAMESPACE), objectName, false, false,
                           false, CIMPropertyList());
        return true;
    } catch (...) {
        log_message(4, "Instance does not exist for object %s\n", _text(objectName).c_str());
        return false;
    }
}

// ---------------------------------------------------------------------------
// Association operations

void ZAR_ConfigServicesForSCSIControllerProvider::_answerAssociation(
    const AssociationRequest& request, AssociationAnswer& answer)
{
    const char* operation = request.operationName();
    if (!request.ofReferences()) {
        log_message(4, "-->ZAR_ConfigServicesForSCSIControllerProvider::%s\n", operation);
        log_message(4, "objectName = %s \n associationClass = %s, resultClass = %s \n",
                    _text(request.objectName).c_str(),
                    (const char*)request.associationClass.getString().getCString(),
                    (const char*)request.resultClass.getString().getCString());
    } else {
        log_message(4, "-->ZAR_ConfigServicesForSCSIControllerProvider::%s\n\t objectName = %s \n ",
                    operation, _text(request.objectName).c_str());
    }
    ZAR_Common::checkUserAccess(request.context, __FILE__, __LINE__);
    answer.processing();
    Boolean invalid = _invalidParms(request.objectName, request.role, request.resultRole,
                                    request.resultClass, operation);
    if (_nothingToAnswer(request.context, request.objectName, invalid, operation,
                         request.resultClass, answer.handler()))
        return;
    const CIMObjectPath& from = request.objectName;
    switch (request.operation) {
        case ASSOCIATORS:
            answer.deliverAll(_getRelatedInstances(from, request.context, request.includeQualifiers,
                                                   request.includeClassOrigin,
                                                   request.propertyList));
            break;
        case ASSOCIATOR_NAMES:
            answer.deliverAll(_getRelatedInstanceNames(from, request.context));
            break;
        case REFERENCES:
            answer.deliverAll(
                _buildAssociationInstances(from, request.context, request.includeQualifiers,
                                           request.includeClassOrigin, request.propertyList));
            break;
        case REFERENCE_NAMES:
            answer.deliverAll(_buildAssociationInstanceNames(from, request.context));
            break;
    }
    // associators alone traces no exit line.
    if (request.operation != ASSOCIATORS)
        log_message(4, "<--ZAR_ConfigServicesForSCSIControllerProvider::%s\n", operation);
    answer.complete();
}

// ---------------------------------------------------------------------------
// Instance operations (the frame is ZAR_InstanceListProviderBase's)

Boolean ZAR_ConfigServicesForSCSIControllerProvider::_findInstance(const ReadRequest& request,
                                                                   CIMInstance& found)
{
    // A request through CIM_ConcreteDependency names the same instance.
    CIMObjectPath wanted = _asClass(request.path, CIMName(ASSOC_CLASS));
    if (wanted.getNameSpace().isNull())
        wanted.setNameSpace(CIMNamespaceName(ZAR_NAMESPACE));
    Array<CIMInstance> instances =
        _buildAssociationInstances(wanted, request.context, request.includeQualifiers,
                                   request.includeClassOrigin, request.propertyList);
    for (Uint32 i = 0; i < instances.size(); i++) {
        if (ZAR_Common::matchObjectPath(instances[i].getPath(), wanted)) {
            found = instances[i];
            return true;
        }
    }
    return false;
}

Array<CIMInstance> ZAR_ConfigServicesForSCSIControllerProvider::_listInstances(
    const ReadRequest& request)
{
    return _buildAssociationInstances(_ccsPath, request.context, request.includeQualifiers,
                                      request.includeClassOrigin, request.propertyList);
}

Array<CIMObjectPath> ZAR_ConfigServicesForSCSIControllerProvider::_listInstanceNames(
    const OperationContext& context)
{
    return _buildAssociationInstanceNames(_ccsPath, context);
}

PEGASUS_NAMESPACE_END
