//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIControllerProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SCSIControllerProvider.h"

#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>
#include <Pegasus/Provider/ProviderException.h>

#include <new>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_SCSIControllerProvider";

namespace {

const Uint32 SPC_CHUNK = 200;
const char SCSI_CONTROLLER[] = "ZAR_SCSIController";

// Releases the view cursor of a request on every exit path (releasing
// twice is harmless).
class SPCCursor {
public:
    SPCCursor() { api_initSPCParamData(&_data); }
    ~SPCCursor() { release(); }
    void release() { api_freeSPCParamData(&_data); }
    api_spc_param_data* get() { return &_data; }

private:
    api_spc_param_data _data;
};

}  // namespace

ZAR_SCSIControllerProvider::ZAR_SCSIControllerProvider() : _maxInstCount(0) {}

ZAR_SCSIControllerProvider::ZAR_SCSIControllerProvider(const CIMObjectPath&) : _maxInstCount(0)
{
    throw CIMNotSupportedException(ClassName + " does not support constructor with object path.");
}

ZAR_SCSIControllerProvider::~ZAR_SCSIControllerProvider() {}

void ZAR_SCSIControllerProvider::initialize(CIMOMHandle& cimom)
{
    log_message(4, "-->ZAR_SCSIControllerProvider::initialize(cimom)\n");
    _cimom = cimom;
    if (api_zarOpenForCimserver(NULL) != 0) {
        log_message(2,
                    "ZAR_SCSIControllerProvider::initialize(): "
                    "api_zarOpenForCimserver failed\n");
    }
    _hostAddr = ZAR_Common::getSystemHostName(_cimom);
    _systemName = ZAR_Common::getSystemName(_cimom);
    _maxInstCount = ZAR_Common::getInstanceThreshold(70);
    log_message(4, "<--ZAR_SCSIControllerProvider::initialize(cimom)\n");
}

void ZAR_SCSIControllerProvider::terminate()
{
    delete this;
}

void ZAR_SCSIControllerProvider::getInstance(const OperationContext& context,
                                             const CIMObjectPath& instanceReference,
                                             const Boolean includeQualifiers,
                                             const Boolean includeClassOrigin,
                                             const CIMPropertyList& propertyList,
                                             InstanceResponseHandler& handler)
{
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);

    const Array<CIMKeyBinding>& keys = instanceReference.getKeyBindings();
    Boolean haveDeviceID = false;
    for (Uint32 i = 0; i < keys.size(); i++) {
        if (keys[i].getName() == CIMName("DeviceID")) {
            log_message(4, "Search deviceID = %s\n", (const char*)keys[i].getValue().getCString());
            haveDeviceID = true;
            break;
        }
    }
    if (!haveDeviceID) {
        throw CIMInvalidParameterException(ClassName + " DeviceID key not found.");
    }

    // The whole path is matched as given, its class included.
    const CIMObjectPath& wanted = instanceReference;

    SPCCursor cursor;
    handler.processing();
    Boolean found = false;
    Uint32 more = 1;
    String systemName = _systemName;
    String host = _hostAddr;
    do {
        Array<CIMInstance> chunk;
        ZAR_Common::buildSPCInstances(_cimom, context, CIMObjectPath(), systemName, host,
                                      CIMName(SCSI_CONTROLLER), includeQualifiers,
                                      includeClassOrigin, propertyList, _maxInstCount, chunk,
                                      cursor.get(), &more, SPC_CHUNK);
        for (Uint32 i = 0; i < chunk.size(); i++) {
            if (ZAR_Common::matchObjectPath(wanted, chunk[i].getPath())) {
                handler.deliver(chunk[i]);
                found = true;
                break;
            }
        }
    } while (more != 0 && !found);
    cursor.release();

    if (!found) {
        log_message(2, "ZAR_SCSIControllerProvider::getInstance, not found = %s\n",
                    (const char*)instanceReference.toString().getCString());
        throw CIMObjectNotFoundException(ClassName + instanceReference.toString());
    }
    handler.complete();
}

