// End-to-end: the zar-cimserver program with our own CIMClient: many
// clients at once, the local socket, shutdown while a request runs, and the
// program's refusals of bad options and ports in use.
#include "ServerProcess.h"

#include <Pegasus/Client/CIMClient.h>

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

PEGASUS_USING_PEGASUS;
using namespace zare2e;

namespace {

std::string u8(const String& s)
{
    CString c = s.getCString();
    return std::string((const char*)c);
}

class ZarCimserver : public ::testing::Test {
protected:
    void SetUp() override
    {
        dir = makeTempDir();
        std::string err;
        ASSERT_TRUE(makeArrayDb(dir + "/array.db", {{"admin", "adminpass1", "super"}}, err)) << err;
    }

    void startServer(const std::string& schema,
                     const std::vector<std::pair<std::string, std::string>>& env = {})
    {
        std::string err;
        ASSERT_TRUE(
            server.start(binaryDir() + "/bin/zar-cimserver",
                         {"--array-db", dir + "/array.db", "--socket", dir + "/cimxml.socket",
                          "--schema-dir", schema, "--provider-dir", binaryDir() + "/lib",
                          "--log-file", dir + "/server.log", "--workers", "4"},
                         env, err))
            << err;
    }

    std::string testSchema() { return sourceDir() + "/Server/testprovider/schema"; }

    std::string dir;
    ServerProcess server;
};

}  // namespace

TEST_F(ZarCimserver, ServesManyClientsAtOnce)
{
    startServer(testSchema());
    std::atomic<int> failures{0};
    std::vector<std::thread> clients;
    for (int t = 0; t < 8; t++) {
        clients.emplace_back([&, t] {
            try {
                CIMClient c;
                c.connect("127.0.0.1", Uint32(server.httpPort()), "admin", "adminpass1");
                for (int i = 0; i < 15; i++) {
                    Array<CIMInstance> widgets = c.enumerateInstances("root/test", "ZTest_Widget");
                    if (widgets.size() < 2)
                        failures++;
                    Array<CIMParamValue> out;
                    CIMValue rv =
                        c.invokeMethod("root/test", CIMObjectPath("ZTest_Service.Name=\"svc\""),
                                       "WhoAmI", Array<CIMParamValue>(), out);
                    if (out.size() != 2 || u8(out[0].getValue().toString()) != "admin")
                        failures++;
                }
                // Each thread also opens fresh connections.
                CIMClient once;
                once.connect("127.0.0.1", Uint32(server.httpPort()), "admin", "adminpass1");
                if (once.enumerateInstanceNames("root/test", "ZTest_Gadget").size() != 2)
                    failures++;
                (void)t;
            } catch (Exception& e) {
                ADD_FAILURE() << u8(e.getMessage());
                failures++;
            }
        });
    }
    for (auto& c : clients)
        c.join();
    EXPECT_EQ(failures.load(), 0);
    EXPECT_EQ(server.stop(), 0) << server.output();

    // One access-log line per request, with user, address, operation, class.
    std::ifstream log(dir + "/server.log");
    std::string line;
    int enumerations = 0;
    while (std::getline(log, line))
        if (line.find("access: user=admin address=127.0.0.1 operation=EnumerateInstances "
                      "class=ZTest_Widget status=OK duration_ms=") != std::string::npos)
            enumerations++;
    EXPECT_EQ(enumerations, 8 * 15);
}

