//%/////////////////////////////////////////////////////////////////////////////
// CIMClass / CIMConstClass: a class definition: name, super class,
// qualifiers, properties (with their default values) and methods.
//
// Shared handle: copies refer to the same class; clone() makes an
// independent copy. A default-constructed handle is uninitialized and every
// member except isUninitialized() throws UninitializedObjectException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMClass_h
#define Pegasus_CIMClass_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMPropertyList.h>

PEGASUS_NAMESPACE_BEGIN

class CIMQualifier;
class CIMConstQualifier;
class CIMProperty;
class CIMConstProperty;
class CIMMethod;
class CIMConstMethod;
class CIMObject;
class CIMConstObject;
class CIMConstClass;
class CIMInstance;
class CIMConstInstance;

class CIMClassRep;

class PEGASUS_COMMON_LINKAGE CIMClass {
public:
    // Uninitialized handle.
    CIMClass();
    CIMClass(const CIMClass& x);  // shares
    // Shares the class behind x; DynamicCastFailedException when x is not a
    // class (an instance, or uninitialized).
    explicit CIMClass(const CIMObject& x);
    // An empty class whose path holds only the class name; a null class
    // name throws UninitializedObjectException.
    CIMClass(const CIMName& className, const CIMName& superClassName = CIMName());
    CIMClass& operator=(const CIMClass& x);  // shares
    ~CIMClass();

    // True iff the class carries the qualifier Association (Abstract) with
    // the Boolean value true.
    Boolean isAssociation() const;
    Boolean isAbstract() const;
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    void setPath(const CIMObjectPath& path);
    const CIMName& getSuperClassName() const;
    void setSuperClassName(const CIMName& superClassName);

    // Qualifier access as for CIMInstance.
    CIMClass& addQualifier(const CIMQualifier& qualifier);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    // Adds the property itself (not a copy). AlreadyExistsException for a
    // duplicate name (case-insensitive); TypeMismatchException for a
    // reference property without a reference class name;
    // UninitializedObjectException for an uninitialized property.
    CIMClass& addProperty(const CIMProperty& x);
    Uint32 findProperty(const CIMName& name) const;
    CIMProperty getProperty(Uint32 index);
    CIMConstProperty getProperty(Uint32 index) const;
    void removeProperty(Uint32 index);
    Uint32 getPropertyCount() const;

    // Adds the method itself; AlreadyExistsException ("already exists:
    // method "<name>"") for a duplicate name (case-insensitive).
    CIMClass& addMethod(const CIMMethod& x);
    // Index of the method (case-insensitive), or PEG_NOT_FOUND.
    Uint32 findMethod(const CIMName& name) const;
    // Method at index (a live handle); IndexOutOfBoundsException when out of
    // range.
    CIMMethod getMethod(Uint32 index);
    CIMConstMethod getMethod(Uint32 index) const;
    void removeMethod(Uint32 index);
    Uint32 getMethodCount() const;

    // Appends the names of the key properties (qualifier Key true), in class
    // order.
    void getKeyNames(Array<CIMName>& keyNames) const;
    Boolean hasKeys() const;
    CIMClass clone() const;
    // Same path, super class, qualifiers, properties and methods.
    Boolean identical(const CIMConstClass& x) const;
    Boolean isUninitialized() const;

    // A new, independent instance of this class whose path holds only the
    // class name. It gets the class's properties in class order (all of them
    // for a NULL propertyList, else those named in the list), each with the
    // class's (default) value; the class's and properties' qualifiers only
    // if includeQualifiers; class origins only if includeClassOrigin.
    CIMInstance buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                              const CIMPropertyList& propertyList) const;

private:
    CIMClass(CIMClassRep* rep);
    CIMClassRep* _rep;
    friend class CIMObject;
    friend class CIMConstObject;
    friend class CIMConstClass;
    friend class CIMObjectModelAccess;
};

class PEGASUS_COMMON_LINKAGE CIMConstClass {
public:
    CIMConstClass();
    CIMConstClass(const CIMConstClass& x);
    CIMConstClass(const CIMClass& x);  // shares
    explicit CIMConstClass(const CIMObject& x);
    explicit CIMConstClass(const CIMConstObject& x);
    CIMConstClass(const CIMName& className, const CIMName& superClassName = CIMName());
    CIMConstClass& operator=(const CIMConstClass& x);
    CIMConstClass& operator=(const CIMClass& x);
    ~CIMConstClass();

    Boolean isAssociation() const;
    Boolean isAbstract() const;
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    const CIMName& getSuperClassName() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const;
    Uint32 findMethod(const CIMName& name) const;
    CIMConstMethod getMethod(Uint32 index) const;
    Uint32 getMethodCount() const;
    void getKeyNames(Array<CIMName>& keyNames) const;
    Boolean hasKeys() const;
    CIMClass clone() const;
    Boolean identical(const CIMConstClass& x) const;
    Boolean isUninitialized() const;

private:
    CIMClassRep* _rep;
    friend class CIMObject;
    friend class CIMConstObject;
    friend class CIMClass;
    friend class CIMInstance;
    friend class CIMConstInstance;
    friend class CIMObjectModelAccess;
};

PEGASUS_NAMESPACE_END

#endif
