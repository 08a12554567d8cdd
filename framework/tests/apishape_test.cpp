// Compile-time checks that the value types declare what OpenPegasus declares
// and nothing that would let provider code compile here but not there.

#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Client/CIMClient.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

PEGASUS_USING_PEGASUS;

namespace {

// Detection idiom: Op<T...> is well-formed or not.
template <class, template <class...> class Op, class... Args>
struct Detect : std::false_type {
};
template <template <class...> class Op, class... Args>
struct Detect<std::void_t<Op<Args...>>, Op, Args...> : std::true_type {
};
template <template <class...> class Op, class... Args>
constexpr bool has = Detect<void, Op, Args...>::value;

template <class S>
using CStr = decltype(std::declval<S>().c_str());
template <class S>
using Empty = decltype(std::declval<S>().empty());
template <class A>
using PushBack = decltype(std::declval<A&>().push_back(0u));
template <class A>
using Begin = decltype(std::declval<A&>().begin());
template <class S, class C>
using Plus = decltype(std::declval<S>() + std::declval<C>());
template <class A, class B>
using Eq = decltype(std::declval<A>() == std::declval<B>());
template <class T, class A>
using Construct = decltype(T(std::declval<A>()));

TEST(ApiShapeTest, NoStdConveniences)
{
    EXPECT_FALSE((has<CStr, String>));
    EXPECT_FALSE((has<Empty, String>));
    EXPECT_FALSE((has<PushBack, Array<Uint32>>));
    EXPECT_FALSE((has<Begin, Array<Uint32>>));
    EXPECT_FALSE((has<Plus, String, char>));  // String + 'c' does not compile
    EXPECT_FALSE((std::is_convertible<std::string, String>::value));
    EXPECT_FALSE((std::is_convertible<String, std::string>::value));
    EXPECT_FALSE((std::is_convertible<CString, std::string>::value));
    // Only ArrayInternal.h compares arrays (arrays CIMValue can hold compare
    // through the implicit CIMValue constructor, as in OpenPegasus).
    EXPECT_FALSE((has<Eq, Array<CIMName>, Array<CIMName>>));
}

TEST(ApiShapeTest, ImplicitConversionsProvidersRelyOn)
{
    EXPECT_TRUE((std::is_convertible<const char*, String>::value));
    EXPECT_TRUE((std::is_convertible<const char*, CIMName>::value));
    EXPECT_TRUE((std::is_convertible<String, CIMName>::value));
    EXPECT_TRUE((std::is_convertible<const char*, CIMNamespaceName>::value));
    EXPECT_TRUE((std::is_convertible<String, CIMObjectPath>::value));
    EXPECT_TRUE((std::is_convertible<String, CIMDateTime>::value));
    EXPECT_TRUE((std::is_convertible<CIMStatusCode, CIMException>::value));
    EXPECT_TRUE((std::is_convertible<CString, const char*>::value));
    EXPECT_TRUE((has<Plus, const char*, String>));
    EXPECT_TRUE((has<Eq, CIMName, const char*>));
}

TEST(ApiShapeTest, CIMValueOverloadSet)
{
    // No const char* overload (a literal becomes a boolean) and no long.
    EXPECT_FALSE((has<Construct, CIMValue, long>));
    EXPECT_FALSE((has<Construct, CIMValue, unsigned long>));
    EXPECT_TRUE((has<Construct, CIMValue, int>));
    EXPECT_TRUE((has<Construct, CIMValue, Uint64>));
    EXPECT_TRUE((std::is_same<Uint64, unsigned long long>::value));
    EXPECT_TRUE((std::is_same<Sint64, long long>::value));
    EXPECT_FALSE((std::is_base_of<std::exception, Exception>::value));
    EXPECT_EQ(0xFFFFFFFFu, PEG_NOT_FOUND);
}

// Declarations whose odd shape provider code depends on: the exact type must
// match, or code that compiles here stops compiling there (or the reverse).
TEST(ApiShapeTest, ExactSignaturesOfTheOddDeclarations)
{
    // Index first, then the character.
    EXPECT_TRUE((
        std::is_same<decltype(static_cast<Uint32 (String::*)(Uint32, Char16) const>(&String::find)),
                     Uint32 (String::*)(Uint32, Char16) const>::value));
    // In place, returning nothing.
    EXPECT_TRUE((std::is_same<decltype(&String::toLower), void (String::*)()>::value));
    // Non-const references: pv.setValue(CIMValue(x)) must not compile.
    EXPECT_TRUE((std::is_same<decltype(&CIMParamValue::setValue),
                              void (CIMParamValue::*)(CIMValue&)>::value));
    EXPECT_TRUE((std::is_same<decltype(&CIMParamValue::setParameterName),
                              void (CIMParamValue::*)(String&)>::value));
    // By value and non-const.
    EXPECT_TRUE((std::is_same<decltype(&CIMKeyBinding::equal),
                              Boolean (CIMKeyBinding::*)(CIMValue)>::value));
    EXPECT_TRUE((std::is_same<decltype(&CIMQualifier::getPropagated),
                              Uint32 (CIMQualifier::*)() const>::value));
    // The const instance hands out read-only properties.
    EXPECT_TRUE((std::is_same<decltype(std::declval<const CIMInstance&>().getProperty(0u)),
                              CIMConstProperty>::value));
    EXPECT_TRUE(
        (std::is_same<decltype(std::declval<CIMInstance&>().getProperty(0u)), CIMProperty>::value));
}

TEST(ApiShapeTest, ProviderInterfacesShareOneCIMProvider)
{
    // Virtual inheritance: a class with several interfaces converts to
    // CIMProvider* unambiguously (the module factory returns new X()).
    struct Both : CIMInstanceProvider, CIMMethodProvider, CIMAssociationProvider {};
    EXPECT_TRUE((std::is_convertible<Both*, CIMProvider*>::value));
    EXPECT_TRUE((std::is_convertible<InstanceResponseHandler*, ResponseHandler*>::value));
    EXPECT_TRUE((std::is_convertible<CIMInstance, CIMObject>::value));
    EXPECT_FALSE((std::is_convertible<CIMObject, CIMInstance>::value));  // explicit
    EXPECT_TRUE((std::is_base_of<CIMException, CIMObjectNotFoundException>::value));
    EXPECT_FALSE((std::is_base_of<CIMException, TypeMismatchException>::value));
}

TEST(ApiShapeTest, ClientHeaderBringsItsPlaceholderTypes)
{
    // CIMClient.h includes CIMQualifierDecl.h and UintArgs.h; the qualifier
    // declaration is a complete, copyable type.
    EXPECT_TRUE((std::is_copy_constructible<CIMQualifierDecl>::value));
    EXPECT_TRUE((std::is_copy_assignable<CIMQualifierDecl>::value));
    EXPECT_TRUE((std::is_copy_constructible<SSLContext>::value));
    EXPECT_FALSE((std::is_copy_constructible<CIMClient>::value));
}

}  // namespace
