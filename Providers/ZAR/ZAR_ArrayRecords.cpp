//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayRecords.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ArrayRecords.h"

#include <stdio.h>
#include <string.h>

#include "ZAR_ArrayOwners.h"
#include "ZAR_Common.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

// Records a failed call's code in the status when the call left it empty.
int _failed(int rc, api_status_t* status)
{
    if (rc != 0 && status->code == 0)
        errinfo_set_str(status, rc, api_errorCodeText(rc));
    return rc;
}

}  // namespace

String ZAR_ArrayRecords::field(const char* text, size_t size)
{
    return String(text, (Uint32)strnlen(text, size));
}

String ZAR_ArrayRecords::wwnText(zar_u64 wwn)
{
    char buffer[17];
    snprintf(buffer, sizeof(buffer), "%016llX", (unsigned long long)wwn);
    return String(buffer);
}

int ZAR_ArrayRecords::readPorts(port_type_t type, std::vector<ZAR_PortRecord>& ports,
                                api_status_t* status)
{
    ports.clear();
    if (type == PORT_TYPE_FC) {
        ZAR_FCPortList fc;
        int rc = ZAR_Common::guardedCall(status, [&]() {
            fc.count = api_getFCPorts(0, 0, 0, &fc.list);
            return fc.count < 0 ? -fc.count : 0;
        });
        if (rc != 0)
            return _failed(rc, status);
        const api_FCPort_t* list = fc.list;
        for (int i = 0; i < fc.count; i++) {
            ZAR_PortRecord p;
            p.type = PORT_TYPE_FC;
            p.position = list[i].portPos;
            p.deviceID = field(list[i].deviceID, sizeof(list[i].deviceID));
            p.elementName = field(list[i].elementName, sizeof(list[i].elementName));
            p.wwn = wwnText(list[i].portWWN);
            p.status = list[i].operationalStatus;
            p.speed = list[i].speed;
            ports.push_back(p);
        }
        return 0;
    }

    ZAR_ISCSIPortList iscsi;
    int count = 0;
    int rc = ZAR_Common::guardedCall(status, [&]() {
        count = api_getISCSIPorts(&iscsi.list);
        return count < 0 ? -count : 0;
    });
    if (rc != 0)
        return _failed(rc, status);
    const api_iSCSIPort_t* list = iscsi.list;
    for (int i = 0; i < count; i++) {
        ZAR_PortRecord p;
        p.type = PORT_TYPE_ISCSI;
        p.position = list[i].portID;
        p.deviceID = field(list[i].deviceID, sizeof(list[i].deviceID));
        p.elementName = field(list[i].elementName, sizeof(list[i].elementName));
        p.iscsiName = field(list[i].iscsiName, sizeof(list[i].iscsiName));
        p.status = list[i].operationalStatus;
        p.speed = list[i].speed;
        ports.push_back(p);
    }
    return 0;
}

int ZAR_ArrayRecords::readVolumeChunk(zar_u64* cursor, Uint32 chunk, std::vector<api_vv_t>& volumes,
                                      api_status_t* status)
{
    volumes.clear();
    ZAR_VolumeList list;
    int rc = ZAR_Common::guardedCall(
        status, [&]() { return api_getVVs_chunk(cursor, chunk, 0, &list.count, &list.list, 1); });
    if (rc != 0)
        return _failed(rc, status);
    volumes.assign(list.list, list.list + list.count);
    return 0;
}

int ZAR_ArrayRecords::readVolume(const String& name, api_vv_t* volume, api_status_t* status)
{
    ZAR_VolumeList list;
    CString text = name.getCString();
    int rc = ZAR_Common::guardedCall(status, [&]() {
        return api_getVVs_direct(0, (const char*)text, &list.count, &list.list, 1);
    });
    if (rc != 0)
        return _failed(rc, status);
    if (list.count == 0) {
        errinfo_set_str(status, API_E_VV_NOT_FOUND, api_errorCodeText(API_E_VV_NOT_FOUND));
        return API_E_VV_NOT_FOUND;
    }
    *volume = list.list[0];
    return 0;
}

void ZAR_ArrayRecords::narrow(api_vlunsInfo_t& query, const String& hostName, Uint32 type,
                              Uint16 port, Boolean emptyHostIsCriterion)
{
    if (hostName.size() != 0 || emptyHostIsCriterion) {
        CString text = hostName.getCString();
        size_t n = strnlen((const char*)text, sizeof(query.hostname) - 1);
        memcpy(query.hostname, (const char*)text, n);
        query.hostname[n] = '\0';
        query.hostnameIsSet = 1;
    }
    if (type != 0) {
        query.vluntype = type;
        query.vluntypeIsSet = 1;
    }
    if (port != API_PORT_NONE) {
        query.port = port;
        query.portIsSet = 1;
    }
}

int ZAR_ArrayRecords::readExports(const api_vlunsInfo_t& query, std::vector<vlun>& records,
                                  api_status_t* status)
{
    records.clear();
    ZAR_VlunQuery q;
    *q = query;
    q->count = 0;
    q->vluns = 0;
    int rc =
        ZAR_Common::guardedCall(status, [&]() { return api_getSCSIProtocolControllers(q.get()); });
    if (rc == 0 && q->vluns != 0)
        records.assign(q->vluns, q->vluns + q->count);
    return _failed(rc, status);
}

int ZAR_ArrayRecords::readViewChunk(const api_vlunsInfo_t& query, api_spc_param_data* cursor,
                                    Uint32 chunk, std::vector<vlun>& records, Uint32* more,
                                    api_status_t* status)
{
    records.clear();
    ZAR_VlunQuery q;
    *q = query;
    q->count = 0;
    q->vluns = 0;
    zar_u32 remains = 0;
    int rc = ZAR_Common::guardedCall(status, [&]() {
        return api_getSCSIProtocolControllers_chunk(q.get(), cursor, &remains, chunk);
    });
    *more = rc == 0 ? remains : 0;
    if (rc == 0 && q->vluns != 0)
        records.assign(q->vluns, q->vluns + q->count);
    return _failed(rc, status);
}

PEGASUS_NAMESPACE_END
