// ResultWriters: response handlers that turn what a provider delivers into
// CIM-XML as it arrives, one element per object, into a ResultSink (the
// response being streamed, or an open enumeration's queue). Objects that
// are not initialized are refused as providers' handlers refuse them.
#ifndef ZAR_SERVER_WIRE_RESULTWRITERS_H
#define ZAR_SERVER_WIRE_RESULTWRITERS_H

#include <functional>
#include <string>

#include <Pegasus/Common/ResponseHandler.h>

namespace zarwire {

// Where written elements go. write() runs f on the output text and may
// block (back-pressure) or throw (client gone, enumeration closed); it is
// called from whatever thread the provider delivers on.
class ResultSink {
public:
    virtual ~ResultSink() {}
    virtual void write(const std::function<void(std::string&)>& f) = 0;
};

// The element each object becomes.
enum class InstanceForm {
    NamedInstance,     // VALUE.NAMEDINSTANCE (EnumerateInstances)
    InstanceWithPath,  // VALUE.INSTANCEWITHPATH (pull operations)
};
enum class PathForm {
    InstanceName,  // INSTANCENAME (EnumerateInstanceNames)
    ObjectPath,    // OBJECTPATH (AssociatorNames, ReferenceNames)
    InstancePath,  // INSTANCEPATH (pull operations)
};

class InstanceWriter : public Pegasus::InstanceResponseHandler {
public:
    InstanceWriter(ResultSink& sink, InstanceForm form, const Pegasus::String& host,
                   const Pegasus::CIMNamespaceName& ns);
    void processing() override {}
    void complete() override {}
    void deliver(const Pegasus::CIMInstance& i) override;
    void deliver(const Pegasus::Array<Pegasus::CIMInstance>& a) override;

private:
    ResultSink& _sink;
    InstanceForm _form;
    Pegasus::String _host;
    Pegasus::CIMNamespaceName _ns;
};

class PathWriter : public Pegasus::ObjectPathResponseHandler {
public:
    PathWriter(ResultSink& sink, PathForm form, const Pegasus::String& host,
               const Pegasus::CIMNamespaceName& ns);
    void processing() override {}
    void complete() override {}
    void deliver(const Pegasus::CIMObjectPath& p) override;
    void deliver(const Pegasus::Array<Pegasus::CIMObjectPath>& a) override;

private:
    ResultSink& _sink;
    PathForm _form;
    Pegasus::String _host;
    Pegasus::CIMNamespaceName _ns;
};

// VALUE.OBJECTWITHPATH (Associators, References), or VALUE.INSTANCEWITHPATH
// for the pull forms of those operations.
class ObjectWriter : public Pegasus::ObjectResponseHandler {
public:
    ObjectWriter(ResultSink& sink, bool instanceWithPath, const Pegasus::String& host,
                 const Pegasus::CIMNamespaceName& ns);
    void processing() override {}
    void complete() override {}
    void deliver(const Pegasus::CIMObject& o) override;
    void deliver(const Pegasus::Array<Pegasus::CIMObject>& a) override;

private:
    ResultSink& _sink;
    bool _instanceWithPath;
    Pegasus::String _host;
    Pegasus::CIMNamespaceName _ns;
};

// VALUE.INSTANCEWITHPATH: the instance's path completed with host and ns,
// then the instance.
void appendInstanceWithPath(std::string& out, const Pegasus::CIMInstance& i,
                            const Pegasus::String& host, const Pegasus::CIMNamespaceName& ns);

}  // namespace zarwire

#endif
