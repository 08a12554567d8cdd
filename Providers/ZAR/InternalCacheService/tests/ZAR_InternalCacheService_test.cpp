// Tests of the internal cache service: which getClass requests reach the
// server, what the caller gets back, and the policy word.
#include "ZAR_InternalCacheService.h"

#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "TestOperationHost.h"

#include <zarframework/CIMOperationHost.h>
#include <zarsim_test.h>

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

// A server that holds a few classes and counts the getClass calls that reach
// it.
class CountingHost : public TestOperationHost {
public:
    CountingHost()
    {
        CIMClass a("Test_Alpha");
        a.addProperty(CIMProperty(CIMName("Name"), CIMValue(String())));
        a.addProperty(CIMProperty(CIMName("Size"), CIMValue(Uint32(7))));
        classes_["test_alpha"] = a;
        CIMClass b("Test_Beta");
        b.addProperty(CIMProperty(CIMName("Flag"), CIMValue(Boolean(true))));
        classes_["test_beta"] = b;
        classes_["test_zulu"] = CIMClass("Test_Zulu");
    }

    std::atomic<int> getClassCalls{0};
    std::atomic<int> failNext{0};

    CIMClass getClass(const OperationContext&, const CIMNamespaceName& ns, const CIMName& className,
                      Boolean, Boolean includeQualifiers, Boolean,
                      const CIMPropertyList& propertyList) override
    {
        ++getClassCalls;
        if (failNext > 0) {
            --failNext;
            throw CIMException(CIM_ERR_FAILED, "repository unavailable");
        }
        if (!ns.equal(CIMNamespaceName("root/test")))
            throw CIMException(CIM_ERR_INVALID_NAMESPACE, ns.getString());
        std::string key = (const char*)className.getString().getCString();
        for (char& c : key)
            c = (char)tolower((unsigned char)c);
        auto it = classes_.find(key);
        if (it == classes_.end())
            throw CIMException(CIM_ERR_NOT_FOUND, className.getString());
        CIMClass result = it->second.clone();
        // Mirror the request in the answer so that tests can tell entries apart.
        if (!propertyList.isNull()) {
            for (Uint32 i = result.getPropertyCount(); i-- > 0;) {
                if (!propertyList.contains(result.getProperty(i).getName()))
                    result.removeProperty(i);
            }
        }
        if (includeQualifiers)
            result.addQualifier(CIMQualifier(CIMName("Description"), CIMValue(String("q"))));
        return result;
    }

private:
    std::map<std::string, CIMClass> classes_;
};

// One host for the whole binary: the service is process-wide, so every test
// uses class and flag combinations of its own and looks at call deltas.
CountingHost* host()
{
    static CountingHost* h = [] {
        auto* created = new CountingHost();
        setLocalOperationHost(created);
        return created;
    }();
    return h;
}

CIMClass fetch(const char* cls, Boolean localOnly, Boolean qualifiers, Boolean origin,
               const CIMPropertyList& list = CIMPropertyList(), const char* ns = "root/test")
{
    host();
    CIMOMHandle handle;
    return ZAR_InternalCacheService::getInstance()->getStoredCIMClass(
        handle, OperationContext(), CIMNamespaceName(ns), CIMName(cls), localOnly, qualifiers,
        origin, list);
}

class InternalCacheServiceTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(0, zarsim_open(":memory:"));
        host()->failNext = 0;
    }
};

TEST_F(InternalCacheServiceTest, GetInstanceAlwaysReturnsTheSameService)
{
    ZAR_InternalCacheService* first = ZAR_InternalCacheService::getInstance();
    ASSERT_NE(nullptr, first);
    std::vector<ZAR_InternalCacheService*> seen(8, nullptr);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < seen.size(); i++)
        threads.emplace_back([&seen, i] { seen[i] = ZAR_InternalCacheService::getInstance(); });
    for (auto& t : threads)
        t.join();
    for (auto* s : seen)
        EXPECT_EQ(first, s);
}

TEST_F(InternalCacheServiceTest, RepeatedRequestsAreAnsweredFromTheCache)
{
    int before = host()->getClassCalls;
    CIMClass c1 = fetch("Test_Alpha", false, true, true);
    EXPECT_EQ(before + 1, host()->getClassCalls);
    CIMClass c2 = fetch("Test_Alpha", false, true, true);
    CIMClass c3 = fetch("TEST_ALPHA", false, true, true);  // names ignore case
    CIMClass c4 = fetch("Test_Alpha", false, true, true, CIMPropertyList(), "ROOT/Test");
    EXPECT_EQ(before + 1, host()->getClassCalls);
    fetch("Test_Zulu", false, true, true);
    fetch("test_zulu", false, true, true);  // every letter, Z included
    EXPECT_EQ(before + 2, host()->getClassCalls);
    EXPECT_EQ(2u, c2.getPropertyCount());
    EXPECT_TRUE(c1.identical(c2));
    EXPECT_TRUE(c1.identical(c3));
    EXPECT_TRUE(c1.identical(c4));
}

