//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceUtility.h: the steps the configuration
// service's methods are built from. Each method reads its request once
// (readRequest, into Params), decides its use case, then runs these steps:
// check sizes, LUs and device accesses; create or remove one export and
// describe it (createExport, removeExport, Item, report); remove a view's
// exports (removeViewExports); and ends with finish, which turns the
// gathered MethodResult (its MethodStatus and descriptions) into the
// method's answer.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ControllerConfigurationServiceUtility_h
#define ZAR_ControllerConfigurationServiceUtility_h

#include <functional>

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include <zarapi.h>

#include <ZAR_ArrayOwners.h>
#include <ZAR_ArraySemaphore.h>

PEGASUS_NAMESPACE_BEGIN

namespace CCSUtil {

// LUN not given: the array chooses.
const Uint32 LUN_NOT_GIVEN = 0xFFFFFFFB;
// LUN given as "the array chooses" in creation calls.
const Uint32 LUN_ARRAY_CHOOSES = 0xFFFFFF;

// The return codes of the service's methods. A failure sets one of them as
// the method's status.
enum class MethodStatus : Uint32 {
    Success = 0,
    NotSupported = 1,
    Failed = 4,
    InvalidParameter = 5,
    VolumesNotDeleted = 4096,
    InvalidLogicalUnit = 4097,
    // An invalid initiator port, or no host connected.
    InvalidInitiator = 4098,
    // An invalid target port, or a device access the volume does not allow.
    InvalidTarget = 4099,
    // An invalid permission, or a target/initiator combination not exposed.
    NotExposed = 4100,
};

// What a handler has gathered: the overall status, the descriptions in
// order and the out-parameters prepared so far.
struct MethodResult {
    MethodResult() : status(MethodStatus::Success) {}
    MethodStatus status;
    Array<String> descriptions;
    Array<CIMParamValue> outParams;

    Boolean ok() const { return status == MethodStatus::Success; }

    // Adds a description and sets the status.
    void fail(MethodStatus code, const String& description)
    {
        descriptions.append(description);
        status = code;
    }

