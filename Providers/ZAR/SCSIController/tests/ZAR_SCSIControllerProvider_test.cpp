// Tests of the views provider, through the dispatcher over a fresh demo
// array, and directly where the response handler is watched.
#include <new>

#include <ZAR_Common.h>

#include "../ZAR_SCSIControllerProvider.h"
#include "ModuleFixture.h"
#include "ProviderAccess.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class SCSIControllerTest : public ModuleFixture {
protected:
    Array<CIMInstance> enumerate(const char* user = "p1super")
    {
        Instances out;
        server().enumerateInstances(as(user), ns(), "ZAR_SCSIController", true, false, false, false,
                                    CIMPropertyList(), out);
        return out.items;
    }
    CIMObjectPath viewPath(const std::string& deviceID)
    {
        return ZAR_Common::buildSPCObjectPath("ZAR_StorageSystem", "testhost", "ZAR-DEMO",
                                              deviceID.c_str(), "ZAR_SCSIController");
    }
    // Adds n host-sees views (hosts "many0000"...); returns their device IDs
    // in the array's order.
    void manyViews(int n)
    {
        std::string wwn = ArrayBuilder::volume("many");
        for (int i = 0; i < n; i++) {
            char name[32], initiator[17];
            snprintf(name, sizeof(name), "many%04d", i);
            snprintf(initiator, sizeof(initiator), "5000000001%06X",
                     static_cast<unsigned>(i) & 0xFFFFFFu);
            ASSERT_EQ(0, ArrayBuilder::host(name, initiator));
            ASSERT_EQ(0, ArrayBuilder::exportTo(wwn, name, nullptr));
        }
    }
    void modify(const char* user, const CIMObjectPath& p, const CIMInstance& i,
                const CIMPropertyList& list = CIMPropertyList())
    {
        CIMInstance copy = i.clone();
        copy.setPath(p);
        server().modifyInstance(as(user), ns(), copy, false, list);
    }
    static CIMInstance renameTo(const char* name)
    {
        CIMInstance i("ZAR_SCSIController");
        i.addProperty(CIMProperty("ElementName", CIMValue(String(name))));
        return i;
    }
};

TEST_F(SCSIControllerTest, EnumerationListsTheDemoViewsWithTraceLines)
{
    LogCapture log;
    Array<CIMInstance> views = enumerate();
    EXPECT_GE(views.size(), 6u);
    for (Uint32 i = 0; i < views.size(); i++) {
        EXPECT_NE(PEG_NOT_FOUND, views[i].findProperty("OtherNameFormat"));
        EXPECT_NE(PEG_NOT_FOUND, views[i].findProperty("StatusDescriptions"));
        EXPECT_EQ(4u, views[i].getPath().getKeyBindings().size());
    }

    Paths names;
    server().enumerateInstanceNames(as("p1browse"), ns(), "ZAR_SCSIController", names);
    EXPECT_EQ(views.size(), names.items.size());
    EXPECT_TRUE(log.has("<--ZAR_SCSIControllerProvider::enumerateInstanceNames\n"));
}

TEST_F(SCSIControllerTest, RefusedUserGetsAccessDeniedBeforeAnyHandlerCall)
{
    expectCIMError(CIM_ERR_ACCESS_DENIED, "Insufficient privilege for the user",
                   [&] { enumerate("p1locked"); });
    EXPECT_EQ(CIM_ERR_ACCESS_DENIED,
              cimErrorOf([&] { get(viewPath("PP:0:1:1"), "p1locked"); }).getCode());

    ProviderObject<ZAR_SCSIControllerProvider> p("ZAR_SCSIControllerProvider");
    Instances out;
    cimErrorOf([&] {
        p->enumerateInstances(as("nobody"), CIMObjectPath("ZAR_SCSIController"), false, false,
                              CIMPropertyList(), out);
    });
    EXPECT_EQ(0, out.processingCalls);
    EXPECT_EQ(0, out.completeCalls);
}

