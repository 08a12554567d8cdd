// The standard OperationContext containers. Each keeps its value in a small
// rep and differs from the others only in the value's type, so the members
// they share are written once by DEFINE_VALUE_CONTAINER.
#include <Pegasus/Common/OperationContext.h>

PEGASUS_NAMESPACE_BEGIN

// Copy, assignment, destruction, the checked conversion from a Container,
// getName, clone and destroy of container class C whose rep is R.
#define DEFINE_VALUE_CONTAINER(C, R)                                                          \
    C::C(const OperationContext::Container& container)                                        \
    {                                                                                         \
        const C* p = dynamic_cast<const C*>(&container);                                      \
        if (!p)                                                                               \
            throw DynamicCastFailedException();                                               \
        _rep = new R(*p->_rep);                                                               \
    }                                                                                         \
    C::C(const C& container) : OperationContext::Container(), _rep(new R(*container._rep)) {} \
    C::~C()                                                                                   \
    {                                                                                         \
        delete _rep;                                                                          \
    }                                                                                         \
    C& C::operator=(const C& container)                                                       \
    {                                                                                         \
        if (this != &container)                                                               \
            *_rep = *container._rep;                                                          \
        return *this;                                                                         \
    }                                                                                         \
    String C::getName() const                                                                 \
    {                                                                                         \
        return NAME;                                                                          \
    }                                                                                         \
    OperationContext::Container* C::clone() const                                             \
    {                                                                                         \
        return new C(*this);                                                                  \
    }                                                                                         \
    void C::destroy()                                                                         \
    {                                                                                         \
        delete this;                                                                          \
    }

class IdentityContainerRep {
public:
    String userName;
};

const String IdentityContainer::NAME = "IdentityContainer";
DEFINE_VALUE_CONTAINER(IdentityContainer, IdentityContainerRep)

IdentityContainer::IdentityContainer(const String& userName) : _rep(new IdentityContainerRep)
{
    _rep->userName = userName;
}

String IdentityContainer::getUserName() const
{
    return _rep->userName;
}

class SubscriptionInstanceContainerRep {
public:
    CIMInstance instance;
};

const String SubscriptionInstanceContainer::NAME = "SubscriptionInstanceContainer";
DEFINE_VALUE_CONTAINER(SubscriptionInstanceContainer, SubscriptionInstanceContainerRep)

SubscriptionInstanceContainer::SubscriptionInstanceContainer(
    const CIMInstance& subscriptionInstance)
    : _rep(new SubscriptionInstanceContainerRep)
{
    _rep->instance = subscriptionInstance;
}

CIMInstance SubscriptionInstanceContainer::getInstance() const
{
    return _rep->instance;
}

class SubscriptionFilterConditionContainerRep {
public:
    String filterCondition;
    String queryLanguage;
};

const String SubscriptionFilterConditionContainer::NAME = "SubscriptionFilterConditionContainer";
DEFINE_VALUE_CONTAINER(SubscriptionFilterConditionContainer,
                       SubscriptionFilterConditionContainerRep)

SubscriptionFilterConditionContainer::SubscriptionFilterConditionContainer(
    const String& filterCondition, const String& queryLanguage)
    : _rep(new SubscriptionFilterConditionContainerRep)
{
    _rep->filterCondition = filterCondition;
    _rep->queryLanguage = queryLanguage;
}

String SubscriptionFilterConditionContainer::getFilterCondition() const
{
    return _rep->filterCondition;
}

String SubscriptionFilterConditionContainer::getQueryLanguage() const
{
    return _rep->queryLanguage;
}

class SubscriptionFilterQueryContainerRep {
public:
    String filterQuery;
    String queryLanguage;
    CIMNamespaceName sourceNameSpace;
};

const String SubscriptionFilterQueryContainer::NAME = "SubscriptionFilterQueryContainer";
DEFINE_VALUE_CONTAINER(SubscriptionFilterQueryContainer, SubscriptionFilterQueryContainerRep)

