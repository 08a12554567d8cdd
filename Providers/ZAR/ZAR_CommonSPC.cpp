//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonSPC.cpp: view (SPC) instances assembled from the array's view
// records, one chunk at a time.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"
#include <ZAR_ArrayRecords.h>

#include <stdio.h>
#include <string.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

const char OTHER_NAME_FORMAT[] =
    "Name (and DeviceID) is constructed in the following format:\n"
    " MS:<port LPID>:<host id>  for matched set vlun\n"
    " HS:<host id>  for host see vlun\n"
    " PP:<port LPID>  for port present vlun";

// A text field of an array record (terminated inside its array).
String _field(const char* text, size_t size)
{
    return String(text, (Uint32)strnlen(text, size));
}

// The initiator name of the first path of the wanted type of host
// hostName: the WWN as 16 upper-case hexadecimal digits for Fibre Channel,
// the iSCSI name for iSCSI. Empty when the host has none or the array
// cannot be asked.
String _firstPathName(const String& hostName, port_type_t type)
{
    String result;
    if (hostName.size() == 0)
        return result;
    api_status_t status;
    api_hardwareID* list = 0;
    zar_u32 count = 0;
    CString host = hostName.getCString();
    int rc = ZAR_Common::guardedCall(&status, [&]() {
        return api_getHostPaths(NULL, NULL, (const char*)host, &count, &list, 0);
    });
    if (rc != 0)
        return result;
    for (zar_u32 i = 0; i < count; i++) {
        if (list[i].pathInfo.type != type)
            continue;
        if (type == PORT_TYPE_FC) {
            char text[17];
            snprintf(text, sizeof(text), "%016llX", (unsigned long long)list[i].pathInfo.wwn);
            result = String(text);
        } else {
            result = _field(list[i].pathInfo.iscsiName, sizeof(list[i].pathInfo.iscsiName));
        }
        break;
    }
    api_freeHostPaths(list);
    return result;
}

}  // namespace

void ZAR_Common::buildSPCInstances(CIMOMHandle& cimom, const OperationContext& /* context */,
                                   const CIMObjectPath& path, String& systemName, String& host,
                                   CIMName className, bool includeQualifiers,
                                   bool includeClassOrigin, const CIMPropertyList& propertyList,
                                   Uint32 /* threshold: the chunk size bounds the work of a call */,
                                   Array<CIMInstance>& instances, api_spc_param_data* cursor,
                                   Uint32* more, Uint32 chunk)
{
    port_type_t wantedType;
    if (className.equal(CIMName(ZAR_SCSI_CONTROLLER)))
        wantedType = PORT_TYPE_FC;
    else if (className.equal(CIMName(ZAR_ISCSI_CONTROLLER)))
        wantedType = PORT_TYPE_ISCSI;
    else
        return;

    CIMClass cls =
        getStoredCIMClass(cimom, OperationContext(), CIMNamespaceName(ZAR_NAMESPACE), className,
                          false, includeQualifiers, includeClassOrigin, propertyList);

    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    Boolean narrowed = false;
    String requestedID;
    if (!path.getClassName().isNull()) {
        requestedID = getStringProperty(path, "DeviceID");
        if (requestedID.size() == 0)
            return;
        Uint32 vlunType = 0;
        String hostName;
        Uint16 port = API_PORT_NONE;
        deReferenceSPCDeviceID(requestedID, vlunType, hostName, port, false);
        log_message(4, "vlunType = %d, host = %s\n", (int)vlunType,
                    (const char*)hostName.getCString());
        ZAR_ArrayRecords::narrow(query, hostName, vlunType, port);
        narrowed = true;
    }

    api_status_t status;
    zar_u32 moreFlag = *more;
    int rc = guardedCall(&status, [&]() {
        return api_getSCSIProtocolControllers_chunk(&query, cursor, &moreFlag, chunk);
    });
    *more = moreFlag;
    if (rc != 0) {
        log_message(2,
                    "ZAR_Common::buildSPCInstances ()  "
                    "api_getSCSIProtocolControllers_chunk failed, status = %d\n",
                    rc);
        if (chunk == 0)
            return;
        api_freeVLUNs(&query);
        api_freeSPCParamData(cursor);
        if (*more == 0)
            return;
        char text[513];
        api_getErrorTextNoNL(text, sizeof(text), &status);
        throw CIMException(CIM_ERR_INVALID_PARAMETER,
                           String("Failed to retrieve SPC data. ") + String(text));
    }

    // An empty property list without qualifiers or class origins asks for
    // nothing but the path (what a caller enumerating names needs): the
    // instances carry their paths alone, as the server would have trimmed
    // them to anyway.
    const bool pathsOnly = !propertyList.isNull() && propertyList.size() == 0 &&
                           !includeQualifiers && !includeClassOrigin;
    Uint32 appended = 0;
    try {
        for (zar_u32 i = 0; i < query.count; i++) {
            vlun* record = &query.vluns[i];
            if (record->deviceID[0] == '\0')
                continue;
            if (record->hporttype != wantedType)
                continue;
            if (narrowed && !String::equalNoCase(_field(record->deviceID, sizeof(record->deviceID)),
                                                 requestedID)) {
                continue;
            }
            if (pathsOnly) {
                CIMInstance named(className);
                named.setPath(buildSPCObjectPath(String(ZAR_STORAGE_SYSTEM), host, systemName,
                                                 _field(record->deviceID, sizeof(record->deviceID)),
                                                 className));
                instances.append(named);
            } else {
                instances.append(
                    buildSPCInstance(String(ZAR_STORAGE_SYSTEM), cls, record, systemName, host));
            }
            appended++;
        }
    } catch (...) {
        api_freeVLUNs(&query);
        api_freeSPCParamData(cursor);
        log_message(2,
                    "<--ZAR_Common::buildSPCInstances: exception thrown while "
                    "building instances, # of instances assembled so far = %u\n",
                    appended);
        throw;
    }
    api_freeVLUNs(&query);
}

