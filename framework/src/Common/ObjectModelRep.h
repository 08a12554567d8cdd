// The objects behind the object model's shared handles, and the lists that
// hold qualifiers, properties, methods and parameters. Internal to
// libpegcommon: the handles in Pegasus/Common/CIM*.h point at these reps and
// CIMObjectModelAccess reaches their private rep pointers.
#ifndef Pegasus_Common_ObjectModelRep_h
#define Pegasus_Common_ObjectModelRep_h

#include <vector>

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMParameter.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Exception.h>

#include "Common/RefCounted.h"

PEGASUS_NAMESPACE_BEGIN

// Throws UninitializedObjectException when rep is null.
template <class R>
inline R* CheckRep(R* rep)
{
    if (!rep)
        throw UninitializedObjectException();
    return rep;
}

// Ordered list of qualifiers with unique names (ASCII case-insensitive).
class CIMQualifierList {
public:
    // UninitializedObjectException for an uninitialized qualifier,
    // AlreadyExistsException ("qualifier "<name>"") for a duplicate.
    void add(const CIMQualifier& qualifier);
    Uint32 find(const CIMName& name) const;
    // IndexOutOfBoundsException when out of range.
    const CIMQualifier& get(Uint32 index) const;
    void remove(Uint32 index);
    Uint32 size() const { return Uint32(_items.size()); }
    void clear() { _items.clear(); }
    // Deep copy into target (which must be empty).
    void cloneTo(CIMQualifierList& target) const;
    // Same names with identical qualifiers, in any order.
    Boolean identical(const CIMQualifierList& x) const;
    // True iff a qualifier of that name holds the non-null Boolean true.
    Boolean isTrue(const CIMName& name) const;

private:
    std::vector<CIMQualifier> _items;
};

class CIMQualifierRep : public RefCounted {
public:
    CIMName name;
    CIMValue value;
    CIMFlavor flavor;
    Boolean propagated;
};

class CIMPropertyRep : public RefCounted {
public:
    CIMName name;
    CIMValue value;
    Uint32 arraySize;
    CIMName referenceClassName;
    CIMName classOrigin;
    Boolean propagated;
    CIMQualifierList qualifiers;
    // Number of classes or instances holding this property.
    Uint32 ownerCount = 0;

    CIMPropertyRep* clone() const;
    Boolean identical(const CIMPropertyRep* x) const;
    // True iff the property carries the qualifier Key with value true.
    Boolean isKey() const { return qualifiers.isTrue(CIMNameKey()); }

private:
    static const CIMName& CIMNameKey();
};

class CIMParameterRep : public RefCounted {
public:
    CIMName name;
    CIMType type;
    Boolean isArray;
    Uint32 arraySize;
    CIMName referenceClassName;
    CIMQualifierList qualifiers;
    Uint32 ownerCount = 0;

    CIMParameterRep* clone() const;
    Boolean identical(const CIMParameterRep* x) const;
};

class CIMObjectModelAccess;

// Ordered list of properties, methods or parameters with unique names. It
// holds the elements themselves (shared handles) and counts itself as their
// owner, which forbids renaming them while they belong to it.
template <class Handle>
class OwnedList {
public:
    OwnedList() {}
    ~OwnedList();
    Uint32 find(const CIMName& name) const;
    // Appends without checks (callers check uninitialized and duplicates).
    void append(const Handle& element);
    // IndexOutOfBoundsException when out of range.
    const Handle& get(Uint32 index) const;
    void remove(Uint32 index);
    Uint32 size() const { return Uint32(_items.size()); }
    void clear();

private:
    OwnedList(const OwnedList&);
    OwnedList& operator=(const OwnedList&);
    std::vector<Handle> _items;
};

class CIMMethodRep : public RefCounted {
public:
    CIMName name;
    CIMType type;
    CIMName classOrigin;
    Boolean propagated;
    CIMQualifierList qualifiers;
    OwnedList<CIMParameter> parameters;
    Uint32 ownerCount = 0;

    CIMMethodRep* clone() const;
    Boolean identical(const CIMMethodRep* x) const;
};

// What classes and instances have in common.
class CIMObjectRep : public RefCounted {
public:
    CIMObjectPath reference;
    CIMQualifierList qualifiers;
    OwnedList<CIMProperty> properties;

    const CIMName& getClassName() const { return reference.getClassName(); }
    virtual Boolean isClass() const = 0;
    virtual CIMObjectRep* clone() const = 0;
    virtual void setPath(const CIMObjectPath& path);
    // UninitializedObjectException, AlreadyExistsException
    // ("property "<name>""), plus the checks of the subclass.
    virtual void addProperty(const CIMProperty& property);
    virtual Boolean identical(const CIMObjectRep* x) const;
    // Drops qualifiers, class origins and properties (see instanceFilter).
    void filter(Boolean includeQualifiers, Boolean includeClassOrigin,
                const CIMPropertyList& propertyList);

protected:
    // Deep copy of path, qualifiers and properties into target.
    void cloneTo(CIMObjectRep* target) const;
};

