//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonIdentity.cpp: the storage system's identity, asked of the
// internal cache object and the system providers through the CIM server,
// and the internal cache service's policy word.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#include <Pegasus/Client/CIMClient.h>

#include <InternalCacheService/ZAR_InternalCacheService.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

const char INTERNAL_NAMESPACE[] = "root/PG_Internal";

// Calls a method of the internal cache object through the local client and,
// when allowed, through the handle if the local call fails. Returns the
// output parameters.
Array<CIMParamValue> _askCache(CIMOMHandle* handle, const char* methodName)
{
    CIMObjectPath path = ZAR_Common::buildInternalCacheObjectPath("localhost", "localhost");
    Array<CIMParamValue> in;
    Array<CIMParamValue> out;
    if (handle == 0) {
        ZAR_Common::invokeMethod(CIMNamespaceName(INTERNAL_NAMESPACE), path, CIMName(methodName),
                                 in, out);
        return out;
    }
    try {
        ZAR_Common::invokeMethod(CIMNamespaceName(INTERNAL_NAMESPACE), path, CIMName(methodName),
                                 in, out);
    } catch (...) {
        out.clear();
        handle->invokeMethod(OperationContext(), CIMNamespaceName(INTERNAL_NAMESPACE), path,
                             CIMName(methodName), in, out);
    }
    return out;
}

// Reads the first output parameter when it has the expected name and a
// value; otherwise leaves result as it is.
template <class T>
void _readOutput(const Array<CIMParamValue>& out, const char* name, T& result)
{
    if (out.size() == 0)
        return;
    if (!String::equalNoCase(out[0].getParameterName(), name))
        return;
    CIMValue value = out[0].getValue();
    if (value.isNull())
        return;
    value.get(result);
}

// The shared steps of getSystemObjectPath and its two relatives.
struct SystemPathQuery {
    const char* className;
    const char* label;        // "getSystemObjectPath" ...
    const char* missingText;  // "cannot get at system object path\n"
    bool traceEntryExit;
    bool guardHandleCall;
};

CIMObjectPath _findSystemPath(CIMOMHandle& handle, const SystemPathQuery& q)
{
    if (q.traceEntryExit)
        log_message(4, "-->ZAR_Common::%s()\n", q.label);

    Array<CIMObjectPath> names;
    bool retry = false;
    try {
        names = ZAR_Common::enumerateInstanceNames(CIMNamespaceName(ZAR_NAMESPACE),
                                                   CIMName(q.className));
    } catch (Exception& e) {
        log_message(2, "ZAR_Common::%s: %s. Trying via cimom.\n", q.label,
                    (const char*)e.getMessage().getCString());
        retry = true;
    } catch (...) {
        log_message(2, "ZAR_Common::%s: Unknown exception! Trying via cimom\n", q.label);
        retry = true;
    }

    if (retry) {
        if (!q.guardHandleCall) {
            names = handle.enumerateInstanceNames(
                OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), CIMName(q.className));
        } else {
            try {
                names = handle.enumerateInstanceNames(
                    OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), CIMName(q.className));
            } catch (Exception& e) {
                log_message(2, "ZAR_Common::%s: %s.\n", q.label,
                            (const char*)e.getMessage().getCString());
                names.clear();
            } catch (...) {
                log_message(2, "ZAR_Common::%s: Unknown exception in cimom!\n", q.label);
                names.clear();
            }
        }
    }

    if (names.size() == 0) {
        log_message(2, "%s", q.missingText);
        return CIMObjectPath();
    }

    CIMObjectPath path = names[0];
    path.setHost(ZAR_Common::getSystemHostName(handle));
    path.setNameSpace(CIMNamespaceName(ZAR_NAMESPACE));
    if (q.traceEntryExit)
        log_message(4, "<--ZAR_Common::%s()\n", q.label);
    return path;
}

}  // namespace

