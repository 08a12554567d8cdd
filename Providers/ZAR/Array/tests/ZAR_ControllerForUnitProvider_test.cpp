// The view-to-volume associations (FC and iSCSI) through the server, walked
// in both directions with role, result role and result class filters, and
// compared with the array's export records.
#include <map>

#include "ModuleFixture.h"

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

struct Protocol {
    port_type_t type;
    const char* view;
    const char* assoc;
};
const Protocol kProtocols[] = {
    {PORT_TYPE_FC, "ZAR_SCSIController", "ZAR_ControllerForUnit"},
    {PORT_TYPE_ISCSI, "ZAR_iSCSIController", "ZAR_iSCSIControllerForUnit"}};

using ControllerForUnitProviderTest = ModuleFixture;

TEST_F(ControllerForUnitProviderTest, EachViewLeadsToTheVolumesItExports)
{
    for (const Protocol& p : kProtocols) {
        std::map<std::string, std::set<std::string>> expected;  // view -> volume WWNs
        for (const vlun& r : arrayExports(p.type))
            expected[fieldOf(r.deviceID, sizeof r.deviceID)].insert(
                fieldOf(r.vvwwn, sizeof r.vvwwn));
        Array<CIMObjectPath> views = names(p.view);
        ASSERT_EQ(expected.size(), views.size()) << p.view;
        bool sawDefault = false;
        for (Uint32 i = 0; i < views.size(); i++) {
            std::string id = key(views[i], "DeviceID");
            sawDefault = sawDefault || id.find("default") != std::string::npos;
            Array<CIMObjectPath> volumes =
                assocNames(views[i], p.assoc, "ZAR_StorageVolume", "Antecedent", "Dependent");
            EXPECT_EQ(expected[id], keys(volumes, "DeviceID")) << id;
            for (Uint32 v = 0; v < volumes.size(); v++)
                EXPECT_EQ("ZAR_StorageVolume", text(volumes[v].getClassName().getString()));
            // Without role and result class: the same answer.
            EXPECT_EQ(expected[id],
                      keys(assocNames(views[i], p.assoc, nullptr, "", ""), "DeviceID"))
                << id;
        }
        EXPECT_TRUE(sawDefault) << "the demo array has a default view of each protocol";
    }
}

TEST_F(ControllerForUnitProviderTest, EachVolumeLeadsBackToItsViews)
{
    std::map<std::string, std::set<std::string>> expected;  // volume -> views of both protocols
    for (const Protocol& p : kProtocols)
        for (const vlun& r : arrayExports(p.type))
            expected[fieldOf(r.vvwwn, sizeof r.vvwwn)].insert(
                fieldOf(r.deviceID, sizeof r.deviceID));
    Array<CIMObjectPath> volumes = names("ZAR_StorageVolume");
    size_t unexported = 0;
    for (Uint32 i = 0; i < volumes.size(); i++) {
        std::string wwn = key(volumes[i], "DeviceID");
        Array<CIMObjectPath> views =
            assocNames(volumes[i], nullptr, "CIM_ProtocolController", "Dependent", "Antecedent");
        EXPECT_EQ(expected[wwn], keys(views, "DeviceID")) << wwn;
        if (expected[wwn].empty())
            unexported++;
    }
    EXPECT_GT(unexported, 0u) << "the demo array has volumes in no view";
}

TEST_F(ControllerForUnitProviderTest, RolesAndClassesThatCannotMatchGiveNothing)
{
    for (const Protocol& p : kProtocols) {
        Array<CIMObjectPath> views = names(p.view);
        CIMObjectPath view;
        for (Uint32 i = 0; i < views.size(); i++)
            if (assocNames(views[i], p.assoc, nullptr, "", "").size() != 0)
                view = views[i];
        ASSERT_FALSE(key(view, "DeviceID").empty());
        EXPECT_EQ(0u, assocNames(view, p.assoc, nullptr, "Dependent", "").size());
        EXPECT_EQ(0u, assocNames(view, p.assoc, nullptr, "", "Antecedent").size());
        EXPECT_EQ(0u, assocNames(view, p.assoc, "ZAR_StorageSystem", "", "").size());
        EXPECT_EQ(0u, assocNames(view, p.assoc, p.view, "", "").size());
        EXPECT_GT(assocNames(view, p.assoc, "CIM_StorageExtent", "", "").size(), 0u)
            << "a superclass of the volume";
        EXPECT_GT(assocNames(view, p.assoc, "CIM_LogicalDevice", "antecedent", "DEPENDENT").size(),
                  0u)
            << "roles ignore case";
        EXPECT_EQ(0u, refNames(view, p.assoc, "Dependent").size());
        size_t refs = refNames(view, p.assoc, "Antecedent").size();
        EXPECT_GT(refs, 0u);
        EXPECT_EQ(refs, refNames(view, "CIM_ProtocolControllerForUnit", "").size())
            << "through the superclass";
    }
}

