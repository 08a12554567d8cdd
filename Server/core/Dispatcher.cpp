#include "Dispatcher.h"

#include <exception>
#include <string>

#include <pwd.h>
#include <unistd.h>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>

#include "CheckedHandlers.h"
#include "InstanceFilter.h"
#include "ParamTyping.h"

using namespace Pegasus;

namespace zarserver {

namespace {

String text(const std::string& s)
{
    return String(s.c_str());
}

// Text of a std::exception, made safe for String (which insists on UTF-8).
String whatText(const char* what)
{
    try {
        return String(what ? what : "");
    } catch (const Exception&) {
        std::string ascii;
        for (const char* p = what; *p; ++p)
            ascii += (static_cast<unsigned char>(*p) < 0x80) ? *p : '?';
        return String(ascii.c_str());
    }
}

// Runs one provider call, turning whatever it throws into a CIMException.
template <class F>
void guarded(F call)
{
    try {
        call();
    } catch (const CIMException&) {
        throw;
    } catch (const Exception& e) {
        throw CIMException(CIM_ERR_FAILED, e.getMessage());
    } catch (const std::exception& e) {
        throw CIMException(CIM_ERR_FAILED, whatText(e.what()));
    } catch (...) {
        throw CIMException(CIM_ERR_FAILED, "Unknown error.");
    }
}

template <class I>
I* providerAs(const ProviderManager::Lease& lease)
{
    I* p = dynamic_cast<I*>(lease.provider());
    if (!p)
        throw CIMException(CIM_ERR_NOT_SUPPORTED, "Invalid provider interface.");
    return p;
}

// Results of several providers answering one request: NOT_SUPPORTED counts
// only when nobody did better; any other error ends the request.
class FanOut {
public:
    template <class F>
    void call(F f)
    {
        try {
            guarded(f);
            _succeeded = true;
        } catch (const CIMException& e) {
            if (e.getCode() != CIM_ERR_NOT_SUPPORTED)
                throw;
            if (!_notSupported)
                _notSupported.reset(new CIMException(e));
        }
    }
    void succeeded() { _succeeded = true; }
    void finish()
    {
        if (!_succeeded && _notSupported)
            throw CIMException(*_notSupported);
    }

private:
    bool _succeeded = false;
    std::unique_ptr<CIMException> _notSupported;
};

CIMException notSupportedNoProvider(const CIMName& cls, const CIMNamespaceName& ns)
{
    String msg("No instance provider is registered for class ");
    msg.append(cls.getString());
    msg.append(" in namespace ");
    msg.append(ns.getString());
    msg.append(".");
    return CIMException(CIM_ERR_NOT_SUPPORTED, msg);
}

CIMObjectPath localPath(const CIMObjectPath& p)
{
    return CIMObjectPath(String(), CIMNamespaceName(), p.getClassName(), p.getKeyBindings());
}

}  // namespace

struct Dispatcher::AssocTarget {
    ProviderMatch match;
};

Dispatcher::Dispatcher(const ClassRepository& repository, const ProviderRegistry& registry,
                       ProviderManager& providers, const std::string& hostName, CoreLogFunction log)
    : _repository(repository),
      _registry(registry),
      _providers(providers),
      _hostName(text(hostName)),
      _log(std::move(log))
{
}

void Dispatcher::stop()
{
    _stopped = true;
}

void Dispatcher::checkRunning() const
{
    if (_stopped)
        throw CIMException(CIM_ERR_FAILED, "The server is shutting down.");
}

namespace {

// The user the server runs as: the name its own requests carry, as a local
// connection from this process would.
const String& serverPrincipal()
{
    static const String name = [] {
        struct passwd entry;
        struct passwd* found = nullptr;
        char buffer[4096];
        if (getpwuid_r(geteuid(), &entry, buffer, sizeof buffer, &found) == 0 && found &&
            found->pw_name)
            return String(found->pw_name);
        return String(std::to_string(geteuid()).c_str());
    }();
    return name;
}

}  // namespace

OperationContext Dispatcher::providerContext(const OperationContext& context) const
{
    OperationContext ctx(context);
    // Client requests always carry an identity (empty when the client gave
    // none: such a request is nobody's). A request without one comes from a
    // provider's CIMOMHandle, i.e. from the server itself.
    if (!ctx.contains(IdentityContainer::NAME))
        ctx.insert(IdentityContainer(serverPrincipal()));
    if (!ctx.contains(AcceptLanguageListContainer::NAME))
        ctx.insert(AcceptLanguageListContainer(AcceptLanguageList()));
    if (!ctx.contains(ContentLanguageListContainer::NAME))
        ctx.insert(ContentLanguageListContainer(ContentLanguageList()));
    return ctx;
}

CIMObjectPath Dispatcher::providerPath(const CIMNamespaceName& ns, const CIMObjectPath& path) const
{
    CIMObjectPath p = path;
    p.setHost(_hostName);
    p.setNameSpace(ns);
    return p;
}

CIMObjectPath Dispatcher::classPath(const CIMNamespaceName& ns, const CIMName& className) const
{
    return CIMObjectPath(_hostName, ns, className);
}

void Dispatcher::completePath(CIMObjectPath& path, const CIMNamespaceName& ns) const
{
    if (path.getNameSpace().isNull())
        path.setNameSpace(ns);
    if (path.getHost().size() == 0)
        path.setHost(_hostName);
}

// ---------------------------------------------------------------- classes

CIMClass Dispatcher::getClass(const OperationContext&, const CIMNamespaceName& ns,
                              const CIMName& className, Boolean localOnly,
                              Boolean includeQualifiers, Boolean includeClassOrigin,
                              const CIMPropertyList& propertyList)
{
    checkRunning();
    return _repository.getClass(ns, className, localOnly, includeQualifiers, includeClassOrigin,
                                propertyList);
}

Array<CIMClass> Dispatcher::enumerateClasses(const OperationContext&, const CIMNamespaceName& ns,
                                             const CIMName& className, Boolean deepInheritance,
                                             Boolean localOnly, Boolean includeQualifiers,
                                             Boolean includeClassOrigin)
{
    checkRunning();
    return _repository.enumerateClasses(ns, className, deepInheritance, localOnly,
                                        includeQualifiers, includeClassOrigin);
}

Array<CIMName> Dispatcher::enumerateClassNames(const OperationContext&, const CIMNamespaceName& ns,
                                               const CIMName& className, Boolean deepInheritance)
{
    checkRunning();
    return _repository.enumerateClassNames(ns, className, deepInheritance);
}

// ---------------------------------------------------------------- instances

CIMInstance Dispatcher::getInstance(const OperationContext& context, const CIMNamespaceName& ns,
                                    const CIMObjectPath& instanceName, Boolean,
                                    Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList)
{
    checkRunning();
    _repository.requireClass(ns, instanceName.getClassName());
    InstanceFilter filter;
    filter.includeQualifiers = includeQualifiers;
    filter.includeClassOrigin = includeClassOrigin;
    filter.propertyList = propertyList;
    ProviderMatch m = _registry.find(ns, instanceName.getClassName(), PROVIDER_INSTANCE);
    if (!m.provider) {
        CIMObjectPath wanted = localPath(instanceName);
        for (const CIMInstance& inst : _repository.instancesOf(ns, instanceName.getClassName()))
            if (localPath(inst.getPath()) == wanted)
                return applyFilter(inst.clone(), filter);
        throw CIMException(CIM_ERR_NOT_FOUND, instanceName.toString());
    }
    SingleInstanceHandler handler;
    guarded([&] {
        ProviderManager::Lease lease = _providers.acquire(*m.provider);
        providerAs<CIMInstanceProvider>(lease)->getInstance(
            providerContext(context), providerPath(ns, instanceName), includeQualifiers,
            includeClassOrigin, propertyList, handler);
    });
    return applyFilter(handler.result(), filter);
}

void Dispatcher::enumerateInstances(const OperationContext& context, const CIMNamespaceName& ns,
                                    const CIMName& className, Boolean deepInheritance, Boolean,
                                    Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList,
                                    InstanceResponseHandler& handler)
{
    checkRunning();
    const CIMClass& requested = _repository.requireClass(ns, className);
    InstanceFilter filter;
    filter.includeQualifiers = includeQualifiers;
    filter.includeClassOrigin = includeClassOrigin;
    filter.propertyList = propertyList;
    if (!deepInheritance)
        filter.onlyPropertiesOf = &requested;
    std::vector<CIMName> targets{requested.getClassName()};
    for (const CIMName& n : _repository.subclassNames(ns, className, true))
        targets.push_back(n);
    OperationContext ctx = providerContext(context);
    ForwardingInstanceHandler forward(handler,
                                      [&](const CIMInstance& i) { return applyFilter(i, filter); });
    FanOut fan;
    for (const CIMName& target : targets) {
        ProviderMatch m = _registry.find(ns, target, PROVIDER_INSTANCE);
        if (!m.provider) {
            for (const CIMInstance& inst : _repository.instancesOf(ns, target))
                forward.deliver(inst);
            fan.succeeded();
            continue;
        }
        fan.call([&] {
            ProviderManager::Lease lease = _providers.acquire(*m.provider);
            providerAs<CIMInstanceProvider>(lease)->enumerateInstances(
                ctx, classPath(ns, m.className), includeQualifiers, includeClassOrigin,
                propertyList, forward);
        });
    }
    fan.finish();
    handler.complete();
}

void Dispatcher::enumerateInstanceNames(const OperationContext& context, const CIMNamespaceName& ns,
                                        const CIMName& className,
                                        ObjectPathResponseHandler& handler)
{
    checkRunning();
    const CIMClass& requested = _repository.requireClass(ns, className);
    std::vector<CIMName> targets{requested.getClassName()};
    for (const CIMName& n : _repository.subclassNames(ns, className, true))
        targets.push_back(n);
    OperationContext ctx = providerContext(context);
    ForwardingPathHandler forward(handler, nullptr);
    FanOut fan;
    for (const CIMName& target : targets) {
        ProviderMatch m = _registry.find(ns, target, PROVIDER_INSTANCE);
        if (!m.provider) {
            for (const CIMInstance& inst : _repository.instancesOf(ns, target))
                forward.deliver(inst.getPath());
            fan.succeeded();
            continue;
        }
        fan.call([&] {
            ProviderManager::Lease lease = _providers.acquire(*m.provider);
            providerAs<CIMInstanceProvider>(lease)->enumerateInstanceNames(
                ctx, classPath(ns, m.className), forward);
        });
    }
    fan.finish();
    handler.complete();
}

CIMObjectPath Dispatcher::createInstance(const OperationContext& context,
                                         const CIMNamespaceName& ns, const CIMInstance& newInstance)
{
    checkRunning();
    if (newInstance.isUninitialized())
        throw CIMException(CIM_ERR_INVALID_PARAMETER, "The new instance is not initialized.");
    const CIMName& cls = newInstance.getClassName();
    _repository.requireClass(ns, cls);
    ProviderMatch m = _registry.find(ns, cls, PROVIDER_INSTANCE);
    if (!m.provider)
        throw notSupportedNoProvider(cls, ns);
    CIMObjectPath path = newInstance.getPath();
    if (path.getClassName().isNull())
        path.setClassName(cls);
    SinglePathHandler handler;
    guarded([&] {
        ProviderManager::Lease lease = _providers.acquire(*m.provider);
        providerAs<CIMInstanceProvider>(lease)->createInstance(
            providerContext(context), providerPath(ns, path), newInstance, handler);
    });
    return handler.result();
}

void Dispatcher::modifyInstance(const OperationContext& context, const CIMNamespaceName& ns,
                                const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                                const CIMPropertyList& propertyList)
{
    checkRunning();
    if (modifiedInstance.isUninitialized())
        throw CIMException(CIM_ERR_INVALID_PARAMETER, "The modified instance is not initialized.");
    CIMObjectPath path = modifiedInstance.getPath();
    if (path.getClassName().isNull())
        path.setClassName(modifiedInstance.getClassName());
    _repository.requireClass(ns, path.getClassName());
    ProviderMatch m = _registry.find(ns, path.getClassName(), PROVIDER_INSTANCE);
    if (!m.provider)
        throw notSupportedNoProvider(path.getClassName(), ns);
    CompletionHandler handler;
    guarded([&] {
        ProviderManager::Lease lease = _providers.acquire(*m.provider);
        providerAs<CIMInstanceProvider>(lease)->modifyInstance(
            providerContext(context), providerPath(ns, path), modifiedInstance, includeQualifiers,
            propertyList, handler);
    });
}

void Dispatcher::deleteInstance(const OperationContext& context, const CIMNamespaceName& ns,
                                const CIMObjectPath& instanceName)
{
    checkRunning();
    _repository.requireClass(ns, instanceName.getClassName());
    ProviderMatch m = _registry.find(ns, instanceName.getClassName(), PROVIDER_INSTANCE);
    if (!m.provider)
        throw notSupportedNoProvider(instanceName.getClassName(), ns);
    CompletionHandler handler;
    guarded([&] {
        ProviderManager::Lease lease = _providers.acquire(*m.provider);
        providerAs<CIMInstanceProvider>(lease)->deleteInstance(
            providerContext(context), providerPath(ns, instanceName), handler);
    });
}

CIMValue Dispatcher::getProperty(const OperationContext& context, const CIMNamespaceName& ns,
                                 const CIMObjectPath& instanceName, const CIMName& propertyName)
{
    checkRunning();
    const CIMClass& cls = _repository.requireClass(ns, instanceName.getClassName());
    Uint32 ci = cls.findProperty(propertyName);
    if (ci == PEG_NOT_FOUND)
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, propertyName.getString());
    Array<CIMName> names;
    names.append(propertyName);
    CIMInstance inst =
        getInstance(context, ns, instanceName, false, false, false, CIMPropertyList(names));
    Uint32 i = inst.findProperty(propertyName);
    if (i == PEG_NOT_FOUND) {
        CIMConstProperty p = cls.getProperty(ci);
        return CIMValue(p.getType(), p.isArray());
    }
    return inst.getProperty(i).getValue();
}

