// ExposePaths and HidePaths through the dispatcher over a fresh demo array:
// each use case with the array's state read back, and each refusal.
#include "ServiceFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

const char SPARE_FC[] = "10000000C9A0FF01";                    // logged in on 0:1:1, no host
const char SPARE_ISCSI[] = "iqn.1994-05.com.example:spare01";  // on 0:2:1, no host

class ExposePathsTest : public ServiceFixture {
protected:
    void TearDown() override
    {
        ZAR_Common::setPolicy(0);
        ServiceFixture::TearDown();
    }
    CIMObjectPath hostSees(const char* host) { return view("HS:" + std::to_string(hostID(host))); }
};

TEST_F(ExposePathsTest, NewViewPutsAllInitiatorsIntoOneNewHost)
{
    std::string lu = wwnOf("eng-06");
    Outcome o =
        call("ExposePaths", params({strings("LUNames", {lu}),
                                    strings("InitiatorPortIDs", {SPARE_FC, "10000000C9A0FF02"})}));
    const std::string host = std::string("host-") + SPARE_FC;
    EXPECT_EQ(host, hostOf(SPARE_FC));
    EXPECT_EQ(host, hostOf("10000000C9A0FF02"));
    EXPECT_STREQ("eng", this->host(host).domain);
    std::vector<Export> made = exports(host);
    ASSERT_EQ(1u, made.size());
    EXPECT_EQ("eng-06", made[0].volume);
    EXPECT_EQ(API_VLUN_HOST_SEES, made[0].kind);
    EXPECT_EQ("", made[0].port);

    std::vector<std::string> d = o.descriptions();
    EXPECT_EQ(
        (std::vector<std::string>{"InitiatorID added to " + host,
                                  "LU=" + lu + ",DeviceNumber=0x" + hex(made[0].lun) +
                                      ",InitiatorID=10000000C9A0FF01,10000000C9A0FF02: Success\n"}),
        d);
    Array<CIMObjectPath> views = o.views();
    ASSERT_EQ(1u, views.size());
    EXPECT_EQ("HS:" + std::to_string(hostID(host)), deviceIDOf(views[0]));
    EXPECT_EQ("ZAR_SCSIController", text(views[0].getClassName().getString()));
}

TEST_F(ExposePathsTest, NewViewThroughTargetPortsWithGivenNumbers)
{
    std::string lu = wwnOf("eng-07");
    std::string port1 = portName("0:1:1"), port2 = portName("0:1:2");
    ASSERT_FALSE(port1.empty());
    Outcome o =
        call("ExposePaths", params({strings("LUNames", {lu}), strings("DeviceNumbers", {"1a"}),
                                    strings("InitiatorPortIDs", {SPARE_FC}),
                                    strings("TargetPortIDs", {port1, port2})}));
    std::vector<Export> made = exports(std::string("host-") + SPARE_FC);
    ASSERT_EQ(2u, made.size());
    for (const Export& e : made) {
        EXPECT_EQ(0x1Au, e.lun);
        EXPECT_EQ(API_VLUN_MATCHED_SET, e.kind);
    }
    // The host was made with the initiator as its path: none was added.
    std::vector<std::string> d = o.descriptions();
    EXPECT_EQ((std::vector<std::string>{"LU=" + lu + ",DeviceNumber=0x1A,InitiatorID=" + SPARE_FC +
                                            ",TargetPortID=0:1:1: Success\n",
                                        "LU=" + lu + ",DeviceNumber=0x1A,InitiatorID=" + SPARE_FC +
                                            ",TargetPortID=0:1:2: Success\n"}),
              d);
    // The initiator is logged in on 0:1:1 only: that matched set is the
    // active view; both are returned.
    EXPECT_EQ(2u, o.views().size());
}

TEST_F(ExposePathsTest, NewViewTakesTheAccessEachVolumeAllows)
{
    // Read-write volumes take 2, read-only ones 3 (one new host each).
    struct {
        const char* volume;
        Uint16 access;
        const char* initiator;
    } cases[] = {{"eng-07", 2, SPARE_FC}, {"finance-09", 3, SPARE_ISCSI}};
    for (const auto& c : cases) {
        Outcome o = call("ExposePaths", params({strings("LUNames", {wwnOf(c.volume)}),
                                                strings("InitiatorPortIDs", {c.initiator}),
                                                uint16s("DeviceAccesses", {c.access})}));
        EXPECT_EQ(0u, o.rc) << c.volume;
        EXPECT_EQ(1u, exportsOf(c.volume).size()) << c.volume;
    }
}

