//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayProviderBase.h: what the read-only providers of the array module
// share: the handle, the array library opened for the server, the
// system's identity read from the array on each request, stored classes,
// and the refusal of changes.
//
// Every message of a refusal or failure begins with the provider's
// ClassName text (its C++ class name), as the module's messages do.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ArrayProviderBase_h
#define ZAR_ArrayProviderBase_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <zarapi.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_ArrayProviderBase : public CIMInstanceProvider {
public:
    // className is the provider's name, the prefix of its messages.
    explicit ZAR_ArrayProviderBase(const String& className);
    virtual ~ZAR_ArrayProviderBase();

    // Keeps the handle and opens the array library for the server.
    virtual void initialize(CIMOMHandle& cimom);

    // Deletes the provider object.
    virtual void terminate();

    // Refused with CIMNotSupportedException: the array's objects are
    // changed with the array's own tools and the configuration service.
    virtual void modifyInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject, const Boolean includeQualifiers,
                                const CIMPropertyList& propertyList, ResponseHandler& handler);
    virtual void createInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject,
                                ObjectPathResponseHandler& handler);
    virtual void deleteInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference, ResponseHandler& handler);

protected:
    // The system's name (SystemName keys) and the host of returned paths,
    // read from the array. A failure throws CIMOperationFailedException
    // naming `operation`.
    void _identity(String& systemName, String& host, const char* operation);

    // The class as stored by the internal cache service (root/zar).
    CIMClass _storedClass(const CIMName& className, Boolean includeQualifiers,
                          Boolean includeClassOrigin, const CIMPropertyList& propertyList);

    // CIMOperationFailedException "<ClassName>::<operation> - Operation
    // failed: <text of status>", after a level-2 trace naming the call.
    void _fail(const char* operation, const char* call, const api_status_t& status);

    // The request's path with its class replaced by className, so that a
    // path naming a superclass is compared by its keys alone.
    static CIMObjectPath _asClass(const CIMObjectPath& path, const CIMName& className);

    CIMOMHandle _cimom;
    String _className;
};

PEGASUS_NAMESPACE_END

#endif
