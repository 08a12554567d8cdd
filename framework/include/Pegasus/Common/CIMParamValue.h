//%/////////////////////////////////////////////////////////////////////////////
// CIMParamValue: a method parameter's name and value, as passed to and
// returned from an extrinsic method call.
//
// Shared handle: copies refer to the same object; clone() makes an
// independent copy. A default-constructed handle is uninitialized and every
// member except isUninitialized() throws UninitializedObjectException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_ParamValue_h
#define Pegasus_ParamValue_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMValue.h>

PEGASUS_NAMESPACE_BEGIN

class CIMParamValueRep;

class PEGASUS_COMMON_LINKAGE CIMParamValue {
public:
    // Uninitialized handle.
    CIMParamValue();
    CIMParamValue(const CIMParamValue& x);             // shares
    CIMParamValue& operator=(const CIMParamValue& x);  // shares
    // A new parameter value; an empty name throws
    // UninitializedObjectException. isTyped tells whether the value's type
    // is known (false for a value received without a type).
    CIMParamValue(String parameterName, CIMValue value, Boolean isTyped = true);
    ~CIMParamValue();

    // The name in the spelling it was given.
    String getParameterName() const;
    CIMValue getValue() const;
    Boolean isTyped() const;
    // Renames; an empty name throws UninitializedObjectException.
    void setParameterName(String& parameterName);
    void setValue(CIMValue& value);
    void setIsTyped(Boolean isTyped);
    CIMParamValue clone() const;
    Boolean isUninitialized() const;

private:
    CIMParamValue(CIMParamValueRep* rep);
    CIMParamValueRep* _rep;
    friend class CIMObjectModelAccess;
};

PEGASUS_NAMESPACE_END

#endif
