// CIMOMHandle: forwards a provider's requests to the operation host of this
// process (or to the host the handle was created for) and collects the
// streamed results into arrays.
#include <atomic>

#include <Pegasus/Common/ClientAddressContainer.h>
#include <zarframework/CIMOperationHost.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <zarframework/CIMOMHandleHost.h>

#include "Common/CollectingResponseHandlers.h"
#include "Common/HostCall.h"
#include "Common/RefCounted.h"

PEGASUS_NAMESPACE_BEGIN

class CIMOMHandleRep : public RefCounted {
public:
    explicit CIMOMHandleRep(CIMOperationHost* h) : boundHost(h), disallowed(0) {}

    // The bound host, else the registered one; CIM_ERR_FAILED if neither.
    CIMOperationHost& host() const
    {
        CIMOperationHost* h = boundHost ? boundHost : getLocalOperationHost();
        if (!h) {
            throw CIMException(CIM_ERR_FAILED,
                               "CIMOMHandle: no CIM server is running in this process");
        }
        return *h;
    }

    CIMOperationHost* boundHost;
    std::atomic<Sint32> disallowed;
};

class CIMOMHandleAccess {
public:
    static CIMOMHandle create(CIMOperationHost* host)
    {
        CIMOMHandle handle;
        Unref(handle._rep);
        handle._rep = new CIMOMHandleRep(host);
        return handle;
    }

    static const CIMOMHandleRep* rep(const CIMOMHandle& handle) { return handle._rep; }
};

namespace {

// The context a request through the handle carries: the caller's identity,
// languages and client address. A caller without an identity asks as the
// server itself: the request goes without one, and the operation host names
// the server's own user (as OpenPegasus's out-of-process handle, a local
// connection, does).
OperationContext ForwardedContext(const OperationContext& context)
{
    OperationContext forwarded;
    if (context.contains(IdentityContainer::NAME))
        forwarded.insert(context.get(IdentityContainer::NAME));
    const String* names[] = {
        &AcceptLanguageListContainer::NAME,
        &ContentLanguageListContainer::NAME,
        &ClientAddressContainer::NAME,
    };
    for (size_t i = 0; i < sizeof(names) / sizeof(names[0]); i++) {
        if (context.contains(*names[i]))
            forwarded.insert(context.get(*names[i]));
    }
    return forwarded;
}

CIMException NotSupported(const char* operation)
{
    return CIMException(CIM_ERR_NOT_SUPPORTED,
                        String(operation) + " is not supported by this CIM server");
}

}  // namespace

CIMOMHandle createCIMOMHandle(CIMOperationHost& host)
{
    return CIMOMHandleAccess::create(&host);
}

Boolean isProviderUnloadAllowed(const CIMOMHandle& handle)
{
    return CIMOMHandleAccess::rep(handle)->disallowed.load() <= 0;
}

CIMOMHandle::CIMOMHandle() : _rep(new CIMOMHandleRep(0)) {}

CIMOMHandle::CIMOMHandle(const CIMOMHandle& handle) : _rep(Ref(handle._rep)) {}

CIMOMHandle::~CIMOMHandle()
{
    Unref(_rep);
}

CIMOMHandle& CIMOMHandle::operator=(const CIMOMHandle& handle)
{
    Assign(_rep, handle._rep);
    return *this;
}

CIMClass CIMOMHandle::getClass(const OperationContext& context, const CIMNamespaceName& nameSpace,
                               const CIMName& className, Boolean localOnly,
                               Boolean includeQualifiers, Boolean includeClassOrigin,
                               const CIMPropertyList& propertyList)
{
    return CallHost([&] {
        CIMClass c =
            _rep->host().getClass(ForwardedContext(context), nameSpace, className, localOnly,
                                  includeQualifiers, includeClassOrigin, propertyList);
        return c.isUninitialized() ? c : c.clone();
    });
}

