// Tests of the response handler interfaces as a server implements them:
// one concrete class may serve several interfaces through the virtual
// ResponseHandler base, and the context given to setContext() is kept.

#include <Pegasus/Common/ResponseHandler.h>

#include <gtest/gtest.h>

PEGASUS_USING_PEGASUS;

namespace {

// Collects everything, whatever interface it is reached through.
class RecordingHandler : public InstanceResponseHandler,
                         public ObjectPathResponseHandler,
                         public ObjectResponseHandler,
                         public MethodResultResponseHandler {
public:
    RecordingHandler() : processed(0), completed(0) {}
    void processing() { processed++; }
    void complete() { completed++; }
    void deliver(const CIMInstance& i) { instances.append(i); }
    void deliver(const Array<CIMInstance>& a) { instances.appendArray(a); }
    void deliver(const CIMObjectPath& p) { paths.append(p); }
    void deliver(const Array<CIMObjectPath>& a) { paths.appendArray(a); }
    void deliver(const CIMObject& o) { objects.append(o); }
    void deliver(const Array<CIMObject>& a) { objects.appendArray(a); }
    void deliverParamValue(const CIMParamValue& p) { params.append(p); }
    void deliverParamValue(const Array<CIMParamValue>& a) { params.appendArray(a); }
    void deliver(const CIMValue& v) { returnValue = v; }

    // Exposes the protected accessor for the test.
    OperationContext context() const { return getContext(); }

    int processed;
    int completed;
    Array<CIMInstance> instances;
    Array<CIMObjectPath> paths;
    Array<CIMObject> objects;
    Array<CIMParamValue> params;
    CIMValue returnValue;
};

// What a provider does with each kind of handler.
void ServeInstances(InstanceResponseHandler& h)
{
    h.processing();
    h.deliver(CIMInstance("ZAR_A"));
    Array<CIMInstance> more;
    more.append(CIMInstance("ZAR_B"));
    h.deliver(more);
    h.complete();
}

void ServeObjects(ObjectResponseHandler& h)
{
    h.processing();
    h.deliver(CIMInstance("ZAR_C"));  // through CIMObject(const CIMInstance&)
    h.complete();
}

void ServeMethod(MethodResultResponseHandler& h)
{
    h.processing();
    h.deliverParamValue(CIMParamValue("Out", CIMValue(String("x"))));
    h.deliver(CIMValue(Uint32(0)));
    h.complete();
}

TEST(ResponseHandlerTest, OneHandlerServesSeveralInterfaces)
{
    RecordingHandler h;
    ServeInstances(h);
    ServeObjects(h);
    ServeMethod(h);
    ObjectPathResponseHandler& paths = h;
    paths.deliver(CIMObjectPath("ZAR_A.K=1"));

    ResponseHandler& base = static_cast<InstanceResponseHandler&>(h);
    EXPECT_EQ(&base, static_cast<ResponseHandler*>(static_cast<MethodResultResponseHandler*>(&h)));
    EXPECT_EQ(h.processed, 3);
    EXPECT_EQ(h.completed, 3);
    ASSERT_EQ(h.instances.size(), 2u);
    EXPECT_EQ(h.instances[1].getClassName(), CIMName("ZAR_B"));
    ASSERT_EQ(h.objects.size(), 1u);
    EXPECT_TRUE(h.objects[0].isInstance());
    EXPECT_EQ(h.params[0].getParameterName(), "Out");
    EXPECT_EQ(h.returnValue, CIMValue(Uint32(0)));
    EXPECT_EQ(h.paths.size(), 1u);
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
