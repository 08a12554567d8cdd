// Provider manager: lazy loading, load failures, initialization failures,
// callbacks from initialize(), concurrent first requests, shutdown.
#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>
#include <vector>

#include "ClassRepository.h"
#include "CoreTestUtil.h"
#include "Dispatcher.h"
#include "ProviderManager.h"
#include "ProviderRegistry.h"
#include "SchemaLoader.h"

using namespace zarserver;
using namespace Pegasus;
using coretest::failure;

namespace {

const CIMNamespaceName kNs("root/test");

// The parts of a server core, so that the manager itself can be observed.
class ProviderManagerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        loadSchema(ZAR_TEST_SCHEMA_DIR, repo);
        registry.load(repo);
        manager.reset(
            new ProviderManager(ZAR_PROVIDER_DIR, [this](int level, const std::string& line) {
                std::lock_guard<std::mutex> l(logMutex);
                log.push_back(std::to_string(level) + " " + line);
            }));
        dispatcher.reset(new Dispatcher(repo, registry, *manager, "testhost", nullptr));
        setLocalOperationHost(dispatcher.get());
    }
    void TearDown() override
    {
        manager->shutdown();
        setLocalOperationHost(nullptr);
    }
    Array<CIMInstance> enumerate(const char* cls)
    {
        coretest::Instances h;
        dispatcher->enumerateInstances(OperationContext(), kNs, CIMName(cls), true, false, false,
                                       false, CIMPropertyList(), h);
        return h.items;
    }
    const ProviderInfo& info(const char* cls, ProviderKind kind = PROVIDER_INSTANCE)
    {
        ProviderMatch m = registry.find(kNs, CIMName(cls), kind);
        EXPECT_TRUE(m.provider) << cls;
        return *m.provider;
    }
    Uint32 uint32Property(const CIMInstance& i, const char* name)
    {
        Uint32 v = 0;
        i.getProperty(i.findProperty(CIMName(name))).getValue().get(v);
        return v;
    }

    ClassRepository repo;
    ProviderRegistry registry;
    std::unique_ptr<ProviderManager> manager;
    std::unique_ptr<Dispatcher> dispatcher;
    std::mutex logMutex;
    std::vector<std::string> log;
};

}  // namespace

TEST_F(ProviderManagerTest, ProvidersAreCreatedOnFirstUse)
{
    EXPECT_FALSE(manager->isLoaded(info("ZTest_Gadget")));
    EXPECT_EQ(2u, enumerate("ZTest_Gadget").size());
    EXPECT_TRUE(manager->isLoaded(info("ZTest_Gadget")));
    EXPECT_FALSE(manager->isLoaded(info("ZTest_Widget")));
}

TEST_F(ProviderManagerTest, LoadFailuresAreClearErrorsAndTheRestKeepsWorking)
{
    std::string dir = ZAR_PROVIDER_DIR;
    auto missing = failure([&] { enumerate("ZTest_Missing"); });
    EXPECT_EQ(CIM_ERR_FAILED, missing.code);
    EXPECT_EQ(0u, missing.message.find("ProviderLoadFailure (" + dir +
                                       "/libZarNoSuchLibrary.so:ZTest_MissingProvider):"))
        << missing.message;

    // The factory knows no such name; it is asked again on the next request.
    std::string nullText =
        "ProviderLoadFailure (" + dir +
        "/libZarTestProvider.so:ZTest_UnknownProvider):provider is not a CIMProvider.";
    for (int i = 0; i < 2; ++i) {
        auto f = failure([&] { enumerate("ZTest_Null"); });
        EXPECT_EQ(CIM_ERR_FAILED, f.code);
        EXPECT_EQ(nullText, f.message);
    }
    EXPECT_EQ(2u, enumerate("ZTest_Widget").size());
    bool logged = false;
    for (const std::string& l : log)
        logged = logged || l.find("libZarNoSuchLibrary.so") != std::string::npos;
    EXPECT_TRUE(logged);
}

TEST_F(ProviderManagerTest, FailedInitializationIsRetriedOnTheNextRequest)
{
    setenv("ZTEST_BROKEN_INIT", "1", 1);
    auto f = failure([&] { enumerate("ZTest_Broken"); });
    EXPECT_EQ(CIM_ERR_FAILED, f.code);
    EXPECT_EQ("provider initialization failed", f.message);
    EXPECT_FALSE(manager->isLoaded(info("ZTest_Broken")));
    unsetenv("ZTEST_BROKEN_INIT");
    EXPECT_EQ(1u, enumerate("ZTest_Broken").size());
    EXPECT_TRUE(manager->isLoaded(info("ZTest_Broken")));
}

TEST_F(ProviderManagerTest, InitializeMayCallBackIntoTheServer)
{
    Array<CIMInstance> probe = enumerate("ZTest_Probe");
    ASSERT_EQ(1u, probe.size());
    EXPECT_EQ(2u, uint32Property(probe[0], "WidgetsAtStart"));
    EXPECT_EQ(repo.enumerateClassNames(kNs, CIMName(), true).size(),
              uint32Property(probe[0], "ClassesAtStart"));
}

TEST_F(ProviderManagerTest, ConcurrentFirstRequestsShareOneInitialization)
{
    const int kThreads = 8;
    std::vector<Uint32> seen(kThreads, 0);
    std::vector<std::string> errors(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            try {
                Array<CIMInstance> a = enumerate("ZTest_Slow");
                seen[t] = a.size() == 1 ? uint32Property(a[0], "Initializations") : 0;
            } catch (const Exception& e) {
                errors[t] = coretest::str(e.getMessage());
            }
        });
    for (std::thread& t : threads)
        t.join();
    for (int t = 0; t < kThreads; ++t) {
        EXPECT_EQ("", errors[t]);
        EXPECT_EQ(1u, seen[t]) << "thread " << t;
    }
}

TEST_F(ProviderManagerTest, ShutdownTerminatesProvidersAndRefusesNewWork)
{
    enumerate("ZTest_Slow");
    ASSERT_TRUE(manager->isLoaded(info("ZTest_Slow")));
    manager->shutdown();
    EXPECT_FALSE(manager->isLoaded(info("ZTest_Slow")));
    auto f = failure([&] { enumerate("ZTest_Gadget"); });
    EXPECT_EQ(CIM_ERR_FAILED, f.code);
    manager->shutdown();  // idempotent
}

TEST(ServerCore, StartsServesAndShutsDown)
{
    ServerCore core(coretest::testConfig());
    EXPECT_EQ("testhost", core.hostName());
    EXPECT_EQ(&core.dispatcher(), getLocalOperationHost());
    coretest::Instances h;
    core.dispatcher().enumerateInstances(OperationContext(), kNs, CIMName("ZTest_Slow"), true,
                                         false, false, false, CIMPropertyList(), h);
    EXPECT_EQ(1u, h.items.size());
    EXPECT_EQ(1, h.completed);
    core.shutdown();
    EXPECT_EQ(nullptr, getLocalOperationHost());
    auto f = failure([&] {
        core.dispatcher().getClass(OperationContext(), kNs, CIMName("ZTest_Widget"), false, true,
                                   true, CIMPropertyList());
    });
    EXPECT_EQ(CIM_ERR_FAILED, f.code);
}

TEST(ServerCore, SchemaErrorsStopTheStart)
{
    zarserver::CoreConfig c = coretest::testConfig();
    c.schemaDir = "/nonexistent/schema";
    EXPECT_THROW(ServerCore core(c), std::runtime_error);
}
