// ServerCore: the CIM server without its transports.
//
// Loads the class repository and the provider registrations from MOF, owns the
// provider manager and the dispatcher, and registers the dispatcher as the
// process's local operation host (so that providers' CIMOMHandles and
// CIMClient::connectLocal() reach it). The CIM-XML front end (HTTP, HTTPS and
// the local socket) decodes requests and calls dispatcher().
#ifndef ZAR_SERVER_CORE_SERVERCORE_H
#define ZAR_SERVER_CORE_SERVERCORE_H

#include <memory>
#include <string>

#include <zarframework/CIMOperationHost.h>

#include "CoreLog.h"

namespace zarserver {

struct CoreConfig {
    // Folder with the schema and registration MOF (see schema/README.md).
    std::string schemaDir;
    // Folder holding the provider modules lib<Location>.so.
    std::string providerDir;
    // Host name put into the object paths that providers receive; empty
    // means the machine's host name.
    std::string hostName;
    // Receives the core's log lines (module loads, provider failures);
    // empty: levels up to LOG_WARNING go to stderr.
    CoreLogFunction log;
};

class ClassRepository;

class ServerCore {
public:
    // Compiles every MOF file of config.schemaDir into the repository and
    // reads the provider registrations. Throws std::runtime_error whose
    // what() names the file, line and column of the first MOF error.
    explicit ServerCore(const CoreConfig& config);

    // Terminates the providers still loaded (see shutdown()).
    ~ServerCore();

    ServerCore(const ServerCore&) = delete;
    ServerCore& operator=(const ServerCore&) = delete;

    // Carries out CIM operations; thread-safe, many requests at once.
    Pegasus::CIMOperationHost& dispatcher();

    // Calls terminate() on every loaded provider and unregisters the local
    // host. Requests that arrive afterwards fail with CIM_ERR_FAILED.
    // Idempotent.
    void shutdown();

    // The host name put into provider-facing object paths.
    const std::string& hostName() const;

    // The classes loaded at start (read-only).
    const ClassRepository& repository() const;

private:
    struct Rep;
    std::unique_ptr<Rep> _rep;
};

}  // namespace zarserver

#endif
