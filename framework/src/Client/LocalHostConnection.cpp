// LocalHostConnection: a CIMClient connection to the operation host of this
// process. It hands back what a CIM-XML client would receive: independent
// copies, instance names reduced to class and keys, the instance of
// getInstance without its name, and CIM errors whose message is the error
// description. It has no time-out: a call lasts as long as the host takes.
#include <zarframework/CIMXmlCodec.h>

#include <map>
#include <string>

#include "Client/CIMClientConnection.h"
#include "Common/CollectingResponseHandlers.h"
#include "Common/HostCall.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

// Runs call like CallHost, then rewrites a CIMException's message into the
// description a client receives ("CIM_ERR_xxx: <message>").
template <class F>
auto CallAsClient(F call) -> decltype(call())
{
    try {
        return CallHost(call);
    } catch (const CIMException& e) {
        throw CIMException(e.getCode(), CIMXml::errorDescription(e.getCode(), e.getMessage()));
    }
}

// The instance name as CIM-XML carries it: class and keys.
CIMObjectPath InstanceName(const CIMObjectPath& path)
{
    return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(), path.getKeyBindings());
}

class LocalHostConnection : public CIMClientConnection {
public:
    LocalHostConnection(CIMOperationHost& host, const String& userName) : _host(host)
    {
        _context.insert(IdentityContainer(userName));
        _context.insert(AcceptLanguageListContainer(AcceptLanguageList()));
        _context.insert(ContentLanguageListContainer(ContentLanguageList()));
    }

    virtual void setTimeout(Uint32) {}

