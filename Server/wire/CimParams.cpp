#include "CimParams.h"

#include <strings.h>

#include <Pegasus/Common/Exception.h>

#include "CimProtocol.h"
#include "CimRequest.h"

PEGASUS_USING_PEGASUS;

namespace zarwire {

namespace {

std::string lower(std::string s)
{
    for (auto& ch : s)
        ch = static_cast<char>(tolower(static_cast<unsigned char>(ch)));
    return s;
}

[[noreturn]] void wrongShape(const char* name, const char* what)
{
    throw ProtocolError{400, "request-not-valid", std::string("parameter ") + name + what};
}

}  // namespace

CimParams::CimParams(const CIMXml::XmlElement& call)
{
    for (const auto& c : call.children) {
        if (c.name != "IPARAMVALUE")
            continue;
        std::string n = lower(c.requiredAttribute("NAME"));
        if (_byName.count(n))
            throw ProtocolError{400, "request-not-valid", "duplicate parameter " + n};
        _byName[n] = &c;
    }
}

void CimParams::allowOnly(std::initializer_list<const char*> names) const
{
    for (const auto& kv : _byName) {
        bool ok = false;
        for (const char* n : names)
            if (strcasecmp(n, kv.first.c_str()) == 0)
                ok = true;
        if (!ok)
            throw CIMException(CIM_ERR_INVALID_PARAMETER,
                               String("unknown parameter ") + kv.first.c_str());
    }
}

const CIMXml::XmlElement* CimParams::get(const char* name) const
{
    auto it = _byName.find(lower(name));
    return it == _byName.end() ? nullptr : it->second;
}

const CIMXml::XmlElement* CimParams::content(const char* name) const
{
    const CIMXml::XmlElement* p = get(name);
    if (!p || p->children.empty())
        return nullptr;
    if (p->children.size() > 1)
        wrongShape(name, " holds more than one element");
    if (p->children[0].name == "VALUE.NULL")
        return nullptr;
    return &p->children[0];
}

bool CimParams::boolean(const char* name, bool dflt) const
{
    const CIMXml::XmlElement* v = content(name);
    if (!v)
        return dflt;
    if (v->name != "VALUE")
        wrongShape(name, " must be a VALUE");
    Boolean b = false;
    CIMXml::scalarFromText(v->text, CIMTYPE_BOOLEAN).get(b);
    return b;
}

bool CimParams::uint32(const char* name, Uint32& value) const
{
    const CIMXml::XmlElement* v = content(name);
    if (!v)
        return false;
    if (v->name != "VALUE")
        wrongShape(name, " must be a VALUE");
    CIMXml::scalarFromText(v->text, CIMTYPE_UINT32).get(value);
    return true;
}

CIMName CimParams::className(const char* name, bool required) const
{
    const CIMXml::XmlElement* v = content(name);
    if (!v) {
        if (required)
            throw CIMException(CIM_ERR_INVALID_PARAMETER, String("missing parameter ") + name);
        return CIMName();
    }
    if (v->name != "CLASSNAME")
        wrongShape(name, " must be a CLASSNAME");
    return CIMXml::decodeClassName(*v);
}

CIMObjectPath CimParams::path(const char* name, bool instanceOnly) const
{
    const CIMXml::XmlElement* v = content(name);
    if (!v)
        throw CIMException(CIM_ERR_INVALID_PARAMETER, String("missing parameter ") + name);
    if (v->name != "INSTANCENAME" && (instanceOnly || v->name != "CLASSNAME"))
        wrongShape(name, instanceOnly ? " must be an INSTANCENAME"
                                      : " must be an INSTANCENAME or CLASSNAME");
    return CIMXml::decodeObjectPath(*v);
}

String CimParams::string(const char* name) const
{
    const CIMXml::XmlElement* v = content(name);
    if (!v)
        return String();
    if (v->name != "VALUE")
        wrongShape(name, " must be a VALUE");
    return str(v->text);
}

CIMPropertyList CimParams::propertyList() const
{
    const CIMXml::XmlElement* p = get("PropertyList");
    return p ? CIMXml::decodePropertyList(*p) : CIMPropertyList();
}

}  // namespace zarwire
