// CIMInstance and CIMConstInstance: shared handles to a CIMInstanceRep.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

CIMInstanceRep* NewInstanceRep(const CIMName& className)
{
    if (className.isNull())
        throw UninitializedObjectException();
    CIMInstanceRep* rep = new CIMInstanceRep;
    rep->reference = CIMObjectPath(String(), CIMNamespaceName(), className);
    return rep;
}

CIMInstanceRep* CastToInstance(CIMObjectRep* rep)
{
    CIMInstanceRep* i = dynamic_cast<CIMInstanceRep*>(rep);
    if (!i)
        throw DynamicCastFailedException();
    return Ref(i);
}

}  // namespace

CIMInstance::CIMInstance() : _rep(0) {}

CIMInstance::CIMInstance(const CIMInstance& x) : _rep(Ref(x._rep)) {}

CIMInstance::CIMInstance(const CIMObject& x) : _rep(CastToInstance(x._rep)) {}

CIMInstance::CIMInstance(const CIMName& className) : _rep(NewInstanceRep(className)) {}

CIMInstance::CIMInstance(CIMInstanceRep* rep) : _rep(rep) {}

CIMInstance& CIMInstance::operator=(const CIMInstance& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMInstance::~CIMInstance()
{
    Unref(_rep);
}

const CIMName& CIMInstance::getClassName() const
{
    return CheckRep(_rep)->getClassName();
}

const CIMObjectPath& CIMInstance::getPath() const
{
    return CheckRep(_rep)->reference;
}

void CIMInstance::setPath(const CIMObjectPath& path)
{
    CheckRep(_rep)->setPath(path);
}

CIMInstance& CIMInstance::addQualifier(const CIMQualifier& qualifier)
{
    CheckRep(_rep)->qualifiers.add(qualifier);
    return *this;
}

Uint32 CIMInstance::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMQualifier CIMInstance::getQualifier(Uint32 index)
{
    return CheckRep(_rep)->qualifiers.get(index);
}

CIMConstQualifier CIMInstance::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

void CIMInstance::removeQualifier(Uint32 index)
{
    CheckRep(_rep)->qualifiers.remove(index);
}

Uint32 CIMInstance::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

CIMInstance& CIMInstance::addProperty(const CIMProperty& x)
{
    CheckRep(_rep)->addProperty(x);
    return *this;
}

Uint32 CIMInstance::findProperty(const CIMName& name) const
{
    return CheckRep(_rep)->properties.find(name);
}

CIMProperty CIMInstance::getProperty(Uint32 index)
{
    return CheckRep(_rep)->properties.get(index);
}

CIMConstProperty CIMInstance::getProperty(Uint32 index) const
{
    return CheckRep(_rep)->properties.get(index);
}

void CIMInstance::removeProperty(Uint32 index)
{
    CheckRep(_rep)->properties.remove(index);
}

Uint32 CIMInstance::getPropertyCount() const
{
    return CheckRep(_rep)->properties.size();
}

CIMObjectPath CIMInstance::buildPath(const CIMConstClass& cimClass) const
{
    return CheckRep(_rep)->buildPath(CheckRep(cimClass._rep));
}

CIMInstance CIMInstance::clone() const
{
    return CIMInstance(static_cast<CIMInstanceRep*>(CheckRep(_rep)->clone()));
}

Boolean CIMInstance::identical(const CIMConstInstance& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

Boolean CIMInstance::isUninitialized() const
{
    return _rep == 0;
}

void CIMInstance::filter(Boolean includeQualifiers, Boolean includeClassOrigin,
                         const CIMPropertyList& propertyList)
{
    CheckRep(_rep)->filter(includeQualifiers, includeClassOrigin, propertyList);
}

void CIMInstance::instanceFilter(Boolean includeQualifiers, Boolean includeClassOrigin,
                                 const CIMPropertyList& propertyList)
{
    CheckRep(_rep)->filter(includeQualifiers, includeClassOrigin, propertyList);
}

CIMConstInstance::CIMConstInstance() : _rep(0) {}

CIMConstInstance::CIMConstInstance(const CIMConstInstance& x) : _rep(Ref(x._rep)) {}

CIMConstInstance::CIMConstInstance(const CIMInstance& x) : _rep(Ref(x._rep)) {}

CIMConstInstance::CIMConstInstance(const CIMObject& x) : _rep(CastToInstance(x._rep)) {}

CIMConstInstance::CIMConstInstance(const CIMConstObject& x) : _rep(CastToInstance(x._rep)) {}

CIMConstInstance::CIMConstInstance(const CIMName& className) : _rep(NewInstanceRep(className)) {}

CIMConstInstance& CIMConstInstance::operator=(const CIMConstInstance& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstInstance& CIMConstInstance::operator=(const CIMInstance& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstInstance::~CIMConstInstance()
{
    Unref(_rep);
}

const CIMName& CIMConstInstance::getClassName() const
{
    return CheckRep(_rep)->getClassName();
}

const CIMObjectPath& CIMConstInstance::getPath() const
{
    return CheckRep(_rep)->reference;
}

Uint32 CIMConstInstance::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMConstQualifier CIMConstInstance::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

Uint32 CIMConstInstance::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

Uint32 CIMConstInstance::findProperty(const CIMName& name) const
{
    return CheckRep(_rep)->properties.find(name);
}

CIMConstProperty CIMConstInstance::getProperty(Uint32 index) const
{
    return CheckRep(_rep)->properties.get(index);
}

Uint32 CIMConstInstance::getPropertyCount() const
{
    return CheckRep(_rep)->properties.size();
}

CIMObjectPath CIMConstInstance::buildPath(const CIMConstClass& cimClass) const
{
    return CheckRep(_rep)->buildPath(CheckRep(CIMObjectModelAccess::rep(cimClass)));
}

CIMInstance CIMConstInstance::clone() const
{
    return CIMObjectModelAccess::adopt(static_cast<CIMInstanceRep*>(CheckRep(_rep)->clone()));
}

Boolean CIMConstInstance::identical(const CIMConstInstance& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

Boolean CIMConstInstance::isUninitialized() const
{
    return _rep == 0;
}

PEGASUS_NAMESPACE_END
