// Tests of OperationContext and its containers: lookup, replacement, the
// errors of get/set/insert/remove, deep copies and the checked casts.

#include <Pegasus/Common/ClientAddressContainer.h>
#include <Pegasus/Common/OperationContext.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

PEGASUS_USING_PEGASUS;
using zartest::MessageOf;

namespace {

// A container that counts its live copies, to show that a context clones
// what it stores and destroys what it drops.
class CountingContainer : virtual public OperationContext::Container {
public:
    static int live;
    explicit CountingContainer(int v) : value(v) { live++; }
    CountingContainer(const CountingContainer& x) : OperationContext::Container(), value(x.value)
    {
        live++;
    }
    ~CountingContainer() { live--; }
    String getName() const { return "CountingContainer"; }
    OperationContext::Container* clone() const { return new CountingContainer(*this); }
    void destroy() { delete this; }
    int value;
};
int CountingContainer::live = 0;

TEST(OperationContextTest, ReadsContainersAsProvidersDoWithCheckedCasts)
{
    OperationContext context;
    context.insert(IdentityContainer("alice"));
    context.insert(ClientAddressContainer("192.0.2.7"));
    IdentityContainer container = context.get(IdentityContainer::NAME);
    EXPECT_EQ(container.getUserName(), "alice");
    EXPECT_EQ(IdentityContainer::NAME, "IdentityContainer");
    EXPECT_TRUE(context.contains("IdentityContainer"));
    EXPECT_FALSE(context.contains("identitycontainer"));
    ClientAddressContainer address = context.get(ClientAddressContainer::NAME);
    EXPECT_EQ(address.getAddress(), "192.0.2.7");
    EXPECT_EQ(ClientAddressContainer::NAME, "ClientAddressContainer");

    EXPECT_THROW(ClientAddressContainer c(context.get(IdentityContainer::NAME)),
                 DynamicCastFailedException);
    EXPECT_THROW(IdentityContainer c(context.get(ClientAddressContainer::NAME)),
                 DynamicCastFailedException);
}

TEST(OperationContextTest, ErrorsArePlainExceptions)
{
    OperationContext context;
    EXPECT_EQ(MessageOf<Exception>([&] { context.get(IdentityContainer::NAME); }),
              "object not found");
    try {
        context.get("x");
    } catch (const CIMException&) {
        ADD_FAILURE() << "get() must not throw a CIMException";
    } catch (const Exception&) {
    }
    EXPECT_EQ(MessageOf<Exception>([&] { context.set(IdentityContainer("a")); }),
              "object not found");
    EXPECT_EQ(MessageOf<Exception>([&] { context.remove("IdentityContainer"); }),
              "object not found");
    context.insert(IdentityContainer("a"));
    EXPECT_EQ(MessageOf<Exception>([&] { context.insert(IdentityContainer("b")); }),
              "object already exists.");
    EXPECT_EQ(IdentityContainer(context.get(IdentityContainer::NAME)).getUserName(), "a");
}

TEST(OperationContextTest, SetReplacesAndRemoveDrops)
{
    OperationContext context;
    context.insert(IdentityContainer("a"));
    context.insert(TimeoutContainer(5000));
    context.set(IdentityContainer("b"));
    EXPECT_EQ(IdentityContainer(context.get(IdentityContainer::NAME)).getUserName(), "b");
    EXPECT_EQ(TimeoutContainer(context.get(TimeoutContainer::NAME)).getTimeOut(), 5000u);
    context.remove(IdentityContainer::NAME);
    EXPECT_FALSE(context.contains(IdentityContainer::NAME));
    EXPECT_TRUE(context.contains(TimeoutContainer::NAME));
    context.clear();
    EXPECT_FALSE(context.contains(TimeoutContainer::NAME));
}

TEST(OperationContextTest, OwnsDeepCopiesOfItsContainers)
{
    {
        CountingContainer original(1);
        OperationContext a;
        a.insert(original);
        EXPECT_EQ(CountingContainer::live, 2);

        OperationContext b(a);
        OperationContext c;
        c = b;
        EXPECT_EQ(CountingContainer::live, 4);

        const CountingContainer& inB =
            dynamic_cast<const CountingContainer&>(b.get("CountingContainer"));
        const CountingContainer& inA =
            dynamic_cast<const CountingContainer&>(a.get("CountingContainer"));
        EXPECT_NE(&inA, &inB);

        b.set(CountingContainer(2));
        EXPECT_EQ(dynamic_cast<const CountingContainer&>(a.get("CountingContainer")).value, 1);
        EXPECT_EQ(CountingContainer::live, 4);
        c.remove("CountingContainer");
        EXPECT_EQ(CountingContainer::live, 3);
        c = c;
        EXPECT_EQ(CountingContainer::live, 3);
    }
    EXPECT_EQ(CountingContainer::live, 0);
}

TEST(OperationContextTest, LanguageAndIndicationContainers)
{
    AcceptLanguageList accept;
    accept.insert(LanguageTag("en-US"), 1.0f);
    ContentLanguageList content;
    content.append(LanguageTag("de"));

    OperationContext context;
    context.insert(AcceptLanguageListContainer(accept));
    context.insert(ContentLanguageListContainer(content));
    context.insert(SnmpTrapOidContainer("1.3.6.1"));
    context.insert(SubscriptionFilterConditionContainer("x > 1", "WQL"));

    OperationContext copy = context;
    EXPECT_EQ(
        AcceptLanguageListContainer(copy.get(AcceptLanguageListContainer::NAME)).getLanguages(),
        accept);
    EXPECT_EQ(ContentLanguageListContainer(copy.get(ContentLanguageListContainer::NAME))
                  .getLanguages()
                  .getLanguageTag(0)
                  .toString(),
              "de");
    EXPECT_EQ(SnmpTrapOidContainer(copy.get(SnmpTrapOidContainer::NAME)).getSnmpTrapOid(),
              "1.3.6.1");
    SubscriptionFilterConditionContainer condition =
        copy.get(SubscriptionFilterConditionContainer::NAME);
    EXPECT_EQ(condition.getQueryLanguage(), "WQL");
    EXPECT_EQ(condition.getFilterCondition(), "x > 1");
}

}  // namespace
