// Schema compiler: typing of values, inheritance, qualifier rules, instances.
#include <gtest/gtest.h>

#include <Pegasus/Common/CIMDateTime.h>

#include "CoreTestUtil.h"
#include "MofParser.h"
#include "SchemaCompiler.h"
#include "SchemaLoader.h"

using namespace zarserver;
using namespace Pegasus;

namespace {

const char* const kQualifiers = R"(
Qualifier Abstract : boolean = false, Scope(class, association, indication), Flavor(Restricted);
Qualifier Association : boolean = false, Scope(association), Flavor(DisableOverride, ToSubclass);
Qualifier Description : string = null, Scope(any), Flavor(Translatable);
Qualifier Key : boolean = false, Scope(property, reference), Flavor(DisableOverride, ToSubclass);
Qualifier In : boolean = true, Scope(parameter), Flavor(DisableOverride, ToSubclass);
Qualifier Out : boolean = false, Scope(parameter), Flavor(DisableOverride, ToSubclass);
Qualifier Override : string = null, Scope(property, reference, method), Flavor(Restricted);
Qualifier ValueMap : string[], Scope(property, method, parameter);
Qualifier MaxLen : uint32 = null, Scope(property, method, parameter);
Qualifier Version : string = null, Scope(class, association, indication), Flavor(Restricted);
)";

class SchemaCompilerTest : public ::testing::Test {
protected:
    // Compiles the qualifiers and text into root/t; returns the error text
    // ("" when it compiled).
    std::string compile(const std::string& text) { return compileInto(repo, text); }
    static std::string compileInto(ClassRepository& repo, const std::string& text)
    {
        try {
            std::vector<mof::Declaration> decls;
            MofParser().parseText("q.mof", kQualifiers, decls);
            MofParser().parseText("t.mof", text, decls);
            SchemaCompiler(repo).compile(decls, CIMNamespaceName("root/t"));
            return "";
        } catch (const MofError& e) {
            return e.what();
        }
    }
    const CIMClass& cls(const char* name)
    {
        const CIMClass* c = repo.findClass(CIMNamespaceName("root/t"), CIMName(name));
        EXPECT_TRUE(c) << name;
        return *c;
    }
    CIMConstProperty prop(const char* c, const char* p)
    {
        const CIMClass& k = cls(c);
        return k.getProperty(k.findProperty(CIMName(p)));
    }
    ClassRepository repo;
};

}  // namespace

