#include "ParamTyping.h"

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace zarserver {

namespace {

[[noreturn]] void invalid(const String& text, CIMType type, const String& what)
{
    String msg("Value \"");
    msg.append(text);
    msg.append("\" of ");
    msg.append(what);
    msg.append(" is not a valid ");
    msg.append(cimTypeToString(type));
    msg.append(".");
    throw CIMException(CIM_ERR_INVALID_PARAMETER, msg);
}

std::string trimmed(const String& s)
{
    std::string t = (const char*)s.getCString();
    size_t b = t.find_first_not_of(" \t\r\n");
    size_t e = t.find_last_not_of(" \t\r\n");
    return b == std::string::npos ? std::string() : t.substr(b, e - b + 1);
}

template <class T>
CIMValue integer(const String& text, CIMType type, const String& what)
{
    std::string t = trimmed(text);
    if (t.empty())
        invalid(text, type, what);
    bool neg = t[0] == '-';
    size_t start = (t[0] == '-' || t[0] == '+') ? 1 : 0;
    int base = 10;
    if (t.size() > start + 2 && t[start] == '0' && (t[start + 1] == 'x' || t[start + 1] == 'X')) {
        base = 16;
        start += 2;
    }
    if (start >= t.size())
        invalid(text, type, what);
    for (size_t i = start; i < t.size(); ++i)
        if (!(base == 16 ? std::isxdigit(static_cast<unsigned char>(t[i]))
                         : std::isdigit(static_cast<unsigned char>(t[i]))))
            invalid(text, type, what);
    errno = 0;
    unsigned long long mag = std::strtoull(t.c_str() + start, nullptr, base);
    if (errno == ERANGE)
        invalid(text, type, what);
    if (std::numeric_limits<T>::is_signed) {
        unsigned long long limit = static_cast<unsigned long long>(std::numeric_limits<T>::max());
        if (mag > limit + (neg ? 1 : 0))
            invalid(text, type, what);
        long long v = neg ? -static_cast<long long>(mag - 1) - 1 : static_cast<long long>(mag);
        if (neg && mag == 0)
            v = 0;
        return CIMValue(static_cast<T>(v));
    }
    if ((neg && mag != 0) || mag > static_cast<unsigned long long>(std::numeric_limits<T>::max()))
        invalid(text, type, what);
    return CIMValue(static_cast<T>(mag));
}

// Texts of the value's elements (one for a scalar); false if the value is
// of a kind that cannot be seen as text.
bool elementTexts(const CIMValue& v, std::vector<String>& out)
{
    if (v.getType() == CIMTYPE_STRING) {
        if (v.isArray()) {
            Array<String> a;
            v.get(a);
            for (Uint32 i = 0; i < a.size(); ++i)
                out.push_back(a[i]);
        } else {
            String s;
            v.get(s);
            out.push_back(s);
        }
        return true;
    }
    if (v.getType() == CIMTYPE_REFERENCE || v.getType() == CIMTYPE_OBJECT ||
        v.getType() == CIMTYPE_INSTANCE || v.getType() == CIMTYPE_CHAR16)
        return false;
    if (v.isArray()) {
        // Numbers, booleans and datetimes print as space-separated elements.
        std::string all = (const char*)v.toString().getCString();
        size_t p = 0;
        while ((p = all.find_first_not_of(' ', p)) != std::string::npos) {
            size_t e = all.find(' ', p);
            out.push_back(String(all.substr(p, e - p).c_str()));
            p = e;
        }
        return true;
    }
    out.push_back(v.toString());
    return true;
}

template <class T>
CIMValue arrayFrom(const std::vector<CIMValue>& items)
{
    Array<T> a;
    for (const CIMValue& v : items) {
        T x;
        v.get(x);
        a.append(x);
    }
    return CIMValue(a);
}

CIMValue makeArray(CIMType type, const std::vector<CIMValue>& items)
{
    switch (type) {
        case CIMTYPE_BOOLEAN:
            return arrayFrom<Boolean>(items);
        case CIMTYPE_UINT8:
            return arrayFrom<Uint8>(items);
        case CIMTYPE_SINT8:
            return arrayFrom<Sint8>(items);
        case CIMTYPE_UINT16:
            return arrayFrom<Uint16>(items);
        case CIMTYPE_SINT16:
            return arrayFrom<Sint16>(items);
        case CIMTYPE_UINT32:
            return arrayFrom<Uint32>(items);
        case CIMTYPE_SINT32:
            return arrayFrom<Sint32>(items);
        case CIMTYPE_UINT64:
            return arrayFrom<Uint64>(items);
        case CIMTYPE_SINT64:
            return arrayFrom<Sint64>(items);
        case CIMTYPE_REAL32:
            return arrayFrom<Real32>(items);
        case CIMTYPE_REAL64:
            return arrayFrom<Real64>(items);
        case CIMTYPE_CHAR16:
            return arrayFrom<Char16>(items);
        case CIMTYPE_STRING:
            return arrayFrom<String>(items);
        case CIMTYPE_DATETIME:
            return arrayFrom<CIMDateTime>(items);
        case CIMTYPE_REFERENCE:
            return arrayFrom<CIMObjectPath>(items);
        default:
            return CIMValue(type, true);
    }
}

}  // namespace

CIMValue valueFromText(const String& text, CIMType type, const String& what)
{
    switch (type) {
        case CIMTYPE_BOOLEAN: {
            std::string t = trimmed(text);
            for (char& c : t)
                c = char(std::tolower(static_cast<unsigned char>(c)));
            if (t == "true")
                return CIMValue(Boolean(true));
            if (t == "false")
                return CIMValue(Boolean(false));
            invalid(text, type, what);
        }
        case CIMTYPE_UINT8:
            return integer<Uint8>(text, type, what);
        case CIMTYPE_SINT8:
            return integer<Sint8>(text, type, what);
        case CIMTYPE_UINT16:
            return integer<Uint16>(text, type, what);
        case CIMTYPE_SINT16:
            return integer<Sint16>(text, type, what);
        case CIMTYPE_UINT32:
            return integer<Uint32>(text, type, what);
        case CIMTYPE_SINT32:
            return integer<Sint32>(text, type, what);
        case CIMTYPE_UINT64:
            return integer<Uint64>(text, type, what);
        case CIMTYPE_SINT64:
            return integer<Sint64>(text, type, what);
        case CIMTYPE_REAL32:
        case CIMTYPE_REAL64: {
            std::string t = trimmed(text);
            char* end = nullptr;
            errno = 0;
            double d = std::strtod(t.c_str(), &end);
            if (t.empty() || *end != '\0' || errno == ERANGE)
                invalid(text, type, what);
            if (type == CIMTYPE_REAL32)
                return CIMValue(Real32(d));
            return CIMValue(Real64(d));
        }
        case CIMTYPE_CHAR16:
            if (text.size() != 1)
                invalid(text, type, what);
            return CIMValue(text[0]);
        case CIMTYPE_STRING:
            return CIMValue(text);
        case CIMTYPE_DATETIME:
            try {
                return CIMValue(CIMDateTime(text));
            } catch (const Exception&) {
                invalid(text, type, what);
            }
        case CIMTYPE_REFERENCE:
            try {
                return CIMValue(CIMObjectPath(text));
            } catch (const Exception&) {
                invalid(text, type, what);
            }
        default:
            invalid(text, type, what);
    }
}

Array<CIMParamValue> typeInParameters(const CIMConstMethod& method, const Array<CIMParamValue>& in)
{
    Array<CIMParamValue> out;
    for (Uint32 i = 0; i < in.size(); ++i) {
        const CIMParamValue& pv = in[i];
        Uint32 idx = method.isUninitialized()
                         ? PEG_NOT_FOUND
                         : method.findParameter(CIMName(pv.getParameterName()));
        if (idx == PEG_NOT_FOUND) {
            out.append(pv);
            continue;
        }
        CIMConstParameter decl = method.getParameter(idx);
        CIMType type = decl.getType();
        bool isArray = decl.isArray();
        CIMValue v = pv.getValue();
        String what("parameter ");
        what.append(decl.getName().getString());
        CIMValue typed;
        if (v.isNull()) {
            typed = CIMValue(type, isArray);
        } else if (v.getType() == type && v.isArray() == isArray) {
            typed = v;
        } else if (v.getType() == CIMTYPE_REFERENCE && type == CIMTYPE_REFERENCE && isArray &&
                   !v.isArray()) {
            CIMObjectPath p;
            v.get(p);
            Array<CIMObjectPath> a;
            a.append(p);
            typed = CIMValue(a);
        } else {
            std::vector<String> texts;
            if (!elementTexts(v, texts) || (!isArray && texts.size() != 1)) {
                String msg("Parameter ");
                msg.append(decl.getName().getString());
                msg.append(" must be ");
                msg.append(isArray ? "an array of " : "a single ");
                msg.append(cimTypeToString(type));
                msg.append(".");
                throw CIMException(CIM_ERR_INVALID_PARAMETER, msg);
            }
            if (isArray) {
                std::vector<CIMValue> items;
                for (const String& t : texts)
                    items.push_back(valueFromText(t, type, what));
                typed = makeArray(type, items);
            } else {
                typed = valueFromText(texts[0], type, what);
            }
        }
        out.append(CIMParamValue(pv.getParameterName(), typed, true));
    }
    return out;
}

}  // namespace zarserver
