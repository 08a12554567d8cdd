//%/////////////////////////////////////////////////////////////////////////////
// CIMOMHandleHost: what a CIM server does with the CIMOMHandles it gives its
// providers.
//
// An extension of this framework with no OpenPegasus counterpart; provider
// code never includes it. The server (or a test) creates the handle it
// passes to a provider's initialize() and later asks it whether the provider
// may be unloaded.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZARFRAMEWORK_CIMOMHANDLEHOST_H
#define ZARFRAMEWORK_CIMOMHANDLEHOST_H

#include <Pegasus/Common/Config.h>
#include <zarframework/CIMOperationHost.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Provider/CIMOMHandle.h>

PEGASUS_NAMESPACE_BEGIN

// A new handle (with its own unload count) whose calls go to host, whatever
// host is registered with setLocalOperationHost(). host must outlive the
// handle and its copies.
PEGASUS_PROVIDER_LINKAGE CIMOMHandle createCIMOMHandle(CIMOperationHost& host);

// False while disallowProviderUnload() has been called through handle or one
// of its copies more often than allowProviderUnload().
PEGASUS_PROVIDER_LINKAGE Boolean isProviderUnloadAllowed(const CIMOMHandle& handle);

PEGASUS_NAMESPACE_END

#endif
