//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayProviderMain.cpp: the entry point of the array module
// (libZAR_ArrayProvider): one provider object per recognised name.
//%/////////////////////////////////////////////////////////////////////////////
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMProvider.h>

#include "ZAR_ControllerForUnitProvider.h"
#include "ZAR_HostedAccessPointProvider.h"
#include "ZAR_InternalCacheProvider.h"
#include "ZAR_SAPAvailableForElementProvider.h"
#include "ZAR_SCSIProtocolFCEndpointProvider.h"
#include "ZAR_StorageSystemProvider.h"
#include "ZAR_StorageVolumeProvider.h"
#include "ZAR_SystemDeviceProvider.h"
#include "ZAR_iSCSIControllerProvider.h"
#include "ZAR_iSCSIProtocolEndpointProvider.h"

PEGASUS_USING_PEGASUS;

// Returns a new provider for `providerName` (compared ignoring case), or 0
// for a name this module does not serve. The server owns the object and
// ends it through terminate().
extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& providerName)
{
    if (String::equalNoCase(providerName, "ZAR_InternalCacheProvider"))
        return new ZAR_InternalCacheProvider();
    if (String::equalNoCase(providerName, "ZAR_StorageSystemProvider"))
        return new ZAR_StorageSystemProvider();
    if (String::equalNoCase(providerName, "ZAR_StorageVolumeProvider"))
        return new ZAR_StorageVolumeProvider();
    if (String::equalNoCase(providerName, "ZAR_iSCSIControllerProvider"))
        return new ZAR_iSCSIControllerProvider();
    if (String::equalNoCase(providerName, "ZAR_SCSIProtocolFCEndpointProvider"))
        return new ZAR_SCSIProtocolFCEndpointProvider();
    if (String::equalNoCase(providerName, "ZAR_iSCSIProtocolEndpointProvider"))
        return new ZAR_iSCSIProtocolEndpointProvider();
    if (String::equalNoCase(providerName, "ZAR_ControllerForUnitProvider"))
        return new ZAR_ControllerForUnitProvider(PORT_TYPE_FC);
    if (String::equalNoCase(providerName, "ZAR_iSCSIControllerForUnitProvider"))
        return new ZAR_ControllerForUnitProvider(PORT_TYPE_ISCSI);
    if (String::equalNoCase(providerName, "ZAR_SAPAvailableForElementProvider"))
        return new ZAR_SAPAvailableForElementProvider(PORT_TYPE_FC);
    if (String::equalNoCase(providerName, "ZAR_iSCSISAPAvailableForElementProvider")) {
        return new ZAR_SAPAvailableForElementProvider(PORT_TYPE_ISCSI);
    }
    if (String::equalNoCase(providerName, "ZAR_SystemDeviceProvider"))
        return new ZAR_SystemDeviceProvider();
    if (String::equalNoCase(providerName, "ZAR_HostedAccessPointProvider"))
        return new ZAR_HostedAccessPointProvider();
    return 0;
}
