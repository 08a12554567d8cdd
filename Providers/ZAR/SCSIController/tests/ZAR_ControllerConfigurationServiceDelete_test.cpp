// DeleteProtocolController over a fresh demo array: the view's VLUNs go,
// and with DeleteUnits its volumes.
#include "ServiceFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

std::vector<unsigned> waits;
void countWait(unsigned seconds)
{
    waits.push_back(seconds);
}

class DeleteTest : public ServiceFixture {
protected:
    void SetUp() override
    {
        ServiceFixture::SetUp();
        waits.clear();
        previous_ = ZAR_Common::setRetryWait(&countWait);
    }
    void TearDown() override
    {
        ZAR_Common::setRetryWait(previous_);
        ServiceFixture::TearDown();
    }
    CIMObjectPath setView() { return view("HSet:" + std::to_string(hostID("set:esx-cluster"))); }
    static Array<CIMParamValue> remove(const CIMObjectPath& v, bool units)
    {
        Array<CIMParamValue> in;
        in.append(CIMParamValue("ProtocolController", CIMValue(v)));
        if (units)
            in.append(CIMParamValue("DeleteUnits", CIMValue(Boolean(true))));
        return in;
    }
    ZAR_Common::RetryWait previous_ = nullptr;
};

TEST_F(DeleteTest, RemovesEveryVLUNOfTheView)
{
    Outcome o = call("DeleteProtocolController", remove(setView(), false));
    EXPECT_TRUE(exports("set:esx-cluster").empty());
    // The volumes stay.
    EXPECT_FALSE(wwnOf("finance-03").empty());
    std::vector<std::string> d = o.descriptions();
    ASSERT_EQ(3u, d.size());
    // The unit number carries its prefix twice (LUN 10 here).
    EXPECT_EQ("LU=" + wwnOf("finance-03") +
                  ",DeviceNumber=0x0xA,HostCollection=set:esx-cluster: Success\n",
              d[0]);
    EXPECT_TRUE(o.all("ProtocolControllers").empty());
}

TEST_F(DeleteTest, DeleteUnitsDeletesTheVolumesToo)
{
    Array<CIMParamValue> in = remove(setView(), true);
    in.append(CIMParamValue("SomethingElse", CIMValue(String("ignored"))));
    Outcome o = call("DeleteProtocolController", in);
    EXPECT_TRUE(wwnOf("finance-03").empty());
    EXPECT_TRUE(wwnOf("finance-05").empty());
    EXPECT_FALSE(wwnOf("finance-06").empty());
}

TEST_F(DeleteTest, BusyVolumesAreNotDeletedButTheViewIsGone)
{
    ASSERT_EQ(0, zarsim_set_volume_busy("finance-04", 1));
    CIMException e = failure("DeleteProtocolController", remove(setView(), true));
    EXPECT_EQ(4096, (int)e.getCode());
    EXPECT_NE(std::string::npos, text(e.getMessage()).find("; Volumes are not deleted"));
    EXPECT_EQ(std::vector<unsigned>(10, 2), waits);
    EXPECT_TRUE(exports("set:esx-cluster").empty());
    EXPECT_FALSE(wwnOf("finance-03").empty());
}

TEST_F(DeleteTest, Refusals)
{
    CIMObjectPath missing = view("HS:999");
    CIMException e = failure("DeleteProtocolController", remove(missing, false));
    EXPECT_EQ(5, (int)e.getCode());
    EXPECT_EQ("SPC " + text(missing.toString()) + " is not found", text(e.getMessage()));

    CIMObjectPath elsewhere = setView();
    elsewhere.setNameSpace("root/other");
    EXPECT_EQ(
        "Parameter ProtocolController does not contain correct hostname or namespace or className",
        text(failure("DeleteProtocolController", remove(elsewhere, false)).getMessage()));
    EXPECT_EQ("Invalid number of parameters",
              text(failure("DeleteProtocolController", Array<CIMParamValue>()).getMessage()));

    zarsim_fail_next("api_removeVLUN", 1, API_E_FAILED, "Injected failure");
    e = failure("DeleteProtocolController", remove(setView(), true));
    EXPECT_EQ(4, (int)e.getCode());
    // The other VLUNs went; the volumes stay after a failed removal.
    EXPECT_EQ(1u, exports("set:esx-cluster").size());
    EXPECT_FALSE(wwnOf("finance-04").empty());
    EXPECT_TRUE(waits.empty());
}

}  // namespace
