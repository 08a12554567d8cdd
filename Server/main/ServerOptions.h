// ServerOptions: the command line of zar-cimserver and the defaults that
// let it run from a build tree or an installed tree without flags.
#ifndef ZAR_SERVER_MAIN_SERVEROPTIONS_H
#define ZAR_SERVER_MAIN_SERVEROPTIONS_H

#include <string>
#include <vector>

namespace zarserver {

struct ServerOptions {
    std::string listen = "127.0.0.1";
    int httpPort = 5988;   // -1 disables HTTP
    int httpsPort = 5989;  // used only with a certificate and key
    std::string tlsCert, tlsKey;
    std::string arrayDb;  // exported as ZAR_ARRAY_DB when set
    std::string schemaDir, providerDir;
    std::string logLevel;  // exported as ZAR_LOG_LEVEL
    std::string logFile;   // exported as ZAR_LOG_FILE
    std::string socketPath = "var/cimxml.socket";
    int workers = 16;
    int idleTimeoutSec = 30;
    int drainTimeoutSec = 10;
    bool help = false;
    bool httpsRequested = false;  // --https-port given explicitly
};

// Parses argv (without argv[0]). Returns false with a message in error for
// unknown options, missing or malformed values, ports out of range, or a
// certificate without a key (and the reverse).
bool parseServerOptions(const std::vector<std::string>& args, ServerOptions& options,
                        std::string& error);

// The --help text.
std::string serverUsage();

// Fills schemaDir and providerDir when empty, from the directory holding
// the executable: an installed tree (bin/, share/zar/schema,
// lib/zar/providers) or the build tree (bin/, lib/, the source tree's
// schema folder given by sourceSchemaDir).
void resolveDefaultDirs(ServerOptions& options, const std::string& exeDir,
                        const std::string& sourceSchemaDir);

}  // namespace zarserver

#endif
