//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SystemObjectProviderBase.h: the instance operations of an object that
// stands for the array itself (the storage system, the internal cache
// object): one instance, whose path and properties come from the system's
// identity, read from the array on each request so that a renamed array
// is seen at once.
//
// Each operation traces "-->Name::operation" and its exit line, checks the
// user and the class, reads the identity and delivers; a failed read is a
// CIMOperationFailedException naming the operation.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SystemObjectProviderBase_h
#define ZAR_SystemObjectProviderBase_h

#include <functional>

#include <ZAR_ProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_SystemObjectProviderBase : public ZAR_ProviderBase {
public:
    explicit ZAR_SystemObjectProviderBase(const String& className);

protected:
    // The instance when _checkInstanceName accepts the path.
    virtual void _getInstance(const ReadRequest& request, InstanceResponseHandler& handler);

    // The one instance, whatever path the request names.
    virtual void _enumerateInstances(const ReadRequest& request, InstanceResponseHandler& handler);

    // Its path.
    virtual void _enumerateInstanceNames(const ReadRequest& request,
                                         ObjectPathResponseHandler& handler);

    // CIMNotSupportedException unless the path's class is served here.
    virtual void _checkClass(const CIMObjectPath& path) = 0;

    // CIMInvalidParameterException for keys that cannot name the object,
    // CIMObjectNotFoundException for keys of another object.
    virtual void _checkInstanceName(const CIMObjectPath& path, const api_sysinfo_t& info) = 0;

    virtual CIMObjectPath _buildInstanceName(const api_sysinfo_t& info) = 0;

    // A failure of a further array read throws, naming `operation`.
    virtual CIMInstance _buildInstance(const api_sysinfo_t& info, const ReadRequest& request,
                                       const char* operation) = 0;

    // The system's identity; a failure throws, naming `operation`.
    void _readSystemInfo(api_sysinfo_t* info, const char* operation);

private:
    // The frame of the three operations: the trace, the user's and the
    // class's checks and the system's identity, given to body.
    void _answer(const ReadRequest& request, const char* operation,
                 const std::function<void(const api_sysinfo_t&)>& body);
};

PEGASUS_NAMESPACE_END

#endif
