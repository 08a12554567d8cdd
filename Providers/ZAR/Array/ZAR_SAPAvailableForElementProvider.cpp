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
const Uint32 SPC_CHUNK = 200;
const char SYSTEM_CLASS[] = "ZAR_StorageSystem";

const char* _viewClass(port_type_t type)
{
    return type == PORT_TYPE_FC ? "ZAR_SCSIController" : "ZAR_iSCSIController";
}

}  // namespace

ZAR_SAPAvailableForElementProvider::ZAR_SAPAvailableForElementProvider(port_type_t type)
    : ZAR_AssociationProviderBase(
          String(type == PORT_TYPE_FC ? "ZAR_SAPAvailableForElementProvider"
                                      : "ZAR_iSCSISAPAvailableForElementProvider"),
          type == PORT_TYPE_FC ? "ZAR_SAPAvailableForElement" : "ZAR_iSCSISAPAvailableForElement",
          "AvailableSAP", "ManagedElement",
          type == PORT_TYPE_FC ? "ZAR_SCSIProtocolFCEndpoint" : "ZAR_iSCSIProtocolEndpoint",
          _viewClass(type)),
      _type(type)
{
}

ZAR_SAPAvailableForElementProvider::~ZAR_SAPAvailableForElementProvider() {}

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
    String viewID;
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
    } else if (side == VIEW) {
        viewID = ZAR_Common::getStringProperty(from, "DeviceID");
        Uint32 type = 0;
        String hostName;
        Uint16 port = API_PORT_NONE;
        String id = viewID;
        ZAR_Common::deReferenceSPCDeviceID(id, type, hostName, port, false);
        if (type == 0)
            return;
        query.vluntype = type;
        query.vluntypeIsSet = 1;
        if (port != API_PORT_NONE) {
            query.port = port;
            query.portIsSet = 1;
        }
    }

    ZAR_SPCCursor cursor;
    Uint32 more = 1;
    while (more != 0) {
        std::vector<vlun> records;
        if (ZAR_ArrayRecords::readViewChunk(query, cursor.get(), SPC_CHUNK, records, &more,
                                            &status) != 0) {
            _fail("_forEachPair", "api_getSCSIProtocolControllers_chunk", status);
        }
        for (size_t v = 0; v < records.size(); v++) {
            const vlun& r = records[v];
            if (r.hporttype != _type || r.deviceID[0] == '\0')
                continue;
            Pair pair;
            pair.record = &r;
            pair.ends[VIEW] = ZAR_Common::buildSPCObjectPath(
                String(SYSTEM_CLASS), host, systemName,
                ZAR_ArrayRecords::field(r.deviceID, sizeof(r.deviceID)),
                CIMName(_viewClass(_type)));
            if (side == VIEW && !ZAR_Common::matchObjectPath(wanted, pair.ends[VIEW])) {
                continue;
            }
            for (size_t p = 0; p < ports.size(); p++) {
                if (!reachedThrough(r, ports[p].position))
                    continue;
                pair.port = &ports[p];
                pair.ends[ENDPOINT] = endpoints[p];
                if (!sink(pair)) {
                    return;
                }
            }
        }
    }
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
    return ZAR_Common::buildSPCInstance(String(SYSTEM_CLASS), cls, &record, systemName, host);
}

PEGASUS_NAMESPACE_END
