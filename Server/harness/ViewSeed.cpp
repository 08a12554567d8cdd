#include "ViewSeed.h"

#include <zarapi.h>
#include <zarsim_test.h>

#include <cstdio>
#include <cstdlib>

namespace zare2e {

namespace {

void check(int rc, const char* what)
{
    if (rc != 0) {
        std::fprintf(stderr, "seeding views: %s failed with %d\n", what, rc);
        std::exit(1);
    }
}

}  // namespace

int addViews(int hosts)
{
    const char* ports[] = {"2:1:1", "3:1:1", "2:1:2", "3:1:2"};
    lpid_t lpid[4];
    for (int k = 0; k < 4; ++k) {
        zarsim_add_port(ports[k], PORT_TYPE_FC);  // already there in the demo array: fine
        check(api_convertStrLPIDtoPortID(ports[k], &lpid[k]), "port position");
    }
    char wwn[33];
    check(zarsim_add_volume("benchvol", 1024, "-", VOL_MODE_READWRITE, wwn), "volume");
    zar_u64 hi = 0, lo = 0;
    check(api_wwnStringToInt(nullptr, wwn, &hi, &lo), "wwn");
    int views = 0;
    for (int i = 0; i < hosts; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "v%05d", i);
        api_status_t st;
        check(
            api_createHost(&st, nullptr, name, nullptr, 0x5100000000000000ULL + zar_u64(i), 2, "-"),
            "createHost");
        for (int k = 0; k < 4; ++k) {
            zar_u32 lun = API_LUN_AUTO;
            char err[API_ERRTEXT_LEN];
            check(cim_sem_wait(), "semaphore");
            int rc = api_createVLUN(nullptr, hi, lo, &lun, name, API_WWN_NONE, nullptr, lpid[k], 1,
                                    0, err, sizeof err);
            cim_sem_post();
            check(rc, "createVLUN");
            ++views;
        }
        if (hosts >= 5000 && (i + 1) % 5000 == 0)
            std::fprintf(stderr, "seeding views: %d of %d hosts\n", i + 1, hosts);
    }
    return views;
}

}  // namespace zare2e
