#include "TestProviders.h"

#include <Pegasus/Common/ArrayInternal.h>

PEGASUS_USING_PEGASUS;

namespace ztest {

CIMObjectPath localName(const CIMObjectPath& path)
{
    return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(), path.getKeyBindings());
}

namespace {

// Collects what enumerateInstances delivers.
class Collector : public InstanceResponseHandler {
public:
    void processing() override {}
    void complete() override {}
    void deliver(const CIMInstance& i) override { instances.append(i); }
    void deliver(const Array<CIMInstance>& a) override { instances.appendArray(a); }
    Array<CIMInstance> instances;
};

}  // namespace

void ReadOnlyInstanceProvider::modifyInstance(const OperationContext&, const CIMObjectPath&,
                                              const CIMInstance&, const Boolean,
                                              const CIMPropertyList&, ResponseHandler&)
{
    throw CIMNotSupportedException("");
}

void ReadOnlyInstanceProvider::createInstance(const OperationContext&, const CIMObjectPath&,
                                              const CIMInstance&, ObjectPathResponseHandler&)
{
    throw CIMNotSupportedException("");
}

void ReadOnlyInstanceProvider::deleteInstance(const OperationContext&, const CIMObjectPath&,
                                              ResponseHandler&)
{
    throw CIMNotSupportedException("");
}

void ReadOnlyInstanceProvider::enumerateInstanceNames(const OperationContext& context,
                                                      const CIMObjectPath& classReference,
                                                      ObjectPathResponseHandler& handler)
{
    Collector c;
    enumerateInstances(context, classReference, false, false, CIMPropertyList(), c);
    handler.processing();
    for (Uint32 i = 0; i < c.instances.size(); ++i)
        handler.deliver(c.instances[i].getPath());
    handler.complete();
}

void ReadOnlyInstanceProvider::getInstance(const OperationContext& context,
                                           const CIMObjectPath& instanceReference,
                                           const Boolean includeQualifiers,
                                           const Boolean includeClassOrigin,
                                           const CIMPropertyList& propertyList,
                                           InstanceResponseHandler& handler)
{
    Collector c;
    CIMObjectPath cls(String(), CIMNamespaceName(), instanceReference.getClassName());
    enumerateInstances(context, cls, includeQualifiers, includeClassOrigin, propertyList, c);
    CIMObjectPath wanted = localName(instanceReference);
    for (Uint32 i = 0; i < c.instances.size(); ++i) {
        if (localName(c.instances[i].getPath()) == wanted) {
            handler.processing();
            handler.deliver(c.instances[i]);
            handler.complete();
            return;
        }
    }
    throw CIMObjectNotFoundException(instanceReference.toString());
}

}  // namespace ztest
