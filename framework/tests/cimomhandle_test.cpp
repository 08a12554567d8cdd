// Tests of CIMOMHandle against an in-memory operation host: forwarding of
// every kind of operation, the context passed on, results as independent
// values, error mapping, handle sharing and the unload count.

#include <Pegasus/Common/ClientAddressContainer.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <zarframework/CIMOMHandleHost.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

#include "TestOperationHost.h"

PEGASUS_USING_PEGASUS;
using zartest::ErrorOf;
using zartest::TestOperationHost;
using zartest::Volume;

namespace {

const CIMNamespaceName NS("root/zar");

class CIMOMHandleTest : public ::testing::Test {
protected:
    void SetUp()
    {
        host.store(NS, Volume("v1", 10));
        host.store(NS, Volume("v2", 20));
        CIMClass c("ZAR_Volume");
        c.addProperty(CIMProperty("Name", CIMValue(CIMTYPE_STRING, false)));
        host.classes.push_back(c);
        setLocalOperationHost(&host);
    }
    void TearDown() { setLocalOperationHost(0); }

    TestOperationHost host;
    CIMOMHandle cimom;
};

TEST(CIMOMHandleNoHostTest, FailsClearlyWithoutAServer)
{
    setLocalOperationHost(0);
    CIMOMHandle cimom;
    std::pair<Uint32, String> e =
        ErrorOf([&] { cimom.enumerateInstanceNames(OperationContext(), NS, "ZAR_Volume"); });
    EXPECT_EQ(e.first, Uint32(CIM_ERR_FAILED));
    EXPECT_NE(e.second.find("no CIM server"), PEG_NOT_FOUND) << e.second;
}

TEST_F(CIMOMHandleTest, HandlesReachTheHostTheyAreBoundTo)
{
    setLocalOperationHost(0);
    CIMOMHandle early;
    setLocalOperationHost(&host);
    EXPECT_EQ(early.enumerateInstanceNames(OperationContext(), NS, "ZAR_Volume").size(), 2u);

    TestOperationHost second;
    second.store(NS, Volume("only", 1));
    CIMOMHandle bound = createCIMOMHandle(second);
    EXPECT_EQ(bound.enumerateInstanceNames(OperationContext(), NS, "ZAR_Volume").size(), 1u);
    setLocalOperationHost(0);
    EXPECT_EQ(bound.enumerateInstanceNames(OperationContext(), NS, "ZAR_Volume").size(), 1u);
    EXPECT_EQ(
        ErrorOf([&] { cimom.enumerateInstanceNames(OperationContext(), NS, "ZAR_Volume"); }).first,
        Uint32(CIM_ERR_FAILED));
}

TEST_F(CIMOMHandleTest, PassesOnIdentityLanguagesAndAddressOnly)
{
    OperationContext context;
    context.insert(IdentityContainer("alice"));
    context.insert(ClientAddressContainer("192.0.2.1"));
    context.insert(TimeoutContainer(10));
    context.insert(ContentLanguageListContainer(ContentLanguageList()));
    cimom.enumerateInstanceNames(context, NS, "ZAR_Volume");
    EXPECT_EQ(host.lastUser(), "alice");
    const OperationContext& seen = host.contexts.back();
    EXPECT_TRUE(seen.contains(ClientAddressContainer::NAME));
    EXPECT_TRUE(seen.contains(ContentLanguageListContainer::NAME));
    EXPECT_FALSE(seen.contains(TimeoutContainer::NAME));

    // Without an identity the request goes without one: the host names the
    // server's own user then.
    cimom.enumerateInstanceNames(OperationContext(), NS, "ZAR_Volume");
    EXPECT_EQ(host.lastUser(), "<none>");
    EXPECT_FALSE(host.contexts.back().contains(ClientAddressContainer::NAME));

    // The response context carries the content languages.
    OperationContext response = cimom.getResponseContext();
    EXPECT_TRUE(response.contains(ContentLanguageListContainer::NAME));
}

TEST_F(CIMOMHandleTest, InstanceOperationsRoundTrip)
{
    OperationContext ctx;
    Array<CIMInstance> all = cimom.enumerateInstances(ctx, NS, "ZAR_Volume", true, false, false,
                                                      false, CIMPropertyList());
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].getPath().getHost(), "testhost")
        << "a CIMOMHandle hands paths back as the server gives them";

    Array<CIMObjectPath> names = cimom.enumerateInstanceNames(ctx, NS, "ZAR_Volume");
    ASSERT_EQ(names.size(), 2u);

    CIMInstance v2 = cimom.getInstance(ctx, NS, names[1], false, false, false, CIMPropertyList());
    Uint32 size = 0;
    v2.getProperty(v2.findProperty("Size")).getValue().get(size);
    EXPECT_EQ(size, 20u);

    CIMObjectPath created = cimom.createInstance(ctx, NS, Volume("v3", 30));
    EXPECT_EQ(created.toString(), "//testhost/root/zar:ZAR_Volume.Name=\"v3\"");

    cimom.setProperty(ctx, NS, created, "Size", CIMValue(Uint32(31)));
    EXPECT_EQ(cimom.getProperty(ctx, NS, created, "Size"), CIMValue(Uint32(31)));

    CIMInstance changed = Volume("v3", 33);
    cimom.modifyInstance(ctx, NS, changed, false, CIMPropertyList());
    EXPECT_EQ(cimom.getProperty(ctx, NS, created, "Size"), CIMValue(Uint32(33)));

    cimom.deleteInstance(ctx, NS, created);
    EXPECT_EQ(ErrorOf([&] { cimom.deleteInstance(ctx, NS, created); }).first,
              Uint32(CIM_ERR_NOT_FOUND));
}

