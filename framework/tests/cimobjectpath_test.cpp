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
    EXPECT_EQ("ZAR_Foo", text("ZAR_Foo"));
    EXPECT_EQ("root/zar:ZAR_Foo", text("root/zar:ZAR_Foo"));
    EXPECT_EQ("root/zar:ZAR_Foo", text("/root/zar:ZAR_Foo"));
    EXPECT_EQ("//host.domain.com/root/zar:C.K=1", text("//host.domain.com/root/zar:C.K=1"));
    EXPECT_EQ("//1.2.3.4:5989/root/zar:C.K=1", text("//1.2.3.4:5989/root/zar:C.K=1"));
    EXPECT_EQ("//my_host/ns:C", text("//my_host/ns:C"));
    EXPECT_EQ("C.K=\"a:b\"", text("C.K=\"a:b\""));  // no namespace
    EXPECT_EQ("", str(CIMObjectPath().toString()));
    EXPECT_EQ("C.K=1", text("C.K=1,"));  // trailing comma
    CIMObjectPath mixed("C.X=0x1F,b=false,N=-0");
    EXPECT_EQ("C.b=FALSE,N=-0,X=0x1F", str(mixed.toString()));  // name spelling kept
    CIMObjectPath dup("C.K=\"a\",K=\"b\"");
    EXPECT_EQ(2u, dup.getKeyBindings().size());
    // A quoted value is a reference only if it is a path with keys.
    EXPECT_EQ(CIMKeyBinding::STRING, CIMObjectPath("C.K=\"a=b\"").getKeyBindings()[0].getType());
    EXPECT_EQ(CIMKeyBinding::STRING, CIMObjectPath("C.K=\"C.a=b\"").getKeyBindings()[0].getType());
    EXPECT_EQ(CIMKeyBinding::STRING,
              CIMObjectPath("C.K=\"root/zar:C\"").getKeyBindings()[0].getType());
    EXPECT_EQ(CIMKeyBinding::REFERENCE,
              CIMObjectPath("C.K=\"ns:C.K=\\\"v\\\"\"").getKeyBindings()[0].getType());
    // Largest and smallest 64-bit numbers.
    EXPECT_EQ("C.K=18446744073709551615", text("C.K=18446744073709551615"));
    EXPECT_EQ("C.K=-9223372036854775808", text("C.K=-9223372036854775808"));
    // UTF-8 in names and values.
    EXPECT_EQ("C\xC3\xA9.K=\"\xE2\x82\xAC\"", text("C\xC3\xA9.K=\"\xE2\x82\xAC\""));
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

    const char* rejected[] = {
        "",
        "root/zar:",
        " C",
        "C.K=+3",
        "C.K=007",
        "C.K=1.5",
        "C.K=",
        "C.K=1 ",
        "C.K=18446744073709551616",
        "C.K=-9223372036854775809",
        "C.K=0x",
        "root//zar:C",
        "//a..b/ns:C",
        "//300.1.1.1/ns:C",
        "//host:99999/ns:C",
        "//h o/ns:C",
        "//[::1]/ns:C",
        "//h/:C",
        "//host",
        "C.9K=1",
        "C.K=trueX",
    };
    for (const char* t : rejected)
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

TEST(CIMObjectPathEqualityTest, HostNamespaceClassAndKeyNames)
{
    EXPECT_TRUE(CIMObjectPath("//HostA/Root/Zar:zar_foo.NAME=\"x\"") ==
                CIMObjectPath("//hosta/root/zar:ZAR_Foo.name=\"x\""));
    EXPECT_FALSE(CIMObjectPath("//HostA/ns:C.K=1") == CIMObjectPath("ns:C.K=1"));
    EXPECT_FALSE(CIMObjectPath("//HostA/ns:C.K=1") == CIMObjectPath("//HostB/ns:C.K=1"));
    EXPECT_FALSE(CIMObjectPath("root/zar:C.K=1") == CIMObjectPath("C.K=1"));
    EXPECT_FALSE(CIMObjectPath("ns:C.K=1") == CIMObjectPath("ns:D.K=1"));
    EXPECT_TRUE(CIMObjectPath("C.A=1,B=2") == CIMObjectPath("C.b=2,a=1"));  // key order
    EXPECT_FALSE(CIMObjectPath("C.A=1") == CIMObjectPath("C.A=1,B=2"));
    EXPECT_TRUE(CIMObjectPath("C.A=1") != CIMObjectPath("C.B=1"));
}

