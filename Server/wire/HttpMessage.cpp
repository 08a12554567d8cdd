#include "HttpMessage.h"

#include <cstring>

namespace zarwire {

namespace {

bool isTokenChar(unsigned char c)
{
    if (c >= '0' && c <= '9')
        return true;
    if ((c | 0x20) >= 'a' && (c | 0x20) <= 'z')
        return true;
    return std::strchr("!#$%&'*+-.^_`|~", c) != nullptr && c != 0;
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

}  // namespace

bool equalsNoCase(const std::string& a, const std::string& b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); i++) {
        unsigned char x = a[i], y = b[i];
        if (x >= 'A' && x <= 'Z')
            x += 32;
        if (y >= 'A' && y <= 'Z')
            y += 32;
        if (x != y)
            return false;
    }
    return true;
}

std::string trim(const std::string& s)
{
    size_t b = s.find_first_not_of(" \t");
    if (b == std::string::npos)
        return std::string();
    size_t e = s.find_last_not_of(" \t");
    return s.substr(b, e - b + 1);
}

const std::string* HttpRequest::header(const std::string& name) const
{
    for (const auto& h : headers)
        if (equalsNoCase(h.first, name))
            return &h.second;
    return nullptr;
}

bool HttpRequest::keepAlive() const
{
    const std::string* c = header("Connection");
    bool close = false, keep = false;
    if (c) {
        size_t start = 0;
        while (start <= c->size()) {
            size_t comma = c->find(',', start);
            std::string tok = trim(
                c->substr(start, comma == std::string::npos ? std::string::npos : comma - start));
            if (equalsNoCase(tok, "close"))
                close = true;
            if (equalsNoCase(tok, "keep-alive"))
                keep = true;
            if (comma == std::string::npos)
                break;
            start = comma + 1;
        }
    }
    if (close)
        return false;
    return versionMinor >= 1 || keep;
}

bool findHeadEnd(const std::string& data, size_t& headEnd, size_t& bodyStart)
{
    size_t a = data.find("\r\n\r\n");
    size_t b = data.find("\n\n");
    if (a != std::string::npos && (b == std::string::npos || a < b)) {
        headEnd = a;
        bodyStart = a + 4;
        return true;
    }
    if (b != std::string::npos) {
        headEnd = b;
        bodyStart = b + 2;
        return true;
    }
    return false;
}

HeadParseResult parseRequestHead(const std::string& head, const HttpLimits& limits,
                                 HttpRequest& req)
{
    HeadParseResult r;
    auto fail = [&](int status, const std::string& why) {
        r.ok = false;
        r.status = status;
        r.reason = why;
        return r;
    };
    // Split into lines, accepting CRLF or bare LF.
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < head.size()) {
        size_t nl = head.find('\n', start);
        size_t end = nl == std::string::npos ? head.size() : nl;
        size_t stop = (end > start && head[end - 1] == '\r') ? end - 1 : end;
        lines.push_back(head.substr(start, stop - start));
        if (nl == std::string::npos)
            break;
        start = nl + 1;
    }
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    // Tolerate empty lines before the request line.
    size_t first = 0;
    while (first < lines.size() && lines[first].empty())
        first++;
    if (first >= lines.size())
        return fail(400, "empty request");

    const std::string& rl = lines[first];
    size_t sp1 = rl.find(' ');
    size_t sp2 = sp1 == std::string::npos ? std::string::npos : rl.find(' ', sp1 + 1);
    if (sp1 == std::string::npos || sp2 == std::string::npos ||
        rl.find(' ', sp2 + 1) != std::string::npos || sp1 == 0 || sp2 == sp1 + 1)
        return fail(400, "malformed request line");
    req.method = rl.substr(0, sp1);
    req.target = rl.substr(sp1 + 1, sp2 - sp1 - 1);
    std::string version = rl.substr(sp2 + 1);
    for (char c : req.method)
        if (!isTokenChar(static_cast<unsigned char>(c)))
            return fail(400, "malformed method");
    for (char c : req.target)
        if (static_cast<unsigned char>(c) <= 0x20 || c == 0x7f)
            return fail(400, "malformed request target");
    if (version == "HTTP/1.1")
        req.versionMinor = 1;
    else if (version == "HTTP/1.0")
        req.versionMinor = 0;
    else if (version.compare(0, 5, "HTTP/") == 0)
        return fail(505, "HTTP version not supported");
    else
        return fail(400, "malformed HTTP version");

    req.headers.clear();
    for (size_t i = first + 1; i < lines.size(); i++) {
        const std::string& l = lines[i];
        if (l.empty())
            return fail(400, "empty header line");
        if (l[0] == ' ' || l[0] == '\t')
            return fail(400, "header continuation lines are not accepted");
        size_t colon = l.find(':');
        if (colon == std::string::npos || colon == 0)
            return fail(400, "header line without a name");
        std::string name = l.substr(0, colon);
        for (char c : name)
            if (!isTokenChar(static_cast<unsigned char>(c)))
                return fail(400, "malformed header name");
        std::string value = trim(l.substr(colon + 1));
        for (char c : value)
            if ((static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7f)
                return fail(400, "control character in header " + name);
        if (req.headers.size() >= limits.maxHeaders)
            return fail(431, "too many headers");
        req.headers.emplace_back(name, value);
    }
    return r;
}

