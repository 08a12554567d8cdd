//%/////////////////////////////////////////////////////////////////////////////
// CIMKeyBinding: one key of an instance name (name, value text, value type).
// CIMObjectPath: the name of a class or instance,
//   [//host/][namespace:]ClassName[.key=value{,key=value}]
// Both have value semantics. A path keeps its keys sorted by name (ASCII
// case-insensitively) and normalises reference key values whenever keys are
// stored. Malformed text throws MalformedObjectNameException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMObjectPath_h
#define Pegasus_CIMObjectPath_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>

PEGASUS_NAMESPACE_BEGIN

class CIMValue;
class CIMObjectPath;
struct CIMKeyBindingRep;
struct CIMObjectPathRep;

class PEGASUS_COMMON_LINKAGE CIMKeyBinding {
public:
    // How the value text is to be read.
    enum Type { BOOLEAN, STRING, NUMERIC, REFERENCE };

    // A binding with a null name, an empty STRING value.
    CIMKeyBinding();

    CIMKeyBinding(const CIMKeyBinding& x);

    // Stores the text and type as given.
    CIMKeyBinding(const CIMName& name, const String& value, Type type);

    // Derives type and text from value: boolean -> BOOLEAN "TRUE"/"FALSE";
    // char16, string, datetime -> STRING; any number -> NUMERIC; reference ->
    // REFERENCE with the path's text; a null value gives an empty text. An
    // array, object or instance value throws TypeMismatchException.
    CIMKeyBinding(const CIMName& name, const CIMValue& value);

    ~CIMKeyBinding();

    CIMKeyBinding& operator=(const CIMKeyBinding& x);

    const CIMName& getName() const;
    void setName(const CIMName& name);
    const String& getValue() const;
    void setValue(const String& value);
    Type getType() const;
    void setType(Type type);

    // True if this binding's text, read as value's type, equals value; false
    // for a binding type that does not suit value's type or an unreadable text.
    Boolean equal(CIMValue value);

private:
    CIMKeyBindingRep* _rep;
    friend class CIMObjectPath;
};

// Names equal (case-insensitive), types identical and values equal by type:
// STRING exactly, BOOLEAN ignoring case, NUMERIC as numbers, REFERENCE as paths.
PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMKeyBinding& x, const CIMKeyBinding& y);

class PEGASUS_COMMON_LINKAGE CIMObjectPath {
public:
    // An empty path (toString() is "").
    CIMObjectPath();

    CIMObjectPath(const CIMObjectPath& x);

    // Parses objectName (implicit); throws MalformedObjectNameException.
    CIMObjectPath(const String& objectName);

    // A path of the given parts; keys are sorted and reference values
    // normalised (an unparsable reference text throws
    // MalformedObjectNameException).
    CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
                  const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());

    ~CIMObjectPath();

    CIMObjectPath& operator=(const CIMObjectPath& x);

    // Back to the empty path.
    void clear();

    // Replaces every part, as the four-part constructor does.
    void set(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
             const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());

    // Parses objectName; on error throws and leaves the path unchanged.
    void set(const String& objectName);
    CIMObjectPath& operator=(const String& objectName);

    const String& getHost() const;

    // Validates host (name, IPv4 address, optionally ":port"); throws
    // MalformedObjectNameException "<host>, reason:"invalid hostname"".
    void setHost(const String& host);

    const CIMNamespaceName& getNameSpace() const;
    void setNameSpace(const CIMNamespaceName& nameSpace);
    const CIMName& getClassName() const;
    void setClassName(const CIMName& className);

    // The keys, sorted by name.
    const Array<CIMKeyBinding>& getKeyBindings() const;
    void setKeyBindings(const Array<CIMKeyBinding>& keyBindings);

    // The path text: "//host/" if there is a host, "namespace:" if there is a
    // namespace or a host, the class name, then ".k=v,..." for the keys.
    // String and reference values are quoted with \ and " escaped.
    String toString() const;

    // Equality as operator== describes.
    Boolean identical(const CIMObjectPath& x) const;

    // A hash consistent with identical().
    Uint32 makeHashCode() const;

private:
    CIMObjectPathRep* _rep;
};

// Host, namespace and class equal ignoring ASCII case (an empty host or null
// namespace equals only another), and the sorted keys pairwise equal as
// CIMKeyBinding's operator== says.
PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMObjectPath& x, const CIMObjectPath& y);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMObjectPath& x, const CIMObjectPath& y);

PEGASUS_NAMESPACE_END

#endif
