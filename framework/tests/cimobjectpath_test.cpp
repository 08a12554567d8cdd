// Tests of CIMKeyBinding and CIMObjectPath: text form, parsing, equality
// and hashing.

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::MessageOf;
using zartest::str;

namespace {

std::string text(const String& path)
{
    return str(CIMObjectPath(path).toString());
}

// The reason text of the MalformedObjectNameException that parsing throws.
std::string parseError(const String& path)
{
    try {
        CIMObjectPath p(path);
    } catch (const MalformedObjectNameException& e) {
        return str(e.getMessage());
    } catch (const Exception& e) {
        return "wrong exception: " + str(e.getMessage());
    }
    return "accepted";
}

TEST(CIMObjectPathTest, ToStringOrdersKeysAndEscapes)
{
    CIMObjectPath p;
    p.set("//myhost/root/zar:ZAR_Foo.Name=\"a\\\"b\\\\c\",Id=5,Flag=true,Sys=\"x\"");
    EXPECT_EQ("//myhost/root/zar:ZAR_Foo.Flag=TRUE,Id=5,Name=\"a\\\"b\\\\c\",Sys=\"x\"",
              str(p.toString()));
    const Array<CIMKeyBinding>& keys = p.getKeyBindings();
    ASSERT_EQ(4u, keys.size());
    EXPECT_EQ("Name", str(keys[2].getName().getString()));
    EXPECT_EQ("a\"b\\c", str(keys[2].getValue()));
    EXPECT_EQ(CIMKeyBinding::BOOLEAN, keys[0].getType());
    EXPECT_EQ(CIMKeyBinding::NUMERIC, keys[1].getType());
}

TEST(CIMObjectPathTest, KeysFromValuesAndTheirText)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Zeta", "z\"q", CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding("alpha", CIMValue(Uint16(7))));
    keys.append(CIMKeyBinding("Beta", CIMValue(true)));
    keys.append(CIMKeyBinding("Ref", CIMValue(CIMObjectPath("root/zar:C.K=\"v\""))));
    CIMObjectPath p("", CIMNamespaceName("root/zar"), CIMName("ZAR_X"), keys);
    EXPECT_EQ("root/zar:ZAR_X.alpha=7,Beta=TRUE,Ref=\"root/zar:C.K=\\\"v\\\"\",Zeta=\"z\\\"q\"",
              str(p.toString()));
    // The caller's array is not reordered.
    EXPECT_EQ("Zeta", str(keys[0].getName().getString()));
}

TEST(CIMObjectPathTest, ReferenceKeysAreNormalisedWhenStored)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("R", "//h/root/zar:C.B=1,A=\"x\"", CIMKeyBinding::REFERENCE));
    CIMObjectPath p("", CIMNamespaceName(), CIMName("Assoc"), keys);
    EXPECT_EQ("//h/root/zar:C.A=\"x\",B=1", str(p.getKeyBindings()[0].getValue()));

    Array<CIMKeyBinding> bad;
    bad.append(CIMKeyBinding("R", "not a path", CIMKeyBinding::REFERENCE));
    EXPECT_THROW(CIMObjectPath("", CIMNamespaceName(), CIMName("Assoc"), bad),
                 MalformedObjectNameException);
    EXPECT_THROW(p.setKeyBindings(bad), MalformedObjectNameException);
    EXPECT_EQ("//h/root/zar:C.A=\"x\",B=1", str(p.getKeyBindings()[0].getValue()));
}

