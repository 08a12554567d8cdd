// CIMClass and CIMConstClass: shared handles to a CIMClassRep.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

CIMClassRep* NewClassRep(const CIMName& className, const CIMName& superClassName)
{
    if (className.isNull())
        throw UninitializedObjectException();
    CIMClassRep* rep = new CIMClassRep;
    rep->reference = CIMObjectPath(String(), CIMNamespaceName(), className);
    rep->superClassName = superClassName;
    return rep;
}

CIMClassRep* CastToClass(CIMObjectRep* rep)
{
    CIMClassRep* c = dynamic_cast<CIMClassRep*>(rep);
    if (!c)
        throw DynamicCastFailedException();
    return Ref(c);
}

const CIMName& AssociationName()
{
    static const CIMName name("Association");
    return name;
}

const CIMName& AbstractName()
{
    static const CIMName name("Abstract");
    return name;
}

}  // namespace

CIMClass::CIMClass() : _rep(0) {}

CIMClass::CIMClass(const CIMClass& x) : _rep(Ref(x._rep)) {}

CIMClass::CIMClass(const CIMObject& x) : _rep(CastToClass(x._rep)) {}

CIMClass::CIMClass(const CIMName& className, const CIMName& superClassName)
    : _rep(NewClassRep(className, superClassName))
{
}

CIMClass::CIMClass(CIMClassRep* rep) : _rep(rep) {}

