#include "ResultWriters.h"

#include <zarframework/CIMXmlCodec.h>
#include <Pegasus/Common/Exception.h>

PEGASUS_USING_PEGASUS;

namespace zarwire {

namespace {

void notInitialized()
{
    throw CIMException(CIM_ERR_FAILED, "The object is not initialized.");
}

}  // namespace

void appendInstanceWithPath(std::string& out, const CIMInstance& i, const String& host,
                            const CIMNamespaceName& ns)
{
    out += "<VALUE.INSTANCEWITHPATH>";
    CIMXml::appendInstancePath(out, i.getPath(), host, ns);
    CIMXml::appendInstance(out, i);
    out += "</VALUE.INSTANCEWITHPATH>";
}

InstanceWriter::InstanceWriter(ResultSink& sink, InstanceForm form, const String& host,
                               const CIMNamespaceName& ns)
    : _sink(sink), _form(form), _host(host), _ns(ns)
{
}

void InstanceWriter::deliver(const CIMInstance& i)
{
    if (i.isUninitialized())
        notInitialized();
    if (_form == InstanceForm::NamedInstance)
        _sink.write([&](std::string& b) { CIMXml::appendValueNamedInstance(b, i); });
    else
        _sink.write([&](std::string& b) { appendInstanceWithPath(b, i, _host, _ns); });
}

void InstanceWriter::deliver(const Array<CIMInstance>& a)
{
    for (Uint32 k = 0; k < a.size(); k++)
        deliver(a[k]);
}

PathWriter::PathWriter(ResultSink& sink, PathForm form, const String& host,
                       const CIMNamespaceName& ns)
    : _sink(sink), _form(form), _host(host), _ns(ns)
{
}

void PathWriter::deliver(const CIMObjectPath& p)
{
    if (p.getClassName().isNull())
        notInitialized();
    _sink.write([&](std::string& b) {
        switch (_form) {
            case PathForm::InstanceName:
                CIMXml::appendInstanceName(b, p);
                break;
            case PathForm::ObjectPath:
                CIMXml::appendObjectPath(b, p, _host, _ns);
                break;
            case PathForm::InstancePath:
                CIMXml::appendInstancePath(b, p, _host, _ns);
                break;
        }
    });
}

void PathWriter::deliver(const Array<CIMObjectPath>& a)
{
    for (Uint32 k = 0; k < a.size(); k++)
        deliver(a[k]);
}

ObjectWriter::ObjectWriter(ResultSink& sink, bool instanceWithPath, const String& host,
                           const CIMNamespaceName& ns)
    : _sink(sink), _instanceWithPath(instanceWithPath), _host(host), _ns(ns)
{
}

void ObjectWriter::deliver(const CIMObject& o)
{
    if (o.isUninitialized())
        notInitialized();
    if (_instanceWithPath)
        _sink.write([&](std::string& b) { appendInstanceWithPath(b, CIMInstance(o), _host, _ns); });
    else
        _sink.write([&](std::string& b) { CIMXml::appendValueObjectWithPath(b, o, _host, _ns); });
}

void ObjectWriter::deliver(const Array<CIMObject>& a)
{
    for (Uint32 k = 0; k < a.size(); k++)
        deliver(a[k]);
}

}  // namespace zarwire
