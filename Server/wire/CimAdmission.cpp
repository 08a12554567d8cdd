// Admission of CIM-XML requests, from the head alone: protocol checks that
// need no body, then HTTP Basic authentication (the local socket is trusted
// as the server's own user). The password check runs on a worker; refusals
// are written to the access log with every client-chosen field escaped.
#include <chrono>

#include "CimOperationHandler.h"
#include "CimProtocol.h"
#include "LogText.h"

namespace zarwire {

HeaderList protocolErrorHeaders(const ProtocolError& e, const std::string& realm)
{
    HeaderList h;
    if (!e.cimError.empty())
        h.emplace_back("CIMError", e.cimError);
    h.emplace_back("PGErrorDetail", uriEncode(e.detail));
    if (e.status == 401)
        h.emplace_back("WWW-Authenticate", "Basic realm=\"" + realm + "\"");
    return h;
}

std::string checkMethod(const HttpRequest& req)
{
    std::string mns;
    if (req.method == "M-POST") {
        if (req.versionMinor == 0)
            throw ProtocolError{400, "", "M-POST needs HTTP/1.1"};
        const std::string* man = req.header("Man");
        size_t p = man ? man->find("ns=") : std::string::npos;
        if (!man || man->find("http://www.dmtf.org/cim/mapping/http/v1.0") == std::string::npos ||
            p == std::string::npos)
            throw ProtocolError{400, "", "M-POST without the CIM mapping Man header"};
        mns = trim(man->substr(p + 3));
        size_t end = mns.find_first_of(" ;,");
        if (end != std::string::npos)
            mns.erase(end);
        if (mns.empty() || mns.find_first_not_of("0123456789") != std::string::npos)
            throw ProtocolError{400, "", "malformed ns in Man header"};
    } else if (req.method != "POST") {
        throw ProtocolError{501, "", "method " + req.method + " is not supported"};
    }
    if (req.versionMinor >= 1 && !req.header("Host"))
        throw ProtocolError{400, "", "missing Host header"};
    return mns;
}

BasicCredentials parseBasicCredentials(const std::string& authorization)
{
    std::string a = trim(authorization);
    if (a.size() < 6 || !equalsNoCase(a.substr(0, 6), "Basic "))
        throw ProtocolError{401, "", "User Unauthorized"};
    std::string cred;
    if (!base64Decode(trim(a.substr(6)), cred) || cred.find(':') == std::string::npos)
        throw ProtocolError{401, "", "User Unauthorized"};
    // A NUL would end the name or the password early in the array's check.
    if (cred.find('\0') != std::string::npos)
        throw ProtocolError{400, "", "credentials hold a NUL byte"};
    BasicCredentials c;
    c.user = cred.substr(0, cred.find(':'));
    c.password = cred.substr(cred.find(':') + 1);
    return c;
}

namespace {

Admission refusal(const ProtocolError& e, const std::string& realm)
{
    Admission a;
    a.kind = Admission::Reject;
    a.status = e.status;
    a.headers = protocolErrorHeaders(e, realm);
    a.detail = e.detail;
    return a;
}

bool hasControl(const std::string& s)
{
    for (unsigned char c : s)
        if (c < 0x20 || c == 0x7f)
            return true;
    return false;
}

}  // namespace

Admission CimOperationHandler::screen(const HttpRequest& head, const PeerInfo& peer)
{
    std::string user = "-";
    try {
        checkMethod(head);
        Admission a;
        if (peer.local) {
            a.user = _config.localUser;
            return a;
        }
        size_t count = 0;
        const std::string* auth = nullptr;
        for (const auto& h : head.headers)
            if (equalsNoCase(h.first, "Authorization")) {
                count++;
                auth = &h.second;
            }
        if (count > 1)
            throw ProtocolError{400, "", "more than one Authorization header"};
        if (!auth)
            throw ProtocolError{401, "", "User Unauthorized"};
        BasicCredentials c = parseBasicCredentials(*auth);
        user = c.user.empty() ? "-" : c.user;
        a.kind = Admission::Check;
        a.user = c.user;
        // What a connection remembers of a login it passed: a keyed hash of
        // the credentials, with the users' generation, so that a change of
        // the array's users makes it log in again.
        a.credential = _logins.digest(trim(*auth)) + ":" + std::to_string(usersGeneration());
        return a;
    } catch (ProtocolError& e) {
        logAccess(user, peer.address, "-", "-", "HTTP_" + std::to_string(e.status), e.detail, 0);
        return refusal(e, _config.realm);
    }
}

Admission CimOperationHandler::check(const HttpRequest& head, const PeerInfo& peer)
{
    auto start = std::chrono::steady_clock::now();
    BasicCredentials c;
    try {
        c = parseBasicCredentials(*head.header("Authorization"));
    } catch (ProtocolError& e) {
        return refusal(e, _config.realm);
    }
    // Names no account can have are refused without asking the array.
    if (!c.user.empty() && !hasControl(c.user) && _config.authenticate) {
        unsigned long long generation = usersGeneration();
        bool ok = _logins.verified(c.user, c.password, generation);
        if (!ok && _config.authenticate(c.user, c.password)) {
            ok = true;
            _logins.remember(c.user, c.password, generation);
        }
        if (ok) {
            Admission a;
            a.user = c.user;
            return a;
        }
    }
    double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    log(3,
        "authentication failed for user \"" + logSafe(c.user) + "\" from " + logSafe(peer.address));
    logAccess(c.user.empty() ? "-" : c.user, peer.address, "-", "-", "HTTP_401",
              "User Unauthorized", ms);
    recordFailedLogin(c.user, peer.address);
    Admission r = refusal(ProtocolError{401, "", "User Unauthorized"}, _config.realm);
    r.failedLogin = true;
    r.user = c.user;
    return r;
}

void CimOperationHandler::recordFailedLogin(const std::string& user, const std::string& address)
{
    if (_config.recordFailedLogin)
        _config.recordFailedLogin(user, address);
}

}  // namespace zarwire
