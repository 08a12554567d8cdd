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
    EXPECT_EQ(CIMValue(Uint16(7)), typed("n", CIMValue(String("7"))));
    EXPECT_EQ(CIMValue(Sint8(-128)), typed("S", CIMValue(String("-128"))));
    EXPECT_EQ(CIMValue(Boolean(true)), typed("B", CIMValue(String("tRuE"))));
    EXPECT_EQ(CIMValue(Array<Uint16>(1, 3)),
              typed("Levels", CIMValue(String("3"))));  // a scalar for an array
    const String texts[] = {"2", "0x10"};
    const Uint16 levels[] = {2, 16};
    EXPECT_EQ(CIMValue(Array<Uint16>(levels, 2)),
              typed("Levels", CIMValue(Array<String>(texts, 2))));
    EXPECT_EQ(CIMValue(CIMObjectPath("C.K=\"v\"")), typed("R", CIMValue(String("C.K=\"v\""))));
    EXPECT_EQ(CIMValue(Array<CIMObjectPath>(1, CIMObjectPath("C.K=1"))),
              typed("RA", CIMValue(CIMObjectPath("C.K=1"))));
    EXPECT_EQ(CIMTYPE_DATETIME,
              typed("When", CIMValue(String("20240101000000.000000+000"))).getType());
    EXPECT_EQ(CIMValue(Real64(2.5)), typed("X", CIMValue(String("2.5"))));
    // A value typed by the client with another integer type is converted too.
    EXPECT_EQ(CIMValue(Uint16(9)), typed("N", CIMValue(Uint32(9))));
}

TEST(ParamTyping, NullsUnknownParametersAndMatchingTypesPassThrough)
{
    // A null scalar for an array parameter is a null array.
    EXPECT_EQ(CIMValue(CIMTYPE_STRING, true), typed("Tags", CIMValue(CIMTYPE_STRING, false)));
    Array<CIMParamValue> in;
    in.append(CIMParamValue("Undeclared", CIMValue(String("5")), false));
    Array<CIMParamValue> out = typeInParameters(declaration(), in);
    EXPECT_EQ(CIMTYPE_STRING, out[0].getValue().getType());
    out = typeInParameters(CIMConstMethod(), in);
    EXPECT_EQ(CIMTYPE_STRING, out[0].getValue().getType());
}

TEST(ParamTyping, BadTextIsAnInvalidParameter)
{
    const std::pair<const char*, const char*> bad[] = {
        {"N", "65536"}, {"N", "-1"},         {"N", "7x"},      {"S", "128"},
        {"B", "yes"},   {"R", "not a path"}, {"When", "2024"}, {"X", "1.5.2"},
    };
    for (const auto& b : bad)
        EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure(b.first, CIMValue(String(b.second))))
            << b.first << "=" << b.second;
    const String texts[] = {"1", "2"};
    Array<String> two(texts, 2);
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("N", CIMValue(two)));
    two[1] = "z";
    EXPECT_EQ(CIM_ERR_INVALID_PARAMETER, failure("Levels", CIMValue(two)));
}
