// VLUN templates: addressing, the LUN rules, creation and removal.
#include <set>

#include "Db.h"
#include "Model.h"
#include "Text.h"

namespace zarsim {

namespace {

// SQL giving the LUNs that a new template of target t would clash with:
// LUNs are unique in what any one host sees through any one port.  The
// placeholder ?1 is the owner, ?2 the port, ?3 the LUN (when checking one).
std::string conflictSql(unsigned kind, bool oneLun)
{
    std::string lunCond = oneLun ? " AND lun = ?3" : "";
    const std::string setsOfHost = "(SELECT set_id FROM hostset_member WHERE host_id = ?1)";
    const std::string members = "(SELECT host_id FROM hostset_member WHERE set_id = ?1)";
    const std::string portsOfHost =
        "(SELECT l.port FROM login l JOIN initiator i ON i.id = l.initiator_id WHERE i.host_id = "
        "?1)";
    const std::string portsOfMembers =
        "(SELECT l.port FROM login l JOIN initiator i ON i.id = l.initiator_id WHERE i.host_id "
        "IN " +
        members + ")";
    const std::string hostsOnPort =
        "(SELECT i.host_id FROM login l JOIN initiator i ON i.id = l.initiator_id WHERE l.port = "
        "?2 AND i.host_id IS NOT NULL)";
    std::string q;
    switch (kind) {
        case API_VLUN_MATCHED_SET:
            q = "SELECT lun FROM template WHERE owner = ?1 AND (kind = 2 OR (kind = 1 AND port = "
                "?2))" +
                lunCond + " UNION SELECT lun FROM template WHERE kind = 3 AND owner IN " +
                setsOfHost + lunCond +
                " UNION SELECT lun FROM template WHERE kind = 4 AND port = ?2" + lunCond;
            break;
        case API_VLUN_HOST_SEES:
            q = "SELECT lun FROM template WHERE owner = ?1 AND kind IN (1, 2)" + lunCond +
                " UNION SELECT lun FROM template WHERE kind = 3 AND owner IN " + setsOfHost +
                lunCond + " UNION SELECT lun FROM template WHERE kind = 4 AND port IN " +
                portsOfHost + lunCond;
            break;
        case API_VLUN_HOST_SET:
            q = "SELECT lun FROM template WHERE kind IN (1, 2) AND owner IN " + members + lunCond +
                " UNION SELECT lun FROM template WHERE kind = 3 AND (owner = ?1 OR owner IN"
                " (SELECT set_id FROM hostset_member WHERE host_id IN " +
                members + "))" + lunCond +
                " UNION SELECT lun FROM template WHERE kind = 4 AND port IN " + portsOfMembers +
                lunCond;
            break;
        default:  // port present
            q = "SELECT lun FROM template WHERE port = ?2 AND kind IN (1, 4)" + lunCond +
                " UNION SELECT lun FROM template WHERE kind = 2 AND owner IN " + hostsOnPort +
                lunCond +
                " UNION SELECT lun FROM template WHERE kind = 3 AND owner IN"
                " (SELECT set_id FROM hostset_member WHERE host_id IN " +
                hostsOnPort + ")" + lunCond;
            break;
    }
    return q;
}

std::string targetText(const Target& t)
{
    switch (t.kind) {
        case API_VLUN_MATCHED_SET:
            return "host " + t.ownerName + " through port " + lpidText(t.port);
        case API_VLUN_HOST_SEES:
            return "host " + t.ownerName;
        case API_VLUN_HOST_SET:
            return "host set " + t.ownerName.substr(4);
        default:
            return "port " + lpidText(t.port);
    }
}

}  // namespace

Result resolveTarget(sqlite3* db, const std::string& hostname, uint64_t hostWwn,
                     const std::string& hostIscsi, lpid_t port, Target* out)
{
    Target t;
    HostRow h;
    bool haveHost = false;
    if (!hostname.empty()) {
        if (!findHost(db, hostname, &h)) {
            bool isSet = hostname.compare(0, 4, API_HOSTSET_PREFIX) == 0;
            return Result::error(isSet ? API_E_HOSTSET_NOT_FOUND : API_E_HOST_NOT_FOUND,
                                 (isSet ? "Host set " + hostname.substr(4) : "Host " + hostname) +
                                     " does not exist");
        }
        haveHost = true;
    } else if (hostWwn != API_WWN_NONE || !hostIscsi.empty()) {
        Initiator who;
        who.type = hostWwn != API_WWN_NONE ? PORT_TYPE_FC : PORT_TYPE_ISCSI;
        who.wwn = hostWwn;
        who.iscsiName = hostIscsi;
        Stmt st(db, who.type == PORT_TYPE_FC
                        ? "SELECT coalesce(host_id, 0) FROM initiator WHERE wwn = ?"
                        : "SELECT coalesce(host_id, 0) FROM initiator WHERE iscsi_name = ?");
        if (who.type == PORT_TYPE_FC)
            st.bind(1, (int64_t)who.wwn);
        else
            st.bind(1, who.iscsiName);
        if (!st.step() || st.i64(0) == 0 || !findHostById(db, st.i64(0), &h))
            return Result::error(API_E_HOST_NOT_FOUND, "No host has initiator " + who.text());
        haveHost = true;
    }
    if (port != API_PORT_NONE) {
        PortRow p;
        if (!findPort(db, port, &p))
            return Result::error(API_E_PORT_INVALID, "Port " + lpidText(port) + " does not exist");
    }
    if (haveHost) {
        t.owner = h.id;
        t.ownerName = h.shownName();
        if (h.isSet) {
            if (port != API_PORT_NONE)
                return Result::error(API_E_PORT_INVALID,
                                     "A host set export cannot be bound to port " + lpidText(port));
            t.kind = API_VLUN_HOST_SET;
        } else {
            t.kind = port == API_PORT_NONE ? API_VLUN_HOST_SEES : API_VLUN_MATCHED_SET;
        }
        t.port = port;
    } else {
        if (port == API_PORT_NONE)
            return Result::error(API_E_PORT_INVALID, "A port-present export needs a target port");
        t.kind = API_VLUN_PORT_PRESENT;
        t.owner = 0;
        t.port = port;
    }
    *out = t;
    return Result::success();
}

Result createVlun(sqlite3* db, const std::string& volumeWwn, uint32_t* lun, const Target& t,
                  bool override)
{
    VolumeRow v;
    if (!findVolume(db, volumeWwn, &v))
        return Result::error(API_E_VV_NOT_FOUND, "Volume " + volumeWwn + " does not exist");
    bool automatic = *lun == API_LUN_AUTO || *lun == API_LUN_AUTO_24;
    if (!automatic && *lun > API_LUN_MAX)
        return Result::error(API_E_LUN_INVALID, "LUN " + std::to_string(*lun) +
                                                    " is out of range (0 to " +
                                                    std::to_string(API_LUN_MAX) + ")");
    if (t.kind != API_VLUN_PORT_PRESENT && v.domain != "-") {
        HostRow h;
        findHostById(db, t.owner, &h);
        if (h.domain != "-" && h.domain != v.domain)
            return Result::error(API_E_DOMAIN, "Volume " + v.name + " (domain " + v.domain +
                                                   ") cannot be exported to " + targetText(t) +
                                                   " (domain " + h.domain + ")");
    }
    if (!override) {
        Stmt dup(
            db,
            "SELECT lun FROM template WHERE volume_id = ? AND kind = ? AND owner = ? AND port = ?");
        dup.bind(1, v.id).bind(2, (int64_t)t.kind).bind(3, t.owner).bind(4, (int64_t)t.port);
        if (dup.step())
            return Result::error(API_E_VLUN_EXISTS, "Volume " + v.name +
                                                        " is already exported to " + targetText(t) +
                                                        " under LUN " + std::to_string(dup.i64(0)));
    }
    if (automatic) {
        std::string sql = "SELECT lun FROM (" + conflictSql(t.kind, false) + ") ORDER BY lun";
        Stmt st(db, sql.c_str());
        st.bind(1, t.owner);
        if (st.params() >= 2)
            st.bind(2, (int64_t)t.port);
        uint32_t next = 0;
        while (st.step()) {
            uint32_t used = (uint32_t)st.i64(0);
            if (used > next)
                break;
            if (used == next)
                ++next;
        }
        if (next > API_LUN_MAX)
            return Result::error(API_E_LUN_INVALID, "No free LUN left for " + targetText(t));
        *lun = next;
    } else {
        std::string sql = conflictSql(t.kind, true);
        Stmt st(db, sql.c_str());
        st.bind(1, t.owner).bind(3, (int64_t)*lun);
        if (st.params() >= 2)
            st.bind(2, (int64_t)t.port);
        if (st.step())
            return Result::error(API_E_LUN_INVALID, "LUN " + std::to_string(*lun) +
                                                        " is already in use for " + targetText(t));
    }
    Stmt ins(db, "INSERT INTO template (volume_id, lun, kind, owner, port) VALUES (?, ?, ?, ?, ?)");
    ins.bind(1, v.id)
        .bind(2, (int64_t)*lun)
        .bind(3, (int64_t)t.kind)
        .bind(4, t.owner)
        .bind(5, (int64_t)t.port)
        .run();
    return Result::success();
}

Result removeVlun(sqlite3* db, const std::string& volumeWwn, uint32_t lun, const Target& t)
{
    VolumeRow v;
    if (!findVolume(db, volumeWwn, &v))
        return Result::error(API_E_VV_NOT_FOUND, "Volume " + volumeWwn + " does not exist");
    Stmt st(db,
            "DELETE FROM template WHERE volume_id = ? AND lun = ? AND kind = ? AND owner = ? AND "
            "port = ?");
    st.bind(1, v.id)
        .bind(2, (int64_t)lun)
        .bind(3, (int64_t)t.kind)
        .bind(4, t.owner)
        .bind(5, (int64_t)t.port)
        .run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_VLUN_NOT_FOUND,
                             "Volume " + v.name + " is not exported under LUN " +
                                 std::to_string(lun) + " to " + targetText(t));
    return Result::success();
}

