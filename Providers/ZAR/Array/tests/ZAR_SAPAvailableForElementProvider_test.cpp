// The endpoint-to-view associations (FC and iSCSI) through the server:
// which views each target port reaches, walked in both directions with
// filters, compared with the array's view records.
#include <map>

#include "ModuleFixture.h"

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

struct Protocol {
    port_type_t type;
    const char* endpoint;
    const char* view;
    const char* assoc;
};
const Protocol kProtocols[] = {{PORT_TYPE_FC, "ZAR_SCSIProtocolFCEndpoint", "ZAR_SCSIController",
                                "ZAR_SAPAvailableForElement"},
                               {PORT_TYPE_ISCSI, "ZAR_iSCSIProtocolEndpoint", "ZAR_iSCSIController",
                                "ZAR_iSCSISAPAvailableForElement"}};

class SAPAvailableForElementProviderTest : public ModuleFixture {
protected:
    // The views that the array says a port reaches: its own matched-set,
    // port-present and default views, and every host-sees and host-set view.
    static std::set<std::string> reachedFrom(const std::vector<vlun>& views,
                                             const std::string& position)
    {
        std::set<std::string> out;
        for (const vlun& r : views) {
            char text[16], scratch[16];
            bool everyPort =
                r.accessPriority == API_VLUN_HOST_SEES || r.accessPriority == API_VLUN_HOST_SET;
            if (everyPort || position == loop_txbf(r.port, text, scratch))
                out.insert(fieldOf(r.deviceID, sizeof r.deviceID));
        }
        return out;
    }
};

TEST_F(SAPAvailableForElementProviderTest, EachEndpointReachesItsPortsViewsAndBack)
{
    for (const Protocol& p : kProtocols) {
        std::vector<vlun> views = arrayViews(p.type);
        Array<CIMInstance> endpoints = instances(p.endpoint);
        ASSERT_GT(endpoints.size(), 0u);
        std::map<std::string, std::set<std::string>> endpointsOfView;
        bool sawDefault = false;
        for (Uint32 i = 0; i < endpoints.size(); i++) {
            std::string position = prop(endpoints[i], "PortPosition");
            std::set<std::string> expected = reachedFrom(views, position);
            Array<CIMObjectPath> got = assocNames(endpoints[i].getPath(), p.assoc, p.view,
                                                  "AvailableSAP", "ManagedElement");
            EXPECT_EQ(expected, keys(got, "DeviceID")) << p.endpoint << " " << position;
            for (const std::string& id : expected) {
                endpointsOfView[id].insert(prop(endpoints[i], "Name"));
                sawDefault = sawDefault || id.find("default") != std::string::npos;
            }
        }
        EXPECT_TRUE(sawDefault) << "default views are reached through their port";

        // From each view back to the endpoints of its ports.
        Paths viewPaths;
        server().enumerateInstanceNames(as("p1browse"), ns(), CIMName(p.view), viewPaths);
        for (Uint32 i = 0; i < viewPaths.items.size(); i++) {
            std::string id = key(viewPaths.items[i], "DeviceID");
            Array<CIMObjectPath> got =
                assocNames(viewPaths.items[i], p.assoc, "CIM_ProtocolEndpoint", "ManagedElement",
                           "AvailableSAP");
            EXPECT_EQ(endpointsOfView[id], keys(got, "Name")) << id;
        }
    }
}

TEST_F(SAPAvailableForElementProviderTest, FiltersReferencesAndInstances)
{
    for (const Protocol& p : kProtocols) {
        Array<CIMInstance> endpoints = instances(p.endpoint);
        ASSERT_GT(endpoints.size(), 0u);
        const CIMObjectPath from = endpoints[0].getPath();
        size_t reached = assocNames(from, p.assoc, nullptr, "", "").size();
        ASSERT_GT(reached, 0u);
        EXPECT_EQ(0u, assocNames(from, p.assoc, nullptr, "ManagedElement", "").size());
        EXPECT_EQ(0u, assocNames(from, p.assoc, nullptr, "", "AvailableSAP").size());
        EXPECT_EQ(0u, assocNames(from, p.assoc, "ZAR_StorageVolume", "", "").size());
        EXPECT_EQ(reached,
                  assocNames(from, nullptr, "CIM_ManagedElement", "availablesap", "").size());

        Objects refs;
        server().references(as("p1browse"), ns(), from, CIMName(p.assoc), "AvailableSAP", false,
                            false, CIMPropertyList(), refs);
        EXPECT_EQ(reached, refs.items.size());
        for (Uint32 i = 0; i < refs.items.size(); i++)
            EXPECT_EQ(prop(endpoints[0], "Name"),
                      key(refKey(refs.items[i].getPath(), "AvailableSAP"), "Name"));
        Paths none;
        server().referenceNames(as("p1browse"), ns(), from, CIMName(p.assoc), "ManagedElement",
                                none);
        EXPECT_EQ(0u, none.items.size());

        // Whole views from the endpoint, each one the view of that path.
        Objects views;
        server().associators(as("p1browse"), ns(), from, CIMName(p.assoc), CIMName(), "", "", false,
                             false, CIMPropertyList(), views);
        ASSERT_EQ(reached, views.items.size());
        for (Uint32 i = 0; i < views.items.size(); i++)
            EXPECT_EQ(key(views.items[i].getPath(), "DeviceID"),
                      prop(CIMInstance(views.items[i]), "DeviceID"));

        // Enumerated association instances: one per reached pair, each
        // fetched again by its path.
        Paths all;
        server().enumerateInstanceNames(as("p1browse"), ns(), CIMName(p.assoc), all);
        size_t total = 0;
        for (Uint32 i = 0; i < endpoints.size(); i++)
            total += assocNames(endpoints[i].getPath(), p.assoc, nullptr, "", "").size();
        EXPECT_EQ(total, all.items.size());
        CIMInstance one = get(all.items[0]);
        EXPECT_FALSE(prop(one, "ManagedElement").empty());
    }
}

TEST_F(SAPAvailableForElementProviderTest, ANewPortPresentExportIsReachedOnlyThroughItsPort)
{
    char wwn[33] = "";
    ASSERT_EQ(0, zarsim_add_volume("pp-new", 1024, "-", VOL_MODE_READWRITE, wwn));
    ASSERT_EQ(0, cim_sem_wait());
    zar_u64 high = 0, low = 0;
    ASSERT_EQ(0, api_wwnStringToInt(nullptr, wwn, &high, &low));
    zar_u32 lun = 77;
    char err[513] = "";
    lpid_t port = API_PORT_NONE;
    ASSERT_EQ(0, api_convertStrLPIDtoPortID("1:1:1", &port));
    int rc = api_createVLUN(nullptr, high, low, &lun, nullptr, (zar_u64)-10, nullptr, port, 0, 0,
                            err, sizeof err);
    cim_sem_post();
    ASSERT_EQ(0, rc) << err;

    Array<CIMInstance> endpoints = instances("ZAR_SCSIProtocolFCEndpoint");
    for (Uint32 i = 0; i < endpoints.size(); i++) {
        std::set<std::string> views =
            keys(assocNames(endpoints[i].getPath(), "ZAR_SAPAvailableForElement", nullptr, "", ""),
                 "DeviceID");
        bool own = prop(endpoints[i], "PortPosition") == "1:1:1";
        EXPECT_EQ(own, views.count("PP:1:1:1") == 1) << prop(endpoints[i], "PortPosition");
        EXPECT_EQ(own, views.count("PP:1:1:1:default") == 1) << prop(endpoints[i], "PortPosition");
    }
}

}  // namespace
