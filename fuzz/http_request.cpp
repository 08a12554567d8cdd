// HTTP requests as the server reads them: the head is cut where the server
// cuts it (the first empty line), then the request line and headers, the
// body's framing, a chunked body, the method check with the M-POST
// extension-header prefix, and the URI escapes of header values.
//
// Beyond "no crash", the chunked decoder must agree with itself as bytes
// arrive: a body that decodes completely must, cut anywhere before its end,
// decode as "more bytes needed", never as an error or as a shorter body.
#include <cstddef>
#include <cstdint>
#include <string>

#include "CimProtocol.h"
#include "HttpMessage.h"

#include "FuzzCheck.h"

using namespace zarwire;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string in(reinterpret_cast<const char*>(data), size);
    HttpLimits limits;
    limits.maxBodyBytes = 64 * 1024;

    size_t headEnd, bodyStart;
    if (!findHeadEnd(in, headEnd, bodyStart))
        headEnd = bodyStart = in.size();
    if (headEnd > limits.maxHeadBytes)
        return 0;

    HttpRequest req;
    HeadParseResult hp = parseRequestHead(in.substr(0, headEnd), limits, req);
    if (!hp.ok) {
        FUZZ_CHECK(hp.status >= 400 && hp.status < 600, "a refusal carries an HTTP error status");
        return 0;
    }
    FUZZ_CHECK(!req.method.empty() && !req.target.empty(), "request line has method and target");
    FUZZ_CHECK(req.headers.size() <= limits.maxHeaders, "header count within the limit");
    (void)req.keepAlive();

    std::string decoded;
    for (const auto& h : req.headers) {
        FUZZ_CHECK(!h.first.empty(), "header names are not empty");
        FUZZ_CHECK(uriDecode(uriEncode(h.second), decoded) && decoded == h.second,
                   "URI escapes round-trip");
        (void)uriDecode(h.second, decoded);
    }

    try {
        std::string prefix = checkMethod(req);
        if (!prefix.empty())
            (void)req.header(prefix + "-CIMOperation");
    } catch (ProtocolError& e) {
        FUZZ_CHECK(e.status >= 400 && e.status < 600,
                   "a protocol error carries an HTTP error status");
    }

    BodyFraming f = bodyFraming(req, limits);
    const std::string body = in.substr(bodyStart);
    switch (f.kind) {
        case BodyFraming::Invalid:
            FUZZ_CHECK(f.status >= 400 && f.status < 600,
                       "invalid framing carries an HTTP error status");
            break;
        case BodyFraming::Length:
            FUZZ_CHECK(f.length > 0 && f.length <= limits.maxBodyBytes, "length within the limit");
            break;
        case BodyFraming::None:
            break;
        case BodyFraming::Chunked: {
            size_t pos = 0;
            std::string out, why;
            int r = decodeChunked(body, pos, limits.maxBodyBytes, out, why);
            if (r < 0) {
                FUZZ_CHECK(!why.empty(), "a refused chunked body says why");
                break;
            }
            if (r == 0)
                break;
            FUZZ_CHECK(pos <= body.size() && out.size() <= limits.maxBodyBytes,
                       "complete chunked body within its input and the limit");
            // Cut at a point chosen from the input itself, before the end.
            size_t cut = pos ? (size ^ (size_t(data[0]) << 3) ^ out.size()) % pos : 0;
            size_t p2 = 0;
            std::string part, why2;
            int r2 = decodeChunked(body.substr(0, cut), p2, limits.maxBodyBytes, part, why2);
            FUZZ_CHECK(r2 == 0, "a cut complete chunked body needs more bytes");
            // Bytes after the end do not change the body.
            size_t p3 = 0;
            std::string whole, why3;
            int r3 = decodeChunked(body.substr(0, pos), p3, limits.maxBodyBytes, whole, why3);
            FUZZ_CHECK(r3 == 1 && p3 == pos && whole == out, "a chunked body ends where it ends");
            break;
        }
    }
    return 0;
}
