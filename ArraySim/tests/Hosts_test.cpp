// Hosts, their paths and logins: the rules and error codes of createHost,
// addPath, removePath, removeHost, setHost and the host-path listing.
#include "ArrayFixture.h"

namespace {

class Hosts : public ArrayTest {
protected:
    std::vector<api_hardwareID> paths(const char* wwn, const char* iscsi, const char* hostName)
    {
        zar_u32 n = 0;
        api_hardwareID* list = nullptr;
        EXPECT_EQ(0, api_getHostPaths(wwn, iscsi, hostName, &n, &list, 1));
        std::vector<api_hardwareID> out(list, list + n);
        api_freeHostPaths(list);
        return out;
    }
};

TEST_F(Hosts, CreateRefusesBadAndTakenNamesWithCodes3And21)
{
    EXPECT_EQ(0, host("h1", 0x1000000000000001ULL));
    EXPECT_EQ(API_E_INVALID_ARG, host("", API_WWN_NONE));
    EXPECT_EQ(API_E_INVALID_ARG, host("a-name-that-is-thirty-two-chars!", API_WWN_NONE));
    EXPECT_EQ(API_E_INVALID_ARG, host("bad name", API_WWN_NONE));
    EXPECT_EQ(0, host("abcdefghijklmnopqrstuvwxyz01234", API_WWN_NONE));  // 31 characters
    EXPECT_EQ(API_E_EXISTS, host("h1", API_WWN_NONE));
    // The initiator already belongs to h1.
    api_status_t st;
    api_initStatus(&st);
    EXPECT_EQ(API_E_EXISTS,
              api_createHost(&st, &event_, "h2", nullptr, 0x1000000000000001ULL, 2, "-"));
    EXPECT_EQ(API_E_EXISTS, st.code);
    EXPECT_NE(nullptr, strstr(st.text, "h1"));
    EXPECT_EQ(API_E_INVALID_ARG,
              api_createHost(&st, &event_, "h3", nullptr, API_WWN_NONE, 99, "-"));
    EXPECT_EQ(API_E_INVALID_ARG, host("h4", API_WWN_NONE, nullptr, "bad domain"));
}

TEST_F(Hosts, PathListingShowsLoginsAndUnassignedInitiators)
{
    smallArray();
    ASSERT_EQ(0, host("h1", 0x1000000000000001ULL, "iqn.2000-01.org.example:h1"));
    ASSERT_EQ(0, zarsim_login("1000000000000001", "0:1:1"));
    ASSERT_EQ(0, zarsim_login("1000000000000001", "1:1:1"));
    ASSERT_EQ(0, zarsim_login("10000000000000FF", "0:1:1"));                   // in no host
    EXPECT_EQ(API_E_PORT_INVALID, zarsim_login("10000000000000FF", "0:2:1"));  // wrong protocol

    std::vector<api_hardwareID> all = paths(nullptr, nullptr, nullptr);
    ASSERT_EQ(4u, all.size());  // two logins, one iSCSI path logged in nowhere, one unassigned
    int unassigned = 0, nowhere = 0;
    for (const api_hardwareID& e : all) {
        if (e.hostName[0] == '\0') {
            ++unassigned;
            EXPECT_EQ(0x10000000000000FFULL, e.pathInfo.wwn);
            EXPECT_EQ(pos("0:1:1"), e.pathInfo.port);
        } else {
            EXPECT_STREQ("h1", e.hostName);
            EXPECT_EQ(2u, e.hostpersona);
        }
        if (e.pathInfo.port == API_PORT_NONE) {
            ++nowhere;
            EXPECT_EQ(PORT_TYPE_ISCSI, e.pathInfo.type);
            EXPECT_STREQ("iqn.2000-01.org.example:h1", e.pathInfo.iscsiName);
        }
    }
    EXPECT_EQ(1, unassigned);
    EXPECT_EQ(1, nowhere);
    EXPECT_EQ(2u, paths("1000000000000001", nullptr, nullptr).size());
    EXPECT_EQ(1u,
              paths(nullptr, "IQN.2000-01.ORG.EXAMPLE:H1", nullptr).size());  // names ignore case
    EXPECT_EQ(3u, paths(nullptr, nullptr, "h1").size());
    EXPECT_EQ(0u, paths("2000000000000009", nullptr, nullptr).size());
    zar_u32 n;
    api_hardwareID* list;
    EXPECT_EQ(API_E_HOST_NOT_FOUND, api_getHostPaths(nullptr, nullptr, "nobody", &n, &list, 1));
}

TEST_F(Hosts, AddPathTakesUnassignedInitiatorsAndGuardsOthers)
{
    smallArray();
    ASSERT_EQ(0, host("h1", 0x1000000000000001ULL));
    ASSERT_EQ(0, host("h2", 0x2000000000000001ULL));
    ASSERT_EQ(0, zarsim_login("10000000000000FF", "0:1:1"));
    api_status_t st;
    zar_u64 wwns[] = {0x10000000000000FFULL, 0x1000000000000002ULL};
    ASSERT_EQ(0, api_addPath(&event_, "h1", 2, wwns, 0, nullptr, 0, &st));
    std::vector<api_hardwareID> p = paths("10000000000000FF", nullptr, nullptr);
    ASSERT_EQ(1u, p.size());
    EXPECT_STREQ("h1", p[0].hostName);
    EXPECT_EQ(pos("0:1:1"), p[0].pathInfo.port);

    // A path of h2 is refused without override, and the whole call changes nothing.
    zar_u64 mixed[] = {0x1000000000000003ULL, 0x2000000000000001ULL};
    EXPECT_EQ(API_E_PATH_IN_USE, api_addPath(&event_, "h1", 2, mixed, 0, nullptr, 0, &st));
    EXPECT_EQ(0u, paths("1000000000000003", nullptr, nullptr).size());
    EXPECT_EQ(0, api_addPath(&event_, "h1", 2, mixed, 0, nullptr, 1, &st));
    EXPECT_STREQ("h1", paths("2000000000000001", nullptr, nullptr)[0].hostName);

    char names[1][API_ISCSI_NAME_LEN] = {"iqn.2000-01.org.example:new"};
    EXPECT_EQ(0, api_addPath(&event_, "h2", 0, nullptr, 1, names, 0, &st));
    EXPECT_EQ(API_E_HOST_NOT_FOUND, api_addPath(&event_, "ghost", 0, nullptr, 1, names, 0, &st));
    EXPECT_EQ(API_E_HOST_NOT_FOUND, st.code);
}

TEST_F(Hosts, RemovePathKeepsALoggedInInitiatorAsUnassigned)
{
    smallArray();
    ASSERT_EQ(0, host("h1", 0x1000000000000001ULL, "iqn.2000-01.org.example:h1"));
    ASSERT_EQ(0, zarsim_login("1000000000000001", "0:1:1"));
    api_status_t st;
    EXPECT_EQ(0, api_removePath(&st, &event_, "h1", 0, 0x1000000000000001ULL, nullptr, 1, 0, 0));
    std::vector<api_hardwareID> p = paths("1000000000000001", nullptr, nullptr);
    ASSERT_EQ(1u, p.size());
    EXPECT_STREQ("", p[0].hostName);
    // A path that is not logged in is forgotten.
    EXPECT_EQ(0, api_removePath(&st, &event_, "h1", 1, 0, "iqn.2000-01.org.example:h1", 1, 0, 0));
    EXPECT_EQ(0u, paths(nullptr, "iqn.2000-01.org.example:h1", nullptr).size());
    EXPECT_EQ(API_E_PATH_NOT_FOUND,
              api_removePath(&st, &event_, "h1", 0, 0x1000000000000001ULL, nullptr, 1, 0, 0));
    EXPECT_EQ(API_E_INVALID_ARG,
              api_removePath(&st, &event_, "h1", 0, 0x1000000000000001ULL, nullptr, 2, 0, 0));
}

TEST_F(Hosts, RemoveHostRefusedWhileExported)
{
    smallArray();
    std::string v = volume("v1");
    ASSERT_EQ(0, host("h1", 0x1000000000000001ULL));
    ASSERT_EQ(0, exportVol(v, 3, "h1", API_PORT_NONE));
    api_status_t st;
    EXPECT_EQ(API_E_HOST_EXPORTED, api_removeHost(&event_, "h1", &st));
    ASSERT_EQ(0, unexport(v, 3, "h1", API_PORT_NONE));
    EXPECT_EQ(0, api_removeHost(&event_, "h1", &st));
    EXPECT_EQ(API_E_HOST_NOT_FOUND, api_removeHost(&event_, "h1", &st));
    // The initiator is free again.
    EXPECT_EQ(0, host("h2", 0x1000000000000001ULL));
}

TEST_F(Hosts, SetHostRenamesAndChangesPersona)
{
    ASSERT_EQ(0, host("h1", API_WWN_NONE));
    ASSERT_EQ(0, host("h2", API_WWN_NONE));
    api_host_change_t c;
    memset(&c, 0, sizeof c);
    strcpy(c.newName, "h2");
    c.newNameIsSet = 1;
    api_status_t st;
    EXPECT_EQ(API_E_EXISTS, api_setHost(&event_, "h1", &c, &st));
    strcpy(c.newName, "renamed");
    c.persona = 11;
    c.personaIsSet = 1;
    EXPECT_EQ(0, api_setHost(&event_, "h1", &c, &st));
    api_host_t* hosts = nullptr;
    zar_u32 n = 0;
    ASSERT_EQ(0, api_getHosts(&hosts, &n));
    ASSERT_EQ(2u, n);
    EXPECT_STREQ("renamed", hosts[0].name);
    EXPECT_EQ(11u, hosts[0].persona);
    api_freeHosts(hosts);
    memset(&c, 0, sizeof c);
    EXPECT_EQ(API_E_INVALID_ARG, api_setHost(&event_, "renamed", &c, &st));
    c.personaIsSet = 1;
    c.persona = 0;
    EXPECT_EQ(API_E_INVALID_ARG, api_setHost(&event_, "renamed", &c, &st));
}

TEST_F(Hosts, HostSetsShareTheIdSpaceAndShowWithPrefix)
{
    ASSERT_EQ(0, host("h1", API_WWN_NONE));
    ASSERT_EQ(0, zarsim_add_hostset("cluster", "-"));
    ASSERT_EQ(0, zarsim_hostset_add("cluster", "h1"));
    EXPECT_EQ(API_E_EXISTS, zarsim_hostset_add("cluster", "h1"));
    EXPECT_EQ(API_E_HOSTSET_NOT_FOUND, zarsim_hostset_add("nope", "h1"));
    api_host_t* hosts = nullptr;
    zar_u32 n = 0;
    ASSERT_EQ(0, api_getHosts(&hosts, &n));
    ASSERT_EQ(2u, n);
    EXPECT_STREQ("set:cluster", hosts[1].name);
    EXPECT_TRUE(hosts[1].isSet);
    EXPECT_EQ(1u, hosts[1].pathCount);
    EXPECT_NE(hosts[0].hostID, hosts[1].hostID);
    api_freeHosts(hosts);
}
}  // namespace
