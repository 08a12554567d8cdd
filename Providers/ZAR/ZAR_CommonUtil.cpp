//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonUtil.cpp: port positions and states, method status codes, the
// event-parameter block, random host-name material and the instance-count
// threshold.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#include <ctype.h>
#include <mutex>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <time.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

const Uint16 NO_PORT = 0xFFFC;

// True, after logging it, when the event's control block is missing.
Boolean _eventBlockMissing(const api_evtparam_t* ev, const char* function)
{
    if (ev != 0)
        return false;
    log_message(2,
                "%s: Unable to log event data. The control block pointer (eventp) is "
                "null.\n",
                function);
    return true;
}

// Copies at most max characters of src (null: nothing) into dst and
// terminates it.
void _copyText(char* dst, const char* src, size_t max)
{
    size_t n = 0;
    if (src) {
        while (n < max && src[n] != '\0')
            n++;
        memcpy(dst, src, n);
    }
    dst[n] = '\0';
}

bool _isWWNText(const String& id)
{
    if (id.size() != 16)
        return false;
    for (Uint32 i = 0; i < id.size(); i++) {
        Uint16 c = id[i];
        if (c > 127 || !isxdigit(c))
            return false;
    }
    return true;
}

}  // namespace

int ZAR_Common::getNodePairIndex(int node)
{
    if (node < 0 || node > 7)
        return -1;
    return node / 2;
}

Uint16 ZAR_Common::getPortLPID(Uint64 wwn)
{
    lpid_t lpid = NO_PORT;
    // The lookup's own result is deliberately not looked at: callers check
    // the position they get (none when the semaphore timed out).
    ZAR_ArraySemaphore semaphore;
    if (semaphore.held())
        api_getFCPortLPID(wwn, &lpid);
    return lpid;
}

Uint16 ZAR_Common::getPortLPID(String& iscsiName)
{
    char buffer[224];
    CString text = iscsiName.getCString();
    _copyText(buffer, (const char*)text, sizeof(buffer) - 1);
    lpid_t lpid = NO_PORT;
    ZAR_ArraySemaphore semaphore;
    if (semaphore.held())
        api_getiSCSIPortLPID(buffer, &lpid);
    return lpid;
}

Uint16 ZAR_Common::getPortOperationalStatus(api_port_status_t status)
{
    switch (status) {
        case PORT_CONFIG_WAIT:
        case PORT_OFFLINE:
            return 10;  // Stopped
        case PORT_ALPA_WAIT:
        case PORT_LOGIN_WAIT:
        case PORT_IDLE_FOR_RESET:
        case PORT_DHCP_IN_PROGRESS:
        case PORT_PENDING_RESET:
            return 8;  // Starting
        case PORT_OK:
            return 2;  // OK
        case PORT_LOSS_SYNC:
            return 13;  // Lost Communication
        case PORT_ERROR:
        case PORT_NONPARTICIPATE:
        case PORT_COREDUMP:
            return 6;  // Error
        case PORT_FWDEAD:
            return 7;  // Non-Recoverable Error
        default:
            return 0;  // Unknown
    }
}

Uint16 ZAR_Common::getPortHealthState(api_port_status_t status)
{
    switch ((int)status) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 4:
        case 11:
        case 12:
        case 13:
            return 5;  // OK
        case PORT_ERROR:
        case PORT_NONPARTICIPATE:
            return 20;  // Major failure
        case PORT_COREDUMP:
            return 25;  // Critical failure
        case PORT_OFFLINE:
            return 10;  // Degraded/Warning
        case PORT_FWDEAD:
            return 30;  // Non-recoverable error
        default:
            return 0;  // Unknown
    }
}

CIMStatusCode ZAR_Common::methodToCIMStatusCode(Uint32 rc)
{
    switch (rc) {
        case 0:
            return CIM_ERR_SUCCESS;
        case 1:
            return CIM_ERR_NOT_SUPPORTED;
        case 2:
            return CIM_ERR_METHOD_NOT_FOUND;
        case 5:
            return CIM_ERR_INVALID_PARAMETER;
        default:
            return CIM_ERR_FAILED;
    }
}

