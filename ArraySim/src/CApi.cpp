// The C interface of zarapi.h over the simulated array.
#include <arpa/inet.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <zarapi.h>
#include <zarauth.h>

#include "Array.h"
#include "Db.h"
#include "Model.h"
#include "Text.h"

using namespace zarsim;

namespace {

std::string str(const char* p)
{
    return p ? std::string(p) : std::string();
}
std::string field(const char* p, size_t n)
{
    return std::string(p, strnlen(p, n));
}

template <typename T>
T* copyOut(const std::vector<T>& v)
{
    if (v.empty())
        return nullptr;
    T* p = static_cast<T*>(malloc(sizeof(T) * v.size()));
    if (p)
        memcpy(p, v.data(), sizeof(T) * v.size());
    return p;
}

std::string describeTarget(const char* hostname, zar_u64 hostWwn, const char* iscsi, lpid_t port)
{
    std::string s;
    if (hostname && *hostname)
        s += " host=" + std::string(hostname);
    if (hostWwn != API_WWN_NONE)
        s += " hostwwn=" + hex16(hostWwn);
    if (iscsi && *iscsi)
        s += " hostiscsi=" + std::string(iscsi);
    s += " port=" + (port == API_PORT_NONE ? std::string("any") : lpidText(port));
    return s;
}

int vlunQuery(api_vlunsInfo_t* info, const char* op, bool templatesOnly)
{
    if (!info)
        return API_E_INVALID_ARG;
    info->count = 0;
    info->vluns = nullptr;
    std::vector<vlun> out;
    Result r =
        readArray(op, [&](sqlite3* db) { return exportRecords(db, *info, templatesOnly, &out); });
    if (!r.ok())
        return r.code;
    if (!out.empty()) {
        info->vluns = copyOut(out);
        if (!info->vluns)
            return API_E_NO_MEMORY;
        info->count = (zar_u32)out.size();
    }
    return 0;
}

struct FilterTerm {
    int kind;
    bool include;
    std::vector<std::string> values;
};

const zar_u32 kFilterMagic = 0x5A564646;

bool termMatches(const FilterTerm& t, const VolumeRow& v)
{
    for (const std::string& x : t.values) {
        switch (t.kind) {
            case API_VV_FILTER_ID:
                if (std::to_string(v.id) == x)
                    return true;
                break;
            case API_VV_FILTER_NAME:
            case API_VV_FILTER_NAME_LIST:
                if (v.name == x)
                    return true;
                break;
            case API_VV_FILTER_DOMAIN:
                if (v.domain == x)
                    return true;
                break;
            case API_VV_FILTER_WWN_LIST:
                if (strcasecmp(v.wwn.c_str(), x.c_str()) == 0)
                    return true;
                break;
        }
    }
    return false;
}

bool filterMatches(const api_vv_filter_t* f, const VolumeRow& v)
{
    if (!f || f->magic != kFilterMagic || !f->terms)
        return true;
    for (const FilterTerm& t : *static_cast<std::vector<FilterTerm>*>(f->terms))
        if (termMatches(t, v) != t.include)
            return false;
    return true;
}

void toVV(const VolumeRow& v, bool detail, api_vv_t* out)
{
    memset(out, 0, sizeof *out);
    out->id = (zar_u32)v.id;
    copyField(out->elementName, sizeof out->elementName, v.name);
    copyField(out->name, sizeof out->name, v.wwn);
    out->access = (api_vol_mode_t)v.access;
    copyField(out->domain, sizeof out->domain, v.domain);
    out->busy = v.busy ? 1 : 0;
    if (detail) {
        out->sizeMiB = (zar_u64)v.sizeMiB;
        out->vlunCount = (zar_u32)v.vluns;
    }
}

// Volumes after id afterId (in id order) that pass the filter and name, at most
// limit (0: all); *last is the id of the last one read.
Result readVolumes(sqlite3* db, int64_t afterId, uint32_t limit, const api_vv_filter_t* filter,
                   const std::string& name, std::vector<VolumeRow>* out, bool* more)
{
    *more = false;
    Stmt st(db,
            "SELECT id, name, wwn, access, domain, size_mib, busy,"
            " (SELECT count(*) FROM template WHERE template.volume_id = volume.id)"
            " FROM volume WHERE id > ? ORDER BY id");
    st.bind(1, afterId);
    while (st.step()) {
        VolumeRow v;
        v.id = st.i64(0);
        v.name = st.text(1);
        v.wwn = st.text(2);
        v.access = (int)st.i64(3);
        v.domain = st.text(4);
        v.sizeMiB = st.i64(5);
        v.busy = st.i64(6) != 0;
        v.vluns = st.i64(7);
        if (!name.empty() && v.name != name && strcasecmp(v.wwn.c_str(), name.c_str()) != 0)
            continue;
        if (!filterMatches(filter, v))
            continue;
        if (limit > 0 && out->size() == limit) {
            *more = true;
            break;
        }
        out->push_back(v);
    }
    return Result::success();
}

}  // namespace

