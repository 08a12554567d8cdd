// Tests of the CIM-XML codec: every value kind survives writing and reading,
// paths in all their forms, classes with method signatures, the error
// description format, and the parser's refusals.
#include <zarframework/CIMXmlCodec.h>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMParameter.h>
#include <Pegasus/Common/CIMProperty.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

#include <string>

PEGASUS_USING_PEGASUS;
using zartest::str;
using namespace Pegasus::CIMXml;

namespace {

XmlElement parse(const std::string& xml, const XmlLimits& limits = XmlLimits())
{
    return parseDocument(xml.data(), xml.size(), limits);
}

// Writes the value as a property of an instance and reads it back.
CIMValue roundTripProperty(const CIMValue& v)
{
    CIMInstance inst("ZTest_Values");
    inst.addProperty(CIMProperty("P", v));
    std::string xml;
    appendInstance(xml, inst);
    CIMInstance back = decodeInstance(parse(xml));
    EXPECT_EQ(back.getPropertyCount(), 1u);
    return back.getProperty(0).getValue();
}

// Writes the value as a typed method parameter and reads it back.
CIMValue roundTripParam(const CIMValue& v)
{
    std::string xml;
    appendParamValue(xml, CIMParamValue("P", v));
    CIMParamValue back = decodeParamValue(parse(xml));
    EXPECT_TRUE(back.isTyped());
    return back.getValue();
}

CIMObjectPath samplePath()
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Name", "a\"b<&>c", CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding("Id", "42", CIMKeyBinding::NUMERIC));
    keys.append(CIMKeyBinding("On", "TRUE", CIMKeyBinding::BOOLEAN));
    return CIMObjectPath("myhost", "root/zar", "ZAR_Thing", keys);
}

}  // namespace

TEST(CIMXmlCodecValues, EveryScalarTypeRoundTrips)
{
    for (const CIMValue& v :
         {CIMValue(Boolean(true)), CIMValue(Boolean(false)), CIMValue(Uint8(255)),
          CIMValue(Sint8(-128)), CIMValue(Uint16(65535)), CIMValue(Sint16(-32768)),
          CIMValue(Uint32(4294967295u)), CIMValue(Sint32(-2147483647 - 1)),
          CIMValue(Uint64(18446744073709551615ull)), CIMValue(Sint64(-9223372036854775807ll - 1)),
          CIMValue(Real32(1.1f)), CIMValue(Real64(0.1)), CIMValue(Real64(-1.5e300)),
          CIMValue(Char16(0x00e9)), CIMValue(String("tab\there <b>&amp; \"q\" é\nline")),
          CIMValue(CIMDateTime("20261122023739.398673-300")),
          CIMValue(CIMDateTime("00000001020304.000005:000"))}) {
        SCOPED_TRACE(str(v.toString()));
        EXPECT_TRUE(roundTripProperty(v) == v);
        EXPECT_TRUE(roundTripParam(v) == v);
    }
}

TEST(CIMXmlCodecValues, ArraysAndNullsRoundTrip)
{
    const String texts[] = {"a", "", "with,comma"};
    const Uint16 numbers[] = {2, 0};
    Array<String> strings(texts, 3);
    Array<Uint16> levels(numbers, 2);
    Array<Boolean> flags(1, true);
    Array<Real64> reals(1, 3.25);
    Array<CIMDateTime> dates(1, CIMDateTime("20200101000000.000000+000"));
    for (const CIMValue& v :
         {CIMValue(strings), CIMValue(levels), CIMValue(flags), CIMValue(reals), CIMValue(dates),
          CIMValue(Array<Sint64>()), CIMValue(CIMTYPE_UINT32, false),
          CIMValue(CIMTYPE_STRING, true), CIMValue(CIMTYPE_DATETIME, false)}) {
        SCOPED_TRACE(str(v.toString()));
        EXPECT_TRUE(roundTripProperty(v) == v);  // nullness and array-ness included
    }
}

