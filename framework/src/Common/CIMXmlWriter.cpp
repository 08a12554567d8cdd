// The writing half of the CIM-XML codec.
#include <zarframework/CIMXmlCodec.h>

#include <cstdio>

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMParameter.h>
#include <Pegasus/Common/CIMProperty.h>

PEGASUS_NAMESPACE_BEGIN
namespace CIMXml {

namespace {

std::string utf8(const String& s)
{
    CString c = s.getCString();
    return std::string((const char*)c);
}

void escapeInto(std::string& out, const char* p, size_t n, bool attr)
{
    for (size_t i = 0; i < n; i++) {
        char ch = p[i];
        switch (ch) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\n':
                if (attr)
                    out += "&#10;";
                else
                    out += ch;
                break;
            case '\r':
                out += "&#13;";
                break;
            case '\t':
                if (attr)
                    out += "&#9;";
                else
                    out += ch;
                break;
            default:
                out += ch;
        }
    }
}

// Escaped text of s. Names and most values are ASCII: those are narrowed
// and escaped in one pass, without the UTF-8 copy that other text takes.
void appendEscaped(std::string& out, const String& s, bool attr)
{
    const Char16* p = s.getChar16Data();
    const Uint32 n = s.size();
    for (Uint32 i = 0; i < n; i++) {
        // Beyond ASCII, and NUL (where the UTF-8 copy ends the text).
        if (Uint16(p[i]) >= 0x80 || Uint16(p[i]) == 0) {
            std::string u = utf8(s);
            escapeInto(out, u.data(), u.size(), attr);
            return;
        }
    }
    size_t start = out.size();
    out.resize(start + n);
    char* w = &out[start];
    for (Uint32 i = 0; i < n; i++) {
        char ch = char(Uint16(p[i]));
        if (ch == '&' || ch == '<' || ch == '>' || ch == '"' || ch == '\r' ||
            (attr && (ch == '\n' || ch == '\t'))) {
            // Rare: finish this string the careful way.
            out.resize(start + i);
            std::string rest;
            for (Uint32 k = i; k < n; k++)
                rest += char(Uint16(p[k]));
            escapeInto(out, rest.data(), rest.size(), attr);
            return;
        }
        w[i] = ch;
    }
}

void appendName(std::string& out, const char* attr, const CIMName& name)
{
    out += ' ';
    out += attr;
    out += "=\"";
    appendEscaped(out, name.getString(), true);
    out += '"';
}

// The CIM-XML type name written in TYPE/PARAMTYPE; embedded objects travel
// as strings.
const char* wireTypeName(CIMType t)
{
    if (t == CIMTYPE_OBJECT || t == CIMTYPE_INSTANCE)
        return "string";
    return cimTypeToString(t);
}

void appendEmbeddedAttr(std::string& out, CIMType t)
{
    if (t == CIMTYPE_OBJECT)
        out += " EmbeddedObject=\"object\"";
    else if (t == CIMTYPE_INSTANCE)
        out += " EmbeddedObject=\"instance\"";
}

std::string realText(double v, int digits)
{
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*g", digits, v);
    return buf;
}

template <class T>
void appendArrayItems(std::string& out, const CIMValue& v)
{
    Array<T> a;
    v.get(a);
    out += "<VALUE.ARRAY>";
    for (Uint32 i = 0; i < a.size(); i++) {
        out += "<VALUE>";
        std::string t = valueText(CIMValue(a[i]));
        escapeInto(out, t.data(), t.size(), false);
        out += "</VALUE>";
    }
    out += "</VALUE.ARRAY>";
}

void appendKeyBindings(std::string& out, const CIMObjectPath& path)
{
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); i++) {
        out += "<KEYBINDING";
        appendName(out, "NAME", keys[i].getName());
        out += '>';
        switch (keys[i].getType()) {
            case CIMKeyBinding::REFERENCE:
                appendValueReference(out, CIMObjectPath(keys[i].getValue()));
                break;
            case CIMKeyBinding::BOOLEAN:
                out += "<KEYVALUE VALUETYPE=\"boolean\">";
                appendText(out, keys[i].getValue());
                out += "</KEYVALUE>";
                break;
            case CIMKeyBinding::NUMERIC:
                out += "<KEYVALUE VALUETYPE=\"numeric\">";
                appendText(out, keys[i].getValue());
                out += "</KEYVALUE>";
                break;
            default:
                out += "<KEYVALUE VALUETYPE=\"string\">";
                appendText(out, keys[i].getValue());
                out += "</KEYVALUE>";
        }
        out += "</KEYBINDING>";
    }
}

}  // namespace

