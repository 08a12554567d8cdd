// LocalHostConnection: a CIMClient connection to the operation host of this
// process. It hands back what a CIM-XML client would receive: independent
// copies, instance names reduced to class and keys, the instance of
// getInstance without its name, and CIM errors whose message is the error
// description. It has no time-out: a call lasts as long as the host takes.
#include <Pegasus/Common/CIMXmlCodec.h>

#include "Client/CIMClientConnection.h"
#include "Common/CollectingResponseHandlers.h"
#include "Common/HostCall.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

// Runs call like CallHost, then rewrites a CIMException's message into the
// description a client receives ("CIM_ERR_xxx: <message>").
template<class F>
auto CallAsClient(F call) -> decltype(call())
{
    try
    {
        return CallHost(call);
    }
    catch (const CIMException& e)
    {
        throw CIMException(e.getCode(),
            CIMXml::errorDescription(e.getCode(), e.getMessage()));
    }
}

// The instance name as CIM-XML carries it: class and keys.
CIMObjectPath InstanceName(const CIMObjectPath& path)
{
    return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(),
        path.getKeyBindings());
}

class LocalHostConnection : public CIMClientConnection
{
public:
    LocalHostConnection(CIMOperationHost& host, const String& userName)
        : _host(host)
    {
        _context.insert(IdentityContainer(userName));
        _context.insert(AcceptLanguageListContainer(AcceptLanguageList()));
        _context.insert(ContentLanguageListContainer(ContentLanguageList()));
    }

    virtual void setTimeout(Uint32) {}

