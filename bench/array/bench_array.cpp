// bench_array - creates 10,000 VLUNs (each its own view) on a fresh array in
// a temporary file, then reads all views in chunks of 200 and reports the
// cost of the first and the last chunk and the peak memory.
//
//   bench_array [HOSTS]   (default 2500 hosts x 4 exports = 10,000 VLUNs)
//
// Every change is committed to disk (WAL, synchronous FULL), so creation
// speed is bound by the disk's flush time.
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <zarapi.h>
#include <zarsim_test.h>

namespace {

using Clock = std::chrono::steady_clock;

double ms(Clock::duration d)
{
    return std::chrono::duration<double, std::milli>(d).count();
}

lpid_t pos(const char* t)
{
    lpid_t p = API_PORT_NONE;
    api_convertStrLPIDtoPortID(t, &p);
    return p;
}

void check(int rc, const char* what)
{
    if (rc != 0) {
        fprintf(stderr, "bench_array: %s failed with %d\n", what, rc);
        exit(1);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    int hosts = 2500;
    if (argc > 1) {
        if (!strcmp(argv[1], "-h") || !strcmp(argv[1], "--help")) {
            printf(
                "usage: bench_array [HOSTS]\n"
                "  Creates HOSTS x 4 VLUNs (default 2500 hosts: 10,000 VLUNs, each its own\n"
                "  view) on a fresh array in a temporary file, reads all views in chunks of\n"
                "  200, and prints the cost of the first and the last chunk and the peak\n"
                "  memory.\n");
            return 0;
        }
        char* end = nullptr;
        long n = strtol(argv[1], &end, 10);
        if (*argv[1] == '\0' || *end != '\0' || n < 1 || n > 1000000) {
            fprintf(stderr, "bench_array: HOSTS must be a number from 1 to 1000000, not '%s'\n",
                    argv[1]);
            return 2;
        }
        hosts = static_cast<int>(n);
    }
    char path[512];
    check(zarsim_open_temp(path, sizeof path), "open");
    zarsim_capture_log(1);
    const char* ports[] = {"0:1:1", "1:1:1", "0:1:2", "1:1:2"};
    for (const char* p : ports)
        check(zarsim_add_port(p, PORT_TYPE_FC), "port");
    char wwn[33];
    check(zarsim_add_volume("bench", 1024, "-", VOL_MODE_READWRITE, wwn), "volume");
    zar_u64 hi, lo;
    check(api_wwnStringToInt(nullptr, wwn, &hi, &lo), "wwn");
    for (int i = 0; i < hosts; ++i) {
        char name[32];
        snprintf(name, sizeof name, "b%05d", i);
        api_status_t st;
        check(
            api_createHost(&st, nullptr, name, nullptr, 0x5000000000000000ULL + (zar_u64)i, 2, "-"),
            "host");
    }

    // 10,000 VLUNs: per host one matched-set export through each of four
    // ports, each under an automatic LUN; every VLUN is a view of its own, all
    // of one kind, so that chunks differ only by their place in the list.
    Clock::time_point t0 = Clock::now();
    int vluns = 0;
    for (int i = 0; i < hosts; ++i) {
        char name[32];
        snprintf(name, sizeof name, "b%05d", i);
        for (int k = 0; k < 4; ++k) {
            zar_u32 lun = API_LUN_AUTO;
            char err[API_ERRTEXT_LEN];
            check(cim_sem_wait(), "semaphore");
            int rc = api_createVLUN(nullptr, hi, lo, &lun, name, API_WWN_NONE, nullptr,
                                    pos(ports[k]), 1, 0, err, sizeof err);
            cim_sem_post();
            check(rc, "createVLUN");
            ++vluns;
        }
    }
    double createMs = ms(Clock::now() - t0);

    // Walk all views in chunks of 200, several times; keep the best time of
    // each chunk position.
    const int walks = 5;
    std::vector<double> best;
    size_t views = 0;
    for (int w = 0; w < walks; ++w) {
        api_spc_param_data cur;
        api_initSPCParamData(&cur);
        zar_u32 more = 1;
        size_t chunk = 0;
        views = 0;
        while (more) {
            api_vlunsInfo_t q;
            memset(&q, 0, sizeof q);
            Clock::time_point c0 = Clock::now();
            check(cim_sem_wait(), "semaphore");
            int rc = api_getSCSIProtocolControllers_chunk(&q, &cur, &more, 200);
            cim_sem_post();
            double d = ms(Clock::now() - c0);
            check(rc, "chunk");
            views += q.count;
            api_freeVLUNs(&q);
            if (best.size() <= chunk)
                best.push_back(d);
            else
                best[chunk] = std::min(best[chunk], d);
            ++chunk;
        }
        api_freeSPCParamData(&cur);
    }
    struct rusage ru;
    getrusage(RUSAGE_SELF, &ru);
    double first = best.front(), last = best.back();
    std::vector<double> sorted = best;
    std::sort(sorted.begin(), sorted.end());
    printf("vluns created:          %d in %.0f ms (%.3f ms each)\n", vluns, createMs,
           createMs / vluns);
    printf("views read:             %zu in %zu chunks of 200\n", views, best.size());
    printf("first chunk:            %.3f ms\n", first);
    printf("last chunk:             %.3f ms\n", last);
    printf("median chunk:           %.3f ms\n", sorted[sorted.size() / 2]);
    printf("last / first:           %.2f\n", first > 0 ? last / first : 0.0);
    printf("peak memory (max RSS):  %ld KiB\n", ru.ru_maxrss);
    zarsim_close();
    unlink(path);
    std::string side = std::string(path) + "-wal";
    unlink(side.c_str());
    side = std::string(path) + "-shm";
    unlink(side.c_str());
    return 0;
}