TEST(CIMObjectPathTest, NestedReferencesRoundTripAtSeveralDepths)
{
    // Depth 1: a view referring to a volume.
    CIMObjectPath volume(
        "//h1:5988/root/zar:ZAR_StorageVolume.DeviceID=\"v\\\"1\",SystemName=\"S\"");
    Array<CIMKeyBinding> k1;
    k1.append(CIMKeyBinding("Dependent", CIMValue(volume)));
    k1.append(CIMKeyBinding("Antecedent",
                            "root/zar:ZAR_SCSIProtocolController.DeviceID=\"MS:0:1:2:3\"",
                            CIMKeyBinding::REFERENCE));
    CIMObjectPath assoc("", CIMNamespaceName("root/zar"), CIMName("ZAR_ControllerForUnit"), k1);

    // Depth 2: a path whose key refers to the association path.
    Array<CIMKeyBinding> k2;
    k2.append(CIMKeyBinding("Outer", CIMValue(assoc)));
    k2.append(CIMKeyBinding("Tag", "a\\b", CIMKeyBinding::STRING));
    CIMObjectPath outer("", CIMNamespaceName(), CIMName("Wrap"), k2);

    String t = outer.toString();
    CIMObjectPath back(t);
    EXPECT_EQ(str(t), str(back.toString()));
    EXPECT_TRUE(back == outer);
    ASSERT_EQ(CIMKeyBinding::REFERENCE, back.getKeyBindings()[0].getType());
    CIMObjectPath innerAssoc(back.getKeyBindings()[0].getValue());
    EXPECT_TRUE(innerAssoc == assoc);
    ASSERT_EQ(2u, innerAssoc.getKeyBindings().size());
    CIMObjectPath innerVolume(innerAssoc.getKeyBindings()[1].getValue());
    EXPECT_EQ("//h1:5988/root/zar:ZAR_StorageVolume.DeviceID=\"v\\\"1\",SystemName=\"S\"",
              str(innerVolume.toString()));
    EXPECT_EQ("v\"1", str(innerVolume.getKeyBindings()[0].getValue()));
    EXPECT_EQ("a\\b", str(back.getKeyBindings()[1].getValue()));

    // Depth 3, written by hand: escapes double at each level.
    String hand = "X.R=\"Y.R=\\\"Z.K=\\\\\\\"a\\\\\\\\\\\\\\\"b\\\\\\\"\\\"\"";
    CIMObjectPath h(hand);
    EXPECT_EQ(str(hand), str(h.toString()));
    CIMObjectPath y(h.getKeyBindings()[0].getValue());
    EXPECT_EQ(CIMKeyBinding::REFERENCE, y.getKeyBindings()[0].getType());
    CIMObjectPath z(y.getKeyBindings()[0].getValue());
    EXPECT_EQ("a\"b", str(z.getKeyBindings()[0].getValue()));
}

TEST(CIMObjectPathTest, HandWrittenTexts)
{
    // Texts already in the canonical form come back unchanged: hosts with
    // ports, no namespace, the ends of the 64-bit numbers, UTF-8.
    for (const char* t :
         {"ZAR_Foo", "root/zar:ZAR_Foo", "//host.domain.com/root/zar:C.K=1",
          "//1.2.3.4:5989/root/zar:C.K=1", "//my_host/ns:C", "C.K=\"a:b\"",
          "C.K=18446744073709551615", "C.K=-9223372036854775808", "C\xC3\xA9.K=\"\xE2\x82\xAC\""})
        EXPECT_EQ(t, text(t));
    EXPECT_EQ("root/zar:ZAR_Foo", text("/root/zar:ZAR_Foo"));
    EXPECT_EQ("", str(CIMObjectPath().toString()));
    EXPECT_EQ("C.K=1", text("C.K=1,"));  // trailing comma
    CIMObjectPath mixed("C.X=0x1F,b=false,N=-0");
    EXPECT_EQ("C.b=FALSE,N=-0,X=0x1F", str(mixed.toString()));  // name spelling kept
    CIMObjectPath dup("C.K=\"a\",K=\"b\"");
    EXPECT_EQ(2u, dup.getKeyBindings().size());
    // A quoted value is a reference only if it is a path with keys.
    for (const char* t : {"C.K=\"a=b\"", "C.K=\"C.a=b\"", "C.K=\"root/zar:C\""})
        EXPECT_EQ(CIMKeyBinding::STRING, CIMObjectPath(t).getKeyBindings()[0].getType()) << t;
    EXPECT_EQ(CIMKeyBinding::REFERENCE,
              CIMObjectPath("C.K=\"ns:C.K=\\\"v\\\"\"").getKeyBindings()[0].getType());
}

