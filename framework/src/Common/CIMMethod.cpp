// CIMMethod and CIMConstMethod: shared handles to a CIMMethodRep.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

CIMMethodRep* NewMethodRep(const CIMName& name, CIMType type, const CIMName& classOrigin,
                           Boolean propagated)
{
    if (name.isNull())
        throw UninitializedObjectException();
    CIMMethodRep* rep = new CIMMethodRep;
    rep->name = name;
    rep->type = type;
    rep->classOrigin = classOrigin;
    rep->propagated = propagated;
    return rep;
}

}  // namespace

CIMMethodRep* CIMMethodRep::clone() const
{
    CIMMethodRep* rep = NewMethodRep(name, type, classOrigin, propagated);
    qualifiers.cloneTo(rep->qualifiers);
    for (Uint32 i = 0; i < parameters.size(); i++)
        rep->parameters.append(parameters.get(i).clone());
    return rep;
}

Boolean CIMMethodRep::identical(const CIMMethodRep* x) const
{
    if (this == x)
        return true;
    if (!name.equal(x->name) || type != x->type || !qualifiers.identical(x->qualifiers) ||
        parameters.size() != x->parameters.size()) {
        return false;
    }
    for (Uint32 i = 0; i < parameters.size(); i++) {
        if (!parameters.get(i).identical(x->parameters.get(i)))
            return false;
    }
    return true;
}

CIMMethod::CIMMethod() : _rep(0) {}

CIMMethod::CIMMethod(const CIMMethod& x) : _rep(Ref(x._rep)) {}

CIMMethod::CIMMethod(const CIMName& name, CIMType type, const CIMName& classOrigin,
                     Boolean propagated)
    : _rep(NewMethodRep(name, type, classOrigin, propagated))
{
}

CIMMethod::CIMMethod(CIMMethodRep* rep) : _rep(rep) {}

CIMMethod::~CIMMethod()
{
    Unref(_rep);
}

CIMMethod& CIMMethod::operator=(const CIMMethod& x)
{
    Assign(_rep, x._rep);
    return *this;
}

const CIMName& CIMMethod::getName() const
{
    return CheckRep(_rep)->name;
}

void CIMMethod::setName(const CIMName& name)
{
    CheckRep(_rep);
    if (name.isNull())
        throw UninitializedObjectException();
    if (_rep->ownerCount != 0 && !_rep->name.equal(name)) {
        throw Exception("The name of method \"" + _rep->name.getString() +
                        "\" cannot change while it belongs to a class");
    }
    _rep->name = name;
}

CIMType CIMMethod::getType() const
{
    return CheckRep(_rep)->type;
}

void CIMMethod::setType(CIMType type)
{
    CheckRep(_rep)->type = type;
}

const CIMName& CIMMethod::getClassOrigin() const
{
    return CheckRep(_rep)->classOrigin;
}

void CIMMethod::setClassOrigin(const CIMName& classOrigin)
{
    CheckRep(_rep)->classOrigin = classOrigin;
}

Boolean CIMMethod::getPropagated() const
{
    return CheckRep(_rep)->propagated;
}

void CIMMethod::setPropagated(Boolean propagated)
{
    CheckRep(_rep)->propagated = propagated;
}

CIMMethod& CIMMethod::addQualifier(const CIMQualifier& x)
{
    CheckRep(_rep)->qualifiers.add(x);
    return *this;
}

Uint32 CIMMethod::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMQualifier CIMMethod::getQualifier(Uint32 index)
{
    return CheckRep(_rep)->qualifiers.get(index);
}

CIMConstQualifier CIMMethod::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

void CIMMethod::removeQualifier(Uint32 index)
{
    CheckRep(_rep)->qualifiers.remove(index);
}

Uint32 CIMMethod::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

CIMMethod& CIMMethod::addParameter(const CIMParameter& x)
{
    CheckRep(_rep);
    CIMParameterRep* p = CheckRep(CIMObjectModelAccess::rep(x));
    if (_rep->parameters.find(p->name) != PEG_NOT_FOUND) {
        throw AlreadyExistsException("parameter \"" + p->name.getString() + "\"");
    }
    _rep->parameters.append(x);
    return *this;
}

Uint32 CIMMethod::findParameter(const CIMName& name) const
{
    return CheckRep(_rep)->parameters.find(name);
}

CIMParameter CIMMethod::getParameter(Uint32 index)
{
    return CheckRep(_rep)->parameters.get(index);
}

CIMConstParameter CIMMethod::getParameter(Uint32 index) const
{
    return CheckRep(_rep)->parameters.get(index);
}

void CIMMethod::removeParameter(Uint32 index)
{
    CheckRep(_rep)->parameters.remove(index);
}

Uint32 CIMMethod::getParameterCount() const
{
    return CheckRep(_rep)->parameters.size();
}

Boolean CIMMethod::isUninitialized() const
{
    return _rep == 0;
}

Boolean CIMMethod::identical(const CIMConstMethod& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

CIMMethod CIMMethod::clone() const
{
    return CIMMethod(CheckRep(_rep)->clone());
}

CIMConstMethod::CIMConstMethod() : _rep(0) {}

CIMConstMethod::CIMConstMethod(const CIMConstMethod& x) : _rep(Ref(x._rep)) {}

CIMConstMethod::CIMConstMethod(const CIMMethod& x) : _rep(Ref(x._rep)) {}

CIMConstMethod::CIMConstMethod(const CIMName& name, CIMType type, const CIMName& classOrigin,
                               Boolean propagated)
    : _rep(NewMethodRep(name, type, classOrigin, propagated))
{
}

CIMConstMethod::~CIMConstMethod()
{
    Unref(_rep);
}

CIMConstMethod& CIMConstMethod::operator=(const CIMConstMethod& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMConstMethod& CIMConstMethod::operator=(const CIMMethod& x)
{
    Assign(_rep, x._rep);
    return *this;
}

const CIMName& CIMConstMethod::getName() const
{
    return CheckRep(_rep)->name;
}

CIMType CIMConstMethod::getType() const
{
    return CheckRep(_rep)->type;
}

const CIMName& CIMConstMethod::getClassOrigin() const
{
    return CheckRep(_rep)->classOrigin;
}

Boolean CIMConstMethod::getPropagated() const
{
    return CheckRep(_rep)->propagated;
}

Uint32 CIMConstMethod::findQualifier(const CIMName& name) const
{
    return CheckRep(_rep)->qualifiers.find(name);
}

CIMConstQualifier CIMConstMethod::getQualifier(Uint32 index) const
{
    return CheckRep(_rep)->qualifiers.get(index);
}

Uint32 CIMConstMethod::getQualifierCount() const
{
    return CheckRep(_rep)->qualifiers.size();
}

Uint32 CIMConstMethod::findParameter(const CIMName& name) const
{
    return CheckRep(_rep)->parameters.find(name);
}

CIMConstParameter CIMConstMethod::getParameter(Uint32 index) const
{
    return CheckRep(_rep)->parameters.get(index);
}

Uint32 CIMConstMethod::getParameterCount() const
{
    return CheckRep(_rep)->parameters.size();
}

Boolean CIMConstMethod::isUninitialized() const
{
    return _rep == 0;
}

Boolean CIMConstMethod::identical(const CIMConstMethod& x) const
{
    return CheckRep(_rep)->identical(CheckRep(x._rep));
}

CIMMethod CIMConstMethod::clone() const
{
    return CIMObjectModelAccess::adopt(CheckRep(_rep)->clone());
}

PEGASUS_NAMESPACE_END