void Dispatcher::setProperty(const OperationContext& context, const CIMNamespaceName& ns,
                             const CIMObjectPath& instanceName, const CIMName& propertyName,
                             const CIMValue& newValue)
{
    checkRunning();
    const CIMClass& cls = _repository.requireClass(ns, instanceName.getClassName());
    Uint32 ci = cls.findProperty(propertyName);
    if (ci == PEG_NOT_FOUND)
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, propertyName.getString());
    CIMConstProperty decl = cls.getProperty(ci);
    CIMValue value = newValue;
    if (value.isNull()) {
        value = CIMValue(decl.getType(), decl.isArray());
    } else if (value.getType() != decl.getType() || value.isArray() != decl.isArray()) {
        if (value.getType() != CIMTYPE_STRING || value.isArray() || decl.isArray())
            throw CIMException(CIM_ERR_TYPE_MISMATCH, propertyName.getString());
        String s;
        value.get(s);
        value = valueFromText(s, decl.getType(), String("property ") + propertyName.getString());
    }
    CIMInstance inst(instanceName.getClassName());
    inst.addProperty(CIMProperty(decl.getName(), value, 0, decl.getReferenceClassName()));
    inst.setPath(instanceName);
    Array<CIMName> names;
    names.append(decl.getName());
    modifyInstance(context, ns, inst, false, CIMPropertyList(names));
}

