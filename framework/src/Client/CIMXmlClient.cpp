#include "Client/CIMXmlClient.h"

#include <cstdlib>
#include <strings.h>

#include <Pegasus/Client/CIMClientException.h>
#include <Pegasus/Common/Exception.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

std::string u8(const String& s)
{
    CString c = s.getCString();
    return std::string((const char*)c);
}

String str(const std::string& s)
{
    return String(s.c_str(), Uint32(s.size()));
}

void classNameParam(std::string& out, const char* name, const CIMName& cls)
{
    if (cls.isNull())
        return;
    out += "<IPARAMVALUE NAME=\"";
    out += name;
    out += "\">";
    CIMXml::appendClassName(out, cls);
    out += "</IPARAMVALUE>";
}

void instanceNameParam(std::string& out, const char* name, const CIMObjectPath& path)
{
    out += "<IPARAMVALUE NAME=\"";
    out += name;
    out += "\">";
    CIMXml::appendInstanceName(out, path);
    out += "</IPARAMVALUE>";
}

// ObjectName: an INSTANCENAME, or a CLASSNAME for a path without keys.
void objectNameParam(std::string& out, const CIMObjectPath& path)
{
    out += "<IPARAMVALUE NAME=\"ObjectName\">";
    if (path.getKeyBindings().size())
        CIMXml::appendInstanceName(out, path);
    else
        CIMXml::appendClassName(out, path.getClassName());
    out += "</IPARAMVALUE>";
}

void stringParam(std::string& out, const char* name, const String& v)
{
    if (v.size() == 0)
        return;
    out += "<IPARAMVALUE NAME=\"";
    out += name;
    out += "\"><VALUE>";
    CIMXml::appendText(out, v);
    out += "</VALUE></IPARAMVALUE>";
}

void propertyListParam(std::string& out, const CIMPropertyList& pl)
{
    if (pl.isNull())
        return;
    out += "<IPARAMVALUE NAME=\"PropertyList\"><VALUE.ARRAY>";
    for (Uint32 i = 0; i < pl.size(); i++) {
        out += "<VALUE>";
        CIMXml::appendText(out, pl[i].getString());
        out += "</VALUE>";
    }
    out += "</VALUE.ARRAY></IPARAMVALUE>";
}

// The children of IRETURNVALUE (none when it is absent).
const std::vector<CIMXml::XmlElement>& returned(const CIMXml::XmlElement* resp)
{
    static const std::vector<CIMXml::XmlElement> none;
    const CIMXml::XmlElement* rv = resp ? resp->child("IRETURNVALUE") : 0;
    return rv ? rv->children : none;
}

template <class F>
auto decoding(F f) -> decltype(f())
{
    try {
        return f();
    } catch (CIMXmlFormatException& e) {
        throw CIMClientXmlException(e.getMessage());
    }
}

}  // namespace

CIMXmlClient::CIMXmlClient(const String& host, Uint32 port, const SSLContext* ssl,
                           const String& user, const String& password, Uint32 timeoutMs)
    : _conn(new HttpClientConnection(u8(host), port)), _timeoutMs(timeoutMs)
{
    if (ssl)
        _conn->useTls(u8(ssl->getTrustStore()), u8(ssl->getCertPath()), u8(ssl->getKeyPath()));
    if (user.size())
        _authorization = "Basic " + clientBase64(u8(user) + ":" + u8(password));
    _limits.maxTextBytes = 64u << 20;
    _limits.maxElements = ~size_t(0);
    _conn->open(int(_timeoutMs));
}

CIMXmlClient::CIMXmlClient(const std::string& socketPath, Uint32 timeoutMs)
    : _conn(new HttpClientConnection(socketPath)), _timeoutMs(timeoutMs)
{
    _limits.maxTextBytes = 64u << 20;
    _limits.maxElements = ~size_t(0);
    _conn->open(int(_timeoutMs));
}

