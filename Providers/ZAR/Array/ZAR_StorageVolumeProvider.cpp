//%/////////////////////////////////////////////////////////////////////////////
// ZAR_StorageVolumeProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_StorageVolumeProvider.h"

#include <vector>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

#include <ZAR_ArrayRecords.h>

PEGASUS_NAMESPACE_BEGIN

static const String ClassName = "ZAR_StorageVolumeProvider";

namespace {

const Uint32 VOLUME_CHUNK = 200;
const Uint64 BLOCK_SIZE = 512;

}  // namespace

ZAR_StorageVolumeProvider::ZAR_StorageVolumeProvider() : ZAR_ProviderBase(ClassName) {}

CIMObjectPath ZAR_StorageVolumeProvider::buildObjectPath(const String& host,
                                                         const String& systemName,
                                                         const String& wwn)
{
    return ZAR_Common::buildSystemScopedPath(host, systemName, CIMName(ZAR_STORAGE_VOLUME),
                                             "DeviceID", wwn);
}

CIMInstance ZAR_StorageVolumeProvider::buildInstance(CIMClass& cls, const api_vv_t& volume,
                                                     const String& host, const String& systemName)
{
    String wwn = ZAR_ArrayRecords::field(volume.name, sizeof(volume.name));
    String elementName = ZAR_ArrayRecords::field(volume.elementName, sizeof(volume.elementName));

    // Access: 1 readable, 2 writeable, 3 read/write, as the array's modes.
    Uint16 access = 0;
    if (volume.access == VOL_MODE_READ || volume.access == VOL_MODE_WRITE ||
        volume.access == VOL_MODE_READWRITE) {
        access = (Uint16)volume.access;
    }
    Uint16 opStatus = volume.busy ? 11 : 2;  // In Service while a task runs
    Array<Uint16> operationalStatus;
    operationalStatus.append(opStatus);
    Array<String> statusDescriptions;
    statusDescriptions.append(String(volume.busy ? "In Service" : "OK"));
    Uint64 blocks = (Uint64)volume.sizeMiB * (1024 * 1024 / BLOCK_SIZE);

    CIMInstance instance = ZAR_Common::buildInstanceSkeleton(cls);
    ZAR_Common::setPropertyValue(instance, "SystemCreationClassName", String(ZAR_STORAGE_SYSTEM));
    ZAR_Common::setPropertyValue(instance, "SystemName", systemName);
    ZAR_Common::setPropertyValue(instance, "CreationClassName", String(ZAR_STORAGE_VOLUME));
    ZAR_Common::setPropertyValue(instance, "DeviceID", wwn);
    ZAR_Common::setPropertyValue(instance, "ElementName", elementName);
    ZAR_Common::setPropertyValue(instance, "Name", wwn);
    ZAR_Common::setPropertyValue(instance, "NameFormat", Uint16(2));
    ZAR_Common::setPropertyValue(instance, "NameNamespace", Uint16(2));
    ZAR_Common::setPropertyValue(instance, "Access", access);
    ZAR_Common::setPropertyValue(instance, "BlockSize", BLOCK_SIZE);
    ZAR_Common::setPropertyValue(instance, "NumberOfBlocks", blocks);
    ZAR_Common::setPropertyValue(instance, "ConsumableBlocks", blocks);
    ZAR_Common::setPropertyValue(instance, "OperationalStatus", operationalStatus);
    ZAR_Common::setPropertyValue(instance, "StatusDescriptions", statusDescriptions);
    ZAR_Common::setPropertyValue(instance, "HealthState", Uint16(5));
    instance.setPath(buildObjectPath(host, systemName, wwn));
    return instance;
}

void ZAR_StorageVolumeProvider::_getInstance(const ReadRequest& request,
                                             InstanceResponseHandler& handler)
{
    _traced(request.context, "getInstance", [&]() {
        String wwn = ZAR_Common::getStringProperty(request.path, "DeviceID");
        if (wwn.size() == 0)
            throw CIMInvalidParameterException(ClassName + " DeviceID key not found.");

        String systemName, host;
        _identity(systemName, host, "getInstance");
        api_vv_t volume;
        api_status_t status;
        int rc = ZAR_ArrayRecords::readVolume(wwn, &volume, &status);
        if (rc != 0 && rc != API_E_VV_NOT_FOUND)
            _fail("getInstance", "api_getVVs_direct", status);
        auto notFound = [&]() {
            log_message(2, "ZAR_StorageVolumeProvider::getInstance, not found = %s\n",
                        (const char*)request.path.toString().getCString());
            throw CIMObjectNotFoundException(ClassName + " CIM Object not found.");
        };
        // The lookup also answers to element names: only the WWN names a volume.
        if (rc != 0 ||
            !String::equalNoCase(ZAR_ArrayRecords::field(volume.name, sizeof(volume.name)), wwn))
            notFound();
        CIMClass cls = _storedClass(CIMName(ZAR_STORAGE_VOLUME), request.includeQualifiers,
                                    request.includeClassOrigin, request.propertyList);
        CIMInstance instance = buildInstance(cls, volume, host, systemName);
        if (!ZAR_Common::matchObjectPath(_asClass(request.path, CIMName(ZAR_STORAGE_VOLUME)),
                                         instance.getPath()))
            notFound();
        handler.processing();
        handler.deliver(instance);
        handler.complete();
    });
}

void ZAR_StorageVolumeProvider::_walkVolumes(
    const char* operation, const std::function<void(const std::vector<api_vv_t>&)>& sink)
{
    zar_u64 cursor = 0;
    do {
        std::vector<api_vv_t> volumes;
        api_status_t status;
        if (ZAR_ArrayRecords::readVolumeChunk(&cursor, VOLUME_CHUNK, volumes, &status) != 0)
            _fail(operation, "api_getVVs_chunk", status);
        sink(volumes);
    } while (cursor != 0);
}

void ZAR_StorageVolumeProvider::_enumerateInstances(const ReadRequest& request,
                                                    InstanceResponseHandler& handler)
{
    _traced(request.context, "enumerateInstances", [&]() {
        String systemName, host;
        _identity(systemName, host, "enumerateInstances");
        CIMClass cls = _storedClass(CIMName(ZAR_STORAGE_VOLUME), request.includeQualifiers,
                                    request.includeClassOrigin, request.propertyList);
        handler.processing();
        _walkVolumes("enumerateInstances", [&](const std::vector<api_vv_t>& volumes) {
            Array<CIMInstance> chunk;
            for (size_t i = 0; i < volumes.size(); i++)
                chunk.append(buildInstance(cls, volumes[i], host, systemName));
            if (chunk.size() != 0)
                handler.deliver(chunk);
        });
        handler.complete();
    });
}

void ZAR_StorageVolumeProvider::_enumerateInstanceNames(const ReadRequest& request,
                                                        ObjectPathResponseHandler& handler)
{
    _traced(request.context, "enumerateInstanceNames", [&]() {
        String systemName, host;
        _identity(systemName, host, "enumerateInstanceNames");
        handler.processing();
        _walkVolumes("enumerateInstanceNames", [&](const std::vector<api_vv_t>& volumes) {
            for (size_t i = 0; i < volumes.size(); i++) {
                handler.deliver(buildObjectPath(
                    host, systemName,
                    ZAR_ArrayRecords::field(volumes[i].name, sizeof(volumes[i].name))));
            }
        });
        handler.complete();
    });
}

PEGASUS_NAMESPACE_END
