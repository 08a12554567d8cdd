// WireClient: a minimal CIM-XML client for benches and tests that must see
// the wire: one keep-alive connection (reopened when the server closed
// it), requests written as given, answers read to their end (content-length,
// chunked or the connection's end) without decoding the XML.
#ifndef ZAR_SERVER_HARNESS_WIRECLIENT_H
#define ZAR_SERVER_HARNESS_WIRECLIENT_H

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zare2e {

struct WireOptions {
    const char* version = "HTTP/1.1";
    bool trailers = false;  // send TE: trailers
    bool keepAlive = true;  // else Connection: close
};

class WireClient {
public:
    // Basic credentials are sent when user is not empty.
    WireClient(const std::string& host, int port, const std::string& user,
               const std::string& password);
    ~WireClient();
    WireClient(const WireClient&) = delete;
    WireClient& operator=(const WireClient&) = delete;

    using Options = WireOptions;
    struct Answer {
        int status = 0;
        std::string head;
        size_t bytes = 0;       // of the body
        bool complete = false;  // its end arrived as the framing says
    };
    using Sink = std::function<void(const char* data, size_t n)>;

    // Sends a CIM-XML request: method and object fill the CIMMethod and
    // CIMObject headers. The body's bytes go to sink as they arrive;
    // throws std::runtime_error when the server cannot be reached.
    Answer call(const std::string& method, const std::string& object, const std::string& xml,
                const Sink& sink, const Options& options);
    Answer call(const std::string& method, const std::string& object, const std::string& xml,
                std::string& body, const Options& options = Options());

    // The document of an intrinsic call in namespace ns ("root/zar").
    static std::string intrinsic(const std::string& method, const std::string& params,
                                 const std::string& ns = "root/zar");
    // The document of a method call on an instance (keys as name, value).
    static std::string methodCall(const std::string& method, const std::string& className,
                                  const std::vector<std::pair<std::string, std::string>>& keys,
                                  const std::string& params, const std::string& ns = "root/zar");
    // Host and port of "http://HOST:PORT" (a trailing slash allowed); false
    // with a reason when url is not of that form.
    static bool parseUrl(const std::string& url, std::string& host, int& port, std::string& error);
    // An IPARAMVALUE holding one VALUE, and one holding a CLASSNAME.
    static std::string value(const std::string& name, const std::string& v);
    static std::string className(const std::string& name, const std::string& cls);

private:
    void open();
    void close();
    bool read(std::string& in);

    std::string _host;
    int _port;
    std::string _authorization;
    int _fd = -1;
};

}  // namespace zare2e

#endif
