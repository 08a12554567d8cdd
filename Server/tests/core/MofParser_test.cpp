// Lexer and parser: every construct, includes, and errors with positions.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string>

#include "CoreTestUtil.h"
#include "MofParser.h"

using namespace zarserver;
using coretest::tempDir;
using coretest::writeFile;

namespace {

std::vector<mof::Declaration> parse(const std::string& text, const std::string& file = "t.mof")
{
    std::vector<mof::Declaration> out;
    MofParser().parseText(file, text, out);
    return out;
}

// The MofError for text; fails the test if it parses.
MofError parseError(const std::string& text)
{
    try {
        parse(text);
    } catch (const MofError& e) {
        return e;
    }
    ADD_FAILURE() << "no error for: " << text;
    return MofError(SourcePos(), "none");
}

}  // namespace

TEST(MofParser, QualifierDeclarationWithScopesFlavorsAndArrayType)
{
    auto d = parse(
        "Qualifier Values : string[], Scope(property, method), Flavor(EnableOverride, "
        "Translatable);\n"
        "qualifier Abstract : boolean = false, scope(class, association), flavor(Restricted);");
    ASSERT_EQ(2u, d.size());
    const mof::QualifierDecl& v = d[0].qualifierDecl;
    EXPECT_EQ(mof::Declaration::QUALIFIER, d[0].kind);
    EXPECT_EQ("Values", v.name);
    EXPECT_EQ("string", v.type.name);
    EXPECT_TRUE(v.type.isArray);
    EXPECT_EQ(mof::Literal::NONE, v.defaultValue.kind);
    EXPECT_EQ((std::vector<std::string>{"property", "method"}), v.scopes);
    EXPECT_EQ((std::vector<std::string>{"EnableOverride", "Translatable"}), v.flavors);
    EXPECT_EQ(mof::Literal::BOOLEAN, d[1].qualifierDecl.defaultValue.kind);
    EXPECT_FALSE(d[1].qualifierDecl.defaultValue.boolean);
}

TEST(MofParser, ClassWithEveryKindOfFeature)
{
    auto d = parse(R"(
        // line comment
        [Association, Description("An " "example" /* inline */ ), Version("1.0")]
        class Z_Link as $L : Z_Base {
            [Key] Z_Thing REF Left;
            Z_Thing ref Right;
            uint8 Small = 0x1F;
            sint64 Big = -9223372036854775808;
            real64 Ratio = -1.5e3;
            char16 Letter = 'x';
            string Names[] = {"a", "b\tc"};
            uint16 Fixed[4];
            datetime When = "20240101000000.000000+000";
            boolean Flag = TRUE;
            string Nothing = NULL;
            [Description("m")] uint32 Do([IN, Out(false)] string S, [IN] uint16 A[],
                                        [IN] Z_Thing REF R, [IN] Z_Thing REF RA[], boolean B);
        };)");
    ASSERT_EQ(1u, d.size());
    const mof::ClassDecl& c = d[0].classDecl;
    EXPECT_EQ("Z_Link", c.name);
    EXPECT_EQ("Z_Base", c.superClass);
    EXPECT_EQ("L", c.alias);
    ASSERT_EQ(3u, c.qualifiers.size());
    EXPECT_EQ("An example", c.qualifiers[1].value.text);
    ASSERT_EQ(12u, c.features.size());
    EXPECT_EQ("ref", c.features[0].type.name);
    EXPECT_EQ("Z_Thing", c.features[0].type.refClass);
    EXPECT_EQ("ref", c.features[1].type.name);
    EXPECT_EQ("31", c.features[2].defaultValue.text);
    EXPECT_TRUE(c.features[3].defaultValue.negative);
    EXPECT_EQ("9223372036854775808", c.features[3].defaultValue.text);
    EXPECT_EQ(mof::Literal::REAL, c.features[4].defaultValue.kind);
    EXPECT_EQ("-1.5e3", c.features[4].defaultValue.text);
    EXPECT_EQ(mof::Literal::CHAR, c.features[5].defaultValue.kind);
    ASSERT_EQ(2u, c.features[6].defaultValue.items.size());
    EXPECT_EQ("b\tc", c.features[6].defaultValue.items[1].text);
    EXPECT_TRUE(c.features[7].type.isArray);
    EXPECT_EQ(4, c.features[7].type.arraySize);
    EXPECT_EQ(mof::Literal::NULLVALUE, c.features[10].defaultValue.kind);
    const mof::Feature& m = c.features[11];
    EXPECT_TRUE(m.isMethod);
    ASSERT_EQ(5u, m.parameters.size());
    EXPECT_EQ(2u, m.parameters[0].qualifiers.size());
    EXPECT_TRUE(m.parameters[1].type.isArray);
    EXPECT_EQ("Z_Thing", m.parameters[2].type.refClass);
    EXPECT_TRUE(m.parameters[3].type.isArray);
    EXPECT_EQ("ref", m.parameters[3].type.name);
}

