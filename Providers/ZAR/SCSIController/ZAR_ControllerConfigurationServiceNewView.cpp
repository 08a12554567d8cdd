//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceNewView.cpp: the hosts and VLUNs of a
// new view (one host for all initiators, or one per initiator), and
// initiators joining the host of an existing view.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <stdlib.h>
#include <string.h>

#include <ZAR_ArrayOwners.h>
#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

using namespace CCSUtil;

namespace {

// What the host-path list says about one initiator.
struct InitiatorLookup {
    InitiatorLookup() : isWWN(false), wwn(API_WWN_NONE), entryType(PORT_TYPE_UNKNOWN), found(false)
    {
    }
    Boolean isWWN;  // converts as a WWN
    Uint64 wwn;
    port_type_t entryType;  // kind of the matching entry; unknown when none
    String hostName;        // its host ("" when none)
    Boolean found;          // the host exists under hostName
};

// Looks initiator up in the host-path list: an iSCSI entry with that name
// (case ignored) gives its host; a Fibre Channel entry with that WWN and a
// host gives its host, except that a host named "-...-" is taken without
// its dashes and counts as not found.
InitiatorLookup _lookUp(const String& initiator, const api_hardwareID* paths, Uint32 count)
{
    InitiatorLookup r;
    Uint64 high = 0;
    r.isWWN = wwnToInt(initiator, high, r.wwn);
    for (Uint32 i = 0; i < count; i++) {
        const api_HostPath& path = paths[i].pathInfo;
        String host = fieldText(paths[i].hostName, sizeof(paths[i].hostName));
        if (path.type == PORT_TYPE_ISCSI && !r.isWWN &&
            String::equalNoCase(fieldText(path.iscsiName, sizeof(path.iscsiName)), initiator)) {
            r.entryType = PORT_TYPE_ISCSI;
            r.hostName = host;
            r.found = host.size() != 0;
            return r;
        }
        if (path.type == PORT_TYPE_FC && r.isWWN && path.wwn == r.wwn && host.size() != 0) {
            r.entryType = PORT_TYPE_FC;
            if (host.size() >= 2 && host[0] == '-' && host[host.size() - 1] == '-') {
                r.hostName = host.subString(1, host.size() - 2);
                r.found = false;
            } else {
                r.hostName = host;
                r.found = true;
            }
            return r;
        }
    }
    return r;
}

// The initiator part of a description: ",InitiatorID=" before the first
// of the first count initiators, "," before each later non-empty one.
void _addInitiators(Item& item, const Array<String>& initiators, Uint32 count)
{
    for (Uint32 i = 0; i < count && i < initiators.size(); i++) {
        if (initiators[i].size() != 0)
            item.raw(String(i == 0 ? ",InitiatorID=" : ",") + initiators[i]);
    }
}

// How one VLUN of a new view is addressed: to a host by name, or to one
// initiator (its WWN or its iSCSI name).
struct Target {
    Target() : wwn(API_WWN_NONE) {}
    String hostName;
    Uint64 wwn;
    String iscsiName;
};

}  // namespace

