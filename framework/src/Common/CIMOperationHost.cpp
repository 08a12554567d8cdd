// CIMOperationHost: the process-wide registration of the local host.
#include <atomic>

#include <zarframework/CIMOperationHost.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

std::atomic<CIMOperationHost*> localHost(0);

}  // namespace

CIMOperationHost::~CIMOperationHost() {}

void setLocalOperationHost(CIMOperationHost* host)
{
    localHost.store(host, std::memory_order_release);
}

CIMOperationHost* getLocalOperationHost()
{
    return localHost.load(std::memory_order_acquire);
}

PEGASUS_NAMESPACE_END
