// Tests of path matching, reference checks and the association filters.
#include <arpa/inet.h>

#include <ZAR_Common.h>

#include "CommonTestSupport.h"

using namespace Pegasus;
using namespace zartest;

namespace {

CIMObjectPath path(const char* text)
{
    return CIMObjectPath(String(text));
}

TEST(MatchObjectPath, IgnoresHostsAlsoInsideReferenceKeys)
{
    EXPECT_TRUE(ZAR_Common::matchObjectPath(path("//hostA/root/zar:ZAR_X.Name=\"a\""),
                                            path("//hostB/root/zar:ZAR_X.Name=\"a\"")));
    EXPECT_TRUE(ZAR_Common::matchObjectPath(
        path("root/zar:ZAR_A.Ref=\"//h1/root/zar:ZAR_X.Name=\\\"a\\\"\""),
        path("//h9/root/zar:ZAR_A.Ref=\"root/zar:ZAR_X.Name=\\\"a\\\"\"")));
    EXPECT_FALSE(
        ZAR_Common::matchObjectPath(path("root/zar:ZAR_A.Ref=\"root/zar:ZAR_X.Name=\\\"a\\\"\""),
                                    path("root/zar:ZAR_A.Ref=\"root/zar:ZAR_X.Name=\\\"b\\\"\"")));
}

TEST(MatchObjectPath, NamespacesCountAndStringKeysCompareAsText)
{
    EXPECT_FALSE(
        ZAR_Common::matchObjectPath(path("root/zar:ZAR_X.Name=\"a\""), path("ZAR_X.Name=\"a\"")));
    EXPECT_FALSE(
        ZAR_Common::matchObjectPath(path("ZAR_X.Name=\"abc\""), path("ZAR_X.Name=\"ABC\"")));
    EXPECT_TRUE(
        ZAR_Common::matchObjectPath(path("ZAR_X.Name=\"abc\""), path("zar_x.name=\"abc\"")));
    // View identifiers are not paths and stay ordinary strings.
    EXPECT_TRUE(ZAR_Common::matchObjectPath(path("ZAR_X.DeviceID=\"MS:0:1:2:17\""),
                                            path("ZAR_X.DeviceID=\"MS:0:1:2:17\"")));
    Array<CIMKeyBinding> empty;
    empty.append(CIMKeyBinding("Name", String(), CIMKeyBinding::STRING));
    CIMObjectPath e1(String(), CIMNamespaceName(), "ZAR_X", empty);
    EXPECT_TRUE(ZAR_Common::matchObjectPath(e1, e1));
}

TEST(MatchObjectPath, StringKeyHoldingAPathMatchesReferenceKey)
{
    Array<CIMKeyBinding> asString;
    asString.append(
        CIMKeyBinding("Ref", String("//h/root/zar:ZAR_X.Name=\"a\""), CIMKeyBinding::STRING));
    CIMObjectPath s(String(), CIMNamespaceName("root/zar"), "ZAR_A", asString);
    EXPECT_TRUE(ZAR_Common::matchObjectPath(
        s, path("root/zar:ZAR_A.Ref=\"root/zar:ZAR_X.Name=\\\"a\\\"\"")));
}

class VerifyRefTest : public FreshArray {
protected:
    void SetUp() override
    {
        FreshArray::SetUp();
        ASSERT_EQ(0, zarsim_seed_demo());
        ASSERT_EQ(0, cim_sem_wait());
        ASSERT_EQ(0, api_getSystemDualIP(&addr_));
        cim_sem_post();
    }
    _api_ipaddr_t addr_{};
};

TEST_F(VerifyRefTest, NamespaceIsSetWhenMissingAndChecked)
{
    String host("array1");
    CIMObjectPath ref = path("ZAR_StorageVolume.DeviceID=\"v1\"");
    EXPECT_TRUE(ZAR_Common::verifyRefMethodParam(ref, "root/zar", host));
    EXPECT_EQ("root/zar", text(ref.getNameSpace().getString()));

    LogCapture log;
    CIMObjectPath other = path("root/other:ZAR_StorageVolume.DeviceID=\"v1\"");
    EXPECT_FALSE(ZAR_Common::verifyRefMethodParam(other, "root/zar", host));
    EXPECT_TRUE(log.has("The ref param " + text(other.toString()) +
                        " contains the wrong name space root/other\n"));
}

TEST_F(VerifyRefTest, HostMustBeTheArraysNameOrAddress)
{
    String host("array1");
    CIMObjectPath byName = path("//ARRAY1/root/zar:ZAR_X.K=\"1\"");
    EXPECT_TRUE(ZAR_Common::verifyRefMethodParam(byName, "root/zar", host));

    char v4[INET_ADDRSTRLEN];
    ASSERT_TRUE(inet_ntop(AF_INET, &addr_.ipv4_addr, v4, sizeof(v4)));
    CIMObjectPath byV4(String("//") + v4 + "/root/zar:ZAR_X.K=\"1\"");
    EXPECT_TRUE(ZAR_Common::verifyRefMethodParam(byV4, "root/zar", host));
    // IPv4 addresses compare as text.
    ASSERT_STREQ("192.0.2.10", v4);
    CIMObjectPath zeros = path("//192.000.002.010/root/zar:ZAR_X.K=\"1\"");
    EXPECT_FALSE(ZAR_Common::verifyRefMethodParam(zeros, "root/zar", host));

    LogCapture log;
    CIMObjectPath foreign = path("//elsewhere/root/zar:ZAR_X.K=\"1\"");
    EXPECT_FALSE(ZAR_Common::verifyRefMethodParam(foreign, "root/zar", host));
    EXPECT_TRUE(log.has("The ref host [elsewhere] does not match for this host!\n"));
}

TEST_F(VerifyRefTest, ClassOverloadsCheckTheClassIgnoringCase)
{
    String host("array1");
    CIMObjectPath ref = path("root/zar:ZAR_StorageVolume.DeviceID=\"v1\"");
    EXPECT_TRUE(
        ZAR_Common::verifyRefMethodParam(ref, "root/zar", host, CIMName("zar_storagevolume")));
    EXPECT_FALSE(
        ZAR_Common::verifyRefMethodParam(ref, "root/zar", host, CIMName("ZAR_SCSIController")));
    Array<CIMName> classes;
    classes.append("ZAR_SCSIController");
    EXPECT_FALSE(ZAR_Common::verifyRefMethodParam(ref, "root/zar", host, classes));
    classes.append("ZAR_StorageVolume");
    EXPECT_TRUE(ZAR_Common::verifyRefMethodParam(ref, "root/zar", host, classes));
    // The right class does not excuse another namespace or host.
    CIMObjectPath elsewhere = path("//elsewhere/root/zar:ZAR_StorageVolume.DeviceID=\"v1\"");
    EXPECT_FALSE(ZAR_Common::verifyRefMethodParam(elsewhere, "root/zar", host,
                                                  CIMName("ZAR_StorageVolume")));
    EXPECT_FALSE(ZAR_Common::verifyRefMethodParam(elsewhere, "root/zar", host, classes));
}

TEST_F(VerifyRefTest, SystemAddressesComeFromTheArray)
{
    char v4[INET_ADDRSTRLEN];
    ASSERT_TRUE(inet_ntop(AF_INET, &addr_.ipv4_addr, v4, sizeof(v4)));
    EXPECT_EQ(v4, text(ZAR_Common::getSystemIPAddr(ZAR_Common::IP_TYPE_V4)));
    if (addr_.dual_flag > 2) {
        char v6[INET6_ADDRSTRLEN];
        ASSERT_TRUE(inet_ntop(AF_INET6, addr_.ipv6_addr, v6, sizeof(v6)));
        EXPECT_EQ(v6, text(ZAR_Common::getSystemIPAddr(ZAR_Common::IP_TYPE_V6)));
    }
    LogCapture log;
    EXPECT_EQ("", text(ZAR_Common::getSystemIPAddr(3)));
    EXPECT_TRUE(log.has("ZAR_Common, getSystemIPAddr: Invalid IP type parameter!\n"));
}

// The addresses are read once per process: an array with IPv6 only is
// tried in a process of its own.
TEST(SystemAddresses, AnArrayWithIPv6OnlyGivesItsIPv6Address)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            bool ok = zarsim_open(":memory:") == 0 && zarsim_seed_demo() == 0 &&
                      zarsim_set_config("ipv4", "") == 0 &&
                      zarsim_set_config("ipv6", "2001:DB8:0::10") == 0;
            exit(ok && ZAR_Common::getSystemIPAddr(ZAR_Common::IP_TYPE_V6) == "2001:db8::10" ? 0
                                                                                             : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

// An association instance ManagedElement -> Capabilities, as the
// association providers build them.
CIMInstance assoc(const char* system, const char* caps)
{
    CIMInstance i("ZAR_Assoc");
    i.addProperty(CIMProperty("ManagedElement", CIMValue(path(system))));
    i.addProperty(CIMProperty("Capabilities", CIMValue(path(caps))));
    i.addProperty(CIMProperty("Note", CIMValue(String("n"))));
    return i;
}

TEST(AssociationFilters, ReferenceNamesFollowClassAndRole)
{
    Array<CIMInstance> all;
    all.append(assoc("//h/root/zar:ZAR_Sys.Name=\"s1\"", "root/zar:ZAR_Cap.InstanceID=\"c1\""));
    all.append(assoc("root/zar:ZAR_Sys.Name=\"s2\"", "root/zar:ZAR_Cap.InstanceID=\"c2\""));
    CIMObjectPath s1 = path("//other/root/zar:ZAR_Sys.Name=\"s1\"");

    EXPECT_EQ(1u, ZAR_Common::filterReferenceNames(all, s1, CIMName(), "").size());
    EXPECT_EQ(1u, ZAR_Common::filterReferenceNames(all, s1, "ZAR_Assoc", "managedelement").size());
    EXPECT_EQ(0u, ZAR_Common::filterReferenceNames(all, s1, "ZAR_Other", "").size());
    EXPECT_EQ(0u, ZAR_Common::filterReferenceNames(all, s1, CIMName(), "Capabilities").size());
    CIMException e =
        cimErrorOf([&] { ZAR_Common::filterReferenceNames(all, s1, CIMName(), "Note"); });
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, e.getCode());
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, cimErrorOf([&] {
                                             ZAR_Common::filterReferenceNames(all, s1, CIMName(),
                                                                              "NoSuchRole");
                                         }).getCode());
}

