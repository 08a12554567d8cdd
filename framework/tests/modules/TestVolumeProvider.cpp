// ZAR_TestVolumeProvider: a small instance and method provider for the
// framework's module test. It is written the way providers for this server
// are written (documented provider API only, multiple interfaces over one
// virtual CIMProvider base, terminate() ending with delete this) and keeps
// its volumes in memory.
//
// Methods (on any ZAR_TestVolume path):
//   Resize(Name, Size) -> OldSize; returns 0
//   CountVolumes()      returns the number of volume names the server
//                       reports, asked through the CIMOMHandle
//   WhoAmI()            returns the user of the request
//   ClientAddress()     returns the client's address where the framework
//                       provides it, else ""

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#ifdef ZAR_FRAMEWORK_CLIENT_ADDRESS
#include <Pegasus/Common/ClientAddressContainer.h>
#endif

#include <mutex>

PEGASUS_USING_STD;
PEGASUS_USING_PEGASUS;

namespace {

int liveProviders = 0;

const char CLASS_NAME[] = "ZAR_TestVolume";

class ZAR_TestVolumeProvider : public CIMInstanceProvider, public CIMMethodProvider {
public:
    ZAR_TestVolumeProvider() { liveProviders++; }
    virtual ~ZAR_TestVolumeProvider() { liveProviders--; }

    virtual void initialize(CIMOMHandle& cimom)
    {
        _cimom = cimom;
        _add("vol0", 10);
        _add("vol1", 20);
    }

    virtual void terminate() { delete this; }

    virtual void getInstance(const OperationContext&, const CIMObjectPath& instanceReference,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList, InstanceResponseHandler& handler)
    {
        handler.processing();
        std::lock_guard<std::mutex> lock(_mutex);
        CIMInstance found = _volumes[_find(instanceReference)].clone();
        found.filter(includeQualifiers, includeClassOrigin, propertyList);
        handler.deliver(found);
        handler.complete();
    }

    virtual void enumerateInstanceNames(const OperationContext&,
                                        const CIMObjectPath& classReference,
                                        ObjectPathResponseHandler& handler)
    {
        handler.processing();
        std::lock_guard<std::mutex> lock(_mutex);
        for (Uint32 i = 0; i < _volumes.size(); i++)
            handler.deliver(_path(classReference, _volumes[i]));
        handler.complete();
    }

    virtual void createInstance(const OperationContext&, const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject,
                                ObjectPathResponseHandler& handler)
    {
        handler.processing();
        Uint32 pos = instanceObject.findProperty("Name");
        if (pos == PEG_NOT_FOUND)
            throw CIMInvalidParameterException("Name is required");
        String name;
        instanceObject.getProperty(pos).getValue().get(name);
        std::lock_guard<std::mutex> lock(_mutex);
        if (_position(name) != PEG_NOT_FOUND)
            throw CIMObjectAlreadyExistsException(name);
        Uint32 size = 0;
        Uint32 sizePos = instanceObject.findProperty("size");
        if (sizePos != PEG_NOT_FOUND)
            instanceObject.getProperty(sizePos).getValue().get(size);
        _add(name, size);
        handler.deliver(_path(instanceReference, _volumes[_volumes.size() - 1]));
        handler.complete();
    }

