//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIControllerProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SCSIControllerProvider.h"

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_SCSIControllerProvider";

ZAR_SCSIControllerProvider::ZAR_SCSIControllerProvider()
    : ZAR_ViewProviderBase(ClassName, ZAR_SCSI_CONTROLLER)
{
}

ZAR_SCSIControllerProvider::ZAR_SCSIControllerProvider(const CIMObjectPath&)
    : ZAR_ViewProviderBase(ClassName, ZAR_SCSI_CONTROLLER)
{
    throw CIMNotSupportedException(ClassName + " does not support constructor with object path.");
}

ZAR_SCSIControllerProvider::~ZAR_SCSIControllerProvider() {}

void ZAR_SCSIControllerProvider::initialize(CIMOMHandle& cimom)
{
    log_message(4, "-->ZAR_SCSIControllerProvider::initialize(cimom)\n");
    _open(cimom);
    _hostAddr = ZAR_Common::getSystemHostName(_cimom);
    _systemName = ZAR_Common::getSystemName(_cimom);
    _maxInstCount = ZAR_Common::getInstanceThreshold(70);
    log_message(4, "<--ZAR_SCSIControllerProvider::initialize(cimom)\n");
}

void ZAR_SCSIControllerProvider::_viewIdentity(String& systemName, String& host)
{
    systemName = _systemName;
    host = _hostAddr;
}

CIMInstance ZAR_SCSIControllerProvider::buildInstance(String systemCreationClassName, CIMClass cls,
                                                      vlun* record, const String& systemName,
                                                      const String& host)
{
    return ZAR_Common::buildSPCInstance(systemCreationClassName, cls, record, systemName, host);
}

CIMObjectPath ZAR_SCSIControllerProvider::buildObjectPath(String systemCreationClassName,
                                                          const String& host,
                                                          const String& systemName,
                                                          const String& deviceID)
{
    return ZAR_Common::buildSPCObjectPath(systemCreationClassName, host, systemName, deviceID,
                                          CIMName(ZAR_SCSI_CONTROLLER));
}

PEGASUS_NAMESPACE_END