TEST_F(ExposePathsTest, NewViewPassesOverUnknownAndBadPortsAndStopsAtABadNumber)
{
    std::string lu = wwnOf("eng-07"), second = wwnOf("eng-08");
    // An iSCSI name that is no port of the array is passed over; a WWN whose
    // position has port number 5 is reported; the good port is served.
    CIMException e = failure(
        "ExposePaths", params({strings("LUNames", {lu}), strings("InitiatorPortIDs", {SPARE_FC}),
                               strings("TargetPortIDs", {"iqn.2000-01.com.example:nothere",
                                                         "2005000000000000", portName("0:1:1")})}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ(0u, text(e.getMessage()).find("Port=0:0:5: Target port ID is invalid\n; LU=" + lu));
    ASSERT_EQ(1u, exportsOf("eng-07").size());
    EXPECT_EQ("0:1:1", exportsOf("eng-07")[0].port);

    // A bad device number ends the LU loop: the next LU is not exposed.
    e = failure("ExposePaths", params({strings("LUNames", {second, wwnOf("eng-09")}),
                                       strings("DeviceNumbers", {"zz", "5"}),
                                       strings("InitiatorPortIDs", {SPARE_FC})}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ("DeviceNumber=0xzz: DeviceNumber is invalid\n", text(e.getMessage()));
    EXPECT_TRUE(exportsOf("eng-09").empty());
}

TEST_F(ExposePathsTest, ISCSIInitiatorThroughISCSITargetPortsOnly)
{
    std::string lu = wwnOf("eng-07");
    std::string target = portName("0:2:1");
    ASSERT_FALSE(target.empty());

    // A Fibre Channel port is passed over for an iSCSI initiator; with
    // nothing else, nothing is attempted (the host stays made).
    CIMException e = failure(
        "ExposePaths", params({strings("LUNames", {lu}), strings("InitiatorPortIDs", {SPARE_ISCSI}),
                               strings("TargetPortIDs", {portName("0:1:1")})}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ("Invalid initiator and target port combinations\n", text(e.getMessage()));
    EXPECT_TRUE(exportsOf("eng-07").empty());

    Outcome o = call("ExposePaths",
                     params({strings("LUNames", {lu}), strings("InitiatorPortIDs", {SPARE_ISCSI}),
                             strings("TargetPortIDs", {portName("0:1:1"), target + ",t,0x0011"})}));
    std::vector<Export> made = exportsOf("eng-07");
    ASSERT_EQ(1u, made.size());
    EXPECT_EQ("0:2:1", made[0].port);
    EXPECT_EQ(API_VLUN_MATCHED_SET, made[0].kind);
    EXPECT_EQ(hostOf(SPARE_ISCSI), made[0].host);
    ASSERT_EQ(1u, o.views().size());
    EXPECT_EQ("ZAR_iSCSIController", text(o.views()[0].getClassName().getString()));
    EXPECT_EQ("MS:0:2:1:" + std::to_string(hostID(made[0].host)), deviceIDOf(o.views()[0]));
}

TEST_F(ExposePathsTest, PortsOnlyGiveOneVLUNPerLUAndPort)
{
    std::string lu = wwnOf("finance-08");
    Outcome o = call("ExposePaths",
                     params({strings("LUNames", {lu}),
                             strings("TargetPortIDs", {portName("1:1:1"), portName("1:1:2")})}));
    std::vector<Export> made = exportsOf("finance-08");
    ASSERT_EQ(2u, made.size());
    EXPECT_EQ(API_VLUN_PORT_PRESENT, made[0].kind);
    EXPECT_EQ(2u, o.descriptions().size());
}

TEST_F(ExposePathsTest, OneHostPerInitiatorUnderThePolicy)
{
    ZAR_Common::setPolicy(API_POLICY_ONE_HOST_PER_HWID);
    std::string lu = wwnOf("eng-08");
    // An empty entry is passed over: it gets no host and no export.
    Outcome o =
        call("ExposePaths", params({strings("LUNames", {lu}),
                                    strings("InitiatorPortIDs", {SPARE_FC, "", SPARE_ISCSI})}));
    EXPECT_EQ(2u, exportsOf("eng-08").size());
    std::string fcHost = hostOf(SPARE_FC), iscsiHost = hostOf(SPARE_ISCSI);
    EXPECT_EQ(std::string("host-") + SPARE_FC, fcHost);
    EXPECT_EQ(0u, iscsiHost.find("iSCSIHost-"));
    EXPECT_EQ(31u, iscsiHost.size());
    ASSERT_EQ(1u, exports(fcHost).size());
    ASSERT_EQ(1u, exports(iscsiHost).size());
    EXPECT_EQ("eng-08", exports(iscsiHost)[0].volume);
    Array<CIMObjectPath> views = o.views();
    ASSERT_EQ(2u, views.size());
    EXPECT_EQ("ZAR_SCSIController", text(views[0].getClassName().getString()));
    EXPECT_EQ("ZAR_iSCSIController", text(views[1].getClassName().getString()));

    // A host reached through two of its initiators is served once.
    o = call("ExposePaths",
             params({strings("LUNames", {wwnOf("finance-08")}),
                     strings("InitiatorPortIDs", {"10000000C9A00101", "10000000C9A00102"})}));
    EXPECT_EQ(1u, exportsOf("finance-08").size());
    EXPECT_EQ(1u, o.descriptions().size());
}

TEST_F(ExposePathsTest, InitiatorOfADashedHostMovesToTheTrimmedName)
{
    ASSERT_EQ(0, ArrayBuilder::host("-olddash-", "5000000000000A01"));
    Outcome o = call("ExposePaths", params({strings("LUNames", {wwnOf("eng-09")}),
                                            strings("InitiatorPortIDs", {"5000000000000A01"})}));
    EXPECT_EQ("olddash", hostOf("5000000000000A01"));
    EXPECT_EQ(0u, host("-olddash-").hostID);
    EXPECT_EQ(1u, exports("olddash").size());
}

TEST_F(ExposePathsTest, InitiatorsJoinAViewTakingThePersonaAlong)
{
    CIMObjectPath db01 = hostSees("db01");
    // backup01 (persona 11) keeps its exports, so its path is moved alone.
    Outcome o = call("ExposePaths", params({strings("InitiatorPortIDs", {"21000024FF300101"}),
                                            refs("ProtocolControllers", {db01})}));
    EXPECT_EQ("db01", hostOf("21000024FF300101"));
    EXPECT_EQ(11u, host("db01").persona);
    EXPECT_NE(0u, host("backup01").hostID);
    EXPECT_EQ((std::vector<std::string>{"InitiatorID added to db01"}), o.descriptions());
    ASSERT_EQ(1u, o.views().size());
    EXPECT_EQ(deviceIDOf(db01), deviceIDOf(o.views()[0]));

    // Already there: success without the "added" line.
    Outcome again = call("ExposePaths", params({strings("InitiatorPortIDs", {"21000024FF300101"}),
                                                refs("ProtocolControllers", {db01})}));
    EXPECT_TRUE(again.descriptions().empty());

    // A host-sees view takes an initiator the array does not know.
    call("ExposePaths", params({strings("InitiatorPortIDs", {"10000000C9A0FF07"}),
                                refs("ProtocolControllers", {hostSees("db01")})}));
    EXPECT_EQ("db01", hostOf("10000000C9A0FF07"));
}

TEST_F(ExposePathsTest, AnISCSIInitiatorLeavesOnlyItsOwnHost)
{
    // Two iSCSI hosts without exports; the second one's initiator joins
    // build01's view, and only its own host gives it up.
    const char* first = "iqn.1994-05.com.example:idle01";
    const char* second = "iqn.1994-05.com.example:idle02";
    for (const auto& h : {std::make_pair("idle01", first), std::make_pair("idle02", second)}) {
        api_status_t status;
        ASSERT_EQ(0, cim_sem_wait());
        int rc = api_createHost(&status, nullptr, h.first, h.second, API_WWN_NONE,
                                API_PERSONA_GENERIC, "-");
        cim_sem_post();
        ASSERT_EQ(0, rc) << h.first;
    }
    CIMObjectPath build01 = view("HS:" + std::to_string(hostID("build01")), "ZAR_iSCSIController");
    // Two initiators: the array is asked for every host's paths.
    call("ExposePaths", params({strings("InitiatorPortIDs", {second, "10000000C9A0FF07"}),
                                refs("ProtocolControllers", {build01})}));
    EXPECT_EQ("build01", hostOf(second));
    EXPECT_EQ("idle01", hostOf(first));
    EXPECT_EQ("web01", hostOf("iqn.1994-05.com.example:web01"));
}

TEST_F(ExposePathsTest, MatchedSetViewTakesOnlyInitiatorsOnItsPort)
{
    // db01's matched set is on 2:1:1; esx02's initiator is logged in on 0:1:2.
    CIMObjectPath ms = view("MS:2:1:1:" + std::to_string(hostID("db01")));
    CIMException e =
        failure("ExposePaths", params({strings("InitiatorPortIDs", {"10000000C9A00201"}),
                                       refs("ProtocolControllers", {ms})}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ(
        "InitiatorIDs are not valid because they do not share the same target port ID as the "
        "passed-in SPC\n",
        text(e.getMessage()));
    // It was taken from esx02 all the same (before the port test), and
    // belongs to no host now.
    EXPECT_EQ("", hostOf("10000000C9A00201"));
}

TEST_F(ExposePathsTest, LUsJoinAView)
{
    std::string lu = wwnOf("finance-08");
    Outcome o =
        call("ExposePaths",
             params({strings("LUNames", {lu}), refs("ProtocolControllers", {hostSees("db01")})}));
    std::vector<Export> made = exportsOf("finance-08");
    ASSERT_EQ(1u, made.size());
    EXPECT_EQ("db01", made[0].host);
    EXPECT_EQ(
        "LU=" + lu + ",DeviceNumber=0x" + hex(made[0].lun) + ",hostCollection=db01: Success\n",
        o.descriptions()[0]);
    ASSERT_EQ(1u, o.views().size());
    // With Override the same LU joins the same view a second time.
    call("ExposePaths", params({strings("LUNames", {lu}), flag("Override", true),
                                refs("ProtocolControllers", {hostSees("db01")})}));
    EXPECT_EQ(2u, exportsOf("finance-08").size());

    Outcome pp = call("ExposePaths", params({strings("LUNames", {wwnOf("finance-10")}),
                                             strings("DeviceNumbers", {"3F"}),
                                             refs("ProtocolControllers", {view("PP:0:1:1")})}));
    std::vector<Export> present = exportsOf("finance-10");
    ASSERT_EQ(1u, present.size());
    EXPECT_EQ(API_VLUN_PORT_PRESENT, present[0].kind);
    EXPECT_EQ(0x3Fu, present[0].lun);
    EXPECT_EQ("0:1:1", present[0].port);
    EXPECT_EQ("LU=" + wwnOf("finance-10") + ",DeviceNumber=0x3F,TargetPortID=0:1:1: Success\n",
              pp.descriptions()[0]);
}

TEST_F(ExposePathsTest, LUsJoiningAPortsViewReportOnlyThatView)
{
    // The same LU under the same number through two ports of one host:
    // each change reports the view of its own port alone.
    std::string id = std::to_string(hostID("db01"));
    for (const char* port : {"3:1:1", "2:1:1"}) {
        std::string ms = std::string("MS:") + port + ":" + id;
        Outcome o = call("ExposePaths", params({strings("LUNames", {wwnOf("finance-07")}),
                                                strings("DeviceNumbers", {"21"}),
                                                refs("ProtocolControllers", {view(ms)})}));
        ASSERT_EQ(1u, o.views().size()) << port;
        EXPECT_EQ(ms, deviceIDOf(o.views()[0]));
    }
}

TEST_F(ExposePathsTest, OneBadLUAmongGoodOnesFailsAfterTheGoodOneIsMade)
{
    std::string lu = wwnOf("finance-08");
    CIMException e =
        failure("ExposePaths",
                params({strings("LUNames", {"not-a-wwn", lu}), strings("DeviceNumbers", {"", "7"}),
                        refs("ProtocolControllers", {hostSees("db01")})}));
    EXPECT_EQ(4097, (int)e.getCode());
    EXPECT_EQ("LU=not-a-wwn: LUName is invalid\n; LU=" + lu +
                  ",DeviceNumber=0x7,hostCollection=db01: Success\n",
              text(e.getMessage()));
    EXPECT_EQ(1u, exportsOf("finance-08").size());
}

TEST_F(ExposePathsTest, ArrayRefusalsAreMapped)
{
    // LUN 1 of db01's host-sees view is taken by its matched set.
    CIMException e =
        failure("ExposePaths",
                params({strings("LUNames", {wwnOf("finance-08")}), strings("DeviceNumbers", {"1"}),
                        refs("ProtocolControllers", {hostSees("db01")})}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ(0u,
              text(e.getMessage())
                  .find("LU=" + wwnOf("finance-08") + ",DeviceNumber=0x1,hostCollection=db01: "));
    EXPECT_TRUE(exportsOf("finance-08").empty());
}

TEST_F(ExposePathsTest, Refusals)
{
    std::string lu = wwnOf("finance-08");
    expectRefusals(
        "ExposePaths",
        {
            {params({strings("LUNames", {lu}), strings("Bogus", {"x"})}), 5,
             "Invalid parameter: Bogus"},
            {params({strings("LUNames", {lu}), strings("TargetPortIDs", {"0:1:1"}),
                     refs("ProtocolControllers", {hostSees("db01")})}),
             1,
             "Use case not supported: Only 2 use case is supported: Create a New View and Add "
             "Initiator IDs to "
             "a view"},
            {params({strings("LUNames", {lu}), strings("DeviceNumbers", {"1", "2"}),
                     refs("ProtocolControllers", {hostSees("db01")})}),
             5, "Size of LUName and DeviceNumber arrays has to be the same"},
            {params({strings("LUNames", {lu}), uint16s("DeviceAccesses", {2, 2}),
                     refs("ProtocolControllers", {hostSees("db01")})}),
             5, "Size of LUName and DeviceAccess arrays has to be the same"},
            {params({strings("LUNames", {lu}), uint16s("DeviceAccesses", {3}),
                     strings("InitiatorPortIDs", {SPARE_FC})}),
             4100,
             "LU=" + lu + ": DeviceAccess is not supported for the volume, name = finance-08"},
            {params({strings("LUNames", {wwnOf("finance-10"), wwnOf("eng-01")}),
                     strings("InitiatorPortIDs", {SPARE_FC})}),
             4100,
             "LU=" + wwnOf("eng-01") +
                 ": Cannot expose volumes with different domains at the same time, name = eng-01"},
            // The domain is compared with the volume listed just before, here
            // finance-10, not with the other LU's.
            {params({strings("LUNames", {wwnOf("eng-05"), wwnOf("eng-01")}),
                     strings("InitiatorPortIDs", {SPARE_FC})}),
             4100,
             "LU=" + wwnOf("eng-01") +
                 ": Cannot expose volumes with different domains at the same time, name = eng-01"},
            {params({strings("InitiatorPortIDs", {SPARE_FC}),
                     refs("ProtocolControllers", {view("PP:0:1:1")})}),
             5, "Cannot add initiatorID to a port present VLUN"},
            // A view whose host the array does not know.
            {params({strings("InitiatorPortIDs", {"21000024FF300001"}),
                     refs("ProtocolControllers", {view("HS:999")})}),
             5, "Invalid ProtocolControllers"},
        });
    // Nothing was made or moved by any of them.
    EXPECT_TRUE(exportsOf("finance-08").empty());
    EXPECT_EQ("", hostOf(SPARE_FC));
    EXPECT_EQ("db01", hostOf("21000024FF300001"));

    CIMObjectPath elsewhere = hostSees("db01");
    elsewhere.setNameSpace("root/other");
    EXPECT_EQ(
        "Parameter ProtocolController does not contain correct hostname or namespace or className",
        text(failure("ExposePaths",
                     params({strings("LUNames", {lu}), refs("ProtocolControllers", {elsewhere})}))
                 .getMessage()));
    // The reference is judged when it is read: a bad name after it is not
    // reached, while a bad name before it is.
    EXPECT_EQ(
        "Parameter ProtocolController does not contain correct hostname or namespace or className",
        text(failure("ExposePaths",
                     params({strings("LUNames", {lu}), refs("ProtocolControllers", {elsewhere}),
                             strings("Bogus", {"x"})}))
                 .getMessage()));
    EXPECT_EQ("Invalid parameter: Bogus",
              text(failure("ExposePaths", params({strings("Bogus", {"x"}), strings("LUNames", {lu}),
                                                  refs("ProtocolControllers", {elsewhere})}))
                       .getMessage()));
    // Another system's view with this array's DeviceID is not ours.
    CIMObjectPath other =
        ZAR_Common::buildSPCObjectPath("ZAR_StorageSystem", "", "OTHER",
                                       deviceIDOf(hostSees("db01")).c_str(), "ZAR_SCSIController");
    EXPECT_EQ(
        "Parameter ProtocolController does not contain correct hostname or namespace or className",
        text(failure("ExposePaths",
                     params({strings("LUNames", {lu}), refs("ProtocolControllers", {other})}))
                 .getMessage()));
    EXPECT_TRUE(exportsOf("finance-08").empty());
}

TEST_F(ExposePathsTest, OnlyTheCanonicalViewIdentifierNamesAView)
{
    std::string lu = wwnOf("finance-08");
    std::string id = std::to_string(hostID("db01"));
    std::string wrapped = std::to_string(hostID("db01") + 4294967296ULL);
    for (const std::string& bad : {"HS:" + id + "junk", "HS:+" + id, "HS: " + id, "HS:0" + id,
                                   "HS:" + wrapped, "MS:2:1:1:" + id + "x"}) {
        CIMException e =
            failure("ExposePaths",
                    params({strings("LUNames", {lu}), refs("ProtocolControllers", {view(bad)})}));
        EXPECT_EQ(5, (int)e.getCode()) << bad;
        EXPECT_EQ("Invalid ProtocolControllers", text(e.getMessage())) << bad;
    }
    EXPECT_TRUE(exportsOf("finance-08").empty());
}

TEST_F(ExposePathsTest, ParameterNamesIgnoreCaseAndJobIsIgnored)
{
    Array<CIMParamValue> in = params({strings("lunames", {wwnOf("finance-08")}),
                                      refs("protocolcontrollers", {hostSees("db01")})});
    in.append(CIMParamValue("job", CIMValue(String("anything"))));
    call("exposepaths", in);
    EXPECT_EQ(1u, exportsOf("finance-08").size());
}

TEST_F(ExposePathsTest, NoHostPathsMeansNoHostConnected)
{
    zarsim_fail_next("api_getHostPaths", 1, 1, "Internal error of the array");
    CIMException e = failure("ExposePaths", params({strings("LUNames", {wwnOf("eng-06")}),
                                                    strings("InitiatorPortIDs", {SPARE_FC})}));
    EXPECT_EQ(4098, (int)e.getCode());
    EXPECT_EQ("There are no hosts connected to any target ports", text(e.getMessage()));
}

// ---------------------------------------------------------------------------

class HidePathsTest : public ServiceFixture {
protected:
    CIMObjectPath hostSees(const char* host) { return view("HS:" + std::to_string(hostID(host))); }
};

TEST_F(HidePathsTest, RemovingTheLastLUOfAHostOrPortViewReturnsNoView)
{
    std::string lu = wwnOf("finance-02");
    Outcome o =
        call("HidePaths",
             params({strings("LUNames", {lu}), refs("ProtocolControllers", {hostSees("db01")})}));
    EXPECT_TRUE(exportsOf("finance-02").empty());
    EXPECT_EQ((std::vector<std::string>{"LU=" + lu + ",HostCollection=db01: Success\n"}),
              o.descriptions());
    EXPECT_TRUE(o.all("ProtocolControllers").empty());

    // A port-present view loses its LU alike.
    std::string pp = wwnOf("finance-06");
    o = call("HidePaths",
             params({strings("LUNames", {pp}), refs("ProtocolControllers", {view("PP:0:1:1")})}));
    EXPECT_TRUE(exportsOf("finance-06").empty());
    EXPECT_EQ("LU=" + pp + ",TargetPortID=0:1:1: Success\n", o.descriptions()[0]);
}

TEST_F(HidePathsTest, RemovingOneLUOfAHostSetKeepsTheView)
{
    CIMObjectPath set = view("HSet:" + std::to_string(hostID("set:esx-cluster")));
    std::string lu = wwnOf("finance-03");
    Outcome o = call("HidePaths", params({strings("LUNames", {lu, wwnOf("finance-04")}),
                                          strings("DeviceNumbers", {"A", "B"}),
                                          refs("ProtocolControllers", {set})}));
    EXPECT_TRUE(exportsOf("finance-03").empty());
    EXPECT_TRUE(exportsOf("finance-04").empty());
    EXPECT_EQ(1u, exportsOf("finance-05").size());
    ASSERT_EQ(2u, o.descriptions().size());
    // Both quote the first device number.
    EXPECT_EQ("LU=" + lu + ",DeviceNumber=0xA,HostCollection=set:esx-cluster: Success\n",
              o.descriptions()[0]);
    EXPECT_NE(std::string::npos, o.descriptions()[1].find(",DeviceNumber=0xA,"));
    ASSERT_EQ(1u, o.views().size());
}

TEST_F(HidePathsTest, FullPathsCheckTheInitiatorsOfTheHost)
{
    CIMObjectPath ms = view("MS:2:1:1:" + std::to_string(hostID("db01")));
    std::string lu = wwnOf("finance-01");
    CIMException e = failure("HidePaths", params({strings("LUNames", {lu}),
                                                  strings("InitiatorPortIDs", {"10000000C9A00101"}),
                                                  refs("ProtocolControllers", {ms})}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ("Initiator port ID is invalid", text(e.getMessage()));
    EXPECT_EQ(1u, exportsOf("finance-01").size());

    Outcome o = call("HidePaths", params({strings("LUNames", {lu}),
                                          strings("InitiatorPortIDs", {"21000024FF300001"}),
                                          refs("ProtocolControllers", {ms})}));
    EXPECT_EQ("LU=" + lu + ",HostCollection=db01,TargetPortID=2:1:1: Success\n",
              o.descriptions()[0]);
    EXPECT_TRUE(exportsOf("finance-01").empty());

    // An iSCSI initiator of the host is one of its paths alike.
    CIMObjectPath iscsi = view("HS:" + std::to_string(hostID("build01")), "ZAR_iSCSIController");
    call("HidePaths", params({strings("LUNames", {wwnOf("eng-02")}),
                              strings("InitiatorPortIDs", {"iqn.1994-05.com.example:build01"}),
                              refs("ProtocolControllers", {iscsi})}));
    EXPECT_TRUE(exportsOf("eng-02").empty());
}

TEST_F(HidePathsTest, InitiatorsLeaveTheViewsHost)
{
    ASSERT_EQ(0, ArrayBuilder::exportTo(wwnOf("finance-08"), "esx01", nullptr));
    Outcome o = call("HidePaths",
                     params({strings("InitiatorPortIDs", {"10000000C9A00101", "10000000C9A00102"}),
                             refs("ProtocolControllers", {hostSees("esx01")})}));
    EXPECT_EQ("", hostOf("10000000C9A00101"));
    EXPECT_EQ("", hostOf("10000000C9A00102"));
    // One ProtocolControllers parameter per initiator removed.
    EXPECT_EQ(2u, o.all("ProtocolControllers").size());
    EXPECT_TRUE(o.descriptions().empty());
}

TEST_F(HidePathsTest, InitiatorsLeaveAMatchedSetThroughItsPort)
{
    // An FC and an iSCSI initiator, each found on its view's own port.
    CIMObjectPath fc = view("MS:2:1:1:" + std::to_string(hostID("db01")));
    call("HidePaths", params({strings("InitiatorPortIDs", {"21000024FF300001"}),
                              refs("ProtocolControllers", {fc})}));
    EXPECT_EQ("", hostOf("21000024FF300001"));
    const char* iqn = "iqn.1994-05.com.example:backup01";
    CIMObjectPath iscsi =
        view("MS:2:2:1:" + std::to_string(hostID("backup01")), "ZAR_iSCSIController");
    call("HidePaths",
         params({strings("InitiatorPortIDs", {iqn}), refs("ProtocolControllers", {iscsi})}));
    EXPECT_EQ("", hostOf(iqn));
    EXPECT_EQ("backup01", hostOf("21000024FF300101"));

    // An initiator not on the matched set's port is refused.
    CIMObjectPath ms = view("MS:2:1:1:" + std::to_string(hostID("db01")));
    CIMException e = failure("HidePaths", params({strings("InitiatorPortIDs", {"10000000C9A00101"}),
                                                  refs("ProtocolControllers", {ms})}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ("InitiatorPortID=10000000C9A00101: Invalid for this SPC\n", text(e.getMessage()));
    EXPECT_EQ("esx01", hostOf("10000000C9A00101"));
}

TEST_F(HidePathsTest, Refusals)
{
    std::string lu = wwnOf("finance-02");
    CIMObjectPath hs = hostSees("db01");
    expectRefusals(
        "HidePaths",
        {
            {params({strings("LUNames", {lu}), refs("ProtocolControllers", {hs, hs})}), 1,
             "Use case not supported: Only 3 use cases are supported: Remove LU's from a View, "
             "Hide "
             "Full Paths "
             "from a View and Remove Initiator IDs from a View"},
            {params({strings("InitiatorPortIDs", {"21000024FF300001"}),
                     strings("TargetPortIDs", {"x"}), refs("ProtocolControllers", {hs})}),
             1,
             "Use case not supported: Only 3 use cases are supported: Remove LU's from a View, "
             "Hide "
             "Full Paths "
             "from a View and Remove Initiator IDs from a View"},
            {params({strings("InitiatorPortIDs", {SPARE_FC}),
                     refs("ProtocolControllers", {view("PP:0:1:1")})}),
             5, "Cannot remove initiatorID from a port present VLUN"},
            {params({strings("LUNames", {lu, lu}), strings("DeviceNumbers", {"2"}),
                     refs("ProtocolControllers", {hs})}),
             5, "Size of LUName and DeviceNumber arrays has to be the same"},
            {params({strings("LUNames", {wwnOf("eng-10")}), refs("ProtocolControllers", {hs})}),
             4100, "Target/initiator combination not exposed.\n"},
            // A matched set whose host the array does not know shows nothing,
            // not the other hosts' exports on its port.
            {params({strings("LUNames", {wwnOf("finance-01")}),
                     refs("ProtocolControllers", {view("MS:2:1:1:999")})}),
             4100, "Target/initiator combination not exposed.\n"},
            {params({strings("LUNames", {lu}), flag("Override", true),
                     refs("ProtocolControllers", {hs})}),
             5, "Invalid parameter: Override"},
            // Slots go up to 9, ports up to 4.
            {params({strings("LUNames", {lu}), refs("ProtocolControllers", {view("PP:0:10:1")})}),
             5, "Port=0:10:1: Target port ID is invalid\n"},
            {params({strings("LUNames", {lu}), refs("ProtocolControllers", {view("PP:0:1:4")})}),
             4100, "Target/initiator combination not exposed.\n"},
        });
    EXPECT_EQ(1u, exportsOf("finance-02").size());
    EXPECT_EQ(1u, exportsOf("finance-01").size());
    EXPECT_EQ("db01", hostOf("21000024FF300001"));

    // A reference of another namespace stops the reading where it stands.
    CIMObjectPath elsewhere = hs;
    elsewhere.setNameSpace("root/other");
    CIMException e = failure(
        "HidePaths", params({strings("LUNames", {lu}), refs("ProtocolControllers", {elsewhere}),
                             flag("Override", true)}));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ(
        "Parameter ProtocolController does not contain correct hostname or namespace or className",
        text(e.getMessage()));
}

TEST_F(HidePathsTest, OnlyTheCanonicalViewIdentifierNamesAView)
{
    std::string lu = wwnOf("finance-02");
    std::string id = std::to_string(hostID("db01"));
    for (const std::string& bad :
         {"HS:" + id + "junk", "HS:" + std::to_string(hostID("db01") + 4294967296ULL)}) {
        CIMException e =
            failure("HidePaths",
                    params({strings("LUNames", {lu}), refs("ProtocolControllers", {view(bad)})}));
        EXPECT_EQ("Invalid ProtocolControllers", text(e.getMessage())) << bad;
    }
    CIMObjectPath other = ZAR_Common::buildSPCObjectPath(
        "ZAR_StorageSystem", "", "OTHER", ("HS:" + id).c_str(), "ZAR_SCSIController");
    EXPECT_EQ(5, (int)failure("HidePaths", params({strings("LUNames", {lu}),
                                                   refs("ProtocolControllers", {other})}))
                     .getCode());
    EXPECT_EQ(1u, exportsOf("finance-02").size());
}

}  // namespace
