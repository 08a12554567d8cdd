// Tests of volume deletion by path: names looked up by WWN in queries of
// bounded length, all-or-nothing deletion, busy volumes tried again.
#include <string.h>

#include <string>
#include <vector>

#include <ZAR_Common.h>

#include "CommonTestSupport.h"

using namespace Pegasus;
using namespace zartest;

namespace {

std::vector<unsigned> waits;
const char* freeAfter = nullptr;  // volume to mark not busy on the third wait

void countWait(unsigned seconds)
{
    waits.push_back(seconds);
    if (freeAfter && waits.size() == 3)
        zarsim_set_volume_busy(freeAfter, 0);
}

class VolumesTest : public FreshArray {
protected:
    void SetUp() override
    {
        FreshArray::SetUp();
        zarsim_add_node(0);
        waits.clear();
        freeAfter = nullptr;
        previous_ = ZAR_Common::setRetryWait(&countWait);
    }
    void TearDown() override
    {
        ZAR_Common::setRetryWait(previous_);
        FreshArray::TearDown();
    }
    // The path of a volume as the array module names it: its WWN is the
    // DeviceID key.
    static CIMObjectPath volumePath(const std::string& wwn)
    {
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding("DeviceID", wwn.c_str(), CIMKeyBinding::STRING));
        return CIMObjectPath("", "root/zar", "ZAR_StorageVolume", keys);
    }
    static bool exists(const char* name)
    {
        api_vv_t* list = nullptr;
        zar_u32 count = 0;
        EXPECT_EQ(0, cim_sem_wait());
        api_getVVs_direct(nullptr, name, &count, &list, 0);
        cim_sem_post();
        api_freeVVs(list);
        return count == 1;
    }
    ZAR_Common::RetryWait previous_ = nullptr;
};

TEST_F(VolumesTest, DeletesTheVolumesNamedByTheirPaths)
{
    Array<CIMObjectPath> paths;
    paths.append(volumePath(ArrayBuilder::volume("v1")));
    paths.append(volumePath(ArrayBuilder::volume("v2")));
    ArrayBuilder::volume("v3");
    EXPECT_EQ(0, ZAR_Common::removeVVs(nullptr, paths, 0));
    EXPECT_FALSE(exists("v1"));
    EXPECT_FALSE(exists("v2"));
    EXPECT_TRUE(exists("v3"));
    EXPECT_TRUE(waits.empty());
}

TEST_F(VolumesTest, AVolumeTheArrayDoesNotKnowIsReported)
{
    Array<CIMObjectPath> paths;
    paths.append(volumePath(ArrayBuilder::volume("v1")));
    paths.append(volumePath("00000000000000000000000000000001"));
    EXPECT_EQ(32768, ZAR_Common::removeVVs(nullptr, paths, 0));
    EXPECT_FALSE(exists("v1"));
}

TEST_F(VolumesTest, BusyVolumesAreTriedElevenTimesTwoSecondsApart)
{
    Array<CIMObjectPath> paths;
    paths.append(volumePath(ArrayBuilder::volume("v1")));
    paths.append(volumePath(ArrayBuilder::volume("v2")));
    ASSERT_EQ(0, zarsim_set_volume_busy("v2", 1));
    LogCapture log;
    EXPECT_EQ(4, ZAR_Common::removeVVs(nullptr, paths, 0));
    EXPECT_EQ(std::vector<unsigned>(10, 2), waits);
    EXPECT_TRUE(log.has("Volumes are busy, cannot be removed\n"));
    // All or nothing: the free one is still there.
    EXPECT_TRUE(exists("v1"));
    EXPECT_TRUE(exists("v2"));
}

TEST_F(VolumesTest, AVolumeThatBecomesFreeIsDeletedOnTheNextAttempt)
{
    Array<CIMObjectPath> paths;
    paths.append(volumePath(ArrayBuilder::volume("v1")));
    ASSERT_EQ(0, zarsim_set_volume_busy("v1", 1));
    freeAfter = "v1";
    EXPECT_EQ(0, ZAR_Common::removeVVs(nullptr, paths, 0));
    EXPECT_EQ(3u, waits.size());
    EXPECT_FALSE(exists("v1"));
}

