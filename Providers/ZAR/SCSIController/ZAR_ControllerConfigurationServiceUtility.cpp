//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceUtility.cpp: the pieces the method
// handlers share: the result convention, parameter reading, code mapping,
// description texts and the VLUN template query of a view; the views that a
// change touched and the positions of the array's iSCSI target ports.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceUtility.h"

#include <Pegasus/Common/Exception.h>

#include <stdio.h>
#include <string.h>

#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceProvider.h"
#include "ZAR_SCSIControllerProvider.h"

PEGASUS_NAMESPACE_BEGIN

namespace CCSUtil {

void finish(MethodResult& result, MethodResultResponseHandler& handler, const char* exitTrace)
{
    if (result.status != 0) {
        String joined;
        for (Uint32 i = 0; i < result.descriptions.size(); i++) {
            if (i != 0)
                joined.append("; ");
            joined.append(result.descriptions[i]);
        }
        throw CIMException((CIMStatusCode)result.status, joined);
    }

    result.outParams.append(CIMParamValue("ResultDescriptions", CIMValue(result.descriptions)));
    handler.processing();
    for (Uint32 i = 0; i < result.outParams.size(); i++)
        handler.deliverParamValue(result.outParams[i]);
    handler.deliver(CIMValue(Uint32(0)));
    handler.complete();

    log_message(4, "Overall status of the operation = %d\n", (int)result.status);
    for (Uint32 i = 0; i < result.descriptions.size(); i++)
        log_message(4, "%s\n", (const char*)result.descriptions[i].getCString());
    if (exitTrace)
        log_message(4, "%s", exitTrace);
}

namespace {

Boolean _isAllowed(const String& name, const char* const* allowed)
{
    if (String::equalNoCase(name, "Job"))
        return true;
    for (; *allowed; allowed++) {
        if (String::equalNoCase(name, *allowed))
            return true;
    }
    return false;
}

// Reads one known parameter; throws TypeMismatchException for a value of
// another type.
void _read(const String& name, const CIMValue& value, Params& params)
{
    if (String::equalNoCase(name, "LUNames"))
        value.get(params.luNames);
    else if (String::equalNoCase(name, "InitiatorPortIDs"))
        value.get(params.initiatorPortIDs);
    else if (String::equalNoCase(name, "TargetPortIDs"))
        value.get(params.targetPortIDs);
    else if (String::equalNoCase(name, "DeviceNumbers"))
        value.get(params.deviceNumbers);
    else if (String::equalNoCase(name, "DeviceAccesses"))
        value.get(params.deviceAccesses);
    else if (String::equalNoCase(name, "ProtocolControllers"))
        value.get(params.protocolControllers);
    else if (String::equalNoCase(name, "HostNames"))
        value.get(params.hostNames);
    else if (String::equalNoCase(name, "TargetPortLPIDs"))
        value.get(params.targetPortLPIDs);
    else if (String::equalNoCase(name, "Override"))
        value.get(params.override);
    else if (String::equalNoCase(name, "NoVCN"))
        value.get(params.noVCN);
    else if (String::equalNoCase(name, "DeleteUnits"))
        value.get(params.deleteUnits);
    else if (String::equalNoCase(name, "ProtocolController")) {
        value.get(params.protocolController);
        params.haveProtocolController = true;
    }
}

}  // namespace

Boolean readParams(const Array<CIMParamValue>& inParameters, const char* const* allowed,
                   Boolean skipNullFirst, Params& params, MethodResult& result)
{
    for (Uint32 i = 0; i < inParameters.size(); i++) {
        String name = inParameters[i].getParameterName();
        CIMValue value = inParameters[i].getValue();
        log_message(4, "Param %s\n", (const char*)name.getCString());
        if (skipNullFirst && value.isNull())
            continue;
        if (!_isAllowed(name, allowed)) {
            result.fail(5, "Invalid parameter: " + name);
            return false;
        }
        if (value.isNull() || String::equalNoCase(name, "Job"))
            continue;
        try {
            _read(name, value, params);
        } catch (Exception&) {
            log_message(3, "Parameter %s is of the wrong type\n", (const char*)name.getCString());
            result.fail(5, "Invalid parameter: " + name);
            return false;
        }
    }
    return true;
}

Uint32 mapCreateError(int rc)
{
    if (rc == 0)
        return 0;
    if (rc == API_E_LUN_INVALID)
        return 5;
    if (rc == API_E_PORT_INVALID)
        return 4099;
    return 4;
}

Uint32 mapRemoveError(int rc)
{
    if (rc == 0)
        return 0;
    if (rc == API_E_LUN_INVALID)
        return 5;
    return 4;
}

String portText(Uint16 port)
{
    char buffer[32];
    loop_txbf(port, buffer, buffer);
    return String(buffer);
}

Boolean badPortPosition(Uint16 port)
{
    return (port & 7) > 4 || ((port >> 3) & 15) > 9;
}

String hex(Uint32 value)
{
    char buffer[16];
    snprintf(buffer, sizeof(buffer), "%X", value);
    return String(buffer);
}

Boolean readHex(const String& text, Uint32& value)
{
    unsigned int v = 0;
    if (sscanf((const char*)text.getCString(), "%X", &v) != 1)
        return false;
    value = v;
    return true;
}

Boolean wwnToInt(const String& text, Uint64& high, Uint64& low)
{
    api_status_t status;
    api_initStatus(&status);
    zar_u64 h = high;
    zar_u64 l = low;
    if (api_wwnStringToInt(&status, (const char*)text.getCString(), &h, &l) != 0)
        return false;
    high = h;
    low = l;
    return true;
}

Uint16 lpidFromWWNBits(Uint64 wwn)
{
    return (Uint16)(((wwn >> 56) & 7) * 128 + ((wwn >> 52) & 7) * 8 + ((wwn >> 48) & 7));
}

void copyText(char* buffer, const String& text, size_t max)
{
    CString c = text.getCString();
    size_t n = strnlen((const char*)c, max);
    memcpy(buffer, (const char*)c, n);
    buffer[n] = '\0';
}

String fieldText(const char* field, size_t size)
{
    return String(field, (Uint32)strnlen(field, size));
}

void appendUnique(Array<CIMObjectPath>& paths, const CIMObjectPath& path)
{
    for (Uint32 i = 0; i < paths.size(); i++) {
        if (paths[i] == path)
            return;
    }
    paths.append(path);
}

Boolean viewKeysOfThisArray(const CIMObjectPath& view, const String& systemName)
{
    CIMName cls = view.getClassName();
    if (!cls.equal(CIMName("ZAR_SCSIController")) && !cls.equal(CIMName("ZAR_iSCSIController")))
        return true;
    // Named as getInstance of the same path would find it: a view of
    // another system is not one of ours, whatever its DeviceID says.
    return String::equal(ZAR_Common::getStringProperty(view, "SystemCreationClassName"),
                         "ZAR_StorageSystem") &&
           String::equal(ZAR_Common::getStringProperty(view, "SystemName"), systemName) &&
           String::equalNoCase(ZAR_Common::getStringProperty(view, "CreationClassName"),
                               cls.getString());
}

Boolean queryViewTemplates(api_vlunsInfo_t& query, const String& hostName, Uint32 vlunType,
                           Uint16 port, Boolean emptyHostIsCriterion)
{
    memset(&query, 0, sizeof(query));
    if (hostName.size() != 0 || emptyHostIsCriterion) {
        copyText(query.hostname, hostName, sizeof(query.hostname) - 1);
        query.hostnameIsSet = 1;
    }
    if (vlunType != 0) {
        query.vluntype = vlunType;
        query.vluntypeIsSet = 1;
    }
    if (port != NO_PORT) {
        query.port = port;
        query.portIsSet = 1;
    }
    return underSemaphore([&]() { return api_getVLUNTemplates(&query); }) == 0;
}

Boolean checkDeviceAccesses(const Array<String>& luNames, const Array<Uint16>& accesses,
                            MethodResult& result)
{
    zar_u64 cursor = 0;
    do {
        api_vv_t* volumes = 0;
        zar_u32 count = 0;
        if (underSemaphore(
                [&]() { return api_getVVs_chunk(&cursor, 200, NULL, &count, &volumes, 1); }) != 0) {
            if (volumes)
                api_freeVVs(volumes);
            return true;
        }
        for (Uint32 i = 0; i < luNames.size() && i < accesses.size(); i++) {
            for (zar_u32 k = 0; k < count; k++) {
                const api_vv_t& v = volumes[k];
                if (!String::equalNoCase(fieldText(v.name, sizeof(v.name)), luNames[i]))
                    continue;
                if ((v.access == VOL_MODE_READWRITE && accesses[i] != 2) ||
                    (v.access == VOL_MODE_READ && accesses[i] != 3)) {
                    result.fail(4099,
                                "LU=" + luNames[i] + ": " +
                                    "DeviceAccess is not supported for the volume" +
                                    ", name = " + fieldText(v.elementName, sizeof(v.elementName)));
                    api_freeVVs(volumes);
                    return false;
                }
                break;
            }
        }
        api_freeVVs(volumes);
    } while (cursor != 0);
    return true;
}

}  // namespace CCSUtil

