//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonSPCId.cpp: view (SPC) device identifiers and view paths.
//
// A view has no object of its own on the array: its DeviceID names the
// export target of its VLUNs, in one of four forms:
//   "MS:<port LPID>:<host ID>"  matched set   (type 1)
//   "HS:<host ID>"              host sees     (type 2)
//   "HSet:<host set ID>"        host set      (type 3)
//   "PP:<port LPID>"            port present  (type 4)
// where a port LPID is the array's "N:S:P" text.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ArrayOwners.h"
#include "ZAR_Common.h"

#include <stdio.h>
#include <string.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

// The name of the host (or host set) with number hostID, or empty when the
// array does not know it or cannot be asked.
String _hostNameByID(Uint32 hostID)
{
    api_status_t status;
    api_host_t* hosts = 0;
    zar_u32 count = 0;
    int rc = ZAR_Common::guardedCall(&status, [&]() { return api_getHosts(&hosts, &count); });
    String name;
    if (rc != 0)
        return name;
    for (zar_u32 i = 0; i < count; i++) {
        if (hosts[i].hostID == hostID) {
            name = String(hosts[i].name, (Uint32)strnlen(hosts[i].name, sizeof(hosts[i].name)));
            break;
        }
    }
    api_freeHosts(hosts);
    return name;
}

// A host ID is taken only in the form the array writes it: decimal digits
// without sign, space, leading zero or trailing text, within 32 bits. A
// looser reading would let "HS:7junk" or "HS:4294967303" act on view HS:7,
// which getInstance of the same path does not find; any other text names
// no host, and callers refuse the view.
Boolean _canonicalNumber(const String& text, Uint32& value)
{
    Uint32 n = text.size();
    if (n == 0 || n > 10 || (n > 1 && text[0] == '0'))
        return false;
    Uint64 v = 0;
    for (Uint32 i = 0; i < n; i++) {
        if (text[i] < '0' || text[i] > '9')
            return false;
        v = v * 10 + (text[i] - '0');
    }
    if (v > 0xFFFFFFFFULL)
        return false;
    value = (Uint32)v;
    return true;
}

// The position of the iSCSI target port named exactly deviceID.
void _iSCSIPortByName(const String& deviceID, Uint16& portID)
{
    ZAR_ISCSIPortList ports;
    int count = -1;
    {
        ZAR_ArraySemaphore semaphore;
        if (!semaphore.held())
            return;
        count = api_getISCSIPorts(&ports.list);
    }
    CString wanted = deviceID.getCString();
    for (int i = 0; i < count; i++) {
        if (strncmp(ports.list[i].iscsiName, (const char*)wanted,
                    sizeof(ports.list[i].iscsiName)) == 0) {
            portID = ports.list[i].portID;
            break;
        }
    }
}

}  // namespace

void ZAR_Common::deReferenceSPCDeviceID(String& deviceID, Uint32& vlunType, String& hostName,
                                        Uint16& portID, bool iSCSI)
{
    hostName.clear();
    portID = API_PORT_NONE;

    if (iSCSI) {
        vlunType = API_VLUN_PORT_PRESENT;
        _iSCSIPortByName(deviceID, portID);
        return;
    }

    Uint32 prefixEnd = deviceID.find(Char16(':'));
    if (prefixEnd == PEG_NOT_FOUND)
        return;

    String prefix = deviceID.subString(0, prefixEnd + 1);
    if (String::equal(prefix, "MS:"))
        vlunType = API_VLUN_MATCHED_SET;
    else if (String::equal(prefix, "PP:"))
        vlunType = API_VLUN_PORT_PRESENT;
    else if (String::equal(prefix, "HSet:"))
        vlunType = API_VLUN_HOST_SET;
    else if (String::equal(prefix, "HS:"))
        vlunType = API_VLUN_HOST_SEES;
    else {
        vlunType = 0;
        return;
    }

    // The colon before the host ID.
    Uint32 lastColon = prefixEnd;
    if (vlunType == API_VLUN_MATCHED_SET || vlunType == API_VLUN_PORT_PRESENT) {
        // The LPID "N:S:P" holds two colons; a third one ends it.
        Uint32 c1 = deviceID.find(prefixEnd + 1, Char16(':'));
        Uint32 c2 = c1 == PEG_NOT_FOUND ? PEG_NOT_FOUND : deviceID.find(c1 + 1, Char16(':'));
        Uint32 c3 = c2 == PEG_NOT_FOUND ? PEG_NOT_FOUND : deviceID.find(c2 + 1, Char16(':'));
        Uint32 lpidEnd = (c3 != PEG_NOT_FOUND) ? c3 : deviceID.size();
        String lpid = deviceID.subString(prefixEnd + 1, lpidEnd - prefixEnd - 1);
        lpid_t port = API_PORT_NONE;
        api_convertStrLPIDtoPortID((const char*)lpid.getCString(), &port);
        portID = port;
        if (portID == API_PORT_NONE)
            return;
        // A port-present identifier names no host, even when text follows
        // its LPID.
        if (c3 == PEG_NOT_FOUND || vlunType == API_VLUN_PORT_PRESENT)
            return;
        lastColon = c3;
    }

    String hostText = deviceID.subString(lastColon + 1);
    Uint32 hostID = 0;
    if (!_canonicalNumber(hostText, hostID))
        return;
    hostName = _hostNameByID(hostID);
}

CIMObjectPath ZAR_Common::buildSPCObjectPath(String systemCreationClassName, const String& host,
                                             const String& systemName, const String& deviceID,
                                             CIMName className)
{
    return buildSystemScopedPath(host, systemName, className, "DeviceID", deviceID,
                                 systemCreationClassName);
}

PEGASUS_NAMESPACE_END
