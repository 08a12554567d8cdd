// Array users: roles, salted PBKDF2 password hashes, and the rules that map
// operation names to the roles allowed to run them.
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>
#include <pwd.h>
#include <unistd.h>

#include <cctype>
#include <cstring>
#include <string>

#include <zarauth.h>

#include "Control.h"
#include "Db.h"
#include "Model.h"
#include "Text.h"

namespace zarsim {

namespace {

constexpr int kSaltLen = 16;
constexpr int kHashLen = 32;

bool derive(const std::string& password, const unsigned char* salt, int iterations,
            unsigned char* out)
{
    return PKCS5_PBKDF2_HMAC(password.data(), (int)password.size(), salt, kSaltLen, iterations,
                             EVP_sha256(), kHashLen, out) == 1;
}

Result storeHash(sqlite3* db, const std::string& name, const std::string& password, int role,
                 bool insert)
{
    if (password.size() < 8)
        return Result::error(API_E_INVALID_ARG, "Password must have at least 8 characters");
    if (password.size() > 256)
        return Result::error(API_E_INVALID_ARG, "Password is longer than 256 characters");
    unsigned char salt[kSaltLen], hash[kHashLen];
    if (RAND_bytes(salt, kSaltLen) != 1)
        return Result::error(API_E_FAILED, "No random data for the password salt");
    int iterations = hashIterations();
    if (!derive(password, salt, iterations, hash))
        return Result::error(API_E_FAILED, "Password hashing failed");
    const char* sql =
        insert ? "INSERT INTO user (salt, hash, iterations, name, role) VALUES (?, ?, ?, ?, ?)"
               : "UPDATE user SET salt = ?, hash = ?, iterations = ? WHERE name = ?";
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &st, nullptr) != SQLITE_OK)
        throw DbError(SQLITE_ERROR, sqlite3_errmsg(db));
    sqlite3_bind_blob(st, 1, salt, kSaltLen, SQLITE_TRANSIENT);
    sqlite3_bind_blob(st, 2, hash, kHashLen, SQLITE_TRANSIENT);
    sqlite3_bind_int(st, 3, iterations);
    sqlite3_bind_text(st, 4, name.c_str(), -1, SQLITE_TRANSIENT);
    if (insert)
        sqlite3_bind_int(st, 5, role);
    int rc = sqlite3_step(st);
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE)
        throw DbError(rc, sqlite3_errmsg(db));
    if (!insert && sqlite3_changes(db) == 0)
        return Result::error(API_E_USER_NOT_FOUND, "User " + name + " does not exist");
    return Result::success();
}

std::string checkUserName(const std::string& name)
{
    if (name.empty() || name.size() > 31)
        return "User name must have 1 to 31 characters";
    for (char c : name)
        if (!(isalnum((unsigned char)c) || c == '-' || c == '_' || c == '.'))
            return "User name " + name + " holds an invalid character";
    return std::string();
}

}  // namespace

int roleFromName(const std::string& role)
{
    if (role == "browse")
        return ZAR_ROLE_BROWSE;
    if (role == "edit")
        return ZAR_ROLE_EDIT;
    if (role == "super")
        return ZAR_ROLE_SUPER;
    return ZAR_ROLE_NONE;
}

const char* roleName(int role)
{
    switch (role) {
        case ZAR_ROLE_BROWSE:
            return "browse";
        case ZAR_ROLE_EDIT:
            return "edit";
        case ZAR_ROLE_SUPER:
            return "super";
        default:
            return "none";
    }
}

Result addUser(sqlite3* db, const std::string& name, const std::string& password, int role)
{
    std::string bad = checkUserName(name);
    if (!bad.empty())
        return Result::error(API_E_INVALID_ARG, bad);
    if (role < ZAR_ROLE_BROWSE || role > ZAR_ROLE_SUPER)
        return Result::error(API_E_INVALID_ARG, "Role must be browse, edit or super");
    Stmt st(db, "SELECT 1 FROM user WHERE name = ?");
    if (st.bind(1, name).step())
        return Result::error(API_E_EXISTS, "User " + name + " already exists");
    return storeHash(db, name, password, role, true);
}

Result removeUser(sqlite3* db, const std::string& name)
{
    Stmt st(db, "DELETE FROM user WHERE name = ?");
    st.bind(1, name).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_USER_NOT_FOUND, "User " + name + " does not exist");
    return Result::success();
}

