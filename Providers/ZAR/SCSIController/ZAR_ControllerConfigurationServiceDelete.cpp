//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceDelete.cpp: DeleteProtocolController.
// A view exists only as its VLUNs: deleting it removes each of them, and
// with DeleteUnits the volumes behind it are deleted afterwards.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ControllerConfigurationServiceProvider.h"

#include <ZAR_ArrayOwners.h>
#include <ZAR_Common.h>

#include "ZAR_ControllerConfigurationServiceUtility.h"

PEGASUS_NAMESPACE_BEGIN

using namespace CCSUtil;

namespace {

// The unit number carries its prefix twice.
String _recordDeviceNumber(const vlun& record, const Params&)
{
    return "0x0x" + hex(record.lun);
}

}  // namespace

Boolean ZAR_ControllerConfigurationServiceProvider::_readViewToDelete(
    const OperationContext& context, const Array<CIMParamValue>& inParameters, CIMObjectPath& view,
    Boolean& deleteUnits, MethodResult& result)
{
    if (inParameters.size() == 0) {
        result.fail(MethodStatus::InvalidParameter, "Invalid number of parameters");
        return false;
    }
    // Other parameters are passed over.
    Boolean haveView = false;
    for (Uint32 i = 0; i < inParameters.size(); i++) {
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
            result.fail(MethodStatus::InvalidParameter, "Invalid parameter: " + name);
            return false;
        }
        if (!isViewReference(view, _systemAddress, ZAR_SCSI_CONTROLLER, ZAR_ISCSI_CONTROLLER)) {
            result.fail(MethodStatus::InvalidParameter,
                        "Parameter ProtocolController does not contain "
                        "correct hostname or namespace or className");
            return false;
        }
        try {
            _cimom.getInstance(context, CIMNamespaceName(ZAR_NAMESPACE), view, false, false, false,
                               CIMPropertyList());
        } catch (...) {
            log_message(2, "SPC is not found\n");
            result.fail(MethodStatus::InvalidParameter, "SPC " + view.toString() + " is not found");
            return false;
        }
        haveView = true;
    }
    if (!haveView)
        result.fail(MethodStatus::InvalidParameter, "Invalid ProtocolControllers");
    return haveView;
}

void ZAR_ControllerConfigurationServiceProvider::_deleteProtocolController(const MethodCall& call)
{
    MethodResult result;
    ZAR_VlunQuery query;

    auto run = [&]() {
        CIMObjectPath view;
        Boolean deleteUnits = false;
        if (!_readViewToDelete(call.context, call.inParameters, view, deleteUnits, result))
            return;

        String creationClass = ZAR_Common::getStringProperty(view, "CreationClassName");
        String deviceID = ZAR_Common::getStringProperty(view, "DeviceID");
        Uint32 type = 0;
        String hostName;
        Uint16 port = API_PORT_NONE;
        ZAR_Common::deReferenceSPCDeviceID(deviceID, type, hostName, port,
                                           view.getClassName().equal(CIMName(ZAR_ISCSI_NODE)));
        if (port == API_PORT_NONE && hostName.size() == 0) {
            result.fail(MethodStatus::InvalidParameter, "Invalid ProtocolControllers");
            return;
        }
        if (port != API_PORT_NONE && badPortPosition(port)) {
            result.fail(MethodStatus::InvalidParameter,
                        "Port=" + portText(port) + ": " + "Target port ID is invalid" + "\n");
            return;
        }

        Boolean removed = false;
        Array<CIMObjectPath> volumes;
        if (queryViewTemplates(*query, hostName, type, port)) {
            // Without its volumes nothing of the view can be named: the
            // server's error goes to the client as it is.
            volumes =
                _cimom.associatorNames(call.context, CIMNamespaceName(ZAR_NAMESPACE), view,
                                       CIMName(String::equal(creationClass, ZAR_SCSI_CONTROLLER)
                                                   ? "ZAR_ControllerForUnit"
                                                   : "ZAR_iSCSIControllerForUnit"),
                                       CIMName(ZAR_STORAGE_VOLUME), "Antecedent", "Dependent");
            Array<String> wwns;
            for (Uint32 v = 0; v < volumes.size(); v++)
                wwns.append(ZAR_Common::getStringProperty(volumes[v], "DeviceID"));
            removed = removeViewExports(call.event, *query, wwns, type, port, hostName, false,
                                        _recordDeviceNumber, Params(), result);
        }
        if (!removed && result.ok()) {
            result.fail(MethodStatus::InvalidParameter, "InitiatorPort is not part of SPC.\n");
            return;
        }
        if (!result.ok())
            return;
        try {
            _cimom.getInstance(call.context, CIMNamespaceName(ZAR_NAMESPACE), view, false, false,
                               false, CIMPropertyList());
        } catch (...) {
            // Gone with its VLUNs, as it should be.
        }
        if (deleteUnits && ZAR_Common::removeVVs(call.event, volumes, 0) != 0)
            result.fail(MethodStatus::VolumesNotDeleted, "Volumes are not deleted");
    };

    run();
    finish(result, call.handler,
           "<-- ZAR_ControllerConfigurationServiceProvider:: "
           "_deleteProtocolController\n");
}

PEGASUS_NAMESPACE_END
