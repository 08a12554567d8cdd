// ExposeDefaultLUs and HideDefaultLUs over a fresh demo array.
#include "ServiceFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

using DefaultLUsTest = ServiceFixture;

TEST_F(DefaultLUsTest, WithoutNumbersOnlyTheFirstLUIsExposedOnEachPort)
{
    std::string a = wwnOf("finance-08"), port = portName("1:1:1");
    Outcome o = call("ExposeDefaultLUs",
                     params({strings("LUNames", {a, wwnOf("finance-10")}),
                             strings("TargetPortIDs", {port}), uint16s("DeviceAccesses", {2, 2})}));
    EXPECT_TRUE(exportsOf("finance-10").empty());
    std::vector<Export> made = exportsOf("finance-08");
    ASSERT_EQ(1u, made.size());
    EXPECT_EQ(API_VLUN_PORT_PRESENT, made[0].kind);
    EXPECT_EQ("1:1:1", made[0].port);
    EXPECT_EQ((std::vector<std::string>{"LU=" + a + ",DeviceNumber=0x" + hex(made[0].lun) +
                                        ",TargetPortID=" + port + ": Success\n"}),
              o.descriptions());
    // The port's port-present view, not its default view.
    Array<CIMObjectPath> views = o.views();
    ASSERT_EQ(1u, views.size());
    EXPECT_EQ("PP:1:1:1", deviceIDOf(views[0]));

    // That view, named by its port alone, can be deleted.
    Array<CIMParamValue> remove;
    remove.append(CIMParamValue("ProtocolController", CIMValue(views[0])));
    call("DeleteProtocolController", remove);
    EXPECT_TRUE(exportsOf("finance-08").empty());

    // A read-only volume takes access 3.
    call("ExposeDefaultLUs",
         params({strings("LUNames", {wwnOf("finance-09")}), strings("TargetPortIDs", {port}),
                 uint16s("DeviceAccesses", {3})}));
    EXPECT_EQ(1u, exportsOf("finance-09").size());
}

TEST_F(DefaultLUsTest, NumberedLUsOnFibreChannelAndISCSIPorts)
{
    std::string a = wwnOf("eng-06"), b = wwnOf("eng-07");
    // An iSCSI target port by its target name, as its endpoint is named
    // (portal group tag: the position 1:2:1 = 0x91).
    std::string fc = portName("1:1:2"), iscsi = portName("1:2:1") + ",t,0x0091";
    Outcome o =
        call("ExposeDefaultLUs",
             params({strings("LUNames", {a, b}), strings("DeviceNumbers", {"40", "41"}),
                     strings("TargetPortIDs", {fc, iscsi}), uint16s("DeviceAccesses", {2, 2})}));
    std::vector<Export> ofA = exportsOf("eng-06"), ofB = exportsOf("eng-07");
    ASSERT_EQ(2u, ofA.size());
    ASSERT_EQ(2u, ofB.size());
    EXPECT_EQ(0x40u, ofA[0].lun);
    EXPECT_EQ(0x41u, ofB[1].lun);
    EXPECT_EQ("1:1:2", ofA[0].port);
    EXPECT_EQ("1:2:1", ofA[1].port);
    ASSERT_EQ(4u, o.descriptions().size());
    EXPECT_EQ("LU=" + b + ",DeviceNumber=0x41,TargetPortID=" + iscsi + ": Success\n",
              o.descriptions()[3]);
    // Each port's view once, though two LUs reached it.
    Array<CIMObjectPath> views = o.views();
    ASSERT_EQ(2u, views.size());
    EXPECT_EQ("PP:1:1:2", deviceIDOf(views[0]));
    EXPECT_EQ("ZAR_iSCSIController", text(views[1].getClassName().getString()));
}

