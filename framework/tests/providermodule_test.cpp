// Tests of a provider module as the server uses one: loaded with dlopen,
// created through PegasusCreateProvider, reached through its interfaces
// (checked with dynamic_cast), calling back into the server through its
// CIMOMHandle, and unloaded with terminate(), which deletes it.

#include <dlfcn.h>

#include <Pegasus/Common/ClientAddressContainer.h>
#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <zarframework/CIMOMHandleHost.h>

#include <gtest/gtest.h>

#include "TestOperationHost.h"
#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::ErrorOf;

namespace {

const CIMNamespaceName NS("root/zar");

typedef CIMProvider* (*CreateProvider)(const String&);
typedef int (*LiveProviders)();

// A response handler that keeps what it is given.
template <class Handler, class T>
class Collector : public Handler {
public:
    void processing() {}
    void complete() { completed = true; }
    void deliver(const T& x) { items.append(x); }
    void deliver(const Array<T>& a) { items.appendArray(a); }
    Array<T> items;
    bool completed = false;
};
typedef Collector<InstanceResponseHandler, CIMInstance> InstanceCollector;
typedef Collector<ObjectPathResponseHandler, CIMObjectPath> PathCollector;

class MethodCollector : public MethodResultResponseHandler {
public:
    void processing() {}
    void complete() {}
    void deliverParamValue(const CIMParamValue& p) { out.append(p); }
    void deliverParamValue(const Array<CIMParamValue>& a) { out.appendArray(a); }
    void deliver(const CIMValue& v) { result = v; }
    Array<CIMParamValue> out;
    CIMValue result;
};

// Routes the instance and method operations of the test host to one
// provider, giving it paths with the server's host name as a CIM server
// does.
class ProviderHost : public zartest::TestOperationHost {
public:
    CIMInstanceProvider* instances = 0;
    CIMMethodProvider* methods = 0;

    static CIMObjectPath fullPath(const CIMNamespaceName& ns, const CIMObjectPath& name)
    {
        return CIMObjectPath("testhost", ns, name.getClassName(), name.getKeyBindings());
    }

    CIMInstance getInstance(const OperationContext& context, const CIMNamespaceName& ns,
                            const CIMObjectPath& name, Boolean, Boolean includeQualifiers,
                            Boolean includeClassOrigin, const CIMPropertyList& propertyList)
    {
        InstanceCollector h;
        instances->getInstance(context, fullPath(ns, name), includeQualifiers, includeClassOrigin,
                               propertyList, h);
        return h.items[0];
    }

    void enumerateInstanceNames(const OperationContext& context, const CIMNamespaceName& ns,
                                const CIMName& className, ObjectPathResponseHandler& handler)
    {
        contexts.push_back(context);
        instances->enumerateInstanceNames(context, CIMObjectPath("testhost", ns, className),
                                          handler);
    }

    CIMValue invokeMethod(const OperationContext& context, const CIMNamespaceName& ns,
                          const CIMObjectPath& name, const CIMName& methodName,
                          const Array<CIMParamValue>& in, Array<CIMParamValue>& out)
    {
        MethodCollector h;
        methods->invokeMethod(context, fullPath(ns, name), methodName, in, h);
        out.appendArray(h.out);
        return h.result;
    }
};

class ProviderModuleTest : public ::testing::Test {
protected:
    void SetUp()
    {
        module = dlopen(TEST_PROVIDER_MODULE, RTLD_LAZY | RTLD_GLOBAL);
        ASSERT_TRUE(module != 0) << dlerror();
        create = reinterpret_cast<CreateProvider>(dlsym(module, "PegasusCreateProvider"));
        live = reinterpret_cast<LiveProviders>(dlsym(module, "ZARTestLiveProviders"));
        ASSERT_TRUE(create != 0 && live != 0);
    }

    void TearDown()
    {
        if (module)
            dlclose(module);
    }

    // Creates and initializes the provider with a handle bound to host.
    CIMProvider* Load()
    {
        CIMProvider* provider = create("ZAR_TestVolumeProvider");
        if (!provider)
            return 0;
        host.instances = dynamic_cast<CIMInstanceProvider*>(provider);
        host.methods = dynamic_cast<CIMMethodProvider*>(provider);
        CIMOMHandle cimom = createCIMOMHandle(host);
        provider->initialize(cimom);
        return provider;
    }

    CIMValue Invoke(const char* method, const Array<CIMParamValue>& in, Array<CIMParamValue>& out,
                    const OperationContext& context)
    {
        return host.invokeMethod(context, NS, CIMObjectPath("ZAR_TestVolume.Name=\"vol0\""), method,
                                 in, out);
    }

