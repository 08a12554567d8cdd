#include "HttpExchange.h"

#include <cstdio>

namespace zarwire {

const char* reasonPhrase(int status)
{
    switch (status) {
        case 100:
            return "Continue";
        case 200:
            return "OK";
        case 400:
            return "Bad Request";
        case 401:
            return "Unauthorized";
        case 403:
            return "Forbidden";
        case 408:
            return "Request Timeout";
        case 411:
            return "Length Required";
        case 413:
            return "Request Entity Too Large";
        case 431:
            return "Request Header Fields Too Large";
        case 500:
            return "Internal Server Error";
        case 501:
            return "Not Implemented";
        case 503:
            return "Service Unavailable";
        case 505:
            return "HTTP Version Not Supported";
    }
    return "Error";
}

std::string responseHead(int status, const std::string& reason, const HeaderList& headers,
                         bool keepAlive)
{
    std::string h = "HTTP/1.1 " + std::to_string(status) + " " +
                    (reason.empty() ? std::string(reasonPhrase(status)) : reason) + "\r\n";
    for (const auto& kv : headers)
        h += kv.first + ": " + kv.second + "\r\n";
    if (!keepAlive)
        h += "Connection: close\r\n";
    return h;
}

HttpExchange::HttpExchange(OutputQueue& out, const HttpRequest& request, const PeerInfo& peer,
                           const std::string& user, bool keepAlive)
    : _out(out), _request(request), _peer(peer), _user(user), _keepAlive(keepAlive)
{
}

bool HttpExchange::put(const std::string& bytes)
{
    if (_failed)
        return false;
    _failed = !_out.write(bytes.data(), bytes.size());
    if (_failed)
        _keepAlive = false;
    return !_failed;
}

bool HttpExchange::send(int status, const std::string& reason, const HeaderList& headers,
                        const std::string& body, bool addLength)
{
    return send(status, reason, headers, std::string(body), addLength);
}

bool HttpExchange::send(int status, const std::string& reason, const HeaderList& headers,
                        std::string&& body, bool addLength)
{
    _status = status;
    _responded = true;
    std::string h = responseHead(status, reason, headers, _keepAlive);
    if (addLength)
        h += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    h += "\r\n";
    if (body.size() < 16384) {
        h += body;
        return put(h);
    }
    if (!put(h))
        return false;
    _failed = !_out.give(std::move(body));
    if (_failed)
        _keepAlive = false;
    return !_failed;
}

bool HttpExchange::beginChunked(int status, const std::string& reason, const HeaderList& headers)
{
    _status = status;
    _responded = true;
    return put(responseHead(status, reason, headers, _keepAlive) +
               "Transfer-Encoding: chunked\r\n\r\n");
}

bool HttpExchange::sendChunk(const char* data, size_t n)
{
    if (_failed)
        return false;
    if (n == 0)
        return true;
    char size[32];
    int len = snprintf(size, sizeof size, "%zx\r\n", n);
    std::string chunk;
    chunk.reserve(n + 40);
    chunk.append(size, static_cast<size_t>(len));
    chunk.append(data, n);
    chunk += "\r\n";
    return put(chunk);
}

bool HttpExchange::beginStream(int status, const std::string& reason, const HeaderList& headers)
{
    _status = status;
    _responded = true;
    _keepAlive = false;
    return put(responseHead(status, reason, headers, false) + "\r\n");
}

bool HttpExchange::sendRaw(const char* data, size_t n)
{
    if (_failed)
        return false;
    _failed = !_out.write(data, n);
    return !_failed;
}

bool HttpExchange::cut()
{
    _cut = true;
    _keepAlive = false;
    _failed = true;
    return true;
}

bool HttpExchange::endChunked(const HeaderList& trailers)
{
    std::string t = "0\r\n";
    for (const auto& kv : trailers)
        t += kv.first + ": " + kv.second + "\r\n";
    t += "\r\n";
    return put(t);
}

}  // namespace zarwire
