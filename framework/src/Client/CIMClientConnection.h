// CIMClientConnection: one open connection of a CIMClient to a CIM server,
// the part a transport implements. Internal to libpegclient.
//
// A transport (in-process, HTTP, HTTPS, local socket) implements this
// interface in its own file and, unless it is built in, registers a factory
// with registerRemoteConnectionFactory() or registerLocalConnectionFactory()
// from a static initializer, e.g.
//
//   static const bool registered =
//       (registerRemoteConnectionFactory(&CreateHttpConnection), true);
//
// Operations take the arguments of the CIMClient members of the same name
// and report CIM errors as CIMException whose message is the CIM-XML error
// description ("CIM_ERR_NOT_FOUND: <text>").
#ifndef Pegasus_Client_CIMClientConnection_h
#define Pegasus_Client_CIMClientConnection_h

#include <Pegasus/Client/CIMClient.h>
#include <zarframework/CIMOperationHost.h>

PEGASUS_NAMESPACE_BEGIN

class CIMClientConnection {
public:
    virtual ~CIMClientConnection();

    // Applies to the operations that follow.
    virtual void setTimeout(Uint32 timeoutMilliseconds) = 0;

    virtual CIMClass getClass(const CIMNamespaceName& nameSpace, const CIMName& className,
                              Boolean localOnly, Boolean includeQualifiers,
                              Boolean includeClassOrigin, const CIMPropertyList& propertyList) = 0;
    virtual Array<CIMClass> enumerateClasses(const CIMNamespaceName& nameSpace,
                                             const CIMName& className, Boolean deepInheritance,
                                             Boolean localOnly, Boolean includeQualifiers,
                                             Boolean includeClassOrigin) = 0;
    virtual Array<CIMName> enumerateClassNames(const CIMNamespaceName& nameSpace,
                                               const CIMName& className,
                                               Boolean deepInheritance) = 0;
    virtual CIMInstance getInstance(const CIMNamespaceName& nameSpace,
                                    const CIMObjectPath& instanceName, Boolean localOnly,
                                    Boolean includeQualifiers, Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList) = 0;
    virtual void deleteInstance(const CIMNamespaceName& nameSpace,
                                const CIMObjectPath& instanceName) = 0;
    virtual CIMObjectPath createInstance(const CIMNamespaceName& nameSpace,
                                         const CIMInstance& newInstance) = 0;
    virtual void modifyInstance(const CIMNamespaceName& nameSpace,
                                const CIMInstance& modifiedInstance, Boolean includeQualifiers,
                                const CIMPropertyList& propertyList) = 0;
    virtual Array<CIMInstance> enumerateInstances(const CIMNamespaceName& nameSpace,
                                                  const CIMName& className, Boolean deepInheritance,
                                                  Boolean localOnly, Boolean includeQualifiers,
                                                  Boolean includeClassOrigin,
                                                  const CIMPropertyList& propertyList) = 0;
    virtual Array<CIMObjectPath> enumerateInstanceNames(const CIMNamespaceName& nameSpace,
                                                        const CIMName& className) = 0;
    virtual Array<CIMObject> associators(const CIMNamespaceName& nameSpace,
                                         const CIMObjectPath& objectName, const CIMName& assocClass,
                                         const CIMName& resultClass, const String& role,
                                         const String& resultRole, Boolean includeQualifiers,
                                         Boolean includeClassOrigin,
                                         const CIMPropertyList& propertyList) = 0;
    virtual Array<CIMObjectPath> associatorNames(const CIMNamespaceName& nameSpace,
                                                 const CIMObjectPath& objectName,
                                                 const CIMName& assocClass,
                                                 const CIMName& resultClass, const String& role,
                                                 const String& resultRole) = 0;
    virtual Array<CIMObject> references(const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& resultClass,
                                        const String& role, Boolean includeQualifiers,
                                        Boolean includeClassOrigin,
                                        const CIMPropertyList& propertyList) = 0;
    virtual Array<CIMObjectPath> referenceNames(const CIMNamespaceName& nameSpace,
                                                const CIMObjectPath& objectName,
                                                const CIMName& resultClass, const String& role) = 0;
    virtual CIMValue getProperty(const CIMNamespaceName& nameSpace,
                                 const CIMObjectPath& instanceName,
                                 const CIMName& propertyName) = 0;
    virtual void setProperty(const CIMNamespaceName& nameSpace, const CIMObjectPath& instanceName,
                             const CIMName& propertyName, const CIMValue& newValue) = 0;
    // Replaces the contents of outParameters with the output parameters.
    virtual CIMValue invokeMethod(const CIMNamespaceName& nameSpace,
                                  const CIMObjectPath& instanceName, const CIMName& methodName,
                                  const Array<CIMParamValue>& inParameters,
                                  Array<CIMParamValue>& outParameters) = 0;

