// Tests of view instances assembled from the array's view records, with the
// server core answering the class and identity requests.
#include <map>
#include <string.h>

#include <ZAR_Common.h>

#include "ModuleFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class SPCAssemblyTest : public ModuleFixture {
protected:
    // Runs buildSPCInstances chunk by chunk until the array says no more.
    Array<CIMInstance> all(const char* className, Uint32 chunk = 200, int* calls = nullptr,
                           const CIMObjectPath& path = CIMObjectPath(),
                           const CIMPropertyList& properties = CIMPropertyList())
    {
        Array<CIMInstance> out;
        api_spc_param_data cursor;
        api_initSPCParamData(&cursor);
        Uint32 more = 1;
        int n = 0;
        do {
            ZAR_Common::buildSPCInstances(handle_, OperationContext(), path, system_, host_,
                                          className, false, false, properties, 0, out, &cursor,
                                          &more, chunk);
            n++;
        } while (more != 0 && n < 1000);
        api_freeSPCParamData(&cursor);
        if (calls)
            *calls = n;
        return out;
    }

    static std::map<std::string, CIMInstance> byDeviceID(const Array<CIMInstance>& a)
    {
        std::map<std::string, CIMInstance> m;
        for (Uint32 i = 0; i < a.size(); i++)
            m[text(ZAR_Common::getStringProperty(a[i], "DeviceID"))] = a[i];
        return m;
    }

    static std::string prop(const CIMInstance& i, const char* name)
    {
        return text(ZAR_Common::getPropertyValue(i, name).toString());
    }

    CIMOMHandle handle_;
    String system_{"ZAR-DEMO"};
    String host_{"zar-demo"};
};

TEST_F(SPCAssemblyTest, DemoViewsCarryEveryPropertyOfTheirKind)
{
    std::map<std::string, CIMInstance> views = byDeviceID(all("ZAR_SCSIController"));
    unsigned db01 = ArrayBuilder::hostID("db01");
    unsigned dr01 = ArrayBuilder::hostID("dr01");
    ASSERT_TRUE(views.count("MS:2:1:1:" + std::to_string(db01)));
    ASSERT_TRUE(views.count("HS:" + std::to_string(dr01)));
    ASSERT_TRUE(views.count("PP:0:1:1"));
    EXPECT_FALSE(views.count("PP:0:2:1")) << "an iSCSI view is no ZAR_SCSIController";

    const CIMInstance& ms = views["MS:2:1:1:" + std::to_string(db01)];
    EXPECT_EQ("ZAR_StorageSystem", prop(ms, "SystemCreationClassName"));
    EXPECT_EQ("ZAR-DEMO", prop(ms, "SystemName"));
    EXPECT_EQ("ZAR_SCSIController", prop(ms, "CreationClassName"));
    EXPECT_EQ("db01", prop(ms, "ElementName"));
    EXPECT_EQ("21000024FF300001", prop(ms, "Name"));
    EXPECT_EQ("2", prop(ms, "NameFormat"));
    EXPECT_EQ(
        "Name (and DeviceID) is constructed in the following format:\n"
        " MS:<port LPID>:<host id>  for matched set vlun\n"
        " HS:<host id>  for host see vlun\n"
        " PP:<port LPID>  for port present vlun",
        prop(ms, "OtherNameFormat"));
    EXPECT_EQ("2 ", prop(ms, "OperationalStatus"));
    EXPECT_EQ("OK ", prop(ms, "StatusDescriptions"));
    EXPECT_EQ("5", prop(ms, "HealthState"));
    EXPECT_TRUE(ms.getPath() ==
                ZAR_Common::buildSPCObjectPath("ZAR_StorageSystem", "zar-demo", "ZAR-DEMO",
                                               "MS:2:1:1:" + String(std::to_string(db01).c_str()),
                                               "ZAR_SCSIController"));

    const CIMInstance& dormant = views["HS:" + std::to_string(dr01)];
    EXPECT_EQ("15 ", prop(dormant, "OperationalStatus"));
    EXPECT_EQ("Dormant ", prop(dormant, "StatusDescriptions"));

    const CIMInstance& pp = views["PP:0:1:1"];
    EXPECT_EQ("", prop(pp, "ElementName"));
    EXPECT_EQ(16u, prop(pp, "Name").size()) << "a port-present view is named by its port's WWN";

    std::map<std::string, CIMInstance> iscsi = byDeviceID(all("ZAR_iSCSIController"));
    ASSERT_TRUE(iscsi.count("PP:0:2:1"));
    EXPECT_EQ("3", prop(iscsi["PP:0:2:1"], "NameFormat"));
    EXPECT_EQ(0u, iscsi.count("PP:0:1:1"));
    EXPECT_EQ(0u, all("ZAR_StorageVolume").size());
}

