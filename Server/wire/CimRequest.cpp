#include "CimRequest.h"

#include <Pegasus/Common/Exception.h>

#include "CimProtocol.h"

PEGASUS_USING_PEGASUS;

namespace zarwire {

std::string u8(const String& s)
{
    CString c = s.getCString();
    return std::string((const char*)c);
}

String str(const std::string& s)
{
    return String(s.c_str(), Uint32(s.size()));
}

namespace {

// A CIM header, under the M-POST extension prefix when there is one.
const std::string* cimHeader(const HttpRequest& req, const std::string& mns, const char* name)
{
    if (!mns.empty())
        if (const std::string* v = req.header(mns + "-" + name))
            return v;
    return req.header(name);
}

void checkCimHeaders(const HttpRequest& req, const std::string& mns)
{
    const std::string* op = cimHeader(req, mns, "CIMOperation");
    if (!op)
        throw ProtocolError{400, "", "missing CIMOperation header"};
    if (!equalsNoCase(trim(*op), "MethodCall"))
        throw ProtocolError{400, "unsupported-operation",
                            "CIMOperation value \"" + *op + "\" is not supported"};
    if (cimHeader(req, mns, "CIMBatch"))
        throw ProtocolError{501, "multiple-requests-unsupported",
                            "batch requests are not supported"};
    if (const std::string* pv = cimHeader(req, mns, "CIMProtocolVersion")) {
        if (trim(*pv).compare(0, 2, "1.") != 0)
            throw ProtocolError{501, "unsupported-protocol-version",
                                "CIMProtocolVersion " + *pv + " is not supported"};
    }
}

void checkContentType(const HttpRequest& req)
{
    const std::string* ct = req.header("Content-Type");
    if (!ct)
        return;
    std::string media = *ct, params;
    size_t semi = media.find(';');
    if (semi != std::string::npos) {
        params = media.substr(semi + 1);
        media.erase(semi);
    }
    media = trim(media);
    bool ok = equalsNoCase(media, "application/xml") || equalsNoCase(media, "text/xml");
    size_t cs = params.find("charset=");
    if (cs == std::string::npos)
        cs = params.find("CHARSET=");
    if (ok && cs != std::string::npos) {
        std::string charset = trim(params.substr(cs + 8));
        size_t e = charset.find(';');
        if (e != std::string::npos)
            charset = trim(charset.substr(0, e));
        if (charset.size() >= 2 && charset.front() == '"' && charset.back() == '"')
            charset = charset.substr(1, charset.size() - 2);
        ok = equalsNoCase(charset, "utf-8");
    }
    if (!ok)
        throw ProtocolError{400, "request-not-valid", "HTTP Content-Type header error."};
}

// The MESSAGE envelope down to the method call.
const CIMXml::XmlElement& findCall(const CIMXml::XmlElement& doc, std::string& messageId)
{
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
        const CIMXml::XmlElement* call = nullptr;
        for (const auto& c : simple.children)
            if (c.name == "IMETHODCALL" || c.name == "METHODCALL")
                call = &c;
        if (!call)
            throw ProtocolError{400, "request-not-valid", "SIMPLEREQ holds no method call"};
        call->requiredAttribute("NAME");
        return *call;
    } catch (CIMXmlFormatException& e) {
        throw ProtocolError{400, "request-not-valid", u8(e.getMessage())};
    }
}

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

// The class an intrinsic call is about, best effort, for the access log.
std::string intrinsicClassForLog(const CIMXml::XmlElement& call)
{
    for (const char* n :
         {"ClassName", "InstanceName", "ObjectName", "NewInstance", "ModifiedInstance"}) {
        for (const auto& p : call.children) {
            const std::string* name = p.attribute("NAME");
            if (p.name != "IPARAMVALUE" || !name || !equalsNoCase(*name, n) || p.children.empty())
                continue;
            const CIMXml::XmlElement* e = &p.children[0];
            if (e->name == "VALUE.NAMEDINSTANCE" && !e->children.empty())
                e = &e->children[0];
            for (const char* a : {"NAME", "CLASSNAME"})
                if (const std::string* v = e->attribute(a))
                    return *v;
        }
    }
    return "-";
}

void decodeTarget(const std::string& hobject, CimCall& call)
{
    const CIMXml::XmlElement& e = *call.element;
    if (call.intrinsic) {
        const CIMXml::XmlElement& nsPath = e.requiredChild("LOCALNAMESPACEPATH");
        for (const auto& n : nsPath.children)
            if (n.name == "NAMESPACE" && n.attribute("NAME") && n.attribute("NAME")->empty())
                throw CIMXmlFormatException(CIMXmlFormatException::BAD_VALUE,
                                            "invalid namespace: empty namespace name");
        call.nameSpace = CIMXml::decodeLocalNamespacePath(nsPath);
        std::string ns = u8(call.nameSpace.getString());
        if (!equalsNoCase(hobject, ns) && !equalsNoCase(hobject, "/" + ns))
            throw ProtocolError{400, "header-mismatch",
                                "CIMObject value \"" + hobject +
                                    "\" does not match CIM request object \"" + ns + "\"."};
        call.classForLog = intrinsicClassForLog(e);
        return;
    }
    const CIMXml::XmlElement* target = e.child("LOCALINSTANCEPATH");
    if (!target)
        target = e.child("LOCALCLASSPATH");
    if (!target)
        throw ProtocolError{400, "request-not-valid",
                            "METHODCALL needs LOCALINSTANCEPATH or LOCALCLASSPATH"};
    call.target = CIMXml::decodeObjectPath(*target);
    call.nameSpace = call.target.getNameSpace();
    call.classForLog = u8(call.target.getClassName().getString());
    bool match = false;
    try {
        match = pathsMatch(CIMObjectPath(str(hobject)), call.target);
    } catch (Exception&) {
        match = false;
    }
    if (!match)
        throw ProtocolError{400, "header-mismatch",
                            "CIMObject value \"" + hobject +
                                "\" does not match CIM request object \"" +
                                u8(call.target.toString()) + "\"."};
}

}  // namespace

