//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SystemObjectProviderBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SystemObjectProviderBase.h"

#include <ZAR_ArrayAccess.h>
#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

ZAR_SystemObjectProviderBase::ZAR_SystemObjectProviderBase(const String& className)
    : ZAR_ProviderBase(className)
{
}

void ZAR_SystemObjectProviderBase::_readSystemInfo(api_sysinfo_t* info, const char* operation)
{
    api_status_t status;
    if (ZAR_ArrayAccess::readSystemInfo(info, &status) != 0)
        _fail(operation, "api_getSystemInfo", status);
}

void ZAR_SystemObjectProviderBase::getInstance(const OperationContext& context,
                                               const CIMObjectPath& instanceReference,
                                               const Boolean includeQualifiers,
                                               const Boolean includeClassOrigin,
                                               const CIMPropertyList& propertyList,
                                               InstanceResponseHandler& handler)
{
    _traced(context, "getInstance", [&]() {
        _checkClass(instanceReference);
        api_sysinfo_t info;
        _readSystemInfo(&info, "getInstance");
        _checkInstanceName(instanceReference, info);
        _deliverOne(handler, _buildInstance(info, includeQualifiers, includeClassOrigin,
                                            propertyList, "getInstance"));
    });
}

void ZAR_SystemObjectProviderBase::enumerateInstances(const OperationContext& context,
                                                      const CIMObjectPath& classReference,
                                                      const Boolean includeQualifiers,
                                                      const Boolean includeClassOrigin,
                                                      const CIMPropertyList& propertyList,
                                                      InstanceResponseHandler& handler)
{
    _traced(context, "enumerateInstances", [&]() {
        _checkClass(classReference);
        api_sysinfo_t info;
        _readSystemInfo(&info, "enumerateInstances");
        _deliverOne(handler, _buildInstance(info, includeQualifiers, includeClassOrigin,
                                            propertyList, "enumerateInstances"));
    });
}

void ZAR_SystemObjectProviderBase::enumerateInstanceNames(const OperationContext& context,
                                                          const CIMObjectPath& classReference,
                                                          ObjectPathResponseHandler& handler)
{
    _traced(context, "enumerateInstanceNames", [&]() {
        _checkClass(classReference);
        api_sysinfo_t info;
        _readSystemInfo(&info, "enumerateInstanceNames");
        _deliverOne(handler, _buildInstanceName(info));
    });
}

PEGASUS_NAMESPACE_END
