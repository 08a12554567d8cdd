// bench_views: the demo array plus HOSTS x 4 matched-set exports (each a view
// of its own), served by zar-cimserver with the provider modules; enumerates
// the views' names and instances over HTTP with our CIMClient and prints the
// views per second and the server's peak resident memory.
//
// Usage: bench_views [--hosts N] [--rounds R]   (defaults 2500 and 3)
#include "ServerProcess.h"
#include "ViewSeed.h"
#include "WireClient.h"

#include <Pegasus/Client/CIMClient.h>
#include <zarapi.h>
#include <zarsim_test.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

PEGASUS_USING_PEGASUS;

namespace {

void check(int rc, const char* what)
{
    if (rc != 0) {
        std::fprintf(stderr, "bench_views: %s failed with %d\n", what, rc);
        std::exit(1);
    }
}

double seconds(std::chrono::steady_clock::time_point t0)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

}  // namespace

int main(int argc, char** argv)
{
    int hosts = 2500, rounds = 3;
    std::string url, user = "bench", password = "benchpass1";
    for (int i = 1; i < argc; i++) {
        if (!std::strcmp(argv[i], "--hosts") && i + 1 < argc)
            hosts = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--rounds") && i + 1 < argc)
            rounds = std::atoi(argv[++i]);
        else if (!std::strcmp(argv[i], "--url") && i + 1 < argc)
            url = argv[++i];
        else if (!std::strcmp(argv[i], "--user") && i + 1 < argc)
            user = argv[++i];
        else if (!std::strcmp(argv[i], "--password") && i + 1 < argc)
            password = argv[++i];
        else {
            std::printf(
                "Usage: bench_views [--hosts N] [--rounds R]\n"
                "       bench_views --url http://HOST:PORT --user U --password P [--rounds R]\n"
                "Adds N x 4 views to the demo array, then enumerates the views' names and\n"
                "instances R times through zar-cimserver over HTTP; prints views per\n"
                "second and the server's peak resident memory. With --url, enumerates\n"
                "the views of a running server instead.\n");
            return std::strcmp(argv[i], "--help") == 0 ? 0 : 2;
        }
    }
    if (hosts < 1 || rounds < 1) {
        std::fprintf(stderr, "bench_views: --hosts and --rounds must be positive\n");
        return 2;
    }

    std::string host = "127.0.0.1";
    int port = 0, added = 0;
    zare2e::ServerProcess server;
    if (!url.empty()) {
        std::string err;
        if (!zare2e::WireClient::parseUrl(url, host, port, err)) {
            std::fprintf(stderr, "bench_views: %s\n", err.c_str());
            return 2;
        }
    } else {
        std::string dir = zare2e::makeTempDir();
        std::string db = dir + "/array.db";
        check(zarsim_open(db.c_str()), "open array");
        zarsim_set_log_level(1);
        check(zarsim_seed_demo(), "seed");
        check(zarsim_add_user(user.c_str(), password.c_str(), "browse"), "add user");
        auto t0 = std::chrono::steady_clock::now();
        added = zare2e::addViews(hosts);
        std::printf("array: %d views added in %.1f s\n", added, seconds(t0));
        zarsim_close();
        std::string err;
        if (!server.start(
                zare2e::binaryDir() + "/bin/zar-cimserver",
                {"--array-db", db, "--socket", "off", "--schema-dir",
                 zare2e::sourceDir() + "/schema", "--provider-dir", zare2e::binaryDir() + "/lib",
                 "--log-file", dir + "/server.log", "--log-level", "2"},
                {}, err)) {
            std::fprintf(stderr, "bench_views: %s\n", err.c_str());
            return 1;
        }
        port = server.httpPort();
    }
    long rssStart = url.empty() ? server.peakRssKb() : -1;
    int status = 0;
    auto t0 = std::chrono::steady_clock::now();
    try {
        CIMClient client;
        client.setTimeout(600000);
        client.connect(host.c_str(), Uint32(port), user.c_str(), password.c_str());
        double bestNames = 0, bestInstances = 0;
        Uint32 seen = 0;
        for (int r = 0; r < rounds; r++) {
            t0 = std::chrono::steady_clock::now();
            seen = client.enumerateInstanceNames("root/zar", "ZAR_SCSIController").size();
            double s = seconds(t0);
            bestNames = std::max(bestNames, seen / s);
            t0 = std::chrono::steady_clock::now();
            Uint32 n = client.enumerateInstances("root/zar", "ZAR_SCSIController").size();
            double si = seconds(t0);
            bestInstances = std::max(bestInstances, n / si);
            std::printf("round %d: %u names in %.3f s, %u instances in %.3f s\n", r + 1, seen, s, n,
                        si);
            if (n != seen || seen < Uint32(added)) {
                std::fprintf(stderr, "bench_views: expected at least %d views\n", added);
                status = 1;
                break;
            }
        }
        std::printf("ZAR_SCSIController over HTTP (%u views): best %.0f names/s, %.0f instances/s",
                    seen, bestNames, bestInstances);
        if (url.empty())
            std::printf("; server peak RSS %ld KiB (%ld KiB after start)", server.peakRssKb(),
                        rssStart);
        std::printf("\n");
    } catch (Exception& e) {
        CString m = e.getMessage().getCString();
        std::fprintf(stderr, "bench_views: %s\n", (const char*)m);
        status = 1;
    }
    int rc = url.empty() ? server.stop() : 0;
    if (rc != 0) {
        std::fprintf(stderr, "bench_views: server exited with %d\n%s", rc, server.output().c_str());
        status = 1;
    }
    return status;
}
