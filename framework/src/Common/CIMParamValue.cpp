// CIMParamValue: shared handle to a CIMParamValueRep.
#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

CIMParamValue::CIMParamValue() : _rep(0) {}

CIMParamValue::CIMParamValue(const CIMParamValue& x) : _rep(Ref(x._rep)) {}

CIMParamValue::CIMParamValue(CIMParamValueRep* rep) : _rep(rep) {}

CIMParamValue& CIMParamValue::operator=(const CIMParamValue& x)
{
    Assign(_rep, x._rep);
    return *this;
}

CIMParamValue::CIMParamValue(String parameterName, CIMValue value, Boolean isTyped) : _rep(0)
{
    if (parameterName.size() == 0)
        throw UninitializedObjectException();
    _rep = new CIMParamValueRep;
    _rep->name = parameterName;
    _rep->value = value;
    _rep->isTyped = isTyped;
}

CIMParamValue::~CIMParamValue()
{
    Unref(_rep);
}

String CIMParamValue::getParameterName() const
{
    return CheckRep(_rep)->name;
}

CIMValue CIMParamValue::getValue() const
{
    return CheckRep(_rep)->value;
}

Boolean CIMParamValue::isTyped() const
{
    return CheckRep(_rep)->isTyped;
}

void CIMParamValue::setParameterName(String& parameterName)
{
    CheckRep(_rep);
    if (parameterName.size() == 0)
        throw UninitializedObjectException();
    _rep->name = parameterName;
}

void CIMParamValue::setValue(CIMValue& value)
{
    CheckRep(_rep)->value = value;
}

void CIMParamValue::setIsTyped(Boolean isTyped)
{
    CheckRep(_rep)->isTyped = isTyped;
}

CIMParamValue CIMParamValue::clone() const
{
    CheckRep(_rep);
    CIMParamValueRep* rep = new CIMParamValueRep;
    rep->name = _rep->name;
    rep->value = _rep->value;
    rep->isTyped = _rep->isTyped;
    return CIMParamValue(rep);
}

Boolean CIMParamValue::isUninitialized() const
{
    return _rep == 0;
}

PEGASUS_NAMESPACE_END
