// bench_requests: what a management client waits for, request by request,
// over one keep-alive connection with Basic authentication:
//   names    50 x EnumerateInstanceNames of ZAR_StorageSystem
//   refused  50 x ExposePaths refused early ("Use case not supported")
//   views    EnumerateInstances of ZAR_SCSIController (every view)
//   vnames   EnumerateInstanceNames of ZAR_SCSIController
// Each row runs on a connection of its own, opened for it (so each pays one
// login); rows alternate over the rounds and the median is printed, with
// requests or objects per second. The answers are read to their end, not
// decoded.
//
// Usage: bench_requests [--hosts N] [--rounds R]
//        bench_requests --url http://HOST:PORT --user U --password P [--rounds R]
#include "ServerProcess.h"
#include "ViewSeed.h"
#include "WireClient.h"

#include <zarsim_test.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

using zare2e::WireClient;

namespace {

struct Target {
    std::string host = "127.0.0.1";
    int port = 0;
    std::string user = "bench", password = "benchpass1";
};

[[noreturn]] void die(const std::string& what)
{
    std::fprintf(stderr, "bench_requests: %s\n", what.c_str());
    std::exit(1);
}

size_t count(const std::string& s, const std::string& what)
{
    size_t n = 0;
    for (size_t p = s.find(what); p != std::string::npos; p = s.find(what, p + 1))
        n++;
    return n;
}

// The keys of the first instance name in an answer.
std::vector<std::pair<std::string, std::string>> firstKeys(const std::string& body)
{
    std::vector<std::pair<std::string, std::string>> keys;
    size_t end = body.find("</INSTANCENAME>");
    for (size_t p = body.find("<KEYBINDING NAME=\""); p < end;
         p = body.find("<KEYBINDING NAME=\"", p + 1)) {
        size_t n = p + 18;
        std::string name = body.substr(n, body.find('"', n) - n);
        size_t v = body.find('>', body.find("<KEYVALUE", n)) + 1;
        keys.emplace_back(name, body.substr(v, body.find("</KEYVALUE>", v) - v));
    }
    return keys;
}

struct Row {
    const char* name;
    const char* what;
    std::vector<double> ms;
    size_t objects = 0;  // per run
};

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

void run(const Target& t, int rounds)
{
    std::string body;
    // The service that ExposePaths is called on.
    {
        WireClient c(t.host, t.port, t.user, t.password);
        WireClient::Answer a =
            c.call("EnumerateInstanceNames", "root/zar",
                   WireClient::intrinsic(
                       "EnumerateInstanceNames",
                       WireClient::className("ClassName", "ZAR_ControllerConfigurationService")),
                   body);
        if (a.status != 200 || body.find("<INSTANCENAME") == std::string::npos)
            die("no ZAR_ControllerConfigurationService on the server (status " +
                std::to_string(a.status) + ")");
    }
    const auto service = firstKeys(body);
    std::string serviceObject = "root/zar:ZAR_ControllerConfigurationService";
    for (size_t i = 0; i < service.size(); i++)
        serviceObject += (i ? "," : ".") + service[i].first + "=\"" + service[i].second + "\"";

    const std::string names = WireClient::intrinsic(
        "EnumerateInstanceNames", WireClient::className("ClassName", "ZAR_StorageSystem"));
    const std::string refused = WireClient::methodCall(
        "ExposePaths", "ZAR_ControllerConfigurationService", service,
        "<PARAMVALUE NAME=\"LUNames\" PARAMTYPE=\"string\"><VALUE.ARRAY><VALUE>none</VALUE>"
        "</VALUE.ARRAY></PARAMVALUE>");
    const std::string views = WireClient::intrinsic(
        "EnumerateInstances", WireClient::className("ClassName", "ZAR_SCSIController"));
    const std::string viewNames = WireClient::intrinsic(
        "EnumerateInstanceNames", WireClient::className("ClassName", "ZAR_SCSIController"));

    std::vector<Row> rows = {{"names", "50 x EnumerateInstanceNames ZAR_StorageSystem", {}},
                             {"refused", "50 x ExposePaths refused early", {}},
                             {"views", "EnumerateInstances ZAR_SCSIController", {}},
                             {"vnames", "EnumerateInstanceNames ZAR_SCSIController", {}}};
    for (int r = 0; r < rounds; r++) {
        for (Row& row : rows) {
            WireClient c(t.host, t.port, t.user, t.password);
            auto t0 = std::chrono::steady_clock::now();
            std::string what = row.name;
            if (what == "names" || what == "refused") {
                for (int i = 0; i < 50; i++) {
                    WireClient::Answer a =
                        what == "names" ? c.call("EnumerateInstanceNames", "root/zar", names, body)
                                        : c.call("ExposePaths", serviceObject, refused, body);
                    if (a.status != 200 || !a.complete)
                        die(what + ": HTTP " + std::to_string(a.status));
                    if (what == "refused" &&
                        body.find("Use case not supported") == std::string::npos)
                        die("ExposePaths was not refused early:\n" + body.substr(0, 800));
                }
                row.objects = 50;
            } else {
                size_t n = 0;
                const std::string tag =
                    what == "views" ? "<VALUE.NAMEDINSTANCE>" : "<INSTANCENAME ";
                std::string carry;
                WireClient::Answer a = c.call(
                    "EnumerateInstance" + std::string(what == "views" ? "s" : "Names"), "root/zar",
                    what == "views" ? views : viewNames,
                    [&](const char* p, size_t len) {
                        std::string s = carry + std::string(p, len);
                        n += count(s, tag);
                        carry = s.substr(s.size() - std::min(s.size(), tag.size() - 1));
                    },
                    WireClient::Options());
                if (a.status != 200 || !a.complete)
                    die(what + ": HTTP " + std::to_string(a.status));
                row.objects = n;
            }
            row.ms.push_back(
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0)
                    .count());
        }
    }
    for (const Row& row : rows) {
        double ms = median(row.ms);
        std::printf("%-8s %-48s %7.1f ms  (%zu %s, %.0f/s; median of %d)\n", row.name, row.what, ms,
                    row.objects, row.objects == 50 ? "requests" : "objects",
                    row.objects / (ms / 1000.0), rounds);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    int hosts = 2500, rounds = 7;
    std::string url;
    Target t;
    for (int i = 1; i < argc; i++) {
        std::string a = argv[i];
        auto next = [&]() -> std::string {
            if (i + 1 >= argc)
                die(a + " needs a value (see --help)");
            return argv[++i];
        };
        if (a == "--hosts")
            hosts = std::atoi(next().c_str());
        else if (a == "--rounds")
            rounds = std::atoi(next().c_str());
        else if (a == "--url")
            url = next();
        else if (a == "--user")
            t.user = next();
        else if (a == "--password")
            t.password = next();
        else {
            std::printf(
                "Usage: bench_requests [--hosts N] [--rounds R]\n"
                "       bench_requests --url http://HOST:PORT --user U --password P [--rounds R]\n"
                "Times small requests over one keep-alive connection (50 names of\n"
                "ZAR_StorageSystem, 50 ExposePaths refused early) and the enumeration of\n"
                "every view as instances and as names: on an array of its own (the demo\n"
                "array plus N hosts of four views, default 2500: 10,007 views) served by\n"
                "zar-cimserver, or on a running server. Prints medians of R rounds\n"
                "(default 7).\n");
            return a == "--help" ? 0 : 2;
        }
    }
    if (hosts < 0 || rounds < 1)
        die("--hosts must not be negative, --rounds must be positive");
    try {
        if (!url.empty()) {
            std::string err;
            if (!WireClient::parseUrl(url, t.host, t.port, err))
                die(err);
            run(t, rounds);
            return 0;
        }
        std::string dir = zare2e::makeTempDir();
        std::string db = dir + "/array.db";
        if (zarsim_open(db.c_str()) != 0 || zarsim_seed_demo() != 0 ||
            zarsim_add_user(t.user.c_str(), t.password.c_str(), "edit") != 0)
            die("cannot create the array in " + dir);
        zarsim_set_log_level(1);
        int added = zare2e::addViews(hosts);
        zarsim_close();
        zare2e::ServerProcess server;
        std::string err;
        if (!server.start(
                zare2e::binaryDir() + "/bin/zar-cimserver",
                {"--array-db", db, "--socket", "off", "--schema-dir",
                 zare2e::sourceDir() + "/schema", "--provider-dir", zare2e::binaryDir() + "/lib",
                 "--log-file", dir + "/server.log", "--log-level", "2"},
                {}, err))
            die(err);
        std::printf("zar-cimserver, demo array plus %d views\n", added);
        t.port = server.httpPort();
        run(t, rounds);
        if (server.stop() != 0)
            die("server exited with an error:\n" + server.output());
    } catch (std::exception& e) {
        die(e.what());
    }
    return 0;
}
