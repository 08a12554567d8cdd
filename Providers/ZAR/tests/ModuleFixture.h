// ModuleFixture: the fixture of every provider test that needs the server:
// the server core with the project's schema and both provider modules in
// this process, over a fresh simulated array (the demo configuration) for
// every test, with a super, a browse and a disabled user; collecting
// response handlers for calls through the dispatcher or straight into a
// provider object.
#ifndef ZAR_TESTS_MODULEFIXTURE_H
#define ZAR_TESTS_MODULEFIXTURE_H

#include <cstdlib>
#include <string>

#include <Pegasus/Common/ClientAddressContainer.h>
#include <zarframework/CIMOperationHost.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <ServerCore.h>

#include "CommonTestSupport.h"

namespace zartest {

// Counts the calls of the handler protocol.
struct HandlerCalls {
    int processingCalls = 0;
    int completeCalls = 0;
};

// Collects what a provider delivers through a response handler.
template <class Handler, class Item>
class Collect : public Handler, public HandlerCalls {
public:
    void processing() override { processingCalls++; }
    void complete() override { completeCalls++; }
    void deliver(const Item& item) override
    {
        items.append(item);
        deliveries++;
    }
    void deliver(const Pegasus::Array<Item>& batch) override
    {
        items.appendArray(batch);
        deliveries++;
    }
    Pegasus::Array<Item> items;
    int deliveries = 0;  // calls of deliver (a batch counts once)
};

using Instances = Collect<Pegasus::InstanceResponseHandler, Pegasus::CIMInstance>;
using Paths = Collect<Pegasus::ObjectPathResponseHandler, Pegasus::CIMObjectPath>;
using Objects = Collect<Pegasus::ObjectResponseHandler, Pegasus::CIMObject>;

class Plain : public Pegasus::ResponseHandler, public HandlerCalls {
public:
    void processing() override { processingCalls++; }
    void complete() override { completeCalls++; }
};

inline std::string envOr(const char* name, const char* fallback)
{
    const char* v = std::getenv(name);
    return v && *v ? v : fallback;
}

class ModuleFixture : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        // The providers cache the system's identity when they start: the
        // array they first see is the demo array every test starts from.
        ASSERT_EQ(0, zarsim_open(":memory:"));
        zarsim_set_hash_iterations(1);
        ASSERT_EQ(0, zarsim_seed_demo());
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
        ASSERT_EQ(0, zarsim_add_user("p1super", "pw-super", "super"));
        ASSERT_EQ(0, zarsim_add_user("p1browse", "pw-browse", "browse"));
        ASSERT_EQ(0, zarsim_add_user("p1locked", "pw-locked", "super"));
        ASSERT_EQ(0, zarsim_enable_user("p1locked", 0));
        // Identity queries reach the server through a local connection, which
        // runs as the server process's own user: the array trusts it as the
        // server's own principal, without an array user of that name.
    }

    void TearDown() override
    {
        zarsim_clear_faults();
        zarsim_capture_log(0);
    }

    static Pegasus::CIMOperationHost& server() { return core_->dispatcher(); }

    // The context of a request by `user` from `address`, as the CIM-XML front
    // end builds it.
    static Pegasus::OperationContext as(const char* user, const char* address = "127.0.0.1")
    {
        Pegasus::OperationContext context;
        context.insert(Pegasus::IdentityContainer(Pegasus::String(user)));
        context.insert(Pegasus::ClientAddressContainer(Pegasus::String(address)));
        return context;
    }

    static const char* ns() { return "root/zar"; }

    // Requests of the browse user through the server; a null class name
    // is no filter.
    static Pegasus::Array<Pegasus::CIMObjectPath> names(const char* cls)
    {
        Paths out;
        server().enumerateInstanceNames(as("p1browse"), ns(), Pegasus::CIMName(cls), out);
        return out.items;
    }
    static Pegasus::Array<Pegasus::CIMInstance> instances(const char* cls)
    {
        Instances out;
        server().enumerateInstances(as("p1browse"), ns(), Pegasus::CIMName(cls), true, false, false,
                                    false, Pegasus::CIMPropertyList(), out);
        return out.items;
    }
    static Pegasus::Array<Pegasus::CIMObjectPath> assocNames(const Pegasus::CIMObjectPath& from,
                                                             const char* assoc,
                                                             const char* resultClass,
                                                             const char* role = "",
                                                             const char* resultRole = "")
    {
        Paths out;
        server().associatorNames(as("p1browse"), ns(), from, name(assoc), name(resultClass), role,
                                 resultRole, out);
        return out.items;
    }
    static Pegasus::Array<Pegasus::CIMObjectPath> refNames(const Pegasus::CIMObjectPath& from,
                                                           const char* resultClass,
                                                           const char* role = "")
    {
        Paths out;
        server().referenceNames(as("p1browse"), ns(), from, name(resultClass), role, out);
        return out.items;
    }
    // associatorNames straight into an association provider, by the browse
    // user; the provider must complete the handler once.
    static Pegasus::Array<Pegasus::CIMObjectPath> providerAssocNames(
        Pegasus::CIMAssociationProvider& provider, const Pegasus::CIMObjectPath& from,
        const char* assoc, const char* resultClass, const char* role, const char* resultRole)
    {
        Paths out;
        provider.associatorNames(as("p1browse"), from, name(assoc), name(resultClass), role,
                                 resultRole, out);
        EXPECT_EQ(1, out.completeCalls);
        return out.items;
    }

    // getInstance through the server, without qualifiers, class origin or
    // property list.
    static Pegasus::CIMInstance get(const Pegasus::CIMObjectPath& path,
                                    const char* user = "p1browse")
    {
        return server().getInstance(as(user), ns(), path, false, false, false,
                                    Pegasus::CIMPropertyList());
    }
    static Pegasus::CIMName name(const char* cls)
    {
        return cls ? Pegasus::CIMName(cls) : Pegasus::CIMName();
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

inline zarserver::ServerCore* ModuleFixture::core_ = nullptr;

}  // namespace zartest

#endif
