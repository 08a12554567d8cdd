#include "EnumerationContexts.h"

#include <sys/random.h>

#include <Pegasus/Common/Exception.h>

#include "CimRequest.h"

PEGASUS_USING_PEGASUS;

namespace zarwire {

namespace {

// 128 random bits: an enumeration cannot be found by guessing.
std::string newId()
{
    unsigned char bytes[16];
    size_t got = 0;
    while (got < sizeof bytes) {
        ssize_t n = getrandom(bytes + got, sizeof bytes - got, 0);
        if (n > 0)
            got += static_cast<size_t>(n);
    }
    static const char hex[] = "0123456789abcdef";
    std::string id;
    for (unsigned char b : bytes) {
        id += hex[b >> 4];
        id += hex[b & 15];
    }
    return id;
}

[[noreturn]] void invalidContext()
{
    throw CIMException(CIM_ERR_INVALID_ENUMERATION_CONTEXT,
                       "The enumeration context is not open (unknown, expired, closed, or "
                       "opened by another user or in another namespace).");
}

}  // namespace

// The provider's side of an enumeration.
class Enumeration::Sink : public ResultSink {
public:
    explicit Sink(Enumeration& e) : _e(e) {}
    void write(const std::function<void(std::string&)>& f) override
    {
        std::string element;
        f(element);
        _e.produced(std::move(element));
    }

private:
    Enumeration& _e;
};

Enumeration::Enumeration(const std::string& id, const std::string& user, const CIMNamespaceName& ns,
                         EnumerationKind kind, Uint32 timeoutSeconds, size_t queueBytes)
    : _id(id), _user(user), _ns(ns), _kind(kind), _timeout(timeoutSeconds), _queueLimit(queueBytes)
{
}

void Enumeration::produced(std::string&& element)
{
    std::unique_lock<std::mutex> lock(_mu);
    // One object always fits, however large.
    _changed.wait(
        lock, [&] { return _closed || _queue.empty() || _queued + element.size() <= _queueLimit; });
    if (_closed)
        throw CIMException(CIM_ERR_FAILED, "The enumeration was closed.");
    _queued += element.size();
    _queue.push_back(std::move(element));
    _changed.notify_all();
}

void Enumeration::ended(bool failed, Uint32 code, const String& message)
{
    std::lock_guard<std::mutex> lock(_mu);
    _producing = false;
    _failed = failed;
    _code = code;
    _message = message;
    _changed.notify_all();
}

void Enumeration::waitForStart()
{
    std::unique_lock<std::mutex> lock(_mu);
    _changed.wait(lock, [&] { return _closed || !_producing || !_queue.empty(); });
}

bool Enumeration::take(Uint32 max, const std::function<void(const std::string&)>& write)
{
    Uint32 taken = 0;
    std::unique_lock<std::mutex> lock(_mu);
    while (taken < max) {
        _changed.wait(lock, [&] { return _closed || !_producing || !_queue.empty(); });
        if (_closed)
            invalidContext();
        if (_queue.empty())
            break;  // the provider has ended
        std::string element = std::move(_queue.front());
        _queue.pop_front();
        _queued -= element.size();
        _changed.notify_all();
        lock.unlock();
        write(element);  // may wait for the client
        lock.lock();
        taken++;
    }
    if (_queue.empty() && !_producing && _failed) {
        if (taken == 0)
            throw CIMException(CIMStatusCode(_code), _message);
        return false;  // the next request reports the failure
    }
    return _queue.empty() && !_producing;
}

void Enumeration::close()
{
    std::lock_guard<std::mutex> lock(_mu);
    _closed = true;
    _queue.clear();
    _queued = 0;
    _changed.notify_all();
}

EnumerationContexts::EnumerationContexts(const EnumerationLimits& limits)
    : _limits(limits), _reaper([this] { reap(); })
{
}

EnumerationContexts::~EnumerationContexts()
{
    closeAll();
    {
        std::lock_guard<std::mutex> lock(_mu);
        _stopping = true;
        _wake.notify_all();
    }
    _reaper.join();
}

std::shared_ptr<Enumeration> EnumerationContexts::open(const std::string& user,
                                                       const CIMNamespaceName& ns,
                                                       EnumerationKind kind, Uint32 timeoutSeconds,
                                                       std::function<void(ResultSink&)> produce)
{
    std::shared_ptr<Enumeration> e;
    {
        std::lock_guard<std::mutex> lock(_mu);
        if (_stopping)
            throw CIMException(CIM_ERR_SERVER_IS_SHUTTING_DOWN, "The server is stopping.");
        if (_open.size() >= _limits.maxOpen)
            throw CIMException(CIM_ERR_SERVER_LIMITS_EXCEEDED,
                               str("Too many open enumerations in the server (" +
                                   std::to_string(_limits.maxOpen) + ")."));
        if (_perUser[user] >= _limits.maxOpenPerUser)
            throw CIMException(CIM_ERR_SERVER_LIMITS_EXCEEDED,
                               str("Too many open enumerations for this user (" +
                                   std::to_string(_limits.maxOpenPerUser) + ")."));
        e = std::make_shared<Enumeration>(newId(), user, ns, kind, timeoutSeconds,
                                          _limits.queueBytes);
        e->_busy = true;
        _open[e->id()] = e;
        _perUser[user]++;
    }
    std::shared_ptr<Providers> providers = _providers;
    {
        std::lock_guard<std::mutex> lock(providers->mu);
        providers->running++;
    }
    try {
        std::thread([providers, e, produce] {
            Enumeration::Sink sink(*e);
            try {
                produce(sink);
                e->ended(false, 0, String());
            } catch (CIMException& x) {
                e->ended(true, Uint32(x.getCode()), x.getMessage());
            } catch (Exception& x) {
                e->ended(true, CIM_ERR_FAILED, x.getMessage());
            } catch (std::exception& x) {
                e->ended(true, CIM_ERR_FAILED, String(x.what()));
            } catch (...) {
                e->ended(true, CIM_ERR_FAILED, String("Unknown error."));
            }
            std::lock_guard<std::mutex> lock(providers->mu);
            providers->running--;
            providers->done.notify_all();
        }).detach();
    } catch (std::system_error&) {
        {
            std::lock_guard<std::mutex> lock(providers->mu);
            providers->running--;
        }
        std::lock_guard<std::mutex> lock(_mu);
        removeLocked(e->id());
        throw CIMException(CIM_ERR_SERVER_LIMITS_EXCEEDED, "No thread for the enumeration.");
    }
    return e;
}

std::shared_ptr<Enumeration> EnumerationContexts::acquire(const std::string& id,
                                                          const std::string& user,
                                                          const CIMNamespaceName& ns)
{
    std::lock_guard<std::mutex> lock(_mu);
    auto it = _open.find(id);
    if (it == _open.end() || it->second->_user != user || !it->second->_ns.equal(ns))
        invalidContext();
    std::shared_ptr<Enumeration> e = it->second;
    if (e->_busy)
        throw CIMException(CIM_ERR_PULL_CANNOT_BE_ABANDONED,
                           "Another request is using this enumeration context.");
    e->_busy = true;
    return e;
}

void EnumerationContexts::release(const std::shared_ptr<Enumeration>& e, bool finished)
{
    std::lock_guard<std::mutex> lock(_mu);
    e->_busy = false;
    if (finished) {
        removeLocked(e->id());
        return;
    }
    e->_expires = Enumeration::Clock::now() + e->_timeout;
}

void EnumerationContexts::removeLocked(std::string id)
{
    auto it = _open.find(id);
    if (it == _open.end())
        return;
    it->second->close();
    auto u = _perUser.find(it->second->_user);
    if (u != _perUser.end() && --u->second == 0)
        _perUser.erase(u);
    _open.erase(it);
}

void EnumerationContexts::closeAll()
{
    {
        std::lock_guard<std::mutex> lock(_mu);
        while (!_open.empty())
            removeLocked(_open.begin()->first);
    }
    std::unique_lock<std::mutex> lock(_providers->mu);
    _providers->done.wait_for(lock, std::chrono::seconds(10),
                              [&] { return _providers->running == 0; });
}

size_t EnumerationContexts::openCount() const
{
    std::lock_guard<std::mutex> lock(_mu);
    return _open.size();
}

void EnumerationContexts::reap()
{
    std::unique_lock<std::mutex> lock(_mu);
    while (!_stopping) {
        _wake.wait_for(lock, std::chrono::milliseconds(500));
        auto now = Enumeration::Clock::now();
        for (auto it = _open.begin(); it != _open.end();) {
            auto next = std::next(it);
            if (!it->second->_busy && now >= it->second->_expires)
                removeLocked(it->first);
            it = next;
        }
    }
}

}  // namespace zarwire
