#include "CimOperationHandler.h"

#include <chrono>
#include <cstring>
#include <map>
#include <mutex>

#include <Pegasus/Common/ClientAddressContainer.h>
#include <Pegasus/Common/OperationContext.h>

#include "CimProtocol.h"
#include "CimResponse.h"
#include "LogText.h"

PEGASUS_USING_PEGASUS;

namespace zarwire {

namespace {

using Clock = std::chrono::steady_clock;
using Headers = std::vector<std::pair<std::string, std::string> >;

std::string u8(const String& s)
{
    CString c = s.getCString();
    return std::string((const char*)c);
}

String str(const std::string& s)
{
    return String(s.c_str(), Uint32(s.size()));
}

// An error to answer with ERROR CODE/DESCRIPTION.
struct CimError {
    Uint32 code;
    String message;
};

// Every failure of an operation, mapped the way providers' exceptions map.
CimError currentError()
{
    try {
        throw;
    } catch (CIMException& e) {
        return CimError{Uint32(e.getCode()), e.getMessage()};
    } catch (CIMXmlFormatException& e) {
        return CimError{CIM_ERR_INVALID_PARAMETER, e.getMessage()};
    } catch (Exception& e) {
        return CimError{CIM_ERR_FAILED, e.getMessage()};
    } catch (std::exception& e) {
        return CimError{CIM_ERR_FAILED, String(e.what())};
    } catch (...) {
        return CimError{CIM_ERR_FAILED, String("Unknown error.")};
    }
}

const char* const kIntrinsic[] = {
    "GetClass", "EnumerateClasses", "EnumerateClassNames", "GetInstance",
    "EnumerateInstances", "EnumerateInstanceNames", "CreateInstance", "ModifyInstance",
    "DeleteInstance", "Associators", "AssociatorNames", "References", "ReferenceNames",
    "GetProperty", "SetProperty"};

// The IPARAMVALUEs of an intrinsic call, looked up by name ignoring case.
class Params {
public:
    explicit Params(const CIMXml::XmlElement& call)
    {
        for (const auto& c : call.children) {
            if (c.name != "IPARAMVALUE")
                continue;
            std::string n = c.requiredAttribute("NAME");
            for (auto& ch : n) ch = static_cast<char>(tolower(static_cast<unsigned char>(ch)));
            if (_byName.count(n))
                throw ProtocolError{400, "request-not-valid", "duplicate parameter " + n};
            _byName[n] = &c;
        }
    }

    // Rejects parameters the operation does not know.
    void allowOnly(std::initializer_list<const char*> names) const
    {
        for (const auto& kv : _byName) {
            bool ok = false;
            for (const char* n : names)
                if (strcasecmp(n, kv.first.c_str()) == 0) ok = true;
            if (!ok)
                throw CIMException(CIM_ERR_INVALID_PARAMETER,
                                   String("unknown parameter ") + kv.first.c_str());
        }
    }

    const CIMXml::XmlElement* get(const char* name) const
    {
        std::string n = name;
        for (auto& ch : n) ch = static_cast<char>(tolower(static_cast<unsigned char>(ch)));
        auto it = _byName.find(n);
        return it == _byName.end() ? nullptr : it->second;
    }

    // The single element inside a parameter, or null for an absent or empty
    // one (or one holding VALUE.NULL).
    const CIMXml::XmlElement* content(const char* name) const
    {
        const CIMXml::XmlElement* p = get(name);
        if (!p || p->children.empty())
            return nullptr;
        if (p->children.size() > 1)
            throw ProtocolError{400, "request-not-valid",
                                std::string("parameter ") + name + " holds more than one element"};
        if (p->children[0].name == "VALUE.NULL")
            return nullptr;
        return &p->children[0];
    }

    bool boolean(const char* name, bool dflt) const
    {
        const CIMXml::XmlElement* v = content(name);
        if (!v)
            return dflt;
        if (v->name != "VALUE")
            throw ProtocolError{400, "request-not-valid",
                                std::string("parameter ") + name + " must be a VALUE"};
        Boolean b = false;
        CIMXml::scalarFromText(v->text, CIMTYPE_BOOLEAN).get(b);
        return b;
    }

