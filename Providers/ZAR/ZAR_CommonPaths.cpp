//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonPaths.cpp: host-insensitive path matching, checks of reference
// parameters, the array's addresses and the filters that answer
// association requests from association instances.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#include <arpa/inet.h>
#include <stdio.h>
#include <string.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

// Rewrites string and reference keys that hold object paths as reference
// keys whose paths carry no host. Values that do not parse as a path with
// keys (ordinary texts such as "abc" or "HS:17") stay as they are.
Array<CIMKeyBinding> _normaliseKeys(const Array<CIMKeyBinding>& keys)
{
    Array<CIMKeyBinding> result = keys;
    for (Uint32 i = 0; i < result.size(); i++) {
        CIMKeyBinding::Type type = result[i].getType();
        if (type != CIMKeyBinding::STRING && type != CIMKeyBinding::REFERENCE)
            continue;
        String text = result[i].getValue();
        if (text.size() == 0)
            continue;
        try {
            CIMObjectPath inner(text);
            if (inner.getKeyBindings().size() == 0)
                continue;
            CIMObjectPath rebuilt(String(), inner.getNameSpace(), inner.getClassName(),
                                  inner.getKeyBindings());
            result[i].setValue(rebuilt.toString());
            result[i].setType(CIMKeyBinding::REFERENCE);
        } catch (...) {
            // Not a path: an ordinary string key.
        }
    }
    return result;
}

// The path without host and namespace.
CIMObjectPath _localPath(const CIMObjectPath& path)
{
    return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(), path.getKeyBindings());
}

// Calls visit(name, path) for each reference property of an association
// instance that holds a path, in property order; stops when visit returns
// true, and returns whether it did.
template <class Visit>
Boolean _forEachReference(CIMInstance& assocInstance, Visit visit)
{
    for (Uint32 i = 0; i < assocInstance.getPropertyCount(); i++) {
        CIMProperty prop = assocInstance.getProperty(i);
        if (prop.getType() != CIMTYPE_REFERENCE)
            continue;
        CIMValue value = prop.getValue();
        if (value.isNull())
            continue;
        CIMObjectPath ref;
        value.get(ref);
        if (visit(prop.getName().getString(), ref))
            return true;
    }
    return false;
}

// The far-end rule shared by the two target filters: calls add(ref) once
// per acceptable match of each reference property.
template <class Add>
void _walkFarEnds(CIMInstance& assocInstance, const CIMObjectPath& objectName,
                  Array<CIMName>& resultClasses, const String& resultRole, Add add)
{
    _forEachReference(assocInstance, [&](const String& name, const CIMObjectPath& ref) {
        if (ZAR_Common::matchObjectPath(objectName, ref))
            return false;  // the near end
        Boolean roleOk = resultRole.size() == 0 || String::equalNoCase(resultRole, name);
        if (resultClasses.size() == 0) {
            if (roleOk)
                add(ref);
            return false;
        }
        for (Uint32 j = 0; j < resultClasses.size(); j++) {
            if (resultClasses[j].equal(ref.getClassName()) && roleOk)
                add(ref);
        }
        return false;
    });
}

}  // namespace

Boolean ZAR_Common::matchObjectPath(const CIMObjectPath& a, const CIMObjectPath& b)
{
    Array<CIMKeyBinding> keysA = _normaliseKeys(a.getKeyBindings());
    Array<CIMKeyBinding> keysB = _normaliseKeys(b.getKeyBindings());
    CIMObjectPath a2(String(), a.getNameSpace(), a.getClassName(), keysA);
    CIMObjectPath b2(String(), b.getNameSpace(), b.getClassName(), keysB);
    return a2.identical(b2);
}

