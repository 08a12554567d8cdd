//%/////////////////////////////////////////////////////////////////////////////
// ZAR_StorageVolumeProvider.h: the array's volumes as instances of
// ZAR_StorageVolume in root/zar.
//
// Keys: SystemCreationClassName "ZAR_StorageSystem", SystemName,
// CreationClassName "ZAR_StorageVolume" and DeviceID = the volume's WWN text
// (32 upper-case hexadecimal digits). The instance also carries
// ElementName (the user's volume name), Name (the WWN, NameFormat 2 NAA),
// Access (1 readable, 3 read/write), BlockSize 512 and NumberOfBlocks from
// the volume's size, OperationalStatus and HealthState. Volumes are read in
// chunks of 200; changes are refused.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_StorageVolumeProvider_h
#define ZAR_StorageVolumeProvider_h

#include <functional>
#include <vector>

#include <ZAR_ProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_StorageVolumeProvider : public ZAR_ProviderBase {
public:
    ZAR_StorageVolumeProvider();

    // The path of the volume with WWN text `wwn` (used as given).
    static CIMObjectPath buildObjectPath(const String& host, const String& systemName,
                                         const String& wwn);

    // The instance of a volume record, built from the stored class cls.
    static CIMInstance buildInstance(CIMClass& cls, const api_vv_t& volume, const String& host,
                                     const String& systemName);

protected:
    // The volume whose WWN is the DeviceID key of the path (the whole path
    // must match); CIMInvalidParameterException without DeviceID key,
    // CIMObjectNotFoundException when there is no such volume.
    virtual void _getInstance(const ReadRequest& request, InstanceResponseHandler& handler);

    // Every volume, delivered chunk by chunk.
    virtual void _enumerateInstances(const ReadRequest& request, InstanceResponseHandler& handler);

    // The path of every volume.
    virtual void _enumerateInstanceNames(const ReadRequest& request,
                                         ObjectPathResponseHandler& handler);

private:
    // Calls sink with each chunk of volumes, in the array's order; a failed
    // read throws, naming `operation`.
    void _walkVolumes(const char* operation,
                      const std::function<void(const std::vector<api_vv_t>&)>& sink);
};

PEGASUS_NAMESPACE_END

#endif
