// bench_server: starts zar-cimserver with the benchmark provider module,
// enumerates its instances over HTTP with our CIMClient, and prints
// instances per second and the server's peak resident memory.
//
// Usage: bench_server [--count N] [--rounds R]   (defaults 10000 and 3)
//        bench_server --url http://HOST:PORT --user U --password P [--rounds R]
//   (a running server that hosts the benchmark provider; N is its setting)
#include "ServerProcess.h"
#include "WireClient.h"

#include <Pegasus/Client/CIMClient.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

PEGASUS_USING_PEGASUS;

int main(int argc, char** argv)
{
    int count = 10000, rounds = 3;
    std::string url, user = "bench", password = "benchpass1";
    for (int i = 1; i < argc; i++) {
        if (!std::strcmp(argv[i], "--count") && i + 1 < argc)
            count = std::atoi(argv[++i]);
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
                "Usage: bench_server [--count N] [--rounds R]\n"
                "       bench_server --url http://HOST:PORT --user U --password P [--rounds R]\n"
                "Enumerates N instances R times over HTTP; prints instances per second\n"
                "and the server's peak resident memory. With --url, a running server that\n"
                "hosts the benchmark provider (ZBENCH_COUNT sets its N) is measured.\n");
            return std::strcmp(argv[i], "--help") == 0 ? 0 : 2;
        }
    }
    if (count < 1 || rounds < 1) {
        std::fprintf(stderr, "bench_server: --count and --rounds must be positive\n");
        return 2;
    }
    std::string host = "127.0.0.1";
    int port = 0;
    zare2e::ServerProcess server;
    std::string err;
    if (!url.empty()) {
        if (!zare2e::WireClient::parseUrl(url, host, port, err)) {
            std::fprintf(stderr, "bench_server: %s\n", err.c_str());
            return 2;
        }
    } else {
        std::string dir = zare2e::makeTempDir();
        if (!zare2e::makeArrayDb(dir + "/array.db", {{user, password, "browse"}}, err)) {
            std::fprintf(stderr, "bench_server: %s\n", err.c_str());
            return 1;
        }
        std::string src = zare2e::sourceDir();
        if (!server.start(
                zare2e::binaryDir() + "/bin/zar-cimserver",
                {"--array-db", dir + "/array.db", "--socket", "off", "--schema-dir",
                 src + "/bench/server/schema", "--provider-dir", zare2e::binaryDir() + "/lib",
                 "--log-file", dir + "/server.log", "--log-level", "2"},
                {{"ZBENCH_COUNT", std::to_string(count)}}, err)) {
            std::fprintf(stderr, "bench_server: %s\n", err.c_str());
            return 1;
        }
        port = server.httpPort();
    }
    long rssStart = url.empty() ? server.peakRssKb() : -1;
    int status = 0;
    try {
        CIMClient client;
        client.setTimeout(600000);
        client.connect(host.c_str(), Uint32(port), user.c_str(), password.c_str());
        double best = 0;
        for (int r = 0; r < rounds; r++) {
            auto t0 = std::chrono::steady_clock::now();
            Array<CIMInstance> items = client.enumerateInstances("root/bench", "ZBench_Item");
            double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
            if (!url.empty())
                count = int(items.size());
            if (int(items.size()) != count || count == 0) {
                std::fprintf(stderr, "bench_server: got %u instances, expected %d\n", items.size(),
                             count);
                status = 1;
                break;
            }
            double rate = count / s;
            if (rate > best)
                best = rate;
            std::printf("round %d: %d instances in %.3f s: %.0f instances/s\n", r + 1, count, s,
                        rate);
        }
        std::printf("EnumerateInstances over HTTP: best %.0f instances/s", best);
        if (url.empty())
            std::printf("; server peak RSS %ld KiB (%ld KiB after start)", server.peakRssKb(),
                        rssStart);
        std::printf("\n");
    } catch (Exception& e) {
        CString m = e.getMessage().getCString();
        std::fprintf(stderr, "bench_server: %s\n", (const char*)m);
        status = 1;
    }
    int rc = url.empty() ? server.stop() : 0;
    if (rc != 0) {
        std::fprintf(stderr, "bench_server: server exited with %d\n%s", rc,
                     server.output().c_str());
        status = 1;
    }
    return status;
}
