//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerForUnitProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerForUnitProvider.h"

#include <stdio.h>
#include <string.h>

#include <map>
#include <string>
#include <vector>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

#include "ZAR_StorageVolumeProvider.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

const int VIEW = 0;
const int VOLUME = 1;

std::string _volumeKey(const vlun& r)
{
    return std::string(r.vvwwn, strnlen(r.vvwwn, sizeof(r.vvwwn)));
}

}  // namespace

ZAR_ControllerForUnitProvider::ZAR_ControllerForUnitProvider(port_type_t type)
    : ZAR_AssociationProviderBase(_ofProtocol(type, "ZAR_ControllerForUnitProvider"),
                                  _ofProtocol(type, "ZAR_ControllerForUnit"), "Antecedent",
                                  "Dependent", _viewClassOf(type), ZAR_STORAGE_VOLUME),
      _type(type)
{
}

Uint16 ZAR_ControllerForUnitProvider::deviceAccess(api_vol_mode_t mode)
{
    if (mode == VOL_MODE_READWRITE)
        return 1;
    if (mode == VOL_MODE_READ)
        return 2;
    return 0;
}

void ZAR_ControllerForUnitProvider::_forEachPair(const OperationContext& /* context */, int side,
                                                 const CIMObjectPath& from,
                                                 const String& systemName, const String& host,
                                                 const PairSink& sink)
{
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    CIMObjectPath wanted;
    if (side >= 0) {
        wanted = _asClass(from, _endClasses[side]);
        String deviceID = ZAR_Common::getStringProperty(from, "DeviceID");
        if (deviceID.size() == 0)
            return;
        if (side == VOLUME) {
            // The volume's WWN (32 digits) fills the whole name field,
            // without terminator.
            CString text = deviceID.getCString();
            size_t length = strnlen((const char*)text, sizeof(query.vvname));
            memcpy(query.vvname, (const char*)text, length);
            query.vvnameIsSet = 1;
        } else if (!_narrowToView(deviceID, query)) {
            return;
        }
    }

    std::vector<vlun> records;
    api_status_t status;
    if (ZAR_ArrayRecords::readExports(query, records, &status) != 0)
        _fail("_forEachPair", "api_getSCSIProtocolControllers", status);

    // A default view's records carry the default-view mark instead of the
    // volume's access mode: take it from another record of the volume, or
    // from the volume itself.
    std::map<std::string, api_vol_mode_t> modes;
    for (size_t i = 0; i < records.size(); i++) {
        if (records[i].volAccess != API_VOL_ACCESS_DEFAULT_VIEW)
            modes[_volumeKey(records[i])] = records[i].volAccess;
    }

    for (size_t i = 0; i < records.size(); i++) {
        vlun& r = records[i];
        if (r.hporttype != _type || r.deviceID[0] == '\0')
            continue;
        String wwn = ZAR_ArrayRecords::field(r.vvwwn, sizeof(r.vvwwn));
        if (r.volAccess == API_VOL_ACCESS_DEFAULT_VIEW) {
            std::string key = _volumeKey(r);
            if (modes.find(key) == modes.end()) {
                api_vv_t volume;
                api_status_t vstatus;
                modes[key] = ZAR_ArrayRecords::readVolume(wwn, &volume, &vstatus) == 0
                                 ? volume.access
                                 : VOL_MODE_UNKNOWN;
            }
            r.volAccess = modes[key];
        }
        Pair pair;
        pair.record = &r;
        pair.port = 0;
        pair.ends[VIEW] = _viewPath(r, host, systemName);
        pair.ends[VOLUME] = ZAR_StorageVolumeProvider::buildObjectPath(host, systemName, wwn);
        if (side >= 0 && !ZAR_Common::matchObjectPath(wanted, pair.ends[side]))
            continue;
        if (!sink(pair))
            return;
    }
}

CIMInstance ZAR_ControllerForUnitProvider::_endInstance(const OperationContext& /* context */,
                                                        const Pair& pair, int side, CIMClass& cls,
                                                        const String& systemName,
                                                        const String& host)
{
    if (side == VOLUME) {
        String wwn = ZAR_Common::getStringProperty(pair.ends[VOLUME], "DeviceID");
        api_vv_t volume;
        api_status_t status;
        if (ZAR_ArrayRecords::readVolume(wwn, &volume, &status) != 0)
            _fail("associators", "api_getVVs_direct", status);
        return ZAR_StorageVolumeProvider::buildInstance(cls, volume, host, systemName);
    }

    // An export record carries its view's fields as well.
    vlun record = *pair.record;
    return ZAR_Common::buildSPCInstance(String(ZAR_STORAGE_SYSTEM), cls, &record, systemName, host);
}

void ZAR_ControllerForUnitProvider::_fillAssociation(CIMInstance& instance, const Pair& pair)
{
    char lun[16];
    snprintf(lun, sizeof(lun), "%X", (unsigned)pair.record->lun);
    ZAR_Common::setPropertyValue(instance, "DeviceNumber", String(lun));
    ZAR_Common::setPropertyValue(instance, "DeviceAccess", deviceAccess(pair.record->volAccess));
}

PEGASUS_NAMESPACE_END
