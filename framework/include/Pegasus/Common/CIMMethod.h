//%/////////////////////////////////////////////////////////////////////////////
// CIMMethod / CIMConstMethod: a method declaration of a class: name, return
// type, qualifiers and parameters.
//
// Shared handle: copies refer to the same method; clone() makes an
// independent copy. A default-constructed handle is uninitialized and every
// member except isUninitialized() throws UninitializedObjectException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Method_h
#define Pegasus_Method_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMParameter.h>

PEGASUS_NAMESPACE_BEGIN

class CIMQualifier;
class CIMConstQualifier;
class CIMParameter;
class CIMConstParameter;
class CIMConstMethod;

class CIMMethodRep;

class PEGASUS_COMMON_LINKAGE CIMMethod {
public:
    // Uninitialized handle.
    CIMMethod();
    CIMMethod(const CIMMethod& x);  // shares
    // A new method returning type; a null name throws
    // UninitializedObjectException.
    CIMMethod(const CIMName& name, CIMType type, const CIMName& classOrigin = CIMName(),
              Boolean propagated = false);
    ~CIMMethod();
    CIMMethod& operator=(const CIMMethod& x);  // shares

    const CIMName& getName() const;
    // Renames; a null name throws UninitializedObjectException; a method
    // that belongs to a class cannot change its name (Exception).
    void setName(const CIMName& name);
    CIMType getType() const;
    void setType(CIMType type);
    const CIMName& getClassOrigin() const;
    void setClassOrigin(const CIMName& classOrigin);
    Boolean getPropagated() const;
    void setPropagated(Boolean propagated);

    // Qualifier access as for CIMProperty.
    CIMMethod& addQualifier(const CIMQualifier& x);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    // Adds a parameter; AlreadyExistsException for a duplicate name
    // (case-insensitive), UninitializedObjectException for an uninitialized
    // parameter.
    CIMMethod& addParameter(const CIMParameter& x);
    // Index of the parameter (case-insensitive), or PEG_NOT_FOUND.
    Uint32 findParameter(const CIMName& name) const;
    // Parameter at index (a live handle); IndexOutOfBoundsException when out
    // of range.
    CIMParameter getParameter(Uint32 index);
    CIMConstParameter getParameter(Uint32 index) const;
    void removeParameter(Uint32 index);
    Uint32 getParameterCount() const;

    Boolean isUninitialized() const;
    // Same name (case-insensitive), return type, qualifiers and parameters.
    Boolean identical(const CIMConstMethod& x) const;
    CIMMethod clone() const;

private:
    CIMMethod(CIMMethodRep* rep);
    CIMMethodRep* _rep;
    friend class CIMConstMethod;
    friend class CIMObjectModelAccess;
};

class PEGASUS_COMMON_LINKAGE CIMConstMethod {
public:
    CIMConstMethod();
    CIMConstMethod(const CIMConstMethod& x);
    CIMConstMethod(const CIMMethod& x);  // shares
    CIMConstMethod(const CIMName& name, CIMType type, const CIMName& classOrigin = CIMName(),
                   Boolean propagated = false);
    ~CIMConstMethod();
    CIMConstMethod& operator=(const CIMConstMethod& x);
    CIMConstMethod& operator=(const CIMMethod& x);

    const CIMName& getName() const;
    CIMType getType() const;
    const CIMName& getClassOrigin() const;
    Boolean getPropagated() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 findParameter(const CIMName& name) const;
    CIMConstParameter getParameter(Uint32 index) const;
    Uint32 getParameterCount() const;
    Boolean isUninitialized() const;
    Boolean identical(const CIMConstMethod& x) const;
    CIMMethod clone() const;

private:
    CIMMethodRep* _rep;
    friend class CIMMethod;
    friend class CIMObjectModelAccess;
};

PEGASUS_NAMESPACE_END

#endif
