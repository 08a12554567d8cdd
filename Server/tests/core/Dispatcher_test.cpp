// Dispatcher: routing to the test providers, fan-out, filtering, checks on
// what providers deliver, associations, method parameters, error mapping.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include <pwd.h>
#include <unistd.h>

#include <Pegasus/Common/ClientAddressContainer.h>

#include "ClassRepository.h"
#include "CoreTestUtil.h"

using namespace zarserver;
using namespace Pegasus;
using coretest::failure;
using coretest::str;

namespace {

const CIMNamespaceName kNs("root/test");

class DispatcherTest : public ::testing::Test {
protected:
    DispatcherTest() : core(coretest::testConfig()), d(core.dispatcher()) {}

    static CIMObjectPath path(const char* text) { return CIMObjectPath(String(text)); }

    std::vector<std::string> enumerateNames(const char* cls, bool deep = true,
                                            const CIMPropertyList& pl = CIMPropertyList())
    {
        coretest::Instances h;
        d.enumerateInstances(ctx, kNs, CIMName(cls), deep, false, false, false, pl, h);
        EXPECT_EQ(1, h.completed);
        std::vector<std::string> out;
        for (Uint32 i = 0; i < h.items.size(); ++i) {
            const CIMInstance& inst = h.items[i];
            std::string props;
            for (Uint32 k = 0; k < inst.getPropertyCount(); ++k)
                props += (k ? "," : "") + str(inst.getProperty(k).getName().getString());
            out.push_back(str(inst.getPath().toString()) + " [" + props + "]");
        }
        std::sort(out.begin(), out.end());
        return out;
    }

    CIMInstance get(const CIMObjectPath& p, const CIMPropertyList& pl = CIMPropertyList(),
                    const CIMNamespaceName& ns = kNs)
    {
        return d.getInstance(ctx, ns, p, false, false, false, pl);
    }

    CIMValue invoke(const char* object, const char* method, const Array<CIMParamValue>& in,
                    Array<CIMParamValue>& out)
    {
        return d.invokeMethod(ctx, kNs, path(object), CIMName(method), in, out);
    }

    ServerCore core;
    CIMOperationHost& d;
    OperationContext ctx;
};

std::string outString(const Array<CIMParamValue>& out, const char* name)
{
    for (Uint32 i = 0; i < out.size(); ++i)
        if (String::equalNoCase(out[i].getParameterName(), name)) {
            String s;
            out[i].getValue().get(s);
            return str(s);
        }
    return "<missing>";
}

}  // namespace

TEST_F(DispatcherTest, EnumerationsReachEverySubclassProviderOnce)
{
    EXPECT_EQ((std::vector<std::string>{
                  "ZTest_SpecialWidget.Name=\"s1\" [Name,Count,Enabled,Made,Tags,Speciality]",
                  "ZTest_Widget.Name=\"w1\" [Name,Count,Enabled,Made,Tags]"}),
              enumerateNames("ZTest_Widget"));
    // Shallow: subclass instances keep only the requested class's properties.
    EXPECT_EQ(
        (std::vector<std::string>{"ZTest_SpecialWidget.Name=\"s1\" [Name,Count,Enabled,Made,Tags]",
                                  "ZTest_Widget.Name=\"w1\" [Name,Count,Enabled,Made,Tags]"}),
        enumerateNames("ZTest_Widget", false));
    EXPECT_EQ((std::vector<std::string>{
                  "ZTest_SpecialWidget.Name=\"s1\" [Name,Count,Enabled,Made,Tags,Speciality]"}),
              enumerateNames("ztest_specialwidget"));
    coretest::Paths names;
    d.enumerateInstanceNames(ctx, kNs, CIMName("ZTest_Widget"), names);
    EXPECT_EQ(2u, names.items.size());
    EXPECT_EQ(1, names.completed);
}

TEST_F(DispatcherTest, PropertyListFiltersWithoutTouchingProviderState)
{
    Array<CIMName> pl;
    pl.append(CIMName("count"));
    EXPECT_EQ((std::vector<std::string>{"ZTest_SpecialWidget.Name=\"s1\" [Count]",
                                        "ZTest_Widget.Name=\"w1\" [Count]"}),
              enumerateNames("ZTest_Widget", true, CIMPropertyList(pl)));
    EXPECT_EQ((std::vector<std::string>{"ZTest_SpecialWidget.Name=\"s1\" []",
                                        "ZTest_Widget.Name=\"w1\" []"}),
              enumerateNames("ZTest_Widget", true, CIMPropertyList(Array<CIMName>())));
    EXPECT_EQ(1u, get(path("ZTest_Widget.Name=\"w1\""), CIMPropertyList(pl)).getPropertyCount());
    EXPECT_EQ(5u, get(path("ZTest_Widget.Name=\"w1\"")).getPropertyCount());
}

