#include "ProviderRegistry.h"

#include <stdexcept>

using namespace Pegasus;

namespace zarserver {

const char* const ProviderRegistry::kInteropNamespace = "root/PG_InterOp";

namespace {

std::string str(const String& s)
{
    return (const char*)s.getCString();
}

std::string stringProperty(const CIMInstance& inst, const char* name, bool required)
{
    Uint32 i = inst.findProperty(CIMName(name));
    String v;
    if (i != PEG_NOT_FOUND) {
        CIMConstProperty p = inst.getProperty(i);
        if (p.getType() == CIMTYPE_STRING && !p.isArray() && !p.getValue().isNull())
            p.getValue().get(v);
    }
    if (required && v.size() == 0)
        throw std::runtime_error("provider registration " + str(inst.getPath().toString()) +
                                 ": property " + name + " must be set");
    return str(v);
}

std::string key(const std::string& nsKey, const CIMName& cls, int kind)
{
    return nsKey + "|" + nameKey(cls.getString()) + "|" + std::to_string(kind);
}

}  // namespace

void ProviderRegistry::load(const ClassRepository& repo)
{
    CIMNamespaceName interop(kInteropNamespace);
    if (!repo.hasNamespace(interop))
        return;
    std::map<std::string, std::pair<std::string, std::string>> modules;  // key -> (name, location)
    for (const CIMInstance& m : repo.instancesOf(interop, CIMName("PG_ProviderModule"))) {
        std::string name = stringProperty(m, "Name", true);
        std::string location = stringProperty(m, "Location", true);
        std::string itype = stringProperty(m, "InterfaceType", false);
        if (!itype.empty() && itype != "C++Default")
            throw std::runtime_error("provider module " + name + ": interface type " + itype +
                                     " is not supported (only C++Default)");
        if (location.find('/') != std::string::npos)
            throw std::runtime_error("provider module " + name +
                                     ": Location must be a library base name, not a path");
        modules[nameKey(String(name.c_str()))] = std::make_pair(name, location);
    }
    std::map<std::string, ProviderInfo*> providers;  // "module|provider" lower-case
    for (const CIMInstance& p : repo.instancesOf(interop, CIMName("PG_Provider"))) {
        std::string module = stringProperty(p, "ProviderModuleName", true);
        std::string name = stringProperty(p, "Name", true);
        auto mit = modules.find(nameKey(String(module.c_str())));
        if (mit == modules.end())
            throw std::runtime_error("provider " + name + ": provider module " + module +
                                     " is not registered");
        std::unique_ptr<ProviderInfo> info(new ProviderInfo);
        info->moduleName = mit->second.first;
        info->location = mit->second.second;
        info->providerName = name;
        providers[nameKey(String((module + "|" + name).c_str()))] = info.get();
        _providers.push_back(std::move(info));
    }
    for (const CIMInstance& c : repo.instancesOf(interop, CIMName("PG_ProviderCapabilities"))) {
        std::string id = str(c.getPath().toString());
        std::string module = stringProperty(c, "ProviderModuleName", true);
        std::string provider = stringProperty(c, "ProviderName", true);
        std::string className = stringProperty(c, "ClassName", true);
        auto pit = providers.find(nameKey(String((module + "|" + provider).c_str())));
        if (pit == providers.end())
            throw std::runtime_error(id + ": provider " + provider + " of module " + module +
                                     " is not registered");
        Array<String> namespaces;
        Array<Uint16> types;
        Uint32 i = c.findProperty(CIMName("Namespaces"));
        if (i != PEG_NOT_FOUND && !c.getProperty(i).getValue().isNull())
            c.getProperty(i).getValue().get(namespaces);
        i = c.findProperty(CIMName("ProviderType"));
        if (i != PEG_NOT_FOUND && !c.getProperty(i).getValue().isNull())
            c.getProperty(i).getValue().get(types);
        if (namespaces.size() == 0 || types.size() == 0)
            throw std::runtime_error(id + ": Namespaces and ProviderType must not be empty");
        for (Uint32 n = 0; n < namespaces.size(); ++n) {
            CIMNamespaceName ns;
            try {
                ns = CIMNamespaceName(namespaces[n]);
            } catch (const Exception&) {
                throw std::runtime_error(id + ": invalid namespace " + str(namespaces[n]));
            }
            if (!repo.hasNamespace(ns))
                throw std::runtime_error(id + ": namespace " + str(namespaces[n]) +
                                         " does not exist");
            const CIMClass* cls = repo.findClass(ns, CIMName(String(className.c_str())));
            if (!cls)
                throw std::runtime_error(id + ": class " + className + " is not defined in " +
                                         str(namespaces[n]));
            for (Uint32 t = 0; t < types.size(); ++t) {
                int kind = types[t];
                if (kind != PROVIDER_INSTANCE && kind != PROVIDER_ASSOCIATION &&
                    kind != PROVIDER_METHOD)
                    continue;  // indication and query providers are not served
                if (kind == PROVIDER_ASSOCIATION && !cls->isAssociation())
                    throw std::runtime_error(id + ": " + className +
                                             " is not an association class");
                std::string nsKey = nameKey(ns.getString());
                std::string k = key(nsKey, cls->getClassName(), kind);
                if (_byKey.count(k))
                    throw std::runtime_error(id + ": class " + className + " in " +
                                             str(namespaces[n]) +
                                             " already has a provider of this type (" +
                                             _byKey[k].provider->providerName + ")");
                ProviderMatch m;
                m.provider = pit->second;
                m.className = cls->getClassName();
                _byKey[k] = m;
                _entries.push_back(Entry{nsKey, ProviderKind(kind), m});
            }
        }
    }
}

ProviderMatch ProviderRegistry::find(const CIMNamespaceName& ns, const CIMName& className,
                                     ProviderKind kind) const
{
    if (ns.isNull() || className.isNull())
        return ProviderMatch();
    auto it = _byKey.find(key(nameKey(ns.getString()), className, kind));
    return it == _byKey.end() ? ProviderMatch() : it->second;
}

std::vector<ProviderMatch> ProviderRegistry::all(const CIMNamespaceName& ns,
                                                 ProviderKind kind) const
{
    std::vector<ProviderMatch> out;
    if (ns.isNull())
        return out;
    std::string nsKey = nameKey(ns.getString());
    for (const Entry& e : _entries)
        if (e.kind == kind && e.nsKey == nsKey)
            out.push_back(e.match);
    return out;
}

std::vector<const ProviderInfo*> ProviderRegistry::providers() const
{
    std::vector<const ProviderInfo*> out;
    for (const auto& p : _providers)
        out.push_back(p.get());
    return out;
}

}  // namespace zarserver
