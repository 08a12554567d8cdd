// The connection layer with a plain handler: streamed answers far larger
// than a connection's output buffer arrive whole and in order (pipelined
// requests included), the per-address connection limit refuses the excess
// without touching other addresses, and a producer blocked on a full
// output queue is released when its connection closes.
#include "HttpServer.h"
#include "OutputQueue.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using namespace zarwire;

namespace {

// Byte i of a streamed answer.
char patternByte(size_t i)
{
    return static_cast<char>('a' + (i * 7 + i / 4096) % 26);
}

class StreamingHandler : public RequestHandler {
public:
    void handle(HttpExchange& ex) override
    {
        if (ex.request().target != "/stream") {
            ex.send(200, "", {}, "short " + ex.request().target);
            return;
        }
        ex.beginChunked(200, "", {});
        std::string chunk(50000, 'x');
        size_t at = 0;
        for (int c = 0; c < 160; c++) {  // 8,000,000 bytes
            for (auto& ch : chunk)
                ch = patternByte(at++);
            if (!ex.sendChunk(chunk.data(), chunk.size()))
                return;
        }
        ex.endChunked({});
    }
};

int connectFrom(const char* source, int port)
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

// Everything until the peer closes (or 10 s of silence).
std::string readAll(int fd)
{
    std::string in;
    char buf[65536];
    for (;;) {
        pollfd p{fd, POLLIN, 0};
        if (::poll(&p, 1, 10000) <= 0)
            break;
        ssize_t n = ::recv(fd, buf, sizeof buf, 0);
        if (n <= 0)
            break;
        in.append(buf, static_cast<size_t>(n));
    }
    return in;
}

// Decodes a chunked body starting at pos; returns the position after it.
size_t dechunk(const std::string& in, size_t pos, std::string& body)
{
    for (;;) {
        size_t nl = in.find("\r\n", pos);
        if (nl == std::string::npos)
            return std::string::npos;
        size_t n = std::stoul(in.substr(pos, nl - pos), nullptr, 16);
        pos = nl + 2;
        if (n == 0)
            return in.compare(pos, 2, "\r\n") == 0 ? pos + 2 : std::string::npos;
        body.append(in, pos, n);
        pos += n + 2;
    }
}

}  // namespace

TEST(HttpServer, StreamedAnswersFarLargerThanTheBufferArriveWholeAndInOrder)
{
    StreamingHandler h;
    ServerConfig sc;
    sc.httpPort = 0;
    sc.workers = 2;
    sc.outputBufferBytes = 64 * 1024;
    HttpServer server(sc, h);
    server.start();
    int fd = connectFrom("127.0.0.1", server.httpPort());
    std::string reqs =
        "GET /stream HTTP/1.1\r\nHost: h\r\n\r\nGET /after HTTP/1.1\r\nHost: h\r\n"
        "Connection: close\r\n\r\n";
    ASSERT_EQ(::send(fd, reqs.data(), reqs.size(), 0), ssize_t(reqs.size()));
    std::string in = readAll(fd);
    ::close(fd);
    size_t head = in.find("\r\n\r\n");
    ASSERT_NE(head, std::string::npos);
    ASSERT_NE(in.substr(0, head).find("Transfer-Encoding: chunked"), std::string::npos);
    std::string body;
    size_t end = dechunk(in, head + 4, body);
    ASSERT_NE(end, std::string::npos) << "the streamed answer is cut";
    ASSERT_EQ(body.size(), 8000000u);
    for (size_t i = 0; i < body.size(); i++)
        if (body[i] != patternByte(i)) {
            FAIL() << "byte " << i << " differs";
        }
    EXPECT_NE(in.find("short /after", end), std::string::npos)
        << "the pipelined request was not answered";
    server.stop();
}

TEST(HttpServer, ConnectionsPerAddressAreLimited)
{
    StreamingHandler h;
    ServerConfig sc;
    sc.httpPort = 0;
    sc.maxConnectionsPerAddress = 3;
    HttpServer server(sc, h);
    server.start();
    std::vector<int> held;
    for (int i = 0; i < 3; i++)
        held.push_back(connectFrom("127.0.0.2", server.httpPort()));
    int extra = connectFrom("127.0.0.2", server.httpPort());
    EXPECT_EQ(readAll(extra).compare(0, 12, "HTTP/1.1 503"), 0);
    ::close(extra);
    // Another address is served meanwhile.
    int other = connectFrom("127.0.0.1", server.httpPort());
    std::string req = "GET /x HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n";
    ASSERT_EQ(::send(other, req.data(), req.size(), 0), ssize_t(req.size()));
    EXPECT_NE(readAll(other).find("short /x"), std::string::npos);
    ::close(other);
    for (int fd : held)
        ::close(fd);
    server.stop();
}

TEST(OutputQueue, ProducerWaitsForRoomAndIsReleasedByClose)
{
    std::atomic<int> wakes{0};
    OutputQueue q(1000, [&] { wakes++; });
    std::string data(5000, 'z');
    std::atomic<bool> result{true}, done{false};
    std::thread producer([&] {
        result = q.write(data.data(), data.size());
        done = true;
    });
    // It fills the queue to its limit and waits there.
    for (int i = 0; i < 2000 && q.pending() < 1000; i++)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(q.pending(), 1000u);
    EXPECT_FALSE(done);
    EXPECT_GE(wakes.load(), 1);
    q.close();
    producer.join();
    EXPECT_FALSE(result) << "a write into a closed connection reported success";
    EXPECT_FALSE(q.give(std::string("late")));
}
