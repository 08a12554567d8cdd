//%/////////////////////////////////////////////////////////////////////////////
// ZAR_AssociationProviderBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_AssociationProviderBase.h"

#include "ZAR_ArrayOwners.h"

#include <set>
#include <string>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

// View records fetched per call.
const Uint32 VIEW_CHUNK = 200;

// Remembers the paths already delivered (their text without host).
class Seen {
public:
    bool first(const CIMObjectPath& path)
    {
        CIMObjectPath p = path;
        p.setHost(String());
        return _texts.insert((const char*)p.toString().getCString()).second;
    }

private:
    std::set<std::string> _texts;
};

// The reference key named `name` of an association path, as a path.
Boolean _referenceKey(const CIMObjectPath& path, const String& name, CIMObjectPath& value)
{
    String text = ZAR_Common::getStringProperty(path, name);
    if (text.size() == 0)
        return false;
    value = CIMObjectPath(text);
    return true;
}

}  // namespace

ZAR_AssociationProviderBase::ZAR_AssociationProviderBase(const String& providerName,
                                                         const String& assocClass,
                                                         const char* role0, const char* role1,
                                                         const char* endClass0,
                                                         const char* endClass1)
    : ZAR_ProviderBase(providerName), _assocClass(assocClass)
{
    _roles[0] = role0;
    _roles[1] = role1;
    _endClasses[0] = CIMName(endClass0);
    _endClasses[1] = CIMName(endClass1);
    _objectClasses[0].push_back(_endClasses[0]);
    _objectClasses[1].push_back(_endClasses[1]);
}

void ZAR_AssociationProviderBase::_endHolds(int side, std::initializer_list<const char*> classes)
{
    _objectClasses[side].clear();
    for (const char* name : classes)
        _objectClasses[side].push_back(CIMName(name));
}

ZAR_AssociationProviderBase::~ZAR_AssociationProviderBase() {}

void ZAR_AssociationProviderBase::_fillAssociation(CIMInstance&, const Pair&) {}

Boolean ZAR_AssociationProviderBase::_narrowToView(const String& deviceID, api_vlunsInfo_t& query)
{
    String id = deviceID;
    Uint32 type = 0;
    String hostName;
    Uint16 port = API_PORT_NONE;
    ZAR_Common::deReferenceSPCDeviceID(id, type, hostName, port, false);
    if (type == 0)
        return false;
    ZAR_ArrayRecords::narrow(query, String(), type, port);
    return true;
}

void ZAR_AssociationProviderBase::_forEachViewRecord(const api_vlunsInfo_t& query,
                                                     const std::function<bool(const vlun&)>& sink)
{
    ZAR_SPCCursor cursor;
    api_status_t status;
    Uint32 more = 1;
    while (more != 0) {
        std::vector<vlun> records;
        if (ZAR_ArrayRecords::readViewChunk(query, cursor.get(), VIEW_CHUNK, records, &more,
                                            &status) != 0) {
            _fail("_forEachPair", "api_getSCSIProtocolControllers_chunk", status);
        }
        for (size_t i = 0; i < records.size(); i++) {
            if (!sink(records[i]))
                return;
        }
    }
}

const char* ZAR_AssociationProviderBase::_viewClassOf(port_type_t type)
{
    return type == PORT_TYPE_FC ? ZAR_SCSI_CONTROLLER : ZAR_ISCSI_CONTROLLER;
}

String ZAR_AssociationProviderBase::_ofProtocol(port_type_t type, const char* fcName)
{
    return type == PORT_TYPE_ISCSI ? String("ZAR_iSCSI") + (fcName + 4) : String(fcName);
}

CIMObjectPath ZAR_AssociationProviderBase::_viewPath(const vlun& record, const String& host,
                                                     const String& systemName)
{
    return ZAR_Common::buildSPCObjectPath(
        String(ZAR_STORAGE_SYSTEM), host, systemName,
        ZAR_ArrayRecords::field(record.deviceID, sizeof(record.deviceID)),
        CIMName(_viewClassOf(record.hporttype)));
}

Boolean ZAR_AssociationProviderBase::_isA(const CIMName& name, const CIMName& wanted)
{
    CIMName current = name;
    for (int depth = 0; depth < 32 && !current.isNull(); depth++) {
        if (current.equal(wanted))
            return true;
        try {
            CIMClass cls = _storedClass(current, false, false, CIMPropertyList());
            current = cls.getSuperClassName();
        } catch (Exception&) {
            return false;
        }
    }
    return false;
}

