// Tests of the response handler interfaces as a server implements them:
// one concrete class may serve several interfaces through the virtual
// ResponseHandler base, and the context given to setContext() is kept.

#include <Pegasus/Common/ResponseHandler.h>

#include <gtest/gtest.h>

PEGASUS_USING_PEGASUS;

namespace {

// One handler for every interface; it keeps the objects it is given.
class RecordingHandler : public InstanceResponseHandler,
                         public ObjectPathResponseHandler,
                         public ObjectResponseHandler,
                         public MethodResultResponseHandler {
public:
    void processing() {}
    void complete() {}
    void deliver(const CIMInstance&) {}
    void deliver(const Array<CIMInstance>&) {}
    void deliver(const CIMObjectPath&) {}
    void deliver(const Array<CIMObjectPath>&) {}
    void deliver(const CIMObject& o) { objects.append(o); }
    void deliver(const Array<CIMObject>& a) { objects.appendArray(a); }
    void deliverParamValue(const CIMParamValue&) {}
    void deliverParamValue(const Array<CIMParamValue>&) {}
    void deliver(const CIMValue&) {}

    // Exposes the protected accessor for the test.
    OperationContext context() const { return getContext(); }

    Array<CIMObject> objects;
};

TEST(ResponseHandlerTest, OneHandlerServesSeveralInterfaces)
{
    RecordingHandler h;
    ResponseHandler& base = static_cast<InstanceResponseHandler&>(h);
    EXPECT_EQ(&base, static_cast<ResponseHandler*>(static_cast<MethodResultResponseHandler*>(&h)));
    // An instance given to an object handler arrives as a CIMObject.
    ObjectResponseHandler& objects = h;
    objects.deliver(CIMInstance("ZAR_C"));
    ASSERT_EQ(h.objects.size(), 1u);
    EXPECT_TRUE(h.objects[0].isInstance());
}

TEST(ResponseHandlerTest, KeepsACopyOfTheContext)
{
    RecordingHandler h;
    EXPECT_FALSE(h.context().contains(ContentLanguageListContainer::NAME));
    OperationContext context;
    context.insert(IdentityContainer("bob"));
    static_cast<ObjectResponseHandler&>(h).setContext(context);
    context.clear();
    IdentityContainer id = h.context().get(IdentityContainer::NAME);
    EXPECT_EQ(id.getUserName(), "bob");
}

}  // namespace
