#include "MofValue.h"

#include <cerrno>
#include <cstdlib>
#include <limits>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/Exception.h>

#include "MofParser.h"

using namespace Pegasus;

namespace zarserver {

CIMType typeFromName(const std::string& n)
{
    static const struct {
        const char* name;
        CIMType type;
    } kTypes[] = {
        {"boolean", CIMTYPE_BOOLEAN}, {"uint8", CIMTYPE_UINT8},       {"sint8", CIMTYPE_SINT8},
        {"uint16", CIMTYPE_UINT16},   {"sint16", CIMTYPE_SINT16},     {"uint32", CIMTYPE_UINT32},
        {"sint32", CIMTYPE_SINT32},   {"uint64", CIMTYPE_UINT64},     {"sint64", CIMTYPE_SINT64},
        {"real32", CIMTYPE_REAL32},   {"real64", CIMTYPE_REAL64},     {"char16", CIMTYPE_CHAR16},
        {"string", CIMTYPE_STRING},   {"datetime", CIMTYPE_DATETIME}, {"ref", CIMTYPE_REFERENCE}};
    for (const auto& t : kTypes)
        if (equalNoCase(n, t.name))
            return t.type;
    return CIMTYPE_STRING;
}

namespace {

[[noreturn]] void fail(const mof::Literal& lit, const std::string& what, const std::string& msg)
{
    throw MofError(lit.pos, "value of " + what + ": " + msg);
}

const char* kindName(const mof::Literal& lit)
{
    switch (lit.kind) {
        case mof::Literal::BOOLEAN:
            return "a boolean";
        case mof::Literal::INTEGER:
            return "an integer";
        case mof::Literal::REAL:
            return "a real number";
        case mof::Literal::STRING:
            return "a string";
        case mof::Literal::CHAR:
            return "a char16";
        case mof::Literal::ALIAS:
            return "an alias";
        case mof::Literal::ARRAY:
            return "an array";
        default:
            return "null";
    }
}

[[noreturn]] void mismatch(const mof::Literal& lit, CIMType type, const std::string& what)
{
    fail(lit, what, std::string("expected ") + cimTypeToString(type) + ", found " + kindName(lit));
}

// Signed view of an INTEGER literal with range [lo, hi].
template <class T>
T integerValue(const mof::Literal& lit, CIMType type, const std::string& what)
{
    if (lit.kind != mof::Literal::INTEGER)
        mismatch(lit, type, what);
    unsigned long long mag = std::strtoull(lit.text.c_str(), nullptr, 10);
    bool outOfRange = false;
    if (std::numeric_limits<T>::is_signed) {
        if (lit.negative) {
            if (mag > static_cast<unsigned long long>(std::numeric_limits<T>::max()) + 1ULL)
                outOfRange = true;
        } else if (mag > static_cast<unsigned long long>(std::numeric_limits<T>::max())) {
            outOfRange = true;
        }
    } else if (lit.negative ||
               mag > static_cast<unsigned long long>(std::numeric_limits<T>::max())) {
        outOfRange = true;
    }
    if (outOfRange)
        fail(lit, what,
             std::string(lit.negative ? "-" : "") + lit.text + " is out of range for " +
                 cimTypeToString(type));
    if (lit.negative)
        return static_cast<T>(-static_cast<long long>(mag - 1) - 1);
    return static_cast<T>(mag);
}

template <class T>
T realValue(const mof::Literal& lit, CIMType type, const std::string& what)
{
    if (lit.kind == mof::Literal::INTEGER) {
        long double m = std::strtold(lit.text.c_str(), nullptr);
        return static_cast<T>(lit.negative ? -m : m);
    }
    if (lit.kind != mof::Literal::REAL)
        mismatch(lit, type, what);
    errno = 0;
    double d = std::strtod(lit.text.c_str(), nullptr);
    if (errno == ERANGE ||
        (type == CIMTYPE_REAL32 && std::abs(d) > std::numeric_limits<float>::max()))
        fail(lit, what, lit.text + " is out of range for " + cimTypeToString(type));
    return static_cast<T>(d);
}

String stringValue(const mof::Literal& lit, CIMType type, const std::string& what)
{
    if (lit.kind != mof::Literal::STRING)
        mismatch(lit, type, what);
    return String(lit.text.c_str());
}

Char16 charValue(const mof::Literal& lit, const std::string& what)
{
    if (lit.kind != mof::Literal::CHAR)
        mismatch(lit, CIMTYPE_CHAR16, what);
    String s(lit.text.c_str());
    if (s.size() != 1)
        fail(lit, what, "character outside the 16-bit range");
    return s[0];
}

CIMDateTime dateTimeValue(const mof::Literal& lit, const std::string& what)
{
    String s = stringValue(lit, CIMTYPE_DATETIME, what);
    try {
        return CIMDateTime(s);
    } catch (const Exception&) {
        fail(lit, what, "'" + lit.text + "' is not a valid datetime");
    }
}

CIMObjectPath referenceValue(const mof::Literal& lit, const AliasMap* aliases,
                             const std::string& what)
{
    if (lit.kind == mof::Literal::ALIAS) {
        if (!aliases)
            fail(lit, what, "aliases are not allowed here");
        auto it = aliases->find(lit.text);
        if (it == aliases->end())
            fail(lit, what, "alias $" + lit.text + " is not defined");
        return it->second;
    }
    String s = stringValue(lit, CIMTYPE_REFERENCE, what);
    try {
        return CIMObjectPath(s);
    } catch (const Exception&) {
        fail(lit, what, "'" + lit.text + "' is not a valid object path");
    }
}

bool booleanValue(const mof::Literal& lit, const std::string& what)
{
    if (lit.kind != mof::Literal::BOOLEAN)
        mismatch(lit, CIMTYPE_BOOLEAN, what);
    return lit.boolean;
}

template <class T, class F>
CIMValue arrayOf(const mof::Literal& lit, F convert)
{
    Array<T> a;
    for (const mof::Literal& item : lit.items)
        a.append(convert(item));
    return CIMValue(a);
}

}  // namespace

CIMValue literalToValue(const mof::Literal& lit, CIMType type, bool isArray,
                        const AliasMap* aliases, const std::string& what)
{
    if (lit.kind == mof::Literal::NONE || lit.kind == mof::Literal::NULLVALUE)
        return CIMValue(type, isArray);
    if (isArray != (lit.kind == mof::Literal::ARRAY))
        fail(lit, what,
             isArray ? "expected an array value {...}" : "an array value is not allowed");
    for (const mof::Literal& item : lit.items)
        if (item.kind == mof::Literal::NULLVALUE)
            fail(item, what, "array elements may not be NULL");
    switch (type) {
        case CIMTYPE_BOOLEAN:
            if (isArray)
                return arrayOf<Boolean>(
                    lit, [&](const mof::Literal& l) { return booleanValue(l, what); });
            return CIMValue(Boolean(booleanValue(lit, what)));
#define ZAR_INT_CASE(TAG, T)                                                                 \
    case TAG:                                                                                \
        if (isArray)                                                                         \
            return arrayOf<T>(                                                               \
                lit, [&](const mof::Literal& l) { return integerValue<T>(l, type, what); }); \
        return CIMValue(integerValue<T>(lit, type, what));
            ZAR_INT_CASE(CIMTYPE_UINT8, Uint8)
            ZAR_INT_CASE(CIMTYPE_SINT8, Sint8)
            ZAR_INT_CASE(CIMTYPE_UINT16, Uint16)
            ZAR_INT_CASE(CIMTYPE_SINT16, Sint16)
            ZAR_INT_CASE(CIMTYPE_UINT32, Uint32)
            ZAR_INT_CASE(CIMTYPE_SINT32, Sint32)
            ZAR_INT_CASE(CIMTYPE_UINT64, Uint64)
            ZAR_INT_CASE(CIMTYPE_SINT64, Sint64)
#undef ZAR_INT_CASE
        case CIMTYPE_REAL32:
            if (isArray)
                return arrayOf<Real32>(
                    lit, [&](const mof::Literal& l) { return realValue<Real32>(l, type, what); });
            return CIMValue(realValue<Real32>(lit, type, what));
        case CIMTYPE_REAL64:
            if (isArray)
                return arrayOf<Real64>(
                    lit, [&](const mof::Literal& l) { return realValue<Real64>(l, type, what); });
            return CIMValue(realValue<Real64>(lit, type, what));
        case CIMTYPE_CHAR16:
            if (isArray)
                return arrayOf<Char16>(lit,
                                       [&](const mof::Literal& l) { return charValue(l, what); });
            return CIMValue(charValue(lit, what));
        case CIMTYPE_STRING:
            if (isArray)
                return arrayOf<String>(
                    lit, [&](const mof::Literal& l) { return stringValue(l, type, what); });
            return CIMValue(stringValue(lit, type, what));
        case CIMTYPE_DATETIME:
            if (isArray)
                return arrayOf<CIMDateTime>(
                    lit, [&](const mof::Literal& l) { return dateTimeValue(l, what); });
            return CIMValue(dateTimeValue(lit, what));
        case CIMTYPE_REFERENCE:
            if (isArray)
                return arrayOf<CIMObjectPath>(
                    lit, [&](const mof::Literal& l) { return referenceValue(l, aliases, what); });
            return CIMValue(referenceValue(lit, aliases, what));
        default:
            fail(lit, what,
                 std::string("values of type ") + cimTypeToString(type) +
                     " cannot be written in MOF");
    }
}

}  // namespace zarserver
