// Volumes: creation, deletion and lookup.
#include "Db.h"
#include "Model.h"
#include "Text.h"

namespace zarsim {

static bool volumeFrom(Stmt& st, VolumeRow* out)
{
    if (!st.step())
        return false;
    if (out) {
        out->id = st.i64(0);
        out->name = st.text(1);
        out->wwn = st.text(2);
        out->access = (int)st.i64(3);
        out->domain = st.text(4);
        out->sizeMiB = st.i64(5);
        out->busy = st.i64(6) != 0;
        out->vluns = st.i64(7);
    }
    return true;
}

#define VOLUME_SELECT                                       \
    "SELECT id, name, wwn, access, domain, size_mib, busy," \
    " EXISTS (SELECT 1 FROM template WHERE template.volume_id = volume.id) FROM volume "

bool findVolume(sqlite3* db, const std::string& nameOrWwn, VolumeRow* out)
{
    {
        Stmt st(db, VOLUME_SELECT "WHERE name = ?");
        st.bind(1, nameOrWwn);
        if (volumeFrom(st, out))
            return true;
    }
    Stmt st(db, VOLUME_SELECT "WHERE wwn = ?");
    st.bind(1, nameOrWwn);
    return volumeFrom(st, out);
}

Result createVolume(sqlite3* db, const std::string& name, int64_t sizeMiB,
                    const std::string& domain, int access, std::string* wwnOut)
{
    std::string bad = checkName("Volume", name);
    if (!bad.empty())
        return Result::error(API_E_INVALID_ARG, bad);
    std::string dom = domain.empty() ? "-" : domain;
    if (dom != "-") {
        bad = checkName("Domain", dom);
        if (!bad.empty())
            return Result::error(API_E_INVALID_ARG, bad);
    }
    if (sizeMiB <= 0 || sizeMiB > (int64_t)64 * 1024 * 1024)
        return Result::error(API_E_INVALID_ARG, "Volume size " + std::to_string(sizeMiB) +
                                                    " MiB is out of range (1 MiB to 64 TiB)");
    if (access < VOL_MODE_READ || access > VOL_MODE_READWRITE)
        return Result::error(API_E_INVALID_ARG,
                             "Invalid volume access mode " + std::to_string(access));
    if (findVolume(db, name, nullptr))
        return Result::error(API_E_EXISTS, "Volume name " + name + " is already in use");
    int64_t id;
    {
        Stmt st(db, "SELECT coalesce(max(id), 0) + 1 FROM volume");
        st.step();
        id = st.i64(0);
    }
    std::string wwn = volumeWwn(systemSerial(db), (uint32_t)id);
    Stmt st(
        db,
        "INSERT INTO volume (id, name, wwn, access, domain, size_mib) VALUES (?, ?, ?, ?, ?, ?)");
    st.bind(1, id)
        .bind(2, name)
        .bind(3, wwn)
        .bind(4, (int64_t)access)
        .bind(5, dom)
        .bind(6, sizeMiB)
        .run();
    if (wwnOut)
        *wwnOut = wwn;
    return Result::success();
}

Result removeVolumes(sqlite3* db, const std::vector<std::string>& names)
{
    if (names.empty())
        return Result::error(API_E_INVALID_ARG, "No volume given");
    std::vector<int64_t> ids;
    for (const std::string& n : names) {
        VolumeRow v;
        Stmt st(db, VOLUME_SELECT "WHERE name = ?");
        st.bind(1, n);
        if (!volumeFrom(st, &v))
            return Result::error(API_E_VV_NOT_FOUND, "Volume " + n + " does not exist");
        if (v.vluns > 0)
            return Result::error(API_E_VV_BUSY, "Volume " + n + " is busy: it is exported");
        if (v.busy)
            return Result::error(API_E_VV_BUSY,
                                 "Volume " + n + " is busy: a task is running on it");
        ids.push_back(v.id);
    }
    Stmt del(db, "DELETE FROM volume WHERE id = ?");
    for (int64_t id : ids) {
        del.bind(1, id).run();
        del.reset();
    }
    return Result::success();
}

Result setVolumeBusy(sqlite3* db, const std::string& name, bool busy)
{
    Stmt st(db, "UPDATE volume SET busy = ? WHERE name = ?");
    st.bind(1, (int64_t)busy).bind(2, name).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_VV_NOT_FOUND, "Volume " + name + " does not exist");
    return Result::success();
}

}  // namespace zarsim
