// Schema.h - the SQL schema of the simulated array and its versioning.
#ifndef ZARSIM_SCHEMA_H
#define ZARSIM_SCHEMA_H

#include <sqlite3.h>

namespace zarsim {

// The schema version this build writes (PRAGMA user_version).
constexpr int kSchemaVersion = 1;

// Creates the schema in an empty database, or checks that an existing one
// has a version this build knows; throws DbError otherwise.  Also fills the
// default system record and the authorisation rules of a new database.
void ensureSchema(sqlite3* db);

}  // namespace zarsim

#endif