    CIMName className(const char* name, bool required) const
    {
        const CIMXml::XmlElement* v = content(name);
        if (!v) {
            if (required)
                throw CIMException(CIM_ERR_INVALID_PARAMETER,
                                   String("missing parameter ") + name);
            return CIMName();
        }
        if (v->name != "CLASSNAME")
            throw ProtocolError{400, "request-not-valid",
                                std::string("parameter ") + name + " must be a CLASSNAME"};
        return CIMXml::decodeClassName(*v);
    }

    CIMObjectPath path(const char* name, bool instanceOnly) const
    {
        const CIMXml::XmlElement* v = content(name);
        if (!v)
            throw CIMException(CIM_ERR_INVALID_PARAMETER, String("missing parameter ") + name);
        if (v->name != "INSTANCENAME" && (instanceOnly || v->name != "CLASSNAME"))
            throw ProtocolError{400, "request-not-valid",
                                std::string("parameter ") + name + " must be an " +
                                    (instanceOnly ? "INSTANCENAME" : "INSTANCENAME or CLASSNAME")};
        return CIMXml::decodeObjectPath(*v);
    }

    String string(const char* name) const
    {
        const CIMXml::XmlElement* v = content(name);
        if (!v)
            return String();
        if (v->name != "VALUE")
            throw ProtocolError{400, "request-not-valid",
                                std::string("parameter ") + name + " must be a VALUE"};
        return str(v->text);
    }

    CIMPropertyList propertyList() const
    {
        const CIMXml::XmlElement* p = get("PropertyList");
        return p ? CIMXml::decodePropertyList(*p) : CIMPropertyList();
    }