void appendText(std::string& out, const String& s)
{
    appendEscaped(out, s, false);
}

void appendAttribute(std::string& out, const String& s)
{
    appendEscaped(out, s, true);
}

void appendAttribute(std::string& out, const std::string& u)
{
    escapeInto(out, u.data(), u.size(), true);
}

std::string valueText(const CIMValue& v)
{
    switch (v.getType()) {
        case CIMTYPE_BOOLEAN: {
            Boolean b = false;
            v.get(b);
            return b ? "TRUE" : "FALSE";
        }
        case CIMTYPE_UINT8: {
            Uint8 x = 0;
            v.get(x);
            return std::to_string(unsigned(x));
        }
        case CIMTYPE_SINT8: {
            Sint8 x = 0;
            v.get(x);
            return std::to_string(int(x));
        }
        case CIMTYPE_UINT16: {
            Uint16 x = 0;
            v.get(x);
            return std::to_string(x);
        }
        case CIMTYPE_SINT16: {
            Sint16 x = 0;
            v.get(x);
            return std::to_string(x);
        }
        case CIMTYPE_UINT32: {
            Uint32 x = 0;
            v.get(x);
            return std::to_string(x);
        }
        case CIMTYPE_SINT32: {
            Sint32 x = 0;
            v.get(x);
            return std::to_string(x);
        }
        case CIMTYPE_UINT64: {
            Uint64 x = 0;
            v.get(x);
            return std::to_string(x);
        }
        case CIMTYPE_SINT64: {
            Sint64 x = 0;
            v.get(x);
            return std::to_string(x);
        }
        case CIMTYPE_REAL32: {
            Real32 x = 0;
            v.get(x);
            return realText(x, 9);
        }
        case CIMTYPE_REAL64: {
            Real64 x = 0;
            v.get(x);
            return realText(x, 17);
        }
        case CIMTYPE_CHAR16: {
            Char16 c;
            v.get(c);
            Char16 buf[2] = {c, Char16(0)};
            return utf8(String(buf, 1));
        }
        case CIMTYPE_STRING: {
            String s;
            v.get(s);
            return utf8(s);
        }
        case CIMTYPE_DATETIME: {
            CIMDateTime d;
            v.get(d);
            return utf8(d.toString());
        }
        case CIMTYPE_REFERENCE: {
            CIMObjectPath p;
            v.get(p);
            return utf8(p.toString());
        }
        case CIMTYPE_OBJECT: {
            CIMObject o;
            v.get(o);
            std::string s;
            appendObject(s, o);
            return s;
        }
        case CIMTYPE_INSTANCE: {
            CIMInstance inst;
            v.get(inst);
            std::string s;
            appendInstance(s, inst);
            return s;
        }
    }
    return std::string();
}

