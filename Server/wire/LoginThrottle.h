// LoginThrottle: how long to hold back the refusal of a failed login. Each
// user name and each client address has a count of recent failures; the
// answer to a failure waits 2^(n-3) * base (n: the larger count) up to a
// ceiling, so that a few typing mistakes cost nothing and guessing slows to
// a crawl. Successful logins are never delayed, so an attacker cannot lock
// a real user out by failing in the user's name. Counts fade after a quiet
// period; the table is bounded.
#ifndef ZAR_SERVER_WIRE_LOGINTHROTTLE_H
#define ZAR_SERVER_WIRE_LOGINTHROTTLE_H

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>
#include <unordered_map>

namespace zarwire {

class LoginThrottle {
public:
    using Clock = std::chrono::steady_clock;
    struct Settings {
        std::chrono::milliseconds base{250};
        std::chrono::milliseconds ceiling{8000};
        unsigned freeFailures = 2;              // failures answered at once
        std::chrono::seconds forgetAfter{600};  // quiet time that clears a count
        size_t maxEntries = 10000;
    };
    LoginThrottle() = default;
    explicit LoginThrottle(const Settings& s) : _s(s) {}

    // Records a failed login of user from address at now; returns how long
    // to wait before answering it.
    std::chrono::milliseconds failure(const std::string& user, const std::string& address,
                                      Clock::time_point now = Clock::now());

private:
    struct Entry {
        unsigned count = 0;
        Clock::time_point last;
    };
    unsigned bump(const std::string& key, Clock::time_point now);
    void prune(Clock::time_point now);

    Settings _s;
    std::mutex _mu;
    std::unordered_map<std::string, Entry> _entries;
};

}  // namespace zarwire

#endif
