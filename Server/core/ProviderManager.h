// ProviderManager: loads provider modules and keeps their providers alive.
//
// A provider is created on the first request routed to it: its module
// lib<Location>.so is opened from the provider folder with
// dlopen(RTLD_LAZY | RTLD_GLOBAL), PegasusCreateProvider(name) is called and
// the result initialized with a CIMOMHandle. Creation and initialization of
// one provider run under that provider's own lock (never a global one), so
// an initialize() may call back into the server, and concurrent first
// requests wait for the one that creates it. Requests run on a provider in
// parallel. Providers are terminated at shutdown(); idle providers are not
// unloaded earlier.
#ifndef ZAR_SERVER_CORE_PROVIDERMANAGER_H
#define ZAR_SERVER_CORE_PROVIDERMANAGER_H

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include <Pegasus/Provider/CIMProvider.h>

#include "CoreLog.h"
#include "ProviderRegistry.h"

namespace zarserver {

class ProviderManager {
    struct Slot;

public:
    // Keeps one provider in use while it lives; shutdown() waits for every
    // lease to end before terminating providers. Movable, not copyable.
    class Lease {
    public:
        Lease() {}
        Lease(Lease&& other) noexcept;
        Lease& operator=(Lease&& other) noexcept;
        ~Lease();
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;

        // The initialized provider (null for an empty lease).
        Pegasus::CIMProvider* provider() const { return _provider; }

    private:
        friend class ProviderManager;
        void release();
        ProviderManager* _manager = nullptr;
        Pegasus::CIMProvider* _provider = nullptr;
    };

    // providerDir holds the modules; log receives load and failure reports.
    ProviderManager(const std::string& providerDir, CoreLogFunction log);

    // Calls shutdown().
    ~ProviderManager();

    ProviderManager(const ProviderManager&) = delete;
    ProviderManager& operator=(const ProviderManager&) = delete;

    // Returns the provider, creating and initializing it first if needed.
    // Throws CIMException CIM_ERR_FAILED with the reason when the module
    // cannot be loaded ("ProviderLoadFailure (<file>:<provider>):..."), the
    // factory returns no provider, initialize() fails ("provider
    // initialization failed"; the provider is terminated and a later
    // request tries again), or after shutdown().
    Lease acquire(const ProviderInfo& info);

    // True if the provider is created and initialized.
    bool isLoaded(const ProviderInfo& info) const;

    // Waits for running requests to end, then calls terminate() on every
    // provider and closes the modules. Later acquire() calls fail.
    // Idempotent.
    void shutdown();

private:
    struct Module;
    Module* loadModule(const ProviderInfo& info);
    void releaseModule(Module* module);
    void endLease();

    std::string _providerDir;
    CoreLogFunction _log;
    mutable std::mutex _mutex;  // guards the maps, _active and _shutdown; never held
                                // while a provider or module runs code
    std::condition_variable _idle;
    std::map<std::string, std::unique_ptr<Slot>> _slots;      // by "module|provider"
    std::map<std::string, std::unique_ptr<Module>> _modules;  // by library path
    int _active = 0;                                          // leases alive
    bool _shutdown = false;
};

}  // namespace zarserver

#endif
