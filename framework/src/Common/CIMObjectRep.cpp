// CIMObjectRep, CIMClassRep and CIMInstanceRep: the state of classes and
// instances and the operations that work on it as a whole (clone, compare,
// filter, build an instance or a path).
#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>

#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

void CIMObjectRep::setPath(const CIMObjectPath& path)
{
    reference = path;
}

void CIMObjectRep::addProperty(const CIMProperty& property)
{
    CIMPropertyRep* rep = CheckRep(CIMObjectModelAccess::rep(property));
    if (properties.find(rep->name) != PEG_NOT_FOUND) {
        throw AlreadyExistsException("property \"" + rep->name.getString() + "\"");
    }
    properties.append(property);
}

Boolean CIMObjectRep::identical(const CIMObjectRep* x) const
{
    if (this == x)
        return true;
    if (isClass() != x->isClass() || !reference.identical(x->reference) ||
        !qualifiers.identical(x->qualifiers) || properties.size() != x->properties.size()) {
        return false;
    }
    for (Uint32 i = 0; i < properties.size(); i++) {
        const CIMPropertyRep* p = CIMObjectModelAccess::rep(properties.get(i));
        Uint32 j = x->properties.find(p->name);
        if (j == PEG_NOT_FOUND || !p->identical(CIMObjectModelAccess::rep(x->properties.get(j)))) {
            return false;
        }
    }
    return true;
}

void CIMObjectRep::filter(Boolean includeQualifiers, Boolean includeClassOrigin,
                          const CIMPropertyList& propertyList)
{
    if (!includeQualifiers)
        qualifiers.clear();
    for (Uint32 i = properties.size(); i-- > 0;) {
        CIMPropertyRep* p = CIMObjectModelAccess::rep(properties.get(i));
        if (!propertyList.useThisProperty(p->name)) {
            properties.remove(i);
            continue;
        }
        if (!includeQualifiers)
            p->qualifiers.clear();
        if (!includeClassOrigin)
            p->classOrigin.clear();
    }
}

void CIMObjectRep::cloneTo(CIMObjectRep* target) const
{
    target->reference = reference;
    qualifiers.cloneTo(target->qualifiers);
    for (Uint32 i = 0; i < properties.size(); i++)
        target->properties.append(properties.get(i).clone());
}

CIMObjectRep* CIMClassRep::clone() const
{
    CIMClassRep* rep = new CIMClassRep;
    cloneTo(rep);
    rep->superClassName = superClassName;
    for (Uint32 i = 0; i < methods.size(); i++)
        rep->methods.append(methods.get(i).clone());
    return rep;
}

void CIMClassRep::addProperty(const CIMProperty& property)
{
    CIMPropertyRep* rep = CheckRep(CIMObjectModelAccess::rep(property));
    if (rep->value.getType() == CIMTYPE_REFERENCE && rep->referenceClassName.isNull()) {
        throw TypeMismatchException();
    }
    CIMObjectRep::addProperty(property);
}

Boolean CIMClassRep::identical(const CIMObjectRep* x) const
{
    if (!CIMObjectRep::identical(x))
        return false;
    const CIMClassRep* c = static_cast<const CIMClassRep*>(x);
    if (!superClassName.equal(c->superClassName) || methods.size() != c->methods.size()) {
        return false;
    }
    for (Uint32 i = 0; i < methods.size(); i++) {
        const CIMMethodRep* m = CIMObjectModelAccess::rep(methods.get(i));
        Uint32 j = c->methods.find(m->name);
        if (j == PEG_NOT_FOUND || !m->identical(CIMObjectModelAccess::rep(c->methods.get(j)))) {
            return false;
        }
    }
    return true;
}

void CIMClassRep::addMethod(const CIMMethod& method)
{
    CIMMethodRep* rep = CheckRep(CIMObjectModelAccess::rep(method));
    if (methods.find(rep->name) != PEG_NOT_FOUND) {
        throw AlreadyExistsException("method \"" + rep->name.getString() + "\"");
    }
    methods.append(method);
}

void CIMClassRep::getKeyNames(Array<CIMName>& keyNames) const
{
    for (Uint32 i = 0; i < properties.size(); i++) {
        const CIMPropertyRep* p = CIMObjectModelAccess::rep(properties.get(i));
        if (p->isKey())
            keyNames.append(p->name);
    }
}

CIMInstance CIMClassRep::buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                                       const CIMPropertyList& propertyList) const
{
    CIMInstanceRep* rep = new CIMInstanceRep;
    CIMInstance instance = CIMObjectModelAccess::adopt(rep);
    rep->reference = CIMObjectPath(String(), CIMNamespaceName(), getClassName());
    if (includeQualifiers)
        qualifiers.cloneTo(rep->qualifiers);
    for (Uint32 i = 0; i < properties.size(); i++) {
        const CIMPropertyRep* p = CIMObjectModelAccess::rep(properties.get(i));
        if (!propertyList.useThisProperty(p->name))
            continue;
        CIMPropertyRep* copy = p->clone();
        if (!includeQualifiers)
            copy->qualifiers.clear();
        if (!includeClassOrigin)
            copy->classOrigin.clear();
        rep->properties.append(CIMObjectModelAccess::adopt(copy));
    }
    return instance;
}

CIMObjectRep* CIMInstanceRep::clone() const
{
    CIMInstanceRep* rep = new CIMInstanceRep;
    cloneTo(rep);
    return rep;
}

void CIMInstanceRep::setPath(const CIMObjectPath& path)
{
    const CIMName& className = path.getClassName();
    if (className.isNull())
        throw UninitializedObjectException();
    if (!className.equal(getClassName()))
        throw TypeMismatchException();
    reference = path;
}

CIMObjectPath CIMInstanceRep::buildPath(const CIMClassRep* cimClass) const
{
    Array<CIMName> keyNames;
    cimClass->getKeyNames(keyNames);
    Array<CIMKeyBinding> keys;
    for (Uint32 i = 0; i < keyNames.size(); i++) {
        Uint32 pos = properties.find(keyNames[i]);
        if (pos == PEG_NOT_FOUND)
            throw NoSuchProperty(keyNames[i].getString());
        keys.append(
            CIMKeyBinding(keyNames[i], CIMObjectModelAccess::rep(properties.get(pos))->value));
    }
    return CIMObjectPath(String(), CIMNamespaceName(), getClassName(), keys);
}

PEGASUS_NAMESPACE_END
