//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SystemPartProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SystemPartProvider.h"

#include <string.h>

#include <vector>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

#include "ZAR_ProtocolEndpointBase.h"
#include "ZAR_StorageSystemProvider.h"
#include "ZAR_StorageVolumeProvider.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

const int SYSTEM = 0;
const int PART = 1;
const Uint32 CHUNK = 200;

// Each association's provider name, class, roles of the system's end and
// of the parts' end, and class of the parts' end, by Parts.
const struct {
    const char *provider, *assocClass, *systemRole, *partRole, *partClass;
} SHAPES[] = {
    {"ZAR_SystemDeviceProvider", "ZAR_SystemDevice", "GroupComponent", "PartComponent",
     "CIM_LogicalDevice"},
    {"ZAR_HostedAccessPointProvider", "ZAR_HostedAccessPoint", "Antecedent", "Dependent",
     "CIM_ServiceAccessPoint"},
};

}  // namespace

ZAR_SystemPartProvider::ZAR_SystemPartProvider(Parts parts)
    : ZAR_AssociationProviderBase(String(SHAPES[parts].provider), SHAPES[parts].assocClass,
                                  SHAPES[parts].systemRole, SHAPES[parts].partRole,
                                  ZAR_STORAGE_SYSTEM, SHAPES[parts].partClass),
      _parts(parts)
{
    if (parts == DEVICES)
        _endHolds(PART, {ZAR_STORAGE_VOLUME, ZAR_SCSI_CONTROLLER, ZAR_ISCSI_CONTROLLER});
    else
        _endHolds(PART, {ZAR_FC_ENDPOINT, ZAR_ISCSI_ENDPOINT});
}

void ZAR_SystemPartProvider::_forEachPair(const OperationContext& /* context */, int side,
                                          const CIMObjectPath& from, const String& systemName,
                                          const String& host, const PairSink& sink)
{
    Pair pair;
    pair.record = 0;
    pair.port = 0;
    pair.ends[SYSTEM] = ZAR_StorageSystemProvider::buildObjectPath(host, systemName);
    if (side == SYSTEM && !ZAR_Common::matchObjectPath(_asClass(from, CIMName(ZAR_STORAGE_SYSTEM)),
                                                       pair.ends[SYSTEM])) {
        return;
    }
    const CIMObjectPath* part = side == PART ? &from : 0;
    if (_parts == DEVICES)
        _forEachDevice(pair, part, systemName, host, sink);
    else
        _forEachAccessPoint(pair, part, systemName, host, sink);
}

void ZAR_SystemPartProvider::_forEachDevice(Pair& pair, const CIMObjectPath* from,
                                            const String& systemName, const String& host,
                                            const PairSink& sink)
{
    CIMObjectPath wanted;
    CIMName deviceClass;
    if (from) {
        String creation = ZAR_Common::getStringProperty(*from, "CreationClassName");
        deviceClass = creation.size() != 0 ? CIMName(creation) : from->getClassName();
        wanted = _asClass(*from, deviceClass);
    }
    Boolean fromVolume = from && deviceClass.equal(CIMName(ZAR_STORAGE_VOLUME));
    api_status_t status;

    // Volumes, in chunks.
    if (!from || fromVolume) {
        zar_u64 cursor = 0;
        do {
            std::vector<api_vv_t> volumes;
            if (ZAR_ArrayRecords::readVolumeChunk(&cursor, CHUNK, volumes, &status) != 0) {
                _fail("_forEachPair", "api_getVVs_chunk", status);
            }
            for (size_t i = 0; i < volumes.size(); i++) {
                pair.ends[PART] = ZAR_StorageVolumeProvider::buildObjectPath(
                    host, systemName,
                    ZAR_ArrayRecords::field(volumes[i].name, sizeof(volumes[i].name)));
                if (from && !ZAR_Common::matchObjectPath(wanted, pair.ends[PART]))
                    continue;
                if (!sink(pair))
                    return;
            }
        } while (cursor != 0);
    }
    if (fromVolume)
        return;

    // Views of both protocols, in chunks; from a view, narrowed to it.
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    if (from && !_narrowToView(ZAR_Common::getStringProperty(*from, "DeviceID"), query))
        return;
    _forEachViewRecord(query, [&](const vlun& r) {
        if (r.deviceID[0] == '\0' ||
            (r.hporttype != PORT_TYPE_FC && r.hporttype != PORT_TYPE_ISCSI))
            return true;
        pair.record = &r;
        pair.ends[PART] = _viewPath(r, host, systemName);
        if (from && !ZAR_Common::matchObjectPath(wanted, pair.ends[PART]))
            return true;
        return sink(pair);
    });
}

void ZAR_SystemPartProvider::_forEachAccessPoint(Pair& pair, const CIMObjectPath* from,
                                                 const String& systemName, const String& host,
                                                 const PairSink& sink)
{
    const port_type_t types[] = {PORT_TYPE_FC, PORT_TYPE_ISCSI};
    for (port_type_t type : types) {
        CIMName cls(type == PORT_TYPE_FC ? ZAR_FC_ENDPOINT : ZAR_ISCSI_ENDPOINT);
        if (from && !String::equalNoCase(cls.getString(), ZAR_Common::getStringProperty(
                                                              *from, "CreationClassName"))) {
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
            pair.ends[PART] = ZAR_ProtocolEndpointBase::endpointPath(ports[i], host, systemName);
            if (from && !ZAR_Common::matchObjectPath(_asClass(*from, cls), pair.ends[PART]))
                continue;
            if (!sink(pair))
                return;
        }
    }
}

CIMInstance ZAR_SystemPartProvider::_endInstance(const OperationContext& /* context */,
                                                 const Pair& pair, int side, CIMClass& cls,
                                                 const String& systemName, const String& host)
{
    if (side == SYSTEM) {
        CIMInstance system =
            _cimom.getInstance(OperationContext(), CIMNamespaceName(ZAR_NAMESPACE),
                               pair.ends[SYSTEM], false, false, false, CIMPropertyList());
        system.setPath(pair.ends[SYSTEM]);
        return system;
    }
    if (pair.port != 0)
        return ZAR_ProtocolEndpointBase::endpointInstance(cls, *pair.port, host, systemName);
    if (pair.record != 0) {
        vlun record = *pair.record;
        return ZAR_Common::buildSPCInstance(String(ZAR_STORAGE_SYSTEM), cls, &record, systemName,
                                            host);
    }
    api_vv_t volume;
    api_status_t status;
    String wwn = ZAR_Common::getStringProperty(pair.ends[PART], "DeviceID");
    if (ZAR_ArrayRecords::readVolume(wwn, &volume, &status) != 0)
        _fail("associators", "api_getVVs_direct", status);
    return ZAR_StorageVolumeProvider::buildInstance(cls, volume, host, systemName);
}

PEGASUS_NAMESPACE_END
