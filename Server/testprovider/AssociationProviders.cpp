// ZTest_Gadget (two fixed gadgets) and the association ZTest_WidgetGadget,
// which links every widget to gadget g1. The association provider finds
// the widgets through its CIMOMHandle, as real providers reach other classes.
#include <vector>

#include "TestProviders.h"

PEGASUS_USING_PEGASUS;

namespace ztest {

namespace {

const char* const kNamespace = "root/test";

CIMObjectPath gadgetPath(const char* name)
{
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("Name"), CIMValue(String(name))));
    return CIMObjectPath(String(), CIMNamespaceName(), CIMName("ZTest_Gadget"), keys);
}

class GadgetProvider : public ReadOnlyInstanceProvider {
public:
    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override
    {
        handler.processing();
        const char* names[] = {"g1", "g2"};
        for (int i = 0; i < 2; ++i) {
            CIMInstance g(CIMName("ZTest_Gadget"));
            g.addProperty(CIMProperty(CIMName("Name"), CIMValue(String(names[i]))));
            g.addProperty(CIMProperty(CIMName("Weight"), CIMValue(Real64(1.5 + i))));
            g.setPath(gadgetPath(names[i]));
            handler.deliver(g);
        }
        handler.complete();
    }
};

bool isClass(const CIMObjectPath& p, const char* cls)
{
    return p.getClassName().equal(CIMName(cls));
}

// One link: a widget and gadget g1.
struct Link {
    CIMObjectPath widget;
    CIMObjectPath gadget;
};

class AssociationProvider : public ReadOnlyInstanceProvider, public CIMAssociationProvider {
public:
    void initialize(CIMOMHandle& cimom) override { _cimom = cimom; }
    void terminate() override { delete this; }

    void enumerateInstances(const OperationContext& context, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override
    {
        handler.processing();
        for (const Link& l : links(context))
            handler.deliver(linkInstance(l));
        handler.complete();
    }

    void associators(const OperationContext& context, const CIMObjectPath& objectName,
                     const CIMName&, const CIMName& resultClass, const String& role,
                     const String& resultRole, const Boolean, const Boolean, const CIMPropertyList&,
                     ObjectResponseHandler& handler) override
    {
        handler.processing();
        for (const CIMObjectPath& p : far(context, objectName, role, resultRole)) {
            if (!resultClass.isNull() && !p.getClassName().equal(resultClass) &&
                !(resultClass.equal(CIMName("ZTest_Widget")) && isClass(p, "ZTest_SpecialWidget")))
                continue;
            CIMInstance i = _cimom.getInstance(context, CIMNamespaceName(kNamespace), p, false,
                                               false, false, CIMPropertyList());
            i.setPath(p);
            handler.deliver(i);
        }
        handler.complete();
    }

    void associatorNames(const OperationContext& context, const CIMObjectPath& objectName,
                         const CIMName&, const CIMName& resultClass, const String& role,
                         const String& resultRole, ObjectPathResponseHandler& handler) override
    {
        handler.processing();
        for (const CIMObjectPath& p : far(context, objectName, role, resultRole))
            if (resultClass.isNull() || p.getClassName().equal(resultClass) ||
                (resultClass.equal(CIMName("ZTest_Widget")) && isClass(p, "ZTest_SpecialWidget")))
                handler.deliver(p);
        handler.complete();
    }

    void references(const OperationContext& context, const CIMObjectPath& objectName,
                    const CIMName&, const String& role, const Boolean, const Boolean,
                    const CIMPropertyList&, ObjectResponseHandler& handler) override
    {
        handler.processing();
        for (const Link& l : matching(context, objectName, role))
            handler.deliver(linkInstance(l));
        handler.complete();
    }

    void referenceNames(const OperationContext& context, const CIMObjectPath& objectName,
                        const CIMName&, const String& role,
                        ObjectPathResponseHandler& handler) override
    {
        handler.processing();
        for (const Link& l : matching(context, objectName, role))
            handler.deliver(linkInstance(l).getPath());
        handler.complete();
    }

private:
    std::vector<Link> links(const OperationContext& context)
    {
        std::vector<Link> out;
        Array<CIMObjectPath> widgets = _cimom.enumerateInstanceNames(
            context, CIMNamespaceName(kNamespace), CIMName("ZTest_Widget"));
        for (Uint32 i = 0; i < widgets.size(); ++i) {
            CIMObjectPath w = localName(widgets[i]);
            w.setNameSpace(CIMNamespaceName(kNamespace));
            CIMObjectPath g = gadgetPath("g1");
            g.setNameSpace(CIMNamespaceName(kNamespace));
            out.push_back(Link{w, g});
        }
        return out;
    }

    // Links whose end named by role (either end if role is empty) is objectName.
    std::vector<Link> matching(const OperationContext& context, const CIMObjectPath& objectName,
                               const String& role)
    {
        std::vector<Link> out;
        CIMObjectPath target = localName(objectName);
        bool widgetRole = role.size() == 0 || String::equalNoCase(role, "Widget");
        bool gadgetRole = role.size() == 0 || String::equalNoCase(role, "Gadget");
        for (const Link& l : links(context))
            if ((widgetRole && localName(l.widget) == target) ||
                (gadgetRole && localName(l.gadget) == target))
                out.push_back(l);
        return out;
    }

    std::vector<CIMObjectPath> far(const OperationContext& context, const CIMObjectPath& objectName,
                                   const String& role, const String& resultRole)
    {
        std::vector<CIMObjectPath> out;
        CIMObjectPath target = localName(objectName);
        for (const Link& l : links(context)) {
            bool fromWidget = localName(l.widget) == target;
            bool fromGadget = localName(l.gadget) == target;
            if (fromWidget && (role.size() == 0 || String::equalNoCase(role, "Widget")) &&
                (resultRole.size() == 0 || String::equalNoCase(resultRole, "Gadget")))
                out.push_back(l.gadget);
            if (fromGadget && (role.size() == 0 || String::equalNoCase(role, "Gadget")) &&
                (resultRole.size() == 0 || String::equalNoCase(resultRole, "Widget")))
                out.push_back(l.widget);
        }
        return out;
    }

    static CIMInstance linkInstance(const Link& l)
    {
        CIMInstance i(CIMName("ZTest_WidgetGadget"));
        i.addProperty(
            CIMProperty(CIMName("Widget"), CIMValue(l.widget), 0, CIMName("ZTest_Widget")));
        i.addProperty(
            CIMProperty(CIMName("Gadget"), CIMValue(l.gadget), 0, CIMName("ZTest_Gadget")));
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding(CIMName("Widget"), CIMValue(l.widget)));
        keys.append(CIMKeyBinding(CIMName("Gadget"), CIMValue(l.gadget)));
        i.setPath(CIMObjectPath(String(), CIMNamespaceName(), CIMName("ZTest_WidgetGadget"), keys));
        return i;
    }
};

}  // namespace

CIMProvider* createGadgetProvider()
{
    return new GadgetProvider;
}
CIMProvider* createAssociationProvider()
{
    return new AssociationProvider;
}

}  // namespace ztest