CIMXmlClient::~CIMXmlClient() {}

CIMXml::XmlElement CIMXmlClient::_send(const std::string& method, const std::string& object,
                                       const std::string& body)
{
    std::string head = "POST /cimom HTTP/1.1\r\nHost: " + _conn->endpoint() +
                       "\r\nContent-Type: application/xml; charset=utf-8\r\nContent-Length: " +
                       std::to_string(body.size()) +
                       "\r\nCIMProtocolVersion: 1.0\r\nCIMOperation: MethodCall\r\nCIMMethod: " +
                       clientUriEncode(method) + "\r\nCIMObject: " + clientUriEncode(object) +
                       "\r\nTE: trailers\r\n";
    if (!_authorization.empty())
        head += "Authorization: " + _authorization + "\r\n";
    HttpClientResponse r = _conn->roundTrip(head, body, int(_timeoutMs));
    if (r.status != 200) {
        const std::string* ce = r.header("CIMError");
        const std::string* d = r.header("PGErrorDetail");
        throw CIMClientHTTPErrorException(Uint32(r.status), str(r.reason), ce ? str(*ce) : String(),
                                          d ? str(clientUriDecode(*d)) : String());
    }
    if (const std::string* code = r.header("CIMStatusCode", true)) {
        const std::string* d = r.header("CIMStatusCodeDescription", true);
        throw CIMException(CIMStatusCode(std::atoi(code->c_str())),
                           d ? str(clientUriDecode(*d)) : String());
    }
    return decoding([&] { return CIMXml::parseDocument(r.body.data(), r.body.size(), _limits); });
}

CIMXml::XmlElement CIMXmlClient::_call(const char* method, const CIMNamespaceName& ns,
                                       const std::string& params, const CIMXml::XmlElement*& resp)
{
    resp = 0;
    std::string body;
    CIMXml::appendMessageStart(body, std::to_string(++_messageId), true);
    body += "<IMETHODCALL NAME=\"";
    body += method;
    body += "\">";
    CIMXml::appendLocalNamespacePath(body, ns);
    body += params;
    body += "</IMETHODCALL>\n";
    CIMXml::appendMessageEnd(body, true);
    CIMXml::XmlElement doc = _send(method, u8(ns.getString()), body);
    decoding([&] {
        const CIMXml::XmlElement& r = doc.requiredChild("MESSAGE")
                                          .requiredChild("SIMPLERSP")
                                          .requiredChild("IMETHODRESPONSE");
        if (const CIMXml::XmlElement* err = r.child("ERROR")) {
            throw CIMException(
                CIMStatusCode(std::atoi(err->requiredAttribute("CODE").c_str())),
                str(err->attribute("DESCRIPTION") ? *err->attribute("DESCRIPTION") : ""));
        }
        return 0;
    });
    // The document is returned by value; find the response in the copy.
    return doc;
}

namespace {
const CIMXml::XmlElement* responseOf(const CIMXml::XmlElement& doc)
{
    return &doc.requiredChild("MESSAGE")
                .requiredChild("SIMPLERSP")
                .requiredChild("IMETHODRESPONSE");
}
}  // namespace

CIMClass CIMXmlClient::getClass(const CIMNamespaceName& ns, const CIMName& className,
                                Boolean localOnly, Boolean includeQualifiers,
                                Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    std::string p;
    classNameParam(p, "ClassName", className);
    CIMXml::appendBooleanIParam(p, "LocalOnly", localOnly);
    CIMXml::appendBooleanIParam(p, "IncludeQualifiers", includeQualifiers);
    CIMXml::appendBooleanIParam(p, "IncludeClassOrigin", includeClassOrigin);
    propertyListParam(p, propertyList);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("GetClass", ns, p, r);
    return decoding([&] {
        const auto& v = returned(responseOf(doc));
        if (v.size() != 1)
            throw CIMClientResponseException("GetClass returned no class");
        return CIMXml::decodeClass(v[0], _limits);
    });
}

