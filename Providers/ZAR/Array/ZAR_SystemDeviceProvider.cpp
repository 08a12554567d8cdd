//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SystemDeviceProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SystemDeviceProvider.h"

#include <string.h>

#include <vector>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_ArrayOwners.h>
#include <ZAR_Common.h>

#include "ZAR_StorageSystemProvider.h"
#include "ZAR_StorageVolumeProvider.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

const int SYSTEM = 0;
const int DEVICE = 1;
const Uint32 CHUNK = 200;

}  // namespace

ZAR_SystemDeviceProvider::ZAR_SystemDeviceProvider()
    : ZAR_AssociationProviderBase(String("ZAR_SystemDeviceProvider"), "ZAR_SystemDevice",
                                  "GroupComponent", "PartComponent", ZAR_STORAGE_SYSTEM,
                                  "CIM_LogicalDevice")
{
    _endHolds(DEVICE, {ZAR_STORAGE_VOLUME, ZAR_SCSI_CONTROLLER, ZAR_ISCSI_CONTROLLER});
}

ZAR_SystemDeviceProvider::~ZAR_SystemDeviceProvider() {}

void ZAR_SystemDeviceProvider::_forEachPair(const OperationContext& /* context */, int side,
                                            const CIMObjectPath& from, const String& systemName,
                                            const String& host, const PairSink& sink)
{
    Pair pair;
    pair.record = 0;
    pair.port = 0;
    pair.ends[SYSTEM] = ZAR_StorageSystemProvider::buildObjectPath(host, systemName);
    CIMObjectPath wanted;
    CIMName deviceClass;
    if (side == SYSTEM) {
        if (!ZAR_Common::matchObjectPath(_asClass(from, CIMName(ZAR_STORAGE_SYSTEM)),
                                         pair.ends[SYSTEM])) {
            return;
        }
    } else if (side == DEVICE) {
        String creation = ZAR_Common::getStringProperty(from, "CreationClassName");
        deviceClass = creation.size() != 0 ? CIMName(creation) : from.getClassName();
        wanted = _asClass(from, deviceClass);
    }
    api_status_t status;

    // Volumes, in chunks.
    if (side != DEVICE || deviceClass.equal(CIMName(ZAR_STORAGE_VOLUME))) {
        zar_u64 cursor = 0;
        do {
            std::vector<api_vv_t> volumes;
            if (ZAR_ArrayRecords::readVolumeChunk(&cursor, CHUNK, volumes, &status) != 0) {
                _fail("_forEachPair", "api_getVVs_chunk", status);
            }
            for (size_t i = 0; i < volumes.size(); i++) {
                pair.ends[DEVICE] = ZAR_StorageVolumeProvider::buildObjectPath(
                    host, systemName,
                    ZAR_ArrayRecords::field(volumes[i].name, sizeof(volumes[i].name)));
                if (side == DEVICE && !ZAR_Common::matchObjectPath(wanted, pair.ends[DEVICE])) {
                    continue;
                }
                if (!sink(pair))
                    return;
            }
        } while (cursor != 0);
    }
    if (side == DEVICE && deviceClass.equal(CIMName(ZAR_STORAGE_VOLUME)))
        return;

    // Views of both protocols, in chunks; from a view, narrowed to it.
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    if (side == DEVICE && !_narrowToView(ZAR_Common::getStringProperty(from, "DeviceID"), query))
        return;
    _forEachViewRecord(query, [&](const vlun& r) {
        if (r.deviceID[0] == '\0' ||
            (r.hporttype != PORT_TYPE_FC && r.hporttype != PORT_TYPE_ISCSI))
            return true;
        pair.record = &r;
        pair.ends[DEVICE] = _viewPath(r, host, systemName);
        if (side == DEVICE && !ZAR_Common::matchObjectPath(wanted, pair.ends[DEVICE]))
            return true;
        return sink(pair);
    });
}

CIMInstance ZAR_SystemDeviceProvider::_endInstance(const OperationContext& /* context */,
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
    if (pair.record != 0) {
        vlun record = *pair.record;
        return ZAR_Common::buildSPCInstance(String(ZAR_STORAGE_SYSTEM), cls, &record, systemName,
                                            host);
    }
    api_vv_t volume;
    api_status_t status;
    String wwn = ZAR_Common::getStringProperty(pair.ends[DEVICE], "DeviceID");
    if (ZAR_ArrayRecords::readVolume(wwn, &volume, &status) != 0)
        _fail("associators", "api_getVVs_direct", status);
    return ZAR_StorageVolumeProvider::buildInstance(cls, volume, host, systemName);
}

PEGASUS_NAMESPACE_END