TEST(CIMObjectPathEqualityTest, ValuesByType)
{
    EXPECT_FALSE(CIMObjectPath("C.K=\"a\"") == CIMObjectPath("C.K=\"A\""));  // strings exact
    EXPECT_FALSE(CIMObjectPath("C.K=\"10\"") == CIMObjectPath("C.K=10"));    // types differ
    EXPECT_TRUE(CIMObjectPath("C.K=10") == CIMObjectPath("C.K=0xA"));
    EXPECT_TRUE(CIMObjectPath("C.K=-5") == CIMObjectPath("C.K=-0x5"));
    EXPECT_TRUE(CIMObjectPath("C.K=0") == CIMObjectPath("C.K=-0"));
    EXPECT_FALSE(CIMObjectPath("C.K=-1") == CIMObjectPath("C.K=18446744073709551615"));
    EXPECT_TRUE(CIMObjectPath("C.K=true") == CIMObjectPath("C.K=TRUE"));
    Array<CIMKeyBinding> k1, k2;
    k1.append(CIMKeyBinding("K", "007", CIMKeyBinding::NUMERIC));
    k2.append(CIMKeyBinding("K", "7", CIMKeyBinding::NUMERIC));
    EXPECT_FALSE(CIMObjectPath("", CIMNamespaceName(), "C", k1) ==
                 CIMObjectPath("", CIMNamespaceName(), "C", k2));  // unparsable: text
    Array<CIMKeyBinding> b1, b2;
    b1.append(CIMKeyBinding("K", "true", CIMKeyBinding::BOOLEAN));
    b2.append(CIMKeyBinding("K", "TRUE", CIMKeyBinding::BOOLEAN));
    EXPECT_TRUE(CIMObjectPath("", CIMNamespaceName(), "C", b1) ==
                CIMObjectPath("", CIMNamespaceName(), "C", b2));
}

TEST(CIMObjectPathEqualityTest, ReferencesCompareAsPathsIncludingTheirHost)
{
    EXPECT_TRUE(CIMObjectPath("A.R=\"ROOT/ZAR:c.k=\\\"v\\\"\"") ==
                CIMObjectPath("A.R=\"root/zar:C.K=\\\"v\\\"\""));
    EXPECT_FALSE(CIMObjectPath("A.R=\"root/zar:C.K=\\\"V\\\"\"") ==
                 CIMObjectPath("A.R=\"root/zar:C.K=\\\"v\\\"\""));
    EXPECT_FALSE(CIMObjectPath("A.R=\"//h1/root/zar:C.K=\\\"v\\\"\"") ==
                 CIMObjectPath("A.R=\"root/zar:C.K=\\\"v\\\"\""));
    EXPECT_TRUE(CIMObjectPath("A.R=\"C.X=1,Y=0x2\"") == CIMObjectPath("A.R=\"C.y=2,x=1\""));
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

TEST(CIMObjectPathEqualityTest, HashAgreesWithEquality)
{
    const char* same[][2] = {
        {"//HostA/Root/Zar:zar_foo.NAME=\"x\"", "//hosta/root/zar:ZAR_Foo.name=\"x\""},
        {"C.K=10", "C.K=0xA"},
        {"C.K=-5", "C.K=-0x5"},
        {"C.B=2,A=1", "C.a=1,b=2"},
        {"C.K=true", "C.K=TRUE"},
        {"A.R=\"ROOT/ZAR:c.k=0x10\"", "A.R=\"root/zar:C.K=16\""},
    };
    for (auto& pair : same) {
        CIMObjectPath a(pair[0]), b(pair[1]);
        ASSERT_TRUE(a == b) << pair[0];
        EXPECT_EQ(a.makeHashCode(), b.makeHashCode()) << pair[0];
    }
    EXPECT_NE(CIMObjectPath("C.K=\"a\"").makeHashCode(), CIMObjectPath("C.K=\"A\"").makeHashCode());
    EXPECT_NE(CIMObjectPath("C.K=1").makeHashCode(), CIMObjectPath("C.K=2").makeHashCode());
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
