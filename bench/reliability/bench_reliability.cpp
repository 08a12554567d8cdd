// bench_reliability: how the array and zar-cimserver hold up under
// concurrent changes, a long run, and kill -9.
//
//   load   CLIENTS threads each make CHANGES changes (ExposePaths, HidePaths,
//          DeleteProtocolController) on views of their own and on views all
//          clients share (each client with its own volumes there, so that
//          acknowledged changes commute); the array must then equal a serial
//          replay of the acknowledged changes on a fresh array, and pass
//          PRAGMA integrity_check.
//   soak   SOAK seconds of mixed reads and changes; the server's resident
//          memory and open descriptors are printed every SAMPLE seconds.
//   crash  CRASHES times, the server is killed with SIGKILL at a random
//          point of a run of changes and started again; every acknowledged
//          change must be there, and the change cut short must succeed when
//          sent again.
//
// Exit status 0 when every check held.
#include "ServerProcess.h"

#include <Pegasus/Client/CIMClient.h>
#include <sqlite3.h>

#include <dirent.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

PEGASUS_USING_PEGASUS;
using namespace zare2e;

namespace {

using Clock = std::chrono::steady_clock;

struct Options {
    int clients = 8;
    int changes = 1000;
    int soakSeconds = 60;
    int sampleSeconds = 10;
    int crashes = 5;
    unsigned seed = 1;
    long rssGrowthKb = 16 * 1024;  // 0: memory not judged (sanitizer builds keep freed memory)
};

const int kVolumesPerClient = 6;
const int kOwnHostsPerClient = 3;
const int kSharedHosts = 3;

std::string u8(const String& s)
{
    CString c = s.getCString();
    return std::string((const char*)c);
}

[[noreturn]] void die(const std::string& why)
{
    std::fprintf(stderr, "bench_reliability: %s\n", why.c_str());
    std::exit(2);
}

std::string volumeName(int client, int k)
{
    return "rel-" + std::to_string(client) + "-" + std::to_string(k);
}

std::string initiator(int group, int k)
{
    char buf[17];
    std::snprintf(buf, sizeof buf, "10000000%04X%04X", group & 0xFFFF, k & 0xFFFF);
    return buf;
}

// One change, in terms that a replay can carry out on another array.
struct Change {
    enum Kind { Expose, Hide, Delete } kind;
    std::string volume, wwn, initiator;
    int lun = 0;
};

// The test array: a seeded demo array plus the bench's volumes and users.
struct Array_ {
    std::string dir, db, zarcli;
    std::map<std::string, std::string> wwnOf;  // volume -> WWN
};

std::string run(const std::string& cmd)
{
    std::string out;
    if (runCommand(cmd, out, 120) != 0)
        die("command failed: " + cmd + "\n" + out);
    return out;
}

Array_ makeArray(int clients)
{
    Array_ a;
    a.dir = makeTempDir();
    a.db = a.dir + "/array.db";
    a.zarcli = binaryDir() + "/bin/zarcli --db " + a.db;
    run(a.zarcli + " seed");
    run(a.zarcli + " config set ipv4 127.0.0.1");
    run("printf 'storage-pass1\\n' | " + a.zarcli + " users add storage --role edit");
    std::string script;
    for (int c = 0; c < clients + 1; c++)
        for (int k = 0; k < kVolumesPerClient; k++)
            script +=
                a.zarcli + " volumes create " + volumeName(c, k) + " --size 64 >/dev/null && ";
    run(script + "true");
    std::istringstream in(run(a.zarcli + " volumes"));
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream f(line);
        std::string id, name, wwn;
        f >> id >> name >> wwn;
        a.wwnOf[name] = wwn;
    }
    return a;
}

void startServer(ServerProcess& s, const Array_& a)
{
    std::string err;
    if (!s.start(binaryDir() + "/bin/zar-cimserver",
                 {"--array-db", a.db, "--socket", "off", "--schema-dir", sourceDir() + "/schema",
                  "--provider-dir", binaryDir() + "/lib", "--log-file", a.dir + "/server.log",
                  "--log-level", "2"},
                 {}, err))
        die("cannot start zar-cimserver: " + err);
}

