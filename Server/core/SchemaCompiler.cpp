#include "SchemaCompiler.h"

#include <Pegasus/Common/Exception.h>

#include "MofParser.h"

using namespace Pegasus;

namespace zarserver {

namespace {

std::string str(const String& s)
{
    return (const char*)s.getCString();
}
std::string str(const CIMName& n)
{
    return str(n.getString());
}

const char* scopeName(unsigned scope)
{
    switch (scope) {
        case SCOPE_CLASS:
            return "class";
        case SCOPE_ASSOCIATION:
            return "association";
        case SCOPE_INDICATION:
            return "indication";
        case SCOPE_PROPERTY:
            return "property";
        case SCOPE_REFERENCE:
            return "reference";
        case SCOPE_METHOD:
            return "method";
        default:
            return "parameter";
    }
}

CIMName checkedName(const std::string& name, const SourcePos& pos, const char* what)
{
    try {
        return CIMName(String(name.c_str()));
    } catch (const Exception&) {
        throw MofError(pos, std::string("'") + name + "' is not a valid " + what + " name");
    }
}

// Applies written flavor keywords to a declaration's flavor.
CIMFlavor applyFlavors(CIMFlavor flavor, const std::vector<std::string>& written,
                       const SourcePos& pos)
{
    for (const std::string& f : written) {
        if (equalNoCase(f, "EnableOverride")) {
            flavor.removeFlavor(CIMFlavor::DISABLEOVERRIDE);
            flavor.addFlavor(CIMFlavor::ENABLEOVERRIDE);
        } else if (equalNoCase(f, "DisableOverride")) {
            flavor.removeFlavor(CIMFlavor::ENABLEOVERRIDE);
            flavor.addFlavor(CIMFlavor::DISABLEOVERRIDE);
        } else if (equalNoCase(f, "ToSubclass")) {
            flavor.removeFlavor(CIMFlavor::RESTRICTED);
            flavor.addFlavor(CIMFlavor::TOSUBCLASS);
        } else if (equalNoCase(f, "Restricted")) {
            flavor.removeFlavor(CIMFlavor::TOSUBCLASS);
            flavor.addFlavor(CIMFlavor::RESTRICTED);
        } else if (equalNoCase(f, "Translatable")) {
            flavor.addFlavor(CIMFlavor::TRANSLATABLE);
        } else if (equalNoCase(f, "ToInstance")) {
            flavor.addFlavor(CIMFlavor::TOINSTANCE);
        } else {
            throw MofError(pos, "unknown flavor '" + f + "'");
        }
    }
    return flavor;
}

// Builds the qualifiers written on one element.
std::vector<CIMQualifier> typeQualifiers(const ClassRepository& repo, const CIMNamespaceName& ns,
                                         const std::vector<mof::Qualifier>& written, unsigned scope,
                                         const std::string& element)
{
    std::vector<CIMQualifier> out;
    for (const mof::Qualifier& q : written) {
        CIMName name = checkedName(q.name, q.pos, "qualifier");
        const QualifierDeclaration* decl = repo.findQualifierDecl(ns, name);
        if (!decl)
            throw MofError(q.pos, "qualifier " + q.name + " is not declared in namespace " +
                                      str(ns.getString()));
        if (!(decl->scopes & scope))
            throw MofError(q.pos, "qualifier " + q.name + " may not be used on a " +
                                      scopeName(scope) + " (" + element + ")");
        for (const CIMQualifier& seen : out)
            if (seen.getName().equal(name))
                throw MofError(q.pos, "qualifier " + q.name + " is given twice on " + element);
        const CIMValue& def = decl->defaultValue;
        CIMValue value;
        if (q.value.kind == mof::Literal::NONE) {
            value = (def.getType() == CIMTYPE_BOOLEAN && !def.isArray()) ? CIMValue(Boolean(true))
                                                                         : def;
        } else if (def.isArray() && q.value.kind != mof::Literal::ARRAY &&
                   q.value.kind != mof::Literal::NULLVALUE) {
            mof::Literal wrapped;
            wrapped.kind = mof::Literal::ARRAY;
            wrapped.pos = q.value.pos;
            wrapped.items.push_back(q.value);
            value = literalToValue(wrapped, def.getType(), true, nullptr, "qualifier " + q.name);
        } else {
            value = literalToValue(q.value, def.getType(), def.isArray(), nullptr,
                                   "qualifier " + q.name);
        }
        out.push_back(
            CIMQualifier(decl->name, value, applyFlavors(decl->flavor, q.flavors, q.pos)));
    }
    return out;
}

template <class Owner, class Source>
void inheritQualifiers(Owner& target, const Source& inherited)
{
    for (Uint32 i = 0; i < inherited.getQualifierCount(); ++i) {
        CIMConstQualifier q = inherited.getQualifier(i);
        if (!q.getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS))
            continue;
        if (target.findQualifier(q.getName()) != PEG_NOT_FOUND)
            continue;
        CIMQualifier copy = q.clone();
        copy.setPropagated(true);
        target.addQualifier(copy);
    }
}

// Overriding a DisableOverride qualifier with another value is an error.
template <class Source>
void checkOverrides(const std::vector<CIMQualifier>& local, const Source& inherited,
                    const std::vector<mof::Qualifier>& written, const std::string& element)
{
    for (size_t k = 0; k < local.size(); ++k) {
        Uint32 i = inherited.findQualifier(local[k].getName());
        if (i == PEG_NOT_FOUND)
            continue;
        CIMConstQualifier q = inherited.getQualifier(i);
        if (q.getFlavor().hasFlavor(CIMFlavor::DISABLEOVERRIDE) &&
            !q.getValue().equal(local[k].getValue()))
            throw MofError(written[k].pos, "qualifier " + written[k].name + " of " + element +
                                               " may not be overridden");
    }
}

}  // namespace

