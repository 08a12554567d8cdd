// The configuration service when the array fails: each array call of a
// method failing in turn, and the semaphore timing out. Each case checks
// the status and description the client sees and what is left on the
// array. (The sanitizer build runs the same cases for leaks.)
#include "ServiceFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

const char SPARE_FC[] = "10000000C9A0FF01";
const char INJECTED[] = "Injected failure";

class FaultsTest : public ServiceFixture {
protected:
    CIMObjectPath hostSees(const char* host) { return view("HS:" + std::to_string(hostID(host))); }
    // The CIM error of a call after making the next call of operation fail
    // with code.
    CIMException failWith(const char* operation, int code, const char* method,
                          const Array<CIMParamValue>& in)
    {
        zarsim_fail_next(operation, 1, code, INJECTED);
        return failure(method, in);
    }
    // The same, checking the status and, when given, the message.
    void expectFault(const char* operation, int code, const char* method,
                     const Array<CIMParamValue>& in, int status, const std::string& message = "")
    {
        CIMException e = failWith(operation, code, method, in);
        EXPECT_EQ(status, (int)e.getCode()) << operation;
        if (!message.empty()) {
            EXPECT_EQ(message, text(e.getMessage()));
        }
    }
};

TEST_F(FaultsTest, AddingLUsToAView)
{
    std::string lu = wwnOf("finance-08");
    Array<CIMParamValue> in =
        params({strings("LUNames", {lu}), refs("ProtocolControllers", {hostSees("db01")})});
    // An automatic number that was not assigned is not shown.
    const std::string item = "LU=" + lu + ",hostCollection=db01: ";
    struct Case {
        int arrayCode;
        int status;
    } cases[] = {{API_E_LUN_INVALID, 5},
                 {API_E_PORT_INVALID, 4099},
                 {API_E_FAILED, 4},
                 {API_E_VLUN_EXISTS, 4}};
    for (Case& c : cases) {
        CIMException e = failWith("api_createVLUN", c.arrayCode, "ExposePaths", in);
        EXPECT_EQ(c.status, (int)e.getCode()) << c.arrayCode;
        EXPECT_EQ(item + INJECTED + "\n", text(e.getMessage()));
    }
    // The view's host cannot be named: nothing is exported to another
    // target instead.
    zarsim_sem_timeout_next(1);
    CIMException e = failure("ExposePaths", in);
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ("Invalid ProtocolControllers", text(e.getMessage()));
    // A port-present view needs no host: the export's own wait times out.
    zarsim_sem_timeout_next(1);
    e = failure("ExposePaths", params({strings("LUNames", {lu}),
                                       refs("ProtocolControllers", {view("PP:0:1:1")})}));
    EXPECT_EQ(4, (int)e.getCode());
    EXPECT_EQ("LU=" + lu + ",TargetPortID=0:1:1: Semaphore Timed-Out\n", text(e.getMessage()));
    EXPECT_TRUE(exportsOf("finance-08").empty());

    // The views cannot be looked up afterwards: the change stands, reported
    // without views.
    zarsim_fail_next("api_getSCSIProtocolControllers", 1, API_E_FAILED, INJECTED);
    Outcome o = call("ExposePaths", in);
    EXPECT_TRUE(o.all("ProtocolControllers").empty());
    EXPECT_EQ(1u, exportsOf("finance-08").size());
}