Uint32 ZAR_Common::getPortIDs(Array<String> ids, Uint16** ports)
{
    *ports = 0;
    if (ids.size() == 0)
        return 0;
    Uint16* result = new Uint16[ids.size()];
    for (Uint32 i = 0; i < ids.size(); i++) {
        String id = ids[i];
        Uint16 port = NO_PORT;
        if (_isWWNText(id)) {
            Uint64 wwn = strtoull((const char*)id.getCString(), 0, 16);
            port = getPortLPID(wwn);
        } else if (id.size() > 4 && (String::equalNoCase(id.subString(0, 4), "iqn.") ||
                                     String::equalNoCase(id.subString(0, 4), "eui."))) {
            port = getPortLPID(id);
        } else if (id.size() != 0) {
            lpid_t lpid = NO_PORT;
            if (api_convertStrLPIDtoPortID((const char*)id.getCString(), &lpid) == 0)
                port = lpid;
        }
        result[i] = port;
    }
    *ports = result;
    return ids.size();
}

int ZAR_Common::setEventOp(api_evtparam_t* ev, const char* op)
{
    if (_eventBlockMissing(ev, "setEventOp"))
        return 1;
    _copyText(ev->inst_op, op, sizeof(ev->inst_op) - 1);
    return 0;
}

int ZAR_Common::setEventParam(api_evtparam_t* ev, const char* className, const char* methodName,
                              const char* op, const char* user, const char* addr)
{
    if (_eventBlockMissing(ev, "setEventParam"))
        return 1;
    _copyText(ev->user, user, sizeof(ev->user) - 1);
    _copyText(ev->addr, addr, sizeof(ev->addr) - 1);
    char method[sizeof(ev->method) * 2];
    snprintf(method, sizeof(method), "%s:%s", className ? className : "",
             methodName ? methodName : "");
    _copyText(ev->method, method, sizeof(ev->method) - 1);
    setEventOp(ev, op);
    ev->inst_param[0] = '\0';
    return 0;
}

int ZAR_Common::setEventParam(api_evtparam_t* ev, const char* className, const char* methodName,
                              const char* op, const char* user, const char* addr, const char* param)
{
    if (setEventParam(ev, className, methodName, op, user, addr) != 0)
        return 1;
    _copyText(ev->inst_param, param, sizeof(ev->inst_param) - 1);
    return 0;
}

void ZAR_Common::generate_random_string(char* str, unsigned len)
{
    if (!(len > 0 && str != NULL)) {
        zar_print_no_evt("Assertion failed: %s\n", "len > 0 && str != NULL");
        zar_print_no_evt("Assertion point: file: %s, line: %d\n", __FILE__, __LINE__);
        zar_panic("generate_random_string");
        return;
    }

    static const char alphabet[] =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    static std::mutex lock;
    static bool seeded = false;
    static char state[256];
    static struct random_data data;

    std::lock_guard<std::mutex> guard(lock);
    if (!seeded) {
        memset(&data, 0, sizeof(data));
        initstate_r((unsigned)time(NULL), state, sizeof(state), &data);
        seeded = true;
    }
    for (unsigned i = 0; i + 1 < len; i++) {
        int32_t r = 0;
        random_r(&data, &r);
        str[i] = alphabet[r % 63];
    }
    str[len - 1] = '\0';
}

Uint32 ZAR_Common::getInstanceThreshold(unsigned factor)
{
    struct rlimit64 limit;
    memset(&limit, 0, sizeof(limit));
    getrlimit64(RLIMIT_AS, &limit);
    Uint64 soft = (Uint64)limit.rlim_cur / 1000000;
    log_message(4, "soft limit = %u, maxInstScale factor = %u\n", (unsigned)soft, factor);
    return (Uint32)(soft * factor);
}

PEGASUS_NAMESPACE_END