int ZAR_AssociationProviderBase::_sideOf(const CIMObjectPath& path)
{
    String creation = ZAR_Common::getStringProperty(path, "CreationClassName");
    for (int side = 0; side < 2; side++) {
        for (size_t i = 0; i < _objectClasses[side].size(); i++) {
            const CIMName& name = _objectClasses[side][i];
            if (creation.size() != 0 ? String::equalNoCase(creation, name.getString())
                                     : path.getClassName().equal(name)) {
                return side;
            }
        }
    }
    return -1;
}

Boolean ZAR_AssociationProviderBase::_selected(const CIMObjectPath& end, const CIMName& resultClass)
{
    return resultClass.isNull() || _isA(end.getClassName(), resultClass);
}

int ZAR_AssociationProviderBase::_farSide(const CIMObjectPath& objectName,
                                          const CIMName& resultClass, const String& role,
                                          const String& resultRole)
{
    int near = _sideOf(objectName);
    if (near < 0)
        return -1;
    int far = 1 - near;
    if (role.size() != 0 && !String::equalNoCase(role, _roles[near]))
        return -1;
    if (resultRole.size() != 0 && !String::equalNoCase(resultRole, _roles[far]))
        return -1;
    // The far end's objects derive from its class: a result class that is
    // neither above nor below it selects none of them.
    if (!resultClass.isNull() && !_isA(_endClasses[far], resultClass) &&
        !_isA(resultClass, _endClasses[far])) {
        return -1;
    }
    return far;
}

int ZAR_AssociationProviderBase::_nearSide(const CIMObjectPath& objectName,
                                           const CIMName& resultClass, const String& role)
{
    int near = _sideOf(objectName);
    if (near < 0)
        return -1;
    if (role.size() != 0 && !String::equalNoCase(role, _roles[near]))
        return -1;
    if (!resultClass.isNull() && !_isA(_assocClass, resultClass))
        return -1;
    return near;
}

CIMObjectPath ZAR_AssociationProviderBase::_assocPath(const Pair& pair, const String& host)
{
    Array<CIMKeyBinding> keys;
    for (int side = 0; side < 2; side++) {
        keys.append(CIMKeyBinding(CIMName(_roles[side]), pair.ends[side].toString(),
                                  CIMKeyBinding::REFERENCE));
    }
    return CIMObjectPath(host, CIMNamespaceName(ZAR_NAMESPACE), _assocClass, keys);
}

CIMInstance ZAR_AssociationProviderBase::_assocInstance(CIMClass& cls, const Pair& pair,
                                                        const String& host)
{
    CIMInstance instance = ZAR_Common::buildInstanceSkeleton(cls);
    for (int side = 0; side < 2; side++)
        ZAR_Common::setPropertyValue(instance, CIMName(_roles[side]), pair.ends[side]);
    _fillAssociation(instance, pair);
    instance.setPath(_assocPath(pair, host));
    return instance;
}

void ZAR_AssociationProviderBase::_answerAssociation(const AssociationRequest& request,
                                                     AssociationAnswer& answer)
{
    const char* operation = request.operationName();
    log_message(4, "-->%s::%s\n\t objectName = %s \n", _traceName(), operation,
                (const char*)request.objectName.toString().getCString());
    ZAR_Common::checkUserAccess(request.context, __FILE__, __LINE__);
    answer.processing();
    if (request.ofReferences())
        _deliverReferences(request, answer);
    else
        _deliverFarEnds(request, answer);
    answer.complete();
    log_message(4, "<--%s::%s\n", _traceName(), operation);
}

void ZAR_AssociationProviderBase::_deliverFarEnds(const AssociationRequest& request,
                                                  AssociationAnswer& answer)
{
    int far = _farSide(request.objectName, request.resultClass, request.role, request.resultRole);
    if (far < 0)
        return;
    String systemName, host;
    _identity(systemName, host, request.operationName());
    // The far end's stored class, fetched at the first end; an end of a
    // subclass is built from its own.
    CIMClass cls;
    Seen seen;
    _forEachPair(
        request.context, 1 - far, request.objectName, systemName, host, [&](const Pair& pair) {
            const CIMObjectPath& end = pair.ends[far];
            if (!_selected(end, request.resultClass) || !seen.first(end))
                return true;
            if (request.namesOnly()) {
                answer.deliver(end);
                return true;
            }
            CIMClass farClass;
            if (end.getClassName().equal(_endClasses[far])) {
                if (cls.isUninitialized())
                    cls = _storedClass(_endClasses[far], request.includeQualifiers,
                                       request.includeClassOrigin, request.propertyList);
                farClass = cls;
            } else {
                farClass = _storedClass(end.getClassName(), request.includeQualifiers,
                                        request.includeClassOrigin, request.propertyList);
            }
            answer.deliver(_endInstance(request.context, pair, far, farClass, systemName, host));
            return true;
        });
}