    virtual CIMClass getClass(const CIMNamespaceName& nameSpace, const CIMName& className,
                              Boolean localOnly, Boolean includeQualifiers,
                              Boolean includeClassOrigin, const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            return _host
                .getClass(_context, nameSpace, className, localOnly, includeQualifiers,
                          includeClassOrigin, propertyList)
                .clone();
        });
    }

    virtual Array<CIMClass> enumerateClasses(const CIMNamespaceName& nameSpace,
                                             const CIMName& className, Boolean deepInheritance,
                                             Boolean localOnly, Boolean includeQualifiers,
                                             Boolean includeClassOrigin)
    {
        return CallAsClient([&] {
            Array<CIMClass> classes =
                _host.enumerateClasses(_context, nameSpace, className, deepInheritance, localOnly,
                                       includeQualifiers, includeClassOrigin);
            Array<CIMClass> result;
            result.reserveCapacity(classes.size());
            for (Uint32 i = 0; i < classes.size(); i++)
                result.append(classes[i].clone());
            return result;
        });
    }

    virtual Array<CIMName> enumerateClassNames(const CIMNamespaceName& nameSpace,
                                               const CIMName& className, Boolean deepInheritance)
    {
        return CallAsClient([&] {
            return _host.enumerateClassNames(_context, nameSpace, className, deepInheritance);
        });
    }

    virtual CIMInstance getInstance(const CIMNamespaceName& nameSpace,
                                    const CIMObjectPath& instanceName, Boolean localOnly,
                                    Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            CIMInstance instance =
                _host
                    .getInstance(_context, nameSpace, instanceName, localOnly, includeQualifiers,
                                 includeClassOrigin, propertyList)
                    .clone();
            instance.setPath(CIMObjectPath(String(), CIMNamespaceName(), instance.getClassName()));
            return instance;
        });
    }

    virtual void deleteInstance(const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& instanceName)
    {
        CallAsClient([&] { _host.deleteInstance(_context, nameSpace, instanceName); });
    }

    virtual CIMObjectPath createInstance(const CIMNamespaceName& nameSpace,
                                         const CIMInstance& newInstance)
    {
        return CallAsClient(
            [&] { return InstanceName(_host.createInstance(_context, nameSpace, newInstance)); });
    }

    virtual void modifyInstance(const CIMNamespaceName& nameSpace,
                                const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                                const CIMPropertyList& propertyList)
    {
        CallAsClient([&] {
            _host.modifyInstance(_context, nameSpace, modifiedInstance, includeQualifiers,
                                 propertyList);
        });
    }

    virtual Array<CIMInstance> enumerateInstances(const CIMNamespaceName& nameSpace,
                                                  const CIMName& className, Boolean deepInheritance,
                                                  Boolean localOnly, Boolean includeQualifiers,
                                                  Boolean includeClassOrigin,
                                                  const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            CollectingInstanceHandler handler;
            _host.enumerateInstances(_context, nameSpace, className, deepInheritance, localOnly,
                                     includeQualifiers, includeClassOrigin, propertyList, handler);
            for (Uint32 i = 0; i < handler.instances.size(); i++) {
                CIMInstance& instance = handler.instances[i];
                instance.setPath(InstanceName(instance.getPath()));
            }
            return handler.instances;
        });
    }

    virtual Array<CIMObjectPath> enumerateInstanceNames(const CIMNamespaceName& nameSpace,
                                                        const CIMName& className)
    {
        return CallAsClient([&] {
            CollectingObjectPathHandler handler;
            _host.enumerateInstanceNames(_context, nameSpace, className, handler);
            Array<CIMObjectPath> names;
            names.reserveCapacity(handler.paths.size());
            for (Uint32 i = 0; i < handler.paths.size(); i++)
                names.append(InstanceName(handler.paths[i]));
            return names;
        });
    }

    virtual Array<CIMObject> associators(const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName, const CIMName& assocClass,
                                         const CIMName& resultClass, const String& role,
                                         const String& resultRole, Boolean includeQualifiers,
                                         Boolean includeClassOrigin,
                                         const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            CollectingObjectHandler handler;
            _host.associators(_context, nameSpace, objectName, assocClass, resultClass, role,
                              resultRole, includeQualifiers, includeClassOrigin, propertyList,
                              handler);
            return handler.objects;
        });
    }

    virtual Array<CIMObjectPath> associatorNames(const CIMNamespaceName& nameSpace,
                                                 const CIMObjectPath& objectName,
                                                 const CIMName& assocClass,
                                                 const CIMName& resultClass, const String& role,
                                                 const String& resultRole)
    {
        return CallAsClient([&] {
            CollectingObjectPathHandler handler;
            _host.associatorNames(_context, nameSpace, objectName, assocClass, resultClass, role,
                                  resultRole, handler);
            return handler.paths;
        });
    }

    virtual Array<CIMObject> references(const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& resultClass,
                                        const String& role, Boolean includeQualifiers,
                                        Boolean includeClassOrigin,
                                        const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            CollectingObjectHandler handler;
            _host.references(_context, nameSpace, objectName, resultClass, role, includeQualifiers,
                             includeClassOrigin, propertyList, handler);
            return handler.objects;
        });
    }

    virtual Array<CIMObjectPath> referenceNames(const CIMNamespaceName& nameSpace,
                                                const CIMObjectPath& objectName,
                                                const CIMName& resultClass, const String& role)
    {
        return CallAsClient([&] {
            CollectingObjectPathHandler handler;
            _host.referenceNames(_context, nameSpace, objectName, resultClass, role, handler);
            return handler.paths;
        });
    }

    virtual CIMValue getProperty(const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName, const CIMName& propertyName)
    {
        return CallAsClient(
            [&] { return _host.getProperty(_context, nameSpace, instanceName, propertyName); });
    }

    virtual void setProperty(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                             const CIMName& propertyName, const CIMValue& newValue)
    {
        CallAsClient(
            [&] { _host.setProperty(_context, nameSpace, instanceName, propertyName, newValue); });
    }

    virtual CIMValue invokeMethod(const CIMNamespaceName& nameSpace,
                                  const CIMObjectPath& instanceName, const CIMName& methodName,
                                  const Array<CIMParamValue>& inParameters,
                                  Array<CIMParamValue>& outParameters)
    {
        return CallAsClient([&] {
            Array<CIMParamValue> out;
            CIMValue result = _host.invokeMethod(_context, nameSpace, instanceName, methodName,
                                                 inParameters, out);
            outParameters.clear();
            for (Uint32 i = 0; i < out.size(); i++)
                outParameters.append(out[i].clone());
            return result;
        });
    }

    // Pull operations, emulated: an open runs the whole operation and keeps
    // its results in the connection; pulls hand them out in pieces.
    virtual PullResult openEnumeration(const OpenRequest& q)
    {
        if (q.filterQueryLanguage.size() || q.filterQuery.size())
            fail(CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED,
                 "Filtered enumerations are not supported.");
        if (q.continueOnError)
            fail(CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED, "ContinueOnError is not supported.");
        Enumeration e;
        e.nameSpace = q.nameSpace;
        e.paths = q.kind == OpenRequest::INSTANCE_PATHS || q.kind == OpenRequest::REFERENCE_PATHS ||
                  q.kind == OpenRequest::ASSOCIATOR_PATHS;
        Array<CIMObject> objects;
        switch (q.kind) {
            case OpenRequest::INSTANCES:
                e.instances = enumerateInstances(q.nameSpace, q.className, q.deepInheritance, false,
                                                 false, q.includeClassOrigin, q.propertyList);
                break;
            case OpenRequest::INSTANCE_PATHS:
                e.names = enumerateInstanceNames(q.nameSpace, q.className);
                break;
            case OpenRequest::REFERENCES:
                objects = references(q.nameSpace, q.objectName, q.resultClass, q.role, false,
                                     q.includeClassOrigin, q.propertyList);
                break;
            case OpenRequest::REFERENCE_PATHS:
                e.names = referenceNames(q.nameSpace, q.objectName, q.resultClass, q.role);
                break;
            case OpenRequest::ASSOCIATORS:
                objects =
                    associators(q.nameSpace, q.objectName, q.assocClass, q.resultClass, q.role,
                                q.resultRole, false, q.includeClassOrigin, q.propertyList);
                break;
            case OpenRequest::ASSOCIATOR_PATHS:
                e.names = associatorNames(q.nameSpace, q.objectName, q.assocClass, q.resultClass,
                                          q.role, q.resultRole);
                break;
        }
        for (Uint32 i = 0; i < objects.size(); i++)
            e.instances.append(CIMInstance(objects[i]));
        for (Uint32 i = 0; i < e.names.size(); i++)
            e.names[i].setNameSpace(q.nameSpace);
        String id = String(std::to_string(++_lastEnumeration).c_str());
        _enumerations[id] = e;
        return take(id, q.maxObjectCount);
    }

    virtual PullResult pull(PullKind kind, const CIMNamespaceName& nameSpace, const String& context,
                            Uint32 maxObjectCount)
    {
        Enumeration& e = find(nameSpace, context);
        if (kind == PULL_INSTANCES || (kind == PULL_INSTANCE_PATHS) != e.paths) {
            _enumerations.erase(context);
            fail(CIM_ERR_FAILED, "Open and Pull Message types do not match.");
        }
        return take(context, maxObjectCount);
    }

    virtual void closeEnumeration(const CIMNamespaceName& nameSpace, const String& context)
    {
        find(nameSpace, context);
        _enumerations.erase(context);
    }

    virtual Uint64Arg enumerationCount(const CIMNamespaceName& nameSpace, const String& context)
    {
        Enumeration& e = find(nameSpace, context);
        return Uint64Arg(Uint64((e.paths ? e.names.size() : e.instances.size()) - e.next));
    }