Array<CIMClass> CIMXmlClient::enumerateClasses(const CIMNamespaceName& ns, const CIMName& className,
                                               Boolean deepInheritance, Boolean localOnly,
                                               Boolean includeQualifiers,
                                               Boolean includeClassOrigin)
{
    std::string p;
    classNameParam(p, "ClassName", className);
    CIMXml::appendBooleanIParam(p, "DeepInheritance", deepInheritance);
    CIMXml::appendBooleanIParam(p, "LocalOnly", localOnly);
    CIMXml::appendBooleanIParam(p, "IncludeQualifiers", includeQualifiers);
    CIMXml::appendBooleanIParam(p, "IncludeClassOrigin", includeClassOrigin);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("EnumerateClasses", ns, p, r);
    return decoding([&] {
        Array<CIMClass> out;
        for (const auto& e : returned(responseOf(doc)))
            out.append(CIMXml::decodeClass(e, _limits));
        return out;
    });
}

Array<CIMName> CIMXmlClient::enumerateClassNames(const CIMNamespaceName& ns,
                                                 const CIMName& className, Boolean deepInheritance)
{
    std::string p;
    classNameParam(p, "ClassName", className);
    CIMXml::appendBooleanIParam(p, "DeepInheritance", deepInheritance);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("EnumerateClassNames", ns, p, r);
    return decoding([&] {
        Array<CIMName> out;
        for (const auto& e : returned(responseOf(doc)))
            out.append(CIMXml::decodeClassName(e));
        return out;
    });
}

CIMInstance CIMXmlClient::getInstance(const CIMNamespaceName& ns, const CIMObjectPath& instanceName,
                                      Boolean localOnly, Boolean includeQualifiers,
                                      Boolean includeClassOrigin,
                                      const CIMPropertyList& propertyList)
{
    std::string p;
    instanceNameParam(p, "InstanceName", instanceName);
    CIMXml::appendBooleanIParam(p, "LocalOnly", localOnly);
    CIMXml::appendBooleanIParam(p, "IncludeQualifiers", includeQualifiers);
    CIMXml::appendBooleanIParam(p, "IncludeClassOrigin", includeClassOrigin);
    propertyListParam(p, propertyList);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("GetInstance", ns, p, r);
    return decoding([&] {
        const auto& v = returned(responseOf(doc));
        if (v.size() != 1)
            throw CIMClientResponseException("GetInstance returned no instance");
        return CIMXml::decodeInstance(v[0], _limits);
    });
}

void CIMXmlClient::deleteInstance(const CIMNamespaceName& ns, const CIMObjectPath& instanceName)
{
    std::string p;
    instanceNameParam(p, "InstanceName", instanceName);
    const CIMXml::XmlElement* r;
    _call("DeleteInstance", ns, p, r);
}

CIMObjectPath CIMXmlClient::createInstance(const CIMNamespaceName& ns,
                                           const CIMInstance& newInstance)
{
    std::string p = "<IPARAMVALUE NAME=\"NewInstance\">";
    CIMXml::appendInstance(p, newInstance);
    p += "</IPARAMVALUE>";
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("CreateInstance", ns, p, r);
    return decoding([&] {
        const auto& v = returned(responseOf(doc));
        if (v.size() != 1)
            throw CIMClientResponseException("CreateInstance returned no instance name");
        return CIMXml::decodeInstanceName(v[0]);
    });
}

void CIMXmlClient::modifyInstance(const CIMNamespaceName& ns, const CIMInstance& inst,
                                  Boolean includeQualifiers, const CIMPropertyList& propertyList)
{
    std::string p = "<IPARAMVALUE NAME=\"ModifiedInstance\">";
    CIMXml::appendValueNamedInstance(p, inst);
    p += "</IPARAMVALUE>";
    CIMXml::appendBooleanIParam(p, "IncludeQualifiers", includeQualifiers);
    propertyListParam(p, propertyList);
    const CIMXml::XmlElement* r;
    _call("ModifyInstance", ns, p, r);
}

