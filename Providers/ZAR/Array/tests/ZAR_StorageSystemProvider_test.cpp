// The storage system through the server: its one instance, the paths it
// answers to, and its refusals.
#include <algorithm>
#include <vector>

#include "ModuleFixture.h"

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

const CIMNamespaceName kZar("root/zar");

CIMObjectPath systemPath(const String& ccn, const String& name)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("CreationClassName"), ccn, CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding(CIMName("Name"), name, CIMKeyBinding::STRING));
    return CIMObjectPath("somehost", kZar, CIMName("ZAR_StorageSystem"), keys);
}

template <typename T>
T valueOf(const CIMInstance& inst, const char* name)
{
    T v{};
    Uint32 pos = inst.findProperty(CIMName(name));
    EXPECT_NE(PEG_NOT_FOUND, pos) << name;
    if (pos != PEG_NOT_FOUND) {
        EXPECT_FALSE(inst.getProperty(pos).getValue().isNull()) << name;
        inst.getProperty(pos).getValue().get(v);
    }
    return v;
}

std::vector<std::string> strings(const Array<String>& a)
{
    std::vector<std::string> v;
    for (Uint32 i = 0; i < a.size(); i++)
        v.push_back(text(a[i]));
    return v;
}

using StorageSystemProviderTest = ModuleFixture;

TEST_F(StorageSystemProviderTest, EnumeratesTheOneSystemByItsName)
{
    api_sysinfo_t info = systemInfo();
    for (const OperationContext& context : {as("p1browse"), OperationContext()}) {
        Paths names;
        server().enumerateInstanceNames(context, kZar, CIMName("ZAR_StorageSystem"), names);
        ASSERT_EQ(1u, names.items.size());
        CIMObjectPath p = names.items[0];
        EXPECT_TRUE(p.getClassName().equal(CIMName("ZAR_StorageSystem")));
        const Array<CIMKeyBinding>& keys = p.getKeyBindings();
        ASSERT_EQ(2u, keys.size());
        for (Uint32 i = 0; i < keys.size(); i++) {
            if (keys[i].getName().equal(CIMName("Name")))
                EXPECT_EQ(std::string(info.name), text(keys[i].getValue()));
            else
                EXPECT_EQ("ZAR_StorageSystem", text(keys[i].getValue()));
        }
    }
}

TEST_F(StorageSystemProviderTest, InstanceDescribesTheArray)
{
    api_sysinfo_t info = systemInfo();
    char owner[256] = "", contact[256] = "";
    ASSERT_EQ(0, cim_sem_wait());
    ASSERT_EQ(0, api_getOwnerName(owner, sizeof(owner)));
    ASSERT_EQ(0, api_getSystemContact(contact, sizeof(contact)));
    cim_sem_post();

    CIMInstance inst = get(systemPath("ZAR_StorageSystem", info.name));
    EXPECT_EQ(std::string(info.name), text(valueOf<String>(inst, "Name")));
    EXPECT_EQ(std::string(info.hostName), text(inst.getPath().getHost()))
        << "the array's own host, not the server's";
    EXPECT_EQ(std::string(info.name), text(valueOf<String>(inst, "ElementName")));
    EXPECT_EQ("ZAR_StorageSystem", text(valueOf<String>(inst, "CreationClassName")));
    std::string description = "Storage array " + std::string(info.name);
    if (*info.model)
        description += ", model " + std::string(info.model);
    if (*info.serial)
        description += ", serial number " + std::string(info.serial);
    EXPECT_TRUE(*info.model && *info.serial) << "the demo array has both";
    EXPECT_EQ(description, text(valueOf<String>(inst, "Description")));
    EXPECT_EQ(std::string(owner), text(valueOf<String>(inst, "PrimaryOwnerName")));
    EXPECT_EQ(std::string(contact), text(valueOf<String>(inst, "PrimaryOwnerContact")));

    Array<Uint16> dedicated = valueOf<Array<Uint16>>(inst, "Dedicated");
    ASSERT_EQ(2u, dedicated.size());
    EXPECT_EQ(3, dedicated[0]);   // Storage
    EXPECT_EQ(15, dedicated[1]);  // Block Server

    Array<Uint16> status = valueOf<Array<Uint16>>(inst, "OperationalStatus");
    std::vector<std::string> descriptions =
        strings(valueOf<Array<String>>(inst, "StatusDescriptions"));
    ASSERT_EQ(1u, status.size());
    ASSERT_EQ(1u, descriptions.size());
    if (info.nodesAlive == info.nodesTotal) {
        EXPECT_EQ(2, status[0]);
        EXPECT_EQ("OK", descriptions[0]);
        EXPECT_EQ(5, valueOf<Uint16>(inst, "HealthState"));
    } else {
        EXPECT_EQ(3, status[0]);
        EXPECT_EQ("Degraded", descriptions[0]);
    }

    // Identifying data and its descriptions go index for index.
    std::vector<std::string> info_ = strings(valueOf<Array<String>>(inst, "OtherIdentifyingInfo"));
    std::vector<std::string> what =
        strings(valueOf<Array<String>>(inst, "IdentifyingDescriptions"));
    ASSERT_EQ(info_.size(), what.size());
    auto at = std::find(what.begin(), what.end(), "Host Name");
    ASSERT_NE(what.end(), at);
    EXPECT_EQ(std::string(info.hostName), info_[at - what.begin()]);
    // The demo array has both addresses.
    for (const auto& a : {std::make_pair("Ipv4 Address", "192.0.2.10"),
                          std::make_pair("Ipv6 Address", "2001:db8::10")}) {
        auto d = std::find(what.begin(), what.end(), a.first);
        ASSERT_NE(what.end(), d) << a.first;
        EXPECT_EQ(a.second, info_[d - what.begin()]);
    }

    // Without an IPv6 address there is no IPv6 entry.
    ASSERT_EQ(0, zarsim_set_config("ipv6", ""));
    CIMInstance v4 = get(systemPath("ZAR_StorageSystem", info.name));
    std::vector<std::string> v4what =
        strings(valueOf<Array<String>>(v4, "IdentifyingDescriptions"));
    EXPECT_EQ(v4what.end(), std::find(v4what.begin(), v4what.end(), "Ipv6 Address"));
}