// The exports of the bench's volumes: "volume lun host" lines, sorted (view
// and host numbers differ between arrays; names do not).
std::set<std::string> exportsOf(const Array_& a)
{
    std::set<std::string> out;
    std::istringstream in(run(a.zarcli + " vluns"));
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream f(line);
        std::string volume, lun, kind, host;
        f >> volume >> lun >> kind >> host;
        if (volume.compare(0, 4, "rel-") == 0)
            out.insert(volume + " " + lun + " " + host);
    }
    return out;
}

// The view (DeviceID) holding host's exports, "" when it has none.
std::string viewOf(const Array_& a, const std::string& host)
{
    std::istringstream in(run(a.zarcli + " vluns"));
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream f(line);
        std::string volume, lun, kind, h, port, view;
        f >> volume >> lun >> kind >> h >> port >> view;
        if (h == host)
            return view;
    }
    return std::string();
}

bool integrityOk(const Array_& a)
{
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(a.db.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK)
        return false;
    sqlite3_stmt* st = nullptr;
    bool ok = sqlite3_prepare_v2(db, "PRAGMA integrity_check", -1, &st, nullptr) == SQLITE_OK &&
              sqlite3_step(st) == SQLITE_ROW &&
              std::string((const char*)sqlite3_column_text(st, 0)) == "ok";
    sqlite3_finalize(st);
    sqlite3_close(db);
    return ok;
}

// A client of the configuration service, remembering the view each of its
// hosts' exports landed in.
class Client {
public:
    using Views = std::map<std::string, CIMObjectPath>;
    Client(int port, const std::map<std::string, std::string>& wwns, Views& views)
        : _wwns(wwns), _views(views)
    {
        _c.setTimeout(120000);
        _c.connect("127.0.0.1", Uint32(port), "storage", "storage-pass1");
        Array<CIMObjectPath> s =
            _c.enumerateInstanceNames("root/zar", "ZAR_ControllerConfigurationService");
        if (s.size() != 1)
            die("no configuration service");
        _service = s[0];
        _service.setHost(String());
        _service.setNameSpace(CIMNamespaceName());
    }

    // Runs the change; true when the array acknowledged it (return value 0).
    // Throws on a transport failure (the server is gone).
    bool apply(const Change& ch)
    {
        Array<CIMParamValue> in, out;
        if (ch.kind == Change::Expose) {
            in.append(CIMParamValue(
                "LUNames", CIMValue(Array<String>(1, String(_wwns.at(ch.volume).c_str())))));
            in.append(CIMParamValue("InitiatorPortIDs",
                                    CIMValue(Array<String>(1, String(ch.initiator.c_str())))));
            char lun[16];
            std::snprintf(lun, sizeof lun, "%X", ch.lun);
            in.append(CIMParamValue("DeviceNumbers", CIMValue(Array<String>(1, String(lun)))));
        } else {
            auto v = _views.find(ch.initiator);
            if (v == _views.end())
                return false;
            if (ch.kind == Change::Hide) {
                in.append(CIMParamValue(
                    "LUNames", CIMValue(Array<String>(1, String(_wwns.at(ch.volume).c_str())))));
                in.append(CIMParamValue("ProtocolControllers",
                                        CIMValue(Array<CIMObjectPath>(1, v->second))));
            } else {
                in.append(CIMParamValue("ProtocolController", CIMValue(v->second)));
            }
        }
        static const char* names[] = {"ExposePaths", "HidePaths", "DeleteProtocolController"};
        CIMValue rv;
        try {
            rv = _c.invokeMethod("root/zar", _service, names[ch.kind], in, out);
        } catch (CIMException& e) {
            _lastError = u8(e.getMessage());
            return false;
        }
        Uint32 code = 1;
        rv.get(code);
        if (code != 0) {
            _lastError = "return value " + std::to_string(code);
            return false;
        }
        for (Uint32 i = 0; i < out.size(); i++)
            if (u8(out[i].getParameterName()) == "ProtocolControllers") {
                Array<CIMObjectPath> views;
                out[i].getValue().get(views);
                if (views.size())
                    _views[ch.initiator] = views[0];
            }
        return true;
    }
    // Sets the view of initiator's host from its DeviceID (as zarcli shows it).
    void learnView(const std::string& ini, const std::string& deviceID)
    {
        CIMObjectPath v = _service;
        Array<CIMKeyBinding> keys;
        const Array<CIMKeyBinding>& sk = _service.getKeyBindings();
        for (Uint32 i = 0; i < sk.size(); i++)
            if (sk[i].getName().equal(CIMName("SystemName")) ||
                sk[i].getName().equal(CIMName("SystemCreationClassName")))
                keys.append(sk[i]);
        keys.append(
            CIMKeyBinding("CreationClassName", "ZAR_SCSIController", CIMKeyBinding::STRING));
        keys.append(CIMKeyBinding("DeviceID", String(deviceID.c_str()), CIMKeyBinding::STRING));
        v.setClassName("ZAR_SCSIController");
        v.setKeyBindings(keys);
        _views[ini] = v;
    }
    CIMClient& cim() { return _c; }
    const std::string& lastError() const { return _lastError; }

private:
    CIMClient _c;
    CIMObjectPath _service;
    const std::map<std::string, std::string>& _wwns;
    Views& _views;  // initiator -> the view its host's exports are in
    std::string _lastError;
};

