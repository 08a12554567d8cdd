//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ProtocolControllerMaskingCapProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ProtocolControllerMaskingCapProvider.h"

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = ZAR_MASKING_CAPABILITIES;

namespace {

const char CIM_CAP_CLASS[] = "CIM_ProtocolControllerMaskingCapabilities";

const ZAR_SingleInstanceProviderBase::Traces TRACES = {
    "--> ZAR_ProtocolControllerMaskingCapabilitiesProvider::getInstance() \n",
    "<-- ZAR_ProtocolControllerMaskingCapabilitiesProvider::getInstance()\n",
    "--> ZAR_ProtocolControllerMaskingCapabilitiesProvider::enumerateInstances() \n",
    "<-- ZAR_ProtocolControllerMaskingCapabilitiesProvider::enumerateInstances() \n",
    "--> ZAR_ProtocolControllerMaskingCapabilitiesProvider::enumerateInstanceNames()\n",
    "<-- ZAR_ProtocolControllerMaskingCapabilitiesProvider::enumerateInstanceNames()\n",
};

}  // namespace

ZAR_ProtocolControllerMaskingCapabilitiesProvider::
    ZAR_ProtocolControllerMaskingCapabilitiesProvider()
    : ZAR_SingleInstanceProviderBase(ClassName, "ZAR_ProtocolControllerMaskingCapabilitiesProvider",
                                     ZAR_MASKING_CAPABILITIES, CIM_CAP_CLASS, 1,
                                     " Expect only one key.", TRACES, _instanceName)
{
}

ZAR_ProtocolControllerMaskingCapabilitiesProvider::
    ZAR_ProtocolControllerMaskingCapabilitiesProvider(const CIMObjectPath&)
    : ZAR_SingleInstanceProviderBase(ClassName, "ZAR_ProtocolControllerMaskingCapabilitiesProvider",
                                     ZAR_MASKING_CAPABILITIES, CIM_CAP_CLASS, 1,
                                     " Expect only one key.", TRACES, _instanceName)
{
    throw CIMNotSupportedException(ClassName + " does not support constructor with object path.");
}

ZAR_ProtocolControllerMaskingCapabilitiesProvider::
    ~ZAR_ProtocolControllerMaskingCapabilitiesProvider()
{
}

void ZAR_ProtocolControllerMaskingCapabilitiesProvider::initialize(CIMOMHandle& cimom)
{
    log_message(4, "--> ZAR_ProtocolControllerMaskingCapabilitiesProvider::initialize\n");
    _open(cimom);
    _systemAddress = ZAR_Common::getSystemHostName(_cimom);
    _buildInstanceName();
    log_message(4,
                "<-- ZAR_ProtocolControllerMaskingCapabilitiesProvider::"
                "initialize(cimom)\n");
}

void ZAR_ProtocolControllerMaskingCapabilitiesProvider::_buildInstanceName()
{
    log_message(4,
                "--> ZAR_ProtocolControllerMaskingCapabilitiesProvider::"
                "_buildInstanceName()\n");
    CIMObjectPath systemPath = ZAR_Common::getSystemObjectPath(_cimom);
    CIMValue name = _cimom.getProperty(OperationContext(), CIMNamespaceName(ZAR_NAMESPACE),
                                       systemPath, CIMName("Name"));
    _systemName.clear();
    if (!name.isNull())
        name.get(_systemName);
    _instanceID = String(ZAR_VENDOR) + ":" + _systemName;

    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("InstanceID"), _instanceID, CIMKeyBinding::STRING));
    _instanceName = CIMObjectPath(_systemAddress, CIMNamespaceName(ZAR_NAMESPACE),
                                  CIMName(ZAR_MASKING_CAPABILITIES), keys);
    log_message(4,
                "<-- ZAR_ProtocolControllerMaskingCapabilitiesProvider::"
                "_buildInstanceName()\n");
}

CIMInstance ZAR_ProtocolControllerMaskingCapabilitiesProvider::_buildInstance(
    bool includeQualifiers, bool includeClassOrigin, const CIMPropertyList& propertyList)
{
    log_message(4,
                "--> ZAR_ProtocolControllerMaskingCapabilitiesProvider::"
                "_buildInstance()\n");
    CIMClass cls =
        ZAR_Common::getStoredCIMClass(_cimom, OperationContext(), CIMNamespaceName(ZAR_NAMESPACE),
                                      CIMName(ZAR_MASKING_CAPABILITIES), false, includeQualifiers,
                                      includeClassOrigin, propertyList);
    CIMInstance instance = ZAR_Common::buildInstanceSkeleton(cls);

    Array<Uint16> hardwareIdTypes;
    hardwareIdTypes.append(1);  // Other
    hardwareIdTypes.append(2);  // Port WWN
    hardwareIdTypes.append(5);  // iSCSI Name
    Array<String> otherHardwareIdTypes;
    otherHardwareIdTypes.append("Null StorageID");
    Boolean oneHardwareIDPerView = (ZAR_Common::getPolicy() & API_POLICY_ONE_HOST_PER_HWID) != 0;

    ZAR_Common::setPropertyValue(
        instance, "Description",
        String("Protocol Controller Masking Capabilities for ") + _systemName);
    ZAR_Common::setPropertyValue(instance, "ElementName",
                                 String(ZAR_VENDOR) + " Protocol Controller Masking Capabilities");
    ZAR_Common::setPropertyValue(instance, "InstanceID", _instanceID);
    ZAR_Common::setPropertyValue(instance, "ValidHardwareIdTypes", hardwareIdTypes);
    ZAR_Common::setPropertyValue(instance, "OtherValidHardwareIDTypes", otherHardwareIdTypes);
    ZAR_Common::setPropertyValue(instance, "PortsPerView", Uint16(4));
    ZAR_Common::setPropertyValue(instance, "ClientSelectableDeviceNumbers", Boolean(true));
    ZAR_Common::setPropertyValue(instance, "AttachDeviceSupported", Boolean(false));
    ZAR_Common::setPropertyValue(instance, "OneHardwareIDPerView", oneHardwareIDPerView);
    ZAR_Common::setPropertyValue(instance, "UniqueUnitNumbersPerPort", Boolean(false));
    ZAR_Common::setPropertyValue(instance, "PrivilegeDeniedSupported", Boolean(false));
    ZAR_Common::setPropertyValue(instance, "ProtocolControllerRequiresAuthorizedIdentity",
                                 Boolean(false));
    ZAR_Common::setPropertyValue(instance, "ProtocolControllerSupportsCollections", Boolean(true));
    ZAR_Common::setPropertyValue(instance, "ExposePathsSupported", Boolean(true));
    ZAR_Common::setPropertyValue(instance, "CreateProtocolControllerSupported", Boolean(false));
    ZAR_Common::setPropertyValue(instance, "MaximumMapCount", Uint16(0));
    ZAR_Common::setPropertyValue(instance, "SPCAllowsNoLUs", Boolean(false));
    ZAR_Common::setPropertyValue(instance, "SPCAllowsNoTargets", Boolean(true));
    ZAR_Common::setPropertyValue(instance, "SPCAllowsNoInitiators", Boolean(true));
    ZAR_Common::setPropertyValue(instance, "SPCSupportsDefaultViews", Boolean(false));
    ZAR_Common::setPropertyValue(instance, "RequiresHostNodePortRegistration", Boolean(true));

    instance.setPath(_instanceName);
    log_message(4,
                "<-- ZAR_ProtocolControllerMaskingCapabilitiesProvider::"
                "_buildInstances()\n");
    return instance;
}

PEGASUS_NAMESPACE_END
