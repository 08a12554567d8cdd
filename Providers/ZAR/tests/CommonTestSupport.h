// CommonTestSupport: helpers shared by the tests of ZAR_Common and of both
// modules: captured trace lines, a fresh simulated array, CIM exception
// capture, keys and properties as text, and the array's own records read
// directly from the library (the answers the providers must agree with).
#ifndef ZAR_TESTS_COMMONTESTSUPPORT_H
#define ZAR_TESTS_COMMONTESTSUPPORT_H

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>
#include <zarsim_test.h>

namespace zartest {

inline std::string text(const Pegasus::String& s)
{
    return std::string((const char*)s.getCString());
}

// Captures the array library's log lines (every level up to 4) while alive.
class LogCapture {
public:
    LogCapture()
    {
        zarsim_set_log_level(4);
        zarsim_clear_captured();
        zarsim_capture_log(1);
    }
    ~LogCapture()
    {
        zarsim_capture_log(0);
        zarsim_clear_captured();
    }
    std::vector<std::string> lines() const
    {
        std::vector<std::string> out;
        char buffer[4096];
        for (size_t i = 0; i < zarsim_captured_count(); i++) {
            if (zarsim_captured_line(i, buffer, sizeof(buffer)) == 0)
                out.push_back(buffer);
        }
        return out;
    }
    // True when some captured line equals `line` exactly.
    bool has(const std::string& line) const
    {
        for (const std::string& l : lines())
            if (l == line)
                return true;
        return false;
    }
    // Index of the first line equal to `line`, or -1.
    int indexOf(const std::string& line) const
    {
        std::vector<std::string> all = lines();
        for (size_t i = 0; i < all.size(); i++)
            if (all[i] == line)
                return (int)i;
        return -1;
    }
    void clear() { zarsim_clear_captured(); }
};

// Runs `body` and returns the CIMException it throws; fails the test when it
// throws nothing.
template <typename F>
Pegasus::CIMException cimErrorOf(F body)
{
    try {
        body();
    } catch (const Pegasus::CIMException& e) {
        return e;
    }
    ADD_FAILURE() << "no CIMException was thrown";
    return Pegasus::CIMException(Pegasus::CIM_ERR_SUCCESS, "nothing thrown");
}

// Runs `body`, which must throw a CIMException of that code and message.
template <typename F>
void expectCIMError(Pegasus::CIMStatusCode code, const std::string& message, F body)
{
    Pegasus::CIMException e = cimErrorOf(body);
    EXPECT_EQ(code, e.getCode()) << message;
    EXPECT_EQ(message, text(e.getMessage()));
}

// A fresh in-memory array with one live node for every test.
class FreshArray : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(0, zarsim_open(":memory:"));
        zarsim_set_hash_iterations(1);
    }
    void TearDown() override
    {
        zarsim_clear_faults();
        zarsim_capture_log(0);
    }
};

// Building blocks of array configurations, each one change through the
// array library (under its semaphore, as a provider would call it).
struct ArrayBuilder {
    // Adds node 0 and the target ports given as "N:S:P" texts.
    static void ports(std::initializer_list<const char*> positions, int type = PORT_TYPE_FC)
    {
        zarsim_add_node(0);
        for (const char* p : positions) {
            char node[2] = {p[0], 0};
            zarsim_add_node(atoi(node));
            ASSERT_EQ(0, zarsim_add_port(p, type)) << p;
        }
    }

    // A volume; returns its WWN text.
    static std::string volume(const char* name)
    {
        char wwn[33] = {0};
        EXPECT_EQ(0, zarsim_add_volume(name, 1024, "-", VOL_MODE_READWRITE, wwn));
        return wwn;
    }

    // A host with one Fibre Channel initiator (16 hex digits; "" for none).
    static int host(const char* name, const char* wwn)
    {
        zar_u64 value = API_WWN_NONE;
        if (wwn && *wwn)
            value = strtoull(wwn, nullptr, 16);
        api_status_t status;
        EXPECT_EQ(0, cim_sem_wait());
        int rc = api_createHost(&status, nullptr, name, nullptr, value, API_PERSONA_GENERIC, "-");
        cim_sem_post();
        return rc;
    }

    // The number of a host, or 0 when unknown.
    static unsigned hostID(const char* name)
    {
        api_host_t* hosts = nullptr;
        zar_u32 count = 0;
        EXPECT_EQ(0, cim_sem_wait());
        EXPECT_EQ(0, api_getHosts(&hosts, &count));
        cim_sem_post();
        unsigned id = 0;
        for (zar_u32 i = 0; i < count; i++)
            if (std::string(hosts[i].name) == name)
                id = hosts[i].hostID;
        api_freeHosts(hosts);
        return id;
    }

    // Exports the volume with WWN text wwn to host (nullptr: port present)
    // through port ("N:S:P", nullptr: any port). Returns the array's code.
    static int exportTo(const std::string& wwn, const char* host, const char* port)
    {
        zar_u64 high = 0, low = 0;
        EXPECT_EQ(0, api_wwnStringToInt(nullptr, wwn.c_str(), &high, &low));
        lpid_t lpid = API_PORT_NONE;
        if (port) {
            EXPECT_EQ(0, api_convertStrLPIDtoPortID(port, &lpid));
        }
        zar_u32 lun = API_LUN_AUTO;
        char err[API_ERRTEXT_LEN];
        EXPECT_EQ(0, cim_sem_wait());
        int rc = api_createVLUN(nullptr, high, low, &lun, host, API_WWN_NONE, nullptr, lpid, 0, 0,
                                err, sizeof(err));
        cim_sem_post();
        return rc;
    }

    // The array's record of the first host that match picks (hostID 0 and
    // no name when none does).
    template <class Match>
    static api_host_t findHost(Match match)
    {
        api_host_t found{};
        api_host_t* hosts = nullptr;
        zar_u32 count = 0;
        EXPECT_EQ(0, cim_sem_wait());
        EXPECT_EQ(0, api_getHosts(&hosts, &count));
        cim_sem_post();
        for (zar_u32 i = 0; i < count && found.hostID == 0; i++)
            if (match(hosts[i]))
                found = hosts[i];
        api_freeHosts(hosts);
        return found;
    }

    // The name of a host as the array lists it now ("" when gone).
    static std::string hostNameByID(unsigned id)
    {
        return findHost([&](const api_host_t& h) { return h.hostID == id; }).name;
    }
};

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
