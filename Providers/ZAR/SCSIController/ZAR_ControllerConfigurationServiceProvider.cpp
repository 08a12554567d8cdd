//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceProvider.cpp: the service instance, the
// dispatch of its methods and the names of new hosts.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>
#include <Pegasus/Provider/ProviderException.h>

#include <string.h>

#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = ZAR_CONFIG_SERVICE;

namespace {

const Uint32 MAX_HOST_NAME = 31;

const ZAR_SingleInstanceProviderBase::Traces TRACES = {
    "--> ZAR_ControllerConfigurationServiceProvider::getInstance()\n",
    "<-- ZAR_ControllerConfigurationServiceProvider::getInstance()\n",
    "--> ZAR_ControllerConfigurationServiceProvider::enumerateInstances() \n",
    "<-- ZAR_ControllerConfigurationServiceProvider::enumerateInstances() \n",
    "--> ZAR_ControllerConfigurationServiceProvider::enumerateInstanceNames()\n",
    "<-- ZAR_ControllerConfigurationServiceProvider::enumerateInstanceNames()\n",
};

}  // namespace

ZAR_ControllerConfigurationServiceProvider::ZAR_ControllerConfigurationServiceProvider()
    : ZAR_SingleInstanceProviderBase(ClassName, "ZAR_ControllerConfigurationServiceProvider",
                                     ZAR_CONFIG_SERVICE, CIM_CONFIG_SERVICE, 4,
                                     " Expect four keys.", TRACES, _instanceName)
{
}

ZAR_ControllerConfigurationServiceProvider::ZAR_ControllerConfigurationServiceProvider(
    const CIMObjectPath&)
    : ZAR_SingleInstanceProviderBase(ClassName, "ZAR_ControllerConfigurationServiceProvider",
                                     ZAR_CONFIG_SERVICE, CIM_CONFIG_SERVICE, 4,
                                     " Expect four keys.", TRACES, _instanceName)
{
    throw CIMNotSupportedException(ClassName + " does not support constructor with object path.");
}

ZAR_ControllerConfigurationServiceProvider::~ZAR_ControllerConfigurationServiceProvider() {}

void ZAR_ControllerConfigurationServiceProvider::initialize(CIMOMHandle& cimom)
{
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider::initialize(cimom)\n");
    _open(cimom);
    _systemName = ZAR_Common::getSystemName(_cimom);
    _systemAddress = ZAR_Common::getSystemHostName(_cimom);
    _buildInstanceName();
    log_message(4, "<-- ZAR_ControllerConfigurationServiceProvider::initialize(cimom)\n");
}

void ZAR_ControllerConfigurationServiceProvider::_buildInstanceName()
{
    log_message(4,
                "--> ZAR_ControllerConfigurationServiceProvider::"
                "_buildInstanceName()\n");
    _name = String(ZAR_VENDOR) + "_ControllerConfigurationService";
    _instanceName = ZAR_Common::buildSystemScopedPath(_systemAddress, _systemName,
                                                      CIMName(ZAR_CONFIG_SERVICE), "Name", _name);
    log_message(4,
                "<-- ZAR_ControllerConfigurationServiceProvider::"
                "_buildInstanceName()\n");
}

CIMInstance ZAR_ControllerConfigurationServiceProvider::_buildInstance(
    Boolean includeQualifiers, Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    log_message(4,
                "--> ZAR_ControllerConfigurationServiceProvider::"
                "_buildInstance()\n");
    // The owner texts may change on the array: read them on each request.
    // A failure leaves them empty and never fails the request.
    char contact[256];
    char owner[256];
    contact[0] = '\0';
    owner[0] = '\0';
    if (CCSUtil::underSemaphore([&]() { return api_getSystemContact(contact, sizeof(contact)); }) !=
        0)
        contact[0] = '\0';
    if (CCSUtil::underSemaphore([&]() { return api_getOwnerName(owner, sizeof(owner)); }) != 0)
        owner[0] = '\0';
    contact[sizeof(contact) - 1] = '\0';
    owner[sizeof(owner) - 1] = '\0';

    CIMClass cls = ZAR_Common::getStoredCIMClass(
        _cimom, OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), CIMName(ZAR_CONFIG_SERVICE),
        false, includeQualifiers, includeClassOrigin, propertyList);
    CIMInstance instance = ZAR_Common::buildInstanceSkeleton(cls);
    ZAR_Common::setPropertyValue(instance, "SystemCreationClassName", String(ZAR_STORAGE_SYSTEM));
    ZAR_Common::setPropertyValue(instance, "SystemName", _systemName);
    ZAR_Common::setPropertyValue(instance, "CreationClassName", String(ZAR_CONFIG_SERVICE));
    ZAR_Common::setPropertyValue(instance, "Name", _name);
    ZAR_Common::setPropertyValue(instance, "PrimaryOwnerContact", String(contact));
    ZAR_Common::setPropertyValue(instance, "PrimaryOwnerName", String(owner));
    ZAR_Common::setPropertyValue(instance, "Started", Boolean(true));
    ZAR_Common::setPropertyValue(instance, "StartMode", String("Automatic"));
    instance.setPath(_instanceName);
    log_message(4,
                "<-- ZAR_ControllerConfigurationServiceProvider::"
                "_buildInstance()\n");
    return instance;
}

