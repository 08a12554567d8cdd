//%/////////////////////////////////////////////////////////////////////////////
// ZAR_Names.h: the names every provider module of the array uses, spelled
// once. ZAR_Common.h includes it.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_Names_h
#define ZAR_Names_h

#include <Pegasus/Common/Config.h>

PEGASUS_NAMESPACE_BEGIN

// The namespace of every class the array's providers serve.
static const char ZAR_NAMESPACE[] = "root/zar";

PEGASUS_NAMESPACE_END

#endif