Boolean ZAR_ControllerConfigurationServiceProvider::_exposeLUsOnPorts(
    const NewViewRequest& request, const String& hostName, Uint64 initiatorWWN,
    const String& initiatorISCSIName, int entryType, Array<CIMObjectPath>& views,
    Boolean& attempted, MethodResult& result)
{
    Target target;
    target.hostName =
        initiatorWWN == API_WWN_NONE && initiatorISCSIName.size() == 0 ? hostName : String();
    target.wwn = initiatorWWN;
    target.iscsiName = initiatorISCSIName;
    for (Uint32 l = 0; l < request.luNames.size(); l++) {
        String& lu = request.luNames[l];
        LUValues vv;
        LUReading reading =
            readLU(request.luNames, request.deviceNumbers, l, LUN_ARRAY_CHOOSES, vv, result);
        if (reading == LUReading::BadName)
            continue;
        // A bad number ends the LUs of this host.
        if (reading == LUReading::BadNumber)
            break;

        // One pass without a port when no target port is given.
        Uint32 passes = request.targetPortIDs.size() == 0 ? 1 : request.targetPortIDs.size();
        for (Uint32 t = 0; t < passes; t++) {
            Uint16 port = API_PORT_NONE;
            if (request.targetPortIDs.size() != 0) {
                String& id = request.targetPortIDs[t];
                if (id.size() == 0)
                    continue;
                Uint64 high = 0, value = API_WWN_NONE;
                if (wwnToInt(id, high, value) && id.size() == 16) {
                    if (entryType != PORT_TYPE_UNKNOWN && entryType != PORT_TYPE_FC)
                        continue;
                    port = ZAR_Common::getPortLPID(value);
                    if (port == API_PORT_NONE)
                        port = lpidFromWWNBits(value);
                    if (port == API_PORT_NONE || port == 0) {
                        result.fail(MethodStatus::InvalidParameter,
                                    "Port=" + id + ": " + "Target port ID is invalid" + "\n");
                        return true;
                    }
                } else {
                    if (entryType != PORT_TYPE_UNKNOWN && entryType != PORT_TYPE_ISCSI)
                        continue;
                    String name = ZAR_Common::extractISCSIName(id);
                    if (name.size() == 0)
                        continue;
                    port = ZAR_Common::getPortLPID(name);
                    if (port == API_PORT_NONE)
                        port = _extractLPIDFromPortiSCSIName(name);
                    if (port == API_PORT_NONE)
                        continue;
                }
                if (badPortPosition(port)) {
                    result.fail(MethodStatus::InvalidParameter,
                                "Port=" + portText(port) + ": " + "Target port ID is invalid\n");
                    continue;
                }
            }

            attempted = true;
            zar_u32 lun = vv.number;
            ExportOutcome outcome =
                createExport(request.event, vv.high, vv.low, &lun, target.hostName, target.wwn,
                             target.iscsiName, port, request.override, request.noVCN);
            Item item(lu);
            item.add("DeviceNumber", lun != LUN_NOT_GIVEN ? "0x" + hex(lun) : String());
            _addInitiators(item, request.initiatorIDs, request.hardwareIDCount);
            item.add("TargetPortID", port != API_PORT_NONE ? portText(port) : String());
            if (outcome.rc != 0) {
                report(result, item, outcome, mapCreateError);
                continue;
            }
            String viewHost = hostName;
            Array<CIMObjectPath> touched = _getAffectedSPCPaths(viewHost, lun, lu, port);
            for (Uint32 k = 0; k < touched.size(); k++)
                appendUnique(views, touched[k]);
            report(result, item, outcome, mapCreateError);
        }
    }
    return false;
}

namespace {

// Closes a new view: nothing attempted is a bad combination; the views
// found become the ProtocolControllers out-parameter.
MethodStatus _closeNewView(Boolean attempted, Array<CIMObjectPath>& views, MethodResult& result,
                           Array<CIMParamValue>& outParams, Array<String>& descriptions)
{
    if (!attempted && result.ok())
        result.fail(MethodStatus::InvalidParameter,
                    String("Invalid initiator and target port combinations") + "\n");
    if (views.size() != 0)
        outParams.append(CIMParamValue("ProtocolControllers", CIMValue(views)));
    descriptions.appendArray(result.descriptions);
    return result.status;
}

// The status of a failed api_createHost: 5 for an invalid argument or an
// existing name, 4 otherwise.
MethodStatus _createHostError(int code)
{
    return code == API_E_INVALID_ARG || code == API_E_EXISTS ? MethodStatus::InvalidParameter
                                                             : MethodStatus::Failed;
}

}  // namespace