TEST_F(CIMOMHandleTest, ResultsAreIndependentCopies)
{
    OperationContext ctx;
    CIMInstance v1 = cimom.getInstance(ctx, NS, CIMObjectPath("ZAR_Volume.Name=\"v1\""), false,
                                       false, false, CIMPropertyList());
    v1.getProperty(1).setValue(CIMValue(Uint32(999)));
    Array<CIMInstance> all = cimom.enumerateInstances(ctx, NS, "ZAR_Volume", true, false, false,
                                                      false, CIMPropertyList());
    all[1].removeProperty(0);
    CIMClass c = cimom.getClass(ctx, NS, "ZAR_Volume", false, true, false, CIMPropertyList());
    c.removeProperty(0);

    Uint32 size = 0;
    host.instances[0].getProperty(1).getValue().get(size);
    EXPECT_EQ(size, 10u);
    EXPECT_EQ(host.instances[1].getPropertyCount(), 2u);
    EXPECT_EQ(host.classes[0].getPropertyCount(), 1u);
}

TEST_F(CIMOMHandleTest, ClassAndAssociationOperations)
{
    OperationContext ctx;
    EXPECT_EQ(cimom.enumerateClassNames(ctx, NS, CIMName(), true).size(), 1u);
    EXPECT_EQ(cimom.enumerateClasses(ctx, NS, CIMName(), true, false, true, false).size(), 1u);
    EXPECT_EQ(ErrorOf([&] {
                  cimom.getClass(ctx, NS, "ZAR_None", false, true, false, CIMPropertyList());
              }).first,
              Uint32(CIM_ERR_NOT_FOUND));

    CIMObjectPath v1("ZAR_Volume.Name=\"v1\"");
    Array<CIMObject> others = cimom.associators(ctx, NS, v1, CIMName(), CIMName(), String(),
                                                String(), false, false, CIMPropertyList());
    ASSERT_EQ(others.size(), 1u);
    EXPECT_TRUE(others[0].isInstance());
    EXPECT_EQ(cimom.associatorNames(ctx, NS, v1, CIMName(), CIMName(), String(), String()).size(),
              1u);
    EXPECT_EQ(ErrorOf([&] { cimom.referenceNames(ctx, NS, v1, CIMName(), String()); }).first,
              Uint32(CIM_ERR_NOT_SUPPORTED));

    EXPECT_EQ(ErrorOf([&] { cimom.execQuery(ctx, NS, "WQL", "select * from ZAR_Volume"); }).first,
              Uint32(CIM_ERR_NOT_SUPPORTED));
    EXPECT_EQ(ErrorOf([&] { cimom.deleteClass(ctx, NS, "ZAR_Volume"); }).first,
              Uint32(CIM_ERR_NOT_SUPPORTED));
}

TEST_F(CIMOMHandleTest, InvokeMethodReplacesOutputParameters)
{
    Array<CIMParamValue> in;
    in.append(CIMParamValue("A", CIMValue(String("x"))));
    in.append(CIMParamValue("B", CIMValue(Uint16(2))));
    Array<CIMParamValue> out;
    out.append(CIMParamValue("Stale", CIMValue(true)));
    CIMValue rc = cimom.invokeMethod(OperationContext(), NS,
                                     CIMObjectPath("ZAR_Volume.Name=\"v1\""), "Echo", in, out);
    EXPECT_EQ(rc, CIMValue(Uint32(2)));
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0].getParameterName(), "A");
    CIMValue changed(String("y"));
    out[0].setValue(changed);
    String s;
    in[0].getValue().get(s);
    EXPECT_EQ(s, "x") << "output parameters are copies";
}

TEST_F(CIMOMHandleTest, ErrorsKeepTheirCodeAndBecomeCIMExceptions)
{
    CIMObjectPath target("ZAR_Volume.Name=\"v1\"");
    Array<CIMParamValue> in, out;
    OperationContext ctx;
    const struct {
        const char* method;
        Uint32 code;
        const char* message;
    } cases[] = {
        {"Fail", 4097, "LU=x: bad\n"},
        {"Mismatch", CIM_ERR_FAILED, "type mismatch"},
        {"Std", CIM_ERR_FAILED, "std boom"},
        {"Latin1", CIM_ERR_FAILED, "Unknown error."},  // a what() that is not UTF-8
        {"Int", CIM_ERR_FAILED, "Unknown error."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ErrorOf([&] { cimom.invokeMethod(ctx, NS, target, c.method, in, out); }),
                  std::make_pair(c.code, String(c.message)))
            << c.method;
    EXPECT_EQ(ErrorOf([&] {
                  cimom.getInstance(ctx, NS, CIMObjectPath("ZAR_Volume.Name=\"none\""), false,
                                    false, false, CIMPropertyList());
              }),
              std::make_pair(Uint32(CIM_ERR_NOT_FOUND), String("ZAR_Volume.Name=\"none\"")));
}

TEST_F(CIMOMHandleTest, CopiesShareTheUnloadCount)
{
    CIMOMHandle copy = cimom;
    EXPECT_TRUE(isProviderUnloadAllowed(cimom));
    copy.disallowProviderUnload();
    copy.disallowProviderUnload();
    EXPECT_FALSE(isProviderUnloadAllowed(cimom));
    cimom.allowProviderUnload();
    EXPECT_FALSE(isProviderUnloadAllowed(copy));
    cimom.allowProviderUnload();
    EXPECT_TRUE(isProviderUnloadAllowed(copy));

    CIMOMHandle other;
    other.disallowProviderUnload();
    EXPECT_TRUE(isProviderUnloadAllowed(cimom));
}

}  // namespace
