// Array.h - the process-wide connection to the simulated array's state and
// the two ways to use it: a read (one consistent snapshot) and a change (one
// transaction, recorded in the audit log with its outcome).
#ifndef ZARSIM_ARRAY_H
#define ZARSIM_ARRAY_H

#include <sqlite3.h>

#include <functional>
#include <string>

#include <zarapi.h>

namespace zarsim {

// Outcome of an operation: an array error code (API_E_*) and its text.
struct Result {
    int code = 0;
    std::string text;
    bool ok() const { return code == 0; }
    static Result success() { return Result(); }
    static Result error(int code, std::string text)
    {
        Result r;
        r.code = code;
        r.text = std::move(text);
        return r;
    }
};

// Who asks for a change: copied from an event-parameter block.
struct Caller {
    std::string user = "-";
    std::string addr = "-";
    std::string method = "-";
    std::string instOp;
    std::string instParam;
    static Caller from(const api_evtparam_t* ev);
};

// The state file named by ZAR_ARRAY_DB, else var/array.db of the current
// directory.
std::string defaultDbPath();

// Opens the array at path (":memory:" for a private in-memory array),
// replacing any open one.  Creates the file, its directory and the schema
// when missing.
Result openArray(const std::string& path);

// Opens the default array unless one is open.
Result ensureOpen();

// Closes the array (the next call opens the default one again).
void closeArray();

// The path of the open array, empty when none.
std::string openPath();

// Runs fn on the open array inside one read transaction.  operation names the
// public call (for fault injection and logs).  Database failures become
// API_E_FAILED.
Result readArray(const char* operation, const std::function<Result(sqlite3*)>& fn);

// A value that changes whenever a user is added, removed, enabled or
// disabled, or changes password or role, whichever process made the change.
uint64_t usersGeneration();

// Runs fn inside one write transaction; commits when fn succeeds, rolls back
// otherwise, and records the outcome in the audit log (args describes the
// call's arguments).
Result changeArray(const char* operation, const Caller& caller, const std::string& args,
                   const std::function<Result(sqlite3*)>& fn);

// Copies a result into a status record (may be NULL) and returns its code.
int toStatus(const Result& r, api_status_t* status);

// Copies a result's text into a caller's buffer and returns its code.
int toErrText(const Result& r, char* buffer, int size);

// Copies text into a fixed field of n bytes, cut and terminated.
void copyField(char* dst, size_t n, const std::string& text);

}  // namespace zarsim

#endif
