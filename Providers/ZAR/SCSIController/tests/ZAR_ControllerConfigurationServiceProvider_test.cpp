// The configuration service's instance, the dispatch of its methods (user,
// path, method name, per-method right), the result convention and the
// names of new hosts.
#include "../ZAR_ControllerConfigurationServiceProvider.h"
#include "ProviderAccess.h"
#include "ServiceFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class ServiceTest : public ServiceFixture {};

TEST_F(ServiceTest, TheOneInstanceCarriesTheArraysOwnerTexts)
{
    CIMObjectPath path = service();
    ASSERT_EQ(4u, path.getKeyBindings().size());
    EXPECT_EQ("ZAR_StorageSystem",
              text(ZAR_Common::getStringProperty(path, "SystemCreationClassName")));
    EXPECT_EQ("ZAR-DEMO", text(ZAR_Common::getStringProperty(path, "SystemName")));
    EXPECT_EQ("ZAR_ControllerConfigurationService",
              text(ZAR_Common::getStringProperty(path, "CreationClassName")));
    EXPECT_EQ("KESTREL_ControllerConfigurationService",
              text(ZAR_Common::getStringProperty(path, "Name")));

    // Asked through the CIM superclass, with another host in the path.
    LogCapture log;
    ProviderObject<ZAR_ControllerConfigurationServiceProvider> p(
        "ZAR_ControllerConfigurationServiceProvider");
    EXPECT_EQ(-1, log.indexOf("ZAR_ControllerConfigurationServiceProvider::initialize(): "
                              "api_zarOpenForCimserver failed\n"))
        << "an open that worked is not reported as failed";
    CIMObjectPath viaSuper("elsewhere", "root/zar", "CIM_ControllerConfigurationService",
                           path.getKeyBindings());
    Instances got;
    p->getInstance(as("p1browse"), viaSuper, false, false, CIMPropertyList(), got);
    ASSERT_EQ(1u, got.items.size());
    EXPECT_EQ(1, got.completeCalls);
    CIMInstance i = got.items[0];
    EXPECT_EQ("Storage team, extension 4242",
              text(ZAR_Common::getStringProperty(i, "PrimaryOwnerContact")));
    EXPECT_EQ("Demo Lab", text(ZAR_Common::getStringProperty(i, "PrimaryOwnerName")));
    EXPECT_EQ("Automatic", text(ZAR_Common::getStringProperty(i, "StartMode")));
    Boolean started = false;
    ASSERT_EQ(0, ZAR_Common::getProperty(i, "Started", started));
    EXPECT_TRUE(started);

    // The contact cannot be read: an empty text, not an error.
    zarsim_fail_next("api_getSystemContact", 1, 1, "Internal error of the array");
    Instances all;
    server().enumerateInstances(as("p1browse"), ns(), "ZAR_ControllerConfigurationService", true,
                                false, false, false, CIMPropertyList(), all);
    ASSERT_EQ(1u, all.items.size());
    EXPECT_EQ("", text(ZAR_Common::getStringProperty(all.items[0], "PrimaryOwnerContact")));
    EXPECT_EQ("Demo Lab", text(ZAR_Common::getStringProperty(all.items[0], "PrimaryOwnerName")));
}

TEST_F(ServiceTest, InstanceRefusals)
{
    ProviderObject<ZAR_ControllerConfigurationServiceProvider> p(
        "ZAR_ControllerConfigurationServiceProvider");
    CIMObjectPath path = service();
    Array<CIMKeyBinding> three = path.getKeyBindings();
    three.remove(3);
    Instances out;
    auto getAs = [&](const char* cls, const Array<CIMKeyBinding>& keys) {
        p->getInstance(as("p1browse"), CIMObjectPath("h", "root/zar", cls, keys), false, false,
                       CIMPropertyList(), out);
    };
    const char* own = "ZAR_ControllerConfigurationService";
    expectCIMError(CIM_ERR_INVALID_PARAMETER,
                   "ZAR_ControllerConfigurationService Expect four keys.",
                   [&] { getAs(own, three); });
    // The class name is tested before the keys.
    expectCIMError(CIM_ERR_NOT_SUPPORTED,
                   "ZAR_ControllerConfigurationService Invalid class nameCIM_Service",
                   [&] { getAs("CIM_Service", three); });
    Array<CIMKeyBinding> wrong = path.getKeyBindings();
    wrong[3].setValue("OTHER_ControllerConfigurationService");
    expectCIMError(CIM_ERR_NOT_FOUND, "ZAR_ControllerConfigurationService CIM Object not found.",
                   [&] { getAs(own, wrong); });

    EXPECT_EQ("Insufficient privilege for the user",
              text(cimErrorOf([&] {
                       p->getInstance(as("p1locked"), path, false, false, CIMPropertyList(), out);
                   }).getMessage()));
    EXPECT_EQ(
        "ZAR_ControllerConfigurationService does not support constructor with object path.",
        text(cimErrorOf([&] { ZAR_ControllerConfigurationServiceProvider x(path); }).getMessage()));
}

