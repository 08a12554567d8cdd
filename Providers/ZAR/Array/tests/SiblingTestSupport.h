// SiblingTestSupport: what the tests of the volume, endpoint, iSCSI view and
// association providers share beside the module fixture: the array's own
// records read directly from the library (the answers the providers must
// agree with), and path helpers.
#ifndef ZAR_ARRAY_TESTS_SIBLINGTESTSUPPORT_H
#define ZAR_ARRAY_TESTS_SIBLINGTESTSUPPORT_H

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CommonTestSupport.h"

#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <zarapi.h>

namespace zartest {

inline std::string fieldOf(const char* p, size_t n)
{
    return std::string(p, strnlen(p, n));
}

// The value of key `name` of a path ("" when absent).
inline std::string key(const Pegasus::CIMObjectPath& p, const char* name)
{
    const Pegasus::Array<Pegasus::CIMKeyBinding>& keys = p.getKeyBindings();
    for (Pegasus::Uint32 i = 0; i < keys.size(); i++)
        if (keys[i].getName().equal(Pegasus::CIMName(name)))
            return text(keys[i].getValue());
    return "";
}

// The reference key `role` of an association path, as a path.
inline Pegasus::CIMObjectPath refKey(const Pegasus::CIMObjectPath& p, const char* role)
{
    return Pegasus::CIMObjectPath(Pegasus::String(key(p, role).c_str()));
}

// The string form of a property ("" when absent or null).
inline std::string prop(const Pegasus::CIMInstance& inst, const char* name)
{
    Pegasus::Uint32 pos = inst.findProperty(Pegasus::CIMName(name));
    if (pos == Pegasus::Uint32(-1))
        return "";  // not found
    Pegasus::CIMValue v = inst.getProperty(pos).getValue();
    return v.isNull() ? "" : text(v.toString());
}

// The set of one key's values over paths.
inline std::set<std::string> keys(const Pegasus::Array<Pegasus::CIMObjectPath>& paths,
                                  const char* name)
{
    std::set<std::string> out;
    for (Pegasus::Uint32 i = 0; i < paths.size(); i++)
        out.insert(key(paths[i], name));
    return out;
}

// --- The array's own answers ----------------------------------------------

inline std::vector<api_vv_t> arrayVolumes()
{
    std::vector<api_vv_t> out;
    api_vv_t* list = nullptr;
    zar_u32 count = 0;
    EXPECT_EQ(0, cim_sem_wait());
    EXPECT_EQ(0, api_getVVs_direct(nullptr, nullptr, &count, &list, 1));
    cim_sem_post();
    out.assign(list, list + count);
    api_freeVVs(list);
    return out;
}

struct ArrayPort {
    lpid_t position;
    std::string deviceID, wwn, iscsiName;
};

inline std::vector<ArrayPort> arrayPorts(port_type_t type)
{
    std::vector<ArrayPort> out;
    EXPECT_EQ(0, cim_sem_wait());
    if (type == PORT_TYPE_FC) {
        api_FCPort_t* ports = nullptr;
        int n = api_getFCPorts(0, 0, 0, &ports);
        for (int i = 0; i < n; i++) {
            char wwn[17];
            snprintf(wwn, sizeof wwn, "%016llX", (unsigned long long)ports[i].portWWN);
            out.push_back(
                {ports[i].portPos, fieldOf(ports[i].deviceID, sizeof ports[i].deviceID), wwn, ""});
        }
        if (n > 0)
            api_freeFCPorts(ports, n);
    } else {
        api_iSCSIPort_t* ports = nullptr;
        int n = api_getISCSIPorts(&ports);
        for (int i = 0; i < n; i++)
            out.push_back({ports[i].portID, fieldOf(ports[i].deviceID, sizeof ports[i].deviceID),
                           "", fieldOf(ports[i].iscsiName, sizeof ports[i].iscsiName)});
        if (n > 0)
            api_freeISCSIPorts(ports);
    }
    cim_sem_post();
    return out;
}

// Every export record (one per exported LU and view) of one protocol.
inline std::vector<vlun> arrayExports(port_type_t type)
{
    api_vlunsInfo_t q;
    memset(&q, 0, sizeof q);
    EXPECT_EQ(0, cim_sem_wait());
    EXPECT_EQ(0, api_getSCSIProtocolControllers(&q));
    cim_sem_post();
    std::vector<vlun> out;
    for (zar_u32 i = 0; i < q.count; i++)
        if (q.vluns[i].hporttype == type)
            out.push_back(q.vluns[i]);
    api_freeVLUNs(&q);
    return out;
}

// Every view record of one protocol, walking the chunked query.
inline std::vector<vlun> arrayViews(port_type_t type)
{
    std::vector<vlun> out;
    api_spc_param_data cursor;
    api_initSPCParamData(&cursor);
    zar_u32 more = 1;
    while (more) {
        api_vlunsInfo_t q;
        memset(&q, 0, sizeof q);
        EXPECT_EQ(0, cim_sem_wait());
        int rc = api_getSCSIProtocolControllers_chunk(&q, &cursor, &more, 200);
        cim_sem_post();
        EXPECT_EQ(0, rc);
        if (rc != 0)
            break;
        for (zar_u32 i = 0; i < q.count; i++)
            if (q.vluns[i].hporttype == type)
                out.push_back(q.vluns[i]);
        api_freeVLUNs(&q);
    }
    api_freeSPCParamData(&cursor);
    return out;
}

}  // namespace zartest

#endif
