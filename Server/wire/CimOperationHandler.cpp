#include "CimOperationHandler.h"

#include <chrono>
#include <mutex>

#include <Pegasus/Common/ClientAddressContainer.h>
#include <Pegasus/Common/OperationContext.h>

#include "CimOperation.h"
#include "CimProtocol.h"
#include "CimResponse.h"
#include "LogText.h"

PEGASUS_USING_PEGASUS;

namespace zarwire {

Array<CIMParamValue> decodeMethodParameters(const CimCall& call, const CIMXml::XmlLimits& limits);
void runMethodCall(CimOperationEnv& env, const CimCall& call, const Array<CIMParamValue>& in);

namespace {

using Clock = std::chrono::steady_clock;

// An error to answer with ERROR CODE/DESCRIPTION.
struct CimError {
    Uint32 code;
    String message;
};

// Every failure of an operation, mapped the way providers' exceptions map.
CimError currentError()
{
    try {
        throw;
    } catch (CIMException& e) {
        return CimError{Uint32(e.getCode()), e.getMessage()};
    } catch (CIMXmlFormatException& e) {
        return CimError{CIM_ERR_INVALID_PARAMETER, e.getMessage()};
    } catch (Exception& e) {
        return CimError{CIM_ERR_FAILED, e.getMessage()};
    } catch (std::exception& e) {
        return CimError{CIM_ERR_FAILED, String(e.what())};
    } catch (...) {
        return CimError{CIM_ERR_FAILED, String("Unknown error.")};
    }
}

// Delivered objects go into the response as they arrive; providers may
// deliver from several threads.
class ResponseSink : public ResultSink {
public:
    explicit ResponseSink(CimResponse& r) : _r(r) {}
    void write(const std::function<void(std::string&)>& f) override
    {
        std::lock_guard<std::mutex> lock(_mu);
        f(_r.buffer());
        if (!_r.flushIfFull())
            throw CIMException(CIM_ERR_FAILED, "client connection lost");
    }

private:
    CimResponse& _r;
    std::mutex _mu;
};

}  // namespace

struct CimOperationHandler::Outcome {
    std::string user = "-";
    std::string operation = "-";
    std::string className = "-";
    std::string status = "-";
    std::string reason;
};

CimOperationHandler::CimOperationHandler(CIMOperationHost& host, const CimHandlerConfig& config)
    : _host(host),
      _config(config),
      _enumerations(config.enumerationLimits),
      _logins(config.loginCacheSize, config.loginCacheLifetime)
{
}

unsigned long long CimOperationHandler::usersGeneration() const
{
    return _config.usersGeneration ? _config.usersGeneration() : 0;
}

void CimOperationHandler::log(int level, const std::string& line)
{
    if (_config.log)
        _config.log(level, line);
}

void CimOperationHandler::logAccess(const std::string& user, const std::string& address,
                                    const std::string& operation, const std::string& className,
                                    const std::string& status, const std::string& reason, double ms)
{
    char dur[32];
    snprintf(dur, sizeof dur, "%.1f", ms);
    std::string line = "access: user=" + logSafe(user) + " address=" + logSafe(address) +
                       " operation=" + logSafe(operation) + " class=" + logSafe(className) +
                       " status=" + logSafe(status) + " duration_ms=" + dur;
    if (!reason.empty())
        line += " reason=\"" + logSafe(reason) + "\"";
    log(3, line);
}

void CimOperationHandler::rejected(const PeerInfo& peer, int status, const std::string& reason)
{
    logAccess("-", peer.address, "-", "-", "HTTP_" + std::to_string(status), reason, 0);
}

void CimOperationHandler::handle(HttpExchange& ex)
{
    auto start = Clock::now();
    Outcome out;
    if (!ex.user().empty())
        out.user = ex.user();
    try {
        process(ex, out);
    } catch (ProtocolError& e) {
        if (e.status != 401)
            ex.setKeepAlive(ex.keepAlive() && e.status < 500);
        if (!ex.responded())
            ex.send(e.status, "", protocolErrorHeaders(e, _config.realm), std::string());
        out.status = "HTTP_" + std::to_string(e.status);
        out.reason = e.detail;
    } catch (...) {
        if (!ex.responded())
            ex.send(500, "", {}, std::string());
        out.status = "HTTP_500";
    }
    double ms = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    logAccess(out.user, ex.peer().address, out.operation, out.className, out.status, out.reason,
              ms);
}

void CimOperationHandler::process(HttpExchange& ex, Outcome& out)
{
    CimCall call;
    try {
        decodeCimRequest(ex.request(), _config.xmlLimits, call);
        if (!call.method.empty())
            out.operation = call.method;
        out.className = call.classForLog;
    } catch (CallError& e) {
        out.operation = call.method;
        out.status = u8(CIMXml::errorDescription(e.code, String()));
        CimResponse(ex, call.framing, call.mpostNs)
            .sendError(call.messageId, call.method, call.intrinsic, e.code, e.message);
        return;
    }
    run(ex, out, call);
}

// Runs the call and writes its answer: the operation's content inside
// IMETHODRESPONSE or METHODRESPONSE, or an ERROR in its place. An error
// after part of a streamed answer has left ends the response as a failure.
void CimOperationHandler::run(HttpExchange& ex, Outcome& out, const CimCall& call)
{
    const IntrinsicEntry* op = call.intrinsic ? findIntrinsic(call.method) : nullptr;
    std::string element = call.intrinsic ? "IMETHODRESPONSE" : "METHODRESPONSE";
    std::string responseName = op ? op->name : call.method;

    // What must decode before the operation runs: malformed parameters are
    // answered as broken requests, well-formed impossible values as CIM
    // errors.
    std::unique_ptr<CimParams> params;
    Array<CIMParamValue> in;
    try {
        if (call.intrinsic)
            params.reset(new CimParams(*call.element));
        else
            in = decodeMethodParameters(call, _config.xmlLimits);
    } catch (CIMXmlFormatException& e) {
        try {
            throwDecodeFailure(e);
        } catch (CallError& ce) {
            out.status = u8(CIMXml::errorDescription(ce.code, String()));
            CimResponse(ex, call.framing, call.mpostNs)
                .sendError(call.messageId, responseName, call.intrinsic, ce.code, ce.message);
            return;
        }
    }

    OperationContext ctx;
    std::string user = out.user == "-" ? std::string() : out.user;
    ctx.insert(IdentityContainer(str(user)));
    ctx.insert(ClientAddressContainer(str(ex.peer().address)));

    CimResponse resp(ex, call.framing, call.mpostNs);
    ResponseSink sink(resp);
    CimOperationEnv env{
        _host,         ctx,  user, call.nameSpace, str(_config.hostName), _config.xmlLimits,
        _enumerations, resp, sink};
    std::string& b = resp.buffer();
    auto begin = [&] {
        CIMXml::appendMessageStart(b, call.messageId, false);
        b += "<" + element + " NAME=\"";
        CIMXml::appendAttribute(b, responseName);
        b += "\">";
    };
    auto end = [&] {
        b += "</" + element + ">\n";
        CIMXml::appendMessageEnd(b, false);
        resp.finish();
    };
    begin();
    try {
        if (!call.intrinsic)
            runMethodCall(env, call, in);
        else if (!op)
            throw CIMException(CIM_ERR_NOT_SUPPORTED, str(call.method));
        else
            op->run(env, *params);
        end();
        out.status = "OK";
    } catch (ProtocolError&) {
        if (resp.started()) {
            resp.abort(CIM_ERR_FAILED, "request-not-valid");
            return;
        }
        throw;
    } catch (...) {
        CimError err = currentError();
        out.status = u8(CIMXml::errorDescription(err.code, String()));
        if (resp.started()) {
            log(3, "operation " + logSafe(call.method) +
                       " failed after part of its answer was sent: " + logSafe(u8(err.message)));
            resp.abort(err.code, u8(CIMXml::errorDescription(err.code, err.message)));
            return;
        }
        resp.discard();
        begin();
        CIMXml::appendError(b, err.code, err.message);
        end();
    }
}

}  // namespace zarwire
