// Hosts, host sets, initiator paths and logins.
#include <cstring>

#include "Db.h"
#include "Model.h"
#include "Text.h"

namespace zarsim {

namespace {

bool hostFrom(Stmt& st, HostRow* out)
{
    if (!st.step())
        return false;
    if (out) {
        out->id = st.i64(0);
        out->name = st.text(1);
        out->isSet = st.i64(2) != 0;
        out->persona = (int)st.i64(3);
        out->domain = st.text(4);
    }
    return true;
}

const char* kHostSelect = "SELECT id, name, is_set, persona, domain FROM host ";

// The initiator row of a path: id and host id (0 when in no host); false
// when the array does not know it.
bool findInitiator(sqlite3* db, const Initiator& who, int64_t* id, int64_t* hostId)
{
    Stmt st(db, who.type == PORT_TYPE_FC
                    ? "SELECT id, coalesce(host_id, 0) FROM initiator WHERE wwn = ?"
                    : "SELECT id, coalesce(host_id, 0) FROM initiator WHERE iscsi_name = ?");
    if (who.type == PORT_TYPE_FC)
        st.bind(1, (int64_t)who.wwn);
    else
        st.bind(1, who.iscsiName);
    if (!st.step())
        return false;
    *id = st.i64(0);
    *hostId = st.i64(1);
    return true;
}

std::string hostNameOf(sqlite3* db, int64_t id)
{
    HostRow h;
    return findHostById(db, id, &h) ? h.name : std::to_string(id);
}

Result checkDomain(const std::string& domain)
{
    if (domain.empty() || domain == "-")
        return Result::success();
    std::string bad = checkName("Domain", domain);
    return bad.empty() ? Result::success() : Result::error(API_E_INVALID_ARG, bad);
}

Result checkInitiator(const Initiator& p)
{
    if (p.type == PORT_TYPE_FC) {
        if (p.wwn == 0 || p.wwn == API_WWN_NONE)
            return Result::error(API_E_INVALID_ARG, "Invalid initiator WWN " + hex16(p.wwn));
        return Result::success();
    }
    if (p.type == PORT_TYPE_ISCSI) {
        if (p.iscsiName.empty() || p.iscsiName.size() > 223)
            return Result::error(API_E_INVALID_ARG, "Invalid iSCSI name " + p.iscsiName);
        for (char c : p.iscsiName)
            if ((unsigned char)c <= ' ')
                return Result::error(API_E_INVALID_ARG, "Invalid iSCSI name " + p.iscsiName);
        return Result::success();
    }
    return Result::error(API_E_INVALID_ARG, "Invalid initiator");
}

// Gives the initiator to host hostId (creating it when unknown).
void assignInitiator(sqlite3* db, const Initiator& p, int64_t hostId)
{
    int64_t id = 0, owner = 0;
    if (findInitiator(db, p, &id, &owner)) {
        Stmt st(db, "UPDATE initiator SET host_id = ? WHERE id = ?");
        st.bind(1, hostId).bind(2, id).run();
        return;
    }
    Stmt st(
        db,
        "INSERT INTO initiator (type, wwn, iscsi_name, host_id, node_wwn) VALUES (?, ?, ?, ?, ?)");
    st.bind(1, (int64_t)p.type);
    if (p.type == PORT_TYPE_FC)
        st.bind(2, (int64_t)p.wwn).bindNull(3).bind(5, (int64_t)(p.wwn ^ (1ULL << 60)));
    else
        st.bindNull(2).bind(3, p.iscsiName).bind(5, (int64_t)0);
    st.bind(4, hostId).run();
}

void forgetIdleInitiators(sqlite3* db)
{
    exec(db,
         "DELETE FROM initiator WHERE host_id IS NULL AND id NOT IN (SELECT initiator_id FROM "
         "login)");
}

}  // namespace

std::string Initiator::text() const
{
    return type == PORT_TYPE_FC ? hex16(wwn) : iscsiName;
}

Result parseInitiator(const std::string& text, Initiator* out)
{
    Initiator p;
    if (parseWwn16(text, &p.wwn)) {
        p.type = PORT_TYPE_FC;
    } else {
        p.type = PORT_TYPE_ISCSI;
        p.iscsiName = text;
    }
    Result r = checkInitiator(p);
    if (r.ok())
        *out = p;
    return r;
}

bool findHost(sqlite3* db, const std::string& shownName, HostRow* out)
{
    const size_t plen = strlen(API_HOSTSET_PREFIX);
    bool isSet = shownName.compare(0, plen, API_HOSTSET_PREFIX) == 0;
    Stmt st(db, (std::string(kHostSelect) + "WHERE is_set = ? AND name = ?").c_str());
    st.bind(1, (int64_t)isSet).bind(2, isSet ? shownName.substr(plen) : shownName);
    return hostFrom(st, out);
}

bool findHostById(sqlite3* db, int64_t id, HostRow* out)
{
    Stmt st(db, (std::string(kHostSelect) + "WHERE id = ?").c_str());
    st.bind(1, id);
    return hostFrom(st, out);
}

std::vector<HostRow> listHosts(sqlite3* db)
{
    std::vector<HostRow> out;
    Stmt st(db, (std::string(kHostSelect) + "ORDER BY id").c_str());
    HostRow h;
    while (hostFrom(st, &h))
        out.push_back(h);
    return out;
}

Result createHost(sqlite3* db, const std::string& name, const std::vector<Initiator>& paths,
                  int persona, const std::string& domain)
{
    std::string bad = checkName("Host", name);
    if (!bad.empty())
        return Result::error(API_E_INVALID_ARG, bad);
    if (persona < 1 || persona > 15)
        return Result::error(API_E_INVALID_ARG, "Invalid host persona " + std::to_string(persona));
    Result r = checkDomain(domain);
    if (!r.ok())
        return r;
    if (findHost(db, name, nullptr))
        return Result::error(API_E_EXISTS, "Host name " + name + " is already in use");
    for (const Initiator& p : paths) {
        r = checkInitiator(p);
        if (!r.ok())
            return r;
        int64_t id = 0, owner = 0;
        if (findInitiator(db, p, &id, &owner) && owner != 0)
            return Result::error(
                API_E_EXISTS,
                "Initiator " + p.text() + " already belongs to host " + hostNameOf(db, owner));
    }
    Stmt st(db, "INSERT INTO host (name, is_set, persona, domain) VALUES (?, 0, ?, ?)");
    st.bind(1, name)
        .bind(2, (int64_t)persona)
        .bind(3, domain.empty() ? std::string("-") : domain)
        .run();
    int64_t hostId = sqlite3_last_insert_rowid(db);
    for (const Initiator& p : paths)
        assignInitiator(db, p, hostId);
    return Result::success();
}

Result addPaths(sqlite3* db, const std::string& host, const std::vector<Initiator>& paths,
                bool override)
{
    HostRow h;
    if (!findHost(db, host, &h) || h.isSet)
        return Result::error(API_E_HOST_NOT_FOUND, "Host " + host + " does not exist");
    if (paths.empty())
        return Result::error(API_E_INVALID_ARG, "No path given");
    for (const Initiator& p : paths) {
        Result r = checkInitiator(p);
        if (!r.ok())
            return r;
        int64_t id = 0, owner = 0;
        if (findInitiator(db, p, &id, &owner) && owner != 0 && owner != h.id && !override)
            return Result::error(
                API_E_PATH_IN_USE,
                "Initiator " + p.text() + " already belongs to host " + hostNameOf(db, owner));
    }
    for (const Initiator& p : paths)
        assignInitiator(db, p, h.id);
    forgetIdleInitiators(db);
    return Result::success();
}

Result removePath(sqlite3* db, const std::string& host, const Initiator& path, bool force)
{
    HostRow h;
    if (!findHost(db, host, &h) || h.isSet)
        return Result::error(API_E_HOST_NOT_FOUND, "Host " + host + " does not exist");
    int64_t id = 0, owner = 0;
    if (!findInitiator(db, path, &id, &owner) || owner != h.id)
        return Result::error(API_E_PATH_NOT_FOUND,
                             "Initiator " + path.text() + " is not a path of host " + host);
    if (force) {
        Stmt st(db, "DELETE FROM initiator WHERE id = ?");
        st.bind(1, id).run();
    } else {
        Stmt st(db, "UPDATE initiator SET host_id = NULL WHERE id = ?");
        st.bind(1, id).run();
        forgetIdleInitiators(db);
    }
    return Result::success();
}

Result removeHost(sqlite3* db, const std::string& host)
{
    HostRow h;
    if (!findHost(db, host, &h) || h.isSet)
        return Result::error(API_E_HOST_NOT_FOUND, "Host " + host + " does not exist");
    Stmt t(db, "SELECT count(*) FROM template WHERE kind IN (1, 2) AND owner = ?");
    t.bind(1, h.id).step();
    if (t.i64(0) > 0)
        return Result::error(API_E_HOST_EXPORTED,
                             "Host " + host + " has " + std::to_string(t.i64(0)) + " exports");
    Stmt d(db, "DELETE FROM host WHERE id = ?");
    d.bind(1, h.id).run();
    forgetIdleInitiators(db);
    return Result::success();
}

Result setHost(sqlite3* db, const std::string& host, const api_host_change_t& change)
{
    HostRow h;
    if (!findHost(db, host, &h) || h.isSet)
        return Result::error(API_E_HOST_NOT_FOUND, "Host " + host + " does not exist");
    if (!change.newNameIsSet && !change.personaIsSet && !change.domainIsSet)
        return Result::error(API_E_INVALID_ARG, "No change given for host " + host);
    if (change.newNameIsSet) {
        std::string name(change.newName, strnlen(change.newName, sizeof change.newName));
        std::string bad = checkName("Host", name);
        if (!bad.empty())
            return Result::error(API_E_INVALID_ARG, bad);
        HostRow other;
        if (findHost(db, name, &other) && other.id != h.id)
            return Result::error(API_E_EXISTS, "Host name " + name + " is already in use");
        Stmt st(db, "UPDATE host SET name = ? WHERE id = ?");
        st.bind(1, name).bind(2, h.id).run();
    }
    if (change.personaIsSet) {
        if (change.persona < 1 || change.persona > 15)
            return Result::error(API_E_INVALID_ARG,
                                 "Invalid host persona " + std::to_string(change.persona));
        Stmt st(db, "UPDATE host SET persona = ? WHERE id = ?");
        st.bind(1, (int64_t)change.persona).bind(2, h.id).run();
    }
    if (change.domainIsSet) {
        std::string domain(change.domain, strnlen(change.domain, sizeof change.domain));
        Result r = checkDomain(domain);
        if (!r.ok())
            return r;
        Stmt st(db, "UPDATE host SET domain = ? WHERE id = ?");
        st.bind(1, domain.empty() ? std::string("-") : domain).bind(2, h.id).run();
    }
    return Result::success();
}

Result createHostSet(sqlite3* db, const std::string& name, const std::string& domain)
{
    std::string bad = checkName("Host set", name);
    if (!bad.empty())
        return Result::error(API_E_INVALID_ARG, bad);
    Result r = checkDomain(domain);
    if (!r.ok())
        return r;
    if (findHost(db, API_HOSTSET_PREFIX + name, nullptr))
        return Result::error(API_E_EXISTS, "Host set name " + name + " is already in use");
    Stmt st(db, "INSERT INTO host (name, is_set, persona, domain) VALUES (?, 1, 0, ?)");
    st.bind(1, name).bind(2, domain.empty() ? std::string("-") : domain).run();
    return Result::success();
}

Result removeHostSet(sqlite3* db, const std::string& name)
{
    HostRow s;
    if (!findHost(db, API_HOSTSET_PREFIX + name, &s))
        return Result::error(API_E_HOSTSET_NOT_FOUND, "Host set " + name + " does not exist");
    Stmt t(db, "SELECT count(*) FROM template WHERE kind = 3 AND owner = ?");
    t.bind(1, s.id).step();
    if (t.i64(0) > 0)
        return Result::error(API_E_HOST_EXPORTED,
                             "Host set " + name + " has " + std::to_string(t.i64(0)) + " exports");
    Stmt d(db, "DELETE FROM host WHERE id = ?");
    d.bind(1, s.id).run();
    return Result::success();
}

Result hostSetAdd(sqlite3* db, const std::string& set, const std::string& host)
{
    HostRow s, h;
    if (!findHost(db, API_HOSTSET_PREFIX + set, &s))
        return Result::error(API_E_HOSTSET_NOT_FOUND, "Host set " + set + " does not exist");
    if (!findHost(db, host, &h) || h.isSet)
        return Result::error(API_E_HOST_NOT_FOUND, "Host " + host + " does not exist");
    if (s.domain != "-" && h.domain != "-" && s.domain != h.domain)
        return Result::error(API_E_DOMAIN, "Host " + host + " (domain " + h.domain +
                                               ") cannot join host set " + set + " (domain " +
                                               s.domain + ")");
    Stmt st(db,
            "INSERT INTO hostset_member (set_id, host_id) VALUES (?, ?) ON CONFLICT DO NOTHING");
    st.bind(1, s.id).bind(2, h.id).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_EXISTS, "Host " + host + " is already in host set " + set);
    return Result::success();
}

