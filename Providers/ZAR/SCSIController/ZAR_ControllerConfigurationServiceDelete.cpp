//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceDelete.cpp: DeleteProtocolController.
// A view exists only as its VLUNs: deleting it removes each of them, and
// with DeleteUnits the volumes behind it are deleted afterwards.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <string.h>

#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

using namespace CCSUtil;

void ZAR_ControllerConfigurationServiceProvider::_deleteProtocolController(
    api_evtparam_t* event, const OperationContext& context,
    const Array<CIMParamValue>& inParameters, MethodResultResponseHandler& handler)
{
    MethodResult result;
    api_vlunsInfo_t query;
    memset(&query, 0, sizeof(query));
    Boolean deleteUnits = false;
    CIMObjectPath view;
    Boolean haveView = false;

    do {
        if (inParameters.size() == 0) {
            result.fail(5, "Invalid number of parameters");
            break;
        }
        // Other parameters are passed over.
        Boolean stop = false;
        for (Uint32 i = 0; i < inParameters.size() && !stop; i++) {
            String name = inParameters[i].getParameterName();
            CIMValue value = inParameters[i].getValue();
            log_message(4, "Param %s\n", (const char*)name.getCString());
            if (value.isNull())
                continue;
            try {
                if (String::equalNoCase(name, "DeleteUnits")) {
                    value.get(deleteUnits);
                    continue;
                }
                if (!String::equalNoCase(name, "ProtocolController"))
                    continue;
                value.get(view);
            } catch (Exception&) {
                result.fail(5, "Invalid parameter: " + name);
                stop = true;
                break;
            }
            Array<CIMName> classes;
            classes.append(CIMName("ZAR_SCSIController"));
            classes.append(CIMName("ZAR_iSCSIController"));
            if (!ZAR_Common::verifyRefMethodParam(view, CIMNamespaceName(ZAR_NAMESPACE),
                                                  _systemAddress, classes)) {
                result.fail(5,
                            "Parameter ProtocolController does not contain "
                            "correct hostname or namespace or className");
                stop = true;
                break;
            }
            try {
                _cimom.getInstance(context, CIMNamespaceName(ZAR_NAMESPACE), view, false, false,
                                   false, CIMPropertyList());
            } catch (...) {
                log_message(2, "SPC is not found\n");
                result.fail(5, "SPC " + view.toString() + " is not found");
                stop = true;
                break;
            }
            haveView = true;
        }
        if (stop)
            break;
        if (!haveView) {
            result.fail(5, "Invalid ProtocolControllers");
            break;
        }

        String creationClass = ZAR_Common::getStringProperty(view, "CreationClassName");
        String deviceID = ZAR_Common::getStringProperty(view, "DeviceID");
        Uint32 type = 0;
        String hostName;
        Uint16 port = NO_PORT;
        ZAR_Common::deReferenceSPCDeviceID(deviceID, type, hostName, port,
                                           view.getClassName().equal(CIMName("ZAR_iSCSINode")));
        if (port == NO_PORT && hostName.size() == 0) {
            result.fail(5, "Invalid ProtocolControllers");
            break;
        }
        if (port != NO_PORT && badPortPosition(port)) {
            result.fail(5, "Port=" + portText(port) + ": " + "Target port ID is invalid" + "\n");
            break;
        }

        Boolean removed = false;
        Array<CIMObjectPath> volumes;
        if (queryViewTemplates(query, hostName, type, port)) {
            // Without its volumes nothing of the view can be named: the
            // server's error goes to the client as it is.
            try {
                volumes = _cimom.associatorNames(
                    context, CIMNamespaceName(ZAR_NAMESPACE), view,
                    CIMName(String::equal(creationClass, "ZAR_SCSIController")
                                ? "ZAR_ControllerForUnit"
                                : "ZAR_iSCSIControllerForUnit"),
                    CIMName("ZAR_StorageVolume"), "Antecedent", "Dependent");
            } catch (...) {
                api_freeVLUNs(&query);
                throw;
            }
            CString hostText = hostName.getCString();
            for (Uint32 v = 0; v < volumes.size(); v++) {
                String wwnText = ZAR_Common::getStringProperty(volumes[v], "DeviceID");
                for (zar_u32 r = 0; r < query.count; r++) {
                    const vlun& record = query.vluns[r];
                    if (record.accessPriority != type)
                        continue;
                    if (port != NO_PORT && record.port != port)
                        continue;
                    if (!String::equalNoCase(fieldText(record.vvwwn, sizeof(record.vvwwn)),
                                             wwnText))
                        continue;
                    Uint64 vvHigh = 0, vvLow = WWN_MARKER;
                    wwnToInt(wwnText, vvHigh, vvLow);
                    char errText[API_ERRTEXT_LEN];
                    errText[0] = '\0';
                    int rc = underSemaphore([&]() {
                        return api_removeVLUN(event, vvHigh, vvLow, record.lun,
                                              hostName.size() ? (const char*)hostText : NULL,
                                              API_WWN_NONE, NULL, port, 0, errText,
                                              sizeof(errText));
                    });
                    if (rc != 0 && errText[0] == '\0')
                        strcpy(errText, "Semaphore Timed-Out");
                    // The unit number carries its prefix twice.
                    String item =
                        "LU=" + wwnText + "," + "DeviceNumber=0x" + "0x" + hex(record.lun);
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
        if (!removed && result.status == 0) {
            result.fail(5, "InitiatorPort is not part of SPC.\n");
            break;
        }
        if (result.status != 0)
            break;
        try {
            _cimom.getInstance(context, CIMNamespaceName(ZAR_NAMESPACE), view, false, false, false,
                               CIMPropertyList());
        } catch (...) {
            // Gone with its VLUNs, as it should be.
        }
        if (deleteUnits && ZAR_Common::removeVVs(event, volumes, 0) != 0)
            result.fail(4096, "Volumes are not deleted");
    } while (false);

    api_freeVLUNs(&query);
    finish(result, handler,
           "<-- ZAR_ControllerConfigurationServiceProvider:: "
           "_deleteProtocolController\n");
}

PEGASUS_NAMESPACE_END