// What a client believes is exported: (volume, initiator) -> lun.
using Model = std::map<std::pair<std::string, std::string>, int>;

// The next change of client c, valid against its model.
Change nextChange(int c, Model& m, std::mt19937& rng, bool allowDelete)
{
    std::uniform_int_distribution<int> pick(0, 99);
    for (;;) {
        int k = pick(rng) % kVolumesPerClient;
        bool shared = pick(rng) < 40;
        std::string ini = shared ? initiator(0xFFFF, pick(rng) % kSharedHosts)
                                 : initiator(c, pick(rng) % kOwnHostsPerClient);
        Change ch;
        ch.volume = volumeName(c, k);
        ch.initiator = ini;
        auto key = std::make_pair(ch.volume, ini);
        if (!m.count(key)) {
            ch.kind = Change::Expose;
            ch.lun = 1 + c * kVolumesPerClient + k;  // distinct on a shared host
            return ch;
        }
        if (!shared && allowDelete && pick(rng) < 25) {
            ch.kind = Change::Delete;
            return ch;
        }
        ch.kind = Change::Hide;
        return ch;
    }
}

// The model after an acknowledged change.
void record(Model& m, const Change& ch)
{
    if (ch.kind == Change::Expose) {
        m[std::make_pair(ch.volume, ch.initiator)] = ch.lun;
    } else if (ch.kind == Change::Hide) {
        m.erase(std::make_pair(ch.volume, ch.initiator));
    } else {
        for (auto it = m.begin(); it != m.end();)
            it = it->first.second == ch.initiator ? m.erase(it) : std::next(it);
    }
}

std::set<std::string> modelExports(const std::vector<Model>& models)
{
    std::set<std::string> out;
    for (const Model& m : models)
        for (const auto& kv : m)
            out.insert(kv.first.first + " " + std::to_string(kv.second) + " host-" +
                       kv.first.second);
    return out;
}

int report(const std::set<std::string>& want, const std::set<std::string>& got, const char* what)
{
    int bad = 0;
    for (const auto& w : want)
        if (!got.count(w)) {
            if (bad++ < 5)
                std::printf("  %s: missing %s\n", what, w.c_str());
        }
    for (const auto& g : got)
        if (!want.count(g)) {
            if (bad++ < 10)
                std::printf("  %s: unexpected %s\n", what, g.c_str());
        }
    return bad;
}

// ---- load ------------------------------------------------------------------

