#include "ClassRepository.h"

#include <stdexcept>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace zarserver {

std::string nameKey(const String& name)
{
    std::string s = (const char*)name.getCString();
    for (char& c : s)
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    return s;
}

struct ClassRepository::Namespace {
    CIMNamespaceName name;
    std::map<std::string, QualifierDeclaration> qualifiers;
    struct Entry {
        CIMClass cls;
        std::vector<std::string> children;  // keys, in definition order
        std::vector<CIMInstance> instances;
    };
    std::map<std::string, Entry> classes;
    std::vector<std::string> order;  // class keys in definition order
    std::vector<std::string> roots;
};

ClassRepository::ClassRepository() {}
ClassRepository::~ClassRepository() {}

void ClassRepository::addNamespace(const CIMNamespaceName& ns)
{
    std::string key = nameKey(ns.getString());
    if (_namespaces.count(key))
        return;
    std::unique_ptr<Namespace> n(new Namespace);
    n->name = ns;
    _namespaces[key] = std::move(n);
}

ClassRepository::Namespace& ClassRepository::loadingNamespace(const CIMNamespaceName& ns)
{
    auto it = _namespaces.find(nameKey(ns.getString()));
    if (it == _namespaces.end())
        throw std::logic_error("namespace " +
                               std::string((const char*)ns.getString().getCString()) +
                               " does not exist");
    return *it->second;
}

void ClassRepository::setQualifierDecl(const CIMNamespaceName& ns, const QualifierDeclaration& decl)
{
    loadingNamespace(ns).qualifiers[nameKey(decl.name.getString())] = decl;
}

void ClassRepository::addClass(const CIMNamespaceName& ns, const CIMClass& resolved)
{
    Namespace& n = loadingNamespace(ns);
    std::string key = nameKey(resolved.getClassName().getString());
    if (n.classes.count(key))
        throw std::logic_error("class already exists");
    const CIMName& super = resolved.getSuperClassName();
    if (!super.isNull()) {
        auto sit = n.classes.find(nameKey(super.getString()));
        if (sit == n.classes.end())
            throw std::logic_error("superclass does not exist");
        sit->second.children.push_back(key);
    } else {
        n.roots.push_back(key);
    }
    n.classes[key].cls = resolved;
    n.order.push_back(key);
}

void ClassRepository::addInstance(const CIMNamespaceName& ns, const CIMInstance& instance)
{
    Namespace& n = loadingNamespace(ns);
    auto it = n.classes.find(nameKey(instance.getClassName().getString()));
    if (it == n.classes.end())
        throw std::logic_error("class of instance does not exist");
    it->second.instances.push_back(instance);
}

const ClassRepository::Namespace* ClassRepository::findNamespace(const CIMNamespaceName& ns) const
{
    if (ns.isNull())
        return nullptr;
    auto it = _namespaces.find(nameKey(ns.getString()));
    return it == _namespaces.end() ? nullptr : it->second.get();
}

bool ClassRepository::hasNamespace(const CIMNamespaceName& ns) const
{
    return findNamespace(ns) != nullptr;
}

std::vector<CIMNamespaceName> ClassRepository::namespaces() const
{
    std::vector<CIMNamespaceName> out;
    for (const auto& kv : _namespaces)
        out.push_back(kv.second->name);
    return out;
}

const QualifierDeclaration* ClassRepository::findQualifierDecl(const CIMNamespaceName& ns,
                                                               const CIMName& name) const
{
    const Namespace* n = findNamespace(ns);
    if (!n || name.isNull())
        return nullptr;
    auto it = n->qualifiers.find(nameKey(name.getString()));
    return it == n->qualifiers.end() ? nullptr : &it->second;
}

const CIMClass* ClassRepository::findClass(const CIMNamespaceName& ns, const CIMName& name) const
{
    const Namespace* n = findNamespace(ns);
    if (!n || name.isNull())
        return nullptr;
    auto it = n->classes.find(nameKey(name.getString()));
    return it == n->classes.end() ? nullptr : &it->second.cls;
}

void ClassRepository::requireNamespace(const CIMNamespaceName& ns) const
{
    if (!findNamespace(ns))
        throw CIMException(CIM_ERR_INVALID_NAMESPACE, ns.isNull() ? String() : ns.getString());
}

const CIMClass& ClassRepository::requireClass(const CIMNamespaceName& ns, const CIMName& name) const
{
    requireNamespace(ns);
    const CIMClass* c = findClass(ns, name);
    if (!c)
        throw CIMException(CIM_ERR_INVALID_CLASS, name.isNull() ? String() : name.getString());
    return *c;
}

bool ClassRepository::isA(const CIMNamespaceName& ns, const CIMName& cls,
                          const CIMName& ancestor) const
{
    const CIMClass* c = findClass(ns, cls);
    while (c) {
        if (c->getClassName().equal(ancestor))
            return true;
        const CIMName& super = c->getSuperClassName();
        if (super.isNull())
            return false;
        c = findClass(ns, super);
    }
    return false;
}

