//%/////////////////////////////////////////////////////////////////////////////
// ZAR_CommonAccessors.cpp: typed readers of properties, keys and method
// parameters; property writers; instance skeletons and stored classes.
//%/////////////////////////////////////////////////////////////////////////////
#include "ZAR_Common.h"

#include <InternalCacheService/ZAR_InternalCacheService.h>

PEGASUS_NAMESPACE_BEGIN

namespace {

// Looks the property up and reads it into value; the shared body of the
// getProperty family.
template <class T>
Sint32 _readProperty(CIMInstance& instance, const String& propertyName, T& value)
{
    Uint32 pos = instance.findProperty(CIMName(propertyName));
    if (pos == PEG_NOT_FOUND)
        return ZAR_Common::ACCESSOR_ABSENT;
    CIMValue v = instance.getProperty(pos).getValue();
    if (v.isNull())
        return ZAR_Common::ACCESSOR_NULL;
    v.get(value);
    return ZAR_Common::ACCESSOR_FOUND;
}

void _traceEntry(const char* label, const String& propertyName)
{
    log_message(4, "-->ZAR_Common::getProperty(%s), propertyName = %s\n", label,
                (const char*)propertyName.getCString());
}

// The shared body of the getParameter family: the first non-null match wins;
// a null match is reported like an absent parameter.
template <class T>
Sint32 _readParameter(const Array<CIMParamValue>& inParameters, const String& paramName, T& value)
{
    Sint32 status = ZAR_Common::ACCESSOR_ABSENT;
    Boolean found = false;
    for (Uint32 i = 0; i < inParameters.size(); i++) {
        if (!String::equalNoCase(inParameters[i].getParameterName(), paramName))
            continue;
        CIMValue v = inParameters[i].getValue();
        if (v.isNull()) {
            status = ZAR_Common::ACCESSOR_NULL;
            continue;
        }
        v.get(value);
        found = true;
        break;
    }
    if (!found)
        status = ZAR_Common::ACCESSOR_ABSENT;
    else
        status = ZAR_Common::ACCESSOR_FOUND;
    return status;
}

void _traceParamEntry(const char* label, const String& paramName)
{
    log_message(4, "-->ZAR_Common::getParameter(%s), paramName = %s\n", label,
                (const char*)paramName.getCString());
}

template <class T>
void _setValue(CIMInstance& instance, const CIMName& propertyName, const T& value)
{
    Uint32 pos = instance.findProperty(propertyName);
    if (pos == PEG_NOT_FOUND)
        return;
    instance.getProperty(pos).setValue(CIMValue(value));
}

}  // namespace