void ZAR_SCSIControllerProvider::enumerateInstances(const OperationContext& context,
                                                    const CIMObjectPath& /* classReference */,
                                                    const Boolean includeQualifiers,
                                                    const Boolean includeClassOrigin,
                                                    const CIMPropertyList& propertyList,
                                                    InstanceResponseHandler& handler)
{
    log_message(4, "-->ZAR_SCSIControllerProvider::enumerateInstances\n");
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);

    SPCCursor cursor;
    try {
        handler.processing();
        Uint32 more = 1;
        String systemName = _systemName;
        String host = _hostAddr;
        do {
            Array<CIMInstance> chunk;
            ZAR_Common::buildSPCInstances(_cimom, context, CIMObjectPath(), systemName, host,
                                          CIMName(SCSI_CONTROLLER), includeQualifiers,
                                          includeClassOrigin, propertyList, _maxInstCount, chunk,
                                          cursor.get(), &more, SPC_CHUNK);
            if (chunk.size() != 0)
                handler.deliver(chunk);
        } while (more != 0);
        handler.complete();
        cursor.release();
    } catch (CIMException& e) {
        cursor.release();
        throw CIMOperationFailedException(
            ClassName + "::enumerateInstances - Operation failed: " + e.getMessage());
    } catch (std::bad_alloc&) {
        cursor.release();
        throw CIMOperationFailedException("Response too big");
    } catch (...) {
        cursor.release();
        throw CIMOperationFailedException("Unknown error");
    }
    log_message(4, "<--ZAR_SCSIControllerProvider::enumerateInstances\n");
}

void ZAR_SCSIControllerProvider::enumerateInstanceNames(const OperationContext& context,
                                                        const CIMObjectPath& /* classReference */,
                                                        ObjectPathResponseHandler& handler)
{
    log_message(4, "-->ZAR_SCSIControllerProvider::enumerateInstanceNames\n");
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);

    SPCCursor cursor;
    try {
        handler.processing();
        Uint32 more = 1;
        String systemName = _systemName;
        String host = _hostAddr;
        do {
            Array<CIMInstance> chunk;
            ZAR_Common::buildSPCInstances(_cimom, context, CIMObjectPath(), systemName, host,
                                          CIMName(SCSI_CONTROLLER), false, false,
                                          CIMPropertyList(Array<CIMName>()), _maxInstCount, chunk,
                                          cursor.get(), &more, SPC_CHUNK);
            for (Uint32 i = 0; i < chunk.size(); i++)
                handler.deliver(chunk[i].getPath());
        } while (more != 0);
        handler.complete();
        cursor.release();
    } catch (CIMException& e) {
        cursor.release();
        throw CIMOperationFailedException(
            ClassName + "::enumerateInstanceNames - Operation failed: " + e.getMessage());
    } catch (std::bad_alloc&) {
        cursor.release();
        throw CIMOperationFailedException("Response too big");
    } catch (...) {
        cursor.release();
        throw CIMOperationFailedException("Unknown error");
    }
    log_message(4, "<--ZAR_SCSIControllerProvider::enumerateInstanceNames\n");
}

void ZAR_SCSIControllerProvider::modifyInstance(const OperationContext& context,
                                                const CIMObjectPath& instanceReference,
                                                const CIMInstance& instanceObject,
                                                const Boolean includeQualifiers,
                                                const CIMPropertyList& propertyList,
                                                ResponseHandler& handler)
{
    ZAR_Common::modifySPC(context, instanceReference, instanceObject, includeQualifiers,
                          propertyList, handler);
}

void ZAR_SCSIControllerProvider::createInstance(const OperationContext&, const CIMObjectPath&,
                                                const CIMInstance&, ObjectPathResponseHandler&)
{
    throw CIMNotSupportedException(ClassName + " does not support createInstance.");
}

void ZAR_SCSIControllerProvider::deleteInstance(const OperationContext&, const CIMObjectPath&,
                                                ResponseHandler&)
{
    throw CIMNotSupportedException(ClassName + " does not support deleteInstance.");
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
                                          CIMName(SCSI_CONTROLLER));
}

PEGASUS_NAMESPACE_END
