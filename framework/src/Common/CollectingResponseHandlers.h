// Response handlers that collect what a CIMOperationHost streams into
// arrays, for the callers that return results as values (CIMOMHandle and the
// in-process CIMClient connection). Each delivered object is cloned so that
// the caller never shares an object with the provider that produced it.
// Internal to the framework libraries.
#ifndef Pegasus_Common_CollectingResponseHandlers_h
#define Pegasus_Common_CollectingResponseHandlers_h

#include <Pegasus/Common/ResponseHandler.h>

PEGASUS_NAMESPACE_BEGIN

class CollectingInstanceHandler : public InstanceResponseHandler {
public:
    virtual void processing() {}
    virtual void complete() {}
    virtual void deliver(const CIMInstance& instance)
    {
        instances.append(instance.isUninitialized() ? instance : instance.clone());
    }
    virtual void deliver(const Array<CIMInstance>& x)
    {
        for (Uint32 i = 0; i < x.size(); i++)
            deliver(x[i]);
    }

    Array<CIMInstance> instances;
};

class CollectingObjectPathHandler : public ObjectPathResponseHandler {
public:
    virtual void processing() {}
    virtual void complete() {}
    virtual void deliver(const CIMObjectPath& path) { paths.append(path); }
    virtual void deliver(const Array<CIMObjectPath>& x) { paths.appendArray(x); }

    Array<CIMObjectPath> paths;
};

class CollectingObjectHandler : public ObjectResponseHandler {
public:
    virtual void processing() {}
    virtual void complete() {}
    virtual void deliver(const CIMObject& object)
    {
        objects.append(object.isUninitialized() ? object : object.clone());
    }
    virtual void deliver(const Array<CIMObject>& x)
    {
        for (Uint32 i = 0; i < x.size(); i++)
            deliver(x[i]);
    }

    Array<CIMObject> objects;
};

PEGASUS_NAMESPACE_END

#endif
