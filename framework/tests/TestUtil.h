// Helpers shared by the framework's tests: a String as UTF-8 text, and what
// the exception that a call throws says.
#ifndef ZAR_FRAMEWORK_TESTS_TESTUTIL_H
#define ZAR_FRAMEWORK_TESTS_TESTUTIL_H

#include <string>
#include <utility>

#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

namespace zartest {

inline std::string str(const Pegasus::String& s)
{
    return std::string((const char*)s.getCString());
}

// The message of the exception E that f throws; the test fails when f throws
// nothing or an exception of another type.
template <class E, class F>
Pegasus::String MessageOf(F f)
{
    try {
        f();
    } catch (const E& e) {
        return e.getMessage();
    } catch (...) {
        ADD_FAILURE() << "an exception of another type";
        return Pegasus::String("<other>");
    }
    ADD_FAILURE() << "nothing thrown";
    return Pegasus::String("<none>");
}

// The code and message of the CIMException that f throws; the test fails
// when f throws nothing or another exception.
template <class F>
std::pair<Pegasus::Uint32, Pegasus::String> ErrorOf(F f)
{
    try {
        f();
    } catch (const Pegasus::CIMException& e) {
        return std::make_pair(Pegasus::Uint32(e.getCode()), e.getMessage());
    } catch (...) {
        ADD_FAILURE() << "not a CIMException";
        return std::make_pair(Pegasus::Uint32(0), Pegasus::String("<other>"));
    }
    ADD_FAILURE() << "nothing thrown";
    return std::make_pair(Pegasus::Uint32(0), Pegasus::String("<none>"));
}

}  // namespace zartest

#endif