TEST_F(FaultsTest, CreatingANewView)
{
    std::string lu = wwnOf("eng-06");
    Array<CIMParamValue> in =
        params({strings("LUNames", {lu}), strings("InitiatorPortIDs", {SPARE_FC})});
    const std::string host = std::string("host-") + SPARE_FC;

    expectFault("api_getHostPaths", API_E_FAILED, "ExposePaths", in, 4098);
    // The array's text comes with its line break.
    expectFault("api_createHost", API_E_EXISTS, "ExposePaths", in, 5,
                "Cannot create Host " + host + " - " + INJECTED + "\n\n");
    expectFault("api_createHost", API_E_FAILED, "ExposePaths", in, 4);
    EXPECT_EQ(0u, this->host(host).hostID);
    EXPECT_EQ("", hostOf(SPARE_FC));

    // The volume query fails: its checks are passed over.
    zarsim_fail_next("api_getVVs_direct", 1, API_E_FAILED, INJECTED);
    call("ExposePaths", in);
    EXPECT_EQ(host, hostOf(SPARE_FC));
    EXPECT_EQ(1u, exportsOf("eng-06").size());

    // The host is made with the first initiator, the second cannot join it:
    // the host keeps its first path, and the same call again finds the host
    // through it and goes on.
    Array<CIMParamValue> other =
        params({strings("LUNames", {wwnOf("eng-07")}),
                strings("InitiatorPortIDs", {"10000000C9A0FF02", "10000000C9A0FF03"})});
    expectFault("api_addPath", API_E_FAILED, "ExposePaths", other, 4,
                std::string(INJECTED) + "\n/n");
    EXPECT_EQ("host-10000000C9A0FF02", hostOf("10000000C9A0FF02"));
    EXPECT_EQ("?", hostOf("10000000C9A0FF03"));
    EXPECT_TRUE(exportsOf("eng-07").empty());
    call("ExposePaths", other);
    EXPECT_EQ("host-10000000C9A0FF02", hostOf("10000000C9A0FF03"));
    EXPECT_EQ(1u, exportsOf("eng-07").size());
}

TEST_F(FaultsTest, HidingLUsAndInitiators)
{
    std::string lu = wwnOf("finance-02");
    Array<CIMParamValue> luIn =
        params({strings("LUNames", {lu}), refs("ProtocolControllers", {hostSees("db01")})});
    expectFault("api_getVLUNTemplates", API_E_FAILED, "HidePaths", luIn, 4100);
    expectFault("api_removeVLUN", API_E_LUN_INVALID, "HidePaths", luIn, 5,
                "LU=" + lu + ",HostCollection=db01: " + INJECTED + "\n");
    expectFault("api_removeVLUN", API_E_FAILED, "HidePaths", luIn, 4);
    EXPECT_EQ(1u, exportsOf("finance-02").size());

    Array<CIMParamValue> initIn = params({strings("InitiatorPortIDs", {"21000024FF300001"}),
                                          refs("ProtocolControllers", {hostSees("db01")})});
    expectFault("api_getHostPaths", API_E_FAILED, "HidePaths", initIn, 5,
                "Initiator port ID is invalid\n");
    expectFault("api_removePath", API_E_FAILED, "HidePaths", initIn, 5,
                std::string(INJECTED) + "\n");
    zarsim_sem_timeout_next(1);  // naming the view's host
    CIMException e = failure("HidePaths", initIn);
    EXPECT_EQ("Invalid ProtocolControllers", text(e.getMessage()));
    EXPECT_EQ("db01", hostOf("21000024FF300001"));
}