TEST_F(SPCAssemblyTest, NameFallsBackToTheHostsFirstPathOfTheRightKind)
{
    CIMClass cls =
        ZAR_Common::getStoredCIMClass(handle_, OperationContext(), "root/zar", "ZAR_SCSIController",
                                      false, false, false, CIMPropertyList());
    vlun record;
    memset(&record, 0, sizeof(record));
    strcpy(record.deviceID, "HS:1");
    strcpy(record.hostname, "esx01");
    record.accessPriority = 2;
    record.hporttype = PORT_TYPE_FC;
    CIMInstance fc = ZAR_Common::buildSPCInstance("ZAR_StorageSystem", cls, &record, "S", "h");
    EXPECT_EQ("10000000C9A00101", prop(fc, "Name"));

    strcpy(record.hostname, "build01");  // iSCSI initiators only
    CIMInstance none = ZAR_Common::buildSPCInstance("ZAR_StorageSystem", cls, &record, "S", "h");
    EXPECT_EQ("", prop(none, "Name"));

    strcpy(record.hostname, "esx01");
    zarsim_sem_timeout_next(1);
    CIMInstance timedOut =
        ZAR_Common::buildSPCInstance("ZAR_StorageSystem", cls, &record, "S", "h");
    EXPECT_EQ("", prop(timedOut, "Name"));
}

TEST_F(SPCAssemblyTest, ChunksOf200CoverEveryViewOnce)
{
    std::string wwn = ArrayBuilder::volume("bulk");
    size_t before = all("ZAR_SCSIController").size();
    for (int i = 0; i < 450; i++) {
        char name[32], initiator[17];
        snprintf(name, sizeof(name), "bulk%03d", i);
        snprintf(initiator, sizeof(initiator), "5000000000%06X", i);
        ASSERT_EQ(0, ArrayBuilder::host(name, initiator));
        ASSERT_EQ(0, ArrayBuilder::exportTo(wwn, name, nullptr));
    }
    int calls = 0;
    Array<CIMInstance> views = all("ZAR_SCSIController", 200, &calls);
    EXPECT_EQ(before + 450, views.size());
    EXPECT_EQ(before + 450, byDeviceID(views).size()) << "no view twice";
    EXPECT_GE(calls, 3);
}

TEST_F(SPCAssemblyTest, RequestedDeviceIDNarrowsTheAnswer)
{
    unsigned db01 = ArrayBuilder::hostID("db01");
    CIMObjectPath wanted = ZAR_Common::buildSPCObjectPath(
        "ZAR_StorageSystem", "zar-demo", "ZAR-DEMO", ("HS:" + std::to_string(db01)).c_str(),
        "ZAR_SCSIController");
    LogCapture log;
    Array<CIMInstance> one = all("ZAR_SCSIController", 200, nullptr, wanted);
    ASSERT_EQ(1u, one.size());
    EXPECT_EQ("HS:" + std::to_string(db01), prop(one[0], "DeviceID"));
    EXPECT_TRUE(log.has("vlunType = 2, host = db01\n"));
    // The records of the port are narrowed to the identifier, case ignored.
    Array<CIMInstance> def =
        all("ZAR_SCSIController", 200, nullptr,
            ZAR_Common::buildSPCObjectPath("ZAR_StorageSystem", "zar-demo", "ZAR-DEMO",
                                           "PP:0:1:1:DEFAULT", "ZAR_SCSIController"));
    ASSERT_EQ(1u, def.size());
    EXPECT_EQ("PP:0:1:1:default", prop(def[0], "DeviceID"));

    // A path that names the class but no view asks for no view at all.
    EXPECT_EQ(0u, all("ZAR_SCSIController", 200, nullptr,
                      CIMObjectPath("//zar-demo/root/zar:ZAR_SCSIController"))
                      .size());
    CIMObjectPath noDeviceID("//zar-demo/root/zar:ZAR_SCSIController.SystemName=\"ZAR-DEMO\"");
    EXPECT_EQ(0u, all("ZAR_SCSIController", 200, nullptr, noDeviceID).size());
}