int loadPhase(const Options& o)
{
    Array_ a = makeArray(o.clients);
    ServerProcess server;
    startServer(server, a);
    std::vector<std::vector<Change>> acked(o.clients);
    std::vector<Model> models(o.clients);
    std::atomic<int> refused{0}, errors{0};
    std::mutex printMu;
    auto start = Clock::now();
    std::vector<std::thread> threads;
    for (int c = 0; c < o.clients; c++)
        threads.emplace_back([&, c] {
            try {
                Client::Views views;
                Client cl(server.httpPort(), a.wwnOf, views);
                std::mt19937 rng(o.seed * 1000 + c);
                for (int i = 0; i < o.changes; i++) {
                    Change ch = nextChange(c, models[c], rng, true);
                    if (cl.apply(ch)) {
                        record(models[c], ch);
                        acked[c].push_back(ch);
                    } else {
                        refused++;
                        std::lock_guard<std::mutex> lock(printMu);
                        if (refused <= 5)
                            std::printf("  refused: %s\n", cl.lastError().c_str());
                    }
                }
            } catch (Exception& e) {
                errors++;
                std::lock_guard<std::mutex> lock(printMu);
                std::printf("  client %d: %s\n", c, u8(e.getMessage()).c_str());
            }
        });
    for (auto& t : threads)
        t.join();
    double secs = std::chrono::duration<double>(Clock::now() - start).count();
    size_t total = 0;
    for (auto& v : acked)
        total += v.size();
    if (server.stop() != 0)
        errors++;
    std::set<std::string> live = exportsOf(a);
    bool integrity = integrityOk(a);

    // The serial replay, on a fresh array, round robin over the clients.
    Array_ b = makeArray(o.clients);
    ServerProcess replayServer;
    startServer(replayServer, b);
    int replayRefused = 0;
    {
        Client::Views views;
        Client cl(replayServer.httpPort(), b.wwnOf, views);
        std::vector<size_t> next(o.clients, 0);
        for (bool more = true; more;) {
            more = false;
            for (int c = 0; c < o.clients; c++)
                if (next[c] < acked[c].size()) {
                    more = true;
                    if (!cl.apply(acked[c][next[c]++]))
                        replayRefused++;
                }
        }
    }
    replayServer.stop();
    std::set<std::string> replay = exportsOf(b);
    int mismatches = report(replay, live, "live vs replay") +
                     report(modelExports(models), live, "live vs model");
    std::printf(
        "load: %d clients x %d changes in %.1f s (%.0f changes/s): %zu acknowledged, %d refused, "
        "%d client errors; replay refused %d; %zu exports; live %s replay; integrity_check %s\n",
        o.clients, o.changes, secs, o.clients * o.changes / secs, total, refused.load(),
        errors.load(), replayRefused, live.size(), mismatches ? "DIFFERS FROM" : "equals",
        integrity ? "ok" : "FAILED");
    // A refused change is not acknowledged and so not replayed; the replay
    // itself, serial, must accept every change the live array acknowledged.
    return (mismatches || !integrity || errors || replayRefused) ? 1 : 0;
}

// ---- soak ------------------------------------------------------------------

long rssKb(pid_t pid)
{
    std::ifstream f("/proc/" + std::to_string(pid) + "/status");
    std::string line;
    while (std::getline(f, line))
        if (line.compare(0, 6, "VmRSS:") == 0)
            return std::atol(line.c_str() + 6);
    return -1;
}

int openFds(pid_t pid)
{
    DIR* d = opendir(("/proc/" + std::to_string(pid) + "/fd").c_str());
    if (!d)
        return -1;
    int n = 0;
    while (struct dirent* e = readdir(d))
        if (e->d_name[0] != '.')
            n++;
    closedir(d);
    return n;
}

