// CheckedHandlers: the response handlers given to providers.
//
// They check what a provider delivers as a CIM server does (uninitialized
// objects, too many or too few objects: CIM_ERR_FAILED with the texts
// below) and either collect the result (single-object operations) or pass
// each object on to the caller's handler after a transformation.
#ifndef ZAR_SERVER_CORE_CHECKEDHANDLERS_H
#define ZAR_SERVER_CORE_CHECKEDHANDLERS_H

#include <functional>
#include <mutex>
#include <vector>

#include <Pegasus/Common/ResponseHandler.h>

namespace zarserver {

extern const char* const kNotInitialized;  // "The object is not initialized."
extern const char* const kTooMany;         // "Too many objects delivered."
extern const char* const kTooFew;          // "Too few objects delivered."

// Collects the one instance of getInstance.
class SingleInstanceHandler : public Pegasus::InstanceResponseHandler {
public:
    void processing() override {}
    void complete() override;
    void deliver(const Pegasus::CIMInstance& instance) override;
    void deliver(const Pegasus::Array<Pegasus::CIMInstance>& instances) override;
    // The instance; throws kTooFew when none was delivered.
    Pegasus::CIMInstance result() const;

private:
    Pegasus::CIMInstance _instance;
    bool _delivered = false;
};

// Collects the one path of createInstance.
class SinglePathHandler : public Pegasus::ObjectPathResponseHandler {
public:
    void processing() override {}
    void complete() override;
    void deliver(const Pegasus::CIMObjectPath& path) override;
    void deliver(const Pegasus::Array<Pegasus::CIMObjectPath>& paths) override;
    // The path; throws kTooFew when none was delivered.
    Pegasus::CIMObjectPath result() const;

private:
    Pegasus::CIMObjectPath _path;
    bool _delivered = false;
};

// For operations without a result (modifyInstance, deleteInstance).
class CompletionHandler : public Pegasus::ResponseHandler {
public:
    void processing() override {}
    void complete() override {}
};

// Collects a method's return value and output parameters.
class MethodResultHandler : public Pegasus::MethodResultResponseHandler {
public:
    void processing() override {}
    void complete() override {}
    void deliverParamValue(const Pegasus::CIMParamValue& value) override;
    void deliverParamValue(const Pegasus::Array<Pegasus::CIMParamValue>& values) override;
    void deliver(const Pegasus::CIMValue& returnValue) override;

    bool hasReturnValue() const { return _hasReturn; }
    const Pegasus::CIMValue& returnValue() const { return _return; }
    const Pegasus::Array<Pegasus::CIMParamValue>& outParameters() const { return _out; }

private:
    Pegasus::CIMValue _return;
    bool _hasReturn = false;
    Pegasus::Array<Pegasus::CIMParamValue> _out;
};

// Passes instances to another handler. The transform may change the
// instance or return an uninitialized one to drop it. complete() and
// processing() are not passed on: the dispatcher completes the target once
// every provider has answered.
class ForwardingInstanceHandler : public Pegasus::InstanceResponseHandler {
public:
    typedef std::function<Pegasus::CIMInstance(const Pegasus::CIMInstance&)> Transform;
    ForwardingInstanceHandler(Pegasus::InstanceResponseHandler& target, Transform transform);
    void processing() override {}
    void complete() override {}
    void deliver(const Pegasus::CIMInstance& instance) override;
    void deliver(const Pegasus::Array<Pegasus::CIMInstance>& instances) override;

private:
    Pegasus::InstanceResponseHandler& _target;
    Transform _transform;
    std::mutex _mutex;
};

// Same for object paths; the transform returns false to drop a path.
class ForwardingPathHandler : public Pegasus::ObjectPathResponseHandler {
public:
    typedef std::function<bool(Pegasus::CIMObjectPath&)> Transform;
    ForwardingPathHandler(Pegasus::ObjectPathResponseHandler& target, Transform transform);
    void processing() override {}
    void complete() override {}
    void deliver(const Pegasus::CIMObjectPath& path) override;
    void deliver(const Pegasus::Array<Pegasus::CIMObjectPath>& paths) override;

private:
    Pegasus::ObjectPathResponseHandler& _target;
    Transform _transform;
    std::mutex _mutex;
};

// Same for objects (association results); the transform returns an
// uninitialized object to drop one.
class ForwardingObjectHandler : public Pegasus::ObjectResponseHandler {
public:
    typedef std::function<Pegasus::CIMObject(const Pegasus::CIMObject&)> Transform;
    ForwardingObjectHandler(Pegasus::ObjectResponseHandler& target, Transform transform);
    void processing() override {}
    void complete() override {}
    void deliver(const Pegasus::CIMObject& object) override;
    void deliver(const Pegasus::Array<Pegasus::CIMObject>& objects) override;

private:
    Pegasus::ObjectResponseHandler& _target;
    Transform _transform;
    std::mutex _mutex;
};

}  // namespace zarserver

#endif
