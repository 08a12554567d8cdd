//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SingleInstanceProviderBase.h: the instance operations of a class with
// exactly one instance, whose path is fixed when the provider starts (the
// configuration service, the masking capabilities and the association
// between the system and those capabilities).
//
// getInstance checks the user, the class (the provider's own or its CIM
// superclass), the number of keys, then compares the path by its keys
// (hosts ignored) with the one instance's; enumerateInstances and
// enumerateInstanceNames deliver the instance and its path. Each provider
// gives its own trace lines, which differ in small ways from one provider
// to the next.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SingleInstanceProviderBase_h
#define ZAR_SingleInstanceProviderBase_h

#include "ZAR_ProviderBase.h"

PEGASUS_NAMESPACE_BEGIN

class ZAR_SingleInstanceProviderBase : public ZAR_ProviderBase {
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
    // instanceName is the provider's member that holds the instance's path
    // once the provider has started.
    ZAR_SingleInstanceProviderBase(const String& className, const char* traceName,
                                   const char* ownClass, const char* cimClass, Uint32 keyCount,
                                   const char* keyCountText, const Traces& traces,
                                   const CIMObjectPath& instanceName);

    // The instance when the path names it (see above).
    virtual void getInstance(const OperationContext& context,
                             const CIMObjectPath& instanceReference,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList, InstanceResponseHandler& handler);

    // The one instance.
    virtual void enumerateInstances(const OperationContext& context,
                                    const CIMObjectPath& classReference,
                                    const Boolean includeQualifiers,
                                    const Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList,
                                    InstanceResponseHandler& handler);

    // Its fixed path.
    virtual void enumerateInstanceNames(const OperationContext& context,
                                        const CIMObjectPath& classReference,
                                        ObjectPathResponseHandler& handler);

protected:
    // The instance, built afresh for each request.
    virtual CIMInstance _buildInstance(bool includeQualifiers, bool includeClassOrigin,
                                       const CIMPropertyList& propertyList) = 0;

private:
    const CIMObjectPath& _path;
    const char* _ownClass;
    const char* _cimClass;
    Uint32 _keyCount;
    const char* _keyCountText;
    Traces _traces;
};

PEGASUS_NAMESPACE_END

#endif
