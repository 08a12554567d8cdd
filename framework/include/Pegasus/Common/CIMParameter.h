//%/////////////////////////////////////////////////////////////////////////////
// CIMParameter / CIMConstParameter: a parameter of a method declaration, with
// its type and qualifiers (IN and OUT mark the direction, as in MOF).
//
// Shared handle: copies refer to the same parameter; clone() makes an
// independent copy. A default-constructed handle is uninitialized and every
// member except isUninitialized() throws UninitializedObjectException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Parameter_h
#define Pegasus_Parameter_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMQualifier.h>

PEGASUS_NAMESPACE_BEGIN

class CIMQualifier;
class CIMConstQualifier;
class CIMConstParameter;

class CIMParameterRep;

class PEGASUS_COMMON_LINKAGE CIMParameter {
public:
    // Uninitialized handle.
    CIMParameter();
    CIMParameter(const CIMParameter& x);  // shares
    // A new parameter. Throws UninitializedObjectException for a null name
    // and TypeMismatchException when referenceClassName is given for a
    // non-reference type or arraySize for a scalar. Unlike properties,
    // parameters may be arrays of references.
    CIMParameter(const CIMName& name, CIMType type, Boolean isArray = false, Uint32 arraySize = 0,
                 const CIMName& referenceClassName = CIMName());
    ~CIMParameter();
    CIMParameter& operator=(const CIMParameter& x);  // shares

    const CIMName& getName() const;
    // Renames; a null name throws UninitializedObjectException.
    void setName(const CIMName& name);
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    CIMType getType() const;

    // Qualifier access as for CIMProperty.
    CIMParameter& addQualifier(const CIMQualifier& x);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    void removeQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;

    Boolean isUninitialized() const;
    // Same name (case-insensitive), type, array-ness and size, reference
    // class and qualifiers.
    Boolean identical(const CIMConstParameter& x) const;
    CIMParameter clone() const;

private:
    CIMParameter(CIMParameterRep* rep);
    CIMParameterRep* _rep;
    friend class CIMConstParameter;
    friend class CIMObjectModelAccess;
};

class PEGASUS_COMMON_LINKAGE CIMConstParameter {
public:
    CIMConstParameter();
    CIMConstParameter(const CIMConstParameter& x);
    CIMConstParameter(const CIMParameter& x);  // shares
    CIMConstParameter(const CIMName& name, CIMType type, Boolean isArray = false,
                      Uint32 arraySize = 0, const CIMName& referenceClassName = CIMName());
    ~CIMConstParameter();
    CIMConstParameter& operator=(const CIMConstParameter& x);
    CIMConstParameter& operator=(const CIMParameter& x);

    const CIMName& getName() const;
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    CIMType getType() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Boolean isUninitialized() const;
    Boolean identical(const CIMConstParameter& x) const;
    CIMParameter clone() const;

private:
    CIMParameterRep* _rep;
    friend class CIMParameter;
    friend class CIMObjectModelAccess;
};

PEGASUS_NAMESPACE_END

#endif