class CIMClassRep : public CIMObjectRep {
public:
    CIMName superClassName;
    OwnedList<CIMMethod> methods;

    virtual Boolean isClass() const { return true; }
    virtual CIMObjectRep* clone() const;
    // Also TypeMismatchException for a reference without reference class.
    virtual void addProperty(const CIMProperty& property);
    virtual Boolean identical(const CIMObjectRep* x) const;
    void addMethod(const CIMMethod& method);
    void getKeyNames(Array<CIMName>& keyNames) const;
    CIMInstance buildInstance(Boolean includeQualifiers, Boolean includeClassOrigin,
                              const CIMPropertyList& propertyList) const;
};

class CIMInstanceRep : public CIMObjectRep {
public:
    virtual Boolean isClass() const { return false; }
    virtual CIMObjectRep* clone() const;
    // Checks the path's class name (see CIMInstance::setPath).
    virtual void setPath(const CIMObjectPath& path);
    CIMObjectPath buildPath(const CIMClassRep* cimClass) const;
};

class CIMParamValueRep : public RefCounted {
public:
    String name;
    CIMValue value;
    Boolean isTyped;
};

// Reaches the private rep pointers of the handles, and makes handles that
// adopt a new rep (taking over its initial reference).
class CIMObjectModelAccess {
public:
    static CIMQualifierRep* rep(const CIMQualifier& x) { return x._rep; }
    static CIMQualifierRep* rep(const CIMConstQualifier& x) { return x._rep; }
    static CIMPropertyRep* rep(const CIMProperty& x) { return x._rep; }
    static CIMPropertyRep* rep(const CIMConstProperty& x) { return x._rep; }
    static CIMParameterRep* rep(const CIMParameter& x) { return x._rep; }
    static CIMParameterRep* rep(const CIMConstParameter& x) { return x._rep; }
    static CIMMethodRep* rep(const CIMMethod& x) { return x._rep; }
    static CIMMethodRep* rep(const CIMConstMethod& x) { return x._rep; }
    static CIMObjectRep* rep(const CIMObject& x) { return x._rep; }
    static CIMObjectRep* rep(const CIMConstObject& x) { return x._rep; }
    static CIMClassRep* rep(const CIMClass& x) { return x._rep; }
    static CIMClassRep* rep(const CIMConstClass& x) { return x._rep; }
    static CIMInstanceRep* rep(const CIMInstance& x) { return x._rep; }
    static CIMInstanceRep* rep(const CIMConstInstance& x) { return x._rep; }
    static CIMParamValueRep* rep(const CIMParamValue& x) { return x._rep; }

    static CIMQualifier adopt(CIMQualifierRep* r) { return CIMQualifier(r); }
    static CIMProperty adopt(CIMPropertyRep* r) { return CIMProperty(r); }
    static CIMParameter adopt(CIMParameterRep* r) { return CIMParameter(r); }
    static CIMMethod adopt(CIMMethodRep* r) { return CIMMethod(r); }
    static CIMObject adopt(CIMObjectRep* r) { return CIMObject(r); }
    static CIMClass adopt(CIMClassRep* r) { return CIMClass(r); }
    static CIMInstance adopt(CIMInstanceRep* r) { return CIMInstance(r); }
    static CIMParamValue adopt(CIMParamValueRep* r) { return CIMParamValue(r); }
};

template <class Handle>
OwnedList<Handle>::~OwnedList()
{
    clear();
}

template <class Handle>
Uint32 OwnedList<Handle>::find(const CIMName& name) const
{
    for (size_t i = 0; i < _items.size(); i++) {
        if (CIMObjectModelAccess::rep(_items[i])->name.equal(name))
            return Uint32(i);
    }
    return PEG_NOT_FOUND;
}

template <class Handle>
void OwnedList<Handle>::append(const Handle& element)
{
    _items.push_back(element);
    CIMObjectModelAccess::rep(element)->ownerCount++;
}

template <class Handle>
const Handle& OwnedList<Handle>::get(Uint32 index) const
{
    if (index >= _items.size())
        throw IndexOutOfBoundsException();
    return _items[index];
}

template <class Handle>
void OwnedList<Handle>::remove(Uint32 index)
{
    if (index >= _items.size())
        throw IndexOutOfBoundsException();
    CIMObjectModelAccess::rep(_items[index])->ownerCount--;
    _items.erase(_items.begin() + index);
}

template <class Handle>
void OwnedList<Handle>::clear()
{
    for (size_t i = 0; i < _items.size(); i++)
        CIMObjectModelAccess::rep(_items[i])->ownerCount--;
    _items.clear();
}

PEGASUS_NAMESPACE_END

#endif
