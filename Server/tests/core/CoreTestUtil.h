// Helpers shared by the core's in-process tests: a server core over the
// test provider module, collecting response handlers, error capture.
#ifndef ZAR_SERVER_TESTS_CORE_CORETESTUTIL_H
#define ZAR_SERVER_TESTS_CORE_CORETESTUTIL_H

#include <functional>
#include <memory>
#include <string>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/ResponseHandler.h>

#include "ServerCore.h"

namespace coretest {

inline zarserver::CoreConfig testConfig()
{
    zarserver::CoreConfig c;
    c.schemaDir = ZAR_TEST_SCHEMA_DIR;
    c.providerDir = ZAR_PROVIDER_DIR;
    c.hostName = "testhost";
    c.log = [](int, const std::string&) {};
    return c;
}

struct Instances : Pegasus::InstanceResponseHandler {
    void processing() override {}
    void complete() override { ++completed; }
    void deliver(const Pegasus::CIMInstance& i) override { items.append(i); }
    void deliver(const Pegasus::Array<Pegasus::CIMInstance>& a) override { items.appendArray(a); }
    Pegasus::Array<Pegasus::CIMInstance> items;
    int completed = 0;
};

struct Paths : Pegasus::ObjectPathResponseHandler {
    void processing() override {}
    void complete() override { ++completed; }
    void deliver(const Pegasus::CIMObjectPath& p) override { items.append(p); }
    void deliver(const Pegasus::Array<Pegasus::CIMObjectPath>& a) override { items.appendArray(a); }
    Pegasus::Array<Pegasus::CIMObjectPath> items;
    int completed = 0;
};

struct Objects : Pegasus::ObjectResponseHandler {
    void processing() override {}
    void complete() override { ++completed; }
    void deliver(const Pegasus::CIMObject& o) override { items.append(o); }
    void deliver(const Pegasus::Array<Pegasus::CIMObject>& a) override { items.appendArray(a); }
    Pegasus::Array<Pegasus::CIMObject> items;
    int completed = 0;
};

// The CIMException thrown by f (code CIM_ERR_SUCCESS and empty message if
// none was thrown).
struct Failure {
    Pegasus::CIMStatusCode code = Pegasus::CIM_ERR_SUCCESS;
    std::string message;
};
inline Failure failure(const std::function<void()>& f)
{
    Failure out;
    try {
        f();
    } catch (const Pegasus::CIMException& e) {
        out.code = e.getCode();
        out.message = (const char*)e.getMessage().getCString();
    }
    return out;
}

inline std::string str(const Pegasus::String& s)
{
    return (const char*)s.getCString();
}

}  // namespace coretest

#endif