void ZAR_AssociationProviderBase::_deliverReferences(const AssociationRequest& request,
                                                     AssociationAnswer& answer)
{
    int near = _nearSide(request.objectName, request.resultClass, request.role);
    if (near < 0)
        return;
    String systemName, host;
    _identity(systemName, host, request.operationName());
    CIMClass cls;
    _forEachPair(request.context, near, request.objectName, systemName, host,
                 [&](const Pair& pair) {
                     if (request.namesOnly()) {
                         answer.deliver(_assocPath(pair, host));
                         return true;
                     }
                     if (cls.isUninitialized())
                         cls = _storedClass(_assocClass, request.includeQualifiers,
                                            request.includeClassOrigin, request.propertyList);
                     answer.deliver(_assocInstance(cls, pair, host));
                     return true;
                 });
}

void ZAR_AssociationProviderBase::_getInstance(const ReadRequest& request,
                                               InstanceResponseHandler& handler)
{
    log_message(4, "-->%s::getInstance\n", _traceName());
    ZAR_Common::checkUserAccess(request.context, __FILE__, __LINE__);
    CIMObjectPath ends[2];
    for (int side = 0; side < 2; side++) {
        if (!_referenceKey(request.path, _roles[side], ends[side])) {
            throw CIMInvalidParameterException(_className + " " + _roles[side] + " key not found.");
        }
    }
    String systemName, host;
    _identity(systemName, host, "getInstance");
    CIMObjectPath wanted = _asClass(request.path, _assocClass);
    Boolean found = false;
    CIMInstance instance;
    if (_sideOf(ends[0]) == 0) {
        CIMClass cls = _storedClass(_assocClass, request.includeQualifiers,
                                    request.includeClassOrigin, request.propertyList);
        _forEachPair(request.context, 0, ends[0], systemName, host, [&](const Pair& pair) {
            if (!ZAR_Common::matchObjectPath(wanted, _assocPath(pair, host)))
                return true;
            instance = _assocInstance(cls, pair, host);
            found = true;
            return false;
        });
    }
    if (!found) {
        log_message(2, "%s::getInstance, not found = %s\n", _traceName(),
                    (const char*)request.path.toString().getCString());
        throw CIMObjectNotFoundException(_className + " CIM Object not found.");
    }
    handler.processing();
    handler.deliver(instance);
    handler.complete();
    log_message(4, "<--%s::getInstance\n", _traceName());
}

void ZAR_AssociationProviderBase::_eachPairTraced(
    const ReadRequest& request, const char* operation, ResponseHandler& handler,
    const std::function<void(const Pair&, const String&)>& sink)
{
    _traced(request.context, operation, [&]() {
        String systemName, host;
        _identity(systemName, host, operation);
        handler.processing();
        _forEachPair(request.context, -1, CIMObjectPath(), systemName, host, [&](const Pair& pair) {
            sink(pair, host);
            return true;
        });
        handler.complete();
    });
}

void ZAR_AssociationProviderBase::_enumerateInstances(const ReadRequest& request,
                                                      InstanceResponseHandler& handler)
{
    // The stored class, fetched at the first association.
    CIMClass cls;
    _eachPairTraced(request, "enumerateInstances", handler,
                    [&](const Pair& pair, const String& host) {
                        if (cls.isUninitialized())
                            cls = _storedClass(_assocClass, request.includeQualifiers,
                                               request.includeClassOrigin, request.propertyList);
                        handler.deliver(_assocInstance(cls, pair, host));
                    });
}

void ZAR_AssociationProviderBase::_enumerateInstanceNames(const ReadRequest& request,
                                                          ObjectPathResponseHandler& handler)
{
    _eachPairTraced(
        request, "enumerateInstanceNames", handler,
        [&](const Pair& pair, const String& host) { handler.deliver(_assocPath(pair, host)); });
}

PEGASUS_NAMESPACE_END
