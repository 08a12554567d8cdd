// ZTest_Widget and ZTest_SpecialWidget: instances kept in memory, with full
// create, modify and delete. Two widgets exist at start: w1 (ZTest_Widget)
// and s1 (ZTest_SpecialWidget). getInstance of the names __twice, __none
// and __uninit misbehaves on purpose, to exercise the server's checks.
#include <map>
#include <mutex>
#include <string>

#include "TestProviders.h"

PEGASUS_USING_PEGASUS;

namespace ztest {

namespace {

String keyName(const CIMObjectPath& path)
{
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i)
        if (keys[i].getName().equal(CIMName("Name")))
            return keys[i].getValue();
    return String();
}

std::string mapKey(const String& name)
{
    return (const char*)name.getCString();
}

class WidgetProvider : public CIMInstanceProvider {
public:
    void initialize(CIMOMHandle& cimom) override
    {
        _cimom = cimom;
        add(makeWidget("ZTest_Widget", "w1", 3, true));
        CIMInstance s = makeWidget("ZTest_SpecialWidget", "s1", 2, false);
        s.addProperty(CIMProperty(CIMName("Speciality"), CIMValue(String("shiny"))));
        add(s);
    }
    void terminate() override { delete this; }

    void getInstance(const OperationContext&, const CIMObjectPath& ref, const Boolean,
                     const Boolean, const CIMPropertyList&,
                     InstanceResponseHandler& handler) override
    {
        String name = keyName(ref);
        handler.processing();
        if (name == "__twice") {
            CIMInstance w = makeWidget("ZTest_Widget", "__twice", 1, true);
            handler.deliver(w);
            handler.deliver(w);
        } else if (name == "__uninit") {
            handler.deliver(CIMInstance());
        } else if (name != "__none") {
            std::lock_guard<std::mutex> l(_mutex);
            auto it = _widgets.find(mapKey(name));
            if (it == _widgets.end() || !it->second.getClassName().equal(ref.getClassName()))
                throw CIMObjectNotFoundException(ref.toString());
            handler.deliver(it->second.clone());
        }
        handler.complete();
    }

    void enumerateInstances(const OperationContext&, const CIMObjectPath& classRef, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override
    {
        handler.processing();
        std::lock_guard<std::mutex> l(_mutex);
        // Only the instances of exactly the class asked for: the server asks
        // once per registered class.
        for (auto& kv : _widgets)
            if (kv.second.getClassName().equal(classRef.getClassName()))
                handler.deliver(kv.second.clone());
        handler.complete();
    }

    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath& classRef,
                                ObjectPathResponseHandler& handler) override
    {
        handler.processing();
        std::lock_guard<std::mutex> l(_mutex);
        for (auto& kv : _widgets)
            if (kv.second.getClassName().equal(classRef.getClassName()))
                handler.deliver(kv.second.getPath());
        handler.complete();
    }

    void modifyInstance(const OperationContext&, const CIMObjectPath& ref,
                        const CIMInstance& changed, const Boolean,
                        const CIMPropertyList& propertyList, ResponseHandler& handler) override
    {
        handler.processing();
        std::lock_guard<std::mutex> l(_mutex);
        auto it = _widgets.find(mapKey(keyName(ref)));
        if (it == _widgets.end())
            throw CIMObjectNotFoundException(ref.toString());
        CIMInstance& stored = it->second;
        for (Uint32 i = 0; i < changed.getPropertyCount(); ++i) {
            CIMConstProperty p = changed.getProperty(i);
            if (!propertyList.useThisProperty(p.getName()))
                continue;
            if (p.getName().equal(CIMName("Name")))
                continue;  // keys do not change
            Uint32 j = stored.findProperty(p.getName());
            if (j == PEG_NOT_FOUND)
                throw CIMInvalidParameterException(p.getName().getString());
            if (stored.getProperty(j).getType() != p.getType() ||
                stored.getProperty(j).isArray() != p.isArray())
                throw CIMInvalidParameterException("type of " + p.getName().getString());
            stored.getProperty(j).setValue(p.getValue());
        }
        handler.complete();
    }

    void createInstance(const OperationContext&, const CIMObjectPath& ref, const CIMInstance& inst,
                        ObjectPathResponseHandler& handler) override
    {
        Uint32 i = inst.findProperty(CIMName("Name"));
        String name;
        if (i != PEG_NOT_FOUND && !inst.getProperty(i).getValue().isNull())
            inst.getProperty(i).getValue().get(name);
        if (name.size() == 0)
            throw CIMInvalidParameterException("Name must be given");
        CIMInstance w = makeWidget((const char*)ref.getClassName().getString().getCString(),
                                   (const char*)name.getCString(), 1, false);
        for (Uint32 k = 0; k < inst.getPropertyCount(); ++k) {
            CIMConstProperty p = inst.getProperty(k);
            Uint32 j = w.findProperty(p.getName());
            if (j == PEG_NOT_FOUND)
                w.addProperty(p.clone());
            else if (w.getProperty(j).getType() == p.getType() &&
                     w.getProperty(j).isArray() == p.isArray())
                w.getProperty(j).setValue(p.getValue());
            else
                throw CIMInvalidParameterException("type of " + p.getName().getString());
        }
        handler.processing();
        {
            std::lock_guard<std::mutex> l(_mutex);
            if (_widgets.count(mapKey(name)))
                throw CIMObjectAlreadyExistsException(name);
            _widgets[mapKey(name)] = w;
        }
        handler.deliver(w.getPath());
        handler.complete();
    }

    void deleteInstance(const OperationContext&, const CIMObjectPath& ref,
                        ResponseHandler& handler) override
    {
        handler.processing();
        std::lock_guard<std::mutex> l(_mutex);
        if (_widgets.erase(mapKey(keyName(ref))) == 0)
            throw CIMObjectNotFoundException(ref.toString());
        handler.complete();
    }

private:
    static CIMInstance makeWidget(const char* cls, const char* name, Uint16 count, Boolean enabled)
    {
        CIMInstance w{CIMName(cls)};
        w.addProperty(CIMProperty(CIMName("Name"), CIMValue(String(name))));
        w.addProperty(CIMProperty(CIMName("Count"), CIMValue(count)));
        w.addProperty(CIMProperty(CIMName("Enabled"), CIMValue(enabled)));
        w.addProperty(CIMProperty(CIMName("Made"),
                                  CIMValue(CIMDateTime(String("20240102030405.000000+000")))));
        Array<String> tags;
        tags.append("red");
        tags.append("round");
        w.addProperty(CIMProperty(CIMName("Tags"), CIMValue(tags)));
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding(CIMName("Name"), CIMValue(String(name))));
        w.setPath(CIMObjectPath(String(), CIMNamespaceName(), CIMName(cls), keys));
        return w;
    }

    void add(const CIMInstance& w)
    {
        Uint32 i = w.findProperty(CIMName("Name"));
        String name;
        w.getProperty(i).getValue().get(name);
        _widgets[mapKey(name)] = w;
    }

    CIMOMHandle _cimom;
    std::mutex _mutex;
    std::map<std::string, CIMInstance> _widgets;
};

}  // namespace

CIMProvider* createWidgetProvider()
{
    return new WidgetProvider;
}

}  // namespace ztest