TEST_F(FaultsTest, HardwareIDCollections)
{
    std::string lu = wwnOf("finance-08");
    Array<CIMParamValue> in = params({strings("LUNames", {lu}), strings("HostNames", {"esx01"}),
                                      uint16s("DeviceAccesses", {3})});
    // The access check cannot read the volumes: it is passed over, and the
    // array takes the export.
    zarsim_fail_next("api_getVVs_chunk", 1, API_E_FAILED, INJECTED);
    call("ExposeLUsToStorageHardwareIDCollection", in);
    EXPECT_EQ(1u, exportsOf("finance-08").size());

    Array<CIMParamValue> again =
        params({strings("LUNames", {wwnOf("finance-10")}), strings("HostNames", {"esx01"}),
                uint16s("DeviceAccesses", {2})});
    expectFault("api_createVLUN", API_E_PORT_INVALID, "ExposeLUsToStorageHardwareIDCollection",
                again, 4099);
    // A time-out ends the ports of that LU and host only: the next host is
    // still served.
    Array<CIMParamValue> twoHosts =
        params({strings("LUNames", {wwnOf("finance-10")}), strings("HostNames", {"esx01", "esx02"}),
                uint16s("DeviceAccesses", {2}), strings("TargetPortLPIDs", {"0:1:2", "1:1:2"})});
    zarsim_sem_timeout_next(2);  // the access check (passed over), the first export
    CIMException e = failure("ExposeLUsToStorageHardwareIDCollection", twoHosts);
    EXPECT_EQ(4, (int)e.getCode());
    EXPECT_EQ(0u, text(e.getMessage())
                      .find("LU=" + wwnOf("finance-10") +
                            ",DeviceNumber=0xFFFFFF,HostName=esx01,Port=0:1:2: "
                            "Semaphore Timed-Out\n; LU="));
    EXPECT_EQ(2u, exportsOf("finance-10").size());
    for (const Export& x : exportsOf("finance-10"))
        EXPECT_EQ("esx02", x.host);

    Array<CIMParamValue> hide =
        params({strings("LUNames", {lu}), refs("ProtocolControllers", {hostSees("esx01")})});
    e = failWith("api_getVLUNTemplates", API_E_FAILED, "HideLUsFromStorageHardwareIDCollection",
                 hide);
    EXPECT_EQ("InitiatorPort is not part of SPC.\n", text(e.getMessage()));
    expectFault("api_removeVLUN", API_E_FAILED, "HideLUsFromStorageHardwareIDCollection", hide, 4);
    EXPECT_EQ(1u, exportsOf("finance-08").size());
}

TEST_F(FaultsTest, DefaultLUs)
{
    std::string lu = wwnOf("finance-06");
    Array<CIMParamValue> hide =
        params({strings("LUNames", {lu}), refs("ProtocolControllers", {view("PP:0:1:1:default")})});
    // The port's LUs cannot be listed: nothing to remove.
    zarsim_fail_next("api_getSCSIProtocolControllers", 1, API_E_FAILED, INJECTED);
    Outcome o = call("HideDefaultLUs", hide);
    EXPECT_TRUE(o.descriptions().empty());
    expectFault("api_removeVLUN", API_E_FAILED, "HideDefaultLUs", hide, 4,
                "LU=" + lu + ",DeviceNumber=0x1E,TargetPortID=: " + INJECTED + "\n");
    EXPECT_EQ(1u, exportsOf("finance-06").size());

    Array<CIMParamValue> expose =
        params({strings("LUNames", {wwnOf("finance-08")}),
                strings("TargetPortIDs", {"2011000000000001"}), uint16s("DeviceAccesses", {2})});
    CIMException e = failWith("api_createVLUN", API_E_LUN_INVALID, "ExposeDefaultLUs", expose);
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ("LU=" + wwnOf("finance-08") +
                  ",DeviceNumber=0xFFFFFF,TargetPortID=2011000000000001: " + INJECTED + "\n",
              text(e.getMessage()));
    // The iSCSI endpoints cannot be listed: the server's error, nothing made.
    e = failWith("api_getISCSIPorts", API_E_FAILED, "ExposeDefaultLUs", expose);
    EXPECT_EQ(CIM_ERR_FAILED, e.getCode());
    EXPECT_NE(std::string::npos, text(e.getMessage()).find("ZAR_iSCSIProtocolEndpoint"))
        << text(e.getMessage());
    EXPECT_TRUE(exportsOf("finance-08").empty());
}

TEST_F(FaultsTest, DeletingAViewWhoseVolumesCannotBeListed)
{
    CIMObjectPath v = hostSees("db01");
    Array<CIMParamValue> in;
    in.append(CIMParamValue("ProtocolController", CIMValue(v)));
    CIMException e =
        failWith("api_getSCSIProtocolControllers", API_E_FAILED, "DeleteProtocolController", in);
    EXPECT_EQ(CIM_ERR_FAILED, e.getCode());
    EXPECT_NE(std::string::npos, text(e.getMessage()).find("ZAR_ControllerForUnit"))
        << text(e.getMessage());
    EXPECT_EQ(1u, exportsOf("finance-02").size());
}

}  // namespace
