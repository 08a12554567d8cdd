// zar-cimserver: the array's CIM server.
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <malloc.h>
#include <pwd.h>
#include <unistd.h>

#include <zarapi.h>
#include <zarauth.h>

#include "CimOperationHandler.h"
#include "HttpServer.h"
#include "ServerCore.h"
#include "ServerOptions.h"

#ifndef ZAR_SOURCE_SCHEMA_DIR
#define ZAR_SOURCE_SCHEMA_DIR "schema"
#endif

namespace {

std::string exeDir()
{
    char buf[PATH_MAX];
    ssize_t n = ::readlink("/proc/self/exe", buf, sizeof buf - 1);
    if (n <= 0)
        return ".";
    std::string p(buf, static_cast<size_t>(n));
    size_t slash = p.rfind('/');
    return slash == std::string::npos ? "." : p.substr(0, slash);
}

std::string ownUser()
{
    struct passwd* pw = ::getpwuid(::geteuid());
    return pw ? pw->pw_name : std::to_string(::geteuid());
}

void logLine(int level, const std::string& line)
{
    log_message(level, "%s", line.c_str());
}

int fail(const std::string& msg, int status)
{
    std::cerr << "zar-cimserver: " << msg << std::endl;
    log_message(1, "zar-cimserver: %s", msg.c_str());
    return status;
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    zarserver::ServerOptions opt;
    std::string error;
    if (!zarserver::parseServerOptions(args, opt, error)) {
        std::cerr << "zar-cimserver: " << error << "\n"
                  << "Try 'zar-cimserver --help'." << std::endl;
        return 2;
    }
    if (opt.help) {
        std::cout << zarserver::serverUsage();
        return 0;
    }
    zarserver::resolveDefaultDirs(opt, exeDir(), ZAR_SOURCE_SCHEMA_DIR);

    // The array library reads its configuration from the environment.
    if (!opt.arrayDb.empty())
        ::setenv("ZAR_ARRAY_DB", opt.arrayDb.c_str(), 1);
    ::setenv("ZAR_LOG_LEVEL", opt.logLevel.empty() ? "3" : opt.logLevel.c_str(), 1);
    if (!opt.logFile.empty())
        ::setenv("ZAR_LOG_FILE", opt.logFile.c_str(), 1);

    // Blocks of 1 MiB and more (request bodies, buffered answers) are
    // mapped on their own, so that freeing them gives the memory back to the
    // system; a fixed threshold keeps glibc from raising it after each one.
    mallopt(M_MMAP_THRESHOLD, 1 << 20);

    // Signals are taken by sigwait below; every thread inherits the mask.
    sigset_t sigs;
    sigemptyset(&sigs);
    sigaddset(&sigs, SIGTERM);
    sigaddset(&sigs, SIGINT);
    pthread_sigmask(SIG_BLOCK, &sigs, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    std::unique_ptr<zarserver::ServerCore> core;
    try {
        zarserver::CoreConfig cc;
        cc.schemaDir = opt.schemaDir;
        cc.providerDir = opt.providerDir;
        core.reset(new zarserver::ServerCore(cc));
    } catch (std::exception& e) {
        return fail(std::string("cannot load the schema: ") + e.what(), 1);
    }

    zarwire::CimHandlerConfig hc;
    hc.hostName = core->hostName();
    hc.realm = core->hostName();
    hc.localUser = ownUser();
    hc.authenticate = [](const std::string& user, const std::string& password) {
        return zar_authenticateUser(user.c_str(), password.c_str()) == 0;
    };
    hc.usersGeneration = [] {
        unsigned long long g = 0;
        zar_usersGeneration(&g);
        return g;
    };
    hc.log = logLine;
    hc.recordFailedLogin = [](const std::string& user, const std::string& address) {
        zar_recordFailedLogin(user.c_str(), address.c_str());
    };
    zarwire::CimOperationHandler handler(core->dispatcher(), hc);

    zarwire::ServerConfig sc;
    sc.listenAddress = opt.listen;
    sc.httpPort = opt.httpPort;
    sc.httpsPort = opt.tlsCert.empty() ? -1 : opt.httpsPort;
    sc.tlsCert = opt.tlsCert;
    sc.tlsKey = opt.tlsKey;
    sc.socketPath = opt.socketPath;
    sc.workers = static_cast<size_t>(opt.workers);
    sc.limits.idleTimeoutMs = opt.idleTimeoutSec * 1000;
    sc.drainTimeoutMs = opt.drainTimeoutSec * 1000;
    zarwire::HttpServer server(sc, handler);
    try {
        server.start();
    } catch (std::exception& e) {
        core->shutdown();
        return fail(e.what(), 1);
    }

    std::string host =
        opt.listen.find(':') != std::string::npos ? "[" + opt.listen + "]" : opt.listen;
    std::string ready = "zar-cimserver: listening on";
    if (server.httpPort() >= 0)
        ready += " http://" + host + ":" + std::to_string(server.httpPort());
    if (server.httpsPort() >= 0)
        ready += " https://" + host + ":" + std::to_string(server.httpsPort());
    if (!opt.socketPath.empty())
        ready += " local " + opt.socketPath;
    ready += " (schema " + opt.schemaDir + ", providers " + opt.providerDir + ")";
    std::cout << ready << std::endl;
    log_message(2, "%s", ready.c_str());

    int sig = 0;
    sigwait(&sigs, &sig);
    log_message(2, "zar-cimserver: %s received, stopping (%d requests in progress)",
                sig == SIGTERM ? "SIGTERM" : "SIGINT", server.activeRequests());
    server.stop();
    handler.shutdown();  // open enumerations end before their providers go away
    core->shutdown();
    log_message(2, "zar-cimserver: stopped");
    std::cout << "zar-cimserver: stopped" << std::endl;
    return 0;
}