TEST_F(SCSIControllerTest, SemaphoreTimeOutFailsTheEnumerationWithItsText)
{
    enumerate();  // everything started and cached
    zarsim_sem_timeout_next(1);
    expectCIMError(CIM_ERR_FAILED,
                   "ZAR_SCSIControllerProvider::enumerateInstances - Operation failed: "
                   "Failed to retrieve SPC data. Semaphore Timed-Out",
                   [&] { enumerate(); });

    zarsim_sem_timeout_next(1);
    Paths names;
    CIMException n = cimErrorOf(
        [&] { server().enumerateInstanceNames(as("p1super"), ns(), "ZAR_SCSIController", names); });
    EXPECT_EQ(
        "ZAR_SCSIControllerProvider::enumerateInstanceNames - Operation failed: "
        "Failed to retrieve SPC data. Semaphore Timed-Out",
        text(n.getMessage()));
}

// Instances whose delivery fails with e.
template <class E>
class FailingInstances : public Instances {
public:
    explicit FailingInstances(E e) : e_(e) {}
    void deliver(const Array<CIMInstance>&) override { throw e_; }
    E e_;
};

TEST_F(SCSIControllerTest, FailuresOutsideTheArrayHaveTheirOwnTexts)
{
    ProviderObject<ZAR_SCSIControllerProvider> p("ZAR_SCSIControllerProvider");
    FailingInstances<std::bad_alloc> full{std::bad_alloc()};
    FailingInstances<int> odd{7};
    expectCIMError(CIM_ERR_FAILED, "Response too big", [&] {
        p->enumerateInstances(as("p1super"), CIMObjectPath("ZAR_SCSIController"), false, false,
                              CIMPropertyList(), full);
    });
    CIMException unknown = cimErrorOf([&] {
        p->enumerateInstances(as("p1super"), CIMObjectPath("ZAR_SCSIController"), false, false,
                              CIMPropertyList(), odd);
    });
    EXPECT_EQ("Unknown error", text(unknown.getMessage()));
    EXPECT_EQ(0, odd.completeCalls);
    // The provider is none the worse for it.
    EXPECT_GE(enumerate().size(), 6u);
}

TEST_F(SCSIControllerTest, EnumerationOfThousandsComesInChunksOf200)
{
    size_t demo = enumerate().size();
    manyViews(2100);
    ProviderObject<ZAR_SCSIControllerProvider> p("ZAR_SCSIControllerProvider");
    Instances out;
    p->enumerateInstances(as("p1super"), CIMObjectPath("ZAR_SCSIController"), false, false,
                          CIMPropertyList(), out);
    EXPECT_EQ(demo + 2100, out.items.size());
    EXPECT_EQ(1, out.processingCalls);
    EXPECT_EQ(1, out.completeCalls);
    // At most 200 records per chunk, each chunk delivered at once.
    EXPECT_GE(out.deliveries, (int)((demo + 2100 + 199) / 200));
    EXPECT_LE(out.deliveries, (int)((demo + 2100 + 199) / 200) + 1);

    Paths names;
    p->enumerateInstanceNames(as("p1super"), CIMObjectPath("ZAR_SCSIController"), names);
    EXPECT_EQ(demo + 2100, names.items.size());
}

// Instances whose delivery makes the array unreachable for the next call.
class LastCall : public Instances {
public:
    void deliver(const CIMInstance& i) override
    {
        Instances::deliver(i);
        zarsim_sem_timeout_next(1);
    }
};

TEST_F(SCSIControllerTest, GetInstanceFindsFirstAndLastOfALongList)
{
    manyViews(450);
    Array<CIMInstance> views = enumerate();
    ASSERT_GT(views.size(), 450u);
    for (Uint32 k : {0u, views.size() - 1}) {
        CIMObjectPath wanted = views[k].getPath();
        wanted.setHost("client-side-host");
        CIMInstance got = get(wanted, "p1super");
        EXPECT_EQ(text(ZAR_Common::getStringProperty(views[k], "DeviceID")),
                  text(ZAR_Common::getStringProperty(got, "DeviceID")));
    }
    // The first view ends the search: nothing is asked of the array after it.
    ProviderObject<ZAR_SCSIControllerProvider> p("ZAR_SCSIControllerProvider");
    LastCall first;
    EXPECT_NO_THROW(
        p->getInstance(as("p1super"), views[0].getPath(), false, false, CIMPropertyList(), first));
    zarsim_clear_faults();
    EXPECT_EQ(1u, first.items.size());
    EXPECT_EQ(1, first.completeCalls);
}

