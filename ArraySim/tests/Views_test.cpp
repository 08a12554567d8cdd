// Views: the four device identifier forms, default and dormant views, the
// per-LU query, and the chunked walk with its cursor.
#include "ArrayFixture.h"

#include <set>

namespace {

class Views : public ArrayTest {
protected:
    void SetUp() override
    {
        ArrayTest::SetUp();
        smallArray();
        for (const char* n : {"a", "b", "c", "d", "e"})
            vols.push_back(volume(n));
        ASSERT_EQ(0, host("h1", 0x1000000000000001ULL));
        ASSERT_EQ(0, host("h2", API_WWN_NONE, "iqn.2000-01.org.example:h2"));
        ASSERT_EQ(0, zarsim_add_hostset("cl", "-"));
        ASSERT_EQ(0, zarsim_hostset_add("cl", "h1"));
        ASSERT_EQ(0, zarsim_login("1000000000000001", "0:1:1"));
        ASSERT_EQ(0, zarsim_login("iqn.2000-01.org.example:h2", "0:2:1"));
        ASSERT_EQ(0, exportVol(vols[0], 1, "h1", pos("0:1:1")));       // MS
        ASSERT_EQ(0, exportVol(vols[1], 2, "h2", API_PORT_NONE));      // HS
        ASSERT_EQ(0, exportVol(vols[2], 3, "set:cl", API_PORT_NONE));  // HSet
        ASSERT_EQ(0, exportVol(vols[3], 4, nullptr, pos("0:2:1")));    // PP, h2 logged in
        ASSERT_EQ(0, exportVol(vols[4], 5, nullptr, pos("1:1:1")));    // PP, nobody there
    }
    std::vector<std::string> vols;
};

TEST_F(Views, FourFormsDefaultAndDormant)
{
    std::vector<vlun> v = allViews();
    ASSERT_EQ(7u, v.size());
    const vlun* ms = find(v, "MS:0:1:1:1");
    ASSERT_NE(nullptr, ms);
    EXPECT_EQ(API_VLUN_MATCHED_SET, ms->accessPriority);
    EXPECT_STREQ("h1", ms->hostname);
    EXPECT_STREQ("1000000000000001", ms->hostwwn);
    EXPECT_EQ(PORT_TYPE_FC, ms->hporttype);
    EXPECT_EQ(16u, strlen(ms->portwwn));
    EXPECT_FALSE(ms->isTemplate);

    const vlun* hs = find(v, "HS:2");
    ASSERT_NE(nullptr, hs);
    EXPECT_EQ(PORT_TYPE_ISCSI, hs->hporttype);
    EXPECT_STREQ("iqn.2000-01.org.example:h2", hs->hostiscsiname);
    EXPECT_EQ(API_PORT_NONE, hs->port);
    EXPECT_FALSE(hs->isTemplate);

    const vlun* hset = find(v, "HSet:3");
    ASSERT_NE(nullptr, hset);
    EXPECT_STREQ("set:cl", hset->hostname);
    EXPECT_EQ(API_VLUN_HOST_SET, hset->accessPriority);

    const vlun* pp = find(v, "PP:0:2:1");
    const vlun* def = find(v, "PP:0:2:1:default");
    ASSERT_NE(nullptr, pp);
    ASSERT_NE(nullptr, def);
    EXPECT_EQ(PORT_TYPE_ISCSI, def->hporttype);
    EXPECT_STREQ("PP:0:2:1", def->parentDeviceID);
    EXPECT_EQ(0, strncmp(def->portiscsiname, API_ISCSI_VENDOR_PREFIX, API_ISCSI_VENDOR_PREFIX_LEN));
    EXPECT_FALSE(pp->isTemplate);

    const vlun* dormant = find(v, "PP:1:1:1");
    ASSERT_NE(nullptr, dormant);
    EXPECT_TRUE(dormant->isTemplate);
    EXPECT_TRUE(find(v, "PP:1:1:1:default")->isTemplate);

    // Logging h1 out makes its matched-set view dormant; logging in on 1:1:1 wakes the port.
    ASSERT_EQ(0, zarsim_logout("1000000000000001", "0:1:1"));
    ASSERT_EQ(0, zarsim_login("1000000000000001", "1:1:1"));
    v = allViews();
    EXPECT_TRUE(find(v, "MS:0:1:1:1")->isTemplate);
    EXPECT_FALSE(find(v, "PP:1:1:1")->isTemplate);
}

TEST_F(Views, TargetPortWwnCarriesThePosition)
{
    const vlun* ms = nullptr;
    std::vector<vlun> v = allViews();
    ms = find(v, "MS:0:1:1:1");
    ASSERT_NE(nullptr, ms);
    zar_u64 hi, wwn;
    ASSERT_EQ(0, api_wwnStringToInt(nullptr, ms->portwwn, &hi, &wwn));
    lpid_t fromBits = (lpid_t)(((wwn >> 56) & 7) * 128 + ((wwn >> 52) & 7) * 8 + ((wwn >> 48) & 7));
    EXPECT_EQ(pos("0:1:1"), fromBits);
    lpid_t looked = 0;
    EXPECT_EQ(0, api_getFCPortLPID(wwn, &looked));
    EXPECT_EQ(pos("0:1:1"), looked);
    EXPECT_EQ(API_E_PORT_INVALID, api_getFCPortLPID(wwn + 1, &looked));
    EXPECT_EQ(API_PORT_NONE, looked);
    const vlun* pp = find(v, "PP:0:2:1");
    EXPECT_EQ(0, api_getiSCSIPortLPID(pp->portiscsiname, &looked));
    EXPECT_EQ(pos("0:2:1"), looked);
}

TEST_F(Views, PerLuQueryGivesDefaultRecordsMarked)
{
    api_vlunsInfo_t q{};
    q.vluntype = API_VLUN_PORT_PRESENT;
    q.vluntypeIsSet = 1;
    q.port = pos("0:2:1");
    q.portIsSet = 1;
    std::vector<vlun> r = query(api_getSCSIProtocolControllers, q);
    ASSERT_EQ(2u, r.size());
    int defaults = 0;
    for (const vlun& x : r) {
        EXPECT_EQ(4u, x.lun);
        EXPECT_STRCASEEQ(vols[3].c_str(), x.vvwwn);
        if (x.volAccess == API_VOL_ACCESS_DEFAULT_VIEW) {
            ++defaults;
            EXPECT_STREQ("PP:0:2:1:default", x.deviceID);
        }
    }
    EXPECT_EQ(1, defaults);
    // A host with both kinds of paths gives one record per kind.
    char names[1][API_ISCSI_NAME_LEN] = {"iqn.2000-01.org.example:h1"};
    api_status_t st;
    ASSERT_EQ(0, api_addPath(&event_, "h1", 0, nullptr, 1, names, 0, &st));
    ASSERT_EQ(0, exportVol(vols[4], 9, "h1", API_PORT_NONE));
    q = api_vlunsInfo_t{};
    strcpy(q.hostname, "h1");
    q.hostnameIsSet = 1;
    q.lun = 9;
    q.lunIsSet = 1;
    r = query(api_getSCSIProtocolControllers, q);
    ASSERT_EQ(2u, r.size());
    EXPECT_EQ(PORT_TYPE_FC, r[0].hporttype);
    EXPECT_EQ(PORT_TYPE_ISCSI, r[1].hporttype);
    EXPECT_TRUE(r[1].isTemplate);  // its iSCSI path is logged in nowhere
}

TEST_F(Views, ChunkCriteriaNarrowTheWalk)
{
    api_spc_param_data cur;
    api_initSPCParamData(&cur);
    api_vlunsInfo_t q{};
    strcpy(q.hostname, "h1");
    q.hostnameIsSet = 1;
    zar_u32 more = 9;
    ASSERT_EQ(0, api_getSCSIProtocolControllers_chunk(&q, &cur, &more, 200));
    ASSERT_EQ(1u, q.count);
    EXPECT_STREQ("MS:0:1:1:1", q.vluns[0].deviceID);
    EXPECT_EQ(0u, more);
    api_freeVLUNs(&q);
    api_freeSPCParamData(&cur);
    // An empty host name is that of port-present exports.
    q = api_vlunsInfo_t{};
    q.hostnameIsSet = 1;
    std::vector<vlun> r = query(api_getVLUNTemplates, q);
    ASSERT_EQ(2u, r.size());
    for (const vlun& x : r)
        EXPECT_EQ(API_VLUN_PORT_PRESENT, x.accessPriority) << x.deviceID;
    api_initSPCParamData(&cur);
    ASSERT_EQ(0, api_getSCSIProtocolControllers_chunk(&q, &cur, &more, 200));
    EXPECT_EQ(4u, q.count);  // each with its default view
    api_freeVLUNs(&q);
    api_freeSPCParamData(&cur);
    // A cursor that was never set up is refused.
    api_spc_param_data bad;
    memset(&bad, 0, sizeof bad);
    EXPECT_EQ(API_E_INVALID_ARG, api_getSCSIProtocolControllers_chunk(&q, &bad, &more, 200));
}

TEST_F(Views, ChunkedWalkOverTenThousandViews)
{
    // 2,500 hosts, each with a host-sees view and matched-set views through
    // three ports: 10,000 views besides the fixture's.
    const int hosts = 2500;
    std::string v = volume("big");
    for (int i = 0; i < hosts; ++i) {
        char name[32];
        snprintf(name, sizeof name, "w%04d", i);
        ASSERT_EQ(0, host(name, 0x5000000000000000ULL + (zar_u64)i));
        ASSERT_EQ(0, exportVol(v, 100, name, API_PORT_NONE));
        for (const char* p : {"0:1:1", "1:1:1", "0:2:1"}) {
            ASSERT_EQ(0, exportVol(v, API_LUN_AUTO, name, pos(p), 1));
        }
    }
    std::vector<vlun> once = allViews(200);
    ASSERT_EQ(7u + 4u * hosts, once.size());
    std::set<std::string> seen;
    for (const vlun& r : once)
        EXPECT_TRUE(seen.insert(r.deviceID).second) << r.deviceID;

    // The same walk again while views appear and vanish between chunks: every
    // view that stays the whole time is seen exactly once, in the same order.
    api_spc_param_data cur;
    api_initSPCParamData(&cur);
    zar_u32 more = 1;
    std::vector<std::string> order;
    int step = 0;
    while (more) {
        api_vlunsInfo_t q{};
        ASSERT_EQ(0, api_getSCSIProtocolControllers_chunk(&q, &cur, &more, 200));
        ASSERT_LE(q.count, 200u);
        for (zar_u32 i = 0; i < q.count; ++i)
            order.push_back(q.vluns[i].deviceID);
        api_freeVLUNs(&q);
        // Remove a view behind the cursor and one ahead of it, add a new one.
        char name[32];
        snprintf(name, sizeof name, "w%04d", (step * 37) % hosts);
        unexport(v, 100, name, API_PORT_NONE);
        snprintf(name, sizeof name, "n%04d", step);
        ASSERT_EQ(0, host(name, 0x6000000000000000ULL + (zar_u64)step));
        ASSERT_EQ(0, exportVol(v, 1, name, API_PORT_NONE));
        ++step;
    }
    api_freeSPCParamData(&cur);
    std::set<std::string> walked;
    for (const std::string& id : order)
        EXPECT_TRUE(walked.insert(id).second) << "twice: " << id;
    std::vector<vlun> after = allViews(1000);
    std::set<std::string> now;
    for (const vlun& r : after)
        now.insert(r.deviceID);
    size_t kept = 0;
    for (const vlun& r : once)
        if (now.count(r.deviceID)) {
            ++kept;
            EXPECT_TRUE(walked.count(r.deviceID)) << "missed: " << r.deviceID;
        }
    EXPECT_GT(kept, once.size() - (size_t)step - 1);
    // The order is the stable order of a walk without changes.
    std::vector<std::string> expect;
    for (const vlun& r : once)
        if (walked.count(r.deviceID))
            expect.push_back(r.deviceID);
    std::vector<std::string> got;
    for (const std::string& id : order)
        if (seen.count(id))
            got.push_back(id);
    EXPECT_EQ(expect, got);
}
}  // namespace
