// The schema as the server compiles it: every property that the providers
// of both modules set exists in its class with the type they set (a missing
// one would silently vanish from the instances), the keys are keys, and the
// values the providers use are in the classes' value maps.
#include <algorithm>
#include <string>
#include <vector>

#include "ModuleFixture.h"

PEGASUS_USING_PEGASUS;
using namespace zartest;

namespace {

struct Prop {
    const char* name;
    CIMType type;
    bool isArray;
};

const CIMType S = CIMTYPE_STRING, U16 = CIMTYPE_UINT16, R = CIMTYPE_REFERENCE;

// What the view assembly sets, for both view classes.
const std::vector<Prop> kViewProps = {{"SystemCreationClassName", S, false},
                                      {"SystemName", S, false},
                                      {"CreationClassName", S, false},
                                      {"DeviceID", S, false},
                                      {"ElementName", S, false},
                                      {"Name", S, false},
                                      {"NameFormat", U16, false},
                                      {"OtherNameFormat", S, false},
                                      {"OperationalStatus", U16, true},
                                      {"StatusDescriptions", S, true},
                                      {"HealthState", U16, false}};

const std::vector<Prop> kSystemProps = {
    {"CreationClassName", S, false},   {"Name", S, false},
    {"ElementName", S, false},         {"Caption", S, false},
    {"Description", S, false},         {"NameFormat", S, false},
    {"OperationalStatus", U16, true},  {"StatusDescriptions", S, true},
    {"HealthState", U16, false},       {"EnabledState", U16, false},
    {"RequestedState", U16, false},    {"Dedicated", U16, true},
    {"PrimaryOwnerName", S, false},    {"PrimaryOwnerContact", S, false},
    {"OtherIdentifyingInfo", S, true}, {"IdentifyingDescriptions", S, true}};

const std::vector<Prop> kAssocProps = {{"ManagedElement", R, false}, {"Capabilities", R, false}};

class ArraySchemaTest : public ModuleFixture {
protected:
    CIMClass cls(const char* ns, const char* name)
    {
        return server().getClass(OperationContext(), CIMNamespaceName(ns), CIMName(name), false,
                                 true, false, CIMPropertyList());
    }

    void expectProps(const char* ns, const char* className, const std::vector<Prop>& props)
    {
        CIMClass c = cls(ns, className);
        for (const Prop& p : props) {
            Uint32 pos = c.findProperty(CIMName(p.name));
            ASSERT_NE(PEG_NOT_FOUND, pos) << className << "." << p.name << " is missing";
            CIMConstProperty prop = c.getProperty(pos);
            EXPECT_EQ(p.type, prop.getType()) << className << "." << p.name;
            EXPECT_EQ(p.isArray, prop.isArray()) << className << "." << p.name;
        }
    }

    bool hasKey(const CIMClass& c, const char* name)
    {
        Array<CIMName> keys;
        c.getKeyNames(keys);
        for (Uint32 i = 0; i < keys.size(); i++)
            if (keys[i].equal(CIMName(name)))
                return true;
        return false;
    }

    // The entries of the property's ValueMap qualifier.
    std::vector<std::string> valueMap(const char* ns, const char* className, const char* property)
    {
        CIMClass c = cls(ns, className);
        std::vector<std::string> out;
        Uint32 pos = c.findProperty(CIMName(property));
        if (pos == PEG_NOT_FOUND)
            return out;
        CIMConstProperty p = c.getProperty(pos);
        Uint32 q = p.findQualifier(CIMName("ValueMap"));
        if (q == PEG_NOT_FOUND)
            return out;
        Array<String> values;
        p.getQualifier(q).getValue().get(values);
        for (Uint32 i = 0; i < values.size(); i++)
            out.push_back(text(values[i]));
        return out;
    }

