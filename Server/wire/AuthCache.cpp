#include "AuthCache.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include <iterator>
#include <stdexcept>

namespace zarwire {

AuthCache::AuthCache(size_t capacity, std::chrono::milliseconds lifetime)
    : _capacity(capacity), _lifetime(lifetime)
{
    if (RAND_bytes(_secret, sizeof _secret) != 1)
        throw std::runtime_error("no random data for the login cache's key");
}

std::string AuthCache::digest(const std::string& text) const
{
    unsigned char mac[EVP_MAX_MD_SIZE];
    unsigned int len = 0;
    HMAC(EVP_sha256(), _secret, sizeof _secret, reinterpret_cast<const unsigned char*>(text.data()),
         text.size(), mac, &len);
    static const char hex[] = "0123456789abcdef";
    std::string out;
    for (unsigned int i = 0; i < len; i++) {
        out += hex[mac[i] >> 4];
        out += hex[mac[i] & 15];
    }
    return out;
}

std::string AuthCache::key(const std::string& user, const std::string& password) const
{
    // The user's length first: no two (user, password) pairs give one text.
    return digest(std::to_string(user.size()) + ":" + user + password);
}

void AuthCache::newGenerationLocked(uint64_t generation)
{
    if (generation != _generation) {
        _entries.clear();
        _generation = generation;
    }
}

bool AuthCache::verified(const std::string& user, const std::string& password, uint64_t generation)
{
    std::string k = key(user, password);
    std::lock_guard<std::mutex> lock(_mu);
    newGenerationLocked(generation);
    auto it = _entries.find(k);
    if (it == _entries.end())
        return false;
    if (Clock::now() >= it->second) {
        _entries.erase(it);
        return false;
    }
    return true;
}

void AuthCache::remember(const std::string& user, const std::string& password, uint64_t generation)
{
    if (_capacity == 0)
        return;
    std::string k = key(user, password);
    Clock::time_point now = Clock::now();
    std::lock_guard<std::mutex> lock(_mu);
    newGenerationLocked(generation);
    if (_entries.size() >= _capacity && !_entries.count(k)) {
        // Make room: expired entries first, else the one closest to expiry.
        for (auto it = _entries.begin(); it != _entries.end();)
            it = it->second <= now ? _entries.erase(it) : std::next(it);
        if (_entries.size() >= _capacity) {
            auto oldest = _entries.begin();
            for (auto it = _entries.begin(); it != _entries.end(); ++it)
                if (it->second < oldest->second)
                    oldest = it;
            _entries.erase(oldest);
        }
    }
    _entries[k] = now + _lifetime;
}

size_t AuthCache::size() const
{
    std::lock_guard<std::mutex> lock(_mu);
    return _entries.size();
}

}  // namespace zarwire