Array<CIMObjectPath> ZAR_Common::enumerateInstanceNames(const CIMNamespaceName& nameSpace,
                                                        const CIMName& className)
{
    log_message(4, "-->ZAR_Common::enumerateInstanceNames()\n");
    CIMClient client;
    client.connectLocal();
    Array<CIMObjectPath> names = client.enumerateInstanceNames(nameSpace, className);
    client.disconnect();
    log_message(4, "<--ZAR_Common::enumerateInstanceNames()\n");
    return names;
}

CIMValue ZAR_Common::invokeMethod(const CIMNamespaceName& nameSpace,
                                  const CIMObjectPath& instanceName, const CIMName& methodName,
                                  const Array<CIMParamValue>& inParameters,
                                  Array<CIMParamValue>& outParameters)
{
    log_message(4, "-->ZAR_Common::invokeMethod()\n");
    CIMClient client;
    client.connectLocal();
    CIMValue rc =
        client.invokeMethod(nameSpace, instanceName, methodName, inParameters, outParameters);
    client.disconnect();
    log_message(4, "<--ZAR_Common::invokeMethod()\n");
    return rc;
}

CIMObjectPath ZAR_Common::buildInternalCacheObjectPath(const String& host, const String& systemName)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("InstanceID"), systemName + String("-InternalCache"),
                              CIMKeyBinding::STRING));
    return CIMObjectPath(host, CIMNamespaceName(INTERNAL_NAMESPACE), CIMName("ZAR_InternalCache"),
                         keys);
}

String ZAR_Common::getSystemName(CIMOMHandle& handle)
{
    String result;
    _readOutput(_askCache(&handle, "GetSystemName"), "SystemName", result);
    return result;
}

String ZAR_Common::getSystemName()
{
    String result;
    _readOutput(_askCache(0, "GetSystemName"), "SystemName", result);
    return result;
}

Uint32 ZAR_Common::getSystemID()
{
    Uint32 result = 0;
    _readOutput(_askCache(0, "GetSystemID"), "SystemID", result);
    return result;
}

Sint32 ZAR_Common::getSystemType()
{
    Sint32 result = 0;
    _readOutput(_askCache(0, "GetSystemType"), "SystemType", result);
    return result;
}

Boolean ZAR_Common::isQuadPortSystem(CIMOMHandle& handle)
{
    Uint8 result = 0;
    _readOutput(_askCache(&handle, "IsQuadPortSystem"), "IsQuadPort", result);
    return result != 0;
}

String ZAR_Common::getSystemHostName(CIMOMHandle& /* handle */)
{
    // No fallback through the handle: errors of the local call propagate.
    String result;
    _readOutput(_askCache(0, "GetSystemHostName"), "SystemHostName", result);
    if (result.size() != 0 && api_isAllNumeric((const char*)result.getCString())) {
        result = String("_") + result;
    }
    return result;
}

String ZAR_Common::getSystemAddress(CIMOMHandle& handle)
{
    String result;
    _readOutput(_askCache(&handle, "GetSystemAddress"), "SystemAddress", result);
    return result;
}

CIMObjectPath ZAR_Common::getSystemObjectPath(CIMOMHandle& handle)
{
    static const SystemPathQuery q = {ZAR_STORAGE_SYSTEM, "getSystemObjectPath",
                                      "cannot get at system object path\n", true, false};
    return _findSystemPath(handle, q);
}

CIMObjectPath ZAR_Common::getSystemPkgObjectPath(CIMOMHandle& handle)
{
    static const SystemPathQuery q = {"ZAR_SystemPackage", "getSystemPkgObjectPath",
                                      "cannot get at system pkg object path\n", false, true};
    return _findSystemPath(handle, q);
}

CIMObjectPath ZAR_Common::getSystemViewObjectPath(CIMOMHandle& handle)
{
    static const SystemPathQuery q = {"ZAR_StorageSystemView", "getSystemViewObjectPath",
                                      "cannot get at system view object path\n", true, true};
    return _findSystemPath(handle, q);
}

Uint32 ZAR_Common::getPolicy()
{
    return ZAR_InternalCacheService::getInstance()->getPolicy();
}

void ZAR_Common::setPolicy(Uint32 policy)
{
    ZAR_InternalCacheService::getInstance()->setPolicy(policy);
}

PEGASUS_NAMESPACE_END
