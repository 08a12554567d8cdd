// View identifiers ("MS:N:S:P:hostID", "HS:hostID", "HSet:setID", "PP:N:S:P",
// with or without ":default", and iSCSI target names) decoded against the
// simulated array's demo configuration, in memory.
//
// A decoded identifier must be self-consistent: only matched-set, host-sees
// and host-set views name a host; host-sees and host-set views name no port,
// port-present and matched-set views always do.
#include <cstddef>
#include <cstdint>

#include <ZAR_Common.h>
#include <zarsim_test.h>

#include "FuzzCheck.h"

PEGASUS_USING_PEGASUS;

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    zarsim_set_log_level(0);
    if (zarsim_open(":memory:") != 0 || zarsim_seed_demo() != 0) {
        std::fprintf(stderr, "view_id: cannot set up the simulated array\n");
        std::abort();
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    String id;
    try {
        id = String(reinterpret_cast<const char*>(data), Uint32(size));
    } catch (Exception&) {
        return 0;  // not UTF-8
    }
    for (bool iSCSI : {false, true}) {
        String deviceID = id;
        Uint32 type = 0;
        String host("unset");
        Uint16 port = 1;
        ZAR_Common::deReferenceSPCDeviceID(deviceID, type, host, port, iSCSI);
        FUZZ_CHECK(deviceID == id, "the identifier is left as it was");
        FUZZ_CHECK(type <= API_VLUN_PORT_PRESENT, "type is one of the four kinds or none");
        if (host.size() > 0)
            FUZZ_CHECK(type == API_VLUN_MATCHED_SET || type == API_VLUN_HOST_SEES ||
                           type == API_VLUN_HOST_SET,
                       "only matched-set, host-sees and host-set views name a host");
        if (type == API_VLUN_HOST_SEES || type == API_VLUN_HOST_SET)
            FUZZ_CHECK(port == API_PORT_NONE, "host-sees and host-set views name no port");
        if (type == API_VLUN_MATCHED_SET && host.size() > 0)
            FUZZ_CHECK(port != API_PORT_NONE, "a matched-set view with a host has its port");
    }
    return 0;
}
