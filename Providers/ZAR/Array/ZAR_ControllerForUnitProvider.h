//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ControllerForUnitProvider.h: the associations from views to the
// volumes they export: ZAR_ControllerForUnit (Fibre Channel views,
// ZAR_SCSIController) and ZAR_iSCSIControllerForUnit (ZAR_iSCSIController),
// one provider object per protocol.
//
// Antecedent is the view, Dependent the volume. DeviceNumber is the LUN in
// upper-case hexadecimal, DeviceAccess the volume's access (1 read/write,
// 2 read-only). A default view carries the volumes of its port's
// port-present exports. Pairs come from the array's export records.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_ControllerForUnitProvider_h
#define ZAR_ControllerForUnitProvider_h

#include <ZAR_AssociationProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_ControllerForUnitProvider : public ZAR_AssociationProviderBase {
public:
    // type PORT_TYPE_FC serves ZAR_ControllerForUnit, PORT_TYPE_ISCSI
    // ZAR_iSCSIControllerForUnit.
    explicit ZAR_ControllerForUnitProvider(port_type_t type);

    // DeviceAccess of an association for an array volume access mode:
    // 1 (read/write) for read-write, 2 (read-only) for read, else 0.
    static Uint16 deviceAccess(api_vol_mode_t mode);

protected:
    virtual void _forEachPair(const OperationContext& context, int side, const CIMObjectPath& from,
                              const String& systemName, const String& host, const PairSink& sink);
    virtual CIMInstance _endInstance(const OperationContext& context, const Pair& pair, int side,
                                     CIMClass& cls, const String& systemName, const String& host);
    virtual void _fillAssociation(CIMInstance& instance, const Pair& pair);

private:
    port_type_t _type;
};

PEGASUS_NAMESPACE_END

#endif
