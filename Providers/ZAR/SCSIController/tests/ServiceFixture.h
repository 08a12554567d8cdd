// ServiceFixture: calls of the configuration service's methods through the
// dispatcher over a fresh demo array, and the array's state read back
// through the array library.
//
// The demo array (zarcli seed): FC ports 0:1:1 0:1:2 1:1:1 1:1:2 2:1:1 3:1:1,
// iSCSI ports 0:2:1 1:2:1 2:2:1 3:2:1; volumes finance-01..10 (domain
// finance, finance-09 read-only) and eng-01..10 (domain eng); hosts esx01,
// esx02 (in host set esx-cluster), db01, build01, web01 (iSCSI), backup01
// (persona 11), dr01; logged-in initiators of no host 10000000C9A0FF01 on
// 0:1:1 and iqn.1994-05.com.example:spare01 on 0:2:1.
#ifndef ZAR_SCSICONTROLLER_TESTS_SERVICEFIXTURE_H
#define ZAR_SCSICONTROLLER_TESTS_SERVICEFIXTURE_H

#include <initializer_list>
#include <string>
#include <vector>

#include <ZAR_Common.h>

#include "ModuleFixture.h"

namespace zartest {

// One VLUN template as the array lists it.
struct Export {
    std::string volume;  // element name
    std::string host;    // "" for port present
    unsigned lun;
    std::string port;  // "" for any port
    unsigned kind;
};

class ServiceFixture : public ModuleFixture {
protected:
    // The service's path as the server lists it.
    Pegasus::CIMObjectPath service()
    {
        Paths names;
        server().enumerateInstanceNames(as("p1super"), ns(), "ZAR_ControllerConfigurationService",
                                        names);
        EXPECT_EQ(1u, names.items.size());
        return names.items.size() ? names.items[0] : Pegasus::CIMObjectPath();
    }

    struct Outcome {
        Pegasus::Uint32 rc = 99;
        Pegasus::Array<Pegasus::CIMParamValue> out;
        // The out-parameters of that name, in order.
        std::vector<Pegasus::CIMValue> all(const char* name) const
        {
            std::vector<Pegasus::CIMValue> v;
            for (Pegasus::Uint32 i = 0; i < out.size(); i++)
                if (Pegasus::String::equalNoCase(out[i].getParameterName(), name))
                    v.push_back(out[i].getValue());
            return v;
        }
        std::vector<std::string> descriptions() const
        {
            std::vector<std::string> d;
            for (const Pegasus::CIMValue& v : all("ResultDescriptions")) {
                Pegasus::Array<Pegasus::String> a;
                v.get(a);
                for (Pegasus::Uint32 i = 0; i < a.size(); i++)
                    d.push_back(text(a[i]));
            }
            return d;
        }
        Pegasus::Array<Pegasus::CIMObjectPath> views() const
        {
            Pegasus::Array<Pegasus::CIMObjectPath> p;
            std::vector<Pegasus::CIMValue> v = all("ProtocolControllers");
            if (!v.empty())
                v[0].get(p);
            return p;
        }
    };

    // Invokes a method that must succeed: it returns 0.
    Outcome call(const char* method, const Pegasus::Array<Pegasus::CIMParamValue>& in,
                 const char* user = "p1super")
    {
        Outcome o;
        Pegasus::CIMValue rc =
            server().invokeMethod(as(user, "192.0.2.77"), ns(), service(), method, in, o.out);
        rc.get(o.rc);
        EXPECT_EQ(0u, o.rc) << method;
        return o;
    }

    // A refusal a method must give: its input, status and message.
    struct Refusal {
        Pegasus::Array<Pegasus::CIMParamValue> in;
        int code;
        std::string message;
    };

    // Checks each refusal of `method` in turn (with prefixOnly the message
    // need only begin the error's text).
    void expectRefusals(const char* method, const std::vector<Refusal>& refusals,
                        bool prefixOnly = false)
    {
        for (const Refusal& r : refusals) {
            Pegasus::CIMException e = failure(method, r.in);
            std::string got = text(e.getMessage());
            EXPECT_EQ(r.code, (int)e.getCode()) << r.message;
            if (prefixOnly)
                EXPECT_EQ(0u, got.find(r.message)) << got;
            else
                EXPECT_EQ(r.message, got);
        }
    }

    // Invokes a method that is expected to fail; returns the CIM error.
    Pegasus::CIMException failure(const char* method,
                                  const Pegasus::Array<Pegasus::CIMParamValue>& in,
                                  const char* user = "p1super")
    {
        Pegasus::Array<Pegasus::CIMParamValue> out;
        Pegasus::CIMException e = cimErrorOf([&] {
            server().invokeMethod(as(user, "192.0.2.77"), ns(), service(), method, in, out);
        });
        EXPECT_EQ(0u, out.size());
        return e;
    }

