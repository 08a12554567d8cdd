// The pull operations: an enumeration is opened (its provider operation
// starts on a thread of its own), pulled in pieces of the size the client
// names, and closed, explicitly or at its end. Each answer carries
// EndOfSequence and the EnumerationContext after its objects.
#include <strings.h>

#include <Pegasus/Common/Exception.h>

#include "CimOperation.h"
#include "CimRequest.h"
#include "CimResponse.h"
#include "EnumerationContexts.h"

PEGASUS_USING_PEGASUS;

namespace zarwire {

namespace {

// The parameters every open operation shares but MaxObjectCount.
struct OpenOptions {
    Uint32 timeout = 0;
    Uint32 maxObjectCount = 0;
};

OpenOptions openOptions(CimOperationEnv& env, const CimParams& p)
{
    if (p.string("FilterQueryLanguage").size() != 0 || p.string("FilterQuery").size() != 0)
        throw CIMException(CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED,
                           "Filtered enumerations are not supported.");
    if (p.boolean("ContinueOnError", false))
        throw CIMException(CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED,
                           "ContinueOnError is not supported.");
    const EnumerationLimits& limits = env.enumerations.limits();
    OpenOptions o;
    o.timeout = limits.defaultTimeout;
    if (p.uint32("OperationTimeout", o.timeout)) {
        if (o.timeout == 0)
            throw CIMException(CIM_ERR_INVALID_OPERATION_TIMEOUT,
                               "An enumeration without a timeout is not allowed.");
        if (o.timeout > limits.maxTimeout)
            throw CIMException(CIM_ERR_INVALID_OPERATION_TIMEOUT,
                               str("OperationTimeout " + std::to_string(o.timeout) +
                                   " is above the server's maximum of " +
                                   std::to_string(limits.maxTimeout) + " seconds."));
    }
    return o;
}

Uint32 maxObjectCount(CimOperationEnv& env, const CimParams& p, bool required)
{
    Uint32 n = 0;
    if (!p.uint32("MaxObjectCount", n) && required)
        throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter MaxObjectCount");
    if (n > env.enumerations.limits().maxObjectCount)
        throw CIMException(
            CIM_ERR_INVALID_PARAMETER,
            str("MaxObjectCount " + std::to_string(n) + " is above the server's maximum of " +
                std::to_string(env.enumerations.limits().maxObjectCount) + "."));
    return n;
}

// Up to max objects of e into IRETURNVALUE, then EndOfSequence and the
// context. The enumeration is released (removed at its end or on error).
void answer(CimOperationEnv& env, const std::shared_ptr<Enumeration>& e, Uint32 max)
{
    bool end = false;
    try {
        env.response.buffer() += "<IRETURNVALUE>";
        end = e->take(max, [&](const std::string& element) {
            env.sink.write([&](std::string& b) { b += element; });
        });
    } catch (...) {
        env.enumerations.release(e, true);
        throw;
    }
    env.enumerations.release(e, end);
    std::string& b = env.response.buffer();
    b += "</IRETURNVALUE><PARAMVALUE NAME=\"EndOfSequence\"><VALUE>";
    b += end ? "TRUE" : "FALSE";
    b += "</VALUE></PARAMVALUE><PARAMVALUE NAME=\"EnumerationContext\"><VALUE>";
    if (!end)
        b += e->id();
    b += "</VALUE></PARAMVALUE>";
}

// Opens an enumeration running produce and answers with its first objects.
void open(CimOperationEnv& env, const CimParams& p, EnumerationKind kind,
          std::function<void(ResultSink&)> produce)
{
    OpenOptions o = openOptions(env, p);
    o.maxObjectCount = maxObjectCount(env, p, false);
    std::shared_ptr<Enumeration> e =
        env.enumerations.open(env.user, env.nameSpace, kind, o.timeout, std::move(produce));
    // Errors the operation finds at once (an unknown class, a refused
    // user) answer the open itself.
    e->waitForStart();
    answer(env, e, o.maxObjectCount);
}

// What a provider operation needs after the request has been answered.
struct Captured {
    CIMOperationHost* host;
    OperationContext context;
    CIMNamespaceName nameSpace;
    String hostName;
};

Captured capture(CimOperationEnv& env)
{
    return Captured{&env.host, env.context, env.nameSpace, env.hostName};
}

void openEnumerateInstances(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"ClassName", "DeepInheritance", "IncludeClassOrigin", "PropertyList",
                 "FilterQueryLanguage", "FilterQuery", "OperationTimeout", "ContinueOnError",
                 "MaxObjectCount"});
    CIMName cls = p.className("ClassName", true);
    bool di = p.boolean("DeepInheritance", true);
    bool ico = p.boolean("IncludeClassOrigin", false);
    CIMPropertyList pl = p.propertyList();
    Captured c = capture(env);
    open(env, p, EnumerationKind::InstancesWithPath, [c, cls, di, ico, pl](ResultSink& sink) {
        InstanceWriter w(sink, InstanceForm::InstanceWithPath, c.hostName, c.nameSpace);
        c.host->enumerateInstances(c.context, c.nameSpace, cls, di, false, false, ico, pl, w);
    });
}

