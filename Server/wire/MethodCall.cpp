// Extrinsic method calls: the METHODCALL's PARAMVALUEs decoded, the method
// invoked on its target path, RETURNVALUE and out-parameters written.
#include <Pegasus/Common/Exception.h>

#include "CimOperation.h"
#include "CimProtocol.h"
#include "CimRequest.h"
#include "CimResponse.h"

PEGASUS_USING_PEGASUS;

namespace zarwire {

Array<CIMParamValue> decodeMethodParameters(const CimCall& call, const CIMXml::XmlLimits& limits)
{
    Array<CIMParamValue> in;
    for (const auto& c : call.element->children) {
        if (c.name == "PARAMVALUE")
            in.append(CIMXml::decodeParamValue(c, limits));
        else if (c.name != "LOCALINSTANCEPATH" && c.name != "LOCALCLASSPATH")
            throw ProtocolError{400, "request-not-valid",
                                "unexpected " + c.name + " in METHODCALL"};
    }
    return in;
}

void runMethodCall(CimOperationEnv& env, const CimCall& call, const Array<CIMParamValue>& in)
{
    Array<CIMParamValue> outParams;
    CIMValue rv = env.host.invokeMethod(env.context, env.nameSpace, call.target,
                                        CIMName(str(call.method)), in, outParams);
    std::string& b = env.response.buffer();
    CIMXml::appendReturnValue(b, rv);
    for (Uint32 i = 0; i < outParams.size(); i++) {
        if (outParams[i].isUninitialized())
            throw CIMException(CIM_ERR_FAILED, "The object is not initialized.");
        CIMXml::appendParamValue(b, outParams[i]);
    }
}

}  // namespace zarwire