void appendValue(std::string& out, const CIMValue& v)
{
    if (v.isNull())
        return;
    if (v.getType() == CIMTYPE_REFERENCE) {
        if (v.isArray()) {
            Array<CIMObjectPath> a;
            v.get(a);
            out += "<VALUE.REFARRAY>";
            for (Uint32 i = 0; i < a.size(); i++)
                appendValueReference(out, a[i]);
            out += "</VALUE.REFARRAY>";
        } else {
            CIMObjectPath p;
            v.get(p);
            appendValueReference(out, p);
        }
        return;
    }
    if (!v.isArray()) {
        out += "<VALUE>";
        if (v.getType() == CIMTYPE_STRING) {
            String text;
            v.get(text);
            appendEscaped(out, text, false);
        } else {
            std::string t = valueText(v);
            escapeInto(out, t.data(), t.size(), false);
        }
        out += "</VALUE>";
        return;
    }
    switch (v.getType()) {
        case CIMTYPE_BOOLEAN:
            appendArrayItems<Boolean>(out, v);
            break;
        case CIMTYPE_UINT8:
            appendArrayItems<Uint8>(out, v);
            break;
        case CIMTYPE_SINT8:
            appendArrayItems<Sint8>(out, v);
            break;
        case CIMTYPE_UINT16:
            appendArrayItems<Uint16>(out, v);
            break;
        case CIMTYPE_SINT16:
            appendArrayItems<Sint16>(out, v);
            break;
        case CIMTYPE_UINT32:
            appendArrayItems<Uint32>(out, v);
            break;
        case CIMTYPE_SINT32:
            appendArrayItems<Sint32>(out, v);
            break;
        case CIMTYPE_UINT64:
            appendArrayItems<Uint64>(out, v);
            break;
        case CIMTYPE_SINT64:
            appendArrayItems<Sint64>(out, v);
            break;
        case CIMTYPE_REAL32:
            appendArrayItems<Real32>(out, v);
            break;
        case CIMTYPE_REAL64:
            appendArrayItems<Real64>(out, v);
            break;
        case CIMTYPE_CHAR16:
            appendArrayItems<Char16>(out, v);
            break;
        case CIMTYPE_STRING:
            appendArrayItems<String>(out, v);
            break;
        case CIMTYPE_DATETIME:
            appendArrayItems<CIMDateTime>(out, v);
            break;
        case CIMTYPE_OBJECT:
            appendArrayItems<CIMObject>(out, v);
            break;
        case CIMTYPE_INSTANCE:
            appendArrayItems<CIMInstance>(out, v);
            break;
        default:
            break;
    }
}

void appendLocalNamespacePath(std::string& out, const CIMNamespaceName& ns)
{
    out += "<LOCALNAMESPACEPATH>";
    std::string s = utf8(ns.getString());
    size_t start = 0;
    while (start <= s.size() && !s.empty()) {
        size_t slash = s.find('/', start);
        std::string part =
            s.substr(start, slash == std::string::npos ? std::string::npos : slash - start);
        if (!part.empty()) {
            out += "<NAMESPACE NAME=\"";
            appendAttribute(out, part);
            out += "\"/>";
        }
        if (slash == std::string::npos)
            break;
        start = slash + 1;
    }
    out += "</LOCALNAMESPACEPATH>";
}

void appendNamespacePath(std::string& out, const String& host, const CIMNamespaceName& ns)
{
    out += "<NAMESPACEPATH><HOST>";
    appendText(out, host);
    out += "</HOST>";
    appendLocalNamespacePath(out, ns);
    out += "</NAMESPACEPATH>";
}

void appendClassName(std::string& out, const CIMName& name)
{
    out += "<CLASSNAME";
    appendName(out, "NAME", name);
    out += "/>";
}

void appendInstanceName(std::string& out, const CIMObjectPath& path)
{
    out += "<INSTANCENAME";
    appendName(out, "CLASSNAME", path.getClassName());
    out += '>';
    appendKeyBindings(out, path);
    out += "</INSTANCENAME>";
}

void appendInstancePath(std::string& out, const CIMObjectPath& path, const String& defaultHost,
                        const CIMNamespaceName& defaultNameSpace)
{
    out += "<INSTANCEPATH>";
    appendNamespacePath(out, path.getHost().size() ? path.getHost() : defaultHost,
                        path.getNameSpace().isNull() ? defaultNameSpace : path.getNameSpace());
    appendInstanceName(out, path);
    out += "</INSTANCEPATH>";
}

void appendLocalInstancePath(std::string& out, const CIMObjectPath& path,
                             const CIMNamespaceName& ns)
{
    out += "<LOCALINSTANCEPATH>";
    appendLocalNamespacePath(out, ns);
    appendInstanceName(out, path);
    out += "</LOCALINSTANCEPATH>";
}

void appendClassPath(std::string& out, const CIMObjectPath& path, const String& defaultHost,
                     const CIMNamespaceName& defaultNameSpace)
{
    out += "<CLASSPATH>";
    appendNamespacePath(out, path.getHost().size() ? path.getHost() : defaultHost,
                        path.getNameSpace().isNull() ? defaultNameSpace : path.getNameSpace());
    appendClassName(out, path.getClassName());
    out += "</CLASSPATH>";
}

