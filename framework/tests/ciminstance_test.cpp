// Tests of CIMInstance and CIMObject: handle semantics, the property rules,
// setPath, buildPath, filtering and the conversions between the handles.

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::MessageOf;

namespace {

CIMInstance MakeFoo()
{
    CIMInstance i("ZAR_Foo");
    i.addProperty(CIMProperty("Name", CIMValue(String("abc"))));
    i.addProperty(CIMProperty("Id", CIMValue(Uint16(5))));
    i.addProperty(CIMProperty("Count", CIMValue(Uint32(3))));
    return i;
}

// ZAR_Foo { [Key] string Name; [Key] uint16 Id; uint32 Count; }
CIMClass MakeFooClass()
{
    CIMClass c("ZAR_Foo");
    c.addProperty(CIMProperty("Name", CIMValue(CIMTYPE_STRING, false))
                      .addQualifier(CIMQualifier("Key", CIMValue(true))));
    c.addProperty(CIMProperty("Id", CIMValue(CIMTYPE_UINT16, false))
                      .addQualifier(CIMQualifier("KEY", CIMValue(true))));
    c.addProperty(CIMProperty("Count", CIMValue(Uint32(3))));
    return c;
}

TEST(CIMInstanceTest, FreshAndUninitializedInstances)
{
    CIMInstance i("ZAR_Foo");
    EXPECT_EQ(i.getPath().toString(), "ZAR_Foo");
    EXPECT_EQ(i.getClassName(), CIMName("ZAR_Foo"));
    EXPECT_EQ(i.getPropertyCount(), 0u);
    EXPECT_THROW((void)CIMInstance(CIMName()), UninitializedObjectException);

    CIMInstance assoc("ZAR_Assoc");
    assoc.addProperty(CIMProperty("Dependent", CIMValue(CIMObjectPath("ZAR_Foo.Name=\"a\""))));
    EXPECT_EQ(assoc.getProperty(0).getType(), CIMTYPE_REFERENCE);

    i = CIMInstance();
    EXPECT_TRUE(i.isUninitialized());
    EXPECT_THROW(i.getClassName(), UninitializedObjectException);
    EXPECT_THROW(i.getPath(), UninitializedObjectException);
    EXPECT_THROW(i.findProperty("Name"), UninitializedObjectException);
    EXPECT_THROW(i.getPropertyCount(), UninitializedObjectException);
    EXPECT_THROW(i.addProperty(CIMProperty("A", CIMValue(true))), UninitializedObjectException);
    EXPECT_THROW(i.clone(), UninitializedObjectException);
    EXPECT_THROW(i.setPath(CIMObjectPath("ZAR_Foo")), UninitializedObjectException);
    EXPECT_THROW(i.buildPath(MakeFooClass()), UninitializedObjectException);
    EXPECT_THROW(MakeFoo().buildPath(CIMConstClass()), UninitializedObjectException);
}

TEST(CIMInstanceTest, PropertyLookupAndDuplicates)
{
    CIMInstance i = MakeFoo();
    EXPECT_EQ(i.findProperty("nAmE"), 0u);
    EXPECT_EQ(i.findProperty("COUNT"), 2u);
    EXPECT_EQ(i.findProperty("Missing"), PEG_NOT_FOUND);

    EXPECT_EQ(MessageOf<AlreadyExistsException>(
                  [&] { i.addProperty(CIMProperty("NAME", CIMValue(String("x")))); }),
              "already exists: property \"NAME\"");
    EXPECT_THROW(i.addProperty(CIMProperty()), UninitializedObjectException);
    EXPECT_EQ(i.getPropertyCount(), 3u);

    EXPECT_THROW(i.getProperty(3), IndexOutOfBoundsException);
    EXPECT_THROW(i.removeProperty(3), IndexOutOfBoundsException);
    i.removeProperty(1);
    EXPECT_EQ(i.findProperty("Count"), 1u);
    EXPECT_EQ(i.findProperty("Id"), PEG_NOT_FOUND);

    CIMConstInstance ci = MakeFoo();
    EXPECT_EQ(ci.getProperty(ci.findProperty("id")).getType(), CIMTYPE_UINT16);
}

TEST(CIMInstanceTest, CopiesShareCloneIsDeep)
{
    CIMInstance a = MakeFoo();
    CIMInstance b = a;
    CIMInstance c = a.clone();
    EXPECT_TRUE(c.identical(a));

    b.getProperty(b.findProperty("Count")).setValue(CIMValue(Uint32(8)));
    b.addQualifier(CIMQualifier("Description", CIMValue(String("d"))));

    Uint32 n = 0;
    a.getProperty(2).getValue().get(n);
    EXPECT_EQ(n, 8u);
    EXPECT_EQ(a.getQualifierCount(), 1u);
    c.getProperty(2).getValue().get(n);
    EXPECT_EQ(n, 3u);
    EXPECT_EQ(c.getQualifierCount(), 0u);
    EXPECT_FALSE(c.identical(a));
}

TEST(CIMInstanceTest, SetPathChecksTheClassName)
{
    CIMInstance i = MakeFoo();
    EXPECT_THROW(i.setPath(CIMObjectPath("ZAR_Bar.Name=\"a\"")), TypeMismatchException);
    EXPECT_THROW(i.setPath(CIMObjectPath()), UninitializedObjectException);
    EXPECT_EQ(i.getPath().toString(), "ZAR_Foo");

    CIMObjectPath p("//host/root/zar:zar_foo.Name=\"abc\",Id=5");
    i.setPath(p);
    EXPECT_EQ(i.getClassName().getString(), "zar_foo");
    EXPECT_EQ(i.getPath().getHost(), "host");
    EXPECT_EQ(i.getPath().getKeyBindings().size(), 2u);

    // Through CIMObject the same checks apply.
    CIMObject o(i);
    EXPECT_THROW(o.setPath(CIMObjectPath("ZAR_Bar")), TypeMismatchException);
}

TEST(CIMInstanceTest, BuildPathTakesTheClassKeysFromTheInstance)
{
    CIMClass cls = MakeFooClass();
    CIMInstance i = MakeFoo();
    CIMObjectPath p = i.buildPath(cls);
    EXPECT_EQ(p.toString(), "ZAR_Foo.Id=5,Name=\"abc\"");
    EXPECT_EQ(p.getHost(), "");
    EXPECT_TRUE(p.getNameSpace().isNull());

    CIMInstance nullKey("ZAR_Foo");
    nullKey.addProperty(CIMProperty("name", CIMValue(CIMTYPE_STRING, false)));
    EXPECT_EQ(MessageOf<NoSuchProperty>([&] { nullKey.buildPath(cls); }), "no such property: Id");
    nullKey.addProperty(CIMProperty("ID", CIMValue(Uint16(0))));
    CIMObjectPath q = nullKey.buildPath(cls);
    ASSERT_EQ(q.getKeyBindings().size(), 2u);
    EXPECT_EQ(q.getKeyBindings()[1].getValue(), "");

    CIMClass keyless("ZAR_Keyless");
    EXPECT_EQ(i.buildPath(keyless).toString(), "ZAR_Foo");
}

TEST(CIMInstanceTest, InstanceFilterDropsWhatWasNotAskedFor)
{
    CIMInstance i("ZAR_Foo");
    i.addQualifier(CIMQualifier("Description", CIMValue(String("d"))));
    i.addProperty(CIMProperty("Name", CIMValue(String("a")), 0, CIMName(), "ZAR_Base")
                      .addQualifier(CIMQualifier("Key", CIMValue(true))));
    i.addProperty(CIMProperty("Count", CIMValue(Uint32(1))));

    CIMInstance keepAll = i.clone();
    keepAll.instanceFilter(true, true, CIMPropertyList());
    EXPECT_TRUE(keepAll.identical(i));

    Array<CIMName> names;
    names.append("NAME");
    CIMInstance some = i.clone();
    some.instanceFilter(false, false, CIMPropertyList(names));
    EXPECT_EQ(some.getQualifierCount(), 0u);
    ASSERT_EQ(some.getPropertyCount(), 1u);
    EXPECT_EQ(some.getProperty(0).getQualifierCount(), 0u);
    EXPECT_TRUE(some.getProperty(0).getClassOrigin().isNull());

    CIMInstance none = i.clone();
    none.filter(true, true, CIMPropertyList(Array<CIMName>()));
    EXPECT_EQ(none.getPropertyCount(), 0u);
    EXPECT_EQ(none.getQualifierCount(), 1u);
}

TEST(CIMObjectTest, ConversionsShareCheckTheKindAndWriteCimXml)
{
    CIMInstance i = MakeFoo();
    CIMObject o = i;
    EXPECT_TRUE(o.isInstance());
    EXPECT_FALSE(o.isClass());
    o.getProperty(0).setValue(CIMValue(String("changed")));
    String s;
    i.getProperty(0).getValue().get(s);
    EXPECT_EQ(s, "changed");

    CIMInstance back(o);
    EXPECT_TRUE(back.identical(i));
    EXPECT_THROW(CIMClass c(o), DynamicCastFailedException);
    EXPECT_THROW(CIMInstance x((CIMObject())), DynamicCastFailedException);
    EXPECT_THROW(CIMConstClass c((CIMConstObject(o))), DynamicCastFailedException);

    CIMObject copy = o.clone();
    EXPECT_TRUE(copy.isInstance());
    EXPECT_TRUE(CIMInstance(copy).identical(i));
    copy.removeProperty(0);
    EXPECT_EQ(i.getPropertyCount(), 3u);

    CIMObject cls = MakeFooClass();
    EXPECT_TRUE(cls.isClass());
    EXPECT_FALSE(cls.identical(o));
    EXPECT_THROW(CIMInstance x(cls), DynamicCastFailedException);

    CIMInstance text("ZAR_Foo");
    text.addProperty(CIMProperty("Name", CIMValue(String("a<b"))));
    String xml = CIMObject(text).toString();
    EXPECT_EQ(xml.find("<INSTANCE CLASSNAME=\"ZAR_Foo\""), 0u);
    EXPECT_NE(xml.find("a&lt;b"), PEG_NOT_FOUND);
    EXPECT_EQ(CIMObject(MakeFooClass()).toString().find("<CLASS NAME=\"ZAR_Foo\""), 0u);
    EXPECT_THROW(CIMObject().toString(), UninitializedObjectException);
}

}  // namespace
