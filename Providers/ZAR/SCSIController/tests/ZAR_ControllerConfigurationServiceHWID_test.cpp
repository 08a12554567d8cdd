// ExposeLUsToStorageHardwareIDCollection and
// HideLUsFromStorageHardwareIDCollection over a fresh demo array.
#include "ServiceFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class HardwareIDCollectionTest : public ServiceFixture {
protected:
    Outcome expose(std::initializer_list<CIMParamValue> extra)
    {
        Array<CIMParamValue> in = params(extra);
        return call("ExposeLUsToStorageHardwareIDCollection", in);
    }
};

TEST_F(HardwareIDCollectionTest, ExposesTheFirstLUToEveryHostOnEveryPort)
{
    std::string lu = wwnOf("finance-08");
    Outcome o =
        expose({strings("LUNames", {lu, wwnOf("finance-10")}),
                strings("HostNames", {"esx01", "esx02"}), uint16s("DeviceAccesses", {2, 2})});
    // Without device numbers only the first LU goes out.
    EXPECT_TRUE(exportsOf("finance-10").empty());
    std::vector<Export> made = exportsOf("finance-08");
    ASSERT_EQ(2u, made.size());
    for (const Export& e : made) {
        EXPECT_EQ(API_VLUN_HOST_SEES, e.kind);
        EXPECT_EQ("", e.port);
    }
    ASSERT_EQ(2u, o.descriptions().size());
    EXPECT_EQ("LU=" + lu + ",DeviceNumber=0x" + hex(exports("esx01")[0].lun) +
                  ",HostName=esx01: Success\n",
              o.descriptions()[0]);
    EXPECT_EQ(2u, o.views().size());
}

TEST_F(HardwareIDCollectionTest, GivenNumbersAndPortsMakeMatchedSets)
{
    std::string a = wwnOf("finance-08"), b = wwnOf("finance-10");
    Outcome o = expose({strings("LUNames", {a, b}), strings("DeviceNumbers", {"20", "21"}),
                        strings("HostNames", {"esx01"}), uint16s("DeviceAccesses", {2, 2}),
                        strings("TargetPortLPIDs", {"0:1:1", "9:9:9"})});
    std::vector<Export> made = exports("esx01");
    ASSERT_EQ(2u, made.size());
    EXPECT_EQ(0x20u, made[0].lun);
    EXPECT_EQ("0:1:1", made[0].port);
    EXPECT_EQ(API_VLUN_MATCHED_SET, made[0].kind);
    EXPECT_EQ("LU=" + b + ",DeviceNumber=0x21,HostName=esx01,Port=0:1:1: Success\n",
              o.descriptions()[1]);
    // esx01 is logged in on 0:1:1: one matched-set view shows both LUs.
    ASSERT_EQ(1u, o.views().size());
    EXPECT_EQ("MS:0:1:1:" + std::to_string(hostID("esx01")), deviceIDOf(o.views()[0]));
}

