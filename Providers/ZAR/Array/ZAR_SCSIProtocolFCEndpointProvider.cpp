//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SCSIProtocolFCEndpointProvider.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_SCSIProtocolFCEndpointProvider.h"

#include <stdio.h>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

const char SYSTEM_CLASS[] = "ZAR_StorageSystem";

// The WWN text in the form endpoints carry (16 upper-case hexadecimal
// digits), or the text as given when it is no WWN of at most 16 digits.
String _canonicalWWN(const String& text)
{
    if (text.size() == 0 || text.size() > 16)
        return text;
    zar_u64 high = 0;
    zar_u64 low = 0;
    if (api_wwnStringToInt(NULL, (const char*)text.getCString(), &high, &low) != 0)
        return text;
    char buffer[17];
    snprintf(buffer, sizeof(buffer), "%016llX", (unsigned long long)low);
    return String(buffer);
}

}  // namespace

ZAR_SCSIProtocolFCEndpointProvider::ZAR_SCSIProtocolFCEndpointProvider()
    : ZAR_ProtocolEndpointBase(String("ZAR_SCSIProtocolFCEndpointProvider"),
                               "ZAR_SCSIProtocolFCEndpoint", PORT_TYPE_FC)
{
}

ZAR_SCSIProtocolFCEndpointProvider::~ZAR_SCSIProtocolFCEndpointProvider() {}

CIMObjectPath ZAR_SCSIProtocolFCEndpointProvider::buildObjectPath(const String& className,
                                                                  const String& systemName,
                                                                  const String& /* portDeviceID */,
                                                                  const String& portWWN)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("SystemCreationClassName"), String(SYSTEM_CLASS),
                              CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding(CIMName("SystemName"), systemName, CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding(CIMName("CreationClassName"), className, CIMKeyBinding::STRING));
    keys.append(CIMKeyBinding(CIMName("Name"), _canonicalWWN(portWWN), CIMKeyBinding::STRING));
    return CIMObjectPath(String(), CIMNamespaceName("root/zar"), CIMName(className), keys);
}

PEGASUS_NAMESPACE_END