SchemaCompiler::SchemaCompiler(ClassRepository& repository) : _repository(repository) {}

void SchemaCompiler::compile(const std::vector<mof::Declaration>& declarations,
                             const CIMNamespaceName& defaultNamespace)
{
    _repository.addNamespace(defaultNamespace);
    for (const mof::Declaration& d : declarations) {
        CIMNamespaceName ns = defaultNamespace;
        if (!d.nameSpace.empty()) {
            SourcePos pos = d.kind == mof::Declaration::QUALIFIER ? d.qualifierDecl.pos
                            : d.kind == mof::Declaration::CLASS   ? d.classDecl.pos
                                                                  : d.instanceDecl.pos;
            try {
                ns = CIMNamespaceName(String(d.nameSpace.c_str()));
            } catch (const Exception&) {
                throw MofError(pos, "'" + d.nameSpace + "' is not a valid namespace name");
            }
            _repository.addNamespace(ns);
        }
        try {
            switch (d.kind) {
                case mof::Declaration::QUALIFIER:
                    addQualifierDecl(ns, d.qualifierDecl);
                    break;
                case mof::Declaration::CLASS:
                    addClass(ns, d.classDecl);
                    break;
                case mof::Declaration::INSTANCE:
                    addInstance(ns, d.instanceDecl);
                    break;
            }
        } catch (const Exception& e) {
            // The object model refused something the checks above let through.
            SourcePos pos = d.kind == mof::Declaration::QUALIFIER ? d.qualifierDecl.pos
                            : d.kind == mof::Declaration::CLASS   ? d.classDecl.pos
                                                                  : d.instanceDecl.pos;
            throw MofError(pos, str(e.getMessage()));
        }
    }
}

