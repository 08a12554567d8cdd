//%/////////////////////////////////////////////////////////////////////////////
// UintArgs.h: optional unsigned integer arguments of the pull operations
// (an operation timeout the client may leave to the server, an enumeration
// count the server may not know). A default-constructed argument is null;
// getValue() of a null argument returns 0.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_UintArgs_h
#define Pegasus_UintArgs_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE Uint32Arg {
public:
    Uint32Arg();
    Uint32Arg(const Uint32Arg& x);
    Uint32Arg(Uint32 x);
    ~Uint32Arg();
    Uint32Arg& operator=(const Uint32Arg& x);

    const Uint32& getValue() const;
    // Sets the value; the argument is no longer null.
    void setValue(Uint32 x);
    Boolean isNull() const;
    // Makes the argument null (its value 0).
    void setNullValue();
    // The decimal value, or "NULL".
    String toString();
    Boolean equal(const Uint32Arg& x) const;

private:
    Uint32 _value;
    Boolean _null;
};

class PEGASUS_COMMON_LINKAGE Uint64Arg {
public:
    Uint64Arg();
    Uint64Arg(const Uint64Arg& x);
    Uint64Arg(Uint64 x);
    ~Uint64Arg();
    Uint64Arg& operator=(const Uint64Arg& x);

    const Uint64& getValue() const;
    void setValue(Uint64 x);
    Boolean isNull() const;
    void setNullValue();
    String toString();
    Boolean equal(const Uint64Arg& x) const;

private:
    Uint64 _value;
    Boolean _null;
};

// Equal when both are null, or both hold the same value.
PEGASUS_COMMON_LINKAGE Boolean operator==(const Uint32Arg& x, const Uint32Arg& y);
PEGASUS_COMMON_LINKAGE Boolean operator==(const Uint64Arg& x, const Uint64Arg& y);

PEGASUS_NAMESPACE_END

#endif
