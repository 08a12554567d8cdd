// The array as a whole: fault injection, the semaphore, logging, the audit
// log, concurrent callers, persistence and crash safety.
#include "ArrayFixture.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <set>
#include <thread>

#include "Array.h"
#include "Db.h"

namespace {

using zarsim::readArray;
using zarsim::Result;
using zarsim::Stmt;

class Array : public ArrayTest {
protected:
    struct Event {
        std::string user, addr, method, operation, param, args;
        int outcome;
    };
    std::vector<Event> events()
    {
        std::vector<Event> out;
        readArray("test", [&](sqlite3* db) {
            Stmt st(db,
                    "SELECT user, addr, method, operation, inst_param, args, outcome FROM event "
                    "ORDER BY id");
            while (st.step())
                out.push_back({st.text(0), st.text(1), st.text(2), st.text(3), st.text(4),
                               st.text(5), (int)st.i64(6)});
            return Result::success();
        });
        return out;
    }
};

TEST_F(Array, InjectedFaultsFailTheNextCallsOnly)
{
    smallArray();
    std::string v = volume("v");
    ASSERT_EQ(0, host("h", API_WWN_NONE));
    zarsim_fail_next("api_createVLUN", 2, API_E_PORT_INVALID, "Port is offline");
    EXPECT_EQ(API_E_PORT_INVALID, exportVol(v, 1, "h", API_PORT_NONE));
    EXPECT_EQ("Port is offline", lastError_);
    EXPECT_EQ(API_E_PORT_INVALID, exportVol(v, 1, "h", API_PORT_NONE));
    EXPECT_EQ(0, exportVol(v, 1, "h", API_PORT_NONE));
    zarsim_fail_next("api_getHostPaths", 1, API_E_FAILED, "boom");
    zar_u32 n;
    api_hardwareID* list;
    EXPECT_EQ(API_E_FAILED, api_getHostPaths(nullptr, nullptr, nullptr, &n, &list, 1));
    EXPECT_EQ(0, api_getHostPaths(nullptr, nullptr, nullptr, &n, &list, 1));
    api_freeHostPaths(list);
}

TEST_F(Array, SemaphoreSerialisesAndTimesOut)
{
    ASSERT_EQ(0, cim_sem_wait());
    zarsim_sem_timeout_next(1);
    std::atomic<int> second{-1};
    std::thread t([&] { second = cim_sem_wait(); });
    t.join();
    EXPECT_EQ(API_E_SEM_TIMEOUT, second.load());
    cim_sem_post();
    // Waiters get the semaphore one after another.
    std::atomic<int> inside{0}, maxInside{0};
    std::vector<std::thread> ts;
    for (int i = 0; i < 4; ++i)
        ts.emplace_back([&] {
            for (int k = 0; k < 50; ++k) {
                ASSERT_EQ(0, cim_sem_wait());
                int now = ++inside;
                if (now > maxInside)
                    maxInside = now;
                std::this_thread::yield();
                --inside;
                cim_sem_post();
            }
        });
    for (auto& th : ts)
        th.join();
    EXPECT_EQ(1, maxInside.load());
}

TEST_F(Array, LogLinesAreCapturedWholeAboveTheThreshold)
{
    zarsim_clear_captured();
    zarsim_set_log_level(3);
    log_message(2, "error %d\n", 7);
    log_message(3, "warning %s", "w");
    log_message(4, "trace hidden\n");
    zarsim_set_log_level(2);
    ASSERT_EQ(2u, zarsim_captured_count());
    char line[128];
    ASSERT_EQ(0, zarsim_captured_line(0, line, sizeof line));
    EXPECT_STREQ("error 7\n", line);
    ASSERT_EQ(0, zarsim_captured_line(1, line, sizeof line));
    EXPECT_STREQ("warning w", line);
    EXPECT_EQ(-1, zarsim_captured_line(2, line, sizeof line));
}

TEST_F(Array, EveryChangeIsAuditedWithItsOutcome)
{
    smallArray();
    std::string v = volume("v");
    ASSERT_EQ(0, host("h", API_WWN_NONE));
    ASSERT_EQ(0, exportVol(v, 4, "h", pos("0:1:1")));
    EXPECT_EQ(API_E_LUN_INVALID, exportVol(v, 4, "h", pos("0:1:1"), 1));
    std::vector<Event> e = events();
    ASSERT_GE(e.size(), 2u);
    const Event& ok = e[e.size() - 2];
    const Event& refused = e.back();
    EXPECT_EQ("tester", ok.user);
    EXPECT_EQ("192.0.2.7", ok.addr);
    EXPECT_EQ("ZAR_ControllerConfigurationService:ExposePaths", ok.method);
    EXPECT_EQ("api_createVLUN", ok.operation);
    EXPECT_EQ("LUNames=...", ok.param);
    EXPECT_NE(std::string::npos, ok.args.find("lun=4"));
    EXPECT_NE(std::string::npos, ok.args.find("port=0:1:1"));
    EXPECT_EQ(0, ok.outcome);
    EXPECT_EQ(API_E_LUN_INVALID, refused.outcome);
    // A change without an event block is recorded against an anonymous caller.
    api_status_t st;
    EXPECT_EQ(API_E_HOST_NOT_FOUND, api_removeHost(nullptr, "h2-missing", &st));
    EXPECT_EQ("-", events().back().user);
}

TEST_F(Array, ConcurrentChangesAndReadsLoseNothing)
{
    smallArray();
    std::string v = volume("v");
    const int threads = 4, perThread = 60;
    std::vector<std::thread> ts;
    std::atomic<int> failures{0};
    for (int t = 0; t < threads; ++t)
        ts.emplace_back([&, t] {
            for (int i = 0; i < perThread; ++i) {
                char name[32];
                snprintf(name, sizeof name, "t%d-%d", t, i);
                api_status_t st;
                api_evtparam_t ev = event_;
                if (api_createHost(&st, &ev, name, nullptr,
                                   0x7000000000000000ULL + (zar_u64)(t * 1000 + i), 2, "-") != 0)
                    ++failures;
                zar_u32 lun = API_LUN_AUTO;
                zar_u64 hi, lo;
                api_wwnStringToInt(nullptr, v.c_str(), &hi, &lo);
                char err[API_ERRTEXT_LEN];
                if (api_createVLUN(&ev, hi, lo, &lun, name, API_WWN_NONE, nullptr, API_PORT_NONE, 0,
                                   0, err, sizeof err) != 0)
                    ++failures;
                // Readers in between.
                api_vlunsInfo_t q{};
                if (api_getVLUNTemplates(&q) != 0)
                    ++failures;
                api_freeVLUNs(&q);
            }
        });
    for (auto& th : ts)
        th.join();
    EXPECT_EQ(0, failures.load());
    EXPECT_EQ((size_t)threads * perThread, query(api_getVLUNTemplates, api_vlunsInfo_t{}).size());
    EXPECT_EQ((size_t)threads * perThread, allViews().size());
}

TEST(ArrayFile, StateSurvivesReopenAndSchemaIsVersioned)
{
    char path[512];
    zarsim_set_hash_iterations(1000);
    ASSERT_EQ(0, zarsim_open_temp(path, sizeof path));
    ASSERT_EQ(0, zarsim_add_volume("keep", 10, "-", VOL_MODE_READWRITE, nullptr));
    zarsim_close();
    ASSERT_EQ(0, zarsim_open(path));
    zar_u32 n = 0;
    api_vv_t* vv = nullptr;
    ASSERT_EQ(0, api_getVVs_direct(nullptr, "keep", &n, &vv, 1));
    EXPECT_EQ(1u, n);
    api_freeVVs(vv);
    zarsim_close();
    // A database of an unknown newer version is refused.
    sqlite3* db = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(path, &db));
    sqlite3_exec(db, "PRAGMA user_version = 99", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    zarsim_capture_log(1);
    EXPECT_EQ(API_E_NOT_OPEN, zarsim_open(path));
    zarsim_capture_log(0);
    zarsim_clear_captured();
    unlink(path);
}

TEST(ArrayFile, KilledWriterLeavesEveryAcknowledgedChange)
{
    char path[512];
    ASSERT_EQ(0, zarsim_open_temp(path, sizeof path));
    ASSERT_EQ(0, zarsim_add_port("0:1:1", PORT_TYPE_FC));
    ASSERT_EQ(0, zarsim_add_volume("v", 10, "-", VOL_MODE_READWRITE, nullptr));
    zarsim_close();
    int fds[2];
    ASSERT_EQ(0, pipe(fds));
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        close(fds[0]);
        if (zarsim_open(path) != 0)
            _exit(2);
        for (int i = 0;; ++i) {
            char name[32];
            snprintf(name, sizeof name, "c%06d", i);
            api_status_t st;
            if (api_createHost(&st, nullptr, name, nullptr, 0x3000000000000000ULL + (zar_u64)i, 2,
                               "-") != 0)
                _exit(3);
            if (write(fds[1], &i, sizeof i) != (ssize_t)sizeof i)
                _exit(4);
        }
    }
    close(fds[1]);
    int last = -1, got = 0;
    while (last < 300 && read(fds[0], &got, sizeof got) == (ssize_t)sizeof got)
        last = got;
    kill(child, SIGKILL);
    while (read(fds[0], &got, sizeof got) == (ssize_t)sizeof got)
        last = got;  // acknowledged before the kill
    close(fds[0]);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_GE(last, 300);