std::vector<ActiveVlun> activeVluns(sqlite3* db)
{
    // Per template, the (host, port) pairs through which it is seen.
    const char* sql =
        "SELECT v.name, h.name, t.lun, l.port, t.kind FROM template t JOIN volume v ON v.id = "
        "t.volume_id"
        " JOIN host h ON (t.kind IN (1, 2) AND h.id = t.owner)"
        "   OR (t.kind = 3 AND h.id IN (SELECT host_id FROM hostset_member WHERE set_id = t.owner))"
        "   OR (t.kind = 4 AND h.is_set = 0)"
        " JOIN initiator i ON i.host_id = h.id JOIN login l ON l.initiator_id = i.id"
        " WHERE (t.kind IN (2, 3) OR l.port = t.port)"
        " GROUP BY t.id, h.id, l.port ORDER BY t.kind, t.port, t.owner, t.lun, h.id, l.port";
    std::vector<ActiveVlun> out;
    Stmt st(db, sql);
    while (st.step()) {
        ActiveVlun a;
        a.volume = st.text(0);
        a.host = st.text(1);
        a.lun = (uint32_t)st.i64(2);
        a.port = (lpid_t)st.i64(3);
        a.kind = (unsigned)st.i64(4);
        out.push_back(a);
    }
    return out;
}

}  // namespace zarsim
