//%/////////////////////////////////////////////////////////////////////////////
// ZAR_AssociationProviderBase.h: the operations shared by the association
// providers of the array module, over an association class with two
// reference ends.
//
// A subclass lists the pairs of end paths (with what it needs to fill in
// the association and to build the end instances); this class answers
// associators, associatorNames, references and referenceNames from either
// end with role, result role and result class filtering, and getInstance,
// enumerateInstances and enumerateInstanceNames of the association class.
// Parameters that cannot name this association give an empty answer.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef ZAR_AssociationProviderBase_h
#define ZAR_AssociationProviderBase_h

#include <functional>
#include <initializer_list>
#include <vector>

#include <Pegasus/Provider/CIMAssociationProvider.h>

#include "ZAR_ProviderBase.h"
#include "ZAR_ArrayRecords.h"

PEGASUS_NAMESPACE_BEGIN

class ZAR_AssociationProviderBase : public ZAR_AssociationOperations, public ZAR_ProviderBase {
public:
    // One association: its two end paths and the records it stems from
    // (those a subclass does not use are null).
    struct Pair {
        CIMObjectPath ends[2];
        const vlun* record;
        const ZAR_PortRecord* port;
    };

    // Called for each pair; returns false to stop the walk.
    typedef std::function<bool(const Pair&)> PairSink;

    // assocClass is served; roles[i] names end i, endClasses[i] its class
    // (the class that every object at that end is, or derives from).
    ZAR_AssociationProviderBase(const String& providerName, const String& assocClass,
                                const char* role0, const char* role1, const char* endClass0,
                                const char* endClass1);
    virtual ~ZAR_AssociationProviderBase();

protected:
    // associators: the far ends of the pairs whose near end is objectName,
    // as whole instances built by the subclass; associatorNames: their
    // paths; references: the association instances of those pairs;
    // referenceNames: their paths.
    virtual void _answerAssociation(const AssociationRequest& request, AssociationAnswer& answer);

    // The association whose two reference keys match a pair;
    // CIMInvalidParameterException when a key is missing,
    // CIMObjectNotFoundException when there is no such pair.
    virtual void _getInstance(const ReadRequest& request, InstanceResponseHandler& handler);

    // Every association of the class, one per pair.
    virtual void _enumerateInstances(const ReadRequest& request, InstanceResponseHandler& handler);

    // Their paths.
    virtual void _enumerateInstanceNames(const ReadRequest& request,
                                         ObjectPathResponseHandler& handler);

    // Calls sink for every pair (side -1), or for the pairs whose end
    // `side` matches `from` (hosts ignored, the class of `from` put aside).
    virtual void _forEachPair(const OperationContext& context, int side, const CIMObjectPath& from,
                              const String& systemName, const String& host,
                              const PairSink& sink) = 0;

    // The instance at end `side` of a pair, from the stored class cls of
    // that end.
    virtual CIMInstance _endInstance(const OperationContext& context, const Pair& pair, int side,
                                     CIMClass& cls, const String& systemName,
                                     const String& host) = 0;

    // Fills the association's own properties; nothing by default.
    virtual void _fillAssociation(CIMInstance& instance, const Pair& pair);

    // True when class `name` is `wanted` or derives from it (stored
    // classes of root/zar).
    Boolean _isA(const CIMName& name, const CIMName& wanted);

    // The side (0 or 1) whose objects' classes an object path names, by
    // its CreationClassName key or else its class; -1 for neither.
    int _sideOf(const CIMObjectPath& path);

    // The classes of the objects at end `side`, when they are not all of
    // the end's class itself.
    void _endHolds(int side, std::initializer_list<const char*> classes);

    // Helpers of the subclasses that walk view records.

    // Narrows query to the kind and port of the view whose DeviceID is
    // given; false when the identifier names no kind of view.
    static Boolean _narrowToView(const String& deviceID, api_vlunsInfo_t& query);

    // Calls sink for every view record that query selects, chunk by chunk,
    // until it returns false; a failed chunk throws (see _fail).
    void _forEachViewRecord(const api_vlunsInfo_t& query,
                            const std::function<bool(const vlun&)>& sink);

    // The view class of a protocol: ZAR_SCSIController for FC,
    // ZAR_iSCSIController for iSCSI.
    static const char* _viewClassOf(port_type_t type);

    // The name of the variant of fcName (a class or provider name starting
    // "ZAR_") that serves protocol `type`: fcName itself for FC, with
    // "iSCSI" after "ZAR_" for iSCSI.
    static String _ofProtocol(port_type_t type, const char* fcName);

    // The path of the view of a record: ZAR_SCSIController for an FC
    // record, ZAR_iSCSIController for an iSCSI one.
    static CIMObjectPath _viewPath(const vlun& record, const String& host,
                                   const String& systemName);

    CIMName _assocClass;
    String _roles[2];
    CIMName _endClasses[2];
    std::vector<CIMName> _objectClasses[2];

private:
    // The frame of the two enumerations: the traced, access-checked
    // operation, the identity, then sink(pair, host) for every pair.
    void _eachPairTraced(const ReadRequest& request, const char* operation,
                         ResponseHandler& handler,
                         const std::function<void(const Pair&, const String&)>& sink);

    // Delivers each far end of the request's object once (its instance,
    // or its path for associatorNames), when the parameters select any.
    void _deliverFarEnds(const AssociationRequest& request, AssociationAnswer& answer);

    // Delivers the association (instance, or path for referenceNames) of
    // each pair whose near end is the request's object, when the
    // parameters select any.
    void _deliverReferences(const AssociationRequest& request, AssociationAnswer& answer);

    CIMObjectPath _assocPath(const Pair& pair, const String& host);
    CIMInstance _assocInstance(CIMClass& cls, const Pair& pair, const String& host);
    // The far side for associators, or -1 when the parameters select
    // nothing.
    int _farSide(const CIMObjectPath& objectName, const CIMName& resultClass, const String& role,
                 const String& resultRole);
    // True when the far end `end` is of resultClass (any when null).
    Boolean _selected(const CIMObjectPath& end, const CIMName& resultClass);
    // The near side for references, or -1 as above.
    int _nearSide(const CIMObjectPath& objectName, const CIMName& resultClass, const String& role);
};

PEGASUS_NAMESPACE_END

#endif
