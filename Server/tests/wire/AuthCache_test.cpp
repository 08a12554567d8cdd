// The login cache: what it remembers, for how long, how many, and that a
// change of the users forgets everything.
#include "AuthCache.h"

#include <gtest/gtest.h>

#include <thread>

using namespace zarwire;

TEST(AuthCache, RemembersVerifiedLoginsUntilTheUsersChange)
{
    AuthCache cache(8, std::chrono::seconds(60));
    EXPECT_FALSE(cache.verified("admin", "secret1", 1));
    cache.remember("admin", "secret1", 1);
    EXPECT_TRUE(cache.verified("admin", "secret1", 1));
    EXPECT_FALSE(cache.verified("admin", "secret2", 1));
    // The split between name and password is part of the key.
    EXPECT_FALSE(cache.verified("admins", "ecret1", 1));
    EXPECT_FALSE(cache.verified("admin", "secret1", 2));
    EXPECT_EQ(cache.size(), 0u);
    EXPECT_FALSE(cache.verified("admin", "secret1", 1));

    // The key is secret: two caches hash the same text differently.
    AuthCache other;
    EXPECT_NE(cache.digest("admin:secret1"), other.digest("admin:secret1"));
    EXPECT_EQ(cache.digest("admin:secret1"), cache.digest("admin:secret1"));
}

TEST(AuthCache, EntriesExpireAndAreBounded)
{
    AuthCache shortLived(8, std::chrono::milliseconds(50));
    shortLived.remember("u", "p", 0);
    EXPECT_TRUE(shortLived.verified("u", "p", 0));
    std::this_thread::sleep_for(std::chrono::milliseconds(80));
    EXPECT_FALSE(shortLived.verified("u", "p", 0));

    AuthCache small(3, std::chrono::seconds(60));
    for (int i = 0; i < 10; i++) {
        small.remember("user" + std::to_string(i), "p", 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(small.size(), 3u);
    EXPECT_TRUE(small.verified("user9", "p", 0));
    EXPECT_FALSE(small.verified("user0", "p", 0));
}