BodyFraming bodyFraming(const HttpRequest& req, const HttpLimits& limits)
{
    BodyFraming f;
    bool haveTe = false, haveLen = false;
    std::string te;
    std::string len;
    for (const auto& h : req.headers) {
        if (equalsNoCase(h.first, "Transfer-Encoding")) {
            if (haveTe)
                te += ",";
            te += h.second;
            haveTe = true;
        } else if (equalsNoCase(h.first, "Content-Length")) {
            if (haveLen && trim(h.second) != len) {
                f.kind = BodyFraming::Invalid;
                f.status = 400;
                f.reason = "conflicting Content-Length headers";
                return f;
            }
            len = trim(h.second);
            haveLen = true;
        }
    }
    if (haveTe) {
        if (!equalsNoCase(trim(te), "chunked")) {
            f.kind = BodyFraming::Invalid;
            f.status = 501;
            f.reason = "unsupported transfer coding";
            return f;
        }
        if (haveLen) {
            f.kind = BodyFraming::Invalid;
            f.status = 400;
            f.reason = "both Content-Length and Transfer-Encoding";
            return f;
        }
        f.kind = BodyFraming::Chunked;
        return f;
    }
    if (!haveLen)
        return f;
    if (len.empty() || len.size() > 18 ||
        len.find_first_not_of("0123456789") != std::string::npos) {
        f.kind = BodyFraming::Invalid;
        f.status = 400;
        f.reason = "malformed Content-Length";
        return f;
    }
    unsigned long long n = std::stoull(len);
    if (n > limits.maxBodyBytes) {
        f.kind = BodyFraming::Invalid;
        f.status = 413;
        f.reason = "request body larger than " + std::to_string(limits.maxBodyBytes) + " bytes";
        return f;
    }
    f.kind = n ? BodyFraming::Length : BodyFraming::None;
    f.length = static_cast<size_t>(n);
    return f;
}

