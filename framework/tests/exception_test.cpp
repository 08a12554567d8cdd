// Tests of the exception classes, their messages and codes, status-code
// names and TraceableCIMException.

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Provider/ProviderException.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::str;

namespace {

// Messages that no other test sees (the others are checked where they are
// thrown).
TEST(ExceptionTest, MessagesOfThePlainExceptions)
{
    EXPECT_EQ("index out of bounds", str(IndexOutOfBoundsException().getMessage()));
    EXPECT_EQ("uninitialized object", str(UninitializedObjectException().getMessage()));
    EXPECT_EQ("type mismatch: x", str(TypeMismatchException("x").getMessage()));
    EXPECT_EQ("dynamic cast failed", str(DynamicCastFailedException().getMessage()));
    EXPECT_EQ("connection timed out", str(ConnectionTimeoutException().getMessage()));
    EXPECT_EQ("null pointer", str(NullPointer().getMessage()));
}

TEST(ExceptionTest, HierarchyDecidesWhatACatchSees)
{
    // A TypeMismatchException is not a CIMException.
    bool caughtAsCim = false;
    try {
        try {
            throw TypeMismatchException();
        } catch (CIMException&) {
            caughtAsCim = true;
        }
    } catch (Exception& e) {
        EXPECT_EQ("type mismatch", str(e.getMessage()));
    }
    EXPECT_FALSE(caughtAsCim);

    // Provider exceptions and TraceableCIMException are CIMExceptions.
    try {
        throw CIMObjectNotFoundException("gone");
    } catch (CIMOperationFailedException& e) {
        EXPECT_EQ(CIM_ERR_NOT_FOUND, e.getCode());
    }
    try {
        throw TraceableCIMException(CIM_ERR_ACCESS_DENIED, "no", __FILE__, __LINE__);
    } catch (CIMException& e) {
        EXPECT_EQ(CIM_ERR_ACCESS_DENIED, e.getCode());
    }
}

TEST(ExceptionTest, ProviderExceptionCodesAndMessages)
{
    struct Case {
        CIMException e;
        CIMStatusCode code;
    };
    const Case cases[] = {
        {CIMOperationFailedException("m1"), CIM_ERR_FAILED},
        {CIMAccessDeniedException("m2"), CIM_ERR_ACCESS_DENIED},
        {CIMInvalidParameterException("m4"), CIM_ERR_INVALID_PARAMETER},
        {CIMObjectNotFoundException("m6"), CIM_ERR_NOT_FOUND},
        {CIMNotSupportedException("m7"), CIM_ERR_NOT_SUPPORTED},
        {CIMObjectAlreadyExistsException("m11"), CIM_ERR_ALREADY_EXISTS},
        {CIMPropertyNotFoundException("m12"), CIM_ERR_NO_SUCH_PROPERTY},
        {CIMMethodNotFoundException("m17"), CIM_ERR_METHOD_NOT_FOUND},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.code, c.e.getCode());
        EXPECT_EQ("m" + std::to_string(int(c.code)), str(c.e.getMessage()));
    }
}

TEST(ExceptionTest, CIMExceptionKeepsMessageVendorCodeAndErrors)
{
    CIMException plain;
    EXPECT_EQ(CIM_ERR_SUCCESS, plain.getCode());
    EXPECT_EQ(0u, plain.getMessage().size());
    CIMException fromCode = CIM_ERR_INVALID_CLASS;  // implicit from a code
    EXPECT_EQ(CIM_ERR_INVALID_CLASS, fromCode.getCode());
    CIMException vendor((CIMStatusCode)4100, "vendor text");
    EXPECT_EQ(4100, int(vendor.getCode()));
    EXPECT_EQ("vendor text", str(vendor.getMessage()));
    CIMException copy(vendor);
    CIMException assigned;
    assigned = copy;
    EXPECT_EQ(4100, int(assigned.getCode()));
    EXPECT_EQ("vendor text", str(assigned.getMessage()));

    CIMInstance err(CIMName("CIM_Error"));
    CIMException e(CIM_ERR_FAILED, "with error", err);
    EXPECT_EQ(1u, e.getErrorCount());
    EXPECT_EQ(String("CIM_Error"), e.getError(0).getClassName().getString());
    EXPECT_THROW(e.getError(1), IndexOutOfBoundsException);
    CIMException more(e);
    more.addError(CIMInstance(CIMName("CIM_Error")));
    EXPECT_EQ(1u, e.getErrorCount());
    EXPECT_EQ(2u, more.getErrorCount());
    EXPECT_THROW(e.addError(CIMInstance()), UninitializedObjectException);
}

