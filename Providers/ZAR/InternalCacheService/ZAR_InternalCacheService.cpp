//%/////////////////////////////////////////////////////////////////////////////
// ZAR_InternalCacheService.cpp: stored CIM classes and the policy word.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_InternalCacheService.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>

#include <zarapi.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

// Appends the UTF-8 form of `s`, folded to lower case, and a separator that
// cannot occur inside a CIM name.
void _appendFolded(std::string& key, const String& s)
{
    CString utf8 = s.getCString();
    for (const char* p = (const char*)utf8; *p; ++p) {
        char c = *p;
        if (c >= 'A' && c <= 'Z')
            c = (char)(c - 'A' + 'a');
        key += c;
    }
    key += '\x01';
}

// One cache key per namespace, class, flags and property list. A null
// property list (all properties) and an empty one (no properties) differ.
std::string _makeKey(const CIMNamespaceName& nameSpace, const CIMName& className, Boolean localOnly,
                     Boolean includeQualifiers, Boolean includeClassOrigin,
                     const CIMPropertyList& propertyList)
{
    std::string key;
    _appendFolded(key, nameSpace.getString());
    _appendFolded(key, className.getString());
    key += localOnly ? 'L' : 'l';
    key += includeQualifiers ? 'Q' : 'q';
    key += includeClassOrigin ? 'O' : 'o';
    if (propertyList.isNull()) {
        key += 'N';
    } else {
        key += 'P';
        for (Uint32 i = 0; i < propertyList.size(); i++)
            _appendFolded(key, propertyList[i].getString());
    }
    return key;
}

// The policy word of the array's configuration; 0 when it cannot be read.
Uint32 _readConfiguredPolicy()
{
    zar_u32 policy = 0;
    if (cim_sem_wait() != 0) {
        log_message(2,
                    "ZAR_InternalCacheService: Semaphore Timed-Out while "
                    "reading the policy word, using 0\n");
        return 0;
    }
    int rc = api_getPolicy(&policy);
    cim_sem_post();
    if (rc != 0) {
        log_message(2,
                    "ZAR_InternalCacheService: api_getPolicy failed, "
                    "status = %d, using 0\n",
                    rc);
        return 0;
    }
    log_message(4, "ZAR_InternalCacheService: policy word = 0x%x\n", (unsigned)policy);
    return policy;
}

}  // namespace

struct ZAR_InternalCacheService::Rep {
    std::mutex lock;                          // guards classes
    std::map<std::string, CIMClass> classes;  // never handed out uncloned
    std::atomic<Uint32> policy{0};
};

ZAR_InternalCacheService::ZAR_InternalCacheService() : _rep(new Rep)
{
    _rep->policy = _readConfiguredPolicy();
}

ZAR_InternalCacheService::~ZAR_InternalCacheService()
{
    delete _rep;
}

ZAR_InternalCacheService* ZAR_InternalCacheService::getInstance()
{
    // Created once, on first use, and kept until the process ends: providers
    // of several modules may still reach it while their libraries unload.
    static ZAR_InternalCacheService* service = new ZAR_InternalCacheService();
    return service;
}

CIMClass ZAR_InternalCacheService::getStoredCIMClass(
    CIMOMHandle& handle, const OperationContext& context, const CIMNamespaceName& nameSpace,
    const CIMName& className, Boolean localOnly, Boolean includeQualifiers,
    Boolean includeClassOrigin, const CIMPropertyList& propertyList)
{
    const std::string key = _makeKey(nameSpace, className, localOnly, includeQualifiers,
                                     includeClassOrigin, propertyList);
    {
        std::lock_guard<std::mutex> guard(_rep->lock);
        std::map<std::string, CIMClass>::iterator it = _rep->classes.find(key);
        if (it != _rep->classes.end())
            return it->second.clone();
    }

    // Asked without the lock: the server may call back into providers that
    // use this service while it answers.
    CIMClass fetched = handle.getClass(context, nameSpace, className, localOnly, includeQualifiers,
                                       includeClassOrigin, propertyList);

    std::lock_guard<std::mutex> guard(_rep->lock);
    std::pair<std::map<std::string, CIMClass>::iterator, bool> ins =
        _rep->classes.insert(std::make_pair(key, fetched.clone()));
    return ins.first->second.clone();
}

Uint32 ZAR_InternalCacheService::getPolicy() const
{
    return _rep->policy.load();
}

void ZAR_InternalCacheService::setPolicy(Uint32 policy)
{
    _rep->policy.store(policy);
}

PEGASUS_NAMESPACE_END
