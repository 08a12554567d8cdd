// Tests of the small conversions and utilities of ZAR_Common.
#include <set>
#include <stdexcept>
#include <stdlib.h>
#include <thread>
#include <string.h>

#include <ZAR_Common.h>

#include "CommonTestSupport.h"

using namespace Pegasus;
using namespace zartest;

namespace {

TEST(NodePairs, NodesPairUpAndOthersAreInvalid)
{
    EXPECT_EQ(0, ZAR_Common::getNodePairIndex(0));
    EXPECT_EQ(0, ZAR_Common::getNodePairIndex(1));
    EXPECT_EQ(2, ZAR_Common::getNodePairIndex(5));
    EXPECT_EQ(3, ZAR_Common::getNodePairIndex(7));
    EXPECT_EQ(-1, ZAR_Common::getNodePairIndex(8));
    EXPECT_EQ(-1, ZAR_Common::getNodePairIndex(-1));
}

TEST(PortStates, OperationalStatusAndHealth)
{
    EXPECT_EQ(10, ZAR_Common::getPortOperationalStatus(PORT_OFFLINE));
    EXPECT_EQ(8, ZAR_Common::getPortOperationalStatus(PORT_PENDING_RESET));
    EXPECT_EQ(2, ZAR_Common::getPortOperationalStatus(PORT_OK));
    EXPECT_EQ(13, ZAR_Common::getPortOperationalStatus(PORT_LOSS_SYNC));
    EXPECT_EQ(6, ZAR_Common::getPortOperationalStatus(PORT_COREDUMP));
    EXPECT_EQ(7, ZAR_Common::getPortOperationalStatus(PORT_FWDEAD));
    EXPECT_EQ(0, ZAR_Common::getPortOperationalStatus(PORT_XXX));
    EXPECT_EQ(0, ZAR_Common::getPortOperationalStatus(PORT_UNKNOWN));

    EXPECT_EQ(5, ZAR_Common::getPortHealthState(PORT_PENDING_RESET));
    EXPECT_EQ(5, ZAR_Common::getPortHealthState(PORT_LOSS_SYNC));
    EXPECT_EQ(20, ZAR_Common::getPortHealthState(PORT_NONPARTICIPATE));
    EXPECT_EQ(25, ZAR_Common::getPortHealthState(PORT_COREDUMP));
    EXPECT_EQ(10, ZAR_Common::getPortHealthState(PORT_OFFLINE));
    EXPECT_EQ(30, ZAR_Common::getPortHealthState(PORT_FWDEAD));
    EXPECT_EQ(0, ZAR_Common::getPortHealthState(PORT_XXX));
}

TEST(MethodStatus, ReturnCodesMapToCIMStatusCodes)
{
    EXPECT_EQ(CIM_ERR_SUCCESS, ZAR_Common::methodToCIMStatusCode(0));
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED, ZAR_Common::methodToCIMStatusCode(1));
    EXPECT_EQ(CIM_ERR_METHOD_NOT_FOUND, ZAR_Common::methodToCIMStatusCode(2));
    EXPECT_EQ(CIM_ERR_FAILED, ZAR_Common::methodToCIMStatusCode(3));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, ZAR_Common::methodToCIMStatusCode(5));
    EXPECT_EQ(CIM_ERR_FAILED, ZAR_Common::methodToCIMStatusCode(4099));
}

class UtilArrayTest : public FreshArray {};

TEST_F(UtilArrayTest, EventBlockFieldsAreFilledAndBounded)
{
    api_evtparam_t ev;
    memset(&ev, 'x', sizeof(ev));
    std::string longClass(200, 'C');
    EXPECT_EQ(0, ZAR_Common::setEventParam(&ev, "ZAR_ControllerConfigurationService", "ExposePaths",
                                           "", "admin", "10.0.0.9"));
    EXPECT_STREQ("ZAR_ControllerConfigurationService:ExposePaths", ev.method);
    EXPECT_STREQ("admin", ev.user);
    EXPECT_STREQ("10.0.0.9", ev.addr);
    EXPECT_STREQ("", ev.inst_op);
    EXPECT_STREQ("", ev.inst_param);

    std::string longParam(400, 'p');
    EXPECT_EQ(
        0, ZAR_Common::setEventParam(&ev, longClass.c_str(), "M", "averyveryverylongoperation", "u",
                                     "a", longParam.c_str()));
    EXPECT_EQ(127u, strlen(ev.method));
    EXPECT_EQ(15u, strlen(ev.inst_op));
    EXPECT_EQ(255u, strlen(ev.inst_param));
    EXPECT_EQ(0, ZAR_Common::setEventOp(&ev, nullptr));
    EXPECT_STREQ("", ev.inst_op);

    LogCapture log;
    EXPECT_EQ(1, ZAR_Common::setEventOp(nullptr, "x"));
    EXPECT_EQ(1, ZAR_Common::setEventParam(nullptr, "C", "M", "", "u", "a"));
    EXPECT_TRUE(
        log.has("setEventOp: Unable to log event data. The control block "
                "pointer (eventp) is null.\n"));
    EXPECT_TRUE(
        log.has("setEventParam: Unable to log event data. The control block "
                "pointer (eventp) is null.\n"));
}

