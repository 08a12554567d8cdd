//%/////////////////////////////////////////////////////////////////////////////
// Linkage.h: PEGASUS_CLIENT_LINKAGE marks the declarations that libpegclient
// exports. It expands to PEGASUS_EXPORT while the library itself is built
// (PEGASUS_CLIENT_INTERNAL defined) and to PEGASUS_IMPORT otherwise.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Client_Linkage_h
#define Pegasus_Client_Linkage_h

#include <Pegasus/Common/Config.h>

#ifndef PEGASUS_CLIENT_LINKAGE
#ifdef PEGASUS_CLIENT_INTERNAL
#define PEGASUS_CLIENT_LINKAGE PEGASUS_EXPORT
#else
#define PEGASUS_CLIENT_LINKAGE PEGASUS_IMPORT
#endif
#endif

#endif