Array<CIMObjectPath> ZAR_ControllerConfigurationServiceProvider::_getAffectedSPCPaths(
    String& hostName, unsigned int lun, String& volumeWWN, unsigned short portLPID)
{
    Array<CIMObjectPath> paths;
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    if (hostName.size() != 0) {
        CCSUtil::copyText(query.hostname, hostName, sizeof(query.hostname) - 1);
        query.hostnameIsSet = 1;
    }
    if (lun != CCSUtil::LUN_NOT_GIVEN) {
        query.lun = lun;
        query.lunIsSet = 1;
    }
    if (portLPID != CCSUtil::NO_PORT) {
        query.port = portLPID;
        query.portIsSet = 1;
    }
    if (CCSUtil::underSemaphore([&]() { return api_getSCSIProtocolControllers(&query); }) != 0) {
        // The change itself has succeeded: the caller reports what it has.
        api_freeVLUNs(&query);
        return paths;
    }

    try {
        for (zar_u32 i = 0; i < query.count; i++) {
            const vlun& record = query.vluns[i];
            if (record.lun != lun)
                continue;
            if (!String::equalNoCase(CCSUtil::fieldText(record.vvwwn, sizeof(record.vvwwn)),
                                     volumeWWN))
                continue;
            if (!String::equal(CCSUtil::fieldText(record.hostname, sizeof(record.hostname)),
                               hostName))
                continue;
            if (portLPID != CCSUtil::NO_PORT && record.port != portLPID)
                continue;
            String deviceID = CCSUtil::fieldText(record.deviceID, sizeof(record.deviceID));
            if (record.hporttype == PORT_TYPE_FC) {
                paths.append(ZAR_SCSIControllerProvider::buildObjectPath(
                    ZAR_STORAGE_SYSTEM, _systemAddress, _systemName, deviceID));
            } else if (record.hporttype == PORT_TYPE_ISCSI) {
                paths.append(ZAR_Common::buildSPCObjectPath(ZAR_STORAGE_SYSTEM, _systemAddress,
                                                            _systemName, deviceID,
                                                            CIMName(ZAR_ISCSI_CONTROLLER)));
            }
        }
    } catch (...) {
        api_freeVLUNs(&query);
        log_message(2,
                    "<--ZAR_ControllerConfigurationServiceProvider::"
                    "_getAffectedSPCPaths: exception thrown while building instances, "
                    "# of instances assembled so far = %u\n",
                    (unsigned)paths.size());
        throw;
    }
    api_freeVLUNs(&query);
    return paths;
}

unsigned short ZAR_ControllerConfigurationServiceProvider::_extractLPIDFromPortiSCSIName(
    String& iscsiName)
{
    Uint32 at = iscsiName.find(String(API_ISCSI_VENDOR_PREFIX));
    if (at == PEG_NOT_FOUND)
        return CCSUtil::NO_PORT;
    String rest = iscsiName.subString(at + API_ISCSI_VENDOR_PREFIX_LEN);
    if (rest.size() == 0)
        return CCSUtil::NO_PORT;

    api_status_t status;
    api_initStatus(&status);
    zar_u64 high = 0;
    zar_u64 value = CCSUtil::WWN_MARKER;
    api_wwnStringToInt(&status, (const char*)rest.getCString(), &high, &value);
    if (status.code != 0)
        return CCSUtil::NO_PORT;
    if (value == CCSUtil::WWN_MARKER)
        return API_PORT_NOT_FOUND;
    return CCSUtil::lpidFromWWNBits(value);
}

PEGASUS_NAMESPACE_END
