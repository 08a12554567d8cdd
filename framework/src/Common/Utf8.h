// UTF-8 <-> UTF-16 conversion used by String.

#ifndef Pegasus_Utf8_h
#define Pegasus_Utf8_h

#include <Pegasus/Common/Config.h>

PEGASUS_NAMESPACE_BEGIN

// Decodes n bytes of UTF-8 into out (room for n units) and returns the number
// of UTF-16 units written. Invalid input throws Exception("The byte sequence
// starting at index <i> is not valid UTF-8 encoding: 0x.. 0x..").
Uint32 Utf8Decode(const char* s, Uint32 n, Uint16* out);

// A new[]-allocated, 0-terminated UTF-8 copy of n UTF-16 units. A lone
// surrogate is encoded as its own three-byte sequence.
char* Utf8Encode(const Uint16* p, Uint32 n);

PEGASUS_NAMESPACE_END

#endif
