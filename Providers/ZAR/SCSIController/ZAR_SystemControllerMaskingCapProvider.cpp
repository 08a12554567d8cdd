//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SystemControllerMaskingCapProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SystemControllerMaskingCapProvider.h"

#include <cstring>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_SystemControllerMaskingCapabilitiesProvider";

namespace {

const char ASSOC_CLASS[] = "ZAR_SystemControllerMaskingCapabilities";
const char CIM_ASSOC_CLASS[] = "CIM_ElementCapabilities";
const char ROLE_ELEMENT[] = "ManagedElement";
const char ROLE_CAPABILITIES[] = "Capabilities";

const ZAR_SingleInstanceProviderBase::Traces TRACES = {
    "-->ZAR_SystemControllerMaskingCapabilitiesProvider::getInstance()\n",
    "<-- ZAR_SystemControllerMaskingCapabilitiesProvider::getInstance()\n\n",
    "--> ZAR_SystemControllerMaskingCapabilitiesProvider::enumerateInstances() \n",
    "<-- ZAR_SystemControllerMaskingCapabilitiesProvider::enumerateInstances() \n",
    "--> ZAR_SystemControllerMaskingCapabilitiesProvider::enumerateInstanceNames() \n",
    "<-- ZAR_SystemControllerMaskingCapabilitiesProvider::enumerateInstanceNames() \n",
};

}  // namespace

ZAR_SystemControllerMaskingCapabilitiesProvider::ZAR_SystemControllerMaskingCapabilitiesProvider()
    : ZAR_SingleInstanceProviderBase(ClassName, 0, ASSOC_CLASS, CIM_ASSOC_CLASS, 2,
                                     " Expect two keys.", TRACES, _assocInstanceName)
{
}

ZAR_SystemControllerMaskingCapabilitiesProvider::~ZAR_SystemControllerMaskingCapabilitiesProvider()
{
}

void ZAR_SystemControllerMaskingCapabilitiesProvider::initialize(CIMOMHandle& cimom)
{
    log_message(4,
                "-->ZAR_SystemControllerMaskingCapabilitiesProvider::"
                "initialize(cimom)\n");
    _open(cimom);
    _buildAssociationInstanceName();
    log_message(4,
                "<--ZAR_SystemControllerMaskingCapabilitiesProvider::"
                "initialize(cimom)\n");
}

void ZAR_SystemControllerMaskingCapabilitiesProvider::_buildAssociationInstanceName()
{
    _systemObjectPath = ZAR_Common::getSystemObjectPath(_cimom);
    Array<CIMObjectPath> caps = _cimom.enumerateInstanceNames(
        OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), CIMName(ZAR_MASKING_CAPABILITIES));
    _protContMaskCapPath = caps[0];

    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName(ROLE_ELEMENT), _systemObjectPath.toString(),
                              CIMKeyBinding::REFERENCE));
    keys.append(CIMKeyBinding(CIMName(ROLE_CAPABILITIES), _protContMaskCapPath.toString(),
                              CIMKeyBinding::REFERENCE));
    _assocInstanceName = CIMObjectPath(_systemObjectPath.getHost(), CIMNamespaceName(ZAR_NAMESPACE),
                                       CIMName(ASSOC_CLASS), keys);
}

CIMInstance ZAR_SystemControllerMaskingCapabilitiesProvider::_buildAssociationInstance(
    Boolean includeQualifiers, Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    log_message(4,
                "-->ZAR_SystemControllerMaskingCapabilities::"
                "_buildAssociationInstance\n");
    CIMClass cls = ZAR_Common::getStoredCIMClass(
        _cimom, OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), CIMName(ASSOC_CLASS), false,
        includeQualifiers, includeClassOrigin, propertyList);
    CIMInstance instance = ZAR_Common::buildInstanceSkeleton(cls);
    ZAR_Common::setPropertyValue(instance, ROLE_ELEMENT, _systemObjectPath);
    ZAR_Common::setPropertyValue(instance, ROLE_CAPABILITIES, _protContMaskCapPath);
    instance.setPath(_assocInstanceName);
    log_message(4,
                "<--ZAR_SystemControllerMaskingCapabilities::"
                "_buildAssociationInstance\n");
    return instance;
}

CIMInstance ZAR_SystemControllerMaskingCapabilitiesProvider::_buildInstance(
    bool includeQualifiers, bool includeClassOrigin, const CIMPropertyList& propertyList)
{
    return _buildAssociationInstance(includeQualifiers, includeClassOrigin, propertyList);
}

CIMObjectPath ZAR_SystemControllerMaskingCapabilitiesProvider::_getRelatedInstanceName(
    const CIMObjectPath& objectName)
{
    log_message(4,
                "-->ZAR_SystemControllerMaskingCapabilitiesProvider::"
                "_getRelatedInstanceName\n\t objectName = %s \n",
                (const char*)objectName.toString().getCString());
    CIMObjectPath result;
    if (ZAR_Common::isClass(objectName.getClassName(), ZAR_STORAGE_SYSTEM))
        result = _protContMaskCapPath;
    else if (ZAR_Common::isClass(objectName.getClassName(), ZAR_MASKING_CAPABILITIES))
        result = _systemObjectPath;
    log_message(4,
                "<--ZAR_SystemControllerMaskingCapabilitiesProvider::"
                "_getRelatedInstanceName\n");
    return result;
}

