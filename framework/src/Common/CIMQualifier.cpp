// CIMQualifier and CIMConstQualifier: shared handles to a CIMQualifierRep.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

CIMQualifierRep* NewQualifierRep(const CIMName& name, const CIMValue& value,
                                 const CIMFlavor& flavor, Boolean propagated)
{
    if (name.isNull())
        throw UninitializedObjectException();
    CIMQualifierRep* rep = new CIMQualifierRep;
    rep->name = name;
    rep->value = value;
    rep->flavor = flavor;
    rep->propagated = propagated;
    return rep;
}

Boolean IdenticalReps(const CIMQualifierRep* a, const CIMQualifierRep* b)
{
    return a == b || (a->name.equal(b->name) && a->value == b->value &&
                      a->flavor.equal(b->flavor) && a->propagated == b->propagated);
}

CIMQualifier CloneRep(const CIMQualifierRep* rep)
{
    return CIMObjectModelAccess::adopt(
        NewQualifierRep(rep->name, rep->value, rep->flavor, rep->propagated));
}

}  // namespace

CIMQualifier::CIMQualifier() : _rep(0) {}

CIMQualifier::CIMQualifier(const CIMQualifier& x) : _rep(Ref(x._rep)) {}

CIMQualifier::CIMQualifier(const CIMName& name, const CIMValue& value, const CIMFlavor& flavor,
                           Boolean propagated)
    : _rep(NewQualifierRep(name, value, flavor, propagated))
{
}

CIMQualifier::CIMQualifier(CIMQualifierRep* rep) : _rep(rep) {}

CIMQualifier::~CIMQualifier()
{
    Unref(_rep);
}

CIMQualifier& CIMQualifier::operator=(const CIMQualifier& x)
{
    Assign(_rep, x._rep);
    return *this;
}

const CIMName& CIMQualifier::getName() const
{
    return CheckRep(_rep)->name;
}

void CIMQualifier::setName(const CIMName& name)
{
    CheckRep(_rep);
    if (name.isNull())
        throw UninitializedObjectException();
    _rep->name = name;
}

CIMType CIMQualifier::getType() const
{
    return CheckRep(_rep)->value.getType();
}

Boolean CIMQualifier::isArray() const
{
    return CheckRep(_rep)->value.isArray();
}

const CIMValue& CIMQualifier::getValue() const
{
    return CheckRep(_rep)->value;
}

void CIMQualifier::setValue(const CIMValue& value)
{
    CheckRep(_rep)->value = value;
}

void CIMQualifier::setFlavor(const CIMFlavor& flavor)
{
    CheckRep(_rep)->flavor.addFlavor(flavor);
}

void CIMQualifier::unsetFlavor(const CIMFlavor& flavor)
{
    CheckRep(_rep)->flavor.removeFlavor(flavor);
}

const CIMFlavor& CIMQualifier::getFlavor() const
{
    return CheckRep(_rep)->flavor;
}

Uint32 CIMQualifier::getPropagated() const
{
    return CheckRep(_rep)->propagated ? 1 : 0;
}

void CIMQualifier::setPropagated(Boolean propagated)
{
    CheckRep(_rep)->propagated = propagated;
}

Boolean CIMQualifier::isUninitialized() const
{
    return _rep == 0;
}

Boolean CIMQualifier::identical(const CIMConstQualifier& x) const
{
    return IdenticalReps(CheckRep(_rep), CheckRep(x._rep));
}

CIMQualifier CIMQualifier::clone() const
{
    return CloneRep(CheckRep(_rep));
}

CIMConstQualifier::CIMConstQualifier() : _rep(0) {}

CIMConstQualifier::CIMConstQualifier(const CIMConstQualifier& x) : _rep(Ref(x._rep)) {}

CIMConstQualifier::CIMConstQualifier(const CIMQualifier& x) : _rep(Ref(x._rep)) {}

CIMConstQualifier::CIMConstQualifier(const CIMName& name, const CIMValue& value,
                                     const CIMFlavor& flavor, Boolean propagated)
    : _rep(NewQualifierRep(name, value, flavor, propagated))
{
}

CIMConstQualifier::~CIMConstQualifier()
{
    Unref(_rep);
}

CIMConstQualifier& CIMConstQualifier::operator=(const CIMConstQualifier& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstQualifier& CIMConstQualifier::operator=(const CIMQualifier& x)
{
    Assign(_rep, x._rep);
    return *this;
}

const CIMName& CIMConstQualifier::getName() const
{
    return CheckRep(_rep)->name;
}

CIMType CIMConstQualifier::getType() const
{
    return CheckRep(_rep)->value.getType();
}

Boolean CIMConstQualifier::isArray() const
{
    return CheckRep(_rep)->value.isArray();
}

const CIMValue& CIMConstQualifier::getValue() const
{
    return CheckRep(_rep)->value;
}

const CIMFlavor& CIMConstQualifier::getFlavor() const
{
    return CheckRep(_rep)->flavor;
}

Uint32 CIMConstQualifier::getPropagated() const
{
    return CheckRep(_rep)->propagated ? 1 : 0;
}

Boolean CIMConstQualifier::isUninitialized() const
{
    return _rep == 0;
}

Boolean CIMConstQualifier::identical(const CIMConstQualifier& x) const
{
    return IdenticalReps(CheckRep(_rep), CheckRep(x._rep));
}

CIMQualifier CIMConstQualifier::clone() const
{
    return CloneRep(CheckRep(_rep));
}

PEGASUS_NAMESPACE_END
