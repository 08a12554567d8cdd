// The base every provider of both modules shares, through the server: users
// the array refuses read nothing, and the changes a provider does not make
// are refused, each message beginning with the provider's own name.
#include "ModuleFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

using ProviderBaseTest = ModuleFixture;

TEST_F(ProviderBaseTest, RefusedUsersAndChangesAProviderDoesNotMake)
{
    // An object of each class, the namespace it lives in, the name its
    // provider's messages begin with, and whether the provider modifies.
    struct Case {
        const char* cls;
        const char* nameSpace;
        const char* name;
        bool modifies;
    } cases[] = {
        {"ZAR_StorageSystem", "root/zar", "ZAR_StorageSystemProvider", false},
        {"ZAR_InternalCache", "root/PG_Internal", "ZAR_InternalCacheProvider", false},
        {"ZAR_StorageVolume", "root/zar", "ZAR_StorageVolumeProvider", false},
        {"ZAR_SCSIController", "root/zar", "ZAR_SCSIControllerProvider", true},
        {"ZAR_ControllerConfigurationService", "root/zar", "ZAR_ControllerConfigurationService",
         false},
        {"ZAR_ProtocolControllerMaskingCapabilities", "root/zar",
         "ZAR_ProtocolControllerMaskingCapabilities", false},
        {"ZAR_SystemControllerMaskingCapabilities", "root/zar",
         "ZAR_SystemControllerMaskingCapabilitiesProvider", false},
        {"ZAR_ConfigServicesForSCSIController", "root/zar",
         "ZAR_ConfigServicesForSCSIControllerProvider", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.cls);
        Paths all;
        server().enumerateInstanceNames(as("p1browse"), c.nameSpace, c.cls, all);
        ASSERT_NE(0u, all.items.size());
        CIMObjectPath path = all.items[0];
        CIMInstance changed = server().getInstance(as("p1browse"), c.nameSpace, path, false, false,
                                                   false, CIMPropertyList());
        changed.setPath(path);
        // Users the array does not know or has disabled read nothing.
        for (const char* user : {"nobody", "p1locked"}) {
            zartest::Paths none;
            expectCIMError(CIM_ERR_ACCESS_DENIED, "Insufficient privilege for the user", [&] {
                server().enumerateInstanceNames(as(user), c.nameSpace, c.cls, none);
            });
            EXPECT_EQ(0u, none.items.size());
        }
        const std::string refused = std::string(c.name) + " does not support ";
        expectCIMError(CIM_ERR_NOT_SUPPORTED, refused + "createInstance.",
                       [&] { server().createInstance(as("p1browse"), c.nameSpace, changed); });
        expectCIMError(CIM_ERR_NOT_SUPPORTED, refused + "deleteInstance.",
                       [&] { server().deleteInstance(as("p1browse"), c.nameSpace, path); });
        if (!c.modifies) {
            expectCIMError(CIM_ERR_NOT_SUPPORTED, refused + "modifyInstance.", [&] {
                server().modifyInstance(as("p1browse"), c.nameSpace, changed, false,
                                        CIMPropertyList());
            });
        }
    }
}

}  // namespace
