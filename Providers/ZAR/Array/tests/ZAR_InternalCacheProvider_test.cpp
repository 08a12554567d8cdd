// The internal cache object through the server: the identity methods, the
// paths it answers to, and its refusals.
#include <arpa/inet.h>
#include <pwd.h>
#include <unistd.h>

#include <cstring>

#include "ModuleFixture.h"

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

const CIMNamespaceName kInternal("root/PG_Internal");

CIMObjectPath cachePath(const String& id)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("InstanceID"), id, CIMKeyBinding::STRING));
    return CIMObjectPath("localhost", kInternal, CIMName("ZAR_InternalCache"), keys);
}

class InternalCacheProviderTest : public ModuleFixture {
protected:
    // Invokes `method` on the object as `user` and returns its one output
    // parameter, checking the return value 0.
    CIMParamValue call(const char* method, const OperationContext& context,
                       const String& id = "localhost-InternalCache")
    {
        Array<CIMParamValue> in, out;
        CIMValue rc =
            server().invokeMethod(context, kInternal, cachePath(id), CIMName(method), in, out);
        Uint32 code = 99;
        rc.get(code);
        EXPECT_EQ(0u, code) << method;
        EXPECT_EQ(1u, out.size()) << method;
        return out.size() ? out[0] : CIMParamValue();
    }
};

TEST_F(InternalCacheProviderTest, IdentityMethodsAnswerFromTheArray)
{
    api_sysinfo_t info = systemInfo();
    ASSERT_NE('\0', info.name[0]);
    OperationContext viewer = as("p1browse");

    CIMParamValue p = call("GetSystemName", viewer);
    EXPECT_EQ("SystemName", text(p.getParameterName()));
    ASSERT_EQ(CIMTYPE_STRING, p.getValue().getType());
    String name;
    p.getValue().get(name);
    EXPECT_EQ(std::string(info.name), text(name));

    p = call("GetSystemID", viewer);
    EXPECT_EQ("SystemID", text(p.getParameterName()));
    ASSERT_EQ(CIMTYPE_UINT32, p.getValue().getType());
    Uint32 id = 0;
    p.getValue().get(id);
    EXPECT_EQ(info.systemID, id);

    p = call("GetSystemType", viewer);
    EXPECT_EQ("SystemType", text(p.getParameterName()));
    ASSERT_EQ(CIMTYPE_SINT32, p.getValue().getType());
    Sint32 type = -1;
    p.getValue().get(type);
    EXPECT_EQ(info.systemType, type);

    p = call("IsQuadPortSystem", viewer);
    EXPECT_EQ("IsQuadPort", text(p.getParameterName()));
    ASSERT_EQ(CIMTYPE_UINT8, p.getValue().getType());
    Uint8 quad = 7;
    p.getValue().get(quad);
    EXPECT_EQ(info.quadPort ? 1 : 0, quad);

    p = call("GetSystemHostName", viewer);
    EXPECT_EQ("SystemHostName", text(p.getParameterName()));
    String hostName;
    p.getValue().get(hostName);
    EXPECT_EQ(std::string(info.hostName), text(hostName));

    p = call("GetSystemAddress", viewer);
    EXPECT_EQ("SystemAddress", text(p.getParameterName()));
    String address;
    p.getValue().get(address);
    api_ipaddr_t addr{};
    ASSERT_EQ(0, cim_sem_wait());
    ASSERT_EQ(0, api_getSystemDualIP(&addr));
    cim_sem_post();
    char expected[INET6_ADDRSTRLEN] = "";
    if (addr.dual_flag & 1) {
        struct in_addr a;
        a.s_addr = addr.ipv4_addr;
        inet_ntop(AF_INET, &a, expected, sizeof(expected));
    } else if (addr.dual_flag & 2) {
        inet_ntop(AF_INET6, addr.ipv6_addr, expected, sizeof(expected));
    }
    EXPECT_EQ(std::string(expected), text(address));
    EXPECT_NE(0u, address.size());
}

