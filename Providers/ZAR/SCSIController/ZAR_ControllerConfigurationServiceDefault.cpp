//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceDefault.cpp: ExposeDefaultLUs and
// HideDefaultLUs, the LUs that every host sees through a target port
// (port-present exports).
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <string.h>

#include <ZAR_ArrayOwners.h>
#include <ZAR_Common.h>
#include <ZAR_ArrayRecords.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

using namespace CCSUtil;

namespace {

// The views associated with a target port's endpoint; empty when the
// server cannot say. It is asked after an export was made: failing the
// call then would report as not done a change that stands, so the error
// is logged and the export reported without its views.
Array<CIMObjectPath> _viewsOfEndpoint(CIMOMHandle& cimom, const OperationContext& context,
                                      const CIMObjectPath& endpoint, const char* assocClass,
                                      const char* viewClass)
{
    try {
        return cimom.associatorNames(context, CIMNamespaceName(ZAR_NAMESPACE), endpoint,
                                     CIMName(assocClass), CIMName(viewClass), "AvailableSAP",
                                     "ManagedElement");
    } catch (Exception& e) {
        log_message(2,
                    "ZAR_ControllerConfigurationServiceProvider: no views of "
                    "%s: %s\n",
                    (const char*)endpoint.toString().getCString(),
                    (const char*)e.getMessage().getCString());
    }
    return Array<CIMObjectPath>();
}

}  // namespace

void ZAR_ControllerConfigurationServiceProvider::_exposeDefaultLUs(const MethodCall& call)
{
    static const char allowed[] =
        "LUNames TargetPortIDs DeviceNumbers DeviceAccesses ProtocolControllers Override NoVCN";
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider:: _exposeDefaultLUs\n");
    MethodResult result;
    Params p;
    Array<CIMObjectPath> views;
    Array<String> seen;

    auto run = [&]() {
        if (!readRequest(call.inParameters, allowed, false, p, result))
            return;
        if (p.luNames.size() == 0 || p.targetPortIDs.size() == 0 || p.deviceAccesses.size() == 0 ||
            p.protocolControllers.size() != 0) {
            result.fail(MethodStatus::NotSupported,
                        "Use case not supported: Only 1 use case is supported: "
                        "Create a New View");
            return;
        }
        // DeviceAccesses is given here: the size check is strict.
        if (!checkSizes(p, result, true) ||
            !checkDeviceAccesses(p.luNames, p.deviceAccesses, result))
            return;

        // A failure here reaches the client before anything is changed.
        Array<CIMObjectPath> endpoints = _cimom.enumerateInstanceNames(
            call.context, CIMNamespaceName(ZAR_NAMESPACE), CIMName(ZAR_ISCSI_ENDPOINT));
        Boolean end = false;
        for (Uint32 t = 0; t < p.targetPortIDs.size() && !end; t++) {
            String& id = p.targetPortIDs[t];
            Uint64 high = 0, wwn = API_WWN_NONE;
            Boolean isFC = wwnToInt(id, high, wwn) && id.size() == 16;
            Uint16 port = API_PORT_NONE;
            CIMObjectPath endpoint;
            if (!isFC) {
                for (Uint32 e = 0; e < endpoints.size(); e++) {
                    if (String::equalNoCase(ZAR_Common::getStringProperty(endpoints[e], "Name"),
                                            id)) {
                        endpoint = endpoints[e];
                        break;
                    }
                }
                String name = ZAR_Common::extractISCSIName(id);
                port = ZAR_Common::getPortLPID(name);
                if (port == API_PORT_NONE)
                    port = _extractLPIDFromPortiSCSIName(name);
            } else {
                port = ZAR_Common::getPortLPID(wwn);
                if (port == API_PORT_NONE && wwn != API_WWN_NONE)
                    port = lpidFromWWNBits(wwn);
            }
            if (port == API_PORT_NONE) {
                result.fail(MethodStatus::InvalidInitiator,
                            "TargetPortID=" + id + ": " + "Target port ID is invalid" + "\n");
                break;
            }
            if (badPortPosition(port)) {
                result.fail(MethodStatus::InvalidParameter,
                            "Port=" + portText(port) + ": " + "Target port ID is invalid" + "\n");
                continue;
            }

            // Without device numbers only the first LU is exposed.
            Uint32 luCount = p.deviceNumbers.size() != 0 ? p.deviceNumbers.size() : 1;
            for (Uint32 j = 0; j < luCount; j++) {
                String& lu = p.luNames[j];
                LUValues vv;
                if (readLU(p.luNames, p.deviceNumbers, j, LUN_ARRAY_CHOOSES, vv, result) !=
                    LUReading::Ok) {
                    end = true;
                    break;
                }
                zar_u32 lun = vv.number;
                ExportOutcome outcome =
                    createExport(call.event, vv.high, vv.low, &lun, String(), API_WWN_NONE,
                                 String(), port, p.override, p.noVCN);
                Item item(lu);
                item.add("DeviceNumber", lun != LUN_NOT_GIVEN ? "0x" + hex(lun) : String())
                    .add("TargetPortID", id);
                if (outcome.rc != 0) {
                    report(result, item, outcome, mapCreateError);
                    continue;
                }

                // The port-present views of this port.
                Array<CIMObjectPath> found;
                if (!isFC) {
                    found =
                        _viewsOfEndpoint(_cimom, call.context, endpoint,
                                         "ZAR_iSCSISAPAvailableForElement", ZAR_ISCSI_CONTROLLER);
                } else {
                    ZAR_FCPortList ports;
                    ports.count = -1;
                    {
                        ZAR_ArraySemaphore semaphore;
                        if (semaphore.held())
                            ports.count = api_getFCPorts(wwn, 1, 0, &ports.list);
                    }
                    CIMObjectPath fcEndpoint =
                        ZAR_Common::buildFCEndpointPath(ZAR_FC_ENDPOINT, _systemName, id);
                    found = _viewsOfEndpoint(_cimom, call.context, fcEndpoint,
                                             "ZAR_SAPAvailableForElement", ZAR_SCSI_CONTROLLER);
                }
                for (Uint32 v = 0; v < found.size(); v++) {
                    String text = found[v].toString();
                    String deviceID = ZAR_Common::getStringProperty(found[v], "DeviceID");
                    Uint32 type = 0;
                    String host;
                    Uint16 viewPort = API_PORT_NONE;
                    ZAR_Common::deReferenceSPCDeviceID(deviceID, type, host, viewPort, false);
                    if (text.find("default") == PEG_NOT_FOUND && type == API_VLUN_PORT_PRESENT &&
                        !ZAR_Common::isPartOfArray(text, seen)) {
                        seen.append(text);
                        views.append(found[v]);
                    }
                }
                report(result, item, outcome, mapCreateError);
            }
        }
        result.reportViews(views);
    };

    run();
    finish(result, call.handler,
           "<-- ZAR_ControllerConfigurationServiceProvider:: _exposeDefaultLUs\n");
}