TEST_F(ServiceTest, DispatchChecksUserPathMethodAndRightInThatOrder)
{
    Array<CIMParamValue> none, out;
    CIMObjectPath path = service();
    Array<CIMKeyBinding> keys = path.getKeyBindings();
    keys[3].setValue("nope");
    CIMObjectPath wrongPath(path.getHost(), path.getNameSpace(), path.getClassName(), keys);

    struct Case {
        const char* user;
        CIMObjectPath target;
        const char* method;
        CIMStatusCode code;
        std::string message;
    } cases[] = {
        {"p1locked", path, "ExposePaths", CIM_ERR_ACCESS_DENIED,
         "Insufficient privilege for the user"},
        // A client that named no user is nobody, not the server.
        {"", path, "ExposePaths", CIM_ERR_ACCESS_DENIED, "Insufficient privilege for the user"},
        // The path is tested before the method name.
        {"p1super", wrongPath, "NoSuchMethod", CIM_ERR_NOT_FOUND,
         "ZAR_ControllerConfigurationService CIM Object not found."},
        // The method name before the right.
        {"p1browse", path, "NoSuchMethod", CIM_ERR_NOT_SUPPORTED,
         "ZAR_ControllerConfigurationService does not support method NoSuchMethod"},
        {"p1browse", path, "HidePaths", CIM_ERR_ACCESS_DENIED, "Insufficient generic privilege"},
        // Any letter case reaches the handler, which finds no parameters.
        {"p1super", path, "exposepaths", (CIMStatusCode)5, "Invalid number of parameters"},
        {"p1super", path, "DELETEPROTOCOLCONTROLLER", (CIMStatusCode)5,
         "Invalid number of parameters"},
        {"p1super", path, "HidePaths", (CIMStatusCode)5, "Invalid number of parameters"},
        {"p1super", path, "ExposeDefaultLUs", (CIMStatusCode)5, "Invalid number of parameters"},
        {"p1super", path, "ExposeLUsToStorageHardwareIDCollection", (CIMStatusCode)5,
         "Invalid number of parameters"},
    };
    for (Case& c : cases) {
        CIMException e = cimErrorOf(
            [&] { server().invokeMethod(as(c.user), ns(), c.target, c.method, none, out); });
        EXPECT_EQ(c.code, e.getCode()) << c.method;
        EXPECT_EQ(c.message, text(e.getMessage()));
    }

    // Reads from a client that named no user are refused alike.
    expectCIMError(CIM_ERR_ACCESS_DENIED, "Insufficient privilege for the user",
                   [&] { get(path, ""); });

    // The array cannot answer the per-method right: refused.
    zarsim_fail_next("api_authorizeCIMUser", 1, 1, "");
    expectCIMError(CIM_ERR_ACCESS_DENIED, "Insufficient generic privilege", [&] {
        server().invokeMethod(as("p1super"), ns(), path, "ExposePaths", none, out);
    });
    // A path of another class is not the service.
    CIMObjectPath viaSuper(path.getHost(), path.getNameSpace(),
                           "CIM_ControllerConfigurationService", path.getKeyBindings());
    ProviderObject<ZAR_ControllerConfigurationServiceProvider> p(
        "ZAR_ControllerConfigurationServiceProvider");
    struct Results : MethodResultResponseHandler {
        void processing() override {}
        void complete() override {}
        void deliverParamValue(const CIMParamValue&) override {}
        void deliverParamValue(const Array<CIMParamValue>&) override {}
        void deliver(const CIMValue&) override {}
    } results;
    CIMException e =
        cimErrorOf([&] { p->invokeMethod(as("p1super"), viaSuper, "ExposePaths", none, results); });
    EXPECT_EQ(CIM_ERR_NOT_FOUND, e.getCode());
}

