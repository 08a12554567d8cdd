// Tests of CIMClass, CIMMethod and CIMParameter: class rules, key names,
// methods, clone, and buildInstance with its qualifier, class origin and
// property list rules.

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::MessageOf;

namespace {

// [Description("foo")] ZAR_Foo : ZAR_Base
// { [Key] string Name; uint32 Count = 3; [key] uint16 Id;
//   ZAR_Base REF Owner; }
CIMClass MakeFoo()
{
    CIMClass c("ZAR_Foo", "ZAR_Base");
    c.addQualifier(CIMQualifier("Description", CIMValue(String("foo"))));
    c.addProperty(
        CIMProperty("Name", CIMValue(CIMTYPE_STRING, false), 0, CIMName(), "ZAR_Base", true)
            .addQualifier(CIMQualifier("Key", CIMValue(true))));
    c.addProperty(CIMProperty("Count", CIMValue(Uint32(3)), 0, CIMName(), "ZAR_Foo"));
    c.addProperty(CIMProperty("Id", CIMValue(CIMTYPE_UINT16, false), 0, CIMName(), "ZAR_Foo")
                      .addQualifier(CIMQualifier("key", CIMValue(true))));
    c.addProperty(
        CIMProperty("Owner", CIMValue(CIMTYPE_REFERENCE, false), 0, "ZAR_Base", "ZAR_Foo"));
    return c;
}

TEST(CIMClassTest, BuildInstanceFollowsTheFlagsAndTheList)
{
    CIMClass c = MakeFoo();
    // A null list: every property in class order, without qualifiers and
    // class origin unless asked.
    CIMInstance i = c.buildInstance(false, false, CIMPropertyList());
    EXPECT_EQ(i.getPath().toString(), "ZAR_Foo");
    ASSERT_EQ(i.getPropertyCount(), 4u);
    EXPECT_EQ(i.getProperty(0).getName(), CIMName("Name"));
    EXPECT_EQ(i.getProperty(1).getName(), CIMName("Count"));
    EXPECT_EQ(i.getProperty(2).getName(), CIMName("Id"));
    EXPECT_TRUE(i.getProperty(0).getValue().isNull());
    EXPECT_EQ(i.getProperty(0).getType(), CIMTYPE_STRING);
    Uint32 count = 0;
    i.getProperty(1).getValue().get(count);
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(i.getQualifierCount(), 0u);
    for (Uint32 k = 0; k < i.getPropertyCount(); k++) {
        EXPECT_EQ(i.getProperty(k).getQualifierCount(), 0u);
        EXPECT_TRUE(i.getProperty(k).getClassOrigin().isNull());
    }
    // Propagation and reference class survive.
    EXPECT_TRUE(i.getProperty(0).getPropagated());
    EXPECT_EQ(i.getProperty(3).getReferenceClassName(), CIMName("ZAR_Base"));

    Array<CIMName> names;
    names.append("count");
    names.append("Nonexistent");
    CIMInstance some = c.buildInstance(false, false, CIMPropertyList(names));
    ASSERT_EQ(some.getPropertyCount(), 1u);
    EXPECT_EQ(some.getProperty(0).getName(), CIMName("Count"));
    CIMInstance none = c.buildInstance(true, true, CIMPropertyList(Array<CIMName>()));
    EXPECT_EQ(none.getPropertyCount(), 0u);
    EXPECT_EQ(none.getQualifierCount(), 1u);

    CIMInstance full = c.buildInstance(true, true, CIMPropertyList());
    EXPECT_EQ(full.findQualifier("description"), 0u);
    EXPECT_NE(full.getProperty(0).findQualifier("Key"), PEG_NOT_FOUND);
    EXPECT_EQ(full.getProperty(0).getClassOrigin(), CIMName("ZAR_Base"));
    CIMInstance noOrigin = c.buildInstance(true, false, CIMPropertyList());
    EXPECT_NE(noOrigin.getProperty(0).findQualifier("Key"), PEG_NOT_FOUND);
    EXPECT_TRUE(noOrigin.getProperty(0).getClassOrigin().isNull());

    // The built instance is independent of the class.
    full.getProperty(1).setValue(CIMValue(Uint32(99)));
    full.getProperty(0).getQualifier(0).setValue(CIMValue(false));
    c.getProperty(1).getValue().get(count);
    EXPECT_EQ(count, 3u);
    Array<CIMName> keys;
    c.getKeyNames(keys);
    EXPECT_EQ(keys.size(), 2u);
}

TEST(CIMClassTest, KeyNamesFollowTheKeyQualifier)
{
    CIMClass c = MakeFoo();
    c.addProperty(
        CIMProperty("NotKey", CIMValue(true)).addQualifier(CIMQualifier("Key", CIMValue(false))));
    c.addProperty(CIMProperty("NullKey", CIMValue(true))
                      .addQualifier(CIMQualifier("Key", CIMValue(CIMTYPE_BOOLEAN, false))));
    Array<CIMName> keys;
    c.getKeyNames(keys);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0], CIMName("Name"));
    EXPECT_EQ(keys[1], CIMName("Id"));
    EXPECT_TRUE(c.hasKeys());
    EXPECT_FALSE(CIMClass("ZAR_Empty").hasKeys());
}