CIMInstance ZAR_SystemControllerMaskingCapabilitiesProvider::_getRelatedInstance(
    const CIMObjectPath& objectName, const OperationContext& /* context */,
    Boolean includeQualifiers, Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    log_message(4,
                "-->ZAR_SystemControllerMaskingCapabilitiesProvider::"
                "_getRelatedInstances\n\t objectName = %s \n",
                (const char*)objectName.toString().getCString());
    CIMObjectPath related = _getRelatedInstanceName(objectName);
    CIMInstance instance =
        _cimom.getInstance(OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), related, false,
                           includeQualifiers, includeClassOrigin, propertyList);
    // An instance fetched by path may come back without its keys: give it
    // the path it was fetched by, as an association answer carries it.
    if (instance.getPath().getKeyBindings().size() == 0 &&
        instance.getClassName().equal(related.getClassName())) {
        instance.setPath(related);
    }
    log_message(4,
                "<--ZAR_SystemControllerMaskingCapabilitiesProvider::"
                "_getRelatedInstance\n");
    return instance;
}

Boolean ZAR_SystemControllerMaskingCapabilitiesProvider::_invalidParms(
    const CIMObjectPath& objectName, String role, String resultRole, const CIMName& resultClass,
    String operation)
{
    const CIMName& source = objectName.getClassName();
    Boolean fromSystem = ZAR_Common::isClass(source, ZAR_STORAGE_SYSTEM);
    Boolean fromCaps = ZAR_Common::isClass(source, ZAR_MASKING_CAPABILITIES);

    // A role names the system's end (ManagedElement) or the capabilities'
    // end: role must name the object's own end, resultRole the far one.
    auto wrongRole = [&](const String& name, Boolean ownEnd) {
        if (name.size() == 0)
            return false;
        Boolean isElement = String::equalNoCase(name, ROLE_ELEMENT);
        Boolean isCaps = String::equalNoCase(name, ROLE_CAPABILITIES);
        if (!isElement && !isCaps)
            return true;
        Boolean namesSystem = ownEnd ? isElement : isCaps;
        return (fromSystem && !namesSystem) || (fromCaps && namesSystem);
    };
    if (wrongRole(role, true) || wrongRole(resultRole, false))
        return true;

    if (String::equalNoCase(operation, "references") ||
        String::equalNoCase(operation, "referenceNames")) {
        if (resultClass.isNull())
            return false;
        return !ZAR_Common::isClass(resultClass, ASSOC_CLASS) &&
               !ZAR_Common::isClass(resultClass, CIM_ASSOC_CLASS);
    }

    if ((String::equalNoCase(operation, "associators") ||
         String::equalNoCase(operation, "associatorNames")) &&
        !resultClass.isNull()) {
        static const char* const accepted[] = {ZAR_STORAGE_SYSTEM,
                                               "CIM_ComputerSystem",
                                               "CIM_System",
                                               "CIM_ManagedElement",
                                               ZAR_MASKING_CAPABILITIES,
                                               "CIM_ProtocolControllerMaskingCapabilities",
                                               "CIM_Capabilities",
                                               0};
        static const char* const systemSide[] = {"CIM_ComputerSystem", "CIM_System",
                                                 "CIM_ManagedElement", 0};
        static const char* const capsSide[] = {ZAR_MASKING_CAPABILITIES,
                                               "CIM_ProtocolControllerMaskingCapabilities",
                                               "CIM_Capabilities", 0};
        if (!ZAR_Common::isOneOf(resultClass, accepted))
            return true;
        if (!source.isNull() && resultClass.equal(source))
            return true;
        // The far end of the system is a capabilities object, and the
        // other way round.
        if (fromSystem && ZAR_Common::isOneOf(resultClass, systemSide))
            return true;
        if (fromCaps && ZAR_Common::isOneOf(resultClass, capsSide))
            return true;
    }
    return false;
}

// ---------------------------------------------------------------------------
// Association operations

void ZAR_SystemControllerMaskingCapabilitiesProvider::_answerAssociation(
    const AssociationRequest& request, AssociationAnswer& answer)
{
    const char* operation = request.operationName();
    if (!request.ofReferences()) {
        log_message(4,
                    "-->ZAR_SystemControllerMaskingCapabilitiesProvider::%s\n\t objectName = %s \n "
                    "associationClass = %s, resultClass = %s \n",
                    operation, (const char*)request.objectName.toString().getCString(),
                    (const char*)request.associationClass.getString().getCString(),
                    (const char*)request.resultClass.getString().getCString());
    } else {
        log_message(
            4, "-->ZAR_SystemControllerMaskingCapabilitiesProvider::%s\n\t objectName = %s \n ",
            operation, (const char*)request.objectName.toString().getCString());
    }
    ZAR_Common::checkUserAccess(request.context, __FILE__, __LINE__);
    answer.processing();
    Boolean invalid = _invalidParms(request.objectName, request.role, request.resultRole,
                                    request.resultClass, operation);
    if (_answeredEmpty(invalid, operation, request.resultClass, answer.handler()))
        return;
    switch (request.operation) {
        case ASSOCIATORS:
            answer.deliver(_getRelatedInstance(request.objectName, request.context,
                                               request.includeQualifiers,
                                               request.includeClassOrigin, request.propertyList));
            break;
        case ASSOCIATOR_NAMES: {
            CIMObjectPath related = _getRelatedInstanceName(request.objectName);
            // An object of another class has no far end here.
            if (!related.getClassName().isNull())
                answer.deliver(related);
            break;
        }
        case REFERENCES:
            answer.deliver(_buildAssociationInstance(
                request.includeQualifiers, request.includeClassOrigin, request.propertyList));
            break;
        case REFERENCE_NAMES:
            answer.deliver(_assocInstanceName);
            break;
    }
    answer.complete();
    log_message(4, "<--ZAR_SystemControllerMaskingCapabilitiesProvider::%s\n", operation);
}

// ---------------------------------------------------------------------------
// Instance operations

PEGASUS_NAMESPACE_END
