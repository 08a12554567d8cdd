// TestOperationHost: a small in-memory CIM server for the framework's tests.
// It keeps classes and instances, records the context of every call, and
// has methods that echo their input or fail in each way a server can see:
//   Echo      returns the number of input parameters and sends them back
//   Fail      CIMException with the vendor code 4097, "LU=x: bad\n"
//   Mismatch  TypeMismatchException (not a CIMException)
//   Std       std::runtime_error("std boom")
//   Latin1    std::runtime_error whose text is not valid UTF-8
//   Int       throw 42
// Instances are stored and delivered with paths that carry the host name
// "testhost" and the namespace of the request.
#ifndef ZAR_FRAMEWORK_TESTS_TESTOPERATIONHOST_H
#define ZAR_FRAMEWORK_TESTS_TESTOPERATIONHOST_H

#include <stdexcept>
#include <vector>

#include <zarframework/CIMOperationHost.h>

namespace zartest {

using namespace Pegasus;

// A ZAR_Volume instance keyed by its Name, with its Size.
inline CIMInstance Volume(const char* name, Uint32 size)
{
    CIMInstance i("ZAR_Volume");
    i.addProperty(CIMProperty("Name", CIMValue(String(name))));
    i.addProperty(CIMProperty("Size", CIMValue(size)));
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("Name", CIMValue(String(name))));
    i.setPath(CIMObjectPath(String(), CIMNamespaceName(), "ZAR_Volume", keys));
    return i;
}

class TestOperationHost : public CIMOperationHost {
public:
    // Contexts of the calls received, oldest first.
    std::vector<OperationContext> contexts;
    std::vector<CIMClass> classes;
    std::vector<CIMInstance> instances;

    // The user name of the last call's IdentityContainer ("<none>" if it
    // had none).
    String lastUser() const
    {
        if (contexts.empty() || !contexts.back().contains(IdentityContainer::NAME)) {
            return "<none>";
        }
        return IdentityContainer(contexts.back().get(IdentityContainer::NAME)).getUserName();
    }

    // Stores a copy of instance under its path's keys, in namespace ns.
    CIMObjectPath store(const CIMNamespaceName& ns, const CIMInstance& instance)
    {
        CIMInstance copy = instance.clone();
        const CIMObjectPath& p = instance.getPath();
        CIMObjectPath full("testhost", ns, p.getClassName(), p.getKeyBindings());
        copy.setPath(full);
        instances.push_back(copy);
        return full;
    }

    CIMClass getClass(const OperationContext& context, const CIMNamespaceName&,
                      const CIMName& className, Boolean, Boolean, Boolean, const CIMPropertyList&)
    {
        contexts.push_back(context);
        for (size_t i = 0; i < classes.size(); i++) {
            if (classes[i].getClassName().equal(className))
                return classes[i];
        }
        throw CIMException(CIM_ERR_NOT_FOUND, className.getString());
    }

    Array<CIMClass> enumerateClasses(const OperationContext& context, const CIMNamespaceName&,
                                     const CIMName&, Boolean, Boolean, Boolean, Boolean)
    {
        contexts.push_back(context);
        Array<CIMClass> result;
        for (size_t i = 0; i < classes.size(); i++)
            result.append(classes[i]);
        return result;
    }

    Array<CIMName> enumerateClassNames(const OperationContext& context, const CIMNamespaceName&,
                                       const CIMName&, Boolean)
    {
        contexts.push_back(context);
        Array<CIMName> result;
        for (size_t i = 0; i < classes.size(); i++)
            result.append(classes[i].getClassName());
        return result;
    }

    CIMInstance getInstance(const OperationContext& context, const CIMNamespaceName&,
                            const CIMObjectPath& instanceName, Boolean, Boolean, Boolean,
                            const CIMPropertyList&)
    {
        contexts.push_back(context);
        return instances[find(instanceName)];
    }

    void enumerateInstances(const OperationContext& context, const CIMNamespaceName&,
                            const CIMName& className, Boolean, Boolean, Boolean, Boolean,
                            const CIMPropertyList&, InstanceResponseHandler& handler)
    {
        contexts.push_back(context);
        handler.processing();
        for (size_t i = 0; i < instances.size(); i++) {
            if (instances[i].getClassName().equal(className))
                handler.deliver(instances[i]);
        }
        handler.complete();
    }

    void enumerateInstanceNames(const OperationContext& context, const CIMNamespaceName&,
                                const CIMName& className, ObjectPathResponseHandler& handler)
    {
        contexts.push_back(context);
        handler.processing();
        for (size_t i = 0; i < instances.size(); i++) {
            if (instances[i].getClassName().equal(className))
                handler.deliver(instances[i].getPath());
        }
        handler.complete();
    }

