//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SystemPartProvider.h: the two associations from the storage system
// to the objects it holds, which let a client walk from the system to
// every object of the array:
//   ZAR_SystemDevice      system (GroupComponent) to its devices
//                         (PartComponent): every volume, Fibre Channel view
//                         and iSCSI view;
//   ZAR_HostedAccessPoint system (Antecedent) to the endpoints of its
//                         target ports (Dependent), Fibre Channel and iSCSI.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SystemPartProvider_h
#define ZAR_SystemPartProvider_h

#include <ZAR_AssociationProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_SystemPartProvider : public ZAR_AssociationProviderBase {
public:
    // The parts the association leads to.
    enum Parts { DEVICES, ACCESS_POINTS };

    // DEVICES serves ZAR_SystemDevice, ACCESS_POINTS ZAR_HostedAccessPoint.
    explicit ZAR_SystemPartProvider(Parts parts);

protected:
    virtual void _forEachPair(const OperationContext& context, int side, const CIMObjectPath& from,
                              const String& systemName, const String& host, const PairSink& sink);
    virtual CIMInstance _endInstance(const OperationContext& context, const Pair& pair, int side,
                                     CIMClass& cls, const String& systemName, const String& host);

private:
    // The pairs of the devices: volumes in chunks, then the views of both
    // protocols (from a view, narrowed to it).
    void _forEachDevice(Pair& pair, const CIMObjectPath* from, const String& systemName,
                        const String& host, const PairSink& sink);
    // The pairs of the endpoints of both protocols' target ports.
    void _forEachAccessPoint(Pair& pair, const CIMObjectPath* from, const String& systemName,
                             const String& host, const PairSink& sink);

    Parts _parts;
};

PEGASUS_NAMESPACE_END

#endif
