// Tests of CIMName, CIMNamespaceName and CIMNameCast.

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMNameCast.h>
#include <Pegasus/Common/ArrayInternal.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::MessageOf;
using zartest::str;

namespace {

TEST(CIMNameTest, LegalAndIllegalNames)
{
    // Non-ASCII letters from U+0080 to U+FFEF are allowed; U+FFF0 is not.
    for (const char* n : {"ZAR_StorageVolume", "_x9", "\xC3\xA9t\xC3\xA9"})
        EXPECT_TRUE(CIMName::legal(n)) << n;
    for (const char* n : {"", "9abc", "a.b", "a-b", "a b", "\xEF\xBF\xB0"})
        EXPECT_FALSE(CIMName::legal(n)) << n;
}

TEST(CIMNameTest, InvalidNamesThrowWithTheName)
{
    EXPECT_EQ("The CIM name is not valid: 9abc",
              str(MessageOf<InvalidNameException>([] { CIMName n("9abc"); })));
    EXPECT_THROW(CIMName(""), InvalidNameException);
    EXPECT_THROW(CIMName{String()}, InvalidNameException);
    CIMName n("Good");
    EXPECT_THROW(n = String("bad name"), InvalidNameException);
    EXPECT_EQ(String("Good"), n.getString());
    EXPECT_THROW(n = "", InvalidNameException);
}

TEST(CIMNameTest, NullAndComparison)
{
    CIMName n;
    EXPECT_TRUE(n.isNull());
    n = "Name";
    EXPECT_FALSE(n.isNull());
    n.clear();
    EXPECT_TRUE(n.isNull());
    EXPECT_TRUE(CIMName() == CIMName());
    EXPECT_FALSE(CIMName() == CIMName("A"));

    // Comparison ignores ASCII case only; literals are not validated.
    CIMName a("ZAR_Foo");
    EXPECT_TRUE(a == CIMName("zar_foo"));
    EXPECT_TRUE(a.equal(CIMName("ZAR_FOO")));
    EXPECT_EQ(String("ZAR_Foo"), a.getString());  // spelling kept
    EXPECT_FALSE(CIMName("\xC3\xA9") == CIMName("\xC3\x89"));
    EXPECT_TRUE(a != CIMName("ZAR_Bar"));

    CIMName lit("Name");
    EXPECT_TRUE(lit == "NAME");
    EXPECT_TRUE("name" == lit);
    EXPECT_FALSE(lit == "");  // no exception for an illegal literal
    EXPECT_TRUE(lit != "9x");
    EXPECT_TRUE(CIMName() == "");
    EXPECT_TRUE(lit.equal("nAmE"));
}

TEST(CIMNamespaceNameTest, LegalFormsAndLeadingSlash)
{
    for (const char* n : {"root", "root/zar", "/root/zar"})
        EXPECT_TRUE(CIMNamespaceName::legal(n)) << n;
    for (const char* n : {"", "/", "root//zar", "root/zar/", "root/9zar", "//root"})
        EXPECT_FALSE(CIMNamespaceName::legal(n)) << n;
    EXPECT_EQ(String("root/zar"), CIMNamespaceName("/root/zar").getString());
    EXPECT_EQ(
        "invalid CIM namespace name: root//zar",
        str(MessageOf<InvalidNamespaceNameException>([] { CIMNamespaceName ns("root//zar"); })));
    EXPECT_THROW(CIMNamespaceName(""), InvalidNamespaceNameException);
}

TEST(CIMNamespaceNameTest, Comparison)
{
    CIMNamespaceName ns("ROOT/Zar");
    EXPECT_TRUE(ns == CIMNamespaceName("root/zar"));
    EXPECT_TRUE(ns == "root/ZAR");
    EXPECT_TRUE(ns == "/root/zar");
    EXPECT_FALSE(ns == "");
    EXPECT_FALSE(ns == CIMNamespaceName());
    EXPECT_TRUE(CIMNamespaceName() == CIMNamespaceName());
    EXPECT_TRUE(ns != CIMNamespaceName("root/zar2"));
    ns.clear();
    EXPECT_TRUE(ns.isNull());
}

TEST(CIMNameCastTest, ReinterpretsWithoutValidation)
{
    String s("Not Legal");
    const CIMName& n = CIMNameCast(s);
    EXPECT_EQ(s, n.getString());
    String ns("root/zar");
    EXPECT_TRUE(CIMNamespaceNameCast(ns) == CIMNamespaceName("ROOT/ZAR"));
    EXPECT_EQ(5u, CIMNameLegalASCII("Abc_1"));
    EXPECT_EQ(0u, CIMNameLegalASCII("1abc"));
    EXPECT_EQ(0u, CIMNameLegalASCII(""));
    EXPECT_EQ(0u, CIMNameLegalASCII("a.b"));
}

TEST(CIMNameTest, ContainsAndSortOfNameArrays)
{
    Array<CIMName> names;
    names.append("Foo");
    names.append("bar");
    names.append("Baz");
    EXPECT_TRUE(Contains(names, CIMName("FOO")));
    EXPECT_FALSE(Contains(names, CIMName("Qux")));
    BubbleSort(names);
    // Sorted by spelling, case-sensitively: upper case first.
    EXPECT_EQ(String("Baz"), names[0].getString());
    EXPECT_EQ(String("Foo"), names[1].getString());
    EXPECT_EQ(String("bar"), names[2].getString());
    Array<String> strings;
    strings.append("Foo");
    EXPECT_FALSE(Contains(strings, String("FOO")));
}

}  // namespace