// ---------------------------------------------------------------- associations

CIMObject Dispatcher::completeObject(const CIMObject& o, const InstanceFilter& filter,
                                     const CIMNamespaceName& ns) const
{
    CIMObject out = o.isInstance() ? CIMObject(applyFilter(CIMInstance(o), filter)) : o;
    CIMObjectPath p = out.getPath();
    completePath(p, ns);
    if (!p.identical(out.getPath())) {
        out = out.clone();  // never change the provider's own object
        out.setPath(p);
    }
    return out;
}

bool Dispatcher::resultMatches(const CIMNamespaceName& ns, const CIMName& cls,
                               const CIMName& wanted) const
{
    if (wanted.isNull())
        return true;
    if (!_repository.findClass(ns, cls))
        return false;
    return _repository.isA(ns, cls, wanted);
}

std::vector<Dispatcher::AssocTarget> Dispatcher::associationTargets(
    const CIMNamespaceName& ns, const CIMObjectPath& objectName, const CIMName& assocClass,
    const CIMName& resultClass, const String& role, const String& resultRole,
    bool forAssociators) const
{
    _repository.requireNamespace(ns);
    const CIMName& objClass = objectName.getClassName();
    if (objClass.isNull() || !_repository.findClass(ns, objClass))
        throw CIMException(CIM_ERR_INVALID_PARAMETER, objClass.isNull()
                                                          ? String("The object name has no class.")
                                                          : objClass.getString());
    if (!assocClass.isNull() && !_repository.findClass(ns, assocClass))
        throw CIMException(CIM_ERR_INVALID_PARAMETER, assocClass.getString());
    if (!resultClass.isNull() && !_repository.findClass(ns, resultClass))
        throw CIMException(CIM_ERR_INVALID_PARAMETER, resultClass.getString());
    auto related = [&](const CIMName& a, const CIMName& b) {
        return _repository.isA(ns, a, b) || _repository.isA(ns, b, a);
    };
    std::vector<AssocTarget> out;
    for (const ProviderMatch& m : _registry.all(ns, PROVIDER_ASSOCIATION)) {
        const CIMClass* assoc = _repository.findClass(ns, m.className);
        if (!assoc)
            continue;
        if (!assocClass.isNull() && !_repository.isA(ns, m.className, assocClass))
            continue;
        bool usable = false;
        for (Uint32 i = 0; i < assoc->getPropertyCount() && !usable; ++i) {
            CIMConstProperty near = assoc->getProperty(i);
            if (near.getType() != CIMTYPE_REFERENCE)
                continue;
            if (role.size() && !String::equalNoCase(role, near.getName().getString()))
                continue;
            if (!related(objClass, near.getReferenceClassName()))
                continue;
            if (!forAssociators) {
                usable = true;
                break;
            }
            for (Uint32 j = 0; j < assoc->getPropertyCount(); ++j) {
                if (j == i)
                    continue;
                CIMConstProperty far = assoc->getProperty(j);
                if (far.getType() != CIMTYPE_REFERENCE)
                    continue;
                if (resultRole.size() &&
                    !String::equalNoCase(resultRole, far.getName().getString()))
                    continue;
                if (!resultClass.isNull() && !related(far.getReferenceClassName(), resultClass))
                    continue;
                usable = true;
                break;
            }
        }
        if (usable)
            out.push_back(AssocTarget{m});
    }
    return out;
}