SubscriptionFilterQueryContainer::SubscriptionFilterQueryContainer(
    const String& filterQuery, const String& queryLanguage, const CIMNamespaceName& sourceNameSpace)
    : _rep(new SubscriptionFilterQueryContainerRep)
{
    _rep->filterQuery = filterQuery;
    _rep->queryLanguage = queryLanguage;
    _rep->sourceNameSpace = sourceNameSpace;
}

String SubscriptionFilterQueryContainer::getFilterQuery() const
{
    return _rep->filterQuery;
}

String SubscriptionFilterQueryContainer::getQueryLanguage() const
{
    return _rep->queryLanguage;
}

CIMNamespaceName SubscriptionFilterQueryContainer::getSourceNameSpace() const
{
    return _rep->sourceNameSpace;
}

class SubscriptionInstanceNamesContainerRep {
public:
    Array<CIMObjectPath> names;
};

const String SubscriptionInstanceNamesContainer::NAME = "SubscriptionInstanceNamesContainer";
DEFINE_VALUE_CONTAINER(SubscriptionInstanceNamesContainer, SubscriptionInstanceNamesContainerRep)

SubscriptionInstanceNamesContainer::SubscriptionInstanceNamesContainer(
    const Array<CIMObjectPath>& subscriptionInstanceNames)
    : _rep(new SubscriptionInstanceNamesContainerRep)
{
    _rep->names = subscriptionInstanceNames;
}

Array<CIMObjectPath> SubscriptionInstanceNamesContainer::getInstanceNames() const
{
    return _rep->names;
}

class AcceptLanguageListContainerRep {
public:
    AcceptLanguageList languages;
};

const String AcceptLanguageListContainer::NAME = "AcceptLanguageListContainer";
DEFINE_VALUE_CONTAINER(AcceptLanguageListContainer, AcceptLanguageListContainerRep)

AcceptLanguageListContainer::AcceptLanguageListContainer(const AcceptLanguageList& languages)
    : _rep(new AcceptLanguageListContainerRep)
{
    _rep->languages = languages;
}

AcceptLanguageList AcceptLanguageListContainer::getLanguages() const
{
    return _rep->languages;
}

class ContentLanguageListContainerRep {
public:
    ContentLanguageList languages;
};

const String ContentLanguageListContainer::NAME = "ContentLanguageListContainer";
DEFINE_VALUE_CONTAINER(ContentLanguageListContainer, ContentLanguageListContainerRep)

ContentLanguageListContainer::ContentLanguageListContainer(const ContentLanguageList& languages)
    : _rep(new ContentLanguageListContainerRep)
{
    _rep->languages = languages;
}

ContentLanguageList ContentLanguageListContainer::getLanguages() const
{
    return _rep->languages;
}

class SnmpTrapOidContainerRep {
public:
    String snmpTrapOid;
};

const String SnmpTrapOidContainer::NAME = "SnmpTrapOidContainer";
DEFINE_VALUE_CONTAINER(SnmpTrapOidContainer, SnmpTrapOidContainerRep)

SnmpTrapOidContainer::SnmpTrapOidContainer(const String& snmpTrapOid)
    : _rep(new SnmpTrapOidContainerRep)
{
    _rep->snmpTrapOid = snmpTrapOid;
}

String SnmpTrapOidContainer::getSnmpTrapOid() const
{
    return _rep->snmpTrapOid;
}

// TimeoutContainer holds its value directly.
const String TimeoutContainer::NAME = "TimeoutContainer";

TimeoutContainer::TimeoutContainer(const OperationContext::Container& container)
{
    const TimeoutContainer* p = dynamic_cast<const TimeoutContainer*>(&container);
    if (!p)
        throw DynamicCastFailedException();
    _value = p->_value;
}

TimeoutContainer::TimeoutContainer(Uint32 timeout) : _value(timeout) {}

String TimeoutContainer::getName() const
{
    return NAME;
}

OperationContext::Container* TimeoutContainer::clone() const
{
    return new TimeoutContainer(_value);
}

void TimeoutContainer::destroy()
{
    delete this;
}

Uint32 TimeoutContainer::getTimeOut() const
{
    return _value;
}

PEGASUS_NAMESPACE_END
