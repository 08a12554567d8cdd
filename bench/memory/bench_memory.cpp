// bench_memory: the server's peak resident memory while it answers one
// large enumeration of ZAR_SCSIController, for every kind of client:
//   chunked  HTTP/1.1 with TE: trailers (chunked from the first byte)
//   plain    HTTP/1.1 without TE (most scripts, curl, wbemcli without -cte)
//   http10   HTTP/1.0 (no chunked coding at all)
//   pull     OpenEnumerateInstances, then PullInstancesWithPath until the end
// at a small and a large number of views (default 1,000 and 100,000: the
// demo array plus N/4 hosts of four views each). Before each request the
// process's peak (VmHWM) is reset, so each figure is that request's own.
//
// Usage: bench_memory [--small N] [--large N] [--pull-size K]
//        bench_memory --url http://HOST:PORT --user U --password P --pid PID
//   (the second form measures a server already running, e.g. OpenPegasus
//    with our modules: PID is the process whose memory is read)
#include "ServerProcess.h"
#include "ViewSeed.h"
#include "WireClient.h"

#include <zarapi.h>
#include <zarsim_test.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

using zare2e::WireClient;

namespace {

struct Target {
    std::string host = "127.0.0.1";
    int port = 0;
    std::string user = "bench", password = "benchpass1";
    long pid = 0;
};

[[noreturn]] void die(const std::string& what)
{
    std::fprintf(stderr, "bench_memory: %s\n", what.c_str());
    std::exit(1);
}

long statusKb(long pid, const char* field)
{
    std::ifstream f("/proc/" + std::to_string(pid) + "/status");
    std::string line;
    size_t n = std::strlen(field);
    while (std::getline(f, line))
        if (line.compare(0, n, field) == 0)
            return std::atol(line.c_str() + n);
    return -1;
}

// Starts a new peak: VmHWM falls back to the current resident size.
void resetPeak(long pid)
{
    std::ofstream f("/proc/" + std::to_string(pid) + "/clear_refs");
    f << "5";
    if (!f)
        die("cannot reset the peak of process " + std::to_string(pid) +
            " (/proc/PID/clear_refs needs the same user)");
}

// What came back: the body is not kept, only counted and its tail.
struct Answer {
    int status = 0;
    size_t bytes = 0;
    size_t objects = 0;
    std::string tail;  // the last bytes of the body (output parameters, errors)
};

// Counts occurrences of a tag in a body that arrives in pieces, and keeps
// the body's last 8 KiB.
class Counter {
public:
    Counter(const std::string& tag, Answer& a) : _tag(tag), _a(a) {}
    void feed(const char* p, size_t n)
    {
        _a.bytes += n;
        // A tag cut by a piece boundary is found with the bytes kept from
        // before, which are too few to hold a whole one.
        std::string s = _carry;
        s.append(p, n);
        for (size_t at = s.find(_tag); at != std::string::npos; at = s.find(_tag, at + 1))
            _a.objects++;
        size_t keep = std::min(s.size(), _tag.size() - 1);
        _carry = s.substr(s.size() - keep);
        _a.tail.append(p, n);
        if (_a.tail.size() > 8192)
            _a.tail.erase(0, _a.tail.size() - 8192);
    }

private:
    std::string _tag;
    Answer& _a;
    std::string _carry;
};

// One request on a connection of its own, read to the end.
Answer call(const Target& t, const char* version, bool trailers, const std::string& method,
            const std::string& params, const std::string& tag)
{
    Answer a;
    Counter counter(tag, a);
    zare2e::WireOptions o;
    o.version = version;
    o.trailers = trailers;
    o.keepAlive = false;
    zare2e::WireClient c(t.host, t.port, t.user, t.password);
    WireClient::Answer w = c.call(
        method, "root/zar", WireClient::intrinsic(method, params),
        [&](const char* p, size_t n) { counter.feed(p, n); }, o);
    a.status = w.status;
    if (!w.complete)
        die(method + ": the answer was cut short");
    return a;
}

std::string outParam(const Answer& a, const std::string& name)
{
    std::string open = "<PARAMVALUE NAME=\"" + name + "\"><VALUE>";
    size_t p = a.tail.rfind(open);
    if (p == std::string::npos)
        return "";
    p += open.size();
    return a.tail.substr(p, a.tail.find("</VALUE>", p) - p);
}

struct Result {
    size_t objects = 0, bytes = 0;
    double seconds = 0;
    long baseKb = 0, peakKb = 0;
};

Result measure(const Target& t, const std::string& kind, unsigned pullSize)
{
    const std::string cls =
        "<IPARAMVALUE NAME=\"ClassName\"><CLASSNAME NAME=\"ZAR_SCSIController\"/></IPARAMVALUE>";
    Result r;
    resetPeak(t.pid);
    r.baseKb = statusKb(t.pid, "VmRSS:");
    auto t0 = std::chrono::steady_clock::now();
    if (kind == "pull") {
        auto value = [](const char* n, const std::string& v) {
            return std::string("<IPARAMVALUE NAME=\"") + n + "\"><VALUE>" + v +
                   "</VALUE></IPARAMVALUE>";
        };
        Answer a = call(t, "HTTP/1.1", true, "OpenEnumerateInstances",
                        cls + value("MaxObjectCount", std::to_string(pullSize)),
                        "<VALUE.INSTANCEWITHPATH>");
        for (;;) {
            if (a.status != 200 || a.tail.find("<ERROR") != std::string::npos)
                die("pull failed: " + a.tail.substr(a.tail.size() > 400 ? a.tail.size() - 400 : 0));
            r.objects += a.objects;
            r.bytes += a.bytes;
            if (outParam(a, "EndOfSequence") == "TRUE")
                break;
            a = call(t, "HTTP/1.1", true, "PullInstancesWithPath",
                     value("EnumerationContext", outParam(a, "EnumerationContext")) +
                         value("MaxObjectCount", std::to_string(pullSize)),
                     "<VALUE.INSTANCEWITHPATH>");
        }
    } else {
        Answer a = call(t, kind == "http10" ? "HTTP/1.0" : "HTTP/1.1", kind == "chunked",
                        "EnumerateInstances", cls, "<VALUE.NAMEDINSTANCE>");
        if (a.status != 200 || a.tail.find("</CIM>") == std::string::npos)
            die(kind + ": the answer is not complete");
        r.objects = a.objects;
        r.bytes = a.bytes;
    }
    r.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    r.peakKb = statusKb(t.pid, "VmHWM:");
    return r;
}

void report(const Target& t, const char* label, unsigned pullSize)
{
    for (const char* kind : {"chunked", "plain", "http10", "pull"}) {
        Result r = measure(t, kind, pullSize);
        std::printf(
            "%-8s %-8s %8zu objects %9.1f MB in %6.2f s  peak RSS %7.1f MB (%.1f MB before)\n",
            label, kind, r.objects, r.bytes / 1e6, r.seconds, r.peakKb / 1024.0, r.baseKb / 1024.0);
        std::fflush(stdout);
    }
}

void runOwnServer(int views, unsigned pullSize)
{
    std::string dir = zare2e::makeTempDir();
    std::string db = dir + "/array.db";
    if (zarsim_open(db.c_str()) != 0 || zarsim_seed_demo() != 0 ||
        zarsim_add_user("bench", "benchpass1", "browse") != 0)
        die("cannot create the array in " + dir);
    zarsim_set_log_level(1);
    auto t0 = std::chrono::steady_clock::now();
    int added = zare2e::addViews(views / 4);
    zarsim_close();
    std::fprintf(stderr, "array: %d views added in %.0f s\n", added,
                 std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count());

    zare2e::ServerProcess server;
    std::string err;
    if (!server.start(
            zare2e::binaryDir() + "/bin/zar-cimserver",
            {"--array-db", db, "--socket", "off", "--schema-dir", zare2e::sourceDir() + "/schema",
             "--provider-dir", zare2e::binaryDir() + "/lib", "--log-file", dir + "/server.log",
             "--log-level", "2"},
            {}, err))
        die(err);
    Target t;
    t.port = server.httpPort();
    t.pid = server.pid();
    std::string label = std::to_string(added + 7) + "v";
    report(t, label.c_str(), pullSize);
    if (server.stop() != 0)
        die("server exited with an error:\n" + server.output());
}

}  // namespace

