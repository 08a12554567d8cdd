//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ProtocolEndpointBase.h: the instance operations shared by the two
// protocol endpoint providers: one endpoint per target port of the
// provider's protocol, keyed by SystemCreationClassName
// "ZAR_StorageSystem", SystemName, CreationClassName and Name.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ProtocolEndpointBase_h
#define ZAR_ProtocolEndpointBase_h

#include <functional>
#include <vector>

#include <ZAR_ProviderBase.h>
#include <ZAR_ArrayRecords.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_ProtocolEndpointBase : public ZAR_ProviderBase {
public:
    // providerName prefixes messages; endpointClass is the CIM class
    // served; type the ports' protocol.
    ZAR_ProtocolEndpointBase(const String& providerName, const char* endpointClass,
                             port_type_t type);

    // The endpoint path of a port of either protocol: class
    // ZAR_SCSIProtocolFCEndpoint or ZAR_iSCSIProtocolEndpoint, host `host`.
    static CIMObjectPath endpointPath(const ZAR_PortRecord& port, const String& host,
                                      const String& systemName);

    // The endpoint instance of a port, from the stored class cls of the
    // port's endpoint class.
    static CIMInstance endpointInstance(CIMClass& cls, const ZAR_PortRecord& port,
                                        const String& host, const String& systemName);

    // The Name of a port's endpoint: the WWN of an FC port, the target
    // name "<iSCSI name>,t,0x<portal group tag>" of an iSCSI port, whose
    // portal group tag is the port's position in four hexadecimal digits.
    static String endpointName(const ZAR_PortRecord& port);

protected:
    // The endpoint whose path matches (hosts ignored, the class of the path
    // put aside); CIMInvalidParameterException without a Name key,
    // CIMObjectNotFoundException when no port has that endpoint.
    virtual void _getInstance(const ReadRequest& request, InstanceResponseHandler& handler);

    // The endpoint of every target port of the protocol.
    virtual void _enumerateInstances(const ReadRequest& request, InstanceResponseHandler& handler);

    // The paths of those endpoints.
    virtual void _enumerateInstanceNames(const ReadRequest& request,
                                         ObjectPathResponseHandler& handler);

private:
    // The frame of the two enumerations: the traced, access-checked
    // operation, then sink(port, host, systemName) for every target port.
    void _eachPortTraced(
        const ReadRequest& request, const char* operation, ResponseHandler& handler,
        const std::function<void(const ZAR_PortRecord&, const String&, const String&)>& sink);

    // The system's identity and the target ports of the protocol; a
    // failure throws, naming `operation`.
    void _readPorts(const char* operation, std::vector<ZAR_PortRecord>& ports, String& systemName,
                    String& host);

    CIMName _endpointClass;
    port_type_t _type;
};

PEGASUS_NAMESPACE_END

#endif
