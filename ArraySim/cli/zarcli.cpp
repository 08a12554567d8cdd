// zarcli - administration of the simulated array.
//
//   zarcli [--db PATH] [--json] COMMAND [SUBCOMMAND] [ARGS...]
//
// Every change is one transaction of the array, recorded in its audit log;
// a refused command changes nothing.
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <zarapi.h>
#include <zarauth.h>

#include "Array.h"
#include "Db.h"
#include "Model.h"
#include "Table.h"
#include "Text.h"

using namespace zarsim;
using zarcli::Table;

namespace {

// A refusal of bad input (exit status 2) or of the array (exit status 1).
struct Failure {
    int status;
    std::string message;
};

[[noreturn]] void usageError(const std::string& m)
{
    throw Failure{2, m};
}

struct Args {
    std::vector<std::string> words;
    std::multimap<std::string, std::string> options;
    std::set<std::string> flags;

    bool flag(const std::string& f) const { return flags.count(f) > 0; }
    bool has(const std::string& o) const { return options.count(o) > 0; }
    std::string opt(const std::string& o, const std::string& def = "") const
    {
        auto it = options.find(o);
        return it == options.end() ? def : it->second;
    }
    std::vector<std::string> all(const std::string& o) const
    {
        std::vector<std::string> v;
        for (auto r = options.equal_range(o); r.first != r.second; ++r.first)
            v.push_back(r.first->second);
        return v;
    }
    const std::string& word(size_t i, const char* what) const
    {
        if (i >= words.size())
            usageError(std::string("missing ") + what);
        return words[i];
    }
    void atMost(size_t n) const
    {
        if (words.size() > n)
            usageError("unexpected argument '" + words[n] + "'");
    }
};

const std::set<std::string> kFlags = {"--json",   "--help", "-h",     "--override",
                                      "--active", "--luns", "--force"};
const std::set<std::string> kValued = {"--db",    "--size",    "--domain", "--access", "--wwn",
                                       "--iscsi", "--persona", "--host",   "--set",    "--port",
                                       "--ip",    "--role",    "--limit",  "--chunk",  "--status"};

Args parse(int argc, char** argv)
{
    Args a;
    for (int i = 1; i < argc; ++i) {
        std::string s = argv[i];
        if (s.size() > 1 && s[0] == '-' && !(s.size() > 1 && isdigit((unsigned char)s[1]))) {
            if (kFlags.count(s)) {
                a.flags.insert(s == "-h" ? "--help" : s);
            } else if (kValued.count(s)) {
                if (i + 1 >= argc)
                    usageError("option " + s + " needs a value");
                a.options.emplace(s, argv[++i]);
            } else {
                usageError("unknown option " + s);
            }
        } else {
            a.words.push_back(s);
        }
    }
    return a;
}

bool g_json = false;

void print(const Table& t)
{
    if (g_json)
        t.printJson(std::cout);
    else
        t.printText(std::cout);
}

void done(const std::string& what)
{
    if (g_json)
        std::cout << "{\"result\": \"ok\", \"message\": " << zarcli::jsonString(what) << "}\n";
    else
        std::cout << what << "\n";
}

Caller cliCaller(const std::string& command)
{
    Caller c;
    const char* user = getenv("USER");
    c.user = std::string("zarcli:") + (user && *user ? user : "admin");
    c.addr = "local";
    c.method = "zarcli:" + command;
    return c;
}

void change(const std::string& command, const std::string& args,
            const std::function<Result(sqlite3*)>& fn)
{
    Result r = changeArray(("zarcli " + command).c_str(), cliCaller(command), args, fn);
    if (!r.ok())
        throw Failure{1, r.text + " (error " + std::to_string(r.code) + ")"};
}

void read(const std::function<void(sqlite3*)>& fn)
{
    Result r = readArray("zarcli", [&](sqlite3* db) {
        fn(db);
        return Result::success();
    });
    if (!r.ok())
        throw Failure{1, r.text};
}

lpid_t position(const std::string& text)
{
    lpid_t p = API_PORT_NONE;
    if (api_convertStrLPIDtoPortID(text.c_str(), &p) != 0)
        usageError("invalid port position '" + text + "' (want N:S:P)");
    return p;
}

int64_t number(const std::string& text, const char* what)
{
    char* end = nullptr;
    long long v = strtoll(text.c_str(), &end, 10);
    if (text.empty() || *end)
        usageError(std::string("invalid ") + what + " '" + text + "'");
    return v;
}

const char* kindName(unsigned k)
{
    switch (k) {
        case API_VLUN_MATCHED_SET:
            return "matched-set";
        case API_VLUN_HOST_SEES:
            return "host-sees";
        case API_VLUN_HOST_SET:
            return "host-set";
        case API_VLUN_PORT_PRESENT:
            return "port-present";
        default:
            return "?";
    }
}

const char* typeName(int t)
{
    return t == PORT_TYPE_FC ? "FC" : t == PORT_TYPE_ISCSI ? "iSCSI" : "-";
}

std::string statusName(int s)
{
    switch (s) {
        case PORT_OK:
            return "ok";
        case PORT_OFFLINE:
            return "offline";
        case PORT_LOSS_SYNC:
            return "loss-sync";
        case PORT_ERROR:
            return "error";
        case PORT_CONFIG_WAIT:
            return "config-wait";
        case PORT_LOGIN_WAIT:
            return "login-wait";
        case PORT_FWDEAD:
            return "fw-dead";
        default:
            return std::to_string(s);
    }
}

int statusFromName(const std::string& s)
{
    const char* names[] = {"ok",          "offline",    "loss-sync", "error",
                           "config-wait", "login-wait", "fw-dead"};
    const int values[] = {PORT_OK,          PORT_OFFLINE,    PORT_LOSS_SYNC, PORT_ERROR,
                          PORT_CONFIG_WAIT, PORT_LOGIN_WAIT, PORT_FWDEAD};
    for (size_t i = 0; i < sizeof values / sizeof values[0]; ++i)
        if (s == names[i])
            return values[i];
    usageError("unknown port status '" + s +
               "' (ok, offline, loss-sync, error, config-wait, login-wait, fw-dead)");
}

std::string readPassword(const std::string& user)
{
    std::string pw;
    if (!isatty(STDIN_FILENO)) {
        if (!std::getline(std::cin, pw))
            usageError("no password on standard input");
        if (!pw.empty() && pw.back() == '\r')
            pw.pop_back();
        return pw;
    }
    struct termios old, quiet;
    tcgetattr(STDIN_FILENO, &old);
    quiet = old;
    quiet.c_lflag &= ~(tcflag_t)ECHO;
    auto ask = [&](const std::string& prompt) {
        std::cerr << prompt << std::flush;
        tcsetattr(STDIN_FILENO, TCSANOW, &quiet);
        std::string s;
        std::getline(std::cin, s);
        tcsetattr(STDIN_FILENO, TCSANOW, &old);
        std::cerr << "\n";
        return s;
    };
    pw = ask("Password for " + user + ": ");
    if (ask("Again: ") != pw)
        usageError("the passwords differ");
    return pw;
}

// ---- Commands -----------------------------------------------------------

struct Command {
    const char* name;
    const char* usage;
    std::function<void(const Args&)> run;
};

void cmdSeed(const Args& a)
{
    a.atMost(1);
    change("seed", "demo", [](sqlite3* db) { return seedDemo(db); });
    done("seeded the demo array");
}

void cmdShow(const Args& a)
{
    a.atMost(1);
    SystemRow s;
    std::map<std::string, int64_t> counts;
    read([&](sqlite3* db) {
        s = loadSystem(db);
        for (const char* t :
             {"node", "port", "volume", "host", "template", "view", "user", "event"}) {
            Stmt st(db, (std::string("SELECT count(*) FROM ") + t).c_str());
            st.step();
            counts[t] = st.i64(0);
        }
    });
    Table t({"key", "value"});
    t.add({"name", s.name});
    t.add({"host-name", s.hostName});
    t.add({"model", s.model});
    t.add({"serial", s.serial});
    t.add({"contact", s.contact});
    t.add({"owner", s.owner});
    t.add({"ipv4", s.ipv4});
    t.add({"ipv6", s.ipv6});
    t.add({"policy", std::to_string(s.policy)});
    t.add({"nodes", std::to_string(counts["node"])});
    t.add({"ports", std::to_string(counts["port"])});
    t.add({"volumes", std::to_string(counts["volume"])});
    t.add({"hosts-and-sets", std::to_string(counts["host"])});
    t.add({"vluns", std::to_string(counts["template"])});
    t.add({"views", std::to_string(counts["view"])});
    t.add({"users", std::to_string(counts["user"])});
    t.add({"events", std::to_string(counts["event"])});
    t.add({"state-file", openPath()});
    print(t);
}

void cmdConfig(const Args& a)
{
    std::string sub = a.words.size() > 1 ? a.words[1] : "show";
    if (sub == "show") {
        cmdShow(Args());
    } else if (sub == "set") {
        const std::string& key = a.word(2, "configuration key");
        const std::string& value = a.word(3, "value");
        a.atMost(4);
        change("config set", key + "=" + value,
               [&](sqlite3* db) { return setConfig(db, key, value); });
        done("set " + key);
    } else {
        usageError("unknown config command '" + sub + "'");
    }
}

void cmdVolumes(const Args& a)
{
    std::string sub = a.words.size() > 1 ? a.words[1] : "list";
    if (sub == "list") {
        Table t({"id", "name", "wwn", "domain", "access", "size_mib", "vluns", "busy"});
        read([&](sqlite3* db) {
            Stmt st(db,
                    "SELECT id, name, wwn, domain, access, size_mib, (SELECT count(*) FROM "
                    "template WHERE volume_id = volume.id),"
                    " busy FROM volume ORDER BY id");
            while (st.step())
                t.add({std::to_string(st.i64(0)), st.text(1), st.text(2), st.text(3),
                       st.i64(4) == VOL_MODE_READ ? "ro" : "rw", std::to_string(st.i64(5)),
                       std::to_string(st.i64(6)), st.i64(7) ? "yes" : "no"});
        });
        print(t);
    } else if (sub == "create") {
        const std::string& name = a.word(2, "volume name");
        a.atMost(3);
        int64_t size = number(a.opt("--size", "1024"), "size");
        std::string access = a.opt("--access", "rw");
        if (access != "rw" && access != "ro")
            usageError("--access must be rw or ro");
        std::string wwn;
        change("volumes create", "volume=" + name, [&](sqlite3* db) {
            return createVolume(db, name, size, a.opt("--domain", "-"),
                                access == "ro" ? VOL_MODE_READ : VOL_MODE_READWRITE, &wwn);
        });
        done("created volume " + name + " " + wwn);
    } else if (sub == "remove") {
        if (a.words.size() < 3)
            usageError("missing volume name");
        std::vector<std::string> names(a.words.begin() + 2, a.words.end());
        change("volumes remove", "volumes=" + std::to_string(names.size()),
               [&](sqlite3* db) { return removeVolumes(db, names); });
        done("removed " + std::to_string(names.size()) + " volume(s)");
    } else {
        usageError("unknown volumes command '" + sub + "'");
    }
}

std::vector<Initiator> initiators(const Args& a, size_t from)
{
    std::vector<std::string> texts = a.all("--wwn");
    for (const std::string& s : a.all("--iscsi"))
        texts.push_back(s);
    for (size_t i = from; i < a.words.size(); ++i)
        texts.push_back(a.words[i]);
    std::vector<Initiator> out;
    for (const std::string& s : texts) {
        Initiator p;
        Result r = parseInitiator(s, &p);
        if (!r.ok())
            usageError(r.text);
        out.push_back(p);
    }
    return out;
}

void cmdHosts(const Args& a)
{
    std::string sub = a.words.size() > 1 ? a.words[1] : "list";
    if (sub == "list") {
        Table t({"id", "name", "persona", "domain", "paths", "sets"});
        read([&](sqlite3* db) {
            Stmt st(db,
                    "SELECT h.id, h.name, h.persona, h.domain, (SELECT count(*) FROM initiator "
                    "WHERE host_id = h.id),"
                    " coalesce((SELECT group_concat(s.name, ',') FROM hostset_member m JOIN host s "
                    "ON s.id = m.set_id"
                    " WHERE m.host_id = h.id), '') FROM host h WHERE is_set = 0 ORDER BY id");
            while (st.step())
                t.add({std::to_string(st.i64(0)), st.text(1), std::to_string(st.i64(2)), st.text(3),
                       std::to_string(st.i64(4)), st.text(5)});
        });
        print(t);
    } else if (sub == "create") {
        const std::string& name = a.word(2, "host name");
        std::vector<Initiator> paths = initiators(a, 3);
        int persona = (int)number(a.opt("--persona", "2"), "persona");
        change("hosts create", "host=" + name, [&](sqlite3* db) {
            return createHost(db, name, paths, persona, a.opt("--domain", "-"));
        });
        done("created host " + name);
    } else if (sub == "remove") {
        const std::string& name = a.word(2, "host name");
        a.atMost(3);
        change("hosts remove", "host=" + name, [&](sqlite3* db) { return removeHost(db, name); });
        done("removed host " + name);
    } else if (sub == "rename" || sub == "set") {
        const std::string& name = a.word(2, "host name");
        api_host_change_t c;
        memset(&c, 0, sizeof c);
        if (sub == "rename") {
            const std::string& to = a.word(3, "new name");
            a.atMost(4);
            if (to.size() > 31)
                usageError("host name " + to + " is longer than 31 characters");
            copyField(c.newName, sizeof c.newName, to);
            c.newNameIsSet = 1;
        } else {
            a.atMost(3);
            if (a.has("--persona")) {
                c.persona = (zar_u32)number(a.opt("--persona"), "persona");
                c.personaIsSet = 1;
            }
            if (a.has("--domain")) {
                copyField(c.domain, sizeof c.domain, a.opt("--domain"));
                c.domainIsSet = 1;
            }
        }
        change("hosts " + sub, "host=" + name, [&](sqlite3* db) { return setHost(db, name, c); });
        done("changed host " + name);
    } else {
        usageError("unknown hosts command '" + sub + "'");
    }
}

void cmdPaths(const Args& a)
{
    std::string sub = a.words.size() > 1 ? a.words[1] : "list";
    if (sub == "list") {
        a.atMost(2);
        std::vector<api_hardwareID> list;
        Result r = readArray("zarcli", [&](sqlite3* db) {
            return hostPaths(db, "", "", a.opt("--host"), true, &list);
        });
        if (!r.ok())
            throw Failure{1, r.text};
        Table t({"host", "type", "initiator", "port"});
        for (const api_hardwareID& e : list)
            t.add({e.hostName[0] ? e.hostName : "-", typeName(e.pathInfo.type),
                   e.pathInfo.type == PORT_TYPE_FC ? hex16(e.pathInfo.wwn)
                                                   : std::string(e.pathInfo.iscsiName),
                   e.pathInfo.port == API_PORT_NONE ? "-" : lpidText(e.pathInfo.port)});
        print(t);
    } else if (sub == "add") {
        const std::string& host = a.word(2, "host name");
        std::vector<Initiator> paths = initiators(a, 3);
        if (paths.empty())
            usageError("missing initiator");
        change("paths add", "host=" + host,
               [&](sqlite3* db) { return addPaths(db, host, paths, a.flag("--override")); });
        done("added " + std::to_string(paths.size()) + " path(s) to " + host);
    } else if (sub == "remove") {
        const std::string& host = a.word(2, "host name");
        a.word(3, "initiator");
        a.atMost(4);
        Initiator p = initiators(a, 3).at(0);
        change("paths remove", "host=" + host + " path=" + p.text(),
               [&](sqlite3* db) { return removePath(db, host, p, a.flag("--force")); });
        done("removed path " + p.text() + " from " + host);
    } else if (sub == "login" || sub == "logout") {
        a.word(2, "initiator");
        lpid_t port = position(a.word(3, "port"));
        a.atMost(4);
        Args one;
        one.words = {a.words[2]};
        Initiator p = initiators(one, 0).at(0);
        change("paths " + sub, "path=" + p.text() + " port=" + lpidText(port), [&](sqlite3* db) {
            return sub == "login" ? login(db, p, port) : logout(db, p, port);
        });
        done(p.text() + (sub == "login" ? " logged in on " : " logged out of ") + lpidText(port));
    } else {
        usageError("unknown paths command '" + sub + "'");
    }
}

void cmdHostsets(const Args& a)
{
    std::string sub = a.words.size() > 1 ? a.words[1] : "list";
    if (sub == "list") {
        Table t({"id", "name", "domain", "members"});
        read([&](sqlite3* db) {
            Stmt st(db,
                    "SELECT s.id, s.name, s.domain, coalesce((SELECT group_concat(h.name, ',') "
                    "FROM hostset_member m"
                    " JOIN host h ON h.id = m.host_id WHERE m.set_id = s.id), '') FROM host s "
                    "WHERE is_set = 1 ORDER BY id");
            while (st.step())
                t.add({std::to_string(st.i64(0)), st.text(1), st.text(2), st.text(3)});
        });
        print(t);
    } else if (sub == "create" || sub == "remove") {
        const std::string& name = a.word(2, "host set name");
        a.atMost(3);
        change("hostsets " + sub, "set=" + name, [&](sqlite3* db) {
            return sub == "create" ? createHostSet(db, name, a.opt("--domain", "-"))
                                   : removeHostSet(db, name);
        });
        done((sub == "create" ? "created host set " : "removed host set ") + name);
    } else if (sub == "add" || sub == "drop") {
        const std::string& set = a.word(2, "host set name");
        const std::string& host = a.word(3, "host name");
        a.atMost(4);
        change("hostsets " + sub, "set=" + set + " host=" + host, [&](sqlite3* db) {
            return sub == "add" ? hostSetAdd(db, set, host) : hostSetRemove(db, set, host);
        });
        done((sub == "add" ? "added " : "dropped ") + host + (sub == "add" ? " to " : " from ") +
             set);
    } else {
        usageError("unknown hostsets command '" + sub + "'");
    }
}

std::string vlunTarget(const Args& a)
{
    if (a.has("--host") && a.has("--set"))
        usageError("give --host or --set, not both");
    if (a.has("--set"))
        return API_HOSTSET_PREFIX + a.opt("--set");
    return a.opt("--host");
}

void cmdVluns(const Args& a)
{
    std::string sub = a.words.size() > 1 ? a.words[1] : "list";
    if (sub == "list" && a.flag("--active")) {
        std::vector<ActiveVlun> list;
        read([&](sqlite3* db) { list = activeVluns(db); });
        Table t({"volume", "lun", "host", "port", "kind"});
        for (const ActiveVlun& v : list)
            t.add({v.volume, std::to_string(v.lun), v.host, lpidText(v.port), kindName(v.kind)});
        print(t);
    } else if (sub == "list") {
        api_vlunsInfo_t q;
        memset(&q, 0, sizeof q);
        std::vector<vlun> list;
        Result r =
            readArray("zarcli", [&](sqlite3* db) { return exportRecords(db, q, true, &list); });
        if (!r.ok())
            throw Failure{1, r.text};
        Table t({"volume", "lun", "kind", "host", "port", "view"});
        for (const vlun& v : list)
            t.add({v.vvname, std::to_string(v.lun), kindName(v.accessPriority),
                   v.hostname[0] ? v.hostname : "-",
                   v.port == API_PORT_NONE ? "any" : lpidText(v.port), v.deviceID});
        print(t);
    } else if (sub == "create" || sub == "remove") {
        const std::string& volume = a.word(2, "volume name");
        const std::string& lunText = a.word(3, "LUN");
        a.atMost(4);
        uint32_t lun =
            lunText == "auto" && sub == "create" ? API_LUN_AUTO : (uint32_t)number(lunText, "LUN");
        lpid_t port = a.has("--port") ? position(a.opt("--port")) : API_PORT_NONE;
        std::string host = vlunTarget(a);
        change("vluns " + sub, "volume=" + volume + " lun=" + lunText + " host=" + host,
               [&](sqlite3* db) {
                   VolumeRow v;
                   if (!findVolume(db, volume, &v))
                       return Result::error(API_E_VV_NOT_FOUND,
                                            "Volume " + volume + " does not exist");
                   Target t;
                   Result res = resolveTarget(db, host, API_WWN_NONE, "", port, &t);
                   if (!res.ok())
                       return res;
                   return sub == "create" ? createVlun(db, v.wwn, &lun, t, a.flag("--override"))
                                          : removeVlun(db, v.wwn, lun, t);
               });
        done((sub == "create" ? "exported " : "removed export of ") + volume + " as LUN " +
             std::to_string(lun));
    } else {
        usageError("unknown vluns command '" + sub + "'");
    }
}

void cmdPorts(const Args& a)
{
    std::string sub = a.words.size() > 1 ? a.words[1] : "list";
    if (sub == "list") {
        std::vector<PortRow> ports;
        read([&](sqlite3* db) { ports = listPorts(db); });
        Table t({"position", "type", "name", "status", "address", "logins"});
        for (const PortRow& p : ports)
            t.add({lpidText(p.pos), typeName(p.type),
                   p.type == PORT_TYPE_FC ? hex16(p.wwn) : p.iscsiName, statusName(p.status),
                   p.ip.empty() ? "-" : p.ip, std::to_string(p.logins)});
        print(t);
    } else if (sub == "create") {
        lpid_t pos = position(a.word(2, "port position"));
        const std::string& type = a.word(3, "port type (fc or iscsi)");
        a.atMost(4);
        if (type != "fc" && type != "iscsi")
            usageError("port type must be fc or iscsi");
        change("ports create", "port=" + lpidText(pos), [&](sqlite3* db) {
            return addPort(db, pos, type == "fc" ? PORT_TYPE_FC : PORT_TYPE_ISCSI, PORT_OK,
                           a.opt("--ip"));
        });
        done("created port " + lpidText(pos));
    } else if (sub == "remove") {
        lpid_t pos = position(a.word(2, "port position"));
        a.atMost(3);
        change("ports remove", "port=" + lpidText(pos),
               [&](sqlite3* db) { return removePort(db, pos); });
        done("removed port " + lpidText(pos));
    } else if (sub == "status") {
        lpid_t pos = position(a.word(2, "port position"));
        int status = statusFromName(a.word(3, "status"));
        a.atMost(4);
        change("ports status", "port=" + lpidText(pos),
               [&](sqlite3* db) { return setPortStatus(db, pos, status); });
        done("port " + lpidText(pos) + " is " + statusName(status));
    } else {
        usageError("unknown ports command '" + sub + "'");
    }
}

void cmdViews(const Args& a)
{
    a.atMost(1);
    Table t({"device_id", "kind", "host", "port", "protocol", "name", "state"});
    if (a.flag("--luns"))
        t = Table({"device_id", "kind", "host", "port", "protocol", "volume", "lun", "state"});
    if (a.flag("--luns")) {
        api_vlunsInfo_t q;
        memset(&q, 0, sizeof q);
        if (api_getSCSIProtocolControllers(&q) != 0)
            throw Failure{1, "cannot read the views"};
        for (zar_u32 i = 0; i < q.count; ++i) {
            const vlun& v = q.vluns[i];
            t.add({v.deviceID, kindName(v.accessPriority), v.hostname[0] ? v.hostname : "-",
                   v.port == API_PORT_NONE ? "any" : lpidText(v.port), typeName(v.hporttype),
                   v.vvname, std::to_string(v.lun), v.isTemplate ? "dormant" : "active"});
        }
        api_freeVLUNs(&q);
        print(t);
        return;
    }
    zar_u32 chunk = (zar_u32)number(a.opt("--chunk", "200"), "chunk size");
    api_spc_param_data cur;
    api_initSPCParamData(&cur);
    zar_u32 more = 1;
    while (more) {
        api_vlunsInfo_t q;
        memset(&q, 0, sizeof q);
        int rc = api_getSCSIProtocolControllers_chunk(&q, &cur, &more, chunk);
        if (rc != 0) {
            api_freeSPCParamData(&cur);
            throw Failure{1, std::string("cannot read the views: ") + api_errorCodeText(rc)};
        }
        for (zar_u32 i = 0; i < q.count; ++i) {
            const vlun& v = q.vluns[i];
            std::string name = v.accessPriority == API_VLUN_PORT_PRESENT
                                   ? (v.hporttype == PORT_TYPE_FC ? v.portwwn : v.portiscsiname)
                                   : (v.hporttype == PORT_TYPE_FC ? v.hostwwn : v.hostiscsiname);
            t.add({v.deviceID, kindName(v.accessPriority), v.hostname[0] ? v.hostname : "-",
                   v.port == API_PORT_NONE ? "any" : lpidText(v.port), typeName(v.hporttype),
                   name.empty() ? "-" : name, v.isTemplate ? "dormant" : "active"});
        }
        api_freeVLUNs(&q);
    }
    api_freeSPCParamData(&cur);
    print(t);
}

void cmdUsers(const Args& a)
{
    std::string sub = a.words.size() > 1 ? a.words[1] : "list";
    if (sub == "list") {
        Table t({"name", "role", "enabled", "created"});
        read([&](sqlite3* db) {
            Stmt st(db, "SELECT name, role, enabled, created FROM user ORDER BY name");
            while (st.step())
                t.add({st.text(0), roleName((int)st.i64(1)), st.i64(2) ? "yes" : "no", st.text(3)});
        });
        print(t);
    } else if (sub == "add" || sub == "passwd") {
        const std::string& name = a.word(2, "user name");
        a.atMost(3);
        int role = 0;
        if (sub == "add") {
            if (!a.has("--role"))
                usageError("missing --role (browse, edit or super)");
            role = roleFromName(a.opt("--role"));
            if (!role)
                usageError("unknown role '" + a.opt("--role") + "' (browse, edit or super)");
        }
        std::string pw = readPassword(name);
        change("users " + sub, "user=" + name, [&](sqlite3* db) {
            return sub == "add" ? addUser(db, name, pw, role) : setUserPassword(db, name, pw);
        });
        done(sub == "add" ? "added user " + name : "changed the password of " + name);
    } else if (sub == "remove" || sub == "enable" || sub == "disable") {
        const std::string& name = a.word(2, "user name");
        a.atMost(3);
        change("users " + sub, "user=" + name, [&](sqlite3* db) {
            return sub == "remove" ? removeUser(db, name)
                                   : setUserEnabled(db, name, sub == "enable");
        });
        done(sub + "d user " + name);
    } else if (sub == "role") {
        const std::string& name = a.word(2, "user name");
        const std::string& roleText = a.word(3, "role");
        a.atMost(4);
        int role = roleFromName(roleText);
        if (!role)
            usageError("unknown role '" + roleText + "' (browse, edit or super)");
        change("users role", "user=" + name + " role=" + roleText,
               [&](sqlite3* db) { return setUserRole(db, name, role); });
        done("user " + name + " is now " + roleText);
    } else {
        usageError("unknown users command '" + sub + "'");
    }
}

void cmdEvents(const Args& a)
{
    a.atMost(1);
    int64_t limit = number(a.opt("--limit", "50"), "limit");
    Table t({"id", "time", "user", "address", "method", "operation", "parameters", "outcome",
             "message"});
    read([&](sqlite3* db) {
        Stmt st(db,
                "SELECT id, time, user, addr, method, operation, args, inst_param, outcome, "
                "message FROM"
                " (SELECT * FROM event ORDER BY id DESC LIMIT ?) ORDER BY id");
        st.bind(1, limit);
        while (st.step()) {
            std::string params = st.text(6);
            if (!st.text(7).empty())
                params += " [" + st.text(7) + "]";
            t.add({std::to_string(st.i64(0)), st.text(1), st.text(2), st.text(3), st.text(4),
                   st.text(5), params, st.i64(8) == 0 ? "ok" : "error " + std::to_string(st.i64(8)),
                   st.text(9)});
        }
    });
    print(t);
}

const std::vector<Command>& commands()
{
    static const std::vector<Command> list = {
        {"seed", "zarcli seed\n  Fills an empty array with the demo configuration.", cmdSeed},
        {"show", "zarcli show\n  Shows the system's identity and what the array holds.", cmdShow},
        {"config",
         "zarcli config show\nzarcli config set KEY VALUE\n  KEY: name, host-name, contact, owner, "
         "model, ipv4, ipv6,\n"
         "  policy (bit 4: one host per hardware ID), serial.",
         cmdConfig},
        {"volumes",
         "zarcli volumes [list]\nzarcli volumes create NAME [--size MIB] [--domain D] [--access "
         "rw|ro]\n"
         "zarcli volumes remove NAME...",
         cmdVolumes},
        {"hosts",
         "zarcli hosts [list]\nzarcli hosts create NAME [INITIATOR...] [--wwn WWN]... [--iscsi "
         "NAME]... [--persona N]"
         " [--domain D]\nzarcli hosts remove NAME\nzarcli hosts rename NAME NEWNAME\n"
         "zarcli hosts set NAME [--persona N] [--domain D]",
         cmdHosts},
        {"paths",
         "zarcli paths [list] [--host NAME]\nzarcli paths add HOST INITIATOR... [--override]\n"
         "zarcli paths remove HOST INITIATOR [--force]\nzarcli paths login INITIATOR N:S:P\n"
         "zarcli paths logout INITIATOR N:S:P\n  INITIATOR: 16 hexadecimal digits (FC) or an iSCSI "
         "name.",
         cmdPaths},
        {"hostsets",
         "zarcli hostsets [list]\nzarcli hostsets create NAME [--domain D]\nzarcli hostsets remove "
         "NAME\n"
         "zarcli hostsets add SET HOST\nzarcli hostsets drop SET HOST",
         cmdHostsets},
        {"vluns",
         "zarcli vluns [list] [--active]\nzarcli vluns create VOLUME LUN|auto [--host H | --set S] "
         "[--port N:S:P]"
         " [--override]\nzarcli vluns remove VOLUME LUN [--host H | --set S] [--port N:S:P]\n"
         "  A host and a port: matched set; a host alone: host sees; a set: host set;\n  a port "
         "alone: port present.",
         cmdVluns},
        {"ports",
         "zarcli ports [list]\nzarcli ports create N:S:P fc|iscsi [--ip ADDRESS]\nzarcli ports "
         "remove N:S:P\n"
         "zarcli ports status N:S:P STATUS",
         cmdPorts},
        {"views",
         "zarcli views [--luns] [--chunk N]\n  The views with their device identifiers (--luns: "
         "one line per LU).",
         cmdViews},
        {"users",
         "zarcli users [list]\nzarcli users add NAME --role browse|edit|super\nzarcli users passwd "
         "NAME\n"
         "zarcli users role NAME ROLE\nzarcli users enable|disable|remove NAME\n"
         "  The password is read from standard input when it is not a terminal, else prompted for.",
         cmdUsers},
        {"events", "zarcli events [--limit N]\n  The audit log, newest last.", cmdEvents},
    };
    return list;
}

void mainUsage(std::ostream& out)
{
    out << "usage: zarcli [--db PATH] [--json] COMMAND [ARGS...]\n\n"
           "Administration of the simulated array.  The state file is PATH, else $ZAR_ARRAY_DB,\n"
           "else var/array.db.  Commands:\n";
    for (const Command& c : commands())
        out << "  " << c.name << "\n";
    out << "\n'zarcli COMMAND --help' describes a command.\n";
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        Args a = parse(argc, argv);
        g_json = a.flag("--json");
        if (a.words.empty()) {
            if (a.flag("--help")) {
                mainUsage(std::cout);
                return 0;
            }
            mainUsage(std::cerr);
            return 2;
        }
        const Command* cmd = nullptr;
        for (const Command& c : commands())
            if (a.words[0] == c.name)
                cmd = &c;
        if (!cmd)
            usageError("unknown command '" + a.words[0] + "' (see zarcli --help)");
        if (a.flag("--help")) {
            std::cout << "usage: " << cmd->usage << "\n";
            return 0;
        }
        Result r = a.has("--db") ? openArray(a.opt("--db")) : ensureOpen();
        if (!r.ok())
            throw Failure{1, r.text};
        cmd->run(a);
        closeArray();
        return 0;
    } catch (const Failure& f) {
        std::cerr << "zarcli: " << f.message << "\n";
        if (f.status == 2)
            std::cerr << "(see zarcli --help)\n";
        return f.status;
    } catch (const std::exception& e) {
        std::cerr << "zarcli: " << e.what() << "\n";
        return 1;
    }
}
