// Tests of CIMClient: connection state and its exceptions, connectLocal to
// the operation host of this process (as the process's OS user), results in
// the shape a CIM-XML client receives, and error descriptions.

#include <pwd.h>
#include <unistd.h>

#include <Pegasus/Client/CIMClient.h>

#include <gtest/gtest.h>

#include "TestUtil.h"

#include "TestOperationHost.h"

PEGASUS_USING_PEGASUS;
using zartest::ErrorOf;
using zartest::MessageOf;
using zartest::TestOperationHost;
using zartest::Volume;

namespace {

const CIMNamespaceName NS("root/zar");

TEST(CIMClientStateTest, ConnectionAndHttpErrors)
{
    setLocalOperationHost(0);
    CIMClient client;
    EXPECT_EQ(
        MessageOf<NotConnectedException>([&] { client.enumerateInstanceNames(NS, "ZAR_Volume"); }),
        "not connected");
    client.disconnect();
    // No server in this process and none listening on the local socket.
    EXPECT_THROW(client.connectLocal(), CannotConnectException);
    EXPECT_EQ(MessageOf<CannotConnectException>([&] { client.connect("127.0.0.1", 1, "u", "p"); }),
              "Cannot connect to 127.0.0.1:1. Connection failed.");
    SSLContext ssl("/nonexistent/truststore.pem");
    EXPECT_THROW(client.connect("127.0.0.1", 1, ssl, "u", "p"), CannotConnectException);
    EXPECT_THROW(client.getInstance(NS, CIMObjectPath("ZAR_Volume.Name=\"a\"")),
                 NotConnectedException);

    CIMClientHTTPErrorException e(401, "Unauthorized", "", "User Unauthorized");
    EXPECT_EQ(e.getCode(), 401u);
    EXPECT_EQ(e.getCIMErrorDetail(), "User Unauthorized");
    EXPECT_EQ(e.getMessage(), "HTTP Error (401 Unauthorized). Detail: User Unauthorized.");
}

class CIMClientLocalTest : public ::testing::Test {
protected:
    void SetUp()
    {
        host.store(NS, Volume("v1", 10));
        host.store(NS, Volume("v2", 20));
        setLocalOperationHost(&host);
        client.connectLocal();
    }
    void TearDown() { setLocalOperationHost(0); }

    TestOperationHost host;
    CIMClient client;
};

TEST_F(CIMClientLocalTest, ConnectsAsTheProcessUserUntilDisconnected)
{
    client.enumerateInstanceNames(NS, "ZAR_Volume");
    struct passwd* pw = getpwuid(geteuid());
    ASSERT_TRUE(pw != 0);
    EXPECT_EQ(host.lastUser(), pw->pw_name);
    EXPECT_TRUE(host.contexts.back().contains(AcceptLanguageListContainer::NAME));
    EXPECT_TRUE(host.contexts.back().contains(ContentLanguageListContainer::NAME));

    EXPECT_EQ(MessageOf<AlreadyConnectedException>([&] { client.connectLocal(); }),
              "already connected");
    EXPECT_THROW(client.connect("localhost", 5988, "u", "p"), AlreadyConnectedException);
    client.disconnect();
    EXPECT_THROW(client.enumerateInstanceNames(NS, "ZAR_Volume"), NotConnectedException);
    client.connectLocal();
    EXPECT_EQ(client.enumerateInstanceNames(NS, "ZAR_Volume").size(), 2u);
}

TEST_F(CIMClientLocalTest, ResultsHaveTheShapeOfACimXmlResponse)
{
    Array<CIMObjectPath> names = client.enumerateInstanceNames(NS, "ZAR_Volume");
    ASSERT_EQ(names.size(), 2u);
    EXPECT_EQ(names[0].toString(), "ZAR_Volume.Name=\"v1\"");

    Array<CIMInstance> all = client.enumerateInstances(NS, "ZAR_Volume");
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[1].getPath().toString(), "ZAR_Volume.Name=\"v2\"");

    CIMInstance v1 = client.getInstance(NS, names[0]);
    EXPECT_EQ(v1.getPath().toString(), "ZAR_Volume");
    EXPECT_EQ(v1.getPropertyCount(), 2u);

    CIMObjectPath created = client.createInstance(NS, Volume("v3", 30));
    EXPECT_EQ(created.toString(), "ZAR_Volume.Name=\"v3\"");

    // What the client holds is its own.
    v1.getProperty(1).setValue(CIMValue(Uint32(0)));
    all[1].removeProperty(0);
    EXPECT_EQ(client.getProperty(NS, names[0], "Size"), CIMValue(Uint32(10)));
    EXPECT_EQ(host.instances[1].getPropertyCount(), 2u);
    EXPECT_EQ(host.instances[1].getPath().getHost(), "testhost");
}