    // Adds the ProtocolControllers out-parameter when views is not empty.
    void reportViews(const Array<CIMObjectPath>& views)
    {
        if (views.size() != 0)
            outParams.append(CIMParamValue("ProtocolControllers", CIMValue(views)));
    }
};

// Ends a method: a non-zero status throws CIMException(status, the
// descriptions joined by "; "); 0 appends ResultDescriptions after the
// other out-parameters, delivers them and the return value 0, completes
// and logs the outcome. exitTrace (may be null) is logged last at level 4.
void finish(MethodResult& result, MethodResultResponseHandler& handler, const char* exitTrace);

// The in-parameters of one method, read by name (case ignored) as the
// method's table allows.
struct Params {
    Params() : override(false), noVCN(false) {}
    Array<String> luNames;
    Array<String> initiatorPortIDs;
    Array<String> targetPortIDs;
    Array<String> deviceNumbers;
    Array<Uint16> deviceAccesses;
    Array<CIMObjectPath> protocolControllers;
    Array<String> hostNames;
    Array<String> targetPortLPIDs;
    Boolean override;
    Boolean noVCN;
};

// The request of a method: "Invalid number of parameters" (status 5)
// without any parameter, else each parameter read in order and then, when
// check is given, passed to it (false ends the reading). allowed holds the
// names the method takes, separated by spaces ("Job" is always taken and
// ignored). Each name is logged as "Param %s\n". With
// skipNullFirst a parameter whose value is null is passed over before its
// name is looked at. An unknown name, or a value of another type, adds
// "Invalid parameter: <name>" with status 5 and ends the reading.
Boolean readRequest(const Array<CIMParamValue>& inParameters, const char* allowed,
                    Boolean skipNullFirst, Params& params, MethodResult& result,
                    const std::function<Boolean(const CIMParamValue&)>& check = nullptr);

// How an LU of a request reads.
enum class LUReading { Ok, BadName, BadNumber };

// An LU of a request as readLU reads it: the volume's WWN values and the
// device number wanted for it.
struct LUValues {
    Uint64 high;
    Uint64 low;
    Uint32 number;
};

// Reads LU i of luNames: its WWN values (a name that is no WWN fails with
// 4097, "LU=<name>: LUName is invalid") and its device number from
// deviceNumbers (defaultNumber when none is given for it; a text that is
// no hexadecimal number fails with 5, "DeviceNumber=0x<text>:
// DeviceNumber is invalid"). The caller decides what a failure ends.
LUReading readLU(const Array<String>& luNames, const Array<String>& deviceNumbers, Uint32 i,
                 Uint32 defaultNumber, LUValues& lu, MethodResult& result);

// The array's host paths of the lone initiator in ids (asked by its WWN or
// iSCSI name), or of every initiator when ids does not hold exactly one.
// Returns the array's result (non-zero when nothing was read).
int readInitiatorPaths(const Array<String>& ids, ZAR_HostPathList& paths);

// The array's host paths of the host named hostName; the array's result.
int readHostPaths(const String& hostName, ZAR_HostPathList& paths);

// The common size checks of LUNames against DeviceNumbers and, when
// checkAccesses is set, DeviceAccesses (each may be absent, else of the
// same size); a mismatch fails with status 5 and its own text.
Boolean checkSizes(const Params& p, MethodResult& result, Boolean checkAccesses = false);

// Runs call() under the array's semaphore (released also when call()
// throws). A wait that times out skips call() and returns the wait's
// non-zero result.
template <class Call>
int underSemaphore(Call call)
{
    ZAR_ArraySemaphore semaphore;
    if (!semaphore.held())
        return semaphore.waitResult();
    return call();
}

// Method status of a failed VLUN creation: 1181 -> 5, 1032 -> 4099,
// other non-zero -> 4; 0 stays 0.
MethodStatus mapCreateError(int rc);

// Method status of a failed VLUN removal: 1181 -> 5, other non-zero -> 4.
MethodStatus mapRemoveError(int rc);

// One item of ResultDescriptions: "LU=<name>", then ",<label>=<value>"
// parts in the order added, then ": " and "Success" or the error text,
// and a line break.
class Item {
public:
    explicit Item(const String& lu) : _text("LU=" + lu) {}
    // Adds the part when value is not empty.
    Item& add(const char* label, const String& value)
    {
        return value.size() != 0 ? put(label, value) : *this;
    }
    // Adds text as it stands.
    Item& raw(const String& text)
    {
        _text.append(text);
        return *this;
    }
    // Adds the part whatever its value.
    Item& put(const char* label, const String& value)
    {
        _text.append(String(",") + label + "=" + value);
        return *this;
    }
    String success() const { return _text + ": Success\n"; }
    String failure(const String& errorText) const { return _text + ": " + errorText + "\n"; }

private:
    String _text;
};

// What the array answered to one export change.
struct ExportOutcome {
    int rc;
    String errorText;  // the array's text; "Semaphore Timed-Out" when the wait timed out
    Boolean timedOut;
};

// api_createVLUN of volume (vvHigh, vvLow) under *lun (updated with the
// LUN chosen), to host (none when empty), the initiator WWN (API_WWN_NONE:
// none) or iSCSI name (none when empty), through port.
ExportOutcome createExport(api_evtparam_t* event, Uint64 vvHigh, Uint64 vvLow, zar_u32* lun,
                           const String& host, Uint64 initiatorWWN, const String& initiatorISCSI,
                           Uint16 port, Boolean override, Boolean noVCN);

// api_removeVLUN of the export of volume (vvHigh, vvLow) under lun to host
// (none when empty) through port.
ExportOutcome removeExport(api_evtparam_t* event, Uint64 vvHigh, Uint64 vvLow, Uint32 lun,
                           const String& host, Uint16 port, Boolean noVCN);

// Records the outcome of one change: item's "Success", or its failure with
// the status that map gives for the array's code. Returns true on success.
Boolean report(MethodResult& result, const Item& item, const ExportOutcome& outcome,
               MethodStatus (*map)(int));

// True when the view reference names root/zar, the array's host name and
// one of the view classes given (up to three; null ends the list).
Boolean isViewReference(CIMObjectPath& view, String& host, const char* class1, const char* class2,
                        const char* class3 = 0);

// The checks of a request that removes LUs from the one view it names:
// the sizes (as checkSizes), then the view reference (as isViewReference,
// with the view classes and the iSCSI node), whose failure sets status 5
// without a description.
Boolean checkLURemoval(Params& p, String& host, MethodResult& result);

// True when the server still answers getInstance of the view (a view
// goes with its last LU). Any exception means it has gone.
Boolean viewStillExists(CIMOMHandle& cimom, const OperationContext& context,
                        const CIMObjectPath& view);

// Removes the exports of a view (type, port, host from its DeviceID) that
// query lists, for each volume WWN of lus in turn: one removal per matching
// record, described with the DeviceNumber text that deviceNumber gives for
// the record. Returns true when at least one export was removed.
Boolean removeViewExports(api_evtparam_t* event, const api_vlunsInfo_t& query,
                          const Array<String>& lus, Uint32 type, Uint16 port,
                          const String& hostName, Boolean noVCN,
                          String (*deviceNumber)(const vlun& record, const Params& p),
                          const Params& p, MethodResult& result);

// The "N:S:P" text of a port position.
String portText(Uint16 port);

// True when the port number (low 3 bits) is above 4 or the slot (bits 3
// to 6) above 9.
Boolean badPortPosition(Uint16 port);

// The number in upper-case hexadecimal without prefix.
String hex(Uint32 value);

// Reads text as hexadecimal ("%X"); false when it does not start with a
// hexadecimal number.
Boolean readHex(const String& text, Uint32& value);

// api_wwnStringToInt of text; true on success.
Boolean wwnToInt(const String& text, Uint64& high, Uint64& low);

// The port position carried in the top bits of a port WWN (node at bit 56,
// slot at 52, port at 48, three bits each).
Uint16 lpidFromWWNBits(Uint64 wwn);

// Copies at most max characters of text into buffer and terminates it.
void copyText(char* buffer, const String& text, size_t max);

// A String of a fixed-size character field of an array record.
String fieldText(const char* field, size_t size);

// Appends path to paths unless an equal path is already there.
void appendUnique(Array<CIMObjectPath>& paths, const CIMObjectPath& path);

// True when a view reference of a controller class carries this array's
// keys: SystemCreationClassName "ZAR_StorageSystem", SystemName the array's
// name and CreationClassName its own class. References of other classes
// are left to the class check.
Boolean viewKeysOfThisArray(const CIMObjectPath& view, const String& systemName);

// The VLUN templates that match the view's host, type and port, as the
// removal handlers query them; false when the array query failed. An empty
// host name is a criterion (the host of a port-present export) only when
// emptyHostIsCriterion is set, else no host criterion is given.
Boolean queryViewTemplates(api_vlunsInfo_t& query, const String& hostName, Uint32 vlunType,
                           Uint16 port, Boolean emptyHostIsCriterion = false);

// The requested access of each LU against its volume, read from the array
// in chunks of 200: a read-write volume takes only 2, a read-only one only
// 3. A refusal adds "LU=<name>: DeviceAccess is not supported for the
// volume, name = <element name>" with status 4099 and returns false. A
// failed query ends the check silently.
Boolean checkDeviceAccesses(const Array<String>& luNames, const Array<Uint16>& accesses,
                            MethodResult& result);

}  // namespace CCSUtil

PEGASUS_NAMESPACE_END

#endif