TEST_F(DefaultLUsTest, ABadPortPositionIsReportedAndTheOtherPortsServed)
{
    // An unknown WWN whose top bits say node 0, slot 1, port 5.
    std::string bad = "20150002AC000099";
    std::string a = wwnOf("finance-08");
    CIMException e =
        failure("ExposeDefaultLUs",
                params({strings("LUNames", {a}), strings("TargetPortIDs", {bad, portName("2:1:1")}),
                        uint16s("DeviceAccesses", {2})}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ(0u, text(e.getMessage()).find("Port=0:1:5: Target port ID is invalid\n; LU=" + a));
    std::vector<Export> made = exportsOf("finance-08");
    ASSERT_EQ(1u, made.size());
    EXPECT_EQ("2:1:1", made[0].port);
}

TEST_F(DefaultLUsTest, ExposeRefusals)
{
    std::string a = wwnOf("finance-08"), port = portName("1:1:1");
    expectRefusals(
        "ExposeDefaultLUs",
        {
            {params({strings("LUNames", {a}), strings("TargetPortIDs", {port}),
                     uint16s("DeviceAccesses", {2}),
                     refs("ProtocolControllers", {view("PP:0:1:1")})}),
             1, "Use case not supported: Only 1 use case is supported: Create a New View"},
            {params({strings("LUNames", {a}), strings("TargetPortIDs", {port}),
                     uint16s("DeviceAccesses", {2, 2})}),
             5, "Size of LUName and DeviceAccess arrays has to be the same"},
            {params({strings("LUNames", {a}), strings("TargetPortIDs", {port}),
                     uint16s("DeviceAccesses", {3})}),
             4099, "LU=" + a + ": DeviceAccess is not supported for the volume, name = finance-08"},
            {params({strings("LUNames", {a}),
                     strings("TargetPortIDs", {"iqn.2000-01.org.other:t1"}),
                     uint16s("DeviceAccesses", {2})}),
             4098, "TargetPortID=iqn.2000-01.org.other:t1: Target port ID is invalid\n"},
            // A name of this array's form that no port has: the position is read
            // from the value after the prefix (node 0, slot 1, port 5).
            {params({strings("LUNames", {a}),
                     strings("TargetPortIDs", {API_ISCSI_VENDOR_PREFIX "20150002AC000099"}),
                     uint16s("DeviceAccesses", {2})}),
             5, "Port=0:1:5: Target port ID is invalid\n"},
            {params({strings("LUNames", {a}), strings("DeviceNumbers", {"XYZ"}),
                     strings("TargetPortIDs", {port}), uint16s("DeviceAccesses", {2})}),
             5, "DeviceNumber=0xXYZ: DeviceNumber is invalid\n"},
            {params({strings("LUNames", {"not-a-wwn"}), strings("TargetPortIDs", {port}),
                     uint16s("DeviceAccesses", {2})}),
             4097, "LU=not-a-wwn: LUName is invalid\n"},
        });
    EXPECT_TRUE(exportsOf("finance-08").empty());
}

TEST_F(DefaultLUsTest, HidingFromTheDefaultViewOfAPort)
{
    std::string lu = wwnOf("finance-06");
    Outcome o =
        call("HideDefaultLUs", params({strings("LUNames", {lu, wwnOf("eng-10")}),
                                       refs("ProtocolControllers", {view("PP:0:1:1:default")})}));
    EXPECT_TRUE(exportsOf("finance-06").empty());
    // The matched VLUN's own number; no target text for a default view; an
    // LU that the port does not show is passed over in silence.
    EXPECT_EQ(
        (std::vector<std::string>{"LU=" + lu + ",DeviceNumber=0x1E,TargetPortID=: Success\n"}),
        o.descriptions());
    EXPECT_TRUE(o.all("ProtocolControllers").empty());
}

TEST_F(DefaultLUsTest, APortPresentViewThatIsNotTheDefaultOneRemovesNothing)
{
    Outcome o = call("HideDefaultLUs", params({strings("LUNames", {wwnOf("finance-06")}),
                                               refs("ProtocolControllers", {view("PP:0:1:1")})}));
    EXPECT_TRUE(o.descriptions().empty());
    EXPECT_EQ(1u, exportsOf("finance-06").size());
}

TEST_F(DefaultLUsTest, HideRefusals)
{
    std::string lu = wwnOf("finance-06");
    CIMObjectPath def = view("PP:0:1:1:default");
    expectRefusals(
        "HideDefaultLUs",
        {
            {params({strings("LUNames", {lu}), strings("TargetPortIDs", {"x"}),
                     refs("ProtocolControllers", {def})}),
             1, "Use case not supported: Only 1 use case is supported: Remove LU's from a View"},
            {params({strings("LUNames", {lu}), strings("DeviceNumbers", {"1", "2"}),
                     refs("ProtocolControllers", {def})}),
             5, "Size of LUName and DeviceNumber arrays has to be the same"},
            {params({strings("LUNames", {lu}),
                     refs("ProtocolControllers", {view("HS:" + std::to_string(hostID("db01")))})}),
             5, "Invalid ProtocolControllers"},
            {params({strings("LUNames", {lu}),
                     refs("ProtocolControllers", {view("PP:1:1:1:default")})}),
             5, "Invalid ProtocolControllers"},
            {params({strings("LUNames", {lu}), strings("Bogus", {"x"}),
                     refs("ProtocolControllers", {def})}),
             5, "Invalid parameter: Bogus"},
        });
    EXPECT_EQ(1u, exportsOf("finance-06").size());
}

}  // namespace
