//%/////////////////////////////////////////////////////////////////////////////
// ZAR_iSCSIProtocolEndpointProvider.h: the protocol endpoints of the
// array's iSCSI target ports, class ZAR_iSCSIProtocolEndpoint in root/zar.
//
// The Name of an endpoint is its target name "<iSCSI name>,t,<portal group
// tag>".
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_iSCSIProtocolEndpointProvider_h
#define ZAR_iSCSIProtocolEndpointProvider_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_EXPORT ZAR_iSCSIProtocolEndpointProvider
{
public:
    // The iSCSI name part of a target name "<iSCSI name>,t,<portal group
    // tag>" (the text before the first ",t,", case ignored), or targetName
    // itself when it has no such suffix.
    static String extractISCSIName(const String& targetName);
};

PEGASUS_NAMESPACE_END

#endif
