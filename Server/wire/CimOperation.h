// CimOperation: what one CIM operation runs with, and the tables of the
// intrinsic operations (classic and pull) that write their answers. Each
// operation reads its IPARAMVALUEs, calls the host and appends the content
// of IMETHODRESPONSE (IRETURNVALUE, and the pull operations' PARAMVALUEs)
// to the response, streaming objects through the sink as they come.
#ifndef ZAR_SERVER_WIRE_CIMOPERATION_H
#define ZAR_SERVER_WIRE_CIMOPERATION_H

#include <string>

#include <zarframework/CIMOperationHost.h>
#include <zarframework/CIMXmlCodec.h>
#include <Pegasus/Common/OperationContext.h>

#include "CimParams.h"
#include "ResultWriters.h"

namespace zarwire {

class CimResponse;
class EnumerationContexts;

struct CimOperationEnv {
    Pegasus::CIMOperationHost& host;
    const Pegasus::OperationContext& context;
    const std::string& user;  // "" when none
    Pegasus::CIMNamespaceName nameSpace;
    Pegasus::String hostName;  // put into the paths the server returns
    const Pegasus::CIMXml::XmlLimits& limits;
    EnumerationContexts& enumerations;
    CimResponse& response;
    ResultSink& sink;  // streams into response
};

using IntrinsicOperation = void (*)(CimOperationEnv& env, const CimParams& params);

struct IntrinsicEntry {
    const char* name;
    IntrinsicOperation run;
};

// The operation named name (compared ignoring case), or null.
const IntrinsicEntry* findIntrinsic(const std::string& name);
// The pull operations' table, searched by findIntrinsic after the classic one.
const IntrinsicEntry* findPullOperation(const std::string& name);

}  // namespace zarwire

#endif