Boolean ZAR_Common::verifyRefMethodParam(CIMObjectPath& ref, CIMNamespaceName nameSpace,
                                         String& hostName)
{
    if (ref.getNameSpace().isNull()) {
        ref.setNameSpace(nameSpace);
    } else if (!ref.getNameSpace().equal(nameSpace)) {
        log_message(2, "The ref param %s contains the wrong name space %s\n",
                    (const char*)ref.toString().getCString(),
                    (const char*)ref.getNameSpace().getString().getCString());
        return false;
    }

    const String& host = ref.getHost();
    if (host.size() == 0)
        return true;
    if (String::equalNoCase(host, hostName))
        return true;
    if (host == getSystemIPAddr(IP_TYPE_V4))
        return true;

    char canonical[46];
    memset(canonical, 0, sizeof(canonical));
    CString hostText = host.getCString();
    if (validateConvertIP((const char*)hostText, canonical, sizeof(canonical)) == API_IPV6_OK) {
        canonical[sizeof(canonical) - 1] = '\0';
        if (String(canonical) == getSystemIPAddr(IP_TYPE_V6))
            return true;
    }
    log_message(2, "The ref host [%s] does not match for this host!\n", (const char*)hostText);
    return false;
}

Boolean ZAR_Common::verifyRefMethodParam(CIMObjectPath& ref, CIMNamespaceName nameSpace,
                                         String& hostName, CIMName className)
{
    if (!verifyRefMethodParam(ref, nameSpace, hostName))
        return false;
    return ref.getClassName().equal(className);
}

Boolean ZAR_Common::verifyRefMethodParam(CIMObjectPath& ref, CIMNamespaceName nameSpace,
                                         String& hostName, Array<CIMName>& classNames)
{
    if (!verifyRefMethodParam(ref, nameSpace, hostName))
        return false;
    for (Uint32 i = 0; i < classNames.size(); i++) {
        if (ref.getClassName().equal(classNames[i]))
            return true;
    }
    return false;
}

String ZAR_Common::getSystemIPAddr(int iptype)
{
    static String ipv4;
    static String ipv6;

    if (iptype < IP_TYPE_V4 || iptype > IP_TYPE_V6) {
        log_message(2, "ZAR_Common, getSystemIPAddr: Invalid IP type parameter!\n");
        return String();
    }

    if (ipv4.size() == 0) {
        _api_ipaddr_t addr;
        memset(&addr, 0, sizeof(addr));
        int rc = -1;
        {
            ZAR_ArraySemaphore semaphore;
            if (semaphore.held())
                rc = api_getSystemDualIP(&addr);
        }
        if (rc == 0) {
            char text[128];
            if (inet_ntop(AF_INET, &addr.ipv4_addr, text, sizeof(text)))
                ipv4 = String(text);
            if (addr.dual_flag > 2 && inet_ntop(AF_INET6, &addr.ipv6_addr, text, sizeof(text))) {
                ipv6 = String(text);
            }
        }
    }
    return iptype == IP_TYPE_V4 ? ipv4 : ipv6;
}

Boolean ZAR_Common::_isInstanceValidReference(const CIMObjectPath& objectName,
                                              CIMInstance& assocInstance, const String& role)
{
    if (role.size() != 0) {
        Uint32 pos = PEG_NOT_FOUND;
        if (CIMName::legal(role))
            pos = assocInstance.findProperty(CIMName(role));
        if (pos == PEG_NOT_FOUND || assocInstance.getProperty(pos).getType() != CIMTYPE_REFERENCE) {
            throw CIMException(CIM_ERR_INVALID_PARAMETER, String());
        }
    }

    return _forEachReference(assocInstance, [&](const String& name, const CIMObjectPath& ref) {
        return (role.size() == 0 || String::equalNoCase(name, role)) &&
               matchObjectPath(objectName, _localPath(ref));
    });
}

Array<CIMInstance> ZAR_Common::filterReferenceNames(const Array<CIMInstance>& assocInstances,
                                                    const CIMObjectPath& objectName,
                                                    const CIMName& resultClass, const String& role)
{
    CIMObjectPath rebuilt = _localPath(objectName);
    Array<CIMInstance> result;
    for (Uint32 i = 0; i < assocInstances.size(); i++) {
        CIMInstance instance = assocInstances[i];
        if (!resultClass.isNull() && !resultClass.equal(instance.getClassName()))
            continue;
        if (_isInstanceValidReference(rebuilt, instance, role))
            result.append(instance);
    }
    return result;
}

Array<CIMObjectPath> ZAR_Common::filterAssocInstanceToTargetPaths(CIMInstance& assocInstance,
                                                                  const CIMObjectPath& objectName,
                                                                  Array<CIMName>& resultClasses,
                                                                  String resultRole)
{
    Array<CIMObjectPath> result;
    _walkFarEnds(assocInstance, objectName, resultClasses, resultRole,
                 [&](const CIMObjectPath& ref) { result.append(ref); });
    return result;
}