TEST_F(SCSIControllerTest, GetInstanceRefusals)
{
    unsigned db01 = ArrayBuilder::hostID("db01");
    std::string hs = "HS:" + std::to_string(db01);
    EXPECT_EQ("db01", text(ZAR_Common::getStringProperty(get(viewPath(hs)), "ElementName")));

    // The whole path is compared: a wrong system name is not found.
    CIMObjectPath wrong = ZAR_Common::buildSPCObjectPath("ZAR_StorageSystem", "testhost", "OTHER",
                                                         hs.c_str(), "ZAR_SCSIController");
    LogCapture log;
    ProviderObject<ZAR_SCSIControllerProvider> p("ZAR_SCSIControllerProvider");
    Instances out;
    expectCIMError(CIM_ERR_NOT_FOUND, "ZAR_SCSIControllerProvider" + text(wrong.toString()), [&] {
        p->getInstance(as("p1super"), wrong, false, false, CIMPropertyList(), out);
    });
    EXPECT_TRUE(log.has(
        "ZAR_SCSIControllerProvider::getInstance, not found = " + text(wrong.toString()) + "\n"));
    EXPECT_TRUE(log.has("Search deviceID = " + hs + "\n"));
    // So is the class: a superclass path with the view's keys is not found.
    CIMObjectPath super = viewPath(hs);
    super.setClassName("CIM_SCSIProtocolController");
    EXPECT_EQ(CIM_ERR_NOT_FOUND, cimErrorOf([&] {
                                     p->getInstance(as("p1super"), super, false, false,
                                                    CIMPropertyList(), out);
                                 }).getCode());

    expectCIMError(
        CIM_ERR_INVALID_PARAMETER, "ZAR_SCSIControllerProvider DeviceID key not found.", [&] {
            p->getInstance(as("p1super"), CIMObjectPath("root/zar:ZAR_SCSIController.Name=\"x\""),
                           false, false, CIMPropertyList(), out);
        });
}

TEST_F(SCSIControllerTest, ModifyRenamesTheHostOfHostSeesAndMatchedSetViews)
{
    unsigned db01 = ArrayBuilder::hostID("db01");
    modify("p1super", viewPath("HS:" + std::to_string(db01)), renameTo("db01-renamed"));
    EXPECT_EQ("db01-renamed", ArrayBuilder::hostNameByID(db01));

    modify("p1super", viewPath("MS:2:1:1:" + std::to_string(db01)), renameTo("db01-again"));
    EXPECT_EQ("db01-again", ArrayBuilder::hostNameByID(db01));
}

TEST_F(SCSIControllerTest, ModifyRefusals)
{
    unsigned db01 = ArrayBuilder::hostID("db01");
    CIMObjectPath hs = viewPath("HS:" + std::to_string(db01));

    CIMException pp = cimErrorOf([&] { modify("p1super", viewPath("PP:0:1:1"), renameTo("x")); });
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED, pp.getCode());
    EXPECT_EQ("ZAR_SCSIController Port-Present  does not support modifyInstance.",
              text(pp.getMessage()));

    CIMInstance two = renameTo("zzz");
    two.addProperty(CIMProperty("Name", CIMValue(String("n"))));
    expectCIMError(CIM_ERR_INVALID_PARAMETER, "Invalid parameter: Name",
                   [&] { modify("p1super", hs, two); });
    EXPECT_EQ("db01", ArrayBuilder::hostNameByID(db01)) << "nothing changed";

    expectCIMError(CIM_ERR_ACCESS_DENIED, "Insufficient generic privilege",
                   [&] { modify("p1browse", hs, renameTo("b")); });
    CIMException locked = cimErrorOf([&] { modify("p1locked", hs, renameTo("b")); });
    EXPECT_EQ("Insufficient privilege for the user", text(locked.getMessage()));

    // The array judges the length of a new name, with its own words.
    const std::string longName(32, 'n');
    CIMException tooLong = cimErrorOf([&] { modify("p1super", hs, renameTo(longName.c_str())); });
    EXPECT_EQ(CIM_ERR_FAILED, tooLong.getCode());
    EXPECT_EQ("ZAR_SCSIController::modifyInstance of SPC returned an error - Host name " +
                  longName + " is longer than 31 characters",
              text(tooLong.getMessage()));
    EXPECT_EQ("db01", ArrayBuilder::hostNameByID(db01));

    zarsim_fail_next("api_setHost", 1, 21, "Host name already in use");
    LogCapture log;
    expectCIMError(
        CIM_ERR_FAILED,
        "ZAR_SCSIController::modifyInstance of SPC returned an error - Host name already in use",
        [&] { modify("p1super", hs, renameTo("esx01")); });
    EXPECT_TRUE(log.has("api_setHost returned an error: Host name already in use\n"));
}

