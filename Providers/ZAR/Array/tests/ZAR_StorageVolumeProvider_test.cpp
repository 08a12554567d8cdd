// Volumes through the server: every array volume once, its properties from
// the array's record, fetched by path, and the refusals.
#include <map>

#include "ModuleFixture.h"
#include <zarsim_test.h>

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

class StorageVolumeProviderTest : public ModuleFixture {
protected:
    Array<CIMInstance> all(const OperationContext& context, const char* cls = "ZAR_StorageVolume")
    {
        Instances list;
        server().enumerateInstances(context, ns(), CIMName(cls), true, false, false, false,
                                    CIMPropertyList(), list);
        return list.items;
    }
};

TEST_F(StorageVolumeProviderTest, EveryVolumeOnceWithItsRecord)
{
    std::vector<api_vv_t> volumes = arrayVolumes();
    ASSERT_FALSE(volumes.empty());
    api_sysinfo_t info = systemInfo();
    std::map<std::string, api_vv_t> byWWN;
    for (const api_vv_t& v : volumes)
        byWWN[fieldOf(v.name, sizeof v.name)] = v;

    Array<CIMInstance> got = all(as("p1browse"));
    ASSERT_EQ(volumes.size(), got.size());
    std::set<std::string> seen;
    for (Uint32 i = 0; i < got.size(); i++) {
        const CIMInstance& inst = got[i];
        std::string wwn = prop(inst, "DeviceID");
        ASSERT_EQ(1u, byWWN.count(wwn)) << wwn;
        EXPECT_TRUE(seen.insert(wwn).second) << "delivered twice: " << wwn;
        const api_vv_t& v = byWWN[wwn];
        EXPECT_EQ(fieldOf(v.elementName, sizeof v.elementName), prop(inst, "ElementName"));
        EXPECT_EQ(wwn, prop(inst, "Name"));
        EXPECT_EQ(std::to_string((int)v.access), prop(inst, "Access"));
        EXPECT_EQ("512", prop(inst, "BlockSize"));
        EXPECT_EQ(std::to_string((unsigned long long)v.sizeMiB * 2048),
                  prop(inst, "NumberOfBlocks"));
        EXPECT_EQ(std::string(info.name), prop(inst, "SystemName"));
        EXPECT_EQ("ZAR_StorageSystem", prop(inst, "SystemCreationClassName"));
        // The path names the same volume and carries the array's host name.
        EXPECT_EQ(wwn, key(inst.getPath(), "DeviceID"));
        EXPECT_EQ("zar-demo", text(inst.getPath().getHost()));
    }

    Paths names;
    server().enumerateInstanceNames(as("p1browse"), ns(), CIMName("ZAR_StorageVolume"), names);
    EXPECT_EQ(seen, keys(names.items, "DeviceID"));
    // Reached through a superclass as well.
    EXPECT_EQ(volumes.size(), all(as("p1browse"), "CIM_StorageVolume").size());
}

TEST_F(StorageVolumeProviderTest, ManyVolumesAreAllDeliveredAcrossChunks)
{
    size_t before = arrayVolumes().size();
    for (int i = 0; i < 230; i++)
        ASSERT_EQ(0, zarsim_add_volume(("bulk-" + std::to_string(i)).c_str(), 1024, "-",
                                       VOL_MODE_READWRITE, nullptr));
    Paths names;
    server().enumerateInstanceNames(OperationContext(), ns(), CIMName("ZAR_StorageVolume"), names);
    EXPECT_EQ(before + 230, names.items.size());
    EXPECT_EQ(before + 230, keys(names.items, "DeviceID").size()) << "duplicates across chunks";
}

TEST_F(StorageVolumeProviderTest, FetchedByPathAndNotFoundOtherwise)
{
    char wwn[33] = "";
    ASSERT_EQ(0, zarsim_add_volume("ro-vol", 2048, "-", VOL_MODE_READ, wwn));
    Paths names;
    server().enumerateInstanceNames(as("p1browse"), ns(), CIMName("ZAR_StorageVolume"), names);
    CIMObjectPath path;
    for (Uint32 i = 0; i < names.items.size(); i++)
        if (key(names.items[i], "DeviceID") == wwn)
            path = names.items[i];
    ASSERT_EQ(wwn, key(path, "DeviceID"));

    CIMInstance inst = get(path);
    EXPECT_EQ("ro-vol", prop(inst, "ElementName"));
    EXPECT_EQ("1", prop(inst, "Access"));  // readable only
    EXPECT_EQ(std::to_string(2048ull * 2048),
              prop(inst, "NumberOfBlocks"));  // 2 GiB of 512-byte blocks

    // The element name is no DeviceID; another system name is another object.
    auto notFound = [&](std::map<std::string, std::string> changed) {
        Array<CIMKeyBinding> kb = path.getKeyBindings();
        for (Uint32 i = 0; i < kb.size(); i++) {
            std::string name = text(kb[i].getName().getString());
            if (changed.count(name))
                kb[i] =
                    CIMKeyBinding(kb[i].getName(), changed[name].c_str(), CIMKeyBinding::STRING);
        }
        CIMObjectPath p(path.getHost(), ns(), path.getClassName(), kb);
        return cimErrorOf([&] { get(p); }).getCode() == CIM_ERR_NOT_FOUND;
    };
    EXPECT_TRUE(notFound({{"DeviceID", "ro-vol"}}));
    EXPECT_TRUE(notFound({{"DeviceID", "60002AC0000000000000000000FFFFFF"}}))
        << "a WWN the array does not have";
    EXPECT_TRUE(notFound({{"SystemName", "OTHER"}}));
}

TEST_F(StorageVolumeProviderTest, ArrayFailures)
{
    zarsim_fail_next("api_getVVs_chunk", 1, 1, "disk gone");
    CIMException e = cimErrorOf([&] { all(as("p1browse")); });
    EXPECT_EQ(CIM_ERR_FAILED, e.getCode());
    EXPECT_NE(std::string::npos,
              text(e.getMessage()).find("ZAR_StorageVolumeProvider::enumerateInstances"));
    // The listing call gives only its code: the message has the code's text.
    EXPECT_NE(std::string::npos, text(e.getMessage()).find(api_errorCodeText(1)));
}

}  // namespace
