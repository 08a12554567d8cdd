// CIMClientRep: the connection state of a CIMClient and the choice of
// transport when it connects.
#include <atomic>
#include <memory>
#include <pwd.h>
#include <unistd.h>

#include "Client/CIMClientInterface.h"

PEGASUS_NAMESPACE_BEGIN

namespace {

const Uint32 DEFAULT_TIMEOUT_MILLISECONDS = 20000;

std::atomic<RemoteConnectionFactory> remoteFactory(0);
std::atomic<LocalConnectionFactory> localFactory(0);

// The name of the process's effective OS user (its number if it has none).
String ProcessUserName()
{
    uid_t uid = geteuid();
    struct passwd entry;
    struct passwd* result = 0;
    char buffer[4096];
    if (getpwuid_r(uid, &entry, buffer, sizeof(buffer), &result) == 0 && result &&
        result->pw_name) {
        return String(result->pw_name);
    }
    String number;
    number.appendPrintf("%u", unsigned(uid));
    return number;
}

class CIMClientRep : public CIMClientInterface {
public:
    CIMClientRep() : _timeout(DEFAULT_TIMEOUT_MILLISECONDS) {}

    virtual Uint32 getTimeout() const { return _timeout; }

    virtual void setTimeout(Uint32 timeoutMilliseconds)
    {
        _timeout = timeoutMilliseconds;
        if (_connection)
            _connection->setTimeout(timeoutMilliseconds);
    }

    virtual void connect(const String& host, Uint32 portNumber, const SSLContext* sslContext,
                         const String& userName, const String& password)
    {
        if (_connection)
            throw AlreadyConnectedException();
        RemoteConnectionFactory factory = remoteFactory.load();
        if (!factory) {
            String message("Cannot connect to ");
            message.append(host);
            message.appendPrintf(":%u. Connection failed.", portNumber);
            throw CannotConnectException(message);
        }
        _connection.reset(factory(host, portNumber, sslContext, userName, password, _timeout));
    }

    virtual void connectLocal()
    {
        if (_connection)
            throw AlreadyConnectedException();
        CIMOperationHost* host = getLocalOperationHost();
        if (host) {
            _connection.reset(createLocalHostConnection(*host, ProcessUserName()));
            return;
        }
        LocalConnectionFactory factory = localFactory.load();
        if (!factory) {
            throw CannotConnectException("Cannot connect to local CIM server. Connection failed.");
        }
        _connection.reset(factory(_timeout));
    }

    virtual void disconnect() { _connection.reset(); }

    virtual CIMClientConnection& connection()
    {
        if (!_connection)
            throw NotConnectedException();
        return *_connection;
    }

private:
    Uint32 _timeout;
    std::unique_ptr<CIMClientConnection> _connection;
};

}  // namespace

CIMClientConnection::~CIMClientConnection() {}

CIMClientInterface::~CIMClientInterface() {}

CIMClientInterface* CIMClientInterface::create()
{
    return new CIMClientRep;
}

void registerRemoteConnectionFactory(RemoteConnectionFactory factory)
{
    remoteFactory.store(factory);
}

void registerLocalConnectionFactory(LocalConnectionFactory factory)
{
    localFactory.store(factory);
}

PEGASUS_NAMESPACE_END