void Dispatcher::associators(const OperationContext& context, const CIMNamespaceName& ns,
                             const CIMObjectPath& objectName, const CIMName& assocClass,
                             const CIMName& resultClass, const String& role,
                             const String& resultRole, Boolean includeQualifiers,
                             Boolean includeClassOrigin, const CIMPropertyList& propertyList,
                             ObjectResponseHandler& handler)
{
    checkRunning();
    std::vector<AssocTarget> targets =
        associationTargets(ns, objectName, assocClass, resultClass, role, resultRole, true);
    InstanceFilter filter;
    filter.includeQualifiers = includeQualifiers;
    filter.includeClassOrigin = includeClassOrigin;
    filter.propertyList = propertyList;
    ForwardingObjectHandler forward(handler, [&](const CIMObject& o) -> CIMObject {
        if (!resultMatches(ns, o.getClassName(), resultClass))
            return CIMObject();
        return completeObject(o, filter, ns);
    });
    OperationContext ctx = providerContext(context);
    CIMObjectPath target = providerPath(ns, objectName);
    FanOut fan;
    for (const AssocTarget& t : targets)
        fan.call([&] {
            ProviderManager::Lease lease = _providers.acquire(*t.match.provider);
            providerAs<CIMAssociationProvider>(lease)->associators(
                ctx, target, t.match.className, resultClass, role, resultRole, includeQualifiers,
                includeClassOrigin, propertyList, forward);
        });
    fan.finish();
    handler.complete();
}

