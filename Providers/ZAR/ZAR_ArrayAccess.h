//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayAccess.h: what the providers of the array module need from the
// array library, each call made under the library's semaphore.
//
// Every reader takes the semaphore around its library call and releases it
// before returning; a wait that times out is reported like any failure of
// the call, through the status record (code 32, "Semaphore Timed-Out").
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ArrayAccess_h
#define ZAR_ArrayAccess_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

#include <zarapi.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_ArrayAccess {
public:
    // Reads the system's identity and configuration. Returns 0 or the
    // array error code; status holds the code and its text.
    static int readSystemInfo(api_sysinfo_t* info, api_status_t* status);

    // Reads the system's IPv4 and IPv6 addresses, as readSystemInfo.
    static int readSystemAddresses(api_ipaddr_t* addr, api_status_t* status);

    // Reads the owner name and the contact text, as readSystemInfo.
    static int readOwnerAndContact(String& owner, String& contact, api_status_t* status);

    // The status record's text without a line break.
    static String errorText(const api_status_t& status);

    // The text of the IPv4 address (dotted), or empty when the array has
    // none.
    static String ipv4Text(const api_ipaddr_t& addr);

    // The text of the IPv6 address, or empty when the array has none.
    static String ipv6Text(const api_ipaddr_t& addr);

    // The host part that object paths of the system carry: the management
    // host name, with "_" put in front when it consists only of digits.
    static String pathHostName(const api_sysinfo_t& info);
};

PEGASUS_NAMESPACE_END

#endif
