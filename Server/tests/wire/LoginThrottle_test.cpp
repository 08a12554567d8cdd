// The delay before refusing a failed login: free for a few mistakes, then
// growing up to a ceiling, counted per user name and per address, and
// forgotten after a quiet period.
#include "LoginThrottle.h"

#include <gtest/gtest.h>

using namespace zarwire;
using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(LoginThrottle, GrowsPerUserAndPerAddressThenFades)
{
    LoginThrottle::Settings s;
    s.base = milliseconds(100);
    s.ceiling = milliseconds(1000);
    s.freeFailures = 2;
    s.forgetAfter = seconds(60);
    LoginThrottle t(s);
    auto now = LoginThrottle::Clock::now();
    EXPECT_EQ(t.failure("alice", "10.0.0.1", now).count(), 0);
    EXPECT_EQ(t.failure("alice", "10.0.0.1", now).count(), 0);
    EXPECT_EQ(t.failure("alice", "10.0.0.1", now).count(), 100);
    EXPECT_EQ(t.failure("alice", "10.0.0.1", now).count(), 200);
    for (int i = 0; i < 10; i++)
        t.failure("alice", "10.0.0.1", now);
    EXPECT_EQ(t.failure("alice", "10.0.0.1", now).count(), 1000);
    // The same name from elsewhere, and another name from the same address,
    // are slowed as well.
    EXPECT_EQ(t.failure("alice", "10.0.0.2", now).count(), 1000);
    EXPECT_EQ(t.failure("bob", "10.0.0.1", now).count(), 1000);
    // Others are not.
    EXPECT_EQ(t.failure("carol", "10.0.0.3", now).count(), 0);
    // After a quiet period the count starts over.
    EXPECT_EQ(t.failure("alice", "10.0.0.1", now + seconds(61)).count(), 0);
}

TEST(LoginThrottle, TableStaysBoundedUnderAFloodOfNames)
{
    LoginThrottle::Settings s;
    s.maxEntries = 100;
    LoginThrottle t(s);
    auto now = LoginThrottle::Clock::now();
    for (int i = 0; i < 10000; i++)
        t.failure("user" + std::to_string(i), "10.0.0.9", now + milliseconds(i));
    // The flooding address is still remembered as the most recent entry.
    EXPECT_GT(t.failure("fresh", "10.0.0.9", now + seconds(11)).count(), 0);
}