Array<CIMInstance> CIMXmlClient::enumerateInstances(const CIMNamespaceName& ns,
                                                    const CIMName& className,
                                                    Boolean deepInheritance, Boolean localOnly,
                                                    Boolean includeQualifiers,
                                                    Boolean includeClassOrigin,
                                                    const CIMPropertyList& propertyList)
{
    std::string p;
    classNameParam(p, "ClassName", className);
    CIMXml::appendBooleanIParam(p, "DeepInheritance", deepInheritance);
    CIMXml::appendBooleanIParam(p, "LocalOnly", localOnly);
    CIMXml::appendBooleanIParam(p, "IncludeQualifiers", includeQualifiers);
    CIMXml::appendBooleanIParam(p, "IncludeClassOrigin", includeClassOrigin);
    propertyListParam(p, propertyList);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("EnumerateInstances", ns, p, r);
    return decoding([&] {
        Array<CIMInstance> out;
        for (const auto& e : returned(responseOf(doc)))
            out.append(CIMInstance(CIMXml::decodeObjectWithPath(e, _limits)));
        return out;
    });
}

Array<CIMObjectPath> CIMXmlClient::enumerateInstanceNames(const CIMNamespaceName& ns,
                                                          const CIMName& className)
{
    std::string p;
    classNameParam(p, "ClassName", className);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("EnumerateInstanceNames", ns, p, r);
    return decoding([&] {
        Array<CIMObjectPath> out;
        for (const auto& e : returned(responseOf(doc)))
            out.append(CIMXml::decodeInstanceName(e));
        return out;
    });
}

Array<CIMObject> CIMXmlClient::associators(const CIMNamespaceName& ns,
                                           const CIMObjectPath& objectName,
                                           const CIMName& assocClass, const CIMName& resultClass,
                                           const String& role, const String& resultRole,
                                           Boolean includeQualifiers, Boolean includeClassOrigin,
                                           const CIMPropertyList& propertyList)
{
    std::string p;
    objectNameParam(p, objectName);
    classNameParam(p, "AssocClass", assocClass);
    classNameParam(p, "ResultClass", resultClass);
    stringParam(p, "Role", role);
    stringParam(p, "ResultRole", resultRole);
    CIMXml::appendBooleanIParam(p, "IncludeQualifiers", includeQualifiers);
    CIMXml::appendBooleanIParam(p, "IncludeClassOrigin", includeClassOrigin);
    propertyListParam(p, propertyList);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("Associators", ns, p, r);
    return decoding([&] {
        Array<CIMObject> out;
        for (const auto& e : returned(responseOf(doc)))
            out.append(CIMXml::decodeObjectWithPath(e, _limits));
        return out;
    });
}

Array<CIMObjectPath> CIMXmlClient::associatorNames(const CIMNamespaceName& ns,
                                                   const CIMObjectPath& objectName,
                                                   const CIMName& assocClass,
                                                   const CIMName& resultClass, const String& role,
                                                   const String& resultRole)
{
    std::string p;
    objectNameParam(p, objectName);
    classNameParam(p, "AssocClass", assocClass);
    classNameParam(p, "ResultClass", resultClass);
    stringParam(p, "Role", role);
    stringParam(p, "ResultRole", resultRole);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("AssociatorNames", ns, p, r);
    return decoding([&] {
        Array<CIMObjectPath> out;
        for (const auto& e : returned(responseOf(doc)))
            out.append(CIMXml::decodeObjectPath(e));
        return out;
    });
}