TEST(CIMObjectPathTest, MalformedTextsThrowWithReason)
{
    const char* pair = "invalid key-value pair, ";
    const std::pair<const char*, std::string> reasons[] = {
        {"ZAR_Foo.Name=abc", pair + std::string("invalid number value abc")},
        {"//h/C.K=1", "host specified, missing namespace"},
        {"1Bad", "class name 1Bad not a legal CIM name"},
        {"C.K", pair + std::string("missing equal sign")},
        {"C.K=\"abc", pair + std::string("missing quote in key value")},
        {"C.K=\"a\\nb\"", pair + std::string("malformed value")},
        {"C.K=tru", pair + std::string("value should be TRUE or FALSE")},
        {"C.K=\"a\"J=1", pair + std::string("next key-value pair has to start with comma")},
        {"C.K = 1", pair + std::string("invalid key name:K ")},
        {"//-bad/ns:C", "invalid hostname"},
    };
    for (const auto& r : reasons)
        EXPECT_EQ(
            "malformed object name: " + std::string(r.first) + ", reason:\"" + r.second + "\"",
            parseError(r.first));

    // Names, namespaces and hosts; then key values.
    for (const char* t :
         {"", "root/zar:", " C", "root//zar:C", "//a..b/ns:C", "//300.1.1.1/ns:C",
          "//host:99999/ns:C", "//h o/ns:C", "//[::1]/ns:C", "//h/:C", "//host", "C.9K=1"})
        EXPECT_THROW(CIMObjectPath p(t), MalformedObjectNameException) << t;
    for (const char* t :
         {"C.K=+3", "C.K=007", "C.K=1.5", "C.K=", "C.K=1 ", "C.K=18446744073709551616",
          "C.K=-9223372036854775809", "C.K=0x", "C.K=trueX"})
        EXPECT_THROW(CIMObjectPath p(t), MalformedObjectNameException) << t;
}

TEST(CIMObjectPathTest, FailedSetLeavesThePathUnchanged)
{
    CIMObjectPath p("ns:C.K=1");
    EXPECT_THROW(p.set("C.K="), MalformedObjectNameException);
    EXPECT_THROW(p = String("1C"), MalformedObjectNameException);
    EXPECT_EQ("ns:C.K=1", str(p.toString()));
}

TEST(CIMObjectPathTest, SetHostValidates)
{
    CIMObjectPath p("ns:C.K=1");
    p.setHost("host:5988");
    EXPECT_EQ("//host:5988/ns:C.K=1", str(p.toString()));
    EXPECT_EQ("malformed object name: h o, reason:\"invalid hostname\"",
              str(MessageOf<MalformedObjectNameException>([&] { p.setHost("h o"); })));
    p.setHost("");
    EXPECT_EQ("ns:C.K=1", str(p.toString()));
    CIMObjectPath q;
    q.setHost("h");
    q.setClassName("C");
    EXPECT_EQ("//h/:C", str(q.toString()));  // host without namespace
}

TEST(CIMObjectPathTest, CopiesAreIndependent)
{
    CIMObjectPath a("ns:C.K=1");
    CIMObjectPath b(a);
    b.setNameSpace("other");
    b.setClassName("D");
    EXPECT_EQ("ns:C.K=1", str(a.toString()));
    EXPECT_EQ("other:D.K=1", str(b.toString()));
    a.clear();
    EXPECT_EQ("", str(a.toString()));
    EXPECT_EQ("other:D.K=1", str(b.toString()));
}

