//%/////////////////////////////////////////////////////////////////////////////
// CIMObject / CIMConstObject: a class or an instance, seen through the members
// both have (path, qualifiers, properties).
//
// Shared handle: a CIMObject made from a CIMClass or CIMInstance refers to
// the same object; clone() makes an independent copy. A default-constructed
// handle is uninitialized and every member except isUninitialized() throws
// UninitializedObjectException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Object_h
#define Pegasus_Object_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMPropertyList.h>

PEGASUS_NAMESPACE_BEGIN

class CIMQualifier;
class CIMConstQualifier;
class CIMProperty;
class CIMConstProperty;
class CIMConstObject;
class CIMClass;
class CIMConstClass;
class CIMInstance;
class CIMConstInstance;

class CIMObjectRep;

class PEGASUS_COMMON_LINKAGE CIMObject {
public:
    // Uninitialized handle.
    CIMObject();
    CIMObject(const CIMObject& x);             // shares
    CIMObject(const CIMClass& x);              // shares the class
    CIMObject(const CIMInstance& x);           // shares the instance
    CIMObject& operator=(const CIMObject& x);  // shares
    ~CIMObject();

    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    // Sets the path, with the checks of CIMInstance::setPath for instances.
    void setPath(const CIMObjectPath& path);

    // Qualifier access as for CIMClass / CIMInstance.
    CIMObject& addQualifier(const CIMQualifier& qualifier);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    // Property access as for CIMClass / CIMInstance.
    CIMObject& addProperty(const CIMProperty& x);
    Uint32 findProperty(const CIMName& name) const;
    CIMProperty getProperty(Uint32 index);
    CIMConstProperty getProperty(Uint32 index) const;
    void removeProperty(Uint32 index);
    Uint32 getPropertyCount() const;

    CIMObject clone() const;
    // Same kind, path, qualifiers and properties (and, for classes, super
    // class and methods).
    Boolean identical(const CIMConstObject& x) const;
    Boolean isUninitialized() const;
    // The CIM-XML text of the class (CLASS element) or instance (INSTANCE
    // element).
    String toString() const;
    Boolean isClass() const;
    Boolean isInstance() const;

    // Drops the qualifiers of the object and its properties unless
    // includeQualifiers, the class origins unless includeClassOrigin, and
    // every property not in a non-NULL propertyList.
    void instanceFilter(Boolean includeQualifiers, Boolean includeClassOrigin,
                        const CIMPropertyList& propertyList);

private:
    CIMObject(CIMObjectRep* rep);
    CIMObjectRep* _rep;
    friend class CIMConstObject;
    friend class CIMClass;
    friend class CIMConstClass;
    friend class CIMInstance;
    friend class CIMConstInstance;
    friend class CIMObjectModelAccess;
};

class PEGASUS_COMMON_LINKAGE CIMConstObject {
public:
    CIMConstObject();
    CIMConstObject(const CIMConstObject& x);
    CIMConstObject(const CIMObject& x);
    CIMConstObject(const CIMClass& x);
    CIMConstObject(const CIMInstance& x);
    CIMConstObject(const CIMConstClass& x);
    CIMConstObject(const CIMConstInstance& x);
    CIMConstObject& operator=(const CIMConstObject& x);
    ~CIMConstObject();

    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const;
    CIMObject clone() const;
    Boolean identical(const CIMConstObject& x) const;
    Boolean isUninitialized() const;
    String toString() const;
    Boolean isClass() const;
    Boolean isInstance() const;

private:
    CIMObjectRep* _rep;
    friend class CIMObject;
    friend class CIMClass;
    friend class CIMConstClass;
    friend class CIMInstance;
    friend class CIMConstInstance;
    friend class CIMObjectModelAccess;
};

PEGASUS_NAMESPACE_END

#include <Pegasus/Common/CIMValue.h>

#endif