Array<CIMInstance> ZAR_Common::filterAssocInstanceToTargetInstances(
    CIMInstance& assocInstance, const CIMObjectPath& objectName,
    const Array<CIMInstance>& targetInstances, Array<CIMName>& resultClasses, String resultRole)
{
    Array<CIMInstance> result;
    _walkFarEnds(assocInstance, objectName, resultClasses, resultRole,
                 [&](const CIMObjectPath& ref) {
                     for (Uint32 k = 0; k < targetInstances.size(); k++) {
                         if (matchObjectPath(targetInstances[k].getPath(), ref))
                             result.append(targetInstances[k]);
                     }
                 });
    return result;
}

Boolean ZAR_Common::isPoolPath(const CIMObjectPath& path, const String& poolID)
{
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); i++) {
        if (String::equalNoCase(keys[i].getValue(), poolID))
            return true;
    }
    return false;
}

Boolean ZAR_Common::isPartOfArray(const String& x, const Array<String>& list)
{
    for (Uint32 i = 0; i < list.size(); i++) {
        if (String::equal(x, list[i]))
            return true;
    }
    return false;
}

Boolean ZAR_Common::isPartOfArray(const CIMObjectPath& x, const Array<CIMObjectPath>& list)
{
    for (Uint32 i = 0; i < list.size(); i++) {
        if (matchObjectPath(x, list[i]))
            return true;
    }
    return false;
}

Boolean ZAR_Common::isPartOfArray(const CIMObjectPath& x, const Array<CIMInstance>& list)
{
    for (Uint32 i = 0; i < list.size(); i++) {
        if (matchObjectPath(x, list[i].getPath()))
            return true;
    }
    return false;
}

Boolean ZAR_Common::isPartOfArray(const CIMName& x, const Array<CIMName>& list)
{
    for (Uint32 i = 0; i < list.size(); i++) {
        if (x.equal(list[i]))
            return true;
    }
    return false;
}

Boolean ZAR_Common::isClass(const CIMName& name, const char* className)
{
    return !name.isNull() && name.equal(CIMName(className));
}

Boolean ZAR_Common::isOneOf(const CIMName& name, const char* const* classNames)
{
    for (; *classNames; classNames++) {
        if (isClass(name, *classNames))
            return true;
    }
    return false;
}

CIMObjectPath ZAR_Common::buildFCEndpointPath(const String& className, const String& systemName,
                                              const String& portWWN)
{
    String name = portWWN;
    zar_u64 high = 0;
    zar_u64 low = 0;
    if (portWWN.size() != 0 && portWWN.size() <= 16 &&
        api_wwnStringToInt(NULL, (const char*)portWWN.getCString(), &high, &low) == 0) {
        char buffer[17];
        snprintf(buffer, sizeof(buffer), "%016llX", (unsigned long long)low);
        name = String(buffer);
    }
    return buildSystemScopedPath(String(), systemName, CIMName(className), "Name", name);
}

CIMObjectPath ZAR_Common::buildSystemScopedPath(const String& host, const String& systemName,
                                                const CIMName& className, const char* keyName,
                                                const String& keyValue, const String& systemClass)
{
    Array<CIMKeyBinding> keys;
    keys.append(
        CIMKeyBinding(CIMName("SystemCreationClassName"), systemClass, CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding(CIMName("SystemName"), systemName, CIMKeyBinding::STRING));
    keys.append(
        CIMKeyBinding(CIMName("CreationClassName"), className.getString(), CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding(CIMName(keyName), keyValue, CIMKeyBinding::STRING));
    return CIMObjectPath(host, CIMNamespaceName(ZAR_NAMESPACE), className, keys);
}

String ZAR_Common::extractISCSIName(const String& targetName)
{
    // iSCSI names hold no commas, so the first ",t," starts the suffix.
    for (Uint32 i = 0; i + 3 <= targetName.size(); i++) {
        if (targetName[i] == ',' && (targetName[i + 1] == 't' || targetName[i + 1] == 'T') &&
            targetName[i + 2] == ',') {
            return targetName.subString(0, i);
        }
    }
    return targetName;
}

PEGASUS_NAMESPACE_END
