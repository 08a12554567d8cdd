// ArrayModuleFixture: the server core with the project's schema and provider
// modules, in this process, over a fresh simulated array for every test.
#ifndef ZAR_ARRAY_TESTS_ARRAYMODULEFIXTURE_H
#define ZAR_ARRAY_TESTS_ARRAYMODULEFIXTURE_H

#include <cstdlib>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <zarframework/CIMOperationHost.h>
#include <Pegasus/Common/OperationContext.h>
#include <ServerCore.h>
#include <zarsim_test.h>

namespace zartest {

inline std::string envOr(const char* name, const char* fallback)
{
    const char* v = std::getenv(name);
    return v && *v ? v : fallback;
}

class ArrayModuleFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        zarserver::CoreConfig config;
        config.schemaDir = envOr("ZAR_SOURCE_DIR", ZAR_TEST_SOURCE_DIR) + "/schema";
        config.providerDir = envOr("ZAR_BINARY_DIR", ZAR_TEST_BINARY_DIR) + "/lib";
        config.hostName = "testhost";
        core_ = new zarserver::ServerCore(config);
    }

    static void TearDownTestSuite()
    {
        core_->shutdown();
        delete core_;
        core_ = nullptr;
    }

    void SetUp() override
    {
        ASSERT_EQ(0, zarsim_open(":memory:"));
        zarsim_set_hash_iterations(1);
        ASSERT_EQ(0, zarsim_seed_demo());
        ASSERT_EQ(0, zarsim_add_user("viewer", "viewer-pw", "browse"));
        ASSERT_EQ(0, zarsim_add_user("locked", "locked-pw", "super"));
        ASSERT_EQ(0, zarsim_enable_user("locked", 0));
    }

    void TearDown() override { zarsim_clear_faults(); }

    static Pegasus::CIMOperationHost& server() { return core_->dispatcher(); }

    // The context of a request made by `user` (as the CIM-XML front end
    // builds it).
    static Pegasus::OperationContext as(const char* user)
    {
        Pegasus::OperationContext context;
        context.insert(Pegasus::IdentityContainer(Pegasus::String(user)));
        return context;
    }

    // The array's identity, read directly from the array library.
    static api_sysinfo_t systemInfo()
    {
        api_sysinfo_t info{};
        EXPECT_EQ(0, cim_sem_wait());
        EXPECT_EQ(0, api_getSystemInfo(&info));
        cim_sem_post();
        return info;
    }

    static zarserver::ServerCore* core_;
};

inline zarserver::ServerCore* ArrayModuleFixture::core_ = nullptr;

// Runs `body` and returns the CIMException it throws; fails the test when it
// throws nothing.
template <typename F>
Pegasus::CIMException cimErrorOf(F body)
{
    try {
        body();
    } catch (const Pegasus::CIMException& e) {
        return e;
    }
    ADD_FAILURE() << "no CIMException was thrown";
    return Pegasus::CIMException(Pegasus::CIM_ERR_SUCCESS, "nothing thrown");
}

inline std::string text(const Pegasus::String& s)
{
    return std::string((const char*)s.getCString());
}

}  // namespace zartest

#endif
