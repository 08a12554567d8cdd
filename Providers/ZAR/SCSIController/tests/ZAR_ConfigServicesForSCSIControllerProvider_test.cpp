// The service-to-view association, directly and through the dispatcher.
#include "../ZAR_ConfigServicesForSCSIControllerProvider.h"
#include "ProviderAccess.h"
#include "ServiceFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class ConfigServicesTest : public ServiceFixture {
protected:
    void SetUp() override
    {
        ServiceFixture::SetUp();
        provider_.reset(new ProviderObject<ZAR_ConfigServicesForSCSIControllerProvider>(
            "ZAR_ConfigServicesForSCSIControllerProvider"));
    }
    ZAR_ConfigServicesForSCSIControllerProvider* p() { return provider_->get(); }
    Array<CIMObjectPath> viewNames()
    {
        Paths out;
        server().enumerateInstanceNames(as("p1browse"), ns(), "ZAR_SCSIController", out);
        return out.items;
    }
    Array<CIMObjectPath> assocNames(const CIMObjectPath& from, const char* resultClass = nullptr,
                                    const char* role = "", const char* resultRole = "")
    {
        return providerAssocNames(*p(), from, "ZAR_ConfigServicesForSCSIController", resultClass,
                                  role, resultRole);
    }
    std::unique_ptr<ProviderObject<ZAR_ConfigServicesForSCSIControllerProvider>> provider_;
};

TEST_F(ConfigServicesTest, TheServiceConfiguresEveryFibreChannelView)
{
    Array<CIMObjectPath> views = viewNames();
    ASSERT_GT(views.size(), 3u);
    Array<CIMObjectPath> fromService = assocNames(service());
    EXPECT_EQ(views.size(), fromService.size());
    Array<CIMObjectPath> fromView =
        assocNames(views[0], "CIM_ControllerConfigurationService", "Antecedent");
    ASSERT_EQ(1u, fromView.size());
    EXPECT_TRUE(ZAR_Common::matchObjectPath(fromView[0], service()));

    Paths names;
    p()->enumerateInstanceNames(as("p1browse"),
                                CIMObjectPath("ZAR_ConfigServicesForSCSIController"), names);
    ASSERT_EQ(views.size(), names.items.size());
    CIMObjectPath dependent(ZAR_Common::getStringProperty(names.items[0], "Dependent"));
    EXPECT_EQ("ZAR_SCSIController", text(dependent.getClassName().getString()));

    // The association follows the array: a new view, one more.
    ASSERT_EQ(0, ArrayBuilder::exportTo(wwnOf("finance-08"), "esx01", nullptr));
    EXPECT_EQ(views.size() + 1, assocNames(service()).size());
}

TEST_F(ConfigServicesTest, ParametersThatCannotNameTheAssociationGiveNothing)
{
    EXPECT_EQ(0u, assocNames(service(), "CIM_ControllerConfigurationService").size());
    EXPECT_EQ(0u, assocNames(service(), "ZAR_StorageVolume").size());
    EXPECT_EQ(0u, assocNames(service(), nullptr, "Parent").size());
    Array<CIMObjectPath> views = viewNames();
    EXPECT_EQ(0u, assocNames(views[0], "CIM_ProtocolController").size());
    EXPECT_EQ(1u, assocNames(views[0], nullptr, "Dependent", "Antecedent").size());

    LogCapture log;
    CIMObjectPath gone = view("HS:999");
    Objects objects;
    p()->associators(as("p1browse"), gone, "ZAR_ConfigServicesForSCSIController", CIMName(), "", "",
                     false, false, CIMPropertyList(), objects);
    EXPECT_EQ(0u, objects.items.size());
    EXPECT_EQ(1, objects.completeCalls);
    EXPECT_TRUE(log.has("Instance does not exist for object " + text(gone.toString()) + "\n"));
    EXPECT_TRUE(log.has("<--ZAR_ConfigServicesForSCSIController::associators\n"));
}