Array<CIMObject> CIMXmlClient::references(const CIMNamespaceName& ns,
                                          const CIMObjectPath& objectName,
                                          const CIMName& resultClass, const String& role,
                                          Boolean includeQualifiers, Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList)
{
    std::string p;
    objectNameParam(p, objectName);
    classNameParam(p, "ResultClass", resultClass);
    stringParam(p, "Role", role);
    CIMXml::appendBooleanIParam(p, "IncludeQualifiers", includeQualifiers);
    CIMXml::appendBooleanIParam(p, "IncludeClassOrigin", includeClassOrigin);
    propertyListParam(p, propertyList);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("References", ns, p, r);
    return decoding([&] {
        Array<CIMObject> out;
        for (const auto& e : returned(responseOf(doc)))
            out.append(CIMXml::decodeObjectWithPath(e, _limits));
        return out;
    });
}

Array<CIMObjectPath> CIMXmlClient::referenceNames(const CIMNamespaceName& ns,
                                                  const CIMObjectPath& objectName,
                                                  const CIMName& resultClass, const String& role)
{
    std::string p;
    objectNameParam(p, objectName);
    classNameParam(p, "ResultClass", resultClass);
    stringParam(p, "Role", role);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("ReferenceNames", ns, p, r);
    return decoding([&] {
        Array<CIMObjectPath> out;
        for (const auto& e : returned(responseOf(doc)))
            out.append(CIMXml::decodeObjectPath(e));
        return out;
    });
}

CIMValue CIMXmlClient::getProperty(const CIMNamespaceName& ns, const CIMObjectPath& instanceName,
                                   const CIMName& propertyName)
{
    std::string p;
    instanceNameParam(p, "InstanceName", instanceName);
    stringParam(p, "PropertyName", propertyName.getString());
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("GetProperty", ns, p, r);
    return decoding([&] {
        const auto& v = returned(responseOf(doc));
        if (v.empty())
            return CIMValue(CIMTYPE_STRING, false);
        // Values come back untyped: strings, or references.
        return CIMXml::decodeValue(v[0], CIMTYPE_STRING, _limits);
    });
}

void CIMXmlClient::setProperty(const CIMNamespaceName& ns, const CIMObjectPath& instanceName,
                               const CIMName& propertyName, const CIMValue& newValue)
{
    std::string p;
    instanceNameParam(p, "InstanceName", instanceName);
    stringParam(p, "PropertyName", propertyName.getString());
    if (!newValue.isNull()) {
        p += "<IPARAMVALUE NAME=\"NewValue\">";
        CIMXml::appendValue(p, newValue);
        p += "</IPARAMVALUE>";
    }
    const CIMXml::XmlElement* r;
    _call("SetProperty", ns, p, r);
}

CIMValue CIMXmlClient::invokeMethod(const CIMNamespaceName& ns, const CIMObjectPath& instanceName,
                                    const CIMName& methodName,
                                    const Array<CIMParamValue>& inParameters,
                                    Array<CIMParamValue>& outParameters)
{
    CIMNamespaceName target =
        instanceName.getNameSpace().isNull() ? ns : instanceName.getNameSpace();
    CIMObjectPath local(String(), CIMNamespaceName(), instanceName.getClassName(),
                        instanceName.getKeyBindings());
    std::string body;
    CIMXml::appendMessageStart(body, std::to_string(++_messageId), true);
    body += "<METHODCALL NAME=\"";
    CIMXml::appendAttribute(body, methodName.getString());
    body += "\">";
    if (local.getKeyBindings().size())
        CIMXml::appendLocalInstancePath(body, local, target);
    else
        CIMXml::appendLocalClassPath(body, target, local.getClassName());
    for (Uint32 i = 0; i < inParameters.size(); i++)
        CIMXml::appendParamValue(body, inParameters[i]);
    body += "</METHODCALL>\n";
    CIMXml::appendMessageEnd(body, true);

    outParameters.clear();
    CIMObjectPath headerPath = local;
    headerPath.setNameSpace(target);
    CIMXml::XmlElement doc = _send(u8(methodName.getString()), u8(headerPath.toString()), body);
    return decoding([&] {
        const CIMXml::XmlElement& r =
            doc.requiredChild("MESSAGE").requiredChild("SIMPLERSP").requiredChild("METHODRESPONSE");
        if (const CIMXml::XmlElement* err = r.child("ERROR")) {
            throw CIMException(
                CIMStatusCode(std::atoi(err->requiredAttribute("CODE").c_str())),
                str(err->attribute("DESCRIPTION") ? *err->attribute("DESCRIPTION") : ""));
        }
        CIMValue rv;
        for (const auto& c : r.children) {
            if (c.name == "RETURNVALUE") {
                CIMParamValue pv = CIMXml::decodeParamValue(
                    [&] {
                        CIMXml::XmlElement e = c;
                        e.attributes.emplace_back("NAME", "ReturnValue");
                        return e;
                    }(),
                    _limits);
                rv = pv.getValue();
            } else if (c.name == "PARAMVALUE") {
                outParameters.append(CIMXml::decodeParamValue(c, _limits));
            }
        }
        return rv;
    });
}

