// The fixture and array-control calls of zarsim_test.h.
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <zarsim_test.h>

#include "Array.h"
#include "Model.h"
#include "Text.h"

using namespace zarsim;

namespace {

Caller fixtureCaller()
{
    Caller c;
    c.user = "fixture";
    return c;
}

std::string str(const char* p)
{
    return p ? std::string(p) : std::string();
}

int change(const char* op, const std::string& args, const std::function<Result(sqlite3*)>& fn)
{
    return changeArray(op, fixtureCaller(), args, fn).code;
}

Result position(const char* text, lpid_t* pos)
{
    if (api_convertStrLPIDtoPortID(text, pos) != 0)
        return Result::error(API_E_PORT_INVALID, "Invalid port position " + str(text));
    return Result::success();
}

}  // namespace

extern "C" {

int zarsim_open(const char* path)
{
    return openArray(path ? path : ":memory:").code;
}

int zarsim_open_temp(char* buffer, size_t size)
{
    const char* dir = getenv("TMPDIR");
    std::string tmpl = std::string(dir && *dir ? dir : "/tmp") + "/zararray-XXXXXX";
    std::string buf = tmpl;
    int fd = mkstemp(&buf[0]);
    if (fd < 0)
        return API_E_NOT_OPEN;
    close(fd);
    unlink(buf.c_str());  // SQLite creates it afresh
    std::string path = buf + ".db";
    if (buffer && size > 0)
        copyField(buffer, size, path);
    return openArray(path).code;
}

void zarsim_close(void)
{
    closeArray();
}

int zarsim_seed_demo(void)
{
    return change("zarsim_seed_demo", "demo", [](sqlite3* db) { return seedDemo(db); });
}

int zarsim_add_node(int node)
{
    return change("zarsim_add_node", "node=" + std::to_string(node),
                  [&](sqlite3* db) { return addNode(db, node); });
}

int zarsim_add_port(const char* pos, int type)
{
    return change("zarsim_add_port", "port=" + str(pos), [&](sqlite3* db) {
        lpid_t p;
        Result r = position(pos, &p);
        return r.ok() ? addPort(db, p, type, PORT_OK, std::string()) : r;
    });
}

int zarsim_add_volume(const char* name, zar_u64 sizeMiB, const char* domain, int access, char* wwn)
{
    std::string out;
    int rc = change("zarsim_add_volume", "volume=" + str(name), [&](sqlite3* db) {
        return createVolume(db, str(name), (int64_t)sizeMiB, str(domain), access, &out);
    });
    if (rc == 0 && wwn)
        copyField(wwn, 33, out);
    return rc;
}

int zarsim_login(const char* initiator, const char* pos)
{
    return change("zarsim_login", "initiator=" + str(initiator) + " port=" + str(pos),
                  [&](sqlite3* db) {
                      Initiator who;
                      lpid_t p;
                      Result r = parseInitiator(str(initiator), &who);
                      if (r.ok())
                          r = position(pos, &p);
                      return r.ok() ? login(db, who, p) : r;
                  });
}

int zarsim_logout(const char* initiator, const char* pos)
{
    return change("zarsim_logout", "initiator=" + str(initiator) + " port=" + str(pos),
                  [&](sqlite3* db) {
                      Initiator who;
                      lpid_t p;
                      Result r = parseInitiator(str(initiator), &who);
                      if (r.ok())
                          r = position(pos, &p);
                      return r.ok() ? logout(db, who, p) : r;
                  });
}

int zarsim_add_hostset(const char* name, const char* domain)
{
    return change("zarsim_add_hostset", "set=" + str(name),
                  [&](sqlite3* db) { return createHostSet(db, str(name), str(domain)); });
}

int zarsim_hostset_add(const char* set, const char* host)
{
    return change("zarsim_hostset_add", "set=" + str(set) + " host=" + str(host),
                  [&](sqlite3* db) { return hostSetAdd(db, str(set), str(host)); });
}

int zarsim_add_user(const char* name, const char* password, const char* role)
{
    return change("zarsim_add_user", "user=" + str(name) + " role=" + str(role), [&](sqlite3* db) {
        return addUser(db, str(name), str(password), roleFromName(str(role)));
    });
}

int zarsim_enable_user(const char* name, int enabled)
{
    return change("zarsim_enable_user", "user=" + str(name),
                  [&](sqlite3* db) { return setUserEnabled(db, str(name), enabled != 0); });
}

int zarsim_set_policy(zar_u32 policy)
{
    return change("zarsim_set_policy", "policy=" + std::to_string(policy),
                  [&](sqlite3* db) { return setConfig(db, "policy", std::to_string(policy)); });
}

int zarsim_set_config(const char* key, const char* value)
{
    std::string k = key ? key : "", v = value ? value : "";
    return change("zarsim_set_config", k + "=" + v,
                  [&](sqlite3* db) { return setConfig(db, k, v); });
}

int zarsim_set_volume_busy(const char* name, int busy)
{
    return change("zarsim_set_volume_busy", "volume=" + str(name),
                  [&](sqlite3* db) { return setVolumeBusy(db, str(name), busy != 0); });
}

}  // extern "C"
