// The Authorization header of HTTP Basic authentication: base64 and the
// user:password split. Accepted credentials hold no NUL byte and a name
// without a colon, and encoding them again gives back the same credentials.
#include <cstddef>
#include <cstdint>
#include <string>

#include "CimProtocol.h"
#include "HttpMessage.h"

#include "FuzzCheck.h"

using namespace zarwire;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string value(reinterpret_cast<const char*>(data), size);

    std::string raw;
    if (base64Decode(value, raw)) {
        std::string again;
        FUZZ_CHECK(base64Decode(base64Encode(raw), again) && again == raw, "base64 round-trips");
    }

    BasicCredentials c;
    try {
        c = parseBasicCredentials(value);
    } catch (ProtocolError& e) {
        FUZZ_CHECK(e.status == 400 || e.status == 401, "refused credentials answer 400 or 401");
        return 0;
    }
    FUZZ_CHECK(c.user.find(':') == std::string::npos, "the user name holds no colon");
    FUZZ_CHECK(c.user.find('\0') == std::string::npos && c.password.find('\0') == std::string::npos,
               "no NUL byte in accepted credentials");
    BasicCredentials back =
        parseBasicCredentials("Basic " + base64Encode(c.user + ":" + c.password));
    FUZZ_CHECK(back.user == c.user && back.password == c.password, "credentials round-trip");
    return 0;
}
