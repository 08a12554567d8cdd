// Tests of String, CString and Char16.

#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

#include <cstring>
#include <sstream>

PEGASUS_USING_PEGASUS;
using zartest::str;

namespace {

TEST(StringTest, ConstructorsDecodeUtf8AndHonourLengths)
{
    String ascii("abc");
    EXPECT_EQ(3u, ascii.size());

    String e("\xC3\xA9");  // U+00E9, one unit
    ASSERT_EQ(1u, e.size());
    EXPECT_EQ(0xE9, Uint16(e[0]));

    String euro("\xE2\x82\xAC");  // U+20AC, one unit
    ASSERT_EQ(1u, euro.size());
    EXPECT_EQ(0x20AC, Uint16(euro[0]));

    String clef("\xF0\x9D\x84\x9E");  // U+1D11E, a surrogate pair
    ASSERT_EQ(2u, clef.size());
    EXPECT_EQ(0xD834, Uint16(clef[0]));
    EXPECT_EQ(0xDD1E, Uint16(clef[1]));

    // Round trip back to the same bytes.
    EXPECT_EQ("a\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9Ez",
              str(String("a\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9Ez")));
    EXPECT_EQ(0, Uint16(clef[2]));  // index == size() gives the terminator

    EXPECT_EQ(String("Hel"), String(String("Hello"), 3));
    EXPECT_THROW(String(String("Hi"), 3), IndexOutOfBoundsException);
    EXPECT_EQ(String("ab"), String("abcdef", 2));
    Char16 units[] = {'x', 'y', 0, 'z'};
    EXPECT_EQ(String("xy"), String(units));
    String withNul(units, 4);
    EXPECT_EQ(4u, withNul.size());
    EXPECT_EQ(Char16('z'), withNul[3]);
}

// The message of the exception that building a String from bytes throws.
std::string utf8Error(const char* bytes)
{
    try {
        String s(bytes);
    } catch (const Exception& e) {
        return str(e.getMessage());
    }
    return "accepted";
}

TEST(StringTest, InvalidUtf8ThrowsWithTheOffendingBytes)
{
    EXPECT_EQ("The byte sequence starting at index 0 is not valid UTF-8 encoding:  0xFF 0xFE",
              utf8Error("\xFF\xFE"));
    // A truncated two-byte sequence.
    EXPECT_EQ("The byte sequence starting at index 2 is not valid UTF-8 encoding:  0xC3",
              utf8Error("ab\xC3"));
    EXPECT_THROW(String("\xC0\xAF"), Exception);          // overlong '/'
    EXPECT_THROW(String("\xED\xA0\x80"), Exception);      // encoded surrogate
    EXPECT_THROW(String("\xF4\x90\x80\x80"), Exception);  // above U+10FFFF
    EXPECT_THROW(String("\xE9t\xE9"), Exception);         // Latin-1 text
    EXPECT_THROW(String((const char*)0), NullPointer);
    EXPECT_THROW(String((const Char16*)0), NullPointer);
}

TEST(StringTest, CopiesClearAndAssign)
{
    String a("shared");
    String b(a);
    String c;
    c = a;
    b[0] = 'S';
    c.append(Char16('!'));
    EXPECT_EQ(String("shared"), a);
    EXPECT_EQ(String("Shared"), b);
    EXPECT_EQ(String("shared!"), c);
    a.toUpper();
    EXPECT_EQ(String("Shared"), b);
    EXPECT_EQ(String("SHARED"), a);

    String s("abc");
    String keep(s);
    s.clear();
    EXPECT_EQ(0u, s.size());
    EXPECT_EQ(String("abc"), keep);
    s.assign("xyz", 2);
    EXPECT_EQ(String("xy"), s);
    s = "\xC3\xA9t\xC3\xA9";
    EXPECT_EQ(3u, s.size());
    s.reserveCapacity(100);
    EXPECT_EQ(3u, s.size());
}

TEST(StringTest, IndexChecksBounds)
{
    String s("abc");
    EXPECT_EQ(Char16('c'), s[2]);
    EXPECT_EQ(Char16(0), s[3]);
    EXPECT_THROW(s[4], IndexOutOfBoundsException);
    const String& cs = s;
    EXPECT_THROW(cs[4], IndexOutOfBoundsException);
    String empty;
    EXPECT_EQ(Char16(0), empty[0]);
    EXPECT_THROW(empty[1], IndexOutOfBoundsException);
}

TEST(StringTest, FindAndReverseFind)
{
    String s("Hello World");
    EXPECT_EQ(4u, s.find('o'));
    EXPECT_EQ(7u, s.find(5, 'o'));
    EXPECT_EQ(6u, s.find("World"));
    EXPECT_EQ(6u, s.find(String("World")));
    EXPECT_EQ(PEG_NOT_FOUND, s.find(String("xyz")));
    EXPECT_EQ(PEG_NOT_FOUND, s.find(String("World!")));
    EXPECT_EQ(0u, s.find(String()));
    EXPECT_EQ(7u, s.reverseFind('o'));
    EXPECT_EQ(PEG_NOT_FOUND, s.reverseFind('z'));
    EXPECT_EQ(PEG_NOT_FOUND, s.find(s.size(), 'o'));
    EXPECT_THROW(s.find(s.size() + 1, 'o'), IndexOutOfBoundsException);
    EXPECT_EQ(PEG_NOT_FOUND, s.find(8, 'o'));
    EXPECT_EQ(PEG_NOT_FOUND, String().find('a'));
}

TEST(StringTest, SubStringIsPermissive)
{
    String s("Hello World");
    EXPECT_EQ(String("World"), s.subString(6));
    EXPECT_EQ(String("World"), s.subString(6, 100));
    EXPECT_EQ(String("Wo"), s.subString(6, 2));
    EXPECT_EQ(String(), s.subString(100));
    EXPECT_EQ(String(), s.subString(11));
    EXPECT_EQ(String(), s.subString(3, 0));
    EXPECT_EQ(s, s.subString(0));
}

TEST(StringTest, RemoveThrowsPastTheEnd)
{
    String s("abcdef");
    s.remove(4);
    EXPECT_EQ(String("abcd"), s);
    s.remove(1, 2);
    EXPECT_EQ(String("ad"), s);
    s.remove(2);  // index == size, nothing to remove
    EXPECT_EQ(String("ad"), s);
    EXPECT_THROW(s.remove(1, 2), IndexOutOfBoundsException);
    EXPECT_THROW(s.remove(3), IndexOutOfBoundsException);
    EXPECT_THROW(s.remove(3, 0), IndexOutOfBoundsException);
    EXPECT_EQ(String("ad"), s);
    s.remove(0, 2);
    EXPECT_EQ(0u, s.size());
    EXPECT_EQ(0, Uint16(s.getChar16Data()[0]));
}

TEST(StringTest, ComparisonsByCodeUnitCaseFoldingAsciiOnly)
{
    String s("Ab\xC3\xA9\xC3\x89Z");  // "AbéÉZ"
    String lower(s);
    lower.toLower();
    EXPECT_EQ("ab\xC3\xA9\xC3\x89z", str(lower));
    String upper(s);
    upper.toUpper();
    EXPECT_EQ("AB\xC3\xA9\xC3\x89Z", str(upper));
    EXPECT_TRUE(String::equalNoCase("ROOT/zar", "root/ZAR"));
    EXPECT_FALSE(String::equalNoCase(String("\xC3\xA9"), String("\xC3\x89")));
    EXPECT_FALSE(String::equalNoCase("abc", "abcd"));
    EXPECT_EQ(0, String::compareNoCase("HELLO", "hello"));
    EXPECT_LT(String::compareNoCase("apple", "BANANA"), 0);
    EXPECT_GT(String::compare("apple", "BANANA"), 0);  // 'a' > 'B' by code unit

    EXPECT_LT(String::compare("abc", "abd"), 0);
    EXPECT_GT(String::compare("abcd", "abc"), 0);
    EXPECT_LT(String::compare("abc", "abcd"), 0);
    EXPECT_EQ(0, String::compare("abcX", "abcY", 3));
    EXPECT_NE(0, String::compare("abcX", "abcY", 4));
    EXPECT_TRUE(String::equal("x", String("x")));
    EXPECT_FALSE(String::equal(String("x"), String("X")));
    EXPECT_TRUE(String("b") > String("a"));
    EXPECT_TRUE(String("a") <= "a");
    EXPECT_TRUE("a" < String("b"));
    EXPECT_TRUE(String("\xC3\xA9") == "\xC3\xA9");
    EXPECT_FALSE(String("ab") == "abc");
    EXPECT_FALSE(String("abc") == "ab");
    EXPECT_TRUE("abc" != String("abd"));
}

TEST(StringTest, AppendConcatenateAndPrintf)
{
    String s;
    s.append(Char16('a'));
    s.append('b');
    s.append("cd");
    s.append("efgh", 2);
    s.append(String("\xC3\xA9"));
    EXPECT_EQ("abcdef\xC3\xA9", str(s));
    String t = "x" + String("y") + "z";
    EXPECT_EQ(String("xyz"), t);
    EXPECT_EQ(String("ab"), String(String("a"), String("b")));
    // Appending a string to itself, and a slice of its own buffer.
    String none;
    none.append(none);
    none.append(String());
    EXPECT_EQ(0u, none.size());
    String self("ab");
    self.append(self);
    EXPECT_EQ(String("abab"), self);
    self.append(self.getChar16Data() + 1, 2);
    EXPECT_EQ(String("ababba"), self);
    // Many appends keep everything.
    String big;
    for (int i = 0; i < 10000; i++)
        big.append(Char16('0' + i % 10));
    EXPECT_EQ(10000u, big.size());
    EXPECT_EQ(Char16('9'), big[9999]);

    String printed("n=");
    printed.appendPrintf("%d,%s,%" PEGASUS_64BIT_CONVERSION_WIDTH "u", 42, "x", Uint64(1) << 40);
    EXPECT_EQ(String("n=42,x,1099511627776"), printed);
    String longText;
    longText.appendPrintf("%0500d", 7);
    EXPECT_EQ(500u, longText.size());
    EXPECT_EQ(Char16('7'), longText[499]);
}

TEST(StringTest, CStringOwnsACopy)
{
    CString empty;
    EXPECT_EQ(nullptr, (const char*)empty);
    String s("value");
    CString c = s.getCString();
    s.append("!");
    EXPECT_STREQ("value", (const char*)c);
    CString d(c);
    CString e;
    e = d;
    EXPECT_STREQ("value", (const char*)e);
    EXPECT_NE((const char*)c, (const char*)d);
}

TEST(StringTest, StreamWritesLatin1BytesAndEscapesTheRest)
{
    std::ostringstream os;
    os << String("a\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(std::string("a\xE9\\x20AC"), os.str());
}

TEST(Char16Test, ComparesWithChars)
{
    EXPECT_TRUE(Char16('a') == 'a');
    EXPECT_TRUE('b' != Char16('a'));
    EXPECT_TRUE(Char16(0xE9) == '\xE9');  // a char compares as its unsigned byte
}

}  // namespace
