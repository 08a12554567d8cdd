//%/////////////////////////////////////////////////////////////////////////////
// ZAR_SAPAvailableForElementProvider.h: the associations from target port
// endpoints to the views reached through them:
// ZAR_SAPAvailableForElement (ZAR_SCSIProtocolFCEndpoint to
// ZAR_SCSIController) and ZAR_iSCSISAPAvailableForElement
// (ZAR_iSCSIProtocolEndpoint to ZAR_iSCSIController), one provider object
// per protocol.
//
// AvailableSAP is the endpoint, ManagedElement the view. A matched-set,
// port-present or default view is reached through its own port; a
// host-sees or host-set view through every target port of its protocol.
// Views are read in chunks of 200.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_SAPAvailableForElementProvider_h
#define ZAR_SAPAvailableForElementProvider_h

#include <ZAR_AssociationProviderBase.h>

PEGASUS_NAMESPACE_BEGIN

class ZAR_SAPAvailableForElementProvider : public ZAR_AssociationProviderBase {
public:
    // type PORT_TYPE_FC serves ZAR_SAPAvailableForElement, PORT_TYPE_ISCSI
    // ZAR_iSCSISAPAvailableForElement.
    explicit ZAR_SAPAvailableForElementProvider(port_type_t type);

    // True when the view of record r is reached through the port at
    // position `port`.
    static Boolean reachedThrough(const vlun& r, lpid_t port);

protected:
    virtual void _forEachPair(const OperationContext& context, int side, const CIMObjectPath& from,
                              const String& systemName, const String& host, const PairSink& sink);
    virtual CIMInstance _endInstance(const OperationContext& context, const Pair& pair, int side,
                                     CIMClass& cls, const String& systemName, const String& host);

private:
    port_type_t _type;
};

PEGASUS_NAMESPACE_END

#endif
