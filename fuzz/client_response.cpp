// Responses as CIMClient reads them: a CIM server played by a thread of
// this program answers every request on a Unix socket with the input's
// bytes (the HTTP status line, headers, plain or chunked body with
// trailers, and the CIM-XML document), then closes the connection. The
// first input byte picks the client operation, so that every kind of
// result is decoded: classes, class names, instances, instance names,
// objects with paths, property values, method return values and output
// parameters, pull operations' answers, and errors.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <thread>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <Pegasus/Client/CIMClient.h>
#include <Pegasus/Common/Exception.h>

#include "FuzzCheck.h"

PEGASUS_USING_PEGASUS;

namespace {

std::mutex answerMu;
std::string answer;

bool readRequest(int fd)
{
    std::string in;
    char buf[65536];
    size_t need = std::string::npos;
    for (;;) {
        if (need == std::string::npos) {
            size_t end = in.find("\r\n\r\n");
            if (end != std::string::npos) {
                size_t len = 0;
                const char* cl = strcasestr(in.c_str(), "\r\nContent-Length:");
                if (cl && size_t(cl - in.c_str()) < end)
                    len = std::strtoul(cl + 17, nullptr, 10);
                need = end + 4 + len;
            }
        }
        if (need != std::string::npos && in.size() >= need)
            return true;
        ssize_t n = ::read(fd, buf, sizeof buf);
        if (n <= 0)
            return false;
        in.append(buf, size_t(n));
    }
}

void serve(int listener)
{
    for (;;) {
        int fd = ::accept(listener, nullptr, nullptr);
        if (fd < 0)
            continue;
        if (readRequest(fd)) {
            std::string a;
            {
                std::lock_guard<std::mutex> lock(answerMu);
                a = answer;
            }
            size_t off = 0;
            while (off < a.size()) {
                ssize_t n = ::send(fd, a.data() + off, a.size() - off, MSG_NOSIGNAL);
                if (n <= 0)
                    break;
                off += size_t(n);
            }
        }
        ::close(fd);
    }
}

CIMObjectPath instancePath()
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding("DeviceID", "HS:1", CIMKeyBinding::STRING));
    return CIMObjectPath(String(), CIMNamespaceName(), "ZAR_SCSIProtocolController", keys);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    std::string path = "/tmp/zar-fuzz-client-" + std::to_string(::getpid()) + ".sock";
    ::unlink(path.c_str());
    int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    std::strncpy(addr.sun_path, path.c_str(), sizeof addr.sun_path - 1);
    if (listener < 0 || ::bind(listener, reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0 ||
        ::listen(listener, 8) != 0) {
        std::perror("client_response: cannot listen");
        std::abort();
    }
    ::setenv("ZAR_LOCAL_SOCKET", path.c_str(), 1);
    std::thread(serve, listener).detach();
    // The socket file goes when the program ends (libFuzzer exits through exit()).
    static std::string toRemove = path;
    std::atexit([] { ::unlink(toRemove.c_str()); });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    {
        std::lock_guard<std::mutex> lock(answerMu);
        answer.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
    }
    const CIMNamespaceName ns("root/zar");
    const CIMPropertyList all;
    try {
        CIMClient client;
        client.setTimeout(5000);
        client.connectLocal();
        CIMEnumerationContext ctx;
        Boolean end = false;
        switch (data[0] % 18) {
            case 0:
                (void)client.getClass(ns, "ZAR_StorageSystem", false, true, true, all);
                break;
            case 1:
                (void)client.enumerateClasses(ns, CIMName(), true, false, true, true);
                break;
            case 2:
                (void)client.enumerateClassNames(ns, CIMName(), true);
                break;
            case 3:
                (void)client.getInstance(ns, instancePath(), false, false, false, all);
                break;
            case 4:
                (void)client.enumerateInstances(ns, "ZAR_SCSIProtocolController", true, false,
                                                false, false, all);
                break;
            case 5:
                (void)client.enumerateInstanceNames(ns, "ZAR_SCSIProtocolController");
                break;
            case 6:
                (void)client.associators(ns, instancePath(), CIMName(), CIMName(), String(),
                                         String(), false, false, all);
                break;
            case 7:
                (void)client.associatorNames(ns, instancePath(), CIMName(), CIMName(), String(),
                                             String());
                break;
            case 8:
                (void)client.references(ns, instancePath(), CIMName(), String(), false, false, all);
                break;
            case 9:
                (void)client.referenceNames(ns, instancePath(), CIMName(), String());
                break;
            case 10:
                (void)client.getProperty(ns, instancePath(), "DeviceID");
                break;
            case 11: {
                CIMInstance inst("ZAR_SCSIProtocolController");
                inst.addProperty(CIMProperty("DeviceID", String("HS:1")));
                (void)client.createInstance(ns, inst);
                break;
            }
            case 12:
                client.deleteInstance(ns, instancePath());
                break;
            case 13:
                client.setProperty(ns, instancePath(), "ElementName", CIMValue(String("x")));
                break;
            case 16:  // an open and its pulls; every request gets the same answer
                (void)client.openEnumerateInstances(ctx, end, ns, "ZAR_SCSIController", true, false,
                                                    all, String(), String(), Uint32Arg(30), false,
                                                    10);
                for (int i = 0; i < 3 && !end; i++)
                    (void)client.pullInstancesWithPath(ctx, end, 10);
                break;
            case 17:
                (void)client.openEnumerateInstancePaths(ctx, end, ns, "ZAR_SCSIController",
                                                        String(), String(), Uint32Arg(), false, 10);
                for (int i = 0; i < 3 && !end; i++)
                    (void)client.pullInstancePaths(ctx, end, 10);
                if (!end)
                    client.closeEnumeration(ctx);
                break;
            default: {
                Array<CIMParamValue> in, out;
                in.append(CIMParamValue("LUNames", CIMValue(Array<String>(1, "vol1"))));
                (void)client.invokeMethod(ns, CIMObjectPath("ZAR_ControllerConfigurationService"),
                                          "ExposePaths", in, out);
                break;
            }
        }
    } catch (Exception&) {
    }
    return 0;
}
