//%/////////////////////////////////////////////////////////////////////////////
// CIMXmlCodec: encoding and decoding of CIM-XML (the CIM object model carried
// in XML, as exchanged between CIM clients and servers over HTTP).
//
// This header is an extension of this framework with no OpenPegasus
// counterpart: the server's front end and the HTTP client transport use it,
// provider code never includes it.
//
// Writing appends UTF-8 XML text to a std::string, so that a caller can
// stream a large response piece by piece. Reading parses a document into a
// small element tree under hard limits (depth, element count, text and
// attribute sizes) and decodes elements of that tree into object-model
// values. Every decode function throws CIMXmlFormatException on input that
// does not follow CIM-XML; nothing is silently dropped.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZARFRAMEWORK_CIMXMLCODEC_H
#define ZARFRAMEWORK_CIMXMLCODEC_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMValue.h>

PEGASUS_NAMESPACE_BEGIN

// Thrown by the parser and the decoders. getKind() tells a document that is
// not XML at all (NOT_WELL_FORMED), XML that is not valid CIM-XML
// (NOT_VALID), a value whose text cannot be converted to its declared type
// (BAD_VALUE), and a document beyond the parser's limits (LIMIT_EXCEEDED).
class PEGASUS_COMMON_LINKAGE CIMXmlFormatException : public Exception {
public:
    enum Kind { NOT_WELL_FORMED, NOT_VALID, BAD_VALUE, LIMIT_EXCEEDED };
    CIMXmlFormatException(Kind kind, const String& message);
    Kind getKind() const;

private:
    Kind _kind;
};

namespace CIMXml {

// Where zar-cimserver listens for local connections unless told otherwise,
// relative to its run directory; CIMClient::connectLocal() uses it when the
// environment variable ZAR_LOCAL_SOCKET is not set.
#define ZAR_DEFAULT_LOCAL_SOCKET_PATH "var/cimxml.socket"

// ---------------------------------------------------------------------------
// Parsing
// ---------------------------------------------------------------------------

// Hard limits of one parse. The defaults suit requests sent to a server.
struct XmlLimits {
    size_t maxDepth = 64;              // nesting of elements
    size_t maxElements = 1000000;      // elements in the document
    size_t maxTextBytes = 1 << 20;     // character data of one element
    size_t maxAttributeBytes = 65536;  // one attribute value
    size_t maxAttributes = 32;         // attributes of one element
};

// One element of a parsed document. Character data is kept as UTF-8 in text
// (with entities and character references resolved); attributes keep their
// document order.
struct XmlElement {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text;
    std::vector<XmlElement> children;

