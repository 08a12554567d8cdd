// libZarBenchProvider: an instance provider that delivers a large collection
// of ZBench_Item instances one by one, for measuring how the server streams
// big enumerations. ZBENCH_COUNT sets the size (default 10000);
// ZBENCH_DELAY_US delays each delivery (default 0), so that a request can be
// kept running while the server is told to stop; ZBENCH_STARTED_FILE, when
// set, is created as soon as an enumeration starts.
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

PEGASUS_USING_PEGASUS;

namespace {

Uint32 envNumber(const char* name, Uint32 dflt)
{
    const char* v = std::getenv(name);
    return v && *v ? Uint32(std::strtoul(v, 0, 10)) : dflt;
}

class ItemProvider : public CIMInstanceProvider {
public:
    void initialize(CIMOMHandle&) override {}
    void terminate() override { delete this; }

    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override
    {
        handler.processing();
        if (const char* started = std::getenv("ZBENCH_STARTED_FILE"))
            if (FILE* f = std::fopen(started, "w"))
                std::fclose(f);
        Uint32 count = envNumber("ZBENCH_COUNT", 10000);
        Uint32 delayUs = envNumber("ZBENCH_DELAY_US", 0);
        for (Uint32 i = 0; i < count; i++) {
            handler.deliver(item(i));
            if (delayUs)
                std::this_thread::sleep_for(std::chrono::microseconds(delayUs));
        }
        handler.complete();
    }

    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                ObjectPathResponseHandler& handler) override
    {
        handler.processing();
        Uint32 count = envNumber("ZBENCH_COUNT", 10000);
        for (Uint32 i = 0; i < count; i++)
            handler.deliver(path(i));
        handler.complete();
    }

    void getInstance(const OperationContext&, const CIMObjectPath& ref, const Boolean,
                     const Boolean, const CIMPropertyList&,
                     InstanceResponseHandler& handler) override
    {
        const Array<CIMKeyBinding>& keys = ref.getKeyBindings();
        if (keys.size() != 1)
            throw CIMObjectNotFoundException(ref.toString());
        CString id = keys[0].getValue().getCString();
        char* end = 0;
        unsigned long i = std::strtoul((const char*)id + 5, &end, 10);
        if (std::strncmp((const char*)id, "item-", 5) != 0 || *end ||
            i >= envNumber("ZBENCH_COUNT", 10000))
            throw CIMObjectNotFoundException(ref.toString());
        handler.processing();
        handler.deliver(item(Uint32(i)));
        handler.complete();
    }

    void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler&) override
    {
        throw CIMNotSupportedException("items are read-only");
    }
    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        ObjectPathResponseHandler&) override
    {
        throw CIMNotSupportedException("items are read-only");
    }
    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override
    {
        throw CIMNotSupportedException("items are read-only");
    }

private:
    static String id(Uint32 i)
    {
        String s("item-");
        s.appendPrintf("%u", i);
        return s;
    }

    static CIMObjectPath path(Uint32 i)
    {
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding("InstanceID", id(i), CIMKeyBinding::STRING));
        return CIMObjectPath(String(), CIMNamespaceName(), "ZBench_Item", keys);
    }

    static CIMInstance item(Uint32 i)
    {
        CIMInstance inst("ZBench_Item");
        inst.addProperty(CIMProperty("InstanceID", CIMValue(id(i))));
        String name("Benchmark item number ");
        name.appendPrintf("%u", i);
        inst.addProperty(CIMProperty("ElementName", CIMValue(name)));
        inst.addProperty(CIMProperty("Index", CIMValue(i)));
        inst.addProperty(CIMProperty("Size", CIMValue(Uint64(i) * 4096)));
        inst.addProperty(CIMProperty("Enabled", CIMValue(Boolean(i % 2 == 0))));
        Array<Uint16> status;
        status.append(2);
        inst.addProperty(CIMProperty("OperationalStatus", CIMValue(status)));
        inst.addProperty(CIMProperty(
            "Description",
            CIMValue(String("An item delivered by the benchmark provider & kept <small>."))));
        inst.setPath(path(i));
        return inst;
    }
};

}  // namespace

extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& providerName)
{
    if (String::equalNoCase(providerName, "ZBench_ItemProvider"))
        return new ItemProvider;
    return 0;
}
