//%/////////////////////////////////////////////////////////////////////////////
// ZAR_HostedAccessPointProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_HostedAccessPointProvider.h"

#include <vector>

#include <ZAR_Common.h>

#include "ZAR_ProtocolEndpointBase.h"
#include "ZAR_StorageSystemProvider.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

const int SYSTEM = 0;
const int ENDPOINT = 1;

}  // namespace

ZAR_HostedAccessPointProvider::ZAR_HostedAccessPointProvider()
    : ZAR_AssociationProviderBase(String("ZAR_HostedAccessPointProvider"), "ZAR_HostedAccessPoint",
                                  "Antecedent", "Dependent", ZAR_STORAGE_SYSTEM,
                                  "CIM_ServiceAccessPoint")
{
    _endHolds(ENDPOINT, {ZAR_FC_ENDPOINT, ZAR_ISCSI_ENDPOINT});
}

ZAR_HostedAccessPointProvider::~ZAR_HostedAccessPointProvider() {}

void ZAR_HostedAccessPointProvider::_forEachPair(const OperationContext& /* context */, int side,
                                                 const CIMObjectPath& from,
                                                 const String& systemName, const String& host,
                                                 const PairSink& sink)
{
    Pair pair;
    pair.record = 0;
    pair.port = 0;
    pair.ends[SYSTEM] = ZAR_StorageSystemProvider::buildObjectPath(host, systemName);
    if (side == SYSTEM && !ZAR_Common::matchObjectPath(_asClass(from, CIMName(ZAR_STORAGE_SYSTEM)),
                                                       pair.ends[SYSTEM])) {
        return;
    }
    const port_type_t types[] = {PORT_TYPE_FC, PORT_TYPE_ISCSI};
    for (port_type_t type : types) {
        CIMName cls(type == PORT_TYPE_FC ? ZAR_FC_ENDPOINT : ZAR_ISCSI_ENDPOINT);
        if (side == ENDPOINT &&
            !String::equalNoCase(cls.getString(),
                                 ZAR_Common::getStringProperty(from, "CreationClassName"))) {
            continue;
        }
        std::vector<ZAR_PortRecord> ports;
        api_status_t status;
        if (ZAR_ArrayRecords::readPorts(type, ports, &status) != 0) {
            _fail("_forEachPair", type == PORT_TYPE_FC ? "api_getFCPorts" : "api_getISCSIPorts",
                  status);
        }
        for (size_t i = 0; i < ports.size(); i++) {
            pair.port = &ports[i];
            pair.ends[ENDPOINT] =
                ZAR_ProtocolEndpointBase::endpointPath(ports[i], host, systemName);
            if (side == ENDPOINT &&
                !ZAR_Common::matchObjectPath(_asClass(from, cls), pair.ends[ENDPOINT])) {
                continue;
            }
            if (!sink(pair))
                return;
        }
    }
}

CIMInstance ZAR_HostedAccessPointProvider::_endInstance(const OperationContext& /* context */,
                                                        const Pair& pair, int side, CIMClass& cls,
                                                        const String& systemName,
                                                        const String& host)
{
    if (side == SYSTEM) {
        CIMInstance system =
            _cimom.getInstance(OperationContext(), CIMNamespaceName(ZAR_NAMESPACE),
                               pair.ends[SYSTEM], false, false, false, CIMPropertyList());
        system.setPath(pair.ends[SYSTEM]);
        return system;
    }
    return ZAR_ProtocolEndpointBase::endpointInstance(cls, *pair.port, host, systemName);
}

PEGASUS_NAMESPACE_END
