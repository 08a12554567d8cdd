// ZTest_Service: one instance ("svc") and methods with every kind of
// parameter, a vendor-code failure, each kind of exception, and the
// caller's identity.
#include <stdexcept>

#include <Pegasus/Common/ClientAddressContainer.h>

#include "TestProviders.h"

PEGASUS_USING_PEGASUS;

namespace ztest {

namespace {

// "value(type)" or "v1|v2(type[])" for the Summary output.
String describe(const CIMValue& v)
{
    String out;
    if (v.isNull()) {
        out.append("NULL");
    } else if (v.isArray()) {
        String all = v.toString();  // elements each followed by a space
        if (v.getType() == CIMTYPE_REFERENCE) {
            out.appendPrintf("%u refs", v.getArraySize());
        } else {
            for (Uint32 i = 0; i < all.size(); ++i)
                out.append(all[i] == ' ' ? Char16('|') : all[i]);
            if (out.size() && out[out.size() - 1] == '|')
                out.remove(out.size() - 1);
        }
    } else {
        out.append(v.toString());
    }
    out.append("(");
    out.append(cimTypeToString(v.getType()));
    if (v.isArray())
        out.append("[]");
    out.append(")");
    return out;
}

class ServiceProvider : public ReadOnlyInstanceProvider, public CIMMethodProvider {
public:
    void initialize(CIMOMHandle& cimom) override { _cimom = cimom; }
    void terminate() override { delete this; }

    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override
    {
        CIMInstance s(CIMName("ZTest_Service"));
        s.addProperty(CIMProperty(CIMName("Name"), CIMValue(String("svc"))));
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding(CIMName("Name"), CIMValue(String("svc"))));
        s.setPath(CIMObjectPath(String(), CIMNamespaceName(), CIMName("ZTest_Service"), keys));
        handler.processing();
        handler.deliver(s);
        handler.complete();
    }

    void invokeMethod(const OperationContext& context, const CIMObjectPath& ref,
                      const CIMName& method, const Array<CIMParamValue>& in,
                      MethodResultResponseHandler& handler) override
    {
        handler.processing();
        if (method.equal(CIMName("Configure"))) {
            String summary("Path=");
            summary.append(ref.toString());
            Array<CIMObjectPath> targets;
            CIMObjectPath target;
            for (Uint32 i = 0; i < in.size(); ++i) {
                CIMValue v = in[i].getValue();
                summary.append(";");
                summary.append(in[i].getParameterName());
                summary.append("=");
                summary.append(describe(v));
                if (String::equalNoCase(in[i].getParameterName(), "Target") && !v.isNull() &&
                    v.getType() == CIMTYPE_REFERENCE && !v.isArray())
                    v.get(target);
                if (String::equalNoCase(in[i].getParameterName(), "Targets") && !v.isNull() &&
                    v.getType() == CIMTYPE_REFERENCE && v.isArray())
                    v.get(targets);
            }
            handler.deliverParamValue(CIMParamValue("Summary", CIMValue(summary)));
            if (!target.getClassName().isNull())
                handler.deliverParamValue(CIMParamValue("Chosen", CIMValue(target)));
            // Only when asked for: some clients cannot read reference arrays.
            if (targets.size())
                handler.deliverParamValue(CIMParamValue("ChosenAll", CIMValue(targets)));
            handler.deliver(CIMValue(Uint32(0)));
        } else if (method.equal(CIMName("Fail"))) {
            String reason;
            if (in.size() && !in[0].getValue().isNull())
                in[0].getValue().get(reason);
            String msg("LU=");
            msg.append(reason);
            msg.append(": bad\n");
            throw CIMException(CIMStatusCode(4097), msg);
        } else if (method.equal(CIMName("Throw"))) {
            String kind;
            if (in.size() && !in[0].getValue().isNull())
                in[0].getValue().get(kind);
            if (kind == "cim")
                throw CIMException(CIM_ERR_ACCESS_DENIED, "Insufficient privilege");
            if (kind == "notfound")
                throw CIMObjectNotFoundException("Test CIM Object not found.");
            if (kind == "pegasus")
                throw Exception("plain pegasus exception");
            if (kind == "std")
                throw std::runtime_error("std boom");
            if (kind == "typemismatch")
                throw TypeMismatchException();
            if (kind == "int")
                throw 42;
            handler.deliver(CIMValue(Uint32(1)));
        } else if (method.equal(CIMName("WhoAmI"))) {
            IdentityContainer id = context.get(IdentityContainer::NAME);
            String address;
            if (context.contains(ClientAddressContainer::NAME))
                address =
                    ClientAddressContainer(context.get(ClientAddressContainer::NAME)).getAddress();
            handler.deliverParamValue(CIMParamValue("User", CIMValue(id.getUserName())));
            handler.deliverParamValue(CIMParamValue("Address", CIMValue(address)));
            handler.deliver(CIMValue(Uint32(0)));
        } else if (method.equal(CIMName("NullReturn"))) {
            handler.deliver(CIMValue(CIMTYPE_UINT32, false));
        } else {
            // Methods the class does not declare still arrive here.
            String msg("unknown method ");
            msg.append(method.getString());
            throw CIMMethodNotFoundException(msg);
        }
        handler.complete();
    }
};

}  // namespace

CIMProvider* createServiceProvider()
{
    return new ServiceProvider;
}

}  // namespace ztest
