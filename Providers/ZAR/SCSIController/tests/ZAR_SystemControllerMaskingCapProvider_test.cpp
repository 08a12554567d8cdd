// Tests of the system-to-capabilities association through the dispatcher
// and directly.
#include <ZAR_Common.h>

#include "../ZAR_SystemControllerMaskingCapProvider.h"
#include "ModuleFixture.h"
#include "ProviderAccess.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class SystemCapAssocTest : public ModuleFixture {
protected:
    void SetUp() override
    {
        ModuleFixture::SetUp();
        provider_.reset(new ProviderObject<ZAR_SystemControllerMaskingCapabilitiesProvider>(
            "ZAR_SystemControllerMaskingCapabilitiesProvider"));
        Paths names;
        (*provider_)
            ->enumerateInstanceNames(
                as("p1browse"), CIMObjectPath("ZAR_SystemControllerMaskingCapabilities"), names);
        ASSERT_EQ(1u, names.items.size());
        assoc_ = names.items[0];
    }
    ZAR_SystemControllerMaskingCapabilitiesProvider* p() { return provider_->get(); }
    CIMObjectPath end(const char* role)
    {
        for (Uint32 i = 0; i < assoc_.getKeyBindings().size(); i++)
            if (assoc_.getKeyBindings()[i].getName().equal(role))
                return CIMObjectPath(assoc_.getKeyBindings()[i].getValue());
        ADD_FAILURE() << role;
        return CIMObjectPath();
    }
    Array<CIMObjectPath> assocNames(const CIMObjectPath& from, const char* resultClass,
                                    const char* role = "", const char* resultRole = "")
    {
        return providerAssocNames(*p(), from, "ZAR_SystemControllerMaskingCapabilities",
                                  resultClass, role, resultRole);
    }
    std::unique_ptr<ProviderObject<ZAR_SystemControllerMaskingCapabilitiesProvider>> provider_;
    CIMObjectPath assoc_;
};

TEST_F(SystemCapAssocTest, TiesTheSystemToItsCapabilities)
{
    CIMObjectPath system = end("ManagedElement");
    CIMObjectPath caps = end("Capabilities");
    EXPECT_EQ("ZAR_StorageSystem", text(system.getClassName().getString()));
    EXPECT_EQ("root/zar", text(system.getNameSpace().getString()));
    EXPECT_EQ("ZAR_ProtocolControllerMaskingCapabilities", text(caps.getClassName().getString()));

    Array<CIMObjectPath> fromSystem = assocNames(system, "CIM_Capabilities");
    ASSERT_EQ(1u, fromSystem.size());
    EXPECT_TRUE(ZAR_Common::matchObjectPath(fromSystem[0], caps));
    EXPECT_EQ(0u, assocNames(system, "CIM_System").size());
    Array<CIMObjectPath> fromCaps = assocNames(caps, nullptr, "Capabilities", "ManagedElement");
    ASSERT_EQ(1u, fromCaps.size());
    EXPECT_TRUE(ZAR_Common::matchObjectPath(fromCaps[0], system));
}