Result hostSetRemove(sqlite3* db, const std::string& set, const std::string& host)
{
    HostRow s, h;
    if (!findHost(db, API_HOSTSET_PREFIX + set, &s))
        return Result::error(API_E_HOSTSET_NOT_FOUND, "Host set " + set + " does not exist");
    if (!findHost(db, host, &h) || h.isSet)
        return Result::error(API_E_HOST_NOT_FOUND, "Host " + host + " does not exist");
    Stmt st(db, "DELETE FROM hostset_member WHERE set_id = ? AND host_id = ?");
    st.bind(1, s.id).bind(2, h.id).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_HOST_NOT_FOUND, "Host " + host + " is not in host set " + set);
    return Result::success();
}

Result login(sqlite3* db, const Initiator& who, lpid_t pos)
{
    Result r = checkInitiator(who);
    if (!r.ok())
        return r;
    PortRow p;
    if (!findPort(db, pos, &p))
        return Result::error(API_E_PORT_INVALID, "Port " + lpidText(pos) + " does not exist");
    if (p.type != who.type)
        return Result::error(API_E_PORT_INVALID, "Initiator " + who.text() +
                                                     " cannot log in on port " + lpidText(pos) +
                                                     " of another protocol");
    int64_t id = 0, owner = 0;
    if (!findInitiator(db, who, &id, &owner)) {
        Stmt st(db,
                "INSERT INTO initiator (type, wwn, iscsi_name, host_id, node_wwn) VALUES (?, ?, ?, "
                "NULL, ?)");
        st.bind(1, (int64_t)who.type);
        if (who.type == PORT_TYPE_FC)
            st.bind(2, (int64_t)who.wwn).bindNull(3).bind(4, (int64_t)(who.wwn ^ (1ULL << 60)));
        else
            st.bindNull(2).bind(3, who.iscsiName).bind(4, (int64_t)0);
        st.run();
        id = sqlite3_last_insert_rowid(db);
    }
    Stmt st(db, "INSERT INTO login (initiator_id, port) VALUES (?, ?) ON CONFLICT DO NOTHING");
    st.bind(1, id).bind(2, (int64_t)pos).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_EXISTS, "Initiator " + who.text() +
                                               " is already logged in on port " + lpidText(pos));
    return Result::success();
}

