//%/////////////////////////////////////////////////////////////////////////////
// CIMClient: a client connection to a CIM server.
//
// connectLocal() reaches the CIM server of this machine (the server running
// in this process if there is one) as the process's own OS user; connect()
// reaches a server over HTTP or HTTPS. Operations throw
// NotConnectedException before a connection is made, and CIMException for
// errors reported by the server; its message then carries the status code's
// name, as in "CIM_ERR_NOT_FOUND: <text>". Results are independent copies:
// enumerateInstanceNames returns paths without host and namespace,
// getInstance an instance whose path holds only the class name,
// enumerateInstances instances whose path holds class and keys.
//
// Not copyable. Not safe for concurrent use from several threads.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Client_h
#define Pegasus_Client_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Client/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/SSLContext.h>
#include <Pegasus/Common/CIMQualifierDecl.h>
#include <Pegasus/Common/UintArgs.h>
#include <Pegasus/Common/AcceptLanguageList.h>
#include <Pegasus/Common/ContentLanguageList.h>
#include <Pegasus/Client/CIMClientException.h>
#include <Pegasus/Client/CIMEnumerationContext.h>

PEGASUS_NAMESPACE_BEGIN

class CIMClientInterface;

class PEGASUS_CLIENT_LINKAGE CIMClient {
public:
    // A client that is not connected.
    CIMClient();
    // Disconnects.
    ~CIMClient();

    // Time-out of each operation in milliseconds (default 20000); after it
    // an operation throws ConnectionTimeoutException.
    Uint32 getTimeout() const;
    void setTimeout(Uint32 timeoutMilliseconds);

    // Connects over HTTP, authenticating with HTTP Basic when challenged.
    // CannotConnectException ("Cannot connect to <host>:<port>. Connection
    // failed.") when the server cannot be reached; AlreadyConnectedException
    // when connected.
    void connect(const String& host, const Uint32 portNumber, const String& userName,
                 const String& password);

    // As above, over HTTPS with the given certificate settings.
    void connect(const String& host, const Uint32 portNumber, const SSLContext& sslContext,
                 const String& userName, const String& password);

    // Connects to the CIM server of this machine as the process's OS user.
    // CannotConnectException when no server can be reached;
    // AlreadyConnectedException when connected.
    void connectLocal();

    // Closes the connection; does nothing when not connected.
    void disconnect();

    CIMClass getClass(const CIMNamespaceName& nameSpace, const CIMName& className,
                      Boolean localOnly = true, Boolean includeQualifiers = true,
                      Boolean includeClassOrigin = false,
                      const CIMPropertyList& propertyList = CIMPropertyList());

    Array<CIMClass> enumerateClasses(const CIMNamespaceName& nameSpace,
                                     const CIMName& className = CIMName(),
                                     Boolean deepInheritance = false, Boolean localOnly = true,
                                     Boolean includeQualifiers = true,
                                     Boolean includeClassOrigin = false);

    Array<CIMName> enumerateClassNames(const CIMNamespaceName& nameSpace,
                                       const CIMName& className = CIMName(),
                                       Boolean deepInheritance = false);

    CIMInstance getInstance(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                            Boolean localOnly = true, Boolean includeQualifiers = false,
                            Boolean includeClassOrigin = false,
                            const CIMPropertyList& propertyList = CIMPropertyList());

    void deleteInstance(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName);

    CIMObjectPath createInstance(const CIMNamespaceName& nameSpace, const CIMInstance& newInstance);

    void modifyInstance(const CIMNamespaceName& nameSpace, const CIMInstance& modifiedInstance,
                        Boolean includeQualifiers = true,
                        const CIMPropertyList& propertyList = CIMPropertyList());

    Array<CIMInstance> enumerateInstances(const CIMNamespaceName& nameSpace,
                                          const CIMName& className, Boolean deepInheritance = true,
                                          Boolean localOnly = true,
                                          Boolean includeQualifiers = false,
                                          Boolean includeClassOrigin = false,
                                          const CIMPropertyList& propertyList = CIMPropertyList());

    Array<CIMObjectPath> enumerateInstanceNames(const CIMNamespaceName& nameSpace,
                                                const CIMName& className);

    Array<CIMObject> associators(const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
                                 const CIMName& assocClass = CIMName(),
                                 const CIMName& resultClass = CIMName(),
                                 const String& role = String::EMPTY,
                                 const String& resultRole = String::EMPTY,
                                 Boolean includeQualifiers = false,
                                 Boolean includeClassOrigin = false,
                                 const CIMPropertyList& propertyList = CIMPropertyList());

    Array<CIMObjectPath> associatorNames(const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName,
                                         const CIMName& assocClass = CIMName(),
                                         const CIMName& resultClass = CIMName(),
                                         const String& role = String::EMPTY,
                                         const String& resultRole = String::EMPTY);

    Array<CIMObject> references(const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
                                const CIMName& resultClass = CIMName(),
                                const String& role = String::EMPTY,
                                Boolean includeQualifiers = false,
                                Boolean includeClassOrigin = false,
                                const CIMPropertyList& propertyList = CIMPropertyList());

    Array<CIMObjectPath> referenceNames(const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName,
                                        const CIMName& resultClass = CIMName(),
                                        const String& role = String::EMPTY);

    CIMValue getProperty(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                         const CIMName& propertyName);

    void setProperty(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                     const CIMName& propertyName, const CIMValue& newValue = CIMValue());