TEST_F(VolumesTest, OtherFailuresAreNotTriedAgain)
{
    Array<CIMObjectPath> paths;
    paths.append(volumePath(ArrayBuilder::volume("v1")));
    LogCapture log;
    zarsim_fail_next("api_removeVVs", 1, 1, "Internal error of the array");
    EXPECT_EQ(4, ZAR_Common::removeVVs(nullptr, paths, 0));
    EXPECT_TRUE(log.has("Volume deletion failed\n"));
    zarsim_fail_next("api_removeVVs", 1, 1119, "Volume not found");
    EXPECT_EQ(32768, ZAR_Common::removeVVs(nullptr, paths, 0));
    zarsim_fail_next("api_getVVs_chunk", 1, 1, "Internal error of the array");
    EXPECT_EQ(4, ZAR_Common::removeVVs(nullptr, paths, 0));
    EXPECT_TRUE(log.has("Failed to query volume\n"));
    EXPECT_TRUE(log.has("Cannot find the volume\n"));
    zarsim_sem_timeout_next(1);
    EXPECT_EQ(4, ZAR_Common::removeVVs(nullptr, paths, 0));
    EXPECT_TRUE(waits.empty());
    EXPECT_TRUE(exists("v1"));
}

TEST_F(VolumesTest, LongWWNListsAreQueriedInPiecesCutAtSeparators)
{
    Array<CIMObjectPath> paths;
    std::vector<std::string> wwns;
    for (int i = 0; i < 20; i++) {
        std::string name = "vol" + std::to_string(i);
        wwns.push_back(ArrayBuilder::volume(name.c_str()));
        paths.append(volumePath(wwns.back()));
    }
    LogCapture log;
    Array<String> names;
    EXPECT_EQ(0, ZAR_Common::fillInVVNames(paths, names));
    EXPECT_EQ(20u, names.size());

    const std::string prefix = "ZAR_Common::fillInVVNames: volumes ";
    std::string joined;
    int pieces = 0;
    for (const std::string& line : log.lines()) {
        if (line.compare(0, prefix.size(), prefix) != 0)
            continue;
        std::string piece = line.substr(prefix.size(), line.size() - prefix.size() - 1);
        EXPECT_LE(piece.size(), 255u);
        EXPECT_EQ(0u, piece.size() % 33 == 32 ? 0u : 1u) << piece;  // whole WWNs only
        joined += (pieces ? "|" : "") + piece;
        pieces++;
    }
    EXPECT_EQ(3, pieces);
    std::string all;
    for (size_t i = 0; i < wwns.size(); i++)
        all += (i ? "|" : "") + wwns[i];
    EXPECT_EQ(all, joined);

    api_name_t* table = nullptr;
    unsigned count = 0;
    EXPECT_EQ(0, ZAR_Common::fillInVVNames(paths, &table, &count));
    ASSERT_EQ(20u, count);
    EXPECT_STREQ("vol0", table[0].name);
    EXPECT_STREQ("vol19", table[19].name);
    free(table);
}

TEST_F(VolumesTest, NameLookupRefusals)
{
    Array<CIMObjectPath> none;
    Array<String> names;
    LogCapture log;
    EXPECT_EQ(5, ZAR_Common::fillInVVNames(none, names));
    EXPECT_TRUE(log.has("Empty volume list\n"));
    EXPECT_EQ(5, ZAR_Common::fillInVVNames(none, nullptr, nullptr));
    EXPECT_TRUE(log.has("Invalid parameter memberCount or vvNames\n"));

    Array<CIMObjectPath> unknown;
    unknown.append(volumePath("00000000000000000000000000000001"));
    EXPECT_EQ(4, ZAR_Common::fillInVVNames(unknown, names));
    api_name_t* table = nullptr;
    unsigned count = 7;
    EXPECT_EQ(4, ZAR_Common::fillInVVNames(unknown, &table, &count));
    EXPECT_EQ(nullptr, table);
    EXPECT_EQ(0u, count);
}

}  // namespace
