// Tests of the module's factory.
#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>

#include "../ZAR_ConfigServicesForSCSIControllerProvider.h"
#include "../ZAR_ControllerConfigurationServiceProvider.h"
#include "../ZAR_ProtocolControllerMaskingCapProvider.h"
#include "../ZAR_SCSIControllerProvider.h"
#include "../ZAR_SystemControllerMaskingCapProvider.h"
#include "CommonTestSupport.h"
#include "ProviderAccess.h"

using namespace Pegasus;
using namespace zartest;

namespace {

template <class P>
bool makes(const char* name)
{
    CIMProvider* p = PegasusCreateProvider(name);
    bool ok = dynamic_cast<P*>(p) != nullptr;
    if (p)
        p->terminate();
    return ok;
}

TEST(Factory, KnownNamesInAnyLetterCase)
{
    EXPECT_TRUE(makes<ZAR_SCSIControllerProvider>("ZAR_SCSIControllerProvider"));
    EXPECT_TRUE(makes<ZAR_SCSIControllerProvider>("zar_scsicontrollerprovider"));
    EXPECT_TRUE(makes<ZAR_SCSIControllerProvider>("ZAR_scsiCONTROLLERprovider"));
    EXPECT_TRUE(makes<ZAR_ProtocolControllerMaskingCapabilitiesProvider>(
        "ZAR_ProtocolControllerMaskingCapabilitiesProvider"));
    EXPECT_TRUE(makes<ZAR_SystemControllerMaskingCapabilitiesProvider>(
        "zar_systemcontrollermaskingcapabilitiesprovider"));
    CIMProvider* assoc = PegasusCreateProvider("ZAR_SystemControllerMaskingCapabilitiesProvider");
    EXPECT_NE(nullptr, dynamic_cast<CIMAssociationProvider*>(assoc));
    EXPECT_NE(nullptr, dynamic_cast<CIMInstanceProvider*>(assoc));
    assoc->terminate();

    CIMProvider* service = PegasusCreateProvider("zar_controllerconfigurationserviceprovider");
    EXPECT_NE(nullptr, dynamic_cast<ZAR_ControllerConfigurationServiceProvider*>(service));
    EXPECT_NE(nullptr, dynamic_cast<CIMMethodProvider*>(service));
    service->terminate();
    CIMProvider* configs = PegasusCreateProvider("ZAR_ConfigServicesForSCSIControllerProvider");
    EXPECT_NE(nullptr, dynamic_cast<ZAR_ConfigServicesForSCSIControllerProvider*>(configs));
    EXPECT_NE(nullptr, dynamic_cast<CIMAssociationProvider*>(configs));
    configs->terminate();
}

TEST(Factory, OtherNamesGiveNothing)
{
    EXPECT_EQ(nullptr, PegasusCreateProvider("ZAR_SCSIController"));
    EXPECT_EQ(nullptr, PegasusCreateProvider("ZAR_SCSIControllerProvider "));
    EXPECT_EQ(nullptr, PegasusCreateProvider(""));
    EXPECT_EQ(nullptr, PegasusCreateProvider("ZAR_StorageSystemProvider"));
}

TEST(Factory, PathConstructorsAreRefusedWithTheFilesPrefix)
{
    CIMObjectPath path("root/zar:ZAR_SCSIController.DeviceID=\"HS:1\"");
    expectCIMError(CIM_ERR_NOT_SUPPORTED,
                   "ZAR_SCSIControllerProvider does not support constructor with object path.",
                   [&] { ZAR_SCSIControllerProvider p(path); });
    CIMException caps =
        cimErrorOf([&] { ZAR_ProtocolControllerMaskingCapabilitiesProvider p(path); });
    EXPECT_EQ(
        "ZAR_ProtocolControllerMaskingCapabilities does not support constructor with "
        "object path.",
        text(caps.getMessage()));
}

}  // namespace