void ZAR_ControllerConfigurationServiceProvider::_hideDefaultLUs(const MethodCall& call)
{
    static const char allowed[] = "LUNames TargetPortIDs DeviceNumbers ProtocolControllers NoVCN";
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider:: _hideDefaultLUs\n");
    MethodResult result;
    Params p;
    ZAR_VlunQuery query;
    Uint16 viewPort = API_PORT_NONE;

    // The LUs found on the port, in the order found: name, LUN, port.
    Array<String> matchLUs;
    Array<Uint32> matchLUNs;
    Array<Uint16> matchPorts;

    auto run = [&]() {
        if (!readRequest(call.inParameters, allowed, true, p, result))
            return;
        if (p.luNames.size() == 0 || p.targetPortIDs.size() != 0 ||
            p.protocolControllers.size() != 1) {
            result.fail(MethodStatus::NotSupported,
                        "Use case not supported: Only 1 use case is supported: "
                        "Remove LU's from a View");
            return;
        }
        if (!checkLURemoval(p, _systemAddress, result))
            return;
        CIMInstance view;
        try {
            view = _cimom.getInstance(call.context, CIMNamespaceName(ZAR_NAMESPACE),
                                      p.protocolControllers[0], false, false, false,
                                      CIMPropertyList());
        } catch (...) {
            result.fail(MethodStatus::InvalidParameter, "Invalid ProtocolControllers");
            return;
        }
        CIMName viewClass = view.getClassName();
        String deviceID = ZAR_Common::getStringProperty(view, "DeviceID");

        if (deviceID.find("default") == PEG_NOT_FOUND) {
            // A port-present view is accepted, but its LUs are not those of
            // a default view: nothing is removed.
            Uint32 type = 0;
            String host;
            ZAR_Common::deReferenceSPCDeviceID(deviceID, type, host, viewPort, false);
            if (type != API_VLUN_PORT_PRESENT || viewPort == API_PORT_NONE) {
                result.fail(MethodStatus::InvalidParameter, "Invalid ProtocolControllers");
                return;
            }
        } else {
            String name = ZAR_Common::getStringProperty(view, "Name");
            Uint16 port = API_PORT_NONE;
            port_type_t portType = PORT_TYPE_UNKNOWN;
            if (viewClass.equal(CIMName(ZAR_SCSI_CONTROLLER))) {
                portType = PORT_TYPE_FC;
                Uint64 high = 0, wwn = API_WWN_NONE;
                if (wwnToInt(name, high, wwn) && name.size() == 16) {
                    port = ZAR_Common::getPortLPID(wwn);
                    if (port == API_PORT_NONE && wwn != API_WWN_NONE)
                        port = lpidFromWWNBits(wwn);
                }
            } else if (viewClass.equal(CIMName(ZAR_ISCSI_CONTROLLER))) {
                portType = PORT_TYPE_ISCSI;
                String iscsiName = ZAR_Common::extractISCSIName(name);
                port = ZAR_Common::getPortLPID(iscsiName);
                if (port == API_PORT_NONE)
                    port = _extractLPIDFromPortiSCSIName(iscsiName);
            }
            if (port == API_PORT_NONE) {
                result.fail(MethodStatus::InvalidParameter, "Invalid ProtocolControllers");
                return;
            }

            ZAR_ArrayRecords::narrow(*query, String(), API_VLUN_PORT_PRESENT, port);
            int rc = underSemaphore([&]() { return api_getSCSIProtocolControllers(query.get()); });
            if (rc != 0) {
                log_message(2,
                            "\tZAR_ControllerProvider::_buildAssociationInstances ()"
                            "  getVLUNs() for volume failed, retcode = %d \n",
                            rc);
                api_freeVLUNs(query.get());
            }
            for (zar_u32 r = 0; r < query->count; r++) {
                const vlun& record = query->vluns[r];
                // Records of a default view carry the default-view mark.
                if (record.hporttype != portType ||
                    (int)record.volAccess != API_VOL_ACCESS_DEFAULT_VIEW || record.port != port)
                    continue;
                for (Uint32 l = 0; l < p.luNames.size(); l++) {
                    if (String::equalNoCase(fieldText(record.vvwwn, sizeof(record.vvwwn)),
                                            p.luNames[l])) {
                        matchLUs.append(p.luNames[l]);
                        matchLUNs.append(record.lun);
                        matchPorts.append(port);
                    }
                }
            }
        }

        // The default view shows no target of its own.
        String target = viewPort == API_PORT_NONE ? String() : portText(viewPort);
        for (Uint32 m = 0; m < matchLUs.size(); m++) {
            String& lu = matchLUs[m];
            Uint16 port = matchPorts[m];
            if (matchLUNs[m] == LUN_NOT_GIVEN) {
                result.fail(MethodStatus::Failed,
                            "LU=" + lu + ": " + "LU is not exported in this view" + "\n");
                continue;
            }
            if (port == API_PORT_NONE || badPortPosition(port)) {
                result.fail(MethodStatus::InvalidParameter,
                            "Port=" + portText(port) + ": " + "Target port ID is invalid" + "\n");
                continue;
            }
            Uint64 vvHigh = 0, vvLow = API_WWN_NONE;
            if (!wwnToInt(lu, vvHigh, vvLow)) {
                result.fail(MethodStatus::InvalidLogicalUnit,
                            "LU=" + lu + ": " + "LUName is invalid" + "\n");
                break;
            }
            Uint32 lun = matchLUNs[m];
            ExportOutcome outcome =
                removeExport(call.event, vvHigh, vvLow, lun, String(), port, p.noVCN);
            Item item(lu);
            item.put("DeviceNumber", "0x" + hex(lun)).put("TargetPortID", target);
            report(result, item, outcome, mapRemoveError);
        }
    };

    run();
    finish(result, call.handler,
           "<-- ZAR_ControllerConfigurationServiceProvider:: _hideDefaultLUs\n");
}

PEGASUS_NAMESPACE_END
