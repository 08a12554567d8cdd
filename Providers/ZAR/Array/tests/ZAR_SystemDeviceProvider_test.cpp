// From the storage system to every object of the array: its volumes and
// views (ZAR_SystemDevice) and its target port endpoints
// (ZAR_HostedAccessPoint), and back, compared with the array's records.
#include <functional>
#include <vector>

#include "ModuleFixture.h"

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

class SystemAssociationsTest : public ModuleFixture {
protected:
    CIMObjectPath system()
    {
        Paths names;
        server().enumerateInstanceNames(as("p1browse"), ns(), CIMName("ZAR_StorageSystem"), names);
        EXPECT_EQ(1u, names.items.size());
        return names.items.size() ? names.items[0] : CIMObjectPath();
    }
    // "Class|DeviceID" of each path.
    static std::set<std::string> devices(const Array<CIMObjectPath>& paths)
    {
        std::set<std::string> out;
        for (Uint32 i = 0; i < paths.size(); i++)
            out.insert(text(paths[i].getClassName().getString()) + "|" + key(paths[i], "DeviceID"));
        return out;
    }
};

TEST_F(SystemAssociationsTest, TheSystemHoldsEveryVolumeAndView)
{
    std::set<std::string> expected;
    for (const api_vv_t& v : arrayVolumes())
        expected.insert("ZAR_StorageVolume|" + fieldOf(v.name, sizeof v.name));
    for (const vlun& r : arrayViews(PORT_TYPE_FC))
        expected.insert("ZAR_SCSIController|" + fieldOf(r.deviceID, 65));
    for (const vlun& r : arrayViews(PORT_TYPE_ISCSI))
        expected.insert("ZAR_iSCSIController|" + fieldOf(r.deviceID, 65));

    Array<CIMObjectPath> all =
        assocNames(system(), "ZAR_SystemDevice", nullptr, "GroupComponent", "PartComponent");
    EXPECT_EQ(expected, devices(all));

    // Result classes pick one kind of device.
    auto only = [&](const std::string& prefix) {
        std::set<std::string> out;
        for (const std::string& d : expected)
            if (d.compare(0, prefix.size(), prefix) == 0)
                out.insert(d);
        return out;
    };
    EXPECT_EQ(only("ZAR_StorageVolume|"),
              devices(assocNames(system(), "ZAR_SystemDevice", "CIM_StorageVolume")));
    EXPECT_EQ(only("ZAR_iSCSIController|"),
              devices(assocNames(system(), "ZAR_SystemDevice", "ZAR_iSCSIController")));
    std::set<std::string> views = only("ZAR_SCSIController|");
    for (const std::string& d : only("ZAR_iSCSIController|"))
        views.insert(d);
    EXPECT_EQ(views, devices(assocNames(system(), "ZAR_SystemDevice", "CIM_ProtocolController")));
    EXPECT_EQ(0u, assocNames(system(), "ZAR_SystemDevice", nullptr, "PartComponent").size());

    // Whole volumes, as the volume provider builds them.
    Objects volumes;
    server().associators(as("p1browse"), ns(), system(), CIMName("ZAR_SystemDevice"),
                         CIMName("ZAR_StorageVolume"), "", "", false, false, CIMPropertyList(),
                         volumes);
    EXPECT_EQ(only("ZAR_StorageVolume|").size(), volumes.items.size());

    // Each device leads back to the system, once.
    for (Uint32 i = 0; i < all.size(); i++) {
        Array<CIMObjectPath> back = assocNames(all[i], "ZAR_SystemDevice", "CIM_System");
        ASSERT_EQ(1u, back.size()) << text(all[i].toString());
        EXPECT_EQ(key(system(), "Name"), key(back[0], "Name"));
    }
}

TEST_F(SystemAssociationsTest, TheSystemHostsEveryEndpoint)
{
    std::set<std::string> expected;
    for (const ArrayPort& p : arrayPorts(PORT_TYPE_FC))
        expected.insert(p.deviceID);
    for (const ArrayPort& p : arrayPorts(PORT_TYPE_ISCSI))
        expected.insert(p.deviceID);

    Objects endpoints;
    server().associators(as("p1browse"), ns(), system(), CIMName("ZAR_HostedAccessPoint"),
                         CIMName(), "Antecedent", "Dependent", false, false, CIMPropertyList(),
                         endpoints);
    std::set<std::string> got;
    for (Uint32 i = 0; i < endpoints.items.size(); i++)
        got.insert(prop(CIMInstance(endpoints.items[i]), "PortPosition"));
    EXPECT_EQ(expected, got);
    EXPECT_EQ(arrayPorts(PORT_TYPE_ISCSI).size(),
              assocNames(system(), "ZAR_HostedAccessPoint", "ZAR_iSCSIProtocolEndpoint").size());

    // From an endpoint: the system, through references too.
    CIMObjectPath one = endpoints.items[0].getPath();
    ASSERT_EQ(1u, assocNames(one, "ZAR_HostedAccessPoint", nullptr).size());
    Paths refs;
    server().referenceNames(as("p1browse"), ns(), one, CIMName("ZAR_HostedAccessPoint"),
                            "Dependent", refs);
    ASSERT_EQ(1u, refs.items.size());
    EXPECT_EQ(key(system(), "Name"), key(refKey(refs.items[0], "Antecedent"), "Name"));
}

// The association base checks the user before anything else, whatever
// the association.
TEST_F(SystemAssociationsTest, EveryOperationChecksTheUserFirst)
{
    CIMObjectPath from = system();
    OperationContext nobody = as("nobody");
    Paths names;
    Objects objects;
    Instances instances;
    const CIMName assoc("ZAR_SystemDevice");
    const std::vector<std::function<void()>> calls = {
        [&] { server().associatorNames(nobody, ns(), from, assoc, CIMName(), "", "", names); },
        [&] {
            server().associators(nobody, ns(), from, assoc, CIMName(), "", "", false, false,
                                 CIMPropertyList(), objects);
        },
        [&] { server().referenceNames(nobody, ns(), from, assoc, "", names); },
        [&] {
            server().references(nobody, ns(), from, assoc, "", false, false, CIMPropertyList(),
                                objects);
        },
        [&] { server().enumerateInstanceNames(nobody, ns(), assoc, names); },
        [&] {
            server().enumerateInstances(nobody, ns(), assoc, true, false, false, false,
                                        CIMPropertyList(), instances);
        },
    };
    for (size_t i = 0; i < calls.size(); i++)
        EXPECT_EQ(CIM_ERR_ACCESS_DENIED, cimErrorOf(calls[i]).getCode()) << "operation " << i;
    EXPECT_EQ(0u, names.items.size() + objects.items.size() + instances.items.size());
}

}  // namespace