MethodStatus ZAR_ControllerConfigurationServiceProvider::_createNewViewMultHWID(
    const NewViewRequest& request, Array<CIMParamValue>& outParams, Array<String>& descriptions)
{
    MethodResult result;
    Array<CIMObjectPath> views;
    Boolean attempted = false;

    // 1. An existing host of one of the initiators.
    String hostName;
    Boolean found = false;
    Boolean firstIsWWN = true;
    String iscsiName;
    Uint64 firstWWN = API_WWN_NONE;
    Boolean anyInitiator = false;
    port_type_t entryType = PORT_TYPE_UNKNOWN;
    for (Uint32 i = 0; i < request.initiatorIDs.size(); i++) {
        if (request.initiatorIDs[i].size() == 0)
            continue;
        anyInitiator = true;
        InitiatorLookup r =
            _lookUp(request.initiatorIDs[i], request.hostPaths, request.hostPathCount);
        if (!r.isWWN) {
            firstIsWWN = false;
            if (iscsiName.size() == 0)
                iscsiName = request.initiatorIDs[i].subString(0, API_ISCSI_NAME_LEN - 1);
        } else if (firstWWN == API_WWN_NONE && r.hostName.size() == 0)
            firstWWN = r.wwn;
        if (r.entryType != PORT_TYPE_UNKNOWN)
            entryType = r.entryType;
        if (r.hostName.size() != 0) {
            hostName = r.hostName;
            found = r.found;
            break;
        }
    }

    // 2. A new host under that name, or a new name.
    if (anyInitiator && !found) {
        if (hostName.size() == 0) {
            String first;
            for (Uint32 i = 0; i < request.initiatorIDs.size() && first.size() == 0; i++)
                first = request.initiatorIDs[i];
            hostName = generateHostName(first, firstIsWWN);
        }
        api_status_t status;
        CString host = hostName.getCString();
        CString iscsi = iscsiName.getCString();
        int rc = ZAR_Common::guardedCall(&status, [&]() {
            // The host is made with its first paths in one change, so
            // that an interruption before the others join leaves a host
            // that a retry finds through its initiator.
            return api_createHost(&status, request.event, (const char*)host,
                                  iscsiName.size() ? (const char*)iscsi : NULL, firstWWN,
                                  API_PERSONA_GENERIC, request.domain);
        });
        if (rc != 0) {
            char errText[512];
            int code = api_getErrorText(errText, sizeof(errText), &status);
            log_message(2, "Error from api_createHost: %s\n", errText);
            result.fail(_createHostError(code),
                        "Cannot create Host " + hostName + " - " + errText + "\n");
            descriptions.appendArray(result.descriptions);
            return result.status;
        }
    }

    // 3. Every initiator into that host.
    if (anyInitiator) {
        MethodStatus rc = _addInitIDsToView(request.event, request.initiatorIDs, API_VLUN_HOST_SEES,
                                            API_PORT_NONE, false, hostName, result.descriptions);
        if (rc != MethodStatus::Success) {
            descriptions.appendArray(result.descriptions);
            return rc;
        }
    }

    // 4. One VLUN per LU and target port.
    _exposeLUsOnPorts(request, hostName, API_WWN_NONE, String(), entryType, views, attempted,
                      result);
    return _closeNewView(attempted, views, result, outParams, descriptions);
}

