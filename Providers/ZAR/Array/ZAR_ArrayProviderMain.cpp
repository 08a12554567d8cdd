//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayProviderMain.cpp: the entry point of the array module
// (libZAR_ArrayProvider): one provider object per recognised name.
//%/////////////////////////////////////////////////////////////////////////////
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMProvider.h>

#include "ZAR_InternalCacheProvider.h"
#include "ZAR_StorageSystemProvider.h"

PEGASUS_USING_PEGASUS;

// Returns a new provider for `providerName` (compared ignoring case), or 0
// for a name this module does not serve. The server owns the object and
// ends it through terminate().
extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(
    const String& providerName)
{
    if (String::equalNoCase(providerName, "ZAR_InternalCacheProvider"))
        return new ZAR_InternalCacheProvider();
    if (String::equalNoCase(providerName, "ZAR_StorageSystemProvider"))
        return new ZAR_StorageSystemProvider();
    return 0;
}
