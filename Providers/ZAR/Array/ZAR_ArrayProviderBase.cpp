//%/////////////////////////////////////////////////////////////////////////////
// ZAR_ArrayProviderBase.cpp
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_ArrayProviderBase.h"

#include <string.h>

#include <Pegasus/Provider/ProviderException.h>

#include <ZAR_Common.h>

#include "ZAR_ArrayAccess.h"

PEGASUS_NAMESPACE_BEGIN

ZAR_ArrayProviderBase::ZAR_ArrayProviderBase(const String& className) : _className(className) {}

ZAR_ArrayProviderBase::~ZAR_ArrayProviderBase() {}

void ZAR_ArrayProviderBase::initialize(CIMOMHandle& cimom)
{
    CString name = _className.getCString();
    log_message(4, "-->%s::initialize(cimom)\n", (const char*)name);
    _cimom = cimom;
    if (api_zarOpenForCimserver(NULL) != 0) {
        log_message(2, "%s::initialize(): api_zarOpenForCimserver failed\n", (const char*)name);
    }
    log_message(4, "<--%s::initialize(cimom)\n", (const char*)name);
}

void ZAR_ArrayProviderBase::terminate()
{
    delete this;
}

void ZAR_ArrayProviderBase::modifyInstance(const OperationContext&, const CIMObjectPath&,
                                           const CIMInstance&, const Boolean,
                                           const CIMPropertyList&, ResponseHandler&)
{
    throw CIMNotSupportedException(_className + " does not support modifyInstance.");
}

void ZAR_ArrayProviderBase::createInstance(const OperationContext&, const CIMObjectPath&,
                                           const CIMInstance&, ObjectPathResponseHandler&)
{
    throw CIMNotSupportedException(_className + " does not support createInstance.");
}

void ZAR_ArrayProviderBase::deleteInstance(const OperationContext&, const CIMObjectPath&,
                                           ResponseHandler&)
{
    throw CIMNotSupportedException(_className + " does not support deleteInstance.");
}

void ZAR_ArrayProviderBase::_identity(String& systemName, String& host, const char* operation)
{
    api_sysinfo_t info;
    api_status_t status;
    if (ZAR_ArrayAccess::readSystemInfo(&info, &status) != 0)
        _fail(operation, "api_getSystemInfo", status);
    systemName = String(info.name, (Uint32)strnlen(info.name, sizeof(info.name)));
    host = ZAR_ArrayAccess::pathHostName(info);
}

CIMClass ZAR_ArrayProviderBase::_storedClass(const CIMName& className, Boolean includeQualifiers,
                                             Boolean includeClassOrigin,
                                             const CIMPropertyList& propertyList)
{
    return ZAR_Common::getStoredCIMClass(_cimom, OperationContext(),
                                         CIMNamespaceName(ZAR_NAMESPACE), className, false,
                                         includeQualifiers, includeClassOrigin, propertyList);
}

void ZAR_ArrayProviderBase::_fail(const char* operation, const char* call,
                                  const api_status_t& status)
{
    log_message(2, "%s::%s: %s failed, status = %d\n", (const char*)_className.getCString(),
                operation, call, status.code);
    throw CIMOperationFailedException(_className + "::" + String(operation) +
                                      " - Operation failed: " + ZAR_ArrayAccess::errorText(status));
}

CIMObjectPath ZAR_ArrayProviderBase::_asClass(const CIMObjectPath& path, const CIMName& className)
{
    CIMNamespaceName ns = path.getNameSpace();
    if (ns.isNull())
        ns = CIMNamespaceName(ZAR_NAMESPACE);
    return CIMObjectPath(path.getHost(), ns, className, path.getKeyBindings());
}

PEGASUS_NAMESPACE_END
