// Tests of CIMFlavor, CIMQualifier and CIMProperty: shared-handle semantics,
// clone, the qualifier list rules and the type checks of properties.

#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::MessageOf;

namespace {

TEST(CIMFlavorTest, CombinesAndNamesBits)
{
    EXPECT_TRUE(CIMFlavor::DEFAULTS.hasFlavor(CIMFlavor::OVERRIDABLE));
    EXPECT_TRUE(CIMFlavor::DEFAULTS.hasFlavor(CIMFlavor::TOSUBCLASS));
    EXPECT_FALSE(CIMFlavor::DEFAULTS.hasFlavor(CIMFlavor::TOINSTANCE));
    EXPECT_TRUE(CIMFlavor::TOSUBELEMENTS.equal(CIMFlavor::TOSUBCLASS));
    EXPECT_TRUE(CIMFlavor::ENABLEOVERRIDE.equal(CIMFlavor::OVERRIDABLE));

    CIMFlavor f = CIMFlavor::TRANSLATABLE + CIMFlavor::DISABLEOVERRIDE;
    EXPECT_EQ(f.toString(), "TRANSLATABLE DISABLEOVERRIDE");
    f.removeFlavor(CIMFlavor::DISABLEOVERRIDE);
    EXPECT_TRUE(f.equal(CIMFlavor::TRANSLATABLE));
    EXPECT_EQ(CIMFlavor().toString(), "");
    EXPECT_TRUE(CIMFlavor().hasFlavor(CIMFlavor::NONE));
}

TEST(CIMQualifierTest, CopiesShareAndCloneIsIndependent)
{
    CIMQualifier q("Description", CIMValue(String("one")));
    CIMQualifier shared = q;
    CIMQualifier copy = q.clone();

    shared.setValue(CIMValue(String("two")));
    shared.setFlavor(CIMFlavor::TOSUBCLASS);

    String s;
    q.getValue().get(s);
    EXPECT_EQ(s, "two");
    EXPECT_TRUE(q.getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS));
    copy.getValue().get(s);
    EXPECT_EQ(s, "one");
    EXPECT_FALSE(copy.getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS));
    EXPECT_FALSE(copy.identical(q));
    EXPECT_TRUE(q.clone().identical(q));

    CIMConstQualifier c = q;
    EXPECT_EQ(c.getType(), CIMTYPE_STRING);
    q.unsetFlavor(CIMFlavor::TOSUBCLASS);
    EXPECT_FALSE(c.getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS));
}

TEST(CIMQualifierTest, PropagatedNullNamesAndUninitializedHandles)
{
    CIMQualifier q("Key", CIMValue(true), CIMFlavor::DEFAULTS, true);
    EXPECT_EQ(q.getPropagated(), 1u);
    q.setPropagated(false);
    EXPECT_EQ(q.getPropagated(), 0u);

    EXPECT_THROW(CIMQualifier(CIMName(), CIMValue(true)), UninitializedObjectException);
    EXPECT_THROW(q.setName(CIMName()), UninitializedObjectException);

    CIMQualifier none;
    EXPECT_TRUE(none.isUninitialized());
    EXPECT_THROW(none.getName(), UninitializedObjectException);
    EXPECT_THROW(none.getValue(), UninitializedObjectException);
    EXPECT_THROW(none.clone(), UninitializedObjectException);
    CIMConstQualifier c;
    EXPECT_THROW(c.getFlavor(), UninitializedObjectException);
    EXPECT_THROW(q.identical(c), UninitializedObjectException);
}

TEST(CIMPropertyTest, HandlesShareAndClonesAreDeep)
{
    CIMInstance instance("ZAR_Foo");
    instance.addProperty(CIMProperty("Count", CIMValue(Uint32(1))));
    instance.getProperty(0).setValue(CIMValue(Uint32(7)));

    Uint32 n = 0;
    instance.getProperty(0).getValue().get(n);
    EXPECT_EQ(n, 7u);

    CIMProperty clone = instance.getProperty(0).clone();
    clone.setValue(CIMValue(Uint32(9)));
    instance.getProperty(0).getValue().get(n);
    EXPECT_EQ(n, 7u);

    CIMProperty p("Name", CIMValue(String("a")));
    p.addQualifier(CIMQualifier("MaxLen", CIMValue(Uint32(31))));
    CIMProperty c = p.clone();
    EXPECT_TRUE(c.identical(p));
    c.getQualifier(0).setValue(CIMValue(Uint32(1)));
    Uint32 len = 0;
    p.getQualifier(0).getValue().get(len);
    EXPECT_EQ(len, 31u);
    EXPECT_FALSE(c.identical(p));
}

