// The deterministic demo array of "zarcli seed".
#include <cstdio>

#include "Db.h"
#include "Model.h"
#include "Text.h"

namespace zarsim {

namespace {

// Stops at the first refusal: the caller's transaction then rolls back.
#define SEED(expr)          \
    do {                    \
        Result r_ = (expr); \
        if (!r_.ok())       \
            return r_;      \
    } while (0)

lpid_t P(const char* text)
{
    lpid_t p = API_PORT_NONE;
    api_convertStrLPIDtoPortID(text, &p);
    return p;
}

Initiator I(const char* text)
{
    Initiator i;
    parseInitiator(text, &i);
    return i;
}

Result exportTo(sqlite3* db, const char* volume, uint32_t lun, const char* host, const char* port)
{
    VolumeRow v;
    if (!findVolume(db, volume, &v))
        return Result::error(API_E_VV_NOT_FOUND, std::string("seed: no volume ") + volume);
    Target t;
    SEED(resolveTarget(db, host ? host : "", API_WWN_NONE, "", port ? P(port) : API_PORT_NONE, &t));
    return createVlun(db, v.wwn, &lun, t, false);
}

}  // namespace

Result seedDemo(sqlite3* db)
{
    {
        Stmt st(db,
                "SELECT (SELECT count(*) FROM host) + (SELECT count(*) FROM volume) + (SELECT "
                "count(*) FROM port)");
        st.step();
        if (st.i64(0) > 0)
            return Result::error(
                API_E_EXISTS,
                "The array already holds hosts, volumes or ports; seed needs an empty array");
    }
    SEED(setConfig(db, "name", "ZAR-DEMO"));
    SEED(setConfig(db, "host-name", "zar-demo"));
    SEED(setConfig(db, "contact", "Storage team, extension 4242"));
    SEED(setConfig(db, "owner", "Demo Lab"));
    SEED(setConfig(db, "ipv4", "192.0.2.10"));
    SEED(setConfig(db, "ipv6", "2001:db8::10"));
    for (int n = 2; n <= 3; ++n)
        SEED(addNode(db, n));

    const char* fc[] = {"0:1:1", "0:1:2", "1:1:1", "1:1:2", "2:1:1", "3:1:1"};
    const char* iscsi[] = {"0:2:1", "1:2:1", "2:2:1", "3:2:1"};
    for (const char* p : fc)
        SEED(addPort(db, P(p), PORT_TYPE_FC, PORT_OK, ""));
    for (const char* p : iscsi)
        SEED(addPort(db, P(p), PORT_TYPE_ISCSI, PORT_OK, ""));
    SEED(setPortStatus(db, P("3:1:1"), PORT_LOSS_SYNC));

    char name[32];
    for (int i = 1; i <= 10; ++i) {
        snprintf(name, sizeof name, "finance-%02d", i);
        SEED(createVolume(db, name, 1024 * i, "finance",
                          i == 9 ? VOL_MODE_READ : VOL_MODE_READWRITE, nullptr));
    }
    for (int i = 1; i <= 10; ++i) {
        snprintf(name, sizeof name, "eng-%02d", i);
        SEED(createVolume(db, name, 2048, "eng", VOL_MODE_READWRITE, nullptr));
    }

    SEED(createHost(db, "esx01", {I("10000000C9A00101"), I("10000000C9A00102")}, 2, "finance"));
    SEED(createHost(db, "esx02", {I("10000000C9A00201"), I("10000000C9A00202")}, 2, "finance"));
    SEED(createHost(db, "db01", {I("21000024FF300001")}, 2, "finance"));
    SEED(createHost(db, "build01", {I("iqn.1994-05.com.example:build01")}, 2, "eng"));
    SEED(createHost(db, "web01", {I("iqn.1994-05.com.example:web01")}, 2, "eng"));
    SEED(createHost(db, "backup01", {I("21000024FF300101"), I("iqn.1994-05.com.example:backup01")},
                    11, "-"));
    SEED(createHost(db, "dr01", {I("21000024FF300201")}, 2, "-"));

    struct Login {
        const char* who;
        const char* port;
    } logins[] = {
        {"10000000C9A00101", "0:1:1"},
        {"10000000C9A00102", "1:1:1"},
        {"10000000C9A00201", "0:1:2"},
        {"10000000C9A00202", "1:1:2"},
        {"21000024FF300001", "2:1:1"},
        {"iqn.1994-05.com.example:build01", "0:2:1"},
        {"iqn.1994-05.com.example:web01", "1:2:1"},
        {"21000024FF300101", "3:1:1"},
        {"iqn.1994-05.com.example:backup01", "2:2:1"},
        // Logged in, but in no host yet.
        {"10000000C9A0FF01", "0:1:1"},
        {"iqn.1994-05.com.example:spare01", "0:2:1"},
    };
    for (const Login& l : logins)
        SEED(login(db, I(l.who), P(l.port)));

    SEED(createHostSet(db, "esx-cluster", "finance"));
    SEED(hostSetAdd(db, "esx-cluster", "esx01"));
    SEED(hostSetAdd(db, "esx-cluster", "esx02"));

    SEED(exportTo(db, "finance-01", 1, "db01", "2:1:1"));              // matched set
    SEED(exportTo(db, "finance-02", 2, "db01", nullptr));              // host sees
    SEED(exportTo(db, "finance-03", 10, "set:esx-cluster", nullptr));  // host set
    SEED(exportTo(db, "finance-04", 11, "set:esx-cluster", nullptr));
    SEED(exportTo(db, "finance-05", 12, "set:esx-cluster", nullptr));
    SEED(exportTo(db, "eng-01", 20, nullptr, "0:2:1"));      // port present (iSCSI)
    SEED(exportTo(db, "finance-06", 30, nullptr, "0:1:1"));  // port present (FC)
    SEED(exportTo(db, "eng-02", 1, "build01", nullptr));
    SEED(exportTo(db, "eng-03", 1, "web01", nullptr));
    SEED(exportTo(db, "eng-04", 5, "backup01", "3:1:1"));
    SEED(exportTo(db, "finance-07", 0, "dr01", nullptr));  // dormant: dr01 is logged in nowhere
    SEED(exportTo(db, "eng-05", 40, nullptr, "3:2:1"));    // dormant: nobody on 3:2:1
    return Result::success();
}

}  // namespace zarsim