TEST_F(ControllerForUnitProviderTest, ReferencesCarryTheLUNInHexAndTheAccess)
{
    // A read-only volume in a view, beside the demo's read-write ones.
    char ro[33] = {0};
    ASSERT_EQ(0, zarsim_add_volume("ro-vol", 1024, "-", VOL_MODE_READ, ro));
    ASSERT_EQ(0, ArrayBuilder::exportTo(ro, "db01", nullptr));
    for (const Protocol& p : kProtocols) {
        std::map<std::string, const vlun*> byPair;  // view|wwn -> record
        std::vector<vlun> exports = arrayExports(p.type);
        for (const vlun& r : exports)
            byPair[fieldOf(r.deviceID, sizeof r.deviceID) + "|" +
                   fieldOf(r.vvwwn, sizeof r.vvwwn)] = &r;
        std::map<std::string, int> accessOf;
        for (const api_vv_t& v : arrayVolumes())
            accessOf[fieldOf(v.name, sizeof v.name)] = v.access;

        Instances all;
        server().enumerateInstances(as("p1browse"), ns(), CIMName(p.assoc), true, false, false,
                                    false, CIMPropertyList(), all);
        ASSERT_EQ(exports.size(), all.items.size()) << p.assoc;
        for (Uint32 i = 0; i < all.items.size(); i++) {
            const CIMInstance& a = all.items[i];
            std::string view = key(refKey(a.getPath(), "Antecedent"), "DeviceID");
            std::string wwn = key(refKey(a.getPath(), "Dependent"), "DeviceID");
            ASSERT_EQ(1u, byPair.count(view + "|" + wwn)) << view << " " << wwn;
            char hex[16];
            snprintf(hex, sizeof hex, "%X", byPair[view + "|" + wwn]->lun);
            EXPECT_EQ(hex, prop(a, "DeviceNumber"));
            EXPECT_EQ(accessOf[wwn] == VOL_MODE_READ ? "2" : "1", prop(a, "DeviceAccess"))
                << view << " " << wwn;
            // The same association from its volume, and fetched by its path.
            Array<CIMObjectPath> fromVolume =
                refNames(refKey(a.getPath(), "Dependent"), p.assoc, "Dependent");
            bool found = false;
            for (Uint32 j = 0; j < fromVolume.size(); j++)
                found = found || key(refKey(fromVolume[j], "Antecedent"), "DeviceID") == view;
            EXPECT_TRUE(found) << view << " " << wwn;
            CIMInstance again = get(a.getPath());
            EXPECT_EQ(prop(a, "DeviceNumber"), prop(again, "DeviceNumber"));
        }
    }
}

TEST_F(ControllerForUnitProviderTest, AssociatorsDeliverWholeVolumesAndViews)
{
    Array<CIMObjectPath> views = names("ZAR_SCSIController");
    for (Uint32 i = 0; i < views.size(); i++) {
        Objects volumes;
        server().associators(as("p1browse"), ns(), views[i], CIMName("ZAR_ControllerForUnit"),
                             CIMName(), "", "", false, false, CIMPropertyList(), volumes);
        for (Uint32 v = 0; v < volumes.items.size(); v++) {
            CIMInstance vol(volumes.items[v]);
            EXPECT_EQ(key(volumes.items[v].getPath(), "DeviceID"), prop(vol, "DeviceID"));
            EXPECT_FALSE(prop(vol, "ElementName").empty());
            Objects back;
            server().associators(as("p1browse"), ns(), volumes.items[v].getPath(),
                                 CIMName("ZAR_ControllerForUnit"), CIMName(), "", "", false, false,
                                 CIMPropertyList(), back);
            bool found = false;
            for (Uint32 b = 0; b < back.items.size(); b++)
                found = found ||
                        prop(CIMInstance(back.items[b]), "DeviceID") == key(views[i], "DeviceID");
            EXPECT_TRUE(found) << key(views[i], "DeviceID");
        }
    }
}

TEST_F(ControllerForUnitProviderTest, AnUnknownAssociationIsNotFoundAndFailuresAreReported)
{
    Array<CIMObjectPath> refs = names("ZAR_ControllerForUnit");
    ASSERT_GT(refs.size(), 0u);
    CIMObjectPath other = refKey(refs[0], "Dependent");
    Array<CIMKeyBinding> kb = other.getKeyBindings();
    for (Uint32 i = 0; i < kb.size(); i++)
        if (kb[i].getName().equal(CIMName("DeviceID")))
            kb[i] = CIMKeyBinding(CIMName("DeviceID"), "00000000000000000000000000000000",
                                  CIMKeyBinding::STRING);
    Array<CIMKeyBinding> assoc;
    assoc.append(CIMKeyBinding(CIMName("Antecedent"), String(key(refs[0], "Antecedent").c_str()),
                               CIMKeyBinding::REFERENCE));
    assoc.append(CIMKeyBinding(
        CIMName("Dependent"),
        CIMObjectPath(other.getHost(), other.getNameSpace(), other.getClassName(), kb).toString(),
        CIMKeyBinding::REFERENCE));
    auto getAssoc = [&] {
        return cimErrorOf([&] {
                   server().getInstance(
                       as("p1browse"), ns(),
                       CIMObjectPath("", ns(), CIMName("ZAR_ControllerForUnit"), assoc), false,
                       false, false, CIMPropertyList());
               })
            .getCode();
    };
    EXPECT_EQ(CIM_ERR_NOT_FOUND, getAssoc());
    // Without one of its two references the path names no association.
    assoc.remove(1);
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, getAssoc());

    zarsim_fail_next("api_getSCSIProtocolControllers", 1, 1, "records lost");
    CIMException e = cimErrorOf([&] { names("ZAR_ControllerForUnit"); });
    EXPECT_EQ(CIM_ERR_FAILED, e.getCode());
    EXPECT_NE(std::string::npos,
              text(e.getMessage()).find("ZAR_ControllerForUnitProvider::_forEachPair"));
    EXPECT_NE(std::string::npos, text(e.getMessage()).find(api_errorCodeText(1)));

    EXPECT_EQ(CIM_ERR_ACCESS_DENIED, cimErrorOf([&] {
                                         Paths names;
                                         server().associatorNames(
                                             as("nobody"), ns(), refKey(refs[0], "Antecedent"),
                                             CIMName(), CIMName(), "", "", names);
                                     }).getCode());
}

}  // namespace
