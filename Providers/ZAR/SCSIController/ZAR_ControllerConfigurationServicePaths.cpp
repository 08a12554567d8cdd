//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServicePaths.cpp: ExposePaths and HidePaths.
//
// ExposePaths serves three cases, chosen by the parameters given: a new
// view (LUs with initiators or target ports), initiators joining a view,
// LUs joining a view. HidePaths serves LUs leaving a view (also with
// initiators named, "full paths") and initiators leaving a view.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <string.h>

#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

using namespace CCSUtil;

namespace {

const char REF_ERROR[] =
    "Parameter ProtocolController does not contain "
    "correct hostname or namespace or className";

// The view classes a ProtocolControllers reference may name, in the order
// given.
Array<CIMName> _viewClasses(const char* a, const char* b, const char* c)
{
    Array<CIMName> classes;
    classes.append(CIMName(a));
    classes.append(CIMName(b));
    if (c)
        classes.append(CIMName(c));
    return classes;
}

// Checks every ProtocolControllers reference against root/zar, the
// array's host name, the view classes and this array's keys.
Boolean _verifyViews(Array<CIMObjectPath>& views, String& host, const String& systemName,
                     Array<CIMName> classes)
{
    for (Uint32 i = 0; i < views.size(); i++) {
        if (!ZAR_Common::verifyRefMethodParam(views[i], CIMNamespaceName(ZAR_NAMESPACE), host,
                                              classes) ||
            !viewKeysOfThisArray(views[i], systemName))
            return false;
    }
    return true;
}

// Reads the parameters in the order given; a ProtocolControllers
// parameter is checked as soon as it is read, so that a bad reference is
// reported before anything that follows it.
Boolean _readParamsCheckingViews(const Array<CIMParamValue>& inParameters,
                                 const char* const* allowed, String& host, const String& systemName,
                                 Params& params, MethodResult& result)
{
    for (Uint32 i = 0; i < inParameters.size(); i++) {
        Array<CIMParamValue> one;
        one.append(inParameters[i]);
        if (!readParams(one, allowed, false, params, result))
            return false;
        if (String::equalNoCase(inParameters[i].getParameterName(), "ProtocolControllers") &&
            !inParameters[i].getValue().isNull() &&
            !_verifyViews(
                params.protocolControllers, host, systemName,
                _viewClasses("ZAR_SCSIController", "ZAR_iSCSIController", "ZAR_iSCSINode"))) {
            result.fail(5, REF_ERROR);
            return false;
        }
    }
    return true;
}

// The view named by a reference: type code, host (or host set) name and
// port, decoded from its DeviceID.
void _decodeView(CIMObjectPath& view, Uint32& type, String& hostName, Uint16& port)
{
    String deviceID = ZAR_Common::getStringProperty(view, "DeviceID");
    type = 0;
    ZAR_Common::deReferenceSPCDeviceID(deviceID, type, hostName, port,
                                       view.getClassName().equal(CIMName("ZAR_iSCSINode")));
}

// True for a view of a host or host set whose host the array could not
// name (unknown, or not to be asked just now): changing it by an empty
// host name would address another target.
Boolean _hostMissing(Uint32 type, const String& hostName)
{
    return hostName.size() == 0 && (type == API_VLUN_MATCHED_SET || type == API_VLUN_HOST_SEES ||
                                    type == API_VLUN_HOST_SET);
}

const char USE_CASE_EXPOSE[] =
    "Use case not supported: Only 2 use case is "
    "supported: Create a New View and Add Initiator IDs to a view";
const char USE_CASE_HIDE[] =
    "Use case not supported: Only 3 use cases are "
    "supported: Remove LU's from a View, Hide Full Paths from a View and "
    "Remove Initiator IDs from a View";

}  // namespace

