//%/////////////////////////////////////////////////////////////////////////////
// ZAR_StorageSystemProvider.h: the storage array itself, class
// ZAR_StorageSystem (a CIM_ComputerSystem) in root/zar.
//
// One instance, keyed by CreationClassName "ZAR_StorageSystem" and Name =
// the array's system name, built afresh from the array on each request:
// ElementName, Description, NameFormat, OperationalStatus and
// StatusDescriptions (from the live controller nodes), HealthState,
// EnabledState, Dedicated (storage, block server), PrimaryOwnerName,
// PrimaryOwnerContact, and OtherIdentifyingInfo with
// IdentifyingDescriptions (host name, IPv4 and IPv6 addresses, serial
// number). The object paths carry the array's management host name.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_StorageSystemProvider_h
#define ZAR_StorageSystemProvider_h

#include <Pegasus/Common/Config.h>

#include <zarapi.h>

#include "ZAR_SystemObjectProviderBase.h"

PEGASUS_NAMESPACE_BEGIN

class ZAR_StorageSystemProvider : public ZAR_SystemObjectProviderBase {
public:
    ZAR_StorageSystemProvider();

    // The path of the system instance: host `host`, namespace root/zar,
    // keys CreationClassName "ZAR_StorageSystem" and Name `systemName`.
    static CIMObjectPath buildObjectPath(const String& host, const String& systemName);

protected:
    // ZAR_StorageSystem, CIM_ComputerSystem or CIM_System.
    virtual void _checkClass(const CIMObjectPath& path);
    // Two keys: CreationClassName "ZAR_StorageSystem" (any case) and Name
    // equal to the system name.
    virtual void _checkInstanceName(const CIMObjectPath& path, const api_sysinfo_t& info);
    virtual CIMObjectPath _buildInstanceName(const api_sysinfo_t& info);
    virtual CIMInstance _buildInstance(const api_sysinfo_t& info, const ReadRequest& request,
                                       const char* operation);
};

PEGASUS_NAMESPACE_END

#endif
