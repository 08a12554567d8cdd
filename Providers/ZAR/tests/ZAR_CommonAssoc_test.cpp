// Tests of the association path and instance builders.
#include <ZAR_Common.h>

#include "CommonTestSupport.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class AssocTest : public FreshArray {
protected:
    static CIMClass assocClass(bool withDependent = true)
    {
        CIMClass c("ZAR_Assoc");
        c.addProperty(
            CIMProperty("Antecedent", CIMValue(CIMTYPE_REFERENCE, false), 0, "CIM_ManagedElement"));
        if (withDependent)
            c.addProperty(CIMProperty("Dependent", CIMValue(CIMTYPE_REFERENCE, false), 0,
                                      "CIM_ManagedElement"));
        return c;
    }
    CIMObjectPath sys_{"//farhost/root/zar:ZAR_StorageSystem.Name=\"S1\""};
    CIMObjectPath vol_{"//other/root/zar:ZAR_StorageVolume.DeviceID=\"v1\""};
};

CIMObjectPath keyPath(const CIMObjectPath& p, const char* key)
{
    for (Uint32 i = 0; i < p.getKeyBindings().size(); i++)
        if (p.getKeyBindings()[i].getName().equal(key)) {
            EXPECT_EQ(CIMKeyBinding::REFERENCE, p.getKeyBindings()[i].getType());
            return CIMObjectPath(p.getKeyBindings()[i].getValue());
        }
    ADD_FAILURE() << "no key " << key;
    return CIMObjectPath();
}

TEST_F(AssocTest, EndsTakeTheChosenHosts)
{
    CIMObjectPath p = ZAR_Common::buildAssocPath("ZAR_Assoc", "Antecedent", "Dependent", sys_, vol_,
                                                 "h1", "", "ah", "root/zar");
    EXPECT_EQ("ah", text(p.getHost()));
    EXPECT_EQ("root/zar", text(p.getNameSpace().getString()));
    ASSERT_EQ(2u, p.getKeyBindings().size());
    EXPECT_EQ("h1", text(keyPath(p, "Antecedent").getHost()));
    EXPECT_EQ("", text(keyPath(p, "Dependent").getHost()));
    EXPECT_EQ("farhost", text(sys_.getHost())) << "the caller's path is unchanged";

    CIMObjectPath one =
        ZAR_Common::buildAssocPath("ZAR_Assoc", "A", "B", sys_, vol_, "h", "root/zar");
    EXPECT_EQ("h", text(keyPath(one, "A").getHost()));
    EXPECT_EQ("h", text(keyPath(one, "B").getHost()));

    CIMObjectPath three =
        ZAR_Common::buildAssocPath("ZAR_Assoc", "A", "B", "C", sys_, vol_, sys_, "h3", "root/zar");
    ASSERT_EQ(3u, three.getKeyBindings().size());
    EXPECT_EQ("h3", text(keyPath(three, "C").getHost()));
}

TEST_F(AssocTest, InstanceHasEndPropertiesAndThePath)
{
    CIMInstance i = ZAR_Common::buildAssocInstance("ZAR_Assoc", "Antecedent", "Dependent", sys_,
                                                   vol_, assocClass(), "h", "root/zar");
    CIMObjectPath ante;
    ASSERT_EQ(0, ZAR_Common::getProperty(i, "Antecedent", ante));
    EXPECT_EQ("h", text(ante.getHost()));
    EXPECT_TRUE(i.getPath() == ZAR_Common::buildAssocPath("ZAR_Assoc", "Antecedent", "Dependent",
                                                          sys_, vol_, "h", "root/zar"));

    // A class without a property for a role still yields the instance with
    // its full path.
    CIMInstance partial = ZAR_Common::buildAssocInstance(
        "ZAR_Assoc", "Antecedent", "Dependent", sys_, vol_, assocClass(false), "h", "root/zar");
    EXPECT_EQ(PEG_NOT_FOUND, partial.findProperty("Dependent"));
    EXPECT_EQ(2u, partial.getPath().getKeyBindings().size());
}

TEST_F(AssocTest, DependencyBuildersKeepEndHostsAndUseRootZar)
{
    CIMObjectPath elsewhere("//x/root/other:ZAR_StorageVolume.DeviceID=\"v2\"");
    CIMObjectPath p = ZAR_Common::buildDepAssocPath("h", "ZAR_Assoc", sys_, elsewhere);
    EXPECT_EQ("root/zar", text(p.getNameSpace().getString()));
    EXPECT_EQ("farhost", text(keyPath(p, "Antecedent").getHost()));
    EXPECT_EQ("root/other", text(keyPath(p, "Dependent").getNameSpace().getString()));
    CIMInstance i =
        ZAR_Common::buildDepAssocInstance("h", "ZAR_Assoc", sys_, elsewhere, assocClass());
    CIMObjectPath dep;
    ASSERT_EQ(0, ZAR_Common::getProperty(i, "Dependent", dep));
    EXPECT_TRUE(dep == elsewhere);
    EXPECT_TRUE(i.getPath() == p);
}

}  // namespace
