//%/////////////////////////////////////////////////////////////////////////////
// CIMQualifier / CIMConstQualifier: a named, typed qualifier value with its
// flavor, as carried by classes, instances, properties, methods and
// parameters.
//
// Shared handle: copies refer to the same qualifier; clone() makes an
// independent copy. A default-constructed handle is uninitialized and every
// member except isUninitialized() throws UninitializedObjectException.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Qualifier_h
#define Pegasus_Qualifier_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/Array.h>

PEGASUS_NAMESPACE_BEGIN

class CIMValue;
class CIMConstQualifier;

class CIMQualifierRep;

class PEGASUS_COMMON_LINKAGE CIMQualifier {
public:
    // Uninitialized handle.
    CIMQualifier();
    CIMQualifier(const CIMQualifier& x);  // shares
    // A new qualifier; a null name throws UninitializedObjectException.
    CIMQualifier(const CIMName& name, const CIMValue& value,
                 const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE), Boolean propagated = false);
    ~CIMQualifier();
    CIMQualifier& operator=(const CIMQualifier& x);  // shares

    const CIMName& getName() const;
    // Renames; a null name throws UninitializedObjectException.
    void setName(const CIMName& name);
    // Type and array-ness of the value.
    CIMType getType() const;
    Boolean isArray() const;
    const CIMValue& getValue() const;
    // Replaces the value (any type).
    void setValue(const CIMValue& value);
    // Adds (setFlavor) or clears (unsetFlavor) flavor bits.
    void setFlavor(const CIMFlavor& flavor);
    void unsetFlavor(const CIMFlavor& flavor);
    const CIMFlavor& getFlavor() const;
    // 1 if the qualifier was propagated from a superclass or class, else 0.
    Uint32 getPropagated() const;
    void setPropagated(Boolean propagated);
    Boolean isUninitialized() const;
    // Same name (case-insensitive), value, flavor and propagated flag.
    Boolean identical(const CIMConstQualifier& x) const;
    CIMQualifier clone() const;

private:
    CIMQualifier(CIMQualifierRep* rep);
    CIMQualifierRep* _rep;
    friend class CIMConstQualifier;
    friend class CIMObjectModelAccess;
};

class PEGASUS_COMMON_LINKAGE CIMConstQualifier {
public:
    CIMConstQualifier();
    CIMConstQualifier(const CIMConstQualifier& x);
    CIMConstQualifier(const CIMQualifier& x);  // shares
    CIMConstQualifier(const CIMName& name, const CIMValue& value,
                      const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE),
                      Boolean propagated = false);
    ~CIMConstQualifier();
    CIMConstQualifier& operator=(const CIMConstQualifier& x);
    CIMConstQualifier& operator=(const CIMQualifier& x);

    const CIMName& getName() const;
    CIMType getType() const;
    Boolean isArray() const;
    const CIMValue& getValue() const;
    const CIMFlavor& getFlavor() const;
    Uint32 getPropagated() const;
    Boolean isUninitialized() const;
    Boolean identical(const CIMConstQualifier& x) const;
    CIMQualifier clone() const;

private:
    CIMQualifierRep* _rep;
    friend class CIMQualifier;
    friend class CIMObjectModelAccess;
};

PEGASUS_NAMESPACE_END

#include <Pegasus/Common/CIMValue.h>

#endif
