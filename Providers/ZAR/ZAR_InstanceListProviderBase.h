//%/////////////////////////////////////////////////////////////////////////////
// ZAR_InstanceListProviderBase.h: the instance operations of a provider
// whose instances are listed whole for each request rather than walked
// from array records: a class with one fixed instance
// (ZAR_SingleInstanceProviderBase), or the associations between the
// configuration service and each view.
//
// getInstance checks the user, the class (the provider's own or its CIM
// superclass) and the number of keys, then asks _findInstance;
// enumerateInstances and enumerateInstanceNames deliver the lists. Each
// provider gives its own trace lines, which differ in small ways from one
// provider to the next.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_InstanceListProviderBase_h
#define ZAR_InstanceListProviderBase_h

#include "ZAR_ProviderBase.h"

PEGASUS_NAMESPACE_BEGIN

class ZAR_InstanceListProviderBase : public ZAR_ProviderBase {
public:
    // The level-4 entry and exit lines of the three operations.
    struct Traces {
        const char* getInstanceEntry;
        const char* getInstanceExit;
        const char* enumerateEntry;
        const char* enumerateExit;
        const char* namesEntry;
        const char* namesExit;
    };

    // ownClass and cimClass are the class names a request may use;
    // keyCount keys are expected, else "<ClassName><keyCountText>".
    ZAR_InstanceListProviderBase(const String& className, const char* traceName,
                                 const char* ownClass, const char* cimClass, Uint32 keyCount,
                                 const char* keyCountText, const Traces& traces);

protected:
    // The instance _findInstance finds, or CIMObjectNotFoundException.
    virtual void _getInstance(const ReadRequest& request, InstanceResponseHandler& handler);

    // The instances _listInstances gives.
    virtual void _enumerateInstances(const ReadRequest& request, InstanceResponseHandler& handler);

    // The paths _listInstanceNames gives.
    virtual void _enumerateInstanceNames(const ReadRequest& request,
                                         ObjectPathResponseHandler& handler);

    // The instance a checked path names, into found; false when none.
    virtual Boolean _findInstance(const ReadRequest& request, CIMInstance& found) = 0;

    virtual Array<CIMInstance> _listInstances(const ReadRequest& request) = 0;

    virtual Array<CIMObjectPath> _listInstanceNames(const OperationContext& context) = 0;

private:
    const char* _ownClass;
    const char* _cimClass;
    Uint32 _keyCount;
    const char* _keyCountText;
    Traces _traces;
};

PEGASUS_NAMESPACE_END

#endif
