// AuthCache: logins verified moments ago, so that a client opening one
// connection after another does not pay the deliberately slow password
// check each time. An entry is a keyed hash (HMAC-SHA256 under a random key
// of this process) of user and password, never the password itself; it
// lives a short time, the cache holds a bounded number, and all of them go
// at once when the array's users change (the generation the caller passes
// differs). Only successful logins are remembered: a failed one keeps its
// full cost and its throttling.
#ifndef ZAR_SERVER_WIRE_AUTHCACHE_H
#define ZAR_SERVER_WIRE_AUTHCACHE_H

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>

namespace zarwire {

class AuthCache {
public:
    using Clock = std::chrono::steady_clock;

    explicit AuthCache(size_t capacity = 256,
                       std::chrono::milliseconds lifetime = std::chrono::seconds(60));

    // The keyed hash of text (32 bytes, hex).
    std::string digest(const std::string& text) const;

    // True when user logged in with password since the users' generation
    // was last different and less than the lifetime ago.
    bool verified(const std::string& user, const std::string& password, uint64_t generation);
    void remember(const std::string& user, const std::string& password, uint64_t generation);

    size_t size() const;

private:
    std::string key(const std::string& user, const std::string& password) const;
    void newGenerationLocked(uint64_t generation);

    const size_t _capacity;
    const std::chrono::milliseconds _lifetime;
    unsigned char _secret[32];
    mutable std::mutex _mu;
    uint64_t _generation = 0;
    std::map<std::string, Clock::time_point> _entries;  // key -> expiry
};

}  // namespace zarwire

#endif