TEST_F(ServiceTest, SuccessDeliversOutputsThenDescriptionsThenZero)
{
    ProviderObject<ZAR_ControllerConfigurationServiceProvider> p(
        "ZAR_ControllerConfigurationServiceProvider");
    struct Recorder : MethodResultResponseHandler {
        std::vector<std::string> calls;
        void processing() override { calls.push_back("processing"); }
        void complete() override { calls.push_back("complete"); }
        void deliverParamValue(const CIMParamValue& v) override
        {
            calls.push_back(text(v.getParameterName()));
        }
        void deliverParamValue(const Array<CIMParamValue>&) override { calls.push_back("array"); }
        void deliver(const CIMValue& v) override
        {
            Uint32 rc = 99;
            v.get(rc);
            calls.push_back("rc=" + std::to_string(rc));
        }
    } r;

    // A parameter of another type than the method declares ends the
    // reading (the server converts such values; a direct call does not).
    CIMException wrongType = cimErrorOf([&] {
        p->invokeMethod(
            as("p1super"), service(), "HidePaths",
            params({uint16s("LUNames", {1}), refs("ProtocolControllers", {view("HS:1")})}), r);
    });
    EXPECT_EQ(5, (int)wrongType.getCode());
    EXPECT_EQ("Invalid parameter: LUNames", text(wrongType.getMessage()));
    EXPECT_TRUE(r.calls.empty());

    LogCapture log;
    p->invokeMethod(
        as("p1super"), service(), "ExposePaths",
        params({strings("LUNames", {wwnOf("finance-08")}),
                refs("ProtocolControllers", {view("HS:" + std::to_string(hostID("db01")))})}),
        r);
    std::vector<std::string> expected = {"processing", "ProtocolControllers", "ResultDescriptions",
                                         "rc=0", "complete"};
    EXPECT_EQ(expected, r.calls);
    int overall = log.indexOf("Overall status of the operation = 0\n");
    EXPECT_GE(overall, 0);
    EXPECT_LT(overall,
              log.indexOf("<-- ZAR_ControllerConfigurationServiceProvider:: exposePaths\n"));
    EXPECT_TRUE(
        log.has("--> ZAR_ControllerConfigurationServiceProvider::invokeMethod(), methodName = "
                "ExposePaths \n"));
    EXPECT_TRUE(log.has("<-- ZAR_ControllerConfigurationServiceProvider::invokeMethod()\n"));
    EXPECT_TRUE(log.has("Param LUNames\n"));
}

TEST_F(ServiceTest, FailureJoinsTheDescriptionsAndDeliversNothing)
{
    LogCapture log;
    CIMException e = failure("ExposePaths", params({strings("LUNames", {"xyz", "uvw"}),
                                                    refs("ProtocolControllers", {view("HS:1")})}));
    EXPECT_EQ(4097, (int)e.getCode());
    EXPECT_EQ("LU=xyz: LUName is invalid\n; LU=uvw: LUName is invalid\n", text(e.getMessage()));
    // An exception passes invokeMethod without its exit line.
    EXPECT_EQ(-1, log.indexOf("<-- ZAR_ControllerConfigurationServiceProvider::invokeMethod()\n"));
}

TEST_F(ServiceTest, NamesOfNewHosts)
{
    ZAR_ControllerConfigurationServiceProvider p;
    String wwn("10000000C9A0FF01");
    EXPECT_EQ("host-10000000C9A0FF01", text(p.generateHostName(wwn, true)));
    String longID("0123456789ABCDEF0123456789ABCDEF");
    String cut = p.generateHostName(longID, true);
    EXPECT_EQ(31u, cut.size());
    EXPECT_EQ("host-0123456789ABCDEF0123456789", text(cut));
    String iqn("iqn.1994-05.com.example:x");
    String a = p.generateHostName(iqn, false), b = p.generateHostName(iqn, false);
    EXPECT_EQ(31u, a.size());
    EXPECT_EQ(0u, text(a).find("iSCSIHost-"));
    EXPECT_NE(text(a), text(b));
}

}  // namespace
