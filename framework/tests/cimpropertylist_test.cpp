// Tests of CIMPropertyList: NULL versus empty, lookups, value semantics.

#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

PEGASUS_USING_PEGASUS;

namespace {

Array<CIMName> Names(std::initializer_list<const char*> names)
{
    Array<CIMName> a;
    for (const char* n : names)
        a.append(CIMName(n));
    return a;
}

TEST(CIMPropertyListTest, NullAndEmptyDiffer)
{
    CIMPropertyList all;
    CIMPropertyList none((Array<CIMName>()));
    EXPECT_TRUE(all.isNull());
    EXPECT_FALSE(none.isNull());
    EXPECT_EQ(all.size(), 0u);
    EXPECT_EQ(none.size(), 0u);
    EXPECT_TRUE(all.useThisProperty("Anything"));
    EXPECT_FALSE(none.useThisProperty("Anything"));
    EXPECT_FALSE(all.contains("Anything"));
    EXPECT_EQ(all.toString(), "NULL");
    EXPECT_EQ(none.toString(), "EMPTY");

    none.clear();
    EXPECT_TRUE(none.isNull());
    all.set(Array<CIMName>());
    EXPECT_FALSE(all.isNull());
}

TEST(CIMPropertyListTest, LookupIsCaseInsensitiveAndCopiesAreIndependent)
{
    CIMPropertyList list(Names({"Name", "DeviceID"}));
    EXPECT_TRUE(list.contains("deviceid"));
    EXPECT_TRUE(list.useThisProperty("NAME"));
    EXPECT_FALSE(list.useThisProperty("Caption"));
    EXPECT_EQ(list[1], CIMName("DeviceID"));
    EXPECT_THROW(list[2], IndexOutOfBoundsException);
    EXPECT_EQ(list.toString(), "Name, DeviceID");
    EXPECT_EQ(list.getPropertyNameArray().size(), 2u);

    CIMPropertyList other(Names({"NAME"}));
    EXPECT_EQ(list.getCIMNameTag(0), other.getCIMNameTag(0));
    EXPECT_NE(list.getCIMNameTag(0), list.getCIMNameTag(1));

    CIMPropertyList a(Names({"Name"}));
    CIMPropertyList b = a;
    b.set(Names({"Caption", "Status"}));
    EXPECT_EQ(a.size(), 1u);
    EXPECT_EQ(b.size(), 2u);
    a = b;
    b.clear();
    EXPECT_EQ(a.size(), 2u);
    EXPECT_FALSE(a.isNull());
}

TEST(CIMPropertyListTest, NullNamesAreRefused)
{
    Array<CIMName> names = Names({"Name"});
    names.append(CIMName());
    EXPECT_THROW(CIMPropertyList list(names), UninitializedObjectException);
    CIMPropertyList list;
    EXPECT_THROW(list.set(names), UninitializedObjectException);
    EXPECT_TRUE(list.isNull());
}

TEST(CIMPropertyListTest, AppendMakesTheListNonNull)
{
    CIMPropertyList list;
    Array<String> more;
    more.append("ElementName");
    list.append(more);
    EXPECT_FALSE(list.isNull());
    EXPECT_TRUE(list.contains("elementname"));
    Array<String> bad;
    bad.append("not a name");
    EXPECT_THROW(list.append(bad), InvalidNameException);
    EXPECT_EQ(list.size(), 1u);
}

}  // namespace
