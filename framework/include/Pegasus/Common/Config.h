//%/////////////////////////////////////////////////////////////////////////////
// Config.h: namespace and linkage macros, the fixed-size scalar types and the
// system headers every framework header brings in.
//
// A build may define a PEGASUS_PLATFORM_<name> macro (as an OpenPegasus build
// does); it is accepted but not required. Only the Linux/GCC values are given.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Config_h
#define Pegasus_Config_h

#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <limits.h>
#include <sys/param.h>
#include <features.h>
#include <cstdlib>

#define PEGASUS_NAMESPACE_BEGIN namespace Pegasus {
#define PEGASUS_NAMESPACE_END }
#define PEGASUS_NAMESPACE(X) Pegasus::X
#define PEGASUS_STD(X) std::X
#define PEGASUS_USING_STD using namespace std
#define PEGASUS_USING_PEGASUS using namespace Pegasus

#define PEGASUS_EXPORT __attribute__((visibility("default")))
#define PEGASUS_IMPORT __attribute__((visibility("default")))
#define PEGASUS_HIDDEN_LINKAGE __attribute__((visibility("hidden")))

// No explicit keyword on this platform, as in the OpenPegasus Linux build.
#define PEGASUS_EXPLICIT
#define PEGASUS_TEMPLATE_SPECIALIZATION template <>
#define PEGASUS_SINT64_LITERAL(X) (Sint64(X##LL))
#define PEGASUS_UINT64_LITERAL(X) (Uint64(X##ULL))
// printf/scanf length modifier for 64-bit integers: "%" PEGASUS_64BIT_CONVERSION_WIDTH "u".
#define PEGASUS_64BIT_CONVERSION_WIDTH "ll"
#define PEGASUS_FORMAT(A1, A2) __attribute__((format(printf, A1, A2)))

// Interfaces marked experimental or deprecated are always declared.
#ifndef PEGASUS_USE_EXPERIMENTAL_INTERFACES
#define PEGASUS_USE_EXPERIMENTAL_INTERFACES
#endif
#ifndef PEGASUS_USE_DEPRECATED_INTERFACES
#define PEGASUS_USE_DEPRECATED_INTERFACES
#endif

PEGASUS_NAMESPACE_BEGIN

typedef bool Boolean;
typedef unsigned char Uint8;
typedef signed char Sint8;
typedef unsigned short Uint16;
typedef signed short Sint16;
typedef unsigned int Uint32;
typedef signed int Sint32;
typedef float Real32;
typedef double Real64;
// Deliberately long long, not int64_t (long on LP64): overload resolution of
// CIMValue and friends depends on it.
typedef unsigned long long Uint64;
typedef long long Sint64;

// Returned by find functions when nothing matches.
#define PEG_NOT_FOUND Uint32(-1)

PEGASUS_NAMESPACE_END

#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Client/Linkage.h>

#endif