TEST(CIMXmlCodecValues, ReferencesInEveryPathForm)
{
    CIMObjectPath full = samplePath();
    CIMObjectPath local = full;
    local.setHost(String());
    CIMObjectPath bare = local;
    bare.setNameSpace(CIMNamespaceName());
    CIMObjectPath classOnly(String(), CIMNamespaceName("root/zar"), "ZAR_Thing");
    for (const CIMObjectPath& p : {full, local, bare, classOnly}) {
        SCOPED_TRACE(str(p.toString()));
        std::string xml;
        appendValueReference(xml, p);
        EXPECT_TRUE(decodeObjectPath(parse(xml)) == p);
        EXPECT_TRUE(roundTripParam(CIMValue(p)) == CIMValue(p));
    }
    // A reference key inside a reference.
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Target", CIMValue(local)));
    CIMObjectPath outer(String(), CIMNamespaceName(), "ZAR_Assoc", keys);
    std::string xml;
    appendInstanceName(xml, outer);
    EXPECT_NE(xml.find("<KEYBINDING NAME=\"Target\"><VALUE.REFERENCE>"), std::string::npos);
    EXPECT_TRUE(decodeInstanceName(parse(xml)) == outer);

    Array<CIMObjectPath> refs;
    refs.append(full);
    refs.append(bare);
    CIMValue refArray(refs);
    std::string arr;
    appendValue(arr, refArray);
    EXPECT_EQ(arr.compare(0, 16, "<VALUE.REFARRAY>"), 0);
    EXPECT_TRUE(roundTripParam(refArray) == refArray);
}

TEST(CIMXmlCodecValues, EmbeddedInstancesTravelAsEscapedText)
{
    CIMInstance inner("ZTest_Inner");
    inner.addProperty(CIMProperty("Name", CIMValue(String("x<y"))));
    CIMValue v(inner);
    std::string xml;
    appendParamValue(xml, CIMParamValue("Embedded", v));
    EXPECT_NE(xml.find("EmbeddedObject=\"instance\""), std::string::npos);
    EXPECT_NE(xml.find("&lt;INSTANCE CLASSNAME=&quot;ZTest_Inner&quot;"), std::string::npos);
    CIMValue back = decodeParamValue(parse(xml)).getValue();
    ASSERT_EQ(back.getType(), CIMTYPE_INSTANCE);
    CIMInstance got;
    back.get(got);
    EXPECT_TRUE(got.identical(inner));

    CIMValue obj{CIMObject(inner)};
    CIMValue objBack = roundTripProperty(obj);
    ASSERT_EQ(objBack.getType(), CIMTYPE_OBJECT);
}

TEST(CIMXmlCodecValues, TextConversionChecksTypesAndRanges)
{
    Boolean b = false;
    scalarFromText("TrUe", CIMTYPE_BOOLEAN).get(b);
    EXPECT_TRUE(b);
    scalarFromText(" false ", CIMTYPE_BOOLEAN).get(b);
    EXPECT_FALSE(b);
    Uint16 u = 0;
    scalarFromText("0x1F", CIMTYPE_UINT16).get(u);
    EXPECT_EQ(u, 31);
    Sint8 s = 0;
    scalarFromText("-128", CIMTYPE_SINT8).get(s);
    EXPECT_EQ(s, -128);
    for (auto bad : {std::make_pair("yes", CIMTYPE_BOOLEAN), std::make_pair("256", CIMTYPE_UINT8),
                     std::make_pair("-1", CIMTYPE_UINT32), std::make_pair("128", CIMTYPE_SINT8),
                     std::make_pair("18446744073709551616", CIMTYPE_UINT64),
                     std::make_pair("1.5", CIMTYPE_SINT32), std::make_pair("", CIMTYPE_UINT16),
                     std::make_pair("abc", CIMTYPE_REAL64), std::make_pair("ab", CIMTYPE_CHAR16),
                     std::make_pair("2020", CIMTYPE_DATETIME)}) {
        SCOPED_TRACE(bad.first);
        try {
            scalarFromText(bad.first, bad.second);
            ADD_FAILURE() << "accepted";
        } catch (CIMXmlFormatException& e) {
            EXPECT_EQ(e.getKind(), CIMXmlFormatException::BAD_VALUE);
        }
    }
}