TEST_F(ConfigServicesTest, ReferencesAndInstances)
{
    Array<CIMObjectPath> views = viewNames();
    Objects refs;
    p()->references(as("p1browse"), views[0], CIMName("CIM_ConcreteDependency"), "Dependent", false,
                    false, CIMPropertyList(), refs);
    ASSERT_EQ(1u, refs.items.size());
    CIMInstance assoc(refs.items[0]);
    CIMObjectPath antecedent;
    ASSERT_EQ(0, ZAR_Common::getProperty(assoc, "Antecedent", antecedent));
    EXPECT_TRUE(ZAR_Common::matchObjectPath(antecedent, service()));

    Instances one;
    p()->getInstance(as("p1browse"), assoc.getPath(), false, false, CIMPropertyList(), one);
    ASSERT_EQ(1u, one.items.size());
    // A path without namespace names root/zar.
    CIMObjectPath noNamespace = assoc.getPath();
    noNamespace.setNameSpace(CIMNamespaceName());
    p()->getInstance(as("p1browse"), noNamespace, false, false, CIMPropertyList(), one);
    ASSERT_EQ(2u, one.items.size());
    Objects services;
    p()->associators(as("p1browse"), views[0], CIMName(), CIMName(), "", "", false, false,
                     CIMPropertyList(), services);
    ASSERT_EQ(1u, services.items.size());
    EXPECT_EQ("ZAR_ControllerConfigurationService",
              text(services.items[0].getClassName().getString()));
    Paths refNames;
    p()->referenceNames(as("p1browse"), views[0], CIMName(), "", refNames);
    ASSERT_EQ(1u, refNames.items.size());
    EXPECT_TRUE(ZAR_Common::matchObjectPath(refNames.items[0], assoc.getPath()));

    // Through the dispatcher, from the service's side.
    Paths viaServer;
    server().associatorNames(as("p1browse"), ns(), service(), "ZAR_ConfigServicesForSCSIController",
                             CIMName(), "", "", viaServer);
    EXPECT_EQ(views.size(), viaServer.items.size());

    Array<CIMKeyBinding> keys = assoc.getPath().getKeyBindings();
    CIMObjectPath oneKey("", "root/zar", "ZAR_ConfigServicesForSCSIController",
                         Array<CIMKeyBinding>());
    CIMException e = cimErrorOf(
        [&] { p()->getInstance(as("p1browse"), oneKey, false, false, CIMPropertyList(), one); });
    EXPECT_EQ("ZAR_ConfigServicesForSCSIControllerProvider Expect two keys.", text(e.getMessage()));
    for (Uint32 i = 0; i < keys.size(); i++)
        if (keys[i].getName().equal("Dependent"))
            keys[i].setValue(view("HS:999").toString());
    e = cimErrorOf([&] {
        p()->getInstance(as("p1browse"),
                         CIMObjectPath("", "root/zar", "ZAR_ConfigServicesForSCSIController", keys),
                         false, false, CIMPropertyList(), one);
    });
    EXPECT_EQ("ZAR_ConfigServicesForSCSIControllerProvider CIM Object not found.",
              text(e.getMessage()));
    EXPECT_EQ("ZAR_ConfigServicesForSCSIControllerProvider Invalid class nameCIM_Dependency",
              text(cimErrorOf([&] {
                       p()->enumerateInstances(as("p1browse"), CIMObjectPath("CIM_Dependency"),
                                               false, false, CIMPropertyList(), one);
                   }).getMessage()));
}

}  // namespace

// A user the array refuses gets nothing from any operation, and an
// enumeration of another class is refused before the array is asked.
TEST_F(ConfigServicesTest, EveryOperationChecksTheUserAndTheClass)
{
    const CIMObjectPath view = viewNames()[0];
    const CIMObjectPath assocClass("ZAR_ConfigServicesForSCSIController");
    Objects objects;
    Paths paths;
    Instances instances;
    const std::vector<std::function<void(const OperationContext&)>> calls = {
        [&](const OperationContext& c) {
            p()->associators(c, view, "ZAR_ConfigServicesForSCSIController", CIMName(), "", "",
                             false, false, CIMPropertyList(), objects);
        },
        [&](const OperationContext& c) {
            p()->associatorNames(c, view, "ZAR_ConfigServicesForSCSIController", CIMName(), "", "",
                                 paths);
        },
        [&](const OperationContext& c) {
            p()->references(c, view, "ZAR_ConfigServicesForSCSIController", "", false, false,
                            CIMPropertyList(), objects);
        },
        [&](const OperationContext& c) {
            p()->referenceNames(c, view, "ZAR_ConfigServicesForSCSIController", "", paths);
        },
        [&](const OperationContext& c) {
            p()->enumerateInstances(c, assocClass, false, false, CIMPropertyList(), instances);
        },
        [&](const OperationContext& c) { p()->enumerateInstanceNames(c, assocClass, paths); },
        [&](const OperationContext& c) {
            p()->getInstance(c, CIMObjectPath(), false, false, CIMPropertyList(), instances);
        },
    };
    for (size_t i = 0; i < calls.size(); i++) {
        CIMException e = cimErrorOf([&] { calls[i](as("p1locked")); });
        EXPECT_EQ(CIM_ERR_ACCESS_DENIED, e.getCode()) << "operation " << i;
        EXPECT_EQ("Insufficient privilege for the user", text(e.getMessage())) << "operation " << i;
    }
    EXPECT_TRUE(objects.items.size() == 0 && paths.items.size() == 0 &&
                instances.items.size() == 0);

    CIMException e = cimErrorOf([&] {
        p()->enumerateInstances(as("p1browse"), CIMObjectPath("CIM_Dependency"), false, false,
                                CIMPropertyList(), instances);
    });
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED, e.getCode());
}