void Dispatcher::associatorNames(const OperationContext& context, const CIMNamespaceName& ns,
                                 const CIMObjectPath& objectName, const CIMName& assocClass,
                                 const CIMName& resultClass, const String& role,
                                 const String& resultRole, ObjectPathResponseHandler& handler)
{
    checkRunning();
    std::vector<AssocTarget> targets =
        associationTargets(ns, objectName, assocClass, resultClass, role, resultRole, true);
    ForwardingPathHandler forward(handler, [&](CIMObjectPath& p) {
        if (!resultMatches(ns, p.getClassName(), resultClass))
            return false;
        completePath(p, ns);
        return true;
    });
    OperationContext ctx = providerContext(context);
    CIMObjectPath target = providerPath(ns, objectName);
    FanOut fan;
    for (const AssocTarget& t : targets)
        fan.call([&] {
            ProviderManager::Lease lease = _providers.acquire(*t.match.provider);
            providerAs<CIMAssociationProvider>(lease)->associatorNames(
                ctx, target, t.match.className, resultClass, role, resultRole, forward);
        });
    fan.finish();
    handler.complete();
}

void Dispatcher::references(const OperationContext& context, const CIMNamespaceName& ns,
                            const CIMObjectPath& objectName, const CIMName& resultClass,
                            const String& role, Boolean includeQualifiers,
                            Boolean includeClassOrigin, const CIMPropertyList& propertyList,
                            ObjectResponseHandler& handler)
{
    checkRunning();
    std::vector<AssocTarget> targets =
        associationTargets(ns, objectName, resultClass, CIMName(), role, String(), false);
    InstanceFilter filter;
    filter.includeQualifiers = includeQualifiers;
    filter.includeClassOrigin = includeClassOrigin;
    filter.propertyList = propertyList;
    ForwardingObjectHandler forward(handler, [&](const CIMObject& o) -> CIMObject {
        if (!resultMatches(ns, o.getClassName(), resultClass))
            return CIMObject();
        return completeObject(o, filter, ns);
    });
    OperationContext ctx = providerContext(context);
    CIMObjectPath target = providerPath(ns, objectName);
    FanOut fan;
    for (const AssocTarget& t : targets)
        fan.call([&] {
            ProviderManager::Lease lease = _providers.acquire(*t.match.provider);
            providerAs<CIMAssociationProvider>(lease)->references(
                ctx, target, t.match.className, role, includeQualifiers, includeClassOrigin,
                propertyList, forward);
        });
    fan.finish();
    handler.complete();
}

