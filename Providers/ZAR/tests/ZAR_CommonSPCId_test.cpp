// Tests of view identifier decoding and view paths.
#include <ZAR_Common.h>

#include "CommonTestSupport.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class SPCIdTest : public FreshArray {
protected:
    void SetUp() override
    {
        FreshArray::SetUp();
        ArrayBuilder::ports({"0:1:2", "1:2:3"});
        ASSERT_EQ(0, ArrayBuilder::host("alpha", "10000000C9000001"));
        ASSERT_EQ(0, ArrayBuilder::host("beta", "10000000C9000002"));
        alpha_ = ArrayBuilder::hostID("alpha");
        ASSERT_NE(0u, alpha_);
    }

    struct Decoded {
        Uint32 type;
        std::string host;
        Uint16 port;
    };
    static Decoded decode(const std::string& id, Uint32 initialType = 99)
    {
        String deviceID(id.c_str());
        Decoded d{initialType, "untouched", 1};
        String host("untouched");
        ZAR_Common::deReferenceSPCDeviceID(deviceID, d.type, host, d.port, false);
        d.host = text(host);
        return d;
    }
    static Uint16 lpid(const char* text)
    {
        lpid_t p = API_PORT_NONE;
        EXPECT_EQ(0, api_convertStrLPIDtoPortID(text, &p));
        return p;
    }
    unsigned alpha_ = 0;
};

TEST_F(SPCIdTest, PortPresentHasPortAndNoHost)
{
    Decoded d = decode("PP:0:1:2");
    EXPECT_EQ(4u, d.type);
    EXPECT_EQ(lpid("0:1:2"), d.port);
    EXPECT_EQ("", d.host);
}

TEST_F(SPCIdTest, MatchedSetHasPortAndHostAfterTheLPID)
{
    Decoded d = decode("MS:1:2:3:" + std::to_string(alpha_));
    EXPECT_EQ(1u, d.type);
    EXPECT_EQ(lpid("1:2:3"), d.port);
    EXPECT_EQ("alpha", d.host);
}

TEST_F(SPCIdTest, HostSeesAndHostSetLookTheNumberUpAmongHosts)
{
    Decoded hs = decode("HS:" + std::to_string(alpha_));
    EXPECT_EQ(2u, hs.type);
    EXPECT_EQ("alpha", hs.host);
    EXPECT_EQ(API_PORT_NONE, hs.port);

    ASSERT_EQ(0, zarsim_add_hostset("grp", "-"));
    unsigned set = ArrayBuilder::hostID("set:grp");
    ASSERT_NE(0u, set);
    Decoded hset = decode("HSet:" + std::to_string(set));
    EXPECT_EQ(3u, hset.type);
    EXPECT_EQ("set:grp", hset.host);
    // The host number of a host is looked up alike under HSet:.
    EXPECT_EQ("alpha", decode("HSet:" + std::to_string(alpha_)).host);

    // Numbers with a zero digit are numbers too (hosts are numbered from 1).
    std::string name;
    unsigned id = 0;
    for (int i = 0; id == 0 || std::to_string(id).find('0') == std::string::npos; i++) {
        name = "h" + std::to_string(i);
        char wwn[32];
        snprintf(wwn, sizeof(wwn), "20000000C9%06d", i % 1000000);
        ASSERT_EQ(0, ArrayBuilder::host(name.c_str(), wwn));
        id = ArrayBuilder::hostID(name.c_str());
    }
    EXPECT_EQ(name, decode("HS:" + std::to_string(id)).host);
}

TEST_F(SPCIdTest, UnusableIdentifiers)
{
    EXPECT_EQ(0u, decode("XX:1").type);
    EXPECT_EQ(0u, decode("hs:" + std::to_string(alpha_)).type) << "prefixes are case-sensitive";
    Decoded noColon = decode("HS17", 42);
    EXPECT_EQ(42u, noColon.type) << "without a colon the type is left as it was";
    EXPECT_EQ("", noColon.host);
    EXPECT_EQ(API_PORT_NONE, noColon.port);
    Decoded bad = decode("HS:abc");
    EXPECT_EQ(2u, bad.type);
    EXPECT_EQ("", bad.host);
    EXPECT_EQ("", decode("HS:99999").host);
    Decoded badPort = decode("MS:9:9:9:" + std::to_string(alpha_));
    EXPECT_EQ(1u, badPort.type);
    EXPECT_EQ(API_PORT_NONE, badPort.port);
    EXPECT_EQ("", badPort.host);
}

TEST_F(SPCIdTest, DefaultViewIdentifierKeepsThePortAndHasNoHost)
{
    Decoded d = decode("PP:0:1:2:default");
    EXPECT_EQ(4u, d.type);
    EXPECT_EQ(lpid("0:1:2"), d.port);
    EXPECT_EQ("", d.host);

    // A number after the LPID is no host of a port-present view either.
    Decoded numbered = decode("PP:0:1:2:" + std::to_string(alpha_));
    EXPECT_EQ(4u, numbered.type);
    EXPECT_EQ(lpid("0:1:2"), numbered.port);
    EXPECT_EQ("", numbered.host);
}

TEST_F(SPCIdTest, SemaphoreTimeOutLeavesTheHostEmpty)
{
    zarsim_sem_timeout_next(1);
    Decoded d = decode("HS:" + std::to_string(alpha_));
    EXPECT_EQ(2u, d.type);
    EXPECT_EQ("", d.host);
}

TEST_F(SPCIdTest, ISCSIFormIsAPortName)
{
    ArrayBuilder::ports({"0:3:1"}, PORT_TYPE_ISCSI);
    api_iSCSIPort_t* ports = nullptr;
    ASSERT_EQ(0, cim_sem_wait());
    int n = api_getISCSIPorts(&ports);
    cim_sem_post();
    ASSERT_EQ(1, n);
    String name(ports[0].iscsiName);
    Uint16 expected = ports[0].portID;
    api_freeISCSIPorts(ports);

    Uint32 type = 0;
    String host("x");
    Uint16 port = 0;
    ZAR_Common::deReferenceSPCDeviceID(name, type, host, port, true);
    EXPECT_EQ(4u, type);
    EXPECT_EQ(expected, port);
    EXPECT_EQ("", text(host));

    String unknown("iqn.2004-07.net.zararray:00000000000000ff");
    ZAR_Common::deReferenceSPCDeviceID(unknown, type, host, port, true);
    EXPECT_EQ(API_PORT_NONE, port);
}

TEST(SPCObjectPath, KeysAndPlace)
{
    CIMObjectPath p = ZAR_Common::buildSPCObjectPath("ZAR_StorageSystem", "arrayhost", "S1", "HS:4",
                                                     "ZAR_SCSIController");
    EXPECT_EQ("arrayhost", text(p.getHost()));
    EXPECT_EQ("root/zar", text(p.getNameSpace().getString()));
    EXPECT_EQ(CIMObjectPath("//arrayhost/root/zar:ZAR_SCSIController."
                            "CreationClassName=\"ZAR_SCSIController\",DeviceID=\"HS:4\","
                            "SystemCreationClassName=\"ZAR_StorageSystem\",SystemName=\"S1\""),
              p);
    for (Uint32 i = 0; i < p.getKeyBindings().size(); i++)
        EXPECT_EQ(CIMKeyBinding::STRING, p.getKeyBindings()[i].getType());
}

}  // namespace
