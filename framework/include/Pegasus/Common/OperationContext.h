//%/////////////////////////////////////////////////////////////////////////////
// OperationContext: the named containers that travel with a CIM operation
// (the requesting user, languages, ...), and the standard containers.
//
// A context owns its containers: insert() and set() store clones, and copying
// a context clones every container. Names are compared case-sensitively.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_OperationContext_h
#define Pegasus_OperationContext_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/AcceptLanguageList.h>
#include <Pegasus/Common/ContentLanguageList.h>

PEGASUS_NAMESPACE_BEGIN

class OperationContextRep;

class PEGASUS_COMMON_LINKAGE OperationContext {
public:
    // One named piece of context. Implementations return their fixed name,
    // a heap copy of themselves (clone) and free such a copy (destroy).
    class PEGASUS_COMMON_LINKAGE Container {
    public:
        virtual ~Container();
        virtual String getName() const = 0;
        virtual Container* clone() const = 0;
        virtual void destroy() = 0;
    };

    // An empty context.
    OperationContext();
    // Clones every container of context.
    OperationContext(const OperationContext& context);
    virtual ~OperationContext();
    OperationContext& operator=(const OperationContext& context);

    // Removes every container.
    void clear();
    // The container of that name; a plain Exception ("object not found")
    // when there is none.
    const Container& get(const String& containerName) const;
    Boolean contains(const String& containerName) const;
    // Replaces the container of the same name with a clone of container;
    // Exception ("object not found") when there is none.
    void set(const Container& container);
    // Adds a clone of container; Exception ("object already exists.") when
    // one of that name is present.
    void insert(const Container& container);
    // Removes the container of that name; Exception ("object not found")
    // when there is none.
    void remove(const String& containerName);

protected:
    OperationContextRep* _rep;
};

class IdentityContainerRep;

// The name of the user on whose behalf the operation runs (empty when the
// server does not authenticate).
class PEGASUS_COMMON_LINKAGE IdentityContainer : virtual public OperationContext::Container {
public:
    static const String NAME;  // "IdentityContainer"

    // Copies an IdentityContainer reached through its base;
    // DynamicCastFailedException if container is of another type.
    IdentityContainer(const OperationContext::Container& container);
    IdentityContainer(const IdentityContainer& container);
    IdentityContainer(const String& userName);
    virtual ~IdentityContainer();
    IdentityContainer& operator=(const IdentityContainer& container);
    virtual String getName() const;  // NAME
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    String getUserName() const;

protected:
    IdentityContainerRep* _rep;

private:
    IdentityContainer();  // not implemented
};

class SubscriptionInstanceContainerRep;

// The subscription instance an indication operation is about.
class PEGASUS_COMMON_LINKAGE SubscriptionInstanceContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;  // "SubscriptionInstanceContainer"
    SubscriptionInstanceContainer(const OperationContext::Container& container);
    SubscriptionInstanceContainer(const SubscriptionInstanceContainer& container);
    SubscriptionInstanceContainer(const CIMInstance& subscriptionInstance);
    virtual ~SubscriptionInstanceContainer();
    SubscriptionInstanceContainer& operator=(const SubscriptionInstanceContainer& container);
    virtual String getName() const;
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    CIMInstance getInstance() const;

protected:
    SubscriptionInstanceContainerRep* _rep;

private:
    SubscriptionInstanceContainer();  // not implemented
};

class SubscriptionFilterConditionContainerRep;

// The condition and query language of a subscription's filter.
class PEGASUS_COMMON_LINKAGE SubscriptionFilterConditionContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;  // "SubscriptionFilterConditionContainer"
    SubscriptionFilterConditionContainer(const OperationContext::Container& container);
    SubscriptionFilterConditionContainer(const SubscriptionFilterConditionContainer& container);
    SubscriptionFilterConditionContainer(const String& filterCondition,
                                         const String& queryLanguage);
    virtual ~SubscriptionFilterConditionContainer();
    SubscriptionFilterConditionContainer& operator=(
        const SubscriptionFilterConditionContainer& container);
    virtual String getName() const;
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    String getFilterCondition() const;
    String getQueryLanguage() const;

protected:
    SubscriptionFilterConditionContainerRep* _rep;

private:
    SubscriptionFilterConditionContainer();  // not implemented
};

class SubscriptionFilterQueryContainerRep;