TEST_F(DispatcherTest, InstanceLifecycleThroughTheProvider)
{
    CIMInstance w(CIMName("ZTest_Widget"));
    w.addProperty(CIMProperty(CIMName("Name"), CIMValue(String("w9"))));
    w.addProperty(CIMProperty(CIMName("Count"), CIMValue(Uint16(9))));
    CIMObjectPath p = d.createInstance(ctx, kNs, w);
    EXPECT_EQ("ZTest_Widget.Name=\"w9\"", str(p.toString()));
    EXPECT_EQ(CIM_ERR_ALREADY_EXISTS, failure([&] { d.createInstance(ctx, kNs, w); }).code);

    CIMInstance change(CIMName("ZTest_Widget"));
    change.addProperty(CIMProperty(CIMName("Count"), CIMValue(Uint16(10))));
    change.addProperty(CIMProperty(CIMName("Enabled"), CIMValue(Boolean(true))));
    change.setPath(p);
    Array<CIMName> only;
    only.append(CIMName("Count"));
    d.modifyInstance(ctx, kNs, change, false, CIMPropertyList(only));
    EXPECT_EQ(CIMValue(Uint16(10)), d.getProperty(ctx, kNs, p, CIMName("Count")));
    EXPECT_EQ(CIMValue(Boolean(false)),
              d.getProperty(ctx, kNs, p, CIMName("Enabled")));  // not in the list

    d.setProperty(ctx, kNs, p, CIMName("Enabled"), CIMValue(String("TRUE")));
    EXPECT_EQ(CIMValue(Boolean(true)), d.getProperty(ctx, kNs, p, CIMName("Enabled")));
    EXPECT_EQ(CIM_ERR_NO_SUCH_PROPERTY,
              failure([&] { d.getProperty(ctx, kNs, p, CIMName("Nope")); }).code);

    d.deleteInstance(ctx, kNs, p);
    EXPECT_EQ(CIM_ERR_NOT_FOUND, failure([&] { get(p); }).code);
}

TEST_F(DispatcherTest, DeliveriesAreChecked)
{
    struct Case {
        const char* name;
        const char* message;
    } cases[] = {
        {"__twice", "Too many objects delivered."},
        {"__none", "Too few objects delivered."},
        {"__uninit", "The object is not initialized."},
    };
    for (const Case& c : cases) {
        std::string p = std::string("ZTest_Widget.Name=\"") + c.name + "\"";
        auto f = failure([&] { get(path(p.c_str())); });
        EXPECT_EQ(CIM_ERR_FAILED, f.code) << c.name;
        EXPECT_EQ(c.message, f.message);
    }
    Array<CIMParamValue> out;
    auto f = failure(
        [&] { invoke("ZTest_Service.Name=\"svc\"", "NullReturn", Array<CIMParamValue>(), out); });
    EXPECT_EQ(CIM_ERR_FAILED, f.code);
    EXPECT_EQ("The object is not initialized.", f.message);
}

TEST_F(DispatcherTest, ClassesWithoutProviderServeTheirMofInstancesReadOnly)
{
    CIMNamespaceName interop("root/PG_InterOp");
    coretest::Instances modules;
    d.enumerateInstances(ctx, interop, CIMName("PG_ProviderModule"), true, false, false, false,
                         CIMPropertyList(), modules);
    EXPECT_EQ(2u, modules.items.size());
    CIMInstance m =
        get(path("PG_ProviderModule.Name=\"ZTest_Module\""), CIMPropertyList(), interop);
    EXPECT_EQ(CIMValue(String("ZarTestProvider")),
              m.getProperty(m.findProperty(CIMName("Location"))).getValue());
    EXPECT_EQ(CIM_ERR_NOT_FOUND, failure([&] {
                                     get(path("PG_ProviderModule.Name=\"none\""), CIMPropertyList(),
                                         interop);
                                 }).code);
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED, failure([&] { d.createInstance(ctx, interop, m); }).code);
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED,
              failure([&] { d.deleteInstance(ctx, interop, m.getPath()); }).code);
}

