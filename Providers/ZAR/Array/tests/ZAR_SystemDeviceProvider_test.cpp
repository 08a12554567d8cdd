// From the storage system to every object of the array: its volumes and
// views (ZAR_SystemDevice) and its target port endpoints
// (ZAR_HostedAccessPoint), and back, compared with the array's records.
#include "ModuleFixture.h"
#include "SiblingTestSupport.h"

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

const CIMNamespaceName kZar("root/zar");

class SystemAssociationsTest : public ModuleFixture {
protected:
    CIMObjectPath system()
    {
        NameList names;
        server().enumerateInstanceNames(as("p1browse"), kZar, CIMName("ZAR_StorageSystem"), names);
        EXPECT_EQ(1u, names.got.size());
        return names.got.size() ? names.got[0] : CIMObjectPath();
    }
    Array<CIMObjectPath> assocNames(const CIMObjectPath& from, const char* assoc,
                                    const char* resultClass, const char* role = "",
                                    const char* resultRole = "")
    {
        NameList names;
        server().associatorNames(as("p1browse"), kZar, from, CIMName(assoc),
                                 resultClass ? CIMName(resultClass) : CIMName(), role, resultRole,
                                 names);
        return names.got;
    }
    // "Class|DeviceID" of each path.
    static std::set<std::string> devices(const Array<CIMObjectPath>& paths)
    {
        std::set<std::string> out;
        for (Uint32 i = 0; i < paths.size(); i++)
            out.insert(str(paths[i].getClassName().getString()) + "|" + key(paths[i], "DeviceID"));
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

    // Each device leads back to the system, once.
    for (Uint32 i = 0; i < all.size(); i++) {
        Array<CIMObjectPath> back = assocNames(all[i], "ZAR_SystemDevice", "CIM_System");
        ASSERT_EQ(1u, back.size()) << str(all[i].toString());
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

    ObjectList endpoints;
    server().associators(as("p1browse"), kZar, system(), CIMName("ZAR_HostedAccessPoint"), CIMName(),
                         "Antecedent", "Dependent", false, false, CIMPropertyList(), endpoints);
    std::set<std::string> got;
    for (Uint32 i = 0; i < endpoints.got.size(); i++)
        got.insert(prop(CIMInstance(endpoints.got[i]), "PortPosition"));
    EXPECT_EQ(expected, got);
    EXPECT_EQ(arrayPorts(PORT_TYPE_ISCSI).size(),
              assocNames(system(), "ZAR_HostedAccessPoint", "ZAR_iSCSIProtocolEndpoint").size());

    // From an endpoint: the system, through references too.
    CIMObjectPath one = endpoints.got[0].getPath();
    ASSERT_EQ(1u, assocNames(one, "ZAR_HostedAccessPoint", nullptr).size());
    NameList refs;
    server().referenceNames(as("p1browse"), kZar, one, CIMName("ZAR_HostedAccessPoint"), "Dependent",
                            refs);
    ASSERT_EQ(1u, refs.got.size());
    EXPECT_EQ(key(system(), "Name"), key(refKey(refs.got[0], "Antecedent"), "Name"));
}

}  // namespace