// The query, query language and source namespace of a subscription's filter.
class PEGASUS_COMMON_LINKAGE SubscriptionFilterQueryContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;  // "SubscriptionFilterQueryContainer"
    SubscriptionFilterQueryContainer(const OperationContext::Container& container);
    SubscriptionFilterQueryContainer(const SubscriptionFilterQueryContainer& container);
    SubscriptionFilterQueryContainer(const String& filterQuery, const String& queryLanguage,
                                     const CIMNamespaceName& sourceNameSpace);
    virtual ~SubscriptionFilterQueryContainer();
    SubscriptionFilterQueryContainer& operator=(const SubscriptionFilterQueryContainer& container);
    virtual String getName() const;
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    String getFilterQuery() const;
    String getQueryLanguage() const;
    CIMNamespaceName getSourceNameSpace() const;

protected:
    SubscriptionFilterQueryContainerRep* _rep;

private:
    SubscriptionFilterQueryContainer();  // not implemented
};

class SubscriptionInstanceNamesContainerRep;

// The names of the subscriptions an indication is delivered for.
class PEGASUS_COMMON_LINKAGE SubscriptionInstanceNamesContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;  // "SubscriptionInstanceNamesContainer"
    SubscriptionInstanceNamesContainer(const OperationContext::Container& container);
    SubscriptionInstanceNamesContainer(const SubscriptionInstanceNamesContainer& container);
    SubscriptionInstanceNamesContainer(const Array<CIMObjectPath>& subscriptionInstanceNames);
    virtual ~SubscriptionInstanceNamesContainer();
    SubscriptionInstanceNamesContainer& operator=(
        const SubscriptionInstanceNamesContainer& container);
    virtual String getName() const;
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    Array<CIMObjectPath> getInstanceNames() const;

protected:
    SubscriptionInstanceNamesContainerRep* _rep;

private:
    SubscriptionInstanceNamesContainer();  // not implemented
};

// The operation's time-out in milliseconds.
class PEGASUS_COMMON_LINKAGE TimeoutContainer : virtual public OperationContext::Container {
public:
    static const String NAME;  // "TimeoutContainer"
    TimeoutContainer(const OperationContext::Container& container);
    TimeoutContainer(Uint32 timeout);
    virtual String getName() const;
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    Uint32 getTimeOut() const;

protected:
    Uint32 _value;

private:
    TimeoutContainer();  // not implemented
};

class AcceptLanguageListContainerRep;

// The languages the client accepts in responses.
class PEGASUS_COMMON_LINKAGE AcceptLanguageListContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;  // "AcceptLanguageListContainer"
    AcceptLanguageListContainer(const OperationContext::Container& container);
    AcceptLanguageListContainer(const AcceptLanguageListContainer& container);
    AcceptLanguageListContainer(const AcceptLanguageList& languages);
    virtual ~AcceptLanguageListContainer();
    AcceptLanguageListContainer& operator=(const AcceptLanguageListContainer& container);
    virtual String getName() const;
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    AcceptLanguageList getLanguages() const;

protected:
    AcceptLanguageListContainerRep* _rep;

private:
    AcceptLanguageListContainer();  // not implemented
};

class ContentLanguageListContainerRep;

// The languages of the request's (or response's) content.
class PEGASUS_COMMON_LINKAGE ContentLanguageListContainer
    : virtual public OperationContext::Container {
public:
    static const String NAME;  // "ContentLanguageListContainer"
    ContentLanguageListContainer(const OperationContext::Container& container);
    ContentLanguageListContainer(const ContentLanguageListContainer& container);
    ContentLanguageListContainer(const ContentLanguageList& languages);
    virtual ~ContentLanguageListContainer();
    ContentLanguageListContainer& operator=(const ContentLanguageListContainer& container);
    virtual String getName() const;
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    ContentLanguageList getLanguages() const;

protected:
    ContentLanguageListContainerRep* _rep;

private:
    ContentLanguageListContainer();  // not implemented
};

class SnmpTrapOidContainerRep;

// The SNMP trap OID of an indication.
class PEGASUS_COMMON_LINKAGE SnmpTrapOidContainer : virtual public OperationContext::Container {
public:
    static const String NAME;  // "SnmpTrapOidContainer"
    SnmpTrapOidContainer(const OperationContext::Container& container);
    SnmpTrapOidContainer(const SnmpTrapOidContainer& container);
    SnmpTrapOidContainer(const String& snmpTrapOid);
    virtual ~SnmpTrapOidContainer();
    SnmpTrapOidContainer& operator=(const SnmpTrapOidContainer& container);
    virtual String getName() const;
    virtual OperationContext::Container* clone() const;
    virtual void destroy();
    String getSnmpTrapOid() const;

protected:
    SnmpTrapOidContainerRep* _rep;

private:
    SnmpTrapOidContainer();  // not implemented
};

PEGASUS_NAMESPACE_END

#endif