void appendLocalClassPath(std::string& out, const CIMNamespaceName& ns, const CIMName& cls)
{
    out += "<LOCALCLASSPATH>";
    appendLocalNamespacePath(out, ns);
    appendClassName(out, cls);
    out += "</LOCALCLASSPATH>";
}

void appendObjectPath(std::string& out, const CIMObjectPath& path, const String& defaultHost,
                      const CIMNamespaceName& defaultNameSpace)
{
    out += "<OBJECTPATH>";
    if (path.getKeyBindings().size())
        appendInstancePath(out, path, defaultHost, defaultNameSpace);
    else
        appendClassPath(out, path, defaultHost, defaultNameSpace);
    out += "</OBJECTPATH>";
}

void appendValueReference(std::string& out, const CIMObjectPath& path)
{
    out += "<VALUE.REFERENCE>";
    bool keys = path.getKeyBindings().size() != 0;
    bool ns = !path.getNameSpace().isNull();
    bool host = path.getHost().size() != 0;
    if (host && ns) {
        if (keys)
            appendInstancePath(out, path);
        else
            appendClassPath(out, path);
    } else if (ns) {
        if (keys)
            appendLocalInstancePath(out, path, path.getNameSpace());
        else
            appendLocalClassPath(out, path.getNameSpace(), path.getClassName());
    } else if (keys) {
        appendInstanceName(out, path);
    } else {
        appendClassName(out, path.getClassName());
    }
    out += "</VALUE.REFERENCE>";
}

void appendQualifier(std::string& out, const CIMQualifier& qual)
{
    CIMQualifier q(qual);
    out += "<QUALIFIER";
    appendName(out, "NAME", q.getName());
    out += " TYPE=\"";
    out += wireTypeName(q.getValue().getType());
    out += '"';
    if (q.getPropagated())
        out += " PROPAGATED=\"true\"";
    const CIMFlavor& f = q.getFlavor();
    if (f.hasFlavor(CIMFlavor::DISABLEOVERRIDE) || !f.hasFlavor(CIMFlavor::OVERRIDABLE))
        out += " OVERRIDABLE=\"false\"";
    if (f.hasFlavor(CIMFlavor::RESTRICTED) || !f.hasFlavor(CIMFlavor::TOSUBCLASS))
        out += " TOSUBCLASS=\"false\"";
    if (f.hasFlavor(CIMFlavor::TRANSLATABLE))
        out += " TRANSLATABLE=\"true\"";
    out += '>';
    appendValue(out, q.getValue());
    out += "</QUALIFIER>";
}

void appendProperty(std::string& out, const CIMProperty& prop)
{
    CIMProperty p(prop);
    const CIMValue& v = p.getValue();
    const char* tag;
    if (v.getType() == CIMTYPE_REFERENCE) {
        tag = "PROPERTY.REFERENCE";
        out += "<PROPERTY.REFERENCE";
        appendName(out, "NAME", p.getName());
        if (!p.getReferenceClassName().isNull())
            appendName(out, "REFERENCECLASS", p.getReferenceClassName());
    } else {
        tag = v.isArray() ? "PROPERTY.ARRAY" : "PROPERTY";
        out += '<';
        out += tag;
        appendName(out, "NAME", p.getName());
        out += " TYPE=\"";
        out += wireTypeName(v.getType());
        out += '"';
        if (v.isArray() && p.getArraySize()) {
            out += " ARRAYSIZE=\"";
            out += std::to_string(p.getArraySize());
            out += '"';
        }
    }
    if (!p.getClassOrigin().isNull())
        appendName(out, "CLASSORIGIN", p.getClassOrigin());
    if (p.getPropagated())
        out += " PROPAGATED=\"true\"";
    appendEmbeddedAttr(out, v.getType());
    out += '>';
    for (Uint32 i = 0; i < p.getQualifierCount(); i++)
        appendQualifier(out, p.getQualifier(i));
    appendValue(out, v);
    out += "</";
    out += tag;
    out += '>';
}