TEST_F(ZarCimserver, ClientOperationsOverHttp)
{
    startServer(testSchema());
    CIMClient c;
    c.connect("127.0.0.1", Uint32(server.httpPort()), "admin", "adminpass1");
    CIMInstance w("ZTest_Widget");
    w.addProperty(CIMProperty("Name", CIMValue(String("client"))));
    w.addProperty(CIMProperty("Count", CIMValue(Uint16(9))));
    CIMObjectPath created = c.createInstance("root/test", w);
    EXPECT_EQ(u8(created.toString()), "ZTest_Widget.Name=\"client\"");
    CIMInstance got = c.getInstance("root/test", created);
    Uint16 count = 0;
    got.getProperty(got.findProperty("Count")).getValue().get(count);
    EXPECT_EQ(count, 9);
    CIMValue v = c.getProperty("root/test", created, "Count");
    EXPECT_EQ(u8(v.toString()), "9");
    Array<CIMObjectPath> assoc =
        c.associatorNames("root/test", CIMObjectPath("ZTest_Widget.Name=\"w1\""));
    ASSERT_EQ(assoc.size(), 1u);
    EXPECT_EQ(u8(assoc[0].getClassName().getString()), "ZTest_Gadget");
    EXPECT_EQ(u8(assoc[0].getNameSpace().getString()), "root/test");
    Array<CIMObject> refs = c.references("root/test", CIMObjectPath("ZTest_Widget.Name=\"w1\""));
    ASSERT_EQ(refs.size(), 1u);
    c.deleteInstance("root/test", created);
    try {
        c.getInstance("root/test", created);
        ADD_FAILURE() << "instance still there";
    } catch (CIMException& e) {
        EXPECT_EQ(e.getCode(), CIM_ERR_NOT_FOUND);
        EXPECT_EQ(u8(e.getMessage()).compare(0, 19, "CIM_ERR_NOT_FOUND: "), 0)
            << u8(e.getMessage());
    }
    // A vendor code keeps its number; the message is the wire description.
    Array<CIMParamValue> in, out;
    in.append(CIMParamValue("Reason", CIMValue(String("x"))));
    try {
        c.invokeMethod("root/test", CIMObjectPath("ZTest_Service.Name=\"svc\""), "Fail", in, out);
        ADD_FAILURE() << "no error";
    } catch (CIMException& e) {
        EXPECT_EQ(int(e.getCode()), 4097);
        EXPECT_EQ(u8(e.getMessage()), "Unrecognized CIM status code \"4097\": LU=x: bad\n");
    }
    EXPECT_EQ(server.stop(), 0);
}

TEST_F(ZarCimserver, ClientOverHttpsVerifiesTheServer)
{
    std::string out;
    ASSERT_EQ(runCommand("openssl req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=127.0.0.1 "
                         "-keyout " +
                             dir + "/key.pem -out " + dir + "/cert.pem",
                         out, 60),
              0)
        << out;
    ASSERT_EQ(runCommand("openssl req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=other "
                         "-keyout " +
                             dir + "/other-key.pem -out " + dir + "/other.pem",
                         out, 60),
              0)
        << out;
    std::string err;
    ASSERT_TRUE(server.start(
        binaryDir() + "/bin/zar-cimserver",
        {"--array-db", dir + "/array.db", "--socket", "off", "--https-port", "0", "--tls-cert",
         dir + "/cert.pem", "--tls-key", dir + "/key.pem", "--schema-dir", testSchema(),
         "--provider-dir", binaryDir() + "/lib", "--log-file", dir + "/server.log"},
        {}, err))
        << err;
    ASSERT_GT(server.httpsPort(), 0);
    CIMClient c;
    c.connect("127.0.0.1", Uint32(server.httpsPort()),
              SSLContext(String((dir + "/cert.pem").c_str())), "admin", "adminpass1");
    EXPECT_EQ(c.enumerateInstanceNames("root/test", "ZTest_Gadget").size(), 2u);
    // A trust store that does not hold the server's certificate refuses it.
    CIMClient wary;
    EXPECT_THROW(
        wary.connect("127.0.0.1", Uint32(server.httpsPort()),
                     SSLContext(String((dir + "/other.pem").c_str())), "admin", "adminpass1"),
        Exception);
    EXPECT_EQ(server.stop(), 0) << server.output();
}