TEST(CIMXmlCodecValues, UntypedParametersConvertOnDemand)
{
    std::string xml =
        "<PARAMVALUE NAME=\"Levels\"><VALUE.ARRAY><VALUE>2</VALUE>"
        "<VALUE>7</VALUE></VALUE.ARRAY></PARAMVALUE>";
    CIMParamValue pv = decodeParamValue(parse(xml));
    EXPECT_FALSE(pv.isTyped());
    CIMValue typed = convertUntyped(pv.getValue(), CIMTYPE_UINT16);
    Array<Uint16> levels;
    typed.get(levels);
    ASSERT_EQ(levels.size(), 2u);
    EXPECT_EQ(levels[1], 7);
    CIMParamValue flag =
        decodeParamValue(parse("<PARAMVALUE NAME=\"Force\"><VALUE>true</VALUE></PARAMVALUE>"));
    Boolean force = false;
    convertUntyped(flag.getValue(), CIMTYPE_BOOLEAN).get(force);
    EXPECT_TRUE(force);
    EXPECT_THROW(convertUntyped(flag.getValue(), CIMTYPE_UINT8), CIMXmlFormatException);
}

TEST(CIMXmlCodecObjects, ClassWithMethodSignaturesAndQualifiers)
{
    CIMClass c("ZTest_Service", "ZTest_Base");
    c.addQualifier(CIMQualifier("Description", CIMValue(String("svc")),
                                CIMFlavor::DEFAULTS + CIMFlavor::TRANSLATABLE));
    CIMProperty key("Name", CIMValue(CIMTYPE_STRING, false), 0, CIMName(), "ZTest_Base", true);
    key.addQualifier(CIMQualifier("Key", CIMValue(Boolean(true)),
                                  CIMFlavor::DISABLEOVERRIDE + CIMFlavor::TOSUBCLASS));
    c.addProperty(key);
    Array<String> vm;
    vm.append("0");
    vm.append("1");
    CIMProperty mode("Mode", CIMValue(Uint16(1)));
    mode.addQualifier(CIMQualifier("ValueMap", CIMValue(vm), CIMFlavor::DEFAULTS));
    c.addProperty(mode);
    c.addProperty(CIMProperty("Triple", CIMValue(CIMTYPE_SINT32, true, 3), 3));
    c.addProperty(CIMProperty("Peer", CIMValue(CIMTYPE_REFERENCE, false), 0, "ZTest_Widget"));
    CIMMethod m("Configure", CIMTYPE_UINT32);
    CIMParameter label("Label", CIMTYPE_STRING);
    label.addQualifier(CIMQualifier("In", CIMValue(Boolean(true)), CIMFlavor::DEFAULTS));
    m.addParameter(label);
    m.addParameter(CIMParameter("Tags", CIMTYPE_STRING, true));
    m.addParameter(CIMParameter("Levels", CIMTYPE_UINT16, true, 4));
    m.addParameter(CIMParameter("Target", CIMTYPE_REFERENCE, false, 0, "ZTest_Widget"));
    CIMParameter chosen("ChosenAll", CIMTYPE_REFERENCE, true, 0, "ZTest_Widget");
    chosen.addQualifier(CIMQualifier("Out", CIMValue(Boolean(true)), CIMFlavor::DEFAULTS));
    m.addParameter(chosen);
    c.addMethod(m);

    std::string xml;
    appendClass(xml, c);
    for (const char* tag :
         {"<PARAMETER NAME=\"Label\" TYPE=\"string\">",
          "<PARAMETER.ARRAY NAME=\"Tags\" TYPE=\"string\">",
          "<PARAMETER.ARRAY NAME=\"Levels\" TYPE=\"uint16\" ARRAYSIZE=\"4\">",
          "<PARAMETER.REFERENCE NAME=\"Target\" REFERENCECLASS=\"ZTest_Widget\">",
          "<PARAMETER.REFARRAY NAME=\"ChosenAll\" REFERENCECLASS=\"ZTest_Widget\">",
          "<PROPERTY.REFERENCE NAME=\"Peer\" REFERENCECLASS=\"ZTest_Widget\">",
          "OVERRIDABLE=\"false\"", "TRANSLATABLE=\"true\"",
          "CLASSORIGIN=\"ZTest_Base\" PROPAGATED=\"true\""})
        EXPECT_NE(xml.find(tag), std::string::npos) << tag;
    CIMClass back = decodeClass(parse(xml));
    EXPECT_TRUE(back.identical(c));
}

