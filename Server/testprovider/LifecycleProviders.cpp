// Providers that exercise the provider manager: ZTest_Probe calls back into
// the server from initialize(); ZTest_Slow takes a while to initialize and
// counts how many of it are initialized and not terminated; ZTest_Broken fails to initialize
// while ZTEST_BROKEN_INIT is set in the environment.
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

#include "TestProviders.h"

PEGASUS_USING_PEGASUS;

namespace ztest {

namespace {

CIMInstance keyed(const char* cls, const char* name)
{
    CIMInstance i{CIMName(cls)};
    i.addProperty(CIMProperty(CIMName("Name"), CIMValue(String(name))));
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("Name"), CIMValue(String(name))));
    i.setPath(CIMObjectPath(String(), CIMNamespaceName(), CIMName(cls), keys));
    return i;
}

class ProbeProvider : public ReadOnlyInstanceProvider {
public:
    void initialize(CIMOMHandle& cimom) override
    {
        _cimom = cimom;
        OperationContext none;
        _widgets = _cimom
                       .enumerateInstanceNames(none, CIMNamespaceName("root/test"),
                                               CIMName("ZTest_Widget"))
                       .size();
        _classes =
            _cimom.enumerateClassNames(none, CIMNamespaceName("root/test"), CIMName(), true).size();
    }
    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override
    {
        CIMInstance i = keyed("ZTest_Probe", "probe");
        i.addProperty(CIMProperty(CIMName("WidgetsAtStart"), CIMValue(_widgets)));
        i.addProperty(CIMProperty(CIMName("ClassesAtStart"), CIMValue(_classes)));
        handler.processing();
        handler.deliver(i);
        handler.complete();
    }

private:
    Uint32 _widgets = 0;
    Uint32 _classes = 0;
};

// Slow providers initialized and not yet terminated.
std::atomic<Uint32> slowInitializations{0};

class SlowProvider : public ReadOnlyInstanceProvider {
public:
    void initialize(CIMOMHandle& cimom) override
    {
        _cimom = cimom;
        // Long enough for concurrent first requests to pile up behind it.
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        ++slowInitializations;
    }
    void terminate() override
    {
        --slowInitializations;
        delete this;
    }
    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override
    {
        CIMInstance i = keyed("ZTest_Slow", "slow");
        i.addProperty(
            CIMProperty(CIMName("Initializations"), CIMValue(Uint32(slowInitializations))));
        handler.processing();
        handler.deliver(i);
        handler.complete();
    }
};

class BrokenProvider : public ReadOnlyInstanceProvider {
public:
    void initialize(CIMOMHandle& cimom) override
    {
        _cimom = cimom;
        if (std::getenv("ZTEST_BROKEN_INIT"))
            throw std::runtime_error("broken on purpose");
    }
    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override
    {
        handler.processing();
        handler.deliver(keyed("ZTest_Broken", "fixed"));
        handler.complete();
    }
};

}  // namespace

CIMProvider* createProbeProvider()
{
    return new ProbeProvider;
}
CIMProvider* createSlowProvider()
{
    return new SlowProvider;
}
CIMProvider* createBrokenProvider()
{
    return new BrokenProvider;
}

}  // namespace ztest
