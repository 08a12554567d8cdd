// ArrayFixture.h - a private in-memory array per test, and short helpers
// over the C interface.
#ifndef ZARSIM_TESTS_ARRAYFIXTURE_H
#define ZARSIM_TESTS_ARRAYFIXTURE_H

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include <zarapi.h>
#include <zarsim_test.h>

class ArrayTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        zarsim_set_hash_iterations(1000);
        zarsim_capture_log(1);
        ASSERT_EQ(0, zarsim_open(":memory:"));
        ASSERT_EQ(0, api_zarOpenForCimserver(nullptr));
    }
    void TearDown() override
    {
        zarsim_clear_faults();
        zarsim_close();
        zarsim_capture_log(0);
        zarsim_clear_captured();
    }

    // A small array: nodes 0 and 1, FC ports 0:1:1 and 1:1:1, iSCSI port 0:2:1.
    void smallArray()
    {
        ASSERT_EQ(0, zarsim_add_port("0:1:1", PORT_TYPE_FC));
        ASSERT_EQ(0, zarsim_add_port("1:1:1", PORT_TYPE_FC));
        ASSERT_EQ(0, zarsim_add_port("0:2:1", PORT_TYPE_ISCSI));
    }

    std::string volume(const char* name, const char* domain = "-", int access = VOL_MODE_READWRITE)
    {
        char wwn[33] = {0};
        EXPECT_EQ(0, zarsim_add_volume(name, 1024, domain, access, wwn));
        return wwn;
    }

    int host(const char* name, zar_u64 wwn, const char* iscsi = nullptr, const char* domain = "-")
    {
        api_status_t st;
        api_initStatus(&st);
        return api_createHost(&st, &event_, name, iscsi, wwn, API_PERSONA_GENERIC, domain);
    }

    // Creates an export at lun (or API_LUN_AUTO...); returns the array's code,
    // the LUN it chose in *chosen.
    int exportVol(const std::string& wwn, zar_u32 lun, const char* hostName, lpid_t port,
                  int override = 0, zar_u32* chosen = nullptr)
    {
        zar_u64 hi = 0, lo = API_WWN_NONE;
        EXPECT_EQ(0, api_wwnStringToInt(nullptr, wwn.c_str(), &hi, &lo));
        char err[API_ERRTEXT_LEN];
        int rc = api_createVLUN(&event_, hi, lo, &lun, hostName, API_WWN_NONE, nullptr, port,
                                override, 0, err, sizeof err);
        if (chosen)
            *chosen = lun;
        lastError_ = err;
        return rc;
    }

    int unexport(const std::string& wwn, zar_u32 lun, const char* hostName, lpid_t port)
    {
        zar_u64 hi = 0, lo = API_WWN_NONE;
        EXPECT_EQ(0, api_wwnStringToInt(nullptr, wwn.c_str(), &hi, &lo));
        char err[API_ERRTEXT_LEN];
        int rc = api_removeVLUN(&event_, hi, lo, lun, hostName, API_WWN_NONE, nullptr, port, 0, err,
                                sizeof err);
        lastError_ = err;
        return rc;
    }

    static lpid_t pos(const char* text)
    {
        lpid_t p = API_PORT_NONE;
        api_convertStrLPIDtoPortID(text, &p);
        return p;
    }

    // Records of a query (freed before returning).
    static std::vector<vlun> query(int (*fn)(api_vlunsInfo_t*), api_vlunsInfo_t q)
    {
        std::vector<vlun> out;
        EXPECT_EQ(0, fn(&q));
        for (zar_u32 i = 0; i < q.count; ++i)
            out.push_back(q.vluns[i]);
        api_freeVLUNs(&q);
        return out;
    }

    // All view records through the chunked query.
    static std::vector<vlun> allViews(zar_u32 chunk = 200)
    {
        std::vector<vlun> out;
        api_spc_param_data cur;
        api_initSPCParamData(&cur);
        zar_u32 more = 1;
        while (more) {
            api_vlunsInfo_t q;
            memset(&q, 0, sizeof q);
            EXPECT_EQ(0, api_getSCSIProtocolControllers_chunk(&q, &cur, &more, chunk));
            for (zar_u32 i = 0; i < q.count; ++i)
                out.push_back(q.vluns[i]);
            api_freeVLUNs(&q);
        }
        api_freeSPCParamData(&cur);
        return out;
    }

    static const vlun* find(const std::vector<vlun>& v, const std::string& deviceID)
    {
        for (const vlun& r : v)
            if (deviceID == r.deviceID)
                return &r;
        return nullptr;
    }

    api_evtparam_t event_ = makeEvent();
    std::string lastError_;

private:
    static api_evtparam_t makeEvent()
    {
        api_evtparam_t ev;
        memset(&ev, 0, sizeof ev);
        strcpy(ev.user, "tester");
        strcpy(ev.addr, "192.0.2.7");
        strcpy(ev.method, "ZAR_ControllerConfigurationService:ExposePaths");
        strcpy(ev.inst_op, "expose");
        strcpy(ev.inst_param, "LUNames=...");
        return ev;
    }
};

#endif