void throwDecodeFailure(const CIMXmlFormatException& e)
{
    if (e.getKind() != CIMXmlFormatException::BAD_VALUE)
        throw ProtocolError{400, "request-not-valid", u8(e.getMessage())};
    std::string text = u8(e.getMessage());
    throw CallError{text.find("invalid namespace") != std::string::npos
                        ? Uint32(CIM_ERR_INVALID_NAMESPACE)
                        : Uint32(CIM_ERR_INVALID_PARAMETER),
                    e.getMessage()};
}

void decodeCimRequest(const HttpRequest& req, const CIMXml::XmlLimits& limits, CimCall& call)
{
    call.mpostNs = checkMethod(req);
    const std::string& mns = call.mpostNs;
    checkCimHeaders(req, mns);
    checkContentType(req);

    if (!CIMXml::isValidUtf8(req.body.data(), req.body.size()))
        throw ProtocolError{400, "request-not-valid", "request body is not valid UTF-8"};
    auto doc = std::make_shared<CIMXml::XmlElement>();
    try {
        *doc = CIMXml::parseDocument(req.body.data(), req.body.size(), limits);
    } catch (CIMXmlFormatException& e) {
        if (e.getKind() == CIMXmlFormatException::NOT_WELL_FORMED)
            throw ProtocolError{400, "request-not-well-formed", u8(e.getMessage())};
        throw ProtocolError{400, "request-not-valid", u8(e.getMessage())};
    }
    call.document = doc;
    call.element = &findCall(*doc, call.messageId);
    call.method = call.element->requiredAttribute("NAME");
    call.intrinsic = call.element->name == "IMETHODCALL";

    // CIMMethod must name the same method, CIMObject the same target.
    const std::string* hm = cimHeader(req, mns, "CIMMethod");
    if (!hm)
        throw ProtocolError{400, "header-mismatch", "Missing CIMMethod HTTP header."};
    std::string hmethod;
    if (!uriDecode(trim(*hm), hmethod) || !equalsNoCase(hmethod, call.method))
        throw ProtocolError{400, "header-mismatch",
                            "CIMMethod value \"" + hmethod +
                                "\" does not match CIM request method \"" + call.method + "\"."};
    const std::string* ho = cimHeader(req, mns, "CIMObject");
    if (!ho)
        throw ProtocolError{400, "header-mismatch", "Missing CIMObject HTTP header."};
    std::string hobject;
    if (!uriDecode(trim(*ho), hobject))
        throw ProtocolError{400, "header-mismatch",
                            "CIMObject header is not URI-encoded properly."};

    const std::string* te = req.header("TE");
    if (req.versionMinor < 1)
        call.framing = Framing::Close;
    else if (te && te->find("trailers") != std::string::npos)
        call.framing = Framing::Trailers;
    else
        call.framing = Framing::Chunked;

    try {
        decodeTarget(hobject, call);
    } catch (CIMXmlFormatException& e) {
        throwDecodeFailure(e);
    } catch (Exception& e) {
        // Names and paths of the envelope that the object model refuses.
        throw ProtocolError{400, "request-not-valid", u8(e.getMessage())};
    }
}

}  // namespace zarwire