extern "C" {

// ---- Connection and privileges ---------------------------------------------

int api_zarOpenForCimserver(const char* user)
{
    Result r = ensureOpen();
    if (!r.ok())
        return r.code;
    if (!user)
        return 0;
    int role = 0;
    r = readArray("api_zarOpenForCimserver", [&](sqlite3* db) {
        role = principalRole(db, user);
        return Result::success();
    });
    if (!r.ok())
        return r.code;
    if (role == 0) {
        log_message(3, "api_zarOpenForCimserver: user %s is unknown or disabled\n", user);
        return API_E_ACCESS_DENIED;
    }
    return 0;
}

int api_authorizeCIMUser(const char* user, const char* clientAddress, const char* operation)
{
    if (!user || !operation)
        return 1;
    int answer = 1;
    Result r = readArray("api_authorizeCIMUser", [&](sqlite3* db) {
        answer = authorize(db, user, operation);
        return Result::success();
    });
    if (!r.ok())
        return 1;
    log_message(answer == 0 ? 4 : 3, "authorize: user %s from %s, operation %s: %s\n", user,
                clientAddress && *clientAddress ? clientAddress : "-", operation,
                answer == 0   ? "allowed"
                : answer == 3 ? "unknown operation"
                              : "refused");
    return answer;
}

// ---- Views and VLUNs -------------------------------------------------------

int api_getSCSIProtocolControllers(api_vlunsInfo_t* info)
{
    return vlunQuery(info, "api_getSCSIProtocolControllers", false);
}

int api_getVLUNTemplates(api_vlunsInfo_t* info)
{
    return vlunQuery(info, "api_getVLUNTemplates", true);
}

int api_getSCSIProtocolControllers_chunk(api_vlunsInfo_t* query, api_spc_param_data* cursor,
                                         zar_u32* more, zar_u32 chunk)
{
    if (more)
        *more = 0;
    if (!query || !cursor)
        return API_E_INVALID_ARG;
    query->count = 0;
    query->vluns = nullptr;
    std::vector<vlun> out;
    bool remains = false;
    Result r = readArray("api_getSCSIProtocolControllers_chunk", [&](sqlite3* db) {
        return viewChunk(db, *query, cursor, chunk, &out, &remains);
    });
    if (!r.ok())
        return r.code;
    if (!out.empty()) {
        query->vluns = copyOut(out);
        if (!query->vluns)
            return API_E_NO_MEMORY;
        query->count = (zar_u32)out.size();
    }
    if (more)
        *more = remains ? 1 : 0;
    return 0;
}

void api_freeVLUNs(api_vlunsInfo_t* info)
{
    if (!info)
        return;
    free(info->vluns);
    info->vluns = nullptr;
    info->count = 0;
}

int api_createVLUN(api_evtparam_t* event, zar_u64 vvHigh, zar_u64 vvLow, zar_u32* lun,
                   const char* hostname, zar_u64 hostWwn, const char* hostIscsiName, lpid_t port,
                   int override, int noVcn, char* errText, int errTextSize)
{
    if (!lun)
        return toErrText(Result::error(API_E_INVALID_ARG, "No LUN given"), errText, errTextSize);
    std::string wwn = volumeWwnFromParts(vvHigh, vvLow);
    uint32_t chosen = *lun;
    std::string args = "volume=" + wwn + " lun=" +
                       (*lun == API_LUN_AUTO || *lun == API_LUN_AUTO_24 ? std::string("auto")
                                                                        : std::to_string(*lun)) +
                       describeTarget(hostname, hostWwn, hostIscsiName, port) +
                       " override=" + std::to_string(override != 0) +
                       " novcn=" + std::to_string(noVcn != 0);
    Result r = changeArray("api_createVLUN", Caller::from(event), args, [&](sqlite3* db) {
        Target t;
        Result res = resolveTarget(db, str(hostname), hostWwn, str(hostIscsiName), port, &t);
        if (!res.ok())
            return res;
        chosen = *lun;
        return createVlun(db, wwn, &chosen, t, override != 0);
    });
    if (r.ok())
        *lun = chosen;
    return toErrText(r, errText, errTextSize);
}

int api_removeVLUN(api_evtparam_t* event, zar_u64 vvHigh, zar_u64 vvLow, zar_u32 lun,
                   const char* hostname, zar_u64 hostWwn, const char* hostIscsiName, lpid_t port,
                   int noVcn, char* errText, int errTextSize)
{
    std::string wwn = volumeWwnFromParts(vvHigh, vvLow);
    std::string args = "volume=" + wwn + " lun=" + std::to_string(lun) +
                       describeTarget(hostname, hostWwn, hostIscsiName, port) +
                       " novcn=" + std::to_string(noVcn != 0);
    Result r = changeArray("api_removeVLUN", Caller::from(event), args, [&](sqlite3* db) {
        Target t;
        Result res = resolveTarget(db, str(hostname), hostWwn, str(hostIscsiName), port, &t);
        if (!res.ok())
            return res;
        return removeVlun(db, wwn, lun, t);
    });
    return toErrText(r, errText, errTextSize);
}

// ---- Hosts and paths --------------------------------------------------------

int api_getHosts(api_host_t** hosts, zar_u32* count)
{
    if (!hosts || !count)
        return API_E_INVALID_ARG;
    *hosts = nullptr;
    *count = 0;
    std::vector<api_host_t> out;
    Result r = readArray("api_getHosts", [&](sqlite3* db) {
        for (const HostRow& h : listHosts(db)) {
            api_host_t e;
            memset(&e, 0, sizeof e);
            e.hostID = (zar_u32)h.id;
            copyField(e.name, sizeof e.name, h.shownName());
            e.persona = (zar_u32)h.persona;
            copyField(e.domain, sizeof e.domain, h.domain);
            e.isSet = h.isSet ? 1 : 0;
            Stmt st(db, h.isSet ? "SELECT count(*) FROM hostset_member WHERE set_id = ?"
                                : "SELECT count(*) FROM initiator WHERE host_id = ?");
            st.bind(1, h.id).step();
            e.pathCount = (zar_u32)st.i64(0);
            out.push_back(e);
        }
        return Result::success();
    });
    if (!r.ok())
        return r.code;
    if (!out.empty() && !(*hosts = copyOut(out)))
        return API_E_NO_MEMORY;
    *count = (zar_u32)out.size();
    return 0;
}

void api_freeHosts(api_host_t* hosts)
{
    free(hosts);
}

int api_getHostPaths(const char* wwn, const char* iscsiName, const char* hostname, zar_u32* count,
                     api_hardwareID** list, int detail)
{
    if (!count || !list)
        return API_E_INVALID_ARG;
    *count = 0;
    *list = nullptr;
    std::vector<api_hardwareID> out;
    Result r = readArray("api_getHostPaths", [&](sqlite3* db) {
        return hostPaths(db, str(wwn), str(iscsiName), str(hostname), detail != 0, &out);
    });
    if (!r.ok())
        return r.code;
    if (!out.empty() && !(*list = copyOut(out)))
        return API_E_NO_MEMORY;
    *count = (zar_u32)out.size();
    return 0;
}

void api_freeHostPaths(api_hardwareID* list)
{
    free(list);
}

int api_createHost(api_status_t* status, api_evtparam_t* event, const char* hostname,
                   const char* iscsiName, zar_u64 wwn, zar_u32 persona, const char* domain)
{
    std::vector<Initiator> paths;
    if (wwn != API_WWN_NONE) {
        Initiator p;
        p.type = PORT_TYPE_FC;
        p.wwn = wwn;
        paths.push_back(p);
    }
    if (iscsiName && *iscsiName) {
        Initiator p;
        p.type = PORT_TYPE_ISCSI;
        p.iscsiName = iscsiName;
        paths.push_back(p);
    }
    std::string args =
        "host=" + str(hostname) + " persona=" + std::to_string(persona) + " domain=" + str(domain);
    for (const Initiator& p : paths)
        args += " path=" + p.text();
    Result r = changeArray("api_createHost", Caller::from(event), args, [&](sqlite3* db) {
        return createHost(db, str(hostname), paths, (int)persona, str(domain));
    });
    return toStatus(r, status);
}

int api_addPath(api_evtparam_t* event, const char* hostname, zar_u32 nwwn, const zar_u64* wwns,
                zar_u32 niscsi, const char (*iscsiNames)[API_ISCSI_NAME_LEN], int override,
                api_status_t* status)
{
    std::vector<Initiator> paths;
    if ((nwwn && !wwns) || (niscsi && !iscsiNames))
        return toStatus(Result::error(API_E_INVALID_ARG, "Path list missing"), status);
    for (zar_u32 i = 0; i < nwwn; ++i) {
        Initiator p;
        p.type = PORT_TYPE_FC;
        p.wwn = wwns[i];
        paths.push_back(p);
    }
    for (zar_u32 i = 0; i < niscsi; ++i) {
        Initiator p;
        p.type = PORT_TYPE_ISCSI;
        p.iscsiName = field(iscsiNames[i], API_ISCSI_NAME_LEN);
        paths.push_back(p);
    }
    std::string args = "host=" + str(hostname) + " override=" + std::to_string(override != 0);
    for (const Initiator& p : paths)
        args += " path=" + p.text();
    Result r = changeArray("api_addPath", Caller::from(event), args, [&](sqlite3* db) {
        return addPaths(db, str(hostname), paths, override != 0);
    });
    return toStatus(r, status);
}

int api_removePath(api_status_t* status, api_evtparam_t* event, const char* hostname, int isIscsi,
                   zar_u64 wwn, const char* iscsiName, int count, int force, int reserved)
{
    if (count != 1 || reserved != 0)
        return toStatus(Result::error(API_E_INVALID_ARG, "One path must be given"), status);
    Initiator p;
    p.type = isIscsi ? PORT_TYPE_ISCSI : PORT_TYPE_FC;
    p.wwn = wwn;
    p.iscsiName = str(iscsiName);
    std::string args =
        "host=" + str(hostname) + " path=" + p.text() + " force=" + std::to_string(force != 0);
    Result r = changeArray("api_removePath", Caller::from(event), args, [&](sqlite3* db) {
        return removePath(db, str(hostname), p, force != 0);
    });
    return toStatus(r, status);
}

int api_removeHost(api_evtparam_t* event, const char* hostname, api_status_t* status)
{
    Result r = changeArray("api_removeHost", Caller::from(event), "host=" + str(hostname),
                           [&](sqlite3* db) { return removeHost(db, str(hostname)); });
    return toStatus(r, status);
}

int api_setHost(api_evtparam_t* event, const char* hostname, const api_host_change_t* change,
                api_status_t* status)
{
    if (!change)
        return toStatus(Result::error(API_E_INVALID_ARG, "No change given"), status);
    std::string args = "host=" + str(hostname);
    if (change->newNameIsSet)
        args += " name=" + field(change->newName, sizeof change->newName);
    if (change->personaIsSet)
        args += " persona=" + std::to_string(change->persona);
    if (change->domainIsSet)
        args += " domain=" + field(change->domain, sizeof change->domain);
    Result r = changeArray("api_setHost", Caller::from(event), args,
                           [&](sqlite3* db) { return setHost(db, str(hostname), *change); });
    return toStatus(r, status);
}

// ---- Ports ------------------------------------------------------------------

int api_getFCPorts(zar_u64 wwn, int byWwn, int flags, api_FCPort_t** ports)
{
    if (!ports || flags != 0)
        return -API_E_INVALID_ARG;
    *ports = nullptr;
    std::vector<api_FCPort_t> out;
    std::vector<std::string> attached;
    Result r = readArray("api_getFCPorts", [&](sqlite3* db) {
        for (const PortRow& p : listPorts(db)) {
            if (p.type != PORT_TYPE_FC || (byWwn && p.wwn != wwn))
                continue;
            api_FCPort_t e;
            memset(&e, 0, sizeof e);
            copyField(e.elementName, sizeof e.elementName, "FC port " + lpidText(p.pos));
            e.operationalStatus = (api_port_status_t)p.status;
            copyField(e.deviceID, sizeof e.deviceID, lpidText(p.pos));
            e.portWWN = p.wwn;
            e.speed = p.status == PORT_OK ? (zar_u32)p.speed : 0;
            e.maxSpeed = 16;
            e.portPos = p.pos;
            e.loopID = 0xFF;
            e.nodeWWN = p.wwn & ~(0xFULL << 60);
            e.portType = PORT_TYPE_FC;
            e.fullDuplex = 1;
            e.supportedSpeeds = (1u << 2) | (1u << 3) | (1u << 4);
            e.topology = 1;
            e.protocol = 1;
            e.configMode = 1;
            e.connectionType = 1;
            copyField(e.sfpVendor, sizeof e.sfpVendor, "ZAR Optics");
            copyField(e.sfpPartNumber, sizeof e.sfpPartNumber, "ZSFP-16G-SW");
            out.push_back(e);
            attached.push_back(p.logins > 0
                                   ? hex16(0x2000000000000000ULL | (p.wwn & 0xFFFFFFFFFFFFULL))
                                   : std::string());
        }
        return Result::success();
    });
    if (!r.ok())
        return -r.code;
    if (out.empty())
        return 0;
    // Records and the texts they point to live in one allocation.
    size_t textBytes = 0;
    for (const std::string& s : attached)
        textBytes += s.size() + 1;
    char* block = static_cast<char*>(malloc(sizeof(api_FCPort_t) * out.size() + textBytes));
    if (!block)
        return -API_E_NO_MEMORY;
    api_FCPort_t* recs = reinterpret_cast<api_FCPort_t*>(block);
    char* text = block + sizeof(api_FCPort_t) * out.size();
    for (size_t i = 0; i < out.size(); ++i) {
        recs[i] = out[i];
        memcpy(text, attached[i].c_str(), attached[i].size() + 1);
        recs[i].connectedTo = text;
        text += attached[i].size() + 1;
    }
    *ports = recs;
    return (int)out.size();
}

void api_freeFCPorts(api_FCPort_t* ports, int)
{
    free(ports);
}

int api_getISCSIPorts(api_iSCSIPort_t** ports)
{
    if (!ports)
        return -API_E_INVALID_ARG;
    *ports = nullptr;
    std::vector<api_iSCSIPort_t> out;
    Result r = readArray("api_getISCSIPorts", [&](sqlite3* db) {
        for (const PortRow& p : listPorts(db)) {
            if (p.type != PORT_TYPE_ISCSI)
                continue;
            api_iSCSIPort_t e;
            memset(&e, 0, sizeof e);
            copyField(e.elementName, sizeof e.elementName, "iSCSI port " + lpidText(p.pos));
            e.operationalStatus = (api_port_status_t)p.status;
            copyField(e.deviceID, sizeof e.deviceID, lpidText(p.pos));
            e.portID = p.pos;
            copyField(e.iscsiName, sizeof e.iscsiName, p.iscsiName);
            struct in_addr a;
            if (inet_pton(AF_INET, p.ip.c_str(), &a) == 1)
                e.ipaddr = a.s_addr;
            copyField(e.ipText, sizeof e.ipText, p.ip);
            e.tcpPort = 3260;
            e.speed = p.status == PORT_OK ? (zar_u32)p.speed : 0;
            out.push_back(e);
        }
        return Result::success();
    });
    if (!r.ok())
        return -r.code;
    if (!out.empty() && !(*ports = copyOut(out)))
        return -API_E_NO_MEMORY;
    return (int)out.size();
}

void api_freeISCSIPorts(api_iSCSIPort_t* ports)
{
    free(ports);
}

int api_getFCPortLPID(zar_u64 wwn, lpid_t* lpid)
{
    if (!lpid)
        return API_E_INVALID_ARG;
    lpid_t found = API_PORT_NONE;
    Result r = readArray("api_getFCPortLPID", [&](sqlite3* db) {
        Stmt st(db, "SELECT pos FROM port WHERE type = 1 AND wwn = ?");
        if (st.bind(1, (int64_t)wwn).step())
            found = (lpid_t)st.i64(0);
        return Result::success();
    });
    *lpid = found;
    if (!r.ok())
        return r.code;
    return found == API_PORT_NONE ? API_E_PORT_INVALID : 0;
}

int api_getiSCSIPortLPID(const char* name, lpid_t* lpid)
{
    if (!lpid)
        return API_E_INVALID_ARG;
    lpid_t found = API_PORT_NONE;
    Result r = readArray("api_getiSCSIPortLPID", [&](sqlite3* db) {
        Stmt st(db, "SELECT pos FROM port WHERE type = 2 AND iscsi_name = ?");
        if (st.bind(1, str(name)).step())
            found = (lpid_t)st.i64(0);
        return Result::success();
    });
    *lpid = found;
    if (!r.ok())
        return r.code;
    return found == API_PORT_NONE ? API_E_PORT_INVALID : 0;
}

// ---- Volumes ----------------------------------------------------------------

int api_getVVs_direct(const api_vv_filter_t* filter, const char* name, zar_u32* count,
                      api_vv_t** list, int detail)
{
    if (!count || !list)
        return API_E_INVALID_ARG;
    *count = 0;
    *list = nullptr;
    std::vector<VolumeRow> rows;
    bool more = false;
    Result r = readArray("api_getVVs_direct", [&](sqlite3* db) {
        return readVolumes(db, 0, 0, filter, str(name), &rows, &more);
    });
    if (!r.ok())
        return r.code;
    std::vector<api_vv_t> out(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        toVV(rows[i], detail != 0, &out[i]);
    if (!out.empty() && !(*list = copyOut(out)))
        return API_E_NO_MEMORY;
    *count = (zar_u32)out.size();
    return 0;
}

int api_getVVs_chunk(zar_u64* cursor, zar_u32 chunk, const api_vv_filter_t* filter, zar_u32* count,
                     api_vv_t** list, int detail)
{
    if (!cursor || !count || !list)
        return API_E_INVALID_ARG;
    *count = 0;
    *list = nullptr;
    std::vector<VolumeRow> rows;
    bool more = false;
    Result r = readArray("api_getVVs_chunk", [&](sqlite3* db) {
        return readVolumes(db, (int64_t)*cursor, chunk, filter, std::string(), &rows, &more);
    });
    if (!r.ok())
        return r.code;
    std::vector<api_vv_t> out(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        toVV(rows[i], detail != 0, &out[i]);
    if (!out.empty() && !(*list = copyOut(out)))
        return API_E_NO_MEMORY;
    *count = (zar_u32)out.size();
    *cursor = more && !rows.empty() ? (zar_u64)rows.back().id : 0;
    return 0;
}

void api_freeVVs(api_vv_t* list)
{
    free(list);
}

int api_getvv_filter_init(api_vv_filter_t* filter, zar_u32 maxTerms, zar_u32 maxValues)
{
    if (!filter)
        return API_E_INVALID_ARG;
    memset(filter, 0, sizeof *filter);
    auto* terms = new (std::nothrow) std::vector<FilterTerm>();
    if (!terms)
        return API_E_NO_MEMORY;
    filter->magic = kFilterMagic;
    filter->capacity = maxTerms;
    filter->count = maxValues;  // values still allowed
    filter->terms = terms;
    return 0;
}

int api_getvv_filter_add(api_vv_filter_t* filter, int kind, int include, const char* text)
{
    if (!filter || filter->magic != kFilterMagic || !filter->terms || !text)
        return API_E_INVALID_ARG;
    if (kind < API_VV_FILTER_ID || kind > API_VV_FILTER_WWN_LIST)
        return API_E_INVALID_ARG;
    auto* terms = static_cast<std::vector<FilterTerm>*>(filter->terms);
    if (terms->size() >= filter->capacity)
        return API_E_INVALID_ARG;
    FilterTerm t;
    t.kind = kind;
    t.include = include != 0;
    std::string s(text);
    if (kind == API_VV_FILTER_NAME_LIST || kind == API_VV_FILTER_WWN_LIST) {
        size_t start = 0;
        for (;;) {
            size_t bar = s.find('|', start);
            std::string part =
                s.substr(start, bar == std::string::npos ? std::string::npos : bar - start);
            if (!part.empty())
                t.values.push_back(part);
            if (bar == std::string::npos)
                break;
            start = bar + 1;
        }
    } else {
        t.values.push_back(s);
    }
    if (t.values.empty() || t.values.size() > filter->count)
        return API_E_INVALID_ARG;
    filter->count -= (zar_u32)t.values.size();
    terms->push_back(t);
    return 0;
}

void api_getvv_filter_free(api_vv_filter_t* filter)
{
    if (!filter)
        return;
    if (filter->magic == kFilterMagic)
        delete static_cast<std::vector<FilterTerm>*>(filter->terms);
    memset(filter, 0, sizeof *filter);
}

int api_removeVVs(api_evtparam_t* event, const api_name_t* names, zar_u32 count, zar_u32 flags,
                  api_status_t* status)
{
    if ((count && !names) || flags != 0)
        return toStatus(Result::error(API_E_INVALID_ARG, "Invalid volume list"), status);
    std::vector<std::string> list;
    std::string args = "volumes=";
    for (zar_u32 i = 0; i < count; ++i) {
        list.push_back(field(names[i].name, sizeof names[i].name));
        args += (i ? "," : "") + list.back();
    }
    Result r = changeArray("api_removeVVs", Caller::from(event), args,
                           [&](sqlite3* db) { return removeVolumes(db, list); });
    return toStatus(r, status);
}

// ---- System -----------------------------------------------------------------

static int systemText(const char* op, char* buffer, int size, std::string SystemRow::*member)
{
    if (!buffer || size <= 0)
        return API_E_INVALID_ARG;
    SystemRow s;
    Result r = readArray(op, [&](sqlite3* db) {
        s = loadSystem(db);
        return Result::success();
    });
    if (!r.ok())
        return r.code;
    copyField(buffer, (size_t)size, s.*member);
    return 0;
}

int api_getSystemContact(char* buffer, int size)
{
    return systemText("api_getSystemContact", buffer, size, &SystemRow::contact);
}

int api_getOwnerName(char* buffer, int size)
{
    return systemText("api_getOwnerName", buffer, size, &SystemRow::owner);
}

int api_getSystemDualIP(_api_ipaddr_t* addr)
{
    if (!addr)
        return API_E_INVALID_ARG;
    SystemRow s;
    Result r = readArray("api_getSystemDualIP", [&](sqlite3* db) {
        s = loadSystem(db);
        return Result::success();
    });
    if (!r.ok())
        return r.code;
    memset(addr, 0, sizeof *addr);
    struct in_addr a4;
    struct in6_addr a6;
    bool v4 = inet_pton(AF_INET, s.ipv4.c_str(), &a4) == 1;
    bool v6 = inet_pton(AF_INET6, s.ipv6.c_str(), &a6) == 1;
    if (v4)
        addr->ipv4_addr = a4.s_addr;
    if (v6)
        memcpy(addr->ipv6_addr, &a6, 16);
    addr->dual_flag = v6 ? (v4 ? 3 : 4) : (v4 ? 1 : 0);
    return 0;
}

int cluster_num_nodes_alive(void)
{
    int n = 0;
    Result r = readArray("cluster_num_nodes_alive", [&](sqlite3* db) {
        Stmt st(db, "SELECT count(*) FROM node WHERE alive = 1");
        st.step();
        n = (int)st.i64(0);
        return Result::success();
    });
    return r.ok() ? n : 0;
}

int api_getSystemInfo(api_sysinfo_t* info)
{
    if (!info)
        return API_E_INVALID_ARG;
    SystemRow s;
    int alive = 0, total = 0;
    Result r = readArray("api_getSystemInfo", [&](sqlite3* db) {
        s = loadSystem(db);
        Stmt st(db, "SELECT coalesce(sum(alive), 0), count(*) FROM node");
        st.step();
        alive = (int)st.i64(0);
        total = (int)st.i64(1);
        return Result::success();
    });
    if (!r.ok())
        return r.code;
    memset(info, 0, sizeof *info);
    copyField(info->name, sizeof info->name, s.name);
    copyField(info->hostName, sizeof info->hostName, s.hostName);
    copyField(info->model, sizeof info->model, s.model);
    copyField(info->serial, sizeof info->serial, s.serial);
    info->systemID = s.systemId;
    info->systemType = s.systemType;
    info->nodesAlive = (zar_u32)alive;
    info->nodesTotal = (zar_u32)total;
    info->quadPort = s.quadPort ? 1 : 0;
    info->policy = s.policy;
    return 0;
}

int api_getPolicy(zar_u32* policy)
{
    if (!policy)
        return API_E_INVALID_ARG;
    api_sysinfo_t info;
    int rc = api_getSystemInfo(&info);
    if (rc == 0)
        *policy = info.policy;
    return rc;
}

// ---- Password check of the CIM server ---------------------------------------

int zar_authenticateUser(const char* user, const char* password)
{
    if (!user || !password || !*user)
        return 1;
    Credential c;
    Result r = readArray("zar_authenticateUser", [&](sqlite3* db) {
        c = loadCredential(db, user);
        return Result::success();
    });
    if (!r.ok() || !verifyCredential(c, password)) {
        log_message(3, "authentication of user %s failed\n", user);
        return 1;
    }
    return 0;
}

int zar_usersGeneration(unsigned long long* generation)
{
    if (!generation)
        return 1;
    *generation = usersGeneration();
    return 0;
}

int zar_userRole(const char* user)
{
    if (!user)
        return ZAR_ROLE_NONE;
    int role = ZAR_ROLE_NONE;
    readArray("zar_userRole", [&](sqlite3* db) {
        role = userRole(db, user);
        return Result::success();
    });
    return role;
}

}  // extern "C"
