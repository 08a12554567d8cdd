// The state behind Exception and its subclasses.

#ifndef Pegasus_ExceptionRep_h
#define Pegasus_ExceptionRep_h

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/CIMInstance.h>

PEGASUS_NAMESPACE_BEGIN

// One representation serves every exception class: plain exceptions use only
// the message; CIMExceptions add the code and CIM_Error instances;
// TraceableCIMExceptions add where they were raised.
class ExceptionRep {
public:
    String message;
    CIMStatusCode code = CIM_ERR_SUCCESS;
    String file;
    Uint32 line = 0;
    ContentLanguageList contentLanguages;
    String cimMessage;
    Array<CIMInstance> errors;
};

PEGASUS_NAMESPACE_END

#endif
