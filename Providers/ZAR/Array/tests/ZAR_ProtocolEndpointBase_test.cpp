// The FC and iSCSI target port endpoints through the server, and the static
// helpers that the configuration service calls: the FC endpoint path
// builder, the iSCSI name of a target name and the iSCSI view path builder.
#include <map>

#include "ModuleFixture.h"
#include <ZAR_Common.h>
#include <ZAR_SCSIProtocolFCEndpointProvider.h>
#include <ZAR_iSCSIControllerProvider.h>
#include <ZAR_iSCSIProtocolEndpointProvider.h>

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

using ProtocolEndpointTest = ModuleFixture;

TEST_F(ProtocolEndpointTest, OneFCEndpointPerFCPortNamedByItsWWN)
{
    std::vector<ArrayPort> ports = arrayPorts(PORT_TYPE_FC);
    ASSERT_FALSE(ports.empty());
    Array<CIMInstance> got = instances("ZAR_SCSIProtocolFCEndpoint");
    ASSERT_EQ(ports.size(), got.size());
    std::map<std::string, ArrayPort> byWWN;
    for (const ArrayPort& p : ports)
        byWWN[p.wwn] = p;
    for (Uint32 i = 0; i < got.size(); i++) {
        std::string name = prop(got[i], "Name");
        ASSERT_EQ(1u, byWWN.count(name)) << name;
        EXPECT_EQ(byWWN[name].deviceID, prop(got[i], "PortPosition"));
        EXPECT_EQ("2", prop(got[i], "ConnectionType"));
        EXPECT_EQ("3", prop(got[i], "Role"));
        EXPECT_EQ(name, key(got[i].getPath(), "Name"));
        // Fetched again by its path.
        CIMInstance again = get(got[i].getPath());
        EXPECT_EQ(name, prop(again, "Name"));
    }
}

TEST_F(ProtocolEndpointTest, ISCSIEndpointsCarryTargetNamesWhoseISCSINameIsThePorts)
{
    std::vector<ArrayPort> ports = arrayPorts(PORT_TYPE_ISCSI);
    ASSERT_FALSE(ports.empty());
    Array<CIMInstance> got = instances("ZAR_iSCSIProtocolEndpoint");
    ASSERT_EQ(ports.size(), got.size());
    std::set<std::string> names;
    for (const ArrayPort& p : ports)
        names.insert(p.iscsiName);
    for (Uint32 i = 0; i < got.size(); i++) {
        String target = String(prop(got[i], "Name").c_str());
        String iscsi = ZAR_iSCSIProtocolEndpointProvider::extractISCSIName(target);
        EXPECT_EQ(1u, names.count(text(iscsi))) << text(target);
        EXPECT_NE(text(iscsi), text(target)) << "a target name has a portal group suffix";
        EXPECT_EQ("7", prop(got[i], "ConnectionType"));
        // The array finds the port by the name taken out of the target name.
        lpid_t lpid = API_PORT_NONE;
        ASSERT_EQ(0, cim_sem_wait());
        EXPECT_EQ(0, api_getiSCSIPortLPID((const char*)iscsi.getCString(), &lpid));
        cim_sem_post();
        char position[16], scratch[16];
        EXPECT_EQ(prop(got[i], "PortPosition"), std::string(loop_txbf(lpid, position, scratch)));
    }
    Paths paths;
    server().enumerateInstanceNames(as("p1browse"), ns(), CIMName("CIM_SCSIProtocolEndpoint"),
                                    paths);
    EXPECT_EQ(ports.size() + arrayPorts(PORT_TYPE_FC).size(), paths.items.size())
        << "both endpoint classes answer for their superclass";
}

TEST_F(ProtocolEndpointTest, ExtractISCSINameTakesThePartBeforeTheSuffix)
{
    auto x = [](const char* t) {
        return text(ZAR_iSCSIProtocolEndpointProvider::extractISCSIName(String(t)));
    };
    EXPECT_EQ("iqn.2004-07.net.zararray:0a1b", x("iqn.2004-07.net.zararray:0a1b,t,0x0101"));
    EXPECT_EQ("iqn.2004-07.net.zararray:0a1b", x("iqn.2004-07.net.zararray:0a1b,T,1"));
    EXPECT_EQ("iqn.2004-07.net.zararray:0a1b", x("iqn.2004-07.net.zararray:0a1b"));
    EXPECT_EQ("iqn.x,tag", x("iqn.x,tag"));
    EXPECT_EQ("iqn.x,t", x("iqn.x,t"));
    EXPECT_EQ("", x(",t,0x1"));
    EXPECT_EQ("", x(""));
}