// Equal paths also hash alike.
TEST(CIMObjectPathEqualityTest, HostNamespaceClassKeysAndValues)
{
    const struct {
        const char* a;
        const char* b;
        bool equal;
    } cases[] = {
        {"//HostA/Root/Zar:zar_foo.NAME=\"x\"", "//hosta/root/zar:ZAR_Foo.name=\"x\"", true},
        {"//HostA/ns:C.K=1", "ns:C.K=1", false},
        {"//HostA/ns:C.K=1", "//HostB/ns:C.K=1", false},
        {"root/zar:C.K=1", "C.K=1", false},
        {"ns:C.K=1", "ns:D.K=1", false},
        {"C.A=1,B=2", "C.b=2,a=1", true},  // key order
        {"C.A=1", "C.A=1,B=2", false},
        {"C.A=1", "C.B=1", false},
        {"C.K=\"a\"", "C.K=\"A\"", false},  // strings exact
        {"C.K=\"10\"", "C.K=10", false},    // types differ
        {"C.K=10", "C.K=0xA", true},
        {"C.K=-5", "C.K=-0x5", true},
        {"C.K=0", "C.K=-0", true},
        {"C.K=-1", "C.K=18446744073709551615", false},
        {"C.K=true", "C.K=TRUE", true},
        // References compare as paths, their host included.
        {"A.R=\"ROOT/ZAR:c.k=\\\"v\\\"\"", "A.R=\"root/zar:C.K=\\\"v\\\"\"", true},
        {"A.R=\"root/zar:C.K=\\\"V\\\"\"", "A.R=\"root/zar:C.K=\\\"v\\\"\"", false},
        {"A.R=\"//h1/root/zar:C.K=\\\"v\\\"\"", "A.R=\"root/zar:C.K=\\\"v\\\"\"", false},
        {"A.R=\"C.X=1,Y=0x2\"", "A.R=\"C.y=2,x=1\"", true},
        {"A.R=\"ROOT/ZAR:c.k=0x10\"", "A.R=\"root/zar:C.K=16\"", true},
    };
    for (const auto& c : cases) {
        CIMObjectPath a(c.a), b(c.b);
        EXPECT_EQ(c.equal, a == b) << c.a << " " << c.b;
        EXPECT_EQ(!c.equal, a != b) << c.a << " " << c.b;
        if (c.equal) {
            EXPECT_EQ(a.makeHashCode(), b.makeHashCode()) << c.a;
        }
    }
    EXPECT_NE(CIMObjectPath("C.K=\"a\"").makeHashCode(), CIMObjectPath("C.K=\"A\"").makeHashCode());
    EXPECT_NE(CIMObjectPath("C.K=1").makeHashCode(), CIMObjectPath("C.K=2").makeHashCode());

    // Keys whose text cannot be parsed compare as text; booleans in any case.
    auto withKey = [](const char* value, CIMKeyBinding::Type type) {
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding("K", value, type));
        return CIMObjectPath("", CIMNamespaceName(), "C", keys);
    };
    EXPECT_FALSE(withKey("007", CIMKeyBinding::NUMERIC) == withKey("7", CIMKeyBinding::NUMERIC));
    EXPECT_TRUE(withKey("true", CIMKeyBinding::BOOLEAN) == withKey("TRUE", CIMKeyBinding::BOOLEAN));
}

TEST(CIMObjectPathEqualityTest, StringThatLooksLikeAPathDoesNotRoundTrip)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("K", "root/zar:C.K=\"v\"", CIMKeyBinding::STRING));
    CIMObjectPath original("", CIMNamespaceName(), "A", keys);
    CIMObjectPath reparsed(original.toString());
    EXPECT_EQ(CIMKeyBinding::REFERENCE, reparsed.getKeyBindings()[0].getType());
    EXPECT_FALSE(original == reparsed);
}

