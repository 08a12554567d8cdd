//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SingleInstanceProviderBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SingleInstanceProviderBase.h"

#include "ZAR_Common.h"

PEGASUS_NAMESPACE_BEGIN

ZAR_SingleInstanceProviderBase::ZAR_SingleInstanceProviderBase(
    const String& className, const char* traceName, const char* ownClass, const char* cimClass,
    Uint32 keyCount, const char* keyCountText, const Traces& traces,
    const CIMObjectPath& instanceName)
    : ZAR_InstanceListProviderBase(className, traceName, ownClass, cimClass, keyCount, keyCountText,
                                   traces),
      _path(instanceName)
{
}

Boolean ZAR_SingleInstanceProviderBase::_findInstance(
    const OperationContext&, const CIMObjectPath& instanceReference, Boolean includeQualifiers,
    Boolean includeClassOrigin, const CIMPropertyList& propertyList, CIMInstance& found)
{
    // The keys decide: a request through the CIM superclass names the same
    // instance.
    CIMObjectPath wanted(instanceReference.getHost(), instanceReference.getNameSpace(),
                         _path.getClassName(), instanceReference.getKeyBindings());
    if (!ZAR_Common::matchObjectPath(wanted, _path))
        return false;
    found = _buildInstance(includeQualifiers, includeClassOrigin, propertyList);
    return true;
}

Array<CIMInstance> ZAR_SingleInstanceProviderBase::_listInstances(
    const OperationContext&, Boolean includeQualifiers, Boolean includeClassOrigin,
    const CIMPropertyList& propertyList)
{
    Array<CIMInstance> one;
    one.append(_buildInstance(includeQualifiers, includeClassOrigin, propertyList));
    return one;
}

Array<CIMObjectPath> ZAR_SingleInstanceProviderBase::_listInstanceNames(const OperationContext&)
{
    Array<CIMObjectPath> one;
    one.append(_path);
    return one;
}

PEGASUS_NAMESPACE_END
