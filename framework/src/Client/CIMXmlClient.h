// CIMXmlClient: the CIM operations of CIMClient carried as CIM-XML over an
// HTTP connection (TCP to a CIM server, or the server's local Unix socket).
// Internal to pegclient; CIMClient::connect() and connectLocal() create it.
#ifndef Pegasus_CIMXmlClient_h
#define Pegasus_CIMXmlClient_h

#include <memory>
#include <string>

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>
#include <zarframework/CIMXmlCodec.h>
#include <Pegasus/Common/SSLContext.h>

#include "Client/CIMClientConnection.h"
#include "Client/HttpClientConnection.h"

PEGASUS_NAMESPACE_BEGIN

class CIMXmlClient : public CIMClientConnection {
public:
    // Over a TCP connection to host:port (TLS when ssl is not null) with
    // Basic credentials (sent with every request when user is not empty).
    // Opens the connection now; CannotConnectException if the server cannot
    // be reached, SSLException when the TLS handshake fails.
    CIMXmlClient(const String& host, Uint32 port, const SSLContext* ssl, const String& user,
                 const String& password, Uint32 timeoutMs);
    // Over the local Unix socket at path (no credentials).
    CIMXmlClient(const std::string& socketPath, Uint32 timeoutMs);
    ~CIMXmlClient() override;

    void setTimeout(Uint32 timeoutMs) override { _timeoutMs = timeoutMs; }

    CIMClass getClass(const CIMNamespaceName& nameSpace, const CIMName& className,
                      Boolean localOnly, Boolean includeQualifiers, Boolean includeClassOrigin,
                      const CIMPropertyList& propertyList) override;
    Array<CIMClass> enumerateClasses(const CIMNamespaceName& nameSpace, const CIMName& className,
                                     Boolean deepInheritance, Boolean localOnly,
                                     Boolean includeQualifiers,
                                     Boolean includeClassOrigin) override;
    Array<CIMName> enumerateClassNames(const CIMNamespaceName& nameSpace, const CIMName& className,
                                       Boolean deepInheritance) override;
    CIMInstance getInstance(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                            Boolean localOnly, Boolean includeQualifiers,
                            Boolean includeClassOrigin,
                            const CIMPropertyList& propertyList) override;
    void deleteInstance(const CIMNamespaceName& nameSpace,
                        const CIMObjectPath& instanceName) override;
    CIMObjectPath createInstance(const CIMNamespaceName& nameSpace,
                                 const CIMInstance& newInstance) override;
    void modifyInstance(const CIMNamespaceName& nameSpace, const CIMInstance& modifiedInstance,
                        Boolean includeQualifiers, const CIMPropertyList& propertyList) override;
    Array<CIMInstance> enumerateInstances(const CIMNamespaceName& nameSpace,
                                          const CIMName& className, Boolean deepInheritance,
                                          Boolean localOnly, Boolean includeQualifiers,
                                          Boolean includeClassOrigin,
                                          const CIMPropertyList& propertyList) override;
    Array<CIMObjectPath> enumerateInstanceNames(const CIMNamespaceName& nameSpace,
                                                const CIMName& className) override;
    Array<CIMObject> associators(const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
                                 const CIMName& assocClass, const CIMName& resultClass,
                                 const String& role, const String& resultRole,
                                 Boolean includeQualifiers, Boolean includeClassOrigin,
                                 const CIMPropertyList& propertyList) override;
    Array<CIMObjectPath> associatorNames(const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName, const CIMName& assocClass,
                                         const CIMName& resultClass, const String& role,
                                         const String& resultRole) override;
    Array<CIMObject> references(const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
                                const CIMName& resultClass, const String& role,
                                Boolean includeQualifiers, Boolean includeClassOrigin,
                                const CIMPropertyList& propertyList) override;
    Array<CIMObjectPath> referenceNames(const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& resultClass,
                                        const String& role) override;
    CIMValue getProperty(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                         const CIMName& propertyName) override;
    void setProperty(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                     const CIMName& propertyName, const CIMValue& newValue) override;
    CIMValue invokeMethod(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                          const CIMName& methodName, const Array<CIMParamValue>& inParameters,
                          Array<CIMParamValue>& outParameters) override;

    PullResult openEnumeration(const OpenRequest& request) override;
    PullResult pull(PullKind kind, const CIMNamespaceName& nameSpace, const String& context,
                    Uint32 maxObjectCount) override;
    void closeEnumeration(const CIMNamespaceName& nameSpace, const String& context) override;
    Uint64Arg enumerationCount(const CIMNamespaceName& nameSpace, const String& context) override;

private:
    // An open or pull call and its answer: the objects of IRETURNVALUE,
    // EndOfSequence and EnumerationContext.
    PullResult _pull(const char* method, const CIMNamespaceName& nameSpace,
                     const std::string& params);
    // Sends an intrinsic call with the given IPARAMVALUE text and returns the
    // response document; resp points into it at IMETHODRESPONSE.
    CIMXml::XmlElement _call(const char* method, const CIMNamespaceName& nameSpace,
                             const std::string& params, const CIMXml::XmlElement*& ret);
    CIMXml::XmlElement _send(const std::string& method, const std::string& object,
                             const std::string& body);

    std::unique_ptr<HttpClientConnection> _conn;
    std::string _authorization;
    Uint32 _timeoutMs;
    Uint32 _messageId = 0;
    CIMXml::XmlLimits _limits;
};

PEGASUS_NAMESPACE_END

#endif