    // Returns the method's return value; the output parameters replace the
    // contents of outParameters.
    CIMValue invokeMethod(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                          const CIMName& methodName, const Array<CIMParamValue>& inParameters,
                          Array<CIMParamValue>& outParameters);

    // Pull operations. An open...() operation starts an enumeration on the
    // server and returns its first objects (at most maxObjectCount, none by
    // default); pull...() operations return the next ones, at most
    // maxObjectCount each, until endOfSequence is true. closeEnumeration()
    // ends it early. enumerationContext is set by the open and used by the
    // rest; after the end or the close, or before any open, they throw
    // InvalidEnumerationContextException. Instances come with their paths
    // (host and namespace as the server sent them), paths with host and
    // namespace. operationTimeout is the time in seconds the server keeps
    // the enumeration between requests (null: the server's default).
    // Servers may refuse filterQuery and continueOnError: CIMException
    // CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED and
    // CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED. Over the in-process
    // connection an open runs the whole operation at once and the pulls hand
    // out its results.
    Array<CIMInstance> openEnumerateInstances(
        CIMEnumerationContext& enumerationContext, Boolean& endOfSequence,
        const CIMNamespaceName& nameSpace, const CIMName& className, Boolean deepInheritance = true,
        Boolean includeClassOrigin = false, const CIMPropertyList& propertyList = CIMPropertyList(),
        const String& filterQueryLanguage = String::EMPTY,
        const String& filterQuery = String::EMPTY, const Uint32Arg& operationTimeout = Uint32Arg(),
        Boolean continueOnError = false, Uint32 maxObjectCount = 0);

    Array<CIMObjectPath> openEnumerateInstancePaths(
        CIMEnumerationContext& enumerationContext, Boolean& endOfSequence,
        const CIMNamespaceName& nameSpace, const CIMName& className,
        const String& filterQueryLanguage = String::EMPTY,
        const String& filterQuery = String::EMPTY, const Uint32Arg& operationTimeout = Uint32Arg(),
        Boolean continueOnError = false, Uint32 maxObjectCount = 0);

    Array<CIMInstance> openReferenceInstances(
        CIMEnumerationContext& enumerationContext, Boolean& endOfSequence,
        const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
        const CIMName& resultClass = CIMName(), const String& role = String::EMPTY,
        const Boolean includeClassOrigin = false,
        const CIMPropertyList& propertyList = CIMPropertyList(),
        const String& filterQueryLanguage = String::EMPTY,
        const String& filterQuery = String::EMPTY, const Uint32Arg& operationTimeout = Uint32Arg(),
        Boolean continueOnError = false, Uint32 maxObjectCount = 0);

    Array<CIMObjectPath> openReferenceInstancePaths(
        CIMEnumerationContext& enumerationContext, Boolean& endOfSequence,
        const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
        const CIMName& resultClass = CIMName(), const String& role = String::EMPTY,
        const String& filterQueryLanguage = String::EMPTY,
        const String& filterQuery = String::EMPTY, const Uint32Arg& operationTimeout = Uint32Arg(),
        Boolean continueOnError = false, Uint32 maxObjectCount = 0);

    Array<CIMInstance> openAssociatorInstances(
        CIMEnumerationContext& enumerationContext, Boolean& endOfSequence,
        const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
        const CIMName& assocClass = CIMName(), const CIMName& resultClass = CIMName(),
        const String& role = String::EMPTY, const String& resultRole = String::EMPTY,
        Boolean includeClassOrigin = false, const CIMPropertyList& propertyList = CIMPropertyList(),
        const String& filterQueryLanguage = String::EMPTY,
        const String& filterQuery = String::EMPTY, const Uint32Arg& operationTimeout = Uint32Arg(),
        Boolean continueOnError = false, Uint32 maxObjectCount = 0);

    Array<CIMObjectPath> openAssociatorInstancePaths(
        CIMEnumerationContext& enumerationContext, Boolean& endOfSequence,
        const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
        const CIMName& assocClass = CIMName(), const CIMName& resultClass = CIMName(),
        const String& role = String::EMPTY, const String& resultRole = String::EMPTY,
        const String& filterQueryLanguage = String::EMPTY,
        const String& filterQuery = String::EMPTY, const Uint32Arg& operationTimeout = Uint32Arg(),
        Boolean continueOnError = false, Uint32 maxObjectCount = 0);

    Array<CIMInstance> pullInstancesWithPath(CIMEnumerationContext& enumerationContext,
                                             Boolean& endOfSequence, Uint32 maxObjectCount);

    Array<CIMObjectPath> pullInstancePaths(CIMEnumerationContext& enumerationContext,
                                           Boolean& endOfSequence, Uint32 maxObjectCount);

    // For enumerations opened by a query (which this client cannot open):
    // servers answer CIM_ERR_FAILED for the other kinds.
    Array<CIMInstance> pullInstances(CIMEnumerationContext& enumerationContext,
                                     Boolean& endOfSequence, Uint32 maxObjectCount);

    void closeEnumeration(CIMEnumerationContext& enumerationContext);

    // Servers may answer CIM_ERR_NOT_SUPPORTED.
    Uint64Arg enumerationCount(CIMEnumerationContext& enumerationContext);

private:
    CIMClient(const CIMClient&);  // not copyable
    CIMClient& operator=(const CIMClient&);
    CIMClientInterface* _rep;
};

PEGASUS_NAMESPACE_END

#endif
