// Tests of the typed readers and writers of ZAR_Common.
#include <ZAR_Common.h>

#include "CommonTestSupport.h"

using namespace Pegasus;
using namespace zartest;

namespace {

class AccessorsTest : public FreshArray {
protected:
    // A class with a property of each kind the readers and writers handle.
    static CIMClass testClass()
    {
        CIMClass c("ZAR_Thing");
        c.addProperty(CIMProperty("Name", CIMValue(CIMTYPE_STRING, false))
                          .addQualifier(CIMQualifier("Key", CIMValue(true))));
        c.addProperty(CIMProperty("Count", CIMValue(Uint32(3))));
        c.addProperty(CIMProperty("Size", CIMValue(CIMTYPE_UINT64, false)));
        c.addProperty(CIMProperty("Flag", CIMValue(CIMTYPE_BOOLEAN, false)));
        c.addProperty(CIMProperty("Ids", CIMValue(CIMTYPE_UINT16, true)));
        c.addProperty(CIMProperty("Names", CIMValue(CIMTYPE_STRING, true)));
        c.addProperty(
            CIMProperty("Other", CIMValue(CIMTYPE_REFERENCE, false), 0, CIMName("ZAR_Thing")));
        c.addProperty(CIMProperty("Nested", CIMValue(CIMTYPE_STRING, false)));
        return c;
    }
    CIMInstance skeleton()
    {
        CIMClass c = testClass();
        return ZAR_Common::buildInstanceSkeleton(c);
    }
};

TEST_F(AccessorsTest, SkeletonCarriesEveryPropertyWithItsDefault)
{
    CIMInstance i = skeleton();
    EXPECT_EQ(8u, i.getPropertyCount());
    Uint32 count = 0;
    EXPECT_EQ(0, ZAR_Common::getProperty(i, "Count", count));
    EXPECT_EQ(3u, count);
    // Qualifiers come along (the key qualifier of Name).
    Uint32 pos = i.findProperty("Name");
    ASSERT_NE(PEG_NOT_FOUND, pos);
    EXPECT_NE(PEG_NOT_FOUND, i.getProperty(pos).findQualifier("Key"));
}

TEST_F(AccessorsTest, GetPropertyReportsFoundAbsentAndNull)
{
    CIMInstance i = skeleton();
    ZAR_Common::setPropertyValue(i, "Size", Uint64(77));
    CIMObjectPath other("root/zar:ZAR_Thing.Name=\"b\"");
    ZAR_Common::setPropertyValue(i, "Other", other);
    Array<String> names;
    names.append("first");
    ZAR_Common::setPropertyValue(i, "Names", names);

    // One trace representative: entry and exit of a reader.
    LogCapture log;
    Uint64 size = 5;
    EXPECT_EQ(ZAR_Common::ACCESSOR_FOUND, ZAR_Common::getProperty(i, "size", size));
    EXPECT_EQ(77u, size);
    EXPECT_TRUE(log.has("-->ZAR_Common::getProperty(uint64), propertyName = size\n"));
    EXPECT_TRUE(log.has("<--ZAR_Common::getProperty(uint64), value = 77\n"));

    Boolean flag = true;
    EXPECT_EQ(ZAR_Common::ACCESSOR_NULL, ZAR_Common::getProperty(i, "Flag", flag));
    EXPECT_TRUE(flag) << "a null value leaves the output as the caller set it";
    Uint16 missing = 9;
    EXPECT_EQ(ZAR_Common::ACCESSOR_ABSENT, ZAR_Common::getProperty(i, "Nope", missing));
    EXPECT_EQ(9, missing);
    CIMObjectPath got;
    EXPECT_EQ(0, ZAR_Common::getProperty(i, "Other", got));
    EXPECT_TRUE(got == other);
    Array<String> gotNames;
    EXPECT_EQ(0, ZAR_Common::getProperty(i, "Names", gotNames));
    EXPECT_EQ(1u, gotNames.size());
    Uint64 wide = 0;
    EXPECT_THROW(ZAR_Common::getProperty(i, "Count", wide), TypeMismatchException);
}

TEST_F(AccessorsTest, StringReadersOfInstancesAndPaths)
{
    CIMInstance i = skeleton();
    ZAR_Common::setPropertyValue(i, "Name", String("alpha"));
    LogCapture log;
    EXPECT_EQ("alpha", text(ZAR_Common::getStringProperty(i, "name")));
    EXPECT_EQ("", text(ZAR_Common::getStringProperty(i, "Nested")));  // null
    EXPECT_EQ("", text(ZAR_Common::getStringProperty(i, "Missing")));
    EXPECT_EQ("", text(ZAR_Common::getStringProperty(i, "")));
    EXPECT_TRUE(log.has("\tInvalid property name.\n"));
    EXPECT_EQ("", text(ZAR_Common::getStringProperty(CIMInstance(), "Name")));
    EXPECT_THROW(ZAR_Common::getStringProperty(i, "Count"), TypeMismatchException);

    CIMObjectPath p("root/zar:ZAR_Thing.DeviceID=\"HS:1\",Name=\"n\"");
    EXPECT_EQ("HS:1", text(ZAR_Common::getStringProperty(p, "deviceid")));
    EXPECT_EQ("", text(ZAR_Common::getStringProperty(p, "Absent")));
}

TEST_F(AccessorsTest, GetPropertyValueDistinguishesEmptyNameFromUnknownName)
{
    CIMInstance i = skeleton();
    CIMValue empty = ZAR_Common::getPropertyValue(i, "");
    EXPECT_FALSE(empty.isNull());
    EXPECT_EQ(CIMTYPE_STRING, empty.getType());
    EXPECT_TRUE(ZAR_Common::getPropertyValue(i, "Unknown").isNull());
    CIMValue count = ZAR_Common::getPropertyValue(i, "Count");
    EXPECT_EQ(CIMTYPE_UINT32, count.getType());
}

TEST_F(AccessorsTest, GetParameterTreatsNullLikeAbsentAndIgnoresCase)
{
    Array<String> ids;
    ids.append("2100001B32000001");
    Array<CIMParamValue> in;
    in.append(CIMParamValue("DeviceNumbers", CIMValue(CIMTYPE_UINT16, false)));
    in.append(CIMParamValue("DeviceNumbers", CIMValue(Uint16(12))));
    in.append(CIMParamValue("OnlyNull", CIMValue(CIMTYPE_STRING, false)));
    in.append(CIMParamValue("InitiatorPortIDs", CIMValue(ids)));

    LogCapture log;
    Uint16 n = 0;
    EXPECT_EQ(0, ZAR_Common::getParameter(in, "devicenumbers", n));
    EXPECT_EQ(12, n);
    EXPECT_TRUE(log.has("-->ZAR_Common::getParameter(Uint16), paramName = devicenumbers\n"));
    EXPECT_TRUE(log.has("<--ZAR_Common::getParameter(Uint16), paramValue = 12\n"));

    String s("kept");
    EXPECT_EQ(3, ZAR_Common::getParameter(in, "OnlyNull", s));
    EXPECT_EQ("kept", text(s));
    EXPECT_EQ(3, ZAR_Common::getParameter(in, "Absent", s));
    Array<String> got;
    EXPECT_EQ(0, ZAR_Common::getParameter(in, "InitiatorPortIDs", got));
    EXPECT_EQ(1u, got.size());

    Uint32 wrong = 0;
    EXPECT_THROW(ZAR_Common::getParameter(in, "DeviceNumbers", wrong), TypeMismatchException);
}

TEST_F(AccessorsTest, WritersSkipMissingPropertiesAndKeepTypes)
{
    CIMInstance i = skeleton();
    ZAR_Common::setPropertyValue(i, "NotInClass", String("x"));
    EXPECT_EQ(8u, i.getPropertyCount());
    EXPECT_EQ(PEG_NOT_FOUND, i.findProperty("NotInClass"));

    // A value of another type than the class declares is refused, not
    // silently converted.
    EXPECT_THROW(ZAR_Common::setPropertyValue(i, "Count", Uint16(1)), TypeMismatchException);

    ZAR_Common::setPropertyValue(i, "Count", Uint32(8));
    ZAR_Common::setPropertyValueToNull(i, "Count", CIMTYPE_UINT32);
    EXPECT_TRUE(ZAR_Common::getPropertyValue(i, "Count").isNull());
    ZAR_Common::setPropertyValueToNull(i, "Absent", CIMTYPE_UINT32);
    EXPECT_EQ(8u, i.getPropertyCount());
}

TEST_F(AccessorsTest, EmbeddedInstanceReplacesThePropertyAtTheEnd)
{
    CIMInstance i = skeleton();
    CIMInstance inner("ZAR_Inner");
    inner.addProperty(CIMProperty("V", CIMValue(Uint32(1))));
    ZAR_Common::setPropertyValue(i, "Nested", inner);
    Uint32 pos = i.findProperty("Nested");
    ASSERT_EQ(i.getPropertyCount() - 1, pos);
    EXPECT_EQ(CIMTYPE_INSTANCE, i.getProperty(pos).getType());
    ZAR_Common::setPropertyValue(i, "Missing", inner);
    EXPECT_EQ(8u, i.getPropertyCount());
}

}  // namespace