    virtual CIMClass getClass(const CIMNamespaceName& nameSpace,
        const CIMName& className, Boolean localOnly, Boolean includeQualifiers,
        Boolean includeClassOrigin, const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            return _host.getClass(_context, nameSpace, className, localOnly,
                includeQualifiers, includeClassOrigin, propertyList).clone();
        });
    }

    virtual Array<CIMClass> enumerateClasses(const CIMNamespaceName& nameSpace,
        const CIMName& className, Boolean deepInheritance, Boolean localOnly,
        Boolean includeQualifiers, Boolean includeClassOrigin)
    {
        return CallAsClient([&] {
            Array<CIMClass> classes = _host.enumerateClasses(_context,
                nameSpace, className, deepInheritance, localOnly,
                includeQualifiers, includeClassOrigin);
            Array<CIMClass> result;
            result.reserveCapacity(classes.size());
            for (Uint32 i = 0; i < classes.size(); i++)
                result.append(classes[i].clone());
            return result;
        });
    }

    virtual Array<CIMName> enumerateClassNames(
        const CIMNamespaceName& nameSpace, const CIMName& className,
        Boolean deepInheritance)
    {
        return CallAsClient([&] {
            return _host.enumerateClassNames(
                _context, nameSpace, className, deepInheritance);
        });
    }

    virtual CIMInstance getInstance(const CIMNamespaceName& nameSpace,
        const CIMObjectPath& instanceName, Boolean localOnly,
        Boolean includeQualifiers, Boolean includeClassOrigin,
        const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            CIMInstance instance = _host.getInstance(_context, nameSpace,
                instanceName, localOnly, includeQualifiers,
                includeClassOrigin, propertyList).clone();
            instance.setPath(CIMObjectPath(
                String(), CIMNamespaceName(), instance.getClassName()));
            return instance;
        });
    }

    virtual void deleteInstance(const CIMNamespaceName& nameSpace,
        const CIMObjectPath& instanceName)
    {
        CallAsClient([&] {
            _host.deleteInstance(_context, nameSpace, instanceName);
        });
    }

    virtual CIMObjectPath createInstance(const CIMNamespaceName& nameSpace,
        const CIMInstance& newInstance)
    {
        return CallAsClient([&] {
            return InstanceName(
                _host.createInstance(_context, nameSpace, newInstance));
        });
    }

    virtual void modifyInstance(const CIMNamespaceName& nameSpace,
        const CIMInstance& modifiedInstance, Boolean includeQualifiers,
        const CIMPropertyList& propertyList)
    {
        CallAsClient([&] {
            _host.modifyInstance(_context, nameSpace, modifiedInstance,
                includeQualifiers, propertyList);
        });
    }

    virtual Array<CIMInstance> enumerateInstances(
        const CIMNamespaceName& nameSpace, const CIMName& className,
        Boolean deepInheritance, Boolean localOnly, Boolean includeQualifiers,
        Boolean includeClassOrigin, const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            CollectingInstanceHandler handler;
            _host.enumerateInstances(_context, nameSpace, className,
                deepInheritance, localOnly, includeQualifiers,
                includeClassOrigin, propertyList, handler);
            for (Uint32 i = 0; i < handler.instances.size(); i++)
            {
                CIMInstance& instance = handler.instances[i];
                instance.setPath(InstanceName(instance.getPath()));
            }
            return handler.instances;
        });
    }

    virtual Array<CIMObjectPath> enumerateInstanceNames(
        const CIMNamespaceName& nameSpace, const CIMName& className)
    {
        return CallAsClient([&] {
            CollectingObjectPathHandler handler;
            _host.enumerateInstanceNames(
                _context, nameSpace, className, handler);
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
        Boolean includeClassOrigin, const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            CollectingObjectHandler handler;
            _host.associators(_context, nameSpace, objectName, assocClass,
                resultClass, role, resultRole, includeQualifiers,
                includeClassOrigin, propertyList, handler);
            return handler.objects;
        });
    }

    virtual Array<CIMObjectPath> associatorNames(
        const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
        const CIMName& assocClass, const CIMName& resultClass,
        const String& role, const String& resultRole)
    {
        return CallAsClient([&] {
            CollectingObjectPathHandler handler;
            _host.associatorNames(_context, nameSpace, objectName, assocClass,
                resultClass, role, resultRole, handler);
            return handler.paths;
        });
    }

    virtual Array<CIMObject> references(const CIMNamespaceName& nameSpace,
        const CIMObjectPath& objectName, const CIMName& resultClass,
        const String& role, Boolean includeQualifiers,
        Boolean includeClassOrigin, const CIMPropertyList& propertyList)
    {
        return CallAsClient([&] {
            CollectingObjectHandler handler;
            _host.references(_context, nameSpace, objectName, resultClass,
                role, includeQualifiers, includeClassOrigin, propertyList,
                handler);
            return handler.objects;
        });
    }

    virtual Array<CIMObjectPath> referenceNames(
        const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
        const CIMName& resultClass, const String& role)
    {
        return CallAsClient([&] {
            CollectingObjectPathHandler handler;
            _host.referenceNames(_context, nameSpace, objectName, resultClass,
                role, handler);
            return handler.paths;
        });
    }

    virtual CIMValue getProperty(const CIMNamespaceName& nameSpace,
        const CIMObjectPath& instanceName, const CIMName& propertyName)
    {
        return CallAsClient([&] {
            return _host.getProperty(
                _context, nameSpace, instanceName, propertyName);
        });
    }

    virtual void setProperty(const CIMNamespaceName& nameSpace,
        const CIMObjectPath& instanceName, const CIMName& propertyName,
        const CIMValue& newValue)
    {
        CallAsClient([&] {
            _host.setProperty(
                _context, nameSpace, instanceName, propertyName, newValue);
        });
    }

    virtual CIMValue invokeMethod(const CIMNamespaceName& nameSpace,
        const CIMObjectPath& instanceName, const CIMName& methodName,
        const Array<CIMParamValue>& inParameters,
        Array<CIMParamValue>& outParameters)
    {
        return CallAsClient([&] {
            Array<CIMParamValue> out;
            CIMValue result = _host.invokeMethod(_context, nameSpace,
                instanceName, methodName, inParameters, out);
            outParameters.clear();
            for (Uint32 i = 0; i < out.size(); i++)
                outParameters.append(out[i].clone());
            return result;
        });
    }

private:
    CIMOperationHost& _host;
    OperationContext _context;
};

}  // namespace

CIMClientConnection* createLocalHostConnection(
    CIMOperationHost& host, const String& userName)
{
    return new LocalHostConnection(host, userName);
}

PEGASUS_NAMESPACE_END