TEST_F(InternalCacheProviderTest, AnswersUnderBothNamesAndIgnoresCase)
{
    api_sysinfo_t info = systemInfo();
    String own = String(info.name) + "-InternalCache";
    String name;
    call("GetSystemName", as("p1browse"), own).getValue().get(name);
    EXPECT_EQ(std::string(info.name), text(name));
    call("getsystemname", as("p1browse"), "LOCALHOST-internalcache").getValue().get(name);
    EXPECT_EQ(std::string(info.name), text(name));

    // Requests of the server itself: through a handle (no user), or through
    // its local connection (its own OS user, not an array user).
    call("GetSystemName", OperationContext()).getValue().get(name);
    EXPECT_EQ(std::string(info.name), text(name));
    struct passwd* pw = getpwuid(geteuid());
    ASSERT_NE(nullptr, pw);
    call("GetSystemName", as(pw->pw_name)).getValue().get(name);
    EXPECT_EQ(std::string(info.name), text(name));

    Array<CIMParamValue> in, out;
    expectCIMError(CIM_ERR_NOT_FOUND, "ZAR_InternalCacheProvider CIM Object not found.", [&] {
        server().invokeMethod(as("p1browse"), kInternal, cachePath("otherhost-InternalCache"),
                              CIMName("GetSystemName"), in, out);
    });
}

TEST_F(InternalCacheProviderTest, RefusesUsersMethodsAndChanges)
{
    Array<CIMParamValue> in, out;
    for (const char* user : {"nobody", "p1locked"}) {
        CIMException e = cimErrorOf([&] {
            server().invokeMethod(as(user), kInternal, cachePath("localhost-InternalCache"),
                                  CIMName("GetSystemName"), in, out);
        });
        EXPECT_EQ(CIM_ERR_ACCESS_DENIED, e.getCode()) << user;
        EXPECT_EQ("Insufficient privilege for the user", text(e.getMessage())) << user;
    }
    EXPECT_EQ(0u, out.size());

    expectCIMError(CIM_ERR_METHOD_NOT_FOUND,
                   "ZAR_InternalCacheProvider Invalid method name GetSystemSerial", [&] {
                       server().invokeMethod(as("p1browse"), kInternal,
                                             cachePath("localhost-InternalCache"),
                                             CIMName("GetSystemSerial"), in, out);
                   });
}

TEST_F(InternalCacheProviderTest, ArrayFailuresBecomeOperationFailures)
{
    Array<CIMParamValue> in, out;
    zarsim_sem_timeout_next(1);
    expectCIMError(
        CIM_ERR_FAILED,
        "ZAR_InternalCacheProvider::invokeMethod - Operation failed: Semaphore Timed-Out", [&] {
            server().invokeMethod(as("p1browse"), kInternal, cachePath("localhost-InternalCache"),
                                  CIMName("GetSystemName"), in, out);
        });

    // The address call has no status record: its code's text is reported.
    zarsim_fail_next("api_getSystemDualIP", 1, 12, "Out of memory");
    CIMException e = cimErrorOf([&] {
        server().invokeMethod(as("p1browse"), kInternal, cachePath("localhost-InternalCache"),
                              CIMName("GetSystemAddress"), in, out);
    });
    EXPECT_EQ(CIM_ERR_FAILED, e.getCode());
    EXPECT_NE(std::string::npos, text(e.getMessage()).find("Out of memory"));

    // The fault was used up: the next call answers.
    CIMValue rc =
        server().invokeMethod(as("p1browse"), kInternal, cachePath("localhost-InternalCache"),
                              CIMName("GetSystemAddress"), in, out);
    EXPECT_FALSE(rc.isNull());
}

TEST_F(InternalCacheProviderTest, TheObjectIsEnumerableAndGettable)
{
    api_sysinfo_t info = systemInfo();
    const std::string id = std::string(info.name) + "-InternalCache";

    Paths names;
    server().enumerateInstanceNames(as("p1browse"), kInternal, CIMName("ZAR_InternalCache"), names);
    ASSERT_EQ(1u, names.items.size());
    const Array<CIMKeyBinding>& keys = names.items[0].getKeyBindings();
    ASSERT_EQ(1u, keys.size());
    EXPECT_EQ(id, text(keys[0].getValue()));

    CIMInstance inst =
        server().getInstance(as("p1browse"), kInternal, cachePath("localhost-InternalCache"), false,
                             false, false, CIMPropertyList());
    Uint32 pos = inst.findProperty(CIMName("InstanceID"));
    ASSERT_NE(PEG_NOT_FOUND, pos);
    String value;
    inst.getProperty(pos).getValue().get(value);
    EXPECT_EQ(id, text(value));
    EXPECT_EQ(std::string(info.hostName), text(inst.getPath().getHost()))
        << "the array's own host, not the server's";
}

}  // namespace
