//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceProvider.h: the array's one
// ZAR_ControllerConfigurationService instance in root/zar and its seven
// masking-and-mapping methods.
//
// Sources, one concern each:
//   ZAR_ControllerConfigurationServiceProvider.cpp  the instance, method
//                                                   dispatch, host names
//   ZAR_ControllerConfigurationServicePaths.cpp     ExposePaths, HidePaths
//   ZAR_ControllerConfigurationServiceDefault.cpp   ExposeDefaultLUs,
//                                                   HideDefaultLUs
//   ZAR_ControllerConfigurationServiceHWID.cpp      the hardware ID
//                                                   collection methods
//   ZAR_ControllerConfigurationServiceDelete.cpp    DeleteProtocolController
//   ZAR_ControllerConfigurationServiceNewView.cpp   hosts and VLUNs of a
//                                                   new view, initiators
//                                                   joining a view
//   ZAR_ControllerConfigurationServiceUtility.cpp   the steps the methods
//                                                   share, the result
//                                                   convention, the views a
//                                                   change touched, iSCSI
//                                                   port names
//
// Result convention of every method: the handler collects an ordered list
// of result descriptions and an overall status. Status 0 delivers the
// out-parameters, then ResultDescriptions, then the return value 0. Any
// other status throws CIMException with that status as its code and the
// descriptions joined by "; " as its message; nothing is delivered.
//
// Every change carries the request's event-parameter block (user, client
// address, "<class>:<method>") so that the array's audit log names the
// caller. Each array call is made under the array library's semaphore.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ControllerConfigurationServiceProvider_h
#define ZAR_ControllerConfigurationServiceProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMMethodProvider.h>

#include <zarapi.h>

#include <ZAR_SingleInstanceProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

namespace CCSUtil {
struct MethodResult;
enum class MethodStatus : Uint32;
}  // namespace CCSUtil

class ZAR_ControllerConfigurationServiceProvider : public ZAR_SingleInstanceProviderBase,
                                                   public CIMMethodProvider {
public:
    // Members empty; nothing is asked of the array before initialize.
    ZAR_ControllerConfigurationServiceProvider();

    // Always throws CIMNotSupportedException.
    ZAR_ControllerConfigurationServiceProvider(const CIMObjectPath& path);

    virtual ~ZAR_ControllerConfigurationServiceProvider();

    // Opens the array library for the server (a failure is only logged),
    // caches the system's name and host name and builds the service path.
    virtual void initialize(CIMOMHandle& cimom);

    // Checks the user, the target path (it must be the service), the
    // method name (case ignored) and the user's right to that method, then
    // runs the method's handler, which delivers everything itself.
    virtual void invokeMethod(const OperationContext& context, const CIMObjectPath& objectName,
                              const CIMName& methodName, const Array<CIMParamValue>& inParameters,
                              MethodResultResponseHandler& handler);

    // A name for a new host of initiator id: "host-" and the WWN, cut to
    // 31 characters, or "iSCSIHost-" and 21 random characters.
    String generateHostName(String& id, bool isWWN);

private:
    virtual CIMInstance _buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                                       const CIMPropertyList& propertyList);

    // Fills _name and _instanceName.
    void _buildInstanceName();

    // One call of a method: the array's audit record of it, the request's
    // context and in-parameters, and the handler of the answer.
    struct MethodCall {
        api_evtparam_t* event;
        const OperationContext& context;
        const Array<CIMParamValue>& inParameters;
        MethodResultResponseHandler& handler;
    };

    // Method handlers: each reads its parameters, changes the array and
    // reports as the result convention above says.
    void _exposePaths(const MethodCall& call);
    void _hidePaths(const MethodCall& call);
    void _exposeDefaultLUs(const MethodCall& call);
    void _hideDefaultLUs(const MethodCall& call);
    void _exposeLUsToStorageHardwareIDCollection(const MethodCall& call);
    void _hideLUsFromStorageHardwareIDCollection(const MethodCall& call);
    void _deleteProtocolController(const MethodCall& call);

    // The parameters of DeleteProtocolController: the view (checked and
    // fetched through the server) and DeleteUnits. False after a failure
    // was added to result.
    Boolean _readViewToDelete(const OperationContext& context,
                              const Array<CIMParamValue>& inParameters, CIMObjectPath& view,
                              Boolean& deleteUnits, CCSUtil::MethodResult& result);

    // What a new view is made of: the initiators (hardwareIDCount of them
    // given), the host paths the array knows for them, the LUs with their
    // numbers, the target ports, the domain of a new host and the options
    // of the call.
    struct NewViewRequest {
        api_evtparam_t* event;
        Array<String>& initiatorIDs;
        Uint32 hardwareIDCount;
        api_hardwareID* hostPaths;
        Uint32 hostPathCount;
        Array<String>& luNames;
        Array<String>& deviceNumbers;
        Array<String>& targetPortIDs;
        const char* domain;
        Boolean noVCN;
        Boolean override;
    };

    // A new view for LUs: one host for all initiators, created when none
    // of them has one yet, or one host per initiator; then one VLUN per LU
    // and target port. Appends descriptions and, when views were found,
    // the ProtocolControllers out-parameter; returns the method status.
    CCSUtil::MethodStatus _createNewViewMultHWID(const NewViewRequest& request,
                                                 Array<CIMParamValue>& outParams,
                                                 Array<String>& descriptions);
    CCSUtil::MethodStatus _createNewViewOneHWID(const NewViewRequest& request,
                                                Array<CIMParamValue>& outParams,
                                                Array<String>& descriptions);

    // The LU and target-port loop of a new view: one VLUN per LU and port
    // (one pass without a port when none is given), addressed to hostName,
    // or to the initiator initiatorWWN / initiatorISCSIName when given;
    // views found are added to views. Target ports of another kind than
    // entryType (a port_type_t; unknown: any) are passed over. Returns true
    // when the method is to end at once (a target port that is no port).
    Boolean _exposeLUsOnPorts(const NewViewRequest& request, const String& hostName,
                              Uint64 initiatorWWN, const String& initiatorISCSIName, int entryType,
                              Array<CIMObjectPath>& views, Boolean& attempted,
                              CCSUtil::MethodResult& result);

    // The paths of the views that export volume volumeWWN under lun to
    // hostName ("" for port-present exports) through portLPID (0xFFFC:
    // any port). Empty when the array cannot be asked.
    Array<CIMObjectPath> _getAffectedSPCPaths(String& hostName, unsigned int lun, String& volumeWWN,
                                              unsigned short portLPID);

    // The position of the array's own iSCSI target port named iscsiName;
    // 0xFFFC for a name that is not one of the array's, 0xFFF6 for the
    // array's invalid marker.
    unsigned short _extractLPIDFromPortiSCSIName(String& iscsiName);

    // Moves the initiators into the host of a view (of type vlunType, on
    // port portID), taking them from other hosts first. Appends
    // descriptions; returns the method status.
    CCSUtil::MethodStatus _addInitIDsToView(api_evtparam_t* event, Array<String>& initiatorIDs,
                                            Uint32 vlunType, Uint16 portID, Boolean override,
                                            String& hostName, Array<String>& descriptions);

    String _systemName;
    String _systemAddress;
    String _name;
    CIMObjectPath _instanceName;
};

PEGASUS_NAMESPACE_END

#endif
