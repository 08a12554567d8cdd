// CallHost: runs one call into a CIMOperationHost and turns whatever it
// throws into a CIMException, the way a CIM server reports a failed
// operation: a CIMException keeps its code and message, any other Exception
// or std::exception becomes CIM_ERR_FAILED with its text, anything else
// CIM_ERR_FAILED "Unknown error.". Internal to the framework libraries.
#ifndef Pegasus_Common_HostCall_h
#define Pegasus_Common_HostCall_h

#include <cxxabi.h>
#include <exception>

#include <Pegasus/Common/Exception.h>

PEGASUS_NAMESPACE_BEGIN

// The text of e, or "Unknown error." when it is not valid UTF-8.
inline String WhatText(const std::exception& e)
{
    try {
        return String(e.what());
    } catch (...) {
        return String("Unknown error.");
    }
}

template <class F>
auto CallHost(F call) -> decltype(call())
{
    try {
        return call();
    } catch (const CIMException&) {
        throw;
    } catch (const Exception& e) {
        throw CIMException(CIM_ERR_FAILED, e.getMessage());
    } catch (const std::exception& e) {
        throw CIMException(CIM_ERR_FAILED, WhatText(e));
    } catch (abi::__forced_unwind&) {
        throw;
    } catch (...) {
        throw CIMException(CIM_ERR_FAILED, "Unknown error.");
    }
}

PEGASUS_NAMESPACE_END

#endif
