//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ProviderBase.h: what every instance provider of the array's modules
// shares: the handle, the array library opened for the server, the refusal
// of changes, the class check, stored classes, the system's identity read
// from the array, and failures of array calls.
//
// A provider has two names: its ClassName text, with which its messages
// begin, and the name its traces use (its C++ class name). They are the
// same unless the constructor is given a trace name.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ProviderBase_h
#define ZAR_ProviderBase_h

#include <functional>

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <zarapi.h>

#include "ZAR_Names.h"

PEGASUS_NAMESPACE_BEGIN

class ZAR_ProviderBase : public CIMInstanceProvider {
public:
    // The parameters of a read operation. path is the instance's path for
    // getInstance, the class's for the enumerations (which ask for the
    // whole instance: no property list).
    struct ReadRequest {
        const OperationContext& context;
        const CIMObjectPath& path;
        Boolean includeQualifiers;
        Boolean includeClassOrigin;
        const CIMPropertyList& propertyList;
    };

    // className is the prefix of the provider's messages; traceName (when
    // given) the name its traces use.
    explicit ZAR_ProviderBase(const String& className, const char* traceName = 0);
    virtual ~ZAR_ProviderBase();

    // Traces "-->Name::initialize(cimom)" and its exit line around _open.
    virtual void initialize(CIMOMHandle& cimom);

    // Deletes the provider object.
    virtual void terminate();

    // The three read operations hand their parameters, as one ReadRequest,
    // to _getInstance, _enumerateInstances and _enumerateInstanceNames.
    virtual void getInstance(const OperationContext& context,
                             const CIMObjectPath& instanceReference,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList, InstanceResponseHandler& handler);
    virtual void enumerateInstances(const OperationContext& context,
                                    const CIMObjectPath& classReference,
                                    const Boolean includeQualifiers,
                                    const Boolean includeClassOrigin,
                                    const CIMPropertyList& propertyList,
                                    InstanceResponseHandler& handler);
    virtual void enumerateInstanceNames(const OperationContext& context,
                                        const CIMObjectPath& classReference,
                                        ObjectPathResponseHandler& handler);

    // Refused with CIMNotSupportedException "<ClassName> does not support
    // <operation>.": the array's objects are changed with the array's own
    // tools and the configuration service.
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
    virtual void _getInstance(const ReadRequest& request, InstanceResponseHandler& handler) = 0;
    virtual void _enumerateInstances(const ReadRequest& request,
                                     InstanceResponseHandler& handler) = 0;
    virtual void _enumerateInstanceNames(const ReadRequest& request,
                                         ObjectPathResponseHandler& handler) = 0;

    // Keeps the handle and opens the array library for the server; a
    // failure is only traced, at failureLevel, as
    // "<Name>::initialize(): api_zarOpenForCimserver failed".
    void _open(CIMOMHandle& cimom, int failureLevel = 2);

    // CIMNotSupportedException "<ClassName> Invalid class name<class>"
    // unless className is ownClass or cimClass.
    void _checkClassName(const CIMName& className, const char* ownClass,
                         const char* cimClass) const;

    // The frame of an operation: a level-4 trace "-->Name::operation", the
    // user's access check, body, and "<--Name::operation" after a body that
    // did not throw.
    void _traced(const OperationContext& context, const char* operation,
                 const std::function<void()>& body);

    // The frame of an enumeration of a provider whose instances are fixed:
    // entryTrace, the user's access check, the class check, a trace of the
    // class name, body, then exitTrace (all traces at level 4).
    void _enumerateFrame(const OperationContext& context, const CIMObjectPath& classReference,
                         const char* ownClass, const char* cimClass, const char* entryTrace,
                         const char* exitTrace, const std::function<void()>& body);

    // CIMInvalidParameterException "<ClassName><expectText>" after a
    // level-2 trace "<Name>::getInstance(): Invalid number of keys (n)"
    // unless the path has `expected` keys.
    void _checkKeyCount(const CIMObjectPath& path, Uint32 expected, const char* expectText) const;