Array<CIMClass> CIMOMHandle::enumerateClasses(const OperationContext& context,
                                              const CIMNamespaceName& nameSpace,
                                              const CIMName& className, Boolean deepInheritance,
                                              Boolean localOnly, Boolean includeQualifiers,
                                              Boolean includeClassOrigin)
{
    return CallHost([&] {
        Array<CIMClass> classes = _rep->host().enumerateClasses(
            ForwardedContext(context), nameSpace, className, deepInheritance, localOnly,
            includeQualifiers, includeClassOrigin);
        Array<CIMClass> result;
        result.reserveCapacity(classes.size());
        for (Uint32 i = 0; i < classes.size(); i++)
            result.append(classes[i].clone());
        return result;
    });
}

Array<CIMName> CIMOMHandle::enumerateClassNames(const OperationContext& context,
                                                const CIMNamespaceName& nameSpace,
                                                const CIMName& className, Boolean deepInheritance)
{
    return CallHost([&] {
        return _rep->host().enumerateClassNames(ForwardedContext(context), nameSpace, className,
                                                deepInheritance);
    });
}

void CIMOMHandle::createClass(const OperationContext&, const CIMNamespaceName&, const CIMClass&)
{
    throw NotSupported("createClass");
}

void CIMOMHandle::modifyClass(const OperationContext&, const CIMNamespaceName&, const CIMClass&)
{
    throw NotSupported("modifyClass");
}

void CIMOMHandle::deleteClass(const OperationContext&, const CIMNamespaceName&, const CIMName&)
{
    throw NotSupported("deleteClass");
}

CIMInstance CIMOMHandle::getInstance(const OperationContext& context,
                                     const CIMNamespaceName& nameSpace,
                                     const CIMObjectPath& instanceName, Boolean localOnly,
                                     Boolean includeQualifiers, Boolean includeClassOrigin,
                                     const CIMPropertyList& propertyList)
{
    return CallHost([&] {
        CIMInstance i =
            _rep->host().getInstance(ForwardedContext(context), nameSpace, instanceName, localOnly,
                                     includeQualifiers, includeClassOrigin, propertyList);
        return i.isUninitialized() ? i : i.clone();
    });
}

Array<CIMInstance> CIMOMHandle::enumerateInstances(
    const OperationContext& context, const CIMNamespaceName& nameSpace, const CIMName& className,
    Boolean deepInheritance, Boolean localOnly, Boolean includeQualifiers,
    Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    return CallHost([&] {
        CollectingInstanceHandler handler;
        _rep->host().enumerateInstances(ForwardedContext(context), nameSpace, className,
                                        deepInheritance, localOnly, includeQualifiers,
                                        includeClassOrigin, propertyList, handler);
        return handler.instances;
    });
}

Array<CIMObjectPath> CIMOMHandle::enumerateInstanceNames(const OperationContext& context,
                                                         const CIMNamespaceName& nameSpace,
                                                         const CIMName& className)
{
    return CallHost([&] {
        CollectingObjectPathHandler handler;
        _rep->host().enumerateInstanceNames(ForwardedContext(context), nameSpace, className,
                                            handler);
        return handler.paths;
    });
}

CIMObjectPath CIMOMHandle::createInstance(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMInstance& newInstance)
{
    return CallHost([&] {
        return _rep->host().createInstance(ForwardedContext(context), nameSpace, newInstance);
    });
}

void CIMOMHandle::modifyInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                                 const CIMPropertyList& propertyList)
{
    CallHost([&] {
        _rep->host().modifyInstance(ForwardedContext(context), nameSpace, modifiedInstance,
                                    includeQualifiers, propertyList);
    });
}

void CIMOMHandle::deleteInstance(const OperationContext& context, const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName)
{
    CallHost(
        [&] { _rep->host().deleteInstance(ForwardedContext(context), nameSpace, instanceName); });
}

Array<CIMObject> CIMOMHandle::execQuery(const OperationContext&, const CIMNamespaceName&,
                                        const String&, const String&)
{
    throw NotSupported("execQuery");
}

