// CIMName and CIMNamespaceName: validated, case-insensitive names.

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMNameCast.h>
#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>

#include <cstring>

PEGASUS_NAMESPACE_BEGIN

namespace {

inline bool _isAlpha(Uint16 c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

inline bool _isWide(Uint16 c)
{
    return c >= 0x0080 && c <= 0xFFEF;
}

inline bool _firstOk(Uint16 c)
{
    return _isAlpha(c) || c == '_' || _isWide(c);
}

inline bool _nextOk(Uint16 c)
{
    return _firstOk(c) || (c >= '0' && c <= '9');
}

// True if the n units at p form a legal CIM name.
bool _legalName(const Char16* p, Uint32 n)
{
    if (n == 0 || !_firstOk(p[0]))
        return false;
    for (Uint32 i = 1; i < n; i++) {
        if (!_nextOk(p[i]))
            return false;
    }
    return true;
}

// Case-insensitive equality of a name with a UTF-8 literal, no validation.
bool _equalLiteral(const String& name, const char* literal)
{
    if (!literal)
        return false;
    return String::equalNoCase(name, String(literal));
}

}  // namespace

//------------------------------------------------------------------------------
// CIMName
//------------------------------------------------------------------------------

CIMName::CIMName() {}

CIMName::CIMName(const String& name) : cimName(name)
{
    if (!legal(name))
        throw InvalidNameException(name);
}

CIMName::CIMName(const char* name) : cimName(name)
{
    if (!legal(cimName))
        throw InvalidNameException(cimName);
}

CIMName::CIMName(const CIMName& name) : cimName(name.cimName) {}

CIMName& CIMName::operator=(const CIMName& name)
{
    cimName = name.cimName;
    return *this;
}

CIMName& CIMName::operator=(const String& name)
{
    if (!legal(name))
        throw InvalidNameException(name);
    cimName = name;
    return *this;
}

CIMName& CIMName::operator=(const char* name)
{
    return *this = String(name);
}

const String& CIMName::getString() const
{
    return cimName;
}

Boolean CIMName::isNull() const
{
    return cimName.size() == 0;
}

void CIMName::clear()
{
    cimName.clear();
}

Boolean CIMName::equal(const CIMName& name) const
{
    return String::equalNoCase(cimName, name.cimName);
}

Boolean CIMName::equal(const char* name) const
{
    return _equalLiteral(cimName, name);
}

Boolean CIMName::legal(const String& name)
{
    return _legalName(name.getChar16Data(), name.size());
}

Boolean operator==(const CIMName& name1, const CIMName& name2)
{
    return name1.equal(name2);
}

Boolean operator!=(const CIMName& name1, const CIMName& name2)
{
    return !name1.equal(name2);
}

Boolean operator==(const CIMName& name1, const char* name2)
{
    return name1.equal(name2);
}

Boolean operator==(const char* name1, const CIMName& name2)
{
    return name2.equal(name1);
}

Boolean operator!=(const CIMName& name1, const char* name2)
{
    return !name1.equal(name2);
}

Boolean operator!=(const char* name1, const CIMName& name2)
{
    return !name2.equal(name1);
}

Uint32 CIMNameLegalASCII(const char* str)
{
    if (!str)
        return 0;
    const unsigned char* p = reinterpret_cast<const unsigned char*>(str);
    if (!(_isAlpha(p[0]) || p[0] == '_'))
        return 0;
    Uint32 n = 1;
    for (; p[n]; n++) {
        Uint16 c = p[n];
        if (!(_isAlpha(c) || c == '_' || (c >= '0' && c <= '9')))
            return 0;
    }
    return n;
}

//------------------------------------------------------------------------------
// CIMNamespaceName
//------------------------------------------------------------------------------

namespace {

// The name without its one optional leading '/'.
String _stripSlash(const String& name)
{
    if (name.size() > 0 && name[0] == '/')
        return name.subString(1);
    return name;
}

}  // namespace

CIMNamespaceName::CIMNamespaceName() {}

CIMNamespaceName::CIMNamespaceName(const String& name)
{
    if (!legal(name))
        throw InvalidNamespaceNameException(name);
    cimNamespaceName = _stripSlash(name);
}

CIMNamespaceName::CIMNamespaceName(const char* name)
{
    String s(name);
    if (!legal(s))
        throw InvalidNamespaceNameException(s);
    cimNamespaceName = _stripSlash(s);
}

CIMNamespaceName::CIMNamespaceName(const CIMNamespaceName& name)
    : cimNamespaceName(name.cimNamespaceName)
{
}

CIMNamespaceName& CIMNamespaceName::operator=(const CIMNamespaceName& name)
{
    cimNamespaceName = name.cimNamespaceName;
    return *this;
}

CIMNamespaceName& CIMNamespaceName::operator=(const String& name)
{
    if (!legal(name))
        throw InvalidNamespaceNameException(name);
    cimNamespaceName = _stripSlash(name);
    return *this;
}

CIMNamespaceName& CIMNamespaceName::operator=(const char* name)
{
    return *this = String(name);
}

const String& CIMNamespaceName::getString() const
{
    return cimNamespaceName;
}

Boolean CIMNamespaceName::isNull() const
{
    return cimNamespaceName.size() == 0;
}

void CIMNamespaceName::clear()
{
    cimNamespaceName.clear();
}

Boolean CIMNamespaceName::equal(const CIMNamespaceName& name) const
{
    return String::equalNoCase(cimNamespaceName, name.cimNamespaceName);
}

Boolean CIMNamespaceName::equal(const char* name) const
{
    if (!name)
        return false;
    if (name[0] == '/')
        name++;
    return _equalLiteral(cimNamespaceName, name);
}

Boolean CIMNamespaceName::legal(const String& name)
{
    const Char16* p = name.getChar16Data();
    Uint32 n = name.size();
    Uint32 i = 0;
    if (n > 0 && p[0] == '/')
        i = 1;
    if (i == n)
        return false;
    while (true) {
        Uint32 start = i;
        while (i < n && p[i] != '/')
            i++;
        if (!_legalName(p + start, i - start))
            return false;
        if (i == n)
            return true;
        i++;  // past '/'; an element must follow
        if (i == n)
            return false;
    }
}

Boolean operator==(const CIMNamespaceName& name1, const CIMNamespaceName& name2)
{
    return name1.equal(name2);
}

Boolean operator!=(const CIMNamespaceName& name1, const CIMNamespaceName& name2)
{
    return !name1.equal(name2);
}

Boolean operator==(const CIMNamespaceName& name1, const char* name2)
{
    return name1.equal(name2);
}

Boolean operator==(const char* name1, const CIMNamespaceName& name2)
{
    return name2.equal(name1);
}

Boolean operator!=(const CIMNamespaceName& name1, const char* name2)
{
    return !name1.equal(name2);
}

Boolean operator!=(const char* name1, const CIMNamespaceName& name2)
{
    return !name2.equal(name1);
}

PEGASUS_NAMESPACE_END
