//%/////////////////////////////////////////////////////////////////////////////
// ZAR_InternalCacheProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_InternalCacheProvider.h"

#include <string.h>

#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>
#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_ArrayAccess.h>
#include <ZAR_ArrayRecords.h>
#include "ZAR_Common.h"
#include "ZAR_InternalCacheService.h"

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_InternalCacheProvider";

namespace {

const char* const _NAMESPACE = "root/PG_Internal";
const char* const _CLASS = "ZAR_InternalCache";
const char* const _SUFFIX = "-InternalCache";
// The system name under which the shared helpers address the object.
const char* const _LOCAL_NAME = "localhost";

}  // namespace

ZAR_InternalCacheProvider::ZAR_InternalCacheProvider() : ZAR_SystemObjectProviderBase(ClassName) {}

void ZAR_InternalCacheProvider::_checkClass(const CIMObjectPath& path)
{
    if (!path.getClassName().equal(CIMName(_CLASS))) {
        throw CIMNotSupportedException(ClassName + " Invalid class name" +
                                       path.getClassName().getString());
    }
}

void ZAR_InternalCacheProvider::_checkInstanceName(const CIMObjectPath& path,
                                                   const api_sysinfo_t& info)
{
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    if (keys.size() != 1) {
        log_message(2,
                    "ZAR_InternalCacheProvider: Invalid number of keys "
                    "(%u)\n",
                    (unsigned)keys.size());
        throw CIMInvalidParameterException(ClassName + " Expect only one key.");
    }
    const String own = ZAR_ArrayRecords::field(info.name, sizeof(info.name)) + _SUFFIX;
    const String local = String(_LOCAL_NAME) + _SUFFIX;
    const String& value = keys[0].getValue();
    if (!keys[0].getName().equal(CIMName("InstanceID")) ||
        !(String::equalNoCase(value, own) || String::equalNoCase(value, local))) {
        throw CIMObjectNotFoundException(ClassName + " CIM Object not found.");
    }
}

CIMObjectPath ZAR_InternalCacheProvider::_buildInstanceName(const api_sysinfo_t& info)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("InstanceID"),
                              ZAR_ArrayRecords::field(info.name, sizeof(info.name)) + _SUFFIX,
                              CIMKeyBinding::STRING));
    return CIMObjectPath(ZAR_ArrayAccess::pathHostName(info), CIMNamespaceName(_NAMESPACE),
                         CIMName(_CLASS), keys);
}

CIMInstance ZAR_InternalCacheProvider::_buildInstance(const api_sysinfo_t& info,
                                                      const ReadRequest& request,
                                                      const char* /* operation */)
{
    CIMClass cls = ZAR_InternalCacheService::getInstance()->getStoredCIMClass(
        _cimom, OperationContext(), CIMNamespaceName(_NAMESPACE), CIMName(_CLASS), false,
        request.includeQualifiers, request.includeClassOrigin, request.propertyList);
    CIMInstance instance = cls.buildInstance(true, true, CIMPropertyList());
    CIMObjectPath path = _buildInstanceName(info);
    Uint32 pos = instance.findProperty(CIMName("InstanceID"));
    if (pos != PEG_NOT_FOUND) {
        instance.getProperty(pos).setValue(
            CIMValue(ZAR_ArrayRecords::field(info.name, sizeof(info.name)) + _SUFFIX));
    }
    instance.setPath(path);
    return instance;
}

void ZAR_InternalCacheProvider::invokeMethod(const OperationContext& context,
                                             const CIMObjectPath& objectReference,
                                             const CIMName& methodName, const Array<CIMParamValue>&,
                                             MethodResultResponseHandler& handler)
{
    _traced(context, "invokeMethod", [&]() {
        _checkClass(objectReference);
        CString method = methodName.getString().getCString();
        log_message(4, "\t methodName = %s\n", (const char*)method);

        api_sysinfo_t info;
        _readSystemInfo(&info, "invokeMethod");
        _checkInstanceName(objectReference, info);

        CIMParamValue out;
        if (methodName.equal(CIMName("GetSystemName"))) {
            out = CIMParamValue("SystemName",
                                CIMValue(ZAR_ArrayRecords::field(info.name, sizeof(info.name))));
        } else if (methodName.equal(CIMName("GetSystemID"))) {
            out = CIMParamValue("SystemID", CIMValue(Uint32(info.systemID)));
        } else if (methodName.equal(CIMName("GetSystemType"))) {
            out = CIMParamValue("SystemType", CIMValue(Sint32(info.systemType)));
        } else if (methodName.equal(CIMName("IsQuadPortSystem"))) {
            out = CIMParamValue("IsQuadPort", CIMValue(Uint8(info.quadPort != 0 ? 1 : 0)));
        } else if (methodName.equal(CIMName("GetSystemHostName"))) {
            out = CIMParamValue("SystemHostName", CIMValue(ZAR_ArrayRecords::field(
                                                      info.hostName, sizeof(info.hostName))));
        } else if (methodName.equal(CIMName("GetSystemAddress"))) {
            api_ipaddr_t addr;
            api_status_t status;
            if (ZAR_ArrayAccess::readSystemAddresses(&addr, &status) != 0)
                _fail("invokeMethod", "api_getSystemDualIP", status);
            String address = ZAR_ArrayAccess::ipv4Text(addr);
            if (address.size() == 0)
                address = ZAR_ArrayAccess::ipv6Text(addr);
            out = CIMParamValue("SystemAddress", CIMValue(address));
        } else {
            log_message(2,
                        "ZAR_InternalCacheProvider::invokeMethod: unknown "
                        "method %s\n",
                        (const char*)method);
            throw CIMMethodNotFoundException(ClassName + " Invalid method name " +
                                             methodName.getString());
        }

        handler.processing();
        handler.deliverParamValue(out);
        handler.deliver(CIMValue(Uint32(0)));
        handler.complete();
    });
}

PEGASUS_NAMESPACE_END