private:
    struct Enumeration {
        CIMNamespaceName nameSpace;
        bool paths = false;
        Array<CIMInstance> instances;
        Array<CIMObjectPath> names;
        Uint32 next = 0;
    };

    [[noreturn]] static void fail(CIMStatusCode code, const char* message)
    {
        throw CIMException(code, CIMXml::errorDescription(code, message));
    }

    Enumeration& find(const CIMNamespaceName& nameSpace, const String& context)
    {
        auto it = _enumerations.find(context);
        if (it == _enumerations.end() || !it->second.nameSpace.equal(nameSpace))
            fail(CIM_ERR_INVALID_ENUMERATION_CONTEXT, "The enumeration context is not open.");
        return it->second;
    }

    // Up to max objects of the enumeration; at its end it is forgotten.
    PullResult take(const String& id, Uint32 max)
    {
        Enumeration& e = _enumerations[id];
        PullResult r;
        Uint32 size = e.paths ? e.names.size() : e.instances.size();
        for (; e.next < size && max > 0; e.next++, max--) {
            if (e.paths)
                r.paths.append(e.names[e.next]);
            else
                r.instances.append(e.instances[e.next]);
        }
        r.endOfSequence = e.next == size;
        if (r.endOfSequence)
            _enumerations.erase(id);
        else
            r.context = id;
        return r;
    }

    CIMOperationHost& _host;
    OperationContext _context;
    std::map<String, Enumeration> _enumerations;
    Uint64 _lastEnumeration = 0;
};

}  // namespace

CIMClientConnection* createLocalHostConnection(CIMOperationHost& host, const String& userName)
{
    return new LocalHostConnection(host, userName);
}

PEGASUS_NAMESPACE_END
