// The classic intrinsic operations of CIM-XML: classes, instances,
// associations and properties.
#include <strings.h>

#include <Pegasus/Common/Exception.h>

#include "CimOperation.h"
#include "CimProtocol.h"
#include "CimResponse.h"

PEGASUS_USING_PEGASUS;

namespace zarwire {

namespace {

void getClass(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly(
        {"ClassName", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin", "PropertyList"});
    CIMClass c =
        env.host.getClass(env.context, env.nameSpace, p.className("ClassName", true),
                          p.boolean("LocalOnly", true), p.boolean("IncludeQualifiers", true),
                          p.boolean("IncludeClassOrigin", false), p.propertyList());
    std::string& b = env.response.buffer();
    b += "<IRETURNVALUE>";
    CIMXml::appendClass(b, c);
    b += "</IRETURNVALUE>";
}

void enumerateClasses(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly(
        {"ClassName", "DeepInheritance", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin"});
    Array<CIMClass> cs = env.host.enumerateClasses(
        env.context, env.nameSpace, p.className("ClassName", false),
        p.boolean("DeepInheritance", false), p.boolean("LocalOnly", true),
        p.boolean("IncludeQualifiers", true), p.boolean("IncludeClassOrigin", false));
    env.response.buffer() += "<IRETURNVALUE>";
    for (Uint32 i = 0; i < cs.size(); i++)
        env.sink.write([&](std::string& o) { CIMXml::appendClass(o, cs[i]); });
    env.response.buffer() += "</IRETURNVALUE>";
}

void enumerateClassNames(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"ClassName", "DeepInheritance"});
    Array<CIMName> names =
        env.host.enumerateClassNames(env.context, env.nameSpace, p.className("ClassName", false),
                                     p.boolean("DeepInheritance", false));
    std::string& b = env.response.buffer();
    b += "<IRETURNVALUE>";
    for (Uint32 i = 0; i < names.size(); i++)
        CIMXml::appendClassName(b, names[i]);
    b += "</IRETURNVALUE>";
}

void getInstance(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly(
        {"InstanceName", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin", "PropertyList"});
    CIMInstance i =
        env.host.getInstance(env.context, env.nameSpace, p.path("InstanceName", true),
                             p.boolean("LocalOnly", true), p.boolean("IncludeQualifiers", false),
                             p.boolean("IncludeClassOrigin", false), p.propertyList());
    std::string& b = env.response.buffer();
    b += "<IRETURNVALUE>";
    CIMXml::appendInstance(b, i);
    b += "</IRETURNVALUE>";
}

void enumerateInstances(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"ClassName", "LocalOnly", "DeepInheritance", "IncludeQualifiers",
                 "IncludeClassOrigin", "PropertyList"});
    CIMName cls = p.className("ClassName", true);
    bool lo = p.boolean("LocalOnly", true), di = p.boolean("DeepInheritance", true);
    bool iq = p.boolean("IncludeQualifiers", false);
    bool ico = p.boolean("IncludeClassOrigin", false);
    CIMPropertyList pl = p.propertyList();
    env.response.buffer() += "<IRETURNVALUE>";
    InstanceWriter w(env.sink, InstanceForm::NamedInstance, env.hostName, env.nameSpace);
    env.host.enumerateInstances(env.context, env.nameSpace, cls, di, lo, iq, ico, pl, w);
    env.response.buffer() += "</IRETURNVALUE>";
}

void enumerateInstanceNames(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"ClassName"});
    CIMName cls = p.className("ClassName", true);
    env.response.buffer() += "<IRETURNVALUE>";
    PathWriter w(env.sink, PathForm::InstanceName, env.hostName, env.nameSpace);
    env.host.enumerateInstanceNames(env.context, env.nameSpace, cls, w);
    env.response.buffer() += "</IRETURNVALUE>";
}

void createInstance(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"NewInstance"});
    const CIMXml::XmlElement* e = p.content("NewInstance");
    if (!e)
        throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter NewInstance");
    CIMInstance inst = CIMXml::decodeInstance(*e, env.limits);
    CIMObjectPath created = env.host.createInstance(env.context, env.nameSpace, inst);
    std::string& b = env.response.buffer();
    b += "<IRETURNVALUE>";
    CIMXml::appendInstanceName(b, created);
    b += "</IRETURNVALUE>";
}

void modifyInstance(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"ModifiedInstance", "IncludeQualifiers", "PropertyList"});
    const CIMXml::XmlElement* e = p.content("ModifiedInstance");
    if (!e)
        throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter ModifiedInstance");
    if (e->name != "VALUE.NAMEDINSTANCE")
        throw ProtocolError{400, "request-not-valid",
                            "ModifiedInstance must be a VALUE.NAMEDINSTANCE"};
    CIMInstance inst(CIMXml::decodeObjectWithPath(*e, env.limits));
    env.host.modifyInstance(env.context, env.nameSpace, inst, p.boolean("IncludeQualifiers", true),
                            p.propertyList());
}

void deleteInstance(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"InstanceName"});
    env.host.deleteInstance(env.context, env.nameSpace, p.path("InstanceName", true));
}

