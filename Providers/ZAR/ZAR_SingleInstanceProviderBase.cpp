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

Boolean ZAR_SingleInstanceProviderBase::_findInstance(const ReadRequest& request,
                                                      CIMInstance& found)
{
    // The keys decide: a request through the CIM superclass names the same
    // instance.
    CIMObjectPath wanted(request.path.getHost(), request.path.getNameSpace(), _path.getClassName(),
                         request.path.getKeyBindings());
    if (!ZAR_Common::matchObjectPath(wanted, _path))
        return false;
    found =
        _buildInstance(request.includeQualifiers, request.includeClassOrigin, request.propertyList);
    return true;
}

Array<CIMInstance> ZAR_SingleInstanceProviderBase::_listInstances(const ReadRequest& request)
{
    Array<CIMInstance> one;
    one.append(_buildInstance(request.includeQualifiers, request.includeClassOrigin,
                              request.propertyList));
    return one;
}

Array<CIMObjectPath> ZAR_SingleInstanceProviderBase::_listInstanceNames(const OperationContext&)
{
    Array<CIMObjectPath> one;
    one.append(_path);
    return one;
}

PEGASUS_NAMESPACE_END
