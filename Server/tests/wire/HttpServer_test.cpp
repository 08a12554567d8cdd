// The connection layer with a plain handler: streamed answers far larger
// than a connection's output buffer arrive whole and in order (pipelined
// requests included), the per-address connection limit refuses the excess
// without touching other addresses, and a producer blocked on a full
// output queue is released when its connection closes.
#include "HttpServer.h"
#include "OutputQueue.h"

#include <gtest/gtest.h>

#include "WireTestUtil.h"

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using namespace zarwire;
using namespace wiretest;

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
    int fd = connectTo(server.httpPort());
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
    ASSERT_EQ(in.compare(end, 2, "\r\n"), 0);
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
        held.push_back(connectTo(server.httpPort(), "127.0.0.2"));
    int extra = connectTo(server.httpPort(), "127.0.0.2");
    EXPECT_EQ(readAll(extra).compare(0, 12, "HTTP/1.1 503"), 0);
    ::close(extra);
    // Another address is served meanwhile.
    int other = connectTo(server.httpPort());
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
