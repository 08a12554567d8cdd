// ClassRepository: the classes, qualifier declarations and static instances
// of every namespace, loaded from MOF at start and read-only afterwards.
//
// Classes are stored resolved: each holds the properties, methods and
// qualifiers it inherits (marked propagated, with their class origin).
// Loading is single-threaded; once loaded, every const member may be called
// from many threads at once.
#ifndef ZAR_SERVER_CORE_CLASSREPOSITORY_H
#define ZAR_SERVER_CORE_CLASSREPOSITORY_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>

namespace zarserver {

// Elements a qualifier may be applied to (bits of QualifierDeclaration::scopes).
enum QualifierScope : unsigned {
    SCOPE_CLASS = 1,
    SCOPE_ASSOCIATION = 2,
    SCOPE_INDICATION = 4,
    SCOPE_PROPERTY = 8,
    SCOPE_REFERENCE = 16,
    SCOPE_METHOD = 32,
    SCOPE_PARAMETER = 64,
    SCOPE_ANY = 127
};

// A qualifier declaration: type (that of defaultValue), default, scope and
// default flavor.
struct QualifierDeclaration {
    Pegasus::CIMName name;
    Pegasus::CIMValue defaultValue;
    unsigned scopes = 0;
    Pegasus::CIMFlavor flavor;
};

class ClassRepository {
public:
    ClassRepository();
    ~ClassRepository();

    // ---- Loading (single-threaded, before serving) ----

    // Creates the namespace if it does not exist yet.
    void addNamespace(const Pegasus::CIMNamespaceName& ns);

    // Adds or replaces a qualifier declaration; the namespace must exist.
    void setQualifierDecl(const Pegasus::CIMNamespaceName& ns, const QualifierDeclaration& decl);

    // Adds a resolved class. Its superclass must already be present and the
    // name must be new; otherwise throws std::logic_error.
    void addClass(const Pegasus::CIMNamespaceName& ns, const Pegasus::CIMClass& resolved);

    // Adds a static instance whose path holds its class and keys.
    void addInstance(const Pegasus::CIMNamespaceName& ns, const Pegasus::CIMInstance& instance);

    // ---- Lookups (thread-safe once loaded) ----

    bool hasNamespace(const Pegasus::CIMNamespaceName& ns) const;
    std::vector<Pegasus::CIMNamespaceName> namespaces() const;

    // The declaration, or null when the namespace or qualifier is unknown.
    const QualifierDeclaration* findQualifierDecl(const Pegasus::CIMNamespaceName& ns,
                                                  const Pegasus::CIMName& name) const;

    // The stored resolved class, or null. Callers must not modify it; clone
    // it to hand it out.
    const Pegasus::CIMClass* findClass(const Pegasus::CIMNamespaceName& ns,
                                       const Pegasus::CIMName& name) const;

    // Throws CIMException CIM_ERR_INVALID_NAMESPACE unless ns exists.
    void requireNamespace(const Pegasus::CIMNamespaceName& ns) const;

    // Checks the namespace, then returns the class or throws CIMException
    // CIM_ERR_INVALID_CLASS (message: the class name).
    const Pegasus::CIMClass& requireClass(const Pegasus::CIMNamespaceName& ns,
                                          const Pegasus::CIMName& name) const;

    // True if cls is ancestor or one of its subclasses (both must exist).
    bool isA(const Pegasus::CIMNamespaceName& ns, const Pegasus::CIMName& cls,
             const Pegasus::CIMName& ancestor) const;

    // Subclasses of cls in definition order (parents before children): the
    // direct ones only, or all descendants when deep. cls null: the root
    // classes, or every class when deep.
    std::vector<Pegasus::CIMName> subclassNames(const Pegasus::CIMNamespaceName& ns,
                                                const Pegasus::CIMName& cls, bool deep) const;

    // Static instances of exactly this class (paths hold class and keys).
    std::vector<Pegasus::CIMInstance> instancesOf(const Pegasus::CIMNamespaceName& ns,
                                                  const Pegasus::CIMName& cls) const;

    // ---- Class operations (errors as CIMException with CIM status codes) ----

    // A copy of the class filtered as the flags ask: localOnly drops
    // inherited elements, includeQualifiers false drops every qualifier,
    // includeClassOrigin false clears class origins, a non-NULL propertyList
    // keeps only the properties it names.
    Pegasus::CIMClass getClass(const Pegasus::CIMNamespaceName& ns, const Pegasus::CIMName& name,
                               bool localOnly, bool includeQualifiers, bool includeClassOrigin,
                               const Pegasus::CIMPropertyList& propertyList) const;

    // Subclasses of className (see subclassNames), each filtered like getClass.
    Pegasus::Array<Pegasus::CIMClass> enumerateClasses(const Pegasus::CIMNamespaceName& ns,
                                                       const Pegasus::CIMName& className,
                                                       bool deepInheritance, bool localOnly,
                                                       bool includeQualifiers,
                                                       bool includeClassOrigin) const;

    Pegasus::Array<Pegasus::CIMName> enumerateClassNames(const Pegasus::CIMNamespaceName& ns,
                                                         const Pegasus::CIMName& className,
                                                         bool deepInheritance) const;

private:
    struct Namespace;
    const Namespace* findNamespace(const Pegasus::CIMNamespaceName& ns) const;
    Namespace& loadingNamespace(const Pegasus::CIMNamespaceName& ns);

    std::map<std::string, std::unique_ptr<Namespace>> _namespaces;  // by lower-case name
};

// Lower-cased copy of a name, used as a map key (names compare ignoring ASCII case).
std::string nameKey(const Pegasus::String& name);

}  // namespace zarserver

#endif