void SchemaCompiler::addQualifierDecl(const CIMNamespaceName& ns, const mof::QualifierDecl& d)
{
    QualifierDeclaration decl;
    decl.name = checkedName(d.name, d.pos, "qualifier");
    if (d.type.name == "ref")
        throw MofError(d.pos, "qualifiers cannot be references");
    decl.defaultValue = literalToValue(d.defaultValue, typeFromName(d.type.name), d.type.isArray,
                                       nullptr, "qualifier " + d.name);
    for (const std::string& s : d.scopes) {
        static const struct {
            const char* name;
            unsigned bit;
        } kScopes[] = {{"class", SCOPE_CLASS},           {"association", SCOPE_ASSOCIATION},
                       {"indication", SCOPE_INDICATION}, {"property", SCOPE_PROPERTY},
                       {"reference", SCOPE_REFERENCE},   {"method", SCOPE_METHOD},
                       {"parameter", SCOPE_PARAMETER},   {"any", SCOPE_ANY}};
        bool known = false;
        for (const auto& k : kScopes)
            if (equalNoCase(s, k.name)) {
                decl.scopes |= k.bit;
                known = true;
            }
        if (!known)
            throw MofError(d.pos, "unknown scope '" + s + "' in qualifier " + d.name);
    }
    decl.flavor = applyFlavors(CIMFlavor::DEFAULTS, d.flavors, d.pos);
    const QualifierDeclaration* old = _repository.findQualifierDecl(ns, decl.name);
    if (old && (old->defaultValue.getType() != decl.defaultValue.getType() ||
                old->defaultValue.isArray() != decl.defaultValue.isArray()))
        throw MofError(d.pos, "qualifier " + d.name + " is already declared with another type");
    _repository.setQualifierDecl(ns, decl);
}

