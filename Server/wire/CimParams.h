// CimParams: the IPARAMVALUEs of an intrinsic call, looked up by name
// regardless of case and decoded to the types the operation takes. A
// parameter of the wrong shape is a broken request (ProtocolError 400); a
// missing required one or one the operation does not know is a CIM error
// (CIM_ERR_INVALID_PARAMETER).
#ifndef ZAR_SERVER_WIRE_CIMPARAMS_H
#define ZAR_SERVER_WIRE_CIMPARAMS_H

#include <initializer_list>
#include <map>
#include <string>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <zarframework/CIMXmlCodec.h>

namespace zarwire {

class CimParams {
public:
    explicit CimParams(const Pegasus::CIMXml::XmlElement& call);

    // Rejects parameters the operation does not know.
    void allowOnly(std::initializer_list<const char*> names) const;

    const Pegasus::CIMXml::XmlElement* get(const char* name) const;

    // The single element inside a parameter, or null for an absent or empty
    // one (or one holding VALUE.NULL).
    const Pegasus::CIMXml::XmlElement* content(const char* name) const;

    bool boolean(const char* name, bool dflt) const;
    // A uint32 VALUE; absent or VALUE.NULL gives false.
    bool uint32(const char* name, Pegasus::Uint32& value) const;
    Pegasus::CIMName className(const char* name, bool required) const;
    Pegasus::CIMObjectPath path(const char* name, bool instanceOnly) const;
    Pegasus::String string(const char* name) const;
    Pegasus::CIMPropertyList propertyList() const;

private:
    std::map<std::string, const Pegasus::CIMXml::XmlElement*> _byName;
};

}  // namespace zarwire

#endif
