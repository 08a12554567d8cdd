// End-to-end: scripts/run.sh as a user runs it (without building): it seeds
// the array, makes the CIM user, prints its password once, starts the server
// with both modules, and the wbemcli commands it prints work as printed.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ServerProcess.h"

using namespace zare2e;

namespace {

std::vector<std::string> printedCommands(const std::string& output)
{
    std::vector<std::string> commands;
    std::istringstream in(output);
    std::string line;
    while (std::getline(in, line)) {
        size_t at = line.find("wbemcli ");
        if (at != std::string::npos && line.find_first_not_of(' ') == at)
            commands.push_back(line.substr(at));
    }
    return commands;
}

class RunScriptTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!haveWbemcli())
            GTEST_SKIP() << "wbemcli is not installed (package sblim-wbemcli)";
        var_ = makeTempDir() + "/var";
    }

    void TearDown() override
    {
        for (ServerProcess* s : {&server_, &again_}) {
            if (s->pid() > 0)
                s->stop();
        }
    }

    // Starts run.sh on a free port and waits until its server listens.
    void start(ServerProcess& server)
    {
        port_ = freePort();
        ASSERT_GT(port_, 0);
        std::string err;
        ASSERT_TRUE(server.start(sourceDir() + "/scripts/run.sh",
                                 {"--no-build", "--build-dir", binaryDir(), "--var-dir", var_,
                                  "--http-port=" + std::to_string(port_)},
                                 {}, err))
            << err;
    }

    std::string var_;
    int port_ = -1;
    ServerProcess server_;
    ServerProcess again_;
};

TEST_F(RunScriptTest, PrintedCommandsWorkAndThePasswordIsShownOnce)
{
    start(server_);
    const std::string first = server_.output();

    // The credentials file is private and holds the password that was shown.
    struct stat st;
    ASSERT_EQ(0, ::stat((var_ + "/cim-credentials").c_str(), &st)) << first;
    EXPECT_EQ(0600u, st.st_mode & 0777);
    EXPECT_EQ(0, ::stat((var_ + "/array.db").c_str(), &st));
    std::ifstream f(var_ + "/cim-credentials");
    std::string user, password;
    f >> user >> password;
    ASSERT_EQ(24u, password.size());
    EXPECT_NE(std::string::npos, first.find("    " + password + "\n")) << first;

    std::vector<std::string> commands = printedCommands(first);
    ASSERT_GE(commands.size(), 4u) << first;
    bool sawViews = false, sawCapabilities = false;
    for (const std::string& c : commands) {
        std::string out;
        ASSERT_EQ(0, runCommand(c, out)) << c << "\n" << out;
        EXPECT_EQ(std::string::npos, out.find("wbemcli:")) << c << "\n" << out;
        if (c.compare(8, 3, "ei ") == 0 && c.find(":ZAR_SCSIController") != std::string::npos)
            sawViews = out.find("ZAR_SCSIController.CreationClassName=") != std::string::npos &&
                       out.find("OtherNameFormat=") != std::string::npos;
        if (c.compare(8, 3, "gi ") == 0 && c.find("MaskingCapabilities") != std::string::npos)
            sawCapabilities = out.find("PortsPerView=4") != std::string::npos;
    }
    EXPECT_TRUE(sawViews) << first;
    EXPECT_TRUE(sawCapabilities) << first;
    ASSERT_EQ(0, server_.stop()) << server_.output();

    // A second run keeps the array and the user and does not show the
    // password again; its printed commands still work.
    start(again_);
    const std::string second = again_.output();
    EXPECT_EQ(std::string::npos, second.find(password)) << second;
    EXPECT_EQ(std::string::npos, second.find("seeding")) << second;
    commands = printedCommands(second);
    ASSERT_FALSE(commands.empty());
    std::string out;
    EXPECT_EQ(0, runCommand(commands[0], out)) << out;
    ASSERT_EQ(0, again_.stop()) << again_.output();

    // A removed array is seeded again and gets the kept user back.
    ASSERT_EQ(0, ::unlink((var_ + "/array.db").c_str()));
    ServerProcess third;
    start(third);
    EXPECT_NE(std::string::npos, third.output().find("seeding")) << third.output();
    EXPECT_EQ(std::string::npos, third.output().find(password)) << third.output();
    commands = printedCommands(third.output());
    ASSERT_FALSE(commands.empty());
    EXPECT_EQ(0, runCommand(commands[0], out)) << out;
    EXPECT_EQ(0, third.stop()) << third.output();
}

TEST_F(RunScriptTest, RefusesBadOptions)
{
    std::string out;
    const std::string script = sourceDir() + "/scripts/run.sh";
    EXPECT_EQ(0, runCommand(script + " --help", out));
    EXPECT_NE(std::string::npos, out.find("Usage: scripts/run.sh")) << out;
    EXPECT_NE(0, runCommand(script + " --port 70000 --no-build", out));
    EXPECT_NE(std::string::npos, out.find("out of range")) << out;
    EXPECT_NE(0, runCommand(script + " --role root --no-build", out));
    EXPECT_NE(0, runCommand(script + " --frobnicate", out));
    EXPECT_NE(std::string::npos, out.find("unknown option")) << out;
}

}  // namespace
