// The providers of the test provider module libZarTestProvider. They serve
// the classes of schema/ZTestSchema.mof in root/test; the server's tests and
// the end-to-end tests drive them.
#ifndef ZAR_SERVER_TESTPROVIDER_TESTPROVIDERS_H
#define ZAR_SERVER_TESTPROVIDER_TESTPROVIDERS_H

#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>

namespace ztest {

// Each returns a new provider; terminate() deletes it.
Pegasus::CIMProvider* createWidgetProvider();
Pegasus::CIMProvider* createGadgetProvider();
Pegasus::CIMProvider* createAssociationProvider();
Pegasus::CIMProvider* createServiceProvider();
Pegasus::CIMProvider* createProbeProvider();
Pegasus::CIMProvider* createSlowProvider();
Pegasus::CIMProvider* createBrokenProvider();

// Base for the read-only instance providers: create, modify and delete
// fail with CIM_ERR_NOT_SUPPORTED.
class ReadOnlyInstanceProvider : public Pegasus::CIMInstanceProvider {
public:
    void initialize(Pegasus::CIMOMHandle& cimom) override { _cimom = cimom; }
    void terminate() override { delete this; }
    void modifyInstance(const Pegasus::OperationContext&, const Pegasus::CIMObjectPath&,
                        const Pegasus::CIMInstance&, const Pegasus::Boolean,
                        const Pegasus::CIMPropertyList&, Pegasus::ResponseHandler&) override;
    void createInstance(const Pegasus::OperationContext&, const Pegasus::CIMObjectPath&,
                        const Pegasus::CIMInstance&, Pegasus::ObjectPathResponseHandler&) override;
    void deleteInstance(const Pegasus::OperationContext&, const Pegasus::CIMObjectPath&,
                        Pegasus::ResponseHandler&) override;
    // Delivers the names of the instances that enumerateInstances delivers.
    void enumerateInstanceNames(const Pegasus::OperationContext& context,
                                const Pegasus::CIMObjectPath& classReference,
                                Pegasus::ObjectPathResponseHandler& handler) override;
    // Finds the instance among those enumerateInstances delivers (keys
    // compared without host and namespace).
    void getInstance(const Pegasus::OperationContext& context,
                     const Pegasus::CIMObjectPath& instanceReference,
                     const Pegasus::Boolean includeQualifiers,
                     const Pegasus::Boolean includeClassOrigin,
                     const Pegasus::CIMPropertyList& propertyList,
                     Pegasus::InstanceResponseHandler& handler) override;

protected:
    Pegasus::CIMOMHandle _cimom;
};

// The path without host and namespace.
Pegasus::CIMObjectPath localName(const Pegasus::CIMObjectPath& path);

}  // namespace ztest

#endif