    // Pull operations. An open names what to enumerate and returns the
    // first objects; pulls continue the enumeration the server's context
    // string names, in the namespace of the open.
    struct OpenRequest {
        enum Kind {
            INSTANCES,
            INSTANCE_PATHS,
            REFERENCES,
            REFERENCE_PATHS,
            ASSOCIATORS,
            ASSOCIATOR_PATHS
        } kind;
        CIMNamespaceName nameSpace;
        CIMName className;         // INSTANCES, INSTANCE_PATHS
        CIMObjectPath objectName;  // the others
        CIMName assocClass, resultClass;
        String role, resultRole;
        Boolean deepInheritance = true;
        Boolean includeClassOrigin = false;
        CIMPropertyList propertyList;
        String filterQueryLanguage, filterQuery;
        Uint32Arg operationTimeout;
        Boolean continueOnError = false;
        Uint32 maxObjectCount = 0;
    };
    // What an open or a pull returns: instances (with their paths) or
    // paths, whether the sequence ended, and else the context to go on.
    struct PullResult {
        Array<CIMInstance> instances;
        Array<CIMObjectPath> paths;
        Boolean endOfSequence = false;
        String context;
    };
    enum PullKind { PULL_INSTANCES_WITH_PATH, PULL_INSTANCE_PATHS, PULL_INSTANCES };

    virtual PullResult openEnumeration(const OpenRequest& request) = 0;
    virtual PullResult pull(PullKind kind, const CIMNamespaceName& nameSpace, const String& context,
                            Uint32 maxObjectCount) = 0;
    virtual void closeEnumeration(const CIMNamespaceName& nameSpace, const String& context) = 0;
    virtual Uint64Arg enumerationCount(const CIMNamespaceName& nameSpace,
                                       const String& context) = 0;
};

// Opens a connection to host:port (HTTPS when sslContext is non-null);
// throws CannotConnectException when the server cannot be reached.
typedef CIMClientConnection* (*RemoteConnectionFactory)(const String& host, Uint32 portNumber,
                                                        const SSLContext* sslContext,
                                                        const String& userName,
                                                        const String& password,
                                                        Uint32 timeoutMilliseconds);

// Opens a connection to the CIM server of this machine from another process
// (e.g. over its local socket); throws CannotConnectException.
typedef CIMClientConnection* (*LocalConnectionFactory)(Uint32 timeoutMilliseconds);

// Installs the transport that connect() uses (0 removes it). Without one,
// connect() fails with CannotConnectException.
void registerRemoteConnectionFactory(RemoteConnectionFactory factory);

// Installs the transport that connectLocal() uses when no operation host is
// registered in this process (0 removes it).
void registerLocalConnectionFactory(LocalConnectionFactory factory);

// A connection that calls host directly, in this process, on behalf of the
// OS user userName.
CIMClientConnection* createLocalHostConnection(CIMOperationHost& host, const String& userName);

PEGASUS_NAMESPACE_END

#endif