namespace {

CIMClientConnection* createHttpConnection(const String& host, Uint32 port,
                                          const SSLContext* sslContext, const String& user,
                                          const String& password, Uint32 timeoutMs)
{
    return new CIMXmlClient(host, port, sslContext, user, password, timeoutMs);
}

CIMClientConnection* createLocalSocketConnection(Uint32 timeoutMs)
{
    const char* env = std::getenv("ZAR_LOCAL_SOCKET");
    std::string path = env && *env ? env : ZAR_DEFAULT_LOCAL_SOCKET_PATH;
    return new CIMXmlClient(path, timeoutMs);
}

const bool registered = (registerRemoteConnectionFactory(&createHttpConnection),
                         registerLocalConnectionFactory(&createLocalSocketConnection), true);

}  // namespace

// ---- pull operations ----------------------------------------------------

namespace {

void uint32Param(std::string& out, const char* name, Uint32 v)
{
    out += "<IPARAMVALUE NAME=\"";
    out += name;
    out += "\"><VALUE>";
    out += std::to_string(v);
    out += "</VALUE></IPARAMVALUE>";
}

// The VALUE of an output PARAMVALUE of IMETHODRESPONSE; null when absent,
// empty or VALUE.NULL.
const std::string* outputValue(const CIMXml::XmlElement& resp, const char* name)
{
    for (const auto& c : resp.children) {
        const std::string* n = c.attribute("NAME");
        if (c.name != "PARAMVALUE" || !n || strcasecmp(n->c_str(), name) != 0)
            continue;
        const CIMXml::XmlElement* v = c.child("VALUE");
        return v ? &v->text : 0;
    }
    return 0;
}

}  // namespace

CIMClientConnection::PullResult CIMXmlClient::_pull(const char* method, const CIMNamespaceName& ns,
                                                    const std::string& params)
{
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call(method, ns, params, r);
    return decoding([&] {
        const CIMXml::XmlElement& resp = *responseOf(doc);
        PullResult res;
        const std::string* eos = outputValue(resp, "EndOfSequence");
        if (!eos)
            throw CIMXmlFormatException(CIMXmlFormatException::NOT_VALID,
                                        String(method) + " answer without EndOfSequence");
        Boolean end = false;
        CIMXml::scalarFromText(*eos, CIMTYPE_BOOLEAN).get(end);
        res.endOfSequence = end;
        if (const std::string* ctx = outputValue(resp, "EnumerationContext"))
            res.context = str(*ctx);
        if (!end && res.context.size() == 0)
            throw CIMXmlFormatException(CIMXmlFormatException::NOT_VALID,
                                        String(method) + " answer without EnumerationContext");
        for (const auto& e : returned(&resp)) {
            if (e.name == "INSTANCEPATH")
                res.paths.append(CIMXml::decodeObjectPath(e));
            else if (e.name == "INSTANCE")
                res.instances.append(CIMXml::decodeInstance(e, _limits));
            else
                res.instances.append(CIMInstance(CIMXml::decodeObjectWithPath(e, _limits)));
        }
        return res;
    });
}

