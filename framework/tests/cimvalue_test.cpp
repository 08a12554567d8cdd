// Tests of CIMValue: every type, arrays, nulls, embedded objects, equality,
// text form and the overload traps that must behave as OpenPegasus does.

#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMProperty.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::MessageOf;
using zartest::str;

namespace {

// Round trip of one scalar: type, non-null, get gives it back, text.
template <class T>
void checkScalar(const T& x, CIMType type, const char* text)
{
    CIMValue v(x);
    EXPECT_EQ(type, v.getType()) << text;
    EXPECT_FALSE(v.isArray()) << text;
    EXPECT_FALSE(v.isNull()) << text;
    EXPECT_EQ(0u, v.getArraySize()) << text;
    T back;
    v.get(back);
    EXPECT_TRUE(back == x) << text;
    EXPECT_EQ(std::string(text), str(v.toString()));
    // The array form of the same type.
    Array<T> a;
    a.append(x);
    a.append(x);
    CIMValue va(a);
    EXPECT_EQ(type, va.getType());
    EXPECT_TRUE(va.isArray());
    EXPECT_EQ(2u, va.getArraySize());
    Array<T> aback;
    va.get(aback);
    EXPECT_EQ(2u, aback.size());
    EXPECT_EQ(std::string(text) + " " + text + " ", str(va.toString()));
    EXPECT_THROW(va.get(back), TypeMismatchException);  // array vs scalar
    EXPECT_THROW(v.get(aback), TypeMismatchException);
}

TEST(CIMValueTest, EveryScalarTypeAndItsArray)
{
    checkScalar(Boolean(true), CIMTYPE_BOOLEAN, "TRUE");
    checkScalar(Boolean(false), CIMTYPE_BOOLEAN, "FALSE");
    checkScalar(Uint8(200), CIMTYPE_UINT8, "200");
    checkScalar(Sint8(-3), CIMTYPE_SINT8, "-3");
    checkScalar(Uint16(65535), CIMTYPE_UINT16, "65535");
    checkScalar(Sint16(-32768), CIMTYPE_SINT16, "-32768");
    checkScalar(Uint32(4000000000u), CIMTYPE_UINT32, "4000000000");
    checkScalar(Sint32(-7), CIMTYPE_SINT32, "-7");
    checkScalar(Uint64(18446744073709551615ULL), CIMTYPE_UINT64, "18446744073709551615");
    checkScalar(Sint64(-9223372036854775807LL - 1), CIMTYPE_SINT64, "-9223372036854775808");
    checkScalar(Real32(1.5f), CIMTYPE_REAL32, "1.5000000000000000e+00");
    checkScalar(Real64(-0.25), CIMTYPE_REAL64, "-2.5000000000000000e-01");
    checkScalar(Char16(0xE9), CIMTYPE_CHAR16, "\xC3\xA9");
    checkScalar(String("b c"), CIMTYPE_STRING, "b c");
    checkScalar(CIMDateTime("20260102030405.123456-300"), CIMTYPE_DATETIME,
                "20260102030405.123456-300");
    checkScalar(CIMObjectPath("root/zar:C.K=\"v\""), CIMTYPE_REFERENCE, "root/zar:C.K=\"v\"");
}

TEST(CIMValueTest, OverloadTrapsAreKept)
{
    // A string literal converts to bool before String.
    CIMValue lit("abc");
    EXPECT_EQ(CIMTYPE_BOOLEAN, lit.getType());
    Boolean b = false;
    lit.get(b);
    EXPECT_TRUE(b);
    EXPECT_EQ(CIMTYPE_STRING, CIMValue(String("abc")).getType());
    EXPECT_EQ(CIMTYPE_SINT32, CIMValue(5).getType());
    EXPECT_EQ(CIMTYPE_UINT32, CIMValue(5u).getType());
    EXPECT_EQ(CIMTYPE_SINT8, CIMValue('c').getType());
    CIMValue v;
    v.set("x");
    EXPECT_EQ(CIMTYPE_BOOLEAN, v.getType());

    // The deprecated char is a Sint8.
    CIMValue ch('A');
    char c = 0;
    ch.get(c);
    EXPECT_EQ('A', c);
    Sint8 s = 0;
    ch.get(s);
    EXPECT_EQ(65, s);
    Array<char> chars;
    chars.append('x');
    CIMValue va(chars);
    EXPECT_EQ(CIMTYPE_SINT8, va.getType());
    Array<char> back;
    va.get(back);
    ASSERT_EQ(1u, back.size());
    EXPECT_EQ('x', back[0]);
}

TEST(CIMValueTest, NullValues)
{
    CIMValue def;
    EXPECT_TRUE(def.isNull());
    EXPECT_EQ(CIMTYPE_BOOLEAN, def.getType());
    EXPECT_FALSE(def.isArray());
    EXPECT_EQ("", str(def.toString()));

    CIMValue ns(CIMTYPE_STRING, false);
    EXPECT_TRUE(ns.isNull());
    String out("unchanged");
    ns.get(out);  // right type, null: no change
    EXPECT_EQ("unchanged", str(out));
    Uint32 u = 9;
    EXPECT_THROW(ns.get(u), TypeMismatchException);
    EXPECT_THROW(def.get(out), TypeMismatchException);

    CIMValue na(CIMTYPE_UINT16, true, 4);
    EXPECT_TRUE(na.isNull());
    EXPECT_TRUE(na.isArray());
    EXPECT_EQ(4u, na.getArraySize());
    Array<Uint16> keep(1, Uint16(7));
    na.get(keep);
    EXPECT_EQ(1u, keep.size());

    CIMValue v(Uint32(1));
    v.setNullValue(CIMTYPE_DATETIME, false);
    EXPECT_TRUE(v.isNull());
    EXPECT_EQ(CIMTYPE_DATETIME, v.getType());
    v.set(String("now set"));
    EXPECT_FALSE(v.isNull());
    EXPECT_EQ(CIMTYPE_STRING, v.getType());
    v.clear();
    EXPECT_TRUE(v.isNull());
    EXPECT_EQ(CIMTYPE_BOOLEAN, v.getType());
}

TEST(CIMValueTest, WrongTypeThrowsTypeMismatch)
{
    CIMValue v(Uint16(5));
    Uint32 u32;
    Sint16 s16;
    String s;
    EXPECT_THROW(v.get(u32), TypeMismatchException);
    EXPECT_THROW(v.get(s16), TypeMismatchException);
    EXPECT_EQ("type mismatch", str(MessageOf<TypeMismatchException>([&] { v.get(s); })));
    CIMValue inst(CIMInstance(CIMName("C")));
    CIMObject obj;
    EXPECT_THROW(inst.get(obj), TypeMismatchException);
}

TEST(CIMValueTest, EqualityRequiresTypeArrayAndNullToMatch)
{
    EXPECT_TRUE(CIMValue(Uint32(5)) == CIMValue(Uint32(5)));
    EXPECT_FALSE(CIMValue(Uint32(5)) == CIMValue(Uint16(5)));
    EXPECT_FALSE(CIMValue(Uint32(5)) == CIMValue(Uint32(6)));
    EXPECT_TRUE(CIMValue(CIMTYPE_STRING, false) == CIMValue(CIMTYPE_STRING, false));
    EXPECT_FALSE(CIMValue(CIMTYPE_STRING, false) == CIMValue(CIMTYPE_STRING, true));
    EXPECT_FALSE(CIMValue(CIMTYPE_STRING, false) == CIMValue(String("")));
    EXPECT_TRUE(CIMValue(CIMObjectPath("NS:c.K=0xA")) == CIMValue(CIMObjectPath("ns:C.k=10")));
    Array<String> a, b;
    a.append("x");
    b.append("x");
    EXPECT_TRUE(CIMValue(a) == CIMValue(b));
    b.append("y");
    EXPECT_TRUE(CIMValue(a) != CIMValue(b));
    EXPECT_FALSE(CIMValue(a) == CIMValue(String("x")));
    EXPECT_TRUE(CIMValue(CIMDateTime("20200101120000.000000+060")) ==
                CIMValue(CIMDateTime("20200101110000.000000+000")));
    EXPECT_TRUE(CIMValue(Uint8(1)).typeCompatible(CIMValue(CIMTYPE_UINT8, false)));
    EXPECT_FALSE(CIMValue(Uint8(1)).typeCompatible(CIMValue(CIMTYPE_UINT8, true)));
}

TEST(CIMValueTest, CopiesAndSetAreIndependent)
{
    CIMValue a(String("one"));
    CIMValue b(a);
    CIMValue c;
    c = a;
    b.set(Uint8(2));
    c.assign(CIMValue(Real64(3)));
    String s;
    a.get(s);
    EXPECT_EQ("one", str(s));
    EXPECT_EQ(CIMTYPE_UINT8, b.getType());
    EXPECT_EQ(CIMTYPE_REAL64, c.getType());
}

TEST(CIMValueTest, EmbeddedInstancesAreStoredAndReturnedAsClones)
{
    CIMInstance inst(CIMName("ZAR_Thing"));
    inst.addProperty(CIMProperty(CIMName("Name"), CIMValue(String("a"))));
    CIMValue v(inst);
    EXPECT_EQ(CIMTYPE_INSTANCE, v.getType());

    // Changing the original after storing does not change the value.
    inst.getProperty(0).setValue(CIMValue(String("changed")));
    CIMInstance got;
    v.get(got);
    String name;
    got.getProperty(0).getValue().get(name);
    EXPECT_EQ("a", str(name));

    // Changing what get() returned does not change the value either.
    got.getProperty(0).setValue(CIMValue(String("again")));
    CIMInstance second;
    v.get(second);
    second.getProperty(0).getValue().get(name);
    EXPECT_EQ("a", str(name));

    EXPECT_TRUE(v == CIMValue(second));
    EXPECT_FALSE(v == CIMValue(got));
    EXPECT_FALSE(v.toString().size() == 0);  // CIM-XML text of the instance

    EXPECT_THROW(CIMValue{CIMInstance()}, UninitializedObjectException);
    EXPECT_THROW(CIMValue{CIMObject()}, UninitializedObjectException);
    Array<CIMInstance> withUninit;
    withUninit.append(CIMInstance());
    EXPECT_THROW(CIMValue{withUninit}, UninitializedObjectException);
    CIMValue keep(Uint8(1));
    EXPECT_THROW(keep.set(CIMInstance()), UninitializedObjectException);
    EXPECT_EQ(CIMTYPE_UINT8, keep.getType());
}

TEST(CIMValueTest, EmbeddedObjectsAndArrays)
{
    CIMInstance inst(CIMName("ZAR_Thing"));
    CIMObject obj(inst);
    CIMValue v(obj);
    EXPECT_EQ(CIMTYPE_OBJECT, v.getType());
    CIMObject out;
    v.get(out);
    EXPECT_TRUE(out.isInstance());
    EXPECT_EQ("ZAR_Thing", str(out.getClassName().getString()));
    CIMInstance wrong;
    EXPECT_THROW(v.get(wrong), TypeMismatchException);

    Array<CIMInstance> insts;
    insts.append(inst);
    insts.append(CIMInstance(CIMName("Other")));
    CIMValue va(insts);
    EXPECT_EQ(CIMTYPE_INSTANCE, va.getType());
    EXPECT_EQ(2u, va.getArraySize());
    inst.addProperty(CIMProperty(CIMName("Late"), CIMValue(Uint8(1))));
    Array<CIMInstance> back;
    va.get(back);
    ASSERT_EQ(2u, back.size());
    EXPECT_EQ(0u, back[0].getPropertyCount());  // stored as a clone
    EXPECT_EQ("Other", str(back[1].getClassName().getString()));
}

}  // namespace
