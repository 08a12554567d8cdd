//%/////////////////////////////////////////////////////////////////////////////
// Char16: one UTF-16 code unit. Converts implicitly from and to Uint16, so
// characters and plain integers mix freely ('a' == Char16('a')).
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Char16_h
#define Pegasus_Char16_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE Char16 {
public:
    // The code unit 0.
    Char16() : _code(0) {}

    // The code unit x (implicit).
    Char16(Uint16 x) : _code(x) {}

    Char16(const Char16& x) : _code(x._code) {}

    ~Char16() {}

    Char16& operator=(Uint16 x)
    {
        _code = x;
        return *this;
    }

    Char16& operator=(const Char16& x)
    {
        _code = x._code;
        return *this;
    }

    // The code unit as an integer (implicit).
    operator Uint16() const { return _code; }

private:
    Uint16 _code;
};

// Code-unit equality; a char is compared as its unsigned byte value.
inline Boolean operator==(const Char16& x, const Char16& y)
{
    return Uint16(x) == Uint16(y);
}
inline Boolean operator==(const Char16& x, char y)
{
    return Uint16(x) == Uint16(Uint8(y));
}
inline Boolean operator==(char x, const Char16& y)
{
    return Uint16(Uint8(x)) == Uint16(y);
}
inline Boolean operator!=(const Char16& x, const Char16& y)
{
    return !(x == y);
}
inline Boolean operator!=(const Char16& x, char y)
{
    return !(x == y);
}
inline Boolean operator!=(char x, const Char16& y)
{
    return !(x == y);
}

PEGASUS_NAMESPACE_END

#endif
