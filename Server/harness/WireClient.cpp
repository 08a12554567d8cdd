#include "WireClient.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <strings.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace zare2e {

namespace {

std::string base64(const std::string& in)
{
    static const char t[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (size_t i = 0; i < in.size(); i += 3) {
        unsigned v = static_cast<unsigned char>(in[i]) << 16;
        if (i + 1 < in.size())
            v |= static_cast<unsigned char>(in[i + 1]) << 8;
        if (i + 2 < in.size())
            v |= static_cast<unsigned char>(in[i + 2]);
        out += t[v >> 18];
        out += t[(v >> 12) & 63];
        out += i + 1 < in.size() ? t[(v >> 6) & 63] : '=';
        out += i + 2 < in.size() ? t[v & 63] : '=';
    }
    return out;
}

std::string nsPath(const std::string& ns)
{
    std::string out = "<LOCALNAMESPACEPATH>";
    size_t start = 0;
    for (;;) {
        size_t slash = ns.find('/', start);
        out += "<NAMESPACE NAME=\"" + ns.substr(start, slash - start) + "\"/>";
        if (slash == std::string::npos)
            break;
        start = slash + 1;
    }
    return out + "</LOCALNAMESPACEPATH>";
}

std::string envelope(const std::string& call)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
           "<MESSAGE ID=\"1\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ>" +
           call + "</SIMPLEREQ></MESSAGE></CIM>";
}

// The value of header name in head, or null.
bool header(const std::string& head, const char* name, std::string& value)
{
    size_t n = std::strlen(name);
    for (size_t p = head.find("\r\n"); p != std::string::npos; p = head.find("\r\n", p + 2)) {
        if (strncasecmp(head.c_str() + p + 2, name, n) == 0 && head[p + 2 + n] == ':') {
            size_t start = head.find_first_not_of(' ', p + 3 + n);
            value = head.substr(start, head.find("\r\n", start) - start);
            return true;
        }
    }
    return false;
}

}  // namespace

WireClient::WireClient(const std::string& host, int port, const std::string& user,
                       const std::string& password)
    : _host(host), _port(port)
{
    if (!user.empty())
        _authorization = "Authorization: Basic " + base64(user + ":" + password) + "\r\n";
}

WireClient::~WireClient()
{
    close();
}

