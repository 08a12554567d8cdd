//%/////////////////////////////////////////////////////////////////////////////
// CIMPropertyList: the property names a client asked for.
//
// A NULL list (default constructor, clear()) means "all properties"; a list
// built from an array, even an empty one, is not NULL and means "exactly
// these" (an empty list: no properties at all). Both have size() 0; only
// isNull() tells them apart. Value semantics: copies are independent.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMPropertyList_h
#define Pegasus_CIMPropertyList_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>

PEGASUS_NAMESPACE_BEGIN

class CIMPropertyListRep;

class PEGASUS_COMMON_LINKAGE CIMPropertyList {
public:
    // A NULL list (all properties).
    CIMPropertyList();
    CIMPropertyList(const CIMPropertyList& x);
    // A non-NULL list of these names; a null CIMName in the array throws
    // UninitializedObjectException.
    CIMPropertyList(const Array<CIMName>& propertyNames);
    ~CIMPropertyList();

    // Replaces the names and makes the list non-NULL (same check as the
    // constructor).
    void set(const Array<CIMName>& propertyNames);
    CIMPropertyList& operator=(const CIMPropertyList& x);
    // Back to NULL.
    void clear();
    Boolean isNull() const;
    // Number of names; 0 for a NULL list.
    Uint32 size() const;
    // Name at index; IndexOutOfBoundsException when out of range.
    const CIMName& operator[](Uint32 index) const;
    Array<CIMName> getPropertyNameArray() const;
    // Tag of the name at index: a number derived from the case-folded name,
    // equal for names that compare equal. IndexOutOfBoundsException when out
    // of range.
    Uint32 getCIMNameTag(Uint32 index) const;
    // Appends each string as a name (validated as CIMName) and makes the list
    // non-NULL.
    void append(Array<String>& propertyListArray);
    // Replaces the tag of the next name that has none (names appended
    // before their tags); extra tags are ignored.
    void appendCIMNameTag(Uint32 nameTag);
    // True iff the list holds the name (case-insensitive); false when NULL.
    Boolean contains(const CIMName& name) const;
    // True if the list is NULL or contains the name.
    Boolean useThisProperty(const CIMName& name) const;
    // "NULL", "EMPTY", or the names separated by ", ".
    String toString() const;

private:
    CIMPropertyListRep* _rep;
};

PEGASUS_NAMESPACE_END

#endif