TEST_F(SCSIControllerTest, ModifyThatChangesNothingMakesNoArrayCall)
{
    unsigned db01 = ArrayBuilder::hostID("db01");
    CIMObjectPath hs = viewPath("HS:" + std::to_string(db01));
    // Any call of api_setHost would now fail the request.
    zarsim_fail_next("api_setHost", 5, 1, "must not be called");
    modify("p1super", hs, renameTo("db01"));
    Array<CIMName> absent;
    absent.append("Caption");
    modify("p1super", hs, renameTo("other"), CIMPropertyList(absent));
    EXPECT_EQ("db01", ArrayBuilder::hostNameByID(db01));

    ProviderObject<ZAR_SCSIControllerProvider> p("ZAR_SCSIControllerProvider");
    Plain plain;
    p->modifyInstance(as("p1super"), hs, renameTo(""), false, CIMPropertyList(), plain);
    EXPECT_EQ(1, plain.processingCalls);
    EXPECT_EQ(1, plain.completeCalls);
}

TEST_F(SCSIControllerTest, OperationNameIsLowerCaseAndUnknownOnesAreNotSupported)
{
    unsigned db01 = ArrayBuilder::hostID("db01");
    ProviderObject<ZAR_SCSIControllerProvider> p("ZAR_SCSIControllerProvider");
    Plain plain;
    CIMObjectPath mixed(
        "//testhost/root/zar:zar_SCSICONTROLLER.CreationClassName=\"ZAR_SCSIController\","
        "DeviceID=\"HS:" +
        String(std::to_string(db01).c_str()) +
        "\","
        "SystemCreationClassName=\"ZAR_StorageSystem\",SystemName=\"ZAR-DEMO\"");
    LogCapture log;
    p->modifyInstance(as("p1super"), mixed, renameTo("db01-mixed"), false, CIMPropertyList(),
                      plain);
    EXPECT_EQ("db01-mixed", ArrayBuilder::hostNameByID(db01));
    // The array is asked with the name as the module lower-cased it.
    bool asked = false;
    for (const std::string& l : log.lines())
        asked = asked ||
                l.find("operation zar_scsicontroller.modifyinstance: allowed") != std::string::npos;
    EXPECT_TRUE(asked);

    CIMObjectPath unknown("//testhost/root/zar:ZAR_Unheard.DeviceID=\"HS:1\"");
    expectCIMError(CIM_ERR_NOT_SUPPORTED, "Does not support in generic!", [&] {
        p->modifyInstance(as("p1super"), unknown, renameTo("y"), false, CIMPropertyList(), plain);
    });

    expectCIMError(
        CIM_ERR_FAILED, "ZAR_SCSIController::modifyInstance of SPC error: invalid deviceID", [&] {
            p->modifyInstance(as("p1super"),
                              CIMObjectPath("//testhost/root/zar:ZAR_SCSIController.Name=\"x\""),
                              renameTo("y"), false, CIMPropertyList(), plain);
        });
}

}  // namespace
