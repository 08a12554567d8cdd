// iSCSI views through the server: the array's iSCSI view records, each
// once, fetched by path, renamed through its host, and refusals.
#include "ModuleFixture.h"

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

using ISCSIControllerProviderTest = ModuleFixture;

TEST_F(ISCSIControllerProviderTest, EveryISCSIViewOnceAndNoFCView)
{
    std::set<std::string> expected;
    for (const vlun& r : arrayViews(PORT_TYPE_ISCSI))
        expected.insert(fieldOf(r.deviceID, sizeof r.deviceID));
    ASSERT_FALSE(expected.empty());

    Instances list;
    server().enumerateInstances(as("p1browse"), ns(), CIMName("ZAR_iSCSIController"), true, false,
                                false, false, CIMPropertyList(), list);
    std::set<std::string> got;
    for (Uint32 i = 0; i < list.items.size(); i++) {
        EXPECT_TRUE(got.insert(prop(list.items[i], "DeviceID")).second);
        EXPECT_EQ("ZAR_iSCSIController", prop(list.items[i], "CreationClassName"));
        EXPECT_EQ("3", prop(list.items[i], "NameFormat"));
    }
    EXPECT_EQ(expected, got);

    Paths names;
    server().enumerateInstanceNames(as("p1browse"), ns(), CIMName("ZAR_iSCSIController"), names);
    EXPECT_EQ(expected, keys(names.items, "DeviceID"));
    for (Uint32 i = 0; i < names.items.size(); i++) {
        CIMInstance one = get(names.items[i]);
        EXPECT_EQ(key(names.items[i], "DeviceID"), prop(one, "DeviceID"));
    }
}

TEST_F(ISCSIControllerProviderTest, AnFCViewOrAnotherSystemIsNotFound)
{
    std::vector<vlun> fc = arrayViews(PORT_TYPE_FC);
    ASSERT_FALSE(fc.empty());
    Paths names;
    server().enumerateInstanceNames(as("p1browse"), ns(), CIMName("ZAR_iSCSIController"), names);
    ASSERT_GT(names.items.size(), 0u);
    for (const char* which : {"DeviceID", "SystemName"}) {
        Array<CIMKeyBinding> kb = names.items[0].getKeyBindings();
        for (Uint32 i = 0; i < kb.size(); i++)
            if (kb[i].getName().equal(CIMName(which)))
                kb[i] = CIMKeyBinding(CIMName(which),
                                      std::string(which) == "DeviceID"
                                          ? fieldOf(fc[0].deviceID, 65).c_str()
                                          : "OTHER",
                                      CIMKeyBinding::STRING);
        CIMObjectPath p("", ns(), CIMName("ZAR_iSCSIController"), kb);
        EXPECT_EQ(CIM_ERR_NOT_FOUND, cimErrorOf([&] { get(p); }).getCode()) << which;
    }
    Array<CIMKeyBinding> none;
    none.append(CIMKeyBinding(CIMName("SystemName"), "ZAR-DEMO", CIMKeyBinding::STRING));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER,
              cimErrorOf([&] {
                  server().getInstance(
                      as("p1browse"), ns(),
                      CIMObjectPath("", ns(), CIMName("ZAR_iSCSIController"), none), false, false,
                      false, CIMPropertyList());
              }).getCode());
}

TEST_F(ISCSIControllerProviderTest, RenamingAViewRenamesItsHostAndNeedsEdit)
{
    CIMObjectPath hsView;
    std::string hostName;
    for (const vlun& r : arrayViews(PORT_TYPE_ISCSI))
        if (r.accessPriority == API_VLUN_HOST_SEES) {
            hsView =
                CIMObjectPath("", ns(), CIMName("ZAR_iSCSIController"), Array<CIMKeyBinding>());
            hostName = fieldOf(r.hostname, sizeof r.hostname);
            Paths names;
            server().enumerateInstanceNames(as("p1browse"), ns(), CIMName("ZAR_iSCSIController"),
                                            names);
            for (Uint32 i = 0; i < names.items.size(); i++)
                if (key(names.items[i], "DeviceID") == fieldOf(r.deviceID, sizeof r.deviceID))
                    hsView = names.items[i];
            break;
        }
    ASSERT_FALSE(hostName.empty()) << "the demo array has an iSCSI host-sees view";
    ASSERT_EQ(0, zarsim_add_user("editor", "editor-pw", "edit"));
    CIMInstance view = get(hsView);
    view.getProperty(view.findProperty(CIMName("ElementName")))
        .setValue(CIMValue(String("renamed01")));
    view.setPath(hsView);
    Array<CIMName> only;
    only.append(CIMName("ElementName"));
    EXPECT_EQ(CIM_ERR_ACCESS_DENIED, cimErrorOf([&] {
                                         server().modifyInstance(as("p1browse"), ns(), view, false,
                                                                 CIMPropertyList(only));
                                     }).getCode());
    server().modifyInstance(as("editor"), ns(), view, false, CIMPropertyList(only));
    CIMInstance after = get(hsView);
    EXPECT_EQ("renamed01", prop(after, "ElementName"));
}

}  // namespace
