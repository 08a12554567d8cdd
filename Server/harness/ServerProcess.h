// ServerProcess: runs zar-cimserver as a child process for end-to-end tests
// and benchmarks, on free loopback ports, and stops it again.
#ifndef ZAR_SERVER_HARNESS_SERVERPROCESS_H
#define ZAR_SERVER_HARNESS_SERVERPROCESS_H

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

namespace zare2e {

class ServerProcess {
public:
    ~ServerProcess();

    // Starts the program with args (plus --http-port 0 unless args set
    // one) and extra environment, and waits (at most 30 s) for its
    // readiness line. Returns false with the program's output in error.
    bool start(const std::string& program, const std::vector<std::string>& args,
               const std::vector<std::pair<std::string, std::string>>& env, std::string& error);

    // Sends sig and waits (at most 60 s) for the exit. Returns the exit
    // status, 128+signal when killed by a signal, -1 when it had to be
    // killed.
    int stop(int sig = 15);

    pid_t pid() const { return _pid; }
    int httpPort() const { return _http; }
    int httpsPort() const { return _https; }
    // Everything the program printed so far (read on stop()).
    const std::string& output() const { return _out; }
    // Peak resident memory of the running process in KiB (VmHWM), or -1.
    long peakRssKb() const;

private:
    pid_t _pid = -1;
    int _fd = -1;
    int _http = -1, _https = -1;
    std::string _out;
};

// zar-cimserver over an array seeded by zarcli (the demo configuration) in
// a fresh directory, with the modules and schema of this tree: the setup
// of the end-to-end tests that drive the server with wbemcli.
struct SeededServer {
    // Seeds the array, runs each zarcli command of `setup` (for example
    // "users add viewer --role browse", its password given on stdin as
    // "password|command"), then starts the server. False with a message.
    bool start(const std::vector<std::string>& setup, std::string& error);
    // Stops the server; its exit status (0 expected).
    int stop();
    // Runs "zarcli --db <array> args"; its exit status and output.
    int zarcli(const std::string& args, std::string& output);

    std::string dir;            // the directory of the array and the server's files
    std::string zarcliCommand;  // "zarcli --db <array>"
    ServerProcess process;
};

// True when Debian's wbemcli is on the PATH.
bool haveWbemcli();

// A loopback port that is free now (-1 when none could be had).
int freePort();

// Creates an array state file at path holding the given users
// (name, password, role); false with a message on failure.
bool makeArrayDb(const std::string& path, const std::vector<std::vector<std::string>>& users,
                 std::string& error);

// A fresh private temporary directory.
std::string makeTempDir();

// Runs a shell command line (bounded by timeoutSec through timeout(1)),
// returning its exit status and its standard output (and error, merged).
int runCommand(const std::string& commandLine, std::string& output, int timeoutSec = 60);

// The build tree and the source tree (from the environment the test runner
// sets, else the compiled-in defaults).
std::string binaryDir();
std::string sourceDir();

}  // namespace zare2e

#endif
