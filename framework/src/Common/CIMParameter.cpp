// CIMParameter and CIMConstParameter: shared handles to a CIMParameterRep.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

CIMParameterRep* NewParameterRep(const CIMName& name, CIMType type, Boolean isArray,
                                 Uint32 arraySize, const CIMName& referenceClassName)
{
    if (name.isNull())
        throw UninitializedObjectException();
    if (!referenceClassName.isNull() && type != CIMTYPE_REFERENCE)
        throw TypeMismatchException();
    if (arraySize && !isArray)
        throw TypeMismatchException();
    CIMParameterRep* rep = new CIMParameterRep;
    rep->name = name;
    rep->type = type;
    rep->isArray = isArray;
    rep->arraySize = arraySize;
    rep->referenceClassName = referenceClassName;
    return rep;
}

}  // namespace

CIMParameterRep* CIMParameterRep::clone() const
{
    CIMParameterRep* rep = NewParameterRep(name, type, isArray, arraySize, referenceClassName);
    qualifiers.cloneTo(rep->qualifiers);
    return rep;
}

Boolean CIMParameterRep::identical(const CIMParameterRep* x) const
{
    return this == x ||
           (name.equal(x->name) && type == x->type && isArray == x->isArray &&
            arraySize == x->arraySize && referenceClassName.equal(x->referenceClassName) &&
            qualifiers.identical(x->qualifiers));
}

CIMParameter::CIMParameter() : _rep(0) {}

CIMParameter::CIMParameter(const CIMParameter& x) : _rep(Ref(x._rep)) {}

CIMParameter::CIMParameter(const CIMName& name, CIMType type, Boolean isArray, Uint32 arraySize,
                           const CIMName& referenceClassName)
    : _rep(NewParameterRep(name, type, isArray, arraySize, referenceClassName))
{
}

CIMParameter::CIMParameter(CIMParameterRep* rep) : _rep(rep) {}

CIMParameter::~CIMParameter()
{
    Unref(_rep);
}

CIMParameter& CIMParameter::operator=(const CIMParameter& x)
{
    Assign(_rep, x._rep);
    return *this;
}

const CIMName& CIMParameter::getName() const
{
    return CheckRep(_rep)->name;
}

void CIMParameter::setName(const CIMName& name)
{
    CheckRep(_rep);
    if (name.isNull())
        throw UninitializedObjectException();
    _rep->name = name;
}

Boolean CIMParameter::isArray() const
{
    return CheckRep(_rep)->isArray;
}

Uint32 CIMParameter::getArraySize() const
{
    return CheckRep(_rep)->arraySize;
}

const CIMName& CIMParameter::getReferenceClassName() const
{
    return CheckRep(_rep)->referenceClassName;
}

CIMType CIMParameter::getType() const
{
    return CheckRep(_rep)->type;
}

CIMParameter& CIMParameter::addQualifier(const CIMQualifier& x)
{
    CheckRep(_rep)->qualifiers.add(x);
    return *this;
}

Uint32 CIMParameter::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMQualifier CIMParameter::getQualifier(Uint32 index)
{
    return CheckRep(_rep)->qualifiers.get(index);
}

void CIMParameter::removeQualifier(Uint32 index)
{
    CheckRep(_rep)->qualifiers.remove(index);
}

CIMConstQualifier CIMParameter::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

Uint32 CIMParameter::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

Boolean CIMParameter::isUninitialized() const
{
    return _rep == 0;
}

Boolean CIMParameter::identical(const CIMConstParameter& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

CIMParameter CIMParameter::clone() const
{
    return CIMParameter(CheckRep(_rep)->clone());
}

CIMConstParameter::CIMConstParameter() : _rep(0) {}

CIMConstParameter::CIMConstParameter(const CIMConstParameter& x) : _rep(Ref(x._rep)) {}

CIMConstParameter::CIMConstParameter(const CIMParameter& x) : _rep(Ref(x._rep)) {}

CIMConstParameter::CIMConstParameter(const CIMName& name, CIMType type, Boolean isArray,
                                     Uint32 arraySize, const CIMName& referenceClassName)
    : _rep(NewParameterRep(name, type, isArray, arraySize, referenceClassName))
{
}

CIMConstParameter::~CIMConstParameter()
{
    Unref(_rep);
}

CIMConstParameter& CIMConstParameter::operator=(const CIMConstParameter& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstParameter& CIMConstParameter::operator=(const CIMParameter& x)
{
    Assign(_rep, x._rep);
    return *this;
}

const CIMName& CIMConstParameter::getName() const
{
    return CheckRep(_rep)->name;
}

Boolean CIMConstParameter::isArray() const
{
    return CheckRep(_rep)->isArray;
}

Uint32 CIMConstParameter::getArraySize() const
{
    return CheckRep(_rep)->arraySize;
}

const CIMName& CIMConstParameter::getReferenceClassName() const
{
    return CheckRep(_rep)->referenceClassName;
}

CIMType CIMConstParameter::getType() const
{
    return CheckRep(_rep)->type;
}

Uint32 CIMConstParameter::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMConstQualifier CIMConstParameter::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

Uint32 CIMConstParameter::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

Boolean CIMConstParameter::isUninitialized() const
{
    return _rep == 0;
}

Boolean CIMConstParameter::identical(const CIMConstParameter& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

CIMParameter CIMConstParameter::clone() const
{
    return CIMObjectModelAccess::adopt(CheckRep(_rep)->clone());
}

PEGASUS_NAMESPACE_END
