// ProviderRegistry: which provider serves which class, read from the
// PG_ProviderModule, PG_Provider and PG_ProviderCapabilities instances of
// the registration namespace.
#ifndef ZAR_SERVER_CORE_PROVIDERREGISTRY_H
#define ZAR_SERVER_CORE_PROVIDERREGISTRY_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ClassRepository.h"

namespace zarserver {

// Kinds of provider, as numbered in PG_ProviderCapabilities.ProviderType.
enum ProviderKind { PROVIDER_INSTANCE = 2, PROVIDER_ASSOCIATION = 3, PROVIDER_METHOD = 5 };

// One registered provider name of a module.
struct ProviderInfo {
    std::string moduleName;    // PG_ProviderModule.Name
    std::string location;      // PG_ProviderModule.Location: library lib<location>.so
    std::string providerName;  // PG_Provider.Name, passed to PegasusCreateProvider()
};

// A provider serving one class of one namespace.
struct ProviderMatch {
    const ProviderInfo* provider = nullptr;
    Pegasus::CIMName className;  // the class as registered (repository spelling)
};

class ProviderRegistry {
public:
    // The namespace that holds the registrations.
    static const char* const kInteropNamespace;

    // Reads the registrations from repository's interop namespace (none if
    // it does not exist). Throws std::runtime_error for an inconsistent
    // registration: unknown module or provider, unknown class or namespace,
    // an association capability on a class that is not an association, two
    // providers of one kind for one class, an unsupported interface type.
    void load(const ClassRepository& repository);

    // The provider of that kind registered for exactly className in ns, or
    // a match whose provider is null.
    ProviderMatch find(const Pegasus::CIMNamespaceName& ns, const Pegasus::CIMName& className,
                       ProviderKind kind) const;

    // Every class of ns with a provider of that kind, in registration order.
    std::vector<ProviderMatch> all(const Pegasus::CIMNamespaceName& ns, ProviderKind kind) const;

    // Every registered provider.
    std::vector<const ProviderInfo*> providers() const;

private:
    struct Entry {
        std::string nsKey;
        ProviderKind kind;
        ProviderMatch match;
    };
    std::vector<std::unique_ptr<ProviderInfo>> _providers;
    std::map<std::string, ProviderMatch> _byKey;  // "ns|class|kind"
    std::vector<Entry> _entries;
};

}  // namespace zarserver

#endif