TEST(CIMKeyBindingTest, FromValues)
{
    CIMKeyBinding b("K", CIMValue(false));
    EXPECT_EQ(CIMKeyBinding::BOOLEAN, b.getType());
    EXPECT_EQ("FALSE", str(b.getValue()));
    CIMKeyBinding r("K", CIMValue(Real64(1.5)));
    EXPECT_EQ(CIMKeyBinding::NUMERIC, r.getType());
    EXPECT_EQ("1.5000000000000000e+00", str(r.getValue()));
    EXPECT_EQ(CIMKeyBinding::NUMERIC, CIMKeyBinding("K", CIMValue(Sint8(-3))).getType());
    EXPECT_EQ("-3", str(CIMKeyBinding("K", CIMValue(Sint8(-3))).getValue()));
    EXPECT_EQ(CIMKeyBinding::STRING, CIMKeyBinding("K", CIMValue(Char16('c'))).getType());
    CIMKeyBinding dt("K", CIMValue(CIMDateTime("20200102030405.000000+000")));
    EXPECT_EQ(CIMKeyBinding::STRING, dt.getType());
    EXPECT_EQ("20200102030405.000000+000", str(dt.getValue()));
    CIMKeyBinding nul("K", CIMValue(CIMTYPE_STRING, false));
    EXPECT_EQ(CIMKeyBinding::STRING, nul.getType());
    EXPECT_EQ(0u, nul.getValue().size());
    EXPECT_EQ(CIMKeyBinding::NUMERIC,
              CIMKeyBinding("K", CIMValue(CIMTYPE_UINT32, false)).getType());
    Array<Uint32> arr;
    arr.append(1);
    EXPECT_THROW(CIMKeyBinding("K", CIMValue(arr)), TypeMismatchException);
}

TEST(CIMKeyBindingTest, EqualConvertsItsTextToTheValueType)
{
    CIMKeyBinding n("K", "5", CIMKeyBinding::NUMERIC);
    EXPECT_TRUE(n.equal(CIMValue(Uint32(5))));
    EXPECT_TRUE(n.equal(CIMValue(Uint16(5))));
    EXPECT_TRUE(n.equal(CIMValue(Sint64(5))));
    EXPECT_FALSE(n.equal(CIMValue(Uint32(6))));
    EXPECT_FALSE(n.equal(CIMValue(String("5"))));
    CIMKeyBinding big("K", "300", CIMKeyBinding::NUMERIC);
    EXPECT_FALSE(big.equal(CIMValue(Uint8(44))));  // does not fit, no wrap-around
    CIMKeyBinding hex("K", "0x10", CIMKeyBinding::NUMERIC);
    EXPECT_TRUE(hex.equal(CIMValue(Uint32(16))));
    CIMKeyBinding real("K", "1.5", CIMKeyBinding::NUMERIC);
    EXPECT_TRUE(real.equal(CIMValue(Real64(1.5))));
    CIMKeyBinding s("K", "abc", CIMKeyBinding::STRING);
    EXPECT_TRUE(s.equal(CIMValue(String("abc"))));
    EXPECT_FALSE(s.equal(CIMValue(String("ABC"))));
    CIMKeyBinding t("K", "true", CIMKeyBinding::BOOLEAN);
    EXPECT_TRUE(t.equal(CIMValue(true)));
    EXPECT_FALSE(t.equal(CIMValue(false)));
    CIMKeyBinding ref("K", "ns:C.K=1", CIMKeyBinding::REFERENCE);
    EXPECT_TRUE(ref.equal(CIMValue(CIMObjectPath("NS:c.k=0x1"))));
    CIMKeyBinding notDate("K", "2020", CIMKeyBinding::STRING);
    EXPECT_FALSE(notDate.equal(CIMValue(CIMDateTime())));
    EXPECT_FALSE(n.equal(CIMValue(CIMTYPE_UINT32, false)));  // null value
}

TEST(CIMKeyBindingTest, ValueSemantics)
{
    CIMKeyBinding a("K", "v", CIMKeyBinding::STRING);
    CIMKeyBinding b(a);
    b.setValue("w");
    EXPECT_EQ("v", str(a.getValue()));
    EXPECT_TRUE(CIMKeyBinding("k", "v", CIMKeyBinding::STRING) == a);
}

}  // namespace
