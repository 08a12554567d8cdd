// Whole CIM-XML requests (HTTP head and body) through the server's CIM
// operation handler, in one process: the head is read and the body framed
// as the server does, admission screens the head, then the handler checks
// the CIM headers, parses the XML under its limits and decodes the call
// (every intrinsic parameter, method parameters typed from the schema's
// declarations) before the core answers from the project's schema. No
// provider module is loaded: instance operations end in the core's error.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "CimOperationHandler.h"
#include "HttpExchange.h"
#include "HttpMessage.h"
#include "OutputQueue.h"
#include "ServerCore.h"

using namespace zarwire;

namespace {

zarserver::ServerCore* core;
CimOperationHandler* handler;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    zarserver::CoreConfig cc;
    cc.schemaDir = std::string(ZAR_SOURCE_DIR) + "/schema";
    cc.providerDir = "/nonexistent";
    cc.hostName = "fuzzhost";
    cc.log = [](int, const std::string&) {};
    core = new zarserver::ServerCore(cc);
    CimHandlerConfig hc;
    hc.hostName = "fuzzhost";
    hc.realm = "fuzzhost";
    // Any well-formed Basic credential is admitted: the login itself is
    // basic_auth's target, this one is about what follows.
    hc.authenticate = [](const std::string&, const std::string&) { return true; };
    hc.log = [](int, const std::string&) {};
    handler = new CimOperationHandler(core->dispatcher(), hc);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string in(reinterpret_cast<const char*>(data), size);
    HttpLimits limits;
    limits.maxBodyBytes = 1 << 20;

    size_t headEnd, bodyStart;
    if (!findHeadEnd(in, headEnd, bodyStart))
        return 0;
    HttpRequest req;
    if (!parseRequestHead(in.substr(0, headEnd), limits, req).ok)
        return 0;
    BodyFraming f = bodyFraming(req, limits);
    if (f.kind == BodyFraming::Invalid)
        return 0;
    if (f.kind == BodyFraming::Chunked) {
        size_t pos = bodyStart;
        std::string why;
        if (decodeChunked(in, pos, limits.maxBodyBytes, req.body, why) != 1)
            return 0;
    } else if (f.kind == BodyFraming::Length) {
        // The server would wait for the missing bytes; take what is there.
        req.body = in.substr(bodyStart, f.length);
    }

    PeerInfo peer;
    peer.address = "192.0.2.1";
    Admission adm = handler->screen(req, peer);
    if (adm.kind == Admission::Check)
        adm = handler->check(req, peer);
    if (adm.kind == Admission::Reject)
        return 0;

    OutputQueue out(size_t(1) << 30, [] {});
    HttpExchange ex(out, req, peer, adm.user, req.keepAlive());
    handler->handle(ex);
    out.close();
    // An Open* request leaves an enumeration whose producer runs on a
    // detached thread. Close it and wait for that thread: inputs stay
    // independent of each other, and the leak check never runs while a
    // thread is between its creation and its start (when the only pointer
    // to what it was given is one the leak checker cannot see).
    handler->enumerations().closeAll();
    return 0;
}
