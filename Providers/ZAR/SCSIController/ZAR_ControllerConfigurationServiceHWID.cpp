//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceHWID.cpp: exposing LUs to hosts named
// by host name (a hardware ID collection is a host or host set on the
// array) and hiding LUs from the view of a host or host set.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <string.h>

#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

using namespace CCSUtil;

void ZAR_ControllerConfigurationServiceProvider::_exposeLUsToStorageHardwareIDCollection(
    api_evtparam_t* event, const OperationContext&, const Array<CIMParamValue>& inParameters,
    MethodResultResponseHandler& handler)
{
    static const char* const allowed[] = {
        "LUNames",        "HostNames",       "DeviceNumbers",
        "DeviceAccesses", "TargetPortLPIDs", "ProtocolControllers",
        "Override",       "NoVCN",           0};
    log_message(4,
                "--> ZAR_ControllerConfigurationServiceProvider:: "
                "_exposeLUsToStorageHardwareIDCollection\n");
    MethodResult result;
    Params p;
    Array<CIMObjectPath> views;

    do {
        if (inParameters.size() == 0) {
            result.fail(5, "Invalid number of parameters");
            break;
        }
        if (!readParams(inParameters, allowed, true, p, result))
            break;
        if (p.luNames.size() == 0 || p.hostNames.size() == 0 || p.deviceAccesses.size() == 0 ||
            p.protocolControllers.size() != 0) {
            result.fail(1,
                        "Use case not supported: Only 1 use case is supported: "
                        "Create a New View");
            break;
        }
        log_message(4, "create new view\n");
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

        // Without device numbers only the first LU is exposed.
        Uint32 luCount = p.deviceNumbers.size() != 0 ? p.deviceNumbers.size() : 1;
        Boolean end = false;
        for (Uint32 h = 0; h < p.hostNames.size() && !end; h++) {
            String& host = p.hostNames[h];
            for (Uint32 j = 0; j < luCount && !end; j++) {
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

                // No ports given: one VLUN for the host on every port.
                Array<Uint16> ports;
                if (p.targetPortLPIDs.size() == 0)
                    ports.append(NO_PORT);
                else {
                    Uint16* positions = 0;
                    Uint32 count = ZAR_Common::getPortIDs(p.targetPortLPIDs, &positions);
                    for (Uint32 k = 0; k < count; k++) {
                        if (positions[k] != NO_PORT)
                            ports.append(positions[k]);
                    }
                    delete[] positions;
                    if (ports.size() == 0) {
                        result.fail(5, "None of the passed in TargetPortIDs are valid\n");
                        end = true;
                        break;
                    }
                }

                CString hostText = host.getCString();
                for (Uint32 k = 0; k < ports.size(); k++) {
                    Uint16 port = ports[k];
                    zar_u32 lun = number;
                    char errText[API_ERRTEXT_LEN];
                    errText[0] = '\0';
                    // A wait that times out ends this LU's ports; the next
                    // LU and host are still tried.
                    int rc = API_E_SEM_TIMEOUT;
                    Boolean timedOut = false;
                    {
                        ZAR_ArraySemaphore semaphore;
                        timedOut = !semaphore.held();
                        if (timedOut)
                            strcpy(errText, "Semaphore Timed-Out");
                        else
                            rc = api_createVLUN(event, vvHigh, vvLow, &lun,
                                                host.size() ? (const char*)hostText : NULL,
                                                API_WWN_NONE, NULL, port, p.override, p.noVCN,
                                                errText, sizeof(errText));
                    }

                    String item = "LU=" + lu;
                    if (lun != LUN_NOT_GIVEN)
                        item.append(",DeviceNumber=0x" + hex(lun));
                    if (host.size() != 0)
                        item.append(",HostName=" + host);
                    if (port != NO_PORT)
                        item.append(",Port=" + portText(port));
                    item.append(": ");
                    if (rc != 0) {
                        result.fail(mapCreateError(rc), item + errText + "\n");
                        if (timedOut)
                            break;
                        continue;
                    }
                    Array<CIMObjectPath> touched = _getAffectedSPCPaths(host, lun, lu, port);
                    for (Uint32 t = 0; t < touched.size(); t++)
                        appendUnique(views, touched[t]);
                    result.descriptions.append(item + "Success" + "\n");
                }
            }
        }
        if (views.size() != 0)
            result.outParams.append(CIMParamValue("ProtocolControllers", CIMValue(views)));
    } while (false);

    finish(result, handler,
           "<-- ZAR_ControllerConfigurationServiceProvider:: "
           "_exposeLUsToStorageHardwareIDCollection\n");
}

void ZAR_ControllerConfigurationServiceProvider::_hideLUsFromStorageHardwareIDCollection(
    api_evtparam_t* event, const OperationContext& context,
    const Array<CIMParamValue>& inParameters, MethodResultResponseHandler& handler)
{
    static const char* const allowed[] = {"LUNames", "DeviceNumbers", "ProtocolControllers",
                                          "NoVCN", 0};
    log_message(4,
                "--> ZAR_ControllerConfigurationServiceProvider:: "
                "_hideLUsFromStorageHardwareIDCollection\n");
    MethodResult result;
    Params p;
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));

    do {
        if (inParameters.size() == 0) {
            result.fail(5, "Invalid number of parameters");
            break;
        }
        if (!readParams(inParameters, allowed, true, p, result))
            break;
        if (p.luNames.size() == 0 || p.protocolControllers.size() != 1) {
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
        if (!ZAR_Common::verifyRefMethodParam(p.protocolControllers[0],
                                              CIMNamespaceName(ZAR_NAMESPACE), _systemAddress,
                                              classes) ||
            !viewKeysOfThisArray(p.protocolControllers[0], _systemName)) {
            result.status = 5;
            break;
        }
        String deviceID = ZAR_Common::getStringProperty(p.protocolControllers[0], "DeviceID");
        Uint32 type = 0;
        String hostName;
        Uint16 port = NO_PORT;
        ZAR_Common::deReferenceSPCDeviceID(deviceID, type, hostName, port, false);
        if ((type != API_VLUN_MATCHED_SET && type != API_VLUN_HOST_SEES &&
             type != API_VLUN_HOST_SET) ||
            hostName.size() == 0) {
            result.fail(5, "Invalid ProtocolControllers");
            break;
        }

        Boolean removed = false;
        if (queryViewTemplates(query, hostName, type, port)) {
            CString hostText = hostName.getCString();
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
                                              (const char*)hostText, API_WWN_NONE, NULL, port,
                                              p.noVCN, errText, sizeof(errText));
                    });
                    if (rc != 0 && errText[0] == '\0')
                        strcpy(errText, "Semaphore Timed-Out");
                    String item = "LU=" + lu;
                    if (p.deviceNumbers.size() != 0)
                        item.append(",DeviceNumber=0x" + p.deviceNumbers[0]);
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
        if (!removed && result.status == 0) {
            result.fail(5, "InitiatorPort is not part of SPC.\n");
            break;
        }
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

    api_freeVLUNs(&query);
    finish(result, handler,
           "<-- ZAR_ControllerConfigurationServiceProvider:: "
           "_hideLUsFromStorageHardwareIDCollection\n");
}

PEGASUS_NAMESPACE_END
