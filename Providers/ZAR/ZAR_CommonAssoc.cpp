//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonAssoc.cpp: association paths and instances with reference keys
// in role order.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#include <initializer_list>
#include <utility>

PEGASUS_NAMESPACE_BEGIN

namespace {

CIMObjectPath _withHost(CIMObjectPath path, const String& host)
{
    path.setHost(host);
    return path;
}

CIMNamespaceName _nameSpace(const String& nameSpace)
{
    return nameSpace.size() == 0 ? CIMNamespaceName() : CIMNamespaceName(nameSpace);
}

CIMKeyBinding _refKey(const String& role, const CIMObjectPath& end)
{
    return CIMKeyBinding(CIMName(role), end.toString(), CIMKeyBinding::REFERENCE);
}

// An association path whose reference keys are the (role, end) pairs, in
// that order.
CIMObjectPath _assocPath(const CIMName& assocClass, const String& host, const String& nameSpace,
                         std::initializer_list<std::pair<String, CIMObjectPath>> ends)
{
    Array<CIMKeyBinding> keys;
    for (const auto& end : ends)
        keys.append(_refKey(end.first, end.second));
    return CIMObjectPath(host, _nameSpace(nameSpace), assocClass, keys);
}

}  // namespace

CIMObjectPath ZAR_Common::buildAssocPath(CIMName assocClass, String role1, String role2,
                                         CIMObjectPath end1, CIMObjectPath end2, String host,
                                         String nameSpace)
{
    return buildAssocPath(assocClass, role1, role2, end1, end2, host, host, host, nameSpace);
}

CIMObjectPath ZAR_Common::buildAssocPath(CIMName assocClass, String role1, String role2,
                                         CIMObjectPath end1, CIMObjectPath end2, String host1,
                                         String host2, String assocHost, String nameSpace)
{
    return _assocPath(assocClass, assocHost, nameSpace,
                      {{role1, _withHost(end1, host1)}, {role2, _withHost(end2, host2)}});
}

CIMObjectPath ZAR_Common::buildAssocPath(CIMName assocClass, String role1, String role2,
                                         String role3, CIMObjectPath end1, CIMObjectPath end2,
                                         CIMObjectPath end3, String host, String nameSpace)
{
    return _assocPath(assocClass, host, nameSpace,
                      {{role1, _withHost(end1, host)},
                       {role2, _withHost(end2, host)},
                       {role3, _withHost(end3, host)}});
}

CIMInstance ZAR_Common::buildAssocInstance(CIMName assocClass, String role1, String role2,
                                           CIMObjectPath end1, CIMObjectPath end2,
                                           CIMClass cimClass, String host, String nameSpace)
{
    return buildAssocInstance(assocClass, role1, role2, end1, end2, cimClass, host, host, host,
                              nameSpace);
}

CIMInstance ZAR_Common::buildAssocInstance(CIMName assocClass, String role1, String role2,
                                           CIMObjectPath end1, CIMObjectPath end2,
                                           CIMClass cimClass, String host1, String host2,
                                           String assocHost, String nameSpace)
{
    CIMInstance instance = buildInstanceSkeleton(cimClass);
    setPropertyValue(instance, CIMName(role1), _withHost(end1, host1));
    setPropertyValue(instance, CIMName(role2), _withHost(end2, host2));
    instance.setPath(
        buildAssocPath(assocClass, role1, role2, end1, end2, host1, host2, assocHost, nameSpace));
    return instance;
}

CIMInstance ZAR_Common::buildAssocInstance(CIMName assocClass, String role1, String role2,
                                           String role3, CIMObjectPath end1, CIMObjectPath end2,
                                           CIMObjectPath end3, CIMClass cimClass, String host,
                                           String nameSpace)
{
    CIMInstance instance = buildInstanceSkeleton(cimClass);
    setPropertyValue(instance, CIMName(role1), _withHost(end1, host));
    setPropertyValue(instance, CIMName(role2), _withHost(end2, host));
    setPropertyValue(instance, CIMName(role3), _withHost(end3, host));
    instance.setPath(
        buildAssocPath(assocClass, role1, role2, role3, end1, end2, end3, host, nameSpace));
    return instance;
}

CIMObjectPath ZAR_Common::buildDepAssocPath(String host, CIMName assocClass,
                                            CIMObjectPath antecedent, CIMObjectPath dependent)
{
    return _assocPath(assocClass, host, ZAR_NAMESPACE,
                      {{"Antecedent", antecedent}, {"Dependent", dependent}});
}

CIMInstance ZAR_Common::buildDepAssocInstance(String host, CIMName assocClass,
                                              CIMObjectPath antecedent, CIMObjectPath dependent,
                                              CIMClass cimClass)
{
    CIMInstance instance = buildInstanceSkeleton(cimClass);
    setPropertyValue(instance, CIMName("Antecedent"), antecedent);
    setPropertyValue(instance, CIMName("Dependent"), dependent);
    instance.setPath(buildDepAssocPath(host, assocClass, antecedent, dependent));
    return instance;
}

PEGASUS_NAMESPACE_END
