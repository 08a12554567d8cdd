// Db.h - a thin C++ layer over the SQLite C API: statements with bound
// parameters, and an error type that carries the SQLite message.
#ifndef ZARSIM_DB_H
#define ZARSIM_DB_H

#include <sqlite3.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace zarsim {

// Thrown when SQLite reports an error that is not a rule of the array.
class DbError : public std::runtime_error {
public:
    DbError(int rc, const std::string& what) : std::runtime_error(what), rc_(rc) {}
    int rc() const { return rc_; }

private:
    int rc_;
};

// One prepared statement, taken from a per-connection cache of prepared
// statements and given back (reset) when destroyed.  Parameters are bound by position (1-based)
// with bind(); step() returns true while a row is available.
class Stmt {
public:
    Stmt(sqlite3* db, const char* sql);
    ~Stmt();
    Stmt(const Stmt&) = delete;
    Stmt& operator=(const Stmt&) = delete;

    Stmt& bind(int i, int64_t v);
    Stmt& bind(int i, const std::string& v);
    Stmt& bindText(int i, const char* v);  // NULL binds SQL NULL
    Stmt& bindNull(int i);
    // The highest parameter index the statement uses.
    int params() const { return sqlite3_bind_parameter_count(st_); }

    bool step();  // true: a row is ready
    void run();   // steps to the end, ignoring rows
    void reset();

    int64_t i64(int col) const;
    std::string text(int col) const;
    bool isNull(int col) const;

private:
    sqlite3* db_;
    sqlite3_stmt* st_ = nullptr;
};

// Runs SQL without results (several statements allowed).
void exec(sqlite3* db, const char* sql);

// Finalizes the cached statements of a connection; call before closing it.
void dropStatementCache(sqlite3* db);

}  // namespace zarsim

#endif
