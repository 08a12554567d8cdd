//%/////////////////////////////////////////////////////////////////////////////
// CIMProperty / CIMConstProperty: a named, typed value of a class or an
// instance, with its qualifiers.
//
// Shared handle: copies refer to the same property, so the handle returned by
// CIMInstance::getProperty() changes the property inside the instance;
// clone() makes an independent copy. A default-constructed handle is
// uninitialized and every member except isUninitialized() throws
// UninitializedObjectException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Property_h
#define Pegasus_Property_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMQualifier.h>

PEGASUS_NAMESPACE_BEGIN

class CIMValue;
class CIMQualifier;
class CIMConstQualifier;
class CIMConstProperty;

class CIMPropertyRep;

class PEGASUS_COMMON_LINKAGE CIMProperty {
public:
    // Uninitialized handle.
    CIMProperty();
    CIMProperty(const CIMProperty& x);  // shares
    // A new property. Throws UninitializedObjectException for a null name,
    // TypeMismatchException when referenceClassName is given for a
    // non-reference value, when the value is an array of references, or when
    // a non-zero arraySize does not match the value.
    CIMProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize = 0,
                const CIMName& referenceClassName = CIMName(),
                const CIMName& classOrigin = CIMName(), Boolean propagated = false);
    ~CIMProperty();
    CIMProperty& operator=(const CIMProperty& x);  // shares

    const CIMName& getName() const;
    // Renames the property. A null name throws UninitializedObjectException;
    // a property that belongs to a class or instance cannot change its name
    // (Exception).
    void setName(const CIMName& name);
    const CIMValue& getValue() const;
    CIMType getType() const;
    Boolean isArray() const;
    // Replaces the value. Throws TypeMismatchException when the new value's
    // type or array-ness differs from the current value's (null values
    // included: use CIMValue(type, isArray) for a typed null), when a fixed
    // array size does not match, or for an array of references.
    void setValue(const CIMValue& value);
    // The fixed array size given at construction (0: variable or scalar).
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    const CIMName& getClassOrigin() const;
    void setClassOrigin(const CIMName& classOrigin);
    Boolean getPropagated() const;
    void setPropagated(Boolean propagated);

    // Adds a qualifier; AlreadyExistsException for a duplicate name
    // (case-insensitive), UninitializedObjectException for an uninitialized
    // qualifier.
    CIMProperty& addQualifier(const CIMQualifier& x);
    // Index of the qualifier (case-insensitive), or PEG_NOT_FOUND.
    Uint32 findQualifier(const CIMName& name) const;
    // Qualifier at index (a live handle); IndexOutOfBoundsException when out
    // of range.
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    // Same name (case-insensitive), value, array size, reference class,
    // class origin, propagated flag and qualifiers.
    Boolean identical(const CIMConstProperty& x) const;
    CIMProperty clone() const;
    Boolean isUninitialized() const;

private:
    CIMProperty(CIMPropertyRep* rep);
    CIMPropertyRep* _rep;
    friend class CIMConstProperty;
    friend class CIMObjectModelAccess;
};

class PEGASUS_COMMON_LINKAGE CIMConstProperty {
public:
    CIMConstProperty();
    CIMConstProperty(const CIMConstProperty& x);
    CIMConstProperty(const CIMProperty& x);  // shares
    CIMConstProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize = 0,
                     const CIMName& referenceClassName = CIMName(),
                     const CIMName& classOrigin = CIMName(), Boolean propagated = false);
    ~CIMConstProperty();
    CIMConstProperty& operator=(const CIMConstProperty& x);
    CIMConstProperty& operator=(const CIMProperty& x);

    const CIMName& getName() const;
    const CIMValue& getValue() const;
    CIMType getType() const;
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    const CIMName& getClassOrigin() const;
    Boolean getPropagated() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Boolean identical(const CIMConstProperty& x) const;
    CIMProperty clone() const;
    Boolean isUninitialized() const;

private:
    CIMPropertyRep* _rep;
    friend class CIMProperty;
    friend class CIMObjectModelAccess;
};

PEGASUS_NAMESPACE_END

#include <Pegasus/Common/CIMValue.h>

#endif
