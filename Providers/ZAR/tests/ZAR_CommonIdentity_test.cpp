// Tests of the system identity queries, answered by the array module
// through the in-process server core.
#include <ZAR_Common.h>

#include "ModuleFixture.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class IdentityTest : public ModuleFixture {
protected:
    CIMOMHandle handle_;
};

TEST_F(IdentityTest, CacheObjectPathNamesTheSystemsCache)
{
    CIMObjectPath p = ZAR_Common::buildInternalCacheObjectPath("localhost", "localhost");
    EXPECT_EQ(CIMObjectPath("//localhost/root/PG_Internal:ZAR_InternalCache."
                            "InstanceID=\"localhost-InternalCache\""),
              p);
}

TEST_F(IdentityTest, QueriesAnswerFromTheArray)
{
    api_sysinfo_t info{};
    ASSERT_EQ(0, cim_sem_wait());
    ASSERT_EQ(0, api_getSystemInfo(&info));
    cim_sem_post();
    EXPECT_EQ(info.name, text(ZAR_Common::getSystemName(handle_)));
    EXPECT_EQ(info.name, text(ZAR_Common::getSystemName()));
    EXPECT_EQ(info.hostName, text(ZAR_Common::getSystemHostName(handle_)));
    EXPECT_EQ(info.systemID, ZAR_Common::getSystemID());
    EXPECT_EQ(info.systemType, ZAR_Common::getSystemType());
    EXPECT_EQ(info.quadPort != 0, ZAR_Common::isQuadPortSystem(handle_));
    // An all-digit host name is given a leading "_".
    ASSERT_EQ(0, zarsim_set_config("host-name", "20481"));
    EXPECT_EQ("_20481", text(ZAR_Common::getSystemHostName(handle_)));
}

TEST_F(IdentityTest, SystemPathCarriesTheHostNameAndRootZar)
{
    CIMObjectPath p = ZAR_Common::getSystemObjectPath(handle_);
    EXPECT_EQ("ZAR_StorageSystem", text(p.getClassName().getString()));
    EXPECT_EQ("zar-demo", text(p.getHost()));
    EXPECT_EQ("root/zar", text(p.getNameSpace().getString()));
    EXPECT_EQ("ZAR-DEMO", text(ZAR_Common::getStringProperty(p, "Name")));
}

TEST_F(IdentityTest, RefusedLocalConnectionFallsBackThroughTheHandleWhereAllowed)
{
    // The local connection and the handle both run as the server's own user.
    // When the array refuses the local connection's request, the same request
    // through the handle still gets through; without a handle, or refused
    // both ways, the call fails.
    zarsim_fail_next("api_zarOpenForCimserver", 1, API_E_ACCESS_DENIED, "Access denied");
    EXPECT_EQ("ZAR-DEMO", text(ZAR_Common::getSystemName(handle_)));
    zarsim_fail_next("api_zarOpenForCimserver", 1, API_E_ACCESS_DENIED, "Access denied");
    EXPECT_THROW(ZAR_Common::getSystemName(), Exception);
    zarsim_fail_next("api_zarOpenForCimserver", 1000, API_E_ACCESS_DENIED, "Access denied");
    EXPECT_THROW(ZAR_Common::getSystemName(handle_), Exception);
    EXPECT_THROW(ZAR_Common::getSystemHostName(handle_), Exception);

    LogCapture log;
    EXPECT_THROW(ZAR_Common::getSystemObjectPath(handle_), Exception)
        << "the host name of the answer cannot be had";
    bool retried = false;
    for (const std::string& l : log.lines())
        if (l.find("ZAR_Common::getSystemObjectPath: ") == 0 &&
            l.find(". Trying via cimom.\n") != std::string::npos)
            retried = true;
    EXPECT_TRUE(retried);
}

TEST_F(IdentityTest, PolicyWordIsTheCacheServices)
{
    Uint32 saved = ZAR_Common::getPolicy();
    ZAR_Common::setPolicy(saved ^ 0x4);
    EXPECT_EQ(saved ^ 0x4, ZAR_Common::getPolicy());
    ZAR_Common::setPolicy(saved);
}

}  // namespace