Array<CIMObject> CIMOMHandle::associators(const OperationContext& context,
                                          const CIMNamespaceName& nameSpace,
                                          const CIMObjectPath& objectName,
                                          const CIMName& assocClass, const CIMName& resultClass,
                                          const String& role, const String& resultRole,
                                          Boolean includeQualifiers, Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList)
{
    return CallHost([&] {
        CollectingObjectHandler handler;
        _rep->host().associators(ForwardedContext(context), nameSpace, objectName, assocClass,
                                 resultClass, role, resultRole, includeQualifiers,
                                 includeClassOrigin, propertyList, handler);
        return handler.objects;
    });
}

Array<CIMObjectPath> CIMOMHandle::associatorNames(const OperationContext& context,
                                                  const CIMNamespaceName& nameSpace,
                                                  const CIMObjectPath& objectName,
                                                  const CIMName& assocClass,
                                                  const CIMName& resultClass, const String& role,
                                                  const String& resultRole)
{
    return CallHost([&] {
        CollectingObjectPathHandler handler;
        _rep->host().associatorNames(ForwardedContext(context), nameSpace, objectName, assocClass,
                                     resultClass, role, resultRole, handler);
        return handler.paths;
    });
}

Array<CIMObject> CIMOMHandle::references(const OperationContext& context,
                                         const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName,
                                         const CIMName& resultClass, const String& role,
                                         Boolean includeQualifiers, Boolean includeClassOrigin,
                                         const CIMPropertyList& propertyList)
{
    return CallHost([&] {
        CollectingObjectHandler handler;
        _rep->host().references(ForwardedContext(context), nameSpace, objectName, resultClass, role,
                                includeQualifiers, includeClassOrigin, propertyList, handler);
        return handler.objects;
    });
}

Array<CIMObjectPath> CIMOMHandle::referenceNames(const OperationContext& context,
                                                 const CIMNamespaceName& nameSpace,
                                                 const CIMObjectPath& objectName,
                                                 const CIMName& resultClass, const String& role)
{
    return CallHost([&] {
        CollectingObjectPathHandler handler;
        _rep->host().referenceNames(ForwardedContext(context), nameSpace, objectName, resultClass,
                                    role, handler);
        return handler.paths;
    });
}

CIMValue CIMOMHandle::getProperty(const OperationContext& context,
                                  const CIMNamespaceName& nameSpace,
                                  const CIMObjectPath& instanceName, const CIMName& propertyName)
{
    return CallHost([&] {
        return _rep->host().getProperty(ForwardedContext(context), nameSpace, instanceName,
                                        propertyName);
    });
}

void CIMOMHandle::setProperty(const OperationContext& context, const CIMNamespaceName& nameSpace,
                              const CIMObjectPath& instanceName, const CIMName& propertyName,
                              const CIMValue& newValue)
{
    CallHost([&] {
        _rep->host().setProperty(ForwardedContext(context), nameSpace, instanceName, propertyName,
                                 newValue);
    });
}

CIMValue CIMOMHandle::invokeMethod(const OperationContext& context,
                                   const CIMNamespaceName& nameSpace,
                                   const CIMObjectPath& instanceName, const CIMName& methodName,
                                   const Array<CIMParamValue>& inParameters,
                                   Array<CIMParamValue>& outParameters)
{
    return CallHost([&] {
        Array<CIMParamValue> out;
        CIMValue result = _rep->host().invokeMethod(ForwardedContext(context), nameSpace,
                                                    instanceName, methodName, inParameters, out);
        outParameters.clear();
        for (Uint32 i = 0; i < out.size(); i++)
            outParameters.append(out[i].isUninitialized() ? out[i] : out[i].clone());
        return result;
    });
}

void CIMOMHandle::disallowProviderUnload()
{
    _rep->disallowed.fetch_add(1);
}

void CIMOMHandle::allowProviderUnload()
{
    _rep->disallowed.fetch_sub(1);
}

OperationContext CIMOMHandle::getResponseContext()
{
    OperationContext context;
    context.insert(ContentLanguageListContainer(ContentLanguageList()));
    return context;
}

PEGASUS_NAMESPACE_END
