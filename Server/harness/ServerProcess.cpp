#include "ServerProcess.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <thread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zarsim_test.h>

namespace zare2e {

namespace {

int portAfter(const std::string& line, const std::string& scheme)
{
    size_t p = line.find(scheme + "://");
    if (p == std::string::npos)
        return -1;
    size_t colon = line.find(':', p + scheme.size() + 3);
    size_t bracket = line.find("]:", p);
    if (bracket != std::string::npos && bracket < line.find(' ', p))
        colon = bracket + 1;
    return colon == std::string::npos ? -1 : std::atoi(line.c_str() + colon + 1);
}

}  // namespace

ServerProcess::~ServerProcess()
{
    if (_pid > 0)
        stop(SIGKILL);
}

bool ServerProcess::start(const std::string& program, const std::vector<std::string>& args,
                          const std::vector<std::pair<std::string, std::string>>& env,
                          std::string& error)
{
    int pipefd[2];
    if (::pipe(pipefd) != 0) {
        error = "pipe failed";
        return false;
    }
    std::vector<std::string> argv{program};
    bool portGiven = false;
    for (const auto& a : args)
        if (a.compare(0, 11, "--http-port") == 0)
            portGiven = true;
    if (!portGiven) {
        argv.push_back("--http-port");
        argv.push_back("0");
    }
    argv.insert(argv.end(), args.begin(), args.end());
    _pid = ::fork();
    if (_pid == 0) {
        ::dup2(pipefd[1], 1);
        ::dup2(pipefd[1], 2);
        ::close(pipefd[0]);
        ::close(pipefd[1]);
        for (const auto& kv : env)
            ::setenv(kv.first.c_str(), kv.second.c_str(), 1);
        std::vector<char*> cargs;
        for (auto& a : argv)
            cargs.push_back(const_cast<char*>(a.c_str()));
        cargs.push_back(nullptr);
        ::execv(program.c_str(), cargs.data());
        std::fprintf(stderr, "cannot run %s: %s\n", program.c_str(), std::strerror(errno));
        ::_exit(127);
    }
    ::close(pipefd[1]);
    if (_fd >= 0)
        ::close(_fd);
    _fd = pipefd[0];
    _out.clear();  // a restarted program prints its own readiness line
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    char buf[4096];
    while (std::chrono::steady_clock::now() < deadline) {
        pollfd p{_fd, POLLIN, 0};
        if (::poll(&p, 1, 200) <= 0)
            continue;
        ssize_t n = ::read(_fd, buf, sizeof buf);
        if (n <= 0)
            break;
        _out.append(buf, size_t(n));
        size_t at = _out.find("zar-cimserver: listening on");
        if (at != std::string::npos && _out.find('\n', at) != std::string::npos) {
            std::string line = _out.substr(at, _out.find('\n', at) - at);
            _http = portAfter(line, "http");
            _https = portAfter(line, "https");
            return true;
        }
    }
    error = "zar-cimserver did not become ready: " + _out;
    stop(SIGKILL);
    return false;
}

int ServerProcess::stop(int sig)
{
    if (_pid <= 0)
        return -1;
    ::kill(_pid, sig);
    int status = 0;
    int result = -1;
    auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    char buf[4096];
    for (;;) {
        pid_t r = ::waitpid(_pid, &status, WNOHANG);
        if (r == _pid) {
            result = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            break;
        }
        if (std::chrono::steady_clock::now() > deadline) {
            ::kill(_pid, SIGKILL);
            ::waitpid(_pid, &status, 0);
            break;
        }
        pollfd p{_fd, POLLIN, 0};
        if (::poll(&p, 1, 50) > 0) {
            ssize_t n = ::read(_fd, buf, sizeof buf);
            if (n > 0)
                _out.append(buf, size_t(n));
        }
    }
    ssize_t n;
    while ((n = ::read(_fd, buf, sizeof buf)) > 0)
        _out.append(buf, size_t(n));
    ::close(_fd);
    _fd = -1;
    _pid = -1;
    return result;
}

long ServerProcess::peakRssKb() const
{
    std::ifstream f("/proc/" + std::to_string(_pid) + "/status");
    std::string line;
    while (std::getline(f, line))
        if (line.compare(0, 6, "VmHWM:") == 0)
            return std::atol(line.c_str() + 6);
    return -1;
}

bool makeArrayDb(const std::string& path, const std::vector<std::vector<std::string>>& users,
                 std::string& error)
{
    if (zarsim_open(path.c_str()) != 0) {
        error = "cannot create array state " + path;
        return false;
    }
    for (const auto& u : users) {
        if (zarsim_add_user(u[0].c_str(), u[1].c_str(), u[2].c_str()) != 0) {
            error = "cannot add user " + u[0];
            zarsim_close();
            return false;
        }
    }
    zarsim_close();
    return true;
}

std::string makeTempDir()
{
    char tmpl[] = "/tmp/zar-e2e-XXXXXX";
    const char* d = ::mkdtemp(tmpl);
    return d ? d : "/tmp";
}

int runCommand(const std::string& commandLine, std::string& output, int timeoutSec)
{
    output.clear();
    std::string cmd = "timeout " + std::to_string(timeoutSec) + " " + commandLine + " 2>&1";
    FILE* p = ::popen(cmd.c_str(), "r");
    if (!p)
        return -1;
    char buf[4096];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, p)) > 0)
        output.append(buf, n);
    int status = ::pclose(p);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string binaryDir()
{
    const char* e = std::getenv("ZAR_BINARY_DIR");
    return e && *e ? e : ZAR_E2E_BINARY_DIR;
}

std::string sourceDir()
{
    const char* e = std::getenv("ZAR_SOURCE_DIR");
    return e && *e ? e : ZAR_E2E_SOURCE_DIR;
}

bool SeededServer::start(const std::vector<std::string>& setup, std::string& error)
{
    dir = makeTempDir();
    zarcliCommand = binaryDir() + "/bin/zarcli --db " + dir + "/array.db";
    std::string out;
    if (zarcli("seed", out) != 0) {
        error = "zarcli seed: " + out;
        return false;
    }
    for (const std::string& step : setup) {
        size_t bar = step.find('|');
        std::string line = bar == std::string::npos
                               ? zarcliCommand + " " + step
                               : "printf '" + step.substr(0, bar) + "\\n' | " + zarcliCommand +
                                     " " + step.substr(bar + 1);
        if (runCommand(line, out) != 0) {
            error = line + ": " + out;
            return false;
        }
    }
    return process.start(binaryDir() + "/bin/zar-cimserver",
                         {"--array-db", dir + "/array.db", "--socket", dir + "/cimxml.socket",
                          "--schema-dir", sourceDir() + "/schema", "--provider-dir",
                          binaryDir() + "/lib", "--log-file", dir + "/server.log"},
                         {}, error);
}

int SeededServer::stop()
{
    return process.pid() > 0 ? process.stop() : 0;
}

int SeededServer::zarcli(const std::string& args, std::string& output)
{
    return runCommand(zarcliCommand + " " + args, output);
}

bool haveWbemcli()
{
    std::string out;
    return runCommand("which wbemcli", out, 10) == 0;
}

int freePort()
{
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t len = sizeof a;
    if (fd < 0 || ::bind(fd, (sockaddr*)&a, sizeof a) != 0 ||
        ::getsockname(fd, (sockaddr*)&a, &len) != 0) {
        if (fd >= 0)
            ::close(fd);
        return -1;
    }
    ::close(fd);
    return ntohs(a.sin_port);
}

}  // namespace zare2e
