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

void ZAR_SystemObjectProviderBase::_answer(const ReadRequest& request, const char* operation,
                                           const std::function<void(const api_sysinfo_t&)>& body)
{
    _traced(request.context, operation, [&]() {
        _checkClass(request.path);
        api_sysinfo_t info;
        _readSystemInfo(&info, operation);
        body(info);
    });
}

void ZAR_SystemObjectProviderBase::_getInstance(const ReadRequest& request,
                                                InstanceResponseHandler& handler)
{
    _answer(request, "getInstance", [&](const api_sysinfo_t& info) {
        _checkInstanceName(request.path, info);
        _deliverOne(handler, _buildInstance(info, request, "getInstance"));
    });
}

void ZAR_SystemObjectProviderBase::_enumerateInstances(const ReadRequest& request,
                                                       InstanceResponseHandler& handler)
{
    _answer(request, "enumerateInstances", [&](const api_sysinfo_t& info) {
        _deliverOne(handler, _buildInstance(info, request, "enumerateInstances"));
    });
}

void ZAR_SystemObjectProviderBase::_enumerateInstanceNames(const ReadRequest& request,
                                                           ObjectPathResponseHandler& handler)
{
    _answer(request, "enumerateInstanceNames",
            [&](const api_sysinfo_t& info) { _deliverOne(handler, _buildInstanceName(info)); });
}

PEGASUS_NAMESPACE_END
