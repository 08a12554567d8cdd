//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIControllerProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_iSCSIControllerProvider.h"

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

CIMObjectPath ZAR_iSCSIControllerProvider::buildObjectPath(
    const String& systemCreationClassName, const String& host,
    const String& deviceID, const String& systemName)
{
    return ZAR_Common::buildSPCObjectPath(systemCreationClassName, host,
        systemName, deviceID, CIMName("ZAR_iSCSIController"));
}

PEGASUS_NAMESPACE_END
