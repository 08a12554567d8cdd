// CIMObject and CIMConstObject: shared handles to a class or an instance.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

CIMObject::CIMObject() : _rep(0) {}

CIMObject::CIMObject(const CIMObject& x) : _rep(Ref(x._rep)) {}

CIMObject::CIMObject(const CIMClass& x) : _rep(Ref(x._rep)) {}

CIMObject::CIMObject(const CIMInstance& x) : _rep(Ref(x._rep)) {}

CIMObject::CIMObject(CIMObjectRep* rep) : _rep(rep) {}

CIMObject& CIMObject::operator=(const CIMObject& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMObject::~CIMObject()
{
    Unref(_rep);
}

const CIMName& CIMObject::getClassName() const
{
    return CheckRep(_rep)->getClassName();
}

const CIMObjectPath& CIMObject::getPath() const
{
    return CheckRep(_rep)->reference;
}

void CIMObject::setPath(const CIMObjectPath& path)
{
    CheckRep(_rep)->setPath(path);
}

CIMObject& CIMObject::addQualifier(const CIMQualifier& qualifier)
{
    CheckRep(_rep)->qualifiers.add(qualifier);
    return *this;
}

Uint32 CIMObject::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMQualifier CIMObject::getQualifier(Uint32 index)
{
    return CheckRep(_rep)->qualifiers.get(index);
}

CIMConstQualifier CIMObject::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

void CIMObject::removeQualifier(Uint32 index)
{
    CheckRep(_rep)->qualifiers.remove(index);
}

Uint32 CIMObject::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

CIMObject& CIMObject::addProperty(const CIMProperty& x)
{
    CheckRep(_rep)->addProperty(x);
    return *this;
}

Uint32 CIMObject::findProperty(const CIMName& name) const
{
    return CheckRep(_rep)->properties.find(name);
}

CIMProperty CIMObject::getProperty(Uint32 index)
{
    return CheckRep(_rep)->properties.get(index);
}

CIMConstProperty CIMObject::getProperty(Uint32 index) const
{
    return CheckRep(_rep)->properties.get(index);
}

void CIMObject::removeProperty(Uint32 index)
{
    CheckRep(_rep)->properties.remove(index);
}

Uint32 CIMObject::getPropertyCount() const
{
    return CheckRep(_rep)->properties.size();
}

CIMObject CIMObject::clone() const
{
    return CIMObject(CheckRep(_rep)->clone());
}

Boolean CIMObject::identical(const CIMConstObject& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

Boolean CIMObject::isUninitialized() const
{
    return _rep == 0;
}

Boolean CIMObject::isClass() const
{
    return CheckRep(_rep)->isClass();
}

Boolean CIMObject::isInstance() const
{
    return !CheckRep(_rep)->isClass();
}

void CIMObject::instanceFilter(Boolean includeQualifiers, Boolean includeClassOrigin,
                               const CIMPropertyList& propertyList)
{
    CheckRep(_rep)->filter(includeQualifiers, includeClassOrigin, propertyList);
}

CIMConstObject::CIMConstObject() : _rep(0) {}

CIMConstObject::CIMConstObject(const CIMConstObject& x) : _rep(Ref(x._rep)) {}

CIMConstObject::CIMConstObject(const CIMObject& x) : _rep(Ref(x._rep)) {}

CIMConstObject::CIMConstObject(const CIMClass& x) : _rep(Ref(x._rep)) {}

CIMConstObject::CIMConstObject(const CIMInstance& x) : _rep(Ref(x._rep)) {}

CIMConstObject::CIMConstObject(const CIMConstClass& x) : _rep(Ref(x._rep)) {}

CIMConstObject::CIMConstObject(const CIMConstInstance& x) : _rep(Ref(x._rep)) {}

CIMConstObject& CIMConstObject::operator=(const CIMConstObject& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstObject::~CIMConstObject()
{
    Unref(_rep);
}

const CIMName& CIMConstObject::getClassName() const
{
    return CheckRep(_rep)->getClassName();
}

const CIMObjectPath& CIMConstObject::getPath() const
{
    return CheckRep(_rep)->reference;
}

Uint32 CIMConstObject::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMConstQualifier CIMConstObject::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

Uint32 CIMConstObject::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

Uint32 CIMConstObject::findProperty(const CIMName& name) const
{
    return CheckRep(_rep)->properties.find(name);
}

CIMConstProperty CIMConstObject::getProperty(Uint32 index) const
{
    return CheckRep(_rep)->properties.get(index);
}

Uint32 CIMConstObject::getPropertyCount() const
{
    return CheckRep(_rep)->properties.size();
}

CIMObject CIMConstObject::clone() const
{
    return CIMObjectModelAccess::adopt(CheckRep(_rep)->clone());
}

Boolean CIMConstObject::identical(const CIMConstObject& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

Boolean CIMConstObject::isUninitialized() const
{
    return _rep == 0;
}

String CIMConstObject::toString() const
{
    return CIMObjectModelAccess::adopt(Ref(CheckRep(_rep))).toString();
}

Boolean CIMConstObject::isClass() const
{
    return CheckRep(_rep)->isClass();
}

Boolean CIMConstObject::isInstance() const
{
    return !CheckRep(_rep)->isClass();
}

PEGASUS_NAMESPACE_END
