// The initial policy word of the internal cache service comes from the
// array's configuration, read once when the service is created. Its own
// binary, because the service is created once per process.
#include "ZAR_InternalCacheService.h"

#include <gtest/gtest.h>

#include <zarsim_test.h>

PEGASUS_USING_PEGASUS;

namespace {

TEST(InternalCacheServicePolicyTest, InitialPolicyComesFromTheArrayOnce)
{
    ASSERT_EQ(0, zarsim_open(":memory:"));
    ASSERT_EQ(0, zarsim_set_policy(0x4 | 0x10));

    ZAR_InternalCacheService* service = ZAR_InternalCacheService::getInstance();
    EXPECT_EQ(0x14u, service->getPolicy());

    // Later changes of the array's configuration do not reach a running
    // service; the service's own word is what providers read.
    ASSERT_EQ(0, zarsim_set_policy(0));
    EXPECT_EQ(0x14u, ZAR_InternalCacheService::getInstance()->getPolicy());
}

}  // namespace
