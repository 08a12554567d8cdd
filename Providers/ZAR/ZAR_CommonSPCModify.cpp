//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonSPCModify.cpp: modifyInstance of a view. The only change a
// client may make is ElementName, which renames the host behind the view.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#include <Pegasus/Provider/ProviderException.h>

#include <string.h>

PEGASUS_NAMESPACE_BEGIN

void ZAR_Common::modifySPC(const OperationContext& context, const CIMObjectPath& path,
                           const CIMInstance& instance, bool /* includeQualifiers */,
                           const CIMPropertyList& propertyList, ResponseHandler& handler)
{
    log_message(4, "-->ZAR_Common::modifySPC()\n");

    String className = path.getClassName().getString();
    checkUserAccess(context, __FILE__, __LINE__);
    checkOperationAccess(context, path.getClassName(), "ModifyInstance", __FILE__, __LINE__);

    String deviceID = getStringProperty(path, "DeviceID");
    if (deviceID.size() == 0) {
        throw CIMOperationFailedException(className +
                                          "::modifyInstance of SPC error: invalid deviceID");
    }

    Uint32 vlunType = 0;
    String hostName;
    Uint16 port = API_PORT_NONE;
    deReferenceSPCDeviceID(deviceID, vlunType, hostName, port, false);
    if (vlunType == API_VLUN_PORT_PRESENT) {
        // A port-present view has no host to rename.
        throw CIMNotSupportedException(className + " Port-Present " +
                                       " does not support modifyInstance.");
    }

    handler.processing();

    // Every property to apply is checked before anything changes.
    String newName;
    Array<CIMName> names;
    if (propertyList.isNull()) {
        for (Uint32 i = 0; i < instance.getPropertyCount(); i++)
            names.append(instance.getProperty(i).getName());
    } else {
        for (Uint32 i = 0; i < propertyList.size(); i++) {
            if (instance.findProperty(propertyList[i]) != PEG_NOT_FOUND)
                names.append(propertyList[i]);
        }
    }
    for (Uint32 i = 0; i < names.size(); i++) {
        if (!names[i].equal(CIMName("ElementName"))) {
            throw CIMInvalidParameterException(String("Invalid parameter: ") +
                                               names[i].getString());
        }
        CIMValue value = instance.getProperty(instance.findProperty(names[i])).getValue();
        newName.clear();
        value.get(newName);
    }

    if (newName.size() != 0 && newName != hostName) {
        String user = getUserName(context);
        String address = getClientIPAddress(context);
        String param = String("ElementName=") + newName;
        api_evtparam_t event;
        memset(&event, 0, sizeof(event));
        setEventParam(&event, (const char*)className.getCString(), "ModifyInstance",
                      "ModifyInstance", (const char*)user.getCString(),
                      (const char*)address.getCString(), (const char*)param.getCString());

        api_host_change_t change;
        memset(&change, 0, sizeof(change));
        CString newText = newName.getCString();
        strncpy(change.newName, (const char*)newText, sizeof(change.newName) - 1);
        change.newNameIsSet = 1;
        CString oldText = hostName.getCString();

        api_status_t status;
        int rc = guardedCall(
            &status, [&]() { return api_setHost(&event, (const char*)oldText, &change, &status); });
        if (rc != 0) {
            char text[512];
            api_getErrorTextNoNL(text, sizeof(text), &status);
            log_message(2, "api_setHost returned an error: %s\n", text);
            throw CIMOperationFailedException(
                className + "::modifyInstance of SPC returned an error - " + String(text));
        }
    }

    handler.complete();
    log_message(4, "<--ZAR_Common::modifySPC()\n");
}

PEGASUS_NAMESPACE_END
