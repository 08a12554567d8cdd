// System identity, configuration, nodes and ports.
#include <cstdlib>

#include "Db.h"
#include "Model.h"
#include "Text.h"

namespace zarsim {

SystemRow loadSystem(sqlite3* db)
{
    Stmt st(db,
            "SELECT name, host_name, model, serial, contact, owner, ipv4, ipv6, system_id, "
            "system_type, policy,"
            " quad_port FROM system WHERE id = 1");
    SystemRow s;
    if (!st.step())
        throw DbError(SQLITE_CORRUPT, "system record missing");
    s.name = st.text(0);
    s.hostName = st.text(1);
    s.model = st.text(2);
    s.serial = st.text(3);
    s.contact = st.text(4);
    s.owner = st.text(5);
    s.ipv4 = st.text(6);
    s.ipv6 = st.text(7);
    s.systemId = (uint32_t)st.i64(8);
    s.systemType = (int)st.i64(9);
    s.policy = (uint32_t)st.i64(10);
    s.quadPort = st.i64(11) != 0;
    return s;
}

uint32_t systemSerial(sqlite3* db)
{
    Stmt st(db, "SELECT system_id FROM system WHERE id = 1");
    return st.step() ? (uint32_t)st.i64(0) : 0;
}

Result setConfig(sqlite3* db, const std::string& key, const std::string& value)
{
    const char* column = nullptr;
    if (key == "name") {
        std::string bad = checkName("System", value);
        if (!bad.empty())
            return Result::error(API_E_INVALID_ARG, bad);
        if (value.find('.') != std::string::npos)
            return Result::error(API_E_INVALID_ARG,
                                 "System name " + value + " must not hold a dot");
        column = "name";
    } else if (key == "host-name") {
        if (value.empty() || value.size() > 63)
            return Result::error(API_E_INVALID_ARG, "Invalid host name " + value);
        column = "host_name";
    } else if (key == "contact") {
        column = "contact";
    } else if (key == "owner") {
        column = "owner";
    } else if (key == "model") {
        column = "model";
    } else if (key == "ipv4" || key == "ipv6") {
        char out[64];
        api_ip_addr_e kind = validateConvertIP(value.c_str(), out, sizeof out);
        if (!value.empty() && kind != (key == "ipv4" ? API_IPV4_OK : API_IPV6_OK))
            return Result::error(API_E_INVALID_ARG, "Invalid " + key + " address " + value);
        Stmt st(db, key == "ipv4" ? "UPDATE system SET ipv4 = ? WHERE id = 1"
                                  : "UPDATE system SET ipv6 = ? WHERE id = 1");
        st.bind(1, value.empty() ? value : std::string(out)).run();
        return Result::success();
    } else if (key == "policy" || key == "serial") {
        char* end = nullptr;
        unsigned long long v = strtoull(value.c_str(), &end, 0);
        if (value.empty() || *end || v > 0xFFFFFFFFULL)
            return Result::error(API_E_INVALID_ARG, "Invalid " + key + " value " + value);
        Stmt st(db, key == "policy" ? "UPDATE system SET policy = ? WHERE id = 1"
                                    : "UPDATE system SET system_id = ?, serial = ? WHERE id = 1");
        st.bind(1, (int64_t)v);
        if (key == "serial")
            st.bind(2, std::to_string(v));
        st.run();
        return Result::success();
    } else {
        return Result::error(
            API_E_INVALID_ARG,
            "Unknown configuration key " + key +
                " (known: name, host-name, contact, owner, model, ipv4, ipv6, policy, serial)");
    }
    std::string sql = std::string("UPDATE system SET ") + column + " = ? WHERE id = 1";
    Stmt st(db, sql.c_str());
    st.bind(1, value).run();
    return Result::success();
}

Result addNode(sqlite3* db, int node)
{
    if (node < 0 || node > 7)
        return Result::error(API_E_INVALID_ARG, "Node " + std::to_string(node) + " is not 0 to 7");
    Stmt st(db, "INSERT INTO node (id, alive) VALUES (?, 1) ON CONFLICT (id) DO NOTHING");
    st.bind(1, (int64_t)node).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_EXISTS, "Node " + std::to_string(node) + " already exists");
    return Result::success();
}

Result setNodeAlive(sqlite3* db, int node, bool alive)
{
    Stmt st(db, "UPDATE node SET alive = ? WHERE id = ?");
    st.bind(1, (int64_t)alive).bind(2, (int64_t)node).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_INVALID_ARG, "Node " + std::to_string(node) + " does not exist");
    return Result::success();
}

