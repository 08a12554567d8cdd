// Tests of the HTTP request head parser, body framing and the header codecs.
#include "HttpMessage.h"

#include <gtest/gtest.h>

using namespace zarwire;

namespace {

HeadParseResult parseHead(const std::string& head, HttpRequest& req)
{
    HttpLimits lim;
    lim.maxHeaders = 8;
    return parseRequestHead(head, lim, req);
}

}  // namespace

TEST(HttpHead, ParsesRequestLineAndHeaders)
{
    HttpRequest r;
    HeadParseResult res = parseHead(
        "M-POST /cimom HTTP/1.1\r\nHost: h\r\nMan: http://www.dmtf.org/cim/mapping/http/v1.0 ; "
        "ns=73\r\n"
        "73-CIMOperation:   MethodCall  \r\nconnection: Close",
        r);
    ASSERT_TRUE(res.ok) << res.reason;
    EXPECT_EQ(r.method, "M-POST");
    EXPECT_EQ(r.target, "/cimom");
    EXPECT_EQ(r.versionMinor, 1);
    ASSERT_NE(r.header("73-cimoperation"), nullptr);
    EXPECT_EQ(*r.header("73-CIMOperation"), "MethodCall");
    EXPECT_FALSE(r.keepAlive());

    HttpRequest old;
    ASSERT_TRUE(parseHead("POST / HTTP/1.0\nConnection: keep-alive", old).ok);
    EXPECT_TRUE(old.keepAlive());
    HttpRequest old2;
    ASSERT_TRUE(parseHead("POST / HTTP/1.0", old2).ok);
    EXPECT_FALSE(old2.keepAlive());
}

TEST(HttpHead, RefusesMalformedHeads)
{
    struct Case {
        const char* head;
        int status;
    };
    const Case cases[] = {
        {"POST /cimom", 400},
        {"POST  /cimom HTTP/1.1", 400},
        {"POST /cimom HTTP/2.0", 505},
        {"POST /cimom HTTX/1.1", 400},
        {"PO ST /cimom HTTP/1.1", 400},
        {"POST /cimom HTTP/1.1\r\nNoColon", 400},
        {"POST /cimom HTTP/1.1\r\nA: b\r\n  folded", 400},
        {"POST /cimom HTTP/1.1\r\nBad Name: x", 400},
        {"POST /cimom HTTP/1.1\r\nA: x\x01y", 400},
        {"POST /cimom HTTP/1.1\r\nA:1\r\nA:2\r\nA:3\r\nA:4\r\nA:5\r\nA:6\r\nA:7\r\nA:8\r\nA:9",
         431},
        {"", 400},
    };
    for (const Case& c : cases) {
        HttpRequest r;
        HeadParseResult res = parseHead(c.head, r);
        EXPECT_FALSE(res.ok) << c.head;
        EXPECT_EQ(res.status, c.status) << c.head;
    }
}

TEST(HttpBody, FramingRules)
{
    HttpLimits lim;
    lim.maxBodyBytes = 100;
    auto framing = [&](std::vector<std::pair<std::string, std::string>> h) {
        HttpRequest r;
        r.headers = h;
        return bodyFraming(r, lim);
    };
    EXPECT_EQ(framing({{"Content-Length", "10"}}).kind, BodyFraming::Length);
    EXPECT_EQ(framing({{"Content-Length", "10"}}).length, 10u);
    EXPECT_EQ(framing({}).kind, BodyFraming::None);
    EXPECT_EQ(framing({{"Transfer-Encoding", "chunked"}}).kind, BodyFraming::Chunked);
    EXPECT_EQ(framing({{"Content-Length", "101"}}).status, 413);
    EXPECT_EQ(framing({{"Content-Length", "1"}, {"Content-Length", "2"}}).status, 400);
    EXPECT_EQ(framing({{"Content-Length", "1"}, {"Content-Length", "1"}}).kind,
              BodyFraming::Length);
    EXPECT_EQ(framing({{"Content-Length", "-1"}}).status, 400);
    EXPECT_EQ(framing({{"Content-Length", "1x"}}).status, 400);
    EXPECT_EQ(framing({{"Transfer-Encoding", "gzip"}}).status, 501);
    EXPECT_EQ(framing({{"Transfer-Encoding", "chunked"}, {"Content-Length", "3"}}).status, 400);
}

TEST(HttpBody, ChunkedDecoding)
{
    std::string body, why;
    size_t pos = 0;
    std::string data = "4\r\nWiki\r\n5;ext=1\r\npedia\r\n0\r\nX-Trailer: 1\r\n\r\nNEXT";
    ASSERT_EQ(decodeChunked(data, pos, 100, body, why), 1);
    EXPECT_EQ(body, "Wikipedia");
    EXPECT_EQ(data.substr(pos), "NEXT");

    // Incomplete input asks for more, then completes.
    std::string part = "4\r\nWi";
    body.clear();
    pos = 0;
    EXPECT_EQ(decodeChunked(part, pos, 100, body, why), 0);
    part += "ki\r\n0\r\n\r\n";
    EXPECT_EQ(decodeChunked(part, pos, 100, body, why), 1);
    EXPECT_EQ(body, "Wiki");

    for (const char* bad : {"zz\r\nabc\r\n", "4\r\nWikiXX0\r\n\r\n", "FFFFFFFFFFFFFFFFF\r\n"}) {
        body.clear();
        pos = 0;
        EXPECT_EQ(decodeChunked(bad, pos, 100, body, why), -1) << bad;
    }
    body.clear();
    pos = 0;
    EXPECT_EQ(decodeChunked("65\r\n", pos, 100, body, why), -1);  // 101 bytes > limit

    // Line limits hold whether the line is complete or not: a body is not
    // accepted whole and refused when its bytes arrive in two reads.
    const std::string longExt = "1;" + std::string(1100, 'e');
    const std::string longTrailer = "0\r\nX: " + std::string(9000, 't');
    for (const std::string& bad :
         {longExt + "\r\nA\r\n0\r\n\r\n", longExt, longTrailer + "\r\n\r\n", longTrailer}) {
        body.clear();
        pos = 0;
        EXPECT_EQ(decodeChunked(bad, pos, 100, body, why), -1) << bad.size();
    }
}

TEST(HttpCodecs, UriAndBase64)
{
    std::string out;
    EXPECT_TRUE(uriDecode("root%2Fcimv2%3AC.K%3D%22v%22", out));
    EXPECT_EQ(out, "root/cimv2:C.K=\"v\"");
    EXPECT_FALSE(uriDecode("bad%2", out));
    EXPECT_FALSE(uriDecode("bad%zz", out));
    EXPECT_EQ(uriEncode("User Unauthorized"), "User%20Unauthorized");
    EXPECT_TRUE(uriDecode(uriEncode("a\"b:c d/é\n"), out));
    EXPECT_EQ(out, "a\"b:c d/é\n");

    for (std::string s : {"", "a", "ab", "abc", "admin:secret pass", "\xff\x00\x01"}) {
        std::string back;
        ASSERT_TRUE(base64Decode(base64Encode(s), back));
        EXPECT_EQ(back, s);
    }
    EXPECT_EQ(base64Encode("admin:adminpass1"), "YWRtaW46YWRtaW5wYXNzMQ==");
    EXPECT_FALSE(base64Decode("YW!u", out));
    EXPECT_FALSE(base64Decode("YQ==YQ==", out));
}
