//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceHWID.cpp: exposing LUs to hosts named
// by host name (a hardware ID collection is a host or host set on the
// array) and hiding LUs from the view of a host or host set.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <ZAR_ArrayOwners.h>
#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

using namespace CCSUtil;

namespace {

const char USE_CASE_EXPOSE[] =
    "Use case not supported: Only 1 use case is supported: "
    "Create a New View";
const char USE_CASE_HIDE[] =
    "Use case not supported: Only 1 use case is supported: "
    "Remove LU's from a View";

// The ports named by TargetPortLPIDs; one entry API_PORT_NONE (every
// port) when none is given. False, with status 5, when none of those
// given is a port.
Boolean _targetPorts(const Array<String>& ids, Array<Uint16>& ports, MethodResult& result)
{
    if (ids.size() == 0) {
        ports.append(API_PORT_NONE);
        return true;
    }
    Uint16* positions = 0;
    Uint32 count = ZAR_Common::getPortIDs(ids, &positions);
    for (Uint32 k = 0; k < count; k++) {
        if (positions[k] != API_PORT_NONE)
            ports.append(positions[k]);
    }
    delete[] positions;
    if (ports.size() != 0)
        return true;
    result.fail(MethodStatus::InvalidParameter, "None of the passed in TargetPortIDs are valid\n");
    return false;
}

String _givenDeviceNumber(const vlun&, const Params& p)
{
    return p.deviceNumbers.size() != 0 ? "0x" + p.deviceNumbers[0] : String();
}

}  // namespace

void ZAR_ControllerConfigurationServiceProvider::_exposeLUsToStorageHardwareIDCollection(
    const MethodCall& call)
{
    static const char allowed[] =
        "LUNames HostNames DeviceNumbers DeviceAccesses TargetPortLPIDs ProtocolControllers "
        "Override NoVCN";
    log_message(4,
                "--> ZAR_ControllerConfigurationServiceProvider:: "
                "_exposeLUsToStorageHardwareIDCollection\n");
    MethodResult result;
    Params p;
    Array<CIMObjectPath> views;

    // Each LU (only the first without device numbers) to each host, on
    // each target port; the first invalid LU, device number or port list
    // ends the method.
    auto expose = [&]() {
        Uint32 luCount = p.deviceNumbers.size() != 0 ? p.deviceNumbers.size() : 1;
        for (Uint32 h = 0; h < p.hostNames.size(); h++) {
            String& host = p.hostNames[h];
            for (Uint32 j = 0; j < luCount; j++) {
                String& lu = p.luNames[j];
                LUValues vv;
                if (readLU(p.luNames, p.deviceNumbers, j, LUN_ARRAY_CHOOSES, vv, result) !=
                    LUReading::Ok)
                    return;
                Array<Uint16> ports;
                if (!_targetPorts(p.targetPortLPIDs, ports, result))
                    return;
                for (Uint32 k = 0; k < ports.size(); k++) {
                    Uint16 port = ports[k];
                    zar_u32 lun = vv.number;
                    ExportOutcome outcome =
                        createExport(call.event, vv.high, vv.low, &lun, host, API_WWN_NONE,
                                     String(), port, p.override, p.noVCN);
                    Item item(lu);
                    item.add("DeviceNumber", lun != LUN_NOT_GIVEN ? "0x" + hex(lun) : String())
                        .add("HostName", host)
                        .add("Port", port != API_PORT_NONE ? portText(port) : String());
                    if (!report(result, item, outcome, mapCreateError)) {
                        // A wait that times out ends this LU's ports; the
                        // next LU and host are still tried.
                        if (outcome.timedOut)
                            break;
                        continue;
                    }
                    Array<CIMObjectPath> touched = _getAffectedSPCPaths(host, lun, lu, port);
                    for (Uint32 t = 0; t < touched.size(); t++)
                        appendUnique(views, touched[t]);
                }
            }
        }
    };

    auto run = [&]() {
        if (!readRequest(call.inParameters, allowed, true, p, result))
            return;
        if (p.luNames.size() == 0 || p.hostNames.size() == 0 || p.deviceAccesses.size() == 0 ||
            p.protocolControllers.size() != 0) {
            result.fail(MethodStatus::NotSupported, USE_CASE_EXPOSE);
            return;
        }
        log_message(4, "create new view\n");
        // DeviceAccesses is given here: the size check is strict.
        if (!checkSizes(p, result, true) ||
            !checkDeviceAccesses(p.luNames, p.deviceAccesses, result))
            return;
        expose();
        result.reportViews(views);
    };

    run();
    finish(result, call.handler,
           "<-- ZAR_ControllerConfigurationServiceProvider:: "
           "_exposeLUsToStorageHardwareIDCollection\n");
}

void ZAR_ControllerConfigurationServiceProvider::_hideLUsFromStorageHardwareIDCollection(
    const MethodCall& call)
{
    static const char allowed[] = "LUNames DeviceNumbers ProtocolControllers NoVCN";
    log_message(4,
                "--> ZAR_ControllerConfigurationServiceProvider:: "
                "_hideLUsFromStorageHardwareIDCollection\n");
    MethodResult result;
    Params p;

    auto hide = [&]() {
        if (!readRequest(call.inParameters, allowed, true, p, result))
            return;
        if (p.luNames.size() == 0 || p.protocolControllers.size() != 1) {
            result.fail(MethodStatus::NotSupported, USE_CASE_HIDE);
            return;
        }
        if (!checkSizes(p, result))
            return;
        CIMObjectPath& view = p.protocolControllers[0];
        if (!isViewReference(view, _systemAddress, ZAR_ISCSI_CONTROLLER, ZAR_SCSI_CONTROLLER) ||
            !viewKeysOfThisArray(view, _systemName)) {
            result.status = MethodStatus::InvalidParameter;
            return;
        }
        String deviceID = ZAR_Common::getStringProperty(view, "DeviceID");
        Uint32 type = 0;
        String hostName;
        Uint16 port = API_PORT_NONE;
        ZAR_Common::deReferenceSPCDeviceID(deviceID, type, hostName, port, false);
        if ((type != API_VLUN_MATCHED_SET && type != API_VLUN_HOST_SEES &&
             type != API_VLUN_HOST_SET) ||
            hostName.size() == 0) {
            result.fail(MethodStatus::InvalidParameter, "Invalid ProtocolControllers");
            return;
        }

        ZAR_VlunQuery query;
        Boolean removed = queryViewTemplates(*query, hostName, type, port) &&
                          removeViewExports(call.event, *query, p.luNames, type, port, hostName,
                                            p.noVCN, _givenDeviceNumber, p, result);
        if (!removed && result.ok()) {
            result.fail(MethodStatus::InvalidParameter, "InitiatorPort is not part of SPC.\n");
            return;
        }
        // The view went with its last LU, or stays to be reported.
        if (result.ok() && viewStillExists(_cimom, call.context, view))
            result.outParams.append(
                CIMParamValue("ProtocolControllers", CIMValue(p.protocolControllers)));
    };

    hide();
    finish(result, call.handler,
           "<-- ZAR_ControllerConfigurationServiceProvider:: "
           "_hideLUsFromStorageHardwareIDCollection\n");
}

PEGASUS_NAMESPACE_END
