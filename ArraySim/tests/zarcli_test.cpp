// zarcli: round trips through the state file, and refusals that change
// nothing.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

struct Outcome {
    int status;
    std::string out, err;
};

class Zarcli : public ::testing::Test {
protected:
    void SetUp() override
    {
        const char* bin = getenv("ZARCLI");
        ASSERT_NE(nullptr, bin) << "ZARCLI names the zarcli program";
        bin_ = bin;
        char dir[] = "/tmp/zarcli-test-XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(dir));
        dir_ = dir;
        db_ = dir_ + "/array.db";
    }
    void TearDown() override { system(("rm -rf " + dir_).c_str()); }

    // Runs zarcli --db <db> args, with input on standard input.
    Outcome run(const std::string& args, const std::string& input = "")
    {
        std::string outFile = dir_ + "/out", errFile = dir_ + "/err", inFile = dir_ + "/in";
        FILE* in = fopen(inFile.c_str(), "w");
        fputs(input.c_str(), in);
        fclose(in);
        std::string cmd = "ZAR_LOG_LEVEL=1 '" + bin_ + "' --db '" + db_ + "' " + args + " <'" +
                          inFile + "' >'" + outFile + "' 2>'" + errFile + "'";
        int rc = system(cmd.c_str());
        return {WIFEXITED(rc) ? WEXITSTATUS(rc) : -1, slurp(outFile), slurp(errFile)};
    }

    static std::string slurp(const std::string& path)
    {
        std::string s;
        FILE* f = fopen(path.c_str(), "r");
        if (!f)
            return s;
        char buf[4096];
        size_t n;
        while ((n = fread(buf, 1, sizeof buf, f)) > 0)
            s.append(buf, n);
        fclose(f);
        return s;
    }

    std::string bin_, dir_, db_;
};