Result logout(sqlite3* db, const Initiator& who, lpid_t pos)
{
    int64_t id = 0, owner = 0;
    if (!findInitiator(db, who, &id, &owner))
        return Result::error(API_E_PATH_NOT_FOUND, "Initiator " + who.text() + " is unknown");
    Stmt st(db, "DELETE FROM login WHERE initiator_id = ? AND port = ?");
    st.bind(1, id).bind(2, (int64_t)pos).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(
            API_E_PATH_NOT_FOUND,
            "Initiator " + who.text() + " is not logged in on port " + lpidText(pos));
    forgetIdleInitiators(db);
    return Result::success();
}

Result hostPaths(sqlite3* db, const std::string& wwn, const std::string& iscsi,
                 const std::string& host, bool detail, std::vector<api_hardwareID>* out)
{
    std::string sql =
        "SELECT i.id, i.type, coalesce(i.wwn, 0), coalesce(i.iscsi_name, ''), coalesce(h.name, "
        "''), coalesce(h.persona, 0),"
        " i.node_wwn, i.ip, i.hba_vendor, i.hba_model, i.hba_firmware, i.hba_driver, i.speed, "
        "l.port"
        " FROM initiator i LEFT JOIN host h ON h.id = i.host_id LEFT JOIN login l ON "
        "l.initiator_id = i.id";
    int mode = 0;
    uint64_t w = 0;
    if (!wwn.empty()) {
        if (!parseWwn16(wwn, &w))
            return Result::error(API_E_INVALID_ARG, "Invalid WWN " + wwn);
        sql += " WHERE i.wwn = ?";
        mode = 1;
    } else if (!iscsi.empty()) {
        sql += " WHERE i.iscsi_name = ?";
        mode = 2;
    } else if (!host.empty()) {
        HostRow h;
        if (!findHost(db, host, &h) || h.isSet)
            return Result::error(API_E_HOST_NOT_FOUND, "Host " + host + " does not exist");
        sql += " WHERE i.host_id = ?";
        mode = 3;
        w = (uint64_t)h.id;
    }
    sql += " ORDER BY i.id, l.port";
    Stmt st(db, sql.c_str());
    if (mode == 1 || mode == 3)
        st.bind(1, (int64_t)w);
    if (mode == 2)
        st.bind(1, iscsi);
    while (st.step()) {
        api_hardwareID e;
        memset(&e, 0, sizeof e);
        copyField(e.hostName, sizeof e.hostName, st.text(4));
        e.hostpersona = (zar_u32)st.i64(5);
        api_HostPath_t& p = e.pathInfo;
        p.port = st.isNull(13) ? API_PORT_NONE : (lpid_t)st.i64(13);
        p.type = (port_type_t)st.i64(1);
        if (p.type == PORT_TYPE_FC) {
            p.wwn = (zar_u64)st.i64(2);
            p.nodeWwn = (zar_u64)st.i64(6);
        } else {
            copyField(p.iscsiName, sizeof p.iscsiName, st.text(3));
            char out4[64];
            std::string ip = st.text(7);
            if (!ip.empty() && validateConvertIP(ip.c_str(), out4, sizeof out4) == API_IPV4_OK) {
                struct in_addr_like {
                    unsigned char b[4];
                } a;
                unsigned b0, b1, b2, b3;
                if (sscanf(out4, "%u.%u.%u.%u", &b0, &b1, &b2, &b3) == 4) {
                    a.b[0] = (unsigned char)b0, a.b[1] = (unsigned char)b1,
                    a.b[2] = (unsigned char)b2, a.b[3] = (unsigned char)b3;
                    memcpy(&p.ipaddr, a.b, 4);
                }
            }
        }
        if (detail) {
            copyField(p.hbavendor, sizeof p.hbavendor, st.text(8));
            copyField(p.hbamodel, sizeof p.hbamodel, st.text(9));
            copyField(p.hbafirmver, sizeof p.hbafirmver, st.text(10));
            copyField(p.hbadrvver, sizeof p.hbadrvver, st.text(11));
            p.hostspeed = (zar_u8)st.i64(12);
        }
        out->push_back(e);
    }
    return Result::success();
}

}  // namespace zarsim