TEST(MofParser, InstancesAliasesAndOldStyleFlavors)
{
    auto d = parse(
        "instance of Z_Thing as $T1 { Name = \"one\"; Refs = {$T0}; Count = +5; };\n"
        "[Key : DisableOverride ToSubclass] instance of Z_Other { X = 'q'; };");
    ASSERT_EQ(2u, d.size());
    const mof::InstanceDecl& i = d[0].instanceDecl;
    EXPECT_EQ("Z_Thing", i.className);
    EXPECT_EQ("T1", i.alias);
    ASSERT_EQ(3u, i.properties.size());
    EXPECT_EQ(mof::Literal::ALIAS, i.properties[1].value.items[0].kind);
    EXPECT_EQ("5", i.properties[2].value.text);
    EXPECT_FALSE(i.properties[2].value.negative);
    EXPECT_EQ((std::vector<std::string>{"DisableOverride", "ToSubclass"}),
              d[1].instanceDecl.qualifiers[0].flavors);
}

TEST(MofParser, StringEscapesIntegerBasesAndUtf8)
{
    auto d = parse(
        "instance of C { S = \"q\\\"b\\\\n\\x41\\X00e9\"; H = 0X10; O = 017; B = 101b; "
        "U = \"\xC3\xA9t\xC3\xA9\"; };");
    const auto& p = d[0].instanceDecl.properties;
    EXPECT_EQ("q\"b\\nA\xC3\xA9", p[0].value.text);
    EXPECT_EQ("16", p[1].value.text);
    EXPECT_EQ("15", p[2].value.text);
    EXPECT_EQ("5", p[3].value.text);
    EXPECT_EQ("\xC3\xA9t\xC3\xA9", p[4].value.text);
}

TEST(MofParser, PragmaNamespaceAppliesToLaterDeclarations)
{
    auto d = parse(
        "class A { };\n#pragma namespace (\"root/other\")\nclass B { };\n"
        "#pragma locale (\"en_US\")\nclass C { };");
    ASSERT_EQ(3u, d.size());
    EXPECT_EQ("", d[0].nameSpace);
    EXPECT_EQ("root/other", d[1].nameSpace);
    EXPECT_EQ("root/other", d[2].nameSpace);
}

TEST(MofParser, ErrorsNameFileLineAndColumn)
{
    MofError e = parseError("class A {\n  uint16 X\n};");
    EXPECT_EQ(3, e.pos().line);
    EXPECT_EQ(1, e.pos().column);
    EXPECT_NE(std::string::npos, std::string(e.what()).find("t.mof:3:1: expected ';'"));

    e = parseError("class A {\n    stringy X;\n};");
    EXPECT_EQ(2, e.pos().line);
    EXPECT_EQ(5, e.pos().column);

    // Columns count characters, not bytes.
    e = parseError("instance of C { S = \"\xC3\xA9\xC3\xA9\"; T = @; };");
    EXPECT_EQ(1, e.pos().line);
    EXPECT_EQ(31, e.pos().column);
}

