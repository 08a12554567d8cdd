// CimOperationHandler: turns CIM-XML requests received over HTTP into calls
// of the server's CIMOperationHost and streams the answers back.
//
// The client is authenticated from the head alone, before the body is read
// (CimAdmission.cpp: HTTP Basic; the local socket is trusted as the
// server's own user). Then the request is decoded once (CimRequest), the
// operation found in its table (IntrinsicOperations, PullOperations) or
// invoked as a method (MethodCall) with IdentityContainer and
// ClientAddressContainer in its context, and the answer written in its
// envelope here: CIM errors as ERROR elements, protocol errors as an HTTP
// status with CIMError/PGErrorDetail headers. One access-log line is
// written per request.
#ifndef ZAR_SERVER_WIRE_CIMOPERATIONHANDLER_H
#define ZAR_SERVER_WIRE_CIMOPERATIONHANDLER_H

#include <chrono>
#include <functional>
#include <string>

#include <zarframework/CIMOperationHost.h>
#include <zarframework/CIMXmlCodec.h>

#include "AuthCache.h"
#include "CimRequest.h"
#include "EnumerationContexts.h"
#include "HttpServer.h"

namespace zarwire {

struct CimHandlerConfig {
    // Host name put into paths the server returns (association results).
    std::string hostName = "localhost";
    // The realm of the Basic challenge.
    std::string realm = "localhost";
    // User name of requests on the local socket (the server's own user).
    std::string localUser;
    Pegasus::CIMXml::XmlLimits xmlLimits;
    // Returns true when user/password are valid. Required.
    std::function<bool(const std::string& user, const std::string& password)> authenticate;
    // Receives log lines: level (2 error, 3 warning/notice, 4 trace), text.
    std::function<void(int level, const std::string& line)> log;
    // A value that changes whenever the array's users change; logins
    // verified before a change are checked again after it. Optional (then
    // verified logins are trusted for the cache's lifetime).
    std::function<unsigned long long()> usersGeneration;
    // Logins remembered across connections, and for how long.
    size_t loginCacheSize = 256;
    std::chrono::milliseconds loginCacheLifetime = std::chrono::seconds(60);
    // Records a failed login in the array's audit log. Optional.
    std::function<void(const std::string& user, const std::string& address)> recordFailedLogin;
    // Open enumerations of the pull operations.
    EnumerationLimits enumerationLimits;
};

class CimOperationHandler : public RequestHandler {
public:
    CimOperationHandler(Pegasus::CIMOperationHost& host, const CimHandlerConfig& config);
    Admission screen(const HttpRequest& head, const PeerInfo& peer) override;
    Admission check(const HttpRequest& head, const PeerInfo& peer) override;
    void handle(HttpExchange& exchange) override;
    void rejected(const PeerInfo& peer, int status, const std::string& reason) override;

    // Closes every open enumeration; call before the host goes away.
    void shutdown() { _enumerations.closeAll(); }
    EnumerationContexts& enumerations() { return _enumerations; }

private:
    struct Outcome;
    void process(HttpExchange& ex, Outcome& out);
    void run(HttpExchange& ex, Outcome& out, const CimCall& call);
    void log(int level, const std::string& line);
    // One access-log line; every field is escaped.
    void logAccess(const std::string& user, const std::string& address,
                   const std::string& operation, const std::string& className,
                   const std::string& status, const std::string& reason, double ms);
    void recordFailedLogin(const std::string& user, const std::string& address);
    unsigned long long usersGeneration() const;

    Pegasus::CIMOperationHost& _host;
    CimHandlerConfig _config;
    EnumerationContexts _enumerations;
    AuthCache _logins;
};

}  // namespace zarwire

#endif
