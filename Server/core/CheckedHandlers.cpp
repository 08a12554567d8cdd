#include "CheckedHandlers.h"

#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace zarserver {

const char* const kNotInitialized = "The object is not initialized.";
const char* const kTooMany = "Too many objects delivered.";
const char* const kTooFew = "Too few objects delivered.";

namespace {
[[noreturn]] void failed(const char* text)
{
    throw CIMException(CIM_ERR_FAILED, text);
}
}  // namespace

void SingleInstanceHandler::deliver(const CIMInstance& instance)
{
    if (instance.isUninitialized())
        failed(kNotInitialized);
    if (_delivered)
        failed(kTooMany);
    _instance = instance;
    _delivered = true;
}

void SingleInstanceHandler::deliver(const Array<CIMInstance>& instances)
{
    for (Uint32 i = 0; i < instances.size(); ++i)
        deliver(instances[i]);
}

void SingleInstanceHandler::complete()
{
    if (!_delivered)
        failed(kTooFew);
}

CIMInstance SingleInstanceHandler::result() const
{
    if (!_delivered)
        failed(kTooFew);
    return _instance;
}

void SinglePathHandler::deliver(const CIMObjectPath& path)
{
    if (path.getClassName().isNull())
        failed(kNotInitialized);
    if (_delivered)
        failed(kTooMany);
    _path = path;
    _delivered = true;
}

void SinglePathHandler::deliver(const Array<CIMObjectPath>& paths)
{
    for (Uint32 i = 0; i < paths.size(); ++i)
        deliver(paths[i]);
}

void SinglePathHandler::complete()
{
    if (!_delivered)
        failed(kTooFew);
}

CIMObjectPath SinglePathHandler::result() const
{
    if (!_delivered)
        failed(kTooFew);
    return _path;
}

void MethodResultHandler::deliverParamValue(const CIMParamValue& value)
{
    if (value.isUninitialized())
        failed(kNotInitialized);
    _out.append(value);
}

void MethodResultHandler::deliverParamValue(const Array<CIMParamValue>& values)
{
    for (Uint32 i = 0; i < values.size(); ++i)
        deliverParamValue(values[i]);
}

void MethodResultHandler::deliver(const CIMValue& returnValue)
{
    if (returnValue.isNull())
        failed(kNotInitialized);
    _return = returnValue;
    _hasReturn = true;
}

ForwardingInstanceHandler::ForwardingInstanceHandler(InstanceResponseHandler& target,
                                                     Transform transform)
    : _target(target), _transform(std::move(transform))
{
}

void ForwardingInstanceHandler::deliver(const CIMInstance& instance)
{
    if (instance.isUninitialized())
        failed(kNotInitialized);
    CIMInstance out = _transform ? _transform(instance) : instance;
    if (out.isUninitialized())
        return;
    std::lock_guard<std::mutex> l(_mutex);
    _target.deliver(out);
}

void ForwardingInstanceHandler::deliver(const Array<CIMInstance>& instances)
{
    for (Uint32 i = 0; i < instances.size(); ++i)
        deliver(instances[i]);
}

ForwardingPathHandler::ForwardingPathHandler(ObjectPathResponseHandler& target, Transform transform)
    : _target(target), _transform(std::move(transform))
{
}

void ForwardingPathHandler::deliver(const CIMObjectPath& path)
{
    if (path.getClassName().isNull())
        failed(kNotInitialized);
    CIMObjectPath out = path;
    if (_transform && !_transform(out))
        return;
    std::lock_guard<std::mutex> l(_mutex);
    _target.deliver(out);
}

void ForwardingPathHandler::deliver(const Array<CIMObjectPath>& paths)
{
    for (Uint32 i = 0; i < paths.size(); ++i)
        deliver(paths[i]);
}

ForwardingObjectHandler::ForwardingObjectHandler(ObjectResponseHandler& target, Transform transform)
    : _target(target), _transform(std::move(transform))
{
}

void ForwardingObjectHandler::deliver(const CIMObject& object)
{
    if (object.isUninitialized())
        failed(kNotInitialized);
    CIMObject out = _transform ? _transform(object) : object;
    if (out.isUninitialized())
        return;
    std::lock_guard<std::mutex> l(_mutex);
    _target.deliver(out);
}

void ForwardingObjectHandler::deliver(const Array<CIMObject>& objects)
{
    for (Uint32 i = 0; i < objects.size(); ++i)
        deliver(objects[i]);
}

}  // namespace zarserver
