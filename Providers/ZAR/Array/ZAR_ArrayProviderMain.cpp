//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayProviderMain.cpp: the entry point of the array module
// (libZAR_ArrayProvider): one provider object per recognised name.
//%/////////////////////////////////////////////////////////////////////////////
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMProvider.h>

#include "ZAR_ControllerForUnitProvider.h"
#include "ZAR_InternalCacheProvider.h"
#include "ZAR_SAPAvailableForElementProvider.h"
#include "ZAR_SCSIProtocolFCEndpointProvider.h"
#include "ZAR_StorageSystemProvider.h"
#include "ZAR_StorageVolumeProvider.h"
#include "ZAR_SystemPartProvider.h"
#include "ZAR_iSCSIControllerProvider.h"
#include "ZAR_iSCSIProtocolEndpointProvider.h"

PEGASUS_USING_PEGASUS;

namespace {

// The providers of this module by name; the FC and iSCSI variants of an
// association are one class serving one protocol each, and so are the
// system's two associations with its parts.
const struct {
    const char* name;
    CIMProvider* (*create)();
} PROVIDERS[] = {
    {"ZAR_InternalCacheProvider", []() -> CIMProvider* { return new ZAR_InternalCacheProvider(); }},
    {"ZAR_StorageSystemProvider", []() -> CIMProvider* { return new ZAR_StorageSystemProvider(); }},
    {"ZAR_StorageVolumeProvider", []() -> CIMProvider* { return new ZAR_StorageVolumeProvider(); }},
    {"ZAR_iSCSIControllerProvider",
     []() -> CIMProvider* { return new ZAR_iSCSIControllerProvider(); }},
    {"ZAR_SCSIProtocolFCEndpointProvider",
     []() -> CIMProvider* { return new ZAR_SCSIProtocolFCEndpointProvider(); }},
    {"ZAR_iSCSIProtocolEndpointProvider",
     []() -> CIMProvider* { return new ZAR_iSCSIProtocolEndpointProvider(); }},
    {"ZAR_ControllerForUnitProvider",
     []() -> CIMProvider* { return new ZAR_ControllerForUnitProvider(PORT_TYPE_FC); }},
    {"ZAR_iSCSIControllerForUnitProvider",
     []() -> CIMProvider* { return new ZAR_ControllerForUnitProvider(PORT_TYPE_ISCSI); }},
    {"ZAR_SAPAvailableForElementProvider",
     []() -> CIMProvider* { return new ZAR_SAPAvailableForElementProvider(PORT_TYPE_FC); }},
    {"ZAR_iSCSISAPAvailableForElementProvider",
     []() -> CIMProvider* { return new ZAR_SAPAvailableForElementProvider(PORT_TYPE_ISCSI); }},
    {"ZAR_SystemDeviceProvider",
     []() -> CIMProvider* { return new ZAR_SystemPartProvider(ZAR_SystemPartProvider::DEVICES); }},
    {"ZAR_HostedAccessPointProvider",
     []() -> CIMProvider* {
         return new ZAR_SystemPartProvider(ZAR_SystemPartProvider::ACCESS_POINTS);
     }},
};

}  // namespace

// Returns a new provider for `providerName` (compared ignoring case), or 0
// for a name this module does not serve. The server owns the object and
// ends it through terminate().
extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& providerName)
{
    for (const auto& provider : PROVIDERS) {
        if (String::equalNoCase(providerName, provider.name))
            return provider.create();
    }
    return 0;
}