void appendParameter(std::string& out, const CIMParameter& param)
{
    CIMParameter p(param);
    const char* tag;
    if (p.getType() == CIMTYPE_REFERENCE) {
        tag = p.isArray() ? "PARAMETER.REFARRAY" : "PARAMETER.REFERENCE";
        out += '<';
        out += tag;
        appendName(out, "NAME", p.getName());
        if (!p.getReferenceClassName().isNull())
            appendName(out, "REFERENCECLASS", p.getReferenceClassName());
    } else {
        tag = p.isArray() ? "PARAMETER.ARRAY" : "PARAMETER";
        out += '<';
        out += tag;
        appendName(out, "NAME", p.getName());
        out += " TYPE=\"";
        out += wireTypeName(p.getType());
        out += '"';
    }
    if (p.isArray() && p.getArraySize()) {
        out += " ARRAYSIZE=\"";
        out += std::to_string(p.getArraySize());
        out += '"';
    }
    out += '>';
    for (Uint32 i = 0; i < p.getQualifierCount(); i++)
        appendQualifier(out, p.getQualifier(i));
    out += "</";
    out += tag;
    out += '>';
}

void appendMethod(std::string& out, const CIMMethod& method)
{
    CIMMethod m(method);
    out += "<METHOD";
    appendName(out, "NAME", m.getName());
    out += " TYPE=\"";
    out += wireTypeName(m.getType());
    out += '"';
    if (!m.getClassOrigin().isNull())
        appendName(out, "CLASSORIGIN", m.getClassOrigin());
    if (m.getPropagated())
        out += " PROPAGATED=\"true\"";
    out += '>';
    for (Uint32 i = 0; i < m.getQualifierCount(); i++)
        appendQualifier(out, m.getQualifier(i));
    for (Uint32 i = 0; i < m.getParameterCount(); i++)
        appendParameter(out, m.getParameter(i));
    out += "</METHOD>";
}

void appendClass(std::string& out, const CIMClass& cls)
{
    CIMClass c(cls);
    out += "<CLASS";
    appendName(out, "NAME", c.getClassName());
    if (!c.getSuperClassName().isNull())
        appendName(out, "SUPERCLASS", c.getSuperClassName());
    out += '>';
    for (Uint32 i = 0; i < c.getQualifierCount(); i++)
        appendQualifier(out, c.getQualifier(i));
    for (Uint32 i = 0; i < c.getPropertyCount(); i++)
        appendProperty(out, c.getProperty(i));
    for (Uint32 i = 0; i < c.getMethodCount(); i++)
        appendMethod(out, c.getMethod(i));
    out += "</CLASS>";
}

void appendInstance(std::string& out, const CIMInstance& inst)
{
    CIMInstance i(inst);
    out += "<INSTANCE";
    appendName(out, "CLASSNAME", i.getClassName());
    out += '>';
    for (Uint32 k = 0; k < i.getQualifierCount(); k++)
        appendQualifier(out, i.getQualifier(k));
    for (Uint32 k = 0; k < i.getPropertyCount(); k++)
        appendProperty(out, i.getProperty(k));
    out += "</INSTANCE>";
}

void appendObject(std::string& out, const CIMObject& o)
{
    if (o.isClass())
        appendClass(out, CIMClass(o));
    else
        appendInstance(out, CIMInstance(o));
}

void appendValueNamedInstance(std::string& out, const CIMInstance& inst)
{
    out += "<VALUE.NAMEDINSTANCE>";
    appendInstanceName(out, inst.getPath());
    appendInstance(out, inst);
    out += "</VALUE.NAMEDINSTANCE>";
}

void appendValueObjectWithPath(std::string& out, const CIMObject& o, const String& defaultHost,
                               const CIMNamespaceName& defaultNameSpace)
{
    out += "<VALUE.OBJECTWITHPATH>";
    if (o.isClass()) {
        appendClassPath(out, o.getPath(), defaultHost, defaultNameSpace);
        appendClass(out, CIMClass(o));
    } else {
        appendInstancePath(out, o.getPath(), defaultHost, defaultNameSpace);
        appendInstance(out, CIMInstance(o));
    }
    out += "</VALUE.OBJECTWITHPATH>";
}