std::vector<CIMName> ClassRepository::subclassNames(const CIMNamespaceName& ns, const CIMName& cls,
                                                    bool deep) const
{
    std::vector<CIMName> out;
    const Namespace* n = findNamespace(ns);
    if (!n)
        return out;
    if (cls.isNull()) {
        for (const std::string& k : deep ? n->order : n->roots)
            out.push_back(n->classes.at(k).cls.getClassName());
        return out;
    }
    auto it = n->classes.find(nameKey(cls.getString()));
    if (it == n->classes.end())
        return out;
    if (!deep) {
        for (const std::string& k : it->second.children)
            out.push_back(n->classes.at(k).cls.getClassName());
        return out;
    }
    // Definition order keeps parents before children.
    for (const std::string& k : n->order) {
        const CIMClass& c = n->classes.at(k).cls;
        if (k != it->first && isA(ns, c.getClassName(), cls))
            out.push_back(c.getClassName());
    }
    return out;
}

std::vector<CIMInstance> ClassRepository::instancesOf(const CIMNamespaceName& ns,
                                                      const CIMName& cls) const
{
    const Namespace* n = findNamespace(ns);
    if (!n || cls.isNull())
        return {};
    auto it = n->classes.find(nameKey(cls.getString()));
    if (it == n->classes.end())
        return {};
    return it->second.instances;
}

namespace {

void stripQualifiers(CIMClass& c)
{
    while (c.getQualifierCount())
        c.removeQualifier(c.getQualifierCount() - 1);
    for (Uint32 i = 0; i < c.getPropertyCount(); ++i) {
        CIMProperty p = c.getProperty(i);
        while (p.getQualifierCount())
            p.removeQualifier(p.getQualifierCount() - 1);
    }
    for (Uint32 i = 0; i < c.getMethodCount(); ++i) {
        CIMMethod m = c.getMethod(i);
        while (m.getQualifierCount())
            m.removeQualifier(m.getQualifierCount() - 1);
        for (Uint32 j = 0; j < m.getParameterCount(); ++j) {
            CIMParameter p = m.getParameter(j);
            while (p.getQualifierCount())
                p.removeQualifier(p.getQualifierCount() - 1);
        }
    }
}

CIMClass filterClass(const CIMClass& stored, bool localOnly, bool includeQualifiers,
                     bool includeClassOrigin, const CIMPropertyList& propertyList)
{
    CIMClass c = stored.clone();
    for (Uint32 i = c.getPropertyCount(); i-- > 0;) {
        CIMProperty p = c.getProperty(i);
        if ((localOnly && p.getPropagated()) || !propertyList.useThisProperty(p.getName()))
            c.removeProperty(i);
        else if (!includeClassOrigin)
            p.setClassOrigin(CIMName());
    }
    for (Uint32 i = c.getMethodCount(); i-- > 0;) {
        CIMMethod m = c.getMethod(i);
        if (localOnly && m.getPropagated())
            c.removeMethod(i);
        else if (!includeClassOrigin)
            m.setClassOrigin(CIMName());
    }
    if (localOnly) {
        for (Uint32 i = c.getQualifierCount(); i-- > 0;)
            if (c.getQualifier(i).getPropagated())
                c.removeQualifier(i);
    }
    if (!includeQualifiers)
        stripQualifiers(c);
    return c;
}

}  // namespace

CIMClass ClassRepository::getClass(const CIMNamespaceName& ns, const CIMName& name, bool localOnly,
                                   bool includeQualifiers, bool includeClassOrigin,
                                   const CIMPropertyList& propertyList) const
{
    const CIMClass& c = requireClass(ns, name);
    return filterClass(c, localOnly, includeQualifiers, includeClassOrigin, propertyList);
}

Array<CIMClass> ClassRepository::enumerateClasses(const CIMNamespaceName& ns,
                                                  const CIMName& className, bool deepInheritance,
                                                  bool localOnly, bool includeQualifiers,
                                                  bool includeClassOrigin) const
{
    if (className.isNull())
        requireNamespace(ns);
    else
        requireClass(ns, className);
    Array<CIMClass> out;
    for (const CIMName& n : subclassNames(ns, className, deepInheritance))
        out.append(filterClass(*findClass(ns, n), localOnly, includeQualifiers, includeClassOrigin,
                               CIMPropertyList()));
    return out;
}

Array<CIMName> ClassRepository::enumerateClassNames(const CIMNamespaceName& ns,
                                                    const CIMName& className,
                                                    bool deepInheritance) const
{
    if (className.isNull())
        requireNamespace(ns);
    else
        requireClass(ns, className);
    Array<CIMName> out;
    for (const CIMName& n : subclassNames(ns, className, deepInheritance))
        out.append(n);
    return out;
}

}  // namespace zarserver
