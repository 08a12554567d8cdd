// ProviderAccess: provider objects of this module made by its factory, for
// tests that call a provider directly (to watch the response handler).
#ifndef ZAR_SCSICONTROLLER_TESTS_PROVIDERACCESS_H
#define ZAR_SCSICONTROLLER_TESTS_PROVIDERACCESS_H

#include <Pegasus/Provider/CIMProvider.h>
#include <Pegasus/Provider/CIMOMHandle.h>

extern "C" Pegasus::CIMProvider* PegasusCreateProvider(const Pegasus::String& providerName);

namespace zartest {

// Creates and initializes the named provider; ends it with terminate().
template <class P>
class ProviderObject {
public:
    explicit ProviderObject(const char* name)
    {
        Pegasus::CIMProvider* p = PegasusCreateProvider(name);
        provider_ = dynamic_cast<P*>(p);
        Pegasus::CIMOMHandle handle;
        if (provider_)
            provider_->initialize(handle);
    }
    ~ProviderObject()
    {
        if (provider_)
            provider_->terminate();
    }
    P* operator->() { return provider_; }
    P* get() { return provider_; }

private:
    P* provider_ = nullptr;
};

}  // namespace zartest

#endif