MethodStatus ZAR_ControllerConfigurationServiceProvider::_createNewViewOneHWID(
    const NewViewRequest& request, Array<CIMParamValue>& outParams, Array<String>& descriptions)
{
    MethodResult result;
    Array<CIMObjectPath> views;
    Boolean attempted = false;
    Array<String> handledHosts;

    for (Uint32 i = 0; i < request.initiatorIDs.size(); i++) {
        String& initiator = request.initiatorIDs[i];
        if (initiator.size() == 0)
            continue;
        InitiatorLookup r = _lookUp(initiator, request.hostPaths, request.hostPathCount);
        String hostName = r.hostName;
        if (!r.found) {
            if (hostName.size() == 0)
                hostName = generateHostName(initiator, r.isWWN);
            api_status_t status;
            CString host = hostName.getCString();
            String iscsiName = initiator.subString(0, API_ISCSI_NAME_LEN - 1);
            CString iscsi = iscsiName.getCString();
            int rc = ZAR_Common::guardedCall(&status, [&]() {
                return api_createHost(
                    &status, request.event, (const char*)host, r.isWWN ? NULL : (const char*)iscsi,
                    r.isWWN ? r.wwn : API_WWN_NONE, API_PERSONA_GENERIC, request.domain);
            });
            if (rc != 0) {
                char errText[512];
                int code = api_getErrorTextNoNL(errText, sizeof(errText), &status);
                log_message(2, "Error from api_createHost: %s\n", errText);
                result.fail(_createHostError(code), "InitiatorPortID=" + initiator + ":" +
                                                        " Cannot create StorageHardwareID - " +
                                                        errText + "\n");
                continue;
            }
        }
        if (ZAR_Common::isPartOfArray(hostName, handledHosts))
            continue;
        handledHosts.append(hostName);

        // The VLUNs are addressed to the initiator itself; the views they
        // show up in are those of its host.
        if (_exposeLUsOnPorts(request, hostName, r.isWWN ? r.wwn : API_WWN_NONE,
                              r.isWWN ? String() : initiator.subString(0, API_ISCSI_NAME_LEN - 1),
                              r.entryType, views, attempted, result)) {
            break;
        }
    }
    return _closeNewView(attempted, views, result, outParams, descriptions);
}