TEST_F(ProtocolEndpointTest, FCPathBuilderNamesTheEnumeratedEndpoint)
{
    api_sysinfo_t info = systemInfo();
    Array<CIMInstance> got = instances("ZAR_SCSIProtocolFCEndpoint");
    ASSERT_GT(got.size(), 0u);
    for (Uint32 i = 0; i < got.size(); i++) {
        std::string wwn = prop(got[i], "Name");
        std::string lower = wwn;
        for (char& c : lower)
            c = (char)tolower(c);
        // Given as a client may type it: lower case, without leading zeros.
        std::string trimmed = lower.substr(lower.find_first_not_of('0'));
        for (const std::string& given : {wwn, lower, trimmed}) {
            CIMObjectPath p = ZAR_SCSIProtocolFCEndpointProvider::buildObjectPath(
                "ZAR_SCSIProtocolFCEndpoint", info.name,
                String(prop(got[i], "PortPosition").c_str()), String(given.c_str()));
            EXPECT_TRUE(ZAR_Common::matchObjectPath(p, got[i].getPath()))
                << given << " " << text(p.toString());
        }
    }
    // A text that is no WWN is kept as given, and names nothing.
    CIMObjectPath none = ZAR_SCSIProtocolFCEndpointProvider::buildObjectPath(
        "ZAR_SCSIProtocolFCEndpoint", info.name, "0:1:1", "not-a-wwn");
    EXPECT_EQ("not-a-wwn", key(none, "Name"));
    EXPECT_EQ(CIM_ERR_NOT_FOUND, cimErrorOf([&] { get(none); }).getCode());
}

TEST_F(ProtocolEndpointTest, ISCSIViewPathBuilderTakesItsTextsInItsOwnOrder)
{
    CIMObjectPath p = ZAR_iSCSIControllerProvider::buildObjectPath("ZAR_StorageSystem", "zar-demo",
                                                                   "PP:0:2:1", "ZAR-DEMO");
    EXPECT_EQ("zar-demo", text(p.getHost()));
    EXPECT_EQ("ZAR_iSCSIController", text(p.getClassName().getString()));
    EXPECT_EQ("root/zar", text(p.getNameSpace().getString()));
    EXPECT_EQ("ZAR_StorageSystem", key(p, "SystemCreationClassName"));
    EXPECT_EQ("ZAR-DEMO", key(p, "SystemName"));
    EXPECT_EQ("ZAR_iSCSIController", key(p, "CreationClassName"));
    EXPECT_EQ("PP:0:2:1", key(p, "DeviceID"));
}

TEST_F(ProtocolEndpointTest, PortFailuresAndUnknownPaths)
{
    zarsim_fail_next("api_getISCSIPorts", 1, 1, "port table unreadable");
    CIMException e = cimErrorOf([&] { instances("ZAR_iSCSIProtocolEndpoint"); });
    EXPECT_EQ(CIM_ERR_FAILED, e.getCode());
    EXPECT_NE(std::string::npos,
              text(e.getMessage()).find("ZAR_iSCSIProtocolEndpointProvider::enumerateInstances"));
    EXPECT_NE(std::string::npos, text(e.getMessage()).find(api_errorCodeText(1)));

    Array<CIMInstance> got = instances("ZAR_iSCSIProtocolEndpoint");
    ASSERT_GT(got.size(), 0u);
    Array<CIMKeyBinding> kb = got[0].getPath().getKeyBindings();
    for (Uint32 i = 0; i < kb.size(); i++)
        if (kb[i].getName().equal(CIMName("Name")))
            kb[i] = CIMKeyBinding(
                CIMName("Name"),
                text(ZAR_iSCSIProtocolEndpointProvider::extractISCSIName(kb[i].getValue())).c_str(),
                CIMKeyBinding::STRING);
    CIMObjectPath bare("", ns(), CIMName("ZAR_iSCSIProtocolEndpoint"), kb);
    EXPECT_EQ(CIM_ERR_NOT_FOUND, cimErrorOf([&] { get(bare); }).getCode())
        << "the endpoint is named by its whole target name";
}

}  // namespace
