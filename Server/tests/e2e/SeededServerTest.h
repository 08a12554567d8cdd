// SeededServerTest: the fixture of the end-to-end tests that drive
// zar-cimserver over a seeded array with wbemcli: one server per test,
// started after the fixture's zarcli steps, skipped where wbemcli is not
// installed.
#ifndef ZAR_SERVER_TESTS_E2E_SEEDEDSERVERTEST_H
#define ZAR_SERVER_TESTS_E2E_SEEDEDSERVERTEST_H

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ServerProcess.h"

namespace zare2e {

class SeededServerTest : public ::testing::Test {
protected:
    // zarcli steps run after seeding (see SeededServer::start).
    explicit SeededServerTest(std::vector<std::string> steps) : _steps(std::move(steps)) {}

    void SetUp() override
    {
        if (!haveWbemcli())
            GTEST_SKIP() << "wbemcli is not installed (package sblim-wbemcli)";
        std::string err;
        ASSERT_TRUE(server_.start(_steps, err)) << err;
    }

    void TearDown() override { EXPECT_EQ(0, server_.stop()) << server_.process.output(); }

    // "127.0.0.1:<the server's HTTP port>".
    std::string address() const
    {
        return "127.0.0.1:" + std::to_string(server_.process.httpPort());
    }

    SeededServer server_;

private:
    std::vector<std::string> _steps;
};

}  // namespace zare2e

#endif
