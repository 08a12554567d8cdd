// CIMProperty and CIMConstProperty: shared handles to a CIMPropertyRep.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

// The value checks shared by the constructor and setValue().
void CheckPropertyValue(const CIMValue& value, Uint32 arraySize)
{
    if (value.isArray() && value.getType() == CIMTYPE_REFERENCE)
        throw TypeMismatchException();
    if (arraySize && (!value.isArray() || (!value.isNull() && value.getArraySize() != arraySize))) {
        throw TypeMismatchException();
    }
}

CIMPropertyRep* NewPropertyRep(const CIMName& name, const CIMValue& value, Uint32 arraySize,
                               const CIMName& referenceClassName, const CIMName& classOrigin,
                               Boolean propagated)
{
    if (name.isNull())
        throw UninitializedObjectException();
    if (!referenceClassName.isNull() && value.getType() != CIMTYPE_REFERENCE)
        throw TypeMismatchException();
    CheckPropertyValue(value, arraySize);
    CIMPropertyRep* rep = new CIMPropertyRep;
    rep->name = name;
    rep->value = value;
    rep->arraySize = arraySize;
    rep->referenceClassName = referenceClassName;
    rep->classOrigin = classOrigin;
    rep->propagated = propagated;
    return rep;
}

}  // namespace

const CIMName& CIMPropertyRep::CIMNameKey()
{
    static const CIMName key("Key");
    return key;
}

CIMPropertyRep* CIMPropertyRep::clone() const
{
    CIMPropertyRep* rep = new CIMPropertyRep;
    rep->name = name;
    rep->value = value;
    rep->arraySize = arraySize;
    rep->referenceClassName = referenceClassName;
    rep->classOrigin = classOrigin;
    rep->propagated = propagated;
    qualifiers.cloneTo(rep->qualifiers);
    return rep;
}

Boolean CIMPropertyRep::identical(const CIMPropertyRep* x) const
{
    return this == x ||
           (name.equal(x->name) && value == x->value && arraySize == x->arraySize &&
            referenceClassName.equal(x->referenceClassName) && classOrigin.equal(x->classOrigin) &&
            propagated == x->propagated && qualifiers.identical(x->qualifiers));
}

CIMProperty::CIMProperty() : _rep(0) {}

CIMProperty::CIMProperty(const CIMProperty& x) : _rep(Ref(x._rep)) {}

CIMProperty::CIMProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize,
                         const CIMName& referenceClassName, const CIMName& classOrigin,
                         Boolean propagated)
    : _rep(NewPropertyRep(name, value, arraySize, referenceClassName, classOrigin, propagated))
{
}

CIMProperty::CIMProperty(CIMPropertyRep* rep) : _rep(rep) {}

CIMProperty::~CIMProperty()
{
    Unref(_rep);
}

CIMProperty& CIMProperty::operator=(const CIMProperty& x)
{
    Assign(_rep, x._rep);
    return *this;
}

const CIMName& CIMProperty::getName() const
{
    return CheckRep(_rep)->name;
}

void CIMProperty::setName(const CIMName& name)
{
    CheckRep(_rep);
    if (name.isNull())
        throw UninitializedObjectException();
    if (_rep->ownerCount != 0 && !_rep->name.equal(name)) {
        throw Exception("The name of property \"" + _rep->name.getString() +
                        "\" cannot change while it belongs to a class or instance");
    }
    _rep->name = name;
}

const CIMValue& CIMProperty::getValue() const
{
    return CheckRep(_rep)->value;
}

CIMType CIMProperty::getType() const
{
    return CheckRep(_rep)->value.getType();
}

Boolean CIMProperty::isArray() const
{
    return CheckRep(_rep)->value.isArray();
}

void CIMProperty::setValue(const CIMValue& value)
{
    CheckRep(_rep);
    if (!_rep->value.typeCompatible(value))
        throw TypeMismatchException();
    CheckPropertyValue(value, _rep->arraySize);
    _rep->value = value;
}

Uint32 CIMProperty::getArraySize() const
{
    return CheckRep(_rep)->arraySize;
}

const CIMName& CIMProperty::getReferenceClassName() const
{
    return CheckRep(_rep)->referenceClassName;
}

const CIMName& CIMProperty::getClassOrigin() const
{
    return CheckRep(_rep)->classOrigin;
}

void CIMProperty::setClassOrigin(const CIMName& classOrigin)
{
    CheckRep(_rep)->classOrigin = classOrigin;
}

Boolean CIMProperty::getPropagated() const
{
    return CheckRep(_rep)->propagated;
}

void CIMProperty::setPropagated(Boolean propagated)
{
    CheckRep(_rep)->propagated = propagated;
}

CIMProperty& CIMProperty::addQualifier(const CIMQualifier& x)
{
    CheckRep(_rep)->qualifiers.add(x);
    return *this;
}

Uint32 CIMProperty::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMQualifier CIMProperty::getQualifier(Uint32 index)
{
    return CheckRep(_rep)->qualifiers.get(index);
}

CIMConstQualifier CIMProperty::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

void CIMProperty::removeQualifier(Uint32 index)
{
    CheckRep(_rep)->qualifiers.remove(index);
}

Uint32 CIMProperty::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

Boolean CIMProperty::identical(const CIMConstProperty& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

CIMProperty CIMProperty::clone() const
{
    return CIMProperty(CheckRep(_rep)->clone());
}

Boolean CIMProperty::isUninitialized() const
{
    return _rep == 0;
}

CIMConstProperty::CIMConstProperty() : _rep(0) {}

CIMConstProperty::CIMConstProperty(const CIMConstProperty& x) : _rep(Ref(x._rep)) {}

CIMConstProperty::CIMConstProperty(const CIMProperty& x) : _rep(Ref(x._rep)) {}

CIMConstProperty::CIMConstProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize,
                                   const CIMName& referenceClassName, const CIMName& classOrigin,
                                   Boolean propagated)
    : _rep(NewPropertyRep(name, value, arraySize, referenceClassName, classOrigin, propagated))
{
}

CIMConstProperty::~CIMConstProperty()
{
    Unref(_rep);
}

CIMConstProperty& CIMConstProperty::operator=(const CIMConstProperty& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstProperty& CIMConstProperty::operator=(const CIMProperty& x)
{
    Assign(_rep, x._rep);
    return *this;
}

const CIMName& CIMConstProperty::getName() const
{
    return CheckRep(_rep)->name;
}

const CIMValue& CIMConstProperty::getValue() const
{
    return CheckRep(_rep)->value;
}

CIMType CIMConstProperty::getType() const
{
    return CheckRep(_rep)->value.getType();
}

Boolean CIMConstProperty::isArray() const
{
    return CheckRep(_rep)->value.isArray();
}

Uint32 CIMConstProperty::getArraySize() const
{
    return CheckRep(_rep)->arraySize;
}

const CIMName& CIMConstProperty::getReferenceClassName() const
{
    return CheckRep(_rep)->referenceClassName;
}

const CIMName& CIMConstProperty::getClassOrigin() const
{
    return CheckRep(_rep)->classOrigin;
}

Boolean CIMConstProperty::getPropagated() const
{
    return CheckRep(_rep)->propagated;
}

Uint32 CIMConstProperty::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMConstQualifier CIMConstProperty::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

Uint32 CIMConstProperty::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

Boolean CIMConstProperty::identical(const CIMConstProperty& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

CIMProperty CIMConstProperty::clone() const
{
    return CIMObjectModelAccess::adopt(CheckRep(_rep)->clone());
}

Boolean CIMConstProperty::isUninitialized() const
{
    return _rep == 0;
}

PEGASUS_NAMESPACE_END
