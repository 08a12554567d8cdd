//%/////////////////////////////////////////////////////////////////////////////
// Linkage.h: PEGASUS_COMMON_LINKAGE marks the declarations that libpegcommon
// exports. It expands to PEGASUS_EXPORT while the library itself is built
// (PEGASUS_COMMON_INTERNAL defined) and to PEGASUS_IMPORT otherwise.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Common_Linkage_h
#define Pegasus_Common_Linkage_h

#include <Pegasus/Common/Config.h>

#ifndef PEGASUS_COMMON_LINKAGE
#ifdef PEGASUS_COMMON_INTERNAL
#define PEGASUS_COMMON_LINKAGE PEGASUS_EXPORT
#else
#define PEGASUS_COMMON_LINKAGE PEGASUS_IMPORT
#endif
#endif

#endif