    // ---- parameters
    static Pegasus::CIMParamValue strings(const char* name,
                                          std::initializer_list<std::string> items)
    {
        Pegasus::Array<Pegasus::String> a;
        for (const std::string& s : items)
            a.append(Pegasus::String(s.c_str()));
        return Pegasus::CIMParamValue(name, Pegasus::CIMValue(a));
    }
    static Pegasus::CIMParamValue uint16s(const char* name,
                                          std::initializer_list<Pegasus::Uint16> items)
    {
        Pegasus::Array<Pegasus::Uint16> a;
        for (Pegasus::Uint16 s : items)
            a.append(s);
        return Pegasus::CIMParamValue(name, Pegasus::CIMValue(a));
    }
    static Pegasus::CIMParamValue refs(const char* name,
                                       std::initializer_list<Pegasus::CIMObjectPath> items)
    {
        Pegasus::Array<Pegasus::CIMObjectPath> a;
        for (const Pegasus::CIMObjectPath& p : items)
            a.append(p);
        return Pegasus::CIMParamValue(name, Pegasus::CIMValue(a));
    }
    static Pegasus::CIMParamValue flag(const char* name, bool v)
    {
        return Pegasus::CIMParamValue(name, Pegasus::CIMValue(Pegasus::Boolean(v)));
    }
    static Pegasus::Array<Pegasus::CIMParamValue> params(
        std::initializer_list<Pegasus::CIMParamValue> items)
    {
        Pegasus::Array<Pegasus::CIMParamValue> a;
        for (const Pegasus::CIMParamValue& p : items)
            a.append(p);
        return a;
    }

    // The path of a view of class cls with that device identifier.
    static Pegasus::CIMObjectPath view(const std::string& deviceID,
                                       const char* cls = "ZAR_SCSIController")
    {
        Pegasus::CIMObjectPath p = Pegasus::ZAR_Common::buildSPCObjectPath(
            "ZAR_StorageSystem", "", "ZAR-DEMO", deviceID.c_str(), cls);
        return p;
    }

    // ---- the array's state
    static std::string wwnOf(const char* volume)
    {
        api_vv_t* list = nullptr;
        zar_u32 count = 0;
        EXPECT_EQ(0, cim_sem_wait());
        int rc = api_getVVs_direct(nullptr, volume, &count, &list, 0);
        cim_sem_post();
        std::string wwn = rc == 0 && count ? list[0].name : "";
        api_freeVVs(list);
        return wwn;
    }

    // The name of the target port at "N:S:P" as a client gives it: the
    // WWN of an FC port, the iSCSI name of an iSCSI one ("" for no port).
    static std::string portName(const char* position)
    {
        lpid_t p = API_PORT_NONE;
        api_convertStrLPIDtoPortID(position, &p);
        for (port_type_t type : {PORT_TYPE_FC, PORT_TYPE_ISCSI})
            for (const ArrayPort& port : arrayPorts(type))
                if (port.position == p)
                    return type == PORT_TYPE_FC ? port.wwn : port.iscsiName;
        return "";
    }

    static std::string hex(unsigned v)
    {
        char b[16];
        snprintf(b, sizeof b, "%X", v);
        return b;
    }

    static unsigned hostID(const std::string& name) { return ArrayBuilder::hostID(name.c_str()); }

    static std::string portOf(lpid_t p)
    {
        if (p == API_PORT_NONE)
            return "";
        char b[32];
        return loop_txbf(p, b, b);
    }

    // Every VLUN template, or those of one host ("set:NAME" for a set).
    static std::vector<Export> exports(const std::string& host = "")
    {
        api_vlunsInfo_t q;
        memset(&q, 0, sizeof q);
        if (!host.empty()) {
            strncpy(q.hostname, host.c_str(), sizeof q.hostname - 1);
            q.hostnameIsSet = 1;
        }
        EXPECT_EQ(0, cim_sem_wait());
        int rc = api_getVLUNTemplates(&q);
        cim_sem_post();
        std::vector<Export> out;
        for (zar_u32 i = 0; rc == 0 && i < q.count; i++) {
            const vlun& v = q.vluns[i];
            out.push_back({v.vvname, v.hostname, v.lun, portOf(v.port), v.accessPriority});
        }
        api_freeVLUNs(&q);
        return out;
    }

    // The exports of one volume.
    static std::vector<Export> exportsOf(const char* volume)
    {
        std::vector<Export> out;
        for (const Export& e : exports())
            if (e.volume == volume)
                out.push_back(e);
        return out;
    }

    // The host an initiator belongs to ("" for none, "?" when unknown).
    static std::string hostOf(const std::string& initiator)
    {
        bool wwn = initiator.size() == 16 &&
                   initiator.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
        api_hardwareID* list = nullptr;
        zar_u32 count = 0;
        EXPECT_EQ(0, cim_sem_wait());
        int rc = api_getHostPaths(wwn ? initiator.c_str() : nullptr,
                                  wwn ? nullptr : initiator.c_str(), nullptr, &count, &list, 0);
        cim_sem_post();
        std::string host = rc == 0 && count ? list[0].hostName : "?";
        api_freeHostPaths(list);
        return host;
    }

    // A host's record (hostID 0 when there is none).
    static api_host_t host(const std::string& name)
    {
        return ArrayBuilder::findHost([&](const api_host_t& h) { return name == h.name; });
    }

    static std::string deviceIDOf(const Pegasus::CIMObjectPath& p)
    {
        return text(Pegasus::ZAR_Common::getStringProperty(p, "DeviceID"));
    }
};

}  // namespace zartest

#endif