TEST_F(StorageSystemProviderTest, PathsMustNameTheSystem)
{
    api_sysinfo_t info = systemInfo();
    // The class key is compared ignoring case, the host not at all.
    CIMInstance inst = get(systemPath("zar_storagesystem", info.name));
    EXPECT_EQ(std::string(info.name), text(valueOf<String>(inst, "Name")));

    expectCIMError(CIM_ERR_NOT_FOUND, "ZAR_StorageSystemProvider CIM Object not found.", [&] {
        server().getInstance(as("p1browse"), kZar,
                             systemPath("ZAR_StorageSystem", String(info.name) + "X"), false, false,
                             false, CIMPropertyList());
    });

    CIMException e = cimErrorOf([&] { get(systemPath("CIM_ComputerSystem", info.name)); });
    EXPECT_EQ(CIM_ERR_NOT_FOUND, e.getCode());

    Array<CIMKeyBinding> one;
    one.append(CIMKeyBinding(CIMName("Name"), String(info.name), CIMKeyBinding::STRING));
    expectCIMError(CIM_ERR_INVALID_PARAMETER, "ZAR_StorageSystemProvider Expect two keys.", [&] {
        server().getInstance(as("p1browse"), kZar,
                             CIMObjectPath("", kZar, CIMName("ZAR_StorageSystem"), one), false,
                             false, false, CIMPropertyList());
    });
}

TEST_F(StorageSystemProviderTest, NameIsReadableAsAProperty)
{
    // The masking capabilities read the system's Name this way.
    api_sysinfo_t info = systemInfo();
    Paths names;
    server().enumerateInstanceNames(OperationContext(), kZar, CIMName("ZAR_StorageSystem"), names);
    ASSERT_EQ(1u, names.items.size());
    CIMValue v = server().getProperty(OperationContext(), kZar, names.items[0], CIMName("Name"));
    String name;
    v.get(name);
    EXPECT_EQ(std::string(info.name), text(name));
}

TEST_F(StorageSystemProviderTest, FailedReadsAreOperationFailures)
{
    api_sysinfo_t info = systemInfo();
    CIMObjectPath path = systemPath("ZAR_StorageSystem", info.name);
    zarsim_sem_timeout_next(1);
    CIMException e = cimErrorOf([&] { get(path); });
    EXPECT_EQ(CIM_ERR_FAILED, e.getCode());
    EXPECT_EQ("ZAR_StorageSystemProvider::getInstance - Operation failed: Semaphore Timed-Out",
              text(e.getMessage()));

    zarsim_fail_next("api_getOwnerName", 1, 1, "owner record unreadable");
    e = cimErrorOf([&] { get(path); });
    EXPECT_EQ(CIM_ERR_FAILED, e.getCode());
}

}  // namespace