void ZAR_ControllerConfigurationServiceProvider::invokeMethod(
    const OperationContext& context, const CIMObjectPath& objectName, const CIMName& methodName,
    const Array<CIMParamValue>& inParameters, MethodResultResponseHandler& handler)
{
    CString methodText = methodName.getString().getCString();
    log_message(4,
                "--> ZAR_ControllerConfigurationServiceProvider::invokeMethod(), "
                "methodName = %s \n",
                (const char*)methodText);
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);

    // Who does what, for the array's audit log.
    String user = ZAR_Common::getUserName(context);
    String address = ZAR_Common::getClientIPAddress(context);
    String className = objectName.getClassName().getString();
    api_evtparam_t event;
    memset(&event, 0, sizeof(event));
    ZAR_Common::setEventParam(&event, (const char*)className.getCString(), (const char*)methodText,
                              "", (const char*)user.getCString(),
                              (const char*)address.getCString());

    if (!ZAR_Common::matchObjectPath(objectName, _instanceName))
        throw CIMObjectNotFoundException(ClassName + " CIM Object not found.");

    typedef void (ZAR_ControllerConfigurationServiceProvider::*Handler)(const MethodCall&);
    static const struct {
        const char* name;
        Handler handler;
    } methods[] = {
        {"ExposePaths", &ZAR_ControllerConfigurationServiceProvider::_exposePaths},
        {"HidePaths", &ZAR_ControllerConfigurationServiceProvider::_hidePaths},
        {"ExposeDefaultLUs", &ZAR_ControllerConfigurationServiceProvider::_exposeDefaultLUs},
        {"HideDefaultLUs", &ZAR_ControllerConfigurationServiceProvider::_hideDefaultLUs},
        {"ExposeLUsToStorageHardwareIDCollection",
         &ZAR_ControllerConfigurationServiceProvider::_exposeLUsToStorageHardwareIDCollection},
        {"HideLUsFromStorageHardwareIDCollection",
         &ZAR_ControllerConfigurationServiceProvider::_hideLUsFromStorageHardwareIDCollection},
        {"DeleteProtocolController",
         &ZAR_ControllerConfigurationServiceProvider::_deleteProtocolController},
    };

    Handler chosen = 0;
    for (size_t i = 0; i < sizeof(methods) / sizeof(methods[0]); i++) {
        if (methodName.equal(CIMName(methods[i].name))) {
            chosen = methods[i].handler;
            break;
        }
    }
    if (chosen == 0) {
        log_message(4, " method %s not supported\n", (const char*)methodText);
        throw CIMNotSupportedException(ClassName + " does not support method " +
                                       methodName.getString());
    }

    // The right to this particular method, by the array's table of rights.
    ZAR_Common::checkOperationAccess(context, objectName.getClassName(), methodName.getString(),
                                     __FILE__, __LINE__);

    (this->*chosen)({&event, context, inParameters, handler});
    log_message(4, "<-- ZAR_ControllerConfigurationServiceProvider::invokeMethod()\n");
}

String ZAR_ControllerConfigurationServiceProvider::generateHostName(String& id, bool isWWN)
{
    if (isWWN) {
        String name("host-");
        name.append(id);
        if (name.size() > MAX_HOST_NAME)
            name = name.subString(0, MAX_HOST_NAME);
        return name;
    }
    const char prefix[] = "iSCSIHost-";
    char random[MAX_HOST_NAME - (sizeof(prefix) - 1) + 1];
    ZAR_Common::generate_random_string(random, sizeof(random));
    return String(prefix) + String(random);
}

PEGASUS_NAMESPACE_END
