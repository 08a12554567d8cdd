// Typing of method input parameters from the method declaration.
#include <gtest/gtest.h>

#include <Pegasus/Common/Exception.h>

#include "ParamTyping.h"

using namespace zarserver;
using namespace Pegasus;

namespace {

CIMMethod declaration()
{
    CIMMethod m(CIMName("Do"), CIMTYPE_UINT32);
    m.addParameter(CIMParameter(CIMName("N"), CIMTYPE_UINT16));
    m.addParameter(CIMParameter(CIMName("S"), CIMTYPE_SINT8));
    m.addParameter(CIMParameter(CIMName("B"), CIMTYPE_BOOLEAN));
    m.addParameter(CIMParameter(CIMName("Levels"), CIMTYPE_UINT16, true));
    m.addParameter(CIMParameter(CIMName("Tags"), CIMTYPE_STRING, true));
    m.addParameter(CIMParameter(CIMName("R"), CIMTYPE_REFERENCE, false, 0, CIMName("C")));
    m.addParameter(CIMParameter(CIMName("RA"), CIMTYPE_REFERENCE, true, 0, CIMName("C")));
    m.addParameter(CIMParameter(CIMName("When"), CIMTYPE_DATETIME));
    m.addParameter(CIMParameter(CIMName("X"), CIMTYPE_REAL64));
    return m;
}

CIMValue typed(const char* name, const CIMValue& v)
{
    Array<CIMParamValue> in;
    in.append(CIMParamValue(name, v, false));
    Array<CIMParamValue> out = typeInParameters(declaration(), in);
    EXPECT_EQ(1u, out.size());
    return out[0].getValue();
}

CIMStatusCode failure(const char* name, const CIMValue& v)
{
    try {
        typed(name, v);
    } catch (const CIMException& e) {
        EXPECT_NE(PEG_NOT_FOUND, e.getMessage().find(String(name)))
            << (const char*)e.getMessage().getCString();
        return e.getCode();
    }
    return CIM_ERR_SUCCESS;
}

}  // namespace

TEST(ParamTyping, UntypedTextBecomesTheDeclaredType)
{
    Uint16 n = 0;
    CIMValue v = typed("n", CIMValue(String("7")));
    ASSERT_EQ(CIMTYPE_UINT16, v.getType());
    v.get(n);
    EXPECT_EQ(7, n);
    Sint8 s = 0;
    typed("S", CIMValue(String("-128"))).get(s);
    EXPECT_EQ(-128, s);
    Boolean b = false;
    typed("B", CIMValue(String("tRuE"))).get(b);
    EXPECT_TRUE(b);
    Array<Uint16> levels;
    typed("Levels", CIMValue(String("3"))).get(levels);  // a scalar for an array
    ASSERT_EQ(1u, levels.size());
    Array<String> texts;
    texts.append("2");
    texts.append("0x10");
    typed("Levels", CIMValue(texts)).get(levels);
    ASSERT_EQ(2u, levels.size());
    EXPECT_EQ(16, levels[1]);
    CIMObjectPath p;
    typed("R", CIMValue(String("C.K=\"v\""))).get(p);
    EXPECT_EQ(String("C.K=\"v\""), p.toString());
    Array<CIMObjectPath> refs;
    typed("RA", CIMValue(CIMObjectPath("C.K=1"))).get(refs);
    ASSERT_EQ(1u, refs.size());
    EXPECT_EQ(CIMTYPE_DATETIME,
              typed("When", CIMValue(String("20240101000000.000000+000"))).getType());
    Real64 x = 0;
    typed("X", CIMValue(String("2.5"))).get(x);
    EXPECT_EQ(2.5, x);
    // A value typed by the client with another integer type is converted too.
    typed("N", CIMValue(Uint32(9))).get(n);
    EXPECT_EQ(9, n);
}

TEST(ParamTyping, NullsUnknownParametersAndMatchingTypesPassThrough)
{
    CIMValue v = typed("Tags", CIMValue(CIMTYPE_STRING, false));
    EXPECT_TRUE(v.isNull());
    EXPECT_TRUE(v.isArray());
    EXPECT_EQ(CIMTYPE_STRING, v.getType());
    Array<CIMParamValue> in;
    in.append(CIMParamValue("Undeclared", CIMValue(String("5")), false));
    Array<CIMParamValue> out = typeInParameters(declaration(), in);
    EXPECT_EQ(CIMTYPE_STRING, out[0].getValue().getType());
    out = typeInParameters(CIMConstMethod(), in);
    EXPECT_EQ(CIMTYPE_STRING, out[0].getValue().getType());
}

TEST(ParamTyping, BadTextIsAnInvalidParameter)
{
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("N", CIMValue(String("65536"))));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("N", CIMValue(String("-1"))));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("N", CIMValue(String("7x"))));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("S", CIMValue(String("128"))));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("B", CIMValue(String("yes"))));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("R", CIMValue(String("not a path"))));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("When", CIMValue(String("2024"))));
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("X", CIMValue(String("1.5.2"))));
    Array<String> two;
    two.append("1");
    two.append("2");
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("N", CIMValue(two)));
    two[1] = "z";
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("Levels", CIMValue(two)));
}