    void expectInValueMap(const char* className, const char* property,
                          std::vector<std::string> values)
    {
        std::vector<std::string> map = valueMap("root/zar", className, property);
        ASSERT_FALSE(map.empty()) << className << "." << property << " has no ValueMap";
        for (const std::string& v : values) {
            EXPECT_NE(map.end(), std::find(map.begin(), map.end(), v))
                << className << "." << property << " lacks " << v;
        }
    }
};

TEST_F(ArraySchemaTest, ProvidersFindEveryPropertyTheySet)
{
    expectProps("root/zar", "ZAR_SCSIController", kViewProps);
    expectProps("root/zar", "ZAR_iSCSIController", kViewProps);
    // The masking capabilities' tests read every property they set.
    expectProps("root/zar", "ZAR_StorageSystem", kSystemProps);
    expectProps("root/zar", "ZAR_SystemControllerMaskingCapabilities", kAssocProps);
    expectProps("root/PG_Internal", "ZAR_InternalCache", {{"InstanceID", S, false}});
}

TEST_F(ArraySchemaTest, KeysAndHierarchyMatchThePaths)
{
    for (const char* view : {"ZAR_SCSIController", "ZAR_iSCSIController"}) {
        CIMClass c = cls("root/zar", view);
        EXPECT_TRUE(c.getSuperClassName().equal(CIMName("CIM_SCSIProtocolController"))) << view;
        for (const char* k :
             {"SystemCreationClassName", "SystemName", "CreationClassName", "DeviceID"})
            EXPECT_TRUE(hasKey(c, k)) << view << "." << k;
    }
    CIMClass system = cls("root/zar", "ZAR_StorageSystem");
    EXPECT_TRUE(system.getSuperClassName().equal(CIMName("CIM_ComputerSystem")));
    EXPECT_TRUE(hasKey(system, "CreationClassName"));
    EXPECT_TRUE(hasKey(system, "Name"));

    CIMClass cap = cls("root/zar", "ZAR_ProtocolControllerMaskingCapabilities");
    EXPECT_TRUE(
        cap.getSuperClassName().equal(CIMName("CIM_ProtocolControllerMaskingCapabilities")));
    EXPECT_TRUE(hasKey(cap, "InstanceID"));

    CIMClass assoc = cls("root/zar", "ZAR_SystemControllerMaskingCapabilities");
    EXPECT_TRUE(assoc.isAssociation());
    EXPECT_TRUE(assoc.getSuperClassName().equal(CIMName("CIM_ElementCapabilities")));
    EXPECT_TRUE(hasKey(assoc, "ManagedElement"));
    EXPECT_TRUE(hasKey(assoc, "Capabilities"));

    // Abstract DMTF classes stay abstract; the array's classes are concrete.
    EXPECT_TRUE(cls("root/zar", "CIM_ManagedElement").isAbstract());
    EXPECT_TRUE(cls("root/zar", "CIM_ProtocolController").isAbstract());
    EXPECT_FALSE(system.isAbstract());
    EXPECT_FALSE(cap.isAbstract());
}

TEST_F(ArraySchemaTest, ValuesTheProvidersSetAreInTheValueMaps)
{
    for (const char* view : {"ZAR_SCSIController", "ZAR_iSCSIController"}) {
        expectInValueMap(view, "NameFormat", {"0", "2", "3"});
        expectInValueMap(view, "OperationalStatus", {"2", "15"});
        expectInValueMap(view, "HealthState", {"5"});
    }
    expectInValueMap("ZAR_ProtocolControllerMaskingCapabilities", "ValidHardwareIdTypes",
                     {"1", "2", "5"});
    expectInValueMap("ZAR_ProtocolControllerMaskingCapabilities", "PortsPerView", {"4"});
    expectInValueMap("ZAR_StorageSystem", "Dedicated", {"3", "15"});
    expectInValueMap("ZAR_StorageSystem", "OperationalStatus", {"2", "3", "6"});
    expectInValueMap("ZAR_StorageSystem", "HealthState", {"5", "10", "25"});
    expectInValueMap("ZAR_StorageSystem", "EnabledState", {"2"});
    expectInValueMap("ZAR_StorageSystem", "RequestedState", {"12"});
    expectInValueMap("ZAR_StorageSystem", "NameFormat", {"Other"});
}

TEST_F(ArraySchemaTest, InternalCacheMethodsDeclareTheirOutputs)
{
    struct M {
        const char* method;
        const char* param;
        CIMType type;
    };
    CIMClass c = cls("root/PG_Internal", "ZAR_InternalCache");
    for (const M& m : std::vector<M>{{"GetSystemName", "SystemName", CIMTYPE_STRING},
                                     {"GetSystemID", "SystemID", CIMTYPE_UINT32},
                                     {"GetSystemType", "SystemType", CIMTYPE_SINT32},
                                     {"IsQuadPortSystem", "IsQuadPort", CIMTYPE_UINT8},
                                     {"GetSystemHostName", "SystemHostName", CIMTYPE_STRING},
                                     {"GetSystemAddress", "SystemAddress", CIMTYPE_STRING}}) {
        Uint32 pos = c.findMethod(CIMName(m.method));
        ASSERT_NE(PEG_NOT_FOUND, pos) << m.method;
        CIMConstMethod method = c.getMethod(pos);
        EXPECT_EQ(CIMTYPE_UINT32, method.getType()) << m.method;
        Uint32 p = method.findParameter(CIMName(m.param));
        ASSERT_NE(PEG_NOT_FOUND, p) << m.method << "." << m.param;
        CIMConstParameter param = method.getParameter(p);
        EXPECT_EQ(m.type, param.getType()) << m.method << "." << m.param;
        // Output only: In defaults to true, so it must be switched off.
        Boolean in = true, out = false;
        Uint32 q = param.findQualifier(CIMName("In"));
        ASSERT_NE(PEG_NOT_FOUND, q) << m.method << "." << m.param;
        param.getQualifier(q).getValue().get(in);
        q = param.findQualifier(CIMName("Out"));
        ASSERT_NE(PEG_NOT_FOUND, q) << m.method << "." << m.param;
        param.getQualifier(q).getValue().get(out);
        EXPECT_FALSE(in) << m.method << "." << m.param;
        EXPECT_TRUE(out) << m.method << "." << m.param;
    }
}

}  // namespace
