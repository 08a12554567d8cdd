// Model.h - the rules of the simulated array.  Each function works inside a
// transaction that the caller holds (see Array.h) and returns the array's
// answer as a Result; none commits or logs by itself.
#ifndef ZARSIM_MODEL_H
#define ZARSIM_MODEL_H

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <vector>

#include <zarapi.h>

#include "Array.h"

namespace zarsim {

// ---- System ---------------------------------------------------------------

struct SystemRow {
    std::string name, hostName, model, serial, contact, owner, ipv4, ipv6;
    uint32_t systemId = 0;
    int systemType = 0;
    uint32_t policy = 0;
    bool quadPort = false;
};
SystemRow loadSystem(sqlite3* db);
uint32_t systemSerial(sqlite3* db);

// Sets one configuration value: name, host-name, contact, owner, ipv4, ipv6,
// policy, model, serial.
Result setConfig(sqlite3* db, const std::string& key, const std::string& value);

// ---- Nodes and ports ------------------------------------------------------

Result addNode(sqlite3* db, int node);
Result setNodeAlive(sqlite3* db, int node, bool alive);

struct PortRow {
    lpid_t pos = API_PORT_NONE;
    int type = 0;
    uint64_t wwn = 0;
    std::string iscsiName;
    int status = PORT_OK;
    std::string ip;
    int speed = 0;
    int logins = 0;
};
Result addPort(sqlite3* db, lpid_t pos, int type, int status, const std::string& ip);
Result removePort(sqlite3* db, lpid_t pos);
Result setPortStatus(sqlite3* db, lpid_t pos, int status);
std::vector<PortRow> listPorts(sqlite3* db);
bool findPort(sqlite3* db, lpid_t pos, PortRow* out);

// ---- Volumes --------------------------------------------------------------

struct VolumeRow {
    int64_t id = 0;
    std::string name, wwn, domain;
    int access = VOL_MODE_READWRITE;
    int64_t sizeMiB = 0;
    bool busy = false;
    int64_t vluns = 0;  // non-zero when exported (findVolume gives 0 or 1)
};
Result createVolume(sqlite3* db, const std::string& name, int64_t sizeMiB,
                    const std::string& domain, int access, std::string* wwnOut);
// All or nothing; API_E_VV_NOT_FOUND or API_E_VV_BUSY.
Result removeVolumes(sqlite3* db, const std::vector<std::string>& names);
Result setVolumeBusy(sqlite3* db, const std::string& name, bool busy);
// By element name or WWN text (case-insensitive for the WWN).
bool findVolume(sqlite3* db, const std::string& nameOrWwn, VolumeRow* out);

// ---- Hosts, host sets, initiators -----------------------------------------

struct HostRow {
    int64_t id = 0;
    std::string name;  // without the set prefix
    bool isSet = false;
    int persona = 0;
    std::string domain;
    // The name as the library shows it ("set:NAME" for a set).
    std::string shownName() const { return isSet ? std::string(API_HOSTSET_PREFIX) + name : name; }
};
// A host by name, or a host set by "set:NAME".
bool findHost(sqlite3* db, const std::string& shownName, HostRow* out);
bool findHostById(sqlite3* db, int64_t id, HostRow* out);
std::vector<HostRow> listHosts(sqlite3* db);

// An initiator as given by a client: a 16-digit WWN or an iSCSI name.
struct Initiator {
    int type = PORT_TYPE_UNKNOWN;
    uint64_t wwn = 0;
    std::string iscsiName;
    std::string text() const;
};
Result parseInitiator(const std::string& text, Initiator* out);

Result createHost(sqlite3* db, const std::string& name, const std::vector<Initiator>& paths,
                  int persona, const std::string& domain);
Result addPaths(sqlite3* db, const std::string& host, const std::vector<Initiator>& paths,
                bool override);
Result removePath(sqlite3* db, const std::string& host, const Initiator& path, bool force);
Result removeHost(sqlite3* db, const std::string& host);
Result setHost(sqlite3* db, const std::string& host, const api_host_change_t& change);

Result createHostSet(sqlite3* db, const std::string& name, const std::string& domain);
Result removeHostSet(sqlite3* db, const std::string& name);
Result hostSetAdd(sqlite3* db, const std::string& set, const std::string& host);
Result hostSetRemove(sqlite3* db, const std::string& set, const std::string& host);

Result login(sqlite3* db, const Initiator& who, lpid_t pos);
Result logout(sqlite3* db, const Initiator& who, lpid_t pos);

// Host path entries as api_getHostPaths returns them.
Result hostPaths(sqlite3* db, const std::string& wwn, const std::string& iscsi,
                 const std::string& host, bool detail, std::vector<api_hardwareID>* out);

// ---- VLUNs ----------------------------------------------------------------

// The target of an export: kind API_VLUN_*, owner (host or set id, 0 for
// port present) and port (API_PORT_NONE for host sees and host set).
struct Target {
    unsigned kind = 0;
    int64_t owner = 0;
    lpid_t port = API_PORT_NONE;
    std::string ownerName;  // as shown, for messages
};
// Resolves the addressing of api_createVLUN / api_removeVLUN.
Result resolveTarget(sqlite3* db, const std::string& hostname, uint64_t hostWwn,
                     const std::string& hostIscsi, lpid_t port, Target* out);
Result createVlun(sqlite3* db, const std::string& volumeWwn, uint32_t* lun, const Target& target,
                  bool override);
Result removeVlun(sqlite3* db, const std::string& volumeWwn, uint32_t lun, const Target& target);

struct ActiveVlun {
    std::string volume, host;
    uint32_t lun = 0;
    lpid_t port = API_PORT_NONE;
    unsigned kind = 0;
};
// Every active VLUN: a template with a host that has a path logged in on a
// port the template allows.
std::vector<ActiveVlun> activeVluns(sqlite3* db);

// ---- Views ----------------------------------------------------------------

// One record per template (and per port type / default view) matching the
// criteria of q; templatesOnly gives the template query's records.
Result exportRecords(sqlite3* db, const api_vlunsInfo_t& q, bool templatesOnly,
                     std::vector<vlun>* out);

// The next chunk of view records after the cursor.
Result viewChunk(sqlite3* db, const api_vlunsInfo_t& q, api_spc_param_data* cursor, uint32_t chunk,
                 std::vector<vlun>* out, bool* more);

// ---- Users ----------------------------------------------------------------

int roleFromName(const std::string& role);  // 0 when unknown
const char* roleName(int role);
Result addUser(sqlite3* db, const std::string& name, const std::string& password, int role);
Result removeUser(sqlite3* db, const std::string& name);
Result setUserEnabled(sqlite3* db, const std::string& name, bool enabled);
Result setUserPassword(sqlite3* db, const std::string& name, const std::string& password);
Result setUserRole(sqlite3* db, const std::string& name, int role);
// The role of an enabled user, 0 otherwise.
int userRole(sqlite3* db, const std::string& name);
// True for the OS user name of this process: the CIM server's own
// principal (its local connection runs under it), trusted by the array as
// a real array trusts the server on its management node.
bool isServerPrincipal(const std::string& name);
// The role that the access checks give name: super for the server's own
// principal, else userRole.
int principalRole(sqlite3* db, const std::string& name);
// A user's stored password hash, read under the array lock and checked
// outside it (the check is slow on purpose).
struct Credential {
    bool known = false, enabled = false;
    std::string salt, hash;
    int iterations = 0;
};
Credential loadCredential(sqlite3* db, const std::string& name);
bool verifyCredential(const Credential& c, const std::string& password);
// 0 allowed, 1 unknown or disabled user, 2 role too low, 3 unknown operation;
// the server's own principal has the super role.
int authorize(sqlite3* db, const std::string& user, const std::string& operation);

// ---- Demo -----------------------------------------------------------------

Result seedDemo(sqlite3* db);

}  // namespace zarsim

#endif