MethodStatus ZAR_ControllerConfigurationServiceProvider::_addInitIDsToView(
    api_evtparam_t* event, Array<String>& initiatorIDs, Uint32 vlunType, Uint16 portID,
    Boolean override, String& hostName, Array<String>& descriptions)
{
    MethodStatus status = MethodStatus::Success;
    Uint32 persona = API_PERSONA_GENERIC;
    if (initiatorIDs.size() == 0) {
        descriptions.append(String("initiatorPortIDs must be specified") + "\n");
        return MethodStatus::InvalidParameter;
    }

    ZAR_HostPathList hostPaths;
    Boolean havePaths = readInitiatorPaths(initiatorIDs, hostPaths) == 0;
    // A failed lookup counts as no paths at all.
    const api_hardwareID* paths = havePaths ? hostPaths.list : 0;
    zar_u32 count = havePaths ? hostPaths.count : 0;
    if (!havePaths && vlunType == API_VLUN_MATCHED_SET) {
        descriptions.append(String("Initiator port ID is invalid") + "\n");
        return MethodStatus::InvalidParameter;
    }

    Array<Uint64> wwns;
    Array<String> iscsiNames;
    Boolean alreadyInView = false;
    Boolean anyHostSeen = vlunType == API_VLUN_HOST_SEES || vlunType == API_VLUN_HOST_SET;
    CString viewHost = hostName.getCString();

    for (Uint32 i = 0; i < initiatorIDs.size(); i++) {
        String& initiator = initiatorIDs[i];
        Uint64 high = 0, wwn = API_WWN_NONE;
        Boolean isFC = havePaths && wwnToInt(initiator, high, wwn) && initiator.size() == 16;
        Boolean stoppedOnMatch = false;
        Boolean inView = false;
        for (zar_u32 k = 0; k < count; k++) {
            const api_HostPath& path = paths[k].pathInfo;
            Boolean match =
                isFC ? (path.type == PORT_TYPE_FC && path.wwn == wwn)
                     : (path.type == PORT_TYPE_ISCSI &&
                        String::equalNoCase(fieldText(path.iscsiName, sizeof(path.iscsiName)),
                                            initiator));
            if (!match)
                continue;
            String owner = fieldText(paths[k].hostName, sizeof(paths[k].hostName));
            if (String::equal(owner, hostName)) {
                alreadyInView = true;
                inView = true;
                break;
            }
            if (owner.size() != 0) {
                if (paths[k].hostpersona != API_PERSONA_GENERIC)
                    persona = paths[k].hostpersona;
                CString ownerText = owner.getCString();
                api_status_t status;
                int rc = ZAR_Common::guardedCall(&status, [&]() {
                    return api_removeHost(event, (const char*)ownerText, &status);
                });
                if (rc != 0) {
                    log_message(2,
                                "ZAR_ControllerConfigurationServiceProvider::"
                                "_addInitIDsToView: could not removeHost, trying removePath\n");
                    char name[API_ISCSI_NAME_LEN];
                    copyText(name, initiator, sizeof(name) - 1);
                    rc = ZAR_Common::guardedCall(&status, [&]() {
                        return api_removePath(&status, event, (const char*)ownerText, isFC ? 0 : 1,
                                              isFC ? wwn : API_WWN_NONE, isFC ? NULL : name, 1, 0,
                                              0);
                    });
                    if (rc != 0)
                        log_message(2, "removePath failed.\n");
                }
            }
            if (anyHostSeen || path.port == portID) {
                stoppedOnMatch = true;
                break;
            }
        }
        if (inView)
            continue;
        if (stoppedOnMatch || anyHostSeen) {
            if (isFC)
                wwns.append(wwn);
            else
                iscsiNames.append(initiator);
        }
    }

    // The lists in the form the array takes them.
    zar_u64* wwnList = (zar_u64*)calloc(wwns.size() + 1, sizeof(zar_u64));
    if (!wwnList) {
        log_message(2,
                    "ZAR_ControllerConfigurationServiceProvider::_addInitIDsToView: "
                    "malloc failed to allocate memory for wwn list for HS or HSet vluns\n");
        descriptions.append("malloc failed to allocate memory\n");
        return MethodStatus::Failed;
    }
    char(*nameList)[API_ISCSI_NAME_LEN] =
        (char(*)[API_ISCSI_NAME_LEN])calloc(iscsiNames.size() + 1, API_ISCSI_NAME_LEN);
    if (!nameList) {
        log_message(2,
                    "ZAR_ControllerConfigurationServiceProvider::_addInitIDsToView: "
                    "malloc failed to allocate memory for iscsi name list\n");
        descriptions.append("malloc failed to allocate memory\n");
        free(wwnList);
        return MethodStatus::Failed;
    }
    for (Uint32 i = 0; i < wwns.size(); i++)
        wwnList[i] = wwns[i];
    for (Uint32 i = 0; i < iscsiNames.size(); i++)
        copyText(nameList[i], iscsiNames[i], API_ISCSI_NAME_LEN - 1);

    Boolean added = false;
    if (wwns.size() == 0 && iscsiNames.size() == 0) {
        if (!alreadyInView) {
            log_message(2,
                        "Passed in initiatorIDs are not valid (could be because the "
                        "path is not actually connected to any target port)\n");
            descriptions.append(
                "InitiatorIDs are not valid because they do not share "
                "the same target port ID as the passed-in SPC\n");
            status = MethodStatus::InvalidParameter;
        }
    } else {
        api_status_t addStatus;
        int rc = ZAR_Common::guardedCall(&addStatus, [&]() {
            return api_addPath(event, (const char*)viewHost, wwns.size(), wwnList,
                               iscsiNames.size(), nameList, override, &addStatus);
        });
        if (rc == 0) {
            added = true;
            if (persona != API_PERSONA_GENERIC) {
                api_host_change_t change;
                memset(&change, 0, sizeof(change));
                change.persona = persona;
                change.personaIsSet = 1;
                api_status_t setStatus;
                ZAR_Common::guardedCall(&setStatus, [&]() {
                    return api_setHost(event, (const char*)viewHost, &change, &setStatus);
                });
            }
        } else {
            char errText[512];
            api_getErrorText(errText, sizeof(errText), &addStatus);
            log_message(2, "Error from api_addPath: %s\n", errText);
            descriptions.append(String(errText) + "/n");
            status = MethodStatus::Failed;
        }
    }

    free(wwnList);
    free(nameList);
    if (status == MethodStatus::Success && added)
        descriptions.append("InitiatorID added to " + hostName);
    return status;
}

PEGASUS_NAMESPACE_END
