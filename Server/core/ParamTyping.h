// ParamTyping: gives a method's input parameters the types that the class
// declares for them.
//
// CIM-XML clients may send parameter values as untyped text (<VALUE>7</VALUE>)
// and a scalar where an array is declared; providers expect the declared
// types, so the server converts before calling the provider.
#ifndef ZAR_SERVER_CORE_PARAMTYPING_H
#define ZAR_SERVER_CORE_PARAMTYPING_H

#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>

namespace zarserver {

// Returns the parameters with each value converted to the declared type of
// the parameter of that name (ignoring case) in method. Parameters that the
// method does not declare, and all of them when method is uninitialized, are
// passed through unchanged. Text that does not parse as the declared type
// throws CIMException CIM_ERR_INVALID_PARAMETER naming the parameter.
Pegasus::Array<Pegasus::CIMParamValue> typeInParameters(
    const Pegasus::CIMConstMethod& method, const Pegasus::Array<Pegasus::CIMParamValue>& in);

// Converts text to a scalar value of the type; throws CIMException
// CIM_ERR_INVALID_PARAMETER (message mentions what) when it does not parse.
Pegasus::CIMValue valueFromText(const Pegasus::String& text, Pegasus::CIMType type,
                                const Pegasus::String& what);

}  // namespace zarserver

#endif