TEST_F(HardwareIDCollectionTest, ExposeRefusals)
{
    std::string lu = wwnOf("finance-08");
    expectRefusals(
        "ExposeLUsToStorageHardwareIDCollection",
        {
            {params({strings("LUNames", {lu}), strings("HostNames", {"esx01"})}), 1,
             "Use case not supported: Only 1 use case is supported: Create a New View"},
            {params({strings("LUNames", {lu}), strings("HostNames", {"esx01"}),
                     uint16s("DeviceAccesses", {2}), refs("ProtocolControllers", {view("HS:1")})}),
             1, "Use case not supported: Only 1 use case is supported: Create a New View"},
            {params({strings("LUNames", {wwnOf("finance-09")}), strings("HostNames", {"esx01"}),
                     uint16s("DeviceAccesses", {2})}),
             4099,
             "LU=" + wwnOf("finance-09") +
                 ": DeviceAccess is not supported for the volume, name = finance-09"},
            {params({strings("LUNames", {lu}), strings("HostNames", {"esx01"}),
                     uint16s("DeviceAccesses", {2}),
                     strings("TargetPortLPIDs", {"9:9:9", "0000000000000000"})}),
             5, "None of the passed in TargetPortIDs are valid\n"},
            {params({strings("LUNames", {"zz"}), strings("HostNames", {"esx01"}),
                     uint16s("DeviceAccesses", {2})}),
             4097, "LU=zz: LUName is invalid\n"},
            {params({strings("LUNames", {lu}), strings("DeviceNumbers", {"XYZ"}),
                     strings("HostNames", {"esx01"}), uint16s("DeviceAccesses", {2})}),
             5, "DeviceNumber=0xXYZ: DeviceNumber is invalid\n"},
            {params({strings("LUNames", {lu}), strings("HostNames", {"nosuchhost"}),
                     uint16s("DeviceAccesses", {2})}),
             4, "LU=" + lu + ",DeviceNumber=0xFFFFFF,HostName=nosuchhost: "},
        },
        true);
    EXPECT_TRUE(exportsOf("finance-08").empty());
    // A null parameter of any name is passed over.
    Array<CIMParamValue> in = params({strings("LUNames", {lu}), strings("HostNames", {"esx01"}),
                                      uint16s("DeviceAccesses", {2})});
    in.append(CIMParamValue("Whatever", CIMValue(CIMTYPE_STRING, false)));
    call("ExposeLUsToStorageHardwareIDCollection", in);
}

TEST_F(HardwareIDCollectionTest, HidesLUsFromAHostsView)
{
    CIMObjectPath set = view("HSet:" + std::to_string(hostID("set:esx-cluster")));
    std::string lu = wwnOf("finance-04");
    Outcome o = call("HideLUsFromStorageHardwareIDCollection",
                     params({strings("LUNames", {lu}), strings("DeviceNumbers", {"B"}),
                             refs("ProtocolControllers", {set})}));
    EXPECT_TRUE(exportsOf("finance-04").empty());
    EXPECT_EQ("LU=" + lu + ",DeviceNumber=0xB,HostCollection=set:esx-cluster: Success\n",
              o.descriptions()[0]);
    EXPECT_EQ(1u, o.views().size());

    // The last LU of db01's host-sees view: no view comes back.
    Outcome last =
        call("HideLUsFromStorageHardwareIDCollection",
             params({strings("LUNames", {wwnOf("finance-02")}),
                     refs("ProtocolControllers", {view("HS:" + std::to_string(hostID("db01")))})}));
    EXPECT_TRUE(last.all("ProtocolControllers").empty());
    EXPECT_TRUE(exportsOf("finance-02").empty());
}

TEST_F(HardwareIDCollectionTest, HideRefusals)
{
    std::string lu = wwnOf("finance-02");
    CIMObjectPath hs = view("HS:" + std::to_string(hostID("db01")));
    expectRefusals(
        "HideLUsFromStorageHardwareIDCollection",
        {
            {params({strings("LUNames", {lu})}), 1,
             "Use case not supported: Only 1 use case is supported: Remove LU's from a View"},
            {params({strings("LUNames", {lu}), strings("DeviceNumbers", {"1", "2"}),
                     refs("ProtocolControllers", {hs})}),
             5, "Size of LUName and DeviceNumber arrays has to be the same"},
            {params({strings("LUNames", {lu}), refs("ProtocolControllers", {view("PP:0:1:1")})}), 5,
             "Invalid ProtocolControllers"},
            {params({strings("LUNames", {wwnOf("eng-10")}), refs("ProtocolControllers", {hs})}), 5,
             "InitiatorPort is not part of SPC.\n"},
            {params({strings("LUNames", {lu}),
                     refs("ProtocolControllers", {view(deviceIDOf(hs), "ZAR_iSCSINode")})}),
             5, ""},
        });
    EXPECT_EQ(1u, exportsOf("finance-02").size());
}

}  // namespace
