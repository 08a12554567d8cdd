//%/////////////////////////////////////////////////////////////////////////////
// ZAR_InstanceListProviderBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_InstanceListProviderBase.h"

#include <Pegasus/Provider/ProviderException.h>

#include "ZAR_Common.h"

PEGASUS_NAMESPACE_BEGIN

ZAR_InstanceListProviderBase::ZAR_InstanceListProviderBase(
    const String& className, const char* traceName, const char* ownClass, const char* cimClass,
    Uint32 keyCount, const char* keyCountText, const Traces& traces)
    : ZAR_ProviderBase(className, traceName),
      _ownClass(ownClass),
      _cimClass(cimClass),
      _keyCount(keyCount),
      _keyCountText(keyCountText),
      _traces(traces)
{
}

void ZAR_InstanceListProviderBase::_getInstance(const ReadRequest& request,
                                                InstanceResponseHandler& handler)
{
    log_message(4, "%s", _traces.getInstanceEntry);
    ZAR_Common::checkUserAccess(request.context, __FILE__, __LINE__);
    _checkClassName(request.path.getClassName(), _ownClass, _cimClass);
    _checkKeyCount(request.path, _keyCount, _keyCountText);
    CIMInstance found;
    if (!_findInstance(request, found))
        throw CIMObjectNotFoundException(_className + " CIM Object not found.");
    _deliverOne(handler, found);
    log_message(4, "%s", _traces.getInstanceExit);
}

void ZAR_InstanceListProviderBase::_enumerateInstances(const ReadRequest& request,
                                                       InstanceResponseHandler& handler)
{
    _enumerateFrame(request.context, request.path, _ownClass, _cimClass, _traces.enumerateEntry,
                    _traces.enumerateExit, [&]() {
                        Array<CIMInstance> instances = _listInstances(request);
                        handler.processing();
                        for (Uint32 i = 0; i < instances.size(); i++)
                            handler.deliver(instances[i]);
                        handler.complete();
                    });
}

void ZAR_InstanceListProviderBase::_enumerateInstanceNames(const ReadRequest& request,
                                                           ObjectPathResponseHandler& handler)
{
    _enumerateFrame(request.context, request.path, _ownClass, _cimClass, _traces.namesEntry,
                    _traces.namesExit, [&]() {
                        Array<CIMObjectPath> paths = _listInstanceNames(request.context);
                        handler.processing();
                        for (Uint32 i = 0; i < paths.size(); i++)
                            handler.deliver(paths[i]);
                        handler.complete();
                    });
}

PEGASUS_NAMESPACE_END
