#include "Db.h"

#include <cstdint>
#include <map>
#include <mutex>

namespace zarsim {

namespace {

std::mutex g_cacheMutex;
std::multimap<std::pair<sqlite3*, std::string>, sqlite3_stmt*> g_cache;

sqlite3_stmt* takeCached(sqlite3* db, const char* sql)
{
    std::lock_guard<std::mutex> lock(g_cacheMutex);
    auto it = g_cache.find(std::make_pair(db, std::string(sql)));
    if (it == g_cache.end())
        return nullptr;
    sqlite3_stmt* st = it->second;
    g_cache.erase(it);
    return st;
}

void giveBack(sqlite3* db, sqlite3_stmt* st)
{
    sqlite3_reset(st);
    sqlite3_clear_bindings(st);
    std::lock_guard<std::mutex> lock(g_cacheMutex);
    g_cache.emplace(std::make_pair(db, std::string(sqlite3_sql(st))), st);
}

}  // namespace

void dropStatementCache(sqlite3* db)
{
    std::lock_guard<std::mutex> lock(g_cacheMutex);
    for (auto it = g_cache.begin(); it != g_cache.end();) {
        if (it->first.first == db) {
            sqlite3_finalize(it->second);
            it = g_cache.erase(it);
        } else {
            ++it;
        }
    }
}

static void check(sqlite3* db, int rc, const char* what)
{
    if (rc != SQLITE_OK && rc != SQLITE_ROW && rc != SQLITE_DONE)
        throw DbError(rc, std::string(what) + ": " + sqlite3_errmsg(db));
}

Stmt::Stmt(sqlite3* db, const char* sql) : db_(db)
{
    st_ = takeCached(db, sql);
    if (!st_)
        check(db, sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &st_, nullptr), sql);
}

Stmt::~Stmt()
{
    if (st_)
        giveBack(db_, st_);
}

Stmt& Stmt::bind(int i, int64_t v)
{
    check(db_, sqlite3_bind_int64(st_, i, v), "bind");
    return *this;
}

Stmt& Stmt::bind(int i, const std::string& v)
{
    check(db_, sqlite3_bind_text(st_, i, v.data(), (int)v.size(), SQLITE_TRANSIENT), "bind");
    return *this;
}

Stmt& Stmt::bindText(int i, const char* v)
{
    if (!v)
        return bindNull(i);
    check(db_, sqlite3_bind_text(st_, i, v, -1, SQLITE_TRANSIENT), "bind");
    return *this;
}

Stmt& Stmt::bindNull(int i)
{
    check(db_, sqlite3_bind_null(st_, i), "bind");
    return *this;
}

bool Stmt::step()
{
    int rc = sqlite3_step(st_);
    if (rc == SQLITE_ROW)
        return true;
    if (rc == SQLITE_DONE)
        return false;
    throw DbError(rc, std::string("step: ") + sqlite3_errmsg(db_));
}

void Stmt::run()
{
    while (step()) {
    }
}

void Stmt::reset()
{
    sqlite3_reset(st_);
    sqlite3_clear_bindings(st_);
}

int64_t Stmt::i64(int col) const
{
    return sqlite3_column_int64(st_, col);
}

std::string Stmt::text(int col) const
{
    const unsigned char* p = sqlite3_column_text(st_, col);
    return p ? std::string(reinterpret_cast<const char*>(p), sqlite3_column_bytes(st_, col))
             : std::string();
}

bool Stmt::isNull(int col) const
{
    return sqlite3_column_type(st_, col) == SQLITE_NULL;
}

void exec(sqlite3* db, const char* sql)
{
    char* err = nullptr;
    int rc = sqlite3_exec(db, sql, nullptr, nullptr, &err);
    if (rc != SQLITE_OK) {
        std::string msg = err ? err : sqlite3_errstr(rc);
        sqlite3_free(err);
        throw DbError(rc, msg);
    }
}

}  // namespace zarsim