TEST(CIMXmlCodecObjects, NamedInstanceAndObjectWithPathKeepPaths)
{
    CIMInstance i("ZAR_Thing");
    i.addProperty(CIMProperty("Name", CIMValue(String("a\"b<&>c"))));
    CIMObjectPath p = samplePath();
    CIMObjectPath bare(String(), CIMNamespaceName(), p.getClassName(), p.getKeyBindings());
    i.setPath(bare);
    std::string named;
    appendValueNamedInstance(named, i);
    CIMObject o = decodeObjectWithPath(parse(named));
    EXPECT_TRUE(o.getPath() == bare);

    std::string withPath;
    appendValueObjectWithPath(withPath, i, "srvhost", "root/zar");
    CIMObject o2 = decodeObjectWithPath(parse(withPath));
    EXPECT_EQ(str(o2.getPath().getHost()), "srvhost");
    EXPECT_EQ(str(o2.getPath().getNameSpace().getString()), "root/zar");
    EXPECT_TRUE(CIMInstance(o2).identical(i) || CIMInstance(o2).getPropertyCount() == 1);
}

TEST(CIMXmlCodecErrors, DescriptionCarriesStatusNameAndEscapes)
{
    EXPECT_EQ(str(errorDescription(6, "Test CIM Object not found.")),
              "CIM_ERR_NOT_FOUND: Test CIM Object not found.");
    EXPECT_EQ(str(errorDescription(7, String())), "CIM_ERR_NOT_SUPPORTED");
    EXPECT_EQ(str(errorDescription(4100, "vendor text")),
              "Unrecognized CIM status code \"4100\": vendor text");
    EXPECT_EQ(str(errorDescription(19, "x")), "Unrecognized CIM status code \"19\": x");
    std::string xml;
    appendError(xml, 4097, "LU=x: bad\n");
    EXPECT_EQ(xml,
              "<ERROR CODE=\"4097\" DESCRIPTION=\"Unrecognized CIM status code "
              "&quot;4097&quot;: LU=x: bad&#10;\"/>");
    // The escaped newline survives parsing, unlike a literal one in an attribute.
    XmlElement e = parse(xml);
    EXPECT_EQ(*e.attribute("DESCRIPTION"), "Unrecognized CIM status code \"4097\": LU=x: bad\n");
}

