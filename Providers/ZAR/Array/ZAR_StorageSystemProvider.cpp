//%/////////////////////////////////////////////////////////////////////////////
// ZAR_StorageSystemProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_StorageSystemProvider.h"

#include <string.h>

#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>
#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_ArrayAccess.h>
#include <ZAR_ArrayRecords.h>
#include "ZAR_Common.h"
#include "ZAR_InternalCacheService.h"

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_StorageSystemProvider";

namespace {

const char* const _CLASS = ZAR_STORAGE_SYSTEM;

// Sets a property that the instance carries; one it lacks (left out by the
// class or by the property list) is skipped.
void _set(CIMInstance& instance, const char* name, const CIMValue& value)
{
    Uint32 pos = instance.findProperty(CIMName(name));
    if (pos != PEG_NOT_FOUND)
        instance.getProperty(pos).setValue(value);
}

}  // namespace

ZAR_StorageSystemProvider::ZAR_StorageSystemProvider() : ZAR_SystemObjectProviderBase(ClassName) {}

CIMObjectPath ZAR_StorageSystemProvider::buildObjectPath(const String& host,
                                                         const String& systemName)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("CreationClassName"), String(_CLASS), CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding(CIMName("Name"), systemName, CIMKeyBinding::STRING));
    return CIMObjectPath(host, CIMNamespaceName(ZAR_NAMESPACE), CIMName(_CLASS), keys);
}

void ZAR_StorageSystemProvider::_checkClass(const CIMObjectPath& path)
{
    const CIMName& name = path.getClassName();
    if (!name.equal(CIMName(_CLASS)) && !name.equal(CIMName("CIM_ComputerSystem")) &&
        !name.equal(CIMName("CIM_System"))) {
        throw CIMNotSupportedException(ClassName + " Invalid class name" + name.getString());
    }
}

void ZAR_StorageSystemProvider::_checkInstanceName(const CIMObjectPath& path,
                                                   const api_sysinfo_t& info)
{
    _checkKeyCount(path, 2, " Expect two keys.");
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    const String name = ZAR_ArrayRecords::field(info.name, sizeof(info.name));
    bool classMatches = false;
    bool nameMatches = false;
    for (Uint32 i = 0; i < keys.size(); i++) {
        if (keys[i].getName().equal(CIMName("CreationClassName")))
            classMatches = String::equalNoCase(keys[i].getValue(), _CLASS);
        else if (keys[i].getName().equal(CIMName("Name")))
            nameMatches = keys[i].getValue() == name;
    }
    if (!classMatches || !nameMatches)
        throw CIMObjectNotFoundException(ClassName + " CIM Object not found.");
}

CIMObjectPath ZAR_StorageSystemProvider::_buildInstanceName(const api_sysinfo_t& info)
{
    return buildObjectPath(ZAR_ArrayAccess::pathHostName(info),
                           ZAR_ArrayRecords::field(info.name, sizeof(info.name)));
}

CIMInstance ZAR_StorageSystemProvider::_buildInstance(const api_sysinfo_t& info,
                                                      const ReadRequest& request,
                                                      const char* operation)
{
    api_status_t status;
    api_ipaddr_t addr;
    if (ZAR_ArrayAccess::readSystemAddresses(&addr, &status) != 0) {
        _fail(operation, "api_getSystemDualIP", status);
    }
    String owner;
    String contact;
    if (ZAR_ArrayAccess::readOwnerAndContact(owner, contact, &status) != 0) {
        _fail(operation, "api_getOwnerName", status);
    }

    const String name = ZAR_ArrayRecords::field(info.name, sizeof(info.name));
    const String model = ZAR_ArrayRecords::field(info.model, sizeof(info.model));
    const String serial = ZAR_ArrayRecords::field(info.serial, sizeof(info.serial));
    const String hostName = ZAR_ArrayRecords::field(info.hostName, sizeof(info.hostName));

    CIMClass cls = ZAR_InternalCacheService::getInstance()->getStoredCIMClass(
        _cimom, OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), CIMName(_CLASS), false,
        request.includeQualifiers, request.includeClassOrigin, request.propertyList);
    CIMInstance instance = cls.buildInstance(true, true, CIMPropertyList());

    // Health follows the controller nodes: all alive is OK, some alive is
    // degraded, none alive is an error.
    Uint16 operational = 2;
    Uint16 health = 5;
    String statusText = "OK";
    if (info.nodesAlive == 0) {
        operational = 6;
        health = 25;
        statusText = "Error";
    } else if (info.nodesAlive < info.nodesTotal) {
        operational = 3;
        health = 10;
        statusText = "Degraded";
    }
    Array<Uint16> operationalStatus;
    operationalStatus.append(operational);
    Array<String> statusDescriptions;
    statusDescriptions.append(statusText);

    Array<Uint16> dedicated;
    dedicated.append(3);   // Storage
    dedicated.append(15);  // Block Server

    Array<String> identifying;
    Array<String> descriptions;
    if (hostName.size() != 0) {
        identifying.append(hostName);
        descriptions.append("Host Name");
    }
    String ipv4 = ZAR_ArrayAccess::ipv4Text(addr);
    if (ipv4.size() != 0) {
        identifying.append(ipv4);
        descriptions.append("Ipv4 Address");
    }
    String ipv6 = ZAR_ArrayAccess::ipv6Text(addr);
    if (ipv6.size() != 0) {
        identifying.append(ipv6);
        descriptions.append("Ipv6 Address");
    }
    if (serial.size() != 0) {
        identifying.append(serial);
        descriptions.append("Serial Number");
    }

    String description = String("Storage array ") + name;
    if (model.size() != 0)
        description = description + ", model " + model;
    if (serial.size() != 0)
        description = description + ", serial number " + serial;

    _set(instance, "CreationClassName", CIMValue(String(_CLASS)));
    _set(instance, "Name", CIMValue(name));
    _set(instance, "ElementName", CIMValue(name));
    _set(instance, "Caption", CIMValue(name));
    _set(instance, "Description", CIMValue(description));
    _set(instance, "NameFormat", CIMValue(String("Other")));
    _set(instance, "OperationalStatus", CIMValue(operationalStatus));
    _set(instance, "StatusDescriptions", CIMValue(statusDescriptions));
    _set(instance, "HealthState", CIMValue(health));
    _set(instance, "EnabledState", CIMValue(Uint16(2)));     // Enabled
    _set(instance, "RequestedState", CIMValue(Uint16(12)));  // Not Applicable
    _set(instance, "Dedicated", CIMValue(dedicated));
    _set(instance, "PrimaryOwnerName", CIMValue(owner));
    _set(instance, "PrimaryOwnerContact", CIMValue(contact));
    _set(instance, "OtherIdentifyingInfo", CIMValue(identifying));
    _set(instance, "IdentifyingDescriptions", CIMValue(descriptions));

    instance.setPath(buildObjectPath(ZAR_ArrayAccess::pathHostName(info), name));
    return instance;
}

PEGASUS_NAMESPACE_END
