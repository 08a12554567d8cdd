//%/////////////////////////////////////////////////////////////////////////////
// CIMName: the name of a class, property, method, parameter or qualifier.
// CIMNamespaceName: a namespace name such as "root/zar".
//
// Both validate on construction (InvalidNameException /
// InvalidNamespaceNameException), compare ASCII case-insensitively and keep
// the spelling they were given. Only default construction or clear() gives a
// null name; an empty string is not a legal name.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMName_h
#define Pegasus_CIMName_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE CIMName {
public:
    // A null name.
    CIMName();

    // Validates name (implicit); throws InvalidNameException if it is not legal.
    CIMName(const String& name);
    CIMName(const char* name);

    CIMName(const CIMName& name);

    CIMName& operator=(const CIMName& name);

    // Validates name; throws InvalidNameException if it is not legal.
    CIMName& operator=(const String& name);

    // The name as given (empty for a null name).
    const String& getString() const;

    // True for a default-constructed or cleared name.
    Boolean isNull() const;

    // Makes the name null.
    void clear();

    // ASCII case-insensitive equality; null equals only null.
    Boolean equal(const CIMName& name) const;

    // True if name is a legal CIM name: a letter, '_' or a unit in
    // U+0080..U+FFEF, then letters, digits, '_' or such units.
    static Boolean legal(const String& name);

    // As equal(CIMName), without validating name.
    Boolean equal(const char* name) const;

    CIMName& operator=(const char* name);

private:
    String cimName;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMName& name1, const CIMName& name2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMName& name1, const CIMName& name2);

// Compare with a literal case-insensitively without validating it, so that
// name == "" is simply false for a non-null name.
PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMName& name1, const char* name2);
PEGASUS_COMMON_LINKAGE Boolean operator==(const char* name1, const CIMName& name2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMName& name1, const char* name2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const char* name1, const CIMName& name2);

class PEGASUS_COMMON_LINKAGE CIMNamespaceName {
public:
    // A null namespace name.
    CIMNamespaceName();

    // Validates name (implicit); a single leading '/' is dropped. Throws
    // InvalidNamespaceNameException if it is not legal.
    CIMNamespaceName(const String& name);
    CIMNamespaceName(const char* name);

    CIMNamespaceName(const CIMNamespaceName& name);

    CIMNamespaceName& operator=(const CIMNamespaceName& name);
    CIMNamespaceName& operator=(const String& name);

    // The name as stored (without a leading '/').
    const String& getString() const;

    Boolean isNull() const;

    void clear();

    // ASCII case-insensitive equality; null equals only null.
    Boolean equal(const CIMNamespaceName& name) const;

    // True if name is one or more legal CIM names separated by single '/',
    // optionally preceded by one '/'.
    static Boolean legal(const String& name);

    // As equal(CIMNamespaceName), without validating name (a leading '/' is ignored).
    Boolean equal(const char* name) const;

    CIMNamespaceName& operator=(const char* name);

private:
    String cimNamespaceName;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMNamespaceName& name1,
                                          const CIMNamespaceName& name2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMNamespaceName& name1,
                                          const CIMNamespaceName& name2);

// Literal comparisons without validation, as for CIMName.
PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMNamespaceName& name1, const char* name2);
PEGASUS_COMMON_LINKAGE Boolean operator==(const char* name1, const CIMNamespaceName& name2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMNamespaceName& name1, const char* name2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const char* name1, const CIMNamespaceName& name2);

PEGASUS_NAMESPACE_END

#endif
