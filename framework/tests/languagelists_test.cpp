// Tests of AcceptLanguageList and ContentLanguageList.

#include <Pegasus/Common/AcceptLanguageList.h>
#include <Pegasus/Common/ContentLanguageList.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::str;

namespace {

TEST(AcceptLanguageListTest, OrderEqualityAndCopies)
{
    AcceptLanguageList list;
    list.insert(LanguageTag("fr"), 0.5f);
    list.insert(LanguageTag("en-US"), 1.0f);
    list.insert(LanguageTag("de"), 0.5f);  // after the equal-quality "fr"
    list.insert(LanguageTag("it"), 0.0f);
    ASSERT_EQ(4u, list.size());
    EXPECT_EQ("en-US", str(list.getLanguageTag(0).toString()));
    EXPECT_EQ("fr", str(list.getLanguageTag(1).toString()));
    EXPECT_EQ("de", str(list.getLanguageTag(2).toString()));
    EXPECT_EQ(0.5f, list.getQualityValue(2));
    EXPECT_EQ(3u, list.find(LanguageTag("it")));
    EXPECT_EQ(PEG_NOT_FOUND, list.find(LanguageTag("es")));
    EXPECT_THROW(list.insert(LanguageTag("x"), 1.5f), Exception);
    EXPECT_THROW(list.insert(LanguageTag("x"), -0.1f), Exception);
    EXPECT_THROW(list.getLanguageTag(4), IndexOutOfBoundsException);
    list.remove(0);
    EXPECT_EQ("fr", str(list.getLanguageTag(0).toString()));
    EXPECT_EQ(0.5f, list.getQualityValue(0));

    AcceptLanguageList a;
    a.insert(LanguageTag("en"), 1.0f);
    AcceptLanguageList b(a);
    EXPECT_TRUE(a == b);
    b.insert(LanguageTag("fr"), 0.3f);
    EXPECT_TRUE(a != b);
    EXPECT_EQ(1u, a.size());
    AcceptLanguageList c;
    c.insert(LanguageTag("en"), 0.9f);
    EXPECT_FALSE(a == c);  // same tag, other quality
    c = a;
    EXPECT_TRUE(a == c);
    c.clear();
    EXPECT_EQ(0u, c.size());
}

TEST(ContentLanguageListTest, OrderFindRemoveEquality)
{
    ContentLanguageList list;
    EXPECT_EQ(0u, list.size());
    list.append(LanguageTag("en"));
    list.append(LanguageTag("fr"));
    EXPECT_EQ("fr", str(list.getLanguageTag(1).toString()));
    EXPECT_EQ(1u, list.find(LanguageTag("fr")));
    EXPECT_THROW(list.getLanguageTag(2), IndexOutOfBoundsException);
    ContentLanguageList other;
    other.append(LanguageTag("fr"));
    other.append(LanguageTag("en"));
    EXPECT_TRUE(list != other);  // order matters
    ContentLanguageList copy(list);
    copy.remove(0);
    EXPECT_EQ(2u, list.size());
    EXPECT_EQ(1u, copy.size());
    EXPECT_THROW(copy.remove(1), IndexOutOfBoundsException);
    list.clear();
    EXPECT_TRUE(list == ContentLanguageList());
}

}  // namespace
