// Repository class operations: the flags of GetClass and EnumerateClasses,
// and the error codes.
#include <gtest/gtest.h>

#include <Pegasus/Common/Exception.h>

#include "CoreTestUtil.h"
#include "MofParser.h"
#include "SchemaCompiler.h"

using namespace zarserver;
using namespace Pegasus;
using coretest::failure;

namespace {

class ClassRepositoryTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::vector<mof::Declaration> decls;
        MofParser().parseText("r.mof", R"(
            Qualifier Description : string = null, Scope(any), Flavor(Translatable);
            Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);
            Qualifier In : boolean = true, Scope(parameter), Flavor(DisableOverride, ToSubclass);
            [Description("root")] class Root { [Key] string Id; string A; uint32 M([IN] string P); };
            class Child : Root { string B; };
            class GrandChild : Child { string C; };
            class Child2 : Root { };
            class Other { };)",
                              decls);
        SchemaCompiler(repo).compile(decls, ns);
    }
    static std::vector<std::string> names(const Array<CIMName>& a)
    {
        std::vector<std::string> out;
        for (Uint32 i = 0; i < a.size(); ++i)
            out.push_back((const char*)a[i].getString().getCString());
        return out;
    }
    CIMClass grandChild(bool localOnly, bool qualifiers, bool origin,
                        const CIMPropertyList& pl = CIMPropertyList())
    {
        return repo.getClass(ns, CIMName("GrandChild"), localOnly, qualifiers, origin, pl);
    }
    static std::vector<std::string> props(const CIMClass& c)
    {
        std::vector<std::string> out;
        for (Uint32 i = 0; i < c.getPropertyCount(); ++i)
            out.push_back((const char*)c.getProperty(i).getName().getString().getCString());
        return out;
    }
    CIMNamespaceName ns{"root/r"};
    ClassRepository repo;
};

}  // namespace

TEST_F(ClassRepositoryTest, GetClassFlags)
{
    CIMClass full = repo.getClass(ns, CIMName("grandchild"), false, true, true, CIMPropertyList());
    EXPECT_EQ(String("GrandChild"), full.getClassName().getString());
    EXPECT_EQ((std::vector<std::string>{"Id", "A", "B", "C"}), props(full));
    EXPECT_EQ(String("Root"), full.getProperty(0).getClassOrigin().getString());
    EXPECT_EQ(1u, full.getMethodCount());
    EXPECT_NE(PEG_NOT_FOUND, full.getProperty(0).findQualifier(CIMName("Key")));
    EXPECT_NE(PEG_NOT_FOUND, full.findQualifier(CIMName("Description")));

    CIMClass local = grandChild(true, true, true);
    EXPECT_EQ((std::vector<std::string>{"C"}), props(local));
    EXPECT_EQ(0u, local.getMethodCount());
    EXPECT_EQ(PEG_NOT_FOUND, local.findQualifier(CIMName("Description")));

    CIMClass bare = grandChild(false, false, false);
    EXPECT_EQ(0u, bare.getQualifierCount());
    EXPECT_EQ(0u, bare.getProperty(0).getQualifierCount());
    EXPECT_EQ(0u, bare.getMethod(0).getParameter(0).getQualifierCount());
    EXPECT_TRUE(bare.getProperty(0).getClassOrigin().isNull());
    EXPECT_TRUE(bare.getMethod(0).getClassOrigin().isNull());

    Array<CIMName> only;
    only.append(CIMName("c"));
    only.append(CIMName("Nonexistent"));
    EXPECT_EQ((std::vector<std::string>{"C"}),
              props(grandChild(false, true, true, CIMPropertyList(only))));
    EXPECT_TRUE(props(grandChild(false, true, true, CIMPropertyList(Array<CIMName>()))).empty());

    // The stored class is never changed by the filters.
    EXPECT_EQ(4u, grandChild(false, true, true).getPropertyCount());
}

TEST_F(ClassRepositoryTest, EnumerationsFollowTheHierarchy)
{
    EXPECT_EQ((std::vector<std::string>{"Root", "Other"}),
              names(repo.enumerateClassNames(ns, CIMName(), false)));
    EXPECT_EQ((std::vector<std::string>{"Root", "Child", "GrandChild", "Child2", "Other"}),
              names(repo.enumerateClassNames(ns, CIMName(), true)));
    EXPECT_EQ((std::vector<std::string>{"Child", "Child2"}),
              names(repo.enumerateClassNames(ns, CIMName("Root"), false)));
    EXPECT_EQ((std::vector<std::string>{"Child", "GrandChild", "Child2"}),
              names(repo.enumerateClassNames(ns, CIMName("root"), true)));
    EXPECT_TRUE(names(repo.enumerateClassNames(ns, CIMName("GrandChild"), true)).empty());

    Array<CIMClass> classes = repo.enumerateClasses(ns, CIMName("Root"), true, true, false, false);
    ASSERT_EQ(3u, classes.size());
    EXPECT_EQ((std::vector<std::string>{"B"}), props(classes[0]));
    EXPECT_EQ(0u, classes[0].getQualifierCount());

    EXPECT_TRUE(repo.isA(ns, CIMName("GrandChild"), CIMName("ROOT")));
    EXPECT_FALSE(repo.isA(ns, CIMName("Root"), CIMName("Child")));
    EXPECT_FALSE(repo.isA(ns, CIMName("Child2"), CIMName("Child")));
}

TEST_F(ClassRepositoryTest, ErrorsCarryTheirCodes)
{
    const CIMNamespaceName none("root/none");
    auto getClass = [&](const CIMNamespaceName& n, const char* c) {
        return failure([&] { repo.getClass(n, CIMName(c), false, true, true, CIMPropertyList()); });
    };
    EXPECT_EQ(CIM_ERR_INVALID_NAMESPACE, getClass(none, "Root").code);
    EXPECT_EQ(CIM_ERR_INVALID_CLASS, getClass(ns, "Nope").code);
    EXPECT_EQ(CIM_ERR_INVALID_CLASS,
              failure([&] { repo.enumerateClassNames(ns, CIMName("Nope"), true); }).code);
    EXPECT_EQ(
        CIM_ERR_INVALID_NAMESPACE,
        failure([&] { repo.enumerateClasses(none, CIMName(), true, false, true, true); }).code);
    EXPECT_EQ("NoSuchClass",
              failure([&] { repo.requireClass(ns, CIMName("NoSuchClass")); }).message);
}
