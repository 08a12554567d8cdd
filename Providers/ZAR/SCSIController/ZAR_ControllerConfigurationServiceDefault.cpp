//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceDefault.cpp: ExposeDefaultLUs and
// HideDefaultLUs, the LUs that every host sees through a target port
// (port-present exports).
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <string.h>

#include <ZAR_Common.h>

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

void ZAR_ControllerConfigurationServiceProvider::_exposeDefaultLUs(
    api_evtparam_t* event, const OperationContext& context,
    const Array<CIMParamValue>& inParameters, MethodResultResponseHandler& handler)
{
    static const char* const allowed[] = {"LUNames",
                                          "TargetPortIDs",
                                          "DeviceNumbers",
                                          "DeviceAccesses",
                                          "ProtocolControllers",
                                          "Override",
                                          "NoVCN",
                                          0};
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider:: _exposeDefaultLUs\n");
    MethodResult result;
    Params p;
    Array<CIMObjectPath> views;
    Array<String> seen;

    do {
        if (inParameters.size() == 0) {
            result.fail(5, "Invalid number of parameters");
            break;
        }
        if (!readParams(inParameters, allowed, false, p, result))
            break;
        if (p.luNames.size() == 0 || p.targetPortIDs.size() == 0 || p.deviceAccesses.size() == 0 ||
            p.protocolControllers.size() != 0) {
            result.fail(1,
                        "Use case not supported: Only 1 use case is supported: "
                        "Create a New View");
            break;
        }
        if (p.deviceNumbers.size() != 0 && p.deviceNumbers.size() != p.luNames.size()) {
            result.fail(5, "Size of LUName and DeviceNumber arrays has to be the same");
            break;
        }
        if (p.deviceAccesses.size() != p.luNames.size()) {
            result.fail(5, "Size of LUName and DeviceAccess arrays has to be the same");
            break;
        }
        if (!checkDeviceAccesses(p.luNames, p.deviceAccesses, result))
            break;

        // A failure here reaches the client before anything is changed.
        Array<CIMObjectPath> endpoints = _cimom.enumerateInstanceNames(
            context, CIMNamespaceName(ZAR_NAMESPACE), CIMName("ZAR_iSCSIProtocolEndpoint"));
        Boolean end = false;
        for (Uint32 t = 0; t < p.targetPortIDs.size() && !end; t++) {
            String& id = p.targetPortIDs[t];
            Uint64 high = 0, wwn = WWN_MARKER;
            Boolean isFC = wwnToInt(id, high, wwn) && id.size() == 16;
            Uint16 port = NO_PORT;
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
                if (port == NO_PORT)
                    port = _extractLPIDFromPortiSCSIName(name);
            } else {
                port = ZAR_Common::getPortLPID(wwn);
                if (port == NO_PORT && wwn != WWN_MARKER)
                    port = lpidFromWWNBits(wwn);
            }
            if (port == NO_PORT) {
                result.fail(4098, "TargetPortID=" + id + ": " + "Target port ID is invalid" + "\n");
                break;
            }
            if (badPortPosition(port)) {
                result.fail(5,
                            "Port=" + portText(port) + ": " + "Target port ID is invalid" + "\n");
                continue;
            }

            // Without device numbers only the first LU is exposed.
            Uint32 luCount = p.deviceNumbers.size() != 0 ? p.deviceNumbers.size() : 1;
            for (Uint32 j = 0; j < luCount; j++) {
                String& lu = p.luNames[j];
                Uint64 vvHigh = 0, vvLow = WWN_MARKER;
                if (!wwnToInt(lu, vvHigh, vvLow)) {
                    result.fail(4097, "LU=" + lu + ": " + "LUName is invalid" + "\n");
                    end = true;
                    break;
                }
                Uint32 number = LUN_ARRAY_CHOOSES;
                if (p.deviceNumbers.size() != 0 && p.deviceNumbers[j].size() != 0 &&
                    !readHex(p.deviceNumbers[j], number)) {
                    result.fail(5, "DeviceNumber=0x" + p.deviceNumbers[j] + ": " +
                                       "DeviceNumber is invalid" + "\n");
                    end = true;
                    break;
                }
                zar_u32 lun = number;
                char errText[API_ERRTEXT_LEN];
                errText[0] = '\0';
                int rc = underSemaphore([&]() {
                    return api_createVLUN(event, vvHigh, vvLow, &lun, NULL, API_WWN_NONE, NULL,
                                          port, p.override, p.noVCN, errText, sizeof(errText));
                });
                if (rc != 0 && errText[0] == '\0')
                    strcpy(errText, "Semaphore Timed-Out");
                String item = "LU=" + lu;
                if (lun != LUN_NOT_GIVEN)
                    item.append(",DeviceNumber=0x" + hex(lun));
                if (id.size() != 0)
                    item.append(",TargetPortID=" + id);
                item.append(": ");
                if (rc != 0) {
                    result.fail(mapCreateError(rc), item + errText + "\n");
                    continue;
                }

                // The port-present views of this port.
                Array<CIMObjectPath> found;
                if (!isFC) {
                    found =
                        _viewsOfEndpoint(_cimom, context, endpoint,
                                         "ZAR_iSCSISAPAvailableForElement", "ZAR_iSCSIController");
                } else {
                    api_FCPort_t* ports = 0;
                    int count = -1;
                    {
                        ZAR_ArraySemaphore semaphore;
                        if (semaphore.held())
                            count = api_getFCPorts(wwn, 1, 0, &ports);
                    }
                    String deviceID;
                    if (count > 0)
                        deviceID = fieldText(ports[0].deviceID, sizeof(ports[0].deviceID));
                    if (ports)
                        api_freeFCPorts(ports, count > 0 ? count : 0);
                    CIMObjectPath fcEndpoint = ZAR_Common::buildFCEndpointPath(
                        "ZAR_SCSIProtocolFCEndpoint", _systemName, id);
                    found = _viewsOfEndpoint(_cimom, context, fcEndpoint,
                                             "ZAR_SAPAvailableForElement", "ZAR_SCSIController");
                }
                for (Uint32 v = 0; v < found.size(); v++) {
                    String text = found[v].toString();
                    String deviceID = ZAR_Common::getStringProperty(found[v], "DeviceID");
                    Uint32 type = 0;
                    String host;
                    Uint16 viewPort = NO_PORT;
                    ZAR_Common::deReferenceSPCDeviceID(deviceID, type, host, viewPort, false);
                    if (text.find("default") == PEG_NOT_FOUND && type == API_VLUN_PORT_PRESENT &&
                        !ZAR_Common::isPartOfArray(text, seen)) {
                        seen.append(text);
                        views.append(found[v]);
                    }
                }
                result.descriptions.append(item + "Success" + "\n");
            }
        }
        if (views.size() != 0)
            result.outParams.append(CIMParamValue("ProtocolControllers", CIMValue(views)));
    } while (false);

    finish(result, handler, "<-- ZAR_ControllerConfigurationServiceProvider:: _exposeDefaultLUs\n");
}