void ZAR_ControllerConfigurationServiceProvider::_exposePaths(
    api_evtparam_t* event, const OperationContext&, const Array<CIMParamValue>& inParameters,
    MethodResultResponseHandler& handler)
{
    static const char* const allowed[] = {"LUNames",
                                          "InitiatorPortIDs",
                                          "TargetPortIDs",
                                          "DeviceNumbers",
                                          "DeviceAccesses",
                                          "ProtocolControllers",
                                          "Override",
                                          "NoVCN",
                                          0};
    Boolean oneHostPerInitiator = (ZAR_Common::getPolicy() & API_POLICY_ONE_HOST_PER_HWID) != 0;
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider:: exposePaths\n");
    MethodResult result;
    Params p;
    api_hardwareID* hostPaths = 0;
    zar_u32 hostPathCount = 0;
    const char* exitTrace = "<-- ZAR_ControllerConfigurationServiceProvider:: exposePaths\n";

    do {
        if (inParameters.size() == 0) {
            result.fail(5, "Invalid number of parameters");
            break;
        }
        if (!_readParamsCheckingViews(inParameters, allowed, _systemAddress, _systemName, p,
                                      result))
            break;

        Uint32 views = p.protocolControllers.size();
        Boolean newView = p.luNames.size() != 0 &&
                          (p.initiatorPortIDs.size() != 0 || p.targetPortIDs.size() != 0) &&
                          views == 0;
        Boolean addInitiators = p.luNames.size() == 0 && p.initiatorPortIDs.size() != 0 &&
                                p.targetPortIDs.size() == 0 && p.deviceNumbers.size() == 0 &&
                                views == 1;
        Boolean addLUs = p.luNames.size() != 0 && p.initiatorPortIDs.size() == 0 &&
                         p.targetPortIDs.size() == 0 && views == 1;
        if (!newView && !addInitiators && !addLUs) {
            result.fail(1, USE_CASE_EXPOSE);
            break;
        }
        if (p.deviceNumbers.size() != 0 && p.deviceNumbers.size() != p.luNames.size()) {
            result.fail(5, "Size of LUName and DeviceNumber arrays has to be the same");
            break;
        }
        if (p.deviceAccesses.size() != 0 && p.deviceAccesses.size() != p.luNames.size()) {
            result.fail(5, "Size of LUName and DeviceAccess arrays has to be the same");
            break;
        }

        // One initiator: the array is asked for its paths alone.
        String wwnText;
        String iscsiText;
        if (p.initiatorPortIDs.size() == 1) {
            Uint64 high = 0, low = 0;
            if (wwnToInt(p.initiatorPortIDs[0], high, low))
                wwnText = p.initiatorPortIDs[0];
            else
                iscsiText = p.initiatorPortIDs[0];
        }

        if (addInitiators) {
            Uint32 type = 0;
            String hostName;
            Uint16 port = NO_PORT;
            _decodeView(p.protocolControllers[0], type, hostName, port);
            if (type == API_VLUN_PORT_PRESENT) {
                result.fail(5, "Cannot add initiatorID to a port present VLUN");
                break;
            }
            // Refused before anything changes: the initiators would first be
            // taken from their hosts and then find no host to join.
            if (_hostMissing(type, hostName)) {
                result.fail(5, "Invalid ProtocolControllers");
                break;
            }
            result.status = _addInitIDsToView(event, p.initiatorPortIDs, type, port, p.override,
                                              hostName, result.descriptions);
            if (result.status == 0) {
                result.outParams.append(
                    CIMParamValue("ProtocolControllers", CIMValue(p.protocolControllers)));
            }
            break;
        }

        if (newView) {
            // Volume checks: the requested access must suit each volume,
            // and the volumes must share one domain.
            char domain[32];
            memset(domain, 0, sizeof(domain));
            api_vv_t* volumes = 0;
            zar_u32 volumeCount = 0;
            CString oneName = p.luNames[0].getCString();
            Boolean haveVolumes = underSemaphore([&]() {
                                      return api_getVVs_direct(
                                          NULL, p.luNames.size() == 1 ? (const char*)oneName : NULL,
                                          &volumeCount, &volumes, 1);
                                  }) == 0;
            Boolean refused = false;
            for (Uint32 l = 0; haveVolumes && l < p.luNames.size() && !refused; l++) {
                for (zar_u32 k = 0; k < volumeCount; k++) {
                    const api_vv_t& v = volumes[k];
                    if (!String::equalNoCase(fieldText(v.name, sizeof(v.name)), p.luNames[l]))
                        continue;
                    String element = fieldText(v.elementName, sizeof(v.elementName));
                    if (p.deviceAccesses.size() != 0 &&
                        ((v.access == VOL_MODE_READWRITE && p.deviceAccesses[l] != 2) ||
                         (v.access == VOL_MODE_READ && p.deviceAccesses[l] != 3))) {
                        result.fail(4100, "LU=" + p.luNames[l] + ": " +
                                              "DeviceAccess is not supported for the volume" +
                                              ", name = " + element);
                        refused = true;
                        break;
                    }
                    // Compared with the volume listed just before it.
                    if (l >= 1 && k >= 1 &&
                        strncmp(v.domain, volumes[k - 1].domain, sizeof(v.domain)) != 0) {
                        result.fail(4100, "LU=" + p.luNames[l] + ": " +
                                              "Cannot expose volumes with different domains at the "
                                              "same time" +
                                              ", name = " + element);
                        refused = true;
                        break;
                    }
                    String vd = fieldText(v.domain, sizeof(v.domain));
                    if (vd.size() != 0 && !String::equal(vd, "-"))
                        copyText(domain, vd, sizeof(domain) - 1);
                    break;
                }
            }
            if (volumes)
                api_freeVVs(volumes);
            if (refused)
                break;

            Uint32 hardwareIDs = 1;
            if (p.initiatorPortIDs.size() != 0) {
                hardwareIDs = p.initiatorPortIDs.size();
                CString w = wwnText.getCString();
                CString i = iscsiText.getCString();
                if (underSemaphore([&]() {
                        return api_getHostPaths((const char*)w, (const char*)i, NULL,
                                                &hostPathCount, &hostPaths, 1);
                    }) != 0) {
                    result.fail(4098, "There are no hosts connected to any target ports");
                    break;
                }
            }
            if (oneHostPerInitiator) {
                result.status = _createNewViewOneHWID(
                    event, p.initiatorPortIDs, hardwareIDs, hostPaths, hostPathCount, p.luNames,
                    p.deviceNumbers, p.targetPortIDs, domain, p.noVCN, p.override, result.outParams,
                    result.descriptions);
            } else {
                result.status = _createNewViewMultHWID(
                    event, p.initiatorPortIDs, hardwareIDs, hostPaths, hostPathCount, p.luNames,
                    p.deviceNumbers, p.targetPortIDs, domain, p.noVCN, p.override, result.outParams,
                    result.descriptions);
            }
            break;
        }

        // LUs joining a view.
        Uint32 type = 0;
        String hostName;
        Uint16 port = NO_PORT;
        _decodeView(p.protocolControllers[0], type, hostName, port);
        if (_hostMissing(type, hostName)) {
            result.fail(5, "Invalid ProtocolControllers");
            break;
        }
        Array<CIMObjectPath> found;
        Boolean attempted = false;
        for (Uint32 l = 0; l < p.luNames.size(); l++) {
            String& lu = p.luNames[l];
            Uint64 vvHigh = 0, vvLow = WWN_MARKER;
            if (!wwnToInt(lu, vvHigh, vvLow)) {
                result.fail(4097, "LU=" + lu + ": " + "LUName is invalid" + "\n");
                continue;
            }
            Uint32 number = LUN_NOT_GIVEN;
            if (p.deviceNumbers.size() != 0 && p.deviceNumbers[l].size() != 0 &&
                !readHex(p.deviceNumbers[l], number)) {
                result.fail(5, "DeviceNumber=0x" + p.deviceNumbers[l] + ": " +
                                   "DeviceNumber is invalid" + "\n");
                continue;
            }
            attempted = true;
            zar_u32 lun = number;
            char errText[API_ERRTEXT_LEN];
            errText[0] = '\0';
            CString host = hostName.getCString();
            int rc = underSemaphore([&]() {
                return api_createVLUN(event, vvHigh, vvLow, &lun,
                                      hostName.size() ? (const char*)host : NULL, API_WWN_NONE,
                                      NULL, port, p.override, p.noVCN, errText, sizeof(errText));
            });
            if (rc != 0 && errText[0] == '\0')
                strcpy(errText, "Semaphore Timed-Out");

            String item = "LU=" + lu;
            if (lun != LUN_NOT_GIVEN)
                item.append(",DeviceNumber=0x" + hex(lun));
            if (hostName.size() != 0)
                item.append(",hostCollection=" + hostName);
            if (port != NO_PORT)
                item.append(",TargetPortID=" + portText(port));
            item.append(": ");
            if (rc != 0) {
                result.fail(mapCreateError(rc), item + errText + "\n");
                continue;
            }
            Array<CIMObjectPath> touched = _getAffectedSPCPaths(hostName, lun, lu, port);
            for (Uint32 k = 0; k < touched.size(); k++)
                appendUnique(found, touched[k]);
            result.descriptions.append(item + "Success" + "\n");
        }
        if (!attempted && result.status == 0)
            result.fail(5, String("Invalid initiator and target port combinations") + "\n");
        if (found.size() != 0)
            result.outParams.append(CIMParamValue("ProtocolControllers", CIMValue(found)));
    } while (false);

    if (hostPaths)
        api_freeHostPaths(hostPaths);
    finish(result, handler, exitTrace);
}