TEST(MofParser, HostileInputFailsCleanly)
{
    struct Case {
        const char* text;
        const char* message;
        int line, column;
    } cases[] = {
        {"instance of C { S = \"never closed; };", "unterminated string", 1, 21},
        {"instance of C { S = \"line\nbreak\"; };", "unterminated string", 1, 21},
        {"/* open comment\nclass A {};", "unterminated comment", 1, 1},
        {"instance of C { A = {{{{{1}}}}}; };", "nested arrays are not allowed", 1, 22},
        {"[[[[Key]]]] class A {};", "expected qualifier name", 1, 2},
        {"instance of C { S = \"\\q\"; };", "unknown escape sequence", 1, 22},
        {"instance of C { N = 18446744073709551616; };", "too large", 1, 21},
        {"instance of C { N = 09; };", "invalid number", 1, 21},
        {"instance of C { S = \"\xFF\"; };", "invalid UTF-8", 1, 22},
        {"instance of C { X = 'ab'; };", "more than one character", 1, 21},
        {"class A { uint8 X[0]; };", "positive array size", 1, 19},
        {"qualifier Q : boolean;", "declares no scope", 1, 1},
        {"class", "expected class name", 1, 6},
        {"", nullptr, 0, 0},
    };
    for (const Case& c : cases) {
        if (!c.message) {
            EXPECT_TRUE(parse(c.text).empty());
            continue;
        }
        MofError e = parseError(c.text);
        EXPECT_NE(std::string::npos, e.message().find(c.message)) << c.text << " -> " << e.what();
        EXPECT_EQ(c.line, e.pos().line) << c.text;
        EXPECT_EQ(c.column, e.pos().column) << c.text;
    }
    // A very long run of brackets neither crashes nor recurses deeply.
    EXPECT_THROW(parse(std::string(100000, '{')), MofError);
    EXPECT_THROW(parse("instance of C { A = " + std::string(100000, '-') + "1; };"), MofError);
}

TEST(MofParser, IncludesResolveRelativeToTheIncludingFile)
{
    std::string dir = tempDir();
    mkdir((dir + "/sub").c_str(), 0700);
    writeFile(dir + "/main.mof", "#pragma include (\"sub/a.mof\")\nclass Main { };\n");
    writeFile(dir + "/sub/a.mof", "class A { };\n#pragma include (\"b.mof\")\n");
    writeFile(dir + "/sub/b.mof", "class B {\n  uint8 X;\n};\n");
    std::vector<mof::Declaration> out;
    MofParser().parseFile(dir + "/main.mof", out);
    ASSERT_EQ(3u, out.size());
    EXPECT_EQ("A", out[0].classDecl.name);
    EXPECT_EQ("B", out[1].classDecl.name);
    EXPECT_EQ("Main", out[2].classDecl.name);
    EXPECT_EQ(dir + "/sub/b.mof", out[1].classDecl.pos.file);

    // Errors inside an included file name that file.
    writeFile(dir + "/sub/b.mof", "class B {\n  uint8 X\n};\n");
    out.clear();
    try {
        MofParser().parseFile(dir + "/main.mof", out);
        FAIL();
    } catch (const MofError& e) {
        EXPECT_EQ(dir + "/sub/b.mof", e.pos().file);
        EXPECT_EQ(3, e.pos().line);
    }

    // A missing include is reported where it is included.
    writeFile(dir + "/main.mof", "\n  #pragma include (\"nope.mof\")\n");
    try {
        MofParser().parseFile(dir + "/main.mof", out);
        FAIL();
    } catch (const MofError& e) {
        EXPECT_EQ(2, e.pos().line);
        EXPECT_EQ(3, e.pos().column);
        EXPECT_NE(std::string::npos, e.message().find("cannot open included file 'nope.mof'"));
    }

    // Include cycles stop.
    writeFile(dir + "/main.mof", "#pragma include (\"sub/a.mof\")\n");
    writeFile(dir + "/sub/b.mof", "#pragma include (\"../main.mof\")\n");
    EXPECT_THROW(MofParser().parseFile(dir + "/main.mof", out), MofError);
    writeFile(dir + "/self.mof", "#pragma include (\"self.mof\")\n");
    EXPECT_THROW(MofParser().parseFile(dir + "/self.mof", out), MofError);
}
