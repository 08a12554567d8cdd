// CIMQualifierList: the qualifiers of one class, instance, property, method
// or parameter.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

void CIMQualifierList::add(const CIMQualifier& qualifier)
{
    CIMQualifierRep* rep = CheckRep(CIMObjectModelAccess::rep(qualifier));
    if (find(rep->name) != PEG_NOT_FOUND) {
        throw AlreadyExistsException("qualifier \"" + rep->name.getString() + "\"");
    }
    _items.push_back(qualifier);
}

Uint32 CIMQualifierList::find(const CIMName& name) const
{
    for (size_t i = 0; i < _items.size(); i++) {
        if (CIMObjectModelAccess::rep(_items[i])->name.equal(name))
            return Uint32(i);
    }
    return PEG_NOT_FOUND;
}

const CIMQualifier& CIMQualifierList::get(Uint32 index) const
{
    if (index >= _items.size())
        throw IndexOutOfBoundsException();
    return _items[index];
}

void CIMQualifierList::remove(Uint32 index)
{
    if (index >= _items.size())
        throw IndexOutOfBoundsException();
    _items.erase(_items.begin() + index);
}

void CIMQualifierList::cloneTo(CIMQualifierList& target) const
{
    target._items.reserve(target._items.size() + _items.size());
    for (size_t i = 0; i < _items.size(); i++)
        target._items.push_back(_items[i].clone());
}

Boolean CIMQualifierList::identical(const CIMQualifierList& x) const
{
    if (_items.size() != x._items.size())
        return false;
    for (size_t i = 0; i < _items.size(); i++) {
        Uint32 j = x.find(CIMObjectModelAccess::rep(_items[i])->name);
        if (j == PEG_NOT_FOUND || !_items[i].identical(x._items[j]))
            return false;
    }
    return true;
}

Boolean CIMQualifierList::isTrue(const CIMName& name) const
{
    Uint32 i = find(name);
    if (i == PEG_NOT_FOUND)
        return false;
    const CIMValue& value = CIMObjectModelAccess::rep(_items[i])->value;
    if (value.getType() != CIMTYPE_BOOLEAN || value.isArray() || value.isNull())
        return false;
    Boolean b = false;
    value.get(b);
    return b;
}

PEGASUS_NAMESPACE_END