TEST_F(CIMClientLocalTest, ModifyDeleteAndProperties)
{
    CIMObjectPath v2("ZAR_Volume.Name=\"v2\"");
    client.setProperty(NS, v2, "Size", CIMValue(Uint32(21)));
    EXPECT_EQ(client.getProperty(NS, v2, "Size"), CIMValue(Uint32(21)));
    client.modifyInstance(NS, Volume("v2", 22));
    EXPECT_EQ(client.getProperty(NS, v2, "Size"), CIMValue(Uint32(22)));
    client.deleteInstance(NS, v2);
    EXPECT_EQ(client.enumerateInstanceNames(NS, "ZAR_Volume").size(), 1u);
}

TEST_F(CIMClientLocalTest, ErrorsCarryTheirDescription)
{
    EXPECT_EQ(ErrorOf([&] { client.getInstance(NS, CIMObjectPath("ZAR_Volume.Name=\"none\"")); }),
              std::make_pair(Uint32(CIM_ERR_NOT_FOUND),
                             String("CIM_ERR_NOT_FOUND: ZAR_Volume.Name=\"none\"")));

    CIMObjectPath target("ZAR_Volume.Name=\"v1\"");
    Array<CIMParamValue> in, out;
    EXPECT_EQ(
        ErrorOf([&] { client.invokeMethod(NS, target, "Fail", in, out); }),
        std::make_pair(Uint32(4097), String("Unrecognized CIM status code \"4097\": LU=x: bad\n")));
    EXPECT_EQ(
        MessageOf<CIMException>([&] { client.invokeMethod(NS, target, "Mismatch", in, out); }),
        "CIM_ERR_FAILED: type mismatch");
    EXPECT_EQ(MessageOf<CIMException>([&] { client.referenceNames(NS, target); }),
              "CIM_ERR_NOT_SUPPORTED");
}

TEST_F(CIMClientLocalTest, MethodsAndAssociations)
{
    CIMObjectPath target("ZAR_Volume.Name=\"v1\"");
    Array<CIMParamValue> in;
    in.append(CIMParamValue("LUN", CIMValue(Uint32(4))));
    Array<CIMParamValue> out;
    out.append(CIMParamValue("Stale", CIMValue(true)));
    EXPECT_EQ(client.invokeMethod(NS, target, "Echo", in, out), CIMValue(Uint32(1)));
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].getParameterName(), "LUN");

    Array<CIMObject> assoc = client.associators(NS, target);
    ASSERT_EQ(assoc.size(), 1u);
    EXPECT_EQ(assoc[0].getPath().getHost(), "testhost");
    EXPECT_EQ(client.associatorNames(NS, target).size(), 1u);
}

}  // namespace

TEST_F(CIMClientLocalTest, PullOperationsHandOutTheResultsInPieces)
{
    host.store(NS, Volume("v3", 30));
    CIMEnumerationContext ctx;
    Boolean end = true;
    Array<CIMInstance> first =
        client.openEnumerateInstances(ctx, end, NS, "ZAR_Volume", true, false, CIMPropertyList(),
                                      String(), String(), Uint32Arg(), false, 2);
    EXPECT_EQ(first.size(), 2u);
    EXPECT_FALSE(end);
    EXPECT_EQ(client.enumerationCount(ctx).getValue(), 1u);
    Array<CIMInstance> rest = client.pullInstancesWithPath(ctx, end, 5);
    ASSERT_EQ(rest.size(), 1u);
    EXPECT_TRUE(end);
    EXPECT_EQ(rest[0].getPath().toString(), "ZAR_Volume.Name=\"v3\"");
    EXPECT_THROW(client.pullInstancesWithPath(ctx, end, 5), InvalidEnumerationContextException);

    // Paths carry their namespace; a pull of the wrong kind ends it.
    Array<CIMObjectPath> paths = client.openEnumerateInstancePaths(
        ctx, end, NS, "ZAR_Volume", String(), String(), Uint32Arg(), false, 1);
    ASSERT_EQ(paths.size(), 1u);
    EXPECT_EQ(paths[0].getNameSpace(), NS);
    EXPECT_EQ(ErrorOf([&] { client.pullInstancesWithPath(ctx, end, 1); }).first,
              Uint32(CIM_ERR_FAILED));
    // The enumeration does not outlive a failed pull.
    EXPECT_EQ(ErrorOf([&] { client.closeEnumeration(ctx); }).first,
              Uint32(CIM_ERR_INVALID_ENUMERATION_CONTEXT));
    EXPECT_EQ(ErrorOf([&] {
                  client.openEnumerateInstances(ctx, end, NS, "ZAR_Volume", true, false,
                                                CIMPropertyList(), "DMTF:FQL", "Size > 1");
              }).first,
              Uint32(CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED));
}