CIMInstance ZAR_Common::buildSPCInstance(String systemCreationClassName, CIMClass cls, vlun* record,
                                         const String& systemName, const String& host)
{
    CIMName className = cls.getClassName();
    String deviceID = _field(record->deviceID, sizeof(record->deviceID));
    String hostName = _field(record->hostname, sizeof(record->hostname));
    bool portPresent = record->accessPriority == API_VLUN_PORT_PRESENT;

    String name;
    Uint16 nameFormat = 0;
    // The initiator the record names, else the host's first path of the
    // protocol; the target port for a port-present view.
    auto initiator = [&](const String& given, port_type_t type) {
        return given.size() != 0 ? given : _firstPathName(hostName, type);
    };
    if (className.equal(CIMName(ZAR_SCSI_CONTROLLER))) {
        nameFormat = 2;
        name = portPresent
                   ? _field(record->portwwn, sizeof(record->portwwn))
                   : initiator(_field(record->hostwwn, sizeof(record->hostwwn)), PORT_TYPE_FC);
    } else if (className.equal(CIMName(ZAR_ISCSI_CONTROLLER))) {
        nameFormat = 3;
        name = portPresent ? _field(record->portiscsiname, sizeof(record->portiscsiname))
                           : initiator(_field(record->hostiscsiname, sizeof(record->hostiscsiname)),
                                       PORT_TYPE_ISCSI);
    }

    Uint16 opStatus = record->isTemplate ? 15 : 2;
    Array<Uint16> operationalStatus;
    operationalStatus.append(opStatus);
    Array<String> statusDescriptions;
    statusDescriptions.append(String(opStatus == 15 ? "Dormant" : "OK"));

    CIMInstance instance = buildInstanceSkeleton(cls);
    setPropertyValue(instance, "SystemCreationClassName", systemCreationClassName);
    setPropertyValue(instance, "SystemName", systemName);
    setPropertyValue(instance, "CreationClassName", className.getString());
    setPropertyValue(instance, "DeviceID", deviceID);
    setPropertyValue(instance, "ElementName", hostName);
    setPropertyValue(instance, "Name", name);
    setPropertyValue(instance, "NameFormat", nameFormat);
    setPropertyValue(instance, "OtherNameFormat", String(OTHER_NAME_FORMAT));
    setPropertyValue(instance, "OperationalStatus", operationalStatus);
    setPropertyValue(instance, "StatusDescriptions", statusDescriptions);
    setPropertyValue(instance, "HealthState", Uint16(5));

    instance.setPath(
        buildSPCObjectPath(systemCreationClassName, host, systemName, deviceID, className));
    return instance;
}

PEGASUS_NAMESPACE_END