TEST(CIMPropertyTest, SetValueRefusesAnyTypeOrArrayDifference)
{
    CIMProperty p("Port", CIMValue(Uint16(1)));
    EXPECT_EQ(MessageOf<TypeMismatchException>([&] { p.setValue(CIMValue(Uint32(2))); }),
              "type mismatch");
    EXPECT_THROW(p.setValue(CIMValue(Array<Uint16>())), TypeMismatchException);
    EXPECT_THROW(p.setValue(CIMValue()), TypeMismatchException);
    Uint16 v = 0;
    p.getValue().get(v);
    EXPECT_EQ(v, 1u) << "a refused value must leave the old one";

    CIMProperty s("Name", CIMValue(String("x")));
    EXPECT_THROW(s.setValue(CIMValue()), TypeMismatchException);
    s.setValue(CIMValue(CIMTYPE_STRING, false));
    EXPECT_TRUE(s.getValue().isNull());
    s.setValue(CIMValue(String("y")));
    EXPECT_FALSE(s.getValue().isNull());
}

TEST(CIMPropertyTest, ConstructorAndArraySizeChecks)
{
    EXPECT_THROW(CIMProperty(CIMName(), CIMValue(true)), UninitializedObjectException);
    EXPECT_THROW(CIMProperty("Name", CIMValue(String("a")), 0, "ZAR_Other"), TypeMismatchException);
    EXPECT_THROW(CIMProperty("Refs", CIMValue(Array<CIMObjectPath>())), TypeMismatchException);

    CIMProperty ref("Antecedent", CIMValue(CIMObjectPath("ZAR_A.K=1")), 0, "ZAR_A", "ZAR_Assoc",
                    true);
    EXPECT_EQ(ref.getType(), CIMTYPE_REFERENCE);
    EXPECT_EQ(ref.getReferenceClassName(), CIMName("ZAR_A"));
    EXPECT_EQ(ref.getClassOrigin(), CIMName("ZAR_Assoc"));
    EXPECT_TRUE(ref.getPropagated());

    Array<Uint8> three(3, Uint8(0));
    CIMProperty p("Bytes", CIMValue(three), 3);
    EXPECT_EQ(p.getArraySize(), 3u);
    EXPECT_THROW(p.setValue(CIMValue(Array<Uint8>(2, Uint8(0)))), TypeMismatchException);
    p.setValue(CIMValue(Array<Uint8>(3, Uint8(1))));
    EXPECT_THROW(CIMProperty("Bytes", CIMValue(three), 4), TypeMismatchException);
    EXPECT_THROW(CIMProperty("Scalar", CIMValue(Uint8(1)), 1), TypeMismatchException);
}

TEST(CIMPropertyTest, QualifierListRules)
{
    CIMProperty p("Name", CIMValue(String("a")));
    p.addQualifier(CIMQualifier("Key", CIMValue(true)))
        .addQualifier(CIMQualifier("MaxLen", CIMValue(Uint32(31))));
    EXPECT_EQ(p.getQualifierCount(), 2u);
    EXPECT_EQ(p.findQualifier("maxlen"), 1u);
    EXPECT_EQ(p.findQualifier("Missing"), PEG_NOT_FOUND);

    EXPECT_EQ(MessageOf<AlreadyExistsException>(
                  [&] { p.addQualifier(CIMQualifier("KEY", CIMValue(false))); }),
              "already exists: qualifier \"KEY\"");
    EXPECT_THROW(p.addQualifier(CIMQualifier()), UninitializedObjectException);
    EXPECT_THROW(p.getQualifier(2), IndexOutOfBoundsException);
    EXPECT_THROW(p.removeQualifier(2), IndexOutOfBoundsException);

    p.getQualifier(1).setValue(CIMValue(Uint32(64)));
    Uint32 len = 0;
    p.getQualifier(1).getValue().get(len);
    EXPECT_EQ(len, 64u);

    p.removeQualifier(0);
    EXPECT_EQ(p.findQualifier("Key"), PEG_NOT_FOUND);
    EXPECT_EQ(p.findQualifier("MaxLen"), 0u);
}

TEST(CIMPropertyTest, RenameOnlyWhileNotInAnObject)
{
    CIMProperty p("Name", CIMValue(String("a")));
    p.setName("Caption");
    EXPECT_EQ(p.getName(), CIMName("Caption"));

    CIMInstance instance("ZAR_Foo");
    instance.addProperty(p);
    EXPECT_THROW(p.setName("Other"), Exception);
    EXPECT_EQ(instance.findProperty("Caption"), 0u);

    instance.removeProperty(0);
    p.setName("Other");
    EXPECT_EQ(p.getName(), CIMName("Other"));

    // Destroying the owner also releases the property.
    {
        CIMInstance owner("ZAR_Foo");
        owner.addProperty(p);
    }
    p.setName("Again");
    EXPECT_EQ(p.getName(), CIMName("Again"));
}

TEST(CIMPropertyTest, UninitializedHandlesThrow)
{
    CIMProperty p;
    EXPECT_TRUE(p.isUninitialized());
    EXPECT_THROW(p.getName(), UninitializedObjectException);
    EXPECT_THROW(p.setValue(CIMValue(true)), UninitializedObjectException);
    EXPECT_THROW(p.clone(), UninitializedObjectException);
    CIMConstProperty c(p);
    EXPECT_TRUE(c.isUninitialized());
    EXPECT_THROW(c.getValue(), UninitializedObjectException);
}

}  // namespace
