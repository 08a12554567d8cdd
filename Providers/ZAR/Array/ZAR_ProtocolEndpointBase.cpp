//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ProtocolEndpointBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ProtocolEndpointBase.h"

#include <stdio.h>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

// Connection types of a SCSI protocol endpoint.
const Uint16 CONNECTION_FC = 2;
const Uint16 CONNECTION_ISCSI = 7;
const Uint16 ROLE_TARGET = 3;

}  // namespace

ZAR_ProtocolEndpointBase::ZAR_ProtocolEndpointBase(const String& providerName,
                                                   const char* endpointClass, port_type_t type)
    : ZAR_ProviderBase(providerName), _endpointClass(endpointClass), _type(type)
{
}

String ZAR_ProtocolEndpointBase::endpointName(const ZAR_PortRecord& port)
{
    if (port.type == PORT_TYPE_FC)
        return port.wwn;
    char tag[16];
    snprintf(tag, sizeof(tag), ",t,0x%04X", (unsigned)port.position);
    return port.iscsiName + String(tag);
}

CIMObjectPath ZAR_ProtocolEndpointBase::endpointPath(const ZAR_PortRecord& port, const String& host,
                                                     const String& systemName)
{
    const char* cls = port.type == PORT_TYPE_FC ? ZAR_FC_ENDPOINT : ZAR_ISCSI_ENDPOINT;
    return ZAR_Common::buildSystemScopedPath(host, systemName, CIMName(cls), "Name",
                                             endpointName(port));
}

CIMInstance ZAR_ProtocolEndpointBase::endpointInstance(CIMClass& cls, const ZAR_PortRecord& port,
                                                       const String& host, const String& systemName)
{
    bool fc = port.type == PORT_TYPE_FC;
    Array<Uint16> operationalStatus;
    operationalStatus.append(ZAR_Common::getPortOperationalStatus(port.status));

    CIMInstance instance = ZAR_Common::buildInstanceSkeleton(cls);
    ZAR_Common::setPropertyValue(instance, "SystemCreationClassName", String(ZAR_STORAGE_SYSTEM));
    ZAR_Common::setPropertyValue(instance, "SystemName", systemName);
    ZAR_Common::setPropertyValue(instance, "CreationClassName",
                                 String(fc ? ZAR_FC_ENDPOINT : ZAR_ISCSI_ENDPOINT));
    ZAR_Common::setPropertyValue(instance, "Name", endpointName(port));
    ZAR_Common::setPropertyValue(instance, "ElementName", port.elementName);
    ZAR_Common::setPropertyValue(instance, "NameFormat", String(fc ? "WWN" : "iSCSI target name"));
    ZAR_Common::setPropertyValue(instance, "ProtocolIFType", Uint16(fc ? 56 : 1));
    if (!fc)
        ZAR_Common::setPropertyValue(instance, "OtherTypeDescription", String("iSCSI"));
    ZAR_Common::setPropertyValue(instance, "ConnectionType", fc ? CONNECTION_FC : CONNECTION_ISCSI);
    ZAR_Common::setPropertyValue(instance, "Role", ROLE_TARGET);
    ZAR_Common::setPropertyValue(instance, "PortPosition", port.deviceID);
    ZAR_Common::setPropertyValue(instance, "OperationalStatus", operationalStatus);
    ZAR_Common::setPropertyValue(instance, "HealthState",
                                 ZAR_Common::getPortHealthState(port.status));
    ZAR_Common::setPropertyValue(instance, "EnabledState", Uint16(2));
    instance.setPath(endpointPath(port, host, systemName));
    return instance;
}

void ZAR_ProtocolEndpointBase::_readPorts(const char* operation, std::vector<ZAR_PortRecord>& ports,
                                          String& systemName, String& host)
{
    _identity(systemName, host, operation);
    api_status_t status;
    if (ZAR_ArrayRecords::readPorts(_type, ports, &status) != 0) {
        _fail(operation, _type == PORT_TYPE_FC ? "api_getFCPorts" : "api_getISCSIPorts", status);
    }
}

void ZAR_ProtocolEndpointBase::_getInstance(const ReadRequest& request,
                                            InstanceResponseHandler& handler)
{
    CString name = _className.getCString();
    log_message(4, "-->%s::getInstance\n", (const char*)name);
    ZAR_Common::checkUserAccess(request.context, __FILE__, __LINE__);
    if (ZAR_Common::getStringProperty(request.path, "Name").size() == 0)
        throw CIMInvalidParameterException(_className + " Name key not found.");

    String systemName, host;
    std::vector<ZAR_PortRecord> ports;
    _readPorts("getInstance", ports, systemName, host);
    CIMObjectPath wanted = _asClass(request.path, _endpointClass);
    for (size_t i = 0; i < ports.size(); i++) {
        if (!ZAR_Common::matchObjectPath(wanted, endpointPath(ports[i], host, systemName))) {
            continue;
        }
        CIMClass cls = _storedClass(_endpointClass, request.includeQualifiers,
                                    request.includeClassOrigin, request.propertyList);
        handler.processing();
        handler.deliver(endpointInstance(cls, ports[i], host, systemName));
        handler.complete();
        log_message(4, "<--%s::getInstance\n", (const char*)name);
        return;
    }
    log_message(2, "%s::getInstance, not found = %s\n", (const char*)name,
                (const char*)request.path.toString().getCString());
    throw CIMObjectNotFoundException(_className + " CIM Object not found.");
}

void ZAR_ProtocolEndpointBase::_eachPortTraced(
    const ReadRequest& request, const char* operation, ResponseHandler& handler,
    const std::function<void(const ZAR_PortRecord&, const String&, const String&)>& sink)
{
    _traced(request.context, operation, [&]() {
        String systemName, host;
        std::vector<ZAR_PortRecord> ports;
        _readPorts(operation, ports, systemName, host);
        handler.processing();
        for (size_t i = 0; i < ports.size(); i++)
            sink(ports[i], host, systemName);
        handler.complete();
    });
}

void ZAR_ProtocolEndpointBase::_enumerateInstances(const ReadRequest& request,
                                                   InstanceResponseHandler& handler)
{
    // The stored class, fetched at the first port.
    CIMClass cls;
    _eachPortTraced(request, "enumerateInstances", handler,
                    [&](const ZAR_PortRecord& port, const String& host, const String& systemName) {
                        if (cls.isUninitialized())
                            cls = _storedClass(_endpointClass, request.includeQualifiers,
                                               request.includeClassOrigin, request.propertyList);
                        handler.deliver(endpointInstance(cls, port, host, systemName));
                    });
}

void ZAR_ProtocolEndpointBase::_enumerateInstanceNames(const ReadRequest& request,
                                                       ObjectPathResponseHandler& handler)
{
    _eachPortTraced(request, "enumerateInstanceNames", handler,
                    [&](const ZAR_PortRecord& port, const String& host, const String& systemName) {
                        handler.deliver(endpointPath(port, host, systemName));
                    });
}

PEGASUS_NAMESPACE_END