Result addPort(sqlite3* db, lpid_t pos, int type, int status, const std::string& ip)
{
    if (!validPortPosition(pos))
        return Result::error(API_E_PORT_INVALID, "Port position " + lpidText(pos) +
                                                     " is invalid (node 0-7, slot 0-9, port 1-4)");
    if (type != PORT_TYPE_FC && type != PORT_TYPE_ISCSI)
        return Result::error(API_E_INVALID_ARG, "Port type must be FC or iSCSI");
    int node = pos >> 7;
    {
        Stmt n(db, "SELECT 1 FROM node WHERE id = ?");
        if (!n.bind(1, (int64_t)node).step())
            return Result::error(API_E_PORT_INVALID, "Node " + std::to_string(node) + " of port " +
                                                         lpidText(pos) + " does not exist");
    }
    PortRow existing;
    if (findPort(db, pos, &existing))
        return Result::error(API_E_EXISTS, "Port " + lpidText(pos) + " already exists");
    std::string addr = ip;
    if (type == PORT_TYPE_ISCSI && addr.empty())
        addr = "10.100." + std::to_string(node) + "." +
               std::to_string(((pos >> 3) & 15) * 8 + (pos & 7));
    if (!addr.empty()) {
        char out[64];
        if (validateConvertIP(addr.c_str(), out, sizeof out) != API_IPV4_OK)
            return Result::error(API_E_INVALID_ARG, "Invalid port address " + addr);
    }
    uint32_t serial = systemSerial(db);
    Stmt st(db,
            "INSERT INTO port (pos, node, type, wwn, iscsi_name, status, ip, speed) VALUES (?, ?, "
            "?, ?, ?, ?, ?, ?)");
    st.bind(1, (int64_t)pos).bind(2, (int64_t)node).bind(3, (int64_t)type);
    if (type == PORT_TYPE_FC) {
        st.bind(4, (int64_t)targetPortWwn(pos, serial)).bindNull(5);
    } else {
        st.bindNull(4).bind(5, targetPortIscsiName(pos, serial));
    }
    st.bind(6, (int64_t)status).bind(7, addr).bind(8, (int64_t)(type == PORT_TYPE_FC ? 16 : 10));
    st.run();
    return Result::success();
}

Result removePort(sqlite3* db, lpid_t pos)
{
    PortRow p;
    if (!findPort(db, pos, &p))
        return Result::error(API_E_PORT_INVALID, "Port " + lpidText(pos) + " does not exist");
    Stmt t(db, "SELECT count(*) FROM template WHERE port = ?");
    t.bind(1, (int64_t)pos).step();
    if (t.i64(0) > 0)
        return Result::error(API_E_PORT_EXPORTED, "Port " + lpidText(pos) + " carries " +
                                                      std::to_string(t.i64(0)) + " exports");
    Stmt d(db, "DELETE FROM port WHERE pos = ?");
    d.bind(1, (int64_t)pos).run();
    // Initiators of no host that are now logged in nowhere are forgotten.
    exec(db,
         "DELETE FROM initiator WHERE host_id IS NULL AND id NOT IN (SELECT initiator_id FROM "
         "login)");
    return Result::success();
}

Result setPortStatus(sqlite3* db, lpid_t pos, int status)
{
    bool known =
        (status >= PORT_CONFIG_WAIT && status <= PORT_PENDING_RESET) || status == PORT_UNKNOWN;
    if (!known)
        return Result::error(API_E_INVALID_ARG, "Unknown port status " + std::to_string(status));
    Stmt st(db, "UPDATE port SET status = ? WHERE pos = ?");
    st.bind(1, (int64_t)status).bind(2, (int64_t)pos).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_PORT_INVALID, "Port " + lpidText(pos) + " does not exist");
    return Result::success();
}

static PortRow portFrom(Stmt& st)
{
    PortRow p;
    p.pos = (lpid_t)st.i64(0);
    p.type = (int)st.i64(1);
    p.wwn = (uint64_t)st.i64(2);
    p.iscsiName = st.text(3);
    p.status = (int)st.i64(4);
    p.ip = st.text(5);
    p.speed = (int)st.i64(6);
    p.logins = (int)st.i64(7);
    return p;
}

static const char* kPortSelect =
    "SELECT pos, type, coalesce(wwn, 0), coalesce(iscsi_name, ''), status, ip, speed,"
    " (SELECT count(*) FROM login WHERE login.port = port.pos) FROM port";

std::vector<PortRow> listPorts(sqlite3* db)
{
    std::vector<PortRow> out;
    Stmt st(db, (std::string(kPortSelect) + " ORDER BY pos").c_str());
    while (st.step())
        out.push_back(portFrom(st));
    return out;
}

bool findPort(sqlite3* db, lpid_t pos, PortRow* out)
{
    Stmt st(db, (std::string(kPortSelect) + " WHERE pos = ?").c_str());
    st.bind(1, (int64_t)pos);
    if (!st.step())
        return false;
    if (out)
        *out = portFrom(st);
    return true;
}

}  // namespace zarsim