TEST_F(DispatcherTest, NamespaceAndClassErrors)
{
    EXPECT_EQ(CIM_ERR_INVALID_NAMESPACE,
              failure([&] {
                  coretest::Instances h;
                  d.enumerateInstances(ctx, CIMNamespaceName("root/none"), CIMName("ZTest_Widget"),
                                       true, false, false, false, CIMPropertyList(), h);
              }).code);
    EXPECT_EQ(CIM_ERR_INVALID_CLASS, failure([&] { get(path("Nope.Name=\"x\"")); }).code);
}

TEST_F(DispatcherTest, AssociationsRouteFilterAndCompletePaths)
{
    CIMObjectPath g1 = path("ZTest_Gadget.Name=\"g1\"");
    coretest::Paths names;
    d.associatorNames(ctx, kNs, g1, CIMName(), CIMName(), String(), String(), names);
    EXPECT_EQ(1, names.completed);
    ASSERT_EQ(2u, names.items.size());
    for (Uint32 i = 0; i < names.items.size(); ++i) {
        EXPECT_EQ("testhost", str(names.items[i].getHost()));
        EXPECT_EQ("root/test", str(names.items[i].getNameSpace().getString()));
    }
    // resultClass narrows to the subclass; the server drops the other widget.
    coretest::Objects special;
    d.associators(ctx, kNs, g1, CIMName(), CIMName("ZTest_SpecialWidget"), String(), String(),
                  false, false, CIMPropertyList(), special);
    ASSERT_EQ(1u, special.items.size());
    EXPECT_EQ("ZTest_SpecialWidget", str(special.items[0].getClassName().getString()));

    coretest::Objects refs;
    d.references(ctx, kNs, path("ZTest_Widget.Name=\"w1\""), CIMName(), String(), false, false,
                 CIMPropertyList(), refs);
    ASSERT_EQ(1u, refs.items.size());
    EXPECT_EQ("ZTest_WidgetGadget", str(refs.items[0].getClassName().getString()));

    // Filters on the class definitions leave no provider to ask.
    struct Case {
        const char* assoc;
        const char* result;
        const char* role;
        const char* resultRole;
    } none[] = {
        {"ZTest_Widget", nullptr, "", ""},   // not an association of this object
        {nullptr, "ZTest_Service", "", ""},  // nothing of that class at the far end
        {nullptr, nullptr, "Widget", ""},    // a gadget never plays Widget
        {nullptr, nullptr, "", "Gadget"},    // nor is a gadget at the far end
    };
    for (const Case& c : none) {
        coretest::Paths p;
        d.associatorNames(ctx, kNs, g1, c.assoc ? CIMName(c.assoc) : CIMName(),
                          c.result ? CIMName(c.result) : CIMName(), String(c.role),
                          String(c.resultRole), p);
        EXPECT_EQ(0u, p.items.size())
            << (c.assoc ? c.assoc : "") << (c.result ? c.result : "") << c.role << c.resultRole;
        EXPECT_EQ(1, p.completed);
    }
    coretest::Paths rn;
    d.referenceNames(ctx, kNs, g1, CIMName("ZTest_WidgetGadget"), String("Gadget"), rn);
    EXPECT_EQ(2u, rn.items.size());
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure([&] {
                                             coretest::Paths p;
                                             d.referenceNames(ctx, kNs, path("Nope.K=1"), CIMName(),
                                                              String(), p);
                                         }).code);
}

TEST_F(DispatcherTest, MethodParametersArriveTypedAsDeclared)
{
    Array<CIMParamValue> in, out;
    const String tagTexts[] = {"a", "b"}, levelTexts[] = {"2", "3"};
    Array<String> tags(tagTexts, 2), levels(levelTexts, 2);
    Array<CIMObjectPath> targets;
    targets.append(path("//clienthost/root/test:ZTest_Widget.Name=\"w1\""));
    targets.append(path("//clienthost/root/test:ZTest_Widget.Name=\"s1\""));
    in.append(CIMParamValue("Label", CIMValue(String("hello")), false));
    in.append(CIMParamValue("Tags", CIMValue(tags), false));
    in.append(CIMParamValue("Levels", CIMValue(levels), false));
    in.append(CIMParamValue("force", CIMValue(String("true")), false));
    in.append(CIMParamValue("Target", CIMValue(targets[0]), true));
    in.append(CIMParamValue("Targets", CIMValue(targets), true));
    in.append(CIMParamValue("Ignored", CIMValue(String("x")), false));
    CIMValue rc = invoke("ztest_service.Name=\"svc\"", "Configure", in, out);
    EXPECT_EQ(CIMValue(Uint32(0)), rc);
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ("Summary", str(out[0].getParameterName()));
    EXPECT_EQ("Chosen", str(out[1].getParameterName()));
    EXPECT_EQ("ChosenAll", str(out[2].getParameterName()));
    EXPECT_EQ(
        "Path=//testhost/root/test:ztest_service.Name=\"svc\";Label=hello(string);"
        "Tags=a|b(string[]);Levels=2|3(uint16[]);force=TRUE(boolean);"
        "Target=//clienthost/root/test:ZTest_Widget.Name=\"w1\"(reference);"
        "Targets=2 refs(reference[]);Ignored=x(string)",
        outString(out, "Summary"));
    Array<CIMObjectPath> chosen;
    out[2].getValue().get(chosen);
    EXPECT_EQ(2u, chosen.size());

    Array<CIMParamValue> bad;
    bad.append(CIMParamValue("Levels", CIMValue(String("70000")), false));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER,
              failure([&] { invoke("ZTest_Service.Name=\"svc\"", "Configure", bad, out); }).code);
}

