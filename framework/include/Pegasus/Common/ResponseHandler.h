//%/////////////////////////////////////////////////////////////////////////////
// Response handlers: how a provider hands its results back to the server.
//
// A provider calls processing() once it starts, deliver() for each result,
// and complete() when done. The concrete handlers belong to the server (or to
// whoever calls the provider); they may check what is delivered.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_ResponseHandler_h
#define Pegasus_ResponseHandler_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/CIMIndication.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/OperationContext.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE ResponseHandler {
public:
    virtual ~ResponseHandler();
    // The provider has started to work on the request.
    virtual void processing() = 0;
    // The provider has delivered everything.
    virtual void complete() = 0;
    // Attaches a context to the response (e.g. its content languages); the
    // handler keeps a copy.
    void setContext(const OperationContext& context);

protected:
    ResponseHandler();
    ResponseHandler(const ResponseHandler& handler);
    ResponseHandler& operator=(const ResponseHandler& handler);
    // A copy of the context last given to setContext() (empty if none).
    OperationContext getContext() const;

private:
    OperationContext _context;
};

// Receives the instances of getInstance and enumerateInstances.
class PEGASUS_COMMON_LINKAGE InstanceResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliver(const CIMInstance& instance) = 0;
    virtual void deliver(const Array<CIMInstance>& instances) = 0;
};

// Receives object paths (enumerateInstanceNames, createInstance, the
// association name operations).
class PEGASUS_COMMON_LINKAGE ObjectPathResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliver(const CIMObjectPath& objectPath) = 0;
    virtual void deliver(const Array<CIMObjectPath>& objectPaths) = 0;
};

// Receives a method's output parameters and its return value.
class PEGASUS_COMMON_LINKAGE MethodResultResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliverParamValue(const CIMParamValue& outParamValue) = 0;
    virtual void deliverParamValue(const Array<CIMParamValue>& outParamValues) = 0;
    virtual void deliver(const CIMValue& returnValue) = 0;
};

// Receives indications.
class PEGASUS_COMMON_LINKAGE IndicationResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliver(const CIMIndication& indication) = 0;
    virtual void deliver(const Array<CIMIndication>& indications) = 0;
    virtual void deliver(const OperationContext& context, const CIMIndication& indication) = 0;
    virtual void deliver(const OperationContext& context,
                         const Array<CIMIndication>& indications) = 0;
};

// Receives classes or instances (associators, references).
class PEGASUS_COMMON_LINKAGE ObjectResponseHandler : virtual public ResponseHandler {
public:
    virtual void deliver(const CIMObject& object) = 0;
    virtual void deliver(const Array<CIMObject>& objects) = 0;
};

PEGASUS_NAMESPACE_END

#endif