    // Best effort, for the access log.
    std::string classForLog() const
    {
        for (const char* n : {"ClassName", "InstanceName", "ObjectName", "NewInstance",
                              "ModifiedInstance"}) {
            const CIMXml::XmlElement* p = get(n);
            if (!p || p->children.empty())
                continue;
            const CIMXml::XmlElement* e = &p->children[0];
            if (e->name == "VALUE.NAMEDINSTANCE" && !e->children.empty())
                e = &e->children[0];
            for (const char* a : {"NAME", "CLASSNAME"})
                if (const std::string* v = e->attribute(a))
                    return *v;
        }
        return "-";
    }

private:
    std::map<std::string, const CIMXml::XmlElement*> _byName;
};

// Writes delivered objects into the response as they arrive.
class Sink {
public:
    explicit Sink(CimResponse& r) : _r(r) {}
    template <class F>
    void write(F f)
    {
        std::lock_guard<std::mutex> lock(_mu);
        f(_r.buffer());
        if (!_r.flushIfFull())
            throw CIMException(CIM_ERR_FAILED, "client connection lost");
    }

private:
    CimResponse& _r;
    std::mutex _mu;
};

void notInitialized()
{
    throw CIMException(CIM_ERR_FAILED, "The object is not initialized.");
}

class NamedInstanceWriter : public InstanceResponseHandler {
public:
    explicit NamedInstanceWriter(Sink& s) : _s(s) {}
    void processing() override {}
    void complete() override {}
    void deliver(const CIMInstance& i) override
    {
        if (i.isUninitialized()) notInitialized();
        _s.write([&](std::string& b) { CIMXml::appendValueNamedInstance(b, i); });
    }
    void deliver(const Array<CIMInstance>& a) override
    {
        for (Uint32 k = 0; k < a.size(); k++) deliver(a[k]);
    }

private:
    Sink& _s;
};

// Instance names (enumerateInstanceNames) or full object paths
// (associatorNames, referenceNames).
class PathWriter : public ObjectPathResponseHandler {
public:
    PathWriter(Sink& s, bool objectPaths, const String& host, const CIMNamespaceName& ns)
        : _s(s), _objectPaths(objectPaths), _host(host), _ns(ns) {}
    void processing() override {}
    void complete() override {}
    void deliver(const CIMObjectPath& p) override
    {
        if (p.getClassName().isNull()) notInitialized();
        _s.write([&](std::string& b) {
            if (_objectPaths)
                CIMXml::appendObjectPath(b, p, _host, _ns);
            else
                CIMXml::appendInstanceName(b, p);
        });
    }
    void deliver(const Array<CIMObjectPath>& a) override
    {
        for (Uint32 k = 0; k < a.size(); k++) deliver(a[k]);
    }

private:
    Sink& _s;
    bool _objectPaths;
    String _host;
    CIMNamespaceName _ns;
};

class ObjectWriter : public ObjectResponseHandler {
public:
    ObjectWriter(Sink& s, const String& host, const CIMNamespaceName& ns)
        : _s(s), _host(host), _ns(ns) {}
    void processing() override {}
    void complete() override {}
    void deliver(const CIMObject& o) override
    {
        if (o.isUninitialized()) notInitialized();
        _s.write([&](std::string& b) { CIMXml::appendValueObjectWithPath(b, o, _host, _ns); });
    }
    void deliver(const Array<CIMObject>& a) override
    {
        for (Uint32 k = 0; k < a.size(); k++) deliver(a[k]);
    }

private:
    Sink& _s;
    String _host;
    CIMNamespaceName _ns;
};

bool pathsMatch(const CIMObjectPath& header, const CIMObjectPath& request)
{
    if (header.identical(request))
        return true;
    // Clients differ in how they type key values in the header; compare
    // namespace, class, and keys by name and text.
    if (!header.getNameSpace().equal(request.getNameSpace()) ||
        !header.getClassName().equal(request.getClassName()))
        return false;
    const Array<CIMKeyBinding>& a = header.getKeyBindings();
    const Array<CIMKeyBinding>& b = request.getKeyBindings();
    if (a.size() != b.size())
        return false;
    for (Uint32 i = 0; i < a.size(); i++)
        if (!a[i].getName().equal(b[i].getName()) || a[i].getValue() != b[i].getValue())
            return false;
    return true;
}

}  // namespace

struct CimOperationHandler::Outcome {
    std::string user = "-";
    std::string operation = "-";
    std::string className = "-";
    std::string status = "-";
    std::string reason;
};

CimOperationHandler::CimOperationHandler(CIMOperationHost& host, const CimHandlerConfig& config)
    : _host(host), _config(config)
{
}

void CimOperationHandler::log(int level, const std::string& line)
{
    if (_config.log)
        _config.log(level, line);
}

void CimOperationHandler::logAccess(const std::string& user, const std::string& address,
                                    const std::string& operation, const std::string& className,
                                    const std::string& status, const std::string& reason, double ms)
{
    char dur[32];
    snprintf(dur, sizeof dur, "%.1f", ms);
    std::string line = "access: user=" + logSafe(user) + " address=" + logSafe(address) +
                       " operation=" + logSafe(operation) + " class=" + logSafe(className) +
                       " status=" + logSafe(status) + " duration_ms=" + dur;
    if (!reason.empty())
        line += " reason=\"" + logSafe(reason) + "\"";
    log(3, line);
}

void CimOperationHandler::rejected(const PeerInfo& peer, int status, const std::string& reason)
{
    logAccess("-", peer.address, "-", "-", "HTTP_" + std::to_string(status), reason, 0);
}

void CimOperationHandler::handle(HttpExchange& ex)
{
    auto start = Clock::now();
    Outcome out;
    if (!ex.user().empty())
        out.user = ex.user();
    try {
        process(ex, out);
    } catch (ProtocolError& e) {
        if (e.status != 401)
            ex.setKeepAlive(ex.keepAlive() && e.status < 500);
        if (!ex.responded())
            ex.send(e.status, "", protocolErrorHeaders(e, _config.realm), std::string());
        out.status = "HTTP_" + std::to_string(e.status);
        out.reason = e.detail;
    } catch (...) {
        if (!ex.responded())
            ex.send(500, "", {}, std::string());
        out.status = "HTTP_500";
    }
    double ms = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    logAccess(out.user, ex.peer().address, out.operation, out.className, out.status, out.reason, ms);
}

void CimOperationHandler::process(HttpExchange& ex, Outcome& out)
{
    const HttpRequest& req = ex.request();

    // Method and the extension-header prefix of M-POST.
    std::string mns = checkMethod(req);

    auto cimHeader = [&](const char* name) -> const std::string* {
        if (!mns.empty())
            if (const std::string* v = req.header(mns + "-" + name))
                return v;
        return req.header(name);
    };

    // CIM headers.
    const std::string* op = cimHeader("CIMOperation");
    if (!op)
        throw ProtocolError{400, "", "missing CIMOperation header"};
    if (!equalsNoCase(trim(*op), "MethodCall"))
        throw ProtocolError{400, "unsupported-operation",
                            "CIMOperation value \"" + *op + "\" is not supported"};
    if (cimHeader("CIMBatch"))
        throw ProtocolError{501, "multiple-requests-unsupported", "batch requests are not supported"};
    if (const std::string* pv = cimHeader("CIMProtocolVersion")) {
        if (trim(*pv).compare(0, 2, "1.") != 0)
            throw ProtocolError{501, "unsupported-protocol-version",
                                "CIMProtocolVersion " + *pv + " is not supported"};
    }
    if (const std::string* ct = req.header("Content-Type")) {
        std::string media = *ct, params;
        size_t semi = media.find(';');
        if (semi != std::string::npos) {
            params = media.substr(semi + 1);
            media.erase(semi);
        }
        media = trim(media);
        bool ok = equalsNoCase(media, "application/xml") || equalsNoCase(media, "text/xml");
        size_t cs = params.find("charset=");
        if (cs == std::string::npos) cs = params.find("CHARSET=");
        if (ok && cs != std::string::npos) {
            std::string charset = trim(params.substr(cs + 8));
            size_t e = charset.find(';');
            if (e != std::string::npos) charset = trim(charset.substr(0, e));
            if (charset.size() >= 2 && charset.front() == '"' && charset.back() == '"')
                charset = charset.substr(1, charset.size() - 2);
            ok = equalsNoCase(charset, "utf-8");
        }
        if (!ok)
            throw ProtocolError{400, "request-not-valid", "HTTP Content-Type header error."};
    }

    // Body.
    if (!CIMXml::isValidUtf8(req.body.data(), req.body.size()))
        throw ProtocolError{400, "request-not-valid", "request body is not valid UTF-8"};
    CIMXml::XmlElement doc;
    try {
        doc = CIMXml::parseDocument(req.body.data(), req.body.size(), _config.xmlLimits);
    } catch (CIMXmlFormatException& e) {
        if (e.getKind() == CIMXmlFormatException::NOT_WELL_FORMED)
            throw ProtocolError{400, "request-not-well-formed", u8(e.getMessage())};
        throw ProtocolError{400, "request-not-valid", u8(e.getMessage())};
    }

    const CIMXml::XmlElement* call = nullptr;
    std::string messageId;
    try {
        if (doc.name != "CIM")
            throw ProtocolError{400, "request-not-valid", "root element is not CIM"};
        const std::string* cv = doc.attribute("CIMVERSION");
        if (cv && cv->compare(0, 2, "2.") != 0)
            throw ProtocolError{501, "unsupported-cim-version", "CIMVERSION " + *cv};
        const std::string* dv = doc.attribute("DTDVERSION");
        if (dv && dv->compare(0, 2, "2.") != 0)
            throw ProtocolError{501, "unsupported-dtd-version", "DTDVERSION " + *dv};
        const CIMXml::XmlElement& msg = doc.requiredChild("MESSAGE");
        messageId = msg.requiredAttribute("ID");
        if (msg.child("MULTIREQ"))
            throw ProtocolError{501, "multiple-requests-unsupported",
                                "multiple requests are not supported"};
        const CIMXml::XmlElement& simple = msg.requiredChild("SIMPLEREQ");
        for (const auto& c : simple.children)
            if (c.name == "IMETHODCALL" || c.name == "METHODCALL")
                call = &c;
        if (!call)
            throw ProtocolError{400, "request-not-valid", "SIMPLEREQ holds no method call"};
        call->requiredAttribute("NAME");
    } catch (CIMXmlFormatException& e) {
        throw ProtocolError{400, "request-not-valid", u8(e.getMessage())};
    }
    const std::string& name = call->requiredAttribute("NAME");
    out.operation = name;

    // CIMMethod must name the same method.
    const std::string* hm = cimHeader("CIMMethod");
    if (!hm)
        throw ProtocolError{400, "header-mismatch", "Missing CIMMethod HTTP header."};
    std::string hmethod;
    if (!uriDecode(trim(*hm), hmethod) || !equalsNoCase(hmethod, name))
        throw ProtocolError{400, "header-mismatch", "CIMMethod value \"" + hmethod +
                                                        "\" does not match CIM request method \"" +
                                                        name + "\"."};
    const std::string* ho = cimHeader("CIMObject");
    if (!ho)
        throw ProtocolError{400, "header-mismatch", "Missing CIMObject HTTP header."};
    std::string hobject;
    if (!uriDecode(trim(*ho), hobject))
        throw ProtocolError{400, "header-mismatch", "CIMObject header is not URI-encoded properly."};

    const std::string* te = req.header("TE");
    bool chunked = te && te->find("trailers") != std::string::npos && req.versionMinor >= 1;

    try {
        if (call->name == "IMETHODCALL") {
            for (const auto& n : call->requiredChild("LOCALNAMESPACEPATH").children)
                if (n.name == "NAMESPACE" && n.attribute("NAME") && n.attribute("NAME")->empty())
                    throw CIMXmlFormatException(CIMXmlFormatException::BAD_VALUE,
                                                "invalid namespace: empty namespace name");
            std::string ns = u8(CIMXml::decodeLocalNamespacePath(
                                    call->requiredChild("LOCALNAMESPACEPATH")).getString());
            if (!equalsNoCase(hobject, ns) && !equalsNoCase(hobject, "/" + ns))
                throw ProtocolError{400, "header-mismatch", "CIMObject value \"" + hobject +
                                                                "\" does not match CIM request object \"" +
                                                                ns + "\"."};
            Params params(*call);
            out.className = params.classForLog();
            runIntrinsic(ex, out, *call, messageId, chunked, mns);
        } else {
            const CIMXml::XmlElement* target = call->child("LOCALINSTANCEPATH");
            if (!target)
                target = call->child("LOCALCLASSPATH");
            if (!target)
                throw ProtocolError{400, "request-not-valid",
                                    "METHODCALL needs LOCALINSTANCEPATH or LOCALCLASSPATH"};
            CIMObjectPath path = CIMXml::decodeObjectPath(*target);
            out.className = u8(path.getClassName().getString());
            bool match = false;
            try {
                match = pathsMatch(CIMObjectPath(str(hobject)), path);
            } catch (Exception&) {
                match = false;
            }
            if (!match)
                throw ProtocolError{400, "header-mismatch", "CIMObject value \"" + hobject +
                                                                "\" does not match CIM request object \"" +
                                                                u8(path.toString()) + "\"."};
            runExtrinsic(ex, out, *call, messageId, chunked, mns);
        }
    } catch (CIMXmlFormatException& e) {
        if (e.getKind() != CIMXmlFormatException::BAD_VALUE)
            throw ProtocolError{400, "request-not-valid", u8(e.getMessage())};
        // Well-formed XML naming what cannot exist (a namespace "..", a key
        // name with a space): a CIM error, not a broken request.
        std::string text = u8(e.getMessage());
        Uint32 code = text.find("invalid namespace") != std::string::npos ? CIM_ERR_INVALID_NAMESPACE
                                                                           : CIM_ERR_INVALID_PARAMETER;
        out.status = u8(CIMXml::errorDescription(code, String()));
        CimResponse(ex, chunked, mns).sendError(messageId, name, call->name == "IMETHODCALL", code,
                                                e.getMessage());
    } catch (Exception& e) {
        // Names and paths of the envelope that the object model refuses.
        throw ProtocolError{400, "request-not-valid", u8(e.getMessage())};
    }
}

void CimOperationHandler::runIntrinsic(HttpExchange& ex, Outcome& out,
                                       const CIMXml::XmlElement& call,
                                       const std::string& messageId, bool chunked,
                                       const std::string& mns)
{
    std::string requested = call.requiredAttribute("NAME");
    const char* opName = nullptr;
    for (const char* n : kIntrinsic)
        if (strcasecmp(n, requested.c_str()) == 0) opName = n;

    CIMNamespaceName ns = CIMXml::decodeLocalNamespacePath(call.requiredChild("LOCALNAMESPACEPATH"));
    Params p(call);
    OperationContext ctx;
    ctx.insert(IdentityContainer(str(out.user == "-" ? std::string() : out.user)));
    ctx.insert(ClientAddressContainer(str(ex.peer().address)));
    String host = str(_config.hostName);

    CimResponse resp(ex, chunked, mns);
    std::string& b = resp.buffer();
    std::string respName = opName ? opName : requested;
    auto begin = [&] {
        CIMXml::appendMessageStart(b, messageId, false);
        b += "<IMETHODRESPONSE NAME=\"";
        CIMXml::appendAttribute(b, respName);
        b += "\">";
    };
    begin();
    Sink sink(resp);
    try {
        if (!opName)
            throw CIMException(CIM_ERR_NOT_SUPPORTED, str(requested));
        std::string op = opName;
        if (op == "GetClass") {
            p.allowOnly({"ClassName", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin",
                         "PropertyList"});
            CIMClass c = _host.getClass(ctx, ns, p.className("ClassName", true),
                                        p.boolean("LocalOnly", true),
                                        p.boolean("IncludeQualifiers", true),
                                        p.boolean("IncludeClassOrigin", false), p.propertyList());
            b += "<IRETURNVALUE>";
            CIMXml::appendClass(b, c);
            b += "</IRETURNVALUE>";
        } else if (op == "EnumerateClasses") {
            p.allowOnly({"ClassName", "DeepInheritance", "LocalOnly", "IncludeQualifiers",
                         "IncludeClassOrigin"});
            Array<CIMClass> cs = _host.enumerateClasses(
                ctx, ns, p.className("ClassName", false), p.boolean("DeepInheritance", false),
                p.boolean("LocalOnly", true), p.boolean("IncludeQualifiers", true),
                p.boolean("IncludeClassOrigin", false));
            b += "<IRETURNVALUE>";
            for (Uint32 i = 0; i < cs.size(); i++)
                sink.write([&](std::string& o) { CIMXml::appendClass(o, cs[i]); });
            b += "</IRETURNVALUE>";
        } else if (op == "EnumerateClassNames") {
            p.allowOnly({"ClassName", "DeepInheritance"});
            Array<CIMName> names = _host.enumerateClassNames(
                ctx, ns, p.className("ClassName", false), p.boolean("DeepInheritance", false));
            b += "<IRETURNVALUE>";
            for (Uint32 i = 0; i < names.size(); i++)
                CIMXml::appendClassName(b, names[i]);
            b += "</IRETURNVALUE>";
        } else if (op == "GetInstance") {
            p.allowOnly({"InstanceName", "LocalOnly", "IncludeQualifiers", "IncludeClassOrigin",
                         "PropertyList"});
            CIMInstance i = _host.getInstance(ctx, ns, p.path("InstanceName", true),
                                              p.boolean("LocalOnly", true),
                                              p.boolean("IncludeQualifiers", false),
                                              p.boolean("IncludeClassOrigin", false),
                                              p.propertyList());
            b += "<IRETURNVALUE>";
            CIMXml::appendInstance(b, i);
            b += "</IRETURNVALUE>";
        } else if (op == "EnumerateInstances") {
            p.allowOnly({"ClassName", "LocalOnly", "DeepInheritance", "IncludeQualifiers",
                         "IncludeClassOrigin", "PropertyList"});
            CIMName cls = p.className("ClassName", true);
            bool lo = p.boolean("LocalOnly", true), di = p.boolean("DeepInheritance", true);
            bool iq = p.boolean("IncludeQualifiers", false);
            bool ico = p.boolean("IncludeClassOrigin", false);
            CIMPropertyList pl = p.propertyList();
            b += "<IRETURNVALUE>";
            NamedInstanceWriter w(sink);
            _host.enumerateInstances(ctx, ns, cls, di, lo, iq, ico, pl, w);
            b += "</IRETURNVALUE>";
        } else if (op == "EnumerateInstanceNames") {
            p.allowOnly({"ClassName"});
            CIMName cls = p.className("ClassName", true);
            b += "<IRETURNVALUE>";
            PathWriter w(sink, false, host, ns);
            _host.enumerateInstanceNames(ctx, ns, cls, w);
            b += "</IRETURNVALUE>";
        } else if (op == "CreateInstance") {
            p.allowOnly({"NewInstance"});
            const CIMXml::XmlElement* e = p.content("NewInstance");
            if (!e)
                throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter NewInstance");
            CIMInstance inst = CIMXml::decodeInstance(*e, _config.xmlLimits);
            CIMObjectPath created = _host.createInstance(ctx, ns, inst);
            b += "<IRETURNVALUE>";
            CIMXml::appendInstanceName(b, created);
            b += "</IRETURNVALUE>";
        } else if (op == "ModifyInstance") {
            p.allowOnly({"ModifiedInstance", "IncludeQualifiers", "PropertyList"});
            const CIMXml::XmlElement* e = p.content("ModifiedInstance");
            if (!e)
                throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter ModifiedInstance");
            if (e->name != "VALUE.NAMEDINSTANCE")
                throw ProtocolError{400, "request-not-valid",
                                    "ModifiedInstance must be a VALUE.NAMEDINSTANCE"};
            CIMInstance inst(CIMXml::decodeObjectWithPath(*e, _config.xmlLimits));
            _host.modifyInstance(ctx, ns, inst, p.boolean("IncludeQualifiers", true),
                                 p.propertyList());
        } else if (op == "DeleteInstance") {
            p.allowOnly({"InstanceName"});
            _host.deleteInstance(ctx, ns, p.path("InstanceName", true));
        } else if (op == "Associators" || op == "References") {
            bool assoc = op == "Associators";
            if (assoc)
                p.allowOnly({"ObjectName", "AssocClass", "ResultClass", "Role", "ResultRole",
                             "IncludeQualifiers", "IncludeClassOrigin", "PropertyList"});
            else
                p.allowOnly({"ObjectName", "ResultClass", "Role", "IncludeQualifiers",
                             "IncludeClassOrigin", "PropertyList"});
            CIMObjectPath obj = p.path("ObjectName", false);
            CIMName assocClass = assoc ? p.className("AssocClass", false) : CIMName();
            CIMName resultClass = p.className("ResultClass", false);
            String role = p.string("Role");
            String resultRole = assoc ? p.string("ResultRole") : String();
            bool iq = p.boolean("IncludeQualifiers", false);
            bool ico = p.boolean("IncludeClassOrigin", false);
            CIMPropertyList pl = p.propertyList();
            b += "<IRETURNVALUE>";
            ObjectWriter w(sink, host, ns);
            if (assoc)
                _host.associators(ctx, ns, obj, assocClass, resultClass, role, resultRole, iq,
                                  ico, pl, w);
            else
                _host.references(ctx, ns, obj, resultClass, role, iq, ico, pl, w);
            b += "</IRETURNVALUE>";
        } else if (op == "AssociatorNames" || op == "ReferenceNames") {
            bool assoc = op == "AssociatorNames";
            if (assoc)
                p.allowOnly({"ObjectName", "AssocClass", "ResultClass", "Role", "ResultRole"});
            else
                p.allowOnly({"ObjectName", "ResultClass", "Role"});
            CIMObjectPath obj = p.path("ObjectName", false);
            CIMName assocClass = assoc ? p.className("AssocClass", false) : CIMName();
            CIMName resultClass = p.className("ResultClass", false);
            String role = p.string("Role");
            String resultRole = assoc ? p.string("ResultRole") : String();
            b += "<IRETURNVALUE>";
            PathWriter w(sink, true, host, ns);
            if (assoc)
                _host.associatorNames(ctx, ns, obj, assocClass, resultClass, role, resultRole, w);
            else
                _host.referenceNames(ctx, ns, obj, resultClass, role, w);
            b += "</IRETURNVALUE>";
        } else if (op == "GetProperty") {
            p.allowOnly({"InstanceName", "PropertyName"});
            String prop = p.string("PropertyName");
            if (prop.size() == 0)
                throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter PropertyName");
            CIMValue v = _host.getProperty(ctx, ns, p.path("InstanceName", true), CIMName(prop));
            if (!v.isNull()) {
                b += "<IRETURNVALUE>";
                CIMXml::appendValue(b, v);
                b += "</IRETURNVALUE>";
            }
        } else if (op == "SetProperty") {
            p.allowOnly({"InstanceName", "PropertyName", "NewValue"});
            CIMObjectPath path = p.path("InstanceName", true);
            String prop = p.string("PropertyName");
            if (prop.size() == 0)
                throw CIMException(CIM_ERR_INVALID_PARAMETER, "missing parameter PropertyName");
            // Values travel untyped; the class declares the property's type.
            CIMClass cls = _host.getClass(ctx, ns, path.getClassName(), false, false, false,
                                          CIMPropertyList());
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
            _host.setProperty(ctx, ns, path, CIMName(prop), v);
        }
        b += "</IMETHODRESPONSE>\n";
        CIMXml::appendMessageEnd(b, false);
        resp.finish();
        out.status = "OK";
    } catch (ProtocolError&) {
        if (resp.started()) {
            resp.abort(CIM_ERR_FAILED, "request-not-valid");
            return;
        }
        throw;
    } catch (...) {
        CimError err = currentError();
        out.status = u8(CIMXml::errorDescription(err.code, String()));
        if (resp.started()) {
            resp.abort(err.code, u8(CIMXml::errorDescription(err.code, err.message)));
            return;
        }
        resp.discard();
        begin();
        CIMXml::appendError(b, err.code, err.message);
        b += "</IMETHODRESPONSE>\n";
        CIMXml::appendMessageEnd(b, false);
        resp.finish();
    }
}

void CimOperationHandler::runExtrinsic(HttpExchange& ex, Outcome& out,
                                       const CIMXml::XmlElement& call,
                                       const std::string& messageId, bool chunked,
                                       const std::string& mns)
{
    std::string method = call.requiredAttribute("NAME");
    const CIMXml::XmlElement* target = call.child("LOCALINSTANCEPATH");
    if (!target)
        target = call.child("LOCALCLASSPATH");
    CIMObjectPath full = CIMXml::decodeObjectPath(*target);
    CIMNamespaceName ns = full.getNameSpace();
    CIMObjectPath path(String(), CIMNamespaceName(), full.getClassName(), full.getKeyBindings());

    Array<CIMParamValue> in;
    for (const auto& c : call.children) {
        if (c.name == "PARAMVALUE")
            in.append(CIMXml::decodeParamValue(c, _config.xmlLimits));
        else if (c.name != "LOCALINSTANCEPATH" && c.name != "LOCALCLASSPATH")
            throw ProtocolError{400, "request-not-valid", "unexpected " + c.name + " in METHODCALL"};
    }

    OperationContext ctx;
    ctx.insert(IdentityContainer(str(out.user == "-" ? std::string() : out.user)));
    ctx.insert(ClientAddressContainer(str(ex.peer().address)));

    CimResponse resp(ex, chunked, mns);
    std::string& b = resp.buffer();
    auto begin = [&] {
        CIMXml::appendMessageStart(b, messageId, false);
        b += "<METHODRESPONSE NAME=\"";
        CIMXml::appendAttribute(b, method);
        b += "\">";
    };
    begin();
    try {
        CIMName methodName = CIMName(str(method));
        Array<CIMParamValue> outParams;
        CIMValue rv = _host.invokeMethod(ctx, ns, path, methodName, in, outParams);
        CIMXml::appendReturnValue(b, rv);
        for (Uint32 i = 0; i < outParams.size(); i++) {
            if (outParams[i].isUninitialized())
                notInitialized();
            CIMXml::appendParamValue(b, outParams[i]);
        }
        b += "</METHODRESPONSE>\n";
        CIMXml::appendMessageEnd(b, false);
        resp.finish();
        out.status = "OK";
    } catch (...) {
        CimError err = currentError();
        out.status = u8(CIMXml::errorDescription(err.code, String()));
        resp.discard();
        begin();
        CIMXml::appendError(b, err.code, err.message);
        b += "</METHODRESPONSE>\n";
        CIMXml::appendMessageEnd(b, false);
        resp.finish();
    }
}

}  // namespace zarwire
