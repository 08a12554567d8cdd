#include "CimResponse.h"

#include <cstdio>
#include <utility>

namespace zarwire {

CimResponse::CimResponse(HttpExchange& exchange, Framing framing, const std::string& mpostNs)
    : _ex(exchange), _framing(framing), _ns(mpostNs)
{
}

HeaderList CimResponse::headers(size_t length) const
{
    HeaderList h;
    h.emplace_back("Content-Type", "application/xml; charset=utf-8");
    if (!_started) {
        char len[32];
        std::snprintf(len, sizeof len, "%010zu", length);
        h.emplace_back("content-length", len);
    } else if (_framing == Framing::Trailers) {
        h.emplace_back("Trailer", "CIMError, CIMStatusCode, CIMStatusCodeDescription");
    }
    if (_ns.empty()) {
        h.emplace_back("CIMOperation", "MethodResponse");
    } else {
        h.emplace_back("Ext", "");
        h.emplace_back("Cache-Control", "no-cache");
        h.emplace_back("Man", "http://www.dmtf.org/cim/mapping/http/v1.0; ns=" + _ns);
        h.emplace_back(_ns + "-CIMOperation", "MethodResponse");
    }
    return h;
}

// Sends the head of a streamed answer.
bool CimResponse::start()
{
    _started = true;
    if (_framing == Framing::Close) {
        _ex.setKeepAlive(false);
        return _ex.beginStream(200, "OK", headers(0));
    }
    return _ex.beginChunked(200, "OK", headers(0));
}

bool CimResponse::flushIfFull()
{
    if (_buf.size() < kChunkBytes)
        return true;
    if (!_started) {
        if (_framing != Framing::Trailers && _buf.size() < kWholeLimit)
            return true;
        if (!start())
            return false;
    }
    bool ok = _framing == Framing::Close ? _ex.sendRaw(_buf.data(), _buf.size())
                                         : _ex.sendChunk(_buf.data(), _buf.size());
    _buf.clear();
    return ok;
}

bool CimResponse::finish()
{
    if (!_started && _framing != Framing::Trailers)
        return _ex.send(200, "OK", headers(_buf.size()), std::move(_buf), false);
    if (!_started && !start())
        return false;
    bool ok;
    if (_framing == Framing::Close)
        ok = _ex.sendRaw(_buf.data(), _buf.size());
    else
        ok = _ex.sendChunk(_buf.data(), _buf.size()) && _ex.endChunked({});
    _buf.clear();
    return ok;
}

bool CimResponse::sendError(const std::string& messageId, const std::string& method, bool intrinsic,
                            Pegasus::Uint32 code, const Pegasus::String& message)
{
    namespace CIMXml = Pegasus::CIMXml;
    const char* element = intrinsic ? "IMETHODRESPONSE" : "METHODRESPONSE";
    _buf.clear();
    CIMXml::appendMessageStart(_buf, messageId, false);
    _buf += std::string("<") + element + " NAME=\"";
    CIMXml::appendAttribute(_buf, method);
    _buf += "\">";
    CIMXml::appendError(_buf, code, message);
    _buf += std::string("</") + element + ">\n";
    CIMXml::appendMessageEnd(_buf, false);
    return finish();
}

bool CimResponse::abort(unsigned code, const std::string& description)
{
    _buf.clear();
    _ex.setKeepAlive(false);
    if (_framing != Framing::Trailers)
        return _ex.cut();
    return _ex.endChunked({{"CIMStatusCode", std::to_string(code)},
                           {"CIMStatusCodeDescription", uriEncode(description)}});
}

}  // namespace zarwire
