//%/////////////////////////////////////////////////////////////////////////////
// ZAR_InternalCacheProvider.h: the internal cache object, class
// ZAR_InternalCache in root/PG_Internal.
//
// One instance, InstanceID "<system name>-InternalCache". Its methods tell
// the array's providers who the system is: GetSystemName (out SystemName,
// string), GetSystemID (SystemID, uint32), GetSystemType (SystemType,
// sint32), IsQuadPortSystem (IsQuadPort, uint8), GetSystemHostName
// (SystemHostName, string) and GetSystemAddress (SystemAddress, string),
// each returning 0 and answered afresh from the array. The object is also
// reached by the path that the shared helpers build,
// InstanceID "localhost-InternalCache".
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_InternalCacheProvider_h
#define ZAR_InternalCacheProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMMethodProvider.h>

#include <zarapi.h>

#include "ZAR_SystemObjectProviderBase.h"

PEGASUS_NAMESPACE_BEGIN

class ZAR_InternalCacheProvider : public ZAR_SystemObjectProviderBase, public CIMMethodProvider {
public:
    ZAR_InternalCacheProvider();

    // Answers one of the six identity methods (names compared ignoring
    // case); any other name is refused with CIM_ERR_METHOD_NOT_FOUND.
    virtual void invokeMethod(const OperationContext& context, const CIMObjectPath& objectReference,
                              const CIMName& methodName, const Array<CIMParamValue>& inParameters,
                              MethodResultResponseHandler& handler);

protected:
    // Class ZAR_InternalCache only.
    virtual void _checkClass(const CIMObjectPath& path);
    // One key, InstanceID, of either accepted value.
    virtual void _checkInstanceName(const CIMObjectPath& path, const api_sysinfo_t& info);
    virtual CIMObjectPath _buildInstanceName(const api_sysinfo_t& info);
    virtual CIMInstance _buildInstance(const api_sysinfo_t& info, const ReadRequest& request,
                                       const char* operation);
};

PEGASUS_NAMESPACE_END

#endif