TEST(AssociationFilters, TargetPathsSkipTheNearEndAndRepeatPerClassEntry)
{
    CIMInstance a = assoc("root/zar:ZAR_Sys.Name=\"s1\"", "root/zar:ZAR_Cap.InstanceID=\"c1\"");
    CIMObjectPath near = path("//h/root/zar:ZAR_Sys.Name=\"s1\"");
    Array<CIMName> none;
    Array<CIMObjectPath> far = ZAR_Common::filterAssocInstanceToTargetPaths(a, near, none, "");
    ASSERT_EQ(1u, far.size());
    EXPECT_EQ("ZAR_Cap", text(far[0].getClassName().getString()));

    Array<CIMName> twice;
    twice.append("ZAR_Cap");
    twice.append("zar_cap");
    EXPECT_EQ(2u, ZAR_Common::filterAssocInstanceToTargetPaths(a, near, twice, "").size());
    EXPECT_EQ(
        0u, ZAR_Common::filterAssocInstanceToTargetPaths(a, near, twice, "ManagedElement").size());

    CIMInstance target("ZAR_Cap");
    target.setPath(path("//x/root/zar:ZAR_Cap.InstanceID=\"c1\""));
    CIMInstance unrelated("ZAR_Cap");
    unrelated.setPath(path("root/zar:ZAR_Cap.InstanceID=\"c9\""));
    Array<CIMInstance> targets;
    targets.append(unrelated);
    targets.append(target);
    Array<CIMInstance> got =
        ZAR_Common::filterAssocInstanceToTargetInstances(a, near, targets, none, "Capabilities");
    ASSERT_EQ(1u, got.size());
    EXPECT_TRUE(got[0].identical(target));
}

