// Tests of zar-cimserver's command line and of the default folders it finds
// next to its executable.
#include "ServerOptions.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace zarserver;

namespace {

bool parse(std::vector<std::string> args, ServerOptions& o, std::string& err)
{
    o = ServerOptions();
    return parseServerOptions(args, o, err);
}

// The words of a command line without quoting ("" gives no words).
std::vector<std::string> words(const std::string& line)
{
    std::vector<std::string> out;
    std::istringstream in(line);
    for (std::string w; in >> w;)
        out.push_back(w);
    return out;
}

}  // namespace

TEST(ServerOptions, ParsesEveryOption)
{
    ServerOptions o;
    std::string err;
    ASSERT_TRUE(parse(words("--listen ::1 --http-port=0 --https-port 6989 --tls-cert c.pem "
                            "--tls-key=k.pem --array-db a.db --schema-dir s --provider-dir p "
                            "--log-level 4 --log-file l --socket off --workers 3 "
                            "--idle-timeout 5 --drain-timeout 2"),
                      o, err))
        << err;
    EXPECT_EQ(o.listen, "::1");
    EXPECT_EQ(o.httpPort, 0);
    EXPECT_EQ(o.httpsPort, 6989);
    EXPECT_EQ(o.tlsKey, "k.pem");
    EXPECT_EQ(o.logLevel, "4");
    EXPECT_TRUE(o.socketPath.empty());
    EXPECT_EQ(o.workers, 3);
    EXPECT_EQ(o.idleTimeoutSec, 5);
    EXPECT_EQ(o.drainTimeoutSec, 2);

    ASSERT_TRUE(parse({}, o, err));
    EXPECT_EQ(o.listen, "127.0.0.1");
    EXPECT_EQ(o.httpPort, 5988);
    EXPECT_EQ(o.socketPath, "var/cimxml.socket");
    EXPECT_TRUE(o.tlsCert.empty());  // HTTPS off without certificate
    ASSERT_TRUE(parse({"--help"}, o, err));
    EXPECT_TRUE(o.help);
    EXPECT_NE(serverUsage().find("--array-db"), std::string::npos);
}

TEST(ServerOptions, RefusesBadCommandLines)
{
    ServerOptions o;
    std::string err;
    std::vector<std::vector<std::string>> bad = {{"--listen", ""}};
    for (const char* line :
         {"--nope", "--http-port", "--http-port 65536", "--http-port 12a", "--https-port 0",
          "--https-port 5989 --tls-cert c", "--tls-key k", "--log-level 9", "--workers 0",
          "--http-port off --socket off", "positional"})
        bad.push_back(words(line));
    for (const auto& args : bad) {
        EXPECT_FALSE(parse(args, o, err)) << args[0];
        EXPECT_FALSE(err.empty());
    }
}

TEST(ServerOptions, FindsFoldersOfInstalledAndBuildTrees)
{
    char tmpl[] = "/tmp/zar-opts-XXXXXX";
    std::string root = mkdtemp(tmpl);
    mkdir((root + "/bin").c_str(), 0700);
    ServerOptions o;
    resolveDefaultDirs(o, root + "/bin", "/src/schema");
    EXPECT_EQ(o.schemaDir, "/src/schema");
    EXPECT_EQ(o.providerDir, root + "/bin/../lib");

    for (const char* d :
         {"/share", "/share/zar", "/share/zar/schema", "/lib", "/lib/zar", "/lib/zar/providers"})
        mkdir((root + d).c_str(), 0700);
    ServerOptions installed;
    resolveDefaultDirs(installed, root + "/bin", "/src/schema");
    EXPECT_EQ(installed.schemaDir, root + "/bin/../share/zar/schema");
    EXPECT_EQ(installed.providerDir, root + "/bin/../lib/zar/providers");

    ServerOptions given;
    given.schemaDir = "mine";
    resolveDefaultDirs(given, root + "/bin", "/src/schema");
    EXPECT_EQ(given.schemaDir, "mine");
    int rc = std::system(("rm -rf " + root).c_str());
    EXPECT_EQ(rc, 0);
}
