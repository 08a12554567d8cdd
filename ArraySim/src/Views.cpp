// Views (SCSI protocol controllers): their device identifiers and the records
// of the SPC and template queries.
#include <cstring>
#include <map>
#include <memory>

#include "Db.h"
#include "Model.h"
#include "Text.h"

namespace zarsim {

namespace {

constexpr zar_u32 kCursorMagic = 0x5A565743;  // "ZVWC"

struct ViewKey {
    unsigned kind = 0;
    lpid_t port = API_PORT_NONE;
    int64_t owner = 0;
};

// One record of a view: for host sees and host set views one per protocol of
// the host's paths (sub = port type), for port-present views the view (sub 0)
// and the port's default view (sub 1); matched-set views have one (sub 0).
struct Sub {
    unsigned code = 0;
    int portType = PORT_TYPE_FC;
    bool isDefault = false;
};

// What a query needs about ports and hosts, looked up once per call.
class Context {
public:
    explicit Context(sqlite3* db) : db_(db)
    {
        for (const PortRow& p : listPorts(db))
            ports_[p.pos] = p;
    }

    // A prepared statement of this context, reset for new bindings.
    Stmt& stmt(const char* sql)
    {
        std::unique_ptr<Stmt>& p = stmts_[sql];
        if (!p)
            p.reset(new Stmt(db_, sql));
        else
            p->reset();
        return *p;
    }

    const PortRow* port(lpid_t pos) const
    {
        auto it = ports_.find(pos);
        return it == ports_.end() ? nullptr : &it->second;
    }

    const HostRow* host(int64_t id)
    {
        auto it = hosts_.find(id);
        if (it != hosts_.end())
            return &it->second;
        HostRow h;
        if (!findHostById(db_, id, &h))
            return nullptr;
        return &(hosts_[id] = h);
    }

    std::vector<Sub> subs(const ViewKey& k)
    {
        std::vector<Sub> out;
        if (k.kind == API_VLUN_MATCHED_SET || k.kind == API_VLUN_PORT_PRESENT) {
            const PortRow* p = port(k.port);
            Sub s;
            s.portType = p ? p->type : PORT_TYPE_UNKNOWN;
            out.push_back(s);
            if (k.kind == API_VLUN_PORT_PRESENT) {
                s.code = 1;
                s.isDefault = true;
                out.push_back(s);
            }
            return out;
        }
        const char* sql =
            k.kind == API_VLUN_HOST_SEES
                ? "SELECT DISTINCT type FROM initiator WHERE host_id = ? ORDER BY type"
                : "SELECT DISTINCT type FROM initiator WHERE host_id IN"
                  " (SELECT host_id FROM hostset_member WHERE set_id = ?) ORDER BY type";
        Stmt& st = stmt(sql);
        st.bind(1, k.owner);
        while (st.step()) {
            Sub s;
            s.portType = (int)st.i64(0);
            s.code = (unsigned)s.portType;
            out.push_back(s);
        }
        if (out.empty()) {
            Sub s;
            s.portType = PORT_TYPE_FC;
            s.code = PORT_TYPE_FC;
            out.push_back(s);
        }
        return out;
    }

    // True when no active VLUN stands behind the view record.
    bool dormant(const ViewKey& k, const Sub& s)
    {
        const char* sql = nullptr;
        switch (k.kind) {
            case API_VLUN_MATCHED_SET:
                sql =
                    "SELECT 1 FROM login l JOIN initiator i ON i.id = l.initiator_id WHERE "
                    "i.host_id = ?1 AND l.port = ?2";
                break;
            case API_VLUN_HOST_SEES:
                sql =
                    "SELECT 1 FROM login l JOIN initiator i ON i.id = l.initiator_id WHERE "
                    "i.host_id = ?1 AND i.type = ?3";
                break;
            case API_VLUN_HOST_SET:
                sql =
                    "SELECT 1 FROM login l JOIN initiator i ON i.id = l.initiator_id WHERE i.type "
                    "= ?3 AND i.host_id IN"
                    " (SELECT host_id FROM hostset_member WHERE set_id = ?1)";
                break;
            default:
                sql =
                    "SELECT 1 FROM login l JOIN initiator i ON i.id = l.initiator_id"
                    " WHERE l.port = ?2 AND i.host_id IS NOT NULL AND ?1 = ?1 AND ?3 = ?3";
                break;
        }
        Stmt& st = stmt(sql);
        st.bind(1, k.owner);
        if (st.params() >= 2)
            st.bind(2, (int64_t)k.port);
        if (st.params() >= 3)
            st.bind(3, (int64_t)s.portType);
        return !st.step();
    }

