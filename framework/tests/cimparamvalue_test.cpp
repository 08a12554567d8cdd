// Tests of CIMParamValue: shared handle, clone, the name checks.

#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

PEGASUS_USING_PEGASUS;

namespace {

TEST(CIMParamValueTest, CopiesShareCloneDoesNot)
{
    CIMParamValue pv("LUN", CIMValue(Uint32(1)));
    CIMParamValue shared = pv;
    CIMParamValue copy = pv.clone();

    CIMValue v(Uint32(5));
    shared.setValue(v);
    String name("Lun");
    shared.setParameterName(name);
    shared.setIsTyped(false);

    Uint32 n = 0;
    pv.getValue().get(n);
    EXPECT_EQ(n, 5u);
    EXPECT_EQ(pv.getParameterName(), "Lun");
    EXPECT_FALSE(pv.isTyped());

    copy.getValue().get(n);
    EXPECT_EQ(n, 1u);
    EXPECT_EQ(copy.getParameterName(), "LUN");
    EXPECT_TRUE(copy.isTyped());
}

TEST(CIMParamValueTest, EmptyNamesAndUninitializedHandlesThrow)
{
    EXPECT_THROW(CIMParamValue(String(), CIMValue(true)), UninitializedObjectException);
    CIMParamValue pv("Out", CIMValue(true));
    String empty;
    EXPECT_THROW(pv.setParameterName(empty), UninitializedObjectException);
    EXPECT_EQ(pv.getParameterName(), "Out");

    CIMParamValue none;
    EXPECT_TRUE(none.isUninitialized());
    EXPECT_THROW(none.getValue(), UninitializedObjectException);
    EXPECT_THROW(none.clone(), UninitializedObjectException);
}

}  // namespace