bool has(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

TEST_F(Zarcli, SeedThenViewsShowsAllFormsAndADefaultView)
{
    ASSERT_EQ(0, run("seed").status);
    // The state holds password hashes: it is the owner's alone.
    struct stat st;
    ASSERT_EQ(0, stat(db_.c_str(), &st));
    EXPECT_EQ(0600u, st.st_mode & 0777u);
    // The demo array without its IPv4 address is an IPv6-only one.
    ASSERT_EQ(0, run("config set ipv4 ''").status);
    std::string shown = run("--json config show").out;
    EXPECT_TRUE(has(shown, "{\"key\": \"ipv4\", \"value\": \"\"}")) << shown;
    EXPECT_TRUE(has(shown, "{\"key\": \"ipv6\", \"value\": \"2001:db8::10\"}")) << shown;
    Outcome v = run("views");
    ASSERT_EQ(0, v.status) << v.err;
    for (const char* form : {"MS:", "HS:", "HSet:", "PP:", ":default", "dormant", "active"})
        EXPECT_TRUE(has(v.out, form)) << form;
    Outcome j = run("--json views --luns");
    ASSERT_EQ(0, j.status);
    EXPECT_EQ('[', j.out[0]);
    EXPECT_TRUE(has(j.out, "\"device_id\": \"PP:0:1:1:default\""));
    // Seeding twice is refused and changes nothing.
    Outcome again = run("seed");
    EXPECT_EQ(1, again.status);
    EXPECT_TRUE(has(again.err, "empty array"));
    EXPECT_EQ(v.out, run("views").out);
}

TEST_F(Zarcli, CreateShowRemoveRoundTrips)
{
    ASSERT_EQ(0, run("ports create 0:1:1 fc").status);
    ASSERT_EQ(0, run("volumes create data1 --size 2048 --domain sales").status);
    ASSERT_EQ(0, run("hosts create srv1 1000000000000001 --domain sales").status);
    ASSERT_EQ(0, run("paths login 1000000000000001 0:1:1").status);
    Outcome c = run("vluns create data1 auto --host srv1 --port 0:1:1");
    ASSERT_EQ(0, c.status) << c.err;
    EXPECT_TRUE(has(c.out, "LUN 0"));
    Outcome list = run("vluns list --active");
    EXPECT_TRUE(has(list.out, "srv1")) << list.out;
    EXPECT_TRUE(has(run("views").out, "MS:0:1:1:1"));
    EXPECT_EQ(1, run("hosts remove srv1").status);  // still exported
    ASSERT_EQ(0, run("vluns remove data1 0 --host srv1 --port 0:1:1").status);
    ASSERT_EQ(0, run("hosts remove srv1").status);
    ASSERT_EQ(0, run("volumes remove data1").status);
    EXPECT_FALSE(has(run("volumes").out, "data1"));
    Outcome ev = run("events --limit 4");
    EXPECT_TRUE(has(ev.out, "volumes remove"));
    EXPECT_TRUE(has(ev.out, "error 1103"));  // the refused host removal is in the log too
}

TEST_F(Zarcli, BadInputIsRefusedClearly)
{
    ASSERT_EQ(0, run("seed").status);
    std::string before = run("--json show").out;
    struct Case {
        const char* args;
        int status;
        const char* message;
    } cases[] = {
        {"frobnicate", 2, "unknown command"},
        {"volumes create", 2, "missing volume name"},
        {"volumes create x --size abc", 2, "invalid size"},
        {"volumes create bad/name", 1, "invalid character"},
        {"ports create 9:1:1 fc", 2, "invalid port position"},
        {"ports create 0:1:1 fc", 1, "already exists"},
        {"vluns create finance-08 1 --host nobody", 1, "does not exist"},
        {"vluns create finance-08 1 --host esx01 --set esx-cluster", 2, "not both"},
        {"hosts create esx01", 1, "already in use"},
        {"hosts rename esx01 a-name-that-is-much-too-long-for-a-host", 2, "longer than 31"},
        {"volumes remove finance-01", 1, "busy"},
        {"users add bob", 2, "--role"},
        {"volumes --bogus", 2, "unknown option"},
    };
    for (const Case& c : cases) {
        Outcome r = run(c.args);
        EXPECT_EQ(c.status, r.status) << c.args;
        EXPECT_TRUE(has(r.err, c.message)) << c.args << ": " << r.err;
        EXPECT_TRUE(r.out.empty()) << c.args;
    }
    std::string after = run("--json show").out;
    // Only the audit log grew (refused changes are recorded).
    auto strip = [](std::string s) {
        size_t p = s.find("\"events\"");
        return s.substr(0, p);
    };
    EXPECT_EQ(strip(before), strip(after));
}

TEST_F(Zarcli, HelpOnEveryCommand)
{
    for (const char* c : {"seed", "show", "config", "volumes", "hosts", "paths", "hostsets",
                          "vluns", "ports", "views", "users", "events"}) {
        Outcome r = run(std::string(c) + " --help");
        EXPECT_EQ(0, r.status) << c;
        EXPECT_TRUE(has(r.out, std::string("zarcli ") + c)) << c;
    }
    EXPECT_EQ(0, run("--help").status);
    EXPECT_EQ(2, run("").status);
}

TEST_F(Zarcli, UsersReadThePasswordFromStandardInput)
{
    ASSERT_EQ(0, run("users add alice --role edit", "correct-horse-1\n").status);
    Outcome list = run("users");
    EXPECT_TRUE(has(list.out, "alice"));
    EXPECT_TRUE(has(list.out, "edit"));
    EXPECT_FALSE(has(list.out, "correct-horse"));
    EXPECT_EQ(1, run("users add alice --role edit", "another-pass-1\n").status);
    EXPECT_EQ(1, run("users add bob --role edit", "short\n").status);
    EXPECT_EQ(2, run("users add bob --role king", "long-enough-1\n").status);
    ASSERT_EQ(0, run("config set policy 4").status);
    EXPECT_TRUE(has(run("show").out, "policy          4"));
    EXPECT_EQ(1, run("config set name has.dot").status);
}
}  // namespace