int decodeChunked(const std::string& data, size_t& pos, size_t maxBody, std::string& body,
                  std::string& reason)
{
    size_t p = pos;
    std::string out;
    for (;;) {
        size_t nl = data.find('\n', p);
        // The same limits whether the line is complete or not, so that a
        // body's fate does not depend on how its bytes were split.
        if ((nl == std::string::npos ? data.size() : nl) - p > 1024) {
            reason = "chunk size line too long";
            return -1;
        }
        if (nl == std::string::npos)
            return 0;
        std::string line = data.substr(p, nl - p);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        size_t semi = line.find(';');
        std::string hex = trim(semi == std::string::npos ? line : line.substr(0, semi));
        if (hex.empty() || hex.size() > 15) {
            reason = "malformed chunk size";
            return -1;
        }
        size_t n = 0;
        for (char c : hex) {
            int v = hexValue(c);
            if (v < 0) {
                reason = "malformed chunk size";
                return -1;
            }
            n = n * 16 + static_cast<size_t>(v);
        }
        if (n > maxBody || out.size() + n > maxBody) {
            reason = "request body larger than " + std::to_string(maxBody) + " bytes";
            return -1;
        }
        p = nl + 1;
        if (n == 0) {
            // Trailer section up to an empty line, 8 KiB at most.
            const size_t trailerStart = p;
            for (;;) {
                size_t e = data.find('\n', p);
                if ((e == std::string::npos ? data.size() : e + 1) - trailerStart > 8192) {
                    reason = "trailer too long";
                    return -1;
                }
                if (e == std::string::npos)
                    return 0;
                bool empty = e == p || (e == p + 1 && data[p] == '\r');
                p = e + 1;
                if (empty)
                    break;
            }
            body += out;
            pos = p;
            return 1;
        }
        if (data.size() < p + n + 1)
            return 0;
        out.append(data, p, n);
        p += n;
        if (data[p] == '\r') {
            if (data.size() < p + 2)
                return 0;
            if (data[p + 1] != '\n') {
                reason = "malformed chunk end";
                return -1;
            }
            p += 2;
        } else if (data[p] == '\n') {
            p += 1;
        } else {
            reason = "malformed chunk end";
            return -1;
        }
    }
}

bool uriDecode(const std::string& in, std::string& out)
{
    out.clear();
    for (size_t i = 0; i < in.size(); i++) {
        if (in[i] == '%') {
            if (i + 2 >= in.size())
                return false;
            int h = hexValue(in[i + 1]), l = hexValue(in[i + 2]);
            if (h < 0 || l < 0)
                return false;
            out += static_cast<char>(h * 16 + l);
            i += 2;
        } else {
            out += in[i];
        }
    }
    return true;
}

std::string uriEncode(const std::string& in)
{
    static const char* hex = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : in) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
            c == '-' || c == '_' || c == '.' || c == '~' || c == '/') {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

bool base64Decode(const std::string& in, std::string& out)
{
    out.clear();
    unsigned buf = 0;
    int bits = 0;
    size_t pad = 0;
    for (char c : in) {
        int v;
        if (c >= 'A' && c <= 'Z')
            v = c - 'A';
        else if (c >= 'a' && c <= 'z')
            v = c - 'a' + 26;
        else if (c >= '0' && c <= '9')
            v = c - '0' + 52;
        else if (c == '+')
            v = 62;
        else if (c == '/')
            v = 63;
        else if (c == '=') {
            pad++;
            continue;
        } else
            return false;
        if (pad)
            return false;
        buf = (buf << 6) | static_cast<unsigned>(v);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            out += static_cast<char>((buf >> bits) & 0xFF);
        }
    }
    return pad <= 2 && (in.size() % 4 == 0 || pad == 0);
}

std::string base64Encode(const std::string& in)
{
    static const char* tbl = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    size_t i = 0;
    while (i + 2 < in.size()) {
        unsigned v = (static_cast<unsigned char>(in[i]) << 16) |
                     (static_cast<unsigned char>(in[i + 1]) << 8) |
                     static_cast<unsigned char>(in[i + 2]);
        out += tbl[v >> 18];
        out += tbl[(v >> 12) & 63];
        out += tbl[(v >> 6) & 63];
        out += tbl[v & 63];
        i += 3;
    }
    if (i + 1 == in.size()) {
        unsigned v = static_cast<unsigned char>(in[i]) << 16;
        out += tbl[v >> 18];
        out += tbl[(v >> 12) & 63];
        out += "==";
    } else if (i + 2 == in.size()) {
        unsigned v = (static_cast<unsigned char>(in[i]) << 16) |
                     (static_cast<unsigned char>(in[i + 1]) << 8);
        out += tbl[v >> 18];
        out += tbl[(v >> 12) & 63];
        out += tbl[(v >> 6) & 63];
        out += '=';
    }
    return out;
}

}  // namespace zarwire