// ---------------------------------------------------------------------------
// getProperty

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName,
                               CIMObjectPath& value)
{
    _traceEntry("Array<String>", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(Array<String>), value = %s\n",
                (const char*)value.toString().getCString());
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName,
                               Array<String>& value)
{
    _traceEntry("Array<String>", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    String first;
    if (value.size() > 0)
        first = value[0];
    log_message(4, "<--ZAR_Common::getProperty(Array<String>), value = %s\n",
                (const char*)first.getCString());
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName,
                               Array<Sint32>& value)
{
    _traceEntry("Array<Sint32>", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(Array<Sint32>)\n");
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName,
                               Array<Uint16>& value)
{
    _traceEntry("Array<Uint16>", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(Array<Uint16>)\n");
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName, Uint64& value)
{
    _traceEntry("uint64", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(uint64), value = %llu\n", value);
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName, Uint32& value)
{
    _traceEntry("uint32", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(uint32), value = %d\n", (int)value);
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName, Uint16& value)
{
    _traceEntry("uint16", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(uint16), value = %d\n", (int)value);
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName, Uint8& value)
{
    _traceEntry("uint8", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(uint8), value = %d\n", (int)value);
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName, Boolean& value)
{
    _traceEntry("Boolean", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(Boolean), value = %d\n", (int)value);
    return rc;
}

Sint32 ZAR_Common::getProperty(CIMInstance& instance, const String& propertyName,
                               CIMDateTime& value)
{
    _traceEntry("CIMDateTime", propertyName);
    Sint32 rc = _readProperty(instance, propertyName, value);
    log_message(4, "<--ZAR_Common::getProperty(CIMDateTime), value = %s\n",
                (const char*)value.toString().getCString());
    return rc;
}

// ---------------------------------------------------------------------------
// String readers

String ZAR_Common::getStringProperty(const CIMInstance& instance, const String& propertyName)
{
    log_message(4, "-->ZAR_Common::getStringProperty(), propertyName = %s\n",
                (const char*)propertyName.getCString());
    String result;
    if (propertyName.size() == 0 || instance.isUninitialized()) {
        log_message(3, "\tInvalid property name.\n");
        return result;
    }
    Uint32 pos = instance.findProperty(CIMName(propertyName));
    if (pos != PEG_NOT_FOUND)
        instance.getProperty(pos).getValue().get(result);
    log_message(4, "<--ZAR_Common::getStringProperty(), value = %s\n",
                (const char*)result.getCString());
    return result;
}

String ZAR_Common::getStringProperty(const CIMObjectPath& path, const String& keyName)
{
    log_message(4, "-->ZAR_Common::getStringProperty(), propertyName = %s\n",
                (const char*)keyName.getCString());
    String result;
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); i++) {
        if (String::equalNoCase(keys[i].getName().getString(), keyName))
            result = keys[i].getValue();
    }
    log_message(4, "<--ZAR_Common::getStringProperty(), value = %s\n",
                (const char*)result.getCString());
    return result;
}

CIMValue ZAR_Common::getPropertyValue(const CIMInstance& instance, const String& propertyName)
{
    log_message(4, "-->ZAR_Common::getStringProperty(), propertyName = %s\n",
                (const char*)propertyName.getCString());
    if (propertyName.size() == 0 || instance.isUninitialized()) {
        log_message(3, "\tInvalid property name.\n");
        return CIMValue(String());
    }
    CIMValue result;
    Uint32 pos = instance.findProperty(CIMName(propertyName));
    if (pos != PEG_NOT_FOUND)
        result = instance.getProperty(pos).getValue();
    log_message(4, "<--ZAR_Common::getStringProperty()\n");
    return result;
}

// ---------------------------------------------------------------------------
// getParameter

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                Uint8& value)
{
    _traceParamEntry("Uint8", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(Uint8), paramValue = %d\n", (int)value);
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                Uint16& value)
{
    _traceParamEntry("Uint16", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(Uint16), paramValue = %d\n", (int)value);
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                Array<Uint16>& value)
{
    _traceParamEntry("Array<Uint16>", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(Array<Uint16>)\n");
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                Uint32& value)
{
    _traceParamEntry("Uint32", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(Uint32), paramValue = %d\n", (int)value);
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                Uint64& value)
{
    _traceParamEntry("Uint64", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(Uint64), paramValue = %llu\n", value);
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                Boolean& value)
{
    _traceParamEntry("Boolean", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(Boolean), paramValue = %d\n", (int)value);
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                CIMDateTime& value)
{
    _traceParamEntry("CIMDateTime", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(CIMDateTime), paramValue = %s\n",
                (const char*)value.toString().getCString());
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                CIMObjectPath& value)
{
    _traceParamEntry("CIMObjectPath", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(CIMObjectPath), paramValue = %s\n",
                (const char*)value.toString().getCString());
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                String& value)
{
    _traceParamEntry("String", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    log_message(4, "<--ZAR_Common::getParameter(String), paramValue = %s\n",
                (const char*)value.getCString());
    return rc;
}

Sint32 ZAR_Common::getParameter(const Array<CIMParamValue>& inParameters, const String& paramName,
                                Array<String>& value)
{
    _traceParamEntry("Array<String>", paramName);
    Sint32 rc = _readParameter(inParameters, paramName, value);
    // This exit line has no line end.
    log_message(4, "<--ZAR_Common::getParameter(Array<String>)");
    return rc;
}

// ---------------------------------------------------------------------------
// Writers

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName, const String& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName, const Boolean& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName, const Uint8& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName, const Uint16& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName, const Uint32& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName, const Uint64& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName, const Sint16& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const Array<String>& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const Array<Uint16>& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const Array<Sint32>& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const Array<Uint64>& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const Array<Boolean>& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const Array<CIMDateTime>& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const CIMObjectPath& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const CIMDateTime& value)
{
    _setValue(instance, propertyName, value);
}

void ZAR_Common::setPropertyValue(CIMInstance& instance, CIMName propertyName,
                                  const CIMInstance& embedded)
{
    Uint32 pos = instance.findProperty(propertyName);
    if (pos == PEG_NOT_FOUND)
        return;
    // The declared type changes to an instance value, which setValue would
    // refuse: replace the property instead.
    instance.removeProperty(pos);
    instance.addProperty(
        CIMProperty(propertyName, CIMValue(embedded), 0, CIMName(), CIMName(), false));
}

void ZAR_Common::setPropertyValueToNull(CIMInstance& instance, CIMName propertyName, CIMType type)
{
    CIMValue nullValue(type, false, 0);
    Uint32 pos = instance.findProperty(propertyName);
    if (pos == PEG_NOT_FOUND)
        return;
    instance.getProperty(pos).setValue(nullValue);
}

CIMInstance ZAR_Common::buildInstanceSkeleton(CIMClass& cimClass)
{
    log_message(4, "-->ZAR_Common::_buildInstanceSkeleton()\n");
    CIMInstance instance = cimClass.buildInstance(true, true, CIMPropertyList());
    log_message(4, "<--ZAR_Common::_buildInstanceSkeleton()\n");
    return instance;
}

CIMClass ZAR_Common::getStoredCIMClass(CIMOMHandle& handle, const OperationContext& context,
                                       const CIMNamespaceName& nameSpace, const CIMName& className,
                                       Boolean localOnly, Boolean includeQualifiers,
                                       Boolean includeClassOrigin,
                                       const CIMPropertyList& propertyList)
{
    return ZAR_InternalCacheService::getInstance()->getStoredCIMClass(
        handle, context, nameSpace, className, localOnly, includeQualifiers, includeClassOrigin,
        propertyList);
}

PEGASUS_NAMESPACE_END
