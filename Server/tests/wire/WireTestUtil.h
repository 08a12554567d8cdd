// Raw HTTP for the wire tests: a loopback connection, reading until the
// peer closes, chunked decoding, and CIM-XML requests built as text.
#ifndef ZAR_SERVER_TESTS_WIRE_WIRETESTUTIL_H
#define ZAR_SERVER_TESTS_WIRE_WIRETESTUTIL_H

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <string>

namespace wiretest {

// A connection to 127.0.0.1:port, from the local address source.
inline int connectTo(int port, const char* source = "127.0.0.1")
{
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    inet_pton(AF_INET, source, &a.sin_addr);
    EXPECT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&a), sizeof a), 0);
    a.sin_port = htons(static_cast<uint16_t>(port));
    inet_pton(AF_INET, "127.0.0.1", &a.sin_addr);
    EXPECT_EQ(::connect(fd, reinterpret_cast<sockaddr*>(&a), sizeof a), 0);
    return fd;
}

// Everything until the peer closes (or 10 s of silence); reset tells
// whether the connection ended with an error.
inline std::string readAll(int fd, bool* reset = nullptr)
{
    std::string in;
    char buf[65536];
    for (;;) {
        pollfd p{fd, POLLIN, 0};
        if (::poll(&p, 1, 10000) <= 0)
            break;
        ssize_t n = ::recv(fd, buf, sizeof buf, 0);
        if (n < 0 && reset)
            *reset = true;
        if (n <= 0)
            break;
        in.append(buf, static_cast<size_t>(n));
    }
    return in;
}

// Decodes the chunked body starting at pos into body; returns the position
// after the last chunk's size line ("0\r\n"), npos when the body is cut.
inline size_t dechunk(const std::string& in, size_t pos, std::string& body)
{
    for (;;) {
        size_t nl = in.find("\r\n", pos);
        if (nl == std::string::npos)
            return std::string::npos;
        size_t n = std::stoul(in.substr(pos, nl - pos), nullptr, 16);
        pos = nl + 2;
        if (n == 0)
            return pos;
        if (in.size() < pos + n)
            return std::string::npos;
        body.append(in, pos, n);
        pos += n + 2;
    }
}

// Intrinsic method parameters: any content, a class name, a value.
inline std::string param(const std::string& name, const std::string& content)
{
    return "<IPARAMVALUE NAME=\"" + name + "\">" + content + "</IPARAMVALUE>";
}
inline std::string cls(const std::string& name)
{
    return param("ClassName", "<CLASSNAME NAME=\"" + name + "\"/>");
}
inline std::string value(const std::string& name, const std::string& v)
{
    return param(name, "<VALUE>" + v + "</VALUE>");
}

// An intrinsic method call; ns is the LOCALNAMESPACEPATH's content.
inline std::string intrinsic(
    const std::string& name, const std::string& params,
    const std::string& ns = "<NAMESPACE NAME=\"root\"/><NAMESPACE NAME=\"zar\"/>")
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
           "<MESSAGE ID=\"4711\" PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL NAME=\"" +
           name + "\"><LOCALNAMESPACEPATH>" + ns + "</LOCALNAMESPACEPATH>" + params +
           "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
}

// A CIM-XML POST of body with the given CIMMethod, CIMObject and extra
// headers.
inline std::string post(const std::string& body, const std::string& headers,
                        const std::string& method = "EnumerateClassNames",
                        const std::string& object = "root/zar",
                        const std::string& version = "HTTP/1.1")
{
    return "POST /cimom " + version +
           "\r\nHost: localhost\r\nContent-Type: application/xml; charset=\"utf-8\"\r\n"
           "CIMOperation: MethodCall\r\nCIMMethod: " +
           method + "\r\nCIMObject: " + object + "\r\n" + headers +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

}  // namespace wiretest

#endif
