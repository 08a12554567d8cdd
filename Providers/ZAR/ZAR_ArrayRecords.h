//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayRecords.h: the array's target ports, volumes, exports and views
// as copies owned by the caller, for the providers of the array module.
//
// Each reader makes its library call under the library's semaphore, copies
// the answer and releases the library's memory before returning. A wait
// that times out is reported like any failure of the call: the status
// record then holds code 32, "Semaphore Timed-Out".
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ArrayRecords_h
#define ZAR_ArrayRecords_h

#include <vector>

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

#include <zarapi.h>

PEGASUS_NAMESPACE_BEGIN

// One target port of either protocol.
struct ZAR_PortRecord {
    port_type_t type;    // PORT_TYPE_FC or PORT_TYPE_ISCSI
    lpid_t position;     // node * 128 + slot * 8 + port
    String deviceID;     // the position text "N:S:P"
    String elementName;  // "FC port N:S:P", "iSCSI port N:S:P"
    String wwn;          // FC: 16 upper-case hexadecimal digits
    String iscsiName;    // iSCSI: the port's iSCSI name
    api_port_status_t status;
    Uint32 speed;  // Gbit/s
};

class ZAR_ArrayRecords {
public:
    // The target ports of protocol `type` (PORT_TYPE_FC or PORT_TYPE_ISCSI),
    // in the array's order. Returns 0 or the array error code.
    static int readPorts(port_type_t type, std::vector<ZAR_PortRecord>& ports,
                         api_status_t* status);

    // The next chunk of at most `chunk` volumes, in the order of their
    // numbers, with sizes. *cursor starts at 0 and is 0 again after the
    // last chunk. Returns 0 or the array error code.
    static int readVolumeChunk(zar_u64* cursor, Uint32 chunk, std::vector<api_vv_t>& volumes,
                               api_status_t* status);

    // The volume whose WWN text (case ignored) or element name is `name`.
    // Returns 0, API_E_VV_NOT_FOUND when there is none, or the array error
    // code.
    static int readVolume(const String& name, api_vv_t* volume, api_status_t* status);

    // The export records (one per exported LU and view, default views
    // included) that match the criteria set in `query`. Returns 0 or the
    // array error code; the query's own answer fields are left empty.
    static int readExports(const api_vlunsInfo_t& query, std::vector<vlun>& records,
                           api_status_t* status);

    // Sets the criteria of a query: the host when hostName is not empty
    // (or always, when emptyHostIsCriterion), the kind of view when type
    // is not 0, the port when it is not API_PORT_NONE.
    static void narrow(api_vlunsInfo_t& query, const String& hostName, Uint32 type, Uint16 port,
                       Boolean emptyHostIsCriterion = false);

    // The next chunk of at most `chunk` view records matching `query`, one
    // per view; *more stays non-zero while views remain. The cursor must
    // have been set up with api_initSPCParamData. Returns 0 or the array
    // error code.
    static int readViewChunk(const api_vlunsInfo_t& query, api_spc_param_data* cursor, Uint32 chunk,
                             std::vector<vlun>& records, Uint32* more, api_status_t* status);

    // The text of a record field that may fill its whole array.
    static String field(const char* text, size_t size);

    // A 64-bit WWN as 16 upper-case hexadecimal digits.
    static String wwnText(zar_u64 wwn);
};

PEGASUS_NAMESPACE_END

#endif
