// The element-tree parser of the CIM-XML codec, on expat, with hard limits.
#include <zarframework/CIMXmlCodec.h>

#include <cstdio>
#include <cstring>

#include <expat.h>

PEGASUS_NAMESPACE_BEGIN

CIMXmlFormatException::CIMXmlFormatException(Kind kind, const String& message)
    : Exception(message), _kind(kind)
{
}

CIMXmlFormatException::Kind CIMXmlFormatException::getKind() const
{
    return _kind;
}

namespace CIMXml {

const std::string* XmlElement::attribute(const char* attrName) const
{
    for (size_t i = 0; i < attributes.size(); i++)
        if (attributes[i].first == attrName)
            return &attributes[i].second;
    return 0;
}

const std::string& XmlElement::requiredAttribute(const char* attrName) const
{
    const std::string* v = attribute(attrName);
    if (!v) {
        throw CIMXmlFormatException(
            CIMXmlFormatException::NOT_VALID,
            String("missing attribute ") + attrName + " on element " + name.c_str());
    }
    return *v;
}

const XmlElement* XmlElement::child(const char* childName) const
{
    for (size_t i = 0; i < children.size(); i++)
        if (children[i].name == childName)
            return &children[i];
    return 0;
}

const XmlElement& XmlElement::requiredChild(const char* childName) const
{
    const XmlElement* c = child(childName);
    if (!c) {
        throw CIMXmlFormatException(CIMXmlFormatException::NOT_VALID,
                                    String("missing element ") + childName + " in " + name.c_str());
    }
    return *c;
}

namespace {

struct ParseState {
    XML_Parser parser;
    const XmlLimits* limits;
    XmlElement root;
    bool haveRoot = false;
    std::vector<XmlElement*> stack;
    size_t elements = 0;
    std::string limitError;
    bool refusedDtd = false;