void SchemaCompiler::addClass(const CIMNamespaceName& ns, const mof::ClassDecl& d)
{
    CIMName name = checkedName(d.name, d.pos, "class");
    if (_repository.findClass(ns, name))
        throw MofError(d.pos, "class " + d.name + " is already defined in " + str(ns.getString()));
    const CIMClass* super = nullptr;
    CIMName superName;
    if (!d.superClass.empty()) {
        superName = checkedName(d.superClass, d.pos, "class");
        super = _repository.findClass(ns, superName);
        if (!super)
            throw MofError(d.pos, "superclass " + d.superClass + " of " + d.name +
                                      " is not defined (define it first)");
        superName = super->getClassName();
    }
    CIMClass cls(name, superName);

    // The kind of class decides the qualifier scope.
    bool isAssociation = super && super->isAssociation();
    bool isIndication = false;
    for (const mof::Qualifier& q : d.qualifiers) {
        bool on = q.value.kind == mof::Literal::NONE ||
                  (q.value.kind == mof::Literal::BOOLEAN && q.value.boolean);
        if (equalNoCase(q.name, "Association") && on)
            isAssociation = true;
        if (equalNoCase(q.name, "Indication") && on)
            isIndication = true;
    }
    if (super && super->findQualifier(CIMName("Indication")) != PEG_NOT_FOUND) {
        Boolean b = false;
        CIMConstQualifier q = super->getQualifier(super->findQualifier(CIMName("Indication")));
        if (q.getType() == CIMTYPE_BOOLEAN && !q.getValue().isNull())
            q.getValue().get(b);
        isIndication = isIndication || b;
    }
    unsigned classScope = isAssociation  ? SCOPE_ASSOCIATION
                          : isIndication ? SCOPE_INDICATION
                                         : SCOPE_CLASS;
    std::string element = "class " + d.name;
    std::vector<CIMQualifier> quals =
        typeQualifiers(_repository, ns, d.qualifiers, classScope, element);
    if (super)
        checkOverrides(quals, *super, d.qualifiers, element);
    for (const CIMQualifier& q : quals)
        cls.addQualifier(q);
    if (super)
        inheritQualifiers(cls, *super);

    // Inherited properties and methods first, in the superclass's order.
    std::vector<bool> used(d.features.size(), false);
    auto findLocal = [&](const CIMName& n, bool method) -> int {
        for (size_t k = 0; k < d.features.size(); ++k)
            if (d.features[k].isMethod == method && equalNoCase(d.features[k].name, str(n)))
                return int(k);
        return -1;
    };
    for (size_t k = 0; k < d.features.size(); ++k)
        for (size_t j = 0; j < k; ++j)
            if (equalNoCase(d.features[k].name, d.features[j].name) &&
                d.features[k].isMethod == d.features[j].isMethod)
                throw MofError(d.features[k].pos,
                               (d.features[k].isMethod ? "method " : "property ") +
                                   d.features[k].name + " is defined twice in " + d.name);

    auto buildProperty = [&](const mof::Feature& f, const CIMConstProperty* inherited) {
        std::string what = "property " + d.name + "." + f.name;
        CIMName pname = checkedName(f.name, f.pos, "property");
        CIMType type = typeFromName(f.type.name);
        CIMName refClass;
        if (type == CIMTYPE_REFERENCE) {
            if (f.type.isArray)
                throw MofError(f.pos, what + ": reference properties cannot be arrays");
            if (!isAssociation)
                throw MofError(f.pos, what + ": only associations may have reference properties");
            refClass = checkedName(f.type.refClass, f.pos, "class");
            const CIMClass* rc = _repository.findClass(ns, refClass);
            if (!rc && !refClass.equal(name))
                throw MofError(f.pos,
                               what + ": referenced class " + f.type.refClass + " is not defined");
            if (rc)
                refClass = rc->getClassName();
        }
        if (inherited && (inherited->getType() != type || inherited->isArray() != f.type.isArray))
            throw MofError(f.pos, what + " changes the type of the inherited property");
        CIMValue value = literalToValue(f.defaultValue, type, f.type.isArray, &_aliases, what);
        if (f.type.arraySize && !value.isNull() && value.getArraySize() != Uint32(f.type.arraySize))
            throw MofError(f.defaultValue.pos, what + ": the array must have " +
                                                   std::to_string(f.type.arraySize) + " elements");
        CIMProperty p(pname, value, Uint32(f.type.arraySize), refClass, name, false);
        std::vector<CIMQualifier> pq =
            typeQualifiers(_repository, ns, f.qualifiers,
                           type == CIMTYPE_REFERENCE ? SCOPE_REFERENCE : SCOPE_PROPERTY, what);
        if (inherited)
            checkOverrides(pq, *inherited, f.qualifiers, what);
        for (const CIMQualifier& q : pq)
            p.addQualifier(q);
        if (inherited)
            inheritQualifiers(p, *inherited);
        return p;
    };
    auto buildMethod = [&](const mof::Feature& f, const CIMConstMethod* inherited) {
        std::string what = "method " + d.name + "." + f.name;
        CIMName mname = checkedName(f.name, f.pos, "method");
        CIMType type = typeFromName(f.type.name);
        if (f.type.isArray)
            throw MofError(f.pos, what + ": methods cannot return arrays");
        if (inherited && inherited->getType() != type)
            throw MofError(f.pos, what + " changes the return type of the inherited method");
        CIMMethod m(mname, type, name, false);
        std::vector<CIMQualifier> mq =
            typeQualifiers(_repository, ns, f.qualifiers, SCOPE_METHOD, what);
        if (inherited)
            checkOverrides(mq, *inherited, f.qualifiers, what);
        for (const CIMQualifier& q : mq)
            m.addQualifier(q);
        if (inherited)
            inheritQualifiers(m, *inherited);
        for (const mof::Parameter& pd : f.parameters) {
            std::string pwhat = "parameter " + pd.name + " of " + what;
            CIMName pname = checkedName(pd.name, pd.pos, "parameter");
            if (m.findParameter(pname) != PEG_NOT_FOUND)
                throw MofError(pd.pos, pwhat + " is defined twice");
            CIMType ptype = typeFromName(pd.type.name);
            CIMName refClass;
            if (ptype == CIMTYPE_REFERENCE) {
                refClass = checkedName(pd.type.refClass, pd.pos, "class");
                const CIMClass* rc = _repository.findClass(ns, refClass);
                if (!rc && !refClass.equal(name))
                    throw MofError(pd.pos, pwhat + ": referenced class " + pd.type.refClass +
                                               " is not defined");
                if (rc)
                    refClass = rc->getClassName();
            }
            CIMParameter p(pname, ptype, pd.type.isArray, Uint32(pd.type.arraySize), refClass);
            for (const CIMQualifier& q :
                 typeQualifiers(_repository, ns, pd.qualifiers, SCOPE_PARAMETER, pwhat))
                p.addQualifier(q);
            m.addParameter(p);
        }
        return m;
    };

    if (super) {
        for (Uint32 i = 0; i < super->getPropertyCount(); ++i) {
            CIMConstProperty sp = super->getProperty(i);
            int k = findLocal(sp.getName(), false);
            if (k < 0) {
                CIMProperty p = sp.clone();
                p.setPropagated(true);
                cls.addProperty(p);
            } else {
                used[k] = true;
                cls.addProperty(buildProperty(d.features[k], &sp));
            }
        }
        for (Uint32 i = 0; i < super->getMethodCount(); ++i) {
            CIMConstMethod sm = super->getMethod(i);
            int k = findLocal(sm.getName(), true);
            if (k < 0) {
                CIMMethod m = sm.clone();
                m.setPropagated(true);
                cls.addMethod(m);
            } else {
                used[k] = true;
                cls.addMethod(buildMethod(d.features[k], &sm));
            }
        }
    }
    for (size_t k = 0; k < d.features.size(); ++k) {
        if (used[k])
            continue;
        const mof::Feature& f = d.features[k];
        for (const mof::Qualifier& q : f.qualifiers)
            if (equalNoCase(q.name, "Override"))
                throw MofError(q.pos, (f.isMethod ? "method " : "property ") + f.name + " of " +
                                          d.name + " overrides nothing in its superclasses");
        if (f.isMethod)
            cls.addMethod(buildMethod(f, nullptr));
        else
            cls.addProperty(buildProperty(f, nullptr));
    }
    if (isAssociation) {
        int refs = 0;
        for (Uint32 i = 0; i < cls.getPropertyCount(); ++i)
            if (cls.getProperty(i).getType() == CIMTYPE_REFERENCE)
                ++refs;
        if (refs < 2)
            throw MofError(d.pos, "association " + d.name + " needs at least two references");
    }
    CIMObjectPath path;
    path.setClassName(name);
    cls.setPath(path);
    _repository.addClass(ns, cls);
}

