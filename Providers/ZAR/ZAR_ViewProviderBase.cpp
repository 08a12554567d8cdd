//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ViewProviderBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ViewProviderBase.h"

#include <new>

#include <Pegasus/Provider/ProviderException.h>

#include "ZAR_ArrayOwners.h"
#include "ZAR_Common.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

const Uint32 SPC_CHUNK = 200;

}  // namespace

ZAR_ViewProviderBase::ZAR_ViewProviderBase(const String& className, const char* viewClass)
    : ZAR_ProviderBase(className), _viewClass(viewClass), _maxInstCount(0)
{
}

ZAR_ViewProviderBase::~ZAR_ViewProviderBase() {}

CIMObjectPath ZAR_ViewProviderBase::_wanted(const CIMObjectPath& instanceReference)
{
    return instanceReference;
}

void ZAR_ViewProviderBase::_walk(const ReadRequest& request, const ChunkSink& sink)
{
    String systemName, host;
    _viewIdentity(systemName, host);
    ZAR_SPCCursor cursor;
    Uint32 more = 1;
    do {
        Array<CIMInstance> chunk;
        ZAR_Common::buildSPCInstances(_cimom, request.context, CIMObjectPath(), systemName, host,
                                      _viewClass, request.includeQualifiers,
                                      request.includeClassOrigin, request.propertyList,
                                      _maxInstCount, chunk, cursor.get(), &more, SPC_CHUNK);
        if (!sink(chunk))
            return;
    } while (more != 0);
}

void ZAR_ViewProviderBase::_getInstance(const ReadRequest& request,
                                        InstanceResponseHandler& handler)
{
    ZAR_Common::checkUserAccess(request.context, __FILE__, __LINE__);

    const Array<CIMKeyBinding>& keys = request.path.getKeyBindings();
    Boolean haveDeviceID = false;
    for (Uint32 i = 0; i < keys.size() && !haveDeviceID; i++) {
        if (keys[i].getName() == CIMName("DeviceID")) {
            log_message(4, "Search deviceID = %s\n", (const char*)keys[i].getValue().getCString());
            haveDeviceID = true;
        }
    }
    if (!haveDeviceID)
        throw CIMInvalidParameterException(_className + " DeviceID key not found.");

    CIMObjectPath wanted = _wanted(request.path);
    handler.processing();
    Boolean found = false;
    _walk(request, [&](const Array<CIMInstance>& chunk) {
        for (Uint32 i = 0; i < chunk.size(); i++) {
            if (ZAR_Common::matchObjectPath(wanted, chunk[i].getPath())) {
                handler.deliver(chunk[i]);
                found = true;
                return false;
            }
        }
        return true;
    });
    if (!found) {
        log_message(2, "%s::getInstance, not found = %s\n", _traceName(),
                    (const char*)request.path.toString().getCString());
        throw CIMObjectNotFoundException(_className + request.path.toString());
    }
    handler.complete();
}

void ZAR_ViewProviderBase::_enumerate(const OperationContext& context, const char* operation,
                                      const std::function<void()>& body)
{
    log_message(4, "-->%s::%s\n", _traceName(), operation);
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);
    try {
        body();
    } catch (CIMException& e) {
        throw CIMOperationFailedException(_className + "::" + operation +
                                          " - Operation failed: " + e.getMessage());
    } catch (std::bad_alloc&) {
        throw CIMOperationFailedException("Response too big");
    } catch (...) {
        throw CIMOperationFailedException("Unknown error");
    }
    log_message(4, "<--%s::%s\n", _traceName(), operation);
}

void ZAR_ViewProviderBase::_enumerateInstances(const ReadRequest& request,
                                               InstanceResponseHandler& handler)
{
    _enumerate(request.context, "enumerateInstances", [&]() {
        handler.processing();
        _walk(request, [&](const Array<CIMInstance>& chunk) {
            if (chunk.size() != 0)
                handler.deliver(chunk);
            return true;
        });
        handler.complete();
    });
}

void ZAR_ViewProviderBase::_enumerateInstanceNames(const ReadRequest& request,
                                                   ObjectPathResponseHandler& handler)
{
    _enumerate(request.context, "enumerateInstanceNames", [&]() {
        handler.processing();
        // An empty property list: the builder gives paths alone.
        const CIMPropertyList none{Array<CIMName>()};
        _walk({request.context, request.path, false, false, none},
              [&](const Array<CIMInstance>& chunk) {
                  for (Uint32 i = 0; i < chunk.size(); i++)
                      handler.deliver(chunk[i].getPath());
                  return true;
              });
        handler.complete();
    });
}

void ZAR_ViewProviderBase::modifyInstance(const OperationContext& context,
                                          const CIMObjectPath& instanceReference,
                                          const CIMInstance& instanceObject,
                                          const Boolean includeQualifiers,
                                          const CIMPropertyList& propertyList,
                                          ResponseHandler& handler)
{
    ZAR_Common::modifySPC(context, instanceReference, instanceObject, includeQualifiers,
                          propertyList, handler);
}

PEGASUS_NAMESPACE_END
