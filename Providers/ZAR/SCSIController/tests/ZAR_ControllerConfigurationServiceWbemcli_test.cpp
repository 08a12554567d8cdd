// End to end: zar-cimserver with both modules over a seeded array, driven by
// Debian's wbemcli as a user types the commands (cmx: the cm form cannot
// read reference-array outputs), and the masking walkthrough script run as
// written.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

#include <gtest/gtest.h>

#include "SeededServerTest.h"

using namespace zare2e;

namespace {

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

class ServiceWbemcliTest : public SeededServerTest {
protected:
    // References carry the host the client connects to: the array's own
    // address here.
    ServiceWbemcliTest()
        : SeededServerTest({"config set ipv4 127.0.0.1",
                            "storage-pass1|users add storage --role edit",
                            "viewer-pass1|users add viewer --role browse"})
    {
    }

    void SetUp() override
    {
        SeededServerTest::SetUp();
        base_ = address();
    }
    int wbemcli(const std::string& args, std::string& out)
    {
        return runCommand("wbemcli " + args, out, 60);
    }
    std::string zarcli(const std::string& args)
    {
        std::string out;
        EXPECT_EQ(0, server_.zarcli(args, out)) << out;
        return out;
    }
    std::string wwnOf(const std::string& volume)
    {
        std::string out;
        server_.zarcli("volumes | awk '$2 == \"" + volume + "\" { printf \"%s\", $3 }'", out);
        return out;
    }
    std::string service(const char* user = "storage:storage-pass1")
    {
        return "'http://" + std::string(user) + "@" + base_ +
               "/root/"
               "zar:ZAR_ControllerConfigurationService.SystemCreationClassName=\"ZAR_"
               "StorageSystem\","
               "SystemName=\"ZAR-DEMO\",CreationClassName=\"ZAR_ControllerConfigurationService\","
               "Name=\"KESTREL_ControllerConfigurationService\"'";
    }
    static std::string view(const std::string& deviceID)
    {
        return "ZAR_SCSIController.SystemCreationClassName=\"ZAR_StorageSystem\",SystemName=\"ZAR-"
               "DEMO\","
               "CreationClassName=\"ZAR_SCSIController\",DeviceID=\"" +
               deviceID + "\"";
    }
    std::string base_;
};

TEST_F(ServiceWbemcliTest, ExposeListHideAndDeleteAsAUserTypesThem)
{
    std::string out;
    const std::string lu = wwnOf("finance-08");
    ASSERT_EQ(32u, lu.size());

    ASSERT_EQ(0, wbemcli("cmx " + service() + " 'ExposePaths.LUNames=\"" + lu +
                             "\",InitiatorPortIDs=\"10000000C9A0FF01\",DeviceNumbers=\"2A\"'",
                         out))
        << out;
    ASSERT_TRUE(contains(out, "<RETURNVALUE PARAMTYPE=\"uint32\"><VALUE>0</VALUE>")) << out;
    EXPECT_TRUE(
        contains(out, "LU=" + lu + ",DeviceNumber=0x2A,InitiatorID=10000000C9A0FF01: Success"))
        << out;
    std::string hosts = zarcli("hosts");
    EXPECT_TRUE(contains(hosts, "host-10000000C9A0FF01")) << hosts;
    std::string vluns = zarcli("vluns");
    size_t at = vluns.find("finance-08");
    ASSERT_NE(std::string::npos, at) << vluns;
    std::string line = vluns.substr(at, vluns.find('\n', at) - at);
    EXPECT_TRUE(contains(line, " 42 ")) << line;
    std::string deviceID = line.substr(line.rfind(' ') + 1);
    ASSERT_EQ(0u, deviceID.find("HS:")) << line;

    // Listed by the server, with the service's association to it.
    ASSERT_EQ(
        0,
        wbemcli("ein 'http://viewer:viewer-pass1@" + base_ + "/root/zar:ZAR_SCSIController'", out))
        << out;
    EXPECT_TRUE(contains(out, "DeviceID=\"" + deviceID + "\"")) << out;
    ASSERT_EQ(0,
              wbemcli("ain -ac ZAR_ConfigServicesForSCSIController 'http://viewer:viewer-pass1@" +
                          base_ + "/root/zar:" + view(deviceID) + "'",
                      out))
        << out;
    EXPECT_TRUE(contains(out, "ZAR_ControllerConfigurationService")) << out;

    // A browse-only user may look but not change (cmx prints the error and
    // exits 0).
    EXPECT_EQ(0, wbemcli("cmx " + service("viewer:viewer-pass1") + " 'HidePaths.LUNames=\"" + lu +
                             "\",ProtocolControllers=" + view(deviceID) + "'",
                         out))
        << out;
    EXPECT_TRUE(contains(
        out,
        "<ERROR CODE=\"2\" DESCRIPTION=\"CIM_ERR_ACCESS_DENIED: Insufficient generic privilege\""))
        << out;
    EXPECT_TRUE(contains(zarcli("vluns"), "finance-08"));

    ASSERT_EQ(0, wbemcli("cmx " + service() + " 'HidePaths.LUNames=\"" + lu +
                             "\",ProtocolControllers=" + view(deviceID) + "'",
                         out))
        << out;
    EXPECT_TRUE(contains(out, "LU=" + lu + ",HostCollection=host-10000000C9A0FF01: Success"))
        << out;
    EXPECT_FALSE(contains(zarcli("vluns"), "finance-08"));

    // The view is gone with its last LU: deleting it now is refused as a CIM
    // error whose code is the method's status.
    ASSERT_EQ(0, wbemcli("cmx " + service() + " 'DeleteProtocolController.ProtocolController=" +
                             view(deviceID) + "'",
                         out))
        << out;
    EXPECT_TRUE(contains(out, "<ERROR CODE=\"5\"")) << out;
    EXPECT_TRUE(contains(out, "is not found")) << out;

    // Delete a view that has LUs, volumes included.
    const std::string setView = view("HSet:8");
    ASSERT_EQ(0, wbemcli("cmx " + service() +
                             " 'DeleteProtocolController.DeleteUnits=true,ProtocolController=" +
                             setView + "'",
                         out))
        << out;
    EXPECT_TRUE(contains(out, "<VALUE>0</VALUE>")) << out;
    EXPECT_TRUE(contains(out, "DeviceNumber=0x0xA,HostCollection=set:esx-cluster: Success")) << out;
    std::string volumes = zarcli("volumes");
    EXPECT_FALSE(contains(volumes, "finance-03")) << volumes;
    EXPECT_TRUE(contains(volumes, "finance-06")) << volumes;

    // The audit log names the user and the client's address of each change.
    std::string events = zarcli("events --limit 3");
    EXPECT_TRUE(contains(
        events, "storage  127.0.0.1  ZAR_ControllerConfigurationService:DeleteProtocolController"))
        << events;
    EXPECT_TRUE(contains(events, "api_removeVVs")) << events;
}

TEST_F(ServiceWbemcliTest, TheWalkthroughRunsAsWritten)
{
    std::string out;
    int port = freePort();
    ASSERT_GT(port, 0);
    int rc = runCommand(sourceDir() + "/scripts/masking-walkthrough.sh --build-dir " + binaryDir() +
                            " --work-dir " + server_.dir + "/walk --port " + std::to_string(port) +
                            " 2>&1",
                        out, 120);
    ASSERT_EQ(0, rc) << out;
    EXPECT_TRUE(contains(out, "== 6. DeleteProtocolController")) << out;
    EXPECT_TRUE(contains(out, "Done: the volume was masked to the host and back.")) << out;
    EXPECT_TRUE(
        contains(out, "walkthrough  127.0.0.1  ZAR_ControllerConfigurationService:HidePaths"))
        << out;
    // The commands it shows are the ones a user types.
    EXPECT_TRUE(contains(out, "$ wbemcli cmx 'http://walkthrough:")) << out;

    ASSERT_EQ(0, runCommand(sourceDir() + "/scripts/masking-walkthrough.sh --help", out));
    EXPECT_TRUE(contains(out, "Usage: scripts/masking-walkthrough.sh")) << out;
}

}  // namespace
