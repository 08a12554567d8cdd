//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIControllerProviderMain.cpp: the module's entry point. The CIM
// server asks PegasusCreateProvider for each provider name it has
// registered for this module; names match regardless of letter case.
//%/////////////////////////////////////////////////////////////////////////////
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMProvider.h>

#include "ZAR_ConfigServicesForSCSIControllerProvider.h"
#include "ZAR_ControllerConfigurationServiceProvider.h"
#include "ZAR_ProtocolControllerMaskingCapProvider.h"
#include "ZAR_SCSIControllerProvider.h"
#include "ZAR_SystemControllerMaskingCapProvider.h"

PEGASUS_USING_PEGASUS;

// A new provider object for a known provider name, or 0. The server owns
// the object and ends it through terminate().
extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& providerName)
{
    if (String::equalNoCase(providerName, "ZAR_SCSIControllerProvider"))
        return new ZAR_SCSIControllerProvider();
    if (String::equalNoCase(providerName, "ZAR_ControllerConfigurationServiceProvider"))
        return new ZAR_ControllerConfigurationServiceProvider();
    if (String::equalNoCase(providerName, "ZAR_ProtocolControllerMaskingCapabilitiesProvider"))
        return new ZAR_ProtocolControllerMaskingCapabilitiesProvider();
    if (String::equalNoCase(providerName, "ZAR_SystemControllerMaskingCapabilitiesProvider"))
        return new ZAR_SystemControllerMaskingCapabilitiesProvider();
    if (String::equalNoCase(providerName, "ZAR_ConfigServicesForSCSIControllerProvider"))
        return new ZAR_ConfigServicesForSCSIControllerProvider();
    return 0;
}