int main(int argc, char** argv)
{
    int small = 1000, large = 100000;
    unsigned pullSize = 1000;
    std::string url;
    Target t;
    for (int i = 1; i < argc; i++) {
        std::string a = argv[i];
        auto next = [&]() -> std::string {
            if (i + 1 >= argc)
                die(a + " needs a value (see --help)");
            return argv[++i];
        };
        if (a == "--small")
            small = std::atoi(next().c_str());
        else if (a == "--large")
            large = std::atoi(next().c_str());
        else if (a == "--pull-size")
            pullSize = unsigned(std::atoi(next().c_str()));
        else if (a == "--url")
            url = next();
        else if (a == "--user")
            t.user = next();
        else if (a == "--password")
            t.password = next();
        else if (a == "--pid")
            t.pid = std::atol(next().c_str());
        else {
            std::printf(
                "Usage: bench_memory [--small N] [--large N] [--pull-size K]\n"
                "       bench_memory --url http://HOST:PORT --user U --password P --pid PID\n"
                "Peak resident memory of the CIM server while it answers EnumerateInstances\n"
                "of ZAR_SCSIController for each kind of client (chunked, plain HTTP/1.1,\n"
                "HTTP/1.0) and a full pull in pieces of K (default 1000), at N views\n"
                "(defaults 1000 and 100000) on an array of its own, or once against a\n"
                "running server.\n");
            return a == "--help" ? 0 : 2;
        }
    }
    if (small < 4 || large < 4 || pullSize < 1)
        die("--small and --large need at least 4 views, --pull-size at least 1");
    if (!url.empty()) {
        std::string err;
        if (!WireClient::parseUrl(url, t.host, t.port, err))
            die(err);
        if (t.pid <= 0)
            die("--url needs --pid, the process whose memory is read");
        report(t, "server", pullSize);
        return 0;
    }
    runOwnServer(small, pullSize);
    runOwnServer(large, pullSize);
    return 0;
}
