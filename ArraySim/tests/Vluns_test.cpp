// Exports: addressing, LUN rules, the codes that callers interpret (1032,
// 1119, 1181), automatic LUNs, domains, removal and the template query.
#include "ArrayFixture.h"

namespace {

class Vluns : public ArrayTest {
protected:
    void SetUp() override
    {
        ArrayTest::SetUp();
        smallArray();
        v1 = volume("v1");
        v2 = volume("v2");
        ASSERT_EQ(0, host("h1", 0x1000000000000001ULL));
        ASSERT_EQ(0, host("h2", 0x1000000000000002ULL));
        ASSERT_EQ(0, zarsim_login("1000000000000001", "0:1:1"));
    }
    std::string v1, v2;
};

TEST_F(Vluns, UnknownPortVolumeOrHostGiveTheirCodes)
{
    EXPECT_EQ(API_E_PORT_INVALID, exportVol(v1, 1, "h1", pos("3:1:1")));
    EXPECT_NE(std::string::npos, lastError_.find("3:1:1"));
    EXPECT_EQ(API_E_PORT_INVALID,
              exportVol(v1, 1, nullptr, API_PORT_NONE));  // port present needs a port
    EXPECT_EQ(API_E_VV_NOT_FOUND,
              exportVol("60002AC00000000000000000FFFFFFFF", 1, "h1", API_PORT_NONE));
    EXPECT_EQ(API_E_HOST_NOT_FOUND, exportVol(v1, 1, "nobody", API_PORT_NONE));
    EXPECT_EQ(API_E_HOSTSET_NOT_FOUND, exportVol(v1, 1, "set:nothing", API_PORT_NONE));
    EXPECT_EQ(API_E_LUN_INVALID, exportVol(v1, API_LUN_MAX + 1, "h1", API_PORT_NONE));
    EXPECT_EQ(0u, query(api_getVLUNTemplates, api_vlunsInfo_t{}).size());
}

TEST_F(Vluns, LunIsUniqueWithinWhatAHostSees)
{
    ASSERT_EQ(0, exportVol(v1, 5, "h1", API_PORT_NONE));  // host sees
    EXPECT_EQ(API_E_LUN_INVALID,
              exportVol(v2, 5, "h1", pos("1:1:1")));  // matched set on the same host
    EXPECT_NE(std::string::npos, lastError_.find("LUN 5"));
    EXPECT_EQ(0, exportVol(v2, 5, "h2", pos("1:1:1")));  // another host may use it
    // Port present on 0:1:1, where h1 is logged in, clashes with h1's LUN 5.
    EXPECT_EQ(API_E_LUN_INVALID, exportVol(v2, 5, nullptr, pos("0:1:1")));
    // ... and on 1:1:1 with h2's matched-set LUN 5 there.
    EXPECT_EQ(API_E_LUN_INVALID, exportVol(v2, 5, nullptr, pos("1:1:1")));
    EXPECT_EQ(0, exportVol(v2, 6, nullptr, pos("0:1:1")));
    // Host sets see what their members see.
    ASSERT_EQ(0, zarsim_add_hostset("s", "-"));
    ASSERT_EQ(0, zarsim_hostset_add("s", "h1"));
    EXPECT_EQ(API_E_LUN_INVALID, exportVol(v2, 5, "set:s", API_PORT_NONE));
    EXPECT_EQ(0, exportVol(v2, 7, "set:s", API_PORT_NONE));
}

TEST_F(Vluns, AutomaticLunTakesTheLowestFree)
{
    ASSERT_EQ(0, exportVol(v1, 0, "h1", API_PORT_NONE));
    std::string v3 = volume("v3"), v4 = volume("v4");
    ASSERT_EQ(0, exportVol(v3, 2, "h1", API_PORT_NONE));
    zar_u32 lun = 0;
    ASSERT_EQ(0, exportVol(v2, API_LUN_AUTO, "h1", API_PORT_NONE, 0, &lun));
    EXPECT_EQ(1u, lun);
    ASSERT_EQ(0, exportVol(v4, API_LUN_AUTO_24, "h1", pos("0:1:1"), 0, &lun));
    EXPECT_EQ(3u, lun);
}

TEST_F(Vluns, SameVolumeTwiceToOneTargetNeedsOverride)
{
    ASSERT_EQ(0, exportVol(v1, 1, "h1", API_PORT_NONE));
    EXPECT_EQ(API_E_VLUN_EXISTS, exportVol(v1, 2, "h1", API_PORT_NONE));
    EXPECT_EQ(0, exportVol(v1, 2, "h1", API_PORT_NONE, 1));
    EXPECT_EQ(2u, query(api_getVLUNTemplates, api_vlunsInfo_t{}).size());
}

TEST_F(Vluns, DomainsMustAgree)
{
    std::string fin = volume("fin", "finance");
    ASSERT_EQ(0, host("eng-host", API_WWN_NONE, nullptr, "eng"));
    EXPECT_EQ(API_E_DOMAIN, exportVol(fin, 1, "eng-host", API_PORT_NONE));
    EXPECT_EQ(0, exportVol(fin, 1, "h1", API_PORT_NONE));  // h1 has no domain
}

TEST_F(Vluns, HostByInitiatorAndRemoval)
{
    zar_u64 hi, lo;
    ASSERT_EQ(0, api_wwnStringToInt(nullptr, v1.c_str(), &hi, &lo));
    zar_u32 lun = API_LUN_AUTO;
    char err[API_ERRTEXT_LEN];
    ASSERT_EQ(0, api_createVLUN(&event_, hi, lo, &lun, nullptr, 0x1000000000000002ULL, nullptr,
                                pos("0:1:1"), 0, 0, err, sizeof err));
    api_vlunsInfo_t q{};
    strcpy(q.hostname, "h2");
    q.hostnameIsSet = 1;
    std::vector<vlun> t = query(api_getVLUNTemplates, q);
    ASSERT_EQ(1u, t.size());
    EXPECT_EQ(API_VLUN_MATCHED_SET, t[0].accessPriority);
    EXPECT_TRUE(t[0].isTemplate);
    EXPECT_EQ(pos("0:1:1"), t[0].port);
    EXPECT_STRCASEEQ(v1.c_str(), t[0].vvwwn);
    EXPECT_STREQ("v1", t[0].vvname);
    EXPECT_EQ(API_E_HOST_NOT_FOUND,
              api_createVLUN(&event_, hi, lo, &lun, nullptr, 0x10000000000000AAULL, nullptr,
                             pos("0:1:1"), 0, 0, err, sizeof err));
    // Removal needs the exact LUN and target.
    EXPECT_EQ(API_E_VLUN_NOT_FOUND, unexport(v1, lun + 1, "h2", pos("0:1:1")));
    EXPECT_EQ(API_E_VLUN_NOT_FOUND, unexport(v1, lun, "h2", API_PORT_NONE));
    EXPECT_EQ(0, unexport(v1, lun, "h2", pos("0:1:1")));
    EXPECT_EQ(0u, query(api_getVLUNTemplates, api_vlunsInfo_t{}).size());
}

TEST_F(Vluns, TemplateQueryCriteria)
{
    ASSERT_EQ(0, exportVol(v1, 1, "h1", API_PORT_NONE));
    ASSERT_EQ(0, exportVol(v2, 2, "h1", pos("0:1:1")));
    ASSERT_EQ(0, exportVol(v2, 9, nullptr, pos("1:1:1")));
    api_vlunsInfo_t q{};
    q.vluntype = API_VLUN_PORT_PRESENT;
    q.vluntypeIsSet = 1;
    std::vector<vlun> t = query(api_getVLUNTemplates, q);
    ASSERT_EQ(1u, t.size());
    EXPECT_STREQ("", t[0].hostname);
    EXPECT_EQ(9u, t[0].lun);
    q = api_vlunsInfo_t{};
    strcpy(q.vvname, "v2");
    q.vvnameIsSet = 1;
    EXPECT_EQ(2u, query(api_getVLUNTemplates, q).size());
    q.lun = 2;
    q.lunIsSet = 1;
    EXPECT_EQ(1u, query(api_getVLUNTemplates, q).size());
    q = api_vlunsInfo_t{};
    strcpy(q.hostname, "unknown");
    q.hostnameIsSet = 1;
    EXPECT_EQ(0u, query(api_getVLUNTemplates, q).size());
}

TEST_F(Vluns, BusyVolumesAreNotDeleted)
{
    ASSERT_EQ(0, exportVol(v1, 1, "h1", API_PORT_NONE));
    api_name_t names[2];
    memset(names, 0, sizeof names);
    strcpy(names[0].name, "v2");
    strcpy(names[1].name, "v1");
    api_status_t st;
    EXPECT_EQ(API_E_VV_BUSY, api_removeVVs(&event_, names, 2, 0, &st));
    ASSERT_EQ(0, unexport(v1, 1, "h1", API_PORT_NONE));
    ASSERT_EQ(0, zarsim_set_volume_busy("v2", 1));
    EXPECT_EQ(API_E_VV_BUSY, api_removeVVs(&event_, names, 2, 0, &st));
    ASSERT_EQ(0, zarsim_set_volume_busy("v2", 0));
    strcpy(names[1].name, "missing");
    EXPECT_EQ(API_E_VV_NOT_FOUND, api_removeVVs(&event_, names, 2, 0, &st));
    zar_u32 n = 0;
    api_vv_t* list = nullptr;
    ASSERT_EQ(0, api_getVVs_direct(nullptr, nullptr, &n, &list, 1));
    EXPECT_EQ(2u, n);  // all or nothing
    api_freeVVs(list);
    strcpy(names[1].name, "v1");
    EXPECT_EQ(0, api_removeVVs(&event_, names, 2, 0, &st));
}

TEST_F(Vluns, VolumeChunksAndFilters)
{
    std::vector<std::string> wwns;
    for (int i = 0; i < 23; ++i)
        wwns.push_back(volume(("x" + std::to_string(i)).c_str(), i % 2 ? "odd" : "-"));
    zar_u64 cursor = 0;
    int total = 0, calls = 0;
    do {
        zar_u32 n = 0;
        api_vv_t* list = nullptr;
        ASSERT_EQ(0, api_getVVs_chunk(&cursor, 10, nullptr, &n, &list, 1));
        total += (int)n;
        ++calls;
        api_freeVVs(list);
    } while (cursor != 0);
    EXPECT_EQ(25, total);  // v1, v2 and 23 more
    EXPECT_EQ(3, calls);

    api_vv_filter_t f;
    ASSERT_EQ(0, api_getvv_filter_init(&f, 2, 3));
    std::string list = wwns[3] + "|" + wwns[4] + "|" + wwns[5];
    for (char& c : list)
        c = (char)tolower((unsigned char)c);
    ASSERT_EQ(0, api_getvv_filter_add(&f, API_VV_FILTER_WWN_LIST, 1, list.c_str()));
    EXPECT_NE(0, api_getvv_filter_add(&f, API_VV_FILTER_NAME, 1, "x1"));  // no values left
    cursor = 0;
    zar_u32 n = 0;
    api_vv_t* vv = nullptr;
    ASSERT_EQ(0, api_getVVs_chunk(&cursor, 0, &f, &n, &vv, 1));
    ASSERT_EQ(3u, n);
    EXPECT_STREQ("x3", vv[0].elementName);
    EXPECT_STREQ("odd", vv[0].domain);
    EXPECT_EQ(0u, cursor);
    api_freeVVs(vv);
    api_getvv_filter_free(&f);
    ASSERT_EQ(0, api_getVVs_direct(nullptr, "x7", &n, &vv, 1));
    ASSERT_EQ(1u, n);
    EXPECT_EQ(VOL_MODE_READWRITE, vv[0].access);
    api_freeVVs(vv);
}
}  // namespace
