//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIControllerProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_iSCSIControllerProvider.h"

#include <new>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_iSCSIControllerProvider";

namespace {

const Uint32 SPC_CHUNK = 200;
const char ISCSI_CONTROLLER[] = "ZAR_iSCSIController";

// Releases the view cursor of a request on every exit path (releasing
// twice is harmless).
class SPCCursor {
public:
    SPCCursor() { api_initSPCParamData(&_data); }
    ~SPCCursor() { api_freeSPCParamData(&_data); }
    api_spc_param_data* get() { return &_data; }

private:
    api_spc_param_data _data;
};

}  // namespace

ZAR_iSCSIControllerProvider::ZAR_iSCSIControllerProvider() : ZAR_ArrayProviderBase(ClassName) {}

ZAR_iSCSIControllerProvider::~ZAR_iSCSIControllerProvider() {}

CIMObjectPath ZAR_iSCSIControllerProvider::buildObjectPath(const String& systemCreationClassName,
                                                           const String& host,
                                                           const String& deviceID,
                                                           const String& systemName)
{
    return ZAR_Common::buildSPCObjectPath(systemCreationClassName, host, systemName, deviceID,
                                          CIMName(ISCSI_CONTROLLER));
}

template <class Deliver>
void ZAR_iSCSIControllerProvider::_walk(const OperationContext& context, Boolean includeQualifiers,
                                        Boolean includeClassOrigin,
                                        const CIMPropertyList& propertyList, Deliver deliver)
{
    String systemName, host;
    _identity(systemName, host, "walk");
    SPCCursor cursor;
    Uint32 more = 1;
    do {
        Array<CIMInstance> chunk;
        ZAR_Common::buildSPCInstances(_cimom, context, CIMObjectPath(), systemName, host,
                                      CIMName(ISCSI_CONTROLLER), includeQualifiers,
                                      includeClassOrigin, propertyList, 0, chunk, cursor.get(),
                                      &more, SPC_CHUNK);
        if (!deliver(chunk))
            return;
    } while (more != 0);
}

void ZAR_iSCSIControllerProvider::getInstance(const OperationContext& context,
                                              const CIMObjectPath& instanceReference,
                                              const Boolean includeQualifiers,
                                              const Boolean includeClassOrigin,
                                              const CIMPropertyList& propertyList,
                                              InstanceResponseHandler& handler)
{
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);
    String deviceID = ZAR_Common::getStringProperty(instanceReference, "DeviceID");
    if (deviceID.size() == 0)
        throw CIMInvalidParameterException(ClassName + " DeviceID key not found.");
    log_message(4, "Search deviceID = %s\n", (const char*)deviceID.getCString());

    CIMObjectPath wanted = _asClass(instanceReference, CIMName(ISCSI_CONTROLLER));
    handler.processing();
    Boolean found = false;
    _walk(context, includeQualifiers, includeClassOrigin, propertyList,
          [&](const Array<CIMInstance>& chunk) {
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
        log_message(2, "ZAR_iSCSIControllerProvider::getInstance, not found = %s\n",
                    (const char*)instanceReference.toString().getCString());
        throw CIMObjectNotFoundException(ClassName + instanceReference.toString());
    }
    handler.complete();
}

void ZAR_iSCSIControllerProvider::enumerateInstances(const OperationContext& context,
                                                     const CIMObjectPath& /* classReference */,
                                                     const Boolean includeQualifiers,
                                                     const Boolean includeClassOrigin,
                                                     const CIMPropertyList& propertyList,
                                                     InstanceResponseHandler& handler)
{
    log_message(4, "-->ZAR_iSCSIControllerProvider::enumerateInstances\n");
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);
    try {
        handler.processing();
        _walk(context, includeQualifiers, includeClassOrigin, propertyList,
              [&](const Array<CIMInstance>& chunk) {
                  if (chunk.size() != 0)
                      handler.deliver(chunk);
                  return true;
              });
        handler.complete();
    } catch (CIMException& e) {
        throw CIMOperationFailedException(
            ClassName + "::enumerateInstances - Operation failed: " + e.getMessage());
    } catch (std::bad_alloc&) {
        throw CIMOperationFailedException("Response too big");
    }
    log_message(4, "<--ZAR_iSCSIControllerProvider::enumerateInstances\n");
}

void ZAR_iSCSIControllerProvider::enumerateInstanceNames(const OperationContext& context,
                                                         const CIMObjectPath& /* classReference */,
                                                         ObjectPathResponseHandler& handler)
{
    log_message(4, "-->ZAR_iSCSIControllerProvider::enumerateInstanceNames\n");
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);
    try {
        handler.processing();
        _walk(context, false, false, CIMPropertyList(), [&](const Array<CIMInstance>& chunk) {
            for (Uint32 i = 0; i < chunk.size(); i++)
                handler.deliver(chunk[i].getPath());
            return true;
        });
        handler.complete();
    } catch (CIMException& e) {
        throw CIMOperationFailedException(
            ClassName + "::enumerateInstanceNames - Operation failed: " + e.getMessage());
    } catch (std::bad_alloc&) {
        throw CIMOperationFailedException("Response too big");
    }
    log_message(4, "<--ZAR_iSCSIControllerProvider::enumerateInstanceNames\n");
}

void ZAR_iSCSIControllerProvider::modifyInstance(const OperationContext& context,
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
