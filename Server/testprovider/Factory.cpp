// The module's entry point: one provider per registered name; unknown names
// (such as ZTest_UnknownProvider) get no provider.
#include "TestProviders.h"

PEGASUS_USING_PEGASUS;

extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& providerName)
{
    if (String::equalNoCase(providerName, "ZTest_WidgetProvider"))
        return ztest::createWidgetProvider();
    if (String::equalNoCase(providerName, "ZTest_GadgetProvider"))
        return ztest::createGadgetProvider();
    if (String::equalNoCase(providerName, "ZTest_AssociationProvider"))
        return ztest::createAssociationProvider();
    if (String::equalNoCase(providerName, "ZTest_ServiceProvider"))
        return ztest::createServiceProvider();
    if (String::equalNoCase(providerName, "ZTest_ProbeProvider"))
        return ztest::createProbeProvider();
    if (String::equalNoCase(providerName, "ZTest_SlowProvider"))
        return ztest::createSlowProvider();
    if (String::equalNoCase(providerName, "ZTest_BrokenProvider"))
        return ztest::createBrokenProvider();
    return 0;
}
