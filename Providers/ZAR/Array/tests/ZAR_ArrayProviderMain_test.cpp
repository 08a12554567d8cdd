// The module's factory: which names create which providers.
#include <gtest/gtest.h>

#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>

PEGASUS_USING_PEGASUS;

extern "C" CIMProvider* PegasusCreateProvider(const String& providerName);

namespace {

TEST(ArrayProviderMainTest, CreatesProvidersByNameInAnyLetterCase)
{
    for (const char* name :
         {"ZAR_InternalCacheProvider", "zar_internalcacheprovider", "ZAR_INTERNALCACHEPROVIDER"}) {
        CIMProvider* p = PegasusCreateProvider(name);
        ASSERT_NE(nullptr, p) << name;
        // The internal cache object answers methods as well as instances.
        EXPECT_NE(nullptr, dynamic_cast<CIMMethodProvider*>(p)) << name;
        EXPECT_NE(nullptr, dynamic_cast<CIMInstanceProvider*>(p)) << name;
        p->terminate();
    }
    for (const char* name : {"ZAR_StorageSystemProvider", "zar_storagesystemprovider"}) {
        CIMProvider* p = PegasusCreateProvider(name);
        ASSERT_NE(nullptr, p) << name;
        EXPECT_NE(nullptr, dynamic_cast<CIMInstanceProvider*>(p)) << name;
        EXPECT_EQ(nullptr, dynamic_cast<CIMMethodProvider*>(p)) << name;
        p->terminate();
    }
}

TEST(ArrayProviderMainTest, OtherNamesCreateNothing)
{
    // Class names, the other module's providers and near misses.
    for (const char* name : {"ZAR_InternalCache", "ZAR_StorageSystem", "ZAR_SCSIControllerProvider",
                             "ZAR_StorageSystemProvider ", "ZAR_StorageSystemProviders", ""}) {
        EXPECT_EQ(nullptr, PegasusCreateProvider(name)) << "'" << name << "'";
    }
}

}  // namespace
