// System identity and configuration, nodes, and the port listings.
#include "ArrayFixture.h"

#include <arpa/inet.h>

#include "Array.h"
#include "Model.h"

namespace {

using zarsim::Caller;
using zarsim::changeArray;
using zarsim::Result;

class System : public ArrayTest {
protected:
    int config(const char* key, const char* value)
    {
        return changeArray("test", Caller(), "",
                           [&](sqlite3* db) { return zarsim::setConfig(db, key, value); })
            .code;
    }
};

TEST_F(System, IdentityContactAndAddresses)
{
    ASSERT_EQ(0, config("contact", "Ops, room 12"));
    ASSERT_EQ(0, config("owner", "Lab"));
    ASSERT_EQ(0, config("ipv4", "192.0.2.44"));
    ASSERT_EQ(0, config("ipv6", "2001:db8::44"));
    EXPECT_EQ(API_E_INVALID_ARG, config("ipv4", "2001:db8::1"));
    EXPECT_EQ(API_E_INVALID_ARG, config("name", "with.dot"));
    EXPECT_EQ(API_E_INVALID_ARG, config("colour", "blue"));
    char buf[256];
    ASSERT_EQ(0, api_getSystemContact(buf, sizeof buf));
    EXPECT_STREQ("Ops, room 12", buf);
    ASSERT_EQ(0, api_getOwnerName(buf, 4));
    EXPECT_STREQ("Lab", buf);
    _api_ipaddr_t addr;
    ASSERT_EQ(0, api_getSystemDualIP(&addr));
    EXPECT_EQ(3, addr.dual_flag);
    char text[64];
    inet_ntop(AF_INET, &addr.ipv4_addr, text, sizeof text);
    EXPECT_STREQ("192.0.2.44", text);
    inet_ntop(AF_INET6, addr.ipv6_addr, text, sizeof text);
    EXPECT_STREQ("2001:db8::44", text);
    // Above 2 whenever there is an IPv6 address, also without IPv4.
    ASSERT_EQ(0, config("ipv4", ""));
    ASSERT_EQ(0, api_getSystemDualIP(&addr));
    EXPECT_EQ(4, addr.dual_flag);
    EXPECT_EQ(0u, addr.ipv4_addr);
    inet_ntop(AF_INET6, addr.ipv6_addr, text, sizeof text);
    EXPECT_STREQ("2001:db8::44", text);
    ASSERT_EQ(0, config("ipv4", "192.0.2.44"));
    ASSERT_EQ(0, config("ipv6", ""));
    ASSERT_EQ(0, api_getSystemDualIP(&addr));
    EXPECT_EQ(1, addr.dual_flag);
}

TEST_F(System, PolicyWordAndNodes)
{
    zar_u32 policy = 99;
    ASSERT_EQ(0, api_getPolicy(&policy));
    EXPECT_EQ(0u, policy);
    ASSERT_EQ(0, zarsim_set_policy(API_POLICY_ONE_HOST_PER_HWID));
    ASSERT_EQ(0, api_getPolicy(&policy));
    EXPECT_EQ(API_POLICY_ONE_HOST_PER_HWID, policy);
    EXPECT_EQ(2, cluster_num_nodes_alive());
    ASSERT_EQ(0, zarsim_add_node(5));
    EXPECT_EQ(API_E_EXISTS, zarsim_add_node(5));
    EXPECT_EQ(API_E_INVALID_ARG, zarsim_add_node(8));
    api_sysinfo_t info;
    ASSERT_EQ(0, api_getSystemInfo(&info));
    EXPECT_EQ(3u, info.nodesAlive);
    EXPECT_EQ(nullptr, strchr(info.name, '.'));
    // A port needs a node and a real position.
    EXPECT_EQ(API_E_PORT_INVALID, zarsim_add_port("3:1:1", PORT_TYPE_FC));
    EXPECT_EQ(API_E_PORT_INVALID, zarsim_add_port("0:1:5", PORT_TYPE_FC));
    EXPECT_EQ(0, zarsim_add_port("5:9:4", PORT_TYPE_ISCSI));
}

TEST_F(System, PortListings)
{
    smallArray();
    ASSERT_EQ(0, zarsim_login("1000000000000001", "0:1:1"));
    api_FCPort_t* fc = nullptr;
    int n = api_getFCPorts(0, 0, 0, &fc);
    ASSERT_EQ(2, n);
    EXPECT_EQ(pos("0:1:1"), fc[0].portPos);
    EXPECT_STREQ("0:1:1", fc[0].deviceID);
    EXPECT_EQ(PORT_OK, fc[0].operationalStatus);
    EXPECT_NE('\0', fc[0].connectedTo[0]);  // someone is logged in
    EXPECT_STREQ("", fc[1].connectedTo);
    zar_u64 wwn = fc[1].portWWN;
    api_freeFCPorts(fc, n);
    ASSERT_EQ(1, api_getFCPorts(wwn, 1, 0, &fc));
    EXPECT_EQ(pos("1:1:1"), fc[0].portPos);
    api_freeFCPorts(fc, 1);
    EXPECT_EQ(0, api_getFCPorts(wwn + 1, 1, 0, &fc));

    api_iSCSIPort_t* is = nullptr;
    ASSERT_EQ(1, api_getISCSIPorts(&is));
    EXPECT_EQ(pos("0:2:1"), is[0].portID);
    EXPECT_EQ(0, strncmp(is[0].iscsiName, API_ISCSI_VENDOR_PREFIX, API_ISCSI_VENDOR_PREFIX_LEN));
    EXPECT_EQ(3260u, is[0].tcpPort);
    // The hexadecimal part carries the position at bits 56, 52 and 48.
    zar_u64 hi, v;
    ASSERT_EQ(0,
              api_wwnStringToInt(nullptr, is[0].iscsiName + API_ISCSI_VENDOR_PREFIX_LEN, &hi, &v));
    EXPECT_EQ(pos("0:2:1"),
              (lpid_t)(((v >> 56) & 7) * 128 + ((v >> 52) & 7) * 8 + ((v >> 48) & 7)));
    api_freeISCSIPorts(is);
}
}  // namespace