void associatorsOrReferences(CimOperationEnv& env, const CimParams& p, bool assoc)
{
    if (assoc)
        p.allowOnly({"ObjectName", "AssocClass", "ResultClass", "Role", "ResultRole",
                     "IncludeQualifiers", "IncludeClassOrigin", "PropertyList"});
    else
        p.allowOnly({"ObjectName", "ResultClass", "Role", "IncludeQualifiers", "IncludeClassOrigin",
                     "PropertyList"});
    CIMObjectPath obj = p.path("ObjectName", false);
    CIMName assocClass = assoc ? p.className("AssocClass", false) : CIMName();
    CIMName resultClass = p.className("ResultClass", false);
    String role = p.string("Role");
    String resultRole = assoc ? p.string("ResultRole") : String();
    bool iq = p.boolean("IncludeQualifiers", false);
    bool ico = p.boolean("IncludeClassOrigin", false);
    CIMPropertyList pl = p.propertyList();
    env.response.buffer() += "<IRETURNVALUE>";
    ObjectWriter w(env.sink, false, env.hostName, env.nameSpace);
    if (assoc)
        env.host.associators(env.context, env.nameSpace, obj, assocClass, resultClass, role,
                             resultRole, iq, ico, pl, w);
    else
        env.host.references(env.context, env.nameSpace, obj, resultClass, role, iq, ico, pl, w);
    env.response.buffer() += "</IRETURNVALUE>";
}

void associatorNamesOrReferenceNames(CimOperationEnv& env, const CimParams& p, bool assoc)
{
    if (assoc)
        p.allowOnly({"ObjectName", "AssocClass", "ResultClass", "Role", "ResultRole"});
    else
        p.allowOnly({"ObjectName", "ResultClass", "Role"});
    CIMObjectPath obj = p.path("ObjectName", false);
    CIMName assocClass = assoc ? p.className("AssocClass", false) : CIMName();
    CIMName resultClass = p.className("ResultClass", false);
    String role = p.string("Role");
    String resultRole = assoc ? p.string("ResultRole") : String();
    env.response.buffer() += "<IRETURNVALUE>";
    PathWriter w(env.sink, PathForm::ObjectPath, env.hostName, env.nameSpace);
    if (assoc)
        env.host.associatorNames(env.context, env.nameSpace, obj, assocClass, resultClass, role,
                                 resultRole, w);
    else
        env.host.referenceNames(env.context, env.nameSpace, obj, resultClass, role, w);
    env.response.buffer() += "</IRETURNVALUE>";
}

void getProperty(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"InstanceName", "PropertyName"});
    String prop = p.string("PropertyName");
    if (prop.size() == 0)
        throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter PropertyName");
    CIMValue v = env.host.getProperty(env.context, env.nameSpace, p.path("InstanceName", true),
                                      CIMName(prop));
    if (!v.isNull()) {
        std::string& b = env.response.buffer();
        b += "<IRETURNVALUE>";
        CIMXml::appendValue(b, v);
        b += "</IRETURNVALUE>";
    }
}

void setProperty(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"InstanceName", "PropertyName", "NewValue"});
    CIMObjectPath path = p.path("InstanceName", true);
    String prop = p.string("PropertyName");
    if (prop.size() == 0)
        throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter PropertyName");
    // Values travel untyped; the class declares the property's type.
    CIMClass cls = env.host.getClass(env.context, env.nameSpace, path.getClassName(), false, false,
                                     false, CIMPropertyList());
    Uint32 idx = cls.findProperty(CIMName(prop));
    if (idx == PEG_NOT_FOUND)
        throw CIMException(CIM_ERR_NO_SUCH_PROPERTY, prop);
    CIMProperty decl = cls.getProperty(idx);
    CIMValue v(decl.getType(), decl.isArray());
    if (const CIMXml::XmlElement* e = p.content("NewValue")) {
        if (e->name == "VALUE.REFERENCE")
            v = CIMXml::decodeValue(*e, CIMTYPE_REFERENCE);
        else
            v = CIMXml::decodeValue(*e, decl.getType());
    }
    env.host.setProperty(env.context, env.nameSpace, path, CIMName(prop), v);
}

const IntrinsicEntry kOperations[] = {
    {"GetClass", getClass},
    {"EnumerateClasses", enumerateClasses},
    {"EnumerateClassNames", enumerateClassNames},
    {"GetInstance", getInstance},
    {"EnumerateInstances", enumerateInstances},
    {"EnumerateInstanceNames", enumerateInstanceNames},
    {"CreateInstance", createInstance},
    {"ModifyInstance", modifyInstance},
    {"DeleteInstance", deleteInstance},
    {"Associators",
     [](CimOperationEnv& e, const CimParams& p) { associatorsOrReferences(e, p, true); }},
    {"AssociatorNames",
     [](CimOperationEnv& e, const CimParams& p) { associatorNamesOrReferenceNames(e, p, true); }},
    {"References",
     [](CimOperationEnv& e, const CimParams& p) { associatorsOrReferences(e, p, false); }},
    {"ReferenceNames",
     [](CimOperationEnv& e, const CimParams& p) { associatorNamesOrReferenceNames(e, p, false); }},
    {"GetProperty", getProperty},
    {"SetProperty", setProperty},
};

}  // namespace

const IntrinsicEntry* findIntrinsic(const std::string& name)
{
    for (const IntrinsicEntry& e : kOperations)
        if (strcasecmp(e.name, name.c_str()) == 0)
            return &e;
    return findPullOperation(name);
}

}  // namespace zarwire