TEST_F(InternalCacheServiceTest, FlagsAndPropertyListsAreCachedSeparately)
{
    int before = host()->getClassCalls;
    CIMClass plain = fetch("Test_Beta", true, false, false);
    CIMClass withQualifiers = fetch("Test_Beta", true, true, false);
    fetch("Test_Beta", false, false, false);
    fetch("Test_Beta", true, false, true);
    EXPECT_EQ(before + 4, host()->getClassCalls);
    EXPECT_EQ(PEG_NOT_FOUND, plain.findQualifier(CIMName("Description")));
    EXPECT_NE(PEG_NOT_FOUND, withQualifiers.findQualifier(CIMName("Description")));

    // A null list (all properties), an empty list (none) and a named list are
    // three different requests.
    before = host()->getClassCalls;
    Array<CIMName> names;
    names.append(CIMName("Size"));
    CIMClass all = fetch("Test_Alpha", true, false, false);
    CIMClass none = fetch("Test_Alpha", true, false, false, CIMPropertyList(Array<CIMName>()));
    CIMClass some = fetch("Test_Alpha", true, false, false, CIMPropertyList(names));
    EXPECT_EQ(before + 3, host()->getClassCalls);
    EXPECT_EQ(2u, all.getPropertyCount());
    EXPECT_EQ(0u, none.getPropertyCount());
    ASSERT_EQ(1u, some.getPropertyCount());
    EXPECT_EQ(CIMName("Size"), some.getProperty(0).getName());
    // And each is answered from its own entry afterwards.
    EXPECT_EQ(0u, fetch("Test_Alpha", true, false, false, CIMPropertyList(Array<CIMName>()))
                      .getPropertyCount());
    EXPECT_EQ(1u,
              fetch("Test_Alpha", true, false, false, CIMPropertyList(names)).getPropertyCount());
    EXPECT_EQ(before + 3, host()->getClassCalls);
}

TEST_F(InternalCacheServiceTest, CallersCannotChangeTheCachedClass)
{
    CIMClass mine = fetch("Test_Alpha", false, false, true);
    mine.removeProperty(mine.findProperty(CIMName("Size")));
    mine.addProperty(CIMProperty(CIMName("Extra"), CIMValue(Uint16(1))));
    CIMClass again = fetch("Test_Alpha", false, false, true);
    EXPECT_NE(PEG_NOT_FOUND, again.findProperty(CIMName("Size")));
    EXPECT_EQ(PEG_NOT_FOUND, again.findProperty(CIMName("Extra")));
    // Instances built from the class are independent as well.
    CIMInstance inst = again.buildInstance(true, true, CIMPropertyList());
    inst.getProperty(inst.findProperty(CIMName("Size"))).setValue(CIMValue(Uint32(99)));
    Uint32 size = 0;
    CIMClass third = fetch("Test_Alpha", false, false, true);
    third.getProperty(third.findProperty(CIMName("Size"))).getValue().get(size);
    EXPECT_EQ(7u, size);
}

TEST_F(InternalCacheServiceTest, FailuresPropagateUnchangedAndAreNotCached)
{
    try {
        fetch("Test_NoSuchClass", false, true, false);
        FAIL() << "an unknown class was answered";
    } catch (const CIMException& e) {
        EXPECT_EQ(CIM_ERR_NOT_FOUND, e.getCode());
        EXPECT_EQ(String("Test_NoSuchClass"), e.getMessage());
    }
    try {
        fetch("Test_Alpha", false, false, false, CIMPropertyList(), "root/elsewhere");
        FAIL() << "an unknown namespace was answered";
    } catch (const CIMException& e) {
        EXPECT_EQ(CIM_ERR_INVALID_NAMESPACE, e.getCode());
    }

    // A transient failure is retried on the next request, then cached.
    host()->failNext = 1;
    int before = host()->getClassCalls;
    EXPECT_THROW(fetch("Test_Beta", false, true, true), CIMException);
    CIMClass c = fetch("Test_Beta", false, true, true);
    EXPECT_EQ(CIMName("Test_Beta"), c.getClassName());
    fetch("Test_Beta", false, true, true);
    EXPECT_EQ(before + 2, host()->getClassCalls);
}

TEST_F(InternalCacheServiceTest, ConcurrentRequestsAllGetTheClass)
{
    const int kThreads = 8;
    std::atomic<int> good{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; t++) {
        threads.emplace_back([&good, t] {
            for (int i = 0; i < 200; i++) {
                // Eight distinct entries, each asked for by every thread.
                Boolean lo = (i & 1) != 0, q = (i & 2) != 0, o = (i & 4) != 0;
                CIMClass c = fetch((i + t) % 2 ? "Test_Alpha" : "Test_Beta", lo, q, o);
                if (!c.isUninitialized() && c.getPropertyCount() > 0)
                    ++good;
            }
        });
    }
    for (auto& t : threads)
        t.join();
    EXPECT_EQ(kThreads * 200, good.load());
}

TEST_F(InternalCacheServiceTest, PolicyWordIsReadAndWritten)
{
    ZAR_InternalCacheService* service = ZAR_InternalCacheService::getInstance();
    Uint32 saved = service->getPolicy();
    service->setPolicy(0x4);
    EXPECT_EQ(0x4u, service->getPolicy());
    service->setPolicy(0xFFFFFFFFu);
    EXPECT_EQ(0xFFFFFFFFu, ZAR_InternalCacheService::getInstance()->getPolicy());
    service->setPolicy(0);
    EXPECT_EQ(0u, service->getPolicy());
    // Setting it for the process leaves the array's configuration alone.
    service->setPolicy(0x4);
    zar_u32 stored = 1;
    ASSERT_EQ(0, cim_sem_wait());
    ASSERT_EQ(0, api_getPolicy(&stored));
    cim_sem_post();
    EXPECT_EQ(0u, stored);
    service->setPolicy(saved);
}

}  // namespace
