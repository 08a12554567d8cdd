//%/////////////////////////////////////////////////////////////////////////////
// UintArgs.h: in a full CIM client library this header holds the optional
// integer argument types of the pull operations. This framework's client has
// no pull operations, so the header is an empty stub that exists only so that
// code including it (directly or through CIMClient.h) compiles.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_UintArgs_h
#define Pegasus_UintArgs_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

#endif