TEST_F(DispatcherTest, ProviderExceptionsBecomeCimErrors)
{
    const char* svc = "ZTest_Service.Name=\"svc\"";
    struct Case {
        const char* object;
        const char* method;
        const char* param;  // a string input parameter, or nullptr
        const char* value;
        CIMStatusCode code;
        const char* message;  // nullptr: not checked
    } cases[] = {
        {svc, "Throw", "Kind", "cim", CIM_ERR_ACCESS_DENIED, "Insufficient privilege"},
        {svc, "Throw", "Kind", "notfound", CIM_ERR_NOT_FOUND, "Test CIM Object not found."},
        {svc, "Throw", "Kind", "pegasus", CIM_ERR_FAILED, "plain pegasus exception"},
        {svc, "Throw", "Kind", "std", CIM_ERR_FAILED, "std boom"},
        {svc, "Throw", "Kind", "typemismatch", CIM_ERR_FAILED, "type mismatch"},
        {svc, "Throw", "Kind", "int", CIM_ERR_FAILED, "Unknown error."},
        {svc, "Fail", "Reason", "x", CIMStatusCode(4097), "LU=x: bad\n"},
        // Undeclared methods still reach the provider.
        {svc, "Bogus", nullptr, nullptr, CIM_ERR_METHOD_NOT_FOUND, "unknown method Bogus"},
        // A provider registered for methods that is no method provider.
        {"ZTest_Gadget.Name=\"g1\"", "Anything", nullptr, nullptr, CIM_ERR_NOT_SUPPORTED,
         "Invalid provider interface."},
        {"ZTest_Widget.Name=\"w1\"", "Anything", nullptr, nullptr, CIM_ERR_NOT_SUPPORTED, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.object) + " " + c.method + " " + (c.value ? c.value : ""));
        Array<CIMParamValue> in, out;
        if (c.param)
            in.append(CIMParamValue(c.param, CIMValue(String(c.value))));
        auto f = failure([&] { invoke(c.object, c.method, in, out); });
        EXPECT_EQ(c.code, f.code);
        if (c.message) {
            EXPECT_EQ(c.message, f.message);
        }
    }
}

TEST_F(DispatcherTest, ProvidersSeeTheCallersIdentityAndAddress)
{
    auto whoAmI = [&](const OperationContext& context) {
        Array<CIMParamValue> out;
        d.invokeMethod(context, kNs, path("ZTest_Service.Name=\"svc\""), CIMName("WhoAmI"),
                       Array<CIMParamValue>(), out);
        return std::make_pair(outString(out, "User"), outString(out, "Address"));
    };
    // A request without an identity is the server's own (a provider's
    // CIMOMHandle): it carries the user the server runs as.
    struct passwd* pw = getpwuid(geteuid());
    ASSERT_NE(nullptr, pw);
    EXPECT_EQ(std::make_pair(std::string(pw->pw_name), std::string()), whoAmI(ctx));
    // A client that named nobody stays nobody.
    OperationContext anonymous;
    anonymous.insert(IdentityContainer(String()));
    EXPECT_EQ("", whoAmI(anonymous).first);
    ctx.insert(IdentityContainer(String("alice")));
    ctx.insert(ClientAddressContainer(String("10.0.0.7")));
    EXPECT_EQ(std::make_pair(std::string("alice"), std::string("10.0.0.7")), whoAmI(ctx));
}