    CIMObjectPath createInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMInstance& newInstance)
    {
        contexts.push_back(context);
        if (position(newInstance.getPath()) >= 0) {
            throw CIMException(CIM_ERR_ALREADY_EXISTS, newInstance.getPath().toString());
        }
        return store(nameSpace, newInstance);
    }

    void modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                        const CIMInstance& modifiedInstance, Boolean, const CIMPropertyList&)
    {
        contexts.push_back(context);
        instances.erase(instances.begin() + find(modifiedInstance.getPath()));
        store(nameSpace, modifiedInstance);
    }

    void deleteInstance(const OperationContext& context, const CIMNamespaceName&,
                        const CIMObjectPath& instanceName)
    {
        contexts.push_back(context);
        instances.erase(instances.begin() + find(instanceName));
    }

    // Every stored instance other than objectName is associated with it.
    void associators(const OperationContext& context, const CIMNamespaceName&,
                     const CIMObjectPath& objectName, const CIMName&, const CIMName&, const String&,
                     const String&, Boolean, Boolean, const CIMPropertyList&,
                     ObjectResponseHandler& handler)
    {
        contexts.push_back(context);
        long self = position(objectName);
        for (size_t i = 0; i < instances.size(); i++) {
            if (long(i) != self)
                handler.deliver(instances[i]);
        }
        handler.complete();
    }

    void associatorNames(const OperationContext& context, const CIMNamespaceName&,
                         const CIMObjectPath& objectName, const CIMName&, const CIMName&,
                         const String&, const String&, ObjectPathResponseHandler& handler)
    {
        contexts.push_back(context);
        long self = position(objectName);
        for (size_t i = 0; i < instances.size(); i++) {
            if (long(i) != self)
                handler.deliver(instances[i].getPath());
        }
        handler.complete();
    }

    void references(const OperationContext& context, const CIMNamespaceName&, const CIMObjectPath&,
                    const CIMName&, const String&, Boolean, Boolean, const CIMPropertyList&,
                    ObjectResponseHandler&)
    {
        contexts.push_back(context);
        throw CIMException(CIM_ERR_NOT_SUPPORTED);
    }

    void referenceNames(const OperationContext& context, const CIMNamespaceName&,
                        const CIMObjectPath&, const CIMName&, const String&,
                        ObjectPathResponseHandler&)
    {
        contexts.push_back(context);
        throw CIMException(CIM_ERR_NOT_SUPPORTED);
    }

    CIMValue getProperty(const OperationContext& context, const CIMNamespaceName&,
                         const CIMObjectPath& instanceName, const CIMName& propertyName)
    {
        contexts.push_back(context);
        CIMInstance& i = instances[find(instanceName)];
        Uint32 pos = i.findProperty(propertyName);
        if (pos == PEG_NOT_FOUND)
            throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, propertyName.getString());
        return i.getProperty(pos).getValue();
    }

    void setProperty(const OperationContext& context, const CIMNamespaceName&,
                     const CIMObjectPath& instanceName, const CIMName& propertyName,
                     const CIMValue& newValue)
    {
        contexts.push_back(context);
        CIMInstance& i = instances[find(instanceName)];
        Uint32 pos = i.findProperty(propertyName);
        if (pos == PEG_NOT_FOUND)
            throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, propertyName.getString());
        i.getProperty(pos).setValue(newValue);
    }

    CIMValue invokeMethod(const OperationContext& context, const CIMNamespaceName&,
                          const CIMObjectPath&, const CIMName& methodName,
                          const Array<CIMParamValue>& inParameters,
                          Array<CIMParamValue>& outParameters)
    {
        contexts.push_back(context);
        if (methodName.equal("Echo")) {
            for (Uint32 i = 0; i < inParameters.size(); i++)
                outParameters.append(inParameters[i]);
            return CIMValue(inParameters.size());
        }
        if (methodName.equal("Fail"))
            throw CIMException(CIMStatusCode(4097), "LU=x: bad\n");
        if (methodName.equal("Mismatch"))
            throw TypeMismatchException();
        if (methodName.equal("Std"))
            throw std::runtime_error("std boom");
        if (methodName.equal("Latin1"))
            throw std::runtime_error("caf\xe9");
        if (methodName.equal("Int"))
            throw 42;
        throw CIMException(CIM_ERR_METHOD_NOT_FOUND, methodName.getString());
    }

private:
    // Index of the instance with the class and keys of path, or -1.
    long position(const CIMObjectPath& path) const
    {
        auto bare = [](const CIMObjectPath& p) {
            return CIMObjectPath(String(), CIMNamespaceName(), p.getClassName(),
                                 p.getKeyBindings());
        };
        for (size_t i = 0; i < instances.size(); i++) {
            if (bare(instances[i].getPath()) == bare(path))
                return long(i);
        }
        return -1;
    }

    // As position(), throwing CIM_ERR_NOT_FOUND for a missing instance.
    size_t find(const CIMObjectPath& path) const
    {
        long i = position(path);
        if (i < 0)
            throw CIMException(CIM_ERR_NOT_FOUND, path.toString());
        return size_t(i);
    }
};

}  // namespace zartest

#endif
