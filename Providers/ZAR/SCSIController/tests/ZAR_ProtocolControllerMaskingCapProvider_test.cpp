// Tests of the masking capabilities provider through the dispatcher.
#include <ZAR_Common.h>

#include "../ZAR_ProtocolControllerMaskingCapProvider.h"
#include "ModuleFixture.h"
#include "ProviderAccess.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class MaskingCapTest : public ModuleFixture {
protected:
    static CIMObjectPath capPath(const char* cls = "ZAR_ProtocolControllerMaskingCapabilities",
                                 const char* id = "KESTREL:ZAR-DEMO")
    {
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding("InstanceID", String(id), CIMKeyBinding::STRING));
        return CIMObjectPath("testhost", "root/zar", cls, keys);
    }
    static std::string prop(const CIMInstance& i, const char* name)
    {
        return text(ZAR_Common::getPropertyValue(i, name).toString());
    }
};

TEST_F(MaskingCapTest, InstanceShowsTheArraysCapabilities)
{
    CIMInstance i = get(capPath());
    EXPECT_EQ("zar-demo", text(i.getPath().getHost())) << "the array's host";
    EXPECT_EQ("Protocol Controller Masking Capabilities for ZAR-DEMO", prop(i, "Description"));
    EXPECT_EQ("KESTREL Protocol Controller Masking Capabilities", prop(i, "ElementName"));
    EXPECT_EQ("KESTREL:ZAR-DEMO", prop(i, "InstanceID"));
    EXPECT_EQ("1 2 5 ", prop(i, "ValidHardwareIdTypes"));
    EXPECT_EQ("Null StorageID ", prop(i, "OtherValidHardwareIDTypes"));
    EXPECT_EQ("4", prop(i, "PortsPerView"));
    EXPECT_EQ("0", prop(i, "MaximumMapCount"));
    const char* trueOnes[] = {
        "ClientSelectableDeviceNumbers", "ProtocolControllerSupportsCollections",
        "ExposePathsSupported",          "SPCAllowsNoTargets",
        "SPCAllowsNoInitiators",         "RequiresHostNodePortRegistration"};
    for (const char* n : trueOnes)
        EXPECT_EQ("TRUE", prop(i, n)) << n;
    const char* falseOnes[] = {"AttachDeviceSupported",
                               "UniqueUnitNumbersPerPort",
                               "PrivilegeDeniedSupported",
                               "ProtocolControllerRequiresAuthorizedIdentity",
                               "CreateProtocolControllerSupported",
                               "SPCAllowsNoLUs",
                               "SPCSupportsDefaultViews"};
    for (const char* n : falseOnes)
        EXPECT_EQ("FALSE", prop(i, n)) << n;
}

TEST_F(MaskingCapTest, PolicyBitDecidesOneHardwareIDPerViewOnEveryRequest)
{
    Uint32 saved = ZAR_Common::getPolicy();
    ZAR_Common::setPolicy(saved | 0x4);
    EXPECT_EQ("TRUE", prop(get(capPath()), "OneHardwareIDPerView"));
    ZAR_Common::setPolicy(saved & ~0x4u);
    CIMInstance off = get(capPath());
    EXPECT_EQ("FALSE", prop(off, "OneHardwareIDPerView"));
    EXPECT_EQ("4", prop(off, "PortsPerView"));
    ZAR_Common::setPolicy(saved);
}

TEST_F(MaskingCapTest, SuperclassPathFindsTheInstance)
{
    ProviderObject<ZAR_ProtocolControllerMaskingCapabilitiesProvider> p(
        "ZAR_ProtocolControllerMaskingCapabilitiesProvider");
    Instances out;
    p->getInstance(as("p1browse"), capPath("CIM_ProtocolControllerMaskingCapabilities"), false,
                   false, CIMPropertyList(), out);
    ASSERT_EQ(1u, out.items.size());
    EXPECT_EQ("ZAR_ProtocolControllerMaskingCapabilities",
              text(out.items[0].getPath().getClassName().getString()));
}

TEST_F(MaskingCapTest, Refusals)
{
    ProviderObject<ZAR_ProtocolControllerMaskingCapabilitiesProvider> p(
        "ZAR_ProtocolControllerMaskingCapabilitiesProvider");
    Instances out;
    expectCIMError(CIM_ERR_NOT_SUPPORTED,
                   "ZAR_ProtocolControllerMaskingCapabilities Invalid class nameZAR_SCSIController",
                   [&] {
                       p->getInstance(as("p1browse"), capPath("ZAR_SCSIController"), false, false,
                                      CIMPropertyList(), out);
                   });
    EXPECT_EQ("ZAR_ProtocolControllerMaskingCapabilities Invalid class nameCIM_Capabilities",
              text(cimErrorOf([&] {
                       p->enumerateInstances(as("p1browse"), CIMObjectPath("CIM_Capabilities"),
                                             false, false, CIMPropertyList(), out);
                   }).getMessage()));

    CIMObjectPath twoKeys = capPath();
    Array<CIMKeyBinding> keys = twoKeys.getKeyBindings();
    keys.append(CIMKeyBinding("Extra", String("x"), CIMKeyBinding::STRING));
    twoKeys.setKeyBindings(keys);
    LogCapture log;
    expectCIMError(CIM_ERR_INVALID_PARAMETER,
                   "ZAR_ProtocolControllerMaskingCapabilities Expect only one key.",
                   [&] { get(twoKeys); });
    EXPECT_TRUE(
        log.has("ZAR_ProtocolControllerMaskingCapabilitiesProvider::getInstance(): "
                "Invalid number of keys (2)\n"));

    expectCIMError(
        CIM_ERR_NOT_FOUND, "ZAR_ProtocolControllerMaskingCapabilities CIM Object not found.",
        [&] { get(capPath("ZAR_ProtocolControllerMaskingCapabilities", "KESTREL:OTHER")); });
}

TEST_F(MaskingCapTest, EnumerationsDeliverTheOneInstance)
{
    LogCapture log;
    Instances all;
    server().enumerateInstances(as("p1browse"), ns(), "ZAR_ProtocolControllerMaskingCapabilities",
                                true, false, false, false, CIMPropertyList(), all);
    ASSERT_EQ(1u, all.items.size());
    EXPECT_TRUE(log.has("\t className = ZAR_ProtocolControllerMaskingCapabilities\n"));
    EXPECT_TRUE(
        log.has("<-- ZAR_ProtocolControllerMaskingCapabilitiesProvider::enumerateInstances() \n"));
    Paths names;
    server().enumerateInstanceNames(as("p1browse"), ns(),
                                    "ZAR_ProtocolControllerMaskingCapabilities", names);
    ASSERT_EQ(1u, names.items.size());
    EXPECT_TRUE(ZAR_Common::matchObjectPath(
        CIMObjectPath(String(), "root/zar", names.items[0].getClassName(),
                      names.items[0].getKeyBindings()),
        capPath()));
}

}  // namespace