TEST_F(UtilArrayTest, RandomStringsUseTheAlphabetAndContinueOneSequence)
{
    char one[1] = {'z'};
    ZAR_Common::generate_random_string(one, 1);
    EXPECT_EQ('\0', one[0]);

    std::set<std::string> seen;
    for (int i = 0; i < 20; i++) {
        char buf[17];
        ZAR_Common::generate_random_string(buf, sizeof(buf));
        ASSERT_EQ(16u, strlen(buf));
        for (char c : std::string(buf))
            EXPECT_TRUE(isalnum((unsigned char)c) || c == '_') << buf;
        seen.insert(buf);
    }
    EXPECT_EQ(20u, seen.size()) << "consecutive calls continue one sequence";
}

TEST_F(UtilArrayTest, InstanceThresholdScalesTheAddressSpaceLimit)
{
    LogCapture log;
    Uint32 t70 = ZAR_Common::getInstanceThreshold(70);
    Uint32 t1 = ZAR_Common::getInstanceThreshold(1);
    EXPECT_EQ((Uint32)(t1 * 70u), t70);
    bool traced = false;
    for (const std::string& l : log.lines())
        if (l.find("soft limit = ") == 0 &&
            l.find(", maxInstScale factor = 70\n") != std::string::npos)
            traced = true;
    EXPECT_TRUE(traced);
}

TEST_F(UtilArrayTest, PortPositionsOfTargetPortIdentifiers)
{
    ArrayBuilder::ports({"0:1:2"});
    ArrayBuilder::ports({"0:3:1"}, PORT_TYPE_ISCSI);
    api_FCPort_t* fc = nullptr;
    ASSERT_EQ(0, cim_sem_wait());
    int nfc = api_getFCPorts(0, 0, 0, &fc);
    api_iSCSIPort_t* is = nullptr;
    int nis = api_getISCSIPorts(&is);
    cim_sem_post();
    ASSERT_EQ(1, nfc);
    ASSERT_EQ(1, nis);
    char wwn[17];
    snprintf(wwn, sizeof(wwn), "%016llX", (unsigned long long)fc[0].portWWN);
    String iscsi(is[0].iscsiName);
    lpid_t fcPos = fc[0].portPos, isPos = is[0].portID;
    api_freeFCPorts(fc, nfc);
    api_freeISCSIPorts(is);

    EXPECT_EQ(fcPos, ZAR_Common::getPortLPID((Uint64)strtoull(wwn, nullptr, 16)));
    EXPECT_EQ(isPos, ZAR_Common::getPortLPID(iscsi));
    // The lookups wait for the semaphore: timed out, no position.
    zarsim_sem_timeout_next(2);
    EXPECT_EQ(0xFFFC, ZAR_Common::getPortLPID((Uint64)strtoull(wwn, nullptr, 16)));
    EXPECT_EQ(0xFFFC, ZAR_Common::getPortLPID(iscsi));

    Array<String> ids;
    ids.append(wwn);
    ids.append(iscsi);
    ids.append("0:1:2");
    ids.append("FFFFFFFFFFFFFFF0");
    Uint16* ports = nullptr;
    ASSERT_EQ(4u, ZAR_Common::getPortIDs(ids, &ports));
    EXPECT_EQ(fcPos, ports[0]);
    EXPECT_EQ(isPos, ports[1]);
    EXPECT_EQ(fcPos, ports[2]);
    EXPECT_EQ(API_PORT_NONE, ports[3]);
    delete[] ports;
}

}  // namespace

// The array's semaphore is given back when an exception leaves the scope
// that holds it; while it is held, another thread's wait times out.
TEST(ArraySemaphore, GivenBackWhenAnExceptionLeavesItsScope)
{
    setenv("ZAR_SEM_TIMEOUT_MS", "200", 1);
    try {
        ZAR_ArraySemaphore held;
        ASSERT_TRUE(held.held());
        throw std::runtime_error("the array call failed");
    } catch (std::runtime_error&) {
    }
    ZAR_ArraySemaphore again;
    EXPECT_TRUE(again.held());
    std::thread other([] {
        ZAR_ArraySemaphore waiting;
        EXPECT_FALSE(waiting.held());
        EXPECT_NE(0, waiting.waitResult());
    });
    other.join();
    unsetenv("ZAR_SEM_TIMEOUT_MS");
}
