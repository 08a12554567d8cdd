#include "ServerOptions.h"

#include <sys/stat.h>

namespace zarserver {

namespace {

bool isDir(const std::string& p)
{
    struct stat st;
    return ::stat(p.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool parsePort(const std::string& v, bool allowZero, int& port)
{
    if (v.empty() || v.size() > 5 || v.find_first_not_of("0123456789") != std::string::npos)
        return false;
    int p = std::stoi(v);
    if (p > 65535 || (p == 0 && !allowZero))
        return false;
    port = p;
    return true;
}

}  // namespace

std::string serverUsage()
{
    return "Usage: zar-cimserver [options]\n"
           "\n"
           "CIM server of the array: CIM-XML over HTTP and HTTPS, provider modules\n"
           "registered by MOF, HTTP Basic authentication against the array's users.\n"
           "\n"
           "Options:\n"
           "  --listen ADDR         address to listen on (default 127.0.0.1)\n"
           "  --http-port N         HTTP port (default 5988; 0 picks a free port;\n"
           "                        'off' disables HTTP)\n"
           "  --https-port N        HTTPS port (default 5989; HTTPS runs only with\n"
           "                        --tls-cert and --tls-key)\n"
           "  --tls-cert FILE       PEM certificate (chain) for HTTPS\n"
           "  --tls-key FILE        PEM private key for HTTPS\n"
           "  --array-db FILE       state file of the array (sets ZAR_ARRAY_DB)\n"
           "  --schema-dir DIR      class and registration MOF (default: found next\n"
           "                        to the executable)\n"
           "  --provider-dir DIR    folder of the provider modules lib<Location>.so\n"
           "                        (default: found next to the executable)\n"
           "  --log-level N         log lines up to level N (1 fatal, 2 error,\n"
           "                        3 notice and access log, 4 trace; default 3)\n"
           "  --log-file FILE       log to FILE instead of standard error\n"
           "  --socket PATH         local socket for connectLocal clients (default\n"
           "                        var/cimxml.socket; 'off' disables it)\n"
           "  --workers N           requests handled at once (default 16); slow and\n"
           "                        idle connections hold none\n"
           "  --idle-timeout SEC    close idle keep-alive connections (default 30)\n"
           "  --drain-timeout SEC   on SIGTERM, time left to requests in progress\n"
           "                        before their connections are cut (default 10)\n"
           "  --help                show this text\n"
           "\n"
           "Once listening, a line \"zar-cimserver: listening on ...\" is printed.\n"
           "SIGTERM or SIGINT stop the server: it stops listening at once, and\n"
           "requests in progress get the drain time to finish.\n";
}

bool parseServerOptions(const std::vector<std::string>& args, ServerOptions& o, std::string& error)
{
    bool certGiven = false, keyGiven = false;
    for (size_t i = 0; i < args.size(); i++) {
        std::string a = args[i];
        std::string value;
        bool inlineValue = false;
        size_t eq = a.find('=');
        if (a.compare(0, 2, "--") == 0 && eq != std::string::npos) {
            value = a.substr(eq + 1);
            a = a.substr(0, eq);
            inlineValue = true;
        }
        if (a == "--help" || a == "-h") {
            o.help = true;
            continue;
        }
        static const char* const withValue[] = {
            "--listen",   "--http-port",  "--https-port",   "--tls-cert",     "--tls-key",
            "--array-db", "--schema-dir", "--provider-dir", "--log-level",    "--log-file",
            "--socket",   "--workers",    "--idle-timeout", "--drain-timeout"};
        bool known = false;
        for (const char* w : withValue)
            if (a == w)
                known = true;
        if (!known) {
            error = "unknown option " + args[i];
            return false;
        }
        if (!inlineValue) {
            if (i + 1 >= args.size()) {
                error = "option " + a + " needs a value";
                return false;
            }
            value = args[++i];
        }
        if (a == "--listen") {
            if (value.empty()) {
                error = "--listen needs an address";
                return false;
            }
            o.listen = value;
        } else if (a == "--http-port") {
            if (value == "off")
                o.httpPort = -1;
            else if (!parsePort(value, true, o.httpPort)) {
                error = "invalid --http-port " + value;
                return false;
            }
        } else if (a == "--https-port") {
            if (!parsePort(value, true, o.httpsPort)) {
                error = "invalid --https-port " + value;
                return false;
            }
            o.httpsRequested = true;
        } else if (a == "--tls-cert") {
            o.tlsCert = value;
            certGiven = true;
        } else if (a == "--tls-key") {
            o.tlsKey = value;
            keyGiven = true;
        } else if (a == "--array-db") {
            o.arrayDb = value;
        } else if (a == "--schema-dir") {
            o.schemaDir = value;
        } else if (a == "--provider-dir") {
            o.providerDir = value;
        } else if (a == "--log-level") {
            if (value.size() != 1 || value[0] < '1' || value[0] > '4') {
                error = "invalid --log-level " + value + " (1 to 4)";
                return false;
            }
            o.logLevel = value;
        } else if (a == "--log-file") {
            o.logFile = value;
        } else if (a == "--socket") {
            o.socketPath = value == "off" ? std::string() : value;
        } else if (a == "--workers" || a == "--idle-timeout" || a == "--drain-timeout") {
            if (value.empty() || value.size() > 4 ||
                value.find_first_not_of("0123456789") != std::string::npos ||
                std::stoi(value) < 1) {
                error = "invalid " + a + " " + value;
                return false;
            }
            (a == "--workers"        ? o.workers
             : a == "--idle-timeout" ? o.idleTimeoutSec
                                     : o.drainTimeoutSec) = std::stoi(value);
        }
    }
    if (certGiven != keyGiven) {
        error = "HTTPS needs both --tls-cert and --tls-key";
        return false;
    }
    if (o.httpsRequested && !certGiven) {
        error = "--https-port needs --tls-cert and --tls-key";
        return false;
    }
    if (o.httpPort < 0 && !certGiven && o.socketPath.empty()) {
        error = "nothing to listen on: HTTP is off, HTTPS not configured, no socket";
        return false;
    }
    return true;
}

void resolveDefaultDirs(ServerOptions& o, const std::string& exeDir,
                        const std::string& sourceSchemaDir)
{
    std::string root = exeDir + "/..";
    if (o.schemaDir.empty()) {
        if (isDir(root + "/share/zar/schema"))
            o.schemaDir = root + "/share/zar/schema";
        else
            o.schemaDir = sourceSchemaDir;
    }
    if (o.providerDir.empty()) {
        if (isDir(root + "/lib/zar/providers"))
            o.providerDir = root + "/lib/zar/providers";
        else
            o.providerDir = root + "/lib";
    }
}

}  // namespace zarserver
