//%/////////////////////////////////////////////////////////////////////////////
// ZAR_HostedAccessPointProvider.h: the association ZAR_HostedAccessPoint
// from the storage system (Antecedent) to the endpoints of its target
// ports (Dependent), Fibre Channel and iSCSI.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_HostedAccessPointProvider_h
#define ZAR_HostedAccessPointProvider_h

#include <ZAR_AssociationProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_HostedAccessPointProvider : public ZAR_AssociationProviderBase {
public:
    ZAR_HostedAccessPointProvider();
    virtual ~ZAR_HostedAccessPointProvider();

protected:
    virtual void _forEachPair(const OperationContext& context, int side, const CIMObjectPath& from,
                              const String& systemName, const String& host, const PairSink& sink);
    virtual CIMInstance _endInstance(const OperationContext& context, const Pair& pair, int side,
                                     CIMClass& cls, const String& systemName, const String& host);
};

PEGASUS_NAMESPACE_END

#endif