TEST(CIMXmlParser, RefusesIllFormedAndHostileDocuments)
{
    auto kindOf = [](const std::string& doc, const XmlLimits& lim) {
        try {
            parse(doc, lim);
        } catch (CIMXmlFormatException& e) {
            return int(e.getKind());
        }
        return -1;
    };
    XmlLimits lim;
    EXPECT_EQ(kindOf("<VALUE>a & b</VALUE>", lim), CIMXmlFormatException::NOT_WELL_FORMED);
    EXPECT_EQ(kindOf("<CIM><MESSAGE>", lim), CIMXmlFormatException::NOT_WELL_FORMED);
    EXPECT_EQ(kindOf("", lim), CIMXmlFormatException::NOT_WELL_FORMED);
    EXPECT_EQ(kindOf("<a>\xff\xfe</a>", lim), CIMXmlFormatException::NOT_WELL_FORMED);
    EXPECT_EQ(kindOf("<!DOCTYPE a [<!ENTITY e \"x\">]><a>&e;</a>", lim),
              CIMXmlFormatException::NOT_VALID);
    std::string deep;
    for (int i = 0; i < 100; i++)
        deep += "<a>";
    for (int i = 0; i < 100; i++)
        deep += "</a>";
    lim.maxDepth = 64;
    EXPECT_EQ(kindOf(deep, lim), CIMXmlFormatException::LIMIT_EXCEEDED);
    lim.maxDepth = 200;
    EXPECT_EQ(kindOf(deep, lim), -1);
    lim.maxTextBytes = 10;
    EXPECT_EQ(kindOf("<a>" + std::string(11, 'x') + "</a>", lim),
              CIMXmlFormatException::LIMIT_EXCEEDED);
    lim.maxAttributeBytes = 4;
    EXPECT_EQ(kindOf("<a b=\"12345\"/>", lim), CIMXmlFormatException::LIMIT_EXCEEDED);
}

TEST(CIMXmlParser, Utf8Validation)
{
    EXPECT_TRUE(isValidUtf8("plain \xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80", 17));
    for (const char* bad : {"\xc0\xaf", "\xe0\x80\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xc3",
                            "\x80", "\xe2\x82"}) {
        EXPECT_FALSE(isValidUtf8(bad, strlen(bad))) << bad;
    }
}

TEST(CIMXmlDecoder, RejectsElementsOutOfPlace)
{
    EXPECT_THROW(decodeInstance(parse("<INSTANCE CLASSNAME=\"C\"><VALUE>1</VALUE></INSTANCE>")),
                 CIMXmlFormatException);
    EXPECT_THROW(decodeInstanceName(parse("<INSTANCENAME/>")), CIMXmlFormatException);
    EXPECT_THROW(
        decodeObjectPath(parse("<VALUE.REFERENCE><CLASSNAME NAME=\"9bad\"/></VALUE.REFERENCE>")),
        CIMXmlFormatException);
    EXPECT_THROW(decodeLocalNamespacePath(parse("<LOCALNAMESPACEPATH/>")), CIMXmlFormatException);
    EXPECT_THROW(decodeProperty(parse("<PROPERTY NAME=\"P\" TYPE=\"uint99\"/>")),
                 CIMXmlFormatException);
    // Booleans of key values in any case, stored upper-cased.
    CIMObjectPath p = decodeInstanceName(parse(
        "<INSTANCENAME CLASSNAME=\"C\"><KEYBINDING NAME=\"K\"><KEYVALUE VALUETYPE=\"boolean\">"
        "true</KEYVALUE></KEYBINDING></INSTANCENAME>"));
    EXPECT_EQ(str(p.toString()), "C.K=TRUE");
}

TEST(CIMXmlCodecValues, TextIsEscapedTheSameWhateverItsCharacters)
{
    struct Case {
        String in;
        const char* text;
        const char* attribute;
    } cases[] = {
        {"plain ASCII", "plain ASCII", "plain ASCII"},
        {"a<b>&\"c\"\r\n\td", "a&lt;b&gt;&amp;&quot;c&quot;&#13;\n\td",
         "a&lt;b&gt;&amp;&quot;c&quot;&#13;&#10;&#9;d"},
        {String("caf\xc3\xa9 <x>"), "caf\xc3\xa9 &lt;x&gt;", "caf\xc3\xa9 &lt;x&gt;"},
        {"", "", ""},
    };
    for (const Case& c : cases) {
        std::string text, attribute;
        CIMXml::appendText(text, c.in);
        CIMXml::appendAttribute(attribute, c.in);
        EXPECT_EQ(text, c.text);
        EXPECT_EQ(attribute, c.attribute);
    }
    // A NUL ends the text as it always has.
    Char16 withNul[] = {'a', 0, 'b', 0};
    std::string cut;
    CIMXml::appendText(cut, String(withNul, 3));
    EXPECT_EQ(cut, "a");
}
