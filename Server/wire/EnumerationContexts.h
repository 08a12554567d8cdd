// EnumerationContexts: the open enumerations of the pull operations.
//
// Opening an enumeration starts its operation on a thread of its own; the
// provider delivers through the usual handlers, and each object, already
// written as CIM-XML, waits in the enumeration's queue until a pull takes
// it. The queue holds a bounded number of bytes: a provider that gets ahead
// of its client blocks until the client pulls (or the enumeration is
// closed, which ends the provider's operation with an error). Between
// requests an enumeration lives for its operation timeout; a reaper closes
// the ones that outlive it. Only the user who opened an enumeration, in the
// same namespace, may use it, one request at a time.
#ifndef ZAR_SERVER_WIRE_ENUMERATIONCONTEXTS_H
#define ZAR_SERVER_WIRE_ENUMERATIONCONTEXTS_H

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/String.h>

#include "ResultWriters.h"

namespace zarwire {

struct EnumerationLimits {
    size_t maxOpen = 64;  // open at once in the server
    size_t maxOpenPerUser = 16;
    Pegasus::Uint32 defaultTimeout = 30;  // seconds, when the client names none
    Pegasus::Uint32 maxTimeout = 300;
    Pegasus::Uint32 maxObjectCount = 10000;  // per open or pull request
    size_t queueBytes = 256 * 1024;          // produced, not yet pulled, per enumeration
};

// What the enumeration's objects are; a pull must ask for the same.
enum class EnumerationKind { InstancesWithPath, InstancePaths };

class Enumeration {
public:
    using Clock = std::chrono::steady_clock;

    Enumeration(const std::string& id, const std::string& user, const Pegasus::CIMNamespaceName& ns,
                EnumerationKind kind, Pegasus::Uint32 timeoutSeconds, size_t queueBytes);

    const std::string& id() const { return _id; }
    EnumerationKind kind() const { return _kind; }

    // Hands up to max objects to write, in order, waiting for the provider
    // while it runs. Returns true at the end of the sequence (nothing more
    // will come). When the provider failed and nothing is left to hand out
    // the failure is thrown as CIMException.
    bool take(Pegasus::Uint32 max, const std::function<void(const std::string&)>& write);

    // Waits until the provider delivered something or ended.
    void waitForStart();

    // Ends the enumeration: queued objects are dropped and the provider's
    // next delivery fails.
    void close();

private:
    friend class EnumerationContexts;
    class Sink;

    void produced(std::string&& element);  // provider side; blocks while full
    void ended(bool failed, Pegasus::Uint32 code, const Pegasus::String& message);

    const std::string _id;
    const std::string _user;
    const Pegasus::CIMNamespaceName _ns;
    const EnumerationKind _kind;
    const std::chrono::seconds _timeout;
    const size_t _queueLimit;

    std::mutex _mu;
    std::condition_variable _changed;
    std::deque<std::string> _queue;
    size_t _queued = 0;
    bool _producing = true;
    bool _failed = false;
    Pegasus::Uint32 _code = 0;
    Pegasus::String _message;
    bool _closed = false;
    // Guarded by the table's lock.
    bool _busy = false;
    Clock::time_point _expires;
};

class EnumerationContexts {
public:
    explicit EnumerationContexts(const EnumerationLimits& limits);
    ~EnumerationContexts();
    EnumerationContexts(const EnumerationContexts&) = delete;
    EnumerationContexts& operator=(const EnumerationContexts&) = delete;

    const EnumerationLimits& limits() const { return _limits; }

    // Opens an enumeration for user in ns and starts produce(sink) on a
    // thread of its own; the enumeration is busy (held by the opening
    // request) until release(). Throws CIMException
    // (CIM_ERR_SERVER_LIMITS_EXCEEDED) when too many are open.
    std::shared_ptr<Enumeration> open(const std::string& user, const Pegasus::CIMNamespaceName& ns,
                                      EnumerationKind kind, Pegasus::Uint32 timeoutSeconds,
                                      std::function<void(ResultSink&)> produce);

    // The enumeration id names, held for one request of user in ns. Throws
    // CIMException: CIM_ERR_INVALID_ENUMERATION_CONTEXT for an unknown,
    // expired or closed one and for one of another user or namespace,
    // CIM_ERR_PULL_CANNOT_BE_ABANDONED while another request holds it.
    std::shared_ptr<Enumeration> acquire(const std::string& id, const std::string& user,
                                         const Pegasus::CIMNamespaceName& ns);

    // Ends a request's hold: the enumeration's timeout starts again, or it
    // is removed when finished is true.
    void release(const std::shared_ptr<Enumeration>& e, bool finished);

    // Closes every enumeration and waits (a bounded time) for their
    // providers to return.
    void closeAll();

    size_t openCount() const;

private:
    void reap();
    void removeLocked(std::string id);

    // Provider threads not yet returned; shared with them, so that a
    // thread that outlives the table (closeAll gave up waiting) is safe.
    struct Providers {
        std::mutex mu;
        std::condition_variable done;
        size_t running = 0;
    };

    const EnumerationLimits _limits;
    mutable std::mutex _mu;
    std::condition_variable _wake;
    std::map<std::string, std::shared_ptr<Enumeration>> _open;
    std::map<std::string, size_t> _perUser;
    std::shared_ptr<Providers> _providers = std::make_shared<Providers>();
    bool _stopping = false;
    std::thread _reaper;
};

}  // namespace zarwire

#endif
