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

#include <ZAR_ArrayOwners.h>
#include <ZAR_Common.h>
#include <ZAR_ArrayRecords.h>

#include "ZAR_ControllerConfigurationServiceProvider.h"
#include "ZAR_SCSIControllerProvider.h"

PEGASUS_NAMESPACE_BEGIN

namespace CCSUtil {

void finish(MethodResult& result, MethodResultResponseHandler& handler, const char* exitTrace)
{
    if (!result.ok()) {
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

// True for "Job" (always taken, and ignored) and for each of the names in
// allowed, which are separated by single spaces; case is ignored.
Boolean _isAllowed(const String& name, const char* allowed)
{
    if (String::equalNoCase(name, "Job"))
        return true;
    while (*allowed) {
        const char* space = strchr(allowed, ' ');
        Uint32 length = space ? Uint32(space - allowed) : Uint32(strlen(allowed));
        if (String::equalNoCase(name, String(allowed, length)))
            return true;
        allowed += space ? length + 1 : length;
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
}

Boolean _readParam(const CIMParamValue& param, const char* allowed, Boolean skipNullFirst,
                   Params& params, MethodResult& result)
{
    String name = param.getParameterName();
    CIMValue value = param.getValue();
    log_message(4, "Param %s\n", (const char*)name.getCString());
    if (skipNullFirst && value.isNull())
        return true;
    if (!_isAllowed(name, allowed)) {
        result.fail(MethodStatus::InvalidParameter, "Invalid parameter: " + name);
        return false;
    }
    if (value.isNull() || String::equalNoCase(name, "Job"))
        return true;
    try {
        _read(name, value, params);
    } catch (Exception&) {
        log_message(3, "Parameter %s is of the wrong type\n", (const char*)name.getCString());
        result.fail(MethodStatus::InvalidParameter, "Invalid parameter: " + name);
        return false;
    }
    return true;
}

}  // namespace

Boolean readRequest(const Array<CIMParamValue>& inParameters, const char* allowed,
                    Boolean skipNullFirst, Params& params, MethodResult& result,
                    const std::function<Boolean(const CIMParamValue&)>& check)
{
    if (inParameters.size() == 0) {
        result.fail(MethodStatus::InvalidParameter, "Invalid number of parameters");
        return false;
    }
    for (Uint32 i = 0; i < inParameters.size(); i++) {
        if (!_readParam(inParameters[i], allowed, skipNullFirst, params, result))
            return false;
        if (check && !check(inParameters[i]))
            return false;
    }
    return true;
}

Boolean checkSizes(const Params& p, MethodResult& result, Boolean checkAccesses)
{
    if (p.deviceNumbers.size() != 0 && p.deviceNumbers.size() != p.luNames.size()) {
        result.fail(MethodStatus::InvalidParameter,
                    "Size of LUName and DeviceNumber arrays has to be the same");
        return false;
    }
    if (checkAccesses && p.deviceAccesses.size() != 0 &&
        p.deviceAccesses.size() != p.luNames.size()) {
        result.fail(MethodStatus::InvalidParameter,
                    "Size of LUName and DeviceAccess arrays has to be the same");
        return false;
    }
    return true;
}

LUReading readLU(const Array<String>& luNames, const Array<String>& deviceNumbers, Uint32 i,
                 Uint32 defaultNumber, LUValues& lu, MethodResult& result)
{
    lu.high = 0;
    lu.low = API_WWN_NONE;
    if (!wwnToInt(luNames[i], lu.high, lu.low)) {
        result.fail(MethodStatus::InvalidLogicalUnit,
                    "LU=" + luNames[i] + ": " + "LUName is invalid" + "\n");
        return LUReading::BadName;
    }
    lu.number = defaultNumber;
    if (deviceNumbers.size() != 0 && deviceNumbers[i].size() != 0 &&
        !readHex(deviceNumbers[i], lu.number)) {
        result.fail(MethodStatus::InvalidParameter,
                    "DeviceNumber=0x" + deviceNumbers[i] + ": " + "DeviceNumber is invalid\n");
        return LUReading::BadNumber;
    }
    return LUReading::Ok;
}

int readInitiatorPaths(const Array<String>& ids, ZAR_HostPathList& paths)
{
    String wwn, iscsiName;
    Uint64 high = 0, low = 0;
    if (ids.size() == 1 && wwnToInt(ids[0], high, low))
        wwn = ids[0];
    else if (ids.size() == 1)
        iscsiName = ids[0];
    CString w = wwn.getCString();
    CString i = iscsiName.getCString();
    return underSemaphore([&]() {
        return api_getHostPaths((const char*)w, (const char*)i, NULL, &paths.count, &paths.list, 1);
    });
}

int readHostPaths(const String& hostName, ZAR_HostPathList& paths)
{
    CString host = hostName.getCString();
    return underSemaphore([&]() {
        return api_getHostPaths(NULL, NULL, (const char*)host, &paths.count, &paths.list, 1);
    });
}

MethodStatus mapCreateError(int rc)
{
    if (rc == 0)
        return MethodStatus::Success;
    if (rc == API_E_LUN_INVALID)
        return MethodStatus::InvalidParameter;
    if (rc == API_E_PORT_INVALID)
        return MethodStatus::InvalidTarget;
    return MethodStatus::Failed;
}

MethodStatus mapRemoveError(int rc)
{
    if (rc == 0)
        return MethodStatus::Success;
    if (rc == API_E_LUN_INVALID)
        return MethodStatus::InvalidParameter;
    return MethodStatus::Failed;
}

namespace {

// Runs an export change under the semaphore and gathers its outcome.
template <class Call>
ExportOutcome _exportCall(Call call)
{
    ExportOutcome outcome;
    char errText[API_ERRTEXT_LEN];
    errText[0] = '\0';
    {
        ZAR_ArraySemaphore semaphore;
        outcome.timedOut = !semaphore.held();
        outcome.rc = outcome.timedOut ? semaphore.waitResult() : call(errText, sizeof(errText));
    }
    if (outcome.rc != 0 && errText[0] == '\0')
        strcpy(errText, "Semaphore Timed-Out");
    outcome.errorText = errText;
    return outcome;
}

}  // namespace

ExportOutcome createExport(api_evtparam_t* event, Uint64 vvHigh, Uint64 vvLow, zar_u32* lun,
                           const String& host, Uint64 initiatorWWN, const String& initiatorISCSI,
                           Uint16 port, Boolean override, Boolean noVCN)
{
    CString hostText = host.getCString();
    CString iscsiText = initiatorISCSI.getCString();
    return _exportCall([&](char* errText, size_t size) {
        return api_createVLUN(event, vvHigh, vvLow, lun, host.size() ? (const char*)hostText : NULL,
                              initiatorWWN, initiatorISCSI.size() ? (const char*)iscsiText : NULL,
                              port, override, noVCN, errText, size);
    });
}

ExportOutcome removeExport(api_evtparam_t* event, Uint64 vvHigh, Uint64 vvLow, Uint32 lun,
                           const String& host, Uint16 port, Boolean noVCN)
{
    CString hostText = host.getCString();
    return _exportCall([&](char* errText, size_t size) {
        return api_removeVLUN(event, vvHigh, vvLow, lun, host.size() ? (const char*)hostText : NULL,
                              API_WWN_NONE, NULL, port, noVCN, errText, size);
    });
}

Boolean report(MethodResult& result, const Item& item, const ExportOutcome& outcome,
               MethodStatus (*map)(int))
{
    if (outcome.rc != 0) {
        result.fail(map(outcome.rc), item.failure(outcome.errorText));
        return false;
    }
    result.descriptions.append(item.success());
    return true;
}

Boolean isViewReference(CIMObjectPath& view, String& host, const char* class1, const char* class2,
                        const char* class3)
{
    Array<CIMName> classes;
    classes.append(CIMName(class1));
    classes.append(CIMName(class2));
    if (class3)
        classes.append(CIMName(class3));
    return ZAR_Common::verifyRefMethodParam(view, CIMNamespaceName(ZAR_NAMESPACE), host, classes);
}

Boolean checkLURemoval(Params& p, String& host, MethodResult& result)
{
    if (!checkSizes(p, result))
        return false;
    if (!isViewReference(p.protocolControllers[0], host, ZAR_ISCSI_CONTROLLER, ZAR_SCSI_CONTROLLER,
                         ZAR_ISCSI_NODE)) {
        result.status = MethodStatus::InvalidParameter;
        return false;
    }
    return true;
}

Boolean viewStillExists(CIMOMHandle& cimom, const OperationContext& context,
                        const CIMObjectPath& view)
{
    try {
        cimom.getInstance(context, CIMNamespaceName(ZAR_NAMESPACE), view, false, false, false,
                          CIMPropertyList());
        return true;
    } catch (...) {
        return false;
    }
}

Boolean removeViewExports(api_evtparam_t* event, const api_vlunsInfo_t& query,
                          const Array<String>& lus, Uint32 type, Uint16 port,
                          const String& hostName, Boolean noVCN,
                          String (*deviceNumber)(const vlun& record, const Params& p),
                          const Params& p, MethodResult& result)
{
    Boolean removed = false;
    for (Uint32 l = 0; l < lus.size(); l++) {
        const String& lu = lus[l];
        for (zar_u32 r = 0; r < query.count; r++) {
            const vlun& record = query.vluns[r];
            if (record.accessPriority != type)
                continue;
            if (port != API_PORT_NONE && record.port != port)
                continue;
            if (!String::equalNoCase(fieldText(record.vvwwn, sizeof(record.vvwwn)), lu))
                continue;
            Uint64 vvHigh = 0, vvLow = API_WWN_NONE;
            wwnToInt(lu, vvHigh, vvLow);
            ExportOutcome outcome =
                removeExport(event, vvHigh, vvLow, record.lun, hostName, port, noVCN);
            Item item(lu);
            item.add("DeviceNumber", deviceNumber(record, p))
                .add("HostCollection", hostName)
                .add("TargetPortID", port != API_PORT_NONE ? portText(port) : String());
            if (report(result, item, outcome, mapRemoveError))
                removed = true;
        }
    }
    return removed;
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
    if (!cls.equal(CIMName(ZAR_SCSI_CONTROLLER)) && !cls.equal(CIMName(ZAR_ISCSI_CONTROLLER)))
        return true;
    // Named as getInstance of the same path would find it: a view of
    // another system is not one of ours, whatever its DeviceID says.
    return String::equal(ZAR_Common::getStringProperty(view, "SystemCreationClassName"),
                         ZAR_STORAGE_SYSTEM) &&
           String::equal(ZAR_Common::getStringProperty(view, "SystemName"), systemName) &&
           String::equalNoCase(ZAR_Common::getStringProperty(view, "CreationClassName"),
                               cls.getString());
}

Boolean queryViewTemplates(api_vlunsInfo_t& query, const String& hostName, Uint32 vlunType,
                           Uint16 port, Boolean emptyHostIsCriterion)
{
    memset(&query, 0, sizeof(query));
    ZAR_ArrayRecords::narrow(query, hostName, vlunType, port, emptyHostIsCriterion);
    return underSemaphore([&]() { return api_getVLUNTemplates(&query); }) == 0;
}

Boolean checkDeviceAccesses(const Array<String>& luNames, const Array<Uint16>& accesses,
                            MethodResult& result)
{
    zar_u64 cursor = 0;
    do {
        ZAR_VolumeList volumes;
        if (underSemaphore([&]() {
                return api_getVVs_chunk(&cursor, 200, NULL, &volumes.count, &volumes.list, 1);
            }) != 0)
            return true;
        for (Uint32 i = 0; i < luNames.size() && i < accesses.size(); i++) {
            for (zar_u32 k = 0; k < volumes.count; k++) {
                const api_vv_t& v = volumes.list[k];
                if (!String::equalNoCase(fieldText(v.name, sizeof(v.name)), luNames[i]))
                    continue;
                if ((v.access == VOL_MODE_READWRITE && accesses[i] != 2) ||
                    (v.access == VOL_MODE_READ && accesses[i] != 3)) {
                    result.fail(MethodStatus::InvalidTarget,
                                "LU=" + luNames[i] + ": " +
                                    "DeviceAccess is not supported for the volume" +
                                    ", name = " + fieldText(v.elementName, sizeof(v.elementName)));
                    return false;
                }
                break;
            }
        }
    } while (cursor != 0);
    return true;
}

}  // namespace CCSUtil

Array<CIMObjectPath> ZAR_ControllerConfigurationServiceProvider::_getAffectedSPCPaths(
    String& hostName, unsigned int lun, String& volumeWWN, unsigned short portLPID)
{
    Array<CIMObjectPath> paths;
    ZAR_VlunQuery query;
    ZAR_ArrayRecords::narrow(*query, hostName, 0, portLPID);
    if (lun != CCSUtil::LUN_NOT_GIVEN) {
        query->lun = lun;
        query->lunIsSet = 1;
    }
    // A failure leaves the list empty: the change itself has succeeded,
    // and the caller reports what it has.
    if (CCSUtil::underSemaphore([&]() { return api_getSCSIProtocolControllers(query.get()); }) != 0)
        return paths;

    try {
        for (zar_u32 i = 0; i < query->count; i++) {
            const vlun& record = query->vluns[i];
            if (record.lun != lun)
                continue;
            if (!String::equalNoCase(CCSUtil::fieldText(record.vvwwn, sizeof(record.vvwwn)),
                                     volumeWWN))
                continue;
            if (!String::equal(CCSUtil::fieldText(record.hostname, sizeof(record.hostname)),
                               hostName))
                continue;
            if (portLPID != API_PORT_NONE && record.port != portLPID)
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
        log_message(2,
                    "<--ZAR_ControllerConfigurationServiceProvider::"
                    "_getAffectedSPCPaths: exception thrown while building instances, "
                    "# of instances assembled so far = %u\n",
                    (unsigned)paths.size());
        throw;
    }
    return paths;
}

unsigned short ZAR_ControllerConfigurationServiceProvider::_extractLPIDFromPortiSCSIName(
    String& iscsiName)
{
    Uint32 at = iscsiName.find(String(API_ISCSI_VENDOR_PREFIX));
    if (at == PEG_NOT_FOUND)
        return API_PORT_NONE;
    String rest = iscsiName.subString(at + API_ISCSI_VENDOR_PREFIX_LEN);
    if (rest.size() == 0)
        return API_PORT_NONE;

    api_status_t status;
    api_initStatus(&status);
    zar_u64 high = 0;
    zar_u64 value = API_WWN_NONE;
    api_wwnStringToInt(&status, (const char*)rest.getCString(), &high, &value);
    if (status.code != 0)
        return API_PORT_NONE;
    if (value == API_WWN_NONE)
        return API_PORT_NOT_FOUND;
    return CCSUtil::lpidFromWWNBits(value);
}

PEGASUS_NAMESPACE_END
