//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayAccess.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ArrayAccess.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <string.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

// Takes the semaphore and readies the status record. False when the wait
// timed out: the status then says so and the semaphore is not held.
bool _enter(api_status_t* status)
{
    int r = cim_sem_wait();
    api_initStatus(status);
    if (r != 0) {
        errinfo_set_str(status, 32, "Semaphore Timed-Out");
        return false;
    }
    return true;
}

// Records a failed call's code in the status when the call left it empty.
int _leave(int rc, api_status_t* status)
{
    cim_sem_post();
    if (rc != 0 && status->code == 0)
        errinfo_set_str(status, rc, api_errorCodeText(rc));
    return rc;
}

}  // namespace

int ZAR_ArrayAccess::readSystemInfo(api_sysinfo_t* info, api_status_t* status)
{
    memset(info, 0, sizeof(*info));
    if (!_enter(status))
        return status->code;
    return _leave(api_getSystemInfo(info), status);
}

int ZAR_ArrayAccess::readSystemAddresses(api_ipaddr_t* addr, api_status_t* status)
{
    memset(addr, 0, sizeof(*addr));
    if (!_enter(status))
        return status->code;
    return _leave(api_getSystemDualIP(addr), status);
}

int ZAR_ArrayAccess::readOwnerAndContact(String& owner, String& contact, api_status_t* status)
{
    char ownerBuf[256];
    char contactBuf[256];
    ownerBuf[0] = contactBuf[0] = '\0';
    if (!_enter(status))
        return status->code;
    int rc = api_getOwnerName(ownerBuf, sizeof(ownerBuf));
    if (rc == 0)
        rc = api_getSystemContact(contactBuf, sizeof(contactBuf));
    _leave(rc, status);
    if (rc == 0) {
        ownerBuf[sizeof(ownerBuf) - 1] = '\0';
        contactBuf[sizeof(contactBuf) - 1] = '\0';
        owner = String(ownerBuf);
        contact = String(contactBuf);
    }
    return rc;
}

String ZAR_ArrayAccess::errorText(const api_status_t& status)
{
    char buffer[API_ERRTEXT_LEN];
    api_getErrorTextNoNL(buffer, sizeof(buffer), &status);
    return String(buffer);
}

String ZAR_ArrayAccess::ipv4Text(const api_ipaddr_t& addr)
{
    if ((addr.dual_flag & 1) == 0)
        return String();
    char text[INET_ADDRSTRLEN];
    struct in_addr a;
    a.s_addr = addr.ipv4_addr;  // already in network order
    if (inet_ntop(AF_INET, &a, text, sizeof(text)) == 0)
        return String();
    return String(text);
}

String ZAR_ArrayAccess::ipv6Text(const api_ipaddr_t& addr)
{
    if ((addr.dual_flag & 2) == 0)
        return String();
    char text[INET6_ADDRSTRLEN];
    if (inet_ntop(AF_INET6, addr.ipv6_addr, text, sizeof(text)) == 0)
        return String();
    return String(text);
}

String ZAR_ArrayAccess::pathHostName(const api_sysinfo_t& info)
{
    char host[sizeof(info.hostName) + 1];
    memcpy(host, info.hostName, sizeof(info.hostName));
    host[sizeof(info.hostName)] = '\0';
    if (api_isAllNumeric(host))
        return String("_") + String(host);
    return String(host);
}

PEGASUS_NAMESPACE_END