    void* module = 0;
    CreateProvider create = 0;
    LiveProviders live = 0;
    ProviderHost host;
};

TEST_F(ProviderModuleTest, FactoryCreatesOnlyKnownProviders)
{
    EXPECT_EQ(create("NoSuchProvider"), (CIMProvider*)0);
    CIMProvider* provider = create("ZAR_TestVolumeProvider");
    ASSERT_TRUE(provider != 0);
    EXPECT_EQ(live(), 1);
    EXPECT_TRUE(dynamic_cast<CIMInstanceProvider*>(provider) != 0);
    EXPECT_TRUE(dynamic_cast<CIMMethodProvider*>(provider) != 0);
    EXPECT_TRUE(dynamic_cast<CIMAssociationProvider*>(provider) == 0)
        << "the interface check of the server must fail for associations";
    // One CIMProvider subobject, whichever interface it is reached from.
    EXPECT_EQ(static_cast<CIMProvider*>(dynamic_cast<CIMMethodProvider*>(provider)), provider);
    provider->terminate();
    EXPECT_EQ(live(), 0) << "terminate() deletes the provider";
}

TEST_F(ProviderModuleTest, InstanceOperations)
{
    CIMProvider* provider = Load();
    ASSERT_TRUE(provider != 0);
    CIMInstanceProvider& p = *host.instances;
    OperationContext ctx;
    CIMObjectPath classRef("testhost", NS, "ZAR_TestVolume");

    PathCollector names;
    p.enumerateInstanceNames(ctx, classRef, names);
    ASSERT_EQ(names.items.size(), 2u);
    EXPECT_EQ(names.items[1].toString(), "//testhost/root/zar:ZAR_TestVolume.Name=\"vol1\"");

    Array<CIMName> only;
    only.append("size");
    InstanceCollector got;
    p.getInstance(ctx, names.items[1], false, false, CIMPropertyList(only), got);
    ASSERT_EQ(got.items.size(), 1u);
    EXPECT_TRUE(got.completed);
    ASSERT_EQ(got.items[0].getPropertyCount(), 1u);
    EXPECT_EQ(got.items[0].getProperty(0).getValue(), CIMValue(Uint32(20)));

    CIMInstance fresh("ZAR_TestVolume");
    fresh.addProperty(CIMProperty("Name", CIMValue(String("vol2"))));
    fresh.addProperty(CIMProperty("Size", CIMValue(Uint32(5))));
    PathCollector created;
    p.createInstance(ctx, classRef, fresh, created);
    ASSERT_EQ(created.items.size(), 1u);
    EXPECT_THROW(p.createInstance(ctx, classRef, fresh, created), CIMObjectAlreadyExistsException);

    provider->terminate();
    EXPECT_EQ(live(), 0);
}

TEST_F(ProviderModuleTest, MethodsAndCallsBackIntoTheServer)
{
    CIMProvider* provider = Load();
    ASSERT_TRUE(provider != 0);
    OperationContext ctx;
    ctx.insert(IdentityContainer("carol"));

    Array<CIMParamValue> in, out;
    in.append(CIMParamValue("Name", CIMValue(String("vol1"))));
    in.append(CIMParamValue("Size", CIMValue(Uint32(64))));
    EXPECT_EQ(Invoke("Resize", in, out, ctx), CIMValue(Uint32(0)));
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].getParameterName(), "OldSize");
    EXPECT_EQ(out[0].getValue(), CIMValue(Uint32(20)));

    CIMInstance resized = host.getInstance(ctx, NS, CIMObjectPath("ZAR_TestVolume.Name=\"vol1\""),
                                           false, false, false, CIMPropertyList());
    EXPECT_EQ(resized.getProperty(1).getValue(), CIMValue(Uint32(64)));

    // The provider asks the server, which routes back to the provider.
    Array<CIMParamValue> none;
    EXPECT_EQ(Invoke("CountVolumes", none, out, ctx), CIMValue(Uint32(2)));
    EXPECT_EQ(host.lastUser(), "carol") << "the handle passes the user on";

    EXPECT_EQ(Invoke("WhoAmI", none, out, ctx), CIMValue(String("carol")));

    OperationContext remote;
    remote.insert(IdentityContainer("dave"));
    remote.insert(ClientAddressContainer("198.51.100.4"));
    EXPECT_EQ(Invoke("ClientAddress", none, out, remote), CIMValue(String("198.51.100.4")));

    Array<CIMParamValue> missing;
    missing.append(CIMParamValue("Name", CIMValue(String("nope"))));
    EXPECT_EQ(ErrorOf([&] { Invoke("Resize", missing, out, ctx); }),
              std::make_pair(Uint32(CIM_ERR_NOT_FOUND), String("no volume nope")));
    EXPECT_THROW(Invoke("Explode", none, out, ctx), CIMMethodNotFoundException);
    provider->terminate();
}

}  // namespace