    // Not used by the module test.
    virtual void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                                    const Boolean, const CIMPropertyList&, InstanceResponseHandler&)
    {
        throw CIMNotSupportedException("enumerateInstances");
    }
    virtual void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                                const Boolean, const CIMPropertyList&, ResponseHandler&)
    {
        throw CIMNotSupportedException("modifyInstance");
    }
    virtual void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&)
    {
        throw CIMNotSupportedException("deleteInstance");
    }

    virtual void invokeMethod(const OperationContext& context, const CIMObjectPath& objectReference,
                              const CIMName& methodName, const Array<CIMParamValue>& inParameters,
                              MethodResultResponseHandler& handler)
    {
        handler.processing();
        if (methodName.equal("Resize")) {
            String name;
            Uint32 size = 0;
            for (Uint32 i = 0; i < inParameters.size(); i++) {
                String p = inParameters[i].getParameterName();
                if (String::equalNoCase(p, "Name"))
                    inParameters[i].getValue().get(name);
                else if (String::equalNoCase(p, "Size"))
                    inParameters[i].getValue().get(size);
            }
            std::lock_guard<std::mutex> lock(_mutex);
            Uint32 pos = _position(name);
            if (pos == PEG_NOT_FOUND) {
                char text[64];
                sprintf(text, "no volume %s", (const char*)name.getCString());
                throw TraceableCIMException(CIM_ERR_NOT_FOUND, text, __FILE__, __LINE__);
            }
            CIMProperty p = _volumes[pos].getProperty(_volumes[pos].findProperty("Size"));
            handler.deliverParamValue(CIMParamValue("OldSize", p.getValue()));
            p.setValue(CIMValue(size));
            handler.deliver(CIMValue(Uint32(0)));
        } else if (methodName.equal("CountVolumes")) {
            Array<CIMObjectPath> names =
                _cimom.enumerateInstanceNames(context, objectReference.getNameSpace(), CLASS_NAME);
            handler.deliver(CIMValue(names.size()));
        } else if (methodName.equal("WhoAmI")) {
            IdentityContainer container = context.get(IdentityContainer::NAME);
            handler.deliver(CIMValue(container.getUserName()));
        } else if (methodName.equal("ClientAddress")) {
            String address;
#ifdef ZAR_FRAMEWORK_CLIENT_ADDRESS
            if (context.contains(ClientAddressContainer::NAME)) {
                ClientAddressContainer c = context.get(ClientAddressContainer::NAME);
                address = c.getAddress();
            }
#endif
            handler.deliver(CIMValue(address));
        } else {
            throw CIMMethodNotFoundException(methodName.getString());
        }
        handler.complete();
    }

private:
    void _add(const String& name, Uint32 size)
    {
        CIMInstance v(CLASS_NAME);
        v.addProperty(CIMProperty("Name", CIMValue(name)));
        v.addProperty(CIMProperty("Size", CIMValue(size)));
        _volumes.append(v);
    }

    Uint32 _position(const String& name) const
    {
        for (Uint32 i = 0; i < _volumes.size(); i++) {
            String n;
            _volumes[i].getProperty(0).getValue().get(n);
            if (n == name)
                return i;
        }
        return PEG_NOT_FOUND;
    }

    // Index of the volume named by the path's Name key, or
    // CIMObjectNotFoundException.
    Uint32 _find(const CIMObjectPath& path) const
    {
        Array<CIMKeyBinding> keys = path.getKeyBindings();
        for (Uint32 i = 0; i < keys.size(); i++) {
            if (keys[i].getName().equal("Name")) {
                Uint32 pos = _position(keys[i].getValue());
                if (pos != PEG_NOT_FOUND)
                    return pos;
            }
        }
        throw CIMObjectNotFoundException(path.toString());
    }

    CIMObjectPath _path(const CIMObjectPath& request, const CIMInstance& v) const
    {
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding("Name", v.getProperty(0).getValue()));
        return CIMObjectPath(request.getHost(), request.getNameSpace(), CLASS_NAME, keys);
    }

    CIMOMHandle _cimom;
    std::mutex _mutex;
    Array<CIMInstance> _volumes;
};

}  // namespace

extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& providerName)
{
    if (String::equalNoCase(providerName, "ZAR_TestVolumeProvider"))
        return new ZAR_TestVolumeProvider();
    return 0;
}

// How many provider objects exist, so that a test can see terminate()
// delete the provider.
extern "C" PEGASUS_EXPORT int ZARTestLiveProviders()
{
    return liveProviders;
}