    // The value of the attribute, or 0 if absent.
    const std::string* attribute(const char* attrName) const;
    // The attribute's value; throws NOT_VALID naming the element if absent.
    const std::string& requiredAttribute(const char* attrName) const;
    // The first child with that name, or 0.
    const XmlElement* child(const char* childName) const;
    // The first child with that name; throws NOT_VALID if absent.
    const XmlElement& requiredChild(const char* childName) const;
};

// Parses a complete UTF-8 document. Document type declarations with
// entities are refused (no entity expansion), as are documents beyond
// limits. Throws CIMXmlFormatException (NOT_WELL_FORMED with the parser's
// message, line and column; LIMIT_EXCEEDED).
PEGASUS_COMMON_LINKAGE XmlElement parseDocument(const char* data, size_t size,
                                                const XmlLimits& limits = XmlLimits());

// True if data[0..size) is well-formed UTF-8 (no overlong forms, no
// surrogates, nothing above U+10FFFF).
PEGASUS_COMMON_LINKAGE bool isValidUtf8(const char* data, size_t size);

// ---------------------------------------------------------------------------
// Writing (every function appends to out)
// ---------------------------------------------------------------------------

// Character data: & < > and " escaped.
PEGASUS_COMMON_LINKAGE void appendText(std::string& out, const String& s);
// Attribute value: as appendText plus tab, newline and carriage return as
// character references, so that they survive attribute normalisation.
PEGASUS_COMMON_LINKAGE void appendAttribute(std::string& out, const String& s);
PEGASUS_COMMON_LINKAGE void appendAttribute(std::string& out, const std::string& utf8);

// The text of a scalar value as it appears inside VALUE (reals with enough
// digits to be read back exactly; booleans as TRUE/FALSE).
PEGASUS_COMMON_LINKAGE std::string valueText(const CIMValue& scalarValue);

// VALUE, VALUE.ARRAY, VALUE.REFERENCE or VALUE.REFARRAY for a non-null
// value; nothing for a null one. Embedded objects and instances are written
// as escaped CIM-XML text inside VALUE.
PEGASUS_COMMON_LINKAGE void appendValue(std::string& out, const CIMValue& value);

PEGASUS_COMMON_LINKAGE void appendLocalNamespacePath(std::string& out,
                                                     const CIMNamespaceName& nameSpace);
PEGASUS_COMMON_LINKAGE void appendNamespacePath(std::string& out, const String& host,
                                                const CIMNamespaceName& nameSpace);
PEGASUS_COMMON_LINKAGE void appendClassName(std::string& out, const CIMName& name);
// INSTANCENAME: class and keys of path (host and namespace ignored).
PEGASUS_COMMON_LINKAGE void appendInstanceName(std::string& out, const CIMObjectPath& path);
// INSTANCEPATH; an empty host of path is replaced by defaultHost, a null
// namespace by defaultNameSpace.
PEGASUS_COMMON_LINKAGE void appendInstancePath(
    std::string& out, const CIMObjectPath& path, const String& defaultHost = String(),
    const CIMNamespaceName& defaultNameSpace = CIMNamespaceName());
PEGASUS_COMMON_LINKAGE void appendLocalInstancePath(std::string& out, const CIMObjectPath& path,
                                                    const CIMNamespaceName& nameSpace);
PEGASUS_COMMON_LINKAGE void appendClassPath(
    std::string& out, const CIMObjectPath& path, const String& defaultHost = String(),
    const CIMNamespaceName& defaultNameSpace = CIMNamespaceName());
PEGASUS_COMMON_LINKAGE void appendLocalClassPath(std::string& out,
                                                 const CIMNamespaceName& nameSpace,
                                                 const CIMName& className);
// OBJECTPATH holding an INSTANCEPATH (path with keys) or a CLASSPATH.
PEGASUS_COMMON_LINKAGE void appendObjectPath(
    std::string& out, const CIMObjectPath& path, const String& defaultHost = String(),
    const CIMNamespaceName& defaultNameSpace = CIMNamespaceName());
// VALUE.REFERENCE in the most complete form the path allows: INSTANCEPATH
// with host and namespace, LOCALINSTANCEPATH with a namespace only,
// INSTANCENAME otherwise (class forms for paths without keys).
PEGASUS_COMMON_LINKAGE void appendValueReference(std::string& out, const CIMObjectPath& path);

PEGASUS_COMMON_LINKAGE void appendQualifier(std::string& out, const CIMQualifier& q);
PEGASUS_COMMON_LINKAGE void appendProperty(std::string& out, const CIMProperty& p);
PEGASUS_COMMON_LINKAGE void appendParameter(std::string& out, const CIMParameter& p);
PEGASUS_COMMON_LINKAGE void appendMethod(std::string& out, const CIMMethod& m);
PEGASUS_COMMON_LINKAGE void appendClass(std::string& out, const CIMClass& c);
PEGASUS_COMMON_LINKAGE void appendInstance(std::string& out, const CIMInstance& i);
// CLASS or INSTANCE.
PEGASUS_COMMON_LINKAGE void appendObject(std::string& out, const CIMObject& o);
// VALUE.NAMEDINSTANCE: the instance's path as INSTANCENAME, then INSTANCE.
PEGASUS_COMMON_LINKAGE void appendValueNamedInstance(std::string& out, const CIMInstance& i);
// VALUE.OBJECTWITHPATH; the object's path is completed with defaultHost and
// defaultNameSpace where it lacks them.
PEGASUS_COMMON_LINKAGE void appendValueObjectWithPath(std::string& out, const CIMObject& o,
                                                      const String& defaultHost,
                                                      const CIMNamespaceName& defaultNameSpace);

// PARAMVALUE with PARAMTYPE (and EmbeddedObject where it applies); a null
// value gives an empty PARAMVALUE.
PEGASUS_COMMON_LINKAGE void appendParamValue(std::string& out, const CIMParamValue& pv);
// RETURNVALUE with PARAMTYPE.
PEGASUS_COMMON_LINKAGE void appendReturnValue(std::string& out, const CIMValue& value);
// IPARAMVALUE named name holding a VALUE "TRUE"/"FALSE".
PEGASUS_COMMON_LINKAGE void appendBooleanIParam(std::string& out, const char* name, bool value);

// The DESCRIPTION text of an ERROR: the status code's name, ": " and the
// message (the name alone for an empty message); codes outside the
// enumeration are named Unrecognized CIM status code "<n>".
PEGASUS_COMMON_LINKAGE String errorDescription(Uint32 code, const String& message);
// <ERROR CODE="n" DESCRIPTION="..."/>.
PEGASUS_COMMON_LINKAGE void appendError(std::string& out, Uint32 code, const String& message);

// The envelope around one simple request or response.
PEGASUS_COMMON_LINKAGE void appendMessageStart(std::string& out, const std::string& messageId,
                                               bool request);
PEGASUS_COMMON_LINKAGE void appendMessageEnd(std::string& out, bool request);

// ---------------------------------------------------------------------------
// Decoding (elements of a parsed document)
// ---------------------------------------------------------------------------

// CIMType from its CIM-XML name ("uint16", "reference"...); throws NOT_VALID.
PEGASUS_COMMON_LINKAGE CIMType typeFromName(const std::string& name);

// A scalar of type from VALUE text. Booleans in any case; integers decimal
// or 0x hex, range-checked; throws BAD_VALUE.
PEGASUS_COMMON_LINKAGE CIMValue scalarFromText(const std::string& text, CIMType type);

// A value from VALUE, VALUE.ARRAY, VALUE.NULL, VALUE.REFERENCE or
// VALUE.REFARRAY, converted to type. For VALUE with embeddedObject set, the
// text is parsed as CLASS/INSTANCE XML.
PEGASUS_COMMON_LINKAGE CIMValue decodeValue(const XmlElement& e, CIMType type,
                                            const XmlLimits& limits = XmlLimits(),
                                            bool embeddedObject = false);

PEGASUS_COMMON_LINKAGE CIMNamespaceName decodeLocalNamespacePath(const XmlElement& e);
// Host and namespace of a NAMESPACEPATH.
PEGASUS_COMMON_LINKAGE void decodeNamespacePath(const XmlElement& e, String& host,
                                                CIMNamespaceName& nameSpace);
PEGASUS_COMMON_LINKAGE CIMName decodeClassName(const XmlElement& e);
// INSTANCENAME to a path without host or namespace.
PEGASUS_COMMON_LINKAGE CIMObjectPath decodeInstanceName(const XmlElement& e);
// Any path element: INSTANCEPATH, LOCALINSTANCEPATH, INSTANCENAME,
// CLASSPATH, LOCALCLASSPATH, CLASSNAME, OBJECTPATH, VALUE.REFERENCE.
PEGASUS_COMMON_LINKAGE CIMObjectPath decodeObjectPath(const XmlElement& e);

PEGASUS_COMMON_LINKAGE CIMQualifier decodeQualifier(const XmlElement& e);
PEGASUS_COMMON_LINKAGE CIMProperty decodeProperty(const XmlElement& e,
                                                  const XmlLimits& limits = XmlLimits());
PEGASUS_COMMON_LINKAGE CIMMethod decodeMethod(const XmlElement& e);
PEGASUS_COMMON_LINKAGE CIMClass decodeClass(const XmlElement& e,
                                            const XmlLimits& limits = XmlLimits());
PEGASUS_COMMON_LINKAGE CIMInstance decodeInstance(const XmlElement& e,
                                                  const XmlLimits& limits = XmlLimits());
// CLASS or INSTANCE.
PEGASUS_COMMON_LINKAGE CIMObject decodeObject(const XmlElement& e,
                                              const XmlLimits& limits = XmlLimits());
// VALUE.NAMEDINSTANCE, VALUE.OBJECTWITHPATH, VALUE.OBJECTWITHLOCALPATH or
// VALUE.INSTANCEWITHPATH: the object with its path set.
PEGASUS_COMMON_LINKAGE CIMObject decodeObjectWithPath(const XmlElement& e,
                                                      const XmlLimits& limits = XmlLimits());

// PARAMVALUE (or RETURNVALUE content). With PARAMTYPE the value is typed and
// isTyped() is true; without it a VALUE comes back as a String (an array as
// Array<String>) with isTyped() false, for the receiver to convert from the
// method's declaration. References and embedded objects are always typed.
PEGASUS_COMMON_LINKAGE CIMParamValue decodeParamValue(const XmlElement& e,
                                                      const XmlLimits& limits = XmlLimits());

// An untyped String or Array<String> value (see decodeParamValue) converted
// to type; throws BAD_VALUE.
PEGASUS_COMMON_LINKAGE CIMValue convertUntyped(const CIMValue& untyped, CIMType type);

// A property list from an IPARAMVALUE's content: VALUE.ARRAY of names, or
// an absent/empty parameter meaning NULL.
PEGASUS_COMMON_LINKAGE CIMPropertyList decodePropertyList(const XmlElement& iparam);

}  // namespace CIMXml

PEGASUS_NAMESPACE_END

#endif
