//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIControllerProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_iSCSIControllerProvider.h"

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_iSCSIControllerProvider";

ZAR_iSCSIControllerProvider::ZAR_iSCSIControllerProvider()
    : ZAR_ViewProviderBase(ClassName, ZAR_ISCSI_CONTROLLER)
{
}

CIMObjectPath ZAR_iSCSIControllerProvider::buildObjectPath(const String& systemCreationClassName,
                                                           const String& host,
                                                           const String& deviceID,
                                                           const String& systemName)
{
    return ZAR_Common::buildSPCObjectPath(systemCreationClassName, host, systemName, deviceID,
                                          CIMName(ZAR_ISCSI_CONTROLLER));
}

void ZAR_iSCSIControllerProvider::_viewIdentity(String& systemName, String& host)
{
    _identity(systemName, host, "walk");
}

CIMObjectPath ZAR_iSCSIControllerProvider::_wanted(const CIMObjectPath& instanceReference)
{
    return _asClass(instanceReference, CIMName(ZAR_ISCSI_CONTROLLER));
}

PEGASUS_NAMESPACE_END
