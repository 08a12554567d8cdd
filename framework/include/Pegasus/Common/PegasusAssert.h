//%/////////////////////////////////////////////////////////////////////////////
// PegasusAssert.h: PEGASUS_ASSERT(COND) checks an internal invariant in builds
// without NDEBUG and compiles to nothing otherwise. PEGASUS_DEBUG_ASSERT is
// the same.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Assert_h
#define Pegasus_Assert_h

#include <cassert>

#if defined(NDEBUG) || defined(PEGASUS_NOASSERTS)
#define PEGASUS_ASSERT(COND) ((void)0)
#else
#define PEGASUS_ASSERT(COND) assert(COND)
#endif

#define PEGASUS_DEBUG_ASSERT(COND) PEGASUS_ASSERT(COND)

#endif
