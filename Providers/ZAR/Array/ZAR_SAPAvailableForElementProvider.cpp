//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SAPAvailableForElementProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SAPAvailableForElementProvider.h"

#include <string.h>

#include <vector>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_ArrayOwners.h>
#include <ZAR_Common.h>

#include "ZAR_ProtocolEndpointBase.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

const int ENDPOINT = 0;
const int VIEW = 1;

}  // namespace

ZAR_SAPAvailableForElementProvider::ZAR_SAPAvailableForElementProvider(port_type_t type)
    : ZAR_AssociationProviderBase(
          _ofProtocol(type, "ZAR_SAPAvailableForElementProvider"),
          _ofProtocol(type, "ZAR_SAPAvailableForElement"), "AvailableSAP", "ManagedElement",
          type == PORT_TYPE_FC ? ZAR_FC_ENDPOINT : ZAR_ISCSI_ENDPOINT, _viewClassOf(type)),
      _type(type)
{
}

Boolean ZAR_SAPAvailableForElementProvider::reachedThrough(const vlun& r, lpid_t port)
{
    if (r.accessPriority == API_VLUN_HOST_SEES || r.accessPriority == API_VLUN_HOST_SET) {
        return true;
    }
    return r.port == port;
}

void ZAR_SAPAvailableForElementProvider::_forEachPair(const OperationContext& /* context */,
                                                      int side, const CIMObjectPath& from,
                                                      const String& systemName, const String& host,
                                                      const PairSink& sink)
{
    CIMObjectPath wanted;
    if (side >= 0)
        wanted = _asClass(from, _endClasses[side]);

    std::vector<ZAR_PortRecord> ports;
    api_status_t status;
    if (ZAR_ArrayRecords::readPorts(_type, ports, &status) != 0) {
        _fail("_forEachPair", _type == PORT_TYPE_FC ? "api_getFCPorts" : "api_getISCSIPorts",
              status);
    }
    std::vector<CIMObjectPath> endpoints;
    for (size_t i = 0; i < ports.size(); i++)
        endpoints.push_back(ZAR_ProtocolEndpointBase::endpointPath(ports[i], host, systemName));

    // From an endpoint: only its port. From a view: the chunked query
    // narrowed to the view's kind and port.
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    if (side == ENDPOINT) {
        std::vector<ZAR_PortRecord> one;
        std::vector<CIMObjectPath> onePath;
        for (size_t i = 0; i < ports.size(); i++) {
            if (ZAR_Common::matchObjectPath(wanted, endpoints[i])) {
                one.push_back(ports[i]);
                onePath.push_back(endpoints[i]);
                break;
            }
        }
        ports.swap(one);
        endpoints.swap(onePath);
        if (ports.empty())
            return;
    } else if (side == VIEW &&
               !_narrowToView(ZAR_Common::getStringProperty(from, "DeviceID"), query)) {
        return;
    }

    _forEachViewRecord(query, [&](const vlun& r) {
        if (r.hporttype != _type || r.deviceID[0] == '\0')
            return true;
        Pair pair;
        pair.record = &r;
        pair.ends[VIEW] = _viewPath(r, host, systemName);
        if (side == VIEW && !ZAR_Common::matchObjectPath(wanted, pair.ends[VIEW]))
            return true;
        for (size_t p = 0; p < ports.size(); p++) {
            if (!reachedThrough(r, ports[p].position))
                continue;
            pair.port = &ports[p];
            pair.ends[ENDPOINT] = endpoints[p];
            if (!sink(pair))
                return false;
        }
        return true;
    });
}

CIMInstance ZAR_SAPAvailableForElementProvider::_endInstance(const OperationContext& /* context */,
                                                             const Pair& pair, int side,
                                                             CIMClass& cls,
                                                             const String& systemName,
                                                             const String& host)
{
    if (side == ENDPOINT) {
        return ZAR_ProtocolEndpointBase::endpointInstance(cls, *pair.port, host, systemName);
    }
    vlun record = *pair.record;
    return ZAR_Common::buildSPCInstance(String(ZAR_STORAGE_SYSTEM), cls, &record, systemName, host);
}

PEGASUS_NAMESPACE_END