TEST_F(SystemCapAssocTest, RoleAndResultClassRules)
{
    CIMObjectPath system = end("ManagedElement");
    CIMObjectPath caps = end("Capabilities");
    EXPECT_EQ(0u, assocNames(system, nullptr, "Capabilities").size());
    EXPECT_EQ(0u, assocNames(system, nullptr, "", "ManagedElement").size());
    EXPECT_EQ(0u, assocNames(caps, nullptr, "", "Capabilities").size());
    EXPECT_EQ(0u, assocNames(caps, nullptr, "", "Dependent").size());
    EXPECT_EQ(0u, assocNames(system, nullptr, "Antecedent").size());
    EXPECT_EQ(0u, assocNames(system, "ZAR_StorageSystem").size());
    EXPECT_EQ(0u, assocNames(caps, "CIM_ProtocolControllerMaskingCapabilities").size());
    EXPECT_EQ(0u, assocNames(caps, "ZAR_SCSIController").size());
    EXPECT_EQ(1u, assocNames(caps, "CIM_ManagedElement").size());
    EXPECT_EQ(
        1u,
        assocNames(system, "zar_protocolcontrollermaskingcapabilities", "managedelement").size());

    LogCapture log;
    Objects refs;
    p()->references(as("p1browse"), caps, CIMName(), "ManagedElement", false, false,
                    CIMPropertyList(), refs);
    EXPECT_EQ(0u, refs.items.size());
    EXPECT_EQ(1, refs.completeCalls);
    EXPECT_TRUE(
        log.has("ZAR_SystemControllerMaskingCapabilitiesProvider::references: invalid "
                "params: resultClass =  \n"));
    EXPECT_EQ(-1, log.indexOf("<--ZAR_SystemControllerMaskingCapabilitiesProvider::references\n"));

    Objects any;
    p()->references(as("p1browse"), caps, CIMName(), "", false, false, CIMPropertyList(), any);
    EXPECT_EQ(1u, any.items.size()) << "no result class selects the association";

    Paths refNames;
    p()->referenceNames(as("p1browse"), caps, "CIM_Dependency", "", refNames);
    EXPECT_EQ(0u, refNames.items.size());
    p()->referenceNames(as("p1browse"), caps, "CIM_ElementCapabilities", "Capabilities", refNames);
    ASSERT_EQ(1u, refNames.items.size());
    EXPECT_TRUE(refNames.items[0] == assoc_);
}

TEST_F(SystemCapAssocTest, ReferencesAndAssociatorsDeliverObjects)
{
    LogCapture log;
    Objects refs;
    p()->references(as("p1browse"), end("ManagedElement"),
                    "ZAR_SystemControllerMaskingCapabilities", "", false, false, CIMPropertyList(),
                    refs);
    ASSERT_EQ(1u, refs.items.size());
    CIMInstance a(refs.items[0]);
    CIMObjectPath capsRef;
    ASSERT_EQ(0, ZAR_Common::getProperty(a, "Capabilities", capsRef));
    EXPECT_TRUE(ZAR_Common::matchObjectPath(capsRef, end("Capabilities")));
    EXPECT_TRUE(log.has("<--ZAR_SystemControllerMaskingCapabilitiesProvider::references\n"));

    Objects assocs;
    p()->associators(as("p1browse"), end("ManagedElement"),
                     "ZAR_SystemControllerMaskingCapabilities", CIMName(), "", "", false, false,
                     CIMPropertyList(), assocs);
    ASSERT_EQ(1u, assocs.items.size());
    EXPECT_EQ("ZAR_ProtocolControllerMaskingCapabilities",
              text(assocs.items[0].getClassName().getString()));

    // Through the dispatcher, from the system's side.
    Array<CIMObjectPath> names;
    Paths viaServer;
    server().associatorNames(as("p1browse"), ns(), end("ManagedElement"),
                             "ZAR_SystemControllerMaskingCapabilities", CIMName(), "", "",
                             viaServer);
    ASSERT_EQ(1u, viaServer.items.size());
    EXPECT_EQ("ZAR_ProtocolControllerMaskingCapabilities",
              text(viaServer.items[0].getClassName().getString()));
}

// The association's ends name the two classes it holds, so that a server
// routes no other object to it: every object walks all its associations
// without filters, and only the system and its capabilities reach this one.
TEST_F(SystemCapAssocTest, EveryObjectWalksItsAssociationsWithoutFilters)
{
    for (const char* cls :
         {"ZAR_StorageSystem", "ZAR_SCSIController", "ZAR_iSCSIController", "ZAR_StorageVolume",
          "ZAR_SCSIProtocolFCEndpoint", "ZAR_iSCSIProtocolEndpoint",
          "ZAR_ProtocolControllerMaskingCapabilities", "ZAR_ControllerConfigurationService"}) {
        Paths objects;
        server().enumerateInstanceNames(as("p1browse"), ns(), cls, objects);
        ASSERT_NE(0u, objects.items.size()) << cls;
        CIMObjectPath one = objects.items[0];
        Paths related, refs;
        EXPECT_NO_THROW(server().associatorNames(as("p1browse"), ns(), one, CIMName(), CIMName(),
                                                 "", "", related))
            << cls;
        EXPECT_NO_THROW(server().referenceNames(as("p1browse"), ns(), one, CIMName(), "", refs))
            << cls;
        EXPECT_NE(0u, related.items.size()) << cls;
        bool here = false;
        for (Uint32 i = 0; i < refs.items.size(); i++)
            here = here ||
                   refs.items[i].getClassName().equal("ZAR_SystemControllerMaskingCapabilities");
        EXPECT_EQ(String::equal(cls, "ZAR_StorageSystem") ||
                      String::equal(cls, "ZAR_ProtocolControllerMaskingCapabilities"),
                  here)
            << cls;
    }
}