    ASSERT_EQ(0, zarsim_open(path));
    std::string integrity;
    std::set<std::string> names;
    readArray("test", [&](sqlite3* db) {
        Stmt ic(db, "PRAGMA integrity_check");
        ic.step();
        integrity = ic.text(0);
        Stmt fk(db, "PRAGMA foreign_key_check");
        if (fk.step())
            integrity += " foreign keys broken";
        Stmt st(db, "SELECT name FROM host");
        while (st.step())
            names.insert(st.text(0));
        return Result::success();
    });
    EXPECT_EQ("ok", integrity);
    for (int i = 0; i <= last; ++i) {
        char name[32];
        snprintf(name, sizeof name, "c%06d", i);
        ASSERT_TRUE(names.count(name)) << name << " acknowledged but lost";
    }
    zarsim_close();
    unlink(path);
}
}  // namespace

namespace {
TEST(ArrayDeathTest, PanicStopsTheProcessWithItsMessage)
{
    EXPECT_DEATH(zar_panic("Assertion failed: %s\n", "len > 0"),
                 "panic: Assertion failed: len > 0");
}

// A value that a client chose (a user name, a key) cannot start a forged log line.
TEST(ArrayDeathTest, LoggedArgumentsCannotBreakTheLine)
{
    EXPECT_EXIT(
        {
            log_message(2, "user=%s\n", "admin\nL2 forged\x1b[0m");
            _exit(0);
        },
        ::testing::ExitedWithCode(0), "L2 user=admin\\\\x0aL2 forged\\\\x1b\\[0m\n$");
}
}  // namespace