TEST_F(SPCAssemblyTest, FailedChunkIsTracedAndEndsTheWalkWhenNothingRemains)
{
    // The array clears the more flag of a failed call: the walk ends there.
    LogCapture log;
    zarsim_fail_next("api_getSCSIProtocolControllers_chunk", 1, 1, "disk on fire");
    Array<CIMInstance> out;
    api_spc_param_data cursor;
    api_initSPCParamData(&cursor);
    Uint32 more = 1;
    ZAR_Common::buildSPCInstances(handle_, OperationContext(), CIMObjectPath(), system_, host_,
                                  "ZAR_SCSIController", false, false, CIMPropertyList(), 0, out,
                                  &cursor, &more, 200);
    EXPECT_EQ(0u, out.size());
    EXPECT_EQ(0u, more);
    EXPECT_TRUE(
        log.has("ZAR_Common::buildSPCInstances ()  api_getSCSIProtocolControllers_chunk "
                "failed, status = 1\n"));
    api_freeSPCParamData(&cursor);
}

TEST_F(SPCAssemblyTest, EmptyPropertyListGivesTheSamePathsWithoutProperties)
{
    for (const char* cls : {"ZAR_SCSIController", "ZAR_iSCSIController"}) {
        Array<CIMInstance> full = all(cls, 3);
        Array<CIMInstance> named =
            all(cls, 3, nullptr, CIMObjectPath(), CIMPropertyList(Array<CIMName>()));
        ASSERT_NE(0u, full.size()) << cls;
        ASSERT_EQ(full.size(), named.size()) << cls;
        for (Uint32 i = 0; i < full.size(); i++) {
            EXPECT_TRUE(full[i].getPath() == named[i].getPath())
                << text(named[i].getPath().toString());
            EXPECT_EQ(0u, named[i].getPropertyCount());
            EXPECT_TRUE(named[i].getClassName().equal(cls));
        }
    }
}

TEST_F(SPCAssemblyTest, TimedOutChunkThrowsWhileRecordsRemain)
{
    zarsim_sem_timeout_next(1);
    Array<CIMInstance> out;
    api_spc_param_data cursor;
    api_initSPCParamData(&cursor);
    Uint32 more = 1;
    expectCIMError(
        CIM_ERR_INVALID_PARAMETER, "Failed to retrieve SPC data. Semaphore Timed-Out", [&] {
            ZAR_Common::buildSPCInstances(handle_, OperationContext(), CIMObjectPath(), system_,
                                          host_, "ZAR_SCSIController", false, false,
                                          CIMPropertyList(), 0, out, &cursor, &more, 200);
        });

    // A whole-list request (chunk 0) just returns.
    zarsim_sem_timeout_next(1);
    api_initSPCParamData(&cursor);
    more = 1;
    ZAR_Common::buildSPCInstances(handle_, OperationContext(), CIMObjectPath(), system_, host_,
                                  "ZAR_SCSIController", false, false, CIMPropertyList(), 0, out,
                                  &cursor, &more, 0);
    EXPECT_EQ(0u, out.size());
    api_freeSPCParamData(&cursor);
}

}  // namespace