CIMClass& CIMClass::operator=(const CIMClass& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMClass::~CIMClass()
{
    Unref(_rep);
}

Boolean CIMClass::isAssociation() const
{
    return CheckRep(_rep)->qualifiers.isTrue(AssociationName());
}

Boolean CIMClass::isAbstract() const
{
    return CheckRep(_rep)->qualifiers.isTrue(AbstractName());
}

const CIMName& CIMClass::getClassName() const
{
    return CheckRep(_rep)->getClassName();
}

const CIMObjectPath& CIMClass::getPath() const
{
    return CheckRep(_rep)->reference;
}

void CIMClass::setPath(const CIMObjectPath& path)
{
    CheckRep(_rep)->setPath(path);
}

const CIMName& CIMClass::getSuperClassName() const
{
    return CheckRep(_rep)->superClassName;
}

void CIMClass::setSuperClassName(const CIMName& superClassName)
{
    CheckRep(_rep)->superClassName = superClassName;
}

CIMClass& CIMClass::addQualifier(const CIMQualifier& qualifier)
{
    CheckRep(_rep)->qualifiers.add(qualifier);
    return *this;
}

Uint32 CIMClass::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMQualifier CIMClass::getQualifier(Uint32 index)
{
    return CheckRep(_rep)->qualifiers.get(index);
}

CIMConstQualifier CIMClass::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

void CIMClass::removeQualifier(Uint32 index)
{
    CheckRep(_rep)->qualifiers.remove(index);
}

Uint32 CIMClass::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

CIMClass& CIMClass::addProperty(const CIMProperty& x)
{
    CheckRep(_rep)->addProperty(x);
    return *this;
}

Uint32 CIMClass::findProperty(const CIMName& name) const
{
    return CheckRep(_rep)->properties.find(name);
}

CIMProperty CIMClass::getProperty(Uint32 index)
{
    return CheckRep(_rep)->properties.get(index);
}

CIMConstProperty CIMClass::getProperty(Uint32 index) const
{
    return CheckRep(_rep)->properties.get(index);
}

void CIMClass::removeProperty(Uint32 index)
{
    CheckRep(_rep)->properties.remove(index);
}

Uint32 CIMClass::getPropertyCount() const
{
    return CheckRep(_rep)->properties.size();
}

CIMClass& CIMClass::addMethod(const CIMMethod& x)
{
    CheckRep(_rep)->addMethod(x);
    return *this;
}

Uint32 CIMClass::findMethod(const CIMName& name) const
{
    return CheckRep(_rep)->methods.find(name);
}

CIMMethod CIMClass::getMethod(Uint32 index)
{
    return CheckRep(_rep)->methods.get(index);
}

CIMConstMethod CIMClass::getMethod(Uint32 index) const
{
    return CheckRep(_rep)->methods.get(index);
}

void CIMClass::removeMethod(Uint32 index)
{
    CheckRep(_rep)->methods.remove(index);
}

Uint32 CIMClass::getMethodCount() const
{
    return CheckRep(_rep)->methods.size();
}

void CIMClass::getKeyNames(Array<CIMName>& keyNames) const
{
    CheckRep(_rep)->getKeyNames(keyNames);
}

Boolean CIMClass::hasKeys() const
{
    Array<CIMName> keyNames;
    CheckRep(_rep)->getKeyNames(keyNames);
    return keyNames.size() != 0;
}

CIMClass CIMClass::clone() const
{
    return CIMClass(static_cast<CIMClassRep*>(CheckRep(_rep)->clone()));
}

Boolean CIMClass::identical(const CIMConstClass& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

Boolean CIMClass::isUninitialized() const
{
    return _rep == 0;
}

CIMInstance CIMClass::buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList) const
{
    return CheckRep(_rep)->buildInstance(includeQualifiers, includeClassOrigin, propertyList);
}

CIMConstClass::CIMConstClass() : _rep(0) {}

CIMConstClass::CIMConstClass(const CIMConstClass& x) : _rep(Ref(x._rep)) {}

CIMConstClass::CIMConstClass(const CIMClass& x) : _rep(Ref(x._rep)) {}

CIMConstClass::CIMConstClass(const CIMObject& x) : _rep(CastToClass(x._rep)) {}

CIMConstClass::CIMConstClass(const CIMConstObject& x) : _rep(CastToClass(x._rep)) {}

CIMConstClass::CIMConstClass(const CIMName& className, const CIMName& superClassName)
    : _rep(NewClassRep(className, superClassName))
{
}

CIMConstClass& CIMConstClass::operator=(const CIMConstClass& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstClass& CIMConstClass::operator=(const CIMClass& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstClass::~CIMConstClass()
{
    Unref(_rep);
}

Boolean CIMConstClass::isAssociation() const
{
    return CheckRep(_rep)->qualifiers.isTrue(AssociationName());
}

Boolean CIMConstClass::isAbstract() const
{
    return CheckRep(_rep)->qualifiers.isTrue(AbstractName());
}

const CIMName& CIMConstClass::getClassName() const
{
    return CheckRep(_rep)->getClassName();
}

const CIMObjectPath& CIMConstClass::getPath() const
{
    return CheckRep(_rep)->reference;
}

const CIMName& CIMConstClass::getSuperClassName() const
{
    return CheckRep(_rep)->superClassName;
}

Uint32 CIMConstClass::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMConstQualifier CIMConstClass::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

Uint32 CIMConstClass::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

Uint32 CIMConstClass::findProperty(const CIMName& name) const
{
    return CheckRep(_rep)->properties.find(name);
}

CIMConstProperty CIMConstClass::getProperty(Uint32 index) const
{
    return CheckRep(_rep)->properties.get(index);
}

Uint32 CIMConstClass::getPropertyCount() const
{
    return CheckRep(_rep)->properties.size();
}

Uint32 CIMConstClass::findMethod(const CIMName& name) const
{
    return CheckRep(_rep)->methods.find(name);
}

CIMConstMethod CIMConstClass::getMethod(Uint32 index) const
{
    return CheckRep(_rep)->methods.get(index);
}

Uint32 CIMConstClass::getMethodCount() const
{
    return CheckRep(_rep)->methods.size();
}

void CIMConstClass::getKeyNames(Array<CIMName>& keyNames) const
{
    CheckRep(_rep)->getKeyNames(keyNames);
}

Boolean CIMConstClass::hasKeys() const
{
    Array<CIMName> keyNames;
    CheckRep(_rep)->getKeyNames(keyNames);
    return keyNames.size() != 0;
}

CIMClass CIMConstClass::clone() const
{
    return CIMObjectModelAccess::adopt(static_cast<CIMClassRep*>(CheckRep(_rep)->clone()));
}

Boolean CIMConstClass::identical(const CIMConstClass& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

Boolean CIMConstClass::isUninitialized() const
{
    return _rep == 0;
}

PEGASUS_NAMESPACE_END