void ZAR_ControllerConfigurationServiceProvider::_hideDefaultLUs(
    api_evtparam_t* event, const OperationContext& context,
    const Array<CIMParamValue>& inParameters, MethodResultResponseHandler& handler)
{
    static const char* const allowed[] = {
        "LUNames", "TargetPortIDs", "DeviceNumbers", "ProtocolControllers", "NoVCN", 0};
    log_message(4, "--> ZAR_ControllerConfigurationServiceProvider:: _hideDefaultLUs\n");
    MethodResult result;
    Params p;
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    Uint16 viewPort = NO_PORT;

    // The LUs found on the port, in the order found: name, LUN, port.
    Array<String> matchLUs;
    Array<Uint32> matchLUNs;
    Array<Uint16> matchPorts;

    do {
        if (inParameters.size() == 0) {
            result.fail(5, "Invalid number of parameters");
            break;
        }
        if (!readParams(inParameters, allowed, true, p, result))
            break;
        if (p.luNames.size() == 0 || p.targetPortIDs.size() != 0 ||
            p.protocolControllers.size() != 1) {
            result.fail(1,
                        "Use case not supported: Only 1 use case is supported: "
                        "Remove LU's from a View");
            break;
        }
        if (p.deviceNumbers.size() != 0 && p.deviceNumbers.size() != p.luNames.size()) {
            result.fail(5, "Size of LUName and DeviceNumber arrays has to be the same");
            break;
        }
        Array<CIMName> classes;
        classes.append(CIMName("ZAR_iSCSIController"));
        classes.append(CIMName("ZAR_SCSIController"));
        classes.append(CIMName("ZAR_iSCSINode"));
        if (!ZAR_Common::verifyRefMethodParam(p.protocolControllers[0],
                                              CIMNamespaceName(ZAR_NAMESPACE), _systemAddress,
                                              classes)) {
            result.status = 5;
            break;
        }
        CIMInstance view;
        try {
            view = _cimom.getInstance(context, CIMNamespaceName(ZAR_NAMESPACE),
                                      p.protocolControllers[0], false, false, false,
                                      CIMPropertyList());
        } catch (...) {
            result.fail(5, "Invalid ProtocolControllers");
            break;
        }
        CIMName viewClass = view.getClassName();
        String deviceID = ZAR_Common::getStringProperty(view, "DeviceID");

        if (deviceID.find("default") == PEG_NOT_FOUND) {
            // A port-present view is accepted, but its LUs are not those of
            // a default view: nothing is removed.
            Uint32 type = 0;
            String host;
            ZAR_Common::deReferenceSPCDeviceID(deviceID, type, host, viewPort, false);
            if (type != API_VLUN_PORT_PRESENT || viewPort == NO_PORT) {
                result.fail(5, "Invalid ProtocolControllers");
                break;
            }
        } else {
            String name = ZAR_Common::getStringProperty(view, "Name");
            Uint16 port = NO_PORT;
            port_type_t portType = PORT_TYPE_UNKNOWN;
            if (viewClass.equal(CIMName("ZAR_SCSIController"))) {
                portType = PORT_TYPE_FC;
                Uint64 high = 0, wwn = WWN_MARKER;
                if (wwnToInt(name, high, wwn) && name.size() == 16) {
                    port = ZAR_Common::getPortLPID(wwn);
                    if (port == NO_PORT && wwn != WWN_MARKER)
                        port = lpidFromWWNBits(wwn);
                }
            } else if (viewClass.equal(CIMName("ZAR_iSCSIController"))) {
                portType = PORT_TYPE_ISCSI;
                String iscsiName = ZAR_Common::extractISCSIName(name);
                port = ZAR_Common::getPortLPID(iscsiName);
                if (port == NO_PORT)
                    port = _extractLPIDFromPortiSCSIName(iscsiName);
            }
            if (port == NO_PORT) {
                result.fail(5, "Invalid ProtocolControllers");
                break;
            }

            query.vluntype = API_VLUN_PORT_PRESENT;
            query.vluntypeIsSet = 1;
            query.port = port;
            query.portIsSet = 1;
            int rc = underSemaphore([&]() { return api_getSCSIProtocolControllers(&query); });
            if (rc != 0) {
                log_message(2,
                            "\tZAR_ControllerProvider::_buildAssociationInstances ()"
                            "  getVLUNs() for volume failed, retcode = %d \n",
                            rc);
                api_freeVLUNs(&query);
            }
            for (zar_u32 r = 0; r < query.count; r++) {
                const vlun& record = query.vluns[r];
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
        String target = viewPort == NO_PORT ? String() : portText(viewPort);
        for (Uint32 m = 0; m < matchLUs.size(); m++) {
            String& lu = matchLUs[m];
            Uint16 port = matchPorts[m];
            if (matchLUNs[m] == LUN_NOT_GIVEN) {
                result.fail(4, "LU=" + lu + ": " + "LU is not exported in this view" + "\n");
                continue;
            }
            if (port == NO_PORT || badPortPosition(port)) {
                result.fail(5,
                            "Port=" + portText(port) + ": " + "Target port ID is invalid" + "\n");
                continue;
            }
            Uint64 vvHigh = 0, vvLow = WWN_MARKER;
            if (!wwnToInt(lu, vvHigh, vvLow)) {
                result.fail(4097, "LU=" + lu + ": " + "LUName is invalid" + "\n");
                break;
            }
            char errText[API_ERRTEXT_LEN];
            errText[0] = '\0';
            Uint32 lun = matchLUNs[m];
            int rc = underSemaphore([&]() {
                return api_removeVLUN(event, vvHigh, vvLow, lun, NULL, API_WWN_NONE, NULL, port,
                                      p.noVCN, errText, sizeof(errText));
            });
            if (rc != 0 && errText[0] == '\0')
                strcpy(errText, "Semaphore Timed-Out");
            String item =
                "LU=" + lu + ",DeviceNumber=0x" + hex(lun) + ",TargetPortID=" + target + ": ";
            if (rc != 0)
                result.fail(mapRemoveError(rc), item + errText + "\n");
            else
                result.descriptions.append(item + "Success" + "\n");
        }
    } while (false);

    api_freeVLUNs(&query);
    finish(result, handler, "<-- ZAR_ControllerConfigurationServiceProvider:: _hideDefaultLUs\n");
}

PEGASUS_NAMESPACE_END