TEST_F(SchemaCompilerTest, DefaultValuesAreTypedAndRangeChecked)
{
    ASSERT_EQ("", compile(R"(
        class T {
            uint8 A = 255; sint8 B = -128; uint16 C = 0x10; sint64 D = -9223372036854775808;
            real32 E = 2; real64 F = -0.25; char16 G = 'z'; boolean H = true;
            datetime I = "20240102030405.000000+060"; string J[] = {"x", "y"};
            uint32 K[2] = {1, 2}; string L;
        };)"));
    auto value = [&](const char* p) { return prop("T", p).getValue(); };
    EXPECT_EQ(CIMValue(Uint8(255)), value("A"));
    EXPECT_EQ(CIMValue(Sint8(-128)), value("B"));
    EXPECT_EQ(CIMValue(Uint16(16)), value("C"));
    EXPECT_EQ(CIMValue(std::numeric_limits<Sint64>::min()), value("D"));
    EXPECT_EQ(CIMValue(Real32(2)), value("E"));
    EXPECT_EQ(CIMValue(Real64(-0.25)), value("F"));
    EXPECT_EQ(CIMValue(Char16('z')), value("G"));
    EXPECT_EQ(CIMValue(Boolean(true)), value("H"));
    CIMDateTime i;
    value("I").get(i);
    EXPECT_EQ(String("20240102030405.000000+060"), i.toString());
    Array<String> j;
    value("J").get(j);
    ASSERT_EQ(2u, j.size());
    EXPECT_EQ(String("y"), j[1]);
    EXPECT_EQ(2u, prop("T", "K").getArraySize());
    EXPECT_EQ(CIMValue(CIMTYPE_STRING, false), value("L"));  // null

    for (const char* bad :
         {"class U { uint8 A = 256; };", "class U { sint8 A = -129; };",
          "class U { uint16 A = -1; };", "class U { uint32 A = \"1\"; };",
          "class U { boolean A = 1; };", "class U { string A = {\"x\"}; };",
          "class U { string A[] = \"x\"; };", "class U { datetime A = \"2024\"; };",
          "class U { char16 A = \"x\"; };", "class U { uint32 A[2] = {1, 2, 3}; };"})
        EXPECT_NE("", compile(bad)) << bad;
}

TEST_F(SchemaCompilerTest, InheritancePropagatesFeaturesWithClassOrigin)
{
    ASSERT_EQ("", compile(R"(
        [Abstract, Version("1"), Description("base")]
        class Base { [Key, Description("the key")] string Id; uint16 Level = 3;
                     uint32 Go([IN] string How); };
        class Mid : Base { [Override("Level"), Description("mid level")] uint16 Level = 4;
                           string Extra; };
        class Leaf : Mid { uint32 Go([IN] string How, [IN] uint8 Speed); };)"));
    const CIMClass& leaf = cls("Leaf");
    EXPECT_EQ(String("Mid"), leaf.getSuperClassName().getString());
    ASSERT_EQ(3u, leaf.getPropertyCount());
    // Inherited properties come first, in the superclass's order.
    EXPECT_EQ(String("Id"), leaf.getProperty(0).getName().getString());
    EXPECT_EQ(String("Level"), leaf.getProperty(1).getName().getString());
    EXPECT_EQ(String("Extra"), leaf.getProperty(2).getName().getString());
    EXPECT_TRUE(leaf.getProperty(0).getPropagated());
    EXPECT_EQ(String("Base"), leaf.getProperty(0).getClassOrigin().getString());
    EXPECT_EQ(String("Mid"), leaf.getProperty(1).getClassOrigin().getString());
    Uint16 level;
    leaf.getProperty(1).getValue().get(level);
    EXPECT_EQ(4, level);
    // Key (ToSubclass) reaches the leaf; the Id key makes the class keyed.
    Array<CIMName> keys;
    leaf.getKeyNames(keys);
    ASSERT_EQ(1u, keys.size());
    EXPECT_EQ(String("Id"), keys[0].getString());
    // Restricted qualifiers (Abstract, Version) stay on the class that has them.
    EXPECT_TRUE(cls("Base").isAbstract());
    EXPECT_FALSE(cls("Mid").isAbstract());
    EXPECT_EQ(PEG_NOT_FOUND, cls("Mid").findQualifier(CIMName("Version")));
    // Description is inherited, marked propagated, unless overridden.
    Uint32 d = cls("Mid").findQualifier(CIMName("Description"));
    ASSERT_NE(PEG_NOT_FOUND, d);
    EXPECT_TRUE(cls("Mid").getQualifier(d).getPropagated());
    CIMConstProperty midLevel = prop("Mid", "Level");
    String text;
    midLevel.getQualifier(midLevel.findQualifier(CIMName("Description"))).getValue().get(text);
    EXPECT_EQ(String("mid level"), text);
    // The overriding method replaces the inherited one with its own signature.
    ASSERT_EQ(1u, leaf.getMethodCount());
    EXPECT_EQ(2u, leaf.getMethod(0).getParameterCount());
    EXPECT_FALSE(leaf.getMethod(0).getPropagated());
    EXPECT_TRUE(cls("Mid").getMethod(0).getPropagated());
    EXPECT_EQ(String("Base"), cls("Mid").getMethod(0).getClassOrigin().getString());
}

TEST_F(SchemaCompilerTest, MethodSignaturesKeepParameterTypesAndQualifiers)
{
    ASSERT_EQ("", compile(R"(
        class Thing { [Key] string Id; };
        class Svc { uint32 Do([IN] string S, [IN, ValueMap{"2","3"}] uint16 A[],
                              [IN] Thing REF R, [IN] Thing REF RA[], [IN(false), OUT] string O); };)"));
    CIMConstMethod m = cls("Svc").getMethod(0);
    ASSERT_EQ(5u, m.getParameterCount());
    EXPECT_EQ(CIMTYPE_UINT32, m.getType());
    EXPECT_TRUE(m.getParameter(1).isArray());
    EXPECT_EQ(CIMTYPE_UINT16, m.getParameter(1).getType());
    EXPECT_EQ(CIMTYPE_REFERENCE, m.getParameter(2).getType());
    EXPECT_EQ(String("Thing"), m.getParameter(2).getReferenceClassName().getString());
    EXPECT_TRUE(m.getParameter(3).isArray());
    CIMConstParameter o = m.getParameter(4);
    Boolean in = true, out = false;
    o.getQualifier(o.findQualifier(CIMName("In"))).getValue().get(in);
    o.getQualifier(o.findQualifier(CIMName("Out"))).getValue().get(out);
    EXPECT_FALSE(in);
    EXPECT_TRUE(out);
    // A scalar given for an array qualifier becomes a one-element array.
    ASSERT_EQ("", compile("class W { [ValueMap(\"7\")] uint16 X; };"));
    CIMConstProperty x = prop("W", "X");
    EXPECT_TRUE(x.getQualifier(0).isArray());
}

TEST_F(SchemaCompilerTest, QualifierRulesAreEnforced)
{
    struct Case {
        const char* mof;
        const char* message;
    } cases[] = {
        {"[Undeclared] class A { };", "qualifier Undeclared is not declared"},
        {"[Key] class A { };", "may not be used on a class"},
        {"class A { [In] string X; };", "may not be used on a property"},
        {"class A { uint32 M([Key] string P); };", "may not be used on a parameter"},
        {"class A { [MaxLen(\"x\")] string X; };", "expected uint32"},
        {"class A { [Description(\"a\"), Description(\"b\")] string X; };", "given twice"},
        {"class A { [Key] string X; }; class B : A { [Key(false)] string X; };",
         "may not be overridden"},
        {"class A { [Override(\"X\")] string X; };", "overrides nothing"},
        {"class A { [Description(\"x\") : Sticky] string X; };", "unknown flavor"},
        {"[Association] class A { };", "at least two references"},
        {"class Thing { }; class A { Thing REF R; };", "only associations"},
        {"class B : Nowhere { };", "superclass Nowhere of B is not defined"},
        {"class A { }; class A { };", "already defined"},
        {"class A { string X; uint16 x; };", "defined twice"},
        {"class A { string X; }; class B : A { uint16 X; };", "changes the type"},
        {"[Association] class L { Ghost REF A; Ghost REF B; };", "Ghost is not defined"},
    };
    for (const Case& c : cases) {
        ClassRepository fresh;  // every case starts from an empty repository
        std::string err = compileInto(fresh, c.mof);
        EXPECT_NE(std::string::npos, err.find(c.message)) << c.mof << " -> " << err;
        EXPECT_EQ(0u, err.find("t.mof:")) << err;
    }
}

TEST_F(SchemaCompilerTest, InstancesAreTypedKeyedAndAliased)
{
    ASSERT_EQ("", compile(R"(
        class Thing { [Key] string Id; uint16 N = 7; string Tags[]; };
        [Association] class Link { [Key] Thing REF A; [Key] Thing REF B; };
        instance of Thing as $one { Id = "1"; Tags = {"a"}; };
        instance of Thing as $two { Id = "2"; N = 9; };
        instance of Link { A = $one; B = $two; };)"));
    std::vector<CIMInstance> things =
        repo.instancesOf(CIMNamespaceName("root/t"), CIMName("Thing"));
    ASSERT_EQ(2u, things.size());
    EXPECT_EQ(String("Thing.Id=\"1\""), things[0].getPath().toString());
    Uint16 n;
    things[0].getProperty(things[0].findProperty(CIMName("N"))).getValue().get(n);
    EXPECT_EQ(7, n);  // the class default
    std::vector<CIMInstance> links = repo.instancesOf(CIMNamespaceName("root/t"), CIMName("Link"));
    ASSERT_EQ(1u, links.size());
    CIMObjectPath a;
    links[0].getProperty(links[0].findProperty(CIMName("A"))).getValue().get(a);
    EXPECT_EQ(String("root/t:Thing.Id=\"1\""), a.toString());

    struct Case {
        const char* mof;
        const char* message;
    } cases[] = {
        {"instance of Thing { N = 1; };", "no value for key Id"},
        {"instance of Thing { Id = \"1\"; };", "already defined"},
        {"instance of Thing { Id = \"9\"; Nope = 1; };", "has no property Nope"},
        {"instance of Thing { Id = \"9\"; N = \"x\"; };", "expected uint16"},
        {"instance of Link { A = $nobody; B = $one; };", "alias $nobody is not defined"},
        {"instance of Nothing { };", "class Nothing of the instance is not defined"},
    };
    for (const Case& c : cases) {
        std::string err = compile(c.mof);
        EXPECT_NE(std::string::npos, err.find(c.message)) << c.mof << " -> " << err;
    }
}

TEST(SchemaLoader, ProjectAndTestSchemasLoad)
{
    for (const char* dir : {ZAR_SCHEMA_DIR, ZAR_TEST_SCHEMA_DIR}) {
        ClassRepository repo;
        ASSERT_NO_THROW(loadSchema(dir, repo)) << dir;
        EXPECT_TRUE(
            repo.findClass(CIMNamespaceName("root/PG_InterOp"), CIMName("PG_ProviderCapabilities")))
            << dir;
    }
}

TEST(SchemaLoader, ManifestErrorsNameTheLine)
{
    std::string dir = coretest::tempDir();
    ClassRepository repo;
    try {
        loadSchema(dir, repo);
        FAIL();
    } catch (const std::runtime_error& e) {
        EXPECT_NE(std::string::npos, std::string(e.what()).find("manifest.txt"));
    }
    coretest::writeFile(dir + "/manifest.txt", "# comment\n\nroot/a   a.mof\nroot//bad  a.mof\n");
    coretest::writeFile(dir + "/a.mof", "class A { };\n");
    try {
        loadSchema(dir, repo);
        FAIL();
    } catch (const std::runtime_error& e) {
        EXPECT_NE(std::string::npos, std::string(e.what()).find("manifest.txt:4:")) << e.what();
    }
}
