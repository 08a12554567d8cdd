//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonRequest.cpp: the checks every request passes: may the user use
// the array at all, and may the user run the named operation.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>

PEGASUS_NAMESPACE_BEGIN

String ZAR_Common::getUserName(const OperationContext& context)
{
    if (!context.contains(IdentityContainer::NAME))
        return String();
    IdentityContainer container = context.get(IdentityContainer::NAME);
    return container.getUserName();
}

void ZAR_Common::checkUserAccess(const OperationContext& context, const char* file, Uint32 line)
{
    // The user name goes to the array as it stands, an empty one too: only
    // initialize() opens the array for the server (a null user). The server's
    // own requests carry the name of the user it runs as.
    String user = getUserName(context);
    if (api_zarOpenForCimserver((const char*)user.getCString()) != 0) {
        throw TraceableCIMException(CIM_ERR_ACCESS_DENIED, "Insufficient privilege for the user",
                                    file, line);
    }
}

String ZAR_Common::buildOperationName(const CIMName& className, const String& operation)
{
    String name = className.getString();
    name.append(".");
    name.append(operation);
    name.toLower();
    return name;
}

void ZAR_Common::checkOperationAccess(const OperationContext& context, const CIMName& className,
                                      const String& operation, const char* file, Uint32 line)
{
    String user = getUserName(context);
    String address = getClientIPAddress(context);
    String opName = buildOperationName(className, operation);
    int rc = api_authorizeCIMUser((const char*)user.getCString(), (const char*)address.getCString(),
                                  (const char*)opName.getCString());
    if (rc == 0)
        return;
    if (rc == 1) {
        throw TraceableCIMException(CIM_ERR_ACCESS_DENIED, "Insufficient generic privilege", file,
                                    line);
    }
    if (rc == 2) {
        // A refusal of its own kind that gives the same answer as 1.
        throw TraceableCIMException(CIM_ERR_ACCESS_DENIED, "Insufficient generic privilege", file,
                                    line);
    }
    throw TraceableCIMException(CIM_ERR_NOT_SUPPORTED, "Does not support in generic!", file, line);
}

PEGASUS_NAMESPACE_END