int soakPhase(const Options& o)
{
    if (o.soakSeconds <= 0)
        return 0;
    Array_ a = makeArray(4);
    ServerProcess server;
    startServer(server, a);
    std::atomic<bool> running{true};
    std::atomic<long> reads{0}, changes{0}, failures{0}, connectRetries{0};
    std::vector<std::thread> threads;
    for (int c = 0; c < 4; c++)
        threads.emplace_back([&, c] {
            std::mt19937 rng(o.seed * 77 + c);
            Model m;
            Client::Views views;
            int refusedInARow = 0;
            while (running) {
                try {
                    // Fresh connections now and then, as real clients make them.
                    Client cl(server.httpPort(), a.wwnOf, views);
                    for (int i = 0; i < 50 && running; i++) {
                        if (c < 2) {
                            cl.cim().enumerateInstances("root/zar", "ZAR_SCSIController");
                            cl.cim().enumerateInstanceNames("root/zar", "ZAR_StorageVolume");
                            reads += 2;
                        } else {
                            Change ch = nextChange(c, m, rng, true);
                            if (cl.apply(ch)) {
                                record(m, ch);
                                changes++;
                            } else if (++failures <= 5) {
                                std::printf("  refused: %s\n", cl.lastError().c_str());
                            }
                        }
                    }
                    refusedInARow = 0;
                } catch (CannotConnectException& e) {
                    // A new connection that could not be made (on a loaded
                    // machine a loopback connect can fail): tried again, as
                    // clients do; three in a row count as a failure.
                    connectRetries++;
                    if (++refusedInARow >= 3 && ++failures <= 5)
                        std::printf("  client error: %s\n", u8(e.getMessage()).c_str());
                    std::this_thread::sleep_for(std::chrono::milliseconds(100));
                } catch (Exception& e) {
                    if (++failures <= 5)
                        std::printf("  client error: %s\n", u8(e.getMessage()).c_str());
                }
            }
        });
    std::printf("soak: %d s, sample every %d s\n  %8s %10s %6s %10s %10s\n", o.soakSeconds,
                o.sampleSeconds, "time_s", "rss_kb", "fds", "reads", "changes");
    std::vector<long> rss;
    std::vector<int> fds;
    auto start = Clock::now();
    for (int t = 0; t <= o.soakSeconds; t += o.sampleSeconds) {
        std::this_thread::sleep_until(start + std::chrono::seconds(t));
        rss.push_back(rssKb(server.pid()));
        fds.push_back(openFds(server.pid()));
        std::printf("  %8d %10ld %6d %10ld %10ld\n", t, rss.back(), fds.back(), reads.load(),
                    changes.load());
        std::fflush(stdout);
    }
    running = false;
    for (auto& th : threads)
        th.join();
    bool stopped = server.stop() == 0;
    // Flat: descriptors back where they were once warm; memory measured from
    // the second sample (the first includes start-up) grows by under the limit.
    bool fdFlat = fds.size() < 2 || fds.back() <= fds[1] + 8;
    long growth = rss.size() < 3 ? 0 : rss.back() - rss[1];
    std::printf(
        "soak: %ld reads, %ld changes, %ld failures, %ld connections tried again; RSS %+ld KiB "
        "after warm-up; descriptors %s; integrity_check %s\n",
        reads.load(), changes.load(), failures.load(), connectRetries.load(), growth,
        fdFlat ? "flat" : "GROWING", integrityOk(a) ? "ok" : "FAILED");
    return (failures || !fdFlat || (o.rssGrowthKb > 0 && growth > o.rssGrowthKb) || !stopped ||
            !integrityOk(a))
               ? 1
               : 0;
}

// ---- crash -----------------------------------------------------------------

int crashPhase(const Options& o)
{
    if (o.crashes <= 0)
        return 0;
    Array_ a = makeArray(1);
    ServerProcess server;
    startServer(server, a);
    std::mt19937 rng(o.seed * 31);
    Model model;
    Client::Views views;
    int lost = 0, blocked = 0, cut = 0;
    long acknowledged = 0;
    for (int round = 0; round < o.crashes; round++) {
        std::atomic<bool> killed{false};
        int delayMs = 150 + static_cast<int>(rng() % 1200);
        pid_t pid = server.pid();
        std::thread killer([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(delayMs));
            killed = true;
            ::kill(pid, SIGKILL);
        });
        Change inFlight{};
        bool pending = false;
        try {
            Client cl(server.httpPort(), a.wwnOf, views);
            for (;;) {
                Change ch = nextChange(0, model, rng, true);
                inFlight = ch;
                pending = true;
                if (cl.apply(ch)) {
                    record(model, ch);
                    acknowledged++;
                }
                pending = false;
            }
        } catch (Exception&) {
            // The server is gone, mid-change or between two.
        }
        killer.join();
        server.stop();
        startServer(server, a);
        // Nothing acknowledged is lost (what the cut change touched aside).
        std::set<std::string> now = exportsOf(a);
        for (const auto& kv : model) {
            bool touched = pending && kv.first.second == inFlight.initiator &&
                           (inFlight.kind == Change::Delete || kv.first.first == inFlight.volume);
            std::string line =
                kv.first.first + " " + std::to_string(kv.second) + " host-" + kv.first.second;
            if (!touched && !now.count(line)) {
                lost++;
                std::printf("  crash %d: acknowledged export lost: %s\n", round + 1, line.c_str());
            }
        }
        if (pending) {
            cut++;
            // The cut change sent again goes through, or is found done.
            Client cl(server.httpPort(), a.wwnOf, views);
            const Change& r = inFlight;
            std::string host = "host-" + r.initiator;
            std::string line = r.volume + " " + std::to_string(r.lun) + " host-" + r.initiator;
            bool done;
            if (r.kind == Change::Expose) {
                done = cl.apply(r) || exportsOf(a).count(line);
            } else {
                std::string view = viewOf(a, host);
                bool present = r.kind == Change::Delete ? !view.empty() : !view.empty() && [&] {
                    for (const auto& e : exportsOf(a))
                        if (e.compare(0, r.volume.size() + 1, r.volume + " ") == 0 &&
                            e.size() > host.size() &&
                            e.compare(e.size() - host.size(), host.size(), host) == 0)
                            return true;
                    return false;
                }();
                if (present)
                    cl.learnView(r.initiator, view);
                done = !present || cl.apply(r);
            }
            if (!done) {
                blocked++;
                std::printf("  crash %d: the cut change, sent again, is refused: %s\n", round + 1,
                            cl.lastError().c_str());
            }
            // Carry on from what the array holds for this client.
            model.clear();
            for (const auto& e : exportsOf(a)) {
                std::istringstream f(e);
                std::string volume, lun, h;
                f >> volume >> lun >> h;
                if (volume.compare(0, 6, "rel-0-") == 0 && h.compare(0, 5, "host-") == 0)
                    model[std::make_pair(volume, h.substr(5))] = std::atoi(lun.c_str());
            }
        }
    }
    server.stop();
    bool integrity = integrityOk(a);
    std::printf(
        "crash: %d kill -9, %ld changes acknowledged, %d cut mid-change; %d acknowledged lost, "
        "%d retries blocked; integrity_check %s\n",
        o.crashes, acknowledged, cut, lost, blocked, integrity ? "ok" : "FAILED");
    return (lost || blocked || !integrity) ? 1 : 0;
}

