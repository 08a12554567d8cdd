//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SystemDeviceProvider.h: the association ZAR_SystemDevice from the
// storage system (GroupComponent) to its devices (PartComponent): every
// volume, Fibre Channel view and iSCSI view. With ZAR_HostedAccessPoint it
// lets a client walk from the system to every object of the array.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SystemDeviceProvider_h
#define ZAR_SystemDeviceProvider_h

#include <ZAR_AssociationProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_SystemDeviceProvider : public ZAR_AssociationProviderBase {
public:
    ZAR_SystemDeviceProvider();
    virtual ~ZAR_SystemDeviceProvider();

protected:
    virtual void _forEachPair(const OperationContext& context, int side, const CIMObjectPath& from,
                              const String& systemName, const String& host, const PairSink& sink);
    virtual CIMInstance _endInstance(const OperationContext& context, const Pair& pair, int side,
                                     CIMClass& cls, const String& systemName, const String& host);
};

PEGASUS_NAMESPACE_END

#endif