// The ends of the name table, its gap at 18 and 19, and past its end.
TEST(CIMStatusCodeTest, Names)
{
    EXPECT_STREQ("CIM_ERR_SUCCESS", cimStatusCodeToString(CIM_ERR_SUCCESS));
    EXPECT_STREQ("empty", cimStatusCodeToString((CIMStatusCode)18));
    EXPECT_STREQ("CIM_ERR_SERVER_IS_SHUTTING_DOWN",
                 cimStatusCodeToString(CIM_ERR_SERVER_IS_SHUTTING_DOWN));
    EXPECT_STREQ("Unrecognized CIM status code", cimStatusCodeToString((CIMStatusCode)29));
    EXPECT_EQ("Unrecognized CIM status code \"19\"",
              str(cimStatusCodeToString((CIMStatusCode)19, ContentLanguageList())));
    String m;
    cimStatusCodeToString_Thread(m, CIM_ERR_NOT_FOUND);
    EXPECT_EQ("CIM_ERR_NOT_FOUND", str(m));
}

TEST(TraceableCIMExceptionTest, MessageAndDescriptions)
{
    TraceableCIMException e(CIM_ERR_ACCESS_DENIED, "Insufficient privilege for the user",
                            "Prov.cpp", 42);
    EXPECT_EQ("Insufficient privilege for the user", str(e.getMessage()));
    EXPECT_EQ("CIM_ERR_ACCESS_DENIED: Insufficient privilege for the user",
              str(e.getDescription()));
    EXPECT_EQ("Prov.cpp(42): CIM_ERR_ACCESS_DENIED: Insufficient privilege for the user",
              str(e.getTraceDescription()));
    EXPECT_EQ("CIM_ERR_ACCESS_DENIED", str(e.getCIMMessage()));

    EXPECT_EQ("CIM_ERR_NOT_SUPPORTED",
              str(TraceableCIMException(CIMNotSupportedException("")).getDescription()));
    EXPECT_EQ("CIM_ERR_NOT_FOUND: Test CIM Object not found.",
              str(TraceableCIMException(CIMObjectNotFoundException("Test CIM Object not found."))
                      .getDescription()));
    EXPECT_EQ("Unrecognized CIM status code \"4097\": LU=x: bad\n",
              str(TraceableCIMException(CIMException((CIMStatusCode)4097, "LU=x: bad\n"))
                      .getDescription()));
    TraceableCIMException macro = PEGASUS_CIM_EXCEPTION(CIM_ERR_FAILED, "boom");
    EXPECT_EQ("boom", str(macro.getMessage()));
    EXPECT_NE(String::EMPTY, macro.getFile());
    EXPECT_GT(macro.getLine(), 0u);
}

TEST(TraceableCIMExceptionTest, FromMessageParameters)
{
    MessageLoaderParms parms("Prov.BAD", "volume $0 is busy ($1 paths, \\$2)", String("vol1"),
                             Uint32(3));
    TraceableCIMException e(CIM_ERR_FAILED, parms, "f.cpp", 7);
    EXPECT_EQ("volume vol1 is busy (3 paths, $2)", str(e.getMessage()));
    EXPECT_EQ("volume vol1 is busy (3 paths, $2)", str(MessageLoader::getMessage(parms)));
}

}  // namespace