void ZAR_ControllerConfigurationServiceProvider::_hidePaths(
    api_evtparam_t* event, const OperationContext& context,
    const Array<CIMParamValue>& inParameters, MethodResultResponseHandler& handler)
{
    static const char* const allowed[] = {"LUNames",
                                          "InitiatorPortIDs",
                                          "TargetPortIDs",
                                          "DeviceNumbers",
                                          "ProtocolControllers",
                                          "NoVCN",
                                          0};
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider:: hidePaths\n");
    MethodResult result;
    Params p;
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    api_hardwareID* hostPaths = 0;
    zar_u32 hostPathCount = 0;

    do {
        if (inParameters.size() == 0) {
            result.fail(5, "Invalid number of parameters");
            break;
        }
        if (!_readParamsCheckingViews(inParameters, allowed, _systemAddress, _systemName, p,
                                      result))
            break;

        Boolean removeLUs = p.luNames.size() != 0 && p.protocolControllers.size() == 1;
        Boolean removeInitiators = p.luNames.size() == 0 && p.initiatorPortIDs.size() != 0 &&
                                   p.targetPortIDs.size() == 0 && p.protocolControllers.size() == 1;
        if (!removeLUs && !removeInitiators) {
            result.fail(1, USE_CASE_HIDE);
            break;
        }

        String wwnFilter;
        String iscsiFilter;
        if (p.initiatorPortIDs.size() == 1) {
            Uint64 high = 0, low = 0;
            if (wwnToInt(p.initiatorPortIDs[0], high, low))
                wwnFilter = p.initiatorPortIDs[0];
            else
                iscsiFilter = p.initiatorPortIDs[0];
        }

        Uint32 type = 0;
        String hostName;
        Uint16 port = NO_PORT;
        _decodeView(p.protocolControllers[0], type, hostName, port);
        Boolean anyPort = type == API_VLUN_HOST_SEES || type == API_VLUN_HOST_SET;
        CString viewHost = hostName.getCString();

        if (removeInitiators) {
            if (type == API_VLUN_PORT_PRESENT) {
                result.fail(5, "Cannot remove initiatorID from a port present VLUN");
                break;
            }
            if (_hostMissing(type, hostName)) {
                result.fail(5, "Invalid ProtocolControllers");
                break;
            }
            CString w = wwnFilter.getCString();
            CString i = iscsiFilter.getCString();
            if (underSemaphore([&]() {
                    return api_getHostPaths((const char*)w, (const char*)i, NULL, &hostPathCount,
                                            &hostPaths, 1);
                }) != 0) {
                result.fail(5, String("Initiator port ID is invalid") + "\n");
                break;
            }
            for (Uint32 n = 0; n < p.initiatorPortIDs.size(); n++) {
                String& id = p.initiatorPortIDs[n];
                Uint64 high = 0, wwn = WWN_MARKER;
                Boolean isFC = wwnToInt(id, high, wwn) && id.size() == 16;
                char iscsiName[API_ISCSI_NAME_LEN];
                iscsiName[0] = '\0';
                Boolean found = false;
                for (zar_u32 k = 0; k < hostPathCount && !found; k++) {
                    const api_HostPath& path = hostPaths[k].pathInfo;
                    if (!anyPort && path.port != port)
                        continue;
                    if (isFC)
                        found = path.type == PORT_TYPE_FC && path.wwn == wwn;
                    else if (path.type == PORT_TYPE_ISCSI &&
                             String::equalNoCase(fieldText(path.iscsiName, sizeof(path.iscsiName)),
                                                 id)) {
                        found = true;
                        memcpy(iscsiName, path.iscsiName, sizeof(iscsiName) - 1);
                        iscsiName[sizeof(iscsiName) - 1] = '\0';
                    }
                }
                if (!found && !anyPort) {
                    result.fail(5, "InitiatorPortID=" + id + ": " + "Invalid for this SPC\n");
                    continue;
                }
                if (!found && !isFC)
                    copyText(iscsiName, id, sizeof(iscsiName) - 1);
                api_status_t status;
                int rc = ZAR_Common::guardedCall(&status, [&]() {
                    return api_removePath(&status, event, (const char*)viewHost, isFC ? 0 : 1,
                                          isFC ? wwn : API_WWN_NONE, isFC ? NULL : iscsiName, 1, 0,
                                          0);
                });
                if (rc == 0) {
                    // One out-parameter per initiator removed.
                    result.outParams.append(
                        CIMParamValue("ProtocolControllers", CIMValue(p.protocolControllers)));
                    continue;
                }
                char errText[512];
                api_getErrorTextNoNL(errText, sizeof(errText), &status);
                log_message(2, "Error from api_removePath: %s\n", errText);
                result.fail(5, String(errText) + "\n");
            }
            break;
        }

        // LUs leaving the view.
        if (port == NO_PORT && hostName.size() == 0) {
            result.fail(5, "Invalid ProtocolControllers");
            break;
        }
        if (p.deviceNumbers.size() != 0 && p.deviceNumbers.size() != p.luNames.size()) {
            result.fail(5, "Size of LUName and DeviceNumber arrays has to be the same");
            break;
        }
        Array<CIMName> classes =
            _viewClasses("ZAR_iSCSIController", "ZAR_SCSIController", "ZAR_iSCSINode");
        if (!ZAR_Common::verifyRefMethodParam(p.protocolControllers[0],
                                              CIMNamespaceName(ZAR_NAMESPACE), _systemAddress,
                                              classes)) {
            result.status = 5;
            break;
        }
        if (p.initiatorPortIDs.size() != 0 && hostName.size() != 0) {
            if (underSemaphore([&]() {
                    return api_getHostPaths(NULL, NULL, (const char*)viewHost, &hostPathCount,
                                            &hostPaths, 1);
                }) != 0) {
                result.fail(4098, "There are no hosts connected to any target ports");
                break;
            }
            Boolean allKnown = true;
            for (Uint32 n = 0; n < p.initiatorPortIDs.size() && allKnown; n++) {
                String& id = p.initiatorPortIDs[n];
                Uint64 high = 0, wwn = WWN_MARKER;
                Boolean isWWN = wwnToInt(id, high, wwn);
                Boolean known = false;
                for (zar_u32 k = 0; k < hostPathCount && !known; k++) {
                    const api_HostPath& path = hostPaths[k].pathInfo;
                    known = (isWWN && path.type == PORT_TYPE_FC && path.wwn == wwn) ||
                            (path.type == PORT_TYPE_ISCSI &&
                             String::equalNoCase(fieldText(path.iscsiName, sizeof(path.iscsiName)),
                                                 id));
                }
                allKnown = known;
            }
            if (!allKnown) {
                result.fail(5, "Initiator port ID is invalid");
                break;
            }
        }
        if (port != NO_PORT && badPortPosition(port)) {
            result.fail(5, "Port=" + portText(port) + ": " + "Target port ID is invalid" + "\n");
            break;
        }

        Boolean removed = false;
        if (queryViewTemplates(query, hostName, type, port, true)) {
            for (Uint32 l = 0; l < p.luNames.size(); l++) {
                String& lu = p.luNames[l];
                for (zar_u32 r = 0; r < query.count; r++) {
                    const vlun& record = query.vluns[r];
                    if (record.accessPriority != type)
                        continue;
                    if (port != NO_PORT && record.port != port)
                        continue;
                    if (!String::equalNoCase(fieldText(record.vvwwn, sizeof(record.vvwwn)), lu))
                        continue;
                    Uint64 vvHigh = 0, vvLow = WWN_MARKER;
                    wwnToInt(lu, vvHigh, vvLow);
                    char errText[API_ERRTEXT_LEN];
                    errText[0] = '\0';
                    int rc = underSemaphore([&]() {
                        return api_removeVLUN(event, vvHigh, vvLow, record.lun,
                                              hostName.size() ? (const char*)viewHost : NULL,
                                              API_WWN_NONE, NULL, port, p.noVCN, errText,
                                              sizeof(errText));
                    });
                    if (rc != 0 && errText[0] == '\0')
                        strcpy(errText, "Semaphore Timed-Out");
                    String item = "LU=" + lu;
                    if (p.deviceNumbers.size() != 0)
                        item.append(",DeviceNumber=0x" + p.deviceNumbers[0]);
                    if (hostName.size() != 0)
                        item.append(",HostCollection=" + hostName);
                    if (port != NO_PORT)
                        item.append(",TargetPortID=" + portText(port));
                    item.append(": ");
                    if (rc != 0) {
                        result.fail(mapRemoveError(rc), item + errText + "\n");
                        continue;
                    }
                    result.descriptions.append(item + "Success" + "\n");
                    removed = true;
                }
            }
        }
        if (!removed && result.status == 0)
            result.fail(4100, "Target/initiator combination not exposed.\n");
        if (result.status == 0) {
            try {
                _cimom.getInstance(context, CIMNamespaceName(ZAR_NAMESPACE),
                                   p.protocolControllers[0], false, false, false,
                                   CIMPropertyList());
                result.outParams.append(
                    CIMParamValue("ProtocolControllers", CIMValue(p.protocolControllers)));
            } catch (...) {
                // The view went with its last LU.
            }
        }
    } while (false);

    if (hostPaths)
        api_freeHostPaths(hostPaths);
    api_freeVLUNs(&query);
    finish(result, handler, "<-- ZAR_ControllerConfigurationServiceProvider:: hidePaths\n");
}

PEGASUS_NAMESPACE_END
