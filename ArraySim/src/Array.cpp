#include "Array.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <mutex>

#include "Control.h"
#include "Db.h"
#include "Schema.h"

namespace zarsim {

namespace {

std::recursive_mutex g_mutex;
sqlite3* g_db = nullptr;
std::string g_path;

void makeParentDir(const std::string& path)
{
    size_t slash = path.rfind('/');
    if (slash == std::string::npos || slash == 0)
        return;
    std::string dir = path.substr(0, slash);
    // Create each missing component.
    for (size_t i = 1; i <= dir.size(); ++i) {
        if (i == dir.size() || dir[i] == '/')
            mkdir(dir.substr(0, i).c_str(), 0750);
    }
}

Result openLocked(const std::string& path)
{
    if (g_db) {
        dropStatementCache(g_db);
        sqlite3_close_v2(g_db);
        g_db = nullptr;
        g_path.clear();
    }
    bool memory = path == ":memory:";
    if (!memory) {
        makeParentDir(path);
        // The state holds password hashes: a new file is the owner's alone
        // (SQLite gives its journal files the same mode).
        int fd = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (fd >= 0)
            close(fd);
    }
    sqlite3* db = nullptr;
    int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX;
    int rc = sqlite3_open_v2(path.c_str(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        std::string msg = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
        sqlite3_close_v2(db);
        log_message(2, "array: cannot open %s: %s\n", path.c_str(), msg.c_str());
        return Result::error(API_E_NOT_OPEN, "Cannot open the array state " + path + ": " + msg);
    }
    try {
        sqlite3_busy_timeout(db, 10000);
        exec(db, "PRAGMA foreign_keys = ON");
        if (!memory) {
            exec(db, "PRAGMA journal_mode = WAL");
            exec(db, "PRAGMA synchronous = FULL");
        }
        ensureSchema(db);
    } catch (const DbError& e) {
        dropStatementCache(db);
        sqlite3_close_v2(db);
        log_message(2, "array: cannot use %s: %s\n", path.c_str(), e.what());
        return Result::error(API_E_NOT_OPEN,
                             "Cannot use the array state " + path + ": " + e.what());
    }
    g_db = db;
    g_path = path;
    log_message(4, "array: opened %s\n", path.c_str());
    return Result::success();
}

void rollback(sqlite3* db)
{
    if (!sqlite3_get_autocommit(db))
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
}

void recordEvent(sqlite3* db, const char* operation, const Caller& c, const std::string& args,
                 const Result& r)
{
    Stmt st(db,
            "INSERT INTO event (user, addr, method, operation, inst_op, inst_param, args, outcome, "
            "message)"
            " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
    st.bind(1, c.user).bind(2, c.addr).bind(3, c.method).bindText(4, operation);
    st.bind(5, c.instOp)
        .bind(6, c.instParam)
        .bind(7, args)
        .bind(8, (int64_t)r.code)
        .bind(9, r.text);
    st.run();
}

}  // namespace

Caller Caller::from(const api_evtparam_t* ev)
{
    Caller c;
    if (!ev)
        return c;
    auto field = [](const char* p, size_t n) { return std::string(p, strnlen(p, n)); };
    c.user = field(ev->user, sizeof ev->user);
    c.addr = field(ev->addr, sizeof ev->addr);
    c.method = field(ev->method, sizeof ev->method);
    c.instOp = field(ev->inst_op, sizeof ev->inst_op);
    c.instParam = field(ev->inst_param, sizeof ev->inst_param);
    if (c.user.empty())
        c.user = "-";
    if (c.addr.empty())
        c.addr = "-";
    if (c.method.empty())
        c.method = "-";
    return c;
}

std::string defaultDbPath()
{
    const char* env = getenv("ZAR_ARRAY_DB");
    if (env && *env)
        return env;
    return "var/array.db";
}

Result openArray(const std::string& path)
{
    std::lock_guard<std::recursive_mutex> lock(g_mutex);
    return openLocked(path);
}

Result ensureOpen()
{
    std::lock_guard<std::recursive_mutex> lock(g_mutex);
    if (g_db)
        return Result::success();
    return openLocked(defaultDbPath());
}

void closeArray()
{
    std::lock_guard<std::recursive_mutex> lock(g_mutex);
    if (g_db) {
        dropStatementCache(g_db);
        sqlite3_close_v2(g_db);
    }
    g_db = nullptr;
    g_path.clear();
}

std::string openPath()
{
    std::lock_guard<std::recursive_mutex> lock(g_mutex);
    return g_path;
}

namespace {

// A fingerprint of every user's name, role, state and password hash: it
// changes with any change to the users, made by any process.
uint64_t usersFingerprint(sqlite3* db)
{
    Stmt st(db, "SELECT name, role, enabled, hash FROM user ORDER BY name");
    uint64_t h = 1469598103934665603ULL;  // FNV-1a
    auto mix = [&](const void* p, size_t n) {
        for (size_t i = 0; i < n; ++i)
            h = (h ^ static_cast<const unsigned char*>(p)[i]) * 1099511628211ULL;
    };
    while (st.step()) {
        for (int col = 0; col < 4; ++col) {
            std::string v = st.text(col);
            mix(v.data(), v.size() + 1);  // with its terminating NUL as a separator
        }
    }
    return h;
}

// A connection of its own that watches the state file: SQLite's
// data_version changes when any other connection (this process's own or
// zarcli's) commits, and only then is the fingerprint read again.
std::mutex g_watchMutex;
sqlite3* g_watch = nullptr;
std::string g_watchPath;
int64_t g_watchVersion = -1;
uint64_t g_watchFingerprint = 0;

}  // namespace

uint64_t usersGeneration()
{
    std::string path = openPath();
    if (path.empty() || path == ":memory:") {
        uint64_t h = 0;
        readArray("zar_usersGeneration", [&](sqlite3* db) {
            h = usersFingerprint(db);
            return Result::success();
        });
        return h;
    }
    std::lock_guard<std::mutex> lock(g_watchMutex);
    try {
        if (g_watch && g_watchPath != path) {
            dropStatementCache(g_watch);
            sqlite3_close_v2(g_watch);
            g_watch = nullptr;
        }
        if (!g_watch) {
            if (sqlite3_open_v2(path.c_str(), &g_watch, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                                nullptr) != SQLITE_OK) {
                std::string msg = g_watch ? sqlite3_errmsg(g_watch) : "out of memory";
                sqlite3_close_v2(g_watch);
                g_watch = nullptr;
                throw DbError(SQLITE_CANTOPEN, msg);
            }
            sqlite3_busy_timeout(g_watch, 10000);
            g_watchPath = path;
            g_watchVersion = -1;
        }
        Stmt v(g_watch, "PRAGMA data_version");
        v.step();
        int64_t version = v.i64(0);
        if (version != g_watchVersion) {
            g_watchFingerprint = usersFingerprint(g_watch);
            g_watchVersion = version;
        }
        return g_watchFingerprint;
    } catch (const DbError& e) {
        // Unknown: a value no state has, so that nothing remembered is trusted.
        log_message(2, "array: cannot read the users' state: %s\n", e.what());
        g_watchVersion = -1;
        return ++g_watchFingerprint;
    }
}

Result readArray(const char* operation, const std::function<Result(sqlite3*)>& fn)
{
    applyDelay(operation);
    std::lock_guard<std::recursive_mutex> lock(g_mutex);
    int code = 0;
    std::string text;
    if (takeFault(operation, &code, &text))
        return Result::error(code, text);
    Result opened = g_db ? Result::success() : openLocked(defaultDbPath());
    if (!opened.ok())
        return opened;
    try {
        exec(g_db, "BEGIN");
        Result r = fn(g_db);
        exec(g_db, "COMMIT");
        return r;
    } catch (const DbError& e) {
        rollback(g_db);
        log_message(2, "array: %s failed: %s\n", operation, e.what());
        return Result::error(API_E_FAILED, std::string("Internal error of the array: ") + e.what());
    } catch (const std::bad_alloc&) {
        rollback(g_db);
        return Result::error(API_E_NO_MEMORY, "Out of memory");
    }
}

Result changeArray(const char* operation, const Caller& caller, const std::string& args,
                   const std::function<Result(sqlite3*)>& fn)
{
    applyDelay(operation);
    std::lock_guard<std::recursive_mutex> lock(g_mutex);
    int code = 0;
    std::string text;
    if (takeFault(operation, &code, &text))
        return Result::error(code, text);
    Result opened = g_db ? Result::success() : openLocked(defaultDbPath());
    if (!opened.ok())
        return opened;
    Result r;
    try {
        exec(g_db, "BEGIN IMMEDIATE");
        r = fn(g_db);
        if (r.ok()) {
            recordEvent(g_db, operation, caller, args, r);
            exec(g_db, "COMMIT");
            log_message(4, "array: %s by %s from %s: %s\n", operation, caller.user.c_str(),
                        caller.addr.c_str(), args.c_str());
            return r;
        }
        rollback(g_db);
    } catch (const DbError& e) {
        rollback(g_db);
        log_message(2, "array: %s failed: %s\n", operation, e.what());
        r = Result::error(API_E_FAILED, std::string("Internal error of the array: ") + e.what());
    } catch (const std::bad_alloc&) {
        rollback(g_db);
        r = Result::error(API_E_NO_MEMORY, "Out of memory");
    }
    // A refused change is recorded too, in its own transaction.
    log_message(3, "array: %s by %s refused (%d): %s\n", operation, caller.user.c_str(), r.code,
                r.text.c_str());
    try {
        recordEvent(g_db, operation, caller, args, r);
    } catch (const DbError& e) {
        log_message(2, "array: cannot record event of %s: %s\n", operation, e.what());
    }
    return r;
}

int toStatus(const Result& r, api_status_t* status)
{
    if (status) {
        if (r.ok())
            api_initStatus(status);
        else
            errinfo_set_str(status, r.code, r.text.c_str());
    }
    return r.code;
}

int toErrText(const Result& r, char* buffer, int size)
{
    if (buffer && size > 0)
        copyField(buffer, (size_t)size, r.ok() ? std::string() : r.text);
    return r.code;
}

void copyField(char* dst, size_t n, const std::string& text)
{
    if (!dst || n == 0)
        return;
    size_t len = text.size() < n - 1 ? text.size() : n - 1;
    memcpy(dst, text.data(), len);
    dst[len] = '\0';
}

}  // namespace zarsim