void SchemaCompiler::addInstance(const CIMNamespaceName& ns, const mof::InstanceDecl& d)
{
    CIMName className = checkedName(d.className, d.pos, "class");
    const CIMClass* cls = _repository.findClass(ns, className);
    if (!cls)
        throw MofError(d.pos, "class " + d.className + " of the instance is not defined in " +
                                  str(ns.getString()));
    if (cls->isAbstract())
        throw MofError(d.pos, "class " + d.className + " is abstract and cannot have instances");
    CIMInstance inst = cls->buildInstance(false, false, CIMPropertyList());
    for (const mof::PropertyValue& pv : d.properties) {
        Uint32 i = inst.findProperty(CIMName(checkedName(pv.name, pv.pos, "property")));
        if (i == PEG_NOT_FOUND)
            throw MofError(pv.pos, "class " + d.className + " has no property " + pv.name);
        CIMProperty p = inst.getProperty(i);
        CIMValue v = literalToValue(pv.value, p.getType(), p.isArray(), &_aliases,
                                    "property " + d.className + "." + pv.name);
        try {
            p.setValue(v);
        } catch (const Exception& e) {
            throw MofError(pv.pos,
                           "property " + d.className + "." + pv.name + ": " + str(e.getMessage()));
        }
    }
    Array<CIMName> keys;
    cls->getKeyNames(keys);
    for (Uint32 k = 0; k < keys.size(); ++k) {
        CIMConstProperty p = inst.getProperty(inst.findProperty(keys[k]));
        if (p.getValue().isNull())
            throw MofError(
                d.pos, "instance of " + d.className + " gives no value for key " + str(keys[k]));
    }
    CIMObjectPath path = inst.buildPath(CIMConstClass(*cls));
    for (const CIMInstance& other : _repository.instancesOf(ns, cls->getClassName()))
        if (other.getPath() == path)
            throw MofError(d.pos, "instance " + str(path.toString()) + " is already defined");
    inst.setPath(path);
    if (!d.alias.empty()) {
        if (_aliases.count(d.alias))
            throw MofError(d.pos, "alias $" + d.alias + " is already used");
        CIMObjectPath full = path;
        full.setNameSpace(ns);
        _aliases[d.alias] = full;
    }
    _repository.addInstance(ns, inst);
}

}  // namespace zarserver