void usage()
{
    std::printf(
        "usage: bench_reliability [--clients N] [--changes N] [--soak SEC] [--sample SEC]\n"
        "                         [--crashes N] [--seed N] [--rss-growth KIB]\n\n"
        "Runs zar-cimserver over fresh simulated arrays and checks:\n"
        "  load   N clients x N changes (ExposePaths, HidePaths, DeleteProtocolController on\n"
        "         views of their own and shared views) equal a serial replay of the\n"
        "         acknowledged changes, PRAGMA integrity_check ok (defaults 8 x 1000);\n"
        "  soak   SEC seconds of mixed reads and changes, RSS and descriptors sampled every\n"
        "         --sample seconds (defaults 60 and 10; 0 skips); memory may grow by\n"
        "         --rss-growth KiB after the first sample (default 16384; 0: not judged,\n"
        "         as in sanitizer builds, whose allocator holds freed memory back);\n"
        "  crash  N kill -9 at random points; nothing acknowledged lost, the cut change\n"
        "         succeeds when sent again (default 5; 0 skips).\n"
        "Exit status 0 when every check held, 1 when one failed, 2 on a setup error.\n");
}

}  // namespace

int main(int argc, char** argv)
{
    Options o;
    for (int i = 1; i < argc; i++) {
        std::string a = argv[i];
        if (a == "--help" || a == "-h") {
            usage();
            return 0;
        }
        if (i + 1 >= argc) {
            std::fprintf(stderr, "bench_reliability: %s needs a value\n", a.c_str());
            return 2;
        }
        char* end = nullptr;
        long v = std::strtol(argv[++i], &end, 10);
        if (!end || *end || v < 0 || v > 10000000) {
            std::fprintf(stderr, "bench_reliability: invalid value for %s: %s\n", a.c_str(),
                         argv[i]);
            return 2;
        }
        if (a == "--clients" && v > 0 && v <= 64)
            o.clients = int(v);
        else if (a == "--changes")
            o.changes = int(v);
        else if (a == "--soak")
            o.soakSeconds = int(v);
        else if (a == "--sample" && v > 0)
            o.sampleSeconds = int(v);
        else if (a == "--crashes")
            o.crashes = int(v);
        else if (a == "--seed")
            o.seed = unsigned(v);
        else if (a == "--rss-growth")
            o.rssGrowthKb = v;
        else {
            std::fprintf(stderr, "bench_reliability: unknown option or bad value %s\nTry --help.\n",
                         a.c_str());
            return 2;
        }
    }
    setvbuf(stdout, nullptr, _IOLBF, 0);
    int rc = 0;
    if (o.changes > 0)
        rc |= loadPhase(o);
    rc |= soakPhase(o);
    rc |= crashPhase(o);
    std::printf(rc ? "bench_reliability: FAILED\n" : "bench_reliability: all checks held\n");
    return rc;
}
