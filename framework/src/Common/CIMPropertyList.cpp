// CIMPropertyList: a NULL or explicit list of property names.
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>

PEGASUS_NAMESPACE_BEGIN

class CIMPropertyListRep {
public:
    CIMPropertyListRep() : isNull(true) {}
    Boolean isNull;
    Array<CIMName> names;
    // Tags given through appendCIMNameTag(), parallel to the first names.
    Array<Uint32> tags;
};

namespace {

void CheckNames(const Array<CIMName>& names)
{
    for (Uint32 i = 0; i < names.size(); i++) {
        if (names[i].isNull())
            throw UninitializedObjectException();
    }
}

// FNV-1a over the name's ASCII-lower-cased code units.
Uint32 NameTag(const CIMName& name)
{
    const String& s = name.getString();
    Uint32 hash = 2166136261u;
    for (Uint32 i = 0; i < s.size(); i++) {
        Uint16 c = s[i];
        if (c >= 'A' && c <= 'Z')
            c = Uint16(c + ('a' - 'A'));
        hash = (hash ^ c) * 16777619u;
    }
    return hash;
}

}  // namespace

CIMPropertyList::CIMPropertyList() : _rep(new CIMPropertyListRep) {}

CIMPropertyList::CIMPropertyList(const CIMPropertyList& x) : _rep(new CIMPropertyListRep(*x._rep))
{
}

CIMPropertyList::CIMPropertyList(const Array<CIMName>& propertyNames) : _rep(new CIMPropertyListRep)
{
    try {
        set(propertyNames);
    } catch (...) {
        delete _rep;
        throw;
    }
}

CIMPropertyList::~CIMPropertyList()
{
    delete _rep;
}

void CIMPropertyList::set(const Array<CIMName>& propertyNames)
{
    CheckNames(propertyNames);
    _rep->names = propertyNames;
    _rep->tags.clear();
    _rep->isNull = false;
}

CIMPropertyList& CIMPropertyList::operator=(const CIMPropertyList& x)
{
    if (this != &x)
        *_rep = *x._rep;
    return *this;
}

void CIMPropertyList::clear()
{
    _rep->names.clear();
    _rep->tags.clear();
    _rep->isNull = true;
}

Boolean CIMPropertyList::isNull() const
{
    return _rep->isNull;
}

Uint32 CIMPropertyList::size() const
{
    return _rep->names.size();
}

const CIMName& CIMPropertyList::operator[](Uint32 index) const
{
    return _rep->names[index];
}

Array<CIMName> CIMPropertyList::getPropertyNameArray() const
{
    return _rep->names;
}

Uint32 CIMPropertyList::getCIMNameTag(Uint32 index) const
{
    const CIMName& name = _rep->names[index];
    if (index < _rep->tags.size())
        return _rep->tags[index];
    return NameTag(name);
}

void CIMPropertyList::append(Array<String>& propertyListArray)
{
    Array<CIMName> added;
    for (Uint32 i = 0; i < propertyListArray.size(); i++)
        added.append(CIMName(propertyListArray[i]));
    _rep->names.appendArray(added);
    _rep->isNull = false;
}

void CIMPropertyList::appendCIMNameTag(Uint32 nameTag)
{
    if (_rep->tags.size() < _rep->names.size())
        _rep->tags.append(nameTag);
}

Boolean CIMPropertyList::contains(const CIMName& name) const
{
    for (Uint32 i = 0; i < _rep->names.size(); i++) {
        if (_rep->names[i].equal(name))
            return true;
    }
    return false;
}

Boolean CIMPropertyList::useThisProperty(const CIMName& name) const
{
    return _rep->isNull || contains(name);
}

String CIMPropertyList::toString() const
{
    if (_rep->isNull)
        return String("NULL");
    if (_rep->names.size() == 0)
        return String("EMPTY");
    String result;
    for (Uint32 i = 0; i < _rep->names.size(); i++) {
        if (i)
            result.append(", ");
        result.append(_rep->names[i].getString());
    }
    return result;
}

PEGASUS_NAMESPACE_END
