//%/////////////////////////////////////////////////////////////////////////////
// ClientAddressContainer: the network address of the client that sent the
// operation ("127.0.0.1", "::1", or empty for an in-process caller).
//
// An extension of this framework with no OpenPegasus counterpart: the server
// puts it into every provider's OperationContext. Provider code reads it only
// where ZAR_FRAMEWORK_CLIENT_ADDRESS is defined.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_ClientAddressContainer_h
#define Pegasus_ClientAddressContainer_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/OperationContext.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE ClientAddressContainer : virtual public OperationContext::Container {
public:
    static const String NAME;  // "ClientAddressContainer"

    // Copies a ClientAddressContainer reached through its base;
    // DynamicCastFailedException if container is of another type.
    ClientAddressContainer(const OperationContext::Container& container);
    ClientAddressContainer(const ClientAddressContainer& container);
    ClientAddressContainer(const String& address);
    virtual ~ClientAddressContainer();
    ClientAddressContainer& operator=(const ClientAddressContainer& container);
    virtual String getName() const;  // NAME
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    // The client's address as text.
    String getAddress() const;

private:
    ClientAddressContainer();  // not implemented
    String _address;
};

PEGASUS_NAMESPACE_END

#endif