Result setUserEnabled(sqlite3* db, const std::string& name, bool enabled)
{
    Stmt st(db, "UPDATE user SET enabled = ? WHERE name = ?");
    st.bind(1, (int64_t)enabled).bind(2, name).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_USER_NOT_FOUND, "User " + name + " does not exist");
    return Result::success();
}

Result setUserPassword(sqlite3* db, const std::string& name, const std::string& password)
{
    return storeHash(db, name, password, 0, false);
}

Result setUserRole(sqlite3* db, const std::string& name, int role)
{
    if (role < ZAR_ROLE_BROWSE || role > ZAR_ROLE_SUPER)
        return Result::error(API_E_INVALID_ARG, "Role must be browse, edit or super");
    Stmt st(db, "UPDATE user SET role = ? WHERE name = ?");
    st.bind(1, (int64_t)role).bind(2, name).run();
    if (sqlite3_changes(db) == 0)
        return Result::error(API_E_USER_NOT_FOUND, "User " + name + " does not exist");
    return Result::success();
}

int userRole(sqlite3* db, const std::string& name)
{
    Stmt st(db, "SELECT role FROM user WHERE name = ? AND enabled = 1");
    return st.bind(1, name).step() ? (int)st.i64(0) : ZAR_ROLE_NONE;
}

bool isServerPrincipal(const std::string& name)
{
    static const std::string own = [] {
        struct passwd entry;
        struct passwd* result = nullptr;
        char buffer[4096];
        if (getpwuid_r(geteuid(), &entry, buffer, sizeof(buffer), &result) == 0 && result &&
            result->pw_name)
            return std::string(result->pw_name);
        return std::string();
    }();
    return !own.empty() && name == own;
}

int principalRole(sqlite3* db, const std::string& name)
{
    return isServerPrincipal(name) ? ZAR_ROLE_SUPER : userRole(db, name);
}

Credential loadCredential(sqlite3* db, const std::string& name)
{
    Credential c;
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(db, "SELECT salt, hash, iterations, enabled FROM user WHERE name = ?",
                           -1, &st, nullptr) != SQLITE_OK)
        throw DbError(SQLITE_ERROR, sqlite3_errmsg(db));
    sqlite3_bind_text(st, 1, name.c_str(), -1, SQLITE_TRANSIENT);
    if (sqlite3_step(st) == SQLITE_ROW && sqlite3_column_bytes(st, 0) == kSaltLen &&
        sqlite3_column_bytes(st, 1) == kHashLen) {
        c.salt.assign((const char*)sqlite3_column_blob(st, 0), kSaltLen);
        c.hash.assign((const char*)sqlite3_column_blob(st, 1), kHashLen);
        c.iterations = sqlite3_column_int(st, 2);
        c.enabled = sqlite3_column_int(st, 3) != 0;
        c.known = true;
    }
    sqlite3_finalize(st);
    return c;
}

bool verifyCredential(const Credential& c, const std::string& password)
{
    unsigned char salt[kSaltLen] = {0}, stored[kHashLen] = {0}, hash[kHashLen];
    int iterations = c.iterations;
    if (c.known) {
        memcpy(salt, c.salt.data(), kSaltLen);
        memcpy(stored, c.hash.data(), kHashLen);
    } else {
        iterations = hashIterations();  // as slow for an unknown user
    }
    if (iterations < 1)
        iterations = 1;
    bool match =
        derive(password, salt, iterations, hash) && CRYPTO_memcmp(hash, stored, kHashLen) == 0;
    return match && c.known && c.enabled;
}

int authorize(sqlite3* db, const std::string& user, const std::string& operation)
{
    int role = principalRole(db, user);
    if (role == ZAR_ROLE_NONE)
        return 1;
    std::string op = lower(operation);
    int needed = 0;
    {
        Stmt st(db, "SELECT role FROM auth_rule WHERE operation = ?");
        if (st.bind(1, op).step())
            needed = (int)st.i64(0);
    }
    if (needed == 0) {
        size_t dot = op.rfind('.');
        if (dot != std::string::npos) {
            Stmt st(db, "SELECT role FROM auth_rule WHERE operation = ?");
            if (st.bind(1, "*" + op.substr(dot)).step())
                needed = (int)st.i64(0);
        }
    }
    if (needed == 0)
        return 3;
    return role >= needed ? 0 : 2;
}

}  // namespace zarsim