TEST(MembershipTests, StringsExactlyNamesIgnoringCasePathsByMatch)
{
    Array<String> strings;
    strings.append("Host1");
    EXPECT_TRUE(ZAR_Common::isPartOfArray(String("Host1"), strings));
    EXPECT_FALSE(ZAR_Common::isPartOfArray(String("host1"), strings));
    Array<CIMName> names;
    names.append("ZAR_SCSIController");
    EXPECT_TRUE(ZAR_Common::isPartOfArray(CIMName("zar_scsicontroller"), names));
    Array<CIMObjectPath> paths;
    paths.append(path("//a/root/zar:ZAR_X.K=\"1\""));
    EXPECT_TRUE(ZAR_Common::isPartOfArray(path("//b/root/zar:ZAR_X.K=\"1\""), paths));
    EXPECT_FALSE(ZAR_Common::isPartOfArray(path("ZAR_X.K=\"1\""), paths));
    Array<CIMInstance> instances;
    instances.append(CIMInstance("ZAR_X"));
    instances[0].setPath(path("//a/root/zar:ZAR_X.K=\"1\""));
    EXPECT_TRUE(ZAR_Common::isPartOfArray(path("//b/root/zar:ZAR_X.K=\"1\""), instances));
    EXPECT_FALSE(ZAR_Common::isPartOfArray(path("//b/root/zar:ZAR_X.K=\"2\""), instances));
    EXPECT_FALSE(ZAR_Common::isPartOfArray(String("x"), Array<String>()));
    EXPECT_TRUE(ZAR_Common::isPoolPath(path("ZAR_Pool.InstanceID=\"POOL-1\""), "pool-1"));
    EXPECT_FALSE(ZAR_Common::isPoolPath(path("ZAR_Pool"), "pool-1"));
}

TEST(FCEndpointPath, NameIsTheWWNInUpperCaseOrTheTextAsGiven)
{
    auto name = [](const char* wwn) {
        return text(ZAR_Common::getStringProperty(
            ZAR_Common::buildFCEndpointPath("ZAR_SCSIProtocolFCEndpoint", "S", wwn), "Name"));
    };
    EXPECT_EQ("20110002AC13D621", name("20110002ac13d621"));
    EXPECT_EQ("00000000000000FF", name("ff"));
    // More than 16 digits is no port WWN.
    EXPECT_EQ("120110002ac13d621", name("120110002ac13d621"));
}

}  // namespace
