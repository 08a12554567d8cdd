// Failed logins of the CIM server, recorded in the array's audit log next
// to the changes, so that an administrator sees guessing where the changes
// are reviewed.
#include <string>

#include <zarauth.h>

#include "Array.h"

namespace {

// Client-chosen text as stored: control characters, DEL and backslash
// escaped, and cut to a sane length.
std::string stored(const char* text)
{
    static const char* hex = "0123456789abcdef";
    std::string out;
    if (!text)
        return out;
    for (const char* p = text; *p && out.size() < 256; p++) {
        unsigned char c = (unsigned char)*p;
        if (c == '\\') {
            out += "\\\\";
        } else if (c < 0x20 || c == 0x7f) {
            out += "\\x";
            out += hex[c >> 4];
            out += hex[c & 15];
        } else {
            out += (char)c;
        }
    }
    return out;
}

}  // namespace

extern "C" int zar_recordFailedLogin(const char* user, const char* address)
{
    zarsim::Caller caller;
    caller.user = stored(user);
    caller.addr = stored(address);
    if (caller.user.empty())
        caller.user = "-";
    if (caller.addr.empty())
        caller.addr = "-";
    caller.method = "login";
    // The change itself is the refusal: nothing is written but the event.
    zarsim::Result r = zarsim::changeArray("login", caller, "user=" + caller.user, [](sqlite3*) {
        return zarsim::Result::error(API_E_ACCESS_DENIED,
                                     "Login failed: unknown user or wrong password");
    });
    return r.code == API_E_ACCESS_DENIED ? 0 : r.code;
}