    // For an association operation whose parameters cannot name the
    // association: a level-2 trace "<Name>::<operation>: invalid params:
    // resultClass = <class>", complete() and true. False otherwise.
    Boolean _answeredEmpty(Boolean invalid, const char* operation, const CIMName& resultClass,
                           ResponseHandler& handler) const;

    // processing(), one object, complete().
    template <class Handler, class Object>
    static void _deliverOne(Handler& handler, const Object& object)
    {
        handler.processing();
        handler.deliver(object);
        handler.complete();
    }

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

    // The trace name as a C string.
    const char* _traceName() const { return (const char*)_traceText; }

    CIMOMHandle _cimom;
    String _className;

private:
    CString _traceText;
};

// The four operations of an association provider, which hand their
// parameters, as one AssociationRequest naming the operation, to one hook,
// with an AssociationAnswer for what they deliver.
class ZAR_AssociationOperations : public CIMAssociationProvider {
public:
    enum Operation { ASSOCIATORS, ASSOCIATOR_NAMES, REFERENCES, REFERENCE_NAMES };

    // associationClass and resultRole are null for the references
    // operations, whose resultClass names the association class; the names
    // operations ask for no qualifiers, no class origin and every property.
    struct AssociationRequest {
        Operation operation;
        const OperationContext& context;
        const CIMObjectPath& objectName;
        const CIMName& associationClass;
        const CIMName& resultClass;
        const String& role;
        const String& resultRole;
        Boolean includeQualifiers;
        Boolean includeClassOrigin;
        const CIMPropertyList& propertyList;

        // "associators", "associatorNames", "references" or "referenceNames".
        const char* operationName() const;
        // True for associatorNames and referenceNames, which answer paths.
        Boolean namesOnly() const;
        // True for references and referenceNames.
        Boolean ofReferences() const;
    };

    // Where an operation's answer goes: objects for associators and
    // references, paths for the names operations.
    class AssociationAnswer {
    public:
        explicit AssociationAnswer(ObjectResponseHandler& objects);
        explicit AssociationAnswer(ObjectPathResponseHandler& paths);

        ResponseHandler& handler() const { return *_handler; }
        void processing() { _handler->processing(); }
        void complete() { _handler->complete(); }

        // An object (associators and references only).
        void deliver(const CIMInstance& instance);
        void deliverAll(const Array<CIMInstance>& instances);
        // A path (the names operations only).
        void deliver(const CIMObjectPath& path);
        void deliverAll(const Array<CIMObjectPath>& paths);

    private:
        ResponseHandler* _handler;
        ObjectResponseHandler* _objects;
        ObjectPathResponseHandler* _paths;
    };

    virtual void associators(const OperationContext& context, const CIMObjectPath& objectName,
                             const CIMName& associationClass, const CIMName& resultClass,
                             const String& role, const String& resultRole,
                             const Boolean includeQualifiers, const Boolean includeClassOrigin,
                             const CIMPropertyList& propertyList, ObjectResponseHandler& handler);
    virtual void associatorNames(const OperationContext& context, const CIMObjectPath& objectName,
                                 const CIMName& associationClass, const CIMName& resultClass,
                                 const String& role, const String& resultRole,
                                 ObjectPathResponseHandler& handler);
    virtual void references(const OperationContext& context, const CIMObjectPath& objectName,
                            const CIMName& resultClass, const String& role,
                            const Boolean includeQualifiers, const Boolean includeClassOrigin,
                            const CIMPropertyList& propertyList, ObjectResponseHandler& handler);
    virtual void referenceNames(const OperationContext& context, const CIMObjectPath& objectName,
                                const CIMName& resultClass, const String& role,
                                ObjectPathResponseHandler& handler);

protected:
    // Answers one of the four operations.
    virtual void _answerAssociation(const AssociationRequest& request,
                                    AssociationAnswer& answer) = 0;
};

PEGASUS_NAMESPACE_END

#endif
