//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ViewProviderBase.h: the instance operations over the array's views
// (SCSI protocol controllers) of one class, ZAR_SCSIController (FC views)
// or ZAR_iSCSIController (iSCSI views).
//
// The provider holds no list of its own: every request walks the array's
// view records in chunks of 200 and hands each chunk on before the next
// is fetched. modifyInstance renames the host behind a view; create and
// delete are refused.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ViewProviderBase_h
#define ZAR_ViewProviderBase_h

#include <functional>

#include "ZAR_ProviderBase.h"

PEGASUS_NAMESPACE_BEGIN

class ZAR_ViewProviderBase : public ZAR_ProviderBase {
public:
    // className is the prefix of the provider's messages and the name of
    // its traces; viewClass the class of the views it serves.
    ZAR_ViewProviderBase(const String& className, const char* viewClass);
    virtual ~ZAR_ViewProviderBase();

    // Renames the host behind the view (ElementName only).
    virtual void modifyInstance(const OperationContext& context,
                                const CIMObjectPath& instanceReference,
                                const CIMInstance& instanceObject, const Boolean includeQualifiers,
                                const CIMPropertyList& propertyList, ResponseHandler& handler);

protected:
    // The view whose path matches instanceReference (see _wanted), or
    // CIMObjectNotFoundException; CIMInvalidParameterException without a
    // DeviceID key.
    virtual void _getInstance(const ReadRequest& request, InstanceResponseHandler& handler);

    // Every view, delivered chunk by chunk. Failures become
    // CIMOperationFailedException: "<ClassName>::<operation> - Operation
    // failed: <message>" for a CIM error, "Response too big" when memory
    // ran out, "Unknown error" for anything else.
    virtual void _enumerateInstances(const ReadRequest& request, InstanceResponseHandler& handler);

    // The path of every view, built without the rest of the instance.
    virtual void _enumerateInstanceNames(const ReadRequest& request,
                                         ObjectPathResponseHandler& handler);

    // Called with each chunk of views; returns false to end the walk.
    typedef std::function<bool(const Array<CIMInstance>&)> ChunkSink;

    // The system's name and the host of the views' paths for a request.
    virtual void _viewIdentity(String& systemName, String& host) = 0;

    // The path that views are matched against by getInstance: the
    // request's path as given unless a subclass decides otherwise.
    virtual CIMObjectPath _wanted(const CIMObjectPath& instanceReference);

    // Walks every view, built as the request asks, chunk by chunk; the
    // array's cursor is released on every exit.
    void _walk(const ReadRequest& request, const ChunkSink& sink);

    CIMName _viewClass;
    // Passed to the view builder with each chunk.
    Uint32 _maxInstCount;

private:
    // Runs one enumeration: its traces, the user's access check and the
    // translation of failures that enumerateInstances describes.
    void _enumerate(const OperationContext& context, const char* operation,
                    const std::function<void()>& body);
};

PEGASUS_NAMESPACE_END

#endif
