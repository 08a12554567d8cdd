//%/////////////////////////////////////////////////////////////////////////////
// ZAR_InternalCacheService.h: the process-wide internal cache service of the
// array's provider modules.
//
// One object per process holds what every provider of the array would
// otherwise fetch again on each request: the CIM classes stored in the
// server's repository (from which instances are built) and the policy word
// that tunes how the masking methods behave.
//
// Policy bits:
//   0x4  one hardware ID per view: ExposePaths creates one host per initiator
//        instead of one host holding all the initiators of the call.
// The initial policy word is read once, when the service is first created,
// from the array's configuration through the array library, so that an
// administrator can set it with zarcli; it is 0 when the array holds none.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_InternalCacheService_h
#define ZAR_InternalCacheService_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Provider/CIMOMHandle.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_InternalCacheService {
public:
    // Returns the process-wide service, creating it (and reading the initial
    // policy word from the array) on the first call. Never returns 0; the
    // object lives until the process ends. Safe to call from any thread.
    static ZAR_InternalCacheService* getInstance();

    // Returns the class `className` of `nameSpace` as the server's repository
    // holds it, asked through `handle.getClass` with the given flags and
    // property list on the first request and answered from the cache after
    // that (one entry per namespace, class, flags and property list; names
    // compared ignoring case). The returned class is a copy of its own: the
    // caller may change it without touching the cache. Failures of the
    // handle, such as an unknown class, propagate unchanged and are not
    // cached. Thread-safe; the handle is called without any lock held.
    CIMClass getStoredCIMClass(CIMOMHandle& handle, const OperationContext& context,
                               const CIMNamespaceName& nameSpace, const CIMName& className,
                               Boolean localOnly, Boolean includeQualifiers,
                               Boolean includeClassOrigin, const CIMPropertyList& propertyList);

    // Returns the current policy word (see the bits above).
    Uint32 getPolicy() const;

    // Replaces the policy word for this process; the array's configuration
    // is not changed.
    void setPolicy(Uint32 policy);

private:
    ZAR_InternalCacheService();
    ~ZAR_InternalCacheService();
    ZAR_InternalCacheService(const ZAR_InternalCacheService&);
    ZAR_InternalCacheService& operator=(const ZAR_InternalCacheService&);

    struct Rep;
    Rep* _rep;
};

PEGASUS_NAMESPACE_END

#endif