void WireClient::open()
{
    addrinfo hints{}, *res = nullptr;
    hints.ai_socktype = SOCK_STREAM;
    if (getaddrinfo(_host.c_str(), std::to_string(_port).c_str(), &hints, &res) != 0 || !res)
        throw std::runtime_error("cannot resolve " + _host);
    _fd = ::socket(res->ai_family, SOCK_STREAM, 0);
    bool ok = _fd >= 0 && ::connect(_fd, res->ai_addr, res->ai_addrlen) == 0;
    freeaddrinfo(res);
    if (!ok) {
        close();
        throw std::runtime_error("cannot connect to " + _host + ":" + std::to_string(_port));
    }
    int one = 1;
    setsockopt(_fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
}

void WireClient::close()
{
    if (_fd >= 0)
        ::close(_fd);
    _fd = -1;
}

bool WireClient::read(std::string& in)
{
    char buf[65536];
    ssize_t n = ::recv(_fd, buf, sizeof buf, 0);
    if (n <= 0)
        return false;
    in.append(buf, static_cast<size_t>(n));
    return true;
}

WireClient::Answer WireClient::call(const std::string& method, const std::string& object,
                                    const std::string& xml, const Sink& sink, const Options& o)
{
    std::string req = std::string("POST /cimom ") + o.version + "\r\nHost: " + _host +
                      "\r\nContent-Type: application/xml; charset=\"utf-8\"\r\n"
                      "CIMOperation: MethodCall\r\nCIMMethod: " +
                      method + "\r\nCIMObject: " + object + "\r\n" + _authorization +
                      (o.trailers ? "TE: trailers\r\n" : "") +
                      (o.keepAlive ? "" : "Connection: close\r\n") +
                      "Content-Length: " + std::to_string(xml.size()) + "\r\n\r\n" + xml;
    for (int attempt = 0;; attempt++) {
        bool fresh = _fd < 0;
        if (fresh)
            open();
        if (::send(_fd, req.data(), req.size(), MSG_NOSIGNAL) == ssize_t(req.size()))
            break;
        close();
        if (fresh || attempt > 0)
            throw std::runtime_error("cannot send the request");
    }

    Answer a;
    std::string in;
    size_t he;
    while ((he = in.find("\r\n\r\n")) == std::string::npos)
        if (!read(in)) {
            close();
            if (in.empty())
                throw std::runtime_error("the server closed the connection without answering");
            return a;
        }
    a.head = in.substr(0, he);
    a.status = std::atoi(a.head.c_str() + 9);
    in.erase(0, he + 4);
    std::string v;
    bool keep = o.keepAlive && std::strcmp(o.version, "HTTP/1.1") == 0 &&
                !(header(a.head, "Connection", v) && strcasecmp(v.c_str(), "close") == 0);
    auto give = [&](const char* p, size_t n) {
        a.bytes += n;
        if (n)
            sink(p, n);
    };
    if (header(a.head, "Transfer-Encoding", v)) {
        for (;;) {
            size_t eol;
            while ((eol = in.find("\r\n")) == std::string::npos)
                if (!read(in))
                    goto cut;
            size_t n = std::strtoul(in.c_str(), nullptr, 16);
            in.erase(0, eol + 2);
            if (n == 0) {
                // Trailer fields up to an empty line.
                while (in.find("\r\n") != 0 && in.find("\r\n\r\n") == std::string::npos)
                    if (!read(in))
                        goto cut;
                a.head += "\r\n" + in.substr(0, in.find("\r\n\r\n") == std::string::npos
                                                    ? 0
                                                    : in.find("\r\n\r\n"));
                a.complete = true;
                break;
            }
            while (in.size() < n + 2)
                if (!read(in))
                    goto cut;
            give(in.data(), n);
            in.erase(0, n + 2);
        }
    } else if (header(a.head, "Content-Length", v)) {
        size_t left = std::strtoul(v.c_str(), nullptr, 10);
        for (;;) {
            size_t take = std::min(left, in.size());
            give(in.data(), take);
            in.erase(0, take);
            left -= take;
            if (left == 0)
                break;
            if (!read(in))
                goto cut;
        }
        a.complete = true;
    } else {
        keep = false;
        give(in.data(), in.size());
        in.clear();
        while (read(in)) {
            give(in.data(), in.size());
            in.clear();
        }
        a.complete = true;
    }
    if (!keep)
        close();
    return a;
cut:
    close();
    return a;
}

WireClient::Answer WireClient::call(const std::string& method, const std::string& object,
                                    const std::string& xml, std::string& body,
                                    const Options& options)
{
    body.clear();
    return call(
        method, object, xml, [&](const char* p, size_t n) { body.append(p, n); }, options);
}

std::string WireClient::intrinsic(const std::string& method, const std::string& params,
                                  const std::string& ns)
{
    return envelope("<IMETHODCALL NAME=\"" + method + "\">" + nsPath(ns) + params +
                    "</IMETHODCALL>");
}

std::string WireClient::methodCall(const std::string& method, const std::string& className,
                                   const std::vector<std::pair<std::string, std::string>>& keys,
                                   const std::string& params, const std::string& ns)
{
    std::string name = "<INSTANCENAME CLASSNAME=\"" + className + "\">";
    for (const auto& k : keys)
        name += "<KEYBINDING NAME=\"" + k.first + "\"><KEYVALUE VALUETYPE=\"string\">" + k.second +
                "</KEYVALUE></KEYBINDING>";
    name += "</INSTANCENAME>";
    return envelope("<METHODCALL NAME=\"" + method + "\"><LOCALINSTANCEPATH>" + nsPath(ns) + name +
                    "</LOCALINSTANCEPATH>" + params + "</METHODCALL>");
}

bool WireClient::parseUrl(const std::string& url, std::string& host, int& port, std::string& error)
{
    if (url.compare(0, 7, "http://") != 0) {
        error = "the URL must be http://HOST:PORT";
        return false;
    }
    std::string hp = url.substr(7);
    if (!hp.empty() && hp.back() == '/')
        hp.pop_back();
    size_t colon = hp.rfind(':');
    char* end = nullptr;
    long p = colon == std::string::npos ? 0 : std::strtol(hp.c_str() + colon + 1, &end, 10);
    if (colon == std::string::npos || colon == 0 || !end || *end || p < 1 || p > 65535) {
        error = "the URL needs a host and a port from 1 to 65535: " + url;
        return false;
    }
    host = hp.substr(0, colon);
    port = int(p);
    return true;
}

std::string WireClient::value(const std::string& name, const std::string& v)
{
    return "<IPARAMVALUE NAME=\"" + name + "\"><VALUE>" + v + "</VALUE></IPARAMVALUE>";
}

std::string WireClient::className(const std::string& name, const std::string& cls)
{
    return "<IPARAMVALUE NAME=\"" + name + "\"><CLASSNAME NAME=\"" + cls + "\"/></IPARAMVALUE>";
}

}  // namespace zare2e