void Dispatcher::referenceNames(const OperationContext& context, const CIMNamespaceName& ns,
                                const CIMObjectPath& objectName, const CIMName& resultClass,
                                const String& role, ObjectPathResponseHandler& handler)
{
    checkRunning();
    std::vector<AssocTarget> targets =
        associationTargets(ns, objectName, resultClass, CIMName(), role, String(), false);
    ForwardingPathHandler forward(handler, [&](CIMObjectPath& p) {
        if (!resultMatches(ns, p.getClassName(), resultClass))
            return false;
        completePath(p, ns);
        return true;
    });
    OperationContext ctx = providerContext(context);
    CIMObjectPath target = providerPath(ns, objectName);
    FanOut fan;
    for (const AssocTarget& t : targets)
        fan.call([&] {
            ProviderManager::Lease lease = _providers.acquire(*t.match.provider);
            providerAs<CIMAssociationProvider>(lease)->referenceNames(
                ctx, target, t.match.className, role, forward);
        });
    fan.finish();
    handler.complete();
}

// ---------------------------------------------------------------- methods

CIMValue Dispatcher::invokeMethod(const OperationContext& context, const CIMNamespaceName& ns,
                                  const CIMObjectPath& instanceName, const CIMName& methodName,
                                  const Array<CIMParamValue>& inParameters,
                                  Array<CIMParamValue>& outParameters)
{
    checkRunning();
    const CIMClass& cls = _repository.requireClass(ns, instanceName.getClassName());
    ProviderMatch m = _registry.find(ns, instanceName.getClassName(), PROVIDER_METHOD);
    if (!m.provider) {
        String msg("No method provider is registered for class ");
        msg.append(cls.getClassName().getString());
        msg.append(" in namespace ");
        msg.append(ns.getString());
        msg.append(".");
        throw CIMException(CIM_ERR_NOT_SUPPORTED, msg);
    }
    Uint32 mi = cls.findMethod(methodName);
    CIMConstMethod method;
    if (mi != PEG_NOT_FOUND)
        method = cls.getMethod(mi);
    Array<CIMParamValue> typed = typeInParameters(method, inParameters);
    MethodResultHandler handler;
    guarded([&] {
        ProviderManager::Lease lease = _providers.acquire(*m.provider);
        providerAs<CIMMethodProvider>(lease)->invokeMethod(
            providerContext(context), providerPath(ns, instanceName), methodName, typed, handler);
    });
    outParameters.appendArray(handler.outParameters());
    if (handler.hasReturnValue())
        return handler.returnValue();
    return method.isUninitialized() ? CIMValue() : CIMValue(method.getType(), false);
}

}  // namespace zarserver
