// CIMClientInterface: what a CIMClient holds (its _rep): the connection
// state and settings, and the connection itself. Internal to libpegclient.
#ifndef Pegasus_Client_CIMClientInterface_h
#define Pegasus_Client_CIMClientInterface_h

#include "Client/CIMClientConnection.h"

PEGASUS_NAMESPACE_BEGIN

class CIMClientInterface {
public:
    virtual ~CIMClientInterface();

    virtual Uint32 getTimeout() const = 0;
    virtual void setTimeout(Uint32 timeoutMilliseconds) = 0;

    // sslContext is null for plain HTTP. AlreadyConnectedException when
    // connected; CannotConnectException when the server cannot be reached.
    virtual void connect(const String& host, Uint32 portNumber, const SSLContext* sslContext,
                         const String& userName, const String& password) = 0;
    virtual void connectLocal() = 0;
    // Does nothing when not connected.
    virtual void disconnect() = 0;

    // The open connection; NotConnectedException when there is none.
    virtual CIMClientConnection& connection() = 0;

    // The client's usual implementation.
    static CIMClientInterface* create();
};

PEGASUS_NAMESPACE_END

#endif