    void fail(const std::string& why)
    {
        if (limitError.empty())
            limitError = why;
        XML_StopParser(parser, XML_FALSE);
    }
};

void XMLCALL onStart(void* data, const XML_Char* name, const XML_Char** atts)
{
    ParseState* st = static_cast<ParseState*>(data);
    if (!st->limitError.empty())
        return;
    if (st->stack.size() >= st->limits->maxDepth) {
        st->fail("elements nested deeper than " + std::to_string(st->limits->maxDepth));
        return;
    }
    if (++st->elements > st->limits->maxElements) {
        st->fail("more than " + std::to_string(st->limits->maxElements) + " elements");
        return;
    }
    XmlElement* e;
    if (st->stack.empty()) {
        st->haveRoot = true;
        e = &st->root;
    } else {
        XmlElement* parent = st->stack.back();
        parent->children.emplace_back();
        e = &parent->children.back();
    }
    e->name = name;
    size_t n = 0;
    for (const XML_Char** a = atts; *a; a += 2) {
        if (++n > st->limits->maxAttributes) {
            st->fail("too many attributes on element " + e->name);
            return;
        }
        size_t len = std::strlen(a[1]);
        if (len > st->limits->maxAttributeBytes) {
            st->fail("attribute " + std::string(a[0]) + " longer than " +
                     std::to_string(st->limits->maxAttributeBytes) + " bytes");
            return;
        }
        e->attributes.emplace_back(a[0], std::string(a[1], len));
    }
    st->stack.push_back(e);
}

void XMLCALL onEnd(void* data, const XML_Char*)
{
    ParseState* st = static_cast<ParseState*>(data);
    if (!st->stack.empty())
        st->stack.pop_back();
}

void XMLCALL onText(void* data, const XML_Char* s, int len)
{
    ParseState* st = static_cast<ParseState*>(data);
    if (st->stack.empty() || !st->limitError.empty())
        return;
    XmlElement* e = st->stack.back();
    // Whitespace between child elements carries no data.
    if (!e->children.empty())
        return;
    if (e->text.size() + size_t(len) > st->limits->maxTextBytes) {
        st->fail("text of element " + e->name + " longer than " +
                 std::to_string(st->limits->maxTextBytes) + " bytes");
        return;
    }
    e->text.append(s, size_t(len));
}

void XMLCALL onEntityDecl(void* data, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                          const XML_Char*, const XML_Char*, const XML_Char*)
{
    ParseState* st = static_cast<ParseState*>(data);
    st->refusedDtd = true;
    st->fail("entity declarations are not accepted");
}

}  // namespace

XmlElement parseDocument(const char* data, size_t size, const XmlLimits& limits)
{
    ParseState st;
    st.limits = &limits;
    st.parser = XML_ParserCreate("UTF-8");
    if (!st.parser)
        throw CIMXmlFormatException(CIMXmlFormatException::LIMIT_EXCEEDED, "out of memory");
    XML_SetUserData(st.parser, &st);
    XML_SetElementHandler(st.parser, onStart, onEnd);
    XML_SetCharacterDataHandler(st.parser, onText);
    XML_SetEntityDeclHandler(st.parser, onEntityDecl);
    XML_SetParamEntityParsing(st.parser, XML_PARAM_ENTITY_PARSING_NEVER);

    // Feed in slices so that sizes beyond int range are handled.
    XML_Status status = XML_STATUS_OK;
    size_t off = 0;
    const size_t slice = 1 << 24;
    do {
        size_t n = size - off < slice ? size - off : slice;
        bool last = off + n == size;
        status = XML_Parse(st.parser, data + off, int(n), last ? XML_TRUE : XML_FALSE);
        off += n;
    } while (status == XML_STATUS_OK && off < size);

    if (!st.limitError.empty()) {
        XML_ParserFree(st.parser);
        throw CIMXmlFormatException(st.refusedDtd ? CIMXmlFormatException::NOT_VALID
                                                  : CIMXmlFormatException::LIMIT_EXCEEDED,
                                    String(st.limitError.c_str()));
    }
    if (status != XML_STATUS_OK || !st.haveRoot) {
        char buf[512];
        if (status != XML_STATUS_OK) {
            std::snprintf(buf, sizeof buf, "%s at line %lu, column %lu",
                          XML_ErrorString(XML_GetErrorCode(st.parser)),
                          (unsigned long)XML_GetCurrentLineNumber(st.parser),
                          (unsigned long)XML_GetCurrentColumnNumber(st.parser) + 1);
        } else {
            std::snprintf(buf, sizeof buf, "no element found");
        }
        XML_ParserFree(st.parser);
        throw CIMXmlFormatException(CIMXmlFormatException::NOT_WELL_FORMED, String(buf));
    }
    XML_ParserFree(st.parser);
    return std::move(st.root);
}

bool isValidUtf8(const char* data, size_t size)
{
    const unsigned char* p = reinterpret_cast<const unsigned char*>(data);
    size_t i = 0;
    while (i < size) {
        unsigned c = p[i];
        if (c < 0x80) {
            i++;
            continue;
        }
        size_t n;
        unsigned cp;
        if (c >= 0xC2 && c <= 0xDF) {
            n = 1;
            cp = c & 0x1F;
        } else if (c >= 0xE0 && c <= 0xEF) {
            n = 2;
            cp = c & 0x0F;
        } else if (c >= 0xF0 && c <= 0xF4) {
            n = 3;
            cp = c & 0x07;
        } else
            return false;
        for (size_t k = 1; k <= n; k++) {
            if (i + k >= size || (p[i + k] & 0xC0) != 0x80)
                return false;
            cp = (cp << 6) | (p[i + k] & 0x3F);
        }
        if ((n == 2 && cp < 0x800) || (n == 3 && cp < 0x10000) || cp > 0x10FFFF ||
            (cp >= 0xD800 && cp <= 0xDFFF))
            return false;
        i += n + 1;
    }
    return true;
}

}  // namespace CIMXml

PEGASUS_NAMESPACE_END
