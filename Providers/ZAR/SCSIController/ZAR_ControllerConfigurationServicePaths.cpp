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

#include <ZAR_ArrayOwners.h>
#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

using namespace CCSUtil;

namespace {

const char REF_ERROR[] =
    "Parameter ProtocolController does not contain "
    "correct hostname or namespace or className";

// Checks every ProtocolControllers reference against root/zar, the
// array's host name, the view classes and this array's keys.
Boolean _verifyViews(Array<CIMObjectPath>& views, String& host, const String& systemName)
{
    for (Uint32 i = 0; i < views.size(); i++) {
        if (!isViewReference(views[i], host, ZAR_SCSI_CONTROLLER, ZAR_ISCSI_CONTROLLER,
                             ZAR_ISCSI_NODE) ||
            !viewKeysOfThisArray(views[i], systemName))
            return false;
    }
    return true;
}

// Reads the parameters in the order given; a ProtocolControllers
// parameter is checked as soon as it is read, so that a bad reference is
// reported before anything that follows it.
Boolean _readRequestCheckingViews(const Array<CIMParamValue>& inParameters, const char* allowed,
                                  String& host, const String& systemName, Params& params,
                                  MethodResult& result)
{
    return readRequest(
        inParameters, allowed, false, params, result, [&](const CIMParamValue& param) {
            if (String::equalNoCase(param.getParameterName(), "ProtocolControllers") &&
                !param.getValue().isNull() &&
                !_verifyViews(params.protocolControllers, host, systemName)) {
                result.fail(MethodStatus::InvalidParameter, REF_ERROR);
                return false;
            }
            return true;
        });
}

String _givenDeviceNumber(const vlun&, const Params& p)
{
    return p.deviceNumbers.size() != 0 ? "0x" + p.deviceNumbers[0] : String();
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

// Refuses, before anything changes, a view that cannot take the change:
// a port-present view when portPresentRefusal is given (with that text),
// and a view of a host or host set whose host the array could not name
// (unknown, or not to be asked just now), since changing it by an empty
// host name would address another target. True when refused.
Boolean _viewRefused(Uint32 type, const String& hostName, const char* portPresentRefusal,
                     MethodResult& result)
{
    if (portPresentRefusal && type == API_VLUN_PORT_PRESENT) {
        result.fail(MethodStatus::InvalidParameter, portPresentRefusal);
        return true;
    }
    if (hostName.size() == 0 &&
        (type == API_VLUN_MATCHED_SET || type == API_VLUN_HOST_SEES || type == API_VLUN_HOST_SET)) {
        result.fail(MethodStatus::InvalidParameter, "Invalid ProtocolControllers");
        return true;
    }
    return false;
}

const char USE_CASE_EXPOSE[] =
    "Use case not supported: Only 2 use case is "
    "supported: Create a New View and Add Initiator IDs to a view";
const char USE_CASE_HIDE[] =
    "Use case not supported: Only 3 use cases are "
    "supported: Remove LU's from a View, Hide Full Paths from a View and "
    "Remove Initiator IDs from a View";

}  // namespace

namespace {

// The volume checks of a new view: the requested access must suit each
// volume (status 4100), and the volumes must share one domain, each
// compared with the volume listed just before it (4100). domain gets the
// domain of the volumes, empty for none. A failed query checks nothing.
Boolean _checkNewViewVolumes(const Params& p, char* domain, size_t domainSize, MethodResult& result)
{
    memset(domain, 0, domainSize);
    ZAR_VolumeList volumes;
    CString oneName = p.luNames[0].getCString();
    if (underSemaphore([&]() {
            return api_getVVs_direct(NULL, p.luNames.size() == 1 ? (const char*)oneName : NULL,
                                     &volumes.count, &volumes.list, 1);
        }) != 0)
        return true;
    for (Uint32 l = 0; l < p.luNames.size(); l++) {
        for (zar_u32 k = 0; k < volumes.count; k++) {
            const api_vv_t& v = volumes.list[k];
            if (!String::equalNoCase(fieldText(v.name, sizeof(v.name)), p.luNames[l]))
                continue;
            String element = fieldText(v.elementName, sizeof(v.elementName));
            if (p.deviceAccesses.size() != 0 &&
                ((v.access == VOL_MODE_READWRITE && p.deviceAccesses[l] != 2) ||
                 (v.access == VOL_MODE_READ && p.deviceAccesses[l] != 3))) {
                result.fail(MethodStatus::NotExposed,
                            "LU=" + p.luNames[l] + ": " +
                                "DeviceAccess is not supported for the volume" +
                                ", name = " + element);
                return false;
            }
            if (l >= 1 && k >= 1 &&
                strncmp(v.domain, volumes.list[k - 1].domain, sizeof(v.domain)) != 0) {
                result.fail(MethodStatus::NotExposed,
                            "LU=" + p.luNames[l] + ": " +
                                "Cannot expose volumes with different domains at the same time" +
                                ", name = " + element);
                return false;
            }
            String vd = fieldText(v.domain, sizeof(v.domain));
            if (vd.size() != 0 && !String::equal(vd, "-"))
                copyText(domain, vd, domainSize - 1);
            break;
        }
    }
    return true;
}

}  // namespace

void ZAR_ControllerConfigurationServiceProvider::_exposePaths(const MethodCall& call)
{
    static const char allowed[] =
        "LUNames InitiatorPortIDs TargetPortIDs DeviceNumbers DeviceAccesses ProtocolControllers "
        "Override NoVCN";
    Boolean oneHostPerInitiator = (ZAR_Common::getPolicy() & API_POLICY_ONE_HOST_PER_HWID) != 0;
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider:: exposePaths\n");
    MethodResult result;
    Params p;
    ZAR_HostPathList hostPaths;

    // A new view: the volumes checked, the hosts of the initiators looked
    // up, then one host for all initiators or one host each.
    auto newView = [&]() {
        char domain[32];
        if (!_checkNewViewVolumes(p, domain, sizeof(domain), result))
            return;
        Uint32 hardwareIDs = 1;
        if (p.initiatorPortIDs.size() != 0) {
            hardwareIDs = p.initiatorPortIDs.size();
            if (readInitiatorPaths(p.initiatorPortIDs, hostPaths) != 0) {
                result.fail(MethodStatus::InvalidInitiator,
                            "There are no hosts connected to any target ports");
                return;
            }
        }
        auto build = oneHostPerInitiator
                         ? &ZAR_ControllerConfigurationServiceProvider::_createNewViewOneHWID
                         : &ZAR_ControllerConfigurationServiceProvider::_createNewViewMultHWID;
        const NewViewRequest request = {call.event,      p.initiatorPortIDs, hardwareIDs,
                                        hostPaths.list,  hostPaths.count,    p.luNames,
                                        p.deviceNumbers, p.targetPortIDs,    domain,
                                        p.noVCN,         p.override};
        result.status = (this->*build)(request, result.outParams, result.descriptions);
    };

    // Initiators joining the view's host.
    auto addInitiators = [&]() {
        Uint32 type = 0;
        String hostName;
        Uint16 port = API_PORT_NONE;
        _decodeView(p.protocolControllers[0], type, hostName, port);
        // Without the view's host the initiators would first be taken from
        // their hosts and then find no host to join.
        if (_viewRefused(type, hostName, "Cannot add initiatorID to a port present VLUN", result))
            return;
        result.status = _addInitIDsToView(call.event, p.initiatorPortIDs, type, port, p.override,
                                          hostName, result.descriptions);
        if (result.ok())
            result.reportViews(p.protocolControllers);
    };

    // LUs joining the view: one export each, to the view's host and port.
    auto addLUs = [&]() {
        Uint32 type = 0;
        String hostName;
        Uint16 port = API_PORT_NONE;
        _decodeView(p.protocolControllers[0], type, hostName, port);
        if (_viewRefused(type, hostName, nullptr, result))
            return;
        Array<CIMObjectPath> found;
        Boolean attempted = false;
        for (Uint32 l = 0; l < p.luNames.size(); l++) {
            String& lu = p.luNames[l];
            LUValues vv;
            if (readLU(p.luNames, p.deviceNumbers, l, LUN_NOT_GIVEN, vv, result) != LUReading::Ok)
                continue;
            attempted = true;
            zar_u32 lun = vv.number;
            ExportOutcome outcome = createExport(call.event, vv.high, vv.low, &lun, hostName,
                                                 API_WWN_NONE, String(), port, p.override, p.noVCN);
            Item item(lu);
            item.add("DeviceNumber", lun != LUN_NOT_GIVEN ? "0x" + hex(lun) : String())
                .add("hostCollection", hostName)
                .add("TargetPortID", port != API_PORT_NONE ? portText(port) : String());
            if (outcome.rc != 0) {
                report(result, item, outcome, mapCreateError);
                continue;
            }
            Array<CIMObjectPath> touched = _getAffectedSPCPaths(hostName, lun, lu, port);
            for (Uint32 k = 0; k < touched.size(); k++)
                appendUnique(found, touched[k]);
            report(result, item, outcome, mapCreateError);
        }
        if (!attempted && result.ok())
            result.fail(MethodStatus::InvalidParameter,
                        String("Invalid initiator and target port combinations") + "\n");
        result.reportViews(found);
    };

    // The request, its use case, the size checks, then the use case.
    auto run = [&]() {
        if (!_readRequestCheckingViews(call.inParameters, allowed, _systemAddress, _systemName, p,
                                       result))
            return;
        Uint32 views = p.protocolControllers.size();
        Boolean isNewView = p.luNames.size() != 0 &&
                            (p.initiatorPortIDs.size() != 0 || p.targetPortIDs.size() != 0) &&
                            views == 0;
        Boolean isAddInitiators = p.luNames.size() == 0 && p.initiatorPortIDs.size() != 0 &&
                                  p.targetPortIDs.size() == 0 && p.deviceNumbers.size() == 0 &&
                                  views == 1;
        Boolean isAddLUs = p.luNames.size() != 0 && p.initiatorPortIDs.size() == 0 &&
                           p.targetPortIDs.size() == 0 && views == 1;
        if (!isNewView && !isAddInitiators && !isAddLUs) {
            result.fail(MethodStatus::NotSupported, USE_CASE_EXPOSE);
            return;
        }
        if (!checkSizes(p, result, true))
            return;
        if (isAddInitiators)
            addInitiators();
        else if (isNewView)
            newView();
        else
            addLUs();
    };

    run();
    finish(result, call.handler, "<-- ZAR_ControllerConfigurationServiceProvider:: exposePaths\n");
}

void ZAR_ControllerConfigurationServiceProvider::_hidePaths(const MethodCall& call)
{
    static const char allowed[] =
        "LUNames InitiatorPortIDs TargetPortIDs DeviceNumbers ProtocolControllers NoVCN";
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider:: hidePaths\n");
    MethodResult result;
    Params p;
    ZAR_VlunQuery query;
    ZAR_HostPathList hostPaths;
    Uint32 type = 0;
    String hostName;
    Uint16 port = API_PORT_NONE;

    // Initiators leaving the view's host: each one's path is removed.
    auto removeInitiators = [&]() {
        Boolean anyPort = type == API_VLUN_HOST_SEES || type == API_VLUN_HOST_SET;
        if (_viewRefused(type, hostName, "Cannot remove initiatorID from a port present VLUN",
                         result))
            return;
        if (readInitiatorPaths(p.initiatorPortIDs, hostPaths) != 0) {
            result.fail(MethodStatus::InvalidParameter,
                        String("Initiator port ID is invalid") + "\n");
            return;
        }
        CString viewHost = hostName.getCString();
        for (Uint32 n = 0; n < p.initiatorPortIDs.size(); n++) {
            String& id = p.initiatorPortIDs[n];
            Uint64 high = 0, wwn = API_WWN_NONE;
            Boolean isFC = wwnToInt(id, high, wwn) && id.size() == 16;
            char iscsiName[API_ISCSI_NAME_LEN];
            iscsiName[0] = '\0';
            Boolean found = false;
            for (zar_u32 k = 0; k < hostPaths.count && !found; k++) {
                const api_HostPath& path = hostPaths.list[k].pathInfo;
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
                result.fail(MethodStatus::InvalidParameter,
                            "InitiatorPortID=" + id + ": " + "Invalid for this SPC\n");
                continue;
            }
            if (!found && !isFC)
                copyText(iscsiName, id, sizeof(iscsiName) - 1);
            api_status_t status;
            int rc = ZAR_Common::guardedCall(&status, [&]() {
                return api_removePath(&status, call.event, (const char*)viewHost, isFC ? 0 : 1,
                                      isFC ? wwn : API_WWN_NONE, isFC ? NULL : iscsiName, 1, 0, 0);
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
            result.fail(MethodStatus::InvalidParameter, String(errText) + "\n");
        }
    };

    // True when every initiator named is one of the view host's paths.
    auto initiatorsOfViewHost = [&]() {
        if (readHostPaths(hostName, hostPaths) != 0) {
            result.fail(MethodStatus::InvalidInitiator,
                        "There are no hosts connected to any target ports");
            return false;
        }
        for (Uint32 n = 0; n < p.initiatorPortIDs.size(); n++) {
            String& id = p.initiatorPortIDs[n];
            Uint64 high = 0, wwn = API_WWN_NONE;
            Boolean isWWN = wwnToInt(id, high, wwn);
            Boolean known = false;
            for (zar_u32 k = 0; k < hostPaths.count && !known; k++) {
                const api_HostPath& path = hostPaths.list[k].pathInfo;
                known =
                    (isWWN && path.type == PORT_TYPE_FC && path.wwn == wwn) ||
                    (path.type == PORT_TYPE_ISCSI &&
                     String::equalNoCase(fieldText(path.iscsiName, sizeof(path.iscsiName)), id));
            }
            if (!known) {
                result.fail(MethodStatus::InvalidParameter, "Initiator port ID is invalid");
                return false;
            }
        }
        return true;
    };

    // LUs leaving the view (with initiators named: whole paths).
    auto removeLUs = [&]() {
        if (port == API_PORT_NONE && hostName.size() == 0) {
            result.fail(MethodStatus::InvalidParameter, "Invalid ProtocolControllers");
            return;
        }
        if (!checkLURemoval(p, _systemAddress, result))
            return;
        if (p.initiatorPortIDs.size() != 0 && hostName.size() != 0 && !initiatorsOfViewHost())
            return;
        if (port != API_PORT_NONE && badPortPosition(port)) {
            result.fail(MethodStatus::InvalidParameter,
                        "Port=" + portText(port) + ": " + "Target port ID is invalid" + "\n");
            return;
        }
        Boolean removed = queryViewTemplates(*query, hostName, type, port, true) &&
                          removeViewExports(call.event, *query, p.luNames, type, port, hostName,
                                            p.noVCN, _givenDeviceNumber, p, result);
        if (!removed && result.ok())
            result.fail(MethodStatus::NotExposed, "Target/initiator combination not exposed.\n");
        if (result.ok() && viewStillExists(_cimom, call.context, p.protocolControllers[0]))
            result.outParams.append(
                CIMParamValue("ProtocolControllers", CIMValue(p.protocolControllers)));
    };

    // The request, its use case, the view, then the use case.
    auto run = [&]() {
        if (!_readRequestCheckingViews(call.inParameters, allowed, _systemAddress, _systemName, p,
                                       result))
            return;
        Boolean isRemoveLUs = p.luNames.size() != 0 && p.protocolControllers.size() == 1;
        Boolean isRemoveInitiators = p.luNames.size() == 0 && p.initiatorPortIDs.size() != 0 &&
                                     p.targetPortIDs.size() == 0 &&
                                     p.protocolControllers.size() == 1;
        if (!isRemoveLUs && !isRemoveInitiators) {
            result.fail(MethodStatus::NotSupported, USE_CASE_HIDE);
            return;
        }
        _decodeView(p.protocolControllers[0], type, hostName, port);
        if (isRemoveInitiators)
            removeInitiators();
        else
            removeLUs();
    };

    run();
    finish(result, call.handler, "<-- ZAR_ControllerConfigurationServiceProvider:: hidePaths\n");
}

PEGASUS_NAMESPACE_END