TEST_F(ZarCimserver, LocalSocketIsPrivateAndTrusted)
{
    startServer(testSchema());
    struct stat st;
    ASSERT_EQ(::stat((dir + "/cimxml.socket").c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777, 0600u);
    ::setenv("ZAR_LOCAL_SOCKET", (dir + "/cimxml.socket").c_str(), 1);
    CIMClient c;
    c.connectLocal();
    Array<CIMParamValue> out;
    c.invokeMethod("root/test", CIMObjectPath("ZTest_Service.Name=\"svc\""), "WhoAmI",
                   Array<CIMParamValue>(), out);
    ASSERT_EQ(out.size(), 2u);
    struct passwd* pw = getpwuid(geteuid());
    ASSERT_NE(pw, nullptr);
    EXPECT_EQ(u8(out[0].getValue().toString()), pw->pw_name);
    c.disconnect();
    ::setenv("ZAR_LOCAL_SOCKET", (dir + "/nothing-here").c_str(), 1);
    CIMClient none;
    EXPECT_THROW(none.connectLocal(), CannotConnectException);
    ::unsetenv("ZAR_LOCAL_SOCKET");
    EXPECT_EQ(server.stop(), 0);
    EXPECT_NE(::stat((dir + "/cimxml.socket").c_str(), &st), 0) << "socket left behind";
}

TEST_F(ZarCimserver, StopsCleanlyWhileARequestRuns)
{
    std::string started = dir + "/started";
    startServer(
        sourceDir() + "/bench/server/schema",
        {{"ZBENCH_COUNT", "3000"}, {"ZBENCH_DELAY_US", "300"}, {"ZBENCH_STARTED_FILE", started}});
    std::atomic<int> delivered{-1};
    std::string failure;
    std::thread slow([&] {
        try {
            CIMClient c;
            c.setTimeout(60000);
            c.connect("127.0.0.1", Uint32(server.httpPort()), "admin", "adminpass1");
            delivered = int(c.enumerateInstances("root/bench", "ZBench_Item").size());
        } catch (Exception& e) {
            failure = u8(e.getMessage());
        }
    });
    // Wait (bounded) until the provider is delivering, then stop the server.
    struct stat st;
    for (int i = 0; i < 600 && ::stat(started.c_str(), &st) != 0; i++)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_EQ(::stat(started.c_str(), &st), 0) << "the enumeration never started";
    int status = server.stop();
    slow.join();
    EXPECT_EQ(failure, "");
    EXPECT_EQ(delivered.load(), 3000);
    EXPECT_EQ(status, 0) << server.output();
    EXPECT_NE(server.output().find("zar-cimserver: stopped"), std::string::npos) << server.output();
}

TEST_F(ZarCimserver, RefusesBadOptionsAndBusyPorts)
{
    std::string out;
    std::string exe = binaryDir() + "/bin/zar-cimserver";
    EXPECT_EQ(runCommand(exe + " --help", out), 0);
    EXPECT_NE(out.find("--tls-cert"), std::string::npos);
    EXPECT_EQ(runCommand(exe + " --bogus", out), 2);
    EXPECT_NE(out.find("unknown option --bogus"), std::string::npos) << out;
    EXPECT_EQ(runCommand(exe + " --http-port 70000", out), 2);
    EXPECT_EQ(runCommand(exe + " --tls-cert x.pem", out), 2);
    EXPECT_NE(out.find("both --tls-cert and --tls-key"), std::string::npos) << out;

    // A port that another socket holds.
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&a), sizeof a), 0);
    ASSERT_EQ(::listen(fd, 1), 0);
    socklen_t len = sizeof a;
    getsockname(fd, reinterpret_cast<sockaddr*>(&a), &len);
    EXPECT_EQ(runCommand(exe + " --socket off --schema-dir " + testSchema() + " --http-port " +
                             std::to_string(ntohs(a.sin_port)),
                         out),
              1);
    EXPECT_NE(out.find("Address already in use"), std::string::npos) << out;
    ::close(fd);
}

// Logins are remembered (on the connection and across connections) only
// until the array's users change, whichever process changes them.
TEST_F(ZarCimserver, RememberedLoginsEndWhenZarcliChangesTheUsers)
{
    startServer(testSchema());
    CIMClient kept, other;
    kept.connect("127.0.0.1", Uint32(server.httpPort()), "admin", "adminpass1");
    EXPECT_GE(kept.enumerateInstances("root/test", "ZTest_Widget").size(), 2u);
    other.connect("127.0.0.1", Uint32(server.httpPort()), "admin", "adminpass1");
    EXPECT_GE(other.enumerateInstances("root/test", "ZTest_Widget").size(), 2u);

    std::string out;
    ASSERT_EQ(runCommand("echo adminpass2 | ZAR_ARRAY_DB=" + dir + "/array.db " + binaryDir() +
                             "/bin/zarcli users passwd admin",
                         out),
              0)
        << out;
    for (CIMClient* c : {&kept, &other}) {
        try {
            c->enumerateInstances("root/test", "ZTest_Widget");
            ADD_FAILURE() << "the old password still opens the server";
        } catch (CIMClientHTTPErrorException& e) {
            EXPECT_EQ(e.getCode(), 401u);
        }
    }
    CIMClient fresh;
    fresh.connect("127.0.0.1", Uint32(server.httpPort()), "admin", "adminpass2");
    EXPECT_GE(fresh.enumerateInstances("root/test", "ZTest_Widget").size(), 2u);
}