TEST_F(SystemCapAssocTest, GetInstanceIgnoresHostsOfTheEnds)
{
    Array<CIMKeyBinding> keys;
    CIMObjectPath system = end("ManagedElement");
    CIMObjectPath caps = end("Capabilities");
    system.setHost("elsewhere");
    caps.setHost("yetanother");
    keys.append(CIMKeyBinding("ManagedElement", system.toString(), CIMKeyBinding::REFERENCE));
    keys.append(CIMKeyBinding("Capabilities", caps.toString(), CIMKeyBinding::REFERENCE));
    CIMObjectPath wanted("client", "root/zar", "ZAR_SystemControllerMaskingCapabilities", keys);
    LogCapture log;
    Instances out;
    p()->getInstance(as("p1browse"), wanted, false, false, CIMPropertyList(), out);
    ASSERT_EQ(1u, out.items.size());
    EXPECT_TRUE(out.items[0].getPath() == assoc_) << "the instance carries the fixed path";
    EXPECT_TRUE(log.has("<-- ZAR_SystemControllerMaskingCapabilitiesProvider::getInstance()\n\n"));

    CIMInstance viaServer = get(wanted);
    EXPECT_EQ("ZAR_SystemControllerMaskingCapabilities",
              text(viaServer.getClassName().getString()));
}

TEST_F(SystemCapAssocTest, InstanceRefusals)
{
    Instances out;
    Array<CIMKeyBinding> one;
    one.append(assoc_.getKeyBindings()[0]);
    CIMObjectPath oneKey("h", "root/zar", "ZAR_SystemControllerMaskingCapabilities", one);
    expectCIMError(
        CIM_ERR_INVALID_PARAMETER,
        "ZAR_SystemControllerMaskingCapabilitiesProvider Expect two keys.",
        [&] { p()->getInstance(as("p1browse"), oneKey, false, false, CIMPropertyList(), out); });

    Array<CIMKeyBinding> wrongKeys = assoc_.getKeyBindings();
    CIMObjectPath otherSystem(
        "root/zar:ZAR_StorageSystem.CreationClassName=\"ZAR_StorageSystem\",Name=\"NOPE\"");
    wrongKeys[0].getName().equal("Capabilities") ? wrongKeys[1].setValue(otherSystem.toString())
                                                 : wrongKeys[0].setValue(otherSystem.toString());
    CIMObjectPath wrong("h", "root/zar", "ZAR_SystemControllerMaskingCapabilities", wrongKeys);
    EXPECT_EQ("ZAR_SystemControllerMaskingCapabilitiesProvider CIM Object not found.",
              text(cimErrorOf([&] {
                       p()->getInstance(as("p1browse"), wrong, false, false, CIMPropertyList(),
                                        out);
                   }).getMessage()));

    EXPECT_EQ("ZAR_SystemControllerMaskingCapabilitiesProvider Invalid class nameCIM_Dependency",
              text(cimErrorOf([&] {
                       p()->enumerateInstances(as("p1browse"), CIMObjectPath("CIM_Dependency"),
                                               false, false, CIMPropertyList(), out);
                   }).getMessage()));
    EXPECT_EQ("Insufficient privilege for the user",
              text(cimErrorOf([&] {
                       p()->enumerateInstances(as("p1locked"),
                                               CIMObjectPath("CIM_ElementCapabilities"), false,
                                               false, CIMPropertyList(), out);
                   }).getMessage()));
}

}  // namespace
