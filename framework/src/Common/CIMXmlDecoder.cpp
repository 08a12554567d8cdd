// The decoding half of the CIM-XML codec: element tree to object model.
#include <zarframework/CIMXmlCodec.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMParameter.h>
#include <Pegasus/Common/CIMProperty.h>

PEGASUS_NAMESPACE_BEGIN
namespace CIMXml {

namespace {

[[noreturn]] void invalid(const std::string& why)
{
    throw CIMXmlFormatException(CIMXmlFormatException::NOT_VALID, String(why.c_str()));
}

[[noreturn]] void badValue(const std::string& why)
{
    throw CIMXmlFormatException(CIMXmlFormatException::BAD_VALUE, String(why.c_str()));
}

String str(const std::string& s)
{
    return String(s.c_str(), Uint32(s.size()));
}

// Converts object-model exceptions (bad names, bad paths...) met while
// building objects into decode errors.
template <class F>
auto guarded(const char* what, F f) -> decltype(f())
{
    try {
        return f();
    } catch (CIMXmlFormatException&) {
        throw;
    } catch (Exception& e) {
        CString m = e.getMessage().getCString();
        badValue(std::string(what) + ": " + (const char*)m);
    }
}

CIMName name(const XmlElement& e, const char* attr)
{
    const std::string& n = e.requiredAttribute(attr);
    return guarded("invalid name", [&] { return CIMName(str(n)); });
}

CIMName optName(const XmlElement& e, const char* attr)
{
    const std::string* n = e.attribute(attr);
    if (!n || n->empty())
        return CIMName();
    return guarded("invalid name", [&] { return CIMName(str(*n)); });
}

bool boolAttr(const XmlElement& e, const char* attr, bool dflt)
{
    const std::string* v = e.attribute(attr);
    if (!v)
        return dflt;
    if (strcasecmp(v->c_str(), "true") == 0)
        return true;
    if (strcasecmp(v->c_str(), "false") == 0)
        return false;
    invalid("attribute " + std::string(attr) + " of " + e.name + " is not true or false");
}

Uint32 arraySizeAttr(const XmlElement& e)
{
    const std::string* v = e.attribute("ARRAYSIZE");
    if (!v || v->empty())
        return 0;
    char* end = 0;
    errno = 0;
    unsigned long n = std::strtoul(v->c_str(), &end, 10);
    if (*end || errno || n > 0xFFFFFFFFul)
        invalid("bad ARRAYSIZE on " + e.name);
    return Uint32(n);
}

bool isEmbedded(const XmlElement& e)
{
    const std::string* v = e.attribute("EmbeddedObject");
    if (!v)
        v = e.attribute("EMBEDDEDOBJECT");
    return v && (*v == "object" || *v == "instance");
}

CIMType embeddedType(const XmlElement& e)
{
    const std::string* v = e.attribute("EmbeddedObject");
    if (!v)
        v = e.attribute("EMBEDDEDOBJECT");
    return (v && *v == "instance") ? CIMTYPE_INSTANCE : CIMTYPE_OBJECT;
}

bool parseSigned(const std::string& t, long long lo, long long hi, long long& out)
{
    const char* s = t.c_str();
    while (*s == ' ' || *s == '\t' || *s == '\n' || *s == '\r')
        s++;
    if (!*s)
        return false;
    char* end = 0;
    errno = 0;
    bool neg = *s == '-';
    const char* digits = (*s == '-' || *s == '+') ? s + 1 : s;
    long long v;
    if (digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        if (!digits[2])
            return false;
        unsigned long long u = std::strtoull(digits + 2, &end, 16);
        if (errno || u > (unsigned long long)LLONG_MAX + (neg ? 1 : 0))
            return false;
        v = neg ? (long long)(0 - u) : (long long)u;
    } else {
        if (!(*digits >= '0' && *digits <= '9'))
            return false;
        v = std::strtoll(s, &end, 10);
        if (errno)
            return false;
    }
    while (*end == ' ' || *end == '\t' || *end == '\n' || *end == '\r')
        end++;
    if (*end || v < lo || v > hi)
        return false;
    out = v;
    return true;
}

bool parseUnsigned(const std::string& t, unsigned long long hi, unsigned long long& out)
{
    const char* s = t.c_str();
    while (*s == ' ' || *s == '\t' || *s == '\n' || *s == '\r')
        s++;
    if (*s == '+')
        s++;
    if (!(*s >= '0' && *s <= '9'))
        return false;
    char* end = 0;
    errno = 0;
    unsigned long long v;
    if (s[0] == '0' && (s[1] == 'x' || s[1] == 'X')) {
        if (!s[2])
            return false;
        v = std::strtoull(s + 2, &end, 16);
    } else {
        v = std::strtoull(s, &end, 10);
    }
    if (errno)
        return false;
    while (*end == ' ' || *end == '\t' || *end == '\n' || *end == '\r')
        end++;
    if (*end || v > hi)
        return false;
    out = v;
    return true;
}

// A key binding from a KEYVALUE's text and VALUETYPE.
CIMKeyBinding keyFromKeyValue(const CIMName& keyName, const XmlElement& kv)
{
    const std::string* vt = kv.attribute("VALUETYPE");
    CIMKeyBinding::Type type = CIMKeyBinding::STRING;
    std::string text = kv.text;
    if (vt && *vt == "boolean") {
        type = CIMKeyBinding::BOOLEAN;
        if (strcasecmp(text.c_str(), "true") == 0)
            text = "TRUE";
        else if (strcasecmp(text.c_str(), "false") == 0)
            text = "FALSE";
        else
            badValue("boolean key " + std::string((const char*)keyName.getString().getCString()) +
                     " is neither true nor false: " + text);
    } else if (vt && *vt == "numeric") {
        type = CIMKeyBinding::NUMERIC;
    } else if (vt && *vt != "string") {
        invalid("unknown VALUETYPE " + *vt);
    }
    return CIMKeyBinding(keyName, str(text), type);
}

}  // namespace

CIMType typeFromName(const std::string& n)
{
    static const struct {
        const char* name;
        CIMType type;
    } table[] = {{"boolean", CIMTYPE_BOOLEAN},     {"uint8", CIMTYPE_UINT8},
                 {"sint8", CIMTYPE_SINT8},         {"uint16", CIMTYPE_UINT16},
                 {"sint16", CIMTYPE_SINT16},       {"uint32", CIMTYPE_UINT32},
                 {"sint32", CIMTYPE_SINT32},       {"uint64", CIMTYPE_UINT64},
                 {"sint64", CIMTYPE_SINT64},       {"real32", CIMTYPE_REAL32},
                 {"real64", CIMTYPE_REAL64},       {"char16", CIMTYPE_CHAR16},
                 {"string", CIMTYPE_STRING},       {"datetime", CIMTYPE_DATETIME},
                 {"reference", CIMTYPE_REFERENCE}, {"object", CIMTYPE_OBJECT},
                 {"instance", CIMTYPE_INSTANCE}};
    for (const auto& t : table)
        if (n == t.name)
            return t.type;
    invalid("unknown CIM type " + n);
}

CIMValue scalarFromText(const std::string& text, CIMType type)
{
    long long s = 0;
    unsigned long long u = 0;
    switch (type) {
        case CIMTYPE_BOOLEAN: {
            std::string t = text;
            size_t b = t.find_first_not_of(" \t\r\n");
            size_t e = t.find_last_not_of(" \t\r\n");
            t = b == std::string::npos ? std::string() : t.substr(b, e - b + 1);
            if (strcasecmp(t.c_str(), "true") == 0)
                return CIMValue(Boolean(true));
            if (strcasecmp(t.c_str(), "false") == 0)
                return CIMValue(Boolean(false));
            badValue("not a boolean: " + text);
        }
        case CIMTYPE_UINT8:
            if (!parseUnsigned(text, 0xFF, u))
                badValue("not a uint8: " + text);
            return CIMValue(Uint8(u));
        case CIMTYPE_UINT16:
            if (!parseUnsigned(text, 0xFFFF, u))
                badValue("not a uint16: " + text);
            return CIMValue(Uint16(u));
        case CIMTYPE_UINT32:
            if (!parseUnsigned(text, 0xFFFFFFFFull, u))
                badValue("not a uint32: " + text);
            return CIMValue(Uint32(u));
        case CIMTYPE_UINT64:
            if (!parseUnsigned(text, ~0ull, u))
                badValue("not a uint64: " + text);
            return CIMValue(Uint64(u));
        case CIMTYPE_SINT8:
            if (!parseSigned(text, -128, 127, s))
                badValue("not a sint8: " + text);
            return CIMValue(Sint8(s));
        case CIMTYPE_SINT16:
            if (!parseSigned(text, -32768, 32767, s))
                badValue("not a sint16: " + text);
            return CIMValue(Sint16(s));
        case CIMTYPE_SINT32:
            if (!parseSigned(text, INT_MIN, INT_MAX, s))
                badValue("not a sint32: " + text);
            return CIMValue(Sint32(s));
        case CIMTYPE_SINT64:
            if (!parseSigned(text, LLONG_MIN, LLONG_MAX, s))
                badValue("not a sint64: " + text);
            return CIMValue(Sint64(s));
        case CIMTYPE_REAL32:
        case CIMTYPE_REAL64: {
            char* end = 0;
            errno = 0;
            const char* p = text.c_str();
            double d = std::strtod(p, &end);
            while (*end == ' ' || *end == '\t' || *end == '\n' || *end == '\r')
                end++;
            if (end == p || *end)
                badValue("not a real number: " + text);
            if (type == CIMTYPE_REAL32)
                return CIMValue(Real32(d));
            return CIMValue(Real64(d));
        }
        case CIMTYPE_CHAR16: {
            String s16 = guarded("invalid char16", [&] { return str(text); });
            if (s16.size() != 1)
                badValue("not a single char16: " + text);
            return CIMValue(s16[0]);
        }
        case CIMTYPE_STRING:
            return CIMValue(str(text));
        case CIMTYPE_DATETIME:
            return guarded("invalid datetime", [&] { return CIMValue(CIMDateTime(str(text))); });
        case CIMTYPE_REFERENCE:
            return guarded("invalid reference", [&] { return CIMValue(CIMObjectPath(str(text))); });
        case CIMTYPE_OBJECT:
        case CIMTYPE_INSTANCE: {
            XmlElement doc = parseDocument(text.data(), text.size());
            if (type == CIMTYPE_INSTANCE)
                return guarded("invalid embedded instance",
                               [&] { return CIMValue(decodeInstance(doc)); });
            return guarded("invalid embedded object", [&] { return CIMValue(decodeObject(doc)); });
        }
    }
    invalid("unsupported type");
}

namespace {

template <class T>
CIMValue arrayOf(const XmlElement& arr, CIMType type)
{
    Array<T> a;
    for (size_t i = 0; i < arr.children.size(); i++) {
        const XmlElement& c = arr.children[i];
        if (c.name == "VALUE") {
            T x;
            scalarFromText(c.text, type).get(x);
            a.append(x);
        } else if (c.name == "VALUE.NULL") {
            badValue("null elements are not supported in arrays of this type");
        } else {
            invalid("unexpected " + c.name + " in VALUE.ARRAY");
        }
    }
    return CIMValue(a);
}

CIMValue arrayValue(const XmlElement& arr, CIMType type)
{
    switch (type) {
        case CIMTYPE_BOOLEAN:
            return arrayOf<Boolean>(arr, type);
        case CIMTYPE_UINT8:
            return arrayOf<Uint8>(arr, type);
        case CIMTYPE_SINT8:
            return arrayOf<Sint8>(arr, type);
        case CIMTYPE_UINT16:
            return arrayOf<Uint16>(arr, type);
        case CIMTYPE_SINT16:
            return arrayOf<Sint16>(arr, type);
        case CIMTYPE_UINT32:
            return arrayOf<Uint32>(arr, type);
        case CIMTYPE_SINT32:
            return arrayOf<Sint32>(arr, type);
        case CIMTYPE_UINT64:
            return arrayOf<Uint64>(arr, type);
        case CIMTYPE_SINT64:
            return arrayOf<Sint64>(arr, type);
        case CIMTYPE_REAL32:
            return arrayOf<Real32>(arr, type);
        case CIMTYPE_REAL64:
            return arrayOf<Real64>(arr, type);
        case CIMTYPE_CHAR16:
            return arrayOf<Char16>(arr, type);
        case CIMTYPE_STRING:
            return arrayOf<String>(arr, type);
        case CIMTYPE_DATETIME:
            return arrayOf<CIMDateTime>(arr, type);
        case CIMTYPE_OBJECT:
            return arrayOf<CIMObject>(arr, type);
        case CIMTYPE_INSTANCE:
            return arrayOf<CIMInstance>(arr, type);
        default:
            break;
    }
    invalid("VALUE.ARRAY for a reference type");
}

}  // namespace

CIMValue decodeValue(const XmlElement& e, CIMType type, const XmlLimits&, bool embedded)
{
    if (embedded && type == CIMTYPE_STRING)
        type = CIMTYPE_OBJECT;
    if (e.name == "VALUE")
        return scalarFromText(e.text, type);
    if (e.name == "VALUE.NULL")
        return CIMValue(type, false);
    if (e.name == "VALUE.ARRAY")
        return arrayValue(e, type);
    if (e.name == "VALUE.REFERENCE")
        return CIMValue(decodeObjectPath(e));
    if (e.name == "VALUE.REFARRAY") {
        Array<CIMObjectPath> a;
        for (size_t i = 0; i < e.children.size(); i++) {
            if (e.children[i].name != "VALUE.REFERENCE")
                invalid("unexpected " + e.children[i].name + " in VALUE.REFARRAY");
            a.append(decodeObjectPath(e.children[i]));
        }
        return CIMValue(a);
    }
    invalid("unexpected " + e.name + " where a value was expected");
}

CIMNamespaceName decodeLocalNamespacePath(const XmlElement& e)
{
    if (e.name != "LOCALNAMESPACEPATH")
        invalid("expected LOCALNAMESPACEPATH, found " + e.name);
    std::string ns;
    for (size_t i = 0; i < e.children.size(); i++) {
        if (e.children[i].name != "NAMESPACE")
            invalid("unexpected " + e.children[i].name + " in LOCALNAMESPACEPATH");
        if (!ns.empty())
            ns += '/';
        ns += e.children[i].requiredAttribute("NAME");
    }
    if (ns.empty())
        invalid("empty LOCALNAMESPACEPATH");
    return guarded("invalid namespace", [&] { return CIMNamespaceName(str(ns)); });
}

void decodeNamespacePath(const XmlElement& e, String& host, CIMNamespaceName& ns)
{
    if (e.name != "NAMESPACEPATH")
        invalid("expected NAMESPACEPATH, found " + e.name);
    host = str(e.requiredChild("HOST").text);
    ns = decodeLocalNamespacePath(e.requiredChild("LOCALNAMESPACEPATH"));
}

CIMName decodeClassName(const XmlElement& e)
{
    if (e.name != "CLASSNAME")
        invalid("expected CLASSNAME, found " + e.name);
    return name(e, "NAME");
}

CIMObjectPath decodeInstanceName(const XmlElement& e)
{
    if (e.name != "INSTANCENAME")
        invalid("expected INSTANCENAME, found " + e.name);
    CIMName cls = name(e, "CLASSNAME");
    Array<CIMKeyBinding> keys;
    for (size_t i = 0; i < e.children.size(); i++) {
        const XmlElement& kb = e.children[i];
        if (kb.name != "KEYBINDING")
            invalid("unexpected " + kb.name + " in INSTANCENAME");
        CIMName keyName = name(kb, "NAME");
        if (kb.children.size() != 1)
            invalid("KEYBINDING needs one KEYVALUE or VALUE.REFERENCE");
        const XmlElement& v = kb.children[0];
        if (v.name == "KEYVALUE")
            keys.append(keyFromKeyValue(keyName, v));
        else if (v.name == "VALUE.REFERENCE") {
            CIMObjectPath ref = decodeObjectPath(v);
            keys.append(guarded("invalid reference key",
                                [&] { return CIMKeyBinding(keyName, CIMValue(ref)); }));
        } else
            invalid("unexpected " + v.name + " in KEYBINDING");
    }
    return guarded("invalid instance name",
                   [&] { return CIMObjectPath(String(), CIMNamespaceName(), cls, keys); });
}

CIMObjectPath decodeObjectPath(const XmlElement& e)
{
    if (e.name == "VALUE.REFERENCE" || e.name == "OBJECTPATH") {
        if (e.children.size() != 1)
            invalid(e.name + " needs exactly one path");
        return decodeObjectPath(e.children[0]);
    }
    if (e.name == "INSTANCENAME")
        return decodeInstanceName(e);
    if (e.name == "CLASSNAME")
        return guarded("invalid class path", [&] {
            return CIMObjectPath(String(), CIMNamespaceName(), decodeClassName(e));
        });
    if (e.name == "INSTANCEPATH" || e.name == "CLASSPATH") {
        String host;
        CIMNamespaceName ns;
        decodeNamespacePath(e.requiredChild("NAMESPACEPATH"), host, ns);
        CIMObjectPath p = e.name == "INSTANCEPATH"
                              ? decodeInstanceName(e.requiredChild("INSTANCENAME"))
                              : CIMObjectPath(String(), CIMNamespaceName(),
                                              decodeClassName(e.requiredChild("CLASSNAME")));
        guarded("invalid host", [&] {
            p.setHost(host);
            return 0;
        });
        p.setNameSpace(ns);
        return p;
    }
    if (e.name == "LOCALINSTANCEPATH" || e.name == "LOCALCLASSPATH") {
        CIMNamespaceName ns = decodeLocalNamespacePath(e.requiredChild("LOCALNAMESPACEPATH"));
        CIMObjectPath p = e.name == "LOCALINSTANCEPATH"
                              ? decodeInstanceName(e.requiredChild("INSTANCENAME"))
                              : CIMObjectPath(String(), CIMNamespaceName(),
                                              decodeClassName(e.requiredChild("CLASSNAME")));
        p.setNameSpace(ns);
        return p;
    }
    invalid("unexpected " + e.name + " where an object path was expected");
}

CIMQualifier decodeQualifier(const XmlElement& e)
{
    if (e.name != "QUALIFIER")
        invalid("expected QUALIFIER, found " + e.name);
    CIMName qn = name(e, "NAME");
    CIMType type = typeFromName(e.requiredAttribute("TYPE"));
    CIMValue v(type, false);
    for (size_t i = 0; i < e.children.size(); i++) {
        const XmlElement& c = e.children[i];
        if (c.name == "VALUE" || c.name == "VALUE.ARRAY")
            v = decodeValue(c, type);
        else
            invalid("unexpected " + c.name + " in QUALIFIER");
    }
    CIMFlavor f;
    f.addFlavor(boolAttr(e, "OVERRIDABLE", true) ? CIMFlavor::OVERRIDABLE
                                                 : CIMFlavor::DISABLEOVERRIDE);
    f.addFlavor(boolAttr(e, "TOSUBCLASS", true) ? CIMFlavor::TOSUBCLASS : CIMFlavor::RESTRICTED);
    if (boolAttr(e, "TRANSLATABLE", false))
        f.addFlavor(CIMFlavor::TRANSLATABLE);
    bool propagated = boolAttr(e, "PROPAGATED", false);
    return guarded("invalid qualifier", [&] { return CIMQualifier(qn, v, f, propagated); });
}

CIMProperty decodeProperty(const XmlElement& e, const XmlLimits& limits)
{
    CIMName pn = name(e, "NAME");
    CIMName origin = optName(e, "CLASSORIGIN");
    bool propagated = boolAttr(e, "PROPAGATED", false);
    CIMValue value;
    CIMName refClass;
    Uint32 arraySize = 0;
    std::vector<const XmlElement*> quals;
    if (e.name == "PROPERTY.REFERENCE") {
        refClass = optName(e, "REFERENCECLASS");
        value = CIMValue(CIMTYPE_REFERENCE, false);
        for (size_t i = 0; i < e.children.size(); i++) {
            const XmlElement& c = e.children[i];
            if (c.name == "QUALIFIER")
                quals.push_back(&c);
            else if (c.name == "VALUE.REFERENCE")
                value = CIMValue(decodeObjectPath(c));
            else
                invalid("unexpected " + c.name + " in PROPERTY.REFERENCE");
        }
    } else if (e.name == "PROPERTY" || e.name == "PROPERTY.ARRAY") {
        bool isArray = e.name == "PROPERTY.ARRAY";
        const std::string* tn = e.attribute("TYPE");
        CIMType type = tn ? typeFromName(*tn) : CIMTYPE_STRING;
        if (isEmbedded(e) && type == CIMTYPE_STRING)
            type = embeddedType(e);
        arraySize = isArray ? arraySizeAttr(e) : 0;
        value = CIMValue(type, isArray, arraySize);
        for (size_t i = 0; i < e.children.size(); i++) {
            const XmlElement& c = e.children[i];
            if (c.name == "QUALIFIER")
                quals.push_back(&c);
            else if (!isArray && c.name == "VALUE")
                value = decodeValue(c, type, limits);
            else if (isArray && (c.name == "VALUE.ARRAY"))
                value = decodeValue(c, type, limits);
            else
                invalid("unexpected " + c.name + " in " + e.name);
        }
        if (isArray && arraySize && !value.isNull() && value.getArraySize() != arraySize)
            badValue("array of property " + e.requiredAttribute("NAME") +
                     " does not have ARRAYSIZE elements");
    } else {
        invalid("expected a property, found " + e.name);
    }
    return guarded("invalid property", [&] {
        CIMProperty p(pn, value, arraySize, refClass, origin, propagated);
        for (const XmlElement* q : quals)
            p.addQualifier(decodeQualifier(*q));
        return p;
    });
}

CIMMethod decodeMethod(const XmlElement& e)
{
    if (e.name != "METHOD")
        invalid("expected METHOD, found " + e.name);
    CIMName mn = name(e, "NAME");
    const std::string* tn = e.attribute("TYPE");
    CIMType rt = tn ? typeFromName(*tn) : CIMTYPE_UINT32;
    return guarded("invalid method", [&] {
        CIMMethod m(mn, rt, optName(e, "CLASSORIGIN"), boolAttr(e, "PROPAGATED", false));
        for (size_t i = 0; i < e.children.size(); i++) {
            const XmlElement& c = e.children[i];
            if (c.name == "QUALIFIER") {
                m.addQualifier(decodeQualifier(c));
                continue;
            }
            CIMParameter p;
            if (c.name == "PARAMETER")
                p = CIMParameter(name(c, "NAME"), typeFromName(c.requiredAttribute("TYPE")));
            else if (c.name == "PARAMETER.ARRAY")
                p = CIMParameter(name(c, "NAME"), typeFromName(c.requiredAttribute("TYPE")), true,
                                 arraySizeAttr(c));
            else if (c.name == "PARAMETER.REFERENCE")
                p = CIMParameter(name(c, "NAME"), CIMTYPE_REFERENCE, false, 0,
                                 optName(c, "REFERENCECLASS"));
            else if (c.name == "PARAMETER.REFARRAY")
                p = CIMParameter(name(c, "NAME"), CIMTYPE_REFERENCE, true, arraySizeAttr(c),
                                 optName(c, "REFERENCECLASS"));
            else
                invalid("unexpected " + c.name + " in METHOD");
            for (size_t k = 0; k < c.children.size(); k++)
                p.addQualifier(decodeQualifier(c.children[k]));
            m.addParameter(p);
        }
        return m;
    });
}

CIMClass decodeClass(const XmlElement& e, const XmlLimits& limits)
{
    if (e.name != "CLASS")
        invalid("expected CLASS, found " + e.name);
    CIMName cn = name(e, "NAME");
    CIMName super = optName(e, "SUPERCLASS");
    return guarded("invalid class", [&] {
        CIMClass c(cn, super);
        for (size_t i = 0; i < e.children.size(); i++) {
            const XmlElement& ch = e.children[i];
            if (ch.name == "QUALIFIER")
                c.addQualifier(decodeQualifier(ch));
            else if (ch.name == "METHOD")
                c.addMethod(decodeMethod(ch));
            else
                c.addProperty(decodeProperty(ch, limits));
        }
        return c;
    });
}

CIMInstance decodeInstance(const XmlElement& e, const XmlLimits& limits)
{
    if (e.name != "INSTANCE")
        invalid("expected INSTANCE, found " + e.name);
    CIMName cn = name(e, "CLASSNAME");
    return guarded("invalid instance", [&] {
        CIMInstance inst(cn);
        for (size_t i = 0; i < e.children.size(); i++) {
            const XmlElement& ch = e.children[i];
            if (ch.name == "QUALIFIER")
                inst.addQualifier(decodeQualifier(ch));
            else
                inst.addProperty(decodeProperty(ch, limits));
        }
        return inst;
    });
}

CIMObject decodeObject(const XmlElement& e, const XmlLimits& limits)
{
    if (e.name == "CLASS")
        return CIMObject(decodeClass(e, limits));
    if (e.name == "INSTANCE")
        return CIMObject(decodeInstance(e, limits));
    invalid("expected CLASS or INSTANCE, found " + e.name);
}

CIMObject decodeObjectWithPath(const XmlElement& e, const XmlLimits& limits)
{
    if (e.children.size() != 2)
        invalid(e.name + " needs a path and an object");
    CIMObjectPath path;
    if (e.name == "VALUE.NAMEDINSTANCE")
        path = decodeInstanceName(e.children[0]);
    else if (e.name == "VALUE.OBJECTWITHPATH" || e.name == "VALUE.OBJECTWITHLOCALPATH" ||
             e.name == "VALUE.INSTANCEWITHPATH")
        path = decodeObjectPath(e.children[0]);
    else
        invalid("expected an object with its path, found " + e.name);
    CIMObject o = decodeObject(e.children[1], limits);
    guarded("path does not match object", [&] {
        o.setPath(path);
        return 0;
    });
    return o;
}

CIMParamValue decodeParamValue(const XmlElement& e, const XmlLimits& limits)
{
    String pname = str(e.requiredAttribute("NAME"));
    if (pname.size() == 0)
        invalid("empty parameter name");
    const std::string* pt = e.attribute("PARAMTYPE");
    bool embedded = isEmbedded(e);
    if (e.children.size() > 1)
        invalid(e.name + " holds more than one value");
    if (e.children.empty()) {
        CIMType t = pt ? typeFromName(*pt) : CIMTYPE_STRING;
        if (embedded && t == CIMTYPE_STRING)
            t = embeddedType(e);
        return CIMParamValue(pname, CIMValue(t, false), pt != 0);
    }
    const XmlElement& c = e.children[0];
    if (c.name == "VALUE.REFERENCE" || c.name == "VALUE.REFARRAY")
        return CIMParamValue(pname, decodeValue(c, CIMTYPE_REFERENCE, limits), true);
    if (c.name == "CLASSNAME" || c.name == "INSTANCENAME")
        return CIMParamValue(pname, CIMValue(decodeObjectPath(c)), true);
    if (c.name == "INSTANCE")
        return CIMParamValue(pname, CIMValue(decodeInstance(c, limits)), true);
    if (c.name == "CLASS")
        return CIMParamValue(pname, CIMValue(CIMObject(decodeClass(c, limits))), true);
    if (c.name == "VALUE.NAMEDINSTANCE")
        return CIMParamValue(pname, CIMValue(CIMInstance(decodeObjectWithPath(c, limits))), true);
    if (pt || embedded) {
        CIMType t = pt ? typeFromName(*pt) : CIMTYPE_STRING;
        if (embedded && t == CIMTYPE_STRING)
            t = embeddedType(e);
        return CIMParamValue(pname, decodeValue(c, t, limits), true);
    }
    return CIMParamValue(pname, decodeValue(c, CIMTYPE_STRING, limits), false);
}

CIMValue convertUntyped(const CIMValue& untyped, CIMType type)
{
    if (untyped.getType() != CIMTYPE_STRING)
        return untyped;
    if (untyped.isNull())
        return CIMValue(type, untyped.isArray());
    if (!untyped.isArray()) {
        String s;
        untyped.get(s);
        CString c = s.getCString();
        return scalarFromText((const char*)c, type);
    }
    Array<String> a;
    untyped.get(a);
    XmlElement arr;
    arr.name = "VALUE.ARRAY";
    for (Uint32 i = 0; i < a.size(); i++) {
        XmlElement v;
        v.name = "VALUE";
        CString c = a[i].getCString();
        v.text = (const char*)c;
        arr.children.push_back(std::move(v));
    }
    if (type == CIMTYPE_REFERENCE) {
        Array<CIMObjectPath> refs;
        for (Uint32 i = 0; i < a.size(); i++) {
            CIMObjectPath p;
            scalarFromText(arr.children[i].text, CIMTYPE_REFERENCE).get(p);
            refs.append(p);
        }
        return CIMValue(refs);
    }
    return decodeValue(arr, type);
}

CIMPropertyList decodePropertyList(const XmlElement& iparam)
{
    if (iparam.children.empty())
        return CIMPropertyList();
    const XmlElement& c = iparam.children[0];
    if (c.name == "VALUE.NULL")
        return CIMPropertyList();
    if (c.name != "VALUE.ARRAY")
        invalid("PropertyList must be a VALUE.ARRAY");
    Array<CIMName> names;
    for (size_t i = 0; i < c.children.size(); i++) {
        if (c.children[i].name != "VALUE")
            invalid("unexpected " + c.children[i].name + " in PropertyList");
        const std::string& t = c.children[i].text;
        names.append(guarded("invalid property name", [&] { return CIMName(str(t)); }));
    }
    return CIMPropertyList(names);
}

}  // namespace CIMXml
PEGASUS_NAMESPACE_END
