#include "LoginThrottle.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace zarwire {

unsigned LoginThrottle::bump(const std::string& key, Clock::time_point now)
{
    Entry& e = _entries[key];
    if (e.count && now - e.last > _s.forgetAfter)
        e.count = 0;
    if (e.count < 64)
        e.count++;
    e.last = now;
    return e.count;
}

void LoginThrottle::prune(Clock::time_point now)
{
    for (auto it = _entries.begin(); it != _entries.end();)
        it = now - it->second.last > _s.forgetAfter ? _entries.erase(it) : std::next(it);
    // Still full (a flood of fresh names): forget the oldest half.
    if (_entries.size() >= _s.maxEntries) {
        std::vector<Clock::time_point> times;
        for (const auto& kv : _entries)
            times.push_back(kv.second.last);
        std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
        Clock::time_point median = times[times.size() / 2];
        for (auto it = _entries.begin(); it != _entries.end();)
            it = it->second.last <= median ? _entries.erase(it) : std::next(it);
    }
}

std::chrono::milliseconds LoginThrottle::failure(const std::string& user,
                                                 const std::string& address, Clock::time_point now)
{
    std::lock_guard<std::mutex> lock(_mu);
    if (_entries.size() + 2 > _s.maxEntries)
        prune(now);
    unsigned n = std::max(bump("u:" + user, now), bump("a:" + address, now));
    if (n <= _s.freeFailures)
        return std::chrono::milliseconds(0);
    unsigned shift = std::min(n - _s.freeFailures - 1, 20u);
    auto d = _s.base * (1LL << shift);
    return std::min(std::chrono::duration_cast<std::chrono::milliseconds>(d), _s.ceiling);
}

}  // namespace zarwire