TEST(CIMClassTest, AssociationAndAbstractNeedTrueQualifiers)
{
    CIMClass a("ZAR_Assoc");
    EXPECT_FALSE(a.isAssociation());
    a.addQualifier(CIMQualifier("ASSOCIATION", CIMValue(true)));
    a.addQualifier(CIMQualifier("Abstract", CIMValue(false)));
    EXPECT_TRUE(a.isAssociation());
    EXPECT_FALSE(a.isAbstract());
    CIMConstClass ca = a;
    EXPECT_TRUE(ca.isAssociation());
}

TEST(CIMClassTest, PropertyRules)
{
    CIMClass c = MakeFoo();
    EXPECT_EQ(MessageOf<AlreadyExistsException>(
                  [&] { c.addProperty(CIMProperty("count", CIMValue(Uint32(1)))); }),
              "already exists: property \"count\"");
    EXPECT_THROW(c.addProperty(CIMProperty("Ref", CIMValue(CIMTYPE_REFERENCE, false))),
                 TypeMismatchException);
    EXPECT_EQ(c.getPropertyCount(), 4u);
    EXPECT_EQ(c.getPath().toString(), "ZAR_Foo");
    EXPECT_EQ(c.getSuperClassName(), CIMName("ZAR_Base"));
    EXPECT_THROW((void)CIMClass(CIMName()), UninitializedObjectException);
}

TEST(CIMClassTest, MethodsAndParameters)
{
    CIMClass c = MakeFoo();
    CIMMethod m("ExposePaths", CIMTYPE_UINT32);
    m.addQualifier(CIMQualifier("Description", CIMValue(String("x"))));
    m.addParameter(CIMParameter("LUNames", CIMTYPE_STRING, true)
                       .addQualifier(CIMQualifier("IN", CIMValue(true))));
    m.addParameter(
        CIMParameter("ProtocolControllers", CIMTYPE_REFERENCE, true, 0, "CIM_ProtocolController")
            .addQualifier(CIMQualifier("OUT", CIMValue(true))));
    EXPECT_EQ(MessageOf<AlreadyExistsException>(
                  [&] { m.addParameter(CIMParameter("lunames", CIMTYPE_STRING)); }),
              "already exists: parameter \"lunames\"");
    EXPECT_THROW(CIMParameter("P", CIMTYPE_STRING, false, 0, "ZAR_X"), TypeMismatchException);
    c.addMethod(m);

    EXPECT_EQ(MessageOf<AlreadyExistsException>(
                  [&] { c.addMethod(CIMMethod("exposepaths", CIMTYPE_UINT32)); }),
              "already exists: method \"exposepaths\"");
    EXPECT_THROW(m.setName("Other"), Exception);
    EXPECT_EQ(c.findMethod("EXPOSEPATHS"), 0u);
    EXPECT_EQ(c.findMethod("Missing"), PEG_NOT_FOUND);
    EXPECT_THROW(c.getMethod(1), IndexOutOfBoundsException);

    const CIMClass& cc = c;
    CIMConstMethod cm = cc.getMethod(0);
    ASSERT_EQ(cm.getParameterCount(), 2u);
    CIMConstParameter out = cm.getParameter(cm.findParameter("protocolcontrollers"));
    EXPECT_TRUE(out.isArray());
    EXPECT_EQ(out.getType(), CIMTYPE_REFERENCE);
    EXPECT_NE(out.findQualifier("Out"), PEG_NOT_FOUND);

    c.removeMethod(0);
    EXPECT_EQ(c.getMethodCount(), 0u);
    m.setName("Other");
    EXPECT_EQ(m.getName(), CIMName("Other"));
}

TEST(CIMClassTest, CloneIsDeepIncludingMethods)
{
    CIMClass c = MakeFoo();
    c.addMethod(CIMMethod("Do", CIMTYPE_UINT32).addParameter(CIMParameter("In", CIMTYPE_STRING)));
    CIMClass copy = c.clone();
    EXPECT_TRUE(copy.identical(c));

    copy.getMethod(0).getParameter(0).addQualifier(CIMQualifier("IN", CIMValue(true)));
    EXPECT_EQ(c.getMethod(0).getParameter(0).getQualifierCount(), 0u);
    EXPECT_FALSE(copy.identical(c));

    CIMClass other = c.clone();
    other.setSuperClassName("ZAR_Other");
    EXPECT_FALSE(other.identical(c));

    CIMConstClass cc = c;
    CIMClass fromConst = cc.clone();
    fromConst.removeProperty(0);
    EXPECT_EQ(c.getPropertyCount(), 4u);
}

TEST(CIMClassTest, UninitializedClassesThrow)
{
    CIMClass c;
    EXPECT_TRUE(c.isUninitialized());
    EXPECT_THROW(c.getClassName(), UninitializedObjectException);
    EXPECT_THROW(c.buildInstance(false, false, CIMPropertyList()), UninitializedObjectException);
    Array<CIMName> keys;
    EXPECT_THROW(c.getKeyNames(keys), UninitializedObjectException);
    CIMMethod m;
    EXPECT_THROW(m.getParameterCount(), UninitializedObjectException);
    CIMParameter p;
    EXPECT_THROW(p.getType(), UninitializedObjectException);
    EXPECT_THROW(MakeFoo().addMethod(m), UninitializedObjectException);
}

}  // namespace
