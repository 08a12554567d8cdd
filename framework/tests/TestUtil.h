// Helpers shared by the framework's tests: a String as UTF-8 text, and the
// message of the exception that a call throws.
#ifndef ZAR_FRAMEWORK_TESTS_TESTUTIL_H
#define ZAR_FRAMEWORK_TESTS_TESTUTIL_H

#include <string>

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

}  // namespace zartest

#endif
