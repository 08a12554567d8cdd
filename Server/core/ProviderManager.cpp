#include "ProviderManager.h"

#include <dlfcn.h>

#include <atomic>
#include <exception>
#include <thread>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/CIMOMHandle.h>

using namespace Pegasus;

namespace zarserver {

namespace {
typedef CIMProvider* (*CreateProviderFunc)(const String&);

String text(const std::string& s)
{
    return String(s.c_str());
}
}  // namespace

struct ProviderManager::Module {
    std::mutex mutex;  // serialises dlopen/dlclose of this library
    std::string path;
    void* handle = nullptr;
    CreateProviderFunc create = nullptr;
    int users = 0;  // providers created from the loaded library
};

struct ProviderManager::Slot {
    std::mutex mutex;  // held while the provider is created and initialized
    std::atomic<CIMProvider*> provider{nullptr};
    std::atomic<std::thread::id> initializer{std::thread::id()};
    Module* module = nullptr;
    CIMOMHandle cimom;
};

ProviderManager::Lease::Lease(Lease&& o) noexcept : _manager(o._manager), _provider(o._provider)
{
    o._manager = nullptr;
    o._provider = nullptr;
}

ProviderManager::Lease& ProviderManager::Lease::operator=(Lease&& o) noexcept
{
    if (this != &o) {
        release();
        _manager = o._manager;
        _provider = o._provider;
        o._manager = nullptr;
        o._provider = nullptr;
    }
    return *this;
}

ProviderManager::Lease::~Lease()
{
    release();
}

void ProviderManager::Lease::release()
{
    if (_manager)
        _manager->endLease();
    _manager = nullptr;
    _provider = nullptr;
}

ProviderManager::ProviderManager(const std::string& providerDir, CoreLogFunction log)
    : _providerDir(providerDir), _log(std::move(log))
{
}

ProviderManager::~ProviderManager()
{
    shutdown();
}

void ProviderManager::endLease()
{
    std::lock_guard<std::mutex> l(_mutex);
    if (--_active == 0)
        _idle.notify_all();
}

ProviderManager::Module* ProviderManager::loadModule(const ProviderInfo& info)
{
    std::string path = _providerDir + "/lib" + info.location + ".so";
    Module* m;
    {
        std::lock_guard<std::mutex> l(_mutex);
        std::unique_ptr<Module>& slot = _modules[path];
        if (!slot) {
            slot.reset(new Module);
            slot->path = path;
        }
        m = slot.get();
    }
    std::lock_guard<std::mutex> l(m->mutex);
    std::string failure = "ProviderLoadFailure (" + path + ":" + info.providerName + "):";
    if (!m->handle) {
        void* h = dlopen(path.c_str(), RTLD_LAZY | RTLD_GLOBAL);
        if (!h) {
            const char* err = dlerror();
            std::string msg =
                failure + "Cannot load library, error: " + (err ? err : "unknown") + ".";
            if (_log)
                _log(LOG_ERROR, "provider module " + info.moduleName + ": " + msg);
            throw CIMException(CIM_ERR_FAILED, text(msg));
        }
        void* sym = dlsym(h, "PegasusCreateProvider");
        if (!sym) {
            dlclose(h);
            std::string msg = failure + "entry point not found.";
            if (_log)
                _log(LOG_ERROR, "provider module " + info.moduleName + ": " + msg);
            throw CIMException(CIM_ERR_FAILED, text(msg));
        }
        m->handle = h;
        m->create = reinterpret_cast<CreateProviderFunc>(sym);
        if (_log)
            _log(LOG_INFO, "loaded provider module " + info.moduleName + " from " + path);
    }
    ++m->users;
    return m;
}

void ProviderManager::releaseModule(Module* m)
{
    std::lock_guard<std::mutex> l(m->mutex);
    if (--m->users == 0 && m->handle) {
        dlclose(m->handle);
        m->handle = nullptr;
        m->create = nullptr;
    }
}

ProviderManager::Lease ProviderManager::acquire(const ProviderInfo& info)
{
    Slot* slot;
    {
        std::lock_guard<std::mutex> l(_mutex);
        if (_shutdown)
            throw CIMException(CIM_ERR_FAILED, "The server is shutting down.");
        std::unique_ptr<Slot>& s = _slots[info.moduleName + "|" + info.providerName];
        if (!s)
            s.reset(new Slot);
        slot = s.get();
        ++_active;  // counted before creation so that shutdown() waits for it
    }
    Lease lease;
    lease._manager = this;
    if (slot->provider.load()) {
        lease._provider = slot->provider.load();
        return lease;
    }
    if (slot->initializer.load() == std::this_thread::get_id())
        throw CIMException(CIM_ERR_FAILED, text("provider " + info.providerName +
                                                " called back into itself while initializing"));
    std::lock_guard<std::mutex> l(slot->mutex);
    if (!slot->provider.load()) {
        Module* m = loadModule(info);
        std::string failure = "ProviderLoadFailure (" + m->path + ":" + info.providerName + "):";
        CIMProvider* p = nullptr;
        try {
            p = m->create(text(info.providerName));
        } catch (...) {
            p = nullptr;
        }
        if (!p) {
            releaseModule(m);
            std::string msg = failure + "provider is not a CIMProvider.";
            if (_log)
                _log(LOG_ERROR, msg);
            throw CIMException(CIM_ERR_FAILED, text(msg));
        }
        slot->initializer.store(std::this_thread::get_id());
        std::string why;
        try {
            p->initialize(slot->cimom);
        } catch (const Exception& e) {
            why = (const char*)e.getMessage().getCString();
        } catch (const std::exception& e) {
            why = e.what();
        } catch (...) {
            why = "Unknown error.";
        }
        slot->initializer.store(std::thread::id());
        if (!why.empty()) {
            if (_log)
                _log(LOG_ERROR, "provider " + info.providerName + " of module " + info.moduleName +
                                    ": initialize failed: " + why);
            try {
                p->terminate();
            } catch (...) {
            }
            releaseModule(m);
            throw CIMException(CIM_ERR_FAILED, "provider initialization failed");
        }
        slot->module = m;
        slot->provider.store(p);
        if (_log)
            _log(LOG_INFO, "provider " + info.providerName + " initialized");
    }
    lease._provider = slot->provider.load();
    return lease;
}

bool ProviderManager::isLoaded(const ProviderInfo& info) const
{
    std::lock_guard<std::mutex> l(_mutex);
    auto it = _slots.find(info.moduleName + "|" + info.providerName);
    return it != _slots.end() && it->second->provider.load() != nullptr;
}

void ProviderManager::shutdown()
{
    std::unique_lock<std::mutex> l(_mutex);
    if (_shutdown)
        return;
    _shutdown = true;
    _idle.wait(l, [this] { return _active == 0; });
    std::vector<std::pair<std::string, Slot*>> slots;
    for (auto& kv : _slots)
        slots.emplace_back(kv.first, kv.second.get());
    l.unlock();
    for (auto& s : slots) {
        CIMProvider* p = s.second->provider.exchange(nullptr);
        if (!p)
            continue;
        try {
            p->terminate();  // by convention ends with "delete this"
        } catch (...) {
            if (_log)
                _log(LOG_WARNING, "provider " + s.first + ": terminate failed");
        }
        releaseModule(s.second->module);
        s.second->module = nullptr;
    }
    if (_log)
        _log(LOG_INFO, "providers terminated");
}

}  // namespace zarserver