void openEnumerateInstancePaths(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"ClassName", "FilterQueryLanguage", "FilterQuery", "OperationTimeout",
                 "ContinueOnError", "MaxObjectCount"});
    CIMName cls = p.className("ClassName", true);
    Captured c = capture(env);
    open(env, p, EnumerationKind::InstancePaths, [c, cls](ResultSink& sink) {
        PathWriter w(sink, PathForm::InstancePath, c.hostName, c.nameSpace);
        c.host->enumerateInstanceNames(c.context, c.nameSpace, cls, w);
    });
}

void openReferenceInstances(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"InstanceName", "ResultClass", "Role", "IncludeClassOrigin", "PropertyList",
                 "FilterQueryLanguage", "FilterQuery", "OperationTimeout", "ContinueOnError",
                 "MaxObjectCount"});
    CIMObjectPath obj = p.path("InstanceName", true);
    CIMName resultClass = p.className("ResultClass", false);
    String role = p.string("Role");
    bool ico = p.boolean("IncludeClassOrigin", false);
    CIMPropertyList pl = p.propertyList();
    Captured c = capture(env);
    open(env, p, EnumerationKind::InstancesWithPath,
         [c, obj, resultClass, role, ico, pl](ResultSink& sink) {
             ObjectWriter w(sink, true, c.hostName, c.nameSpace);
             c.host->references(c.context, c.nameSpace, obj, resultClass, role, false, ico, pl, w);
         });
}

void openReferenceInstancePaths(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"InstanceName", "ResultClass", "Role", "FilterQueryLanguage", "FilterQuery",
                 "OperationTimeout", "ContinueOnError", "MaxObjectCount"});
    CIMObjectPath obj = p.path("InstanceName", true);
    CIMName resultClass = p.className("ResultClass", false);
    String role = p.string("Role");
    Captured c = capture(env);
    open(env, p, EnumerationKind::InstancePaths, [c, obj, resultClass, role](ResultSink& sink) {
        PathWriter w(sink, PathForm::InstancePath, c.hostName, c.nameSpace);
        c.host->referenceNames(c.context, c.nameSpace, obj, resultClass, role, w);
    });
}

void openAssociatorInstances(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"InstanceName", "AssocClass", "ResultClass", "Role", "ResultRole",
                 "IncludeClassOrigin", "PropertyList", "FilterQueryLanguage", "FilterQuery",
                 "OperationTimeout", "ContinueOnError", "MaxObjectCount"});
    CIMObjectPath obj = p.path("InstanceName", true);
    CIMName assocClass = p.className("AssocClass", false);
    CIMName resultClass = p.className("ResultClass", false);
    String role = p.string("Role");
    String resultRole = p.string("ResultRole");
    bool ico = p.boolean("IncludeClassOrigin", false);
    CIMPropertyList pl = p.propertyList();
    Captured c = capture(env);
    open(env, p, EnumerationKind::InstancesWithPath,
         [c, obj, assocClass, resultClass, role, resultRole, ico, pl](ResultSink& sink) {
             ObjectWriter w(sink, true, c.hostName, c.nameSpace);
             c.host->associators(c.context, c.nameSpace, obj, assocClass, resultClass, role,
                                 resultRole, false, ico, pl, w);
         });
}

