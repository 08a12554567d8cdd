// CIMObject::toString(): the CIM-XML text of a class or an instance.
#include <zarframework/CIMXmlCodec.h>

#include "Common/ObjectModelRep.h"

PEGASUS_NAMESPACE_BEGIN

String CIMObject::toString() const
{
    CheckRep(_rep);
    std::string xml;
    CIMXml::appendObject(xml, *this);
    return String(xml.c_str(), Uint32(xml.size()));
}

PEGASUS_NAMESPACE_END
