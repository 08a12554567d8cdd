#include "ServerCore.h"

#include <unistd.h>

#include <cstdio>
#include <mutex>
#include <stdexcept>

#include "ClassRepository.h"
#include "Dispatcher.h"
#include "MofError.h"
#include "ProviderManager.h"
#include "ProviderRegistry.h"
#include "SchemaLoader.h"

namespace zarserver {

namespace {

std::string machineHostName()
{
    char buf[256] = {0};
    if (gethostname(buf, sizeof buf - 1) != 0 || buf[0] == '\0')
        return "localhost";
    return buf;
}

CoreLogFunction defaultLog()
{
    return [](int level, const std::string& line) {
        if (level > LOG_WARNING)
            return;
        static std::mutex m;
        std::lock_guard<std::mutex> l(m);
        std::fprintf(stderr, "zar-cimserver: %s\n", line.c_str());
    };
}

}  // namespace

struct ServerCore::Rep {
    std::string hostName;
    CoreLogFunction log;
    ClassRepository repository;
    ProviderRegistry registry;
    std::unique_ptr<ProviderManager> providers;
    std::unique_ptr<Dispatcher> dispatcher;
    std::mutex shutdownMutex;
    bool stopped = false;
};

ServerCore::ServerCore(const CoreConfig& config) : _rep(new Rep)
{
    _rep->hostName = config.hostName.empty() ? machineHostName() : config.hostName;
    _rep->log = config.log ? config.log : defaultLog();
    loadSchema(config.schemaDir, _rep->repository);
    _rep->registry.load(_rep->repository);
    _rep->providers.reset(new ProviderManager(config.providerDir, _rep->log));
    _rep->dispatcher.reset(new Dispatcher(_rep->repository, _rep->registry, *_rep->providers,
                                          _rep->hostName, _rep->log));
    Pegasus::setLocalOperationHost(_rep->dispatcher.get());
    _rep->log(LOG_INFO, "schema loaded from " + config.schemaDir + ": " +
                            std::to_string(_rep->repository.namespaces().size()) + " namespaces, " +
                            std::to_string(_rep->registry.providers().size()) +
                            " registered providers");
}

ServerCore::~ServerCore()
{
    shutdown();
}

Pegasus::CIMOperationHost& ServerCore::dispatcher()
{
    return *_rep->dispatcher;
}

void ServerCore::shutdown()
{
    std::lock_guard<std::mutex> l(_rep->shutdownMutex);
    if (_rep->stopped)
        return;
    _rep->stopped = true;
    _rep->dispatcher->stop();
    _rep->providers->shutdown();
    if (Pegasus::getLocalOperationHost() == _rep->dispatcher.get())
        Pegasus::setLocalOperationHost(nullptr);
}

const std::string& ServerCore::hostName() const
{
    return _rep->hostName;
}

const ClassRepository& ServerCore::repository() const
{
    return _rep->repository;
}

}  // namespace zarserver