CIMClientConnection::PullResult CIMXmlClient::openEnumeration(const OpenRequest& q)
{
    static const char* const methods[] = {"OpenEnumerateInstances",  "OpenEnumerateInstancePaths",
                                          "OpenReferenceInstances",  "OpenReferenceInstancePaths",
                                          "OpenAssociatorInstances", "OpenAssociatorInstancePaths"};
    bool paths = q.kind == OpenRequest::INSTANCE_PATHS || q.kind == OpenRequest::REFERENCE_PATHS ||
                 q.kind == OpenRequest::ASSOCIATOR_PATHS;
    bool assoc = q.kind == OpenRequest::ASSOCIATORS || q.kind == OpenRequest::ASSOCIATOR_PATHS;
    std::string p;
    if (q.kind == OpenRequest::INSTANCES || q.kind == OpenRequest::INSTANCE_PATHS) {
        classNameParam(p, "ClassName", q.className);
        if (!paths)
            CIMXml::appendBooleanIParam(p, "DeepInheritance", q.deepInheritance);
    } else {
        instanceNameParam(p, "InstanceName", q.objectName);
        if (assoc)
            classNameParam(p, "AssocClass", q.assocClass);
        classNameParam(p, "ResultClass", q.resultClass);
        stringParam(p, "Role", q.role);
        if (assoc)
            stringParam(p, "ResultRole", q.resultRole);
    }
    if (!paths) {
        CIMXml::appendBooleanIParam(p, "IncludeClassOrigin", q.includeClassOrigin);
        propertyListParam(p, q.propertyList);
    }
    stringParam(p, "FilterQueryLanguage", q.filterQueryLanguage);
    stringParam(p, "FilterQuery", q.filterQuery);
    if (!q.operationTimeout.isNull())
        uint32Param(p, "OperationTimeout", q.operationTimeout.getValue());
    if (q.continueOnError)
        CIMXml::appendBooleanIParam(p, "ContinueOnError", true);
    uint32Param(p, "MaxObjectCount", q.maxObjectCount);
    return _pull(methods[q.kind], q.nameSpace, p);
}

CIMClientConnection::PullResult CIMXmlClient::pull(PullKind kind, const CIMNamespaceName& ns,
                                                   const String& context, Uint32 maxObjectCount)
{
    static const char* const methods[] = {"PullInstancesWithPath", "PullInstancePaths",
                                          "PullInstances"};
    std::string p;
    stringParam(p, "EnumerationContext", context);
    uint32Param(p, "MaxObjectCount", maxObjectCount);
    return _pull(methods[kind], ns, p);
}

void CIMXmlClient::closeEnumeration(const CIMNamespaceName& ns, const String& context)
{
    std::string p;
    stringParam(p, "EnumerationContext", context);
    const CIMXml::XmlElement* r;
    _call("CloseEnumeration", ns, p, r);
}

Uint64Arg CIMXmlClient::enumerationCount(const CIMNamespaceName& ns, const String& context)
{
    std::string p;
    stringParam(p, "EnumerationContext", context);
    const CIMXml::XmlElement* r;
    CIMXml::XmlElement doc = _call("EnumerationCount", ns, p, r);
    return decoding([&] {
        Uint64Arg count;
        const auto& v = returned(responseOf(doc));
        if (!v.empty() && v[0].name == "VALUE") {
            Uint64 n = 0;
            CIMXml::scalarFromText(v[0].text, CIMTYPE_UINT64).get(n);
            count.setValue(n);
        }
        return count;
    });
}

PEGASUS_NAMESPACE_END
