#include "Schema.h"

#include <string>

#include "Db.h"

namespace zarsim {

namespace {

const char* kSchemaV1 = R"SQL(
CREATE TABLE system (
  id INTEGER PRIMARY KEY CHECK (id = 1),
  name TEXT NOT NULL,
  host_name TEXT NOT NULL,
  model TEXT NOT NULL,
  serial TEXT NOT NULL,
  system_id INTEGER NOT NULL,
  system_type INTEGER NOT NULL,
  contact TEXT NOT NULL,
  owner TEXT NOT NULL,
  ipv4 TEXT NOT NULL,
  ipv6 TEXT NOT NULL,
  policy INTEGER NOT NULL DEFAULT 0,
  quad_port INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE node (
  id INTEGER PRIMARY KEY CHECK (id BETWEEN 0 AND 7),
  alive INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE port (
  pos INTEGER PRIMARY KEY,
  node INTEGER NOT NULL REFERENCES node(id),
  type INTEGER NOT NULL CHECK (type IN (1, 2)),
  wwn INTEGER UNIQUE,
  iscsi_name TEXT UNIQUE COLLATE NOCASE,
  status INTEGER NOT NULL DEFAULT 3,
  ip TEXT NOT NULL DEFAULT '',
  speed INTEGER NOT NULL DEFAULT 8
);
CREATE TABLE volume (
  id INTEGER PRIMARY KEY,
  name TEXT NOT NULL UNIQUE,
  wwn TEXT NOT NULL UNIQUE COLLATE NOCASE,
  access INTEGER NOT NULL DEFAULT 3,
  domain TEXT NOT NULL DEFAULT '-',
  size_mib INTEGER NOT NULL DEFAULT 1024,
  busy INTEGER NOT NULL DEFAULT 0
);
-- Hosts and host sets share one ID space (is_set tells them apart).
CREATE TABLE host (
  id INTEGER PRIMARY KEY,
  name TEXT NOT NULL,
  is_set INTEGER NOT NULL DEFAULT 0,
  persona INTEGER NOT NULL DEFAULT 2,
  domain TEXT NOT NULL DEFAULT '-',
  UNIQUE (is_set, name)
);
CREATE TABLE hostset_member (
  set_id INTEGER NOT NULL REFERENCES host(id) ON DELETE CASCADE,
  host_id INTEGER NOT NULL REFERENCES host(id) ON DELETE CASCADE,
  PRIMARY KEY (set_id, host_id)
) WITHOUT ROWID;
CREATE INDEX hostset_member_host ON hostset_member(host_id);
-- Initiators (host paths); host_id NULL for one logged in but in no host.
CREATE TABLE initiator (
  id INTEGER PRIMARY KEY,
  type INTEGER NOT NULL CHECK (type IN (1, 2)),
  wwn INTEGER UNIQUE,
  iscsi_name TEXT UNIQUE COLLATE NOCASE,
  host_id INTEGER REFERENCES host(id) ON DELETE SET NULL,
  node_wwn INTEGER NOT NULL DEFAULT 0,
  ip TEXT NOT NULL DEFAULT '',
  hba_vendor TEXT NOT NULL DEFAULT '',
  hba_model TEXT NOT NULL DEFAULT '',
  hba_firmware TEXT NOT NULL DEFAULT '',
  hba_driver TEXT NOT NULL DEFAULT '',
  speed INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX initiator_host ON initiator(host_id);
CREATE TABLE login (
  initiator_id INTEGER NOT NULL REFERENCES initiator(id) ON DELETE CASCADE,
  port INTEGER NOT NULL REFERENCES port(pos) ON DELETE CASCADE,
  PRIMARY KEY (initiator_id, port)
) WITHOUT ROWID;
CREATE INDEX login_port ON login(port);
-- VLUN templates.  owner: host or host set id, 0 for port present;
-- port: 65532 for host sees and host set.
CREATE TABLE template (
  id INTEGER PRIMARY KEY,
  volume_id INTEGER NOT NULL REFERENCES volume(id),
  lun INTEGER NOT NULL,
  kind INTEGER NOT NULL CHECK (kind BETWEEN 1 AND 4),
  owner INTEGER NOT NULL,
  port INTEGER NOT NULL,
  created TEXT NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ', 'now')),
  UNIQUE (kind, owner, port, lun)
);
CREATE INDEX template_volume ON template(volume_id, kind, owner, port);
CREATE INDEX template_owner_lun ON template(owner, lun);
CREATE INDEX template_port_kind_lun ON template(port, kind, lun);
-- One row per view (distinct export target), kept by the triggers below so
-- that the chunked view query walks an index.
CREATE TABLE view (
  kind INTEGER NOT NULL,
  port INTEGER NOT NULL,
  owner INTEGER NOT NULL,
  templates INTEGER NOT NULL,
  PRIMARY KEY (kind, port, owner)
) WITHOUT ROWID;
CREATE TRIGGER template_added AFTER INSERT ON template BEGIN
  INSERT INTO view (kind, port, owner, templates) VALUES (NEW.kind, NEW.port, NEW.owner, 1)
    ON CONFLICT (kind, port, owner) DO UPDATE SET templates = templates + 1;
END;
CREATE TRIGGER template_removed AFTER DELETE ON template BEGIN
  UPDATE view SET templates = templates - 1
    WHERE kind = OLD.kind AND port = OLD.port AND owner = OLD.owner;
  DELETE FROM view WHERE kind = OLD.kind AND port = OLD.port AND owner = OLD.owner AND templates <= 0;
END;
CREATE TABLE user (
  name TEXT PRIMARY KEY,
  role INTEGER NOT NULL CHECK (role BETWEEN 1 AND 3),
  enabled INTEGER NOT NULL DEFAULT 1,
  salt BLOB NOT NULL,
  hash BLOB NOT NULL,
  iterations INTEGER NOT NULL,
  created TEXT NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%SZ', 'now'))
);
-- Lower-case operation names (or "*.operation" for any class) and the
-- lowest role that may run them.
CREATE TABLE auth_rule (
  operation TEXT PRIMARY KEY,
  role INTEGER NOT NULL CHECK (role BETWEEN 1 AND 3)
);
CREATE TABLE event (
  id INTEGER PRIMARY KEY,
  time TEXT NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ', 'now')),
  user TEXT NOT NULL,
  addr TEXT NOT NULL,
  method TEXT NOT NULL,
  operation TEXT NOT NULL,
  inst_op TEXT NOT NULL,
  inst_param TEXT NOT NULL,
  args TEXT NOT NULL,
  outcome INTEGER NOT NULL,
  message TEXT NOT NULL
);
)SQL";

const char* kDefaults = R"SQL(
INSERT INTO system (id, name, host_name, model, serial, system_id, system_type, contact, owner, ipv4, ipv6, policy, quad_port)
  VALUES (1, 'ZAR-ARRAY', 'zar-array', 'ZAR-7400', '1300001', 1300001, 2, '', '', '127.0.0.1', '', 0, 1);
INSERT INTO node (id, alive) VALUES (0, 1), (1, 1);
INSERT INTO auth_rule (operation, role) VALUES
  ('*.getinstance', 1), ('*.enumerateinstances', 1), ('*.enumerateinstancenames', 1),
  ('*.associators', 1), ('*.associatornames', 1), ('*.references', 1), ('*.referencenames', 1),
  ('zar_scsicontroller.modifyinstance', 2),
  ('zar_iscsicontroller.modifyinstance', 2),
  ('zar_controllerconfigurationservice.exposepaths', 2),
  ('zar_controllerconfigurationservice.hidepaths', 2),
  ('zar_controllerconfigurationservice.exposedefaultlus', 2),
  ('zar_controllerconfigurationservice.hidedefaultlus', 2),
  ('zar_controllerconfigurationservice.exposelustostoragehardwareidcollection', 2),
  ('zar_controllerconfigurationservice.hidelusfromstoragehardwareidcollection', 2),
  ('zar_controllerconfigurationservice.deleteprotocolcontroller', 2),
  ('zar_storageconfigurationservice.createormodifyelementfromstoragepool', 2),
  ('zar_storageconfigurationservice.returntostoragepool', 2),
  ('zar_storageconfigurationservice.createreplica', 2),
  ('zar_storageconfigurationservice.modifysynchronization', 2),
  ('zar_storagehardwareidmanagementservice.createstoragehardwareid', 2),
  ('zar_storagehardwareidmanagementservice.deletestoragehardwareid', 2),
  ('zar_internalcache.setpolicy', 3),
  ('zar_account.createinstance', 3),
  ('zar_account.deleteinstance', 3),
  ('zar_account.modifyinstance', 3);
)SQL";

}  // namespace

void ensureSchema(sqlite3* db)
{
    Stmt v(db, "PRAGMA user_version");
    v.step();
    int version = (int)v.i64(0);
    v.reset();
    if (version == kSchemaVersion)
        return;
    if (version != 0)
        throw DbError(SQLITE_ERROR, "array database has schema version " + std::to_string(version) +
                                        ", this build knows version " +
                                        std::to_string(kSchemaVersion));
    exec(db, "BEGIN IMMEDIATE");
    try {
        Stmt again(db, "PRAGMA user_version");
        again.step();
        if (again.i64(0) == 0) {  // another process may have created it meanwhile
            exec(db, kSchemaV1);
            exec(db, kDefaults);
            exec(db, ("PRAGMA user_version = " + std::to_string(kSchemaVersion)).c_str());
        }
        exec(db, "COMMIT");
    } catch (...) {
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

}  // namespace zarsim
