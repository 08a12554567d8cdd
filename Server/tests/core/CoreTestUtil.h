// Helpers shared by the core's in-process tests: a server core over the
// test provider module, collecting response handlers, error capture.
#ifndef ZAR_SERVER_TESTS_CORE_CORETESTUTIL_H
#define ZAR_SERVER_TESTS_CORE_CORETESTUTIL_H

#include <stdlib.h>

#include <fstream>
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

// A response handler that keeps what it is given and counts complete().
template <class Handler, class T>
struct Collector : Handler {
    void processing() override {}
    void complete() override { ++completed; }
    void deliver(const T& x) override { items.append(x); }
    void deliver(const Pegasus::Array<T>& a) override { items.appendArray(a); }
    Pegasus::Array<T> items;
    int completed = 0;
};
using Instances = Collector<Pegasus::InstanceResponseHandler, Pegasus::CIMInstance>;
using Paths = Collector<Pegasus::ObjectPathResponseHandler, Pegasus::CIMObjectPath>;
using Objects = Collector<Pegasus::ObjectResponseHandler, Pegasus::CIMObject>;

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

// A new empty folder under /tmp.
inline std::string tempDir()
{
    char tmpl[] = "/tmp/zarcoreXXXXXX";
    return mkdtemp(tmpl);
}

inline void writeFile(const std::string& path, const std::string& text)
{
    std::ofstream(path) << text;
}

}  // namespace coretest

#endif
