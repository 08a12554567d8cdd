//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerConfigurationServiceUtility.h: small pieces that the
// configuration service's method handlers share: the result convention,
// parameter reading, array-call guards, code mapping and the texts of
// result descriptions.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ControllerConfigurationServiceUtility_h
#define ZAR_ControllerConfigurationServiceUtility_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/ResponseHandler.h>

#include <zarapi.h>

#include <ZAR_ArraySemaphore.h>

PEGASUS_NAMESPACE_BEGIN

namespace CCSUtil {

// No port given (also "any port").
const Uint16 NO_PORT = 0xFFFC;
// LUN not given: the array chooses.
const Uint32 LUN_NOT_GIVEN = 0xFFFFFFFB;
// LUN given as "the array chooses" in creation calls.
const Uint32 LUN_ARRAY_CHOOSES = 0xFFFFFF;
// WWN value before a conversion: the array's invalid marker.
const Uint64 WWN_MARKER = 0xFFFFFFFFFFFFFFF6ULL;

// What a handler has gathered: the overall status, the descriptions in
// order and the out-parameters prepared so far.
struct MethodResult {
    MethodResult() : status(0) {}
    Uint32 status;
    Array<String> descriptions;
    Array<CIMParamValue> outParams;

    // Adds a description and sets the status.
    void fail(Uint32 code, const String& description)
    {
        descriptions.append(description);
        status = code;
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
    Params() : haveProtocolController(false), override(false), noVCN(false), deleteUnits(false) {}
    Array<String> luNames;
    Array<String> initiatorPortIDs;
    Array<String> targetPortIDs;
    Array<String> deviceNumbers;
    Array<Uint16> deviceAccesses;
    Array<CIMObjectPath> protocolControllers;
    Array<String> hostNames;
    Array<String> targetPortLPIDs;
    CIMObjectPath protocolController;
    Boolean haveProtocolController;
    Boolean override;
    Boolean noVCN;
    Boolean deleteUnits;
};

// Reads inParameters into params. allowed is a null-terminated list of
// the names the method takes ("Job" is always taken and ignored). Each
// name is logged as "Param %s\n". With skipNullFirst a parameter whose
// value is null is passed over before its name is looked at. An unknown
// name, or a value of another type, adds "Invalid parameter: <name>" with
// status 5 and returns false.
Boolean readParams(const Array<CIMParamValue>& inParameters, const char* const* allowed,
                   Boolean skipNullFirst, Params& params, MethodResult& result);

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
Uint32 mapCreateError(int rc);

// Method status of a failed VLUN removal: 1181 -> 5, other non-zero -> 4.
Uint32 mapRemoveError(int rc);

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
