//%/////////////////////////////////////////////////////////////////////////////
// CIMInstance / CIMConstInstance: an instance of a class: its path,
// qualifiers and properties.
//
// Shared handle: copies refer to the same instance, and getProperty() returns
// a live handle to the contained property; clone() makes an independent
// copy. A default-constructed handle is uninitialized and every member
// except isUninitialized() throws UninitializedObjectException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Instance_h
#define Pegasus_Instance_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMPropertyList.h>

PEGASUS_NAMESPACE_BEGIN

class CIMQualifier;
class CIMConstQualifier;
class CIMProperty;
class CIMConstProperty;
class CIMObject;
class CIMConstObject;
class CIMClass;
class CIMConstClass;
class CIMConstInstance;

class CIMInstanceRep;

class PEGASUS_COMMON_LINKAGE CIMInstance {
public:
    // Uninitialized handle.
    CIMInstance();
    CIMInstance(const CIMInstance& x);  // shares
    // Shares the instance behind x; DynamicCastFailedException when x is
    // not an instance (a class, or uninitialized).
    explicit CIMInstance(const CIMObject& x);
    // An empty instance whose path holds only the class name; a null name
    // throws UninitializedObjectException.
    CIMInstance(const CIMName& className);
    CIMInstance& operator=(const CIMInstance& x);  // shares
    ~CIMInstance();

    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    // Stores path as given. Throws UninitializedObjectException when path
    // has no class name, TypeMismatchException when its class name differs
    // (case-insensitively) from the instance's. Afterwards getClassName()
    // returns the path's spelling.
    void setPath(const CIMObjectPath& path);

    // Adds a qualifier; AlreadyExistsException for a duplicate name
    // (case-insensitive), UninitializedObjectException for an uninitialized
    // qualifier.
    CIMInstance& addQualifier(const CIMQualifier& qualifier);
    // Index of the qualifier (case-insensitive), or PEG_NOT_FOUND.
    Uint32 findQualifier(const CIMName& name) const;
    // Qualifier at index (a live handle); IndexOutOfBoundsException when out
    // of range.
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    // Adds the property itself (not a copy). AlreadyExistsException
    // ("already exists: property "<name>"") for a duplicate name
    // (case-insensitive), UninitializedObjectException for an uninitialized
    // property. Reference properties need no reference class here.
    CIMInstance& addProperty(const CIMProperty& x);
    // Index of the property (case-insensitive), or PEG_NOT_FOUND.
    Uint32 findProperty(const CIMName& name) const;
    // Property at index (a live handle); IndexOutOfBoundsException when out
    // of range.
    CIMProperty getProperty(Uint32 index);
    CIMConstProperty getProperty(Uint32 index) const;
    void removeProperty(Uint32 index);
    Uint32 getPropertyCount() const;

    // The path made of the instance's class name and one key binding per
    // key property of cimClass, taken from the instance's value of that
    // property; no host, no namespace. A key property missing from the
    // instance throws NoSuchProperty.
    CIMObjectPath buildPath(const CIMConstClass& cimClass) const;
    CIMInstance clone() const;
    // Same path, qualifiers and properties.
    Boolean identical(const CIMConstInstance& x) const;
    Boolean isUninitialized() const;

    // Same as instanceFilter().
    void filter(Boolean includeQualifiers, Boolean includeClassOrigin,
                const CIMPropertyList& propertyList);
    // Drops the qualifiers of the instance and its properties unless
    // includeQualifiers, the class origins unless includeClassOrigin, and
    // every property not in a non-NULL propertyList.
    void instanceFilter(Boolean includeQualifiers, Boolean includeClassOrigin,
                        const CIMPropertyList& propertyList);

private:
    CIMInstance(CIMInstanceRep* rep);
    CIMInstanceRep* _rep;
    friend class CIMObject;
    friend class CIMConstObject;
    friend class CIMConstInstance;
    friend class CIMClass;
    friend class CIMObjectModelAccess;
};

class PEGASUS_COMMON_LINKAGE CIMConstInstance {
public:
    CIMConstInstance();
    CIMConstInstance(const CIMConstInstance& x);
    CIMConstInstance(const CIMInstance& x);  // shares
    explicit CIMConstInstance(const CIMObject& x);
    explicit CIMConstInstance(const CIMConstObject& x);
    CIMConstInstance(const CIMName& className);
    CIMConstInstance& operator=(const CIMConstInstance& x);
    CIMConstInstance& operator=(const CIMInstance& x);
    ~CIMConstInstance();

    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const;
    CIMObjectPath buildPath(const CIMConstClass& cimClass) const;
    CIMInstance clone() const;
    Boolean identical(const CIMConstInstance& x) const;
    Boolean isUninitialized() const;

private:
    CIMInstanceRep* _rep;
    friend class CIMObject;
    friend class CIMConstObject;
    friend class CIMInstance;
    friend class CIMObjectModelAccess;
};

PEGASUS_NAMESPACE_END

#endif
