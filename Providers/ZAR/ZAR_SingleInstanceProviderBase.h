//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SingleInstanceProviderBase.h: a class with exactly one instance,
// whose path is fixed when the provider starts (the configuration service,
// the masking capabilities and the association between the system and
// those capabilities). A path names the instance when its keys match the
// fixed path's (hosts ignored), whatever class of the two it names.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SingleInstanceProviderBase_h
#define ZAR_SingleInstanceProviderBase_h

#include "ZAR_InstanceListProviderBase.h"

PEGASUS_NAMESPACE_BEGIN

class ZAR_SingleInstanceProviderBase : public ZAR_InstanceListProviderBase {
public:
    // As ZAR_InstanceListProviderBase; instanceName is the provider's
    // member that holds the instance's path once the provider has started.
    ZAR_SingleInstanceProviderBase(const String& className, const char* traceName,
                                   const char* ownClass, const char* cimClass, Uint32 keyCount,
                                   const char* keyCountText, const Traces& traces,
                                   const CIMObjectPath& instanceName);

protected:
    // The instance, built afresh for each request.
    virtual CIMInstance _buildInstance(bool includeQualifiers, bool includeClassOrigin,
                                       const CIMPropertyList& propertyList) = 0;

    virtual Boolean _findInstance(const ReadRequest& request, CIMInstance& found);
    virtual Array<CIMInstance> _listInstances(const ReadRequest& request);
    virtual Array<CIMObjectPath> _listInstanceNames(const OperationContext& context);

private:
    const CIMObjectPath& _path;
};

PEGASUS_NAMESPACE_END

#endif