void appendParamValue(std::string& out, const CIMParamValue& pv)
{
    CIMValue v = pv.getValue();
    out += "<PARAMVALUE NAME=\"";
    appendAttribute(out, pv.getParameterName());
    out += '"';
    if (pv.isTyped()) {
        out += " PARAMTYPE=\"";
        out += wireTypeName(v.getType());
        out += '"';
        appendEmbeddedAttr(out, v.getType());
    }
    out += '>';
    appendValue(out, v);
    out += "</PARAMVALUE>";
}

void appendReturnValue(std::string& out, const CIMValue& v)
{
    out += "<RETURNVALUE PARAMTYPE=\"";
    out += wireTypeName(v.getType());
    out += '"';
    appendEmbeddedAttr(out, v.getType());
    out += '>';
    appendValue(out, v);
    out += "</RETURNVALUE>";
}

void appendBooleanIParam(std::string& out, const char* name, bool value)
{
    out += "<IPARAMVALUE NAME=\"";
    out += name;
    out += value ? "\"><VALUE>TRUE</VALUE></IPARAMVALUE>" : "\"><VALUE>FALSE</VALUE></IPARAMVALUE>";
}

String errorDescription(Uint32 code, const String& message)
{
    static const char* const names[] = {"CIM_ERR_SUCCESS",
                                        "CIM_ERR_FAILED",
                                        "CIM_ERR_ACCESS_DENIED",
                                        "CIM_ERR_INVALID_NAMESPACE",
                                        "CIM_ERR_INVALID_PARAMETER",
                                        "CIM_ERR_INVALID_CLASS",
                                        "CIM_ERR_NOT_FOUND",
                                        "CIM_ERR_NOT_SUPPORTED",
                                        "CIM_ERR_CLASS_HAS_CHILDREN",
                                        "CIM_ERR_CLASS_HAS_INSTANCES",
                                        "CIM_ERR_INVALID_SUPERCLASS",
                                        "CIM_ERR_ALREADY_EXISTS",
                                        "CIM_ERR_NO_SUCH_PROPERTY",
                                        "CIM_ERR_TYPE_MISMATCH",
                                        "CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED",
                                        "CIM_ERR_INVALID_QUERY",
                                        "CIM_ERR_METHOD_NOT_AVAILABLE",
                                        "CIM_ERR_METHOD_NOT_FOUND",
                                        0,
                                        0,
                                        "CIM_ERR_NAMESPACE_NOT_EMPTY",
                                        "CIM_ERR_INVALID_ENUMERATION_CONTEXT",
                                        "CIM_ERR_INVALID_OPERATION_TIMEOUT",
                                        "CIM_ERR_PULL_HAS_BEEN_ABANDONED",
                                        "CIM_ERR_PULL_CANNOT_BE_ABANDONED",
                                        "CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED",
                                        "CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED",
                                        "CIM_ERR_SERVER_LIMITS_EXCEEDED",
                                        "CIM_ERR_SERVER_IS_SHUTTING_DOWN"};
    String d;
    if (code < sizeof names / sizeof names[0] && names[code]) {
        d = names[code];
    } else {
        d = "Unrecognized CIM status code \"";
        d.append(std::to_string(code).c_str());
        d.append("\"");
    }
    if (message.size()) {
        d.append(": ");
        d.append(message);
    }
    return d;
}

void appendError(std::string& out, Uint32 code, const String& message)
{
    out += "<ERROR CODE=\"";
    out += std::to_string(code);
    out += "\" DESCRIPTION=\"";
    appendAttribute(out, errorDescription(code, message));
    out += "\"/>";
}

void appendMessageStart(std::string& out, const std::string& messageId, bool request)
{
    out +=
        "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
        "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n<MESSAGE ID=\"";
    appendAttribute(out, messageId);
    out += request ? "\" PROTOCOLVERSION=\"1.0\">\n<SIMPLEREQ>\n"
                   : "\" PROTOCOLVERSION=\"1.0\">\n<SIMPLERSP>\n";
}

void appendMessageEnd(std::string& out, bool request)
{
    out += request ? "</SIMPLEREQ>\n</MESSAGE>\n</CIM>\n" : "</SIMPLERSP>\n</MESSAGE>\n</CIM>\n";
}

}  // namespace CIMXml
PEGASUS_NAMESPACE_END