void openAssociatorInstancePaths(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"InstanceName", "AssocClass", "ResultClass", "Role", "ResultRole",
                 "FilterQueryLanguage", "FilterQuery", "OperationTimeout", "ContinueOnError",
                 "MaxObjectCount"});
    CIMObjectPath obj = p.path("InstanceName", true);
    CIMName assocClass = p.className("AssocClass", false);
    CIMName resultClass = p.className("ResultClass", false);
    String role = p.string("Role");
    String resultRole = p.string("ResultRole");
    Captured c = capture(env);
    open(env, p, EnumerationKind::InstancePaths,
         [c, obj, assocClass, resultClass, role, resultRole](ResultSink& sink) {
             PathWriter w(sink, PathForm::InstancePath, c.hostName, c.nameSpace);
             c.host->associatorNames(c.context, c.nameSpace, obj, assocClass, resultClass, role,
                                     resultRole, w);
         });
}

std::shared_ptr<Enumeration> acquire(CimOperationEnv& env, const CimParams& p)
{
    String id = p.string("EnumerationContext");
    return env.enumerations.acquire(u8(id), env.user, env.nameSpace);
}

// A pull; kind is what it returns, or null for PullInstances (which only
// query enumerations answer, and this server opens none).
void pull(CimOperationEnv& env, const CimParams& p, const EnumerationKind* kind)
{
    p.allowOnly({"EnumerationContext", "MaxObjectCount"});
    Uint32 max = maxObjectCount(env, p, true);
    std::shared_ptr<Enumeration> e = acquire(env, p);
    if (!kind || e->kind() != *kind) {
        env.enumerations.release(e, true);
        throw CIMException(CIM_ERR_FAILED, "Open and Pull Message types do not match.");
    }
    answer(env, e, max);
}

void pullInstancesWithPath(CimOperationEnv& env, const CimParams& p)
{
    static const EnumerationKind k = EnumerationKind::InstancesWithPath;
    pull(env, p, &k);
}

void pullInstancePaths(CimOperationEnv& env, const CimParams& p)
{
    static const EnumerationKind k = EnumerationKind::InstancePaths;
    pull(env, p, &k);
}

void pullInstances(CimOperationEnv& env, const CimParams& p)
{
    pull(env, p, nullptr);
}

void closeEnumeration(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"EnumerationContext"});
    env.enumerations.release(acquire(env, p), true);
}

void enumerationCount(CimOperationEnv& env, const CimParams& p)
{
    p.allowOnly({"EnumerationContext"});
    env.enumerations.release(acquire(env, p), false);
    throw CIMException(CIM_ERR_NOT_SUPPORTED, "EnumerationCount is not supported.");
}

const IntrinsicEntry kPullOperations[] = {
    {"OpenEnumerateInstances", openEnumerateInstances},
    {"OpenEnumerateInstancePaths", openEnumerateInstancePaths},
    {"OpenReferenceInstances", openReferenceInstances},
    {"OpenReferenceInstancePaths", openReferenceInstancePaths},
    {"OpenAssociatorInstances", openAssociatorInstances},
    {"OpenAssociatorInstancePaths", openAssociatorInstancePaths},
    {"PullInstancesWithPath", pullInstancesWithPath},
    {"PullInstancePaths", pullInstancePaths},
    {"PullInstances", pullInstances},
    {"CloseEnumeration", closeEnumeration},
    {"EnumerationCount", enumerationCount},
};

}  // namespace

const IntrinsicEntry* findPullOperation(const std::string& name)
{
    for (const IntrinsicEntry& e : kPullOperations)
        if (strcasecmp(e.name, name.c_str()) == 0)
            return &e;
    return nullptr;
}

}  // namespace zarwire
