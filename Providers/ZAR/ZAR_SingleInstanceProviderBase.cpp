//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SingleInstanceProviderBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SingleInstanceProviderBase.h"

#include <Pegasus/Provider/ProviderException.h>

#include "ZAR_Common.h"

PEGASUS_NAMESPACE_BEGIN

ZAR_SingleInstanceProviderBase::ZAR_SingleInstanceProviderBase(
    const String& className, const char* traceName, const char* ownClass, const char* cimClass,
    Uint32 keyCount, const char* keyCountText, const Traces& traces,
    const CIMObjectPath& instanceName)
    : ZAR_ProviderBase(className, traceName),
      _path(instanceName),
      _ownClass(ownClass),
      _cimClass(cimClass),
      _keyCount(keyCount),
      _keyCountText(keyCountText),
      _traces(traces)
{
}

void ZAR_SingleInstanceProviderBase::getInstance(const OperationContext& context,
                                                 const CIMObjectPath& instanceReference,
                                                 const Boolean includeQualifiers,
                                                 const Boolean includeClassOrigin,
                                                 const CIMPropertyList& propertyList,
                                                 InstanceResponseHandler& handler)
{
    log_message(4, "%s", _traces.getInstanceEntry);
    ZAR_Common::checkUserAccess(context, __FILE__, __LINE__);
    _checkClassName(instanceReference.getClassName(), _ownClass, _cimClass);
    _checkKeyCount(instanceReference, _keyCount, _keyCountText);

    // The keys decide: a request through the CIM superclass names the same
    // instance.
    CIMObjectPath wanted(instanceReference.getHost(), instanceReference.getNameSpace(),
                         _path.getClassName(), instanceReference.getKeyBindings());
    if (!ZAR_Common::matchObjectPath(wanted, _path))
        throw CIMObjectNotFoundException(_className + " CIM Object not found.");

    _deliverOne(handler, _buildInstance(includeQualifiers, includeClassOrigin, propertyList));
    log_message(4, "%s", _traces.getInstanceExit);
}

void ZAR_SingleInstanceProviderBase::enumerateInstances(const OperationContext& context,
                                                        const CIMObjectPath& classReference,
                                                        const Boolean includeQualifiers,
                                                        const Boolean includeClassOrigin,
                                                        const CIMPropertyList& propertyList,
                                                        InstanceResponseHandler& handler)
{
    _enumerateFrame(context, classReference, _ownClass, _cimClass, _traces.enumerateEntry,
                    _traces.enumerateExit, [&]() {
                        _deliverOne(handler, _buildInstance(includeQualifiers, includeClassOrigin,
                                                            propertyList));
                    });
}

void ZAR_SingleInstanceProviderBase::enumerateInstanceNames(const OperationContext& context,
                                                            const CIMObjectPath& classReference,
                                                            ObjectPathResponseHandler& handler)
{
    _enumerateFrame(context, classReference, _ownClass, _cimClass, _traces.namesEntry,
                    _traces.namesExit, [&]() { _deliverOne(handler, _path); });
}

PEGASUS_NAMESPACE_END
