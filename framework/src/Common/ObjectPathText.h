// Helpers shared by CIMObjectPath and CIMKeyBinding: integer key text and
// host names.

#ifndef Pegasus_ObjectPathText_h
#define Pegasus_ObjectPathText_h

#include <Pegasus/Common/String.h>

PEGASUS_NAMESPACE_BEGIN

// Reads the whole of s as an unsigned integer: decimal without leading zeros
// ("0" alone allowed) or 0x/0X hexadecimal, no sign, within 64 bits.
bool KeyTextToUint64(const String& s, Uint64& value);

// As KeyTextToUint64 with an optional leading '-', within the signed range.
bool KeyTextToSint64(const String& s, Sint64& value);

// True if s is a number as a path's key text may hold it (either of the above).
bool KeyTextIsNumber(const String& s);

// True if host is a host name, an IPv4 address, either followed by ":port".
bool HostIsValid(const String& host);

PEGASUS_NAMESPACE_END

#endif