    // A path of the host of the given type, preferring one logged in on port.
    std::string hostPath(int64_t hostId, int type, lpid_t port)
    {
        Stmt& st = stmt(
            "SELECT i.wwn, i.iscsi_name, EXISTS (SELECT 1 FROM login l WHERE l.initiator_id = i.id "
            "AND l.port = ?3)"
            " AS here FROM initiator i WHERE i.host_id = ?1 AND i.type = ?2 ORDER BY here DESC, "
            "i.id LIMIT 1");
        st.bind(1, hostId).bind(2, (int64_t)type).bind(3, (int64_t)port);
        if (!st.step())
            return std::string();
        return type == PORT_TYPE_FC ? hex16((uint64_t)st.i64(0)) : st.text(1);
    }

    // Fills the view part of a record.
    void fill(const ViewKey& k, const Sub& s, vlun* r)
    {
        std::string id;
        std::string portText = lpidText(k.port);
        switch (k.kind) {
            case API_VLUN_MATCHED_SET:
                id = "MS:" + portText + ":" + std::to_string(k.owner);
                break;
            case API_VLUN_HOST_SEES:
                id = "HS:" + std::to_string(k.owner);
                break;
            case API_VLUN_HOST_SET:
                id = "HSet:" + std::to_string(k.owner);
                break;
            default:
                id = "PP:" + portText;
                break;
        }
        copyField(r->parentDeviceID, sizeof r->parentDeviceID, id);
        if (s.isDefault)
            id += ":default";
        copyField(r->deviceID, sizeof r->deviceID, id);
        r->accessPriority = k.kind;
        r->port = k.port;
        r->hporttype = (port_type_t)s.portType;
        r->hostID = (zar_u32)k.owner;
        r->hostIndex = (zar_u32)k.owner;
        if (k.kind != API_VLUN_PORT_PRESENT) {
            if (const HostRow* h = host(k.owner))
                copyField(r->hostname, sizeof r->hostname, h->shownName());
            if (k.kind != API_VLUN_HOST_SET) {
                std::string path = hostPath(k.owner, s.portType, k.port);
                if (s.portType == PORT_TYPE_FC)
                    copyField(r->hostwwn, sizeof r->hostwwn, path);
                else
                    copyField(r->hostiscsiname, sizeof r->hostiscsiname, path);
            }
        }
        if (const PortRow* p = port(k.port)) {
            if (p->type == PORT_TYPE_FC)
                copyField(r->portwwn, sizeof r->portwwn, hex16(p->wwn));
            else
                copyField(r->portiscsiname, sizeof r->portiscsiname, p->iscsiName);
        }
        r->isTemplate = dormant(k, s) ? 1 : 0;
    }

private:
    sqlite3* db_;
    std::map<lpid_t, PortRow> ports_;
    std::map<int64_t, HostRow> hosts_;
    std::map<std::string, std::unique_ptr<Stmt>> stmts_;
};

std::string field(const char* p, size_t n)
{
    return std::string(p, strnlen(p, n));
}

// The WHERE conditions (on template t) of the set criteria; false when a
// criterion names something the array does not have, so nothing matches.
bool criteria(sqlite3* db, const api_vlunsInfo_t& q, const char* t, std::string* where,
              std::vector<int64_t>* args)
{
    std::string w;
    auto add = [&](const std::string& cond, int64_t v) {
        w += " AND " + cond;
        args->push_back(v);
    };
    if (q.vvnameIsSet) {
        VolumeRow v;
        if (!findVolume(db, field(q.vvname, sizeof q.vvname), &v))
            return false;
        add(std::string(t) + "volume_id = ?", v.id);
    }
    if (q.hostnameIsSet) {
        // A port-present export is the one with no host name.
        std::string name = field(q.hostname, sizeof q.hostname);
        HostRow h;
        if (name.empty()) {
            w += std::string(" AND ") + t + "kind = 4";
        } else {
            if (!findHost(db, name, &h))
                return false;
            add(std::string(t) + "owner = ?", h.id);
            w += std::string(" AND ") + t + "kind <> 4";
        }
    }
    if (q.lunIsSet)
        add(std::string(t) + "lun = ?", q.lun);
    if (q.portIsSet)
        add(std::string(t) + "port = ?", q.port);
    if (q.vluntypeIsSet)
        add(std::string(t) + "kind = ?", q.vluntype);
    *where = w;
    return true;
}

}  // namespace

Result exportRecords(sqlite3* db, const api_vlunsInfo_t& q, bool templatesOnly,
                     std::vector<vlun>* out)
{
    std::string where;
    std::vector<int64_t> args;
    if (!criteria(db, q, "t.", &where, &args))
        return Result::success();
    std::string sql =
        "SELECT t.kind, t.port, t.owner, t.lun, v.name, v.wwn, v.access FROM template t"
        " JOIN volume v ON v.id = t.volume_id WHERE 1" +
        where + " ORDER BY t.kind, t.port, t.owner, t.lun, t.id";
    Stmt st(db, sql.c_str());
    for (size_t i = 0; i < args.size(); ++i)
        st.bind((int)i + 1, args[i]);
    Context ctx(db);
    while (st.step()) {
        ViewKey k;
        k.kind = (unsigned)st.i64(0);
        k.port = (lpid_t)st.i64(1);
        k.owner = st.i64(2);
        std::vector<Sub> subs = ctx.subs(k);
        if (templatesOnly)
            subs.resize(1);
        for (const Sub& s : subs) {
            vlun r;
            memset(&r, 0, sizeof r);
            ctx.fill(k, s, &r);
            copyField(r.vvname, sizeof r.vvname, st.text(4));
            copyField(r.vvwwn, sizeof r.vvwwn, st.text(5));
            r.lun = (zar_u32)st.i64(3);
            r.volAccess = s.isDefault ? (api_vol_mode_t)API_VOL_ACCESS_DEFAULT_VIEW
                                      : (api_vol_mode_t)st.i64(6);
            if (templatesOnly)
                r.isTemplate = 1;
            out->push_back(r);
        }
    }
    return Result::success();
}

Result viewChunk(sqlite3* db, const api_vlunsInfo_t& q, api_spc_param_data* cur, uint32_t chunk,
                 std::vector<vlun>* out, bool* more)
{
    *more = false;
    if (!cur || cur->magic != kCursorMagic)
        return Result::error(API_E_INVALID_ARG,
                             "The SPC cursor was not set up with api_initSPCParamData");
    if (cur->done)
        return Result::success();
    std::string where;
    std::vector<int64_t> args;
    if (!criteria(db, q, "t.", &where, &args)) {
        cur->done = 1;
        return Result::success();
    }
    std::string sql = "SELECT kind, port, owner FROM view WHERE (kind, port, owner) >= (?, ?, ?)";
    if (q.vvnameIsSet || q.lunIsSet) {
        sql +=
            " AND EXISTS (SELECT 1 FROM template t WHERE t.kind = view.kind AND t.port = view.port"
            " AND t.owner = view.owner" +
            where + ")";
    } else {
        // The remaining criteria name the view's own key columns.
        std::string w = where;
        for (size_t p; (p = w.find("t.")) != std::string::npos;)
            w.erase(p, 2);
        sql += w;
    }
    sql += " ORDER BY kind, port, owner";
    if (chunk > 0)
        sql += " LIMIT " + std::to_string((uint64_t)chunk + 2);
    Stmt st(db, sql.c_str());
    st.bind(1, cur->started ? (int64_t)cur->kind : 0);
    st.bind(2, cur->started ? (int64_t)cur->port : 0);
    st.bind(3, cur->started ? (int64_t)cur->owner : INT64_MIN);
    for (size_t i = 0; i < args.size(); ++i)
        st.bind((int)i + 4, args[i]);
    Context ctx(db);
    while (st.step()) {
        ViewKey k;
        k.kind = (unsigned)st.i64(0);
        k.port = (lpid_t)st.i64(1);
        k.owner = st.i64(2);
        bool sameAsLast = cur->started && k.kind == cur->kind && k.port == cur->port &&
                          k.owner == (int64_t)cur->owner;
        for (const Sub& s : ctx.subs(k)) {
            if (sameAsLast && s.code <= cur->sub)
                continue;
            if (chunk > 0 && out->size() == chunk) {
                *more = true;
                return Result::success();
            }
            vlun r;
            memset(&r, 0, sizeof r);
            ctx.fill(k, s, &r);
            out->push_back(r);
            cur->started = 1;
            cur->kind = k.kind;
            cur->port = k.port;
            cur->owner = (zar_u64)k.owner;
            cur->sub = s.code;
            cur->delivered++;
        }
    }
    cur->done = 1;
    return Result::success();
}

}  // namespace zarsim

extern "C" {

int api_initSPCParamData(api_spc_param_data* cursor)
{
    if (!cursor)
        return API_E_INVALID_ARG;
    memset(cursor, 0, sizeof *cursor);
    cursor->magic = zarsim::kCursorMagic;
    return 0;
}

void api_freeSPCParamData(api_spc_param_data* cursor)
{
    if (cursor)
        memset(cursor, 0, sizeof *cursor);
}

}  // extern "C"
